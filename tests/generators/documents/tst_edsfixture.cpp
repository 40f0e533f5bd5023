#include "tst_edsfixture.h"

#include "generation/abstractgenerator.h"
#include "store/objectdatabase.h"
#include "support/projectbuilder.h"
#include "support/testprojects.h"

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
    return QString::fromUtf8(TestProjects::readFile(generator.outputFile()));
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
