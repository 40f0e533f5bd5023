#include "generators/source/extdeclgenerator.h"
#include "generatorrun.h"
#include "generators/source/extdeclgeneratorv4.h"
#include "headerprojects.h"
#include "support/projectbuilder.h"
#include "support/testprojects.h"

#include <QDir>
#include <QTemporaryDir>
#include <QtTest>

#include <memory>

namespace {

std::unique_ptr<AbstractGenerator> makeGenerator(bool currentFamily)
{
    if (currentFamily)
        return std::make_unique<ExtDeclGeneratorV4>();
    return std::make_unique<ExtDeclGenerator>();
}

struct Output
{
    QString header;
    QString definitions;
};

Output generate(ProjectBuilder &project, bool currentFamily, const QString &projectName = QStringLiteral("P"))
{
    QTemporaryDir dir;
    auto generator = makeGenerator(currentFamily);
    if (!GeneratorRun::run(*generator, project.store(), dir.path(), projectName))
        return {QStringLiteral("<generator did not finish>"), QString()};
    return {TestProjects::readGenerated(dir.filePath(QStringLiteral("gen_extern_decl.h"))),
            TestProjects::readGenerated(dir.filePath(QStringLiteral("gen_var_decl.c")))};
}

// What the header declares behind its heading.
QString declarations(const QString &header)
{
    const QString start = QStringLiteral("/* external variables */\n");
    const QString end = QStringLiteral("\n#endif /* GEN_EXTERN_DECL_H */\n");
    const qsizetype from = header.indexOf(start);
    if (from < 0 || !header.endsWith(end))
        return QStringLiteral("<no gen_extern_decl.h frame>\n") + header;
    return header.mid(from + start.size(), header.size() - end.size() - from - start.size());
}

// One J1939 line with a receive PGN 65280 "Test" holding one SPN 1 "Signal".
void signalProject(ProjectBuilder &project, quint16 dataType, quint16 bitSize, quint8 implementation,
                   const QString &varName)
{
    project.line(0, 2);
    project.pgn(0, 65280, Direction::Receive, QStringLiteral("Test"));
    SPN spn;
    spn.pgnnumber = 65280;
    spn.direction = Direction::Receive;
    spn.spnnumber = 1;
    spn.name = QStringLiteral("Signal");
    spn.datatype = dataType;
    spn.bitsize = bitSize;
    spn.implementation = implementation;
    spn.varname = varName;
    project.spn(0, spn);
}

} // namespace

class TestExtDeclGenerator : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { TestProjects::setGeneratorApplication(); }

    void golden_data()
    {
        QTest::addColumn<QString>("project");
        QTest::addColumn<bool>("currentFamily");
        for (const auto &project : HeaderProjects::projects()) {
            if (project.declarations)
                QTest::addRow("%s, current family", project.name)
                    << QString::fromLatin1(project.name) << true;
        }
        QTest::newRow("j1939_single, older family") << QStringLiteral("j1939_single") << false;
        QTest::newRow("rawcan_single, older family") << QStringLiteral("rawcan_single") << false;
        QTest::newRow("protocols_multi, older family") << QStringLiteral("protocols_multi") << false;
    }

    void golden()
    {
        QFETCH(QString, project);
        QFETCH(bool, currentFamily);
        ProjectBuilder builder;
        HeaderProjects::find(project)->build(builder);
        const Output output = generate(builder, currentFamily, project);
        const QString folder = HeaderProjects::goldenFolder(project) + (currentFamily ? "/" : "/older_");
        const QString header =
            TestProjects::readExpected(folder + QStringLiteral("gen_extern_decl.h"), output.header);
        const QString definitions =
            TestProjects::readExpected(folder + QStringLiteral("gen_var_decl.c"), output.definitions);
        QVERIFY(!header.isEmpty() && !definitions.isEmpty());
        QCOMPARE(output.header.split('\n'), header.split('\n'));
        QCOMPARE(output.definitions.split('\n'), definitions.split('\n'));
    }

    void declaration_data()
    {
        QTest::addColumn<quint16>("dataType");
        QTest::addColumn<quint16>("bitSize");
        QTest::addColumn<QString>("varName");
        QTest::addColumn<QString>("current");
        QTest::addColumn<QString>("older");

        const auto line = [](const char *declaration) {
            return QStringLiteral("extern %1\t/* SPN1 Signal */\n").arg(QLatin1String(declaration));
        };
        QTest::newRow("11 bits") << quint16(108) << quint16(11) << QStringLiteral("v")
                                 << line("UNSIGNED16\tv;") << line("UNSIGNED11\tv;");
        QTest::newRow("12 bits") << quint16(109) << quint16(12) << QStringLiteral("v")
                                 << line("UNSIGNED16\tv;") << line("UNSIGNED16\tv;");
        QTest::newRow("15 bits") << quint16(112) << quint16(15) << QStringLiteral("v")
                                 << line("UNSIGNED16\tv;") << line("UNSIGNED15\tv;");
        QTest::newRow("19 bits") << quint16(117) << quint16(19) << QStringLiteral("v")
                                 << line("UNSIGNED32\tv;") << line("UNSIGNED32\tv;");
        QTest::newRow("21 bits stand as they are") << quint16(119) << quint16(21) << QStringLiteral("v")
                                                   << line("UNSIGNED21\tv;") << line("UNSIGNED21\tv;");
        QTest::newRow("signed 32 bits") << quint16(4) << quint16(32) << QStringLiteral("v")
                                        << line("INTEGER32\tv;") << line("INTEGER32\tv;");
        QTest::newRow("visible string of 12 bits takes two bytes")
            << quint16(9) << quint16(12) << QStringLiteral("text") << line("UNSIGNED8\ttext[2];")
            << line("UNSIGNED8\ttext[2];");
        QTest::newRow("octet string without size takes one byte")
            << quint16(10) << quint16(0) << QStringLiteral("bytes") << line("UNSIGNED8\tbytes[1];")
            << line("UNSIGNED8\tbytes[1];");
        QTest::newRow("array element declares the array with empty brackets")
            << quint16(5) << quint16(8) << QStringLiteral("buffer[3]") << line("UNSIGNED8\tbuffer[];")
            << line("UNSIGNED8\tbuffer[];");
        QTest::newRow("null-terminated string of 20 bits takes three bytes")
            << quint16(120) << quint16(20) << QStringLiteral("text") << line("UNSIGNED8\ttext[3];")
            << line("UNSIGNED8\ttext[3];");
        QTest::newRow("asterisk-terminated string of 8 bits takes one byte")
            << quint16(121) << quint16(8) << QStringLiteral("text") << line("UNSIGNED8\ttext[1];")
            << line("UNSIGNED8\ttext[1];");
        QTest::newRow("member of a structure is not declared")
            << quint16(5) << quint16(8) << QStringLiteral("app.value") << QString() << QString();
        QTest::newRow("pointer is not declared")
            << quint16(5) << quint16(8) << QStringLiteral("*pValue") << QString() << QString();
        QTest::newRow("address is not declared")
            << quint16(5) << quint16(8) << QStringLiteral("&value") << QString() << QString();
        QTest::newRow("no variable name") << quint16(5) << quint16(8) << QString() << QString() << QString();
    }

    void declaration()
    {
        QFETCH(quint16, dataType);
        QFETCH(quint16, bitSize);
        QFETCH(QString, varName);
        QFETCH(QString, current);
        QFETCH(QString, older);
        ProjectBuilder project;
        signalProject(project, dataType, bitSize, 2, varName);
        const QString heading = QStringLiteral("/* PGN 65280/0xff00 Test */\n");
        QCOMPARE(declarations(generate(project, true).header), heading + current + "\n");
        QCOMPARE(declarations(generate(project, false).header), heading + older + "\n");
    }

    void managedSignalsAloneGiveNoBlock()
    {
        ProjectBuilder project;
        signalProject(project, 5, 8, 0, QStringLiteral("managed"));
        const Output output = generate(project, true);
        QCOMPARE(declarations(output.header), QStringLiteral("\n"));
        QVERIFY(output.definitions.endsWith(QStringLiteral("#ifdef KJN_USE_GENERATED_VARIABLES\n\n"
                                                           "#endif /* KJN_USE_GENERATED_VARIABLES */\n")));
    }

    void constantBesideVariableIsDeclaredToo()
    {
        ProjectBuilder project;
        signalProject(project, 5, 8, 2, QStringLiteral("variable"));
        SPN constant;
        constant.pgnnumber = 65280;
        constant.direction = Direction::Receive;
        constant.spnnumber = 2;
        constant.pos = 1;
        constant.datatype = 6;
        constant.implementation = 1;
        constant.varname = QStringLiteral("constant");
        project.spn(0, constant);
        QCOMPARE(declarations(generate(project, true).header),
                 QStringLiteral("/* PGN 65280/0xff00 Test */\n"
                                "extern UNSIGNED8\tvariable;\t/* SPN1 Signal */\n"
                                "extern UNSIGNED16\tconstant;\n"
                                "\n"));
    }

    void forcedMultiLineNamesTheLine()
    {
        ProjectBuilder project;
        signalProject(project, 5, 8, 2, QStringLiteral("v"));
        project.misc(QStringLiteral("generateML"), QStringLiteral("true"));
        QCOMPARE(declarations(generate(project, true).header),
                 QStringLiteral("\n/* line 0*/\n"
                                "/* PGN 65280/0xff00 Test */\n"
                                "extern UNSIGNED8\tv;\t/* SPN1 Signal */\n"
                                "\n"));
    }

    void olderFamilyWithCoreHeaders()
    {
        ProjectBuilder project;
        signalProject(project, 5, 8, 2, QStringLiteral("v"));
        project.general(QStringLiteral("use_core_headers"), QStringLiteral("1"));
        const Output output = generate(project, false);
        QVERIFY(output.header.contains(
            QStringLiteral("#include <gen_define.h>\n#include <core_datatype.h>\n\n")));
        QVERIFY(output.definitions.contains(
            QStringLiteral("#include <gen_define.h>\n#include <core_datatype.h>\n\n")));
    }

    void definitionsFileThatCannotBeOpened()
    {
        ProjectBuilder project;
        signalProject(project, 5, 8, 2, QStringLiteral("v"));
        QTemporaryDir dir;
        QVERIFY(QDir(dir.path()).mkdir(QStringLiteral("gen_var_decl.c")));
        ExtDeclGeneratorV4 generator;
        QList<int> progress;
        connect(&generator, &AbstractGenerator::progress, this, [&](quint8 value) { progress << value; });
        QVERIFY(GeneratorRun::run(generator, project.store(), dir.path(), QStringLiteral("P")));
        QTRY_VERIFY(progress.contains(100));
        QCOMPARE(TestProjects::readFile(dir.filePath(QStringLiteral("gen_extern_decl.h"))), QByteArray());
        QVERIFY(!generator.hasFailed());
    }

    void fileAndName()
    {
        ExtDeclGenerator generator;
        generator.setOutputPath(QStringLiteral("/out"));
        QCOMPARE(generator.outputFile(), QStringLiteral("/out/gen_extern_decl.h"));
        QCOMPARE(generator.definitionsFile(), QStringLiteral("/out/gen_var_decl.c"));
        QCOMPARE(generator.generatorName(), QStringLiteral("gen_extern_decl.h"));
    }
};

QTEST_MAIN(TestExtDeclGenerator)
#include "tst_extdeclgenerator.moc"
