#include "generators/documents/csvgenerator.h"
#include "generators/documents/icsvgenerator.h"
#include "store/objectdatabase.h"
#include "support/projectbuilder.h"
#include "support/testprojects.h"
#include "tst_edsfixture.h"

#include <QProcess>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <QtTest>

namespace {

using EdsFixture::device;
using EdsFixture::entry;

// A name with a comma, one with quotes, a value of each form and a description of two lines.
void csvProject(ProjectBuilder &project)
{
    device(project);
    INDEX_DATA_T speed;
    speed.name = QStringLiteral("Speed, fast");
    speed.datatype = 6;
    speed.description = QStringLiteral("Motor speed\nin rpm");
    SUBINDEX_DATA_T speedValue =
        entry(QStringLiteral("Speed, fast"), 6, QStringLiteral("rw"), QStringLiteral("0x10"));
    speedValue.lowlimit = QStringLiteral("0");
    speedValue.uplimit = QStringLiteral("1000");
    speedValue.limitineds = true;
    speedValue.nvstorage = true;
    project.object(0, 0x2000, speed).sub(0, 0x2000, 0, speedValue);

    SUBINDEX_DATA_T level =
        entry(QStringLiteral("Level \"2\""), 8, QStringLiteral("rw"), QStringLiteral("1.50"));
    level.implementation = 2;
    level.varname = QStringLiteral("out$s");
    level.description = QStringLiteral("first\r\nsecond");
    project.object(0, 0x2100, QStringLiteral("Outputs"), 8, 5)
        .sub(0, 0x2100, 0,
             entry(QStringLiteral("Number of outputs"), 5, QStringLiteral("ro"), QStringLiteral("2")))
        .sub(0, 0x2100, 1, entry(QStringLiteral("Output $s"), 5, QStringLiteral("rw"), QStringLiteral("abc")))
        .sub(0, 0x2100, 2, level);
    project.object(0, 0x6000, QStringLiteral("Input"), 7, 2)
        .sub(0, 0x6000, 0, entry(QStringLiteral("Input"), 2, QStringLiteral("ro"), QStringLiteral("0x7F")));
}

// The cell of the first row of 0x2000 in the given column.
QString cellOf2000(const QString &text, int column)
{
    const auto lines = text.split('\n');
    for (const QString &line : lines) {
        if (line.startsWith(QLatin1String("0x2000,0x00,")))
            return line.section(',', column, column);
    }
    return QStringLiteral("no row");
}

} // namespace

class TestCsvGenerator : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase()
    {
        QCoreApplication::setApplicationName(QStringLiteral("CANopen Kestrel"));
        QCoreApplication::setApplicationVersion(QStringLiteral("4.3.2"));
    }

    // Every CSV table a test writes has 18 cells in each row for a CSV reader of its own.
    void cleanupTestCase() { QCOMPARE(EdsFixture::takeFileProblems(), QStringList()); }

    void goldenFiles_data()
    {
        QTest::addColumn<bool>("importable");
        QTest::addColumn<bool>("documentation");
        QTest::addColumn<QString>("file");
        QTest::addColumn<QString>("expected");
        QTest::newRow("CSV table") << false << true << "board.csv"
                                   << "board.csv";
        QTest::newRow("ICSV table with descriptions") << true << true << "board.icsv"
                                                      << "board.icsv";
        QTest::newRow("ICSV table, documentation off") << true << false << "board.icsv"
                                                       << "board_nodoc.icsv";
    }

    void goldenFiles()
    {
        QFETCH(bool, importable);
        QFETCH(bool, documentation);
        QFETCH(QString, file);
        QFETCH(QString, expected);
        ProjectBuilder builder;
        csvProject(builder);
        QTemporaryDir dir;
        std::unique_ptr<CSVGenerator> generator;
        if (importable) {
            auto table = std::make_unique<ICSVGenerator>();
            table->setDocumentation(documentation);
            generator = std::move(table);
        } else {
            generator = std::make_unique<CSVGenerator>();
        }
        const QString text = EdsFixture::run(*generator, builder.store(), dir.path());
        QCOMPARE(QFileInfo(generator->outputFile()).fileName(), file);
        QCOMPARE(text, EdsFixture::golden(expected));
    }

    void standardReaderFindsEighteenColumns()
    {
        if (QStandardPaths::findExecutable(QStringLiteral("python3")).isEmpty())
            QFAIL("python3 is needed to read the table with a CSV reader of its own");
        ProjectBuilder builder;
        csvProject(builder);
        QTemporaryDir dir;
        CSVGenerator generator;
        EdsFixture::run(generator, builder.store(), dir.path());
        // Rows that are not the blank separator lines; each must have the 18 columns of the head.
        const QString script = QStringLiteral(
            "import csv, sys\n"
            "rows = [r for r in csv.reader(open(sys.argv[1], newline='', encoding='utf-8')) if r != [' ']]\n"
            "print(len(rows), sorted({len(r) for r in rows}), rows[7][2], rows[10][2])\n");
        QProcess python;
        python.start(QStringLiteral("python3"), {QStringLiteral("-c"), script, generator.outputFile()});
        QVERIFY(python.waitForFinished(30000));
        QCOMPARE(QString::fromUtf8(python.readAllStandardOutput()).trimmed(),
                 QStringLiteral("12 [18] Speed, fast Outputs Level \"2\""));
    }

    void valueCell_data()
    {
        QTest::addColumn<int>("dataType");
        QTest::addColumn<QString>("value");
        QTest::addColumn<QString>("expected");
        QTest::newRow("UNSIGNED8 in hexadecimal") << 5 << "0x10"
                                                  << "16";
        QTest::newRow("UNSIGNED8 no number") << 5 << "abc"
                                             << "abc";
        QTest::newRow("UNSIGNED8 read as 16 bits") << 5 << "300"
                                                   << "300";
        QTest::newRow("UNSIGNED16 read as 32 bits") << 6 << "70000"
                                                    << "70000";
        QTest::newRow("INTEGER16 negative") << 3 << "-5"
                                            << "-5";
        QTest::newRow("node-ID expression stays") << 7 << "$NODEID+0x100"
                                                  << "$NODEID+0x100";
        QTest::newRow("REAL32 shortest form") << 8 << "1.50"
                                              << "1.5";
        QTest::newRow("REAL64 in exponent form") << 17 << "2.5e3"
                                                 << "2500";
        QTest::newRow("INTEGER64") << 21 << "-9000000000"
                                   << "-9000000000";
        QTest::newRow("UNSIGNED64 largest") << 27 << "0xFFFFFFFFFFFFFFFF"
                                            << "18446744073709551615";
        QTest::newRow("VISIBLE_STRING stays") << 9 << "0x10"
                                              << "0x10";
        QTest::newRow("UNSIGNED24 read as 32 bits") << 22 << "0x123456"
                                                    << "1193046";
    }

    void valueCell()
    {
        QFETCH(int, dataType);
        QFETCH(QString, value);
        QFETCH(QString, expected);
        ProjectBuilder builder;
        builder.line(0, 1);
        builder.object(0, 0x2000, QStringLiteral("Value"), 7, quint16(dataType))
            .sub(0, 0x2000, 0,
                 entry(QStringLiteral("Value"), quint16(dataType), QStringLiteral("rw"), value));
        QTemporaryDir dir;
        CSVGenerator csv;
        QCOMPARE(cellOf2000(EdsFixture::run(csv, builder.store(), dir.path()), 5), expected);
        ICSVGenerator icsv;
        QCOMPARE(cellOf2000(EdsFixture::run(icsv, builder.store(), dir.path()), 10), expected);
    }

    void separatorLines_data()
    {
        QTest::addColumn<bool>("importable");
        QTest::addColumn<QList<int>>("indices");
        QTest::addColumn<QString>("expected");
        QTest::newRow("first object a profile object") << false << QList<int>{0x6000} << " \n \n0x6000";
        QTest::newRow("one separator per range")
            << false << QList<int>{0x1000, 0x2000, 0x6000} << "0x1000\n \n0x2000\n \n0x6000";
        QTest::newRow("communication objects only")
            << false << QList<int>{0x1000, 0x1001} << "0x1000\n0x1001";
        // The importable table has a blank line behind each object as well.
        QTest::newRow("ICSV, first object a profile object")
            << true << QList<int>{0x6000} << " \n \n0x6000\n ";
        QTest::newRow("ICSV, one separator per range")
            << true << QList<int>{0x1000, 0x2000, 0x6000} << "0x1000\n \n \n0x2000\n \n \n0x6000\n ";
    }

    void separatorLines()
    {
        QFETCH(bool, importable);
        QFETCH(QList<int>, indices);
        QFETCH(QString, expected);
        ProjectBuilder builder;
        builder.line(0, 1);
        for (const int index : std::as_const(indices))
            builder.var(0, quint16(index), QStringLiteral("Object"), 5, QStringLiteral("ro"),
                        QStringLiteral("1"));
        QTemporaryDir dir;
        std::unique_ptr<CSVGenerator> generator =
            importable ? std::make_unique<ICSVGenerator>() : std::make_unique<CSVGenerator>();
        QStringList lines = EdsFixture::run(*generator, builder.store(), dir.path()).split('\n');
        // The head: one column line, behind three comment lines in the importable table.
        lines = lines.mid(importable ? 4 : 1);
        lines.removeLast();
        for (QString &line : lines)
            line = line.section(',', 0, 0);
        QCOMPARE(lines.join('\n'), expected);
    }

    void namesAndWritability()
    {
        QTemporaryDir dir;
        CSVGenerator csv;
        ICSVGenerator icsv;
        for (CSVGenerator *generator : {&csv, static_cast<CSVGenerator *>(&icsv)}) {
            generator->setOutputPath(dir.path());
            generator->setProjectName(QStringLiteral("board"));
            generator->setLine(3);
            generator->setMultiLine(true);
        }
        QCOMPARE(QFileInfo(csv.outputFile()).fileName(), QStringLiteral("board_3.csv"));
        QCOMPARE(QFileInfo(icsv.outputFile()).fileName(), QStringLiteral("board_3.icsv"));
        QCOMPARE(csv.generatorName(), QStringLiteral("CSV documentation"));
        QCOMPARE(icsv.generatorName(), QStringLiteral("ICSV documentation"));
        const QString plain = dir.filePath(QStringLiteral("board.icsv"));
        QVERIFY(icsv.isOutputWritable());
        QVERIFY(TestProjects::writeFile(plain, "old"));
        QFile::setPermissions(plain, QFile::ReadOwner);
        QVERIFY(!icsv.isOutputWritable());
        QVERIFY(csv.isOutputWritable());
    }
};

QTEST_GUILESS_MAIN(TestCsvGenerator)
#include "tst_csvgenerator.moc"
