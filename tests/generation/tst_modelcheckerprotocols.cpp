#include "support/projectbuilder.h"
#include "tst_modelcheckerfixture.h"

#include <QtTest>

using namespace ModelCheckFixture;

namespace {

constexpr quint8 Receive = Direction::Receive;
constexpr quint8 Transmit = Direction::Transmit;

Setup j1939(const QString &key, const QString &value)
{
    return [key, value](ProjectBuilder &project) { project.j1939(key, value); };
}

Setup nameField(const QString &key, const QString &value)
{
    return [key, value](ProjectBuilder &project) { project.store().setLineJ1939Setting(key, value, 0); };
}

Setup group(quint32 number, quint8 direction, const QString &name, bool safe = false, quint8 safetyType = 0)
{
    return [=](ProjectBuilder &project) {
        PGN data;
        data.number = number;
        data.direction = direction;
        data.name = name;
        data.issafe = safe;
        data.safetytype = safetyType;
        project.pgn(0, data);
    };
}

struct SpnValues
{
    quint32 pgn = 65280;
    quint8 direction = Receive;
    quint32 number = 0;
    QString name{};
    quint16 dataType = 5;
    quint8 pos = 0;
    quint16 bitSize = 0;
    quint8 implementation = 0;
    QString variable{};
};

Setup spn(const SpnValues &values)
{
    return [values](ProjectBuilder &project) {
        SPN data;
        data.pgnnumber = values.pgn;
        data.direction = values.direction;
        data.spnnumber = values.number;
        data.name = values.name;
        data.datatype = values.dataType;
        data.pos = values.pos;
        data.bitsize = values.bitSize;
        data.implementation = values.implementation;
        data.varname = values.variable;
        project.spn(0, data);
    };
}

struct SignalValues
{
    quint32 id = 0x100;
    quint8 direction = Receive;
    quint32 number = 0;
    QString name{};
    quint16 dataType = 5;
    quint8 pos = 0;
    quint16 bitSize = 0;
    quint8 implementation = 2;
    QString variable{};
};

Setup signal(const SignalValues &values)
{
    return [values](ProjectBuilder &project) {
        DataElement data;
        data.canid = values.id;
        data.direction = values.direction;
        data.number = values.number;
        data.name = values.name;
        data.datatype = values.dataType;
        data.pos = values.pos;
        data.bitsize = values.bitSize;
        data.implementation = values.implementation;
        data.varname = values.variable;
        project.dataElement(0, data);
    };
}

Setup canId(quint32 id, quint8 direction)
{
    return [=](ProjectBuilder &project) { project.canId(0, id, direction, QStringLiteral("Message")); };
}

QString redError(const QString &text)
{
    return QStringLiteral("<strong><font color='red'>Error: </font></strong>") + text;
}

void columns()
{
    QTest::addColumn<Setup>("setup");
    QTest::addColumn<QStringList>("expected");
    QTest::addColumn<int>("errors");
}

} // namespace

// The rules of J1939 and raw CAN lines, each triggered by a small change of a clean line.
class TestModelCheckerProtocols : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { setApplication(); }

    void j1939Rules_data()
    {
        columns();
        QTest::newRow("clean line") << Setup(general("co_timer_interval", "1")) << QStringList() << 0;
        QTest::newRow("sorted COB list")
            << general("sorted_coblist", "1")
            << QStringList{error("Sorted COB list may not used with J1939 projects.")} << 1;
        QTest::newRow("group filter")
            << general("drv_group_filter", "1")
            << QStringList{warning("Group filter is only useful for CANopen or mixed "
                                   "projects.")}
            << 0;
        QTest::newRow("dynamic PGNs without additional COBs")
            << j1939("dynsupport", "1")
            << QStringList{error("Additional COBs need to be specific with dynamic PGN support.")} << 1;
        QTest::newRow("dynamic PGNs with additional COBs")
            << steps({j1939("dynsupport", "1"), general("additional_cob_count", "4")}) << QStringList() << 0;

        QTest::newRow("identity number missing")
            << nameField("identitynumber", " ")
            << QStringList{error("Identity number not defined in J1939 configuration tab for line 0.")} << 1;
        QTest::newRow("whole NAME missing")
            << steps({nameField("identitynumber", ""), nameField("manufacturercode", ""),
                      nameField("ecuinstance", ""), nameField("functioninstance", ""),
                      nameField("function", ""), nameField("vehiclesystem", ""),
                      nameField("vehicleinstance", ""), nameField("industrygroup", ""),
                      nameField("startaddress", "")})
            << QStringList{error("Identity number not defined in J1939 configuration tab for line 0."),
                           error("Manufacturer code not defined in J1939 configuration tab for line 0."),
                           error("ECU instance not defined in J1939 configuration tab for line 0."),
                           error("Function instance not defined in J1939 configuration tab for line 0"),
                           error("Function not defined in J1939 configuration tab for line 0."),
                           error("Vehicle system not defined in J1939 configuration tab for line 0."),
                           error("Vehicle instance not defined in J1939 configuration tab for line 0."),
                           error("Industry Group not defined in J1939 configuration tab for line 0."),
                           error("An address needs to defined in the J1939 configuration for line 0.")}
            << 9;
        const QString evaluationCode =
            QStringLiteral("<strong>Warning: The manufacturer code 4021 (vorlan field "
                           "systems GmbH) may not be used for production. </strong>");
        QTest::newRow("evaluation manufacturer code")
            << nameField("manufacturercode", "4021") << QStringList{evaluationCode} << 0;
        QTest::newRow("evaluation manufacturer code in 16 bits")
            << nameField("manufacturercode", "69557") << QStringList{evaluationCode} << 0;
        QTest::newRow("evaluation manufacturer code after a missing identity number")
            << steps({nameField("identitynumber", ""), nameField("manufacturercode", "4021"),
                      nameField("ecuinstance", "")})
            << QStringList{error("Identity number not defined in J1939 configuration tab for line 0."),
                           evaluationCode,
                           error("ECU instance not defined in J1939 configuration tab for line 0.")}
            << 2;
        QTest::newRow("manufacturer code in hexadecimal")
            << nameField("manufacturercode", "0xFB5") << QStringList() << 0;

        QTest::newRow("special PGN in the signal definitions")
            << group(60928, Receive, "Address claimed")
            << QStringList{error(
                   "Special PGN 60928/0xee00 is handled by the J1939 stack directly and may not be "
                   "included in the signal definitions.\n")}
            << 1;
        QTest::newRow("PGN below 0x1000 in hexadecimal")
            << steps({group(3584, Transmit, "Proprietary"),
                      spn({.pgn = 3584, .direction = Transmit, .number = 1, .name = "p"})})
            << QStringList{error(
                   "Special PGN 3584/0x0e00 is handled by the J1939 stack directly and may not be "
                   "included in the signal definitions.\n")}
            << 1;
        QTest::newRow("PGN without a name")
            << steps({group(65281, Receive, ""), spn({.pgn = 65281, .number = 7, .name = "s"})})
            << QStringList{warning("The PGN 65281 des not have a name.")} << 0;
        QTest::newRow("PGN without SPNs")
            << group(65281, Transmit, "Empty")
            << QStringList{error("PG (65281/0xff01) does not contain any SPNs.")} << 1;

        const Setup safeGroup =
            steps({group(65282, Transmit, "Safe", true, 1), spn({.pgn = 65282,
                                                                 .direction = Transmit,
                                                                 .number = 9,
                                                                 .name = "safe",
                                                                 .implementation = 2,
                                                                 .variable = "safeValue"})});
        QTest::newRow("safe PGN without SHM support")
            << safeGroup
            << QStringList{warning(
                   "PG (65282/0xff02) shall be transmitted as SDM but SHM support is not activated.")}
            << 0;
        QTest::newRow("safe PGN with SHM support")
            << steps({safeGroup, j1939("safetysupport", "1")}) << QStringList() << 0;
        QTest::newRow("safe PGN without safety type")
            << steps({group(65282, Transmit, "Safe", true, 0), j1939("safetysupport", "1"),
                      spn({.pgn = 65282,
                           .direction = Transmit,
                           .number = 9,
                           .name = "safe",
                           .implementation = 2,
                           .variable = "safeValue"})})
            << QStringList{error("PG (65282/0xff02) A safety type needs to be assigned to this PGN.")} << 1;
        QTest::newRow("FD safety type on classic CAN")
            << steps({group(65282, Transmit, "Safe", true, 3), j1939("safetysupport", "1"),
                      spn({.pgn = 65282,
                           .direction = Transmit,
                           .number = 9,
                           .name = "safe",
                           .implementation = 2,
                           .variable = "safeValue"})})
            << QStringList{error("PG (65282/0xff02) This safety type is not supported with classical CAN.")}
            << 1;
        QTest::newRow("FD safety type on CAN FD")
            << steps({group(65282, Transmit, "Safe", true, 3), j1939("safetysupport", "1"),
                      general("canfd_supported", "1"),
                      spn({.pgn = 65282,
                           .direction = Transmit,
                           .number = 9,
                           .name = "safe",
                           .implementation = 2,
                           .variable = "safeValue"})})
            << QStringList() << 0;
        QTest::newRow("safe PGN with managed variables and strings")
            << steps({group(65282, Transmit, "Safe", true, 1), j1939("safetysupport", "1"),
                      spn({.pgn = 65282,
                           .direction = Transmit,
                           .number = 9,
                           .name = "text",
                           .dataType = 9,
                           .bitSize = 16,
                           .implementation = 0})})
            << QStringList{error("PG (65282/0xff02) transmitted as SDM may not contain managed variables."),
                           error("PG (65282/0xff02) contains unsuppported data types.")}
            << 2;
        QTest::newRow("safe PGN of more than 64 bits")
            << steps({group(65282, Transmit, "Safe", true, 1), j1939("safetysupport", "1"),
                      j1939("bamsupport", "1"),
                      spn({.pgn = 65282,
                           .direction = Transmit,
                           .number = 9,
                           .name = "a",
                           .dataType = 27,
                           .implementation = 2,
                           .variable = "a"}),
                      spn({.pgn = 65282,
                           .direction = Transmit,
                           .number = 10,
                           .name = "b",
                           .dataType = 1,
                           .pos = 64,
                           .implementation = 2,
                           .variable = "b"})})
            << QStringList{error("PG (65282/0xff02) transmitted as SDM may not exceed 64 bit.")} << 1;

        const Setup longGroup =
            steps({group(65283, Transmit, "Long"),
                   spn({.pgn = 65283, .direction = Transmit, .number = 11, .name = "a", .dataType = 27}),
                   spn({.pgn = 65283,
                        .direction = Transmit,
                        .number = 12,
                        .name = "b",
                        .dataType = 1,
                        .pos = 64})});
        const QString noTransport =
            error("Neither BAM nor TP.CMDT supported but PGNs with length > 64 bit defined.");
        QTest::newRow("PGN of 65 bits without transport protocol")
            << longGroup << QStringList{noTransport} << 1;
        QTest::newRow("PGN of 65 bits with CAN FD")
            << steps({longGroup, general("canfd_supported", "1")}) << QStringList() << 0;
        QTest::newRow("PGN of 65 bits with BAM")
            << steps({longGroup, j1939("bamsupport", "1")}) << QStringList() << 0;
        QTest::newRow("PGN of 65 bits with TP.CMDT")
            << steps({longGroup, j1939("cmdtsupport", "1"), j1939("cmdtpackets", "3")}) << QStringList() << 0;
        QTest::newRow("PGN of 64 bits without transport protocol")
            << steps({group(65283, Transmit, "Full"),
                      spn({.pgn = 65283, .direction = Transmit, .number = 11, .name = "a", .dataType = 27})})
            << QStringList() << 0;
        QTest::newRow("bit sizes count where the type has none")
            << steps({group(65283, Transmit, "Long"), spn({.pgn = 65283,
                                                           .direction = Transmit,
                                                           .number = 11,
                                                           .name = "a",
                                                           .dataType = 10,
                                                           .bitSize = 65})})
            << QStringList{noTransport} << 1;
        QTest::newRow("TP.CMDT without packets")
            << steps({j1939("cmdtsupport", "1"), j1939("cmdtpackets", "0")})
            << QStringList{error("CMDT packet count should not be 0 in J1939 configuration.")} << 1;
        QTest::newRow("TP.CMDT with 256 packets, 0 in 8 bits")
            << steps({j1939("cmdtsupport", "1"), j1939("cmdtpackets", "256")})
            << QStringList{error("CMDT packet count should not be 0 in J1939 configuration.")} << 1;

        QTest::newRow("SPN in a variable without a name")
            << spn({.number = 520193, .name = "speed", .pos = 8, .implementation = 2, .variable = " "})
            << QStringList{error("The SPN 520193 in PGN 65280 needs a variable name.")} << 1;
        QTest::newRow("SPN without a name")
            << spn({.number = 520193, .name = " ", .pos = 8})
            << QStringList{warning("The SPN 520193 in PGN 65280 needs a name.")} << 0;
        QTest::newRow("SPN name starting with a number")
            << spn({.number = 520193, .name = "2nd", .pos = 8})
            << QStringList{warning("The name of SPN 520193 in PGN 65280 should not start with a number.")}
            << 0;
        QTest::newRow("SPNs on the same bits")
            << spn({.number = 520193, .name = "second"})
            << QStringList{warning(
                   "SPN 520193 in PGN 65280 overlaps in bit position with another SPN in the same "
                   "PGN.")}
            << 0;
        QTest::newRow("SPNs that touch")
            << spn({.number = 520193, .name = "second", .pos = 8}) << QStringList() << 0;
        QTest::newRow("SPN overlapping two others is told once")
            << steps({spn({.number = 520193, .name = "second", .pos = 2}),
                      spn({.number = 520194, .name = "third", .pos = 4})})
            << QStringList{warning("SPN 520193 in PGN 65280 overlaps in bit position with another SPN in the "
                                   "same "
                                   "PGN."),
                           warning("SPN 520194 in PGN 65280 overlaps in bit position with another SPN in the "
                                   "same "
                                   "PGN.")}
            << 0;
        QTest::newRow("SPNs of two PGNs on the same bits")
            << steps({group(65281, Receive, "Other"), spn({.pgn = 65281, .number = 5, .name = "other"})})
            << QStringList() << 0;

        const QString sharedVariable =
            warning("SPN %1 in PGN %2: variable name 'speed' is already used by SPN %3 in "
                    "PGN %4.");
        QTest::newRow("variable of two SPNs")
            << steps({group(65281, Receive, "Other"),
                      spn({.pgn = 65281, .number = 5, .name = "a", .implementation = 2, .variable = "speed"}),
                      spn({.pgn = 65281,
                           .number = 6,
                           .name = "b",
                           .pos = 8,
                           .implementation = 2,
                           .variable = "speed "})})
            << QStringList{sharedVariable.arg("6", "65281", "5", "65281")} << 0;
        QTest::newRow("variable in both directions of one PGN")
            << steps({group(65281, Receive, "In"), group(65281, Transmit, "Out"),
                      spn({.pgn = 65281, .number = 5, .name = "a", .implementation = 2, .variable = "speed"}),
                      spn({.pgn = 65281,
                           .direction = Transmit,
                           .number = 5,
                           .name = "a",
                           .implementation = 2,
                           .variable = "speed"})})
            << QStringList{sharedVariable.arg("5", "65281", "5", "65281")} << 0;
        QTest::newRow("variables that differ in case")
            << steps({group(65281, Receive, "Other"),
                      spn({.pgn = 65281, .number = 5, .name = "a", .implementation = 2, .variable = "speed"}),
                      spn({.pgn = 65281,
                           .number = 6,
                           .name = "b",
                           .pos = 8,
                           .implementation = 2,
                           .variable = "Speed"})})
            << QStringList() << 0;
        QTest::newRow("managed SPNs share no variable")
            << steps({group(65281, Receive, "Other"),
                      spn({.pgn = 65281, .number = 5, .name = "a", .variable = "x"}),
                      spn({.pgn = 65281, .number = 6, .name = "b", .pos = 8, .variable = "x"})})
            << QStringList() << 0;
    }

    void j1939Rules()
    {
        QFETCH(Setup, setup);
        QFETCH(QStringList, expected);
        QFETCH(int, errors);
        ProjectBuilder project;
        cleanJ1939(project);
        setup(project);
        const CheckResult result = checkJ1939(project);
        QCOMPARE(result.messages, expected);
        QCOMPARE(result.errors, errors);
    }

    void j1939RulesOfALaterLine()
    {
        ProjectBuilder project;
        cleanJ1939(project, 0);
        cleanJ1939(project, 1);
        project.store().setLineJ1939Setting(QStringLiteral("startaddress"), QString(), 1);
        QCOMPARE(checkJ1939(project, 0).messages, QStringList());
        QCOMPARE(checkJ1939(project, 1).messages,
                 QStringList{error("An address needs to defined in the J1939 configuration for line 1.")});
    }

    void rawCanRules_data()
    {
        columns();
        QTest::newRow("clean line") << Setup(general("co_timer_interval", "1")) << QStringList() << 0;
        QTest::newRow("CAN-ID in both directions")
            << steps({canId(0x100, Transmit), canId(0x200, Transmit)})
            << QStringList{warning("CAN-ID 0x100 appears in both TX and RX — this is unusual and may be a "
                                   "configuration error.")}
            << 0;
        QTest::newRow("standard CAN-ID above 0x7ff")
            << canId(0x800, Transmit)
            << QStringList{redError(" CAN-ID 0x800 is higher then 0x7ff, but extended flag is not set.")}
            << 1;
        QTest::newRow("standard CAN-ID 0x7ff") << canId(0x7FF, Transmit) << QStringList() << 0;
        QTest::newRow("extended CAN-ID") << canId(0x20000800, Transmit) << QStringList() << 0;
        QTest::newRow("signal in a variable without a name")
            << signal({.number = 1, .name = "sigB", .pos = 8, .variable = ""})
            << QStringList{redError(" Variable name missing for signal # 2 in CAN-ID 0x100")} << 1;
        QTest::newRow("managed signal without a variable")
            << signal({.number = 1, .name = "sigB", .pos = 8, .implementation = 0}) << QStringList() << 0;
        QTest::newRow("signals on the same bits")
            << signal({.number = 1, .name = "sigB", .pos = 4, .variable = "b"})
            << QStringList{redError(" Signal 'sigB' in CAN-ID 0x100 overlaps with another signal in the same "
                                    "message.")}
            << 1;
        QTest::newRow("signals that touch")
            << signal({.number = 1, .name = "sigB", .pos = 8, .variable = "b"}) << QStringList() << 0;
        QTest::newRow("signals beyond the classic payload")
            << signal({.number = 1, .name = "sigB", .pos = 56, .bitSize = 9, .variable = "b"})
            << QStringList{redError(
                   " CAN-ID 0x100: signals require 65 bits but the maximum payload is 64 bits.")}
            << 1;
        QTest::newRow("signals up to the end of the classic payload")
            << signal({.number = 1, .name = "sigB", .dataType = 6, .pos = 48, .variable = "b"})
            << QStringList() << 0;
        QTest::newRow("signals beyond the classic payload on CAN FD")
            << steps({signal({.number = 1, .name = "sigB", .pos = 56, .bitSize = 9, .variable = "b"}),
                      general("canfd_supported", "1")})
            << QStringList() << 0;
        QTest::newRow("signals beyond the FD payload")
            << steps({signal({.number = 1,
                              .name = "sigB",
                              .dataType = 10,
                              .pos = 250,
                              .bitSize = 300,
                              .variable = "b"}),
                      general("canfd_supported", "1")})
            << QStringList{redError(
                   " CAN-ID 0x100: signals require 550 bits but the maximum payload is 512 bits.")}
            << 1;

        const QString sharedVariable = warning(
            "Signal %1 in CAN-ID 0x%2: variable name 'a' is already used by signal %3 in CAN-ID 0x%4.");
        QTest::newRow("variable of two signals of one CAN-ID")
            << signal({.number = 1, .name = "sigB", .pos = 8, .variable = "a"})
            << QStringList{sharedVariable.arg("2", "100", "1", "100")} << 0;
        QTest::newRow("variable of signals of two CAN-IDs")
            << steps({canId(0x20000123, Transmit), signal({.id = 0x20000123,
                                                           .direction = Transmit,
                                                           .number = 3,
                                                           .name = "sigT",
                                                           .variable = " a"})})
            << QStringList{sharedVariable.arg("4", "123", "1", "100")} << 0;
    }

    void rawCanRules()
    {
        QFETCH(Setup, setup);
        QFETCH(QStringList, expected);
        QFETCH(int, errors);
        ProjectBuilder project;
        cleanRawCan(project);
        setup(project);
        const CheckResult result = checkRawCan(project);
        QCOMPARE(result.messages, expected);
        QCOMPARE(result.errors, errors);
    }
};

QTEST_MAIN(TestModelCheckerProtocols)
#include "tst_modelcheckerprotocols.moc"
