#include "tst_modelcheckerfixture.h"

#include "generation/modelchecker.h"
#include "support/projectbuilder.h"
#include "support/testprojects.h"

#include <QCoreApplication>
#include <QDir>
#include <QTemporaryDir>

namespace ModelCheckFixture {

Setup steps(const QList<Setup> &list)
{
    return [list](ProjectBuilder &project) {
        for (const auto &step : list)
            step(project);
    };
}

Setup general(const QString &key, const QString &value)
{
    return [key, value](ProjectBuilder &project) { project.general(key, value); };
}

QString error(const QString &text)
{
    return QStringLiteral("<strong>Error: </strong>") + text;
}

QString warning(const QString &text)
{
    return QStringLiteral("<strong>Warning: </strong>") + text;
}

namespace {

// The special parameter groups as the driver hands them over.
const QList<quint32> specialPgns{59904, 60928, 60416, 60160, 59392, 3584, 65240, 9472};

// Runs the common rules first when a project directory is given, and records what the check tells.
CheckResult run(ProjectBuilder &project, const std::function<int(ModelChecker &, bool &)> &check,
                const QString *projectDirectory = nullptr)
{
    ModelChecker checker;
    if (projectDirectory)
        checker.checkCommon(&project.store(), *projectDirectory);
    CheckResult result;
    QObject::connect(&checker, &ModelChecker::newError,
                     [&result](const QString &text) { result.messages << text; });
    result.errors = check(checker, result.corrected);
    return result;
}

QString perLine(const QString &value, int lines)
{
    QStringList values;
    for (int line = 0; line < lines; ++line)
        values << value;
    return values.join(',');
}

} // namespace

void setApplication(const QString &edition)
{
    QCoreApplication::setOrganizationName(QStringLiteral("vorlan"));
    QCoreApplication::setApplicationName(edition);
    QCoreApplication::setApplicationVersion(QStringLiteral("4.3.2"));
    qApp->setProperty("AppNameWithVersion", edition + QStringLiteral(" 4.3.2"));
}

QSettings userSettings()
{
    return QSettings(QCoreApplication::organizationName(), qApp->property("AppNameWithVersion").toString());
}

QString stackFolder(const QString &requiredVersion)
{
    QTemporaryDir folder(QDir::tempPath() + QStringLiteral("/kestrelstack-XXXXXX"));
    folder.setAutoRemove(false);
    TestProjects::writeFile(folder.filePath(QStringLiteral("canopen_featureinfo_v1.xml")),
                            "<?xml version=\"1.0\"?>\n<featureinfo><required_tool_version>" +
                                requiredVersion.toUtf8() + "</required_tool_version></featureinfo>\n");
    return folder.path();
}

SUBINDEX_DATA_T entry(const QString &name, quint16 type, const QString &access, const QString &value,
                      bool writeDefault)
{
    SUBINDEX_DATA_T data = ProjectBuilder::subRecord(name, type, access, value);
    data.writedefaulttoeds = writeDefault;
    return data;
}

void object(ProjectBuilder &project, quint16 index, const QString &name, quint32 objectType,
            const QList<SUBINDEX_DATA_T> &entries, quint8 line)
{
    project.object(line, index, name, objectType);
    for (int subIndex = 0; subIndex < entries.size(); ++subIndex)
        project.sub(line, index, quint8(subIndex), entries.at(subIndex));
}

void cleanProject(ProjectBuilder &project, const QString &stackPath, const QList<int> &lineTypes)
{
    for (int line = 0; line < lineTypes.size(); ++line)
        project.line(quint8(line), lineTypes.at(line));
    const int lines = int(lineTypes.size());
    project.general(QStringLiteral("co_node_id"), perLine(QStringLiteral("11"), lines))
        .general(QStringLiteral("receivebuffersize"), perLine(QStringLiteral("10"), lines))
        .general(QStringLiteral("transmitbuffersize"), perLine(QStringLiteral("10"), lines))
        .general(QStringLiteral("co_timer_interval"), QStringLiteral("10000"))
        .general(QStringLiteral("use_core_headers"), QStringLiteral("V4"))
        .misc(QStringLiteral("costackpath"), stackPath);
    for (int line = 0; line < lines; ++line) {
        const int type = lineTypes.at(line);
        if (type != 1 && type != 5 && type != 6)
            continue;
        project
            .var(quint8(line), 0x1000, QStringLiteral("Device Type"), 7, QStringLiteral("ro"),
                 QStringLiteral("0"))
            .var(quint8(line), 0x1001, QStringLiteral("Error Register"), 5, QStringLiteral("ro"),
                 QStringLiteral("0"))
            .var(quint8(line), 0x1017, QStringLiteral("Producer Heartbeat Time"), 6, QStringLiteral("rw"),
                 QStringLiteral("0"));
    }
}

void cleanJ1939(ProjectBuilder &project, quint8 line)
{
    const QList<QPair<const char *, const char *>> name{
        {"identitynumber", "0x123456"}, {"manufacturercode", "100"}, {"ecuinstance", "3"},
        {"functioninstance", "14"},     {"function", "0xff"},        {"vehiclesystem", "0x55"},
        {"vehicleinstance", "1"},       {"industrygroup", "2"},      {"startaddress", "84"},
    };
    project.line(line, 2);
    for (const auto &[key, value] : name)
        project.store().setLineJ1939Setting(QLatin1String(key), QLatin1String(value), line);
    project.pgn(line, 65280, Direction::Receive, QStringLiteral("Status"))
        .spn(line, 65280, Direction::Receive, 520192, QStringLiteral("state"), 5, 0, 0);
}

void cleanRawCan(ProjectBuilder &project, quint8 line)
{
    project.line(line, 4).canId(line, 0x100, Direction::Receive, QStringLiteral("Status"));
    DataElement signal;
    signal.canid = 0x100;
    signal.direction = Direction::Receive;
    signal.number = 0;
    signal.name = QStringLiteral("sigA");
    signal.datatype = 5;
    signal.implementation = 2;
    signal.varname = QStringLiteral("a");
    project.dataElement(line, signal);
}

void mappableObject(ProjectBuilder &project, quint8 line)
{
    SUBINDEX_DATA_T small = entry(QStringLiteral("Value 1"), 5, QStringLiteral("rw"), QStringLiteral("0"));
    small.pdomapping = PDOMapping(Allowed);
    SUBINDEX_DATA_T large = entry(QStringLiteral("Value 2"), 7, QStringLiteral("rw"), QStringLiteral("0"));
    large.pdomapping = PDOMapping(Allowed);
    object(project, 0x2000, QStringLiteral("Values"), 9,
           {entry(QStringLiteral("Highest sub-index"), 5, QStringLiteral("ro"), QStringLiteral("2")), small,
            large},
           line);
}

void pdo(ProjectBuilder &project, quint16 communication, const QString &cobId, const QString &mappingAccess,
         const QStringList &entries, const QString &count, quint8 line)
{
    object(project, communication, QStringLiteral("PDO communication parameter"), 9,
           {entry(QStringLiteral("Highest sub-index"), 5, QStringLiteral("ro"), QStringLiteral("2")),
            entry(QStringLiteral("COB-ID"), 7, QStringLiteral("rw"), cobId),
            entry(QStringLiteral("Transmission type"), 5, QStringLiteral("rw"), QStringLiteral("255"))},
           line);
    // A static table is Managed Const throughout, as the editor makes it.
    const quint8 implementation = mappingAccess == QLatin1String("const") ? 1 : 0;
    SUBINDEX_DATA_T counter = entry(QStringLiteral("Number of entries"), 5, mappingAccess,
                                    count.isNull() ? QString::number(entries.size()) : count);
    counter.implementation = implementation;
    QList<SUBINDEX_DATA_T> mapping{counter};
    for (int number = 0; number < entries.size(); ++number) {
        SUBINDEX_DATA_T mapped =
            entry(QStringLiteral("Mapping entry %1").arg(number + 1), 7, mappingAccess, entries.at(number));
        mapped.implementation = implementation;
        mapping << mapped;
    }
    object(project, communication + 0x200, QStringLiteral("PDO mapping parameter"), 9, mapping, line);
}

CheckResult checkCommon(ProjectBuilder &project, const QString &projectDirectory)
{
    return run(project, [&](ModelChecker &checker, bool &) {
        return checker.checkCommon(&project.store(), projectDirectory);
    });
}

CheckResult checkCANopen(ProjectBuilder &project, quint8 line, const QString &projectDirectory)
{
    return run(
        project,
        [&](ModelChecker &checker, bool &corrected) {
            return checker.checkCANopenLine(line, &project.store(), corrected);
        },
        &projectDirectory);
}

CheckResult checkCANopenLines(ProjectBuilder &project, const QList<quint8> &lines)
{
    const QString projectDirectory;
    return run(
        project,
        [&](ModelChecker &checker, bool &corrected) {
            int errors = 0;
            for (const quint8 line : lines)
                errors += checker.checkCANopenLine(line, &project.store(), corrected);
            return errors;
        },
        &projectDirectory);
}

CheckResult checkJ1939(ProjectBuilder &project, quint8 line)
{
    return run(project, [&](ModelChecker &checker, bool &) {
        QList<quint32> special = specialPgns;
        return checker.checkJ1939Line(line, &project.store(), special);
    });
}

CheckResult checkRawCan(ProjectBuilder &project, quint8 line)
{
    return run(project, [&](ModelChecker &checker, bool &) {
        return checker.checkRawCANLine(line, &project.store());
    });
}

} // namespace ModelCheckFixture
