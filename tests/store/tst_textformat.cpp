#include "store/objectdatabase.h"
#include "support/projectbuilder.h"
#include "support/testprojects.h"

#include <QTemporaryDir>
#include <QtTest>

namespace {

// What the text form carries of a sub-index; the tool's own bookkeeping columns stay out of it.
SUBINDEX_DATA_T carried(SUBINDEX_DATA_T data)
{
    data.cyclicread = false;
    data.changedbyuser = false;
    data.dcfcomponent = false;
    data.wizardsource = 0;
    data.signalid = 0;
    data.denotation.clear();
    return data;
}

void fill(ProjectBuilder &project)
{
    project.line(0, 5);
    project.general(QStringLiteral("co_node_id"), QStringLiteral("11,12"));
    project.general(QStringLiteral("user_defines"), QStringLiteral("#define A \"x, y\"\n#define B 'q'"));
    project.j1939(QStringLiteral("startaddress"), QStringLiteral("84"));
    project.misc(QStringLiteral("costackpath"), QStringLiteral("/opt/stack"));
    project.description(0, QStringLiteral("ProductName"), QStringLiteral("Board"));
    INDEX_DATA_T object;
    object.name = QStringLiteral("Output {$s + 0x40}");
    object.objecttype = 8;
    object.description = QStringLiteral("outputs");
    object.device_class = QStringLiteral("rpdo");
    object.metadata = {{QStringLiteral("eds_define"), QStringLiteral("A")}};
    project.object(0, 0x2000, object);
    SUBINDEX_DATA_T sub = ProjectBuilder::subRecord(QStringLiteral("Output"), 9, QStringLiteral("rw"),
                                                    QStringLiteral("it's"));
    sub.varname = QStringLiteral("out[{$s}]");
    sub.size = 12;
    sub.lowlimit = QStringLiteral("0");
    sub.uplimit = QStringLiteral("0x7f");
    sub.implementation = 2;
    sub.description = QStringLiteral("the output");
    sub.nvstorage = true;
    sub.sharedlines = true;
    sub.pdomapping = PDOMapping(RPDO);
    sub.changedbyuser = true;
    sub.denotation = QStringLiteral("Ausgang");
    sub.metadata = {{QStringLiteral("k"), QStringLiteral("v")}};
    project.sub(0, 0x2000, 10, sub);
    project.sub(0, 0x2000, 0, QStringLiteral("Highest"), 5, QStringLiteral("const"), QStringLiteral("10"));
    project.var(0, 0x1000, QStringLiteral("Device type"), 7, QStringLiteral("ro"), QStringLiteral("0x191"));

    PGN pgn;
    pgn.number = 65262;
    pgn.direction = Direction::Transmit;
    pgn.name = QStringLiteral("Engine Temperature 1");
    pgn.priority = 6;
    pgn.cycletime_ms = 1000;
    pgn.FD_DataId = 77;
    project.pgn(0, pgn);
    project.spn(0, 65262, Direction::Transmit, 110, QStringLiteral("Coolant"), 5, 0, 0, 2, QStringLiteral("coolant"));
    project.spn(0, 65262, Direction::Transmit, 174, QStringLiteral("Fuel"), 5, 1, 8);
    project.store().setUDSServiceUserLevels(0, 34, QStringLiteral("1,3"));
}

} // namespace

class TestTextFormat : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { QCoreApplication::setApplicationName(QStringLiteral("CAN Kestrel")); }

    void roundTrip()
    {
        QTemporaryDir dir;
        ProjectBuilder project;
        fill(project);
        ObjectDataBase &original = project.store();
        const QString path = dir.filePath(QStringLiteral("board.ktxt"));
        QVERIFY(original.saveDatabase(path));
        QCOMPARE(original.getProjectPath(), path);

        ObjectDataBase read;
        QVERIFY(read.openDataBase(path));
        for (const auto &key : original.getGeneralSettingKeys())
            QCOMPARE(read.getGeneralSetting(key), original.getGeneralSetting(key));
        for (const auto &key : original.getJ1939SettingKeys())
            QCOMPARE(read.getJ1939Setting(key), original.getJ1939Setting(key));
        for (const auto &key : original.getDescriptionSettingKeys())
            QCOMPARE(read.getDescriptionSetting(key), original.getDescriptionSetting(key));
        QCOMPARE(read.getMiscSetting(QStringLiteral("costackpath")), QStringLiteral("/opt/stack"));

        QCOMPARE(read.getIndices(0), original.getIndices(0));
        for (const quint16 index : original.getIndices(0)) {
            INDEX_DATA_T a;
            INDEX_DATA_T b;
            original.getIndex(0, index, a);
            read.getIndex(0, index, b);
            QCOMPARE(b, a);
            QCOMPARE(read.getSubIndices(0, index), original.getSubIndices(0, index));
            for (const quint8 subindex : original.getSubIndices(0, index)) {
                SUBINDEX_DATA_T x;
                SUBINDEX_DATA_T y;
                original.getSubIndex(0, index, subindex, x);
                read.getSubIndex(0, index, subindex, y);
                QCOMPARE(y, carried(x));
            }
        }
        QCOMPARE(read.getPGNs(0, Direction::Transmit), QList<quint32>{65262});
        PGN a;
        PGN b;
        original.getPGN(0, 65262, Direction::Transmit, a);
        read.getPGN(0, 65262, Direction::Transmit, b);
        QCOMPARE(b, a);
        QCOMPARE(read.getSPNs(0, 65262, Direction::Transmit), (QList<quint32>{110, 174}));
        SPN x;
        SPN y;
        original.getSPN(0, 65262, Direction::Transmit, 110, x);
        read.getSPN(0, 65262, Direction::Transmit, 110, y);
        QCOMPARE(y, x);
        QCOMPARE(read.countActiveUDSServices(0), original.countActiveUDSServices(0));
        QCOMPARE(read.getUDSServiceUserLevels(0, 34), QStringLiteral("1,3"));
        QCOMPARE(read.getUDSServiceSessions(0, 34), QStringLiteral("1"));
    }

    void keysAndValuesHaveTheirForms()
    {
        QTemporaryDir dir;
        ProjectBuilder project;
        fill(project);
        const QString path = dir.filePath(QStringLiteral("board.ktxt"));
        QVERIFY(project.save(path));
        const QString text = QString::fromUtf8(TestProjects::readFile(path));
        QVERIFY(text.contains(QLatin1String("[SubObjects0]\n")));
        QVERIFY(text.contains(QLatin1String("0x2000\\0xa\\accesstype=rw\n")));
        QVERIFY(text.contains(QLatin1String("0x2000\\0xa\\name=Output\n")));
        QVERIFY(text.contains(QLatin1String("0x2000\\0xa\\metadata=@ByteArray(")));
        QVERIFY(text.contains(QLatin1String("0x1000\\metadata=@ByteArray(0)\n")));
        QVERIFY(text.contains(QLatin1String("0x2000\\device_class=rpdo\n")));
        QVERIFY(text.contains(QLatin1String("[PGNs0]\n65262\\FD_AssuranceDataSize=0\n")));
        QVERIFY(text.contains(QLatin1String("\n65262\\cycletime_ms=1000\n")));
        QVERIFY(text.contains(QLatin1String("65262\\110\\varname=coolant\n")));
        QVERIFY(text.contains(QLatin1String("sid\\34\\userlevels=\"1,3\"\n")));
        QVERIFY(text.contains(QLatin1String("[Nodes]\n0\\allpdosstatic=0\n")));
        for (const char *column : {"denotation", "changedbyuser", "wizardsource", "cyclicread", "dcfcomponent",
                                   "signalid", "objectindex"})
            QVERIFY2(!text.contains(QStringLiteral("\\%1=").arg(QLatin1String(column))), column);
        for (const char *group : {"[Strings]", "[CANIDs0]", "[DataElements0]", "[Connections]", "[EnergyBusSettings]"})
            QVERIFY2(!text.contains(QLatin1String(group)), group);
    }

    void linesLeaveOutForeignProtocols()
    {
        QTemporaryDir dir;
        ProjectBuilder j1939;
        j1939.line(0, 2).pgn(0, 65262, Direction::Transmit, QStringLiteral("ET1"));
        j1939.var(0, 0x2000, QStringLiteral("hidden"), 5, QStringLiteral("ro"), QStringLiteral("0"));
        j1939.line(1, 4).canId(1, 0x100, Direction::Transmit, QStringLiteral("raw"));
        const QString path = dir.filePath(QStringLiteral("j.ktxt"));
        QVERIFY(j1939.save(path));
        const QString text = QString::fromUtf8(TestProjects::readFile(path));
        QVERIFY(!text.contains(QLatin1String("[Nodes]")));
        QVERIFY(!text.contains(QLatin1String("[Objects0]")));
        QVERIFY(!text.contains(QLatin1String("[SubObjects0]")));
        QVERIFY(!text.contains(QLatin1String("[CANIDs1]")));
        QVERIFY(text.contains(QLatin1String("[PGNs0]")));
        QVERIFY(text.contains(QLatin1String("[J1939Settings]")) || !text.contains(QLatin1String("J1939Settings")));
        ObjectDataBase read;
        QVERIFY(read.openDataBase(path));
        QCOMPARE(read.getLines(), QList<quint8>{0});
        QCOMPARE(read.getPGNs(0), QList<quint32>{65262});
        QCOMPARE(read.getIndices(0), QList<quint16>{});

        ProjectBuilder canopen;
        canopen.line(0, 1).var(0, 0x2000, QStringLiteral("v"), 5, QStringLiteral("ro"), QStringLiteral("0"));
        canopen.pgn(0, 65262, Direction::Transmit, QStringLiteral("hidden"));
        canopen.j1939(QStringLiteral("startaddress"), QStringLiteral("1"));
        QVERIFY(canopen.save(path));
        const QString canopenText = QString::fromUtf8(TestProjects::readFile(path));
        QVERIFY(canopenText.contains(QLatin1String("[Objects0]")));
        QVERIFY(!canopenText.contains(QLatin1String("[PGNs0]")));
        QVERIFY(!canopenText.contains(QLatin1String("[J1939Settings]")));
    }

    void textIsSimplifiedOnTheWayIn()
    {
        QTemporaryDir dir;
        const QString path = dir.filePath(QStringLiteral("t.ktxt"));
        QVERIFY(TestProjects::writeFile(path, "[GeneralSettings]\nline0type=1\nlist=1,2,3\n"
                                              "[Nodes]\n0\\name=  two   words \n"
                                              "[SubObjects0]\n0x2000\\0x0\\name=\"a\\n  b\"\n0x2000\\0x0\\datatype=5\n"
                                              "0x2000\\0x0\\accesstype=ro\n0x2000\\0x0\\defaultvalue=  \n"
                                              "[Objects0]\n0x2000\\name=x\n0x2000\\objecttype=7\n"));
        ObjectDataBase store;
        QVERIFY(store.openDataBase(path));
        QCOMPARE(store.getGeneralSetting(QStringLiteral("list")), QStringLiteral("1,2,3"));
        NODE_DATA_T node;
        QVERIFY(store.getNode(0, node));
        QCOMPARE(node.name, QStringLiteral("two words"));
        SUBINDEX_DATA_T sub;
        QVERIFY(store.getSubIndex(0, 0x2000, 0, sub));
        QCOMPARE(sub.name, QStringLiteral("a b"));
        QCOMPARE(sub.accesstype, QStringLiteral("ro"));
        QVERIFY(sub.defaultvalue.isEmpty());
        QCOMPARE(store.getIndexName(0, 0x2000), QStringLiteral("x"));
    }

    void emptyOrMissingTextFails()
    {
        QTemporaryDir dir;
        const QString path = dir.filePath(QStringLiteral("empty.ktxt"));
        QVERIFY(TestProjects::writeFile(path, "; nothing\n"));
        ObjectDataBase store;
        QVERIFY(!store.loadTextDatabase(path));
        QVERIFY(!store.loadTextDatabase(dir.filePath(QStringLiteral("missing.ktxt"))));
        // The store stays usable: a fresh project with its line 0.
        QCOMPARE(store.getLines(), QList<quint8>{0});
    }
};

QTEST_GUILESS_MAIN(TestTextFormat)
#include "tst_textformat.moc"
