#pragma once

#include <QList>
#include <QString>

class MultiProContext;
struct CANID;

// The configuration tables of the raw CAN lines: the transmit and receive CAN-IDs and the
// RAWCAN_CONFIG_T that hands them to the stack. The mapping tables they point at come before them.
class RawCanConfigWriter
{
public:
    explicit RawCanConfigWriter(const MultiProContext &context);

    // The comment and the tables of every raw CAN line.
    QString tables() const;

private:
    QString lineTables(quint8 line) const;
    // One table of a direction, empty when the line has no CAN-ID of that direction.
    QString directionTable(quint8 line, quint8 direction, const QList<quint32> &ids) const;
    QString row(quint8 line, const CANID &canId, int mappings) const;

    const MultiProContext &context;
};
