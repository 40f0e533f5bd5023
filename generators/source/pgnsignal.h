#pragma once

#include <QString>

struct SPN;
struct DataElement;

// What a J1939 SPN and a raw CAN data element have in common for the mapping and managed variable
// tables: `owner` is the PGN or CAN-ID, `number` the SPN or the element number.
struct PgnSignal
{
    quint32 owner = 0;
    quint32 number = 0;
    quint16 datatype = 0;
    quint8 implementation = 0;
    QString varname;
    QString defaultvalue;
    QString name;
    quint16 bitsize = 0;
    quint16 bitposition = 0;
    bool rawCan = false;

    static PgnSignal fromSpn(const SPN &spn);
    static PgnSignal fromDataElement(const DataElement &element);
};
