#include "generators/source/indicationgenerator.h"
#include "generatorrun.h"
#include "generators/source/indicationgeneratorv4.h"
#include "headerprojects.h"
#include "support/projectbuilder.h"
#include "support/testprojects.h"

#include <QTemporaryDir>
#include <QtTest>

#include <memory>

namespace {

using Settings = QStringList;

QString generate(ProjectBuilder &project, bool currentFamily,
                 const QString &projectName = QStringLiteral("P"))
{
    QTemporaryDir dir;
    std::unique_ptr<AbstractGenerator> generator;
    if (currentFamily)
        generator = std::make_unique<indicationgeneratorv4>();
    else
        generator = std::make_unique<indicationgenerator>();
    if (!GeneratorRun::run(*generator, project.store(), dir.path(), projectName))
        return QStringLiteral("<generator did not finish>");
    return TestProjects::readGenerated(dir.filePath(QStringLiteral("gen_indication.h")));
}

// What stands between the include guard and its end.
QString body(const QString &file)
{
    const QString start = QStringLiteral("#define GEN_INDICATION 1\n\n");
    const QString end = QStringLiteral("\n#endif /* GEN_INDICATION*/\n");
    const qsizetype from = file.indexOf(start);
    if (from < 0 || !file.endsWith(end))
        return QStringLiteral("<no gen_indication.h frame>\n") + file;
    return file.mid(from + start.size(), file.size() - end.size() - from - start.size());
}

QString noFunctions()
{
    return QStringLiteral("/* \n"
                          "   There are not any static indication functions defined.\n"
                          "   If there were some, they would be declared here. \n"
                          " */\n");
}

} // namespace

class TestIndicationGenerator : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { TestProjects::setGeneratorApplication(); }

    void golden_data()
    {
        QTest::addColumn<QString>("project");
        QTest::addColumn<bool>("currentFamily");
        for (const auto &project : HeaderProjects::projects()) {
            if (project.indications)
                QTest::addRow("%s, current family", project.name)
                    << QString::fromLatin1(project.name) << true;
        }
        QTest::newRow("canopen_single, older family") << QStringLiteral("canopen_single") << false;
        QTest::newRow("canopen_multi, older family") << QStringLiteral("canopen_multi") << false;
    }

    void golden()
    {
        QFETCH(QString, project);
        QFETCH(bool, currentFamily);
        ProjectBuilder builder;
        HeaderProjects::find(project)->build(builder);
        const QString actual = generate(builder, currentFamily, project);
        const QString expected = TestProjects::readExpected(
            HeaderProjects::goldenFolder(project) + (currentFamily ? "/" : "/older_") + "gen_indication.h",
            actual);
        QVERIFY(!expected.isEmpty());
        QCOMPARE(actual.split('\n'), expected.split('\n'));
    }

    void prototypes_data()
    {
        QTest::addColumn<int>("lines");
        QTest::addColumn<Settings>("settings");
        QTest::addColumn<QString>("current");
        QTest::addColumn<QString>("older");

        QTest::newRow("generateML true gives the line parameter to a single line")
            << 1 << Settings{QStringLiteral("misc:generateML=true"), QStringLiteral("fct_sync=appSync")}
            << QStringLiteral("void appSync(CAN_LINE_TYPE CAN_LINE, UNSIGNED8 syncCounter);\n")
            << QStringLiteral("void appSync(UNSIGNED8 CO_LINE, UNSIGNED8 syncCounter);\n");
        QTest::newRow("generateML True does not")
            << 1 << Settings{QStringLiteral("misc:generateML=True"), QStringLiteral("fct_sync=appSync")}
            << QStringLiteral("void appSync(UNSIGNED8 syncCounter);\n")
            << QStringLiteral("void appSync(UNSIGNED8 syncCounter);\n");
        QTest::newRow("blank names count as empty")
            << 1 << Settings{QStringLiteral("fct_sync=  "), QStringLiteral("fct_time=\t")} << noFunctions()
            << noFunctions();
        QTest::newRow("USDO client functions need a line with the client enabled")
            << 2
            << Settings{QStringLiteral("usdo_client_enabled=0,1"),
                        QStringLiteral("usdo_client_domain_read_ind_function=appDomainRead"),
                        QStringLiteral("usdo_server_read_ind_function=appServerRead")}
            << QStringLiteral("RET_T appDomainRead(CAN_LINE_TYPE CAN_LINE, CORE_CONST "
                              "CO_EVENT_USDO_CLIENT_DOMAIN_PARA_T *pPara);\n")
            << QStringLiteral("RET_T appDomainRead(UNSIGNED8 CO_LINE, UNSIGNED8 nodeId, UNSIGNED16 index, "
                              "UNSIGNED8 subIndex, UNSIGNED32 domainBufSize, UNSIGNED32 transferSize);\n");
        QTest::newRow("functions of one generation only")
            << 1
            << Settings{QStringLiteral("fct_manager=appManager"),
                        QStringLiteral("fct_pdo_update=appPdoUpdate"), QStringLiteral("fct_lss=appLss")}
            << QStringLiteral(
                   "void appPdoUpdate(UNSIGNED16 index, UNSIGNED8 subIndex);\n"
                   "void appLss(CO_LSS_SERVICE_T service, CORE_CONST CO_EVENT_LSS_SLAVE_PARA_T * pPara,  "
                   "CO_EVENT_LSS_SLAVE_RET_PARA_T * pRetPara);\n")
            << QStringLiteral(
                   "void appLss(CO_LSS_SERVICE_T service, UNSIGNED16 bitrate, UNSIGNED8 *pErrCode, "
                   "UNSIGNED8 *pErrSpec);\n"
                   "void appManager(UNSIGNED8 node, CO_MANAGER_EVENT_T event);\n");
        QTest::newRow("static UDS indications without CANopen functions")
            << 1
            << Settings{QStringLiteral("uds_static_indication=1"),
                        QStringLiteral("uds_fct_req_commgt=appCommgt"),
                        QStringLiteral("uds_fct_authent_req= ")}
            << noFunctions() + QStringLiteral("#if UDS_EVENT_STATIC_REQ_COMMGT\n"
                                              "RET_T appCommgt(UDS_REQ_COMMGT_STATE_T state, "
                                              "UDS_REQ_COMMGT_PARA_T *pPara);\n"
                                              "#endif\n")
            << noFunctions();
        QTest::newRow("UDS names without the switch")
            << 1
            << Settings{QStringLiteral("uds_static_indication=0"),
                        QStringLiteral("uds_fct_generic=appGeneric")}
            << noFunctions() << noFunctions();
    }

    void prototypes()
    {
        QFETCH(int, lines);
        QFETCH(Settings, settings);
        QFETCH(QString, current);
        QFETCH(QString, older);
        ProjectBuilder project;
        for (int line = 0; line < lines; ++line)
            project.line(quint8(line), 1);
        for (const QString &setting : settings) {
            const qsizetype equals = setting.indexOf('=');
            const QString key = setting.left(equals);
            if (key.startsWith(QLatin1String("misc:")))
                project.misc(key.mid(5), setting.mid(equals + 1));
            else
                project.general(key, setting.mid(equals + 1));
        }
        QCOMPARE(body(generate(project, true)), current);
        QCOMPARE(body(generate(project, false)), older);
    }

    void fileAndName()
    {
        indicationgeneratorv4 current;
        indicationgenerator older;
        for (AbstractGenerator *generator :
             {static_cast<AbstractGenerator *>(&current), static_cast<AbstractGenerator *>(&older)}) {
            generator->setOutputPath(QStringLiteral("/out"));
            QCOMPARE(generator->outputFile(), QStringLiteral("/out/gen_indication.h"));
            QCOMPARE(generator->generatorName(), QStringLiteral("gen_indication.h"));
        }
    }
};

QTEST_MAIN(TestIndicationGenerator)
#include "tst_indicationgenerator.moc"
