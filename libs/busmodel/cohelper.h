#pragma once

#include <QString>

// Conversions around CANopen and J1939 data types and object codes.
class COHelper
{
public:
    // Length of a value of the type in bits; 0 for strings, domains and unknown types.
    static quint32 getDataLengthBits(quint16 dataType);
    // Standard name, such as "UNSIGNED8"; empty for an unknown type.
    static QString index2DataTypeString(quint16 dataType);
    // Short name, such as "u8", "i16", "b" for BOOLEAN, "u3" for 3 bits; empty for an unknown type.
    static QString index2DataTypeShortString(quint16 dataType);

    // Display texts of an object code (7 "VARIABLE", 8 "ARRAY", 9 "RECORD", ...), a PDO mapping value
    // and an implementation type; empty for values without a name.
    static QString objectCode2String(quint32 objectCode);
    static QString pdoMapping2String(unsigned int mapping);
    static QString implementation2String(quint8 implementation);
};
