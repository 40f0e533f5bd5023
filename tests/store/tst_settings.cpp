#include "store/objectdatabase.h"
#include "store/settingskeys.h"
#include "support/projectbuilder.h"
#include "support/testprojects.h"

#include <QSignalSpy>
#include <QTemporaryDir>
#include <QtTest>


class TestSettings : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase()
    {
        qRegisterMetaType<ObjectDataBase::ChangeSet>("ObjectDataBase::ChangeSet");
        QCoreApplication::setApplicationName(QStringLiteral("CAN Kestrel"));
    }

    void perLineRead_data()
    {
        QTest::addColumn<QString>("stored");
        QTest::addColumn<int>("line");
        QTest::addColumn<QString>("expected");
        QTest::newRow("beyond the end yields the last") << "11,12" << 3 << "12";
        QTest::newRow("own element") << "11,12" << 0 << "11";
        QTest::newRow("empty stays empty") << "" << 2 << "";
        QTest::newRow("single value serves all lines") << "7" << 5 << "7";
        QTest::newRow("blank element") << "11, ,5" << 1 << " ";
    }

    void perLineRead()
    {
        QFETCH(QString, stored);
        QFETCH(int, line);
        QFETCH(QString, expected);
        ObjectDataBase store;
        store.createNewDataBase();
        store.setGeneralSetting(QStringLiteral("co_node_id"), stored);
        store.setJ1939Setting(QStringLiteral("startaddress"), stored);
        QCOMPARE(store.getLineGeneralSetting(QStringLiteral("co_node_id"), quint8(line)), expected);
        QCOMPARE(store.getLineJ1939Setting(QStringLiteral("startaddress"), quint8(line)), expected);
    }

    void perLineWrite_data()
    {
        QTest::addColumn<QString>("stored");
        QTest::addColumn<int>("line");
        QTest::addColumn<QString>("expected");
        QTest::newRow("pads with blanks") << "11" << 3 << "11, , ,5";
        QTest::newRow("replaces an element") << "11,12,13" << 1 << "11,5,13";
        QTest::newRow("empty value") << "" << 1 << ",5";
        QTest::newRow("first line of an empty value") << "" << 0 << "5";
    }

    void perLineWrite()
    {
        QFETCH(QString, stored);
        QFETCH(int, line);
        QFETCH(QString, expected);
        ObjectDataBase store;
        store.createNewDataBase();
        store.setGeneralSetting(QStringLiteral("co_node_id"), stored);
        store.setJ1939Setting(QStringLiteral("startaddress"), stored);
        QVERIFY(store.setLineGeneralSetting(QStringLiteral("co_node_id"), QStringLiteral("5"), quint8(line)));
        QVERIFY(store.setLineJ1939Setting(QStringLiteral("startaddress"), QStringLiteral("5"), quint8(line)));
        QCOMPARE(store.getGeneralSetting(QStringLiteral("co_node_id")), expected);
        QCOMPARE(store.getJ1939Setting(QStringLiteral("startaddress")), expected);
    }

    void descriptionKeysCarryTheLine()
    {
        ObjectDataBase store;
        store.createNewDataBase();
        store.setDescriptionSetting(QStringLiteral("ProductName"), QStringLiteral("zero"));
        store.setDescriptionLine(1);
        QCOMPARE(store.getDescriptionSetting(QStringLiteral("ProductName")), QString());
        store.setDescriptionSetting(QStringLiteral("ProductName"), QStringLiteral("one"));
        QCOMPARE(store.getDescriptionSetting(QStringLiteral("ProductName")), QStringLiteral("one"));
        store.setDescriptionLine(0);
        QCOMPARE(store.getDescriptionSetting(QStringLiteral("ProductName")), QStringLiteral("zero"));
        const QStringList keys = store.getDescriptionSettingKeys();
        QVERIFY(keys.contains(QStringLiteral("ProductName")));
        QVERIFY(keys.contains(QStringLiteral("ProductName_1")));
    }

    void unchangedWritesRaiseNothing()
    {
        ObjectDataBase store;
        store.createNewDataBase();
        QSignalSpy spy(&store, &ObjectDataBase::updateNotify);
        QVERIFY(store.setGeneralSetting(QStringLiteral("endian"), QStringLiteral("little")));
        QCOMPARE(spy.count(), 1);
        QCOMPARE(spy.last().first().value<ObjectDataBase::ChangeSet>().kind, ObjectDataBase::GeneralSettingChanged);
        QVERIFY(store.setGeneralSetting(QStringLiteral("endian"), QStringLiteral("little")));
        QCOMPARE(spy.count(), 1);
        QVERIFY(store.setGeneralSetting(QStringLiteral("endian"), QStringLiteral("Little")));
        QCOMPARE(spy.count(), 2);

        struct Writer
        {
            bool (ObjectDataBase::*set)(const QString &, const QString &);
            ObjectDataBase::ChangeKind kind;
        };
        const Writer writers[] = {
            {&ObjectDataBase::setDescriptionSetting, ObjectDataBase::DescriptionSettingChanged},
            {&ObjectDataBase::setEnergyBusSetting, ObjectDataBase::EnergyBusSettingChanged},
            {&ObjectDataBase::setMiscSetting, ObjectDataBase::MiscSettingChanged},
            {&ObjectDataBase::setJ1939Setting, ObjectDataBase::J1939SettingChanged},
        };
        for (const auto &writer : writers) {
            spy.clear();
            QVERIFY((store.*writer.set)(QStringLiteral("k"), QStringLiteral("v")));
            QVERIFY((store.*writer.set)(QStringLiteral("k"), QStringLiteral("v")));
            QCOMPARE(spy.count(), 1);
            QCOMPARE(spy.first().first().value<ObjectDataBase::ChangeSet>().kind, writer.kind);
        }
    }

    void blockedStoreWritesOnlySomeTables()
    {
        ObjectDataBase store;
        store.createNewDataBase();
        store.setBlockUpdates(true);
        QVERIFY(store.setGeneralSetting(QStringLiteral("a"), QStringLiteral("1")));
        QVERIFY(store.setDescriptionSetting(QStringLiteral("a"), QStringLiteral("1")));
        QVERIFY(store.setEnergyBusSetting(QStringLiteral("a"), QStringLiteral("1")));
        QVERIFY(!store.setJ1939Setting(QStringLiteral("a"), QStringLiteral("1")));
        QVERIFY(!store.setMiscSetting(QStringLiteral("a"), QStringLiteral("1")));
        store.setBlockUpdates(false);
        QCOMPARE(store.getGeneralSetting(QStringLiteral("a")), QStringLiteral("1"));
        QCOMPARE(store.getJ1939Setting(QStringLiteral("a")), QString());
        QCOMPARE(store.getMiscSetting(QStringLiteral("a")), QString());
    }

    void quotesSurviveAllTables()
    {
        QTemporaryDir dir;
        const QString text = QStringLiteral("it's a \"test\", isn't it");
        ProjectBuilder project;
        project.general(QStringLiteral("k"), text).j1939(QStringLiteral("k"), text).misc(QStringLiteral("k"), text);
        project.description(0, QStringLiteral("k"), text);
        project.store().setEnergyBusSetting(QStringLiteral("k'"), text);
        const QString path = dir.filePath(QStringLiteral("q.kprj"));
        QVERIFY(project.save(path));
        ObjectDataBase store;
        QVERIFY(store.openDataBase(path));
        QCOMPARE(store.getGeneralSetting(QStringLiteral("k")), text);
        QCOMPARE(store.getJ1939Setting(QStringLiteral("k")), text);
        QCOMPARE(store.getMiscSetting(QStringLiteral("k")), text);
        QCOMPARE(store.getDescriptionSetting(QStringLiteral("k")), text);
        QCOMPARE(store.getEnergyBusSetting(QStringLiteral("k'")), text);
        QVERIFY(store.removeEnergyBusSetting(QStringLiteral("k'")));
        QVERIFY(store.getEnergyBusKeys().isEmpty());
    }

    // A new line takes its element of every line-extended list; deleting a line drops its element.
    void linesKeepTheirListsConsistent()
    {
        ObjectDataBase store;
        store.createNewDataBase();
        const QStringList &keys = SettingsKeys::lineExtendedGeneralKeys();
        QCOMPARE(keys.size(), 11);
        QCOMPARE(keys.last(), QStringLiteral("uds_functional_request_id"));
        for (const auto &key : keys)
            store.setGeneralSetting(key, key + QStringLiteral("0"));
        store.setGeneralSetting(QStringLiteral("line0type"), QStringLiteral("1"));

        QVERIFY(store.addNode(1, NODE_DATA_T()));
        store.setGeneralSetting(QStringLiteral("line1type"), QStringLiteral("2"));
        for (const auto &key : keys) {
            store.setLineGeneralSetting(key, key + QStringLiteral("1"), 1);
            QCOMPARE(store.getGeneralSetting(key), QStringLiteral("%1%2,%1%3").arg(key, "0", "1"));
        }
        QVERIFY(store.addNode(2, NODE_DATA_T()));
        store.setGeneralSetting(QStringLiteral("line2type"), QStringLiteral("4"));
        for (const auto &key : keys)
            QCOMPARE(store.getGeneralSetting(key), QStringLiteral("%1%2,%1%3,%1%3").arg(key, "0", "1"));
        store.setLineJ1939Setting(QStringLiteral("startaddress"), QStringLiteral("7"), 2);

        QVERIFY(store.removeNode(1));
        for (const auto &key : keys)
            QCOMPARE(store.getGeneralSetting(key), QStringLiteral("%1%2,%1%3").arg(key, "0", "1"));
        QCOMPARE(store.getJ1939Setting(QStringLiteral("startaddress")), QStringLiteral(",7"));
        QVERIFY(!store.generalSettingExists(QStringLiteral("line1type")));
        QVERIFY(store.generalSettingExists(QStringLiteral("line2type")));
        QCOMPARE(store.getLines(), (QList<quint8>{0, 2}));

        // A list shorter than the removed line stays.
        store.setGeneralSetting(QStringLiteral("co_node_id"), QStringLiteral("11,12"));
        QVERIFY(store.removeNode(2));
        QCOMPARE(store.getGeneralSetting(QStringLiteral("co_node_id")), QStringLiteral("11,12"));
    }

    void newLineGetsItsDefaults()
    {
        ObjectDataBase store;
        store.createNewDataBase();
        store.setDescriptionLine(0);
        store.setDescriptionSetting(QStringLiteral("OrderCode"), QStringLiteral("custom"));
        QVERIFY(store.addNode(3, NODE_DATA_T()));
        store.setDescriptionLine(3);
        for (const auto &[key, value] : SettingsKeys::descriptionDefaults())
            QCOMPARE(store.getDescriptionSetting(key), value);
        store.setDescriptionLine(0);
        QCOMPARE(store.getDescriptionSetting(QStringLiteral("OrderCode")), QStringLiteral("custom"));
        QCOMPARE(store.getDescriptionSetting(QStringLiteral("BaudRate_125")), QStringLiteral("1"));

        QCOMPARE(store.countActiveUDSServices(3), 5);
        for (const quint8 sid : {16, 17, 62, 34, 46}) {
            QVERIFY(store.getUDSServiceActive(3, sid));
            QCOMPARE(store.getUDSServiceSessions(3, sid), QStringLiteral("1"));
        }
        // Adding an existing line again resets the five services.
        store.setUDSServiceActive(3, 16, false);
        store.setUDSServiceSessions(3, 17, QStringLiteral("2,3"));
        NODE_DATA_T node;
        QVERIFY(store.getNode(3, node));
        node.name = QStringLiteral("renamed");
        node.isbootupmanager = true;
        QVERIFY(store.addNode(3, node));
        QVERIFY(store.getUDSServiceActive(3, 16));
        QCOMPARE(store.getUDSServiceSessions(3, 17), QStringLiteral("1"));
        NODE_DATA_T read;
        QVERIFY(store.getNode(3, read));
        QCOMPARE(read.name, QStringLiteral("renamed"));
        // Written only when the row is made.
        QVERIFY(!read.isbootupmanager);

        // Removing the line removes its description rows, but not the baud rate keys of line 0.
        store.addNode(10, NODE_DATA_T());
        QVERIFY(store.removeNode(10));
        QVERIFY(store.getDescriptionSettingKeys().contains(QStringLiteral("BaudRate_10")));
        QVERIFY(!store.getDescriptionSettingKeys().contains(QStringLiteral("BaudRate_10_10")));
        QVERIFY(store.getDescriptionSettingKeys().contains(QStringLiteral("ProductName_3")));
    }

    void udsSettersKeepTheOtherColumns()
    {
        ObjectDataBase store;
        store.createNewDataBase();
        QVERIFY(store.setUDSServiceUserLevels(0, 49, QStringLiteral("1,2")));
        QVERIFY(!store.getUDSServiceActive(0, 49));
        QVERIFY(store.setUDSServiceActive(0, 49, true));
        QVERIFY(store.setUDSServiceSessions(0, 49, QStringLiteral("2,3")));
        QVERIFY(store.setUDSAuthentication(0, 49, QStringLiteral("it's")));
        QVERIFY(store.getUDSServiceActive(0, 49));
        QCOMPARE(store.getUDSServiceSessions(0, 49), QStringLiteral("2,3"));
        QCOMPARE(store.getUDSServiceUserLevels(0, 49), QStringLiteral("1,2"));
        QCOMPARE(store.getUDSAuthentication(0, 49), QStringLiteral("it's"));
        QCOMPARE(store.countActiveUDSServices(0), 6);
        QCOMPARE(store.getUDSServiceSessions(0, 99), QString());
        QVERIFY(!store.getUDSServiceActive(7, 16));
    }

    void copySettingsReplacesGeneralAndDescription()
    {
        ObjectDataBase from;
        from.createNewDataBase();
        from.setGeneralSetting(QStringLiteral("a"), QStringLiteral("from"));
        from.setDescriptionSetting(QStringLiteral("VendorName"), QStringLiteral("V"));
        ObjectDataBase to;
        to.createNewDataBase();
        to.setGeneralSetting(QStringLiteral("b"), QStringLiteral("to"));
        to.setMiscSetting(QStringLiteral("c"), QStringLiteral("kept"));
        QVERIFY(to.copySettingsFrom(from));
        QCOMPARE(to.getGeneralSetting(QStringLiteral("a")), QStringLiteral("from"));
        QVERIFY(!to.generalSettingExists(QStringLiteral("b")));
        QCOMPARE(to.getDescriptionSetting(QStringLiteral("VendorName")), QStringLiteral("V"));
        QCOMPARE(to.getMiscSetting(QStringLiteral("c")), QStringLiteral("kept"));
    }
};

QTEST_GUILESS_MAIN(TestSettings)
#include "tst_settings.moc"
