#include "dbcgenerator.h"

#include "busmodel/cohelper.h"
#include "generators/documents/implinfosetting.h"
#include "store/objectdatabase.h"

#include <QDebug>
#include <QFile>
#include <QRegularExpression>
#include <QTemporaryFile>
#include <QThread>

namespace {

constexpr quint32 addressClaimPgn = 60928;
constexpr quint32 firstPdu2Pgn = 61440;
constexpr quint8 globalAddress = 254;
constexpr quint32 extendedFlag = 0x80000000u;
constexpr int j1939FrameFormat = 3;
constexpr int cyclicSendType = 0;
constexpr int noSendType = 8;
constexpr int stringDelimiterSigType = 8;
constexpr quint16 asteriskTerminatedString = 121;
constexpr quint16 octetString = 10;
constexpr quint32 classicDlc = 8;

enum Owner
{
    NetworkOwner = 1,
    MessageOwner = 2,
    SignalOwner = 4
};
enum Type
{
    IntType = 1,
    EnumType = 4,
    StringType = 5
};

// The fields of the address claim, in the order of the group.
struct ClaimField
{
    const char *name;
    quint32 spnNumber;
    quint16 dataType;
    quint16 bitPosition;
    const char *settingKey;
};

constexpr ClaimField claimFields[] = {
    {"Identity Number", 2837, 119, 0, "identitynumber"},
    {"Manufacturer Code", 2838, 108, 21, "manufacturercode"},
    {"ECU Instance", 2840, 101, 32, "ecuinstance"},
    {"Function Instance", 2839, 103, 35, "functioninstance"},
    {"Function", 2841, 5, 40, "function"},
    {"reserved", 0, 1, 48, nullptr},
    {"Vehicle System", 2842, 105, 49, "vehiclesystem"},
    {"Vehicle System Instance", 2843, 102, 56, "vehicleinstance"},
    {"Industry Group", 2846, 101, 60, "industrygroup"},
    {"Addr Claiming Supported", 2844, 1, 63, "addresscapable"},
};

const char *const sigTypes[] = {"Default",         "Range",        "RangeSigned",        "ASCII",
                                "Discrete",        "Control",      "ReferencePGN",       "DTC",
                                "StringDelimiter", "StringLength", "StringLengthControl"};

const QMap<int, QString> sendTypeNames{{0, QStringLiteral("cyclic")},
                                       {2, QStringLiteral("cyclicIfActive")},
                                       {8, QStringLiteral("noMsgSendType")}};
const QMap<int, QString> frameFormatNames{{0, QStringLiteral("StandardCAN")},
                                          {1, QStringLiteral("ExtendedCAN")},
                                          {2, QStringLiteral("reserved")},
                                          {3, QStringLiteral("J1939PG")}};
const QMap<int, QString> implementationNames{{0, QStringLiteral("Managed")}, {1, QStringLiteral("Variable")}};

constexpr quint32 acknowledgeBase = 0x18E80000u;
constexpr quint32 dm1Base = 0x18FECA00u;

bool succeeded(int status, const char *errorText)
{
    if (status == KvaDbOk)
        return true;
    qDebug() << errorText << status;
    return false;
}

// Message and signal names keep letters, digits, "_" and "*".
QByteArray dbcName(const QString &name)
{
    static const QRegularExpression invalid(QStringLiteral("[^0-9a-zA-Z_*]"));
    return QString(name).replace(invalid, QStringLiteral("_")).toUtf8();
}

} // namespace

DBCGenerator::DBCGenerator(QObject *parent)
    : AbstractGenerator(parent)
{
    for (int index = 0; index < int(std::size(sigTypes)); ++index)
        sigTypeNames.insert(index, QString::fromLatin1(sigTypes[index]));
}

QString DBCGenerator::outputFile() const
{
    if (multiLine)
        return QStringLiteral("%1/%2_%3.dbc").arg(outputPath, projectName).arg(line);
    return filePath(QStringLiteral("%1/%2.dbc"));
}

GeneratorStatus DBCGenerator::start()
{
    if (running)
        return GeneratorStatus::Busy;
    implInfo = ImplInfoSetting::read();
    setGeneratorActive(false);
    addAddressClaim();
    setGeneratorActive(true);
    return AbstractGenerator::start();
}

void DBCGenerator::addAddressClaim()
{
    if (!database)
        return;
    ObjectDataBase &store = *database;
    store.removePGN(line, addressClaimPgn, Direction::Transmit);
    PGN pgn;
    pgn.number = addressClaimPgn;
    pgn.direction = Direction::Transmit;
    pgn.name = tr("Address Claiming");
    pgn.desc = tr("This PGN is used to send the Address Claiming.");
    pgn.priority = 6;
    pgn.inhibittime_ms = 250;
    if (!store.addPGN(line, addressClaimPgn, pgn))
        return;
    quint8 pos = 0;
    for (const auto &field : claimFields) {
        SPN spn;
        spn.pos = pos++;
        spn.name = QString::fromLatin1(field.name);
        spn.pgnnumber = addressClaimPgn;
        spn.direction = Direction::Transmit;
        spn.spnnumber = field.spnNumber;
        spn.datatype = field.dataType;
        spn.bitposition = field.bitPosition;
        spn.implementation = 0;
        if (!field.settingKey)
            spn.defaultvalue = QStringLiteral("0");
        else if (qstrcmp(field.settingKey, "addresscapable") == 0)
            spn.defaultvalue = store.getJ1939Setting(QStringLiteral("addresscapable")).toInt() != 0
                                   ? QStringLiteral("1")
                                   : QStringLiteral("0");
        else
            spn.defaultvalue = store.getLineJ1939Setting(QString::fromLatin1(field.settingKey), line);
        if (!store.addSPN(line, addressClaimPgn, Direction::Transmit, field.spnNumber, spn))
            return;
    }
}

void DBCGenerator::doJob()
{
    setGeneratorActive(true);
    running = true;
    QTemporaryFile tempFile;
    if (!tempFile.open() || !prepareOutput(tempFile.fileName())) {
        fail(tr("Could not create output file."));
        finishJob();
        return;
    }
    const QString tempName = tempFile.fileName();
    canFd = database && database->getGeneralSetting(QStringLiteral("canfd_supported")).toInt() > 0;
    emit progress(25);

    defineAttributes();
    const quint8 configured = configuredAddress();
    quint8 ownAddress = globalAddress;
    addParameterGroups(Direction::Receive, configured, ownAddress);
    addParameterGroups(Direction::Transmit, configured, ownAddress);

    static const FixedSignal acknowledgeSignals[] = {
        {"Control_Byte", 0, 8}, {"Group_Function", 8, 8}, {"reserved", 16, 16},
        {"Address", 32, 8},     {"PGN", 40, 24},
    };
    addFixedMessage(QStringLiteral("Acknowledge_Message"), acknowledgeBase + ownAddress, acknowledgeSignals,
                    std::size(acknowledgeSignals));
    if (database && database->getJ1939Setting(QStringLiteral("diagsupport_dm1")).toInt() == 1) {
        static const FixedSignal dm1Signals[] = {
            {"Protect_Lamp", 0, 2}, {"AmberWarningLamp", 2, 2},
            {"RedStopLamp", 4, 2},  {"MILLamp", 6, 2},
            {"SPN", 8, 19},         {"FMI", 27, 5},
            {"OC", 32, 7},          {"CM", 39, 1},
        };
        addFixedMessage(tr("Diagnostic_Message_%1").arg(1), dm1Base + ownAddress, dm1Signals,
                        std::size(dm1Signals));
    }

    setGeneratorActive(false);
    succeeded(kvaDbWriteFile(dbc, tempName.toLocal8Bit().constData()), "Error create dbc file");
    kvaDbClose(dbc);
    dbc = nullptr;
    copyToTarget(tempName);
    tempFile.remove();
    finishJob();
}

bool DBCGenerator::prepareOutput(const QString &tempName)
{
    qDebug() << "DBC prprae output";
    if (!succeeded(kvaDbOpen(&dbc), "Error open dbc Database"))
        return false;
    const QByteArray name = tempName.toLocal8Bit();
    if (!succeeded(kvaDbCreate(dbc, name.constData(), nullptr), "Error create database") ||
        !succeeded(kvaDbWriteFile(dbc, name.constData()), "Error create dbc file")) {
        kvaDbClose(dbc);
        dbc = nullptr;
        return false;
    }
    qDebug() << "Creating Done";
    return true;
}

KvaDbAttributeDefHnd DBCGenerator::define(const char *name, int owner, int type)
{
    KvaDbAttributeDefHnd definition = nullptr;
    if (!succeeded(kvaDbAddAttributeDefinition(dbc, &definition), "Error kvaDbAddAttributeDefinition"))
        return nullptr;
    succeeded(kvaDbSetAttributeDefinitionName(definition, name), "Error kvaDbSetAttributeDefinitionName");
    succeeded(kvaDbSetAttributeDefinitionOwner(definition, owner), "Error kvaDbSetAttributeDefinitionOwner");
    succeeded(kvaDbSetAttributeDefinitionType(definition, type), "Error kvaDbSetAttributeDefinitionType");
    return definition;
}

KvaDbAttributeDefHnd DBCGenerator::defineInt(const char *name, int owner, int defaultValue, int min, int max)
{
    KvaDbAttributeDefHnd definition = define(name, owner, IntType);
    succeeded(kvaDbSetAttributeDefinitionInt(definition, defaultValue, min, max),
              "Error kvaDbSetAttributeDefinitionInt");
    return definition;
}

KvaDbAttributeDefHnd DBCGenerator::defineEnum(const char *name, int owner, const QMap<int, QString> &names,
                                              int defaultIndex)
{
    KvaDbAttributeDefHnd definition = define(name, owner, EnumType);
    for (auto it = names.cbegin(); it != names.cend(); ++it)
        succeeded(kvaDbAddAttributeDefinitionEnum(definition, it.value().toUtf8().constData(), it.key()),
                  "Error kvaDbAddAttributeDefinitionEnum");
    succeeded(kvaDbSetAttributeValueEnumeration(definition, defaultIndex),
              "Error kvaDbSetAttributeValueEnumeration mAdhVFrameFormat");
    return definition;
}

void DBCGenerator::defineAttributes()
{
    KvaDbAttributeDefHnd protocolTypeDef = define("ProtocolType", NetworkOwner, StringType);
    succeeded(kvaDbSetAttributeDefinitionString(protocolTypeDef, ""),
              "Error kvaDbSetAttributeDefinitionString");
    cycleTimeDef = defineInt("GenMsgCycleTime", MessageOwner, 0, 0, 3600000);
    sendTypeDef = defineEnum("GenMsgSendType", MessageOwner, sendTypeNames, noSendType);
    sigTypeDef = defineEnum("SigType", SignalOwner, sigTypeNames, 0);
    frameFormatDef = defineEnum("VFrameFormat", MessageOwner, frameFormatNames, j1939FrameFormat);
    spnDef = defineInt("SPN", SignalOwner, 0, 0, 0x7FFFF);
    if (implInfo) {
        implTypeDef = defineEnum("vorlan_implementation_type", SignalOwner, implementationNames, 0);
        varNameDef = define("vorlan_variable_name", SignalOwner, StringType);
    }
    bitSizeDef = defineInt("vorlan_bitsize", SignalOwner, 64, 0, 5120);

    KvaDbAttributeHnd protocolType = nullptr;
    if (succeeded(kvaDbAddNetworkAttribute(dbc, protocolTypeDef, &protocolType),
                  "Error kvaDbAddNetworkAttribute"))
        succeeded(kvaDbSetAttributeValueString(protocolType, "J1939", 5),
                  "Error kvaDbSetAttributeValueString");
}

// The own source address: this line's entry of the list, else the first one, else the global address.
quint8 DBCGenerator::configuredAddress()
{
    const QStringList entries =
        database ? database->getJ1939Setting(QStringLiteral("startaddress")).split(',') : QStringList();
    QString entry = entries.size() > line ? entries.at(line) : entries.value(0);
    entry = entry.trimmed();
    if (entry.isEmpty())
        entry = QStringLiteral("0xFE");
    return quint8(entry.toUInt(nullptr, 0));
}

void DBCGenerator::addParameterGroups(quint8 direction, quint8 configuredAddress, quint8 &ownAddress)
{
    if (!database)
        return;
    const QList<quint32> numbers = database->getPGNs(line, direction, false);
    for (const quint32 number : numbers) {
        PGN pgn;
        if (!database->getPGN(line, number, direction, pgn))
            continue;
        ownAddress = configuredAddress;
        addParameterGroup(pgn, ownAddress);
    }
}

void DBCGenerator::addParameterGroup(const PGN &pgn, quint8 ownAddress)
{
    quint32 id = (quint32(pgn.priority & 7) << 26) | ((pgn.number & 0x3FFFF) << 8);
    if (pgn.direction == Direction::Receive) {
        if (pgn.number < firstPdu2Pgn)
            id += quint32(ownAddress) << 8;
        id = (id & ~0xFFu) | globalAddress;
    } else {
        id = (id & ~0xFFu) | ownAddress;
    }
    KvaDbMessageHnd message = addMessage(pgn.name, id);
    if (!pgn.desc.isEmpty())
        succeeded(kvaDbSetMsgComment(message, pgn.desc.toUtf8().constData()), "Error kvaDbSetMsgComment");
    setMessageAttribute(message, frameFormatDef, j1939FrameFormat,
                        "Error kvaDbAddMsgAttribute mAdhVFrameFormat");
    if (pgn.cycletime_ms != 0) {
        setMessageAttribute(message, cycleTimeDef, pgn.cycletime_ms);
        setMessageAttribute(message, sendTypeDef, cyclicSendType);
    } else {
        setMessageAttribute(message, sendTypeDef, noSendType);
    }

    quint32 position = 0;
    const QList<quint32> spns = database->getSPNs(line, pgn.number, pgn.direction);
    for (const quint32 number : spns) {
        SPN spn;
        if (database->getSPN(line, pgn.number, pgn.direction, number, spn))
            position = addSignal(message, spn, position);
    }
    quint32 dlc = position / 8;
    if (!canFd)
        dlc = qMax(dlc, classicDlc);
    succeeded(kvaDbSetMsgDlc(message, int(dlc)), "Error kvaDbSetMsgDlc");
}

// Returns the bit position behind the signal.
quint32 DBCGenerator::addSignal(KvaDbMessageHnd message, const SPN &spn, quint32 position)
{
    const bool byBitSize = spn.datatype == asteriskTerminatedString || spn.datatype == octetString;
    quint32 size = byBitSize ? spn.bitsize : COHelper::getDataLengthBits(spn.datatype);
    if (spn.name.contains(QLatin1String("dummy")))
        return position + size;

    KvaDbSignalHnd signal = nullptr;
    if (!succeeded(kvaDbAddSignal(message, &signal), "Error kvaDbAddSignal"))
        return position + size;
    succeeded(kvaDbSetSignalName(signal, dbcName(spn.name).constData()), "Error kvaDbSetSignalName");
    if (spn.datatype == asteriskTerminatedString) {
        succeeded(kvaDbSetSignalValueSize(signal, int(position), 8), "Error kvaDbSetSignalValueSize");
        setSignalAttribute(signal, bitSizeDef, int(size));
        size = 8;
    } else {
        succeeded(kvaDbSetSignalValueSize(signal, int(position), int(size)), "Error kvaDbSetSignalValueSize");
    }
    if (!spn.desc.isEmpty())
        succeeded(kvaDbSetSignalComment(signal, spn.desc.toUtf8().constData()),
                  "Error kvaDbSetSignalComment");
    setSignalAttribute(signal, spnDef, int(spn.spnnumber));
    if (spn.datatype == asteriskTerminatedString)
        setSignalAttribute(signal, sigTypeDef, stringDelimiterSigType);
    if (!byBitSize)
        succeeded(kvaDbSetSignalValueType(signal, 2), "Error kvaDbSetSignalValueType");
    if (implInfo) {
        setSignalAttribute(signal, implTypeDef, spn.implementation != 0 ? 1 : 0);
        if (spn.implementation != 0) {
            KvaDbAttributeHnd varName = nullptr;
            if (succeeded(kvaDbAddSignalAttribute(signal, varNameDef, &varName),
                          "Error kvaDbAddSignalAttribute")) {
                const QByteArray text = spn.varname.toUtf8();
                succeeded(kvaDbSetAttributeValueString(varName, text.constData(), int(text.size())),
                          "Error kvaDbSetAttributeValueString");
            }
        }
    }
    return position + size;
}

KvaDbMessageHnd DBCGenerator::addMessage(const QString &name, quint32 id)
{
    KvaDbMessageHnd message = nullptr;
    succeeded(kvaDbAddMsg(dbc, &message), "Error kvaDbAddMsg");
    succeeded(kvaDbSetMsgName(message, dbcName(name).constData()), "Error kvaDbSetMsgName");
    succeeded(kvaDbSetMsgId(message, id | extendedFlag, 0), "Error kvaDbSetMsgId");
    return message;
}

void DBCGenerator::addFixedMessage(const QString &name, quint32 id, const FixedSignal *fixedSignals,
                                   size_t count)
{
    KvaDbMessageHnd message = addMessage(name, id);
    setMessageAttribute(message, frameFormatDef, j1939FrameFormat,
                        "Error kvaDbAddMsgAttribute mAdhVFrameFormat");
    succeeded(kvaDbSetMsgDlc(message, int(classicDlc)), "Error kvaDbSetMsgDlc");
    for (size_t i = 0; i < count; ++i) {
        KvaDbSignalHnd signal = nullptr;
        if (!succeeded(kvaDbAddSignal(message, &signal), "Error kvaDbAddSignal"))
            continue;
        succeeded(kvaDbSetSignalName(signal, fixedSignals[i].name), "Error kvaDbSetSignalName");
        succeeded(kvaDbSetSignalValueSize(signal, fixedSignals[i].startBit, fixedSignals[i].length),
                  "Error kvaDbSetSignalValueSize");
        succeeded(kvaDbSetSignalValueType(signal, 2), "Error kvaDbSetSignalValueType");
    }
}

void DBCGenerator::setMessageAttribute(KvaDbMessageHnd message, KvaDbAttributeDefHnd definition, int value,
                                       const char *errorText)
{
    KvaDbAttributeHnd attribute = nullptr;
    if (succeeded(kvaDbAddMsgAttribute(message, definition, &attribute), errorText))
        succeeded(kvaDbSetAttributeValueInt(attribute, value), "Error kvaDbSetAttributeValueInt");
}

void DBCGenerator::setSignalAttribute(KvaDbSignalHnd signal, KvaDbAttributeDefHnd definition, int value)
{
    KvaDbAttributeHnd attribute = nullptr;
    if (succeeded(kvaDbAddSignalAttribute(signal, definition, &attribute), "Error kvaDbAddSignalAttribute"))
        succeeded(kvaDbSetAttributeValueInt(attribute, value), "Error kvaDbSetAttributeValueInt");
}

void DBCGenerator::copyToTarget(const QString &tempName)
{
    const QString target = outputFile();
    if (target.isEmpty()) {
        fail(tr("Empty target file name"));
        return;
    }
    QFile::remove(target);
    if (!QFile::copy(tempName, target)) {
        fail(tr("Could not copy output file. %1 - %2").arg(tempName, target));
        return;
    }
    // A copy takes over the private permissions of the temporary file.
    QFile::setPermissions(target, QFile::ReadOwner | QFile::WriteOwner | QFile::ReadUser | QFile::WriteUser |
                                      QFile::ReadGroup | QFile::ReadOther);
}

