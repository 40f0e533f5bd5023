#include "generation/modelchecker.h"
#include "generation/modelcheckpdorules.h"
#include "support/projectbuilder.h"
#include "tst_modelcheckerfixture.h"

#include <QDir>
#include <QtTest>

using namespace ModelCheckFixture;

namespace {

Setup granularity(const QString &value)
{
    return [value](ProjectBuilder &project) { project.description(0, QStringLiteral("Granularity"), value); };
}

Setup removed(quint16 index)
{
    return [index](ProjectBuilder &project) { project.store().removeIndex(0, index); };
}

Setup variable(quint16 index, const QString &name, quint16 type, const QString &access, const QString &value)
{
    return [=](ProjectBuilder &project) { project.var(0, index, name, type, access, value); };
}

Setup objectOf(quint16 index, const QString &name, quint32 objectType, const QList<SUBINDEX_DATA_T> &entries)
{
    return [=](ProjectBuilder &project) { object(project, index, name, objectType, entries); };
}

// Changes one field of a stored sub-index.
Setup changed(quint16 index, quint8 subIndex, const std::function<void(SUBINDEX_DATA_T &)> &change)
{
    return [=](ProjectBuilder &project) {
        SUBINDEX_DATA_T data;
        project.store().getSubIndex(0, index, subIndex, data);
        change(data);
        project.sub(0, index, subIndex, data);
    };
}

Setup pdoOf(quint16 communication, const QString &cobId, const QString &access, const QStringList &entries,
            const QString &count = QString())
{
    return [=](ProjectBuilder &project) { pdo(project, communication, cobId, access, entries, count); };
}

Setup mappable()
{
    return [](ProjectBuilder &project) { mappableObject(project); };
}

// A RECORD with sub-index 0 counting UNSIGNED32 entries of the given values.
QList<SUBINDEX_DATA_T> counted(const QStringList &values, const QString &access = QStringLiteral("rw"))
{
    QList<SUBINDEX_DATA_T> entries{
        entry(QStringLiteral("Highest sub-index"), 5, QStringLiteral("ro"), QString::number(values.size()))};
    for (int number = 0; number < values.size(); ++number)
        entries << entry(QStringLiteral("Entry %1").arg(number + 1), 7, access, values.at(number));
    return entries;
}

SUBINDEX_DATA_T withLimits(quint16 type, const QString &low, const QString &high, const QString &value)
{
    SUBINDEX_DATA_T data = entry(QStringLiteral("Limited"), type, QStringLiteral("rw"), value);
    data.limitineds = true;
    data.lowlimit = low;
    data.uplimit = high;
    return data;
}

SUBINDEX_DATA_T applicationVariable(const QString &name, const QString &variable)
{
    SUBINDEX_DATA_T data = entry(name, 6, QStringLiteral("rw"), QStringLiteral("0"));
    data.implementation = 2;
    data.varname = variable;
    return data;
}

const QString enablePredefined =
    QStringLiteral("Enable CANopen Stack Settings -> Overwrite pre-defined connection set and call "
                   "userOverwriteCobIdSettings() to use these COB-ID settings.\n\n");
const QString dynamicWithGranularity0 = QStringLiteral(
    "<strong>Error: </strong>Dynamic mapping cannot be used with a granularity of 0. Correct device "
    "description settings or PDO mapping.");
const QString bitwiseNotEnabled =
    QStringLiteral("<strong>Error: </strong>Bitwise mapping not enabled in general "
                   "settings. Correct general settings or PDO mapping.");

QString notPredefined(const QString &index)
{
    return QStringLiteral(
               "Warning: Object 0x%1-0x01: The COB-ID for this PDO does not follow the pre-defined "
               "connection set.")
        .arg(index);
}

} // namespace

// The CANopen rules of a line, each triggered by a small change of a clean project, and the corrections.
class TestModelCheckerCANopen : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase()
    {
        setApplication();
        stack = stackFolder();
    }

    void cleanupTestCase() { QDir(stack).removeRecursively(); }

    void init() { userSettings().clear(); }

    void lineRules_data()
    {
        columns();
        const QList<SUBINDEX_DATA_T> deviceTypeArray{entry("Highest sub-index", 5, "ro", "1"),
                                                     entry("Device type", 7, "ro", "0")};
        const Setup fdDeviceType = steps({general("canfd_supported", "1"), removed(0x1000),
                                          objectOf(0x1000, "Device Type", 8, deviceTypeArray)});

        QTest::newRow("clean line") << Setup(general("co_timer_interval", "10000")) << QStringList() << 0;
        QTest::newRow("value that is no number")
            << variable(0x2000, "Speed", 5, "rw", "fast")
            << QStringList{error("Value conversion failed with Object 0x2000-0x0.")} << 1;
        QTest::newRow("values that are no numbers, told per sub-index")
            << objectOf(0x2000, "Speeds", 8, counted({"fast", "0x10", "slow"}))
            << QStringList{error("Value conversion failed with Object 0x2000-0x1."),
                           error("Value conversion failed with Object 0x2000-0x3.")}
            << 2;
        QTest::newRow("hexadecimal value")
            << variable(0x2000, "Speed", 5, "rw", "0x1F") << QStringList() << 0;

        const QString noNodeId =
            error("CANopen basic Stack Settings: No Node-Id specified for line 0: Specify a number between 1 "
                  "and 127, "
                  "or 255 for LSS or a function name like e.g. readDipSwitch in the line below.");
        QTest::newRow("no node-ID") << general("co_node_id", "") << QStringList{noNodeId} << 1;
        QTest::newRow("node-ID list without this line's element")
            << general("co_node_id", " ,12") << QStringList{noNodeId} << 1;
        QTest::newRow("node-ID function instead of a number")
            << steps({general("co_node_id", ""), general("co_node_id_fct", "readDipSwitch")}) << QStringList()
            << 0;
        QTest::newRow("node-ID function with parentheses")
            << general("co_node_id_fct", "readDipSwitch()")
            << QStringList{error("CANopen basic Stack Settings: The name of the NodeId function may not "
                                 "include a (."),
                           error("CANopen basic Stack Settings: The name of the NodeId function may not "
                                 "include a ).")}
            << 2;
        QTest::newRow("receive buffer size missing")
            << general("receivebuffersize", "")
            << QStringList{error(
                   "Common Settings: CAN receive buffer size must be specified individually for each "
                   "line.")}
            << 1;
        QTest::newRow("transmit buffer size no number")
            << general("transmitbuffersize", "ten")
            << QStringList{error(
                   "Common Settings: CAN transmit buffer size must be specified individually for each "
                   "line.")}
            << 1;
        QTest::newRow("buffer sizes with blanks")
            << steps({general("receivebuffersize", " 10 ,5")}) << QStringList() << 0;
        QTest::newRow("NMT master on line 0 without a master/slave list")
            << steps({general("nmtmaster", "2"), general("co_ml_ms", "1")}) << QStringList() << 0;

        QTest::newRow("FD device type that is a VARIABLE")
            << general("canfd_supported", "1")
            << QStringList{error("Object 0x1000 (Device Type) must be an ARRAY according to the CANopen FD "
                                 "specification.")}
            << 1;
        QTest::newRow("FD device type that is an ARRAY") << fdDeviceType << QStringList() << 0;
        QTest::newRow("classic device type that is an ARRAY")
            << steps({removed(0x1000), objectOf(0x1000, "Device Type", 8, deviceTypeArray)})
            << QStringList{error("Object 0x1000 (Device Type) must be a VARIABLE according to the CANopen "
                                 "specification.")}
            << 1;

        QTest::newRow("device type missing")
            << removed(0x1000)
            << QStringList{error(
                   "Object 0x1000 (Device Type) does not exist, but it is mandatory according to "
                   "CANopen specification.")}
            << 1;
        QTest::newRow("error register missing")
            << removed(0x1001)
            << QStringList{error(
                   "Object 0x1001 (Error Register) does not exist, but it is mandatory according to "
                   "CANopen specification.")}
            << 1;
        QTest::newRow("neither heartbeat nor guard time")
            << removed(0x1017)
            << QStringList{error(
                   "Object 0x1017 (Producer Heartbeat) and 0x100C (Guard Time) do not exist, but one "
                   "of them is mandatory.")}
            << 1;
        QTest::newRow("guard time instead of heartbeat")
            << steps({removed(0x1017), variable(0x100C, "Guard Time", 6, "rw", "0")}) << QStringList() << 0;

        const Setup slaveAssignment = objectOf(0x1F81, "Slave assignment", 8, counted({"0", "0", "0"}));
        QTest::newRow("more slaves than slave assignments")
            << steps({slaveAssignment, general("max_slave_assignment", " 4 ")})
            << QStringList{error(
                   "Object 0x1f81: Value of 'max slave Assigment count' may not exceed number of "
                   "subindices of object 0x1f81.")}
            << 1;
        QTest::newRow("as many slaves as slave assignments")
            << steps({slaveAssignment, general("max_slave_assignment", "3")}) << QStringList() << 0;
        QTest::newRow("no slave count")
            << steps({slaveAssignment, general("max_slave_assignment", "0")}) << QStringList() << 0;
        QTest::newRow("slave assignment with a gap")
            << steps({objectOf(0x1F81, "Slave assignment", 8, counted({"0", "0", "0", "0"})),
                      [](ProjectBuilder &project) { project.store().removeSubIndex(0, 0x1F81, 3); }})
            << QStringList{error("Object 0x1f81 may not have gaps.")} << 1;
        QTest::newRow("consumer heartbeat without entries")
            << objectOf(0x1016, "Consumer heartbeat time", 8, counted({}))
            << QStringList{error("Object 0x1016 does not contain any sub-indices.")} << 1;

        QTest::newRow("SYNC producer without cycle period")
            << variable(0x1005, "COB-ID SYNC", 7, "rw", "0x40000080")
            << QStringList{error(
                   "Object 0x1006 must be present, if SYNC producer bit is set in object 0x1005.")}
            << 1;
        QTest::newRow("SYNC producer with cycle period")
            << steps({variable(0x1005, "COB-ID SYNC", 7, "rw", "0x40000080"),
                      variable(0x1006, "Communication cycle period", 7, "rw", "0")})
            << QStringList() << 0;
        QTest::newRow("SYNC consumer")
            << variable(0x1005, "COB-ID SYNC", 7, "rw", "0x80") << QStringList() << 0;

        QTest::newRow("USDO server without connections")
            << steps({fdDeviceType, general("usdo_server_enabled", "1"), general("usdo_server_cnt", "0")})
            << QStringList{error("Number of USDO server connections must be at least 1.")} << 1;
        QTest::newRow("USDO server with a connection")
            << steps({fdDeviceType, general("usdo_server_enabled", "1"), general("usdo_server_cnt", "1")})
            << QStringList() << 0;
        QTest::newRow("USDO server on classic CAN")
            << steps({general("usdo_server_enabled", "1"), general("usdo_server_cnt", "0")}) << QStringList()
            << 0;

        QTest::newRow("store command the stack does not handle")
            << objectOf(0x1010, "Store parameters", 8, counted({"1", "2"}))
            << QStringList{error("Object 0x1010:2 only default values between 0 and 1 are supported. Enable "
                                 "CO_AUTO_STORE_HANDLED_BY_APPLICATION to support other values")}
            << 1;
        QTest::newRow("store command handled by the application")
            << steps({objectOf(0x1011, "Restore default parameters", 8, counted({"3", "1"})),
                      general("1010autostore_by_application", "1")})
            << QStringList() << 0;
        QTest::newRow("store command beyond what the application handles")
            << steps({objectOf(0x1011, "Restore default parameters", 8, counted({"4"})),
                      general("1010autostore_by_application", "1")})
            << QStringList{error("Object 0x1011:1 only default values between 0 and 3 are supported.")} << 1;

        const QString inhibitTime = QStringLiteral(
            "Warning: Object 0x102a: The object 0x102A (NMT inhibit time) is highly recommended for "
            "masters. It may be added via 'Add Communication Service'.");
        QTest::newRow("master without NMT inhibit time")
            << general("nmtmaster", "1") << QStringList{inhibitTime} << 0;
        QTest::newRow("master with NMT inhibit time")
            << steps({general("nmtmaster", "1"), variable(0x102A, "NMT inhibit time", 6, "rw", "0")})
            << QStringList() << 0;

        const Setup identity =
            objectOf(0x1018, "Identity", 9,
                     {entry("Highest sub-index", 5, "ro", "4"), entry("Vendor-ID", 7, "ro", "0x123"),
                      entry("Product code", 7, "ro", "1"), entry("Revision number", 7, "ro", "1"),
                      entry("Serial number", 7, "ro", "0")});
        QTest::newRow("complete identity") << identity << QStringList() << 0;
        QTest::newRow("identity without vendor-ID")
            << steps({identity,
                      changed(0x1018, 1, [](SUBINDEX_DATA_T &data) { data.defaultvalue = QString(); })})
            << QStringList{error("Object 0x1018-0x01: The value of subindex 1 (vendor-ID) is empty.")} << 1;
        QTest::newRow("identity with the evaluation vendor-ID")
            << steps({identity,
                      changed(0x1018, 1, [](SUBINDEX_DATA_T &data) { data.defaultvalue = "0x000007F3"; })})
            << QStringList{"<strong>Warning: Object 0x1018-0x01: The vendor-ID 0x7F3 (vorlan field systems "
                           "GmbH) may "
                           "not be used for production. </strong>"}
            << 0;
        QTest::newRow("identity without product code and revision")
            << steps({identity,
                      changed(0x1018, 2, [](SUBINDEX_DATA_T &data) { data.defaultvalue = QString(); }),
                      changed(0x1018, 3, [](SUBINDEX_DATA_T &data) { data.defaultvalue = QString(); })})
            << QStringList{error("Object 0x1018-0x02: The value of subindex 2 (product code) is empty."),
                           error("Object 0x1018-0x03: The value of subindex 3 (revision number) is empty.")}
            << 2;
        QTest::newRow("constant serial number")
            << steps({identity, changed(0x1018, 4, [](SUBINDEX_DATA_T &data) { data.implementation = 1; })})
            << QStringList{"<strong>Warning</strong>: Object 0x1018: The implementation type of subindex 4 "
                           "(serial "
                           "number) is 'Managed Const'. This is not useful in most cases."}
            << 0;

        const Setup errorHistory = objectOf(0x1003, "Pre-defined error field", 8,
                                            {entry("Number of errors", 5, "rw", "0"),
                                             entry("Error 1", 7, "ro", "0"), entry("Error 2", 7, "ro", "0")});
        QTest::newRow("error history without EMCY producer")
            << errorHistory
            << QStringList{error(
                   "Object 0x1003: This object can only be used, if object 0x1014 exists as well.")}
            << 1;
        QTest::newRow("error history counting at run time")
            << steps({errorHistory, variable(0x1014, "COB-ID EMCY", 7, "rw", "$NODEID+0x80")})
            << QStringList() << 0;
        QTest::newRow("EMCY consumer of COB-ID 0")
            << objectOf(0x1028, "Emergency consumer", 8, counted({"0x81", "0"}))
            << QStringList{error("Object 0x1028-2: The value of this sub index may not be 0x00000000.")} << 1;

        QTest::newRow("static PDO indication with one function")
            << steps({general("use_core_headers", "V3"), general("fct_pdo", "pdoInd")})
            << QStringList{error("Both static RPDO and TPDO event indication functions have to be defined.")}
            << 1;
        QTest::newRow("static PDO indication with both functions")
            << steps({general("use_core_headers", "V3"), general("fct_pdo", "pdoInd"),
                      general("fct_pdo_receive", "pdoRecInd")})
            << QStringList() << 0;
        QTest::newRow("one static PDO function with the current stack")
            << general("fct_pdo", "pdoInd") << QStringList() << 0;

        QTest::newRow("EMCY routing without consumers")
            << steps({general("emcy_routing", "1"), variable(0x1014, "COB-ID EMCY", 7, "rw", "$NODEID+0x80")})
            << QStringList{error(
                   "Both EMCY producer objects and EMCY consumer objects must be present to use EMCY "
                   "routing.")}
            << 1;
        QTest::newRow("EMCY routing with producers and consumers")
            << steps({general("emcy_routing", "1"), variable(0x1014, "COB-ID EMCY", 7, "rw", "$NODEID+0x80"),
                      objectOf(0x1028, "Emergency consumer", 8, counted({"0x81"}))})
            << QStringList() << 0;
    }

    void lineRules() { runRow(); }

    // A setting of a later line: a list of the lines is asked for.
    void masterSlaveListOfLaterLines_data()
    {
        QTest::addColumn<QString>("masterSlave");
        QTest::addColumn<QStringList>("expected");
        QTest::newRow("single value")
            << "1"
            << QStringList{
                   error("General Settings: The ML master/slave settings size must be specified individually "
                         "for each line. (e.g 0,1)")};
        QTest::newRow("list") << "0,1" << QStringList();
    }

    void masterSlaveListOfLaterLines()
    {
        QFETCH(QString, masterSlave);
        QFETCH(QStringList, expected);
        ProjectBuilder project;
        cleanProject(project, stack, {1, 1});
        project.general(QStringLiteral("nmtmaster"), QStringLiteral("0,2"))
            .general(QStringLiteral("co_ml_ms"), masterSlave);
        QCOMPARE(checkCANopen(project, 1).messages, expected);
    }

    void objectRules_data()
    {
        columns();
        const auto record = [](const QList<SUBINDEX_DATA_T> &entries) {
            return objectOf(0x2000, QStringLiteral("Values"), 9, entries);
        };
        const SUBINDEX_DATA_T highest = entry("Highest sub-index", 5, "ro", "1");
        const SUBINDEX_DATA_T value = entry("Value", 6, "rw", "0");
        const auto modified = [](SUBINDEX_DATA_T data, const std::function<void(SUBINDEX_DATA_T &)> &change) {
            change(data);
            return data;
        };

        QTest::newRow("ARRAY without sub-indices")
            << objectOf(0x2000, "Empty", 8, {})
            << QStringList{error("Object 0x2000: This array does not contain any sub-indices")} << 1;
        QTest::newRow("sub-index 0 without its default flag")
            << record({modified(highest, [](SUBINDEX_DATA_T &data) { data.defaultineds = false; }), value})
            << QStringList{error("Object 0x2000-0:The 'default value' flag must be set for this subindex."),
                           "Warning: Object 0x2000-0:The defaultvalue of this subindex should be written "
                           "into the "
                           "EDS/XDD file."}
            << 1;
        QTest::newRow("sub-index 0 kept out of the device description")
            << record(
                   {modified(highest, [](SUBINDEX_DATA_T &data) { data.writedefaulttoeds = false; }), value})
            << QStringList{"Warning: Object 0x2000-0:The defaultvalue of this subindex should be written "
                           "into the "
                           "EDS/XDD file."}
            << 0;
        QTest::newRow("object without a name")
            << steps({variable(0x2000, "Speed", 6, "rw", "0"),
                      [](ProjectBuilder &project) { project.store().setIndexName(0, 0x2000, QString()); }})
            << QStringList{error("Object 0x2000: The object does not have a name. (Required for EDS)")} << 1;
        QTest::newRow("VARIABLE with two sub-indices")
            << steps({variable(0x2000, "Speed", 6, "rw", "0"),
                      [value](ProjectBuilder &project) { project.sub(0, 0x2000, 1, value); }})
            << QStringList{error("Object 0x2000: The object is a VARIABLE but has multiple subindices.")}
            << 1;
        QTest::newRow("sub-index 0 that does not count the entries")
            << record({entry("Highest sub-index", 5, "ro", "3"), value})
            << QStringList{"<i>Corrected: Object 0x2000</i>: The value of subindex 0 does not fit to the "
                           "highest "
                           "subindex."}
            << 0;
        QTest::newRow("constant sub-index 0 managed as a variable")
            << record({entry("Highest sub-index", 5, "const", "1"), value})
            << QStringList{"<i>Corrected: Object 0x2000-0</i>:'Managed Const' is used as implementation type "
                           "for "
                           "this subindex."}
            << 0;
        QTest::newRow("constant sub-index 0 of a virtual object")
            << record({modified(entry("Highest sub-index", 5, "const", "1"),
                                [](SUBINDEX_DATA_T &data) { data.implementation = 3; }),
                       value})
            << QStringList() << 0;
        QTest::newRow("error history counts at run time")
            << steps({objectOf(0x1003, "Pre-defined error field", 8,
                               {entry("Number of errors", 5, "rw", "0"), entry("Error 1", 7, "ro", "0")}),
                      variable(0x1014, "COB-ID EMCY", 7, "rw", "$NODEID+0x80")})
            << QStringList() << 0;

        const SUBINDEX_DATA_T limited = withLimits(5, "0", "255", "0");
        QTest::newRow("limits of a sub-index with the global limit check off")
            << variable(0x2000, "Speed", 6, "rw", "0") << QStringList() << 0;
        QTest::newRow("limits without the global limit check")
            << record({highest, limited})
            << QStringList{"Warning: Object 0x2000-0x01: Limit Check is activated, but it is deactivated in "
                           "the "
                           "global settings."}
            << 0;
        QTest::newRow("limits with the global limit check")
            << steps({record({highest, limited}), general("limit_check", "1")}) << QStringList() << 0;
        QTest::newRow("entry of an ARRAY without a name")
            << objectOf(0x2000, "Values", 8, {highest, entry("", 6, "rw", "0")})
            << QStringList{error("Object 0x2000-0x01: The object does not have a name. (Required for EDS)")}
            << 1;
        QTest::newRow("variable without a name")
            << record({highest, applicationVariable("Speed", " ")})
            << QStringList{error("Object 0x2000-0x01: The variable name is missing.")} << 1;
        QTest::newRow("variable name with a blank")
            << record({highest, applicationVariable("Speed", "motor speed")})
            << QStringList{error(
                   "Object 0x2000-0x01: The variable name contains invalid characters like spaces or "
                   "commas.")}
            << 1;
        QTest::newRow("variable name with a semicolon")
            << record({highest, applicationVariable("Speed", "a;b")})
            << QStringList{error(
                   "Object 0x2000-0x01: The variable name contains invalid characters like spaces or "
                   "commas.")}
            << 1;
        QTest::newRow("variable with a good name")
            << record({highest, applicationVariable("Speed", "motorSpeed")}) << QStringList() << 0;
        QTest::newRow("access type in upper case")
            << variable(0x2000, "Speed", 6, "RW", "0")
            << QStringList{error(
                   "Object 0x2000-0x00: The access type 'RW' is invalid. Use ro, rw, const, wo, rww or "
                   "rwr instead.")}
            << 1;
        QTest::newRow("Managed Const that may be written")
            << record({highest, modified(value, [](SUBINDEX_DATA_T &data) { data.implementation = 1; })})
            << QStringList{error(
                   "Object 0x2000-0x01: The implementation type is Managed Const, but the access type "
                   "allows write access.")}
            << 1;
        QTest::newRow("Managed Const read only")
            << record({highest, modified(entry("Value", 6, "ro", "0"),
                                         [](SUBINDEX_DATA_T &data) { data.implementation = 1; })})
            << QStringList() << 0;
        QTest::newRow("octet string managed as a variable")
            << record({highest, entry("Data", 10, "rw", "")})
            << QStringList{error(
                   "Object 0x2000-0x01: The implementation type 'Managed Variable' is not possible for "
                   "octet strings.")}
            << 1;
        QTest::newRow("visible string managed as a variable")
            << record({highest, entry("Text", 9, "rw", "abc")})
            << QStringList{error(
                   "Object 0x2000-0x01: The implementation type 'Managed Variable' is not possible for "
                   "visible strings. Use 'Managed Const' or 'Variable' instead.")}
            << 1;
        QTest::newRow("UTF8 string managed as a variable")
            << record({highest, entry("Text", 124, "rw", "abc")})
            << QStringList{error(
                   "Object 0x2000-0x01: The implementation type 'Managed Variable' is not possible for "
                   "UTF8 strings. Use 'Managed Const' or 'Variable' instead.")}
            << 1;
        QTest::newRow("visible string as application variable")
            << record({highest, modified(entry("Text", 9, "rw", "abc"),
                                         [](SUBINDEX_DATA_T &data) {
                                             data.implementation = 2;
                                             data.varname = QStringLiteral("text");
                                         })})
            << QStringList() << 0;
        QTest::newRow("unknown data type")
            << record({highest, entry("Value", 0, "rw", "0")})
            << QStringList{error("Object 0x2000-0x01: Unknown or unsupported datatype.")} << 1;

        const auto limits = [&](quint16 type, const QString &low, const QString &high,
                                const QString &defaultValue) {
            return steps(
                {record({highest, withLimits(type, low, high, defaultValue)}), general("limit_check", "1")});
        };
        const QString outOfRange =
            error("Object 0x2000-0x01: The defaultvalue is not in the range of the limits.");
        QTest::newRow("value below the low limit")
            << limits(5, "10", "20", "5") << QStringList{outOfRange} << 1;
        QTest::newRow("value above the upper limit")
            << limits(6, "0x10", "0x20", "0x21") << QStringList{outOfRange} << 1;
        QTest::newRow("value within the limits") << limits(5, "10", "20", "15") << QStringList() << 0;
        QTest::newRow("upper limit that means no limit")
            << limits(7, "0", "0x7fffff", "0x900000") << QStringList() << 0;
        QTest::newRow("upper limit 0x7fffffff is a number")
            << limits(7, "0", "0x7fffffff", "0x80000000") << QStringList{outOfRange} << 1;
        QTest::newRow("node-ID value is not compared")
            << limits(7, "10", "20", "$NODEID+0x80") << QStringList() << 0;
        QTest::newRow("domain has no range") << limits(15, "10", "20", "") << QStringList() << 0;

        QTest::newRow("variable name used twice")
            << steps({record({entry("Highest sub-index", 5, "ro", "2"), applicationVariable("A", "speed"),
                              applicationVariable("B", "speed")})})
            << QStringList{"<strong>Warning: </strong>Object 0x2000-0x02: Variable name 'speed' is already "
                           "used by "
                           "object 0x2000-0x01."}
            << 0;
        QTest::newRow("variable names that differ in case")
            << steps({record({entry("Highest sub-index", 5, "ro", "2"), applicationVariable("A", "speed"),
                              applicationVariable("B", "Speed")})})
            << QStringList() << 0;
    }

    void objectRules() { runRow(); }

    void pdoRules_data()
    {
        columns();
        const Setup rpdo = steps({mappable(), pdoOf(0x1400, "$NODEID+0x200", "const", {"0x20000108"})});
        const auto rpdoWith = [](const QStringList &entries, const QString &count = QString()) {
            return steps({mappable(), pdoOf(0x1400, "$NODEID+0x200", "const", entries, count)});
        };
        const auto tpdoWith = [](const QStringList &entries, const QString &count = QString()) {
            return steps({mappable(), pdoOf(0x1800, "$NODEID+0x180", "const", entries, count)});
        };
        const auto mappedAccess = [](const QString &access) {
            return changed(0x2000, 1, [access](SUBINDEX_DATA_T &data) { data.accesstype = access; });
        };

        QTest::newRow("RPDO as the editor makes it") << rpdo << QStringList() << 0;
        QTest::newRow("TPDO as the editor makes it")
            << tpdoWith({"0x20000108", "0x20000220"}) << QStringList() << 0;
        QTest::newRow("mapping without its communication object")
            << steps({rpdo, removed(0x1400)})
            << QStringList{error(
                   "Object 0x1600: The corresponding PDO communication parameter object 0x1400 does not "
                   "exist.")}
            << 1;
        QTest::newRow("enabled PDO with an empty table")
            << rpdoWith({})
            << QStringList{error("Object 0x1600 of line 0: The PDO mapping table does not contain any mapped "
                                 "object."),
                           error("Object 0x1400: PDO is enabled but its mapping table (0x1600) is empty (sub "
                                 "0 = "
                                 "0).")}
            << 2;
        QTest::newRow("disabled PDO with an empty table")
            << steps({mappable(), pdoOf(0x1400, "$NODEID+0x80000200", "const", {})})
            << QStringList{error("Object 0x1600 of line 0: The PDO mapping table does not contain any mapped "
                                 "object.")}
            << 1;
        QTest::newRow("mapping entries of another access")
            << steps({rpdo, changed(0x1600, 1,
                                    [](SUBINDEX_DATA_T &data) {
                                        data.accesstype = QStringLiteral("rw");
                                        data.implementation = 0;
                                    })})
            << QStringList{error(
                   "Object 0x1600: All subindices of a PDO mapping object must have the same access "
                   "type. (const for static mapping or rw for dynamic mapping")}
            << 1;
        QTest::newRow("active empty entry")
            << rpdoWith({"0x20000108", "0"})
            << QStringList{error(
                   "Object 0x1600:2 is an active mapping entry but maps no object (empty entry).")}
            << 1;
        // Dynamic tables, so that the count of entries stays as it is.
        const auto dynamicRpdoWith = [](const QStringList &entries, const QString &count) {
            return steps(
                {mappable(), pdoOf(0x1400, "$NODEID+0x200", "rw", entries, count), granularity("8")});
        };
        QTest::newRow("inactive empty entry")
            << dynamicRpdoWith({"0x20000108", "0"}, "1") << QStringList() << 0;
        QTest::newRow("dummy entry takes room but is not looked up")
            << rpdoWith({"0x20000108", "0x00050040"})
            << QStringList{error("Object 0x1600: Size of PDO exceeds the limit. ")} << 1;
        QTest::newRow("PDO of 64 bits") << rpdoWith({"0x20000220", "0x20000220"}) << QStringList() << 0;
        QTest::newRow("PDO of 96 bits with CAN FD")
            << steps(
                   {rpdoWith({"0x20000220", "0x20000220", "0x20000220"}), general("canfd_supported", "1"),
                    removed(0x1000),
                    objectOf(0x1000, "Device Type", 8,
                             {entry("Highest sub-index", 5, "ro", "1"), entry("Device type", 7, "ro", "0")})})
            << QStringList() << 0;
        QTest::newRow("mapped object missing on an RPDO")
            << rpdoWith({"0x20000508"})
            << QStringList{error("Object 0x1600: The mapped object 0x2000:5 does not exist."),
                           error("Object 0x1600: The access right of the mapped object 0x2000:5 does not fit "
                                 "for an "
                                 "RPDO.")}
            << 2;
        QTest::newRow("mapped object missing on a TPDO")
            << tpdoWith({"0x20000508"})
            << QStringList{error("Object 0x1a00: The mapped object 0x2000:5 does not exist.")} << 1;
        QTest::newRow("mapped object that may not be mapped")
            << steps(
                   {rpdo, changed(0x2000, 1, [](SUBINDEX_DATA_T &data) { data.pdomapping = PDOMapping(); })})
            << QStringList{error("Object 0x1600: PDO mapping is not allowed for object 0x2000:1.")} << 1;
        QTest::newRow("entry shorter than its object")
            << rpdoWith({"0x20000210"})
            << QStringList{"Warning: Object 0x1600: The size of the mapped object 0x2000:2 is too small."}
            << 0;
        QTest::newRow("entry longer than its object")
            << rpdoWith({"0x20000110"})
            << QStringList{error("Object 0x1600: The size of the mapped object 0x2000:1 is too large.")} << 1;
        QTest::newRow("bitwise entry without bitwise mapping")
            << rpdoWith({"0x20000104"})
            << QStringList{"Warning: Object 0x1600: The size of the mapped object 0x2000:1 is too small.",
                           bitwiseNotEnabled}
            << 1;
        QTest::newRow("bitwise entry with a granularity of 8")
            << steps({rpdoWith({"0x20000104"}), general("bitwise_mapping", "1"), granularity("8")})
            << QStringList{"Warning: Object 0x1600: The size of the mapped object 0x2000:1 is too small.",
                           "<strong>Warning: </strong>Bitwise mapping cannot be used with a granularity of "
                           "8. Correct "
                           "device description settings or PDO mapping."}
            << 0;
        QTest::newRow("bitwise entry with bitwise mapping")
            << steps({rpdoWith({"0x20000104"}), general("bitwise_mapping", "1"), granularity("1")})
            << QStringList{"Warning: Object 0x1600: The size of the mapped object 0x2000:1 is too small."}
            << 0;
        QTest::newRow("inactive bitwise entry still counts")
            << dynamicRpdoWith({"0x20000108", "0x20000104"}, "1")
            << QStringList{"Warning: Object 0x1600: The size of the mapped object 0x2000:1 is too small.",
                           "<strong>Warning: </strong>Bitwise mapping cannot be used with a granularity of "
                           "8. "
                           "Correct device description settings or PDO mapping.",
                           bitwiseNotEnabled}
            << 1;
        QTest::newRow("TPDO of a write-only object")
            << steps({tpdoWith({"0x20000108"}), mappedAccess("wo")})
            << QStringList{error(
                   "Object 0x1a00: The access right of the mapped object 0x2000:1 does not fit for a "
                   "TPDO.")}
            << 1;
        QTest::newRow("TPDO of a read-only object")
            << steps({tpdoWith({"0x20000108"}), mappedAccess("ro")}) << QStringList() << 0;
        QTest::newRow("RPDO of a constant")
            << steps({rpdo, mappedAccess("const")})
            << QStringList{error(
                   "Object 0x1600: The access right of the mapped object 0x2000:1 does not fit for an "
                   "RPDO.")}
            << 1;
        QTest::newRow("RPDO of a write-only object")
            << steps({rpdo, mappedAccess("wo")}) << QStringList() << 0;
        QTest::newRow("dynamic table counting more entries than it has")
            << steps(
                   {mappable(), pdoOf(0x1400, "$NODEID+0x200", "rw", {"0x20000108"}, "2"), granularity("8")})
            << QStringList{error("Object 0x1600:  Invalid number of mapping entries.")} << 1;
        QTest::newRow("dynamic table with a granularity of 0")
            << steps({mappable(), pdoOf(0x1400, "$NODEID+0x200", "rw", {"0x20000108"})})
            << QStringList{dynamicWithGranularity0} << 0;
        QTest::newRow("static table marked 254") << rpdoWith({"0x20000108"}, "254") << QStringList() << 0;
        QTest::newRow("empty dynamic TPDO of the pre-defined set")
            << steps({mappable(), pdoOf(0x1800, "$NODEID+0x180", "rw", {"0", "0"}, "0"), granularity("8")})
            << QStringList{"<i>Corrected: Object 0x1800</i>: The COB-ID of this PDO has been disabled "
                           "($NODEID+0x80000180), because it does not contain active mapping entries."}
            << 0;
        QTest::newRow("empty dynamic TPDO already disabled")
            << steps(
                   {mappable(), pdoOf(0x1800, "$NODEID+0x80000180", "rw", {"0", "0"}, "0"), granularity("8")})
            << QStringList() << 0;
        QTest::newRow("empty dynamic TPDO beyond the pre-defined set")
            << steps({mappable(), pdoOf(0x1804, "$NODEID+0x184", "rw", {"0"}, "0"), granularity("8")})
            << QStringList{error(
                   "Object 0x1804: PDO is enabled but its mapping table (0x1a04) is empty (sub 0 = "
                   "0).")}
            << 1;
        QTest::newRow("empty dynamic RPDO")
            << steps({mappable(), pdoOf(0x1400, "$NODEID+0x200", "rw", {"0"}, "0"), granularity("8")})
            << QStringList{error(
                   "Object 0x1400: PDO is enabled but its mapping table (0x1600) is empty (sub 0 = "
                   "0).")}
            << 1;

        QTest::newRow("communication object without mapping")
            << steps({rpdo, removed(0x1600)})
            << QStringList{error(
                   "Object 0x1400: The corresponding PDO mapping object 0x1600 does not exist.")}
            << 1;
        QTest::newRow("COB-ID and transmission type kept out of the device description")
            << steps({rpdo, changed(0x1400, 1, [](SUBINDEX_DATA_T &data) { data.defaultineds = false; }),
                      changed(0x1400, 2, [](SUBINDEX_DATA_T &data) { data.writedefaulttoeds = false; })})
            << QStringList{"<strong>Hint: </strong>Subindex 1 of 0x1400 should have its default value in the "
                           "EDS "
                           "file.",
                           "<strong>Hint: </strong>Subindex 2 of 0x1400 should have its default value in the "
                           "EDS "
                           "file."}
            << 0;
        QTest::newRow("node-relative and absolute COB-IDs do not collide")
            << steps({rpdo, pdoOf(0x1401, "0x200", "const", {"0x20000108"})})
            << QStringList{notPredefined("1401"), enablePredefined} << 0;
        QTest::newRow("COB-ID used twice")
            << steps({rpdo, pdoOf(0x1401, "$NODEID+0x200", "const", {"0x20000108"})})
            << QStringList{error(
                               "Object 0x1401: COB-ID '$NODEID+0x200' is already used by PDO object 0x1400."),
                           notPredefined("1401"), enablePredefined}
            << 1;
        QTest::newRow("COB-ID of a TPDO that an RPDO uses")
            << steps({rpdo, pdoOf(0x1800, " $NODEID+ 0x200", "const", {"0x20000108"})})
            << QStringList{error("Object 0x1800: COB-ID ' $NODEID+ 0x200' is already used by PDO object "
                                 "0x1400."),
                           notPredefined("1800"), enablePredefined}
            << 1;
        QTest::newRow("COB-IDs that differ in the flags of the high bits only")
            << steps({rpdo, pdoOf(0x1401, "$NODEID+0x40000200", "const", {"0x20000108"})})
            << QStringList{error("Object 0x1401: COB-ID '$NODEID+0x40000200' is already used by PDO object "
                                 "0x1400."),
                           notPredefined("1401"), enablePredefined}
            << 1;

        const auto timers = [tpdoWith](const QString &inhibit, const QString &event) {
            return steps(
                {tpdoWith({"0x20000108"}),
                 changed(0x1800, 0, [](SUBINDEX_DATA_T &data) { data.defaultvalue = QStringLiteral("5"); }),
                 [=](ProjectBuilder &project) {
                     project.sub(0, 0x1800, 3, entry("Inhibit time", 6, "rw", inhibit))
                         .sub(0, 0x1800, 5, entry("Event timer", 6, "rw", event));
                 }});
        };
        QTest::newRow("event timer within the inhibit time")
            << timers("100", "10")
            << QStringList{"<strong>Warning: </strong>Subindex 3 and 5 of 0x1800: Event timer value should "
                           "be "
                           "greater than inhibit time value."}
            << 0;
        QTest::newRow("event timer beyond the inhibit time") << timers("109", "11") << QStringList() << 0;
        QTest::newRow("no event timer") << timers("100", "0") << QStringList() << 0;

        const auto srdoMapping = [](const QString &mapped) {
            return steps(
                {mappable(),
                 objectOf(0x1301, "SRDO communication parameter", 9,
                          {entry("Highest sub-index", 5, "ro", "0")}),
                 objectOf(0x1381, "SRDO mapping parameter", 9,
                          {entry("Highest sub-index", 5, "ro", "1"), entry("Entry 1", 7, "ro", mapped)})});
        };
        QTest::newRow("SRDO without mapping")
            << objectOf(0x1301, "SRDO communication parameter", 9, {entry("Highest sub-index", 5, "ro", "0")})
            << QStringList{error(
                   "Object 0x1301: The corresponding SRDO mapping object 0x1381 does not exist.")}
            << 1;
        QTest::newRow("SRDO of a missing object")
            << srdoMapping("0x20000508")
            << QStringList{error("Object 0x1381: The object 0x2000:5 mapped into an SRDO does not exist.")}
            << 1;
        QTest::newRow("SRDO of a managed variable")
            << srdoMapping("0x20000108")
            << QStringList{error(
                   "Object 0x1381: The object 0x2000:1 mapped into an SRDO must be an application "
                   "variable.")}
            << 1;
        QTest::newRow("SRDO of an application variable that may not be mapped")
            << steps({srdoMapping("0x20000108"), changed(0x2000, 1,
                                                         [](SUBINDEX_DATA_T &data) {
                                                             data.implementation = 2;
                                                             data.varname = QStringLiteral("safeValue");
                                                             data.pdomapping = PDOMapping();
                                                         })})
            << QStringList{error(
                   "Object 0x1381: The PDO mapping must be enabled for object 0x2000:1 to use it in an "
                   "SRDO.")}
            << 1;
        QTest::newRow("SRDO of a mappable application variable")
            << steps({srdoMapping("0x20000108"), changed(0x2000, 1,
                                                         [](SUBINDEX_DATA_T &data) {
                                                             data.implementation = 2;
                                                             data.varname = QStringLiteral("safeValue");
                                                         })})
            << QStringList() << 0;

        QTest::newRow("COB-ID outside the pre-defined connection set")
            << steps({tpdoWith({"0x20000108"}),
                      changed(0x1800, 1, [](SUBINDEX_DATA_T &data) { data.defaultvalue = "$NODEID+0x181"; })})
            << QStringList{notPredefined("1800"), enablePredefined} << 0;
        QTest::newRow("COB-IDs outside the set told together")
            << steps({rpdo, tpdoWith({"0x20000108"}),
                      changed(0x1800, 1, [](SUBINDEX_DATA_T &data) { data.defaultvalue = "0x181"; }),
                      changed(0x1400, 1, [](SUBINDEX_DATA_T &data) { data.defaultvalue = "0x201"; })})
            << QStringList{notPredefined("1400"), notPredefined("1800"), enablePredefined} << 0;
        QTest::newRow("COB-ID outside the set, set overwritten")
            << steps({tpdoWith({"0x20000108"}), general("overwrite_predef", "1"),
                      changed(0x1800, 1, [](SUBINDEX_DATA_T &data) { data.defaultvalue = "$NODEID+0x181"; })})
            << QStringList() << 0;
        QTest::newRow("COB-ID of the set in upper case with flags")
            << steps({tpdoWith({"0x20000108"}),
                      changed(0x1800, 1,
                              [](SUBINDEX_DATA_T &data) { data.defaultvalue = "$NODEID+0XC0000180"; })})
            << QStringList() << 0;
    }

    void pdoRules() { runRow(); }

    void disabledCobId_data()
    {
        QTest::addColumn<QString>("expression");
        QTest::addColumn<QString>("disabled");
        QTest::newRow("node-relative") << "$nodeid+0x180"
                                       << "$nodeid+0x80000180";
        QTest::newRow("node-relative in upper case") << "$NODEID+0x1A0"
                                                     << "$NODEID+0x800001a0";
        QTest::newRow("absolute") << "0x181"
                                  << "0x80000181";
        QTest::newRow("already disabled") << "$nodeid+0x80000180"
                                          << "$nodeid+0x80000180";
        QTest::newRow("text around the number is dropped") << "id 0x181 here"
                                                           << "0x80000181";
        QTest::newRow("decimal number") << "385"
                                        << "385";
        QTest::newRow("empty") << ""
                               << "";
    }

    void disabledCobId()
    {
        QFETCH(QString, expression);
        QFETCH(QString, disabled);
        QCOMPARE(ModelCheckPdoRules::disabledCobId(expression), disabled);
    }

    void corrections_data()
    {
        QTest::addColumn<Setup>("setup");
        QTest::addColumn<QStringList>("expected");
        QTest::addColumn<QStringList>("withoutCorrection");
        QTest::addColumn<quint16>("index");
        QTest::addColumn<quint8>("subIndex");
        QTest::addColumn<QString>("value");
        QTest::addColumn<int>("implementation");

        const QString countCorrected =
            QStringLiteral("<i>Corrected: Object 0x2000</i>: The value of subindex 0 does "
                           "not fit to the highest subindex.");
        const QString constCorrected =
            QStringLiteral("<i>Corrected: Object 0x2000-0</i>:'Managed Const' is used as "
                           "implementation type for this subindex.");
        QTest::newRow("count below the highest sub-index")
            << objectOf(0x2000, "Values", 8,
                        {entry("Count", 5, "ro", "1"), entry("A", 6, "rw", "0"), entry("B", 6, "rw", "0")})
            << QStringList{countCorrected} << QStringList() << quint16(0x2000) << quint8(0) << "2" << 0;
        QTest::newRow("count above the highest sub-index")
            << objectOf(0x2000, "Values", 8, {entry("Count", 5, "ro", "0x07"), entry("A", 6, "rw", "0")})
            << QStringList{countCorrected} << QStringList() << quint16(0x2000) << quint8(0) << "1" << 0;
        QTest::newRow("constant count managed as a variable")
            << objectOf(0x2000, "Values", 8, {entry("Count", 5, "const", "1"), entry("A", 6, "rw", "0")})
            << QStringList{constCorrected} << QStringList() << quint16(0x2000) << quint8(0) << "1" << 1;
        QTest::newRow("both corrections of one count")
            << objectOf(0x2000, "Values", 8, {entry("Count", 5, "const", "5"), entry("A", 6, "rw", "0")})
            << QStringList{countCorrected, constCorrected} << QStringList() << quint16(0x2000) << quint8(0)
            << "1" << 1;
        QTest::newRow("static mapping count")
            << steps({mappable(), pdoOf(0x1400, "$NODEID+0x200", "const", {"0x20000108", "0x20000220"}, "1")})
            << QStringList{"<i>Corrected: Object 0x1600</i>: The value of subindex 0 does not fit to the "
                           "highest "
                           "subindex."}
            << QStringList() << quint16(0x1600) << quint8(0) << "2" << 1;
        QTest::newRow("empty dynamic TPDO")
            << steps({mappable(), pdoOf(0x1801, "$NODEID+0x280", "rw", {"0"}, "0"), granularity("8")})
            << QStringList{"<i>Corrected: Object 0x1801</i>: The COB-ID of this PDO has been disabled "
                           "($NODEID+0x80000280), because it does not contain active mapping entries."}
            << QStringList{error(
                   "Object 0x1801: PDO is enabled but its mapping table (0x1a01) is empty (sub 0 = 0).")}
            << quint16(0x1801) << quint8(1) << "$NODEID+0x80000280" << 0;
    }

    void corrections()
    {
        QFETCH(Setup, setup);
        QFETCH(QStringList, expected);
        QFETCH(quint16, index);
        QFETCH(quint8, subIndex);
        QFETCH(QString, value);
        QFETCH(int, implementation);
        ProjectBuilder project;
        cleanProject(project, stack);
        setup(project);
        ObjectDataBase &store = project.store();
        // As in a generation run: the generators read the line through this cache after the check.
        store.cacheAllSubs(0, 0);

        const CheckResult first = checkCANopen(project);
        QCOMPARE(first.messages, expected);
        QCOMPARE(first.errors, 0);
        QVERIFY(first.corrected);
        SUBINDEX_DATA_T cached;
        QVERIFY(store.getSubIndex(0, index, subIndex, cached));
        QCOMPARE(cached.defaultvalue, value);
        QCOMPARE(int(cached.implementation), implementation);
        store.clearSubCache();
        SUBINDEX_DATA_T stored;
        QVERIFY(store.getSubIndex(0, index, subIndex, stored));
        QCOMPARE(stored, cached);

        const CheckResult second = checkCANopen(project);
        QCOMPARE(second.messages, QStringList());
        QVERIFY(!second.corrected);
    }

    void correctionsCanBeDisabled_data() { corrections_data(); }

    void correctionsCanBeDisabled()
    {
        QFETCH(Setup, setup);
        QFETCH(QStringList, withoutCorrection);
        QFETCH(quint16, index);
        QFETCH(quint8, subIndex);
        userSettings().setValue(QStringLiteral("General/disableautocorrection"), true);
        ProjectBuilder project;
        cleanProject(project, stack);
        setup(project);
        SUBINDEX_DATA_T before;
        QVERIFY(project.store().getSubIndex(0, index, subIndex, before));

        const CheckResult result = checkCANopen(project);
        QCOMPARE(result.messages, withoutCorrection);
        QVERIFY(!result.corrected);
        SUBINDEX_DATA_T after;
        QVERIFY(project.store().getSubIndex(0, index, subIndex, after));
        QCOMPARE(after, before);
    }

    void correctedFlagIsNeverCleared()
    {
        ProjectBuilder project;
        cleanProject(project, stack);
        bool corrected = true;
        ModelChecker checker;
        checker.checkCANopenLine(0, &project.store(), corrected);
        QVERIFY(corrected);
    }

    void emcyRoutingIsToldOncePerRun()
    {
        ProjectBuilder project;
        cleanProject(project, stack, {1, 1});
        project.general(QStringLiteral("emcy_routing"), QStringLiteral("1"));
        project.var(1, 0x1014, QStringLiteral("COB-ID EMCY"), 7, QStringLiteral("rw"),
                    QStringLiteral("$NODEID+0x80"));
        const CheckResult result = checkCANopenLines(project, {0, 1});
        QCOMPARE(result.messages,
                 QStringList{error("Both EMCY producer objects and EMCY consumer objects must be "
                                   "present to use EMCY routing.")});
        QCOMPARE(result.errors, 1);
    }

    void consumersOnAnotherLineServeEmcyRouting()
    {
        ProjectBuilder project;
        cleanProject(project, stack, {1, 1});
        project.general(QStringLiteral("emcy_routing"), QStringLiteral("1"));
        project.var(0, 0x1014, QStringLiteral("COB-ID EMCY"), 7, QStringLiteral("rw"),
                    QStringLiteral("$NODEID+0x80"));
        object(project, 0x1028, QStringLiteral("Emergency consumer"), 8, counted({"0x81"}), 1);
        QCOMPARE(checkCANopenLines(project, {0, 1}).messages, QStringList());
    }

private:
    void columns()
    {
        QTest::addColumn<Setup>("setup");
        QTest::addColumn<QStringList>("expected");
        QTest::addColumn<int>("errors");
    }

    void runRow()
    {
        QFETCH(Setup, setup);
        QFETCH(QStringList, expected);
        QFETCH(int, errors);
        ProjectBuilder project;
        cleanProject(project, stack);
        setup(project);
        const CheckResult result = checkCANopen(project);
        QCOMPARE(result.messages, expected);
        QCOMPARE(result.errors, errors);
    }

    QString stack;
};

QTEST_MAIN(TestModelCheckerCANopen)
#include "tst_modelcheckercanopen.moc"
