#include "dbcdump.h"
#include "documentprojects.h"
#include "documenttesthelpers.h"

#include "generators/documents/dbc/candbdatabase.h"
#include "generators/documents/dbc/candbdbc.h"
#include "generators/documents/dbcgenerator.h"
#include "generators/documents/rawcandbcgenerator.h"
#include "support/projectbuilder.h"

#include <QProcess>
#include <QTemporaryDir>
#include <QtTest>

using namespace DocumentTests;
using namespace DocumentProjects;

namespace {

QString generate(AbstractGenerator &generator, ProjectBuilder &project, const QTemporaryDir &dir,
                 const RunOptions &options = RunOptions())
{
    if (!run(generator, project.store(), dir.path(), options))
        return QStringLiteral("generator did not run");
    return readText(generator.outputFile());
}

// The lines dbc_layout.py prints, made from what our own reader finds in the file.
QStringList ownLayout(const QString &path)
{
    CANdbDatabase database;
    CANdbDBC reader(QFile::encodeName(path).constData());
    if (reader.read(database) != 0)
        return {QStringLiteral("read failed: ") + QString::fromStdString(reader.errorText())};
    QStringList lines;
    for (const auto &message : database.messages) {
        lines << QStringLiteral("message %1 %2 %3 dlc %4 \"%5\"")
                     .arg(message->id)
                     .arg(message->extended ? QStringLiteral("ext") : QStringLiteral("std"))
                     .arg(QString::fromStdString(message->name))
                     .arg(message->dlc)
                     .arg(QString::fromStdString(message->comment));
        for (const auto &signal : message->signalList)
            lines << QStringLiteral("  signal %1 %2|%3 %4 %5 (%6,%7) [%8|%9] \"%10\" \"%11\"")
                         .arg(QString::fromStdString(signal->name))
                         .arg(signal->startBit)
                         .arg(signal->length)
                         .arg(signal->motorola ? QStringLiteral("motorola") : QStringLiteral("intel"))
                         .arg(signal->valueType == CANdbSignal::Unsigned ? QStringLiteral("unsigned")
                                                                         : QStringLiteral("signed"))
                         .arg(dbcNumber(signal->factor), dbcNumber(signal->offset),
                              dbcNumber(signal->minimum), dbcNumber(signal->maximum),
                              QString::fromStdString(signal->unit), QString::fromStdString(signal->comment));
    }
    return lines;
}

// The Python interpreter that has the independent reader; empty when none has it.
QString canmatrixPython()
{
    for (const QString &candidate : {QStringLiteral("/usr/bin/python3"), QStringLiteral("python3")}) {
        QProcess probe;
        probe.start(candidate, {QStringLiteral("-c"), QStringLiteral("import canmatrix.formats")});
        if (probe.waitForFinished(30000) && probe.exitStatus() == QProcess::NormalExit &&
            probe.exitCode() == 0)
            return candidate;
    }
    return QString();
}

QStringList canmatrixLayout(const QString &python, const QString &path)
{
    QProcess process;
    process.start(python, {QStringLiteral(KESTREL_DOCUMENT_TEST_DIR "/dbc_layout.py"), path});
    if (!process.waitForFinished(60000) || process.exitCode() != 0)
        return {QStringLiteral("canmatrix failed: ") + QString::fromUtf8(process.readAllStandardError())};
    // The reader reports lines it can't take on standard output too; only the layout counts here.
    const QStringList lines = QString::fromUtf8(process.readAllStandardOutput()).split('\n');
    return lines.filter(QRegularExpression(QStringLiteral("^(message |  signal )")));
}

} // namespace

class TestDbcGenerators : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase()
    {
        setUpApplication();
        setImplInfo(false);
    }

    void j1939Golden()
    {
        setImplInfo(true);
        ProjectBuilder project;
        j1939Dbc(project);
        QTemporaryDir dir;
        DBCGenerator generator;
        const QString text = generate(generator, project, dir);
        setImplInfo(false);
        QCOMPARE(generator.objectName(), QStringLiteral("DBC File"));
        QVERIFY(!generator.hasFailed());
        QCOMPARE(lines(text), lines(golden(QStringLiteral("dbc_j1939.dbc"))));
        QVERIFY(QFileInfo(generator.outputFile()).permissions().testFlag(QFile::ReadOther));
    }

    void rawCanGolden()
    {
        ProjectBuilder project;
        rawCan(project);
        QTemporaryDir dir;
        RawCANDBCGenerator generator;
        const QString text = generate(generator, project, dir);
        QCOMPARE(generator.objectName(), QStringLiteral("demo.dbc"));
        QCOMPARE(lines(text), lines(golden(QStringLiteral("dbc_rawcan.dbc"))));
    }

    void addressClaimJoinsTheProject_data()
    {
        QTest::addColumn<int>("line");
        QTest::addColumn<QString>("addressCapable");
        QTest::addColumn<QString>("identity");
        QTest::addColumn<QString>("claimSupported");
        QTest::newRow("line 0 takes the first entry") << 0 << "1"
                                                      << "0x123456"
                                                      << "1";
        QTest::newRow("line 1 takes its entry") << 1 << "7"
                                                << "0x654321"
                                                << "1";
        QTest::newRow("line 2 takes the last entry") << 2 << "0"
                                                     << "0x654321"
                                                     << "0";
    }

    void addressClaimJoinsTheProject()
    {
        QFETCH(int, line);
        QFETCH(QString, addressCapable);
        QFETCH(QString, identity);
        QFETCH(QString, claimSupported);
        ProjectBuilder project;
        j1939Dbc(project);
        project.line(quint8(line), 2).j1939(QStringLiteral("addresscapable"), addressCapable);
        QTemporaryDir dir;
        DBCGenerator generator;
        RunOptions options;
        options.line = quint8(line);
        QVERIFY(run(generator, project.store(), dir.path(), options));
        ObjectDataBase &store = project.store();
        PGN claim;
        QVERIFY(store.getPGN(quint8(line), 60928, Direction::Transmit, claim));
        QCOMPARE(claim.name, QStringLiteral("Address Claiming"));
        QCOMPARE(claim.desc, QStringLiteral("This PGN is used to send the Address Claiming."));
        QCOMPARE(claim.priority, quint8(6));
        QCOMPARE(claim.inhibittime_ms, quint16(250));
        QCOMPARE(claim.cycletime_ms, quint16(0));
        const QList<quint32> numbers = store.getSPNs(quint8(line), 60928, Direction::Transmit);
        QCOMPARE(numbers, (QList<quint32>{2837, 2838, 2840, 2839, 2841, 0, 2842, 2843, 2846, 2844}));
        QStringList fields;
        for (const quint32 number : numbers) {
            SPN spn;
            QVERIFY(store.getSPN(quint8(line), 60928, Direction::Transmit, number, spn));
            fields << QStringLiteral("%1 %2 %3 %4 %5")
                          .arg(spn.name)
                          .arg(spn.datatype)
                          .arg(spn.bitposition)
                          .arg(spn.implementation)
                          .arg(spn.defaultvalue);
        }
        QCOMPARE(fields,
                 (QStringList{QStringLiteral("Identity Number 119 0 0 ") + identity,
                              QStringLiteral("Manufacturer Code 108 21 0 4021"),
                              QStringLiteral("ECU Instance 101 32 0 3"),
                              QStringLiteral("Function Instance 103 35 0 14"),
                              QStringLiteral("Function 5 40 0 0xff"), QStringLiteral("reserved 1 48 0 0"),
                              QStringLiteral("Vehicle System 105 49 0 0x55"),
                              QStringLiteral("Vehicle System Instance 102 56 0 1"),
                              QStringLiteral("Industry Group 101 60 0 2"),
                              QStringLiteral("Addr Claiming Supported 1 63 0 ") + claimSupported}));
        QVERIFY(!store.isBlocked());
    }

    void identifiers_data()
    {
        QTest::addColumn<quint32>("number");
        QTest::addColumn<int>("direction");
        QTest::addColumn<int>("priority");
        QTest::addColumn<QString>("startAddress");
        QTest::addColumn<QString>("boLine");
        QTest::newRow("received PDU 2 gets the global source address")
            << 0xFECAu << int(Direction::Receive) << 6 << "0x80"
            << "BO_ 2566834942 G: 8 Vector__XXX";
        QTest::newRow("sent PDU 2 gets the own address") << 0xFECAu << int(Direction::Transmit) << 6 << "0x80"
                                                         << "BO_ 2566834816 G: 8 Vector__XXX";
        QTest::newRow("received PDU 1 is addressed to us") << 0xEF00u << int(Direction::Receive) << 6 << "128"
                                                           << "BO_ 2565832958 G: 8 Vector__XXX";
        QTest::newRow("priority 3 of a sent group") << 0xFF10u << int(Direction::Transmit) << 3 << " 0x21 "
                                                    << "BO_ 2365526049 G: 8 Vector__XXX";
        QTest::newRow("no start address gives the global one")
            << 0xFF10u << int(Direction::Transmit) << 6 << ""
            << "BO_ 2566852862 G: 8 Vector__XXX";
    }

    void identifiers()
    {
        QFETCH(quint32, number);
        QFETCH(int, direction);
        QFETCH(int, priority);
        QFETCH(QString, startAddress);
        QFETCH(QString, boLine);
        ProjectBuilder project;
        project.line(0, 2).j1939(QStringLiteral("startaddress"), startAddress);
        project.pgn(0, pgn(number, quint8(direction), QStringLiteral("G"), QString(), 0, quint8(priority)));
        QTemporaryDir dir;
        DBCGenerator generator;
        const QString text = generate(generator, project, dir);
        QVERIFY2(lines(text).contains(boLine), qPrintable(text));
    }

    void withoutGroupsTheAcknowledgeUsesTheGlobalAddress()
    {
        ProjectBuilder project;
        project.line(0, 2).j1939(QStringLiteral("startaddress"), QStringLiteral("0x80"));
        QTemporaryDir dir;
        DBCGenerator generator;
        generator.setOutputPath(dir.path());
        generator.setDatabase(&project.store());
        generator.setProjectName(QStringLiteral("demo"));
        generator.setLine(0);
        // Without start the address claim isn't added, and the line has no group at all.
        generator.doJob();
        const QString text = readText(dir.filePath(QStringLiteral("demo.dbc")));
        QStringList messages = lines(text).filter(QRegularExpression(QStringLiteral("^BO_ ")));
        QCOMPARE(messages, QStringList{QStringLiteral("BO_ 2565341438 Acknowledge_Message: 8 Vector__XXX")});
        QVERIFY(
            text.contains(QLatin1String("BA_DEF_ BO_  \"VFrameFormat\" ENUM  \"StandardCAN\",\"ExtendedCAN\","
                                        "\"reserved\",\"J1939PG\";\n")));
        QVERIFY(!text.contains(QLatin1String("Diagnostic_Message")));
        QVERIFY(!project.store().isBlocked());
    }

    void lengthOfAGroup_data()
    {
        QTest::addColumn<QString>("canFd");
        QTest::addColumn<QString>("boLine");
        QTest::newRow("classic CAN has at least 8 bytes") << "0"
                                                          << "BO_ 2566852736 Twelve: 8 Vector__XXX";
        QTest::newRow("CAN FD rounds the bits down") << "1"
                                                     << "BO_ 2566852736 Twelve: 1 Vector__XXX";
    }

    void lengthOfAGroup()
    {
        QFETCH(QString, canFd);
        QFETCH(QString, boLine);
        ProjectBuilder project;
        project.line(0, 2)
            .general(QStringLiteral("canfd_supported"), canFd)
            .j1939(QStringLiteral("startaddress"), QStringLiteral("0x80"));
        project.pgn(0, pgn(0xFF10, Direction::Transmit, QStringLiteral("Twelve")));
        project.spn(0, spn(0xFF10, Direction::Transmit, 1, QStringLiteral("a"), 103, 0))
            .spn(0, spn(0xFF10, Direction::Transmit, 2, QStringLiteral("b"), 105, 1));
        QTemporaryDir dir;
        DBCGenerator generator;
        const QString text = generate(generator, project, dir);
        QVERIFY2(lines(text).contains(boLine), qPrintable(text));
        QVERIFY(text.contains(QLatin1String(" SG_ b : 5|7@1+ (1,0) [0|0] \"\" Vector__XXX\n")));
    }

    void groupsBeyond256BitsKeepCounting()
    {
        ProjectBuilder project;
        project.line(0, 2).j1939(QStringLiteral("startaddress"), QStringLiteral("0x80"));
        project.pgn(0, pgn(0xFF20, Direction::Transmit, QStringLiteral("Long")));
        for (quint8 i = 0; i < 5; ++i)
            project.spn(0, spn(0xFF20, Direction::Transmit, 10 + i, QStringLiteral("v%1").arg(i), 27, i));
        QTemporaryDir dir;
        DBCGenerator generator;
        const QString text = generate(generator, project, dir);
        QVERIFY2(text.contains(QLatin1String("BO_ 2566856832 Long: 40 Vector__XXX\n")), qPrintable(text));
        QVERIFY(text.contains(QLatin1String(" SG_ v4 : 256|64@1+ (1,0) [0|0] \"\" Vector__XXX\n")));
    }

    void implementationAttributesOnlyWithImplInfo()
    {
        ProjectBuilder project;
        j1939Dbc(project);
        QTemporaryDir dir;
        DBCGenerator generator;
        const QString text = generate(generator, project, dir);
        QVERIFY(!text.contains(QLatin1String("vorlan_implementation_type")));
        QVERIFY(!text.contains(QLatin1String("vorlan_variable_name")));
        QVERIFY(text.contains(QLatin1String("BA_ \"vorlan_bitsize\" SG_ 2566844800 Text 24;\n")));
    }

    void sameNameTwiceLeavesTheSecondEmpty()
    {
        ProjectBuilder project;
        project.line(0, 2).j1939(QStringLiteral("startaddress"), QStringLiteral("0x80"));
        project.pgn(0, pgn(0xFF10, Direction::Transmit, QStringLiteral("Twin")))
            .pgn(0, pgn(0xFF11, Direction::Transmit, QStringLiteral("Twin")));
        QTemporaryDir dir;
        DBCGenerator generator;
        const QString text = generate(generator, project, dir);
        QVERIFY(text.contains(QLatin1String("BO_ 2566852736 Twin: 8 Vector__XXX\n")));
        QVERIFY(text.contains(QLatin1String("BO_ 2566852992 : 8 Vector__XXX\n")));
    }

    void fileNames_data()
    {
        QTest::addColumn<bool>("multiLine");
        QTest::addColumn<QString>("j1939File");
        QTest::addColumn<QString>("rawFile");
        QTest::newRow("one line") << false << "demo.dbc"
                                  << "demo.dbc";
        QTest::newRow("several lines number the J1939 file only") << true << "demo_1.dbc"
                                                                  << "demo.dbc";
    }

    void fileNames()
    {
        QFETCH(bool, multiLine);
        QFETCH(QString, j1939File);
        QFETCH(QString, rawFile);
        ProjectBuilder project;
        project.line(0, 4).line(1, 2);
        QTemporaryDir dir;
        RunOptions options;
        options.multiLine = multiLine;
        options.line = 1;
        DBCGenerator j1939;
        QVERIFY(run(j1939, project.store(), dir.path(), options));
        QCOMPARE(j1939.outputFile(), dir.filePath(j1939File));
        QVERIFY(QFile::exists(dir.filePath(j1939File)));
        options.line = 0;
        RawCANDBCGenerator raw;
        QVERIFY(run(raw, project.store(), dir.path(), options));
        QCOMPARE(raw.outputFile(), dir.filePath(rawFile));
    }

    void unwritableTargetFails()
    {
        ProjectBuilder project;
        project.line(0, 2);
        QTemporaryDir dir;
        QVERIFY(QDir(dir.path()).mkdir(QStringLiteral("demo.dbc")));
        DBCGenerator generator;
        generator.setOutputPath(dir.path());
        generator.setDatabase(&project.store());
        generator.setProjectName(QStringLiteral("demo"));
        QCOMPARE(generator.start(), GeneratorStatus::Ok);
        generator.waitForFinished();
        generator.waitForThread();
        QVERIFY(generator.hasFailed());
        QVERIFY2(generator.errorText().startsWith(QLatin1String("Could not copy output file. ")),
                 qPrintable(generator.errorText()));
        QVERIFY(
            generator.errorText().endsWith(QLatin1String(" - ") + dir.filePath(QStringLiteral("demo.dbc"))));
        QVERIFY(!project.store().isBlocked());
    }

    void independentReaderAgrees_data()
    {
        QTest::addColumn<bool>("j1939");
        QTest::newRow("J1939 line") << true;
        QTest::newRow("raw CAN line") << false;
    }

    void independentReaderAgrees()
    {
        QFETCH(bool, j1939);
        const QString python = canmatrixPython();
        if (python.isEmpty())
            QSKIP("The Python module canmatrix (Debian package python3-canmatrix) is not installed");
        setImplInfo(true);
        ProjectBuilder project;
        // Both readers take a name as letters, digits and "_"; the "*" that J1939 names keep is left out
        // here.
        if (j1939)
            j1939Dbc(project, QStringLiteral("_"));
        else
            rawCan(project, 0x20000000u | 0x18FF0001u);
        QTemporaryDir dir;
        std::unique_ptr<AbstractGenerator> generator;
        if (j1939)
            generator = std::make_unique<DBCGenerator>();
        else
            generator = std::make_unique<RawCANDBCGenerator>();
        QVERIFY(run(*generator, project.store(), dir.path()));
        setImplInfo(false);
        const QString path = generator->outputFile();
        const QStringList ours = ownLayout(path);
        QVERIFY2(ours.size() > 4, qPrintable(ours.join('\n')));
        QCOMPARE(canmatrixLayout(python, path), ours);
    }

    void deviationsFromCommonReaders()
    {
        const QString python = canmatrixPython();
        if (python.isEmpty())
            QSKIP("The Python module canmatrix (Debian package python3-canmatrix) is not installed");
        QTemporaryDir dir;
        RunOptions options;

        // J1939 names keep "*", which common readers don't take as part of a name: that signal is lost to
        // them, and the rest of the file reads the same.
        ProjectBuilder j1939;
        j1939Dbc(j1939);
        DBCGenerator j1939Generator;
        options.projectName = QStringLiteral("j1939");
        QVERIFY(run(j1939Generator, j1939.store(), dir.path(), options));
        QVERIFY(readText(j1939Generator.outputFile()).contains(QLatin1String(" SG_ Mode_a*b : 21|4@1+ ")));
        QStringList theirs = canmatrixLayout(python, j1939Generator.outputFile());
        QVERIFY2(theirs.filter(QStringLiteral("signal Mode")).isEmpty(), qPrintable(theirs.join('\n')));
        QStringList ours = ownLayout(j1939Generator.outputFile());
        QVERIFY2(ours.first().startsWith(QLatin1String("read failed: Error (line 41): ")),
                 qPrintable(ours.first()));
        QVERIFY(theirs.contains(
            QStringLiteral("message 419361152 ext Cruise_Control_Vehicle_Speed dlc 8 \"CCVS\"")));
        QVERIFY(theirs.contains(QStringLiteral("  signal Text 16|8 intel signed (1,0) [0|0] \"\" \"\"")));

        // A raw CAN-ID above 11 bits that the project stores without its extended flag is written without
        // bit 31; common readers reject that message, and its signals slip into the message before it.
        ProjectBuilder raw;
        rawCan(raw);
        RawCANDBCGenerator rawGenerator;
        options.projectName = QStringLiteral("raw");
        QVERIFY(run(rawGenerator, raw.store(), dir.path(), options));
        theirs = canmatrixLayout(python, rawGenerator.outputFile());
        QVERIFY2(theirs.filter(QStringLiteral("a_b")).isEmpty(), qPrintable(theirs.join('\n')));
        QVERIFY(theirs.contains(QStringLiteral("message 256 ext MSG_100 dlc 8 \"\"")));
        ours = ownLayout(rawGenerator.outputFile());
        QVERIFY(ours.contains(QStringLiteral("message 419364865 std a_b dlc 4 \"\"")));
    }
};

QTEST_MAIN(TestDbcGenerators)
#include "tst_dbcgenerators.moc"
