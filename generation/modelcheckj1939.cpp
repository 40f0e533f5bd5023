#include "modelcheckj1939.h"

#include "busmodel/cohelper.h"
#include "generation/modelcheckbitranges.h"
#include "generation/modelchecker.h"
#include "generation/modelcheckoutput.h"
#include "store/objectdatabase.h"

#include <QHash>
#include <QPair>

namespace {

const quint8 directions[] = {Direction::Receive, Direction::Transmit};

struct NameField
{
    const char *key;
    const char *message;
};

// The fields of the J1939 NAME and the address, in the order the configuration tab shows them.
const NameField nameFields[] = {
    {"identitynumber",
     QT_TRANSLATE_NOOP("ModelChecker", "<strong>Error: </strong>Identity number not defined in "
                                       "J1939 configuration tab for line %1.")},
    {"manufacturercode",
     QT_TRANSLATE_NOOP("ModelChecker", "<strong>Error: </strong>Manufacturer code not defined in "
                                       "J1939 configuration tab for line %1.")},
    {"ecuinstance",
     QT_TRANSLATE_NOOP("ModelChecker", "<strong>Error: </strong>ECU instance not defined in J1939 "
                                       "configuration tab for line %1.")},
    {"functioninstance",
     QT_TRANSLATE_NOOP("ModelChecker", "<strong>Error: </strong>Function instance not defined in "
                                       "J1939 configuration tab for line %1")},
    {"function", QT_TRANSLATE_NOOP("ModelChecker", "<strong>Error: </strong>Function not defined in J1939 "
                                                   "configuration tab for line %1.")},
    {"vehiclesystem",
     QT_TRANSLATE_NOOP("ModelChecker", "<strong>Error: </strong>Vehicle system not defined in J1939 "
                                       "configuration tab for line %1.")},
    {"vehicleinstance",
     QT_TRANSLATE_NOOP("ModelChecker", "<strong>Error: </strong>Vehicle instance not defined in "
                                       "J1939 configuration tab for line %1.")},
    {"industrygroup",
     QT_TRANSLATE_NOOP("ModelChecker", "<strong>Error: </strong>Industry Group not defined in J1939 "
                                       "configuration tab for line %1.")},
    {"startaddress",
     QT_TRANSLATE_NOOP("ModelChecker", "<strong>Error: </strong>An address needs to defined in the "
                                       "J1939 configuration for line %1.")},
};

// The manufacturer code of the tool's maker, meant for evaluation only.
constexpr quint16 evaluationManufacturerCode = 4021;

// Data types that a safe parameter group cannot carry: unknown, strings, domains.
const quint16 unsafeDataTypes[] = {0, 9, 15, 120, 121};

constexpr quint8 ManagedVariable = 0;
constexpr quint8 ApplicationVariable = 2;
constexpr quint32 classicPayloadBits = 64;

QString hexPgn(quint32 number)
{
    return QStringLiteral("%1").arg(number, 4, 16, QLatin1Char('0'));
}

bool isUnsafeDataType(quint16 dataType)
{
    for (const quint16 unsafe : unsafeDataTypes) {
        if (dataType == unsafe)
            return true;
    }
    return false;
}

} // namespace

ModelCheckJ1939::ModelCheckJ1939(ObjectDataBase *store, quint8 lineInWork, const QList<quint32> &special,
                                 ModelCheckOutput &sink)
    : database(store)
    , line(lineInWork)
    , specialPgns(special)
    , output(sink)
{}

void ModelCheckJ1939::check()
{
    canFd = database->getGeneralSetting(QStringLiteral("canfd_supported")).toInt() == 1;
    checkSettings();
    checkName();
    checkSpecialPgns();
    bamSupport = database->getJ1939Setting(QStringLiteral("bamsupport")).toInt();
    cmdtSupport = database->getJ1939Setting(QStringLiteral("cmdtsupport")).toInt();
    safetySupport = database->getJ1939Setting(QStringLiteral("safetysupport")).toInt();
    database->cacheAllSPNs(line);
    checkParameterGroups();
    checkTransportProtocols();
    for (const quint8 direction : directions) {
        const auto pgns = database->getPGNs(line, direction);
        for (const quint32 number : pgns)
            checkSpns(direction, number);
    }
    database->clearSPNCache();
    checkVariableNames();
}

void ModelCheckJ1939::checkSettings()
{
    if (database->getGeneralSetting(QStringLiteral("sorted_coblist")).toInt() > 0)
        output.error(
            ModelChecker::tr("<strong>Error: </strong>Sorted COB list may not used with J1939 projects."));
    if (database->getGeneralSetting(QStringLiteral("drv_group_filter")).toInt() == 1)
        output.message(ModelChecker::tr(
            "<strong>Warning: </strong>Group filter is only useful for CANopen or mixed projects."));
    if (database->getJ1939Setting(QStringLiteral("dynsupport")).toInt() > 0 &&
        database->getGeneralSetting(QStringLiteral("additional_cob_count")).trimmed().isEmpty())
        output.error(ModelChecker::tr(
            "<strong>Error: </strong>Additional COBs need to be specific with dynamic PGN support."));
}

void ModelCheckJ1939::checkName()
{
    for (const auto &field : nameFields) {
        const QString key = QLatin1String(field.key);
        const QString value = database->getLineJ1939Setting(key, line).trimmed();
        if (value.isEmpty())
            output.error(ModelChecker::tr(field.message).arg(line));
        if (key == QLatin1String("manufacturercode") &&
            quint16(value.toUInt(nullptr, 10)) == evaluationManufacturerCode)
            output.message(
                ModelChecker::tr("<strong>Warning: The manufacturer code 4021 (vorlan field systems GmbH) "
                                 "may not be used for production. </strong>"));
    }
}

void ModelCheckJ1939::checkSpecialPgns()
{
    for (const quint8 direction : directions) {
        const auto pgns = database->getPGNs(line, direction);
        for (const quint32 number : pgns) {
            if (specialPgns.contains(number))
                output.error(ModelChecker::tr(
                                 "<strong>Error: </strong>Special PGN %1/0x%2 is handled by the J1939 stack "
                                 "directly and may not be included in the signal definitions.\n")
                                 .arg(number)
                                 .arg(hexPgn(number)));
        }
    }
}

void ModelCheckJ1939::checkParameterGroups()
{
    for (const quint8 direction : directions) {
        const auto pgns = database->getPGNs(line, direction);
        for (const quint32 number : pgns)
            checkParameterGroup(direction, number);
    }
}

void ModelCheckJ1939::checkParameterGroup(quint8 direction, quint32 number)
{
    PGN pgn;
    database->getPGN(line, number, direction, pgn);
    const QString hexNumber = hexPgn(number);
    if (pgn.name.trimmed().isEmpty())
        output.message(
            ModelChecker::tr("<strong>Warning: </strong>The PGN %1 des not have a name.").arg(number));
    const auto spns = database->getSPNs(line, number, direction);
    if (spns.isEmpty() && !specialPgns.contains(number))
        output.error(ModelChecker::tr("<strong>Error: </strong>PG (%1/0x%2) does not contain any SPNs.")
                         .arg(number)
                         .arg(hexNumber));
    if (pgn.issafe) {
        if (pgn.safetytype == 0)
            output.error(
                ModelChecker::tr("<strong>Error: </strong>PG (%1/0x%2) A safety type needs to be assigned to "
                                 "this PGN.")
                    .arg(number)
                    .arg(hexNumber));
        if (!canFd && pgn.safetytype >= 3)
            output.error(ModelChecker::tr(
                             "<strong>Error: </strong>PG (%1/0x%2) This safety type is not supported with "
                             "classical CAN.")
                             .arg(number)
                             .arg(hexNumber));
    }

    quint32 bits = 0;
    for (const quint32 spnNumber : spns) {
        SPN spn;
        if (!database->getSPN(line, number, direction, spnNumber, spn))
            continue;
        const quint32 typeBits = COHelper::getDataLengthBits(spn.datatype);
        bits += typeBits != 0 ? typeBits : spn.bitsize;
        if (!pgn.issafe)
            continue;
        if (safetySupport < 1) {
            output.message(
                ModelChecker::tr("<strong>Warning: </strong>PG (%1/0x%2) shall be transmitted as SDM but SHM "
                                 "support is not activated.")
                    .arg(number)
                    .arg(hexNumber));
            break;
        }
        if (spn.implementation == ManagedVariable)
            output.error(
                ModelChecker::tr("<strong>Error: </strong>PG (%1/0x%2) transmitted as SDM may not contain "
                                 "managed variables.")
                    .arg(number)
                    .arg(hexNumber));
        if (isUnsafeDataType(spn.datatype))
            output.error(
                ModelChecker::tr("<strong>Error: </strong>PG (%1/0x%2) contains unsuppported data types.")
                    .arg(number)
                    .arg(hexNumber));
    }
    if (bits > classicPayloadBits) {
        hasLongPgns = true;
        if (safetySupport >= 1 && pgn.issafe)
            output.error(ModelChecker::tr(
                             "<strong>Error: </strong>PG (%1/0x%2) transmitted as SDM may not exceed 64 bit.")
                             .arg(number)
                             .arg(hexNumber));
    }
}

void ModelCheckJ1939::checkTransportProtocols()
{
    if (!canFd && hasLongPgns && bamSupport < 1 && cmdtSupport < 1)
        output.error(ModelChecker::tr(
            "<strong>Error: </strong>Neither BAM nor TP.CMDT supported but PGNs with length > "
            "64 bit defined."));
    if (cmdtSupport >= 1 && quint8(database->getJ1939Setting(QStringLiteral("cmdtpackets")).toUInt()) == 0)
        output.error(ModelChecker::tr(
            "<strong>Error: </strong>CMDT packet count should not be 0 in J1939 configuration."));
}

void ModelCheckJ1939::checkSpns(quint8 direction, quint32 number)
{
    ModelCheckBitRanges ranges;
    const auto spns = database->getSPNs(line, number, direction);
    for (const quint32 spnNumber : spns) {
        SPN spn;
        if (!database->getSPN(line, number, direction, spnNumber, spn))
            continue;
        if (spn.implementation == ApplicationVariable && spn.varname.trimmed().isEmpty())
            output.error(
                ModelChecker::tr("<strong>Error: </strong>The SPN %1 in PGN %2 needs a variable name.")
                    .arg(spnNumber)
                    .arg(number));
        const QString name = spn.name.trimmed();
        if (name.isEmpty())
            output.message(ModelChecker::tr("<strong>Warning: </strong>The SPN %1 in PGN %2 needs a name.")
                               .arg(spnNumber)
                               .arg(number));
        else if (name.at(0).isDigit())
            output.message(
                ModelChecker::tr("<strong>Warning: </strong>The name of SPN %1 in PGN %2 should not start "
                                 "with a number.")
                    .arg(spnNumber)
                    .arg(number));
        const quint32 size = spn.bitsize != 0 ? spn.bitsize : COHelper::getDataLengthBits(spn.datatype);
        if (ranges.overlapsAndAdd(spn.pos, spn.pos + size))
            output.message(
                ModelChecker::tr("<strong>Warning: </strong>SPN %1 in PGN %2 overlaps in bit position with "
                                 "another SPN in the same PGN.")
                    .arg(spnNumber)
                    .arg(number));
    }
}

void ModelCheckJ1939::checkVariableNames()
{
    QHash<QString, QPair<quint32, quint32>> holders;
    for (const quint8 direction : directions) {
        const auto pgns = database->getPGNs(line, direction);
        for (const quint32 number : pgns) {
            const auto spns = database->getSPNs(line, number, direction);
            for (const quint32 spnNumber : spns) {
                SPN spn;
                if (!database->getSPN(line, number, direction, spnNumber, spn))
                    continue;
                const QString name = spn.varname.trimmed();
                if (spn.implementation != ApplicationVariable || name.isEmpty())
                    continue;
                const auto holder = holders.constFind(name);
                if (holder == holders.constEnd()) {
                    holders.insert(name, {number, spnNumber});
                    continue;
                }
                output.message(
                    ModelChecker::tr("<strong>Warning: </strong>SPN %1 in PGN %2: variable name '%3' is "
                                     "already used by SPN %4 in PGN %5.")
                        .arg(QString::number(spnNumber), QString::number(number), name,
                             QString::number(holder->second), QString::number(holder->first)));
            }
        }
    }
}
