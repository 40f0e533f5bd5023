#include "tst_pgngeneratorfixture.h"

#include "store/objectdatabase.h"
#include "support/projectbuilder.h"
#include "support/testprojects.h"


namespace PgnProjects {

namespace {

PGN pgn(quint32 number, quint8 direction, const QString &name, quint8 priority, quint16 cycle,
        quint16 inhibit, quint16 mappings)
{
    PGN data;
    data.number = number;
    data.direction = direction;
    data.name = name;
    data.priority = priority;
    data.cycletime_ms = cycle;
    data.inhibittime_ms = inhibit;
    data.mappingcount = mappings;
    return data;
}

void spn(ProjectBuilder &project, quint8 line, quint32 group, quint8 direction, quint32 number,
         const QString &name, quint16 dataType, quint8 pos, quint16 bitPosition, quint8 implementation,
         const QString &varName = QString(), quint16 bitSize = 0)
{
    SPN data;
    data.pgnnumber = group;
    data.direction = direction;
    data.spnnumber = number;
    data.name = name;
    data.datatype = dataType;
    data.pos = pos;
    data.bitposition = bitPosition;
    data.implementation = implementation;
    data.varname = varName;
    data.bitsize = bitSize;
    project.spn(line, data);
}

// An engine controller on one line: a receive PGN from three source addresses, application variables,
// managed signals of 2 to 64 bits, a string, and its NAME from the settings.
void j1939Device(ProjectBuilder &project)
{
    project.line(0, 2)
        .general(QStringLiteral("use_core_headers"), QStringLiteral("V4"))
        .general(QStringLiteral("new_init_structure"), QStringLiteral("1"))
        .general(QStringLiteral("init_static_variables"), QStringLiteral("1"))
        .general(QStringLiteral("applicationheader"), QStringLiteral(" app.h  board.h "))
        .j1939(QStringLiteral("identitynumber"), QStringLiteral("0x1234"))
        .j1939(QStringLiteral("manufacturercode"), QStringLiteral("4021"))
        .j1939(QStringLiteral("ecuinstance"), QStringLiteral("3"))
        .j1939(QStringLiteral("functioninstance"), QStringLiteral("14"))
        .j1939(QStringLiteral("function"), QStringLiteral("0xff"))
        .j1939(QStringLiteral("vehiclesystem"), QStringLiteral("0x55"))
        .j1939(QStringLiteral("vehicleinstance"), QStringLiteral("1"))
        .j1939(QStringLiteral("industrygroup"), QStringLiteral("2"))
        .j1939(QStringLiteral("addresscapable"), QStringLiteral("1"))
        .j1939(QStringLiteral("startaddress"), QStringLiteral("84"));
    const quint8 rx = Direction::Receive;
    const quint8 tx = Direction::Transmit;
    PGN controller = pgn(61443, rx, QStringLiteral("Electronic Engine Controller 2"), 3, 50, 0, 2);
    controller.multisourceaddress = 3;
    project.pgn(0, controller);
    spn(project, 0, 61443, rx, 91, QStringLiteral("Accelerator Pedal Position 1"), 5, 0, 8, 0);
    spn(project, 0, 61443, rx, 92, QStringLiteral("Engine Percent Load At Current Speed"), 6, 1, 16, 2,
        QStringLiteral("engineLoad"));
    project.pgn(0, pgn(65265, rx, QStringLiteral("Cruise Control/Vehicle Speed"), 6, 100, 0, 2));
    spn(project, 0, 65265, rx, 84, QStringLiteral("Wheel-Based Vehicle Speed"), 6, 0, 8, 2,
        QStringLiteral("vehicleSpeed"));
    spn(project, 0, 65265, rx, 70, QStringLiteral("Parking Brake Switch"), 100, 1, 2, 0);
    project.pgn(0, pgn(65248, tx, QStringLiteral("Vehicle Distance"), 6, 100, 0, 1));
    spn(project, 0, 65248, tx, 244, QStringLiteral("Trip Distance"), 27, 0, 0, 0);
    project.pgn(0, pgn(65259, tx, QStringLiteral("Component Identification"), 6, 0, 0, 1));
    spn(project, 0, 65259, tx, 586, QStringLiteral("Make"), 10, 0, 0, 2, QStringLiteral("make"), 40);
    project.pgn(0, pgn(65262, tx, QStringLiteral("Engine Temperature 1"), 6, 1000, 100, 3));
    spn(project, 0, 65262, tx, 110, QStringLiteral("Engine Coolant Temperature"), 5, 0, 0, 2,
        QStringLiteral("coolantTemp"));
    spn(project, 0, 65262, tx, 175, QStringLiteral("Engine Oil Temperature 1"), 6, 1, 16, 0);
    spn(project, 0, 65262, tx, 176, QString(), 129, 2, 32, 0);
}

// Two J1939 lines with dynamic PGNs, CAN FD and a CiA 510 server; the NAME is set at run time. Line 1
// sends nothing but its address claim.
void twoLinesFd(ProjectBuilder &project)
{
    project.line(0, 2)
        .line(1, 2)
        .general(QStringLiteral("use_core_headers"), QStringLiteral("V4"))
        .general(QStringLiteral("new_init_structure"), QStringLiteral("1"))
        .general(QStringLiteral("init_static_variables"), QStringLiteral("0"))
        .general(QStringLiteral("canfd_supported"), QStringLiteral("1"))
        .j1939(QStringLiteral("dynsupport"), QStringLiteral("1"))
        .j1939(QStringLiteral("cia510serversupport"), QStringLiteral("1"))
        .j1939(QStringLiteral("identitynumber"), QStringLiteral("100,200"))
        .j1939(QStringLiteral("manufacturercode"), QStringLiteral("4021"))
        .j1939(QStringLiteral("ecuinstance"), QStringLiteral("1,2"))
        .j1939(QStringLiteral("function"), QStringLiteral("0x80"))
        .j1939(QStringLiteral("addresscapable"), QStringLiteral("0"))
        .j1939(QStringLiteral("startaddress"), QStringLiteral("84, 85"));
    PGN temperatures = pgn(65262, Direction::Transmit, QStringLiteral("Engine Temperature 1"), 6, 1000, 0, 1);
    temperatures.FD_TrailerFormat = 1;
    temperatures.FD_AssuranceType = 2;
    temperatures.FD_AssuranceDataSize = 4;
    project.pgn(0, temperatures);
    spn(project, 0, 65262, Direction::Transmit, 110, QStringLiteral("Engine Coolant Temperature"), 5, 0, 0,
        0);
    project.pgn(1,
                pgn(65265, Direction::Receive, QStringLiteral("Cruise Control/Vehicle Speed"), 6, 100, 0, 1));
    spn(project, 1, 65265, Direction::Receive, 84, QStringLiteral("Wheel-Based Vehicle Speed"), 6, 0, 8, 2,
        QStringLiteral("vehicleSpeed"));
}

} // namespace

const QList<Project> &projects()
{
    static const QList<Project> list = {
        {"j1939_device", j1939Device},
        {"two_lines_fd", twoLinesFd},
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

void build(const Project &project, ProjectBuilder &builder)
{
    project.build(builder);
}

QString goldenPath(const QString &file)
{
    return QStringLiteral(KESTREL_PGN_GOLDEN_DIR "/") + file;
}

} // namespace PgnProjects
