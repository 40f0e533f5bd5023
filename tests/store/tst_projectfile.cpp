#include "store/objectdatabase.h"
#include "support/testprojects.h"

#include <QDataStream>
#include <QSqlDatabase>
#include <QSqlQuery>
#include <QTemporaryDir>
#include <QtTest>

namespace {

// "name type notnull pk" of every column of every table, plus the UNIQUE indices, of a project file.
QStringList schemaOf(const QString &path)
{
    QStringList result;
    const QStringList tables = TestProjects::querySql(
        path, QStringLiteral("select name from sqlite_master where type='table' order by name"));
    for (const auto &table : tables) {
        const QStringList columns = TestProjects::querySql(
            path, QStringLiteral("select name || ' ' || type || ' ' || \"notnull\" || ' ' || pk from "
                                 "pragma_table_info('%1')")
                      .arg(table));
        result << table + QStringLiteral(": ") + columns.join(QStringLiteral(", "));
        const QStringList unique = TestProjects::querySql(
            path, QStringLiteral("select group_concat(ii.name, ',') from pragma_index_list('%1') il, "
                                 "pragma_index_info(il.name) ii where il.\"unique\" = 1 group by il.name")
                      .arg(table));
        for (const auto &index : unique)
            result << table + QStringLiteral(" unique(") + index + ')';
    }
    return result;
}

} // namespace

class TestProjectFile : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase()
    {
        QCoreApplication::setApplicationName(QStringLiteral("CANopen Kestrel"));
        QCoreApplication::setApplicationVersion(QStringLiteral("4.3.2"));
    }

    // A new project has exactly the tables, columns, types and constraints of the file format.
    void newProjectHasTheSchema()
    {
        QTemporaryDir dir;
        const QString reference = dir.filePath(QStringLiteral("reference.kprj"));
        QVERIFY(TestProjects::createProject(reference));

        ObjectDataBase store;
        QVERIFY(store.createNewDataBase());
        const QString saved = dir.filePath(QStringLiteral("new.kprj"));
        QVERIFY(store.saveDatabase(saved));
        QCOMPARE(schemaOf(saved), schemaOf(reference));
    }

    void newProjectDefaults()
    {
        ObjectDataBase store;
        QVERIFY(store.createNewDataBase());
        QCOMPARE(store.getLines(), QList<quint8>{0});
        QCOMPARE(store.getMiscSetting(QStringLiteral("DatabaseVersion")), QStringLiteral("107"));
        QCOMPARE(store.getMiscSetting(QStringLiteral("CreateToolName")), QStringLiteral("CANopen Kestrel"));
        QCOMPARE(store.getMiscSetting(QStringLiteral("CreateToolVersion")), QStringLiteral("4.3.2"));
        NODE_DATA_T node;
        QVERIFY(store.getNode(0, node));
        QCOMPARE(node, NODE_DATA_T());
        QCOMPARE(node.prefix, QStringLiteral("_"));
        QCOMPARE(node.outputpath, QStringLiteral("C:/"));
        QVERIFY(node.generatedcf);
    }

    // Metadata is a version-17 data stream of a text map, written as a blob.
    void metadataIsAVersion17Stream()
    {
        QTemporaryDir dir;
        ObjectDataBase store;
        QVERIFY(store.createNewDataBase());
        SUBINDEX_DATA_T sub;
        sub.datatype = 7;
        sub.accesstype = QStringLiteral("rw");
        sub.metadata = {{QStringLiteral("eds_define"), QStringLiteral("A")}, {QStringLiteral("b"), QString()}};
        QVERIFY(store.addSubIndex(0, 0x2000, 0, sub));
        INDEX_DATA_T object;
        object.metadata = {{QStringLiteral("k"), QStringLiteral("\u00e4")}};
        QVERIFY(store.addIndex(0, 0x2000, object));
        const QString path = dir.filePath(QStringLiteral("m.kprj"));
        QVERIFY(store.saveDatabase(path));

        auto expectedBytes = [](const MetadataMap &map) {
            QByteArray bytes;
            QDataStream out(&bytes, QIODevice::WriteOnly);
            out.setVersion(17);
            out << quint32(map.size());
            for (auto it = map.begin(); it != map.end(); ++it)
                out << it.key() << it.value();
            return bytes;
        };
        QCOMPARE(TestProjects::querySql(path, QStringLiteral("select hex(metadata) from SubObjects0")),
                 QStringList{QString::fromLatin1(expectedBytes(sub.metadata).toHex().toUpper())});
        QCOMPARE(TestProjects::querySql(path, QStringLiteral("select typeof(metadata) from Objects0")),
                 QStringList{QStringLiteral("blob")});

        SUBINDEX_DATA_T read;
        QVERIFY(store.getSubIndex(0, 0x2000, 0, read));
        QCOMPARE(read.metadata, sub.metadata);
        QVERIFY(store.getIndex(0, 0x2000, object));
        QCOMPARE(object.metadata.value(QStringLiteral("k")), QStringLiteral("\u00e4"));
    }

    // Text with quotes reaches the file unchanged wherever the store writes text.
    void quotesAreDoubledNotLost()
    {
        QTemporaryDir dir;
        ObjectDataBase store;
        QVERIFY(store.createNewDataBase());
        const QString text = QStringLiteral("it's 'quoted'");
        SUBINDEX_DATA_T sub;
        sub.datatype = 9;
        sub.accesstype = QStringLiteral("ro");
        sub.name = text;
        sub.defaultvalue = text;
        sub.currentvalue = text;
        QVERIFY(store.addSubIndex(0, 0x2001, 0, sub));
        QVERIFY(store.setGeneralSetting(QStringLiteral("user_defines"), text));
        const QString path = dir.filePath(QStringLiteral("q.kprj"));
        QVERIFY(store.saveDatabase(path));
        QCOMPARE(TestProjects::querySql(path, QStringLiteral("select defaultvalue from SubObjects0")),
                 QStringList{text});
        QCOMPARE(TestProjects::querySql(path, QStringLiteral("select count(*) from Strings where string = '%1'")
                                                  .arg(QString(text).replace('\'', QStringLiteral("''")))),
                 QStringList{QStringLiteral("1")});
        QCOMPARE(TestProjects::querySql(path, QStringLiteral("select value from GeneralSettings where item = "
                                                             "'user_defines'")),
                 QStringList{text});
    }

    // Old files hold NULL in columns added later; readers take it as 0, false or empty.
    void nullColumnsReadAsZero()
    {
        QTemporaryDir dir;
        const QString path = dir.filePath(QStringLiteral("n.kprj"));
        QVERIFY(TestProjects::createProject(
            path, {"insert into GeneralSettings values('line0type','1')",
                   "insert into Strings values(2,'Device Type')",
                   "insert into Objects0 (objectindex, name, datatype, objecttype) values(4096, 2, 7, 7)",
                   "insert into SubObjects0 (objectindex, subindex, name, datatype, accesstype, implementation) "
                   "values(4096, 0, 2, 7, 'ro', 0)"}));
        ObjectDataBase store;
        QVERIFY(store.openDataBase(path));
        SUBINDEX_DATA_T sub;
        QVERIFY(store.getSubIndex(0, 0x1000, 0, sub));
        QCOMPARE(sub.name, QStringLiteral("Device Type"));
        QVERIFY(!sub.sharedlines);
        QVERIFY(!sub.managedbymrn);
        QCOMPARE(sub.signalid, 0u);
        QVERIFY(!sub.nvstorage);
        QVERIFY(sub.metadata.isEmpty());
        QVERIFY(sub.defaultvalue.isEmpty());
        INDEX_DATA_T object;
        QVERIFY(store.getIndex(0, 0x1000, object));
        QCOMPARE(object.category, quint8(0));
        QVERIFY(object.description.isEmpty());
    }
};

QTEST_GUILESS_MAIN(TestProjectFile)
#include "tst_projectfile.moc"
