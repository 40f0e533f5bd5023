#include "modelcheckcanopenline.h"

#include "generation/modelcheckcanopencontext.h"
#include "generation/modelchecker.h"
#include "generation/modelchecknumeric.h"
#include "generation/modelcheckoutput.h"
#include "store/objectdatabase.h"

#include <QCoreApplication>
#include <QStringList>

namespace {

struct MandatoryObject
{
    quint16 index;
    // An object that may stand in for the first; 0 for none.
    quint16 alternative;
    const char *message;
};

const MandatoryObject mandatoryObjects[] = {
    {0x1000, 0,
     QT_TRANSLATE_NOOP("ModelChecker",
                       "<strong>Error: </strong>Object 0x%1 (Device Type) does not exist, but it is "
                       "mandatory according to CANopen specification.")},
    {0x1001, 0,
     QT_TRANSLATE_NOOP("ModelChecker",
                       "<strong>Error: </strong>Object 0x%1 (Error Register) does not exist, but it "
                       "is mandatory according to CANopen specification.")},
    {0x1017, 0x100C,
     QT_TRANSLATE_NOOP("ModelChecker",
                       "<strong>Error: </strong>Object 0x%1 (Producer Heartbeat) and 0x100C (Guard "
                       "Time) do not exist, but one of them is mandatory.")},
};

// Objects whose sub-indices from 1 upward must be numbered without a gap.
const quint16 gaplessObjects[] = {0x1016, 0x1028, 0x1F81};

// Store parameters and restore default parameters.
const quint16 storeRestoreObjects[] = {0x1010, 0x1011};

struct IdentityEntry
{
    quint8 subIndex;
    const char *message;
};

// Identity entries that, where they exist, need a value.
const IdentityEntry identityEntries[] = {
    {2, QT_TRANSLATE_NOOP(
            "ModelChecker",
            "<strong>Error: </strong>Object 0x%1-0x02: The value of subindex 2 (product code) is empty.")},
    {3, QT_TRANSLATE_NOOP("ModelChecker", "<strong>Error: </strong>Object 0x%1-0x03: The value of subindex 3 "
                                          "(revision number) is empty.")},
};

// The vendor-ID of the tool's maker, meant for evaluation only.
constexpr quint64 evaluationVendorId = 0x7F3;

QString lineElement(const QString &list, quint8 line)
{
    const QStringList elements = list.split(QLatin1Char(','));
    return line < elements.size() ? elements.at(line).trimmed() : QString();
}

} // namespace

ModelCheckCANopenLine::ModelCheckCANopenLine(ModelCheckCANopenContext &checkContext)
    : context(checkContext)
{}

void ModelCheckCANopenLine::checkValueConversion()
{
    const auto objects = context.indices(0x1000, 0xFFFF);
    for (const quint16 index : objects) {
        const auto subIndices = context.subIndices(index);
        for (const quint8 subIndex : subIndices) {
            const SUBINDEX_DATA_T data = context.subIndex(index, subIndex);
            if (!ModelCheckNumeric::passes(data.datatype, data.defaultvalue))
                context.output.error(
                    ModelChecker::tr("<strong>Error: </strong>Value conversion failed with Object 0x%1-0x%2.")
                        .arg(ModelCheckOutput::hexIndex(index))
                        .arg(subIndex));
        }
        // Keeps the output view alive on large dictionaries.
        QCoreApplication::processEvents();
    }
}

void ModelCheckCANopenLine::checkLineSettings()
{
    ObjectDataBase *database = context.database;
    const quint8 line = context.line;
    const QString nodeId = lineElement(database->getGeneralSetting(QStringLiteral("co_node_id")), line);
    const QString nodeIdFunction =
        lineElement(database->getGeneralSetting(QStringLiteral("co_node_id_fct")), line);
    if (nodeId.isEmpty() && nodeIdFunction.isEmpty())
        context.output.error(
            ModelChecker::tr(
                "<strong>Error: </strong>CANopen basic Stack Settings: No Node-Id specified for line %1: "
                "Specify a number between 1 and 127, or 255 for LSS or a function name like e.g. "
                "readDipSwitch in the line below.")
                .arg(line));
    if (nodeIdFunction.contains(QLatin1Char('(')))
        context.output.error(ModelChecker::tr("<strong>Error: </strong>CANopen basic Stack Settings: The "
                                              "name of the NodeId function may not include a (."));
    if (nodeIdFunction.contains(QLatin1Char(')')))
        context.output.error(ModelChecker::tr("<strong>Error: </strong>CANopen basic Stack Settings: The "
                                              "name of the NodeId function may not include a )."));

    bool ok = false;
    lineElement(database->getGeneralSetting(QStringLiteral("receivebuffersize")), line).toUInt(&ok, 10);
    if (!ok)
        context.output.error(
            ModelChecker::tr("<strong>Error: </strong>Common Settings: CAN receive buffer size must be "
                             "specified individually for each line."));
    lineElement(database->getGeneralSetting(QStringLiteral("transmitbuffersize")), line).toUInt(&ok, 10);
    if (!ok)
        context.output.error(
            ModelChecker::tr("<strong>Error: </strong>Common Settings: CAN transmit buffer size must "
                             "be specified individually for each line."));

    if (line > 0 && database->getLineGeneralSetting(QStringLiteral("nmtmaster"), line).toInt() == 2 &&
        !database->getGeneralSetting(QStringLiteral("co_ml_ms")).contains(QLatin1Char(',')))
        context.output.error(
            ModelChecker::tr("<strong>Error: </strong>General Settings: The ML master/slave settings "
                             "size must be specified individually for each line. (e.g 0,1)"));
}

void ModelCheckCANopenLine::checkCommunicationObjects()
{
    checkDeviceType();
    checkMandatoryObjects();
    checkSlaveAssignment();
    checkGaps();
    checkSyncProducer();
    checkUsdoServer();
    checkStoreRestore();
    checkNmtInhibitTime();
    checkIdentity();
    checkErrorHistory();
    checkEmcyConsumers();
}

void ModelCheckCANopenLine::checkDeviceType()
{
    INDEX_DATA_T deviceType;
    if (!context.database->getIndex(context.line, 0x1000, deviceType))
        return;
    const QString index = ModelCheckOutput::hexIndex(0x1000);
    if (context.canFd && deviceType.objecttype != 8)
        context.output.error(
            ModelChecker::tr("<strong>Error: </strong>Object 0x%1 (Device Type) must be an ARRAY "
                             "according to the CANopen FD specification.")
                .arg(index));
    else if (!context.canFd && deviceType.objecttype != 7)
        context.output.error(
            ModelChecker::tr("<strong>Error: </strong>Object 0x%1 (Device Type) must be a VARIABLE "
                             "according to the CANopen specification.")
                .arg(index));
}

void ModelCheckCANopenLine::checkMandatoryObjects()
{
    for (const auto &object : mandatoryObjects) {
        if (context.exists(object.index) || (object.alternative != 0 && context.exists(object.alternative)))
            continue;
        context.output.error(ModelChecker::tr(object.message).arg(ModelCheckOutput::hexIndex(object.index)));
    }
}

void ModelCheckCANopenLine::checkSlaveAssignment()
{
    if (!context.exists(0x1F81))
        return;
    const QString setting =
        context.database->getGeneralSetting(QStringLiteral("max_slave_assignment")).trimmed();
    const uint maximum = setting.toUInt(nullptr, 10);
    if (setting.isEmpty() || maximum == 0)
        return;
    if (maximum > uint(context.subIndices(0x1F81, 1).size()))
        context.output.error(
            ModelChecker::tr("<strong>Error: </strong>Object 0x1f81: Value of 'max slave Assigment "
                             "count' may not exceed number of subindices of object 0x1f81."));
}

void ModelCheckCANopenLine::checkGaps()
{
    for (const quint16 index : gaplessObjects) {
        if (!context.exists(index))
            continue;
        const auto subIndices = context.subIndices(index, 1);
        if (subIndices.isEmpty())
            context.output.error(
                ModelChecker::tr("<strong>Error: </strong>Object 0x%1 does not contain any sub-indices.")
                    .arg(ModelCheckOutput::hexIndex(index)));
        else if (subIndices.last() != subIndices.size())
            context.output.error(ModelChecker::tr("<strong>Error: </strong>Object 0x%1 may not have gaps.")
                                     .arg(ModelCheckOutput::hexIndex(index)));
    }
}

void ModelCheckCANopenLine::checkSyncProducer()
{
    constexpr quint64 syncProducerBit = quint64(1) << 30;
    if ((context.value(0x1005, 0) & syncProducerBit) != 0 && !context.exists(0x1006))
        context.output.error(
            ModelChecker::tr("<strong>Error: </strong>Object 0x1006 must be present, if SYNC producer "
                             "bit is set in object 0x1005."));
}

void ModelCheckCANopenLine::checkUsdoServer()
{
    if (!context.canFd)
        return;
    ObjectDataBase *database = context.database;
    if (database->getLineGeneralSetting(QStringLiteral("usdo_server_enabled"), context.line).trimmed() ==
            QLatin1String("1") &&
        quint16(database->getLineGeneralSetting(QStringLiteral("usdo_server_cnt"), context.line).toUInt()) ==
            0)
        context.output.error(ModelChecker::tr(
            "<strong>Error: </strong>Number of USDO server connections must be at least 1."));
}

void ModelCheckCANopenLine::checkStoreRestore()
{
    const bool byApplication =
        context.database->getGeneralSetting(QStringLiteral("1010autostore_by_application")).toInt() != 0;
    for (const quint16 index : storeRestoreObjects) {
        for (quint8 subIndex = 1; subIndex <= 3; ++subIndex) {
            const QString text = context.text(index, subIndex);
            if (text.isEmpty())
                continue;
            const quint64 value = ModelCheckCANopenContext::number(text);
            if (byApplication && value >= 4)
                context.output.error(
                    ModelChecker::tr("<strong>Error: </strong>Object 0x%1:%2 only default values "
                                     "between 0 and 3 are supported.")
                        .arg(ModelCheckOutput::hexIndex(index))
                        .arg(subIndex));
            else if (!byApplication && value >= 2)
                context.output.error(
                    ModelChecker::tr("<strong>Error: </strong>Object 0x%1:%2 only default values "
                                     "between 0 and 1 are supported. Enable "
                                     "CO_AUTO_STORE_HANDLED_BY_APPLICATION to support other values")
                        .arg(ModelCheckOutput::hexIndex(index))
                        .arg(subIndex));
        }
    }
}

void ModelCheckCANopenLine::checkNmtInhibitTime()
{
    if (context.database->getLineGeneralSetting(QStringLiteral("nmtmaster"), context.line).toInt() == 1 &&
        !context.exists(0x102A))
        context.output.message(
            ModelChecker::tr("Warning: Object 0x%1: The object 0x102A (NMT inhibit time) is highly "
                             "recommended for masters. It may be added via 'Add Communication "
                             "Service'.")
                .arg(ModelCheckOutput::hexIndex(0x102A)));
}

void ModelCheckCANopenLine::checkIdentity()
{
    constexpr quint16 identity = 0x1018;
    if (!context.exists(identity))
        return;
    const QString index = ModelCheckOutput::hexIndex(identity);
    const QString vendorId = context.text(identity, 1).trimmed();
    if (vendorId.isEmpty())
        context.output.error(
            ModelChecker::tr(
                "<strong>Error: </strong>Object 0x%1-0x01: The value of subindex 1 (vendor-ID) is empty.")
                .arg(index));
    else if (ModelCheckCANopenContext::number(vendorId) == evaluationVendorId)
        context.output.message(
            ModelChecker::tr("<strong>Warning: Object 0x%1-0x01: The vendor-ID 0x7F3 (vorlan field "
                             "systems GmbH) may not be used for production. </strong>")
                .arg(index));
    for (const auto &entry : identityEntries) {
        if (context.exists(identity, entry.subIndex) &&
            context.text(identity, entry.subIndex).trimmed().isEmpty())
            context.output.error(ModelChecker::tr(entry.message).arg(index));
    }
    if (context.exists(identity, 4) && context.subIndex(identity, 4).implementation == 1)
        context.output.message(
            ModelChecker::tr("<strong>Warning</strong>: Object 0x%1: The implementation type of "
                             "subindex 4 (serial number) is 'Managed Const'. This is not useful in "
                             "most cases.")
                .arg(index));
}

void ModelCheckCANopenLine::checkErrorHistory()
{
    if (context.exists(0x1003) && !context.exists(0x1014))
        context.output.error(
            ModelChecker::tr("<strong>Error: </strong>Object 0x%1: This object can only be used, if "
                             "object 0x1014 exists as well.")
                .arg(ModelCheckOutput::hexIndex(0x1003)));
}

void ModelCheckCANopenLine::checkEmcyConsumers()
{
    constexpr quint16 consumers = 0x1028;
    if (!context.exists(consumers))
        return;
    const auto subIndices = context.subIndices(consumers, 1);
    for (const quint8 subIndex : subIndices) {
        if (subIndex > 127)
            break;
        if (context.value(consumers, subIndex) == 0)
            context.output.error(
                ModelChecker::tr("<strong>Error: </strong>Object 0x%1-%2: The value of this sub index "
                                 "may not be 0x00000000.")
                    .arg(ModelCheckOutput::hexIndex(consumers))
                    .arg(subIndex));
    }
}

void ModelCheckCANopenLine::checkStaticPdoIndication()
{
    ObjectDataBase *database = context.database;
    if (database->getGeneralSetting(QStringLiteral("use_core_headers")) == QLatin1String("V4"))
        return;
    const bool transmitEmpty = database->getGeneralSetting(QStringLiteral("fct_pdo")).trimmed().isEmpty();
    const bool receiveEmpty =
        database->getGeneralSetting(QStringLiteral("fct_pdo_receive")).trimmed().isEmpty();
    if (transmitEmpty != receiveEmpty)
        context.output.error(ModelChecker::tr("<strong>Error: </strong>Both static RPDO and TPDO event "
                                              "indication functions have to be defined."));
}

void ModelCheckCANopenLine::checkEmcyRouting(bool &reported)
{
    ObjectDataBase *database = context.database;
    if (database->getGeneralSetting(QStringLiteral("emcy_routing")).toInt() < 1)
        return;
    int producers = 0;
    int consumers = 0;
    const auto lines = database->getLines();
    for (const quint8 line : lines) {
        if (line >= 250)
            continue;
        producers += database->indexExists(line, 0x1014) ? 1 : 0;
        consumers += database->indexExists(line, 0x1028) ? 1 : 0;
    }
    if ((producers == 0 || consumers == 0) && !reported) {
        context.output.error(
            ModelChecker::tr("<strong>Error: </strong>Both EMCY producer objects and EMCY consumer "
                             "objects must be present to use EMCY routing."));
        reported = true;
    }
}
