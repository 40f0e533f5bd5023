#include "store/objectdatabase.h"
#include "support/projectbuilder.h"
#include "support/testprojects.h"

#include <QSignalSpy>
#include <QTemporaryDir>
#include <QThread>
#include <QtTest>

#include <functional>

using ChangeSet = ObjectDataBase::ChangeSet;
using Operation = std::function<bool(ObjectDataBase &)>;
Q_DECLARE_METATYPE(Operation)

namespace {

ChangeSet change(ObjectDataBase::ChangeKind kind, quint8 line, quint16 index = 0, quint8 subindex = 0)
{
    ChangeSet set;
    set.kind = kind;
    set.line = line;
    set.index = index;
    set.subindex = subindex;
    return set;
}

SUBINDEX_DATA_T subRecord(const QString &name, quint16 type = 7, const QString &value = QStringLiteral("0"))
{
    return ProjectBuilder::subRecord(name, type, QStringLiteral("rw"), value);
}

// Line 0 with a VAR 0x2000, a RECORD 0x2001 with three sub-indices and a TPDO mapping of 0x2001:2.
void fill(ProjectBuilder &project)
{
    project.line(0, 1).var(0, 0x2000, QStringLiteral("Speed"), 6, QStringLiteral("rw"), QStringLiteral("0x10"));
    INDEX_DATA_T record;
    record.name = QStringLiteral("Record");
    record.objecttype = 9;
    record.description = QStringLiteral("a record");
    record.metadata = {{QStringLiteral("eds_define"), QStringLiteral("A")}};
    project.object(0, 0x2001, record);
    SUBINDEX_DATA_T highest = subRecord(QStringLiteral("Highest sub-index supported"), 5, QStringLiteral("2"));
    highest.metadata = {{QStringLiteral("k"), QStringLiteral("v\u00fc")}};
    project.sub(0, 0x2001, 0, highest);
    SUBINDEX_DATA_T first = subRecord(QStringLiteral("First"));
    first.pdomapping = PDOMapping(TPDO);
    first.denotation = QStringLiteral("Erster");
    project.sub(0, 0x2001, 1, first);
    project.sub(0, 0x2001, 2, subRecord(QStringLiteral("Second")));
    project.object(0, 0x1A00, QStringLiteral("TPDO mapping"), 9);
    project.sub(0, 0x1A00, 0, subRecord(QStringLiteral("Number of entries"), 5, QStringLiteral("1")));
    project.sub(0, 0x1A00, 1, subRecord(QStringLiteral("Entry 1"), 7, QStringLiteral("0x20010220")));
}

struct Row
{
    quint8 subindex;
    SUBINDEX_DATA_T data;
    bool operator==(const Row &) const = default;
};

QList<Row> rowsOf(ObjectDataBase &store, quint8 line, quint16 index)
{
    QList<Row> rows;
    const auto subs = store.getSubIndices(line, index);
    for (const quint8 sub : subs) {
        SUBINDEX_DATA_T data;
        store.getSubIndex(line, index, sub, data);
        rows.append({sub, data});
    }
    return rows;
}

} // namespace

class TestObjectStore : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase()
    {
        qRegisterMetaType<ChangeSet>("ObjectDataBase::ChangeSet");
        QCoreApplication::setApplicationName(QStringLiteral("CANopen Kestrel"));
    }

    void everyWriteAnnouncesItselfOnce_data()
    {
        QTest::addColumn<Operation>("operation");
        QTest::addColumn<QList<ChangeSet>>("expected");

        QTest::newRow("add object") << Operation([](ObjectDataBase &s) { return s.addIndex(0, 0x3000, INDEX_DATA_T()); })
                                    << QList<ChangeSet>{change(ObjectDataBase::IndexChanged, 0, 0x3000)};
        QTest::newRow("update object") << Operation([](ObjectDataBase &s) { return s.addIndex(0, 0x2000, INDEX_DATA_T()); })
                                       << QList<ChangeSet>{change(ObjectDataBase::IndexChanged, 0, 0x2000)};
        QTest::newRow("add sub-index")
            << Operation([](ObjectDataBase &s) { return s.addSubIndex(0, 0x2001, 3, subRecord("Third")); })
            << QList<ChangeSet>{change(ObjectDataBase::SubIndexChanged, 0, 0x2001, 3)};
        QTest::newRow("remove object") << Operation([](ObjectDataBase &s) { return s.removeIndex(0, 0x2001, false); })
                                       << QList<ChangeSet>{change(ObjectDataBase::IndexRemoved, 0, 0x2001)};
        QTest::newRow("remove sub-index")
            << Operation([](ObjectDataBase &s) { return s.removeSubIndex(0, 0x2001, 2, false); })
            << QList<ChangeSet>{change(ObjectDataBase::SubIndexRemoved, 0, 0x2001, 2)};
        QTest::newRow("remove absent sub-index")
            << Operation([](ObjectDataBase &s) { return s.removeSubIndex(0, 0x2001, 9, false); }) << QList<ChangeSet>{};
        QTest::newRow("add line") << Operation([](ObjectDataBase &s) { return s.addNode(1, NODE_DATA_T()); })
                                  << QList<ChangeSet>{change(ObjectDataBase::NodeAdded, 1)};
        QTest::newRow("remove line") << Operation([](ObjectDataBase &s) { return s.removeNode(0); })
                                     << QList<ChangeSet>{change(ObjectDataBase::NodeRemoved, 0)};
        QTest::newRow("copy object")
            << Operation([](ObjectDataBase &s) { return s.copyIndex(0, 0x2001, 0, 0x2100); })
            << QList<ChangeSet>{change(ObjectDataBase::SubIndexChanged, 0, 0x2100, 0),
                                change(ObjectDataBase::SubIndexChanged, 0, 0x2100, 1),
                                change(ObjectDataBase::SubIndexChanged, 0, 0x2100, 2)};
        QTest::newRow("batch insert") << Operation([](ObjectDataBase &s) {
            return s.addSubIndices({SubEntry{0, 0x2200, 0, subRecord("a")}, SubEntry{0, 0x2200, 1, subRecord("b")}});
        }) << QList<ChangeSet>{};
    }

    void everyWriteAnnouncesItselfOnce()
    {
        QFETCH(Operation, operation);
        QFETCH(QList<ChangeSet>, expected);
        ProjectBuilder project;
        fill(project);
        ObjectDataBase &store = project.store();
        QSignalSpy spy(&store, &ObjectDataBase::updateNotify);
        QSignalSpy writes(&store, &ObjectDataBase::databaseWriteExecuted);
        QVERIFY(operation(store));
        QList<ChangeSet> raised;
        for (const auto &arguments : std::as_const(spy))
            raised << arguments.first().value<ChangeSet>();
        if (QByteArray(QTest::currentDataTag()).contains("line")) {
            // A line brings its settings along; they are announced before the line itself, once.
            QCOMPARE(raised.last(), expected.last());
            QCOMPARE(std::count(raised.begin(), raised.end(), expected.last()), 1);
            for (qsizetype i = 0; i + 1 < raised.size(); ++i)
                QVERIFY(raised.at(i).kind == ObjectDataBase::DescriptionSettingChanged ||
                        raised.at(i).kind == ObjectDataBase::GeneralSettingChanged);
        } else {
            QCOMPARE(raised, expected);
        }
        QVERIFY(!writes.isEmpty());
    }

    void blockedStoreRefusesSilently()
    {
        ProjectBuilder project;
        fill(project);
        ObjectDataBase &store = project.store();
        QTemporaryDir dir;
        const QString before = dir.filePath(QStringLiteral("before.kprj"));
        QVERIFY(store.saveDatabase(before));
        const QString hash = store.computeFileHash();
        store.setBlockUpdates(true);
        QVERIFY(store.isBlocked());
        QSignalSpy spy(&store, &ObjectDataBase::updateNotify);
        const QList<Operation> operations{
            [](ObjectDataBase &s) { return s.addIndex(0, 0x3000, INDEX_DATA_T()); },
            [](ObjectDataBase &s) { return s.removeIndex(0, 0x2000, false); },
            [](ObjectDataBase &s) { return s.addSubIndex(0, 0x2000, 1, subRecord("x")); },
            [](ObjectDataBase &s) { return s.addSubIndices({SubEntry{0, 0x2000, 1, subRecord("x")}}); },
            [](ObjectDataBase &s) { return s.removeSubIndex(0, 0x2001, 1, false); },
            [](ObjectDataBase &s) { return s.setIndexName(0, 0x2000, "x"); },
            [](ObjectDataBase &s) { return s.setSubIndexName(0, 0x2000, 0, "x"); },
            [](ObjectDataBase &s) { return s.setSubIndexDefaultValue(0, 0x2000, 0, "7"); },
            [](ObjectDataBase &s) { return s.copyIndex(0, 0x2000, 0, 0x2100); },
            [](ObjectDataBase &s) { return s.addNode(2, NODE_DATA_T()); },
            [](ObjectDataBase &s) { return s.removeNode(0); },
            [](ObjectDataBase &s) { return s.addPGN(0, 1, PGN()); },
            [](ObjectDataBase &s) { return s.addCANID(0, 1, CANID()); },
        };
        for (const auto &operation : operations)
            QVERIFY(!operation(store));
        QCOMPARE(spy.count(), 0);
        store.setBlockUpdates(false);
        QCOMPARE(store.computeFileHash(), hash);
    }

    void writeBlockHoldsOtherThreads()
    {
        ProjectBuilder project;
        fill(project);
        ObjectDataBase &store = project.store();
        QSignalSpy blocks(&store, &ObjectDataBase::blockStateChanged);
        store.setWriteBlock(true);
        QCOMPARE(blocks.count(), 1);
        // The blocking thread itself goes on.
        QCOMPARE(store.getIndices(0, 0x2000, 0x2001).size(), 2);
        QAtomicInt done;
        QList<quint16> seen;
        QThread *worker = QThread::create([&] {
            seen = store.getIndices(0, 0x2000, 0x2001);
            done.storeRelease(1);
        });
        worker->start();
        QTest::qWait(300);
        QCOMPARE(done.loadAcquire(), 0);
        store.setWriteBlock(false);
        QVERIFY(worker->wait(5000));
        QCOMPARE(done.loadAcquire(), 1);
        QCOMPARE(seen.size(), 2);
        delete worker;
    }

    void closeWaitsForStatementsInFlight()
    {
        ProjectBuilder project;
        ObjectDataBase &store = project.store();
        bool ok = false;
        QStringList results;
        QAtomicInt started;
        QThread *worker = QThread::create([&] {
            started.storeRelease(1);
            ok = store.executeSql(QStringLiteral("with recursive c(x) as (select 1 union all select x + 1 from c "
                                                 "where x < 3000000) select count(*) from c"));
            results = store.getSqlResults();
        });
        worker->start();
        QTRY_VERIFY(started.loadAcquire() == 1);
        QTest::qWait(50);
        store.closeDatabase();
        QVERIFY(worker->wait(10000));
        delete worker;
        QVERIFY(ok);
        QCOMPARE(results, QStringList{QStringLiteral("3000000 ")});
    }

    void stringsAreInternedOnce()
    {
        QTemporaryDir dir;
        ProjectBuilder project;
        fill(project);
        ObjectDataBase &store = project.store();
        const QString shared = QStringLiteral("Gr\u00fc\u00dfe 'quoted' \u20ac");
        store.addSubIndex(0, 0x2000, 0, subRecord(shared));
        store.addSubIndex(0, 0x2001, 2, subRecord(shared));
        store.addIndex(0, 0x2300, [&] {
            INDEX_DATA_T object;
            object.name = QStringLiteral("only here");
            return object;
        }());
        const qint32 id = store.getStringId(shared);
        QCOMPARE(store.getStringId(shared), id);
        QCOMPARE(store.getString(id), shared);

        QVERIFY(store.removeSubIndex(0, 0x2000, 0));
        QVERIFY(store.removeIndex(0, 0x2300));
        const QString path = dir.filePath(QStringLiteral("s.kprj"));
        QVERIFY(store.saveDatabase(path));
        QString escaped = shared;
        escaped.replace('\'', QStringLiteral("''"));
        QCOMPARE(TestProjects::querySql(path, QStringLiteral("select id from Strings where string = '%1'").arg(escaped)),
                 QStringList{QString::number(id)});
        QCOMPARE(TestProjects::querySql(path, QStringLiteral("select count(*) from Strings where string = 'only here'")),
                 QStringList{QStringLiteral("0")});

        ObjectDataBase reopened;
        QVERIFY(reopened.openDataBase(path));
        SUBINDEX_DATA_T sub;
        QVERIFY(reopened.getSubIndex(0, 0x2001, 2, sub));
        QCOMPARE(sub.name, shared);
        QCOMPARE(reopened.getStringId(shared), id);
    }

    void objectOperations()
    {
        ProjectBuilder project;
        fill(project);
        ObjectDataBase &store = project.store();
        INDEX_DATA_T object;
        QVERIFY(store.getIndex(0, 0x2001, object));
        object.name = QStringLiteral("Renamed");
        object.fwsupported = true;
        QVERIFY(store.addIndex(0, 0x2001, object));
        INDEX_DATA_T read;
        QVERIFY(store.getIndex(0, 0x2001, read));
        QCOMPARE(read, object);
        QCOMPARE(store.getSubIndices(0, 0x2001), (QList<quint8>{0, 1, 2}));
        QCOMPARE(store.getSubIndices(0, 0x2000, 1), QList<quint8>{});
        QCOMPARE(store.getIndices(0, 0x2000), (QList<quint16>{0x2000, 0x2001}));
        QCOMPARE(store.getIndices(0), (QList<quint16>{0x1A00, 0x2000, 0x2001}));
        QCOMPARE(store.firstFreeIndex(0, 0x2000), quint16(0x2002));
        QCOMPARE(store.firstFreeIndex(0, 0x1000), quint16(0x1000));
        QCOMPARE(store.firstFreeSubIndex(0, 0x2001), quint8(3));
        QCOMPARE(store.firstFreeSubIndex(0, 0x2002), quint8(0));
        QCOMPARE(store.findIndices(0, QStringLiteral("objecttype"), QStringLiteral("9")),
                 (QList<quint16>{0x1A00, 0x2001}));
        QVERIFY(store.setIndexName(0, 0x2000, QStringLiteral("Velocity")));
        QCOMPARE(store.getIndexName(0, 0x2000), QStringLiteral("Velocity"));
        QVERIFY(!store.getIndex(0, 0x4000, read));
        QVERIFY(!store.indexExists(0, 0x4000));
    }

    void subIndexOperations()
    {
        ProjectBuilder project;
        fill(project);
        ObjectDataBase &store = project.store();
        QCOMPARE(store.getSubIndexName(0, 0x2001, 1), QStringLiteral("First"));
        QCOMPARE(store.getSubIndexName(0, 0x2001, 1, true), QStringLiteral("Erster"));
        QCOMPARE(store.getSubIndexName(0, 0x2001, 2, true), QStringLiteral("Second"));
        QVERIFY(store.setSubIndexName(0, 0x2001, 2, QStringLiteral("Zweite")));
        QCOMPARE(store.getSubIndexName(0, 0x2001, 2), QStringLiteral("Zweite"));
        QCOMPARE(store.getSubIndexDefaultValue(0, 0x2000, 0), QStringLiteral("0x10"));
        QVERIFY(store.setSubIndexDefaultValue(0, 0x2000, 0, QStringLiteral("it's")));
        QCOMPARE(store.getSubIndexDefaultValue(0, 0x2000, 0), QStringLiteral("it's"));
        QCOMPARE(store.getSubIndexDataType(0, 0x2000, 0), quint16(6));
        QCOMPARE(store.findSubIndices(0, QStringLiteral("datatype"), QStringLiteral("7")),
                 (QList<ObjectDataBase::IndexSubIndex>{{0x1A00, 1}, {0x2001, 1}, {0x2001, 2}}));
        QCOMPARE(store.findSubIndices(0, QStringLiteral("accesstype"), QStringLiteral("rw")).size(), 6);

        QVERIFY(store.isMappedInPdo(0, 0x2001, 2));
        QVERIFY(!store.isMappedInPdo(0, 0x2001, 1));
        QCOMPARE(store.getMappableSubIndices(0, 0x2000), (QList<ObjectDataBase::IndexSubIndex>{{0x2001, 1}}));

        // Sub-indices of an object that is gone are left out of the searches.
        store.removeIndex(0, 0x1A00);
        store.addSubIndex(0, 0x5000, 0, subRecord(QStringLiteral("orphan")));
        QCOMPARE(store.findSubIndices(0, QStringLiteral("accesstype"), QStringLiteral("rw")).size(), 4);
        QVERIFY(!store.isMappedInPdo(0, 0x2001, 2));
    }

    void connectionsGoWithTheirEnds()
    {
        ProjectBuilder project;
        fill(project);
        ObjectDataBase &store = project.store();
        QVERIFY(store.executeSql(QStringLiteral("insert into Connections values(0, 8193, 1, 1, 8192, 0, 0), "
                                                "(1, 8192, 0, 0, 8193, 9, 0), (0, 8192, 0, 1, 8192, 0, 0)")));
        QSignalSpy spy(&store, &ObjectDataBase::updateNotify);
        QVERIFY(store.removeSubIndex(0, 0x2001, 9, false));
        QCOMPARE(spy.count(), 0);
        store.executeSql(QStringLiteral("select count(*) from Connections"));
        QCOMPARE(store.getSqlResults(), QStringList{QStringLiteral("2 ")});
        QVERIFY(store.removeSubIndex(0, 0x2001, 1, true));
        store.executeSql(QStringLiteral("select count(*) from Connections"));
        QCOMPARE(store.getSqlResults(), QStringList{QStringLiteral("2 ")});
        QVERIFY(store.removeIndex(0, 0x2000, false));
        store.executeSql(QStringLiteral("select count(*) from Connections"));
        QCOMPARE(store.getSqlResults(), QStringList{QStringLiteral("1 ")});
        QVERIFY(!store.executeSql(QStringLiteral("select nonsense from nowhere")));
        QCOMPARE(store.getSqlResults().size(), 1);
    }

    void copiesKeepEveryRow()
    {
        ProjectBuilder project;
        fill(project);
        ObjectDataBase &store = project.store();
        store.addNode(1, NODE_DATA_T());
        QVERIFY(store.copyIndex(0, 0x2001, 1, 0x3001));
        QCOMPARE(rowsOf(store, 1, 0x3001), rowsOf(store, 0, 0x2001));
        INDEX_DATA_T original;
        INDEX_DATA_T copy;
        QVERIFY(store.getIndex(0, 0x2001, original));
        QVERIFY(store.getIndex(1, 0x3001, copy));
        QCOMPARE(copy, original);

        ProjectBuilder other;
        other.line(0, 1);
        other.var(0, 0x2001, QStringLiteral("stale"), 5, QStringLiteral("ro"), QStringLiteral("0"));
        other.sub(0, 0x2001, 7, subRecord(QStringLiteral("gone")));
        QVERIFY(other.store().copyIndexFrom(store, 0, 0x2001, 0, 0x2001, true));
        QCOMPARE(rowsOf(other.store(), 0, 0x2001), rowsOf(store, 0, 0x2001));
        QVERIFY(other.store().getIndex(0, 0x2001, copy));
        QCOMPARE(copy, original);
        QVERIFY(other.store().copyIndexFrom(store, 0, 0x2001, 0, 0x2002, false));
        QCOMPARE(other.store().getSubIndices(0, 0x2002), QList<quint8>{});
        QVERIFY(!other.store().copyIndexFrom(store, 0, 0x4444, 0, 0x2002, true));

        QVERIFY(store.copySubIndex(0, 0x2001, 1, 5));
        SUBINDEX_DATA_T a;
        SUBINDEX_DATA_T b;
        store.getSubIndex(0, 0x2001, 1, a);
        store.getSubIndex(0, 0x2001, 5, b);
        QCOMPARE(b, a);
        QVERIFY(other.store().copySubIndexFrom(store, 0, 0x2001, 0, 0, 0x2002, 3));
        other.store().getSubIndex(0, 0x2002, 3, b);
        store.getSubIndex(0, 0x2001, 0, a);
        QCOMPARE(b, a);
    }

    void mergeKeepsWhatTheUserChanged()
    {
        ProjectBuilder wizard;
        fill(wizard);
        ProjectBuilder project;
        fill(project);
        ObjectDataBase &store = project.store();
        INDEX_DATA_T object;
        store.getIndex(0, 0x2001, object);
        object.description = QStringLiteral("mine");
        store.addIndex(0, 0x2001, object);
        SUBINDEX_DATA_T edited = subRecord(QStringLiteral("First"), 7, QStringLiteral("99"));
        edited.changedbyuser = true;
        edited.description = QStringLiteral("my note");
        store.addSubIndex(0, 0x2001, 1, edited);
        SUBINDEX_DATA_T untouched = subRecord(QStringLiteral("Second"), 7, QStringLiteral("55"));
        store.addSubIndex(0, 0x2001, 2, untouched);
        store.addSubIndex(0, 0x2001, 8, subRecord(QStringLiteral("extra")));

        QVERIFY(store.mergeIndexFrom(wizard.store(), 0, 0x2001, 0, 0x2001));
        INDEX_DATA_T merged;
        store.getIndex(0, 0x2001, merged);
        QCOMPARE(merged.description, QStringLiteral("mine"));
        QCOMPARE(merged.metadata, object.metadata);
        SUBINDEX_DATA_T sub;
        store.getSubIndex(0, 0x2001, 1, sub);
        QCOMPARE(sub.defaultvalue, QStringLiteral("99"));
        QCOMPARE(sub.description, QStringLiteral("my note"));
        QVERIFY(sub.changedbyuser);
        QCOMPARE(sub.pdomapping, PDOMapping(TPDO));
        store.getSubIndex(0, 0x2001, 2, sub);
        QCOMPARE(sub.defaultvalue, QStringLiteral("0"));
        QCOMPARE(store.getSubIndices(0, 0x2001), (QList<quint8>{0, 1, 2}));
        QVERIFY(!store.mergeIndexFrom(wizard.store(), 0, 0x4444, 0, 0x2001));
    }

    void wizardObjectsReplaceWhatAWizardMade()
    {
        ProjectBuilder wizard;
        wizard.line(0, 1);
        wizard.var(0, 0x1008, QStringLiteral("Name"), 9, QStringLiteral("const"), QStringLiteral("new"));
        wizard.var(0, 0x6000, QStringLiteral("Kept by wizard"), 5, QStringLiteral("ro"), QStringLiteral("1"));
        wizard.store().setEnergyBusSetting(QStringLiteral("device_cnt"), QStringLiteral("2"));

        ProjectBuilder project;
        project.line(0, 1);
        SUBINDEX_DATA_T made = subRecord(QStringLiteral("made"));
        made.wizardsource = 454;
        project.sub(0, 0x1009, 0, made).object(0, 0x1009, QStringLiteral("wizard made"));
        project.sub(0, 0x6001, 0, made).object(0, 0x6001, QStringLiteral("wizard made"));
        project.sub(0, 0x6002, 0, subRecord(QStringLiteral("user"))).object(0, 0x6002, QStringLiteral("user made"));
        project.var(0, 0x2000, QStringLiteral("application"), 5, QStringLiteral("rw"), QStringLiteral("0"));
        INDEX_DATA_T rpdo;
        rpdo.device_class = QStringLiteral("rpdo");
        project.object(0, 0x1400, rpdo).object(0, 0x1401, QStringLiteral("own RPDO"));
        INDEX_DATA_T tpdo;
        tpdo.device_class = QStringLiteral("x");
        project.object(0, 0x1800, tpdo);
        project.var(0, 0x1017, QStringLiteral("Heartbeat"), 6, QStringLiteral("rw"), QStringLiteral("100"));

        QVERIFY(project.store().applyWizardObjects(wizard.store(), 0));
        QCOMPARE(project.store().getIndices(0),
                 (QList<quint16>{0x1008, 0x1017, 0x1401, 0x2000, 0x6000, 0x6002}));
        QCOMPARE(project.store().getEnergyBusSetting(QStringLiteral("device_cnt")), QStringLiteral("2"));
    }

    void clipboardHoldsOneObject()
    {
        ProjectBuilder project;
        fill(project);
        ObjectDataBase &store = project.store();
        QVERIFY(!store.pasteFromClipboard(0, 0x2500));
        QVERIFY(store.copyToClipboard(0, 0x2001));
        INDEX_DATA_T object;
        QVERIFY(store.getClipboardIndex(object));
        QCOMPARE(object.name, QStringLiteral("Record"));
        QVERIFY(store.copyToClipboard(0, 0x2000));
        QCOMPARE(store.getIndices(ObjectDataBase::ClipboardLine), QList<quint16>{0xF000});
        QVERIFY(store.pasteFromClipboard(0, 0x2500));
        QCOMPARE(rowsOf(store, 0, 0x2500), rowsOf(store, 0, 0x2000));
    }

    void cachesAnswerLikeTheTables()
    {
        ProjectBuilder project;
        fill(project);
        ObjectDataBase &store = project.store();
        const QList<Row> direct = rowsOf(store, 0, 0x2001);
        store.cacheAllSubs(0);
        QCOMPARE(rowsOf(store, 0, 0x2001), direct);
        SUBINDEX_DATA_T changed = direct.at(1).data;
        changed.defaultvalue = QStringLiteral("42");
        store.addSubIndex(0, 0x2001, 1, changed);
        SUBINDEX_DATA_T read;
        store.getSubIndex(0, 0x2001, 1, read);
        QCOMPARE(read.defaultvalue, QStringLiteral("42"));
        store.clearSubCache();
        store.getSubIndex(0, 0x2001, 1, read);
        QCOMPARE(read.defaultvalue, QStringLiteral("42"));

        store.cacheSubObjectNames(0, 0x2001);
        QCOMPARE(store.getSubIndexName(0, 0x2001, 1), QStringLiteral("Erster"));
        store.clearNameCache();
        QCOMPARE(store.getSubIndexName(0, 0x2001, 1), QStringLiteral("First"));
    }
};

QTEST_GUILESS_MAIN(TestObjectStore)
#include "tst_objectstore.moc"
