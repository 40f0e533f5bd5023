#include "generators/source/gendefinegenerator.h"
#include "store/objectdatabase.h"
#include "support/projectbuilder.h"
#include "support/testprojects.h"
#include "tst_gendefinefixture.h"

#include <QSettings>
#include <QTemporaryDir>
#include <QtTest>

using namespace GenDefineFixture;

namespace {

// The smallest CANopen device: a device type and an SDO server.
void canopenDevice(ProjectBuilder &p, const QString &deviceType = QStringLiteral("0x0"))
{
    p.line(0, 1);
    p.var(0, 0x1000, "Device Type", 7, "ro", deviceType);
    record(p, 0, 0x1200, "Server SDO Parameter", {1, 2});
}

} // namespace

class TestGenDefineRules : public QObject
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

    void macroLines_data()
    {
        QTest::addColumn<Setup>("setup");
        QTest::addColumn<QString>("application");
        QTest::addColumn<QStringList>("present");
        QTest::addColumn<QStringList>("absent");
        const QString canopen = QStringLiteral("CANopen Kestrel");

        QTest::newRow("node ids of commas only") << Setup([](ProjectBuilder &p) {
            canopenDevice(p);
            p.general("co_node_id", ",");
        }) << canopen << QStringList{"#define CO_NODE_IDS\t0u"}
                                                 << QStringList();
        QTest::newRow("node ids with a gap") << Setup([](ProjectBuilder &p) {
            canopenDevice(p);
            p.general("co_node_id", " 1,,3 ");
        }) << canopen << QStringList{"#define CO_NODE_IDS\t1,0,3"}
                                             << QStringList();
        QTest::newRow("node ids with a leading comma") << Setup([](ProjectBuilder &p) {
            canopenDevice(p);
            p.general("co_node_id", ",2");
        }) << canopen << QStringList{"#define CO_NODE_IDS\t0,2"}
                                                       << QStringList();
        QTest::newRow("node id functions named") << Setup([](ProjectBuilder &p) {
            canopenDevice(p);
            p.general("co_node_id_fct", "getNodeId");
        }) << canopen << QStringList{"#define CO_NODE_ID_FUNCTIONS\tgetNodeId"}
                                                 << QStringList{"NULL"};

        QTest::newRow("no SDO object without CAN FD") << Setup([](ProjectBuilder &p) {
            p.line(0, 1);
            p.var(0, 0x1000, "Device Type", 7, "ro", "0x0");
        }) << canopen << QStringList{"#define CO_SSDO_COUNTS\t1u", "#define CO_SDO_SERVER_CNT\t1u"}
                                                      << QStringList();
        QTest::newRow("no SDO object with CAN FD") << Setup([](ProjectBuilder &p) {
            p.line(0, 1).general("canfd_supported", "1");
            p.var(0, 0x1000, "Device Type", 7, "ro", "0x0");
        }) << canopen << QStringList{"#define CO_SSDO_COUNTS\t0u"}
                                                   << QStringList{"#define CO_SDO_SERVER_CNT"};

        QTest::newRow("profile 454") << Setup([](ProjectBuilder &p) {
            canopenDevice(p, "0x01C6");
        }) << canopen << QStringList{"#define CO_PROFILE_454\t1u", "#define CO_EVENT_PROFILE_STORE\t1u"}
                                     << QStringList();
        QTest::newRow("profile 447 with groups from both words")
            << Setup([](ProjectBuilder &p) {
                   canopenDevice(p, "447");
                   p.object(0, 0x6000, "Virtual device groups", 9, 7);
                   p.sub(0, 0x6000, 0, "Highest sub-index", 5, "ro", "2");
                   p.sub(0, 0x6000, 1, "Groups 1 to 32", 7, "ro", "0x80000002");
                   p.sub(0, 0x6000, 2, "Groups 33 to 64", 7, "ro", "0x1");
               })
            << canopen
            << QStringList{"#define CO_PROFILE_447\t1u", "#define CO_P447_VDFG_2 \t1u",
                           "#define CO_P447_VDFG_32 \t1u", "#define CO_P447_VDFG_33 \t1u"}
            << QStringList{"#define CO_P447_VDFG_1 ", "#define CO_P447_VDFG_34 "};
        QTest::newRow("profile of a record device type") << Setup([](ProjectBuilder &p) {
            p.line(0, 1);
            p.object(0, 0x1000, "Device Type", 9, 7);
            p.sub(0, 0x1000, 0, "Highest sub-index", 5, "ro", "0x0191");
            p.sub(0, 0x1000, 1, "Type", 7, "ro", "0x00020192");
        }) << canopen << QStringList{"#define CO_PROFILE_402\t1u"}
                                                         << QStringList{"#define CO_PROFILE_401"};

        QTest::newRow("dynamic events switched off")
            << Setup([](ProjectBuilder &p) {
                   canopenDevice(p);
                   p.general("enable_dynamic", "0").general("event_pdo", "1").general("fct_nmt", "appNmt");
                   p.general("sleep_mode_selection", "1").general("sleep_wait_time", "20");
               })
            << canopen
            << QStringList{"#define CO_EVENT_STATIC_NMT\t1u", "#define CO_EVENT_DYNAMIC_SLEEP\t1u",
                           "#define CO_SLEEP_447\t1u", "#define CORE_SLEEP_SUPPORTED\t1u",
                           "#define CO_SLEEP_WAITTIME\t20u"}
            << QStringList{"/* Definition of number of call-back functions for each service*/",
                           "#define CO_EVENT_DYNAMIC_PDO"};
        QTest::newRow("dynamic events without the setting") << Setup([](ProjectBuilder &p) {
            canopenDevice(p);
            p.general("event_pdo", "3");
        }) << canopen << QStringList{"#define CO_EVENT_DYNAMIC_PDO\t3u"}
                                                            << QStringList();
        QTest::newRow("dynamic events with a text setting") << Setup([](ProjectBuilder &p) {
            canopenDevice(p);
            p.general("enable_dynamic", "yes").general("event_lss", "1");
        }) << canopen << QStringList{"#define CO_EVENT_DYNAMIC_LSS\t1u"}
                                                            << QStringList();
        QTest::newRow("profile device raises the CAN indications") << Setup([](ProjectBuilder &p) {
            canopenDevice(p, "0x00020191");
            p.general("event_can", "0");
        }) << canopen << QStringList{"#define CORE_EVENT_DYNAMIC_CAN\t4u"}
                                                                   << QStringList();
        QTest::newRow("static indications from any of their names")
            << Setup([](ProjectBuilder &p) {
                   canopenDevice(p);
                   p.general("fct_pdo_sync", "onSync")
                       .general("fct_led_red", "red")
                       .general("fct_lss_master", " lss ");
                   p.general("fct_can", "   ");
               })
            << canopen
            << QStringList{"#define CO_EVENT_STATIC_PDO\t1u", "#define CO_EVENT_STATIC_LED\t1u",
                           "#define CO_EVENT_STATIC_LSS\t1u"}
            << QStringList{"#define CORE_EVENT_STATIC_CAN"};

        QTest::newRow("two lines, one TPDO and two TPDOs") << Setup([](ProjectBuilder &p) {
            p.line(0, 1).line(1, 1);
            record(p, 0, 0x1800, "TPDO 1", {1, 2});
            record(p, 1, 0x1800, "TPDO 1", {1, 2});
            record(p, 1, 0x1801, "TPDO 2", {1, 2});
        }) << canopen << QStringList{"#define CO_TXPDO_COUNTS\t1u, 2u"}
                                                           << QStringList();
        QTest::newRow("additional COBs per line") << Setup([](ProjectBuilder &p) {
            p.line(0, 1).line(1, 1).general("additional_cob_count", "3,5");
            p.var(0, 0x1000, "Device Type", 7, "ro", "0x0");
            p.var(1, 0x1000, "Device Type", 7, "ro", "0x0");
        }) << canopen << QStringList{"#define CORE_COB_COUNTS\t7u, 9u", "#define CORE_COB_CNT\t16u"}
                                                  << QStringList();
        QTest::newRow("heartbeat consumers in one buffer")
            << Setup([](ProjectBuilder &p) {
                   canopenDevice(p);
                   p.general("only_one_hb_buffer", "1");
                   array(p, 0, 0x1016, "Consumer Heartbeat Time", 7, 4);
               })
            << canopen
            << QStringList{"#define CORE_COB_COUNTS\t5u", "#define CO_HB_CONSUMER_CNT 4u",
                           "#define CO_ONE_HB_CONSUMER_COB\t1u"}
            << QStringList();
        QTest::newRow("multiplexed PDOs")
            << Setup([](ProjectBuilder &p) {
                   canopenDevice(p);
                   mapping(p, 0, 0x1A00, "TPDO 1 mapping", 254, "ro");
                   p.object(0, 0x1600, "RPDO 1 mapping", 9, 0);
                   p.sub(0, 0x1600, 0, "Number of mapped objects", 5, "ro", "255");
               })
            << canopen
            << QStringList{"#define CO_MPDO_PRODUCER\t1",      "#define CO_MPDO_CONSUMER\t1",
                           "#define CO_MPDO_SAM\t1u",          "#define CO_MPDO_DAM\t1u",
                           "#define CO_MAX_MAP_ENTRIES\t254u", "#define CO_EXTENDED_DATA_TYPES\t\t1u"}
            << QStringList();
        QTest::newRow("static SRDO entries by type")
            << Setup([](ProjectBuilder &p) {
                   canopenDevice(p);
                   p.general("static_srdo_data", "1").general("ignore_srdo_data_validation", "1");
                   record(p, 0, 0x1301, "SRDO 1 communication", {1, 2});
                   p.object(0, 0x1381, "SRDO 1 mapping", 9, 0);
                   p.sub(0, 0x1381, 0, "Number of mapped objects", 5, "ro", "3");
                   p.sub(0, 0x1381, 1, "Mapping 1", 7, "ro", "0x60000108");
                   p.sub(0, 0x1381, 2, "Mapping 2", 7, "ro", "0x60010010");
                   p.sub(0, 0x1381, 3, "Mapping 3", 7, "ro", "0x60000208");
                   p.object(0, 0x6000, "Inputs", 8, 5);
                   p.sub(0, 0x6000, 1, "Input 1", 5, "ro", "0").sub(0, 0x6000, 2, "Input 2", 5, "ro", "0");
                   p.var(0, 0x6001, "Speed", 3, "ro", "0");
               })
            << canopen
            << QStringList{"#define CO_SRDO_SUPPORTED\t1u",    "#define CO_SRDO_COUNTS\t1u",
                           "#define CO_SRDO_CNT\t1u",          "#define CO_SRDO_IGNORE_DATA_STATE\t1u",
                           "#define SRDO_OD_ENTRY_U8_CNT\t2u", "#define SRDO_OD_ENTRY_I16_CNT\t1u"}
            << QStringList{"#define SRDO_OD_ENTRY_U16_CNT"};
        QTest::newRow("SDO block transfer defaults") << Setup([](ProjectBuilder &p) {
            canopenDevice(p);
            p.general("sdo_blocktransfer_supported", "1").general("sdo_blocktransfer_block_size", "256");
            p.general("sdo_client_queue_supported", "1").general("sdo_client_queue_size", "8");
            p.general("limit_check", "1").general("sdo_split", "1");
        }) << canopen << QStringList{"#define CO_SDO_BLOCK\t\t1u",
                                     "#define CO_SDO_BLOCK_SIZE\t32u",
                                     "#define CO_SDO_BLOCK_MIN_SIZE\t64u",
                                     "#define CO_SDO_QUEUE\t\t1u",
                                     "#define CO_SDO_QUEUE_LEN\t8u",
                                     "#define CO_CONFIG_LIMIT_CHECK\t\t1u",
                                     "#define CO_SDO_SPLIT_INDICATION\t\t1u"}
                                                     << QStringList{"#define CO_SDO_BLOCK_CRC"};
        QTest::newRow("extended and UTF-8 types")
            << Setup([](ProjectBuilder &p) {
                   canopenDevice(p);
                   p.var(0, 0x2000, "Counter", 27, "rw", "0");
                   p.var(0, 0x2001, "Label", 124, "rw", "");
               })
            << canopen
            << QStringList{"#define CO_EXTENDED_DATA_TYPES\t\t1u", "#define CO_UTF8_DATA_TYPE\t\t1u"}
            << QStringList();
        QTest::newRow("USDO client counts only enabled lines")
            << Setup([](ProjectBuilder &p) {
                   p.line(0, 1).line(1, 1).general("canfd_supported", "1");
                   p.general("usdo_client_enabled", "0,1").general("usdo_client_cnt", "4,2");
                   p.general("usdo_server_enabled", "1,0").general("usdo_server_cnt", "3,0x2");
               })
            << canopen
            << QStringList{"#define CO_USDO_CLIENT_MAX_CONN_CNT\t2u",
                           "#define CO_USDO_CLIENT_MAX_CONN_COUNTS\t0u,2u",
                           "#define CO_USDO_SERVER_MAX_CONN_CNT\t3u",
                           "#define CO_USDO_SERVER_MAX_CONN_COUNTS\t3u,2u"}
            << QStringList();

        QTest::newRow("J1939 address claim is not counted")
            << Setup([](ProjectBuilder &p) {
                   p.line(0, 2);
                   p.pgn(0, 60928, Direction::Transmit, "Address Claimed");
                   p.pgn(0, 65262, Direction::Transmit, "Engine Temperature 1");
               })
            << canopen
            << QStringList{"#define J1939_TRANSMIT_PGN_CNT\t1u", "#define J1939_TRANSMIT_PGN_COUNTS\t1u"}
            << QStringList();
        QTest::newRow("J1939 FD buffers default on two lines")
            << Setup([](ProjectBuilder &p) { p.line(0, 2).line(1, 2).general("canfd_supported", "1"); })
            << canopen
            << QStringList{"#define J1939_DEST_BUFFER_CNT\t2u", "#define J1939_DEST_BUFFER_COUNTS\t1u,1u"}
            << QStringList();
        QTest::newRow("J1939 FD buffers repeated per line")
            << Setup([](ProjectBuilder &p) {
                   p.line(0, 2)
                       .line(1, 2)
                       .line(2, 2)
                       .general("canfd_supported", "1")
                       .j1939("j1939fd_multipgbuffer", "3");
               })
            << canopen
            << QStringList{"#define J1939_DEST_BUFFER_CNT\t9u", "#define J1939_DEST_BUFFER_COUNTS\t3u,3u,3u"}
            << QStringList();
        QTest::newRow("diagnostic buffer sizes as macro and number")
            << Setup([](ProjectBuilder &p) {
                   p.line(0, 2)
                       .j1939("diagsupport", "1")
                       .j1939("dm_receivesize", "DM_RX")
                       .j1939("dm_transmitsize", "0x40");
               })
            << canopen
            << QStringList{"#define J1939_DIAG_REC_BUF_SIZE\tDM_RX", "#define J1939_DIAG_TR_BUF_SIZE\t0x40u"}
            << QStringList();
        QTest::newRow("J1939 FD COBs reach three for the parameter groups") << Setup([](ProjectBuilder &p) {
            p.line(0, 2).general("canfd_supported", "1");
            p.pgn(0, 61444, Direction::Receive, "Electronic Engine Controller 1");
        }) << canopen << QStringList{"#define CORE_COB_CNT \t8u"} << QStringList();
        QTest::newRow("J1939 COBs of a diagnostic tool")
            << Setup([](ProjectBuilder &p) {
                   p.line(0, 2).j1939("diagtoolsupport", "1").j1939("diagsupport_dmtool22", "1");
                   p.j1939("diagsupport_dmtool3", "1");
               })
            << canopen
            << QStringList{"#define CORE_COB_CNT \t9u", "#define J1939_DIAGNOSTIC_TOOL_DM3_SUPPORTED\t1u",
                           "#define J1939_DIAGNOSTIC_TOOL_DM22_SUPPORTED\t1u"}
            << QStringList();
        QTest::newRow("J1939 COBs with ISO-TP and UDS") << Setup([](ProjectBuilder &p) {
            p.line(0, 2).general("isotp_supported", "1").general("isotp_client_con", "1");
            p.general("isotp_server_con", "2").general("uds_server_active", "1");
        }) << canopen << QStringList{"#define CORE_COB_CNT \t23u"}
                                                        << QStringList();
        QTest::newRow("J1939 two lines with CiA 510 server")
            << Setup([](ProjectBuilder &p) {
                   p.line(0, 2).line(1, 2).j1939("cia510serversupport", "1");
                   p.pgn(1, 61444, Direction::Receive, "Electronic Engine Controller 1");
               })
            << canopen
            << QStringList{"#define J1939_RECEIVE_PGN_CFG_COUNTS\t 0u, 1u",
                           "#define J1939_SSDO_COUNTS\t1u,1u", "#define CO_SDO_SERVER_CNT\t2u",
                           "#define J1939_CAM11_CAM21_SUPPORTED\t1u", "#define CORE_COB_COUNTS\t6, 8"}
            << QStringList();
        QTest::newRow("J1939 safety messages")
            << Setup([](ProjectBuilder &p) {
                   p.line(0, 2).j1939("safetysupport", "1").j1939("sdm_rec_addr_cnt", "0");
                   PGN safe;
                   safe.number = 65280;
                   safe.direction = Direction::Transmit;
                   safe.name = "Safe Output";
                   safe.issafe = true;
                   safe.safetytype = 2;
                   p.pgn(0, safe);
               })
            << canopen
            << QStringList{"#define J1939_SDG_SUPPORTED\t1u",    "#define J1939_SDG_TYPE_2_SUPPORTED\t1u",
                           "#define J1939_SDG_TIMER_INTERVAL\t", "#define J1939_SDG_REC_ADDR_CNT\t1u",
                           "#define J1939_SDG_TRANS_CNT\t1u",    "#define J1939_SDG_TRANS_COUNTS\t1u",
                           "#define J1939_SDG_REC_COUNTS\t0u"}
            << QStringList{"#define J1939_SDG_REC_CNT\t"};
        QTest::newRow("J1939 safety messages on two lines")
            << Setup([](ProjectBuilder &p) {
                   p.line(0, 2).line(1, 2).j1939("safetysupport", "1").j1939("sdm_timer_interval", "0");
                   PGN safe;
                   safe.number = 65280;
                   safe.direction = Direction::Transmit;
                   safe.name = "Safe Output";
                   safe.issafe = true;
                   p.pgn(1, safe);
               })
            << canopen
            << QStringList{"#define J1939_SDG_TIMER_INTERVAL\t0",
                           "#define J1939_TRANSMIT_PGN_COUNTS\t 0u, 1u", "#define J1939_SDG_TRANS_CNT\t1u",
                           "#define J1939_SDG_TRANS_COUNTS\t 0u, 1u", "#define J1939_SDG_REC_COUNTS\t 0u, 0u"}
            << QStringList{"#define J1939_SDG_REC_CNT\t", "J1939_SDG_TYPE_"};
        QTest::newRow("raw CAN edition leaves J1939 out") << Setup([](ProjectBuilder &p) {
            p.line(0, 6);
            p.var(0, 0x1000, "Device Type", 7, "ro", "0x0");
        }) << "CAN Kestrel" << QStringList{"#define CANOPEN_SUPPORTED\t1u", "#define RAWCAN_SUPPORTED\t1u"}
                                                          << QStringList{"/* J1939 Defines */"};
        QTest::newRow("CANopen edition writes J1939 for raw CAN")
            << Setup([](ProjectBuilder &p) { p.line(0, 4); }) << canopen
            << QStringList{"#define J1939_SUPPORTED\t1u", "#define CANOPEN_SUPPORTED\t1u"} << QStringList();

        QTest::newRow("ISO-TP clients on two lines with a UDS server")
            << Setup([](ProjectBuilder &p) {
                   p.line(0, 4)
                       .line(1, 4)
                       .general("isotp_supported", "1")
                       .general("udsserver_supported", "1");
                   p.general("isotp_client_con", "2,3").general("isotp_server_con", "1,,1");
               })
            << canopen
            << QStringList{"#define ISOTP_CLIENT_CONNECTION_CNT\t7u", "#define ISOTP_CLIENT_COUNTS\t3u,4u",
                           "#define ISOTP_SERVER_CONNECTION_CNT\t6u", "#define ISOTP_SERVER_COUNTS\t3u,3u"}
            << QStringList();
        QTest::newRow("ISO-TP for a UDS client only")
            << Setup([](ProjectBuilder &p) {
                   p.line(0, 4)
                       .line(1, 4)
                       .general("udsclient_supported", "1")
                       .general("uds_client_cnt", "1,2");
                   p.general("uds_client_partial_download", "1");
               })
            << canopen
            << QStringList{"#define ISOTP_CLIENT_COUNTS\t1u,2u",
                           "#define ISOTP_SERVER_COUNTS\t2u,4u",
                           "#define UDS_CLIENT_SUPPORTED\t1u",
                           "#define UDS_CLIENT_CNT\t3",
                           "#define UDSCLIENT_EVENT_DYNAMIC_DATA_DOWNLOAD\t1u",
                           "#define ISOTP_EVENT_DYNAMIC_SERVER\t0u"}
            << QStringList{"#define ISOTP_EVENT_DYNAMIC_SSPLIT"};
        QTest::newRow("static UDS indication binding") << Setup([](ProjectBuilder &p) {
            p.line(0, 4).general("udsserver_supported", "1").general("uds_static_indication", "1");
            p.general("uds_fct_generic", "appGeneric").general("uds_fct_ioctrl", " ");
        }) << canopen << QStringList{"#define UDS_EVENT_STATIC_GENERIC_FCT\t1u"}
                                                       << QStringList{"#define UDS_EVENT_STATIC_IOCTRL"};
        QTest::newRow("bootloader keeps the buffer counts")
            << Setup([](ProjectBuilder &p) {
                   p.line(0, 4).general("uds_bl_setting", "1").general("receivebuffersize", "4");
               })
            << "CAN Kestrel"
            << QStringList{"#define CORE_REC_BUFFER_COUNTS\t4u", "#define CORE_TR_BUFFER_COUNTS\t5u"}
            << QStringList{"/* CAN RAW Defines */", "#define GEN_RAWCAN_INIT_STRUCT_VERSION"};
        QTest::newRow("raw CAN changed indication")
            << Setup([](ProjectBuilder &p) { p.line(0, 4).general("changedindication_cnt", "2"); })
            << "CAN Kestrel"
            << QStringList{"#define RAWCAN_CHANGED_INDICATION_CNT\t2u", "#define CORE_OBJECT_CHANGED\t1u"}
            << QStringList();

        QTest::newRow("EnergyBus security of kind 0 is no device")
            << Setup([](ProjectBuilder &p) {
                   canopenDevice(p);
                   p.store().setEnergyBusSetting("device_cnt", "2");
                   p.store().setEnergyBusSetting("device_1", "1 Battery");
                   p.store().setEnergyBusSetting("device_2", "2 Security Device/Extension");
                   p.store().setEnergyBusSetting("sec_2_kind", "0");
               })
            << "EnergyBus Kestrel Wizard"
            << QStringList{"#define EB_VIRTUAL_DEV_CNT\t1u", "#define EB_BATTERY_CNT\t1u",
                           "#define EB_NETWORK_SECURITY_CNT\t1u"}
            << QStringList{"#define EB_SECURITY_CNT"};
        QTest::newRow("EnergyBus security device")
            << Setup([](ProjectBuilder &p) {
                   canopenDevice(p);
                   p.store().setEnergyBusSetting("device_cnt", "1");
                   p.store().setEnergyBusSetting("device_1", "1 Security Device/Extension");
                   p.store().setEnergyBusSetting("sec_1_kind", "1");
                   p.store().setEnergyBusSetting("int_offset_sec", "5");
               })
            << "EnergyBus Kestrel Wizard"
            << QStringList{"#define EB_VIRTUAL_DEV_CNT\t1u", "#define EB_SECURITY_CNT\t1u",
                           "#define EB_LOCAL_SECURITY_SUBIDX_OFFS\t5u", "#define EB_NETWORK_SECURITY_CNT\t1u"}
            << QStringList();
        QTest::newRow("no EnergyBus block in other editions") << Setup([](ProjectBuilder &p) {
            canopenDevice(p);
            p.store().setEnergyBusSetting("device_cnt", "1");
        }) << canopen << QStringList() << QStringList{"/* EnergyBus Defines */"};

        QTest::newRow("all targets") << Setup([](ProjectBuilder &p) {
            canopenDevice(p);
            p.general("targetsettings_cnt", "3")
                .general("all_targets", "1")
                .general("targetsettings_active", "1");
            p.general("target_id", "BOARD_A").general("co_timer_interval", "1000");
            p.general("targetsettings_1_name", "Target 2").general("targetsettings_1_targetid", "BOARD_B");
            p.general("targetsettings_1_timer", "0x0").general("targetsettings_1_endianess", "1");
            p.general("targetsettings_1_defines", "#define BOARD_CLOCK 16");
            p.general("targetsettings_2_name", "Target 3").general("targetsettings_2_timer", "500");
            p.general("targetsettings_2_fullcan", "1").general("targetsettings_2_groupfilter", "1");
        }) << canopen
                                     << QStringList{"#define BOARD_B 1u",
                                                    "#ifdef BOARD_B",
                                                    "/* Target 2 BOARD_B */",
                                                    "#define CORE_TIMER_INTERVAL\t0x0",
                                                    "#define CORE_BIG_ENDIAN\t1u",
                                                    "/* target-specific defines */",
                                                    "#define BOARD_CLOCK 16",
                                                    "#endif /* BOARD_B*/ ",
                                                    "#ifdef TARGET_2",
                                                    "/* Target 3 TARGET_2 */",
                                                    "#define CORE_TIMER_INTERVAL\t500u",
                                                    "#define CORE_DRV_FILTER\t1u",
                                                    "#define CORE_DRV_GROUP_FILTER\t1u",
                                                    "#endif /* TARGET_2*/ "}
                                     << QStringList{"BOARD_A", "#define TARGET_2 1u", "1000u"};
        QTest::newRow("the active one of several targets") << Setup([](ProjectBuilder &p) {
            canopenDevice(p);
            p.general("targetsettings_cnt", "3").general("targetsettings_active", "2");
            p.general("targetsettings_1_targetid", "BOARD_B").general("targetsettings_2_targetid", "BOARD_C");
            p.general("targetsettings_2_name", "Target 3").general("targetsettings_2_endianess", "1");
        }) << canopen
                                                           << QStringList{"#define BOARD_C 1u",
                                                                          "#ifdef BOARD_C",
                                                                          "/* Target 3 BOARD_C */",
                                                                          "#define CORE_BIG_ENDIAN\t1u",
                                                                          "#endif /* BOARD_C*/ "}
                                                           << QStringList{"BOARD_B", "TARGET_0"};
        QTest::newRow("only the active one of several targets") << Setup([](ProjectBuilder &p) {
            canopenDevice(p);
            p.general("targetsettings_cnt", "2").general("targetsettings_active", "-1");
            p.general("targetsettings_1_targetid", "BOARD_B");
        }) << canopen << QStringList{"#define TARGET_0 1u", "#ifdef TARGET_0", "/*  TARGET_0 */"}
                                                                << QStringList{"BOARD_B"};
        QTest::newRow("single target, not active") << Setup([](ProjectBuilder &p) {
            canopenDevice(p);
            p.general("targetsettings_active", "-1").general("target_id", " XMC ").general("endian", "1");
            p.general("drv_filter", "1")
                .general("co_timer_interval", "fast")
                .general("co_srdo_interval", "0");
        }) << canopen
                                                   << QStringList{"#ifdef XMC",
                                                                  "/* XMC */",
                                                                  "#define CORE_BIG_ENDIAN\t1u",
                                                                  "#define CORE_DRV_FILTER\t1u",
                                                                  "#endif /* XMC*/ ",
                                                                  "#define CO_SRDO_TIMER_INTERVAL\t0u"}
                                                   << QStringList{"#define XMC 1u",
                                                                  "#define CORE_TIMER_INTERVAL"};

        QTest::newRow("user defines and no counter")
            << Setup([](ProjectBuilder &p) {
                   canopenDevice(p);
                   p.general("user_defines", "#define APP_A 1\n#define APP_B 2")
                       .general("overwrite_predef", "0, 1");
               })
            << canopen
            << QStringList{"/* application-specific defines as defined in Kestrel */", "#define APP_A 1",
                           "#define APP_B 2", "/* end of application-specific defines */",
                           "#define GEN_OVERWRITE_PREDEF_CONN_SET\t1u"}
            << QStringList{"GEN_GENERATION_COUNT"};
        QTest::newRow("user defines of one character")
            << Setup([](ProjectBuilder &p) {
                   canopenDevice(p);
                   p.general("user_defines", "x");
               })
            << canopen << QStringList()
            << QStringList{"/* application-specific defines as defined in Kestrel */"};
    }

    void macroLines()
    {
        QFETCH(Setup, setup);
        QFETCH(QString, application);
        QFETCH(QStringList, present);
        QFETCH(QStringList, absent);
        const ApplicationName name(application);
        ProjectBuilder builder;
        setup(builder);
        QTemporaryDir dir;
        const Generated generated = generate(builder.store(), dir.path(), QStringLiteral("rules"), false);
        const QString &text = generated.masked;
        const QStringList lines = text.split('\n');
        for (const QString &line : present)
            QVERIFY2(lines.contains(line), qPrintable(QStringLiteral("missing: ") + line + '\n' + text));
        for (const QString &part : absent)
            QVERIFY2(!text.contains(part), qPrintable(QStringLiteral("unexpected: ") + part + '\n' + text));
        QVERIFY(preprocesses(generated.path));
    }

    // Two blocks write the same macro from two settings, so two values can meet in one file; the
    // preprocessor then warns, and the user has to make the settings agree.
    void twoBlocksGiveTwoValues_data()
    {
        QTest::addColumn<Setup>("setup");
        QTest::addColumn<QString>("macro");
        QTest::addColumn<QStringList>("definitions");
        QTest::newRow("SDO server read events of the CANopen and the CiA 510 server")
            << Setup([](ProjectBuilder &p) {
                   p.line(0, 5).general("event_sdo_server_read", "2").j1939("cia510serversupport", "1");
               })
            << "CO_EVENT_DYNAMIC_SDO_SERVER_READ"
            << QStringList{"#define CO_EVENT_DYNAMIC_SDO_SERVER_READ\t2u",
                           "#define CO_EVENT_DYNAMIC_SDO_SERVER_READ\t1u"};
        QTest::newRow("ISO-TP server events of the event and the ISO-TP block")
            << Setup([](ProjectBuilder &p) {
                   p.line(0, 1).general("isotp_supported", "1").general("isotp_server_event", "3");
                   p.general("isotp_dyn_server_ind", "1");
               })
            << "ISOTP_EVENT_DYNAMIC_SERVER"
            << QStringList{"#define ISOTP_EVENT_DYNAMIC_SERVER\t3u",
                           "#define ISOTP_EVENT_DYNAMIC_SERVER\t1u"};
    }

    void twoBlocksGiveTwoValues()
    {
        QFETCH(Setup, setup);
        QFETCH(QString, macro);
        QFETCH(QStringList, definitions);
        ProjectBuilder builder;
        setup(builder);
        QTemporaryDir dir;
        const Generated generated = generate(builder.store(), dir.path(), QStringLiteral("twice"), false);
        const QStringList lines = generated.masked.split('\n');
        for (const QString &definition : definitions)
            QVERIFY2(lines.contains(definition), qPrintable(definition));
        const QString messages = preprocessorMessages(generated.path);
        QVERIFY2(messages.contains(macro) && messages.contains(QLatin1String("redefined")),
                 qPrintable(messages));
    }

    void generationCounterCountsOn_data()
    {
        QTest::addColumn<QByteArray>("oldFile");
        QTest::addColumn<QString>("expected");
        QTest::newRow("decimal") << QByteArray("#define GEN_GENERATION_COUNT\t41ul\n")
                                 << "#define GEN_GENERATION_COUNT\t42ul";
        QTest::newRow("hexadecimal") << QByteArray("/* x */\n#define GEN_GENERATION_COUNT\t0x10ul\n")
                                     << "#define GEN_GENERATION_COUNT\t17ul";
        QTest::newRow("first of two")
            << QByteArray("#define GEN_GENERATION_COUNT\t5ul\n#define GEN_GENERATION_COUNT\t9ul\n")
            << "#define GEN_GENERATION_COUNT\t6ul";
        QTest::newRow("unreadable") << QByteArray("#define GEN_GENERATION_COUNT\tmany\n")
                                    << "#define GEN_GENERATION_COUNT\t1ul";
        QTest::newRow("no old file") << QByteArray() << "#define GEN_GENERATION_COUNT\t1ul";
    }

    void generationCounterCountsOn()
    {
        QFETCH(QByteArray, oldFile);
        QFETCH(QString, expected);
        QTemporaryDir dir;
        if (!oldFile.isEmpty())
            QVERIFY(TestProjects::writeFile(dir.filePath(QStringLiteral("gen_define.h")), oldFile));
        ProjectBuilder builder;
        canopenDevice(builder);
        builder.general("generate_generation_counter", "1");
        const Generated generated = generate(builder.store(), dir.path(), QStringLiteral("counter"), false);
        QVERIFY(generated.masked.split('\n').contains(expected));
        QVERIFY(preprocesses(generated.path));
    }

    void userSectionSurvivesTwoRuns()
    {
        QTemporaryDir dir;
        const QByteArray section = "#define MY_FIRST 1\n\n#define MY_SECOND 2\n";
        QVERIFY(TestProjects::writeFile(dir.filePath(QStringLiteral("gen_define.h")),
                                        "old\n/* user-specific section: start */\n" + section +
                                            "/* user-specific section: end */\n#endif\n"));
        ProjectBuilder builder;
        canopenDevice(builder);
        builder.general("generate_generation_counter", "1");
        generate(builder.store(), dir.path(), QStringLiteral("user"), false);
        const Generated second = generate(builder.store(), dir.path(), QStringLiteral("user"), false);
        QVERIFY(second.masked.endsWith(
            QStringLiteral("/* user-specific section: start */\n") + QString::fromUtf8(section) +
            QStringLiteral("/* user-specific section: end */\n\n#endif /* GEN_DEFINE_H */\n")));
        QVERIFY(second.masked.contains(QLatin1String("\n#define GEN_GENERATION_COUNT\t2ul\n")));
        QVERIFY(preprocesses(second.path));
    }

    void progressFollowsTheBlocks_data()
    {
        QTest::addColumn<int>("lineType");
        QTest::addColumn<QList<int>>("expected");
        QTest::newRow("CANopen") << 1 << QList<int>{25, 50, 75, 100};
        QTest::newRow("J1939 alone") << 2 << QList<int>{25, 100};
        QTest::newRow("J1939 and raw CAN") << 7 << QList<int>{25, 50, 75, 100};
    }

    void progressFollowsTheBlocks()
    {
        QFETCH(int, lineType);
        QFETCH(QList<int>, expected);
        QTemporaryDir dir;
        ProjectBuilder builder;
        builder.line(0, lineType);
        const Generated generated = generate(builder.store(), dir.path(), QStringLiteral("progress"), false);
        QCOMPARE(generated.progress, expected);
        QVERIFY(!generated.failed);
        QVERIFY(preprocesses(generated.path));
    }

    void olderFamilyWritesTheUserDate()
    {
        QSettings settings(QCoreApplication::organizationName(),
                           qApp->property("AppNameWithVersion").toString());
        settings.setValue(QStringLiteral("General/date_time_format"), QStringLiteral("'day' yyyy-MM-dd"));
        settings.sync();
        ProjectBuilder builder;
        canopenDevice(builder);
        QTemporaryDir dir;
        const Generated generated = generate(builder.store(), dir.path(), QStringLiteral("dated"), true);
        settings.remove(QStringLiteral("General/date_time_format"));
        const QStringList lines = generated.masked.split('\n');
        QCOMPARE(lines.value(1),
                 QStringLiteral(" * Stack definitions for dated - generated by CANopen Kestrel 4.3.2"));
        QCOMPARE(lines.value(2),
                 QStringLiteral(" * day ") + QDate::currentDate().toString(QStringLiteral("yyyy-MM-dd")));
    }

    void olderFamilyNamesTheCoreMacros()
    {
        ProjectBuilder builder;
        builder.line(0, 7)
            .general("event_can", "2")
            .general("sorted_coblist", "1")
            .general("user_rx_cob", "1");
        builder.general("canfd_supported", "1").j1939("spnchanged", "1");
        QTemporaryDir dir;
        const Generated currentFile = generate(builder.store(), dir.path(), QStringLiteral("a"), false);
        QVERIFY(preprocesses(currentFile.path));
        const QStringList current = defineLines(currentFile.masked);
        const Generated olderFile = generate(builder.store(), dir.path(), QStringLiteral("a"), true);
        QVERIFY(preprocesses(olderFile.path));
        const QStringList older = defineLines(olderFile.masked);
        for (const QString &line : current) {
            if (line.startsWith(QLatin1String("#define CORE_OBJECT_CHANGED"))) {
                QVERIFY(!older.contains(line));
            } else if (line.startsWith(QLatin1String("#define CORE_"))) {
                QString renamed = line;
                renamed.replace(QLatin1String("#define CORE_"), QLatin1String("#define CO_"));
                QVERIFY2(older.contains(renamed), qPrintable(renamed));
            } else if (line.startsWith(QLatin1String("#define CAN_MULTI_LINE"))) {
                QVERIFY(older.contains(
                    QString(line).replace(QLatin1String("CAN_MULTI"), QLatin1String("CO_MULTI"))));
            } else {
                QVERIFY2(older.contains(line), qPrintable(line));
            }
        }
        QVERIFY(current.contains(QStringLiteral("#define CORE_EVENT_DYNAMIC_CAN\t2u")));
        QVERIFY(current.contains(QStringLiteral("#define CORE_COB_SORTED_LIST\t1u")));
        QCOMPARE(older.size(), current.size() - 1);
    }

    void noStoreIsAFailure()
    {
        QTemporaryDir dir;
        GenDefineGenerator generator;
        generator.setOutputPath(dir.path());
        generator.start();
        generator.waitForFinished();
        generator.waitForThread();
        QVERIFY(generator.hasFailed());
        QVERIFY(!generator.errorText().isEmpty());
    }
};

QTEST_MAIN(TestGenDefineRules)
#include "tst_gendefinerules.moc"
