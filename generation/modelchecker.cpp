#include "modelchecker.h"

#include "generation/modelcheckcanopencontext.h"
#include "generation/modelcheckcanopenline.h"
#include "generation/modelcheckj1939.h"
#include "generation/modelchecknumeric.h"
#include "generation/modelcheckobjectrules.h"
#include "generation/modelcheckoutput.h"
#include "generation/modelcheckpdorules.h"
#include "generation/modelcheckrawcan.h"
#include "generation/modelcheckstackversion.h"
#include "generation/modelcheckuds.h"
#include "store/objectdatabase.h"

#include <QCoreApplication>
#include <QSettings>

namespace {

struct LineTypeCounts
{
    int type;
    int canopen;
    int j1939;
    int rawCan;
    int canopenJ1939;
};

// How a line of each type counts; a line of type 5 counts on its own.
const LineTypeCounts lineTypeCounts[] = {
    {1, 1, 0, 0, 0}, {2, 0, 1, 0, 0}, {4, 0, 0, 1, 0}, {5, 0, 0, 0, 1}, {6, 1, 0, 1, 0}, {7, 0, 1, 1, 0},
};

constexpr quint8 firstLineBeyondProject = 32;

struct UpdateHint
{
    int lastMinor;
    const char *canopenEdition;
    const char *otherEditions;
    bool udsInit;
};

// Stack sources that a project last saved with a 3.x version before 3.9 does not name yet, by the minor
// version of that save.
const UpdateHint updateHints[] = {
    {6,
     QT_TRANSLATE_NOOP("ModelChecker",
                       "<strong>Hint: </strong>Add <font color='red'>co_common.c and co_memcpy.c</font> "
                       "to your project or Makefile."),
     QT_TRANSLATE_NOOP("ModelChecker",
                       "<strong>Hint: </strong>Add <font color='red'>co_common.c, co_memcpy.c and "
                       "co_mapping.c</font> to your project or Makefile."),
     false},
    {8,
     QT_TRANSLATE_NOOP(
         "ModelChecker",
         "<strong>Hint: </strong>Add <font color='red'>co_memcpy.c</font> to your project or Makefile."),
     QT_TRANSLATE_NOOP("ModelChecker", "<strong>Hint: </strong>Add <font color='red'>co_memcpy.c and "
                                       "co_mapping.c</font> to your project or Makefile."),
     true},
};

QSettings applicationSettings()
{
    return QSettings(QCoreApplication::organizationName(), qApp->property("AppNameWithVersion").toString());
}

} // namespace

ModelChecker::ModelChecker(QObject *parent)
    : QObject(parent)
{}

ModelCheckOutput ModelChecker::output(int &count)
{
    return ModelCheckOutput([this](const QString &text) { emit newError(text); }, count);
}

int ModelChecker::checkCommon(ObjectDataBase *store, const QString &directory)
{
    database = store;
    projectDirectory = directory;
    errorCount = 0;
    ModelCheckOutput sink = output(errorCount);
    const LineCounts counts = countLines();
    ModelCheckUds::check(database, counts.lines, sink);
    checkUpdateHints(sink);
    checkCommonSettings(counts, sink);
    return errorCount + checkNumericSettings();
}

ModelChecker::LineCounts ModelChecker::countLines()
{
    LineCounts counts;
    const auto lines = database->getLines();
    for (const quint8 projectLine : lines) {
        if (projectLine >= firstLineBeyondProject)
            continue;
        ++counts.lines;
        const int type = database->getGeneralSetting(QStringLiteral("line%1type").arg(projectLine)).toInt();
        for (const auto &row : lineTypeCounts) {
            if (row.type != type)
                continue;
            counts.canopen += row.canopen;
            counts.j1939 += row.j1939;
            counts.rawCan += row.rawCan;
            counts.canopenJ1939 += row.canopenJ1939;
        }
    }
    return counts;
}

void ModelChecker::checkUpdateHints(ModelCheckOutput &sink)
{
    const QString previousVersion = database->getMiscSetting(QStringLiteral("PreviousToolVersion"));
    if (previousVersion.isEmpty())
        return;
    const QStringList parts = previousVersion.split(QLatin1Char('.'));
    const int major = parts.value(0).toInt();
    const int minor = parts.value(1).toInt();
    if (major != 3)
        return;
    const bool canopenEdition = QCoreApplication::applicationName() == QLatin1String("CANopen Kestrel");
    for (const auto &hint : updateHints) {
        if (minor > hint.lastMinor)
            continue;
        sink.message(tr(canopenEdition ? hint.canopenEdition : hint.otherEditions));
        if (hint.udsInit && (database->getGeneralSetting(QStringLiteral("udsserver_supported")).toInt() > 0 ||
                             database->getGeneralSetting(QStringLiteral("udsclient_supported")).toInt() > 0))
            sink.message(
                tr("<strong>Hint: </strong>Add <font color='red'>uds_init.c</font> to your project or "
                   "Makefile."));
        // Told once: the next run of this project has nothing to add.
        database->setMiscSetting(QStringLiteral("PreviousToolVersion"), QString());
        return;
    }
}

void ModelChecker::checkCommonSettings(const LineCounts &counts, ModelCheckOutput &sink)
{
    if (quint8(database->getGeneralSetting(QStringLiteral("sdo_blocktransfer_block_size")).toUInt()) >= 128)
        sink.error(tr(
            "<strong><font color='red'>Error: </font></strong>CANopen SDO block size may not exceed 127."));
    if (database->getGeneralSetting(QStringLiteral("co_timer_interval")).isEmpty())
        sink.error(tr(
            "<strong><font color='red'>Error: </font></strong>Timer interval not set in Common Settings -> "
            "Hardware/Target."));
    const int otherProtocols = counts.j1939 + counts.rawCan + counts.canopenJ1939;
    if (counts.lines >= 2 && counts.canopen >= 1 && otherProtocols >= 1 &&
        database->getGeneralSetting(QStringLiteral("nmtmaster")).contains(QLatin1Char('2')))
        sink.error(tr(
            "<strong><font color='red'>Error: </font></strong>The CANopen setting 'NMT Master or Slave' is "
            "not supported in multi-protocol projects."));
}

int ModelChecker::checkNumericSettings()
{
    int errors = 0;
    if (!database)
        return errors;
    ModelCheckOutput sink = output(errors);
    ModelCheckNumeric::checkSettings(database, sink);
    return errors;
}

void ModelChecker::readLineSettings(ModelCheckCANopenContext &context)
{
    context.limitCheckEnabled = database->getGeneralSetting(QStringLiteral("limit_check")).toInt() == 1;
    const quint8 descriptionLine = database->getDescriptionLine();
    database->setDescriptionLine(line);
    bool granularityRead = false;
    const uint granularity =
        database->getDescriptionSetting(QStringLiteral("Granularity")).toUInt(&granularityRead);
    database->setDescriptionLine(descriptionLine);
    if (granularityRead)
        context.granularity = quint8(granularity);
    context.canFd = database->getGeneralSetting(QStringLiteral("canfd_supported")).toInt() == 1;
    context.bitwiseMappingEnabled =
        database->getGeneralSetting(QStringLiteral("bitwise_mapping")).toInt() != 0;
    context.autoCorrectionDisabled =
        applicationSettings().value(QStringLiteral("General/disableautocorrection"), false).toBool();
}

int ModelChecker::checkCANopenLine(quint8 lineInWork, ObjectDataBase *store, bool &corrected)
{
    line = lineInWork;
    database = store;
    errorCount = 0;
    ModelCheckOutput sink = output(errorCount);
    ModelCheckCANopenContext context(database, line, sink, corrected);
    ModelCheckCANopenLine lineRules(context);
    lineRules.checkValueConversion();
    readLineSettings(context);
    ModelCheckStackVersion::check(database->getMiscSetting(QStringLiteral("costackpath")), projectDirectory,
                                  sink);
    lineRules.checkLineSettings();
    lineRules.checkCommunicationObjects();

    ModelCheckObjectRules objectRules(context);
    objectRules.checkObjects();
    ModelCheckPdoRules pdoRules(context);
    pdoRules.checkMapping();
    pdoRules.checkCommunication();
    pdoRules.checkTimers();
    pdoRules.checkSrdo();
    pdoRules.checkMappingUse();
    lineRules.checkStaticPdoIndication();
    lineRules.checkEmcyRouting(emcyRoutingReported);
    pdoRules.checkPredefinedConnectionSet();
    objectRules.checkVariableNames();
    return errorCount;
}

int ModelChecker::checkJ1939Line(quint8 lineInWork, ObjectDataBase *store, QList<quint32> &specialPgns)
{
    line = lineInWork;
    database = store;
    errorCount = 0;
    ModelCheckOutput sink = output(errorCount);
    ModelCheckJ1939(database, line, specialPgns, sink).check();
    return errorCount;
}

int ModelChecker::checkRawCANLine(quint8 lineInWork, ObjectDataBase *store)
{
    line = lineInWork;
    database = store;
    errorCount = 0;
    ModelCheckOutput sink = output(errorCount);
    ModelCheckRawCan(database, line, sink).check();
    return errorCount;
}
