#include "generators/source/codefinegenerator.h"
#include "generatorrun.h"
#include "generators/source/extdeclgenerator.h"
#include "generators/source/extdeclgeneratorv4.h"
#include "generators/source/gendefinegenerator.h"
#include "generators/source/pgngenerator.h"
#include "generators/source/pgngeneratorv4.h"
#include "stackcompiler.h"
#include "store/objectdatabase.h"
#include "support/projectbuilder.h"
#include "support/testprojects.h"
#include "tst_pgngeneratorfixture.h"

#include <QTemporaryDir>
#include <QtTest>

#include <memory>

// Every gen_pgn.c of the test projects compiles as C99 against the minimal stack headers, together with
// the gen_define.h and gen_extern_decl.h of the same run.
class TestPgnGeneratorCompile : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase()
    {
        TestProjects::setGeneratorApplication();
        if (!StackCompiler::available())
            QSKIP("no C compiler");
    }

    void compile_data()
    {
        QTest::addColumn<QString>("project");
        QTest::addColumn<bool>("current");
        QTest::addColumn<QStringList>("statements");
        const QStringList managedLoad{
            QStringLiteral("update SPNs0 set implementation = 0 where spnnumber = 92")};
        QTest::newRow("J1939 device, current family") << "j1939_device" << true << QStringList();
        QTest::newRow("J1939 device, older family") << "j1939_device" << false << QStringList();
        QTest::newRow("J1939 device with a managed multi-source signal, current family")
            << "j1939_device" << true << managedLoad;
        QTest::newRow("J1939 device with a managed multi-source signal, older family")
            << "j1939_device" << false << managedLoad;
        QTest::newRow("two lines with CAN FD, current family") << "two_lines_fd" << true << QStringList();
        QTest::newRow("two lines with CAN FD, older family") << "two_lines_fd" << false << QStringList();
    }

    void compile()
    {
        QFETCH(QString, project);
        QFETCH(bool, current);
        QFETCH(QStringList, statements);
        ProjectBuilder builder;
        PgnProjects::build(*PgnProjects::find(project), builder);
        ObjectDataBase &store = builder.store();
        for (const QString &statement : std::as_const(statements))
            QVERIFY(store.executeSql(statement));
        QTemporaryDir dir;

        // The run's order: the configuration header, the PGN source, the declarations.
        std::unique_ptr<AbstractGenerator> define;
        std::unique_ptr<AbstractGenerator> pgn;
        std::unique_ptr<AbstractGenerator> declarations;
        if (current) {
            define = std::make_unique<GenDefineGenerator>();
            pgn = std::make_unique<PGNGeneratorV4>();
            declarations = std::make_unique<ExtDeclGeneratorV4>();
        } else {
            define = std::make_unique<CoDefineGenerator>();
            pgn = std::make_unique<PGNGenerator>();
            declarations = std::make_unique<ExtDeclGenerator>();
        }
        define->setHasJ1939(true);
        define->setMultiProtocol(false);
        QVERIFY(GeneratorRun::run(*define, store, dir.path(), project));
        QVERIFY(GeneratorRun::run(*pgn, store, dir.path(), project));
        QVERIFY(GeneratorRun::run(*declarations, store, dir.path(), project));
        for (const char *header : {"app.h", "board.h"})
            QVERIFY(TestProjects::writeFile(dir.filePath(QLatin1String(header)), QByteArray()));

        const QString source =
            QString::fromUtf8(TestProjects::readFile(dir.filePath(QStringLiteral("gen_pgn.c"))));
        QVERIFY(!source.isEmpty());
        QStringList arguments{QStringLiteral("-std=c99")};
        if (!current)
            arguments << QStringLiteral("-DKESTREL_OLDER_STACK");
        QString messages;
        QVERIFY2(StackCompiler::compile(dir.path(), QStringLiteral("pgn.c"), source, arguments, &messages),
                 qPrintable(messages));
    }

    // The example that ./run.sh generates from: a complete engine controller.
    void exampleProject()
    {
        const QString path =
            qEnvironmentVariable("KESTREL_SOURCE_DIR") + QStringLiteral("/examples/j1939_example.ktxt");
        ObjectDataBase store;
        QVERIFY(store.loadTextDatabase(path));
        QTemporaryDir dir;
        GenDefineGenerator define;
        define.setHasJ1939(true);
        QVERIFY(GeneratorRun::run(define, store, dir.path(), QStringLiteral("j1939_example")));
        PGNGeneratorV4 pgn;
        QVERIFY(GeneratorRun::run(pgn, store, dir.path(), QStringLiteral("j1939_example")));
        ExtDeclGeneratorV4 declarations;
        QVERIFY(GeneratorRun::run(declarations, store, dir.path(), QStringLiteral("j1939_example")));
        const QString source =
            QString::fromUtf8(TestProjects::readFile(dir.filePath(QStringLiteral("gen_pgn.c"))));
        const QStringList lines = source.split('\n');
        for (const char *line :
             {"static UNSIGNED8 * tx_mapping_60928_data[] = {", "\t(UNSIGNED8 *)&engineSpeed",
              "\t{ 91, 8u, 8u, CORE_DTYPE_U8 }\t/* Accelerator Pedal Position 1 */",
              "#ifdef J1939_MULTI_SRC_ADDR ", "\t2u,", "\t84u "})
            QVERIFY2(lines.contains(QLatin1String(line)), line);
        QString messages;
        QVERIFY2(StackCompiler::compile(dir.path(), QStringLiteral("pgn.c"), source,
                                        {QStringLiteral("-std=c99")}, &messages),
                 qPrintable(messages));
    }
};

QTEST_MAIN(TestPgnGeneratorCompile)
#include "tst_pgngeneratorcompile.moc"
