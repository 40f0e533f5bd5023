#include "store/projectconverter.h"
#include "support/projectbuilder.h"

#include <QtTest>

namespace {

// Runs every pass of the edition twice; the second run must change nothing more.
QString convertTwice(ObjectDataBase &store, const QString &application)
{
    ProjectConverter::convert(&store, application);
    const QString once = store.computeFileHash();
    ProjectConverter::convert(&store, application);
    return once == store.computeFileHash() ? QString() : QStringLiteral("second run changed the project");
}

} // namespace

class TestProjectConverter : public QObject
{
    Q_OBJECT

private slots:
    void genericSettings_data()
    {
        QTest::addColumn<QString>("key");
        QTest::addColumn<QString>("value");
        QTest::addColumn<QString>("expected");
        QTest::newRow("UDS server 5 is raised") << "udsserver_version" << "5" << "6";
        QTest::newRow("UDS server 4 stays") << "udsserver_version" << "4" << "4";
        QTest::newRow("UDS server 6 stays") << "udsserver_version" << "6" << "6";
        QTest::newRow("group filter is cleared") << "drv_group_filter" << "1" << "0";
        QTest::newRow("group filter 2 stays") << "drv_group_filter" << "2" << "2";
    }

    void genericSettings()
    {
        QFETCH(QString, key);
        QFETCH(QString, value);
        QFETCH(QString, expected);
        ProjectBuilder project;
        project.line(0, 1).general(key, value).general(QStringLiteral("hw_defines"), QStringLiteral("#define X 1"));
        QCOMPARE(convertTwice(project.store(), QStringLiteral("CANopen Kestrel")), QString());
        QCOMPARE(project.store().getGeneralSetting(key), expected);
        const QString defines = project.store().getGeneralSetting(QStringLiteral("hw_defines"));
        if (key == QLatin1String("drv_group_filter") && value == QLatin1String("1"))
            QCOMPARE(defines, QStringLiteral("#define X 1\n\n /* old group filter setting */\n"
                                             "#define CO_DRV_GROUP_FILTER 1u\n"));
        else
            QCOMPARE(defines, QStringLiteral("#define X 1"));
    }

    void canopenSettings()
    {
        ProjectBuilder project;
        project.line(0, 1).line(1, 1);
        project.general(QStringLiteral("co_ml_ms"), QStringLiteral("1,0"));
        project.general(QStringLiteral("usdo_server_cnt"), QStringLiteral("2"));
        project.general(QStringLiteral("usdo_client_enabled"), QStringLiteral("0"));
        project.general(QStringLiteral("usdo_client_cnt"), QStringLiteral("0"));
        SUBINDEX_DATA_T sub = ProjectBuilder::subRecord(QStringLiteral("Time"), 7, QStringLiteral("rw"),
                                                        QStringLiteral("0"));
        sub.implementation = 1;
        project.sub(1, 0x1032, 0, sub).sub(0, 0x1033, 0, sub);
        ObjectDataBase &store = project.store();
        QCOMPARE(convertTwice(store, QStringLiteral("CANopen Kestrel")), QString());
        QCOMPARE(store.getGeneralSetting(QStringLiteral("nmtmaster")), QStringLiteral("1,0"));
        QCOMPARE(store.getGeneralSetting(QStringLiteral("co_ml_ms")), QString());
        QCOMPARE(store.getGeneralSetting(QStringLiteral("usdo_server_enabled")), QStringLiteral("1"));
        QCOMPARE(store.getGeneralSetting(QStringLiteral("usdo_client_enabled")), QStringLiteral("0"));
        SUBINDEX_DATA_T read;
        store.getSubIndex(1, 0x1032, 0, read);
        QCOMPARE(read.implementation, quint8(0));
        store.getSubIndex(0, 0x1033, 0, read);
        QCOMPARE(read.implementation, quint8(1));

        ProjectBuilder single;
        single.line(0, 1).general(QStringLiteral("co_ml_ms"), QStringLiteral("1"));
        ProjectConverter::convert(&single.store(), QStringLiteral("CANopen Kestrel"));
        QCOMPARE(single.store().getGeneralSetting(QStringLiteral("co_ml_ms")), QStringLiteral("1"));
    }

    void dataPageMovesIntoTheNumber()
    {
        ProjectBuilder project;
        project.line(0, 2);
        PGN paged;
        paged.number = 0x0100;
        paged.direction = Direction::Transmit;
        paged.edp_dp_key = 1;
        paged.name = QStringLiteral("paged");
        project.pgn(0, paged);
        project.spn(0, 0x0100, Direction::Transmit, 500, QStringLiteral("a"), 5, 0, 0);
        project.spn(0, 0x0100, Direction::Transmit, 501, QStringLiteral("b"), 5, 1, 8);
        PGN plain;
        plain.number = 0x0200;
        plain.direction = Direction::Receive;
        plain.mappingcount = 9;
        project.pgn(0, plain);
        PGN safe;
        safe.number = 0x0300;
        safe.direction = Direction::Receive;
        safe.issafe = true;
        project.pgn(0, safe);
        ObjectDataBase &store = project.store();

        QCOMPARE(convertTwice(store, QStringLiteral("J1939 Kestrel")), QString());
        QCOMPARE(store.getPGNs(0, Direction::Transmit), QList<quint32>{0x10100});
        PGN read;
        QVERIFY(store.getPGN(0, 0x10100, Direction::Transmit, read));
        QCOMPARE(read.edp_dp_key, quint8(0));
        QCOMPARE(read.name, QStringLiteral("paged"));
        QCOMPARE(store.getSPNs(0, 0x10100, Direction::Transmit), (QList<quint32>{500, 501}));
        SPN spn;
        QVERIFY(store.getSPN(0, 0x10100, Direction::Transmit, 501, spn));
        QCOMPARE(spn.pos, quint8(1));
        QCOMPARE(spn.bitposition, quint16(8));
        QVERIFY(store.getPGN(0, 0x0200, Direction::Receive, read));
        QCOMPARE(read.mappingcount, quint16(0));
        QVERIFY(store.getPGN(0, 0x0300, Direction::Receive, read));
        QCOMPARE(read.safetytype, quint8(1));
    }

    void rawCanEditionDropsAddressClaim()
    {
        ProjectBuilder project;
        project.line(0, 7).line(1, 2);
        project.pgn(0, 60928, Direction::Transmit, QStringLiteral("AC"));
        project.pgn(1, 60928, Direction::Transmit, QStringLiteral("AC"));
        project.pgn(1, 60928, Direction::Receive, QStringLiteral("AC in"));
        ProjectConverter::convert(&project.store(), QStringLiteral("CAN Kestrel"));
        QCOMPARE(project.store().getPGNs(0), QList<quint32>{});
        QCOMPARE(project.store().getPGNs(1, Direction::Receive), QList<quint32>{60928});
        QCOMPARE(project.store().getPGNs(1, Direction::Transmit), QList<quint32>{});

        ProjectBuilder j1939;
        j1939.line(0, 2).pgn(0, 60928, Direction::Transmit, QStringLiteral("AC"));
        ProjectConverter::convert(&j1939.store(), QStringLiteral("J1939 Kestrel"));
        QCOMPARE(j1939.store().getPGNs(0), QList<quint32>{60928});
    }

    void energyBusDevicesAreRenumbered()
    {
        ProjectBuilder project;
        project.line(0, 1);
        ObjectDataBase &store = project.store();
        store.setEnergyBusSetting(QStringLiteral("device_cnt"), QStringLiteral("3"));
        store.setEnergyBusSetting(QStringLiteral("device_1"), QStringLiteral("1 Battery"));
        store.setEnergyBusSetting(QStringLiteral("device_2"), QStringLiteral("3  Security  device"));
        store.setEnergyBusSetting(QStringLiteral("device_3"), QStringLiteral("4 Charger"));
        store.setEnergyBusSetting(QStringLiteral("device_4"), QStringLiteral("5 left over"));
        store.setEnergyBusSetting(QStringLiteral("sec_3_kind"), QStringLiteral("0x2"));
        store.setEnergyBusSetting(QStringLiteral("sec_1_kind"), QStringLiteral("1"));
        store.setEnergyBusSetting(QStringLiteral("sec_4_kind"), QStringLiteral("1"));
        QCOMPARE(convertTwice(store, QStringLiteral("EnergyBus Kestrel Wizard")), QString());
        QCOMPARE(store.getEnergyBusSetting(QStringLiteral("device_1")), QStringLiteral("1 Battery"));
        QCOMPARE(store.getEnergyBusSetting(QStringLiteral("device_2")), QStringLiteral("2 Security device"));
        QCOMPARE(store.getEnergyBusSetting(QStringLiteral("device_3")), QStringLiteral("3 Charger"));
        QCOMPARE(store.getEnergyBusSetting(QStringLiteral("sec_2_kind")), QStringLiteral("2"));
        QCOMPARE(store.getEnergyBusKeys().contains(QStringLiteral("device_4")), false);
        QCOMPARE(store.getEnergyBusKeys().contains(QStringLiteral("sec_1_kind")), false);
        QCOMPARE(store.getEnergyBusKeys().contains(QStringLiteral("sec_3_kind")), false);
        QCOMPARE(store.getEnergyBusKeys().contains(QStringLiteral("sec_4_kind")), false);
    }
};

QTEST_GUILESS_MAIN(TestProjectConverter)
#include "tst_projectconverter.moc"
