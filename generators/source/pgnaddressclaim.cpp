#include "pgnaddressclaim.h"

#include "busmodel/cohelper.h"
#include "pgncontext.h"
#include "pgndatatypes.h"
#include "pgnmanagedvariables.h"
#include "store/objectdatabase.h"

#include <QDebug>

namespace {

constexpr quint8 lineLimit = 32;

struct NameField
{
    quint32 spn;
    const char *name;
    quint16 datatype;
    quint16 bitposition;
    const char *setting;
    // addresscapable is one value for the device; the other fields have one entry per line.
    bool perLine;
};

// The fields in the order of the NAME in the message.
const NameField nameFields[] = {
    {2837, "Identity Number", 119, 0, "identitynumber", true},
    {2838, "Manufacturer Code", 108, 21, "manufacturercode", true},
    {2840, "ECU Instance", 101, 32, "ecuinstance", true},
    {2839, "Function Instance", 103, 35, "functioninstance", true},
    {2841, "Function", 5, 40, "function", true},
    {2842, "Vehicle System", 105, 49, "vehiclesystem", true},
    {2843, "Vehicle System Instance", 102, 56, "vehicleinstance", true},
    {2846, "Industry Group", 101, 60, "industrygroup", true},
    {2844, "Addr Claiming Supported", 1, 63, "addresscapable", false},
};

// The order in which the init function assigns them: by SPN.
const quint32 assignmentOrder[] = {2837, 2838, 2839, 2840, 2841, 2842, 2843, 2844, 2846};

const NameField &field(quint32 spn)
{
    for (const auto &entry : nameFields) {
        if (entry.spn == spn)
            return entry;
    }
    return nameFields[0];
}

// The value of a field for a line as the settings hold it; an empty setting counts as 0.
QString settingValue(ObjectDataBase &store, const NameField &entry, quint8 line)
{
    const QString key = QLatin1String(entry.setting);
    if (!entry.perLine)
        return PgnContext::anyBase(store.getJ1939Setting(key)) != 0 ? QStringLiteral("1")
                                                                    : QStringLiteral("0");
    const QString value = store.getLineJ1939Setting(key, line).trimmed();
    return value.isEmpty() ? QStringLiteral("0") : value;
}

} // namespace

void PgnAddressClaim::declare(ObjectDataBase &store)
{
    const QList<quint8> lines = store.getLines();
    for (const quint8 line : lines) {
        if (line >= lineLimit)
            continue;
        const int type =
            int(PgnContext::number(store.getGeneralSetting(QStringLiteral("line%1type").arg(line))));
        if (!PgnContext::isJ1939Type(type) && store.getPGNs(line, Direction::Transmit).size() < 2)
            continue;
        PGN pgn;
        pgn.number = Pgn;
        pgn.direction = Direction::Transmit;
        pgn.priority = 6;
        pgn.cycletime_ms = 0;
        pgn.inhibittime_ms = 250;
        pgn.mappingcount = quint16(std::size(nameFields));
        pgn.name = QStringLiteral("Address Claiming");
        pgn.desc = QStringLiteral("This PGN is used to send the Address Claiming.");
        if (!store.addPGN(line, Pgn, pgn)) {
            qDebug() << Q_FUNC_INFO << "address claiming not added to line" << line << store.lastError();
            continue;
        }
        for (const auto &entry : nameFields) {
            SPN spn;
            spn.pgnnumber = Pgn;
            spn.direction = Direction::Transmit;
            spn.spnnumber = entry.spn;
            spn.name = QLatin1String(entry.name);
            spn.datatype = entry.datatype;
            spn.bitsize = quint16(COHelper::getDataLengthBits(entry.datatype));
            spn.bitposition = entry.bitposition;
            spn.implementation = 0;
            spn.pos = 0;
            spn.defaultvalue = entry.perLine ? settingValue(store, entry, line)
                                             : QString::number(PgnContext::anyBase(
                                                   store.getJ1939Setting(QLatin1String(entry.setting))));
            store.addSPN(line, Pgn, Direction::Transmit, entry.spn, spn);
        }
    }
}

QString PgnAddressClaim::assignments(const PgnContext &context, const PgnManagedVariables &variables)
{
    ObjectDataBase &store = context.store();
    QString text;
    for (const quint8 line : context.lines()) {
        if (store.getPGNs(line).isEmpty())
            continue;
        for (const quint32 spn : assignmentOrder) {
            const int slot = variables.slot(line, Pgn, spn, false);
            if (slot < 0)
                continue;
            const NameField &entry = field(spn);
            const PgnDataTypes::Table table = PgnDataTypes::managedTable(entry.datatype, false);
            text += QStringLiteral("\tmv_%1[%2] = %3;\n")
                        .arg(PgnDataTypes::tableName(table))
                        .arg(slot)
                        .arg(settingValue(store, entry, line));
        }
    }
    return text;
}

QString PgnAddressClaim::initialisation(const PgnContext &context, const PgnManagedVariables &variables)
{
    return QStringLiteral("\n\t/* initilization of managed variables for address claiming */ \n") +
           assignments(context, variables) + '\n';
}
