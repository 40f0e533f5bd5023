#include "store/objectdatabase.h"
#include "support/projectbuilder.h"
#include "support/testprojects.h"

#include <QDir>
#include <QProcess>
#include <QSignalSpy>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <QtTest>

namespace {

// A project as an early version wrote it: no DatabaseVersion, fewer columns everywhere, sub-indices
// without their UNIQUE constraint, no UDS and no J1939 or misc settings tables.
const QStringList oldSchema{
    "create table Strings (id integer primary key, string text)",
    "insert into Strings values(1, '')",
    "insert into Strings values(2, 'Engine Temperature 1')",
    "create table Nodes (nodeId integer primary key, name text, edspath text, xddpath text)",
    "insert into Nodes values(0, 'engine', 'engine.eds', '')",
    "create table GeneralSettings (item text unique, value text)",
    "insert into GeneralSettings values('co_node_id', '11,12,13')",
    "insert into GeneralSettings values('receivebuffersize', '10,20')",
    "create table Objects0 (objectindex integer primary key, name integer, datatype integer not null, "
    "objecttype integer not null, description integer, category integer)",
    "insert into Objects0 values(4096, 2, 7, 7, 1, 0)",
    "create table SubObjects0 (objectindex integer not null, subindex integer not null, name integer, "
    "datatype integer not null, accesstype text not null, defaultvalue text, currentvalue text, pdomapping "
    "integer, lowlimit text, uplimit text, size integer, defaultineds integer, limitineds integer, refuseread "
    "integer, refusewrite integer, allowedaccesstypes text, implementation integer not null, varname text, "
    "description integer, category integer)",
    "insert into SubObjects0 values(4096, 0, 2, 7, 'ro', '0x191', '', 0, '', '', 0, 1, 0, 0, 0, '', 1, '', 1, 0)",
    "create table PGNs0 (number integer not null, edp_dp_key integer, priority integer, cycletime_ms integer, "
    "inhibittime_ms integer, mappingcount integer, direction integer, name integer, desc integer)",
    "insert into PGNs0 values(65262, 0, 6, 1000, 0, 0, 85, 2, 1)",
    "insert into PGNs0 values(65263, 0, 6, 1000, 0, 0, 119, 1, 1)",
    "insert into PGNs0 values(61444, 0, 3, 10, 0, 0, 85, 1, 1)",
    "insert into PGNs0 values(61444, 0, 3, 10, 0, 0, 119, 1, 1)",
    "create table SPNs0 (pgnnumber integer not null, spnnumber integer not null, datatype integer, "
    "implementation integer, varname text, defaultvalue text, name integer, desc integer)",
    "insert into SPNs0 values(65262, 110, 5, 2, 'coolant', '0', 1, 1)",
    "insert into SPNs0 values(65262, 174, 6, 2, 'fuel', '0', 1, 1)",
    "insert into SPNs0 values(65263, 100, 5, 2, 'oil', '0', 1, 1)",
    "create table CANIDs0 (id integer not null, cycletime_ms integer, inhibittime_ms integer, mappingcount "
    "integer, direction integer, name integer, desc integer)",
    "insert into CANIDs0 values(256, 0, 0, 0, 85, 1, 1)",
    "insert into CANIDs0 values(512, 0, 0, 0, 85, 1, 1)",
    "create table DataElements0 (canid integer not null, number integer not null, datatype integer, "
    "implementation integer, varname text, defaultvalue text, name integer, desc integer, pos integer, "
    "bitsize integer, direction integer)",
    "insert into DataElements0 values(256, 1, 5, 2, 'a', '0', 1, 1, 0, 8, 85)",
    "insert into DataElements0 values(256, 2, 7, 2, 'b', '0', 1, 1, 1, 32, 85)",
    "insert into DataElements0 values(512, 1, 5, 2, 'c', '0', 1, 1, 0, 8, 85)",
    "create table Signals (sigid integer primary key, nodeid integer, name integer, datatype integer not null, "
    "accesstype text not null, defaultvalue text, signalgroup integer, ref integer)",
    "create table Connections (prodnode integer, prodindex integer, prodsub integer, connode integer, conindex "
    "integer, consub integer)",
};

// Column names of every table, in lower case and sorted, of a project file.
QMap<QString, QStringList> columnsOf(const QString &path)
{
    QMap<QString, QStringList> result;
    const QStringList tables =
        TestProjects::querySql(path, QStringLiteral("select name from sqlite_master where type='table'"));
    for (const auto &table : tables) {
        QStringList columns = TestProjects::querySql(
            path, QStringLiteral("select lower(name) from pragma_table_info('%1')").arg(table));
        columns.sort();
        result.insert(table, columns);
    }
    return result;
}

QString independentHash(const QString &path)
{
    QProcess python;
    python.start(QStringLiteral("python3"),
                 {QStringLiteral(KESTREL_TEST_DATA_DIR "/../store/filehash.py"), path});
    python.waitForFinished();
    return QString::fromLatin1(python.readAllStandardOutput()).trimmed();
}

QStringList workingFiles()
{
    return QDir(QStandardPaths::writableLocation(QStandardPaths::AppLocalDataLocation))
        .entryList({QStringLiteral("projdatatemp_*")}, QDir::Files);
}

} // namespace

class TestLifecycle : public QObject
{
    Q_OBJECT

private slots:
    void init()
    {
        QCoreApplication::setApplicationName(QStringLiteral("CAN Kestrel"));
        QCoreApplication::setApplicationVersion(QStringLiteral("4.3.2"));
    }

    void oldProjectIsMigrated()
    {
        QTemporaryDir dir;
        const QString old = dir.filePath(QStringLiteral("old.kprj"));
        QVERIFY(TestProjects::execSql(old, oldSchema));
        const QString reference = dir.filePath(QStringLiteral("reference.kprj"));
        QVERIFY(TestProjects::createProject(reference));

        ObjectDataBase store;
        QVERIFY(store.openDataBase(old));
        QVERIFY(!store.isExternallyModified());
        QVERIFY(store.saveDatabase());
        QMap<QString, QStringList> expected = columnsOf(reference);
        QMap<QString, QStringList> migrated = columnsOf(old);
        QCOMPARE(migrated, expected);
        QCOMPARE(TestProjects::querySql(old, QStringLiteral("select value from MiscSettings where item = "
                                                            "'DatabaseVersion'")),
                 QStringList{QStringLiteral("107")});
        // The UNIQUE constraint came with the rebuilt sub-index table, and the row survived it.
        QCOMPARE(TestProjects::querySql(old, QStringLiteral("select count(*) from pragma_index_list('SubObjects0') "
                                                            "where \"unique\" = 1")),
                 QStringList{QStringLiteral("1")});
        SUBINDEX_DATA_T sub;
        QVERIFY(store.getSubIndex(0, 0x1000, 0, sub));
        QCOMPARE(sub.defaultvalue, QStringLiteral("0x191"));
        QCOMPARE(sub.name, QStringLiteral("Engine Temperature 1"));

        QCOMPARE(store.countActiveUDSServices(0), 17);
        QCOMPARE(store.getUDSServiceSessions(0, 49), QStringLiteral("1,2,3,4"));
        QCOMPARE(store.getUDSServiceSessions(0, 39), QStringLiteral("2,3,4"));
        QCOMPARE(store.getUDSServiceSessions(0, 55), QStringLiteral("2,3,4"));

        // Three PGNs against one object: J1939.
        QCOMPARE(store.getGeneralSetting(QStringLiteral("line0type")), QStringLiteral("2"));
        // Every per-line list holds one element per line.
        QCOMPARE(store.getGeneralSetting(QStringLiteral("co_node_id")), QStringLiteral("11"));
        QCOMPARE(store.getGeneralSetting(QStringLiteral("receivebuffersize")), QStringLiteral("10"));
        QCOMPARE(store.getDescriptionSetting(QStringLiteral("OrderCode")), QStringLiteral("0815-BUY-ME"));
    }

    void oldProjectGetsSignalDataRepaired()
    {
        QTemporaryDir dir;
        const QString old = dir.filePath(QStringLiteral("old.kprj"));
        QVERIFY(TestProjects::execSql(old, oldSchema + QStringList{"insert into GeneralSettings values('line0type', '2')"}));
        ObjectDataBase store;
        QVERIFY(store.openDataBase(old));

        // SPN directions follow their PGN; a PGN in both directions keeps its SPNs as they are.
        SPN spn;
        QVERIFY(store.getSPN(0, 65262, Direction::Transmit, 174, spn));
        QCOMPARE(spn.bitposition, quint16(8));
        QVERIFY(store.getSPN(0, 65263, Direction::Receive, 100, spn));
        QCOMPARE(spn.bitposition, quint16(0));
        QCOMPARE(store.getSPNs(0, 65262, Direction::Transmit), (QList<quint32>{110, 174}));

        PGN pgn;
        QVERIFY(store.getPGN(0, 65262, Direction::Transmit, pgn));
        QCOMPARE(pgn.mappingcount, quint16(2));
        QVERIFY(store.getPGN(0, 61444, Direction::Receive, pgn));
        QCOMPARE(pgn.mappingcount, quint16(0));

        // Both elements of 0x100 stood at 0: recomputed. 0x200 has one element: kept.
        DataElement element;
        QVERIFY(store.getDataElement(0, 256, Direction::Transmit, 2, element));
        QCOMPARE(element.bitpos, quint16(8));
        QVERIFY(store.getDataElement(0, 256, Direction::Transmit, 1, element));
        QCOMPARE(element.bitpos, quint16(0));
    }

    void lineTypeFollowsTheCreatingEdition_data()
    {
        QTest::addColumn<QString>("createdBy");
        QTest::addColumn<QString>("expected");
        QTest::newRow("CANopen edition") << "CANopen Kestrel" << "1";
        QTest::newRow("J1939 edition") << "J1939 Kestrel" << "2";
        QTest::newRow("unknown: three PGNs outnumber one object") << "" << "2";
    }

    void lineTypeFollowsTheCreatingEdition()
    {
        QFETCH(QString, createdBy);
        QFETCH(QString, expected);
        QTemporaryDir dir;
        const QString old = dir.filePath(QStringLiteral("old.kprj"));
        QStringList statements = oldSchema;
        statements << "create table MiscSettings (item text unique, value text)";
        if (!createdBy.isEmpty())
            statements << QStringLiteral("insert into MiscSettings values('CreateToolName', '%1')").arg(createdBy);
        QVERIFY(TestProjects::execSql(old, statements));
        ObjectDataBase store;
        QVERIFY(store.openDataBase(old));
        QCOMPARE(store.getGeneralSetting(QStringLiteral("line0type")), expected);
    }

    void fileHashIsTheContentHash()
    {
        QTemporaryDir dir;
        const QString path = dir.filePath(QStringLiteral("p.kprj"));
        ProjectBuilder project;
        project.line(0, 1).var(0, 0x2000, QStringLiteral("Speed \u00e4"), 6, QStringLiteral("rw"), QStringLiteral("0"));
        project.line(1, 2).pgn(1, 65262, Direction::Transmit, QStringLiteral("Engine Temperature 1"));
        QVERIFY(project.save(path));
        const QStringList stored =
            TestProjects::querySql(path, QStringLiteral("select value from MiscSettings where item = 'FileHash'"));
        QCOMPARE(stored.size(), 1);
        QCOMPARE(stored.first().size(), 64);
        QCOMPARE(stored.first(), independentHash(path));
        QCOMPARE(project.store().computeFileHash(), stored.first());
    }

    void externalChangesAreDetected_data()
    {
        QTest::addColumn<QString>("change");
        QTest::addColumn<bool>("detected");
        QTest::newRow("object name") << "update Strings set string = 'changed' where string = 'Speed'" << true;
        QTest::newRow("misc setting") << "insert into MiscSettings values('costackpath', '/tmp')" << true;
        QTest::newRow("settings row") << "update GeneralSettings set value = '2' where item = 'line0type'" << true;
        QTest::newRow("tamper log only") << "insert into MiscSettings values('TamperLog', 'x')" << false;
        QTest::newRow("hash only") << "update MiscSettings set value = 'abc' where item = 'FileHash'" << false;
        QTest::newRow("nothing") << "select 1" << false;
    }

    void externalChangesAreDetected()
    {
        QFETCH(QString, change);
        QFETCH(bool, detected);
        QTemporaryDir dir;
        const QString path = dir.filePath(QStringLiteral("p.kprj"));
        ProjectBuilder project;
        project.line(0, 1).var(0, 0x2000, QStringLiteral("Speed"), 6, QStringLiteral("rw"), QStringLiteral("0"));
        QVERIFY(project.save(path));
        QVERIFY(TestProjects::execSql(path, {change}));

        ObjectDataBase store;
        QVERIFY(store.openDataBase(path));
        if (change.contains(QLatin1String("'FileHash'"))) {
            // A hash that matches nothing is a change as well; a hash cleared away is none.
            QVERIFY(store.isExternallyModified());
            return;
        }
        QCOMPARE(store.isExternallyModified(), detected);
        const QString log = store.getMiscSetting(QStringLiteral("TamperLog"));
        if (detected) {
            QVERIFY(QDateTime::fromString(log.section(';', -1), Qt::ISODate).isValid());
            // The record reaches the file with the next save; the new hash then matches.
            QVERIFY(store.saveDatabase());
            ObjectDataBase again;
            QVERIFY(again.openDataBase(path));
            QVERIFY(!again.isExternallyModified());
            QCOMPARE(again.getMiscSetting(QStringLiteral("TamperLog")), log);
        }
    }

    void projectWithoutHashIsNotChecked()
    {
        QTemporaryDir dir;
        const QString path = dir.filePath(QStringLiteral("p.kprj"));
        QVERIFY(TestProjects::createProject(path, {"insert into GeneralSettings values('line0type','1')"}));
        ObjectDataBase store;
        QVERIFY(store.openDataBase(path));
        QVERIFY(!store.isExternallyModified());
        QVERIFY(store.getMiscSetting(QStringLiteral("TamperLog")).isEmpty());
        QVERIFY(store.saveDatabase());
        QCOMPARE(TestProjects::querySql(path, QStringLiteral("select value from MiscSettings where item = 'FileHash'")),
                 QStringList{independentHash(path)});
    }

    void savingKeepsTheFormerFileAsBackup()
    {
        QTemporaryDir dir;
        const QString path = dir.filePath(QStringLiteral("p.kprj"));
        ProjectBuilder project;
        project.line(0, 1).general(QStringLiteral("user_defines"), QStringLiteral("first"));
        QVERIFY(project.save(path));
        QVERIFY(!QFile::exists(path + QStringLiteral(".bak")));
        const QByteArray first = TestProjects::readFile(path);
        project.general(QStringLiteral("user_defines"), QStringLiteral("second"));
        QVERIFY(project.save(path));
        QCOMPARE(TestProjects::readFile(path + QStringLiteral(".bak")), first);
        const QByteArray second = TestProjects::readFile(path);
        project.general(QStringLiteral("user_defines"), QStringLiteral("third"));
        QVERIFY(project.save(QString()));
        QCOMPARE(TestProjects::readFile(path + QStringLiteral(".bak")), second);
        QCOMPARE(TestProjects::querySql(path, QStringLiteral("select value from GeneralSettings where item = "
                                                             "'user_defines'")),
                 QStringList{QStringLiteral("third")});
        QCOMPARE(TestProjects::querySql(path, QStringLiteral("select value from MiscSettings where item = "
                                                             "'SaveToolType'")),
                 QStringList{QStringLiteral("CAN Kestrel")});
    }

    void failedSaveLeavesTheProject()
    {
        QTemporaryDir dir;
        const QString folder = dir.filePath(QStringLiteral("protected"));
        QVERIFY(QDir().mkpath(folder));
        const QString path = folder + QStringLiteral("/p.kprj");
        ProjectBuilder project;
        project.line(0, 1);
        QVERIFY(project.save(path));
        const QByteArray before = TestProjects::readFile(path);
        project.general(QStringLiteral("user_defines"), QStringLiteral("lost"));

        QFile::setPermissions(path, QFile::ReadOwner | QFile::ReadUser);
        QVERIFY(!project.save(path));
        QCOMPARE(TestProjects::readFile(path), before);
        QFile::setPermissions(path, QFile::ReadOwner | QFile::WriteOwner | QFile::ReadUser | QFile::WriteUser);

        QFile::setPermissions(folder, QFile::ReadOwner | QFile::ExeOwner | QFile::ReadUser | QFile::ExeUser);
        QVERIFY(!project.save(path));
        QCOMPARE(TestProjects::readFile(path), before);
        QVERIFY(!QFile::exists(path + QStringLiteral(".bak")));
        QFile::setPermissions(folder, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner | QFile::ReadUser |
                                          QFile::WriteUser | QFile::ExeUser);
    }

    void readOnlyProjectCanBeEdited()
    {
        QTemporaryDir dir;
        const QString path = dir.filePath(QStringLiteral("p.kprj"));
        ProjectBuilder project;
        project.line(0, 1);
        QVERIFY(project.save(path));
        QFile::setPermissions(path, QFile::ReadOwner | QFile::ReadUser);
        ObjectDataBase store;
        QVERIFY(store.openDataBase(path));
        QVERIFY(store.setGeneralSetting(QStringLiteral("user_defines"), QStringLiteral("x")));
        QVERIFY(store.addIndex(0, 0x2000, INDEX_DATA_T()));
        QVERIFY(store.indexExists(0, 0x2000));
        QVERIFY(!store.saveDatabase());
    }

    void projectOfAnotherEditionIsRefused_data()
    {
        QTest::addColumn<QString>("savedBy");
        QTest::addColumn<QString>("application");
        QTest::addColumn<QString>("lineType");
        QTest::addColumn<bool>("opens");
        QTest::newRow("J1939 project in the CANopen edition") << "J1939 Kestrel" << "CANopen Kestrel" << "2" << false;
        QTest::newRow("mixed project in the CANopen edition") << "CAN Kestrel" << "CANopen Kestrel" << "5" << false;
        QTest::newRow("CANopen project in the J1939 edition") << "CANopen Kestrel" << "J1939 Kestrel" << "1" << false;
        QTest::newRow("J1939 project from elsewhere in the J1939 edition") << "CAN Kestrel" << "J1939 Kestrel" << "2"
                                                                           << true;
        QTest::newRow("anything in the CAN edition") << "J1939 Kestrel" << "CAN Kestrel" << "1" << true;
        QTest::newRow("same edition") << "CANopen Kestrel" << "CANopen Kestrel" << "2" << true;
    }

    void projectOfAnotherEditionIsRefused()
    {
        QFETCH(QString, savedBy);
        QFETCH(QString, application);
        QFETCH(QString, lineType);
        QFETCH(bool, opens);
        QTemporaryDir dir;
        const QString path = dir.filePath(QStringLiteral("p.kprj"));
        QVERIFY(TestProjects::createProject(
            path, {QStringLiteral("insert into GeneralSettings values('line0type','%1')").arg(lineType),
                   QStringLiteral("insert into MiscSettings values('SaveToolType','%1')").arg(savedBy)}));
        QCoreApplication::setApplicationName(application);
        ObjectDataBase store;
        QSignalSpy wrongTool(&store, &ObjectDataBase::wrongTool);
        QCOMPARE(store.openDataBase(path), opens);
        QCOMPARE(wrongTool.count(), opens ? 0 : 1);
        QCOMPARE(store.lastError(), opens ? QString() : QStringLiteral("File was not created with this tool."));
    }

    void unreadableFilesFailWithoutText_data()
    {
        QTest::addColumn<QByteArray>("content");
        QTest::newRow("text") << QByteArray("not a database");
        QTest::newRow("empty") << QByteArray("");
        QTest::newRow("missing") << QByteArray();
    }

    void unreadableFilesFailWithoutText()
    {
        QFETCH(QByteArray, content);
        QTemporaryDir dir;
        const QString path = dir.filePath(QStringLiteral("p.kprj"));
        if (!content.isNull())
            QVERIFY(TestProjects::writeFile(path, content));
        ObjectDataBase store;
        QVERIFY(!store.openDataBase(path));
        QVERIFY(store.lastError().isEmpty());
        QVERIFY(!store.openDataBase(QString()));
    }

    void workingFilesVanishWithTheStore()
    {
        QTemporaryDir dir;
        const QString path = dir.filePath(QStringLiteral("p.kprj"));
        QVERIFY(TestProjects::createProject(path, {"insert into GeneralSettings values('line0type','1')"}));
        const QStringList before = workingFiles();
        {
            ObjectDataBase first;
            ObjectDataBase second;
            QVERIFY(first.createNewDataBase());
            QVERIFY(first.openDataBase(path));
            QVERIFY(second.openDataBase(path));
            QVERIFY(first.workingFile() != second.workingFile());
            QCOMPARE(workingFiles().size(), before.size() + 3);
            // Two stores on one file work on their own copies; the later save wins.
            first.setGeneralSetting(QStringLiteral("user_defines"), QStringLiteral("first"));
            second.setGeneralSetting(QStringLiteral("user_defines"), QStringLiteral("second"));
            QVERIFY(first.saveDatabase());
            QVERIFY(second.saveDatabase());
        }
        QCOMPARE(workingFiles(), before);
        QCOMPARE(TestProjects::querySql(path, QStringLiteral("select value from GeneralSettings where item = "
                                                             "'user_defines'")),
                 QStringList{QStringLiteral("second")});
    }

    void programLeavesNoWorkingFile()
    {
        QTemporaryDir dir;
        const QString path = dir.filePath(QStringLiteral("p.kprj"));
        QVERIFY(TestProjects::createProject(path, {"insert into GeneralSettings values('line0type','1')"}));
        const QString data = dir.filePath(QStringLiteral("xdg"));
        qputenv("XDG_DATA_HOME", data.toLocal8Bit());
        const auto run = TestProjects::runProgram(QStringLiteral("canopen-kestrel"),
                                                  {path, "-hidden", "-now", "-s", "-g"}, dir.path());
        QCOMPARE(run.exitCode, 0);
        QVERIFY(QDir(data + QStringLiteral("/vorlan/CANopen Kestrel")).exists());
        QCOMPARE(QDir(data + QStringLiteral("/vorlan/CANopen Kestrel"))
                     .entryList({QStringLiteral("projdatatemp_*")}, QDir::Files),
                 QStringList());
    }

    void savedTemplateMarksWizardObjects()
    {
        QTemporaryDir dir;
        ProjectBuilder project;
        SUBINDEX_DATA_T changed = ProjectBuilder::subRecord(QStringLiteral("a"), 7, QStringLiteral("ro"),
                                                            QStringLiteral("1"));
        changed.changedbyuser = true;
        project.line(0, 1).sub(0, 0x1000, 0, changed);
        project.sub(0, 0x1001, 0, QStringLiteral("b"), 5, QStringLiteral("ro"), QStringLiteral("0"));
        const QString data = dir.filePath(QStringLiteral("t.data"));
        QVERIFY(project.save(data));
        QCOMPARE(TestProjects::querySql(data, QStringLiteral("select changedbyuser || '/' || wizardsource from "
                                                             "SubObjects0 order by objectindex")),
                 (QStringList{QStringLiteral("0/454"), QStringLiteral("0/454")}));
        const QString kprj = dir.filePath(QStringLiteral("t.kprj"));
        project.sub(0, 0x1002, 0, changed);
        QVERIFY(project.save(kprj));
        QCOMPARE(TestProjects::querySql(kprj, QStringLiteral("select wizardsource from SubObjects0 where objectindex "
                                                             "= 4098")),
                 QStringList{QStringLiteral("0")});
    }

    void internalLinesNeverReachTheFile()
    {
        QTemporaryDir dir;
        const QString path = dir.filePath(QStringLiteral("p.kprj"));
        QVERIFY(TestProjects::createProject(path, {"insert into GeneralSettings values('line0type','1')",
                                                   "create table PGNs254 (number integer)",
                                                   "create table SPNs254 (pgnnumber integer)"}));
        ObjectDataBase store;
        QVERIFY(store.openDataBase(path));
        store.addNode(255, NODE_DATA_T());
        store.copyToClipboard(0, 0x1000);
        QVERIFY(store.saveDatabase());
        QCOMPARE(TestProjects::querySql(path, QStringLiteral("select name from sqlite_master where name like '%254' "
                                                             "or name like '%255'")),
                 QStringList());
        QCOMPARE(TestProjects::querySql(path, QStringLiteral("select nodeId from Nodes")), QStringList{"0"});
    }
};

QTEST_GUILESS_MAIN(TestLifecycle)
#include "tst_lifecycle.moc"
