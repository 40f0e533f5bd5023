#pragma once

#include <QString>
#include <QVariant>

// One entry of a device description as the EDS reader reports it: a sub-object section, or sub-index 0
// of a VAR, whose attributes stand in the object's own section.
struct CANopenSubindex
{
    quint16 index = 0;
    quint8 subIndex = 0;
    quint16 dataType = 0;
    QString accessType;
    QString name;
    // DefaultValue as written, $NODEID expressions included; an invalid QVariant when absent.
    QVariant defaultValue;
    // ParameterValue and Denotation of a DCF; empty when absent.
    QString parameterValue;
    QString denotation;
    QString lowLimit;
    QString highLimit;
    // 1 when the entry has a DefaultValue line, else 0.
    quint8 defaultInEds = 0;
    bool hasLimits = false;
    bool refuseRead = false;
    bool refuseWrite = false;
    bool pdoMapping = false;
};
