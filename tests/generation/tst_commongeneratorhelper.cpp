#include "generation/commongeneratorhelper.h"
#include "generation/commongeneratorhelperv4.h"
#include "generators/source/stackcompiler.h"
#include "support/projectbuilder.h"

#include <QTemporaryDir>
#include <QtTest>

namespace {

// "key=value" settings of GeneralSettings.
using Settings = QStringList;

// Lines of the given types, then the settings, so that no setting is stretched over new lines.
void buildProject(ProjectBuilder &project, const QList<int> &lineTypes, const Settings &settings)
{
    for (qsizetype line = 0; line < lineTypes.size(); ++line)
        project.line(quint8(line), lineTypes.at(line));
    for (const QString &setting : settings) {
        const qsizetype equals = setting.indexOf('=');
        project.general(setting.left(equals), setting.mid(equals + 1));
    }
}

// Services of a line: none active but the given ones, with their sessions, levels and authentication.
struct Service
{
    quint8 sid;
    const char *sessions;
    const char *levels = "";
    const char *authentication = "";
};

void setServices(ObjectDataBase &store, quint8 line, const QList<Service> &services)
{
    for (int sid = 0; sid < 256; ++sid) {
        if (store.getUDSServiceActive(line, quint8(sid)))
            store.setUDSServiceActive(line, quint8(sid), false);
    }
    for (const Service &service : services) {
        store.setUDSServiceActive(line, service.sid, true);
        store.setUDSServiceSessions(line, service.sid, QLatin1String(service.sessions));
        store.setUDSServiceUserLevels(line, service.sid, QLatin1String(service.levels));
        store.setUDSAuthentication(line, service.sid, QLatin1String(service.authentication));
    }
}

// The services of the table tests: two with sub-functions, one with a manufacturer session.
const QList<Service> tableServices = {
    {0x10, "1,2,3"},
    {0x11, "1, 3", "1"},
    {0x2e, "3,65", "2, 4", "1"},
    {0x31, "", "3"},
};

const char *const v4SessionTable =
    "/* UDS Service in Sessions table (line 0) */\n"
    "static UDS_REQ_SESSION_TYPE_TABLE_T\tsessionTbl_0[] = {\n"
    "\t/* DiagnosticSessionControl */\n"
    "\t{ 0x10, 0u,\n"
    "\t\t{UDS_SUB_SESSION_DS, UDS_SUB_SESSION_PRGS, UDS_SUB_SESSION_EXTDS}, 3u},\n"
    "\t/* ECUReset */\n"
    "\t{ 0x11, UDS_SUB_RESET_HR,\n"
    "\t\t{UDS_SUB_SESSION_DS, UDS_SUB_SESSION_EXTDS}, 2u},\n"
    "\t{ 0x11, UDS_SUB_RESET_KOFFONR,\n"
    "\t\t{UDS_SUB_SESSION_DS, UDS_SUB_SESSION_EXTDS}, 2u},\n"
    "\t{ 0x11, UDS_SUB_RESET_SR,\n"
    "\t\t{UDS_SUB_SESSION_DS, UDS_SUB_SESSION_EXTDS}, 2u},\n"
    "\t{ 0x11, UDS_SUB_RESET_ERPSD,\n"
    "\t\t{UDS_SUB_SESSION_DS, UDS_SUB_SESSION_EXTDS}, 2u},\n"
    "\t{ 0x11, UDS_SUB_RESET_DRPSD,\n"
    "\t\t{UDS_SUB_SESSION_DS, UDS_SUB_SESSION_EXTDS}, 2u},\n"
    "\t/* WriteDataByIdentifier */\n"
    "\t{ 0x2e, 0u,\n"
    "\t\t{UDS_SUB_SESSION_EXTDS, UDS_SUB_SESSION_MANU_40 + 0x01}, 2u},\n"
    "\t/* RoutineControl */\n"
    "\t{ 0x31, UDS_ROUTINE_CTRL_START,\n"
    "\t\t{UDS_SUB_SESSION_DS}, 1u},\n"
    "\t{ 0x31, UDS_ROUTINE_CTRL_STOP,\n"
    "\t\t{UDS_SUB_SESSION_DS}, 1u},\n"
    "\t{ 0x31, UDS_ROUTINE_CTRL_REQ_RESULT,\n"
    "\t\t{UDS_SUB_SESSION_DS}, 1u}\n"
    "};\n\n";

const char *const v4SecurityTable = "/* UDS Service in security level table (line 0) */\n"
                                    "static UDS_SECURITY_LEVEL_TABLE_T\tsecurityLvlTbl_0[] = {\n"
                                    "\t/* ECUReset */\n"
                                    "\t{ 0x11, UDS_SUB_RESET_HR,\n"
                                    "\t\t{1}, 1u},\n"
                                    "\t{ 0x11, UDS_SUB_RESET_KOFFONR,\n"
                                    "\t\t{1}, 1u},\n"
                                    "\t{ 0x11, UDS_SUB_RESET_SR,\n"
                                    "\t\t{1}, 1u},\n"
                                    "\t/* WriteDataByIdentifier */\n"
                                    "\t{ 0x2e, 0u,\n"
                                    "\t\t{2,  4}, 2u},\n"
                                    "\t/* RoutineControl */\n"
                                    "\t{ 0x31, UDS_ROUTINE_CTRL_START,\n"
                                    "\t\t{3}, 1u},\n"
                                    "\t{ 0x31, UDS_ROUTINE_CTRL_STOP,\n"
                                    "\t\t{3}, 1u},\n"
                                    "\t{ 0x31, UDS_ROUTINE_CTRL_REQ_RESULT,\n"
                                    "\t\t{3}, 1u}\n"
                                    "};\n\n";

const char *const olderSecurityTable = "\tstatic UDS_SECURITY_LEVEL_TABLE_T\tsecurityLvlTbl_0[] = {\n"
                                       "\t\t/* ECUReset */\n"
                                       "\t\t{ 0x11, UDS_SUB_RESET_HR,\n"
                                       "\t\t\t{1}, 1u},\n"
                                       "\t\t{ 0x11, UDS_SUB_RESET_KOFFONR,\n"
                                       "\t\t\t{1}, 1u},\n"
                                       "\t\t{ 0x11, UDS_SUB_RESET_SR,\n"
                                       "\t\t\t{1}, 1u},\n"
                                       "\t\t/* WriteDataByIdentifier */\n"
                                       "\t\t{ 0x2e, 0u,\n"
                                       "\t\t\t{2,  4}, 2u},\n"
                                       "\t\t/* RoutineControl */\n"
                                       "\t\t{ 0x31, UDS_ROUTINE_CTRL_START,\n"
                                       "\t\t\t{3}, 1u},\n"
                                       "\t\t{ 0x31, UDS_ROUTINE_CTRL_STOP,\n"
                                       "\t\t\t{3}, 1u},\n"
                                       "\t\t{ 0x31, UDS_ROUTINE_CTRL_REQ_RESULT,\n"
                                       "\t\t\t{3}, 1u}\n"
                                       "\t};\n\n";

// The per-line structure of one raw CAN line with the CAN-IDs 0x7e0, 0x7e8, 0x7df, extended addresses
// 1, 2, 3, fixed normal addressing and no active service, by UDS version.
const Settings versionSettings = {
    QStringLiteral("udsserver_supported=1"),
    QStringLiteral("uds_physical_request_id=0x7e0"),
    QStringLiteral("uds_physical_response_id=0x7e8"),
    QStringLiteral("uds_functional_request_id=0x7df"),
    QStringLiteral("uds_physical_request_ext_addr=1"),
    QStringLiteral("uds_physical_response_ext_addr=2"),
    QStringLiteral("uds_functional_request_ext_addr=3"),
    QStringLiteral("uds_ext_addressing=1"),
    QStringLiteral("uds_server_active=1"),
};

QString v4ServiceInit(int version)
{
    return QStringLiteral("\n/* UDS common initialization structure */ \n"
                          "static CORE_CONST UDS_SERVICE_INIT_VAL_T udsServiceInitVars = {\n"
                          "\t%1u,\n"
                          "\t{0}\n"
                          "};\n\n")
        .arg(version);
}

QString olderServiceInit(int version)
{
    return QStringLiteral("\t/* UDS common initialization structure */ \n"
                          "\tconst UDS_SERVICE_INIT_VAL_T udsServiceInitVars = {\n"
                          "\t\t%1u,\n"
                          "\t\t{0}\n"
                          "\t};\n\n")
        .arg(version);
}

} // namespace

class TestCommonGeneratorHelper : public QObject
{
    Q_OBJECT

private slots:
    void initStructVersion_data()
    {
        QTest::addColumn<quint8>("moduleType");
        QTest::addColumn<int>("current");
        QTest::addColumn<int>("older");
        QTest::newRow("common") << quint8(0) << 1 << 1;
        QTest::newRow("raw CAN") << quint8(1) << 6 << 4;
        QTest::newRow("CANopen") << quint8(2) << 6 << 5;
        QTest::newRow("J1939") << quint8(3) << 6 << 5;
        QTest::newRow("no module 4") << quint8(4) << 0 << 0;
        QTest::newRow("UDS, low 8 bits of the server version") << quint8(5) << 4 << 4;
        QTest::newRow("unknown module") << quint8(6) << 0 << 0;
    }

    void initStructVersion()
    {
        QFETCH(quint8, moduleType);
        QFETCH(int, current);
        QFETCH(int, older);
        ProjectBuilder project;
        buildProject(project, {1}, {QStringLiteral("udsserver_version=260")});
        QCOMPARE(CommonGeneratorHelperV4(&project.store()).initStructVersion(moduleType), current);
        QCOMPARE(CommonGeneratorHelper(&project.store()).initStructVersion(moduleType), older);
    }

    // The rows name the lines between the buffer counts and the closing brace.
    void commonInitText_data()
    {
        QTest::addColumn<QList<int>>("lineTypes");
        QTest::addColumn<Settings>("settings");
        QTest::addColumn<QStringList>("current");
        QTest::addColumn<QStringList>("older");

        QTest::newRow("one CANopen line")
            << QList<int>{1} << Settings{} << QStringList{QStringLiteral("\t{ CORE_PROT_TYPE_CANOPEN},")}
            << QStringList{QStringLiteral("\t{ MP_PROT_TYPE_CANOPEN},")};
        QTest::newRow("two mixed lines with UDS server and CAN FD")
            << QList<int>{5, 7}
            << Settings{QStringLiteral("udsserver_supported=1"), QStringLiteral("canfd_supported=1")}
            << QStringList{QStringLiteral(
                               "\t{ CORE_PROT_TYPE_J1939 | CORE_PROT_TYPE_CANOPEN | CORE_PROT_TYPE_UDS, "
                               "CORE_PROT_TYPE_J1939 | CORE_PROT_TYPE_RAWCAN | CORE_PROT_TYPE_UDS},"),
                           QStringLiteral("\t{ ISOTP_CLIENT_COUNTS },"),
                           QStringLiteral("\t{ ISOTP_SERVER_COUNTS },"),
                           QStringLiteral("\t{ CO_TRUE, CO_TRUE }")}
            << QStringList{QStringLiteral("\t{ MP_PROT_TYPE_J1939 | MP_PROT_TYPE_CANOPEN | MP_PROT_TYPE_UDS, "
                                          "MP_PROT_TYPE_UNKNOWN | MP_PROT_TYPE_UDS},"),
                           QStringLiteral("\t{ ISOTP_CLIENT_COUNTS },"),
                           QStringLiteral("\t{ ISOTP_SERVER_COUNTS }"),
                           QStringLiteral("\t{ CO_TRUE, CO_TRUE }")};
        QTest::newRow("bootloader on a single raw CAN line")
            << QList<int>{4}
            << Settings{QStringLiteral("uds_bl_setting=1"), QStringLiteral("udsserver_supported=1")}
            << QStringList{QStringLiteral("\t{ CORE_PROT_TYPE_UDS},"),
                           QStringLiteral("\t{ ISOTP_CLIENT_COUNTS },"),
                           QStringLiteral("\t{ ISOTP_SERVER_COUNTS },")}
            << QStringList{QStringLiteral("\t{ MP_PROT_TYPE_RAWCAN},"),
                           QStringLiteral("\t{ ISOTP_CLIENT_COUNTS },"),
                           QStringLiteral("\t{ ISOTP_SERVER_COUNTS }")};
        QTest::newRow("single J1939 line with UDS client and ISO-TP")
            << QList<int>{2}
            << Settings{QStringLiteral("udsclient_supported=1"), QStringLiteral("isotp_supported=1")}
            << QStringList{QStringLiteral("\t{ CORE_PROT_TYPE_J1939 | CORE_PROT_TYPE_UDS},"),
                           QStringLiteral("\t{ ISOTP_CLIENT_COUNTS },"),
                           QStringLiteral("\t{ ISOTP_SERVER_COUNTS },")}
            << QStringList{QStringLiteral("\t{ MP_PROT_TYPE_J1939 | MP_PROT_TYPE_UDS},"),
                           QStringLiteral("\t{ ISOTP_CLIENT_COUNTS },"),
                           QStringLiteral("\t{ ISOTP_SERVER_COUNTS }")};
        QTest::newRow("line without type, UDS server at 2 is off")
            << QList<int>{3, 6} << Settings{QStringLiteral("udsserver_supported=2")}
            << QStringList{QStringLiteral(
                   "\t{ CORE_PROT_TYPE_UNKNOWN, CORE_PROT_TYPE_CANOPEN | CORE_PROT_TYPE_RAWCAN},")}
            << QStringList{QStringLiteral("\t{ MP_PROT_TYPE_UNKNOWN, MP_PROT_TYPE_UNKNOWN},")};
    }

    void commonInitText()
    {
        QFETCH(QList<int>, lineTypes);
        QFETCH(Settings, settings);
        QFETCH(QStringList, current);
        QFETCH(QStringList, older);
        ProjectBuilder project;
        buildProject(project, lineTypes, settings);
        const auto initText = [](const QString &prefix, const QStringList &lines) {
            return QStringLiteral("/* core initialization settings */\n"
                                  "%1_COMMON_INIT_VAL_T    commonInitVars = {\n"
                                  "\t1u,\n"
                                  "\t{ %1_REC_BUFFER_COUNTS },\n"
                                  "\t{ %1_TR_BUFFER_COUNTS },\n"
                                  "\t{ %1_COB_COUNTS }, \n")
                       .arg(prefix) +
                   lines.join('\n') + QStringLiteral("\n};\n\n");
        };
        QCOMPARE(CommonGeneratorHelperV4(&project.store()).commonInitText(),
                 initText(QStringLiteral("CORE"), current));
        QCOMPARE(CommonGeneratorHelper(&project.store()).commonInitText(),
                 initText(QStringLiteral("CO"), older));
    }

    void sessionText_data()
    {
        QTest::addColumn<quint32>("session");
        QTest::addColumn<QString>("text");
        QTest::newRow("default") << 1u << QStringLiteral("UDS_SUB_SESSION_DS");
        QTest::newRow("programming") << 2u << QStringLiteral("UDS_SUB_SESSION_PRGS");
        QTest::newRow("extended") << 3u << QStringLiteral("UDS_SUB_SESSION_EXTDS");
        QTest::newRow("safety system") << 4u << QStringLiteral("UDS_SUB_SESSION_SSDS");
        QTest::newRow("first manufacturer session") << 64u << QStringLiteral("UDS_SUB_SESSION_MANU_40");
        QTest::newRow("manufacturer session 65") << 65u << QStringLiteral("UDS_SUB_SESSION_MANU_40 + 0x01");
        QTest::newRow("manufacturer session 0x7f")
            << 0x7fu << QStringLiteral("UDS_SUB_SESSION_MANU_40 + 0x3f");
        QTest::newRow("reserved session") << 5u << QStringLiteral("0x05");
        QTest::newRow("zero") << 0u << QStringLiteral("0x00");
    }

    void sessionText()
    {
        QFETCH(quint32, session);
        QFETCH(QString, text);
        QCOMPARE(CommonGeneratorHelperBase::sessionText(session), text);
    }

    void serviceTables()
    {
        ProjectBuilder project;
        buildProject(project, {4}, {QStringLiteral("udsserver_supported=1")});
        setServices(project.store(), 0, tableServices);
        project.store().setUDSAuthentication(0, 0x27, QStringLiteral("1"));
        const CommonGeneratorHelperV4 helper(&project.store());

        QCOMPARE(helper.udsSessionTable(0), QLatin1String(v4SessionTable));
        QCOMPARE(helper.udsSecurityTable(0), QLatin1String(v4SecurityTable));
        QCOMPARE(helper.securityRowCount(0), QStringLiteral("7"));
        QCOMPARE(helper.securityTableName(0), QStringLiteral("securityLvlTbl_0"));
        QCOMPARE(helper.sessionTableName(0), QStringLiteral("sessionTbl_0"));
        QCOMPARE(helper.udsAuthenticationServices(0), (QList<quint8>{0x27, 0x2e}));
        QCOMPARE(helper.udsAuthenticationTable(0),
                 QStringLiteral("/* UDS Authentication table (line 0) */\n"
                                "static UDS_AUTHENT_TABLE_T\tauthenticationTable_0[] = {\n"
                                "\t{ 0x27 },\n"
                                "\t{ 0x2e }\n"
                                "};\n\n"));
        QCOMPARE(CommonGeneratorHelper(&project.store()).udsSecurityTable(0),
                 QLatin1String(olderSecurityTable));
    }

    void tablesOfALineWithoutLevels()
    {
        ProjectBuilder project;
        buildProject(project, {4},
                     {QStringLiteral("udsserver_supported=0"), QStringLiteral("udsclient_supported=1")});
        setServices(project.store(), 0, {{0x10, "1"}, {0x22, "1", "", "1"}});
        const CommonGeneratorHelperV4 helper(&project.store());
        QCOMPARE(helper.securityRowCount(0), QStringLiteral("0"));
        QCOMPARE(helper.securityTableName(0), QStringLiteral("NULL"));
        QCOMPARE(helper.udsSecurityTable(0), QString());
        // Authentication belongs to the server.
        QVERIFY(helper.udsAuthenticationServices(0).isEmpty());
        QCOMPARE(helper.udsAuthenticationTable(0), QString());
        QCOMPARE(CommonGeneratorHelper(&project.store()).udsSessionTable(0),
                 QStringLiteral("\tstatic UDS_REQ_SESSION_TYPE_TABLE_T\tsessionTbl_0[] = {\n"
                                "\t\t/* DiagnosticSessionControl */\n"
                                "\t\t{ 0x10, 0u,\n"
                                "\t\t\t{UDS_SUB_SESSION_DS}, 1u},\n"
                                "\t\t/* ReadDataByIdentifier */\n"
                                "\t\t{ 0x22, 0u,\n"
                                "\t\t\t{UDS_SUB_SESSION_DS}, 1u}\n"
                                "\t};\n\n"));
    }

    // A service outside the range of the tables is counted as active, yet has no row: the table then
    // loses the end of its head like a table loses the comma of its last row.
    void sessionTableWithoutRows()
    {
        ProjectBuilder project;
        buildProject(project, {4}, {QStringLiteral("udsserver_supported=1")});
        setServices(project.store(), 0, {{0x05, "1"}});
        QCOMPARE(CommonGeneratorHelperV4(&project.store()).udsSessionTable(0),
                 QStringLiteral("/* UDS Service in Sessions table (line 0) */\n"
                                "static UDS_REQ_SESSION_TYPE_TABLE_T\tsessionTbl_0[] = \n"
                                "};\n\n"));
        QCOMPARE(CommonGeneratorHelper(&project.store()).udsSessionTable(0),
                 QStringLiteral("\tstatic UDS_REQ_SESSION_TYPE_TABLE_T\tsessionTbl_0[] = \n"
                                "\t};\n\n"));
    }

    // Lines 0 and 2: the lists are padded to two entries, so line 2 lies beyond every list.
    void lineBeyondItsLists()
    {
        ProjectBuilder project;
        project.line(0, 4).line(2, 4);
        buildProject(project, {},
                     {QStringLiteral("udsserver_supported=1"), QStringLiteral("udsserver_version=4"),
                      QStringLiteral("uds_physical_request_id=0x7e0,0x7e1"),
                      QStringLiteral("uds_physical_response_id=0x7e8"),
                      QStringLiteral("uds_functional_request_id=0x7df,0x7de,0x7dd"),
                      QStringLiteral("uds_ext_addressing=2,1"),
                      QStringLiteral("uds_rdbip_canid=0x600,0x601")});
        setServices(project.store(), 0, {});
        setServices(project.store(), 2, {});
        const QString text = CommonGeneratorHelperV4(&project.store()).udsDeclarations();
        QVERIFY2(text.endsWith(QStringLiteral("/* UDS CAN-IDs for line 2 */\n"
                                              "CORE_CONST UDS_CONFIG_INIT_VAL_T\tudsLine2 = {\n"
                                              "\t2016u,\n\t2024u,\n\t2024u,\n\t2016u,\n\t2013u,\n\t2024u,\n"
                                              "\t1073741823u,\n"
                                              "\t0u,\n\t0u,\n\t0u,\n\t0u,\n"
                                              "\tISOTP_FORMAT_EXTENDED,\n"
                                              "\tNULL,\n\t0,\n\tNULL,\n\t0,\n"
                                              "\tCO_FALSE,\n"
                                              "};\n\n")),
                 qPrintable(text));
    }

    void lineStructureByVersion_data()
    {
        QTest::addColumn<QString>("version");
        QTest::addColumn<QString>("current");
        QTest::addColumn<QString>("older");

        const QString head = QStringLiteral("/* UDS CAN-IDs for line 0 */\n"
                                            "CORE_CONST UDS_CONFIG_INIT_VAL_T\tudsLine0 = {\n"
                                            "\t2016u,\n\t2024u,\n\t2024u,\n\t2016u,\n\t2015u,\n");
        const QString olderHead =
            QStringLiteral("\t/* UDS CAN-IDs for line 0 */\n"
                           "\tconst UDS_CONFIG_INIT_VAL_T\tudsLine0 = {\n"
                           "\t\t2016u,\n\t\t2024u,\n\t\t2024u,\n\t\t2016u,\n\t\t2015u,\n");
        const QString extended = QStringLiteral("\t1u,\n\t2u,\n\t3u,\n\t2u,\n\tISOTP_FORMAT_NORMAL_FIXED,\n");
        const QString olderExtended =
            QStringLiteral("\t\t1u,\n\t\t2u,\n\t\t3u,\n\t\t2u,\n\t\tISOTP_FORMAT_NORMAL_FIXED,\n");
        const QString noTables = QStringLiteral("\tNULL,\n\t0,\n\tNULL,\n\t0,\n");
        const QString olderNoTables = QStringLiteral("\t\tNULL,\n\t\t0,\n\t\tNULL,\n\t\t0,\n");

        QTest::newRow("version 1: six rows, no comma at the end")
            << QStringLiteral("1") << v4ServiceInit(1) + head + QStringLiteral("\t2024u\n};\n\n")
            << olderServiceInit(1) + olderHead + QStringLiteral("\t\t2024u\n\t};\n\n");
        QTest::newRow("version 0 counts as 1")
            << QStringLiteral("0") << v4ServiceInit(1) + head + QStringLiteral("\t2024u\n};\n\n")
            << olderServiceInit(1) + olderHead + QStringLiteral("\t\t2024u\n\t};\n\n");
        QTest::newRow("version 2: extended addresses and format")
            << QStringLiteral("2")
            << v4ServiceInit(2) + head + QStringLiteral("\t2024u,\n") + extended + "};\n\n"
            << olderServiceInit(2) + olderHead + QStringLiteral("\t\t2024u,\n") + olderExtended + "\t};\n\n";
        QTest::newRow("version 3: table rows")
            << QStringLiteral("3")
            << v4ServiceInit(3) + head + QStringLiteral("\t2024u,\n") + extended + noTables + "};\n\n"
            << olderServiceInit(3) + olderHead + QStringLiteral("\t\t2024u,\n") + olderExtended +
                   olderNoTables + "\t};\n\n";
        QTest::newRow("version 4: periodic identifier and active flag")
            << QStringLiteral("0x4")
            << v4ServiceInit(4) + head + QStringLiteral("\t2024u,\n\t1073741823u,\n") + extended + noTables +
                   "\tCO_TRUE,\n};\n\n"
            << olderServiceInit(4) + olderHead + QStringLiteral("\t\t2024u,\n") + olderExtended +
                   olderNoTables + "\t\tCO_TRUE\n\t};\n\n";
        QTest::newRow("version 5: authentication rows")
            << QStringLiteral("5")
            << v4ServiceInit(5) + head + QStringLiteral("\t2024u,\n\t1073741823u,\n") + extended + noTables +
                   "\tCO_TRUE,\n\tNULL,\n\t0\n};\n\n"
            << olderServiceInit(5) + olderHead + QStringLiteral("\t\t2024u,\n") + olderExtended +
                   olderNoTables + "\t\tCO_TRUE\n\t};\n\n";
    }

    void lineStructureByVersion()
    {
        QFETCH(QString, version);
        QFETCH(QString, current);
        QFETCH(QString, older);
        ProjectBuilder project;
        buildProject(project, {4},
                     versionSettings + Settings{QStringLiteral("udsserver_version=") + version});
        setServices(project.store(), 0, {});
        QCOMPARE(CommonGeneratorHelperV4(&project.store()).udsDeclarations(), current);
        QCOMPARE(CommonGeneratorHelper(&project.store()).udsDeclarations(), older);
    }

    void declarationsOfThreeLines()
    {
        ProjectBuilder project;
        buildProject(project, {4, 4, 4},
                     {QStringLiteral("udsserver_supported=1"), QStringLiteral("udsclient_supported=1"),
                      QStringLiteral("udsserver_version=5"), QStringLiteral("uds_client_cnt=2,0,1"),
                      QStringLiteral("uds_physical_request_id=0x7e0"),
                      QStringLiteral("uds_physical_response_id=0x7e8,0x7e9"),
                      QStringLiteral("uds_ext_addressing=0,2"), QStringLiteral("uds_rdbip_canid=,0x601"),
                      QStringLiteral("uds_server_active=1,0")});
        setServices(project.store(), 0, {{0x10, "1", "", "1"}});
        setServices(project.store(), 1, {});
        setServices(project.store(), 2, {});
        const QString expected =
            QStringLiteral("\n/* UDS common initialization structure */ \n"
                           "static CORE_CONST UDS_SERVICE_INIT_VAL_T udsServiceInitVars = {\n"
                           "\t5u,\n"
                           "\t{2,0,1}\n"
                           "};\n\n"
                           "/* UDS Service in Sessions table (line 0) */\n"
                           "static UDS_REQ_SESSION_TYPE_TABLE_T\tsessionTbl_0[] = {\n"
                           "\t/* DiagnosticSessionControl */\n"
                           "\t{ 0x10, 0u,\n"
                           "\t\t{UDS_SUB_SESSION_DS}, 1u}\n"
                           "};\n\n"
                           "\n"
                           "\n"
                           "/* UDS Authentication table (line 0) */\n"
                           "static UDS_AUTHENT_TABLE_T\tauthenticationTable_0[] = {\n"
                           "\t{ 0x10 }\n"
                           "};\n\n"
                           "/* UDS CAN-IDs for line 0 */\n"
                           "CORE_CONST UDS_CONFIG_INIT_VAL_T\tudsLine0 = {\n"
                           "\t2016u,\n\t2024u,\n\t2024u,\n\t2016u,\n\t0u,\n\t2024u,\n"
                           "\t1073741823u,\n"
                           "\t0u,\n\t0u,\n\t0u,\n\t0u,\n"
                           "\tISOTP_FORMAT_NORMAL,\n"
                           "\tsessionTbl_0,\n\t1,\n\tNULL,\n\t0,\n"
                           "\tCO_TRUE,\n"
                           "\tauthenticationTable_0,\n\t1\n"
                           "};\n\n"
                           "/* UDS CAN-IDs for line 1 */\n"
                           "CORE_CONST UDS_CONFIG_INIT_VAL_T\tudsLine1 = {\n"
                           "\t2016u,\n\t2025u,\n\t2025u,\n\t2016u,\n\t0u,\n\t2025u,\n"
                           "\t1537u,\n"
                           "\t0u,\n\t0u,\n\t0u,\n\t0u,\n"
                           "\tISOTP_FORMAT_EXTENDED,\n"
                           "\tNULL,\n\t0,\n\tNULL,\n\t0,\n"
                           "\tCO_FALSE,\n"
                           "\tNULL,\n\t0\n"
                           "};\n\n"
                           "/* UDS CAN-IDs for line 2 */\n"
                           "CORE_CONST UDS_CONFIG_INIT_VAL_T\tudsLine2 = {\n"
                           "\t2016u,\n\t2024u,\n\t2024u,\n\t2016u,\n\t0u,\n\t2024u,\n"
                           "\t1073741823u,\n"
                           "\t0u,\n\t0u,\n\t0u,\n\t0u,\n"
                           "\tISOTP_FORMAT_NORMAL,\n"
                           "\tNULL,\n\t0,\n\tNULL,\n\t0,\n"
                           "\tCO_FALSE,\n"
                           "\tNULL,\n\t0\n"
                           "};\n\n");
        QCOMPARE(CommonGeneratorHelperV4(&project.store()).udsDeclarations(), expected);
    }

    void sessionRowCountCountsSubFunctions()
    {
        ProjectBuilder project;
        buildProject(project, {4}, versionSettings + Settings{QStringLiteral("udsserver_version=3")});
        setServices(project.store(), 0, {{0x10, "1"}, {0x11, "1"}, {0x3e, "1"}});
        const QString text = CommonGeneratorHelperV4(&project.store()).udsDeclarations();
        QVERIFY2(text.contains(QStringLiteral("\tsessionTbl_0,\n\t7,\n\tNULL,\n\t0,\n")), qPrintable(text));
    }

    void bootloaderStructureIsFilledAtRunTime()
    {
        ProjectBuilder project;
        buildProject(project, {4}, versionSettings + Settings{QStringLiteral("uds_bl_setting=1")});
        setServices(project.store(), 0, {});
        const QString text = CommonGeneratorHelperV4(&project.store()).udsDeclarations();
        QVERIFY2(text.contains(QStringLiteral("\nUDS_CONFIG_INIT_VAL_T\tudsLine0 = {\n")), qPrintable(text));
        QCOMPARE(CommonGeneratorHelperV4::udsBootloaderInit(),
                 QStringLiteral("    /* setup CAN-IDs */\n"
                                "    if (udsLine0.serverPhysAddrReqCanID == 0u)  {\n"
                                "        udsLine0.serverPhysAddrReqCanID = CFG_UDS_REQ_ID();\n"
                                "    }\n"
                                "    if (udsLine0.serverPhysAddrRespCanID == 0u)  {\n"
                                "        udsLine0.serverPhysAddrRespCanID = CFG_UDS_RES_ID();\n"
                                "    }\n"
                                "    if (udsLine0.serverFuncAddrReqCanID == 0u)  {\n"
                                "        udsLine0.serverFuncAddrReqCanID = CFG_UDS_FUNC_ID();\n"
                                "    }"));
    }

    void withoutUdsTheUdsBlocksAreEmpty()
    {
        ProjectBuilder project;
        buildProject(project, {4},
                     {QStringLiteral("udsserver_supported=0"), QStringLiteral("udsclient_supported=3"),
                      QStringLiteral("uds_static_indication=0"), QStringLiteral("uds_fct_generic=g")});
        const CommonGeneratorHelperV4 helper(&project.store());
        QCOMPARE(helper.udsDeclarations(), QString());
        QCOMPARE(helper.udsCommonInit(), QString());
        QCOMPARE(helper.udsLineInit(0, true), QString());
        QCOMPARE(helper.udsStaticIndications(), QString());
    }

    void initCalls_data()
    {
        QTest::addColumn<bool>("multiLine");
        QTest::addColumn<QString>("current");
        QTest::addColumn<QString>("older");
        const QString currentCommon =
            QStringLiteral("    /* UDS common initialization */ \n"
                           "    retVal = udsStackInit_common(&udsServiceInitVars);\n"
                           "    if (retVal != RET_OK) {\n"
                           "    \treturn(retVal);\n"
                           "    }\n");
        const QString olderCommon = QStringLiteral("\t/* UDS common initialization */ \n"
                                                   "\tretVal = udsStackInit_common(&udsServiceInitVars);\n"
                                                   "\tif (retVal != RET_OK) {\n"
                                                   "\t\treturn(retVal);\n"
                                                   "\t}\n");
        QTest::newRow("multi-line form")
            << true
            << currentCommon + QStringLiteral("    /* UDS line initialization */ \n"
                                              "    retVal = udsStackInit_line(3, &udsLine3);\n"
                                              "    if (retVal != RET_OK) {\n"
                                              "    \treturn(retVal);\n"
                                              "    }\n\n")
            << olderCommon + QStringLiteral("\t/* UDS line initialization */ \n"
                                            "\tretVal = udsStackInit_line(3, &udsLine3);\n"
                                            "\tif (retVal != RET_OK) {\n"
                                            "\t\treturn(retVal);\n"
                                            "\t}\n\n");
        QTest::newRow("single-line form")
            << false
            << currentCommon + QStringLiteral("    /* UDS line initialization */ \n"
                                              "    retVal = udsStackInit_line(&udsLine3);\n"
                                              "    if (retVal != RET_OK) {\n"
                                              "    \treturn(retVal);\n"
                                              "    }\n\n")
            << olderCommon + QStringLiteral("\t/* UDS line initialization */ \n"
                                            "\tretVal = udsStackInit_line(&udsLine3);\n"
                                            "\tif (retVal != RET_OK) {\n"
                                            "\t\treturn(retVal);\n"
                                            "\t}\n\n");
    }

    void initCalls()
    {
        QFETCH(bool, multiLine);
        QFETCH(QString, current);
        QFETCH(QString, older);
        ProjectBuilder project;
        buildProject(project, {4}, {QStringLiteral("udsclient_supported=1")});
        const CommonGeneratorHelperV4 helper(&project.store());
        QCOMPARE(helper.udsCommonInit() + helper.udsLineInit(3, multiLine), current);
        const CommonGeneratorHelper olderHelper(&project.store());
        QCOMPARE(olderHelper.udsCommonInit() + olderHelper.udsLineInit(3, multiLine), older);
    }

    void staticIndications_data()
    {
        QTest::addColumn<Settings>("settings");
        QTest::addColumn<QString>("text");
        QTest::newRow("switched off") << Settings{QStringLiteral("uds_fct_dtc_info=udsDtc")} << QString();
        QTest::newRow("switched on, only blank names")
            << Settings{QStringLiteral("uds_static_indication=1"), QStringLiteral("uds_fct_dtc_info=  ")}
            << QString();
        QTest::newRow("two functions in table order")
            << Settings{QStringLiteral("uds_static_indication=1"),
                        QStringLiteral("uds_fct_generic=udsGeneric"),
                        QStringLiteral("uds_fct_check_req_session= checkSession ")}
            << QStringLiteral(
                   "\n/* definition of static indication function pointers */\n"
                   "#if UDS_EVENT_STATIC_CHECK_REQ_SESSION\n"
                   "CORE_CONST UDS_EVENT_CHECK_REQUIRED_SESSION_TYPE_T udsCheckRequiredSessionInd = "
                   "checkSession;\n"
                   "#endif\n"
                   "#if UDS_EVENT_STATIC_GENERIC_FCT\n"
                   "CORE_CONST UDS_EVENT_GENERIC_FCT_T udsGenericInd = udsGeneric;\n"
                   "#endif\n"
                   "\n");
    }

    void staticIndications()
    {
        QFETCH(Settings, settings);
        QFETCH(QString, text);
        ProjectBuilder project;
        buildProject(project, {4}, settings);
        QCOMPARE(CommonGeneratorHelperV4(&project.store()).udsStaticIndications(), text);
    }

    // The blocks of a two-line project with everything switched on, put together as a protocol source
    // would, compile against the stack's declarations.
    void blocksCompile()
    {
        if (!StackCompiler::available())
            QSKIP("no C compiler");
        ProjectBuilder project;
        buildProject(
            project, {5, 4},
            {QStringLiteral("udsserver_supported=1"), QStringLiteral("udsserver_version=5"),
             QStringLiteral("canfd_supported=1"), QStringLiteral("uds_physical_request_id=0x7e0,0x7e1"),
             QStringLiteral("uds_physical_response_id=0x7e8,0x7e9"),
             QStringLiteral("uds_functional_request_id=0x7df"), QStringLiteral("uds_ext_addressing=2"),
             QStringLiteral("uds_rdbip_canid=0x600"), QStringLiteral("uds_server_active=1,1"),
             QStringLiteral("uds_static_indication=1"), QStringLiteral("uds_fct_dtc_info=appDtcInfo"),
             QStringLiteral("uds_fct_req_commgt=appCommgt"), QStringLiteral("uds_fct_generic=appGeneric")});
        setServices(project.store(), 0, tableServices);
        setServices(project.store(), 1, {{0x10, "1,2"}, {0x27, "2", "1,2", "1"}});
        const CommonGeneratorHelperV4 helper(&project.store());

        QTemporaryDir dir;
        QVERIFY(StackCompiler::writeGenDefine(dir.path(),
                                              {QStringLiteral("#define CAN_MULTI_LINE\t1u"),
                                               QStringLiteral("#define CAN_MULTI_LINE_CNT\t2u"),
                                               QStringLiteral("#define CORE_CANFD_SUPPORTED\t1u"),
                                               QStringLiteral("#define ISOTP_SUPPORTED\t1u"),
                                               QStringLiteral("#define CORE_REC_BUFFER_COUNTS\t10u, 10u"),
                                               QStringLiteral("#define CORE_TR_BUFFER_COUNTS\t5u, 5u"),
                                               QStringLiteral("#define CORE_COB_COUNTS\t20u, 8u"),
                                               QStringLiteral("#define ISOTP_CLIENT_COUNTS\t1u,1u"),
                                               QStringLiteral("#define ISOTP_SERVER_COUNTS\t1u,1u"),
                                               QStringLiteral("#define GEN_UDS_INIT_STRUCT_VERSION \t5u"),
                                               QStringLiteral("#define UDS_EVENT_STATIC_DTC_INFO\t1u"),
                                               QStringLiteral("#define UDS_EVENT_STATIC_REQ_COMMGT\t1u"),
                                               QStringLiteral("#define UDS_EVENT_STATIC_GENERIC_FCT\t1u")}));
        const QString source =
            QStringLiteral("#include <gen_define.h>\n"
                           "#include <core_common.h>\n"
                           "#include <core_isotp.h>\n"
                           "#include <uds_uds.h>\n"
                           "#include <uds_indication.h>\n"
                           "RET_T appDtcInfo(CAN_LINE_TYPE CAN_LINE, UDS_DTC_INFO_PARA_T *pPara);\n"
                           "RET_T appCommgt(CAN_LINE_TYPE CAN_LINE, UDS_REQ_COMMGT_STATE_T state, "
                           "UDS_REQ_COMMGT_PARA_T *pPara);\n"
                           "UNSIGNED8 appGeneric(CAN_LINE_TYPE CAN_LINE, UDS_GENERIC_PARA_T *pPara);\n") +
            helper.commonInitText() + helper.udsDeclarations() + helper.udsStaticIndications() +
            QStringLiteral("RET_T udsInit(void);\nRET_T udsInit(void)\n{\nRET_T retVal;\n") +
            helper.udsCommonInit() + helper.udsLineInit(0, true) + helper.udsLineInit(1, true) +
            QStringLiteral("    return(retVal);\n}\n");
        QString messages;
        QVERIFY2(StackCompiler::compile(dir.path(), QStringLiteral("blocks.c"), source, {}, &messages),
                 qPrintable(messages + source));
    }
};

QTEST_MAIN(TestCommonGeneratorHelper)
#include "tst_commongeneratorhelper.moc"
