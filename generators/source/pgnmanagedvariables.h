#pragma once

#include "pgndatatypes.h"

#include <QHash>
#include <QList>
#include <QString>

class PgnContext;
struct PgnSignal;

// The values of managed signals (implementation 0): they have no variable in the application and
// stand in seven arrays common to all lines. collect() places every managed signal of the project in
// its array; the mapping tables and the address claiming assignments then ask where it stands.
class PgnManagedVariables
{
public:
    explicit PgnManagedVariables(const PgnContext &context);

    // Walks the lines, receive before transmit, PGNs with their SPNs, then CAN-IDs with their elements.
    void collect();
    // "\n/* definition of managed variables */\n" and the arrays that have slots.
    QString definitions() const;
    // The first slot of a signal; -1 when it has none.
    int slot(quint8 line, const PgnSignal &signal) const;
    int slot(quint8 line, quint32 owner, quint32 number, bool rawCan) const;
    // "&mv_u8[3]": where a managed signal's value stands; slot 0 of its type's array when it has none.
    QString reference(quint8 line, const PgnSignal &signal) const;
    // Whether the definitions hold the array.
    bool hasTable(PgnDataTypes::Table table) const;

private:
    struct Slot
    {
        quint64 value = 0;
        quint8 line = 0;
        quint32 owner = 0;
        quint32 number = 0;
    };

    void collectLine(quint8 line, quint8 direction);
    void place(quint8 line, const PgnSignal &signal, PgnDataTypes::Table table, int count, quint64 value);
    QString row(PgnDataTypes::Table table, const Slot &slot) const;
    static quint64 key(quint8 line, quint32 owner, quint32 number);

    const PgnContext &context;
    QList<Slot> tables[PgnDataTypes::TableCount];
    // J1939 and raw CAN signals are kept apart: a CAN-ID may have the number of a PGN on the same line.
    QHash<quint64, int> j1939Slots;
    QHash<quint64, int> rawCanSlots;
};
