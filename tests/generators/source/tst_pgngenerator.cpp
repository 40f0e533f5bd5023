#include "generators/source/pgncontext.h"
#include "generatorrun.h"
#include "generators/source/pgndialect.h"
#include "generators/source/pgngenerator.h"
#include "generators/source/pgngeneratorv4.h"
#include "generators/source/pgnmanagedvariables.h"
#include "generators/source/pgnmappingwriter.h"
#include "store/objectdatabase.h"
#include "support/projectbuilder.h"
#include "support/testprojects.h"
#include "tst_pgngeneratorfixture.h"

#include <QDir>
#include <QTemporaryDir>
#include <QtTest>

#include <functional>
#include <memory>

namespace {

using Setup = std::function<void(ProjectBuilder &)>;

std::unique_ptr<PGNGeneratorBase> generator(bool current)
{
    if (current)
        return std::make_unique<PGNGeneratorV4>();
    return std::make_unique<PGNGenerator>();
}

SPN spnRecord(quint32 pgn, quint8 direction, quint32 number, const QString &name, quint16 dataType,
              quint8 pos, quint16 bitPosition, quint8 implementation, const QString &varName = QString(),
              quint16 bitSize = 0)
{
    SPN data;
    data.pgnnumber = pgn;
    data.direction = direction;
    data.spnnumber = number;
    data.name = name;
    data.datatype = dataType;
    data.pos = pos;
    data.bitposition = bitPosition;
    data.implementation = implementation;
    data.varname = varName;
    data.bitsize = bitSize;
    return data;
}

DataElement elementRecord(quint32 id, quint8 direction, quint32 number, const QString &name, quint16 dataType,
                          quint16 bitPosition, quint8 implementation, const QString &varName,
                          const QString &defaultValue = QStringLiteral("0"))
{
    DataElement data;
    data.canid = id;
    data.direction = direction;
    data.number = number;
    data.pos = quint8(number);
    data.name = name;
    data.datatype = dataType;
    data.bitpos = bitPosition;
    data.implementation = implementation;
    data.varname = varName;
    data.defaultvalue = defaultValue;
    return data;
}

void oneLine(ProjectBuilder &project)
{
    project.line(0, 2)
        .general(QStringLiteral("new_init_structure"), QStringLiteral("1"))
        .general(QStringLiteral("init_static_variables"), QStringLiteral("1"))
        .j1939(QStringLiteral("startaddress"), QStringLiteral("0x80u"));
}

void bothDirections(ProjectBuilder &project)
{
    oneLine(project);
    project.pgn(0, 65262, Direction::Receive, QStringLiteral("Engine Temperature 1"));
    project.spn(0, spnRecord(65262, Direction::Receive, 110, QStringLiteral("Coolant"), 5, 0, 0, 0));
    project.pgn(0, 65262, Direction::Transmit, QStringLiteral("Engine Temperature 1"));
    project.spn(0, spnRecord(65262, Direction::Transmit, 110, QStringLiteral("Coolant"), 5, 0, 0, 0));
}

void safePgn(ProjectBuilder &project)
{
    oneLine(project);
    project.j1939(QStringLiteral("safetysupport"), QStringLiteral("1"));
    PGN dm1;
    dm1.number = 65226;
    dm1.direction = Direction::Transmit;
    dm1.name = QStringLiteral("DM1");
    dm1.priority = 6;
    dm1.issafe = true;
    project.pgn(0, dm1);
    project.spn(0, spnRecord(65226, Direction::Transmit, 1213, QStringLiteral("MIL"), 100, 0, 0, 0));
    project.pgn(0, 61444, Direction::Transmit, QStringLiteral("EEC1"));
    project.spn(0, spnRecord(61444, Direction::Transmit, 190, QStringLiteral("Engine Speed"), 6, 0, 24, 2,
                             QStringLiteral("engineSpeed")));
}

void strings(ProjectBuilder &project)
{
    oneLine(project);
    project.pgn(0, 65259, Direction::Transmit, QStringLiteral("Component Identification"));
    project.spn(0, spnRecord(65259, Direction::Transmit, 587, QStringLiteral("Model"), 120, 0, 0, 2,
                             QStringLiteral("model"), 32));
    project.spn(0, spnRecord(65259, Direction::Transmit, 588, QStringLiteral("Serial Number"), 121, 1, 32, 2,
                             QStringLiteral("app.serial"), 64));
    project.spn(0, spnRecord(65259, Direction::Transmit, 589, QStringLiteral("Offset"), 2, 2, 96, 0));
}

void udsServer(ProjectBuilder &project)
{
    oneLine(project);
    project.general(QStringLiteral("udsserver_supported"), QStringLiteral("1"))
        .general(QStringLiteral("udsserver_version"), QStringLiteral("1"))
        .general(QStringLiteral("uds_physical_request_id"), QStringLiteral("0x7e0"))
        .general(QStringLiteral("uds_physical_response_id"), QStringLiteral("0x7e8"))
        .general(QStringLiteral("uds_functional_request_id"), QStringLiteral("0x7df"));
}

void threeLinesShortAddressList(ProjectBuilder &project)
{
    project.line(0, 2).line(1, 2).line(2, 2).j1939(QStringLiteral("startaddress"), QStringLiteral("10,11"));
}

void forcedMultiLine(ProjectBuilder &project)
{
    oneLine(project);
    project.misc(QStringLiteral("generateML"), QStringLiteral("true"))
        .j1939(QStringLiteral("startaddress"), QStringLiteral("33"));
}

} // namespace

// gen_pgn.c of both generator families: whole files of small projects, the lines that single
// settings decide, and the address claiming group that a run writes into the project.
class TestPgnGenerator : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { TestProjects::setGeneratorApplication(); }

    void golden_data()
    {
        QTest::addColumn<QString>("project");
        QTest::addColumn<bool>("current");
        QTest::addColumn<QString>("golden");
        QTest::newRow("J1939 device, current family") << "j1939_device" << true << "j1939_device.c";
        QTest::newRow("J1939 device, older family") << "j1939_device" << false << "older_j1939_device.c";
        QTest::newRow("two lines with CAN FD, dynamic PGNs and run-time NAME")
            << "two_lines_fd" << true << "two_lines_fd.c";
    }

    void golden()
    {
        QFETCH(QString, project);
        QFETCH(bool, current);
        QFETCH(QString, golden);
        ProjectBuilder builder;
        PgnProjects::build(*PgnProjects::find(project), builder);
        QTemporaryDir dir;
        auto pgn = generator(current);
        QVERIFY(GeneratorRun::run(*pgn, builder.store(), dir.path(), project));
        const QString generated = TestProjects::readGenerated(dir.filePath(QStringLiteral("gen_pgn.c")));
        const QString expected = QString::fromUtf8(TestProjects::readFile(PgnProjects::goldenPath(golden)));
        QVERIFY2(!expected.isEmpty(), qPrintable(golden));
        QCOMPARE(generated.split('\n'), expected.split('\n'));
    }

    void lines_data()
    {
        QTest::addColumn<Setup>("setup");
        QTest::addColumn<bool>("current");
        QTest::addColumn<QStringList>("present");
        QTest::addColumn<QStringList>("absent");
        QTest::newRow("same PGN in both directions refers to the transmit slot")
            << Setup(bothDirections) << true
            << QStringList{"static UNSIGNED8 * rx_mapping_65262_data[] = {", "\t&mv_u8[8]",
                           "\t(UNSIGNED8)255u /* 65262:110 */,", "\t(UNSIGNED8)255u /* 65262:110 */"}
            << QStringList{"\t&mv_u8[0]"};
        QTest::newRow("safe PGNs keep their slots but get no tables")
            << Setup(safePgn) << true
            << QStringList{"\t(UNSIGNED8)3u /* 65226:1213 */",
                           "static CORE_CONST  J1939_PGN_CONFIG_T"
                           "\tjPgnTransmitConfig[J1939_TRANSMIT_PGN_CNT] = {",
                           "\t{ J1939_CSDO_COUNTS }",
                           ",",
                           "\t{ J1939_SDG_TRANS_COUNTS },",
                           "\t{ J1939_SDG_REC_COUNTS }};"}
            << QStringList{"/* PGN 65226/0xfeca DM1 */", "\t65226u, /* PGN number */ "};
        QTest::newRow("strings and a managed signal without a table")
            << Setup(strings) << true
            << QStringList{"\t{ 587, 0u, 32u, CORE_DTYPE_STRING_NULL }\t/* Model */,",
                           "\t{ 588, 32u, 64u, CORE_DTYPE_STRING_ASTERIKS }\t/* Serial Number */,",
                           "\t{ 589, 96u, 8u, CORE_DTYPE_I8 }\t/* Offset */",
                           "\t(UNSIGNED8 *)model,",
                           "\t(UNSIGNED8 *)app.serial,",
                           "\t(UNSIGNED8 *)&mv_i8[0]"}
            << QStringList{"static INTEGER8\tmv_i8[1];"};
        QTest::newRow("older family: pointers in the mapping rows")
            << Setup(strings) << false
            << QStringList{"\t{ (UNSIGNED8 *)model, 32u, 587u, CORE_DTYPE_STRING_NULL }\t/* Model */,",
                           "\t{ (UNSIGNED8 *)&mv_i8[0], 8u, 589u, CORE_DTYPE_I8 }\t/* Offset */"}
            << QStringList{"static UNSIGNED8 * tx_mapping_65259_data[] = {"};
        QTest::newRow("UDS server, current family")
            << Setup(udsServer) << true
            << QStringList{"#include <core_isotp.h>",
                           "#include <uds_uds.h>",
                           "static CORE_CONST UDS_SERVICE_INIT_VAL_T udsServiceInitVars = {",
                           "    retVal = udsStackInit_common(&udsServiceInitVars);",
                           "    retVal = udsStackInit_line(&udsLine0);",
                           "\t0x80u "}
            << QStringList{"#include <iso_tp.h>"};
        QTest::newRow("UDS server, older family")
            << Setup(udsServer) << false
            << QStringList{"#include <iso_tp.h>", "#include <uds_uds.h>",
                           "\tretVal = udsStackInit_line(&udsLine0);",
                           "\tretVal = commonStackInit(&commonInitVars);"}
            << QStringList{"#include <core_isotp.h>", "\tCORE_HANDLE_WATCHDOG"};
        QTest::newRow("start addresses for fewer lines than the project has")
            << Setup(threeLinesShortAddressList) << true
            << QStringList{"J1939_CONFIG_T  j1939Config_l2 = {", "\t10u ", "\t11u ", "\t254 "}
            << QStringList{"/*  TX PGN definitions */", "/*  RX PGN definitions */"};
        QTest::newRow("forced multi-line form with one line")
            << Setup(forcedMultiLine) << true
            << QStringList{"static UNSIGNED8 * l0_tx_mapping_60928_data[] = {",
                           "\t(UNSIGNED8)0u /* 0-60928:2840 */,", "J1939_CONFIG_T  j1939Config_l0 = {",
                           "\t33 ", "\tretVal = j1939StackInit_line(0, &j1939Config_l0);"}
            << QStringList{"J1939_CONFIG_T  j1939Config = {"};
    }

    void lines()
    {
        QFETCH(Setup, setup);
        QFETCH(bool, current);
        QFETCH(QStringList, present);
        QFETCH(QStringList, absent);
        ProjectBuilder builder;
        setup(builder);
        QTemporaryDir dir;
        auto pgn = generator(current);
        QVERIFY(GeneratorRun::run(*pgn, builder.store(), dir.path(), QStringLiteral("lines")));
        const QStringList generated =
            TestProjects::readGenerated(dir.filePath(QStringLiteral("gen_pgn.c"))).split('\n');
        for (const QString &line : present)
            QVERIFY2(generated.contains(line), qPrintable(line));
        for (const QString &line : absent)
            QVERIFY2(!generated.contains(line), qPrintable(line));
    }

    void sameSignalBothDirectionsTakesTwoSlots()
    {
        ProjectBuilder builder;
        bothDirections(builder);
        QTemporaryDir dir;
        PGNGeneratorV4 pgn;
        QVERIFY(GeneratorRun::run(pgn, builder.store(), dir.path(), QStringLiteral("both")));
        const QString text = TestProjects::readGenerated(dir.filePath(QStringLiteral("gen_pgn.c")));
        QCOMPARE(text.count(QStringLiteral("\t&mv_u8[8]\n")), 2);
        QVERIFY(text.contains(QStringLiteral("static UNSIGNED8\tmv_u8[9]= {\n")));
    }

    void noStdlibInclude()
    {
        ProjectBuilder builder;
        oneLine(builder);
        QTemporaryDir dir;
        QVERIFY(TestProjects::writeFile(dir.filePath(QStringLiteral("no_stdlib_include.txt")), QByteArray()));
        PGNGeneratorV4 pgn;
        QVERIFY(GeneratorRun::run(pgn, builder.store(), dir.path(), QStringLiteral("nostdlib")));
        const QString text = TestProjects::readGenerated(dir.filePath(QStringLiteral("gen_pgn.c")));
        QVERIFY(text.contains(QStringLiteral(" */\n\n#include <gen_define.h>\n#include <j1939_j1939.h>\n")));
        QVERIFY(!text.contains(QStringLiteral("#include <stdlib.h>")));
    }

    void declareIdentify_data()
    {
        QTest::addColumn<int>("lineType");
        QTest::addColumn<int>("transmitPgns");
        QTest::addColumn<bool>("declared");
        QTest::newRow("J1939 line without PGNs") << 2 << 0 << true;
        QTest::newRow("J1939 and raw CAN line") << 7 << 0 << true;
        QTest::newRow("raw CAN line without PGNs") << 4 << 0 << false;
        QTest::newRow("CANopen line with one transmit PGN") << 1 << 1 << false;
        QTest::newRow("CANopen line with two transmit PGNs") << 1 << 2 << true;
    }

    void declareIdentify()
    {
        QFETCH(int, lineType);
        QFETCH(int, transmitPgns);
        QFETCH(bool, declared);
        ProjectBuilder builder;
        builder.line(0, 2).line(1, lineType);
        builder.j1939(QStringLiteral("identitynumber"), QStringLiteral("0x100,0x200"))
            .j1939(QStringLiteral("manufacturercode"), QStringLiteral("77"))
            .j1939(QStringLiteral("ecuinstance"), QStringLiteral("1,2"))
            .j1939(QStringLiteral("functioninstance"), QStringLiteral("5,6"))
            .j1939(QStringLiteral("function"), QStringLiteral("0x81"))
            .j1939(QStringLiteral("vehiclesystem"), QStringLiteral("9"))
            .j1939(QStringLiteral("vehicleinstance"), QStringLiteral("3"))
            .j1939(QStringLiteral("industrygroup"), QStringLiteral("4"))
            .j1939(QStringLiteral("addresscapable"), QStringLiteral("0x1"));
        for (int i = 0; i < transmitPgns; ++i)
            builder.pgn(1, 65000 + quint32(i), Direction::Transmit, QStringLiteral("Proprietary"));
        ObjectDataBase &store = builder.store();
        PGNGeneratorV4 pgn;
        pgn.setDatabase(&store);
        pgn.declareIdentify(false);

        QCOMPARE(store.pgnExists(1, 60928, Direction::Transmit), declared);
        QVERIFY(!store.pgnExists(1, 60928, Direction::Receive));
        if (!declared)
            return;
        PGN group;
        QVERIFY(store.getPGN(1, 60928, Direction::Transmit, group));
        QCOMPARE(group.name, QStringLiteral("Address Claiming"));
        QCOMPARE(group.desc, QStringLiteral("This PGN is used to send the Address Claiming."));
        QCOMPARE(group.priority, quint8(6));
        QCOMPARE(group.cycletime_ms, quint16(0));
        QCOMPARE(group.inhibittime_ms, quint16(250));
        QCOMPARE(store.getSPNs(1, 60928, Direction::Transmit),
                 (QList<quint32>{2837, 2838, 2840, 2839, 2841, 2842, 2843, 2846, 2844}));
        struct Expected
        {
            quint32 spn;
            const char *name;
            quint16 datatype;
            quint16 bitposition;
            const char *value;
        };
        const Expected fields[] = {
            {2837, "Identity Number", 119, 0, "0x200"},
            {2838, "Manufacturer Code", 108, 21, "77"},
            {2840, "ECU Instance", 101, 32, "2"},
            {2839, "Function Instance", 103, 35, "6"},
            {2841, "Function", 5, 40, "0x81"},
            {2842, "Vehicle System", 105, 49, "9"},
            {2843, "Vehicle System Instance", 102, 56, "3"},
            {2846, "Industry Group", 101, 60, "4"},
            {2844, "Addr Claiming Supported", 1, 63, "1"},
        };
        for (const auto &field : fields) {
            SPN spn;
            QVERIFY(store.getSPN(1, 60928, Direction::Transmit, field.spn, spn));
            QCOMPARE(spn.name, QLatin1String(field.name));
            QCOMPARE(spn.datatype, field.datatype);
            QCOMPARE(spn.bitposition, field.bitposition);
            QCOMPARE(spn.defaultvalue, QLatin1String(field.value));
            QCOMPARE(spn.implementation, quint8(0));
            QCOMPARE(spn.pos, quint8(0));
        }
    }

    void startLeavesAddressClaimInStore()
    {
        ProjectBuilder builder;
        builder.line(0, 2);
        ObjectDataBase &store = builder.store();
        QSignalSpy changes(&store, &ObjectDataBase::updateNotify);
        QTemporaryDir dir;
        PGNGeneratorV4 pgn;
        QVERIFY(GeneratorRun::run(pgn, store, dir.path(), QStringLiteral("start")));
        QVERIFY(store.pgnExists(0, 60928, Direction::Transmit));
        QCOMPARE(store.getSPNs(0, 60928, Direction::Transmit).size(), 9);
        QCOMPARE(changes.count(), 0);
        QVERIFY(!store.isBlocked());
        // A second run finds the group in place and writes the same file.
        const QString first = TestProjects::readGenerated(dir.filePath(QStringLiteral("gen_pgn.c")));
        PGNGeneratorV4 again;
        QVERIFY(GeneratorRun::run(again, store, dir.path(), QStringLiteral("start")));
        QCOMPARE(TestProjects::readGenerated(dir.filePath(QStringLiteral("gen_pgn.c"))), first);
    }

    void rawCanBlocks_data()
    {
        QTest::addColumn<bool>("current");
        QTest::addColumn<QString>("mapping");
        QTest::newRow("current family")
            << true
            << QStringLiteral("/* canid 256/0x0100 Sensor Status */\n"
                              "static  CORE_CONST CORE_MAPPING_T rx_mapping_256[] = {\n"
                              "\t{ &sensorTemp, 0, 16u, CORE_DTYPE_I16 }\t/* Temperature */,\n"
                              "\t{ &mv_i8[0], 16, 8u, CORE_DTYPE_I8 }\t/* Offset */,\n"
                              "\t{ &mv_u32[0], 24, 24u, CORE_DTYPE_U32 }\n"
                              "};\n"
                              "/* canid 2566848513/0x98ff0001 Command */\n"
                              "static  CORE_CONST CORE_MAPPING_T tx_mapping_2566848513[] = {\n"
                              "\t{ app.buffer, 0, 0u, CORE_DTYPE_OS }\t/* Buffer */\n"
                              "};\n");
        QTest::newRow("older family")
            << false
            << QStringLiteral("/* canid 256/0x0100 Sensor Status */\n"
                              "static  CO_CONST CORE_MAPPING_T rx_mapping_256[] = {\n"
                              "\t{ &sensorTemp, 16u, CORE_DTYPE_I16 }\t/* Temperature */,\n"
                              "\t{ &mv_i8[0], 8u, CORE_DTYPE_I8 }\t/* Offset */,\n"
                              "\t{ &mv_u32[0], 24u, CORE_DTYPE_U32 }\n"
                              "};\n"
                              "/* canid 2566848513/0x98ff0001 Command */\n"
                              "static  CO_CONST CORE_MAPPING_T tx_mapping_2566848513[] = {\n"
                              "\t{ app.buffer, 0u, CORE_DTYPE_OS }\t/* Buffer */\n"
                              "};\n");
    }

    // The multi-protocol source writes the raw CAN mapping and managed values through the same writers.
    void rawCanBlocks()
    {
        QFETCH(bool, current);
        QFETCH(QString, mapping);
        ProjectBuilder builder;
        builder.line(0, 7).general(QStringLiteral("init_static_variables"), QStringLiteral("1"));
        builder.canId(0, 0x100, Direction::Receive, QStringLiteral("Sensor Status"));
        builder.dataElement(0, elementRecord(0x100, Direction::Receive, 0, QStringLiteral("Temperature"), 3,
                                             0, 2, QStringLiteral("sensorTemp")));
        builder.dataElement(0, elementRecord(0x100, Direction::Receive, 1, QStringLiteral("Offset"), 2, 16, 0,
                                             QString(), QStringLiteral("-5")));
        builder.dataElement(0, elementRecord(0x100, Direction::Receive, 2, QString(), 22, 24, 0, QString(),
                                             QStringLiteral("0x10")));
        builder.canId(0, 0x98FF0001, Direction::Transmit, QStringLiteral("Command"));
        builder.dataElement(0, elementRecord(0x98FF0001, Direction::Transmit, 0, QStringLiteral("Buffer"), 10,
                                             0, 2, QStringLiteral("app.buffer")));
        builder.canId(0, 0x300, Direction::Transmit, QStringLiteral("Empty"));
        const PgnDialect &dialect = current ? PGNGeneratorV4::pgnDialect() : PGNGenerator::pgnDialect();
        const PgnContext context(builder.store(), dialect, false);
        PgnManagedVariables variables(context);
        variables.collect();
        QCOMPARE(PgnMappingWriter(context, variables).rawCanTables(0), mapping);
        QCOMPARE(variables.definitions(), QStringLiteral("\n/* definition of managed variables */\n"
                                                         "static INTEGER8\tmv_i8[1]= {\n"
                                                         "\t(INTEGER8)-5u /* 256:1 */\n"
                                                         "};\n"
                                                         "static UNSIGNED32\tmv_u32[1]= {\n"
                                                         "\t(UNSIGNED32)16UL /* 256:2 */\n"
                                                         "};\n"));
        QVERIFY(variables.hasTable(PgnDataTypes::I8));
        QVERIFY(!variables.hasTable(PgnDataTypes::U8));
    }
};

QTEST_MAIN(TestPgnGenerator)
#include "tst_pgngenerator.moc"
