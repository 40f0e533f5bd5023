#include "documentprojects.h"

#include "support/projectbuilder.h"

namespace DocumentProjects {

SPN spn(quint32 pgn, quint8 direction, quint32 number, const QString &name, quint16 dataType, quint8 pos,
        quint8 implementation, const QString &varName)
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
    return data;
}

PGN pgn(quint32 number, quint8 direction, const QString &name, const QString &desc, quint16 cycleTime,
        quint8 priority)
{
    PGN data;
    data.number = number;
    data.direction = direction;
    data.name = name;
    data.desc = desc;
    data.cycletime_ms = cycleTime;
    data.priority = priority;
    return data;
}

DataElement element(quint32 canId, quint8 direction, quint32 number, const QString &name, quint16 dataType,
                    quint16 bitPos, quint16 bitSize, const QString &desc)
{
    DataElement data;
    data.canid = canId;
    data.direction = direction;
    data.number = number;
    data.name = name;
    data.datatype = dataType;
    data.bitpos = bitPos;
    data.bitsize = bitSize;
    data.desc = desc;
    return data;
}

void j1939Dbc(ProjectBuilder &project, const QString &separator)
{
    project.line(0, 2)
        .j1939(QStringLiteral("startaddress"), QStringLiteral("0x80"))
        .j1939(QStringLiteral("identitynumber"), QStringLiteral("0x123456,0x654321"))
        .j1939(QStringLiteral("manufacturercode"), QStringLiteral("4021"))
        .j1939(QStringLiteral("ecuinstance"), QStringLiteral("3"))
        .j1939(QStringLiteral("functioninstance"), QStringLiteral("14"))
        .j1939(QStringLiteral("function"), QStringLiteral("0xff"))
        .j1939(QStringLiteral("vehiclesystem"), QStringLiteral("0x55"))
        .j1939(QStringLiteral("vehicleinstance"), QStringLiteral("1"))
        .j1939(QStringLiteral("industrygroup"), QStringLiteral("2"))
        .j1939(QStringLiteral("addresscapable"), QStringLiteral("1"))
        .j1939(QStringLiteral("diagsupport_dm1"), QStringLiteral("1"));
    project.pgn(0, pgn(0xEF00, Direction::Receive, QStringLiteral("Proprietary A"),
                       QStringLiteral("Proprietary A to us")));
    SPN speed = spn(0xEF00, Direction::Receive, 190, QStringLiteral("Engine Speed"), 6, 0);
    speed.desc = QStringLiteral("rpm value");
    project.spn(0, speed)
        .spn(0, spn(0xEF00, Direction::Receive, 516352, QStringLiteral("dummy1"), 103, 1))
        .spn(0,
             spn(0xEF00, Direction::Receive, 600, QStringLiteral("Mode a") + separator + QStringLiteral("b"),
                 102, 2, 2, QStringLiteral("mode")));
    project.pgn(0, pgn(0xFEF1, Direction::Transmit, QStringLiteral("Cruise Control/Vehicle Speed"),
                       QStringLiteral("CCVS"), 100));
    SPN text = spn(0xFEF1, Direction::Transmit, 1000, QStringLiteral("Text"), 121, 1);
    text.bitsize = 24;
    project
        .spn(0, spn(0xFEF1, Direction::Transmit, 84, QStringLiteral("Wheel Speed"), 6, 0, 2,
                    QStringLiteral("wheelSpeed")))
        .spn(0, text)
        .spn(0,
             spn(0xFEF1, Direction::Transmit, 70, QStringLiteral("Flags"), 1, 2, 1, QStringLiteral("flags")));
}

void j1939Documents(ProjectBuilder &project)
{
    project.line(0, 2);
    PGN ccvs = pgn(0xFEF1, Direction::Transmit, QStringLiteral("CCVS  info"),
                   QStringLiteral("Speed \u00f6\u00df\nline"), 100);
    ccvs.inhibittime_ms = 50;
    project.pgn(0, ccvs);
    SPN text = spn(0xFEF1, Direction::Transmit, 1000, QStringLiteral("Text"), 121, 1);
    text.bitsize = 24;
    project
        .spn(0, spn(0xFEF1, Direction::Transmit, 84, QStringLiteral("Wheel Speed"), 6, 0, 2,
                    QStringLiteral("ws_$I_$s")))
        .spn(0, text);
    project.pgn(0, pgn(0xEF00, Direction::Receive, QStringLiteral("Prop A"), QStringLiteral("x"), 0, 3));
    project.spn(0, spn(0xEF00, Direction::Receive, 190, QStringLiteral("Engine Speed"), 6, 0, 1));
}

void rawCan(ProjectBuilder &project, quint32 receivedId)
{
    project.line(0, 4).canId(0, 0x123, Direction::Transmit, QStringLiteral("Motor Status"), 100);
    CANID motor;
    project.store().getCANID(0, 0x123, Direction::Transmit, motor);
    motor.desc = QStringLiteral("State of \"motor\"");
    motor.inhibittime_ms = 10;
    project.store().addCANID(0, 0x123, motor);
    DataElement speed =
        element(0x123, Direction::Transmit, 0, QStringLiteral("Speed"), 6, 0, 0, QStringLiteral("in rpm"));
    speed.defaultvalue = QStringLiteral("100");
    project.dataElement(0, speed)
        .dataElement(0, element(0x123, Direction::Transmit, 1, QStringLiteral("Temp"), 2, 16))
        .dataElement(0, element(0x123, Direction::Transmit, 2, QString(), 1, 24))
        .dataElement(0, element(0x123, Direction::Transmit, 3, QStringLiteral("flag x"), 5, 25, 3));
    project.canId(0, 0x20000100, Direction::Transmit, QString());
    project.canId(0, receivedId, Direction::Receive, QStringLiteral("a b"));
    project.dataElement(
        0, element(receivedId, Direction::Receive, 0, QStringLiteral("Val"), 7, 0, 0, QStringLiteral("x")));
}

void canopen(ProjectBuilder &project)
{
    project.line(0, 1)
        .description(0, QStringLiteral("VendorName"), QStringLiteral("ACME"))
        .description(0, QStringLiteral("ProductName"), QStringLiteral("Widget"))
        .description(0, QStringLiteral("FileVersion"), QStringLiteral("1"))
        .description(0, QStringLiteral("FileRevision"), QStringLiteral("2"))
        .description(0, QStringLiteral("OrderCode"), QStringLiteral("W-1"))
        .description(0, QStringLiteral("CreatedBy"), QStringLiteral("me"))
        .description(0, QStringLiteral("ModifiedBy"), QStringLiteral("you"))
        .description(0, QStringLiteral("Comment"), QStringLiteral("  First line\nSecond line\n"));
    project.var(0, 0x1000, QStringLiteral("Device Type"), 7, QStringLiteral("ro"), QStringLiteral("0x191"));

    INDEX_DATA_T identity;
    identity.name = QStringLiteral("Identity");
    identity.objecttype = 9;
    identity.datatype = 7;
    identity.description = QStringLiteral("Who & what <id>");
    project.object(0, 0x1018, identity)
        .sub(0, 0x1018, 0, QStringLiteral("Highest sub-index"), 5, QStringLiteral("const"),
             QStringLiteral("1"));
    SUBINDEX_DATA_T vendor = ProjectBuilder::subRecord(QStringLiteral("Vendor-ID"), 7, QStringLiteral("ro"),
                                                       QStringLiteral("0x0"));
    vendor.defaultineds = false;
    vendor.implementation = 1;
    project.sub(0, 0x1018, 1, vendor);

    project.object(0, 0x6000, QStringLiteral("Inputs $I"), 8, 5)
        .sub(0, 0x6000, 0, QStringLiteral("Count"), 5, QStringLiteral("const"), QStringLiteral("1"));
    SUBINDEX_DATA_T input =
        ProjectBuilder::subRecord(QStringLiteral("Input $s"), 5, QStringLiteral("ro"), QStringLiteral("0"));
    input.defaultineds = false;
    input.implementation = 2;
    input.varname = QStringLiteral("in_$s");
    input.size = 1;
    input.limitineds = true;
    input.lowlimit = QStringLiteral("0");
    input.uplimit = QStringLiteral("255");
    input.description = QStringLiteral("Line1\nLine2 \u00e4\u00df");
    input.pdomapping = PDOMapping(TPDO);
    project.sub(0, 0x6000, 1, input);
}

} // namespace DocumentProjects
