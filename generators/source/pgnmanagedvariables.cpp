#include "pgnmanagedvariables.h"

#include "generation/generatortext.h"
#include "pgncontext.h"
#include "pgnsignal.h"
#include "store/objectdatabase.h"

#include <QStringList>

namespace {

// Address claiming sends the device's NAME: its values are the project's settings, not "not available".
constexpr quint32 addressClaimPgn = 60928;
constexpr quint16 unsigned64 = 27;

} // namespace

PgnManagedVariables::PgnManagedVariables(const PgnContext &context)
    : context(context)
{}

quint64 PgnManagedVariables::key(quint8 line, quint32 owner, quint32 number)
{
    return (quint64(line) << 56) + (quint64(owner) << 24) + number;
}

void PgnManagedVariables::collect()
{
    for (auto &table : tables)
        table.clear();
    j1939Slots.clear();
    rawCanSlots.clear();
    ObjectDataBase &store = context.store();
    for (const quint8 line : context.lines()) {
        if (store.getPGNs(line).isEmpty() && store.getCANIDs(line).isEmpty())
            continue;
        for (const quint8 direction : {Direction::Receive, Direction::Transmit})
            collectLine(line, direction);
    }
}

void PgnManagedVariables::collectLine(quint8 line, quint8 direction)
{
    ObjectDataBase &store = context.store();
    const QList<quint32> pgns = store.getPGNs(line, direction);
    for (const quint32 pgn : pgns) {
        const quint32 sources = context.sourceAddresses(line, direction, pgn);
        const int count = sources == 0 ? 1 : int(sources);
        const QList<quint32> spns = store.getSPNs(line, pgn, direction);
        for (const quint32 number : spns) {
            SPN record;
            store.getSPN(line, pgn, direction, number, record);
            const PgnSignal signal = PgnSignal::fromSpn(record);
            const PgnDataTypes::Table table = PgnDataTypes::managedTable(signal.datatype, false);
            if (signal.implementation != 0 || table == PgnDataTypes::NoTable)
                continue;
            const quint64 value = pgn == addressClaimPgn ? PgnContext::anyBase(signal.defaultvalue)
                                                         : PgnDataTypes::notAvailable(signal.datatype);
            place(line, signal, table, count, value);
        }
    }
    const QList<quint32> ids = store.getCANIDs(line, direction);
    for (const quint32 id : ids) {
        const QList<quint32> elements = store.getDataElements(line, id, direction);
        for (const quint32 number : elements) {
            DataElement record;
            store.getDataElement(line, id, direction, number, record);
            const PgnSignal signal = PgnSignal::fromDataElement(record);
            const PgnDataTypes::Table table = PgnDataTypes::managedTable(signal.datatype, true);
            if (signal.implementation != 0 || table == PgnDataTypes::NoTable)
                continue;
            place(line, signal, table, 1, PgnContext::anyBase(signal.defaultvalue));
        }
    }
}

void PgnManagedVariables::place(quint8 line, const PgnSignal &signal, PgnDataTypes::Table table, int count,
                                quint64 value)
{
    QList<Slot> &entries = tables[table];
    (signal.rawCan ? rawCanSlots : j1939Slots)
        .insert(key(line, signal.owner, signal.number), int(entries.size()));
    for (int i = 0; i < count; ++i)
        entries << Slot{value, line, signal.owner, signal.number};
}

int PgnManagedVariables::slot(quint8 line, const PgnSignal &signal) const
{
    return slot(line, signal.owner, signal.number, signal.rawCan);
}

int PgnManagedVariables::slot(quint8 line, quint32 owner, quint32 number, bool rawCan) const
{
    return (rawCan ? rawCanSlots : j1939Slots).value(key(line, owner, number), -1);
}

QString PgnManagedVariables::reference(quint8 line, const PgnSignal &signal) const
{
    const int found = slot(line, signal);
    return QStringLiteral("&mv_%1[%2]")
        .arg(PgnDataTypes::referenceTableName(signal.datatype, signal.rawCan))
        .arg(found < 0 ? 0 : found);
}

bool PgnManagedVariables::hasTable(PgnDataTypes::Table table) const
{
    return !tables[table].isEmpty();
}

QString PgnManagedVariables::definitions() const
{
    QString text = QStringLiteral("\n/* definition of managed variables */\n");
    for (int index = 0; index < PgnDataTypes::TableCount; ++index) {
        const auto table = PgnDataTypes::Table(index);
        const QList<Slot> &entries = tables[table];
        if (entries.isEmpty())
            continue;
        text += QStringLiteral("static %1\tmv_%2[%3]")
                    .arg(PgnDataTypes::cType(table), PgnDataTypes::tableName(table))
                    .arg(entries.size());
        if (!context.staticInit()) {
            text += QStringLiteral(";\n");
            continue;
        }
        QStringList rows;
        for (const Slot &entry : entries)
            rows << row(table, entry);
        text += QStringLiteral("= {\n") + rows.join(QStringLiteral(",\n")) + QStringLiteral("\n};\n");
    }
    return text;
}

QString PgnManagedVariables::row(PgnDataTypes::Table table, const Slot &slot) const
{
    QString text;
    if (table == PgnDataTypes::U64) {
        text = '\t' + GeneratorText::largeValueLiteral(unsigned64, slot.value, qint64(slot.value));
    } else {
        const QString value =
            PgnDataTypes::isSigned(table) ? QString::number(qint64(slot.value)) : QString::number(slot.value);
        text = QStringLiteral("\t(%1)%2%3")
                   .arg(PgnDataTypes::cType(table), value, PgnDataTypes::literalSuffix(table));
    }
    if (context.multiLine())
        return text + QStringLiteral(" /* %1-%2:%3 */").arg(slot.line).arg(slot.owner).arg(slot.number);
    return text + QStringLiteral(" /* %1:%2 */").arg(slot.owner).arg(slot.number);
}
