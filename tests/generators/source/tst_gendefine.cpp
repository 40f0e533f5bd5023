#include "generators/source/codefinegenerator.h"
#include "generators/source/gendefinegenerator.h"
#include "store/objectdatabase.h"
#include "support/projectbuilder.h"
#include "support/testprojects.h"
#include "tst_gendefinefixture.h"

#include <QProcess>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <QtTest>

using namespace GenDefineFixture;

namespace {

// A small CANopen device with PDOs, heartbeat consumer and emergency producer.
void oneCanopenLine(ProjectBuilder &p)
{
    p.line(0, 1);
    p.general("co_node_id", "32").general("receivebuffersize", "10").general("transmitbuffersize", "10");
    p.general("enable_dynamic", "1").general("targetsettings_cnt", "1").general("co_timer_interval", "10000");
    p.general("event_pdo", "1").general("event_errctrl", "2").general("fct_emcy", "myEmcy");
    p.var(0, 0x1000, "Device Type", 7, "ro", "0x000F0191");
    p.var(0, 0x1001, "Error Register", 5, "ro", "0");
    array(p, 0, 0x1003, "Pre-defined Error Field", 7, 4);
    p.var(0, 0x1014, "COB-ID EMCY", 7, "ro", "$NODEID+0x80");
    array(p, 0, 0x1016, "Consumer Heartbeat Time", 7, 2);
    p.var(0, 0x1017, "Producer Heartbeat Time", 6, "rw", "0");
    record(p, 0, 0x1018, "Identity Object", {1, 2, 3, 4});
    record(p, 0, 0x1200, "Server SDO Parameter", {1, 2});
    record(p, 0, 0x1400, "RPDO 1 communication", {1, 2, 5});
    mapping(p, 0, 0x1600, "RPDO 1 mapping", 2, "rw");
    record(p, 0, 0x1800, "TPDO 1 communication", {1, 2, 3, 5});
    record(p, 0, 0x1801, "TPDO 2 communication", {1, 2});
    mapping(p, 0, 0x1A00, "TPDO 1 mapping", 1, "ro");
    mapping(p, 0, 0x1A01, "TPDO 2 mapping", 3, "rw");
    p.var(0, 0x2000, "Speed", 6, "rw", "0");
}

// A master on line 0 with a flying master bit, slave assignments and SYNC; a slave with storage on line 1.
void twoCanopenLines(ProjectBuilder &p)
{
    p.line(0, 1).line(1, 1);
    p.general("co_node_id", "5,6").general("receivebuffersize", "10,20").general("transmitbuffersize", "8,8");
    p.general("nmtmaster", "1,0").general("lss_supported", "1").general("event_nmt", "1");
    p.general("enable_dynamic", "1").general("targetsettings_cnt", "1").general("co_timer_interval", "1000");
    p.general("co_node_id_fct", "nodeIdLine0,nodeIdLine1");
    p.var(0, 0x1000, "Device Type", 7, "ro", "0x0");
    p.var(0, 0x1005, "COB-ID SYNC", 7, "rw", "0x80");
    p.var(0, 0x1017, "Producer Heartbeat Time", 6, "rw", "0");
    record(p, 0, 0x1018, "Identity Object", {1, 2, 3, 4});
    record(p, 0, 0x1200, "Server SDO Parameter", {1, 2});
    record(p, 0, 0x1280, "Client SDO Parameter", {1, 2, 3});
    record(p, 0, 0x1400, "RPDO 1 communication", {1, 2});
    mapping(p, 0, 0x1600, "RPDO 1 mapping", 1, "ro");
    p.var(0, 0x1F80, "NMT Startup", 7, "rw", "0x20");
    array(p, 0, 0x1F81, "Slave Assignment", 7, 3);
    p.var(1, 0x1000, "Device Type", 7, "ro", "0x0");
    array(p, 1, 0x1010, "Store Parameters", 7, 2);
    p.var(1, 0x1017, "Producer Heartbeat Time", 6, "rw", "0");
    record(p, 1, 0x1800, "TPDO 1 communication", {1, 2});
    record(p, 1, 0x1801, "TPDO 2 communication", {1, 2});
    mapping(p, 1, 0x1A00, "TPDO 1 mapping", 1, "ro");
    mapping(p, 1, 0x1A01, "TPDO 2 mapping", 1, "ro");
    SUBINDEX_DATA_T stored = ProjectBuilder::subRecord("Setpoint", 5, "rw", "0");
    stored.nvstorage = true;
    p.object(1, 0x2000, "Setpoint", 7, 5).sub(1, 0x2000, 0, stored);
    p.var(1, 0x2001, "Mode", 5, "rw", "0");
}

// A J1939 ECU with diagnostic messages, BAM and CMDT, a safe parameter group and the CiA 510 SDO
// server; it transmits the address claim itself.
void j1939WithDiagnostics(ProjectBuilder &p)
{
    p.line(0, 2);
    p.general("receivebuffersize", "10")
        .general("transmitbuffersize", "10")
        .general("targetsettings_cnt", "1");
    p.general("co_timer_interval", "10000").general("canindication_cnt", "1");
    p.j1939("diagsupport", "1").j1939("diagsupport_dm1", "1").j1939("diagsupport_dm2", "1");
    p.j1939("diagsupport_dm13", "1").j1939("dm_receivesize", "200").j1939("dm_transmitsize", "DM_TX_SIZE");
    p.j1939("diagtoolsupport", "0").j1939("rxindication_cnt", "1").j1939("txindication_cnt", "1");
    p.j1939("requestsupport", "1").j1939("requestindication_cnt", "2").j1939("bamsupport", "1");
    p.j1939("bamcycletime", "50").j1939("cmdtsupport", "1").j1939("cmdtpackets", "3");
    p.j1939("safetysupport", "1").j1939("sdm_timer_interval", "10").j1939("sdm_rec_addr_cnt", "2");
    p.j1939("cia510serversupport", "1");
    PGN temperature;
    temperature.number = 65262;
    temperature.direction = Direction::Transmit;
    temperature.name = "Engine Temperature 1";
    temperature.inhibittime_ms = 100;
    temperature.issafe = true;
    temperature.safetytype = 1;
    p.pgn(0, temperature);
    p.pgn(0, 60928, Direction::Transmit, "Address Claimed");
    p.pgn(0, 61444, Direction::Receive, "Electronic Engine Controller 1");
    p.pgn(0, 65265, Direction::Receive, "Cruise Control/Vehicle Speed");
}

// A raw CAN device with a UDS server that requires authentication for one service.
void rawCanWithUds(ProjectBuilder &p)
{
    p.line(0, 4);
    p.general("udsserver_supported", "1")
        .general("udsserver_version", "4")
        .general("uds_seedkey_length", "4");
    p.general("uds_session_timeout", "5000")
        .general("uds_server_active", "1")
        .general("isotp_supported", "0");
    p.general("uds_only_appl_session_check", "1").general("receivebuffersize", "10");
    p.general("transmitbuffersize", "10").general("rxindication_cnt", "2").general("txindication_cnt", "1");
    p.general("event_can", "1").general("co_timer_interval", "1000").general("targetsettings_cnt", "1");
    p.store().setUDSAuthentication(0, 49, "certificate");
    CANID status;
    status.id = 0x100;
    status.direction = Direction::Transmit;
    status.name = "Status";
    status.cycletime_ms = 100;
    status.inhibittime_ms = 10;
    p.store().addCANID(0, status.id, status);
    p.canId(0, 0x101, Direction::Transmit, "Data");
    p.canId(0, 0x200, Direction::Receive, "Command");
}

// One line of each mixed type: CANopen and J1939, CANopen and raw CAN, J1939 and raw CAN.
void mixedLines(ProjectBuilder &p)
{
    p.line(0, 5).line(1, 6).line(2, 7);
    p.general("receivebuffersize", "10,10,10")
        .general("transmitbuffersize", "10,10,10")
        .general("co_node_id", "1,2");
    p.general("enable_dynamic", "1")
        .general("event_sdo_server_read", "1")
        .general("co_timer_interval", "10000");
    p.general("targetsettings_cnt", "1").general("additional_cob_count", "2");
    p.j1939("rxindication_cnt", "1");
    p.var(0, 0x1000, "Device Type", 7, "ro", "0x0");
    p.var(0, 0x1017, "Producer Heartbeat Time", 6, "rw", "0");
    record(p, 0, 0x1018, "Identity Object", {1, 2, 3, 4});
    record(p, 0, 0x1200, "Server SDO Parameter", {1, 2});
    p.pgn(0, 65262, Direction::Transmit, "Engine Temperature 1");
    p.pgn(0, 61444, Direction::Receive, "Electronic Engine Controller 1");
    p.var(1, 0x1000, "Device Type", 7, "ro", "0x0");
    p.var(1, 0x1017, "Producer Heartbeat Time", 6, "rw", "0");
    record(p, 1, 0x1800, "TPDO 1 communication", {1, 2});
    mapping(p, 1, 0x1A00, "TPDO 1 mapping", 1, "ro");
    p.canId(1, 0x300, Direction::Receive, "Command");
    p.pgn(2, 65265, Direction::Receive, "Cruise Control/Vehicle Speed");
    p.canId(2, 0x400, Direction::Transmit, "Status");
}

// A CANopen FD device without SDO objects, with USDO server and client and an active error list.
void canFdLine(ProjectBuilder &p)
{
    p.line(0, 1);
    p.general("canfd_supported", "1").general("co_node_id", "1").general("receivebuffersize", "16");
    p.general("transmitbuffersize", "16")
        .general("targetsettings_cnt", "1")
        .general("co_timer_interval", "10000");
    p.general("enable_dynamic", "1").general("usdo_server_enabled", "1").general("usdo_server_cnt", "2");
    p.general("usdo_client_enabled", "1").general("usdo_client_cnt", "1");
    p.general("usdo_server_read_ind_function", " myUsdoRead ")
        .general("usdo_split_indication_supported", "1");
    p.general("usdo_server_ind_write_cnt", "1");
    p.var(0, 0x1000, "Device Type", 7, "ro", "0x00000000");
    array(p, 0, 0x1003, "Pre-defined Error Field", 7, 2);
    p.var(0, 0x1014, "COB-ID EMCY", 7, "ro", "$NODEID+0x80");
    p.var(0, 0x1017, "Producer Heartbeat Time", 6, "rw", "0");
    record(p, 0, 0x1018, "Identity Object", {1, 2, 3, 4});
    array(p, 0, 0x1032, "Active Error List", 7, 3);
    record(p, 0, 0x1800, "TPDO 1 communication", {1, 2});
    mapping(p, 0, 0x1A00, "TPDO 1 mapping", 2, "rw");
}

// An EnergyBus controller with a battery and a security extension, in a network with more devices.
void energyBusDevice(ProjectBuilder &p)
{
    p.line(0, 1);
    p.general("co_node_id", "10").general("receivebuffersize", "10").general("transmitbuffersize", "10");
    p.general("targetsettings_cnt", "1")
        .general("co_timer_interval", "10000")
        .general("sleep_mode_selection", "2");
    p.general("sleep_wait_time", "500").general("enable_dynamic", "0").general("fct_nmt", "appNmt");
    ObjectDataBase &store = p.store();
    const QList<QPair<QString, QString>> energyBus{
        {"device_cnt", "3"},          {"device_1", "1 EnergyBus Controller"},
        {"device_2", "2 Battery"},    {"device_3", "3 Security Device/Extension"},
        {"sec_3_kind", "0"},          {"int_offset_bat", "2"},
        {"ebc_max_dev_number", "4"},  {"ebc_max_bat_number", "2"},
        {"ebc_max_hmi_number", "1"},  {"ebc_max_sec_number", "0"},
        {"ext_start_pos_bat", "128"}, {"ext_start_pos_hmi", "130"},
        {"ebc_tool_supported", "1"},
    };
    for (const auto &[key, value] : energyBus)
        store.setEnergyBusSetting(key, value);
    p.var(0, 0x1000, "Device Type", 7, "ro", "0x000101C6");
    p.var(0, 0x1017, "Producer Heartbeat Time", 6, "rw", "0");
    record(p, 0, 0x1018, "Identity Object", {1, 2, 3, 4});
    record(p, 0, 0x1200, "Server SDO Parameter", {1, 2});
}

// A device that shows where the two families differ: forced multi-line form, a flying master
// from the setting, routing counts, check-write events, virtual objects, the predefined connection set.
void olderFeatures(ProjectBuilder &p)
{
    p.line(0, 1).misc("generateML", "true");
    p.general("co_node_id", "3").general("receivebuffersize", "10").general("transmitbuffersize", "5");
    p.general("enable_dynamic", "1")
        .general("event_sdo_server_check_write", "1")
        .general("event_sdo_server_read", "1");
    p.general("object_changed_event", "1")
        .general("fct_pdo_update", "appPdoUpdate")
        .general("overwrite_predef", "1");
    p.general("flyma_supported", "1").general("routing_counts", "2").general("sleep_mode_selection", "1");
    p.general("sleep_wait_time", "100").general("nmtmaster", "1").general("co_timer_interval", "10000");
    p.general("targetsettings_cnt", "1").general("generate_generation_counter", "1");
    p.var(0, 0x1000, "Device Type", 7, "ro", "0x0");
    p.var(0, 0x1017, "Producer Heartbeat Time", 6, "rw", "0");
    record(p, 0, 0x1018, "Identity Object", {1, 2, 3, 4});
    record(p, 0, 0x1200, "Server SDO Parameter", {1, 2});
    p.var(0, 0x1F80, "NMT Startup", 7, "rw", "0x0");
    p.object(0, 0x2000, "Remote Value", 7, 5).sub(0, 0x2000, 0, virtualSub("Remote Value", 5));
    p.object(0, 0x2001, "Remote Record", 9, 0);
    p.sub(0, 0x2001, 0, "Highest sub-index", 5, "ro", "2");
    p.sub(0, 0x2001, 1, virtualSub("Offset", 2)).sub(0, 0x2001, 2, virtualSub("Label", 9));
}

// Everything at once, over three mixed lines, to see that the blocks together stay valid C.
void everything(ProjectBuilder &p)
{
    mixedLines(p);
    p.misc("generateML", "true");
    p.general("canfd_supported", "1").general("isotp_supported", "1").general("isotp_client_con", "1,1,1");
    p.general("isotp_server_con", "1,1,1")
        .general("udsserver_supported", "1")
        .general("udsclient_supported", "1");
    p.general("uds_client_cnt", "1")
        .general("uds_static_indication", "1")
        .general("uds_fct_dtc_info", "appDtc");
    p.general("sdo_blocktransfer_supported", "1").general("sdo_client_queue_supported", "1");
    p.general("config_manager", "1").general("changedindication_cnt", "1").general("user_tx_cob", "2");
    p.general("sorted_coblist", "1")
        .general("only_one_hb_buffer", "1")
        .general("user_defines", "#define APP_X 1");
    p.general("usdo_server_enabled", "1").general("usdo_server_cnt", "1").general("event_can", "3");
    p.general("nmtmaster", "1,0,0").general("lss_supported", "1").general("sleep_mode_selection", "2");
    p.general("object_changed_event", "1").general("generate_generation_counter", "1");
    p.general("overwrite_predef", "1,0,0").general("targetsettings_cnt", "2").general("all_targets", "1");
    p.general("targetsettings_1_targetid", "BOARD_B").general("targetsettings_1_timer", "500");
    p.j1939("spnchanged", "1").j1939("safetysupport", "1").j1939("diagtoolsupport", "1");
    p.j1939("diagsupport_dmtool22", "1").j1939("nmea2000support", "1").j1939("j1939fd_11bitmultipg", "1");
    // The J1939 and the event block both write the SDO server events, and the ISO-TP and the event
    // block both write the ISO-TP events: the file is valid C only where the values agree.
    p.j1939("cia510serversupport", "1")
        .general("event_sdo_server_read", "1")
        .general("event_sdo_server_write", "1");
    p.general("isotp_server_event", "2").general("isotp_dyn_server_ind", "1");
    p.general("isotp_client_event", "2").general("isotp_dyn_client_ind", "1");
    array(p, 0, 0x1016, "Consumer Heartbeat Time", 7, 2);
    array(p, 0, 0x1010, "Store Parameters", 7, 2);
    array(p, 0, 0x1F81, "Slave Assignment", 7, 2);
    p.var(0, 0x1F22, "Concise DCF", 15, "rw", "");
    p.var(1, 0x1005, "COB-ID SYNC", 7, "rw", "0x80");
    p.var(1, 0x1012, "COB-ID TIME", 7, "rw", "0x100");
}

} // namespace

class TestGenDefine : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase()
    {
        QCoreApplication::setOrganizationName(QStringLiteral("KestrelTests"));
        QCoreApplication::setApplicationName(QStringLiteral("CANopen Kestrel"));
        QCoreApplication::setApplicationVersion(QStringLiteral("4.3.2"));
        qApp->setProperty("AppNameWithVersion", QStringLiteral("CANopen Kestrel 4.3.2"));
    }

    void goldenFiles_data()
    {
        QTest::addColumn<Setup>("setup");
        QTest::addColumn<QString>("project");
        QTest::addColumn<QString>("application");
        QTest::addColumn<bool>("older");
        QTest::addColumn<QStringList>("statements");
        QTest::addColumn<QString>("golden");
        const QString canopen = QStringLiteral("CANopen Kestrel");
        QTest::newRow("one CANopen line with PDOs, heartbeat and EMCY")
            << Setup(oneCanopenLine) << "one_line" << canopen << false << QStringList()
            << "canopen_one_line.h";
        QTest::newRow("two CANopen lines") << Setup(twoCanopenLines) << "two_lines" << canopen << false
                                           << QStringList() << "canopen_two_lines.h";
        QTest::newRow("J1939 line with DM support")
            << Setup(j1939WithDiagnostics) << "j1939_dm" << canopen << false << QStringList() << "j1939_dm.h";
        QTest::newRow("J1939 line with multi-source PGNs and DM support")
            << Setup(j1939WithDiagnostics) << "j1939_multisource" << canopen << false
            << QStringList{"update PGNs0 set multisourceaddress = 3 where number = 61444"}
            << "j1939_multisource.h";
        QTest::newRow("raw CAN line with UDS server")
            << Setup(rawCanWithUds) << "rawcan_uds"
            << "CAN Kestrel" << false << QStringList() << "rawcan_uds.h";
        QTest::newRow("mixed lines of type 5, 6 and 7")
            << Setup(mixedLines) << "mixed" << canopen << false << QStringList() << "mixed_lines.h";
        QTest::newRow("CAN FD CANopen line")
            << Setup(canFdLine) << "canfd" << canopen << false << QStringList() << "canfd_line.h";
        QTest::newRow("EnergyBus device")
            << Setup(energyBusDevice) << "ebike"
            << "EnergyBus Kestrel Wizard" << false << QStringList() << "energybus.h";
        QTest::newRow("family differences, current family")
            << Setup(olderFeatures) << "older" << canopen << false << QStringList() << "older_features_v4.h";
        QTest::newRow("family differences, older family")
            << Setup(olderFeatures) << "older" << canopen << true << QStringList() << "older_features.h";
    }

    void goldenFiles()
    {
        QFETCH(Setup, setup);
        QFETCH(QString, project);
        QFETCH(QString, application);
        QFETCH(bool, older);
        QFETCH(QStringList, statements);
        QFETCH(QString, golden);
        const ApplicationName name(application);
        QTemporaryDir dir;
        ProjectBuilder builder;
        setup(builder);
        const Generated generated = statements.isEmpty()
                                        ? generate(builder.store(), dir.path(), project, older)
                                        : generateReopened(builder, statements, dir.path(), project, older);
        const QString expected = QString::fromUtf8(TestProjects::readFile(goldenPath(golden)));
        QVERIFY2(!expected.isEmpty(), qPrintable(golden));
        QCOMPARE(generated.masked.split('\n'), expected.split('\n'));
        QVERIFY2(preprocesses(generated.path), qPrintable(golden));

        // The twin family's file of the same project is valid C as well.
        QTemporaryDir twinDir;
        const Generated twin = generate(builder.store(), twinDir.path(), project, !older);
        QVERIFY2(preprocesses(twin.path), qPrintable(golden));
    }

    void everythingAtOnceIsValidC_data()
    {
        QTest::addColumn<bool>("older");
        QTest::newRow("current family") << false;
        QTest::newRow("older family") << true;
    }

    void everythingAtOnceIsValidC()
    {
        QFETCH(bool, older);
        QTemporaryDir dir;
        ProjectBuilder builder;
        everything(builder);
        const Generated generated = generate(builder.store(), dir.path(), QStringLiteral("all"), older);
        QVERIFY(generated.masked.contains(QLatin1String("\n/* COB Definitions */\n")));
        QVERIFY(generated.masked.contains(QLatin1String("\n/* static UDS indication binding */\n")) != older);
        QVERIFY(preprocesses(generated.path));
    }
};

QTEST_MAIN(TestGenDefine)
#include "tst_gendefine.moc"
