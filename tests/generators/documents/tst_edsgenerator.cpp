#include "generators/documents/edsgenerator.h"
#include "store/objectdatabase.h"
#include "support/projectbuilder.h"
#include "support/testprojects.h"
#include "tst_edsfixture.h"

#include <QRegularExpression>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <QtTest>

namespace {

using EdsFixture::device;
using EdsFixture::entry;
using EdsFixture::record;

// The project of the golden file basic.eds.
void basicProject(ProjectBuilder &project)
{
    device(project);
    project.description(0, QStringLiteral("Comment"), QStringLiteral("First line\n\nThird line\n"));
    project.description(0, QStringLiteral("AdditionalSections"), QStringLiteral("[Tools]\nItems=0"));
    INDEX_DATA_T identity;
    project.store().getIndex(0, 0x1018, identity);
    identity.description = QStringLiteral("Identity of the device");
    project.object(0, 0x1018, identity);
    record(project, 0x1400, QStringLiteral("RPDO communication parameter"),
           {entry("Highest sub-index supported", 5, "ro", "2"), entry("COB-ID", 7, "rw", "$NODEID+0x200"),
            entry("Transmission type", 5, "rw", "255")});
    record(
        project, 0x1600, QStringLiteral("RPDO mapping parameter"),
        {entry("Number of mapped objects", 5, "rw", "1"), entry("Mapping entry 1", 7, "rw", "0x62000108")});
    record(project, 0x1800, QStringLiteral("TPDO communication parameter"),
           {entry("Highest sub-index supported", 5, "ro", "2"), entry("COB-ID", 7, "rw", "$NODEID+0x180"),
            entry("Transmission type", 5, "rw", "254")});
    record(
        project, 0x1A00, QStringLiteral("TPDO mapping parameter"),
        {entry("Number of mapped objects", 5, "rw", "1"), entry("Mapping entry 1", 7, "rw", "0x60000108")});

    INDEX_DATA_T speed;
    speed.name = QStringLiteral("Speed");
    speed.datatype = 6;
    speed.description = QStringLiteral("Motor speed\nin rpm");
    project.object(0, 0x2000, speed);
    SUBINDEX_DATA_T speedValue =
        entry(QStringLiteral("Speed"), 6, QStringLiteral("rw"), QStringLiteral("0x10"));
    speedValue.lowlimit = QStringLiteral("0");
    speedValue.uplimit = QStringLiteral("1000");
    speedValue.limitineds = true;
    speedValue.refuseread = true;
    speedValue.refusewrite = true;
    speedValue.pdomapping = PDOMapping(Allowed);
    project.sub(0, 0x2000, 0, speedValue);

    project.object(0, 0x2100, QStringLiteral("Channels of 0x$I"), 8, 5)
        .sub(0, 0x2100, 0, entry("Number of channels", 5, "ro", "7"))
        .sub(0, 0x2100, 1, entry("Channel $s", 5, "rw", "1"))
        .sub(0, 0x2100, 5, entry("Channel $s", 3, "rw", "-5", false));

    INDEX_DATA_T serial;
    serial.name = QStringLiteral("Serial text");
    serial.datatype = 124;
    serial.description = QStringLiteral("0123456789").repeated(25) + QStringLiteral("tail");
    project.object(0, 0x2200, serial).sub(0, 0x2200, 0, entry("Serial text", 124, "ro", "abc"));
    project.object(0, 0x2201, QStringLiteral("Key bytes"), 7, 10)
        .sub(0, 0x2201, 0, entry("Key bytes", 10, "ro", "|x0102"));

    SUBINDEX_DATA_T packed = entry(QStringLiteral("Packed"), 102, QStringLiteral("rw"), QStringLiteral("3"));
    packed.metadata.insert(QStringLiteral("eds_datatype"), QStringLiteral("0x0006"));
    project.object(0, 0x2300, QStringLiteral("Packed"), 7, 102).sub(0, 0x2300, 0, packed);

    SUBINDEX_DATA_T input =
        entry(QStringLiteral("Digital input"), 5, QStringLiteral("ro"), QStringLiteral("0"));
    input.defaultineds = false;
    input.pdomapping = PDOMapping(TPDO);
    project.object(0, 0x6000, QStringLiteral("Digital input"), 7, 5).sub(0, 0x6000, 0, input);
    project.var(0, 0xD000, QStringLiteral("Vendor area"), 5, QStringLiteral("ro"), QStringLiteral("1"));
    SUBINDEX_DATA_T vendor;
    project.store().getSubIndex(0, 0xD000, 0, vendor);
    vendor.writedefaulttoeds = true;
    project.sub(0, 0xD000, 0, vendor);
}

// Objects and entries that only some variants hold.
void variantProject(ProjectBuilder &project)
{
    device(project);
    INDEX_DATA_T onlyA;
    onlyA.name = QStringLiteral("Only in A");
    onlyA.datatype = 5;
    onlyA.metadata.insert(QStringLiteral("eds_define"), QStringLiteral("A"));
    project.object(0, 0x2000, onlyA).sub(0, 0x2000, 0, entry("Only in A", 5, "rw", "1"));
    SUBINDEX_DATA_T extra = entry(QStringLiteral("Extra"), 5, QStringLiteral("rw"), QStringLiteral("2"));
    extra.metadata.insert(QStringLiteral("eds_define"), QStringLiteral("A"));
    project.object(0, 0x2001, QStringLiteral("Mixed"), 9)
        .sub(0, 0x2001, 0, entry("Highest sub-index supported", 5, "ro", "1"))
        .sub(0, 0x2001, 1, entry("Common", 5, "rw", "1"))
        .sub(0, 0x2001, 2, extra);
    INDEX_DATA_T plainOnly;
    plainOnly.name = QStringLiteral("Empty variant name");
    plainOnly.datatype = 5;
    plainOnly.metadata.insert(QStringLiteral("eds_define"), QString());
    project.object(0, 0x2002, plainOnly).sub(0, 0x2002, 0, entry("Empty variant name", 5, "rw", "3"));
}

// A CANopen FD line: the device type is an array and the FD objects exist.
void fdProject(ProjectBuilder &project)
{
    device(project);
    project.store().removeIndex(0, 0x1000);
    project.object(0, 0x1000, QStringLiteral("Device type"), 8, 7)
        .sub(0, 0x1000, 0, entry("Number of entries", 5, "ro", "2"))
        .sub(0, 0x1000, 1, entry("Device type 1", 7, "ro", "0x00020191"))
        .sub(0, 0x1000, 2, entry("Device type 2", 7, "ro", "0x00010191"));
    project.object(0, 0x1030, QStringLiteral("FD version"), 7, 5)
        .sub(0, 0x1030, 0, entry("FD version", 5, "ro", "1"));
    project.object(0, 0x1032, QStringLiteral("FD option"), 7, 5)
        .sub(0, 0x1032, 0, entry("FD option", 5, "ro", "0"));
}

QString run(EDSGenerator &generator, ObjectDataBase &store, const QString &dir, quint8 line = 0)
{
    return EdsFixture::run(generator, store, dir, line);
}

QString maskTimes(const QString &text)
{
    static const QRegularExpression stamp(QStringLiteral("^(Creation|Modification)(Time|Date)=.*$"),
                                          QRegularExpression::MultilineOption);
    return QString(text).replace(stamp, QStringLiteral("\\1\\2=*"));
}

QString section(const QString &text, const QString &head)
{
    const qsizetype start = text.indexOf(head);
    if (start < 0)
        return QString();
    const qsizetype end = text.indexOf(QLatin1String("\n\n"), start);
    return text.mid(start, end < 0 ? -1 : end - start + 1);
}

} // namespace

class TestEdsGenerator : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase()
    {
        QCoreApplication::setApplicationName(QStringLiteral("CANopen Kestrel"));
        QCoreApplication::setApplicationVersion(QStringLiteral("4.3.2"));
        QCoreApplication::setOrganizationName(QStringLiteral("vorlan"));
        if (QStandardPaths::findExecutable(QStringLiteral("python3")).isEmpty())
            QFAIL("python3 is needed to read the EDS files with an INI parser of its own");
    }

    // Every file a test writes is a valid CiA 306 file for an INI reader of its own.
    void cleanupTestCase() { QCOMPARE(EdsFixture::takeFileProblems(), QStringList()); }

    void goldenFiles_data()
    {
        QTest::addColumn<int>("project");
        QTest::addColumn<QString>("variant");
        QTest::addColumn<bool>("fd");
        QTest::addColumn<bool>("classical");
        QTest::addColumn<QString>("file");
        QTest::addColumn<QString>("expected");
        QTest::newRow("every kind of object, plain file") << 0 << "" << false << false << "board.eds"
                                                          << "basic.eds";
        QTest::newRow("variants, plain file") << 1 << "" << false << false << "board.eds"
                                              << "variant_plain.eds";
        QTest::newRow("variants, file of variant A") << 1 << "A" << false << false << "board_A.eds"
                                                     << "variant_a.eds";
        QTest::newRow("CANopen FD line, FD file") << 2 << "" << true << false << "board.eds"
                                                  << "fd.eds";
        QTest::newRow("CANopen FD line, classical file") << 2 << "" << false << true << "board_classical.eds"
                                                         << "fd_classical.eds";
        QTest::newRow("CANopen FD objects in an ordinary file") << 2 << "" << false << false << "board.eds"
                                                                << "fd_classical.eds";
    }

    void goldenFiles()
    {
        QFETCH(int, project);
        QFETCH(QString, variant);
        QFETCH(bool, fd);
        QFETCH(bool, classical);
        QFETCH(QString, file);
        QFETCH(QString, expected);
        ProjectBuilder builder;
        void (*const projects[])(ProjectBuilder &) = {basicProject, variantProject, fdProject};
        projects[project](builder);
        QTemporaryDir dir;
        EDSGenerator generator(variant, fd, classical);
        const QString text = run(generator, builder.store(), dir.path());
        QCOMPARE(QFileInfo(generator.outputFile()).fileName(), file);
        QCOMPARE(maskTimes(text), EdsFixture::golden(expected));
    }

    void variantsOfALine()
    {
        ProjectBuilder builder;
        variantProject(builder);
        QCOMPARE(EDSGenerator::edsVariants(builder.store(), 0),
                 QStringList({QString(), QStringLiteral("A")}));
        ProjectBuilder plain;
        device(plain);
        QCOMPARE(EDSGenerator::edsVariants(plain.store(), 0), QStringList({QString()}));
    }

    void fileNames_data()
    {
        QTest::addColumn<QString>("variant");
        QTest::addColumn<bool>("classical");
        QTest::addColumn<bool>("multiLine");
        QTest::addColumn<QString>("expected");
        QTest::newRow("plain") << "" << false << false << "/out/board.eds";
        QTest::newRow("plain, several lines") << "" << false << true << "/out/board_2.eds";
        QTest::newRow("classical") << "" << true << false << "/out/board_classical.eds";
        QTest::newRow("classical, several lines") << "" << true << true << "/out/board_2_classical.eds";
        QTest::newRow("variant") << "Lite" << false << false << "/out/board_Lite.eds";
        QTest::newRow("variant, several lines") << "Lite" << false << true << "/out/board_2_Lite.eds";
    }

    void fileNames()
    {
        QFETCH(QString, variant);
        QFETCH(bool, classical);
        QFETCH(bool, multiLine);
        QFETCH(QString, expected);
        EDSGenerator generator(variant, false, classical);
        generator.setOutputPath(QStringLiteral("/out"));
        generator.setProjectName(QStringLiteral("board"));
        generator.setLine(2);
        generator.setMultiLine(multiLine);
        QCOMPARE(generator.outputFile(), expected);
        QCOMPARE(generator.generatorName(), QStringLiteral("EDS file"));
    }

    void writableAsksForThePlainName()
    {
        QTemporaryDir dir;
        EDSGenerator generator(QStringLiteral("A"));
        generator.setOutputPath(dir.path());
        generator.setProjectName(QStringLiteral("board"));
        QVERIFY(generator.isOutputWritable());
        const QString plain = dir.filePath(QStringLiteral("board.eds"));
        QVERIFY(TestProjects::writeFile(plain, "old"));
        QFile::setPermissions(plain, QFile::ReadOwner);
        QVERIFY(!generator.isOutputWritable());
    }

    void attributes_data()
    {
        QTest::addColumn<int>("dataType");
        QTest::addColumn<int>("writeDefault");
        QTest::addColumn<bool>("defaultInEds");
        QTest::addColumn<QString>("value");
        QTest::addColumn<bool>("refuseRead");
        QTest::addColumn<bool>("refuseWrite");
        QTest::addColumn<QString>("edsDataType");
        QTest::addColumn<QString>("expected");
        const QString head = QStringLiteral("[2000]\nParameterName=Value\nObjectType=7\n");
        QTest::newRow("refuse read and write")
            << 5 << 1 << true << "4" << true << true << ""
            << head + "DataType=5\nAccessType=rw\nPDOMapping=0\nDefaultValue=4\nObjFlags=3\n";
        QTest::newRow("refuse write only")
            << 5 << 1 << true << "4" << false << true << ""
            << head + "DataType=5\nAccessType=rw\nPDOMapping=0\nDefaultValue=4\nObjFlags=1\n";
        QTest::newRow("refuse read only")
            << 5 << 1 << true << "4" << true << false << ""
            << head + "DataType=5\nAccessType=rw\nPDOMapping=0\nDefaultValue=4\nObjFlags=2\n";
        QTest::newRow("default always written")
            << 5 << 2 << false << "4" << false << false << ""
            << head + "DataType=5\nAccessType=rw\nPDOMapping=0\nDefaultValue=4\n";
        QTest::newRow("default never written") << 5 << 0 << true << "4" << false << false << ""
                                               << head + "DataType=5\nAccessType=rw\nPDOMapping=0\n";
        QTest::newRow("as default value, not in EDS") << 5 << 1 << false << "4" << false << false << ""
                                                      << head + "DataType=5\nAccessType=rw\nPDOMapping=0\n";
        QTest::newRow("empty default") << 5 << 1 << true << "" << false << false << ""
                                       << head + "DataType=5\nAccessType=rw\nPDOMapping=0\n";
        QTest::newRow("node-ID expression unchanged")
            << 7 << 1 << true << "$NODEID+0x180" << false << false << ""
            << head + "DataType=7\nAccessType=rw\nPDOMapping=0\nDefaultValue=$NODEID+0x180\n";
        QTest::newRow("UTF-8 string as UNSIGNED8") << 124 << 0 << true << "" << false << false << ""
                                                   << head + "DataType=5\nAccessType=rw\nPDOMapping=0\n";
        QTest::newRow("data type from the meta data") << 124 << 0 << true << "" << false << false << "0x9"
                                                      << head + "DataType=9\nAccessType=rw\nPDOMapping=0\n";
        QTest::newRow("meta data type cut to 16 bits") << 5 << 0 << true << "" << false << false << "0x10007"
                                                       << head + "DataType=7\nAccessType=rw\nPDOMapping=0\n";
    }

    void attributes()
    {
        QFETCH(int, dataType);
        QFETCH(int, writeDefault);
        QFETCH(bool, defaultInEds);
        QFETCH(QString, value);
        QFETCH(bool, refuseRead);
        QFETCH(bool, refuseWrite);
        QFETCH(QString, edsDataType);
        QFETCH(QString, expected);
        ProjectBuilder builder;
        device(builder);
        SUBINDEX_DATA_T data = entry(QStringLiteral("Value"), quint16(dataType), QStringLiteral("rw"), value);
        data.writedefaulttoeds = writeDefault;
        data.defaultineds = defaultInEds;
        data.refuseread = refuseRead;
        data.refusewrite = refuseWrite;
        if (!edsDataType.isEmpty())
            data.metadata.insert(QStringLiteral("eds_datatype"), edsDataType);
        builder.object(0, 0x2000, QStringLiteral("Value"), 7, quint16(dataType)).sub(0, 0x2000, 0, data);
        QTemporaryDir dir;
        EDSGenerator generator;
        QCOMPARE(section(run(generator, builder.store(), dir.path()), QStringLiteral("[2000]")), expected);
    }

    void commentLines_data()
    {
        QTest::addColumn<QString>("description");
        QTest::addColumn<QStringList>("comments");
        const QString tens = QStringLiteral("0123456789");
        QTest::newRow("250 characters, one line") << tens.repeated(25) << QStringList{tens.repeated(25)};
        QTest::newRow("251 characters, two lines")
            << tens.repeated(25) + "x" << QStringList{tens.repeated(25), QStringLiteral("x")};
        QTest::newRow("500 characters, two lines")
            << tens.repeated(50) << QStringList{tens.repeated(25), tens.repeated(25)};
        QTest::newRow("empty line kept") << "a\n\nb" << QStringList{"a", "", "b"};
        QTest::newRow("no description, no comment") << "" << QStringList{};
    }

    void commentLines()
    {
        QFETCH(QString, description);
        QFETCH(QStringList, comments);
        ProjectBuilder builder;
        device(builder);
        INDEX_DATA_T object;
        object.name = QStringLiteral("Value");
        object.description = description;
        builder.object(0, 0x2000, object).sub(0, 0x2000, 0, entry("Value", 5, "rw", "", false));
        QTemporaryDir dir;
        EDSGenerator generator;
        QString expected = QStringLiteral(
            "[2000]\nParameterName=Value\nObjectType=7\nDataType=5\nAccessType=rw\nPDOMapping=0\n");
        for (const QString &comment : std::as_const(comments))
            expected += ";;" + comment + '\n';
        QCOMPARE(section(run(generator, builder.store(), dir.path()), QStringLiteral("[2000]")), expected);
    }

    void deviceInfo_data()
    {
        QTest::addColumn<QString>("granularity");
        QTest::addColumn<QString>("mappingCount");
        QTest::addColumn<QString>("expectedGranularity");
        QTest::addColumn<QString>("expectedGroupMessaging");
        QTest::newRow("granularity missing") << ""
                                             << "1"
                                             << "Granularity=0"
                                             << "GroupMessaging=0";
        QTest::newRow("multiplexed PDO, hexadecimal count") << "8"
                                                            << "0xFE"
                                                            << "Granularity=8"
                                                            << "GroupMessaging=1";
        QTest::newRow("multiplexed PDO, 255") << "8"
                                              << "255"
                                              << "Granularity=8"
                                              << "GroupMessaging=1";
        QTest::newRow("count below 254") << "8"
                                         << "253"
                                         << "Granularity=8"
                                         << "GroupMessaging=0";
        QTest::newRow("count no number") << "8"
                                         << "many"
                                         << "Granularity=8"
                                         << "GroupMessaging=0";
    }

    void deviceInfo()
    {
        QFETCH(QString, granularity);
        QFETCH(QString, mappingCount);
        QFETCH(QString, expectedGranularity);
        QFETCH(QString, expectedGroupMessaging);
        ProjectBuilder builder;
        device(builder);
        builder.description(0, QStringLiteral("Granularity"), granularity);
        record(builder, 0x1A03, QStringLiteral("TPDO mapping parameter"),
               {entry("Number of mapped objects", 5, "rw", mappingCount)});
        QTemporaryDir dir;
        EDSGenerator generator;
        const QStringList lines = run(generator, builder.store(), dir.path()).split('\n');
        QVERIFY(lines.contains(expectedGranularity));
        QVERIFY(lines.contains(expectedGroupMessaging));
    }

    void descriptionOfTheGeneratedLine()
    {
        ProjectBuilder builder;
        device(builder);
        device(builder, 1);
        builder.description(1, QStringLiteral("VendorName"), QStringLiteral("Second line vendor"));
        builder.store().setDescriptionLine(0);
        QTemporaryDir dir;
        EDSGenerator generator;
        generator.setMultiLine(true);
        const QString text = run(generator, builder.store(), dir.path(), 1);
        QCOMPARE(QFileInfo(generator.outputFile()).fileName(), QStringLiteral("board_1.eds"));
        QVERIFY(text.contains(QLatin1String("\nVendorName=Second line vendor\n")));
        QCOMPARE(builder.store().getDescriptionLine(), quint8(0));
    }

    void progressSteps()
    {
        ProjectBuilder builder;
        device(builder);
        QTemporaryDir dir;
        EDSGenerator generator;
        QList<int> steps;
        connect(&generator, &AbstractGenerator::progress, this, [&](quint8 value) { steps << value; });
        run(generator, builder.store(), dir.path());
        QTRY_COMPARE(steps, (QList<int>{25, 98, 100}));
        QVERIFY(!builder.store().isBlocked());
    }
};

QTEST_GUILESS_MAIN(TestEdsGenerator)
#include "tst_edsgenerator.moc"
