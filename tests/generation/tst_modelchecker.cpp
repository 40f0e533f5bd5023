#include "generation/modelchecknumeric.h"
#include "generation/modelcheckstackversion.h"
#include "support/projectbuilder.h"
#include "support/testprojects.h"
#include "tst_modelcheckerfixture.h"

#include <QDir>
#include <QTemporaryDir>
#include <QtTest>

using namespace ModelCheckFixture;

namespace {

const QString timerMissing =
    QStringLiteral("<strong><font color='red'>Error: </font></strong>Timer interval not set "
                   "in Common Settings -> Hardware/Target.");
const QString serverAndClient =
    QStringLiteral("<strong><font color='red'>Error: </font></strong>UDS server and UDS "
                   "client together on one line is not possible.");

QString nonNumeric(const QString &label, const QString &piece)
{
    return QStringLiteral("<strong>Error: </strong>\"%1\" has non-numeric value \"%2\".").arg(label, piece);
}

QString duplicateCallback(const QString &name)
{
    return QStringLiteral(
               "<strong><font color='red'>Error: </font></strong>The function name '%1' is used for more "
               "than one UDS static indication service; each service needs its own callback (different "
               "signature).")
        .arg(name);
}

QString hint(const QString &files)
{
    return QStringLiteral(
               "<strong>Hint: </strong>Add <font color='red'>%1</font> to your project or Makefile.")
        .arg(files);
}

} // namespace

// The project-wide rules, the numeric text test and the check of the stack version.
class TestModelChecker : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { setApplication(); }
    void cleanup() { setApplication(); }

    void commonRules_data()
    {
        QTest::addColumn<Setup>("setup");
        QTest::addColumn<QStringList>("expected");
        QTest::addColumn<int>("errors");

        const auto lines = [](const QList<int> &types) {
            return [types](ProjectBuilder &project) {
                for (int line = 0; line < types.size(); ++line)
                    project.line(quint8(line), types.at(line));
            };
        };
        const auto general = [](const QList<QPair<QString, QString>> &values) {
            return [values](ProjectBuilder &project) {
                for (const auto &[key, value] : values)
                    project.general(key, value);
            };
        };
        const auto both = [](const Setup &first, const Setup &second) {
            return Setup([first, second](ProjectBuilder &project) {
                first(project);
                second(project);
            });
        };

        QTest::newRow("clean project") << Setup(lines({1})) << QStringList() << 0;
        QTest::newRow("timer interval missing")
            << both(lines({1}), general({{"co_timer_interval", ""}})) << QStringList{timerMissing} << 1;
        QTest::newRow("SDO block size 128")
            << both(lines({1}), general({{"sdo_blocktransfer_block_size", "128"}}))
            << QStringList{"<strong><font color='red'>Error: </font></strong>CANopen SDO block size may not "
                           "exceed "
                           "127."}
            << 1;
        QTest::newRow("SDO block size 127")
            << both(lines({1}), general({{"sdo_blocktransfer_block_size", "127"}})) << QStringList() << 0;
        QTest::newRow("SDO block size 256 reads as 0 in 8 bits")
            << both(lines({1}), general({{"sdo_blocktransfer_block_size", "256"}})) << QStringList() << 0;

        const QString nmtMaster =
            QStringLiteral("<strong><font color='red'>Error: </font></strong>The CANopen setting "
                           "'NMT Master or Slave' is not supported in multi-protocol projects.");
        QTest::newRow("NMT master on CANopen and J1939 lines")
            << both(lines({1, 2}), general({{"nmtmaster", "2,0"}})) << QStringList{nmtMaster} << 1;
        QTest::newRow("NMT master on CANopen and raw CAN in one line and a CANopen line")
            << both(lines({6, 1}), general({{"nmtmaster", "0,2"}})) << QStringList{nmtMaster} << 1;
        QTest::newRow("NMT master on two CANopen lines")
            << both(lines({1, 1}), general({{"nmtmaster", "2,2"}})) << QStringList() << 0;
        QTest::newRow("NMT master on one mixed line")
            << both(lines({6}), general({{"nmtmaster", "2"}})) << QStringList() << 0;
        QTest::newRow("NMT slaves in a multi-protocol project")
            << both(lines({1, 2}), general({{"nmtmaster", "1,0"}})) << QStringList() << 0;
        QTest::newRow("lines of type 5 count as another protocol")
            << both(lines({1, 5}), general({{"nmtmaster", "2"}})) << QStringList{nmtMaster} << 1;

        QTest::newRow("UDS server and client in a one-line project")
            << both(lines({4}), general({{"udsserver_supported", "1"}, {"udsclient_supported", "1"}}))
            << QStringList{serverAndClient} << 1;
        QTest::newRow("UDS server alone")
            << both(lines({4}), general({{"udsserver_supported", "1"}})) << QStringList() << 0;
        QTest::newRow("UDS server and client on different lines")
            << both(lines({4, 4}), general({{"udsserver_supported", "1"},
                                            {"udsclient_supported", "1"},
                                            {"uds_server_active", "1,0"},
                                            {"uds_client_cnt", "0,2"}}))
            << QStringList() << 0;
        QTest::newRow("UDS server and client on both of two lines, told once")
            << both(lines({4, 4}), general({{"udsserver_supported", "1"},
                                            {"udsclient_supported", "1"},
                                            {"uds_server_active", "1,1"},
                                            {"uds_client_cnt", "2,2"}}))
            << QStringList{serverAndClient} << 1;

        QTest::newRow("static UDS indication without any function")
            << both(lines({4}), general({{"uds_static_indication", "1"}}))
            << QStringList{"<strong>Warning: </strong>Static UDS indication is enabled but no service has a "
                           "function "
                           "name; no callback will be wired up."}
            << 0;
        QTest::newRow("static UDS indication with shared callbacks")
            << both(lines({4}), general({{"uds_static_indication", "1"},
                                         {"uds_fct_dtc_info", "handle"},
                                         {"uds_fct_ioctrl", " io "},
                                         {"uds_fct_routine_ctrl", "handle"},
                                         {"uds_fct_data_transfer", "io"},
                                         {"uds_fct_generic", "handle"}}))
            << QStringList{duplicateCallback("handle"), duplicateCallback("io")} << 2;
        QTest::newRow("static UDS indication with own callbacks")
            << both(lines({4}), general({{"uds_static_indication", "1"},
                                         {"uds_fct_dtc_info", "handle"},
                                         {"uds_fct_generic", "Handle"}}))
            << QStringList() << 0;
        QTest::newRow("shared callbacks without static indication")
            << both(lines({4}), general({{"uds_fct_dtc_info", "handle"}, {"uds_fct_generic", "handle"}}))
            << QStringList() << 0;

        QTest::newRow("numeric setting with one bad piece")
            << both(lines({1}), general({{"additional_cob_count", "1,x,3"}}))
            << QStringList{nonNumeric("Additional COB objects", "x")} << 1;
        QTest::newRow("numeric setting with an empty piece")
            << both(lines({1}), general({{"additional_cob_count", "1,,3"}})) << QStringList() << 0;
        QTest::newRow("negative number in a signed setting")
            << both(lines({1}), general({{"sleep_wait_time", "-5"}})) << QStringList() << 0;
        QTest::newRow("negative number in an unsigned setting")
            << both(lines({1}), general({{"user_tx_cob", "-5"}}))
            << QStringList{nonNumeric("Additional user transmit messages", "-5")} << 1;
        QTest::newRow("node-ID expression in an unsigned setting")
            << both(lines({1}), general({{"event_can", "$NODEID+1"}, {"event_led", "0x10"}})) << QStringList()
            << 0;
        QTest::newRow("node-ID expression in lower case")
            << both(lines({1}), general({{"event_can", "$nodeid+1"}}))
            << QStringList{nonNumeric("CAN Event", "$nodeid+1")} << 1;
        QTest::newRow("UDS setting that is no number")
            << both(lines({4}),
                    general({{"uds_session_timeout", "5000"}, {"uds_physical_request_id", "0x7E0,abc"}}))
            << QStringList{nonNumeric("Physical address request CAN-ID", "abc")} << 1;
        QTest::newRow("UDS settings of a bootloader")
            << both(lines({4}), general({{"uds_bl_setting", "1"}, {"uds_physical_request_id", "abc"}}))
            << QStringList() << 0;
        QTest::newRow("J1939 setting that is no number")
            << both(lines({2}),
                    [](ProjectBuilder &project) {
                        project.j1939(QStringLiteral("industrygroup"), QStringLiteral("two"));
                    })
            << QStringList{nonNumeric("Industry Group", "two")} << 1;
        QTest::newRow("rules in their order")
            << both(lines({1, 2}), general({{"co_timer_interval", ""},
                                            {"nmtmaster", "2"},
                                            {"sdo_blocktransfer_block_size", "200"},
                                            {"udsserver_supported", "1"},
                                            {"udsclient_supported", "1"},
                                            {"uds_server_active", "1"},
                                            {"uds_client_cnt", "1"},
                                            {"event_pdo", "yes"}}))
            << QStringList{serverAndClient,
                           "<strong><font color='red'>Error: </font></strong>CANopen SDO block size may not "
                           "exceed "
                           "127.",
                           timerMissing, nmtMaster, nonNumeric("PDO Event", "yes")}
            << 5;
    }

    void commonRules()
    {
        QFETCH(Setup, setup);
        QFETCH(QStringList, expected);
        QFETCH(int, errors);
        ProjectBuilder project;
        project.general(QStringLiteral("co_timer_interval"), QStringLiteral("10000"));
        setup(project);
        const CheckResult result = checkCommon(project);
        QCOMPARE(result.messages, expected);
        QCOMPARE(result.errors, errors);
    }

    void updateHints_data()
    {
        QTest::addColumn<QString>("edition");
        QTest::addColumn<QString>("previousVersion");
        QTest::addColumn<QString>("udsServer");
        QTest::addColumn<QStringList>("expected");

        QTest::newRow("3.6 in the CANopen edition")
            << "CANopen Kestrel"
            << "3.6.2"
            << "0" << QStringList{hint("co_common.c and co_memcpy.c")};
        QTest::newRow("3.6 in another edition")
            << "CAN Kestrel"
            << "3.6.2"
            << "1" << QStringList{hint("co_common.c, co_memcpy.c and co_mapping.c")};
        QTest::newRow("3.8 in the CANopen edition") << "CANopen Kestrel"
                                                    << "3.8.0"
                                                    << "0" << QStringList{hint("co_memcpy.c")};
        QTest::newRow("3.7 with UDS in another edition")
            << "J1939 Kestrel"
            << "3.7.1"
            << "1" << QStringList{hint("co_memcpy.c and co_mapping.c"), hint("uds_init.c")};
        QTest::newRow("3.9") << "CANopen Kestrel"
                             << "3.9.0"
                             << "1" << QStringList();
        QTest::newRow("4.1") << "CANopen Kestrel"
                             << "4.1"
                             << "1" << QStringList();
        QTest::newRow("no previous version") << "CANopen Kestrel"
                                             << ""
                                             << "1" << QStringList();
    }

    void updateHints()
    {
        QFETCH(QString, edition);
        QFETCH(QString, previousVersion);
        QFETCH(QString, udsServer);
        QFETCH(QStringList, expected);
        setApplication(edition);
        ProjectBuilder project;
        project.line(0, 1)
            .general(QStringLiteral("co_timer_interval"), QStringLiteral("10000"))
            .general(QStringLiteral("udsserver_supported"), udsServer)
            .misc(QStringLiteral("PreviousToolVersion"), previousVersion);
        const CheckResult first = checkCommon(project);
        QCOMPARE(first.messages, expected);
        QCOMPARE(first.errors, 0);
        // A hint is told in one run only; other versions stay as they are.
        QCOMPARE(project.store().getMiscSetting(QStringLiteral("PreviousToolVersion")),
                 expected.isEmpty() ? previousVersion : QString());
        QCOMPARE(checkCommon(project).messages, expected.isEmpty() ? expected : QStringList());
    }

    void numericText_data()
    {
        QTest::addColumn<int>("dataType");
        QTest::addColumn<QString>("text");
        QTest::addColumn<bool>("passes");

        QTest::newRow("empty text") << 7 << "" << true;
        QTest::newRow("unknown type") << 0 << "abc" << true;
        QTest::newRow("type 106 and above") << 106 << "abc" << true;
        QTest::newRow("UNSIGNED32 hexadecimal") << 7 << "0xFFFFFFFF" << true;
        QTest::newRow("UNSIGNED64 at its top") << 27 << "18446744073709551615" << true;
        QTest::newRow("UNSIGNED8 node-ID expression") << 5 << "$NODEID+0x80" << true;
        QTest::newRow("UNSIGNED8 node-ID expression in lower case") << 5 << "$nodeid+0x80" << false;
        QTest::newRow("UNSIGNED7 word") << 105 << "seven" << false;
        QTest::newRow("BOOLEAN negative") << 1 << "-1" << false;
        QTest::newRow("INTEGER16 negative") << 3 << "-300" << true;
        QTest::newRow("INTEGER32 beyond 32 bits") << 4 << "0x100000000" << false;
        QTest::newRow("INTEGER8 node-ID expression") << 2 << "$NODEID" << false;
        QTest::newRow("REAL32") << 8 << "1.5e3" << true;
        QTest::newRow("REAL32 word") << 8 << "one" << false;
        QTest::newRow("VISIBLE_STRING") << 9 << "any text" << true;
        QTest::newRow("INTEGER64 is not tested") << 21 << "abc" << true;
    }

    void numericText()
    {
        QFETCH(int, dataType);
        QFETCH(QString, text);
        QFETCH(bool, passes);
        QCOMPARE(ModelCheckNumeric::passes(quint16(dataType), text), passes);
    }

    void comparedVersion_data()
    {
        QTest::addColumn<QString>("version");
        QTest::addColumn<QString>("compared");
        QTest::newRow("two dots") << "4.3.2"
                                  << "4.3";
        QTest::newRow("three dots") << "4.3.2.1"
                                    << "4.3";
        QTest::newRow("one dot") << "4.3"
                                 << "4.3";
        QTest::newRow("none") << "4"
                              << "4";
    }

    void comparedVersion()
    {
        QFETCH(QString, version);
        QFETCH(QString, compared);
        QCOMPARE(ModelCheckStackVersion::comparedVersion(version), compared);
    }

    void stackVersion_data()
    {
        QTest::addColumn<QString>("stackPath");
        QTest::addColumn<QByteArray>("featureInfo");
        QTest::addColumn<QStringList>("expected");
        QTest::addColumn<int>("errors");

        const QByteArray head = "<?xml version=\"1.0\"?>\n<featureinfo>";
        QTest::newRow("no stack path")
            << "" << QByteArray()
            << QStringList{"Info: Path to protocol stack not specified. Cannot check if generated code fits "
                           "to "
                           "installed stack/framework.",
                           "Specify path to protocol stack at Options -> Settings."}
            << 0;
        QTest::newRow("no feature information")
            << "%S" << QByteArray()
            << QStringList{"Info: No *_featureinfo_*.xml file found in protocol stack folder %S. Cannot "
                           "check if "
                           "generated code fits to installed stack/framework."}
            << 0;
        QTest::newRow("fitting stack")
            << "%S" << head + "<required_tool_version> 4.3 </required_tool_version></featureinfo>"
            << QStringList() << 0;
        QTest::newRow("relative path to a fitting stack")
            << "stack" << head + "<required_tool_version>4.3</required_tool_version></featureinfo>"
            << QStringList() << 0;
        QTest::newRow("stack for another version")
            << "%S" << head + "<required_tool_version>4.2</required_tool_version></featureinfo>"
            << QStringList{"<strong><font color='red'>Error: </font></strong>Version of installed stack does "
                           "not fit. "
                           "It requires tool version 4.2. Cannot generate files. This is version 4.3."}
            << 1;
        QTest::newRow("stack without a version")
            << "%S" << head + "<features/></featureinfo>"
            << QStringList{"<strong><font color='red'>Error: </font></strong>Version of installed stack does "
                           "not fit. "
                           "It requires an older version of the tool. Cannot generate files."}
            << 1;
        QTest::newRow("unreadable feature information")
            << "%S" << QByteArray("<featureinfo><required_tool_version>4.3")
            << QStringList{"<strong><font color='red'>Error: </font></strong>Version of installed stack does "
                           "not fit. "
                           "It requires an older version of the tool. Cannot generate files."}
            << 1;
    }

    void stackVersion()
    {
        QFETCH(QString, stackPath);
        QFETCH(QByteArray, featureInfo);
        QFETCH(QStringList, expected);
        QFETCH(int, errors);
        QTemporaryDir projectDirectory;
        const QString stack = projectDirectory.filePath(QStringLiteral("stack"));
        QVERIFY(QDir().mkpath(stack));
        if (!featureInfo.isEmpty())
            QVERIFY(
                TestProjects::writeFile(stack + QStringLiteral("/canopen_featureinfo_4.xml"), featureInfo));
        const QString canonicalStack = QFileInfo(stack).canonicalFilePath();
        ProjectBuilder project;
        cleanProject(project, QString(stackPath).replace(QLatin1String("%S"), stack));
        for (auto &message : expected)
            message.replace(QLatin1String("%S"), canonicalStack);
        const CheckResult result = checkCANopen(project, 0, projectDirectory.path());
        QCOMPARE(result.messages, expected);
        QCOMPARE(result.errors, errors);
    }

    void firstMismatchingStackFileEndsTheCheck()
    {
        QTemporaryDir stack;
        QVERIFY(TestProjects::writeFile(stack.filePath(QStringLiteral("a_featureinfo_1.xml")),
                                        "<f><required_tool_version>4.1</required_tool_version></f>"));
        QVERIFY(TestProjects::writeFile(stack.filePath(QStringLiteral("b_featureinfo_2.xml")),
                                        "<f><required_tool_version>4.2</required_tool_version></f>"));
        ProjectBuilder project;
        cleanProject(project, stack.path());
        const CheckResult result = checkCANopen(project);
        QCOMPARE(result.messages,
                 QStringList{
                     "<strong><font color='red'>Error: </font></strong>Version of installed stack does not "
                     "fit. It requires tool version 4.1. Cannot generate files. This is version 4.3."});
        QCOMPARE(result.errors, 1);
    }
};

QTEST_MAIN(TestModelChecker)
#include "tst_modelchecker.moc"
