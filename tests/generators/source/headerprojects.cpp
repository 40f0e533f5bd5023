#include "headerprojects.h"

#include "store/objectdatabase.h"
#include "support/projectbuilder.h"
#include "support/testprojects.h"

#include <QDir>

namespace HeaderProjects {

namespace {

void object(ProjectBuilder &project, quint8 line, quint16 index, const QString &name, quint32 objectType,
            const QStringList &subNames)
{
    project.object(line, index, name, objectType, 7);
    for (qsizetype sub = 0; sub < subNames.size(); ++sub)
        project.sub(line, index, quint8(sub), subNames.at(sub), sub == 0 ? 5 : 7, QStringLiteral("ro"),
                    QStringLiteral("0"));
}

void var(ProjectBuilder &project, quint8 line, quint16 index, const QString &name)
{
    project.var(line, index, name, 7, QStringLiteral("ro"), QStringLiteral("0"));
}

void spn(ProjectBuilder &project, quint8 line, quint32 pgn, quint8 direction, quint32 number,
         const QString &name, quint16 dataType, quint8 pos, quint8 implementation, const QString &varName,
         quint16 bitSize = 8)
{
    SPN data;
    data.pgnnumber = pgn;
    data.direction = direction;
    data.spnnumber = number;
    data.name = name;
    data.datatype = dataType;
    data.pos = pos;
    data.implementation = implementation;
    data.varname = varName;
    data.bitsize = bitSize;
    project.spn(line, data);
}

void element(ProjectBuilder &project, quint8 line, quint32 id, quint8 direction, quint32 number,
             const QString &name, quint16 dataType, quint8 implementation, const QString &varName)
{
    DataElement data;
    data.canid = id;
    data.direction = direction;
    data.number = number;
    data.pos = quint8(number);
    data.name = name;
    data.datatype = dataType;
    data.implementation = implementation;
    data.varname = varName;
    project.dataElement(line, data);
}

// One CANopen line: standard objects with arrays of one name, a mirrored PDO, the manufacturer area.
void canopenSingle(ProjectBuilder &project)
{
    project.line(0, 1);
    var(project, 0, 0x1000, QStringLiteral("Device Type"));
    object(project, 0, 0x1010, QStringLiteral("Store parameters"), 8,
           {QStringLiteral("Highest sub-index supported"), QStringLiteral("Save parameters"),
            QStringLiteral("Save parameters")});
    object(project, 0, 0x1018, QStringLiteral("Identity Object"), 9,
           {QStringLiteral("Highest sub-index supported"), QStringLiteral("Vendor-ID"),
            QStringLiteral("Product code")});
    object(project, 0, 0x1400, QStringLiteral("RPDO comm par 3 for node 5 sensor"), 9,
           {QStringLiteral("Highest sub-index supported"), QStringLiteral("COB-ID used by RPDO")});
    object(project, 0, 0x1800, QStringLiteral("TPDO communication parameter"), 9,
           {QStringLiteral("Highest sub-index supported"), QStringLiteral("COB-ID used by TPDO")});
    object(project, 0, 0x2000, QStringLiteral("Manufacturer Array"), 8,
           {QStringLiteral("Number of entries"), QStringLiteral("Value"), QStringLiteral("Value"),
            QStringLiteral("Value")});
    var(project, 0, 0x2001, QStringLiteral("Motor (left) speed"));
    object(
        project, 0, 0x2002, QStringLiteral("Channel"), 8,
        {QStringLiteral("Number of channels"), QStringLiteral("Channel $s"), QStringLiteral("Channel $s")});
    project.general(QStringLiteral("fct_sdo_server_read"), QStringLiteral("appSdoRead"))
        .general(QStringLiteral("fct_nmt"), QStringLiteral("appNmt"))
        .general(QStringLiteral("fct_can"), QStringLiteral(" appCan "))
        .general(QStringLiteral("fct_led_green"), QStringLiteral("   "))
        .general(QStringLiteral("usdo_server_read_ind_function"), QStringLiteral("appUsdoRead"));
}

// Two CANopen lines with the same objects; the USDO server is enabled on the second line only.
void canopenMulti(ProjectBuilder &project)
{
    project.line(0, 1).line(1, 1);
    var(project, 0, 0x1000, QStringLiteral("Device Type"));
    var(project, 0, 0x2000, QStringLiteral("Speed"));
    var(project, 1, 0x1000, QStringLiteral("Device Type"));
    object(project, 1, 0x1801, QStringLiteral("TPDO comm par 2 for node 7 temp"), 9,
           {QStringLiteral("Highest sub-index supported"), QStringLiteral("COB-ID used by TPDO")});
    var(project, 1, 0x2000, QStringLiteral("Speed"));
    project.general(QStringLiteral("fct_sdo_server_read"), QStringLiteral("appSdoRead"))
        .general(QStringLiteral("fct_pdo"), QStringLiteral("appPdo"))
        .general(QStringLiteral("usdo_server_enabled"), QStringLiteral("0,1"))
        .general(QStringLiteral("usdo_client_enabled"), QStringLiteral("0,0"))
        .general(QStringLiteral("usdo_server_read_ind_function"), QStringLiteral("appUsdoRead"))
        .general(QStringLiteral("usdo_client_read_ind_function"), QStringLiteral("appUsdoClient"));
}

// One J1939 line: a string, an expression, a managed signal and a safety PGN.
void j1939Single(ProjectBuilder &project)
{
    project.line(0, 2);
    project.pgn(0, 65259, Direction::Receive, QStringLiteral("Component Identification"));
    spn(project, 0, 65259, Direction::Receive, 586, QStringLiteral("Make"), 10, 0, 2, QStringLiteral("make"),
        40);
    project.pgn(0, 65262, Direction::Receive, QStringLiteral("Engine Temperature 1"));
    spn(project, 0, 65262, Direction::Receive, 110, QStringLiteral("Engine Coolant Temperature"), 5, 0, 2,
        QStringLiteral("coolantTemp"));
    spn(project, 0, 65262, Direction::Receive, 175, QStringLiteral("Engine Oil Temperature 1"), 6, 1, 0,
        QString(), 16);
    spn(project, 0, 65262, Direction::Receive, 52, QStringLiteral("Engine Intercooler Temperature"), 5, 2, 2,
        QStringLiteral("app.intercooler"));
    project.pgn(0, 61444, Direction::Transmit, QStringLiteral("Electronic Engine Controller 1"));
    spn(project, 0, 61444, Direction::Transmit, 190, QStringLiteral("Engine Speed"), 6, 0, 2,
        QStringLiteral("engineSpeed"), 16);
    spn(project, 0, 61444, Direction::Transmit, 899, QStringLiteral("Engine Torque Mode"), 102, 1, 2,
        QStringLiteral("torqueMode"), 4);
    PGN dm1;
    dm1.number = 65226;
    dm1.direction = Direction::Transmit;
    dm1.name = QStringLiteral("DM1");
    dm1.priority = 6;
    dm1.issafe = true;
    project.pgn(0, dm1);
    spn(project, 0, 65226, Direction::Transmit, 1213, QStringLiteral("Malfunction Indicator Lamp Status"),
        100, 0, 2, QStringLiteral("milStatus"), 2);
}

// One raw CAN line with an extended identifier.
void rawcanSingle(ProjectBuilder &project)
{
    project.line(0, 4);
    project.canId(0, 0x100, Direction::Receive, QStringLiteral("Sensor Status"));
    element(project, 0, 0x100, Direction::Receive, 0, QStringLiteral("Temperature"), 3, 2,
            QStringLiteral("sensorTemp"));
    element(project, 0, 0x100, Direction::Receive, 1, QStringLiteral("Status Flags"), 5, 0, QString());
    project.canId(0, 0x98FF0001, Direction::Receive, QStringLiteral("Ext Message"));
    element(project, 0, 0x98FF0001, Direction::Receive, 0, QStringLiteral("Pressure"), 7, 2,
            QStringLiteral("pressure"));
    project.canId(0, 0x200, Direction::Transmit, QStringLiteral("Actuator Command"));
    element(project, 0, 0x200, Direction::Transmit, 0, QStringLiteral("Set Point"), 6, 2,
            QStringLiteral("setPoint"));
    element(project, 0, 0x200, Direction::Transmit, 1, QStringLiteral("Mode"), 1, 2,
            QStringLiteral("actMode"));
}

// CANopen with J1939 on line 0, CANopen with raw CAN on line 1, a variable on both lines, static UDS
// indications.
void mixedMulti(ProjectBuilder &project)
{
    project.line(0, 5).line(1, 6);
    var(project, 0, 0x1000, QStringLiteral("Device Type"));
    project.pgn(0, 65262, Direction::Receive, QStringLiteral("Engine Temperature 1"));
    spn(project, 0, 65262, Direction::Receive, 110, QStringLiteral("Engine Coolant Temperature"), 5, 0, 2,
        QStringLiteral("coolantTemp"));
    var(project, 1, 0x1000, QStringLiteral("Device Type"));
    project.canId(1, 0x181, Direction::Transmit, QStringLiteral("Status"));
    element(project, 1, 0x181, Direction::Transmit, 0, QStringLiteral("Temperature"), 5, 2,
            QStringLiteral("coolantTemp"));
    element(project, 1, 0x181, Direction::Transmit, 1, QStringLiteral("Counter"), 5, 2,
            QStringLiteral("counter"));
    project.general(QStringLiteral("fct_nmt"), QStringLiteral("appNmt"))
        .general(QStringLiteral("uds_static_indication"), QStringLiteral("1"))
        .general(QStringLiteral("uds_fct_dtc_info"), QStringLiteral("udsDtc"))
        .general(QStringLiteral("uds_fct_generic"), QStringLiteral("udsGeneric"));
}

// Objects, sub-indices, CAN-IDs and data elements whose names collide after cleaning.
void collisionsCanopen(ProjectBuilder &project)
{
    project.line(0, 6);
    var(project, 0, 0x2000, QStringLiteral("Motor Speed"));
    var(project, 0, 0x2001, QStringLiteral("Motor-Speed"));
    var(project, 0, 0x2002, QStringLiteral("Motor Speed1"));
    var(project, 0, 0x2003, QStringLiteral("(((  )))"));
    INDEX_DATA_T defined;
    defined.name = QStringLiteral("Ignored");
    defined.metadata.insert(QStringLiteral("objectdefine"), QStringLiteral("my object define"));
    project.object(0, 0x2004, defined);
    project.sub(0, 0x2004, 0, QStringLiteral("Ignored"), 7, QStringLiteral("ro"), QStringLiteral("0"));
    object(project, 0, 0x2005, QStringLiteral("Sensor Data"), 9,
           {QStringLiteral("Highest sub-index supported"), QStringLiteral("Value"), QStringLiteral("Value")});
    SUBINDEX_DATA_T raw =
        ProjectBuilder::subRecord(QStringLiteral("Raw"), 7, QStringLiteral("ro"), QStringLiteral("0"));
    raw.metadata.insert(QStringLiteral("subdefine"), QStringLiteral("raw value"));
    project.sub(0, 0x2005, 3, raw);
    project.canId(0, 0x100, Direction::Receive, QStringLiteral("Status"));
    element(project, 0, 0x100, Direction::Receive, 0, QStringLiteral("Value"), 5, 2,
            QStringLiteral("status0"));
    project.canId(0, 0x101, Direction::Receive, QStringLiteral("Status"));
    element(project, 0, 0x101, Direction::Receive, 0, QStringLiteral("Value"), 5, 2,
            QStringLiteral("status1"));
    project.canId(0, 0x100, Direction::Transmit, QStringLiteral("Status"));
    element(project, 0, 0x100, Direction::Transmit, 0, QStringLiteral("Value"), 5, 2,
            QStringLiteral("status0"));
}

// PGNs and SPNs whose names collide after cleaning, one PGN number in both directions.
void collisionsJ1939(ProjectBuilder &project)
{
    project.line(0, 2);
    project.pgn(0, 65262, Direction::Receive, QStringLiteral("Engine Temp"));
    spn(project, 0, 65262, Direction::Receive, 110, QStringLiteral("Coolant Temp"), 5, 0, 2,
        QStringLiteral("coolant"));
    spn(project, 0, 65262, Direction::Receive, 175, QStringLiteral("Coolant-Temp"), 5, 1, 2,
        QStringLiteral("coolantB"));
    project.pgn(0, 65262, Direction::Transmit, QStringLiteral("Engine Temp"));
    spn(project, 0, 65262, Direction::Transmit, 110, QStringLiteral("Coolant Temp"), 5, 0, 2,
        QStringLiteral("coolant"));
    project.pgn(0, 61444, Direction::Transmit, QStringLiteral("Engine.Temp"));
    spn(project, 0, 61444, Direction::Transmit, 190, QStringLiteral("Speed"), 6, 0, 2,
        QStringLiteral("speed"), 16);
}

// J1939 on line 0, raw CAN on line 1, both on line 2: the per-line prefixes of every kind of define,
// data elements that share a name, and variables that two lines share.
void protocolsMulti(ProjectBuilder &project)
{
    project.line(0, 2).line(1, 4).line(2, 7);
    project.pgn(0, 65262, Direction::Receive, QStringLiteral("Engine Temperature 1"));
    spn(project, 0, 65262, Direction::Receive, 110, QStringLiteral("Engine Coolant Temperature"), 5, 0, 2,
        QStringLiteral("coolantTemp"));
    project.pgn(0, 61444, Direction::Transmit, QStringLiteral("EEC1"));
    spn(project, 0, 61444, Direction::Transmit, 190, QStringLiteral("Engine Speed"), 6, 0, 2,
        QStringLiteral("engineSpeed"), 16);

    project.canId(1, 0x100, Direction::Receive, QStringLiteral("Status"));
    element(project, 1, 0x100, Direction::Receive, 0, QStringLiteral("Value"), 5, 2,
            QStringLiteral("statusValue"));
    project.canId(1, 0x101, Direction::Receive, QStringLiteral("Status"));
    element(project, 1, 0x101, Direction::Receive, 0, QStringLiteral("Value"), 5, 2,
            QStringLiteral("statusValue2"));
    project.canId(1, 0x200, Direction::Transmit, QStringLiteral("Command"));
    element(project, 1, 0x200, Direction::Transmit, 0, QStringLiteral("Engine Speed"), 6, 2,
            QStringLiteral("engineSpeed"));
    element(project, 1, 0x200, Direction::Transmit, 1, QStringLiteral("Mode"), 105, 2,
            QStringLiteral("mode"));

    project.pgn(2, 65262, Direction::Receive, QStringLiteral("Engine Temperature 1"));
    spn(project, 2, 65262, Direction::Receive, 110, QStringLiteral("Engine Coolant Temperature"), 5, 0, 2,
        QStringLiteral("coolantTemp"));
    spn(project, 2, 65262, Direction::Receive, 175, QStringLiteral("Engine Oil Temperature"), 6, 1, 2,
        QStringLiteral("oilTemp"), 16);
    project.canId(2, 0x100, Direction::Receive, QStringLiteral("Status"));
    element(project, 2, 0x100, Direction::Receive, 0, QStringLiteral("Temperature"), 2, 2,
            QStringLiteral("temperature"));
}

} // namespace

const QList<Project> &projects()
{
    static const QList<Project> list = {
        {"canopen_single", canopenSingle, false, true},
        {"canopen_multi", canopenMulti, false, true},
        {"j1939_single", j1939Single, true, false},
        {"rawcan_single", rawcanSingle, true, false},
        {"mixed_multi", mixedMulti, true, true},
        {"collisions_canopen", collisionsCanopen, true, true},
        {"collisions_j1939", collisionsJ1939, true, false},
        {"protocols_multi", protocolsMulti, true, false},
    };
    return list;
}

const Project *find(const QString &name)
{
    for (const auto &project : projects()) {
        if (name == QLatin1String(project.name))
            return &project;
    }
    return nullptr;
}

QString goldenFolder(const QString &project)
{
    return QStringLiteral(KESTREL_HEADER_GOLDEN_DIR "/") + project;
}

} // namespace HeaderProjects
