#pragma once

#include <QString>
#include <QVariant>

namespace CANopen {

// One object of a device description as the EDS reader reports it. The attribute fields describe the
// object itself for a VAR and the elements of a compact array; for other objects they are empty.
struct CANopenIndex
{
    quint16 index = 0;
    quint32 objectCode = 7;
    quint16 dataType = 0;
    QString name;
    QString denotation;
    // SubNumber as written; 0 when absent.
    quint32 subNumber = 0;
    // CompactSubObj: number of elements of a compact array; 0 when absent.
    quint32 compactSubObj = 0;
    QString accessType;
    QVariant defaultValue;
    bool pdoMapping = false;
};

} // namespace CANopen
