#include "generation/abstractgenerator.h"
#include "generation/cppoutputcopy.h"
#include "generation/generatortext.h"
#include "generation/usersection.h"
#include "store/objectdatabase.h"
#include "support/testprojects.h"

#include <QTemporaryDir>
#include <QTextStream>
#include <QtTest>

namespace {

// Writes one line telling which code form the frame chose.
class ProbeGenerator : public AbstractGenerator
{
public:
    using AbstractGenerator::AbstractGenerator;
    QString outputFile() const override { return filePath(QStringLiteral("%1/probe_%2.txt")); }
    QString generatorName() const override { return QStringLiteral("probe"); }

    unsigned long workMs = 50;

protected:
    void writeContent(QTextStream &out) override
    {
        out << (multiLineForm() ? "multi" : "single") << '\n';
        QThread::msleep(workMs);
    }
};

} // namespace

class TestGeneratorFrame : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase()
    {
        QCoreApplication::setApplicationName(QStringLiteral("CANopen Kestrel"));
        QCoreApplication::setApplicationVersion(QStringLiteral("4.3.2"));
    }

    void settersReportTheirStatus()
    {
        ObjectDataBase store;
        QVERIFY(store.createNewDataBase());
        ProbeGenerator generator;
        QCOMPARE(generator.setOutputPath(QStringLiteral("/nonexistent/folder")), GeneratorStatus::PathMissing);
        QCOMPARE(generator.outputFile(), QStringLiteral("/nonexistent/folder/probe_.txt"));
        QCOMPARE(generator.setDatabase(nullptr), GeneratorStatus::InvalidDatabase);
        QCOMPARE(generator.setDatabase(&store), GeneratorStatus::Ok);
        QCOMPARE(generator.setLine(5), GeneratorStatus::InvalidLine);
        QCOMPARE(generator.setLine(0), GeneratorStatus::Ok);
        QCOMPARE(generator.setProjectName(QStringLiteral("P")), GeneratorStatus::Ok);
        QCOMPARE(generator.abort(), GeneratorStatus::NotRunning);
    }

    void runWritesFileAndReportsHundredLast()
    {
        QTemporaryDir dir;
        ObjectDataBase store;
        QVERIFY(store.createNewDataBase());
        ProbeGenerator generator;
        QCOMPARE(generator.setOutputPath(dir.path()), GeneratorStatus::Ok);
        generator.setDatabase(&store);
        generator.setProjectName(QStringLiteral("P"));
        QList<int> progress;
        connect(&generator, &AbstractGenerator::progress, this, [&](quint8 value) { progress << value; });
        QVERIFY(generator.isOutputWritable());
        QCOMPARE(generator.start(), GeneratorStatus::Ok);
        QCOMPARE(generator.objectName(), QStringLiteral("probe"));
        QCOMPARE(generator.start(), GeneratorStatus::Busy);
        QCOMPARE(generator.setLine(0), GeneratorStatus::Busy);
        generator.waitForFinished();
        QTRY_COMPARE(progress, QList<int>{100});
        QCOMPARE(TestProjects::readFile(dir.filePath(QStringLiteral("probe_P.txt"))), QByteArray("single\n"));
        QCOMPARE(generator.abort(), GeneratorStatus::NotRunning);
        QVERIFY(!store.isBlocked());
        QCOMPARE(generator.thread(), QThread::currentThread());
    }

    // A job that ends before start() returns must still be seen as finished.
    void aQuickJobIsNeverLeftRunning()
    {
        QTemporaryDir dir;
        ObjectDataBase store;
        QVERIFY(store.createNewDataBase());
        for (int round = 0; round < 300; ++round) {
            ProbeGenerator generator;
            generator.workMs = 0;
            generator.setOutputPath(dir.path());
            generator.setDatabase(&store);
            QCOMPARE(generator.start(), GeneratorStatus::Ok);
            generator.waitForFinished();
            generator.waitForThread();
            QVERIFY2(!generator.isRunning(), qPrintable(QString::number(round)));
        }
    }

    void forcedMultiLineNeedsExactlyTrue_data()
    {
        QTest::addColumn<QString>("value");
        QTest::addColumn<QByteArray>("expected");
        QTest::newRow("true") << "true" << QByteArray("multi\n");
        QTest::newRow("True") << "True" << QByteArray("single\n");
        QTest::newRow("unset") << "" << QByteArray("single\n");
    }

    void forcedMultiLineNeedsExactlyTrue()
    {
        QFETCH(QString, value);
        QFETCH(QByteArray, expected);
        QTemporaryDir dir;
        ObjectDataBase store;
        QVERIFY(store.createNewDataBase());
        store.setMiscSetting(QStringLiteral("generateML"), value);
        ProbeGenerator generator;
        generator.setOutputPath(dir.path());
        generator.setDatabase(&store);
        generator.start();
        generator.waitForFinished();
        QCOMPARE(TestProjects::readFile(dir.filePath(QStringLiteral("probe_.txt"))), expected);
    }

    void readOnlyOutputIsNotWritable()
    {
        QTemporaryDir dir;
        ProbeGenerator generator;
        generator.setOutputPath(dir.path());
        const QString file = dir.filePath(QStringLiteral("probe_.txt"));
        QVERIFY(generator.isOutputWritable());
        QVERIFY(TestProjects::writeFile(file, "x"));
        QVERIFY(generator.isOutputWritable());
        QFile::setPermissions(file, QFile::ReadOwner | QFile::ReadUser);
        QVERIFY(!generator.isOutputWritable());
    }

    void largeValueLiteral_data()
    {
        QTest::addColumn<int>("type");
        QTest::addColumn<quint64>("unsignedValue");
        QTest::addColumn<qint64>("signedValue");
        QTest::addColumn<QString>("expected");
        QTest::newRow("U48 of type 25") << 25 << Q_UINT64_C(0x0102030405a6) << Q_INT64_C(0)
                                        << "U48_SET(0x01,0x02,0x03,0x04,0x05,0xa6)";
        QTest::newRow("time of day is U48") << 12 << Q_UINT64_C(1) << Q_INT64_C(0) << "U48_SET(0x00,0x00,0x00,0x00,0x00,0x01)";
        QTest::newRow("I24 from the signed value") << 16 << Q_UINT64_C(99) << Q_INT64_C(-2) << "I24_SET(0xff,0xff,0xfe)";
        QTest::newRow("U24") << 22 << Q_UINT64_C(0xabcdef) << Q_INT64_C(0) << "U24_SET(0xab,0xcd,0xef)";
        QTest::newRow("U40") << 24 << Q_UINT64_C(0x1122334455) << Q_INT64_C(0) << "U40_SET(0x11,0x22,0x33,0x44,0x55)";
        QTest::newRow("U64") << 27 << Q_UINT64_C(0xffffffffffffffff) << Q_INT64_C(0)
                             << "U64_SET(0xff,0xff,0xff,0xff,0xff,0xff,0xff,0xff)";
        QTest::newRow("other type") << 7 << Q_UINT64_C(5) << Q_INT64_C(5) << "";
    }

    void largeValueLiteral()
    {
        QFETCH(int, type);
        QFETCH(quint64, unsignedValue);
        QFETCH(qint64, signedValue);
        QFETCH(QString, expected);
        QCOMPARE(GeneratorText::largeValueLiteral(quint16(type), unsignedValue, signedValue), expected);
    }

    void fileHead()
    {
        QString text;
        QTextStream out(&text);
        GeneratorText::writeFileHead(out, QStringLiteral(" * object dictionary for %1 - generated by %2 %3 (V4)\n"),
                                     QStringLiteral("board"), QStringLiteral("4.3.2"),
                                     QStringLiteral("Mon Nov 23 12:00:00 2026"));
        out.flush();
        QCOMPARE(text, QStringLiteral("/*\n * object dictionary for board - generated by CANopen Kestrel 4.3.2 (V4)\n"
                                      " * Mon Nov 23 12:00:00 2026\n */\n\n"));
        QCOMPARE(TestProjects::maskDate(QStringLiteral("x\n * ") + GeneratorText::currentDate() + '\n'),
                 QStringLiteral("x\n * DATE\n"));
    }

    void userSection_data()
    {
        QTest::addColumn<QByteArray>("old");
        QTest::addColumn<QString>("section");
        QTest::newRow("no markers") << QByteArray("#define A 1\n") << "";
        QTest::newRow("three lines")
            << QByteArray("x\n/* user-specific section: start */\n#define U 1\n\n  // note\n"
                          "/* user-specific section: end */\n#endif\n")
            << "#define U 1\n\n  // note\n";
        QTest::newRow("markers must be whole lines")
            << QByteArray(" /* user-specific section: start */\nA\n/* user-specific section: end */\n") << "";
        QTest::newRow("unterminated section runs to the end")
            << QByteArray("/* user-specific section: start */\nA\nB\n") << "A\nB\n";
    }

    void userSection()
    {
        QFETCH(QByteArray, old);
        QFETCH(QString, section);
        QTemporaryDir dir;
        const QString path = dir.filePath(QStringLiteral("gen_define.h"));
        QVERIFY(TestProjects::writeFile(path, old));
        QCOMPARE(UserSection::read(path), section);

        QString text;
        QTextStream out(&text);
        UserSection::write(out, section);
        out.flush();
        QCOMPARE(text, QStringLiteral("/* do not modify comments starting with 'user-specific section:' */\n"
                                      "/* user-specific section: start */\n") +
                           (section.isEmpty() ? QStringLiteral("\n") : section) +
                           QStringLiteral("/* user-specific section: end */\n"));
        QCOMPARE(UserSection::read(dir.filePath(QStringLiteral("missing.h"))), QString());
    }

    void cppOutputCopy()
    {
        QTemporaryDir dir;
        QVERIFY(!CppOutputCopy::run(QString()));
        QVERIFY(!CppOutputCopy::run(dir.filePath(QStringLiteral("missing"))));
        QVERIFY(!CppOutputCopy::run(dir.path()));
        QVERIFY(TestProjects::writeFile(dir.filePath(QStringLiteral("gen_objdict.c")), "int a;\n"));
        QVERIFY(TestProjects::writeFile(dir.filePath(QStringLiteral("gen_objdict.cpp")), "old"));
        QVERIFY(CppOutputCopy::run(dir.path()));
        QCOMPARE(TestProjects::readFile(dir.filePath(QStringLiteral("gen_objdict.cpp"))), QByteArray("int a;\n"));
        QVERIFY(!QFile::exists(dir.filePath(QStringLiteral("gen_user.hpp"))));

        QVERIFY(TestProjects::writeFile(dir.filePath(QStringLiteral("gen_user.h")),
                                        "RET_T f(void);\nRET_T g(void);\n"));
        QVERIFY(CppOutputCopy::run(dir.path()));
        QCOMPARE(TestProjects::readFile(dir.filePath(QStringLiteral("gen_user.hpp"))),
                 QByteArray("extern \"C\" RET_T f(void);\nextern \"C\" RET_T g(void);\n"));
    }
};

QTEST_MAIN(TestGeneratorFrame)
#include "tst_generatorframe.moc"
