#include "multiproprojects.h"

#include "app/generatorcatalog.h"
#include "generation/generatormainhandler.h"
#include "generation/outputhandlerbase.h"
#include "generation/postgenprogresshandler.h"
#include "support/projectbuilder.h"
#include "support/testprojects.h"

#include <QSharedPointer>

namespace MultiProProjects {

namespace {

class Log : public OutputHandlerBase
{
public:
    void output(const QVariant &text) override { entries << text.toString(); }
    void outputPlain(const QVariant &text) override { entries << text.toString(); }
    QString logText() const override { return entries.join('\n'); }

    QStringList entries;
};

void element(ProjectBuilder &project, quint8 line, quint32 id, quint8 direction, quint8 number,
             const QString &name, quint16 dataType, quint16 bitPosition, const QString &varName)
{
    DataElement data;
    data.canid = id;
    data.direction = direction;
    data.pos = number;
    data.number = number;
    data.name = name;
    data.datatype = dataType;
    data.bitpos = bitPosition;
    data.implementation = varName.isEmpty() ? 0 : 2;
    data.varname = varName;
    project.dataElement(line, data);
}

// The objects a small CANopen device has: device type, error register, heartbeat, identity and one
// application value, which app.h declares.
void canopenDevice(ProjectBuilder &project, quint8 line)
{
    project.general(QStringLiteral("applicationheader"), QStringLiteral("app.h"));
    project.var(line, 0x1000, QStringLiteral("Device type"), 7, QStringLiteral("ro"), QStringLiteral("0x191"));
    project.var(line, 0x1001, QStringLiteral("Error register"), 5, QStringLiteral("ro"), QStringLiteral("0"));
    project.var(line, 0x1017, QStringLiteral("Producer heartbeat time"), 6, QStringLiteral("rw"),
                QStringLiteral("1000"));
    project.object(line, 0x1018, QStringLiteral("Identity"), 9, 5);
    project.sub(line, 0x1018, 0, QStringLiteral("Highest sub-index"), 5, QStringLiteral("const"), QStringLiteral("1"));
    project.sub(line, 0x1018, 1, QStringLiteral("Vendor-ID"), 7, QStringLiteral("ro"), QStringLiteral("0x319"));
    SUBINDEX_DATA_T speed =
        ProjectBuilder::subRecord(QStringLiteral("Speed"), 6, QStringLiteral("rw"), QStringLiteral("0"));
    speed.implementation = 2;
    speed.varname = QStringLiteral("speed");
    project.object(line, 0x2000, QStringLiteral("Speed"), 7, 6);
    project.sub(line, 0x2000, 0, speed);
}

// A J1939 line that receives the vehicle speed and sends the engine temperature.
void j1939Device(ProjectBuilder &project, quint8 line)
{
    project.pgn(line, 65265, Direction::Receive, QStringLiteral("Cruise Control/Vehicle Speed"), 6, 100);
    project.spn(line, 65265, Direction::Receive, 84, QStringLiteral("Wheel-Based Vehicle Speed"), 6, 0, 8, 2,
                QStringLiteral("vehicleSpeed"));
    project.pgn(line, 65262, Direction::Transmit, QStringLiteral("Engine Temperature 1"), 6, 1000);
    project.spn(line, 65262, Direction::Transmit, 110, QStringLiteral("Engine Coolant Temperature"), 5, 0, 0);
}

// A raw CAN line with a transmit message of two signals, a transmit message without signals and a
// monitored receive message.
void rawCanDevice(ProjectBuilder &project, quint8 line)
{
    project.canId(line, 0x200, Direction::Transmit, QStringLiteral("Actuator Command"), 100);
    element(project, line, 0x200, Direction::Transmit, 0, QStringLiteral("Set Point"), 6, 0,
            QStringLiteral("setPoint"));
    element(project, line, 0x200, Direction::Transmit, 1, QStringLiteral("Mode"), 5, 16, QString());
    project.canId(line, 0x201, Direction::Transmit, QStringLiteral("Keep Alive"), 1000);
    project.canId(line, 0x100, Direction::Receive, QStringLiteral("Sensor Status"), 500);
    element(project, line, 0x100, Direction::Receive, 0, QStringLiteral("Temperature"), 3, 0,
            QStringLiteral("sensorTemp"));
}

void j1939Name(ProjectBuilder &project, const QString &startAddress)
{
    project.j1939(QStringLiteral("identitynumber"), QStringLiteral("0x1234"))
        .j1939(QStringLiteral("manufacturercode"), QStringLiteral("4021"))
        .j1939(QStringLiteral("addresscapable"), QStringLiteral("1"))
        .j1939(QStringLiteral("startaddress"), startAddress);
}

void rawCanAlone(ProjectBuilder &project)
{
    project.line(0, 4).general(QStringLiteral("applicationheader"), QStringLiteral("app.h"));
    rawCanDevice(project, 0);
}

// A raw CAN line in bootloader mode with a UDS server: CAN-IDs exist, but the file holds none of them.
void bootloader(ProjectBuilder &project)
{
    project.line(0, 4)
        .general(QStringLiteral("uds_bl_setting"), QStringLiteral("1"))
        .general(QStringLiteral("udsserver_supported"), QStringLiteral("1"))
        .general(QStringLiteral("udsserver_version"), QStringLiteral("4"))
        .general(QStringLiteral("isotp_connection_cnt"), QStringLiteral("1"));
    rawCanDevice(project, 0);
}

void canopenAndJ1939Lines(ProjectBuilder &project)
{
    project.line(0, 1).line(1, 2);
    canopenDevice(project, 0);
    j1939Device(project, 1);
    j1939Name(project, QStringLiteral("0, 84"));
}

// J1939 and raw CAN on lines of their own, with CAN FD and ISO-TP.
void j1939AndRawCanLines(ProjectBuilder &project)
{
    project.line(0, 2).line(1, 4)
        .general(QStringLiteral("canfd_supported"), QStringLiteral("1"))
        .general(QStringLiteral("isotp_connection_cnt"), QStringLiteral("1"));
    j1939Device(project, 0);
    rawCanDevice(project, 1);
    j1939Name(project, QStringLiteral("84"));
}

// Two lines that each run CANopen or raw CAN, with a UDS server and the CANopen objects' own COB-IDs.
void canopenOrRawCanLines(ProjectBuilder &project)
{
    project.line(0, 6).line(1, 6)
        .general(QStringLiteral("udsserver_supported"), QStringLiteral("1"))
        .general(QStringLiteral("udsserver_version"), QStringLiteral("1"))
        .general(QStringLiteral("isotp_connection_cnt"), QStringLiteral("1"));
    canopenDevice(project, 0);
    rawCanDevice(project, 0);
    canopenDevice(project, 1);
    project.canId(1, 0x300, Direction::Receive, QStringLiteral("Remote Status"), 0);
}

// One line that runs CANopen or J1939, with a CiA 510 server and the NAME set at run time.
void canopenOrJ1939Line(ProjectBuilder &project)
{
    project.line(0, 5)
        .general(QStringLiteral("init_static_variables"), QStringLiteral("0"))
        .j1939(QStringLiteral("cia510serversupport"), QStringLiteral("1"));
    canopenDevice(project, 0);
    j1939Device(project, 0);
    j1939Name(project, QStringLiteral("84"));
}

void j1939OrRawCanLine(ProjectBuilder &project)
{
    project.line(0, 7).general(QStringLiteral("init_static_variables"), QStringLiteral("1"));
    j1939Device(project, 0);
    rawCanDevice(project, 0);
    j1939Name(project, QStringLiteral("84"));
}

} // namespace

const QList<Project> &projects()
{
    static const QList<Project> list = {
        {"rawcan_alone", rawCanAlone, "gen_rawcan.c"},
        {"bootloader", bootloader, "gen_uds.c"},
        {"canopen_and_j1939_lines", canopenAndJ1939Lines, "gen_mp.c"},
        {"j1939_and_rawcan_lines", j1939AndRawCanLines, "gen_mp.c"},
        {"canopen_or_rawcan_lines", canopenOrRawCanLines, "gen_mp.c"},
        {"canopen_or_j1939_line", canopenOrJ1939Line, "gen_mp.c"},
        {"j1939_or_rawcan_line", j1939OrRawCanLine, "gen_mp.c"},
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

void build(const Project &project, ProjectBuilder &builder, bool older)
{
    builder.general(QStringLiteral("use_core_headers"), older ? QStringLiteral("V3") : QStringLiteral("V4"))
        .general(QStringLiteral("new_init_structure"), QStringLiteral("1"));
    project.build(builder);
    // The editor keeps each group's count of signals; the builder adds them one by one.
    builder.store().updatePGNMappingCounts();
}

bool generate(ObjectDataBase &store, const QString &folder)
{
    Log log;
    GeneratorCatalog catalog;
    GeneratorMainHandler driver(&log, QSharedPointer<PostGenProgressHandler>::create(), &catalog);
    bool done = false;
    QObject::connect(&driver, &GeneratorMainHandler::finished,
                     [&done](GeneratorMainHandler::GeneratorResult result) {
                         done = result == GeneratorMainHandler::Done;
                     });
    driver.setSkipEdsCheck(true);
    driver.setHiddenRun(true);
    driver.setProject(&store, folder, QStringLiteral("P"));
    driver.generate(true);
    if (!done)
        qWarning().noquote() << log.logText();
    return done;
}

QString goldenPath(const QString &file)
{
    return QStringLiteral(KESTREL_MULTIPRO_GOLDEN_DIR "/") + file;
}

} // namespace MultiProProjects
