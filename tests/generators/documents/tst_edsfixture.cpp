#include "tst_edsfixture.h"

#include "generation/abstractgenerator.h"
#include "store/objectdatabase.h"
#include "support/projectbuilder.h"
#include "support/testprojects.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QProcess>
#include <QRegularExpression>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <QTest>
#include <QXmlStreamReader>

#include <utility>

namespace EdsFixture {

namespace {

const std::pair<const char *, const char *> descriptionSettings[] = {
    {"VendorName", "ACME Devices"},
    {"ProductName", "Widget"},
    {"OrderCode", "W-100"},
    {"FileVersion", "2"},
    {"FileRevision", "3"},
    {"CreatedBy", "Ann"},
    {"ModifiedBy", "Bob"},
    {"BaudRate_10", "0"},
    {"BaudRate_20", "0"},
    {"BaudRate_50", "0"},
    {"BaudRate_125", "1"},
    {"BaudRate_250", "1"},
    {"BaudRate_500", "1"},
    {"BaudRate_800", "0"},
    {"BaudRate_1000", "0"},
    {"LSS_Supported", "1"},
    {"Granularity", "8"},
    {"Dummy0001", "0"},
    {"Dummy0002", "1"},
    {"Dummy0003", "0"},
    {"Dummy0004", "0"},
    {"Dummy0005", "0"},
    {"Dummy0006", "0"},
    {"Dummy0007", "0"},
    {"Comment", ""},
    {"AdditionalSections", ""},
};

// Copies of the files that run() wrote, named after the test that wrote them, waiting for their readers.
// Each reader then starts once for all of them.
QTemporaryDir *writtenFiles = nullptr;
int writtenCount = 0;

// The lines a Python script prints about the files; the script prints nothing for good files.
QStringList pythonProblems(const QStringList &arguments)
{
    if (QStandardPaths::findExecutable(QStringLiteral("python3")).isEmpty())
        return {QStringLiteral("python3 is needed to read the files with a reader of its own")};
    QProcess python;
    python.start(QStringLiteral("python3"), arguments);
    if (!python.waitForFinished(120000))
        return {QStringLiteral("the reader did not finish")};
    const QString output = QString::fromUtf8(python.readAllStandardOutput() + python.readAllStandardError());
    QStringList problems = output.split('\n', Qt::SkipEmptyParts);
    if (problems.isEmpty() && python.exitCode() != 0)
        problems << QStringLiteral("the reader failed");
    return problems;
}

QStringList xmlProblems(const QString &path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return {path + QStringLiteral(": cannot be read")};
    QXmlStreamReader reader(&file);
    while (!reader.atEnd())
        reader.readNext();
    if (!reader.hasError())
        return {};
    return {QStringLiteral("%1: line %2: %3").arg(path).arg(reader.lineNumber()).arg(reader.errorString())};
}

// The blank separator lines of the table are no rows.
const char csvCheck[] = "import csv, sys\n"
                        "for path in sys.argv[1:]:\n"
                        "    with open(path, newline='', encoding='utf-8') as table:\n"
                        "        for number, row in enumerate(csv.reader(table), 1):\n"
                        "            if row != [' '] and len(row) != 18:\n"
                        "                print(f'{path}: row {number} has {len(row)} cells')\n";

void keepForTheReaders(const QString &path)
{
    if (!writtenFiles)
        writtenFiles = new QTemporaryDir;
    static const QRegularExpression unsafe(QStringLiteral("[^A-Za-z0-9_.-]+"));
    const QString test =
        QStringLiteral("%1_%2_%3_")
            .arg(++writtenCount)
            .arg(QLatin1String(QTest::currentTestFunction()), QLatin1String(QTest::currentDataTag()))
            .replace(unsafe, QStringLiteral("_"));
    QFile::copy(path, writtenFiles->filePath(test + QFileInfo(path).fileName()));
}

} // namespace

SUBINDEX_DATA_T entry(const QString &name, quint16 type, const QString &access, const QString &value,
                      bool writeDefault)
{
    SUBINDEX_DATA_T data = ProjectBuilder::subRecord(name, type, access, value);
    data.writedefaulttoeds = writeDefault;
    return data;
}

void device(ProjectBuilder &project, quint8 line)
{
    project.line(line, 1);
    for (const auto &[key, value] : descriptionSettings)
        project.description(line, QLatin1String(key), QLatin1String(value));
    project.object(line, 0x1000, QStringLiteral("Device type"))
        .sub(line, 0x1000, 0,
             entry(QStringLiteral("Device type"), 7, QStringLiteral("ro"), QStringLiteral("0x00000191")));
    SUBINDEX_DATA_T error =
        entry(QStringLiteral("Error register"), 5, QStringLiteral("ro"), QStringLiteral("0"));
    error.pdomapping = PDOMapping(TPDO);
    project.object(line, 0x1001, QStringLiteral("Error register"), 7, 5).sub(line, 0x1001, 0, error);
    project.object(line, 0x1018, QStringLiteral("Identity object"), 9)
        .sub(line, 0x1018, 0,
             entry(QStringLiteral("Highest sub-index supported"), 5, QStringLiteral("ro"),
                   QStringLiteral("3")))
        .sub(line, 0x1018, 1,
             entry(QStringLiteral("Vendor-ID"), 7, QStringLiteral("ro"), QStringLiteral("0x000007F3")))
        .sub(line, 0x1018, 2,
             entry(QStringLiteral("Product code"), 7, QStringLiteral("ro"), QStringLiteral("0x1234")))
        .sub(line, 0x1018, 3,
             entry(QStringLiteral("Revision number"), 7, QStringLiteral("ro"), QStringLiteral("0x00010002")));
}

void record(ProjectBuilder &project, quint16 index, const QString &name,
            const QList<SUBINDEX_DATA_T> &entries)
{
    project.object(0, index, name, 9);
    for (qsizetype sub = 0; sub < entries.size(); ++sub)
        project.sub(0, index, quint8(sub), entries.at(sub));
}

QString run(AbstractGenerator &generator, ObjectDataBase &store, const QString &folder, quint8 line)
{
    generator.setOutputPath(folder);
    generator.setDatabase(&store);
    generator.setProjectName(QStringLiteral("board"));
    generator.setLine(line);
    generator.start();
    generator.waitForFinished();
    generator.waitForThread();
    keepForTheReaders(generator.outputFile());
    return QString::fromUtf8(TestProjects::readFile(generator.outputFile()));
}

QStringList takeFileProblems()
{
    if (!writtenFiles)
        return {};
    const QDir folder(writtenFiles->path());
    auto files = [&folder](const char *suffix) {
        QStringList paths;
        const auto names = folder.entryList({QStringLiteral("*.") + QLatin1String(suffix)}, QDir::Files);
        for (const QString &name : names)
            paths << folder.filePath(name);
        return paths;
    };
    QStringList problems;
    const QStringList eds = files("eds");
    if (!eds.isEmpty())
        problems << pythonProblems(
            QStringList{sourceFile(QStringLiteral("tests/generators/documents/tst_eds_cia306.py"))} + eds);
    const QStringList csv = files("csv");
    if (!csv.isEmpty())
        problems << pythonProblems(QStringList{QStringLiteral("-c"), QLatin1String(csvCheck)} + csv);
    const QStringList xdd = files("xdd");
    for (const QString &path : xdd)
        problems << xmlProblems(path);
    delete std::exchange(writtenFiles, nullptr);
    return problems;
}

QString sourceFile(const QString &relativePath)
{
    return qEnvironmentVariable("KESTREL_SOURCE_DIR") + '/' + relativePath;
}

QString golden(const QString &name)
{
    return QString::fromUtf8(
        TestProjects::readFile(sourceFile(QStringLiteral("tests/generators/documents/golden/cia/") + name)));
}

} // namespace EdsFixture
