#include "store/objectdatabase.h"
#include "support/projectbuilder.h"
#include "support/testprojects.h"

#include <QSignalSpy>
#include <QTemporaryDir>
#include <QtTest>

using ChangeSet = ObjectDataBase::ChangeSet;

namespace {

PGN pgnRecord(quint32 number, quint8 direction, const QString &name, bool safe = false)
{
    PGN pgn;
    pgn.number = number;
    pgn.direction = direction;
    pgn.name = name;
    pgn.desc = name + QStringLiteral(" it's");
    pgn.priority = 6;
    pgn.cycletime_ms = 100;
    pgn.issafe = safe;
    pgn.FD_DataId = 0x12345678;
    pgn.multisourceaddress = 3;
    return pgn;
}

SPN spnRecord(quint32 pgn, quint8 direction, quint32 number, quint8 pos)
{
    SPN spn;
    spn.pgnnumber = pgn;
    spn.direction = direction;
    spn.spnnumber = number;
    spn.pos = pos;
    spn.datatype = 5;
    spn.bitsize = 8;
    spn.bitposition = quint16(pos * 8);
    spn.name = QStringLiteral("SPN %1").arg(number);
    spn.varname = QStringLiteral("var%1").arg(number);
    return spn;
}

void fill(ProjectBuilder &project)
{
    project.line(0, 2);
    project.pgn(0, pgnRecord(61444, Direction::Transmit, QStringLiteral("EEC1")));
    project.pgn(0, pgnRecord(61444, Direction::Receive, QStringLiteral("EEC1 in")));
    project.pgn(0, pgnRecord(65262, Direction::Receive, QStringLiteral("ET1")));
    project.pgn(0, pgnRecord(64000, Direction::Transmit, QStringLiteral("safe"), true));
    project.spn(0, spnRecord(61444, Direction::Transmit, 190, 1));
    project.spn(0, spnRecord(61444, Direction::Transmit, 899, 0));
    project.spn(0, spnRecord(61444, Direction::Receive, 190, 0));
    project.spn(0, spnRecord(65262, Direction::Receive, 110, 0));
}

} // namespace

class TestProtocolStore : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase()
    {
        qRegisterMetaType<ChangeSet>("ObjectDataBase::ChangeSet");
        QCoreApplication::setApplicationName(QStringLiteral("J1939 Kestrel"));
    }

    void pgnsAreKeyedByNumberAndDirection()
    {
        ProjectBuilder project;
        fill(project);
        ObjectDataBase &store = project.store();
        QCOMPARE(store.getPGNs(0, Direction::Transmit), (QList<quint32>{61444, 64000}));
        QCOMPARE(store.getPGNs(0, Direction::Receive), (QList<quint32>{61444, 65262}));
        QCOMPARE(store.getPGNs(0), (QList<quint32>{61444, 64000, 65262}));
        QCOMPARE(store.getPGNs(0, Direction::Both, true), (QList<quint32>{61444, 65262}));
        QCOMPARE(store.getPGNs(0, Direction::Transmit, true), (QList<quint32>{61444}));
        QCOMPARE(store.getPGNName(0, 61444, Direction::Receive), QStringLiteral("EEC1 in"));

        PGN read;
        QVERIFY(store.getPGN(0, 61444, Direction::Transmit, read));
        QCOMPARE(read, pgnRecord(61444, Direction::Transmit, QStringLiteral("EEC1")));
        read.priority = 3;
        QVERIFY(store.addPGN(0, 61444, read));
        QCOMPARE(store.getPGNs(0, Direction::Transmit).size(), 2);
        PGN again;
        QVERIFY(store.getPGN(0, 61444, Direction::Transmit, again));
        QCOMPARE(again.priority, quint8(3));
        QVERIFY(store.getPGN(0, 61444, Direction::Receive, again));
        QCOMPARE(again.priority, quint8(6));

        // Safety PGNs with NULL in the flag count as not safe.
        QVERIFY(store.executeSql(QStringLiteral("update PGNs0 set issafe = NULL where number = 65262")));
        QCOMPARE(store.getPGNs(0, Direction::Receive, true), (QList<quint32>{61444, 65262}));

        QVERIFY(store.removePGN(0, 61444, Direction::Transmit));
        QVERIFY(!store.pgnExists(0, 61444, Direction::Transmit));
        QVERIFY(store.pgnExists(0, 61444, Direction::Receive));
        QCOMPARE(store.getSPNs(0, 61444, Direction::Receive), QList<quint32>{190});
        QCOMPARE(store.getSPNs(0, 61444, Direction::Transmit), QList<quint32>{});
    }

    void spnsFollowTheirDirection()
    {
        ProjectBuilder project;
        fill(project);
        ObjectDataBase &store = project.store();
        QCOMPARE(store.getSPNs(0, 61444, Direction::Transmit), (QList<quint32>{899, 190}));
        QVERIFY(store.spnExists(0, 61444, 190, Direction::Receive));
        QVERIFY(!store.spnExists(0, 61444, 899, Direction::Receive));
        SPN spn;
        QVERIFY(store.getSPN(0, 61444, Direction::Transmit, 190, spn));
        QCOMPARE(spn, spnRecord(61444, Direction::Transmit, 190, 1));
        spn.varname = QStringLiteral("changed");
        QVERIFY(store.addSPN(0, 61444, Direction::Transmit, 190, spn));
        QVERIFY(store.getSPN(0, 61444, Direction::Receive, 190, spn));
        QCOMPARE(spn.varname, QStringLiteral("var190"));
        QCOMPARE(store.getSPNName(0, 61444, Direction::Transmit, 899), QStringLiteral("SPN 899"));
        QCOMPARE(store.getSPNDataType(0, 61444, Direction::Transmit, 899), quint16(5));
        QVERIFY(store.removeSPN(0, 61444, 190, Direction::Receive));
        QVERIFY(store.spnExists(0, 61444, 190, Direction::Transmit));
        QVERIFY(!store.spnExists(0, 61444, 190, Direction::Receive));
    }

    void spnCacheAnswersLikeTheTable()
    {
        ProjectBuilder project;
        fill(project);
        ObjectDataBase &store = project.store();
        const auto transmit = store.getSPNs(0, 61444, Direction::Transmit);
        SPN direct;
        store.getSPN(0, 61444, Direction::Transmit, 899, direct);
        store.cacheAllSPNs(0);
        QCOMPARE(store.getSPNs(0, 61444, Direction::Transmit), transmit);
        SPN cached;
        QVERIFY(store.getSPN(0, 61444, Direction::Transmit, 899, cached));
        QCOMPARE(cached, direct);
        QVERIFY(!store.getSPN(0, 61444, Direction::Transmit, 12345, cached));
        // Another line is not in the cache.
        store.addNode(1, NODE_DATA_T());
        store.addSPN(1, 100, Direction::Transmit, 5, spnRecord(100, Direction::Transmit, 5, 0));
        QCOMPARE(store.getSPNs(1, 100, Direction::Transmit), QList<quint32>{5});
        store.clearSPNCache();
        QCOMPARE(store.getSPNs(0, 61444, Direction::Transmit), transmit);
    }

    void protocolWritesAnnounceThemselves()
    {
        ProjectBuilder project;
        fill(project);
        ObjectDataBase &store = project.store();
        QSignalSpy spy(&store, &ObjectDataBase::updateNotify);
        auto last = [&] { return spy.last().first().value<ChangeSet>(); };

        store.addPGN(0, 100, pgnRecord(100, Direction::Transmit, QStringLiteral("x")));
        QCOMPARE(last().kind, ObjectDataBase::PGNAdded);
        QCOMPARE(last().pgn, 100u);
        store.addSPN(0, 100, Direction::Transmit, 7, spnRecord(100, Direction::Transmit, 7, 0));
        QCOMPARE(last().kind, ObjectDataBase::SPNAdded);
        QCOMPARE(last().spn, 7u);
        store.removeSPN(0, 100, 7, Direction::Transmit);
        QCOMPARE(last().kind, ObjectDataBase::SignalRemoved);
        QCOMPARE(last().direction, Direction::Transmit);
        store.removePGN(0, 100, Direction::Transmit);
        QCOMPARE(last().kind, ObjectDataBase::PGNRemoved);
        QCOMPARE(last().pgn, 100u);

        CANID canId;
        canId.direction = Direction::Receive;
        store.addCANID(0, 0x123, canId);
        QCOMPARE(last().kind, ObjectDataBase::CANIDAdded);
        QCOMPARE(last().canId, 0x123u);
        DataElement element;
        element.direction = Direction::Receive;
        store.addDataElement(0, 0x123, Direction::Receive, 4, element);
        QCOMPARE(last().kind, ObjectDataBase::DataElementAdded);
        QCOMPARE(last().element, 4u);
        store.removeDataElement(0, 0x123, 4, Direction::Receive);
        QCOMPARE(last().kind, ObjectDataBase::SignalRemoved);
        QCOMPARE(last().element, 4u);
        store.removeCANID(0, 0x123, Direction::Receive);
        QCOMPARE(last().kind, ObjectDataBase::CANIDRemoved);
        QCOMPARE(spy.count(), 8);
    }

    void canIdsAndTheirElements()
    {
        ProjectBuilder project;
        project.line(0, 4);
        ObjectDataBase &store = project.store();
        for (const quint8 direction : {Direction::Transmit, Direction::Receive}) {
            CANID canId;
            canId.direction = direction;
            canId.name = direction == Direction::Transmit ? QStringLiteral("out") : QStringLiteral("in");
            canId.cycletime_ms = 50;
            QVERIFY(store.addCANID(0, 0x181, canId));
            for (quint32 number : {2u, 1u}) {
                DataElement element;
                element.canid = 0x181;
                element.direction = direction;
                element.number = number;
                element.datatype = 6;
                element.name = QStringLiteral("e%1").arg(number);
                QVERIFY(store.addDataElement(0, 0x181, direction, number, element));
            }
        }
        QCOMPARE(store.getCANIDs(0), QList<quint32>{0x181});
        QCOMPARE(store.getCANIDs(0, Direction::Receive), QList<quint32>{0x181});
        QCOMPARE(store.getCANIDName(0, 0x181, Direction::Receive), QStringLiteral("in"));
        QCOMPARE(store.getDataElements(0, 0x181, Direction::Transmit), (QList<quint32>{1, 2}));
        QCOMPARE(store.getDataElementName(0, 0x181, Direction::Transmit, 2), QStringLiteral("e2"));
        DataElement element;
        QVERIFY(store.getDataElement(0, 0x181, Direction::Receive, 1, element));
        QCOMPARE(element.datatype, quint16(6));
        QCOMPARE(element.defaultvalue, QStringLiteral("0"));
        QCOMPARE(element.implementation, quint8(2));
        QVERIFY(store.removeCANID(0, 0x181, Direction::Transmit));
        QCOMPARE(store.getDataElements(0, 0x181, Direction::Transmit), QList<quint32>{});
        QCOMPARE(store.getDataElements(0, 0x181, Direction::Receive), (QList<quint32>{1, 2}));
        QVERIFY(store.canIdExists(0, 0x181, Direction::Receive));
        QVERIFY(!store.canIdExists(0, 0x181, Direction::Transmit));
    }

    void pgnsCopyBetweenStores()
    {
        ProjectBuilder source;
        fill(source);
        ProjectBuilder target;
        target.line(0, 2);
        target.pgn(0, pgnRecord(61444, Direction::Transmit, QStringLiteral("old")));
        target.spn(0, spnRecord(61444, Direction::Transmit, 5555, 0));
        target.pgn(0, pgnRecord(70000, Direction::Transmit, QStringLiteral("outside")));
        QVERIFY(target.store().copyPGNs(source.store(), 0, 0, 0, 0x3FFFF, Direction::Transmit));
        QCOMPARE(target.store().getPGNName(0, 61444, Direction::Transmit), QStringLiteral("EEC1"));
        QCOMPARE(target.store().getSPNs(0, 61444, Direction::Transmit), (QList<quint32>{899, 190}));
        QVERIFY(target.store().pgnExists(0, 70000, Direction::Transmit));
        QVERIFY(target.store().pgnExists(0, 64000, Direction::Transmit));
        QVERIFY(!target.store().pgnExists(0, 65262, Direction::Receive));
        QVERIFY(!target.store().copyPGNs(source.store(), 0, 0, 0, 0x3FFFF, 'x'));

        QVERIFY(target.store().importPGN(source.store(), 0, 0, 65262, Direction::Receive));
        QCOMPARE(target.store().getSPNs(0, 65262, Direction::Receive), QList<quint32>{110});
        QVERIFY(!target.store().importPGN(source.store(), 0, 0, 1, Direction::Receive));

        ProjectBuilder raw;
        raw.line(0, 4).canId(0, 0x200, Direction::Transmit, QStringLiteral("raw"));
        DataElement element;
        element.canid = 0x200;
        element.direction = Direction::Transmit;
        element.number = 1;
        raw.dataElement(0, element);
        QVERIFY(target.store().importCANID(raw.store(), 0, 0, 0x200, Direction::Transmit));
        QCOMPARE(target.store().getDataElements(0, 0x200, Direction::Transmit), QList<quint32>{1});
    }

    void copyLineTakesObjectsPgnsAndServices()
    {
        ProjectBuilder project;
        fill(project);
        project.var(0, 0x2000, QStringLiteral("Speed"), 6, QStringLiteral("rw"), QStringLiteral("3"));
        project.var(0, 0x1000, QStringLiteral("Device type"), 7, QStringLiteral("ro"), QStringLiteral("0"));
        ObjectDataBase &store = project.store();
        store.setUDSServiceActive(0, 49, true);
        store.addNode(1, NODE_DATA_T());
        project.var(1, 0x2000, QStringLiteral("old"), 5, QStringLiteral("ro"), QStringLiteral("1"));
        QVERIFY(store.copyLine(store, 0, 1, 0x2000, 0xFFFF));
        QCOMPARE(store.getIndices(1), QList<quint16>{0x2000});
        SUBINDEX_DATA_T sub;
        store.getSubIndex(1, 0x2000, 0, sub);
        QCOMPARE(sub.defaultvalue, QStringLiteral("3"));
        QCOMPARE(store.getPGNs(1, Direction::Transmit), (QList<quint32>{61444, 64000}));
        QCOMPARE(store.getSPNs(1, 61444, Direction::Transmit), (QList<quint32>{899, 190}));
        QVERIFY(store.getUDSServiceActive(1, 49));
        QCOMPARE(store.countActiveUDSServices(1), store.countActiveUDSServices(0));
    }
};

QTEST_GUILESS_MAIN(TestProtocolStore)
#include "tst_protocolstore.moc"
