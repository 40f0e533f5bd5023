#include "importers/csvimporter.h"
#include "store/objectdatabase.h"
#include "support/testprojects.h"

#include <QTemporaryDir>
#include <QtTest>

Q_DECLARE_METATYPE(QList<CsvObjectRef>)

namespace {

constexpr quint8 scratch = ObjectDataBase::ScratchLine;

struct Imported
{
    std::unique_ptr<ObjectDataBase> store;
    QList<CsvObjectRef> copies;
    QList<CsvObjectRef> deletions;
};

Imported import(const QByteArray &table, quint32 low = 0x1000, quint32 high = 0xBFFF)
{
    Imported result;
    result.store = std::make_unique<ObjectDataBase>();
    result.store->createNewDataBase();
    result.store->addNode(scratch, NODE_DATA_T());
    result.store->addNode(2, NODE_DATA_T());
    QTemporaryDir dir;
    const QString path = dir.filePath(QStringLiteral("table.csv"));
    TestProjects::writeFile(path, table);
    CsvImporter importer;
    importer.setDatabase(result.store.get());
    importer.setLine(scratch);
    importer.setIndexRange(low, high);
    importer.setFileName(path);
    importer.start();
    importer.wait();
    importer.getCopyList(result.copies);
    importer.getDeleteList(result.deletions);
    return result;
}

SUBINDEX_DATA_T sub(const Imported &imported, quint16 index, quint8 subIndex, quint8 line = scratch)
{
    SUBINDEX_DATA_T data;
    imported.store->getSubIndex(line, index, subIndex, data);
    return data;
}

const QByteArray head =
    "index,sub,objectcode,datatype,edsname,varname,access,mapable,hasdefault,defaultineds,value,"
    "description,size,implementation,haslimit,lowlimit,uplimit,nvstorage\n";

} // namespace

class TestCsvImporter : public QObject
{
    Q_OBJECT

private slots:
    void headFindsTheColumns_data()
    {
        QTest::addColumn<QByteArray>("table");
        QTest::newRow("commas") << QByteArray(
            "index,sub,edsname,datatype,access,value\n0x2000,0,Speed,u16,rw,5\n");
        QTest::newRow("semicolons") << QByteArray(
            "index;sub;edsname;datatype;access;value\n0x2000;0;Speed;u16;rw;5\n");
        QTest::newRow("other order, capitals")
            << QByteArray("Value,Access,DataType,EDSname,Sub,Index\n5,RW,UNSIGNED16,Speed,0x00,0x2000\n");
        QTest::newRow("head behind comments and empty lines") << QByteArray(
            "# exported by hand\n\n#\nindex,sub,edsname,datatype,access,value\n\n0x2000,0,Speed,u16,rw,5\n");
    }

    void headFindsTheColumns()
    {
        QFETCH(QByteArray, table);
        const Imported imported = import(table);
        INDEX_DATA_T object;
        QVERIFY(imported.store->getIndex(scratch, 0x2000, object));
        QCOMPARE(object.name, QStringLiteral("Speed"));
        QCOMPARE(object.objecttype, 7u);
        const SUBINDEX_DATA_T speed = sub(imported, 0x2000, 0);
        QCOMPARE(speed.datatype, quint16(6));
        QCOMPARE(speed.accesstype, QStringLiteral("rw"));
        QCOMPARE(speed.defaultvalue, QStringLiteral("5"));
        QCOMPARE(speed.lowlimit + '/' + speed.uplimit, QStringLiteral("0/65535"));
        QVERIFY(!speed.limitineds);
    }

    void rowsThatAreIgnored_data()
    {
        QTest::addColumn<QByteArray>("table");
        const QByteArray columns = "index,sub,edsname,datatype,access,value\n";
        QTest::newRow("row shorter than the head") << columns + "0x2000,0,Speed,u16,rw\n";
        QTest::newRow("fewer than five fields") << QByteArray("index,edsname\n0x2000,Speed\n");
        QTest::newRow("no index column")
            << QByteArray("number,sub,edsname,datatype,access\n0x2000,0,Speed,u16,rw\n");
        QTest::newRow("index no number") << columns + "speed,0,Speed,u16,rw,5\n";
        QTest::newRow("index beyond 16 bits") << columns + "0x12000,0,Speed,u16,rw,5\n";
        QTest::newRow("sub-index no number") << columns + "0x2000,zero,Speed,u16,rw,5\n";
        QTest::newRow("outside the range") << columns + "0xC000,0,Speed,u16,rw,5\n";
    }

    void rowsThatAreIgnored()
    {
        QFETCH(QByteArray, table);
        const Imported imported = import(table);
        QVERIFY(imported.store->getIndices(scratch).isEmpty());
    }

    void arrayTypeForEntriesWithoutType()
    {
        const Imported imported = import("index,sub,objectcode,datatype,edsname,access,value\n"
                                         "0x2000,,ARRAY,u8,Outputs,ro,\n"
                                         "0x2000,1,,,Output 1,rw,3\n"
                                         "0x2000,2,,u16,Output 2,rw,4\n");
        INDEX_DATA_T array;
        imported.store->getIndex(scratch, 0x2000, array);
        QCOMPARE(array.objecttype, 8u);
        QCOMPARE(array.datatype, quint16(5));
        QCOMPARE(sub(imported, 0x2000, 1).datatype, quint16(5));
        QCOMPARE(sub(imported, 0x2000, 2).datatype, quint16(6));
        const SUBINDEX_DATA_T count = sub(imported, 0x2000, 0);
        QCOMPARE(count.datatype, quint16(5));
        QVERIFY(count.defaultineds);
    }

    void entryWithoutCounter()
    {
        const Imported imported = import("index,sub,edsname,datatype,access,value,implementation\n"
                                         "0x2100,3,Third,u32,ro,9,VirtualObject\n");
        const SUBINDEX_DATA_T count = sub(imported, 0x2100, 0);
        QCOMPARE(count.name, QStringLiteral("Highest Subindex supported"));
        QCOMPARE(count.datatype, quint16(5));
        QCOMPARE(count.accesstype, QStringLiteral("ro"));
        QCOMPARE(count.implementation, quint8(3));
        QCOMPARE(sub(imported, 0x2100, 3).implementation, quint8(3));
    }

    void implementationRules_data()
    {
        QTest::addColumn<QByteArray>("row");
        QTest::addColumn<int>("implementation");
        QTest::addColumn<QString>("varName");
        QTest::newRow("variable name makes an application variable")
            << QByteArray("0x2000,0,V,u8,rw,speed,") << 2 << "speed";
        QTest::newRow("constant UNSIGNED8 type") << QByteArray("0x2000,0,V,U8S,rw,,") << 1 << "";
        QTest::newRow("const access") << QByteArray("0x2000,0,V,u8,const,,") << 1 << "";
        QTest::newRow("virtual object") << QByteArray("0x2000,0,V,u8,rw,,virtualobject") << 3 << "";
        QTest::newRow("virtual domain")
            << QByteArray("0x2000,0,V,DOMAIN,rw,,VirtualObject") << 2 << "v_81920";
        QTest::newRow("virtual domain entry")
            << QByteArray("0x2000,4,V,d,rw,,VirtualObject") << 2 << "v_81924";
        QTest::newRow("plain entry") << QByteArray("0x2000,0,V,u8,rw,,ManagedVariable") << 0 << "";
    }

    void implementationRules()
    {
        QFETCH(QByteArray, row);
        QFETCH(int, implementation);
        QFETCH(QString, varName);
        const Imported imported =
            import("index,sub,edsname,datatype,access,varname,implementation\n" + row + '\n');
        const quint8 subIndex = quint8(row.split(',').at(1).toUInt());
        const SUBINDEX_DATA_T entry = sub(imported, 0x2000, subIndex);
        QCOMPARE(int(entry.implementation), implementation);
        QCOMPARE(entry.varname, varName);
    }

    void flagsAndLimits_data()
    {
        QTest::addColumn<QByteArray>("columns");
        QTest::addColumn<QByteArray>("row");
        QTest::addColumn<bool>("defaultInEds");
        QTest::addColumn<bool>("limits");
        QTest::addColumn<QString>("range");
        QTest::newRow("no flag columns")
            << QByteArray("edsname,datatype,access") << QByteArray("V,u8,rw") << true << false << "0-255";
        QTest::newRow("limit columns set the flag") << QByteArray("edsname,datatype,access,lowlimit,uplimit")
                                                    << QByteArray("V,u8,rw,2,") << true << true << "2-255";
        QTest::newRow("haslimit decides") << QByteArray("edsname,datatype,access,haslimit,lowlimit,uplimit")
                                          << QByteArray("V,u8,rw,no,2,9") << true << false << "2-9";
        QTest::newRow("hasdefault 0") << QByteArray("edsname,datatype,access,hasdefault")
                                      << QByteArray("V,u8,rw,0") << false << false << "0-255";
        QTest::newRow("hasdefault as the older tables write it")
            << QByteArray("edsname,datatype,access,hasDefault") << QByteArray("V,u8,rw,no") << false << false
            << "0-255";
    }

    void flagsAndLimits()
    {
        QFETCH(QByteArray, columns);
        QFETCH(QByteArray, row);
        QFETCH(bool, defaultInEds);
        QFETCH(bool, limits);
        QFETCH(QString, range);
        const Imported imported = import("index,sub," + columns + "\n0x2000,0," + row + '\n');
        const SUBINDEX_DATA_T entry = sub(imported, 0x2000, 0);
        QCOMPARE(entry.defaultineds, defaultInEds);
        QCOMPARE(entry.limitineds, limits);
        QCOMPARE(entry.lowlimit + '-' + entry.uplimit, range);
    }

    void writeDefaultOfEntries_data()
    {
        QTest::addColumn<QByteArray>("access");
        QTest::addColumn<QByteArray>("column");
        QTest::addColumn<int>("expected");
        QTest::newRow("writable entry takes the column") << QByteArray("rw") << QByteArray("0") << 0;
        QTest::newRow("rwr counts as writable") << QByteArray("rwr") << QByteArray("0") << 0;
        QTest::newRow("read-only entry keeps its default") << QByteArray("ro") << QByteArray("0") << 1;
        QTest::newRow("always in the files") << QByteArray("rw") << QByteArray("2") << 2;
    }

    void writeDefaultOfEntries()
    {
        QFETCH(QByteArray, access);
        QFETCH(QByteArray, column);
        QFETCH(int, expected);
        const Imported imported = import("index,sub,edsname,datatype,access,defaultineds\n0x2000,1,V,u8," +
                                         access + ',' + column + '\n');
        QCOMPARE(int(sub(imported, 0x2000, 1).writedefaulttoeds), expected);
    }

    void cellsOfAnIcsvFile()
    {
        const Imported imported =
            import("#\n# This is an importable ICSV file for the board project.\n#\n" + head +
                   "0x2000,0x00,VARIABLE,UNSIGNED16,Speed,,rw,tpdo,1,1,16,Motor speed<br>in "
                   "rpm,2,ManagedVariable,yes,0,"
                   "1000,yes\n \n");
        INDEX_DATA_T object;
        imported.store->getIndex(scratch, 0x2000, object);
        QCOMPARE(object.description, QStringLiteral("Motor speed\nin rpm"));
        const SUBINDEX_DATA_T speed = sub(imported, 0x2000, 0);
        QCOMPARE(speed.pdomapping.value(), TPDO);
        QVERIFY(speed.limitineds);
        QCOMPARE(speed.lowlimit + '-' + speed.uplimit, QStringLiteral("0-1000"));
        QVERIFY(speed.nvstorage);
        QCOMPARE(speed.size, 2u);
        QVERIFY(speed.writedefaulttoeds);
    }

    void quotedCellsOfTheOlderTable()
    {
        const Imported imported =
            import("Index,Sub,EDSname,Datatype,Access,Value,varname\n"
                   "0x2000,0x00,\"Speed, fast \"\"max\"\"\",UNSIGNED16,rw,16,\"NONE\"\n");
        QCOMPARE(imported.store->getIndexName(scratch, 0x2000), QStringLiteral("Speed, fast \"max\""));
    }

    void nameWhenEdsNameIsEmpty_data()
    {
        QTest::addColumn<QByteArray>("row");
        QTest::addColumn<QString>("name");
        QTest::newRow("variable name") << QByteArray("0x2abc,0,,speed,u8") << "speed";
        QTest::newRow("made from the index") << QByteArray("0x2abc,0,,,u8") << "Object_2ABC";
    }

    void nameWhenEdsNameIsEmpty()
    {
        QFETCH(QByteArray, row);
        QFETCH(QString, name);
        const Imported imported = import("index,sub,edsname,varname,datatype\n" + row + '\n');
        QCOMPARE(imported.store->getIndexName(scratch, 0x2ABC), name);
    }

    void lineColumn()
    {
        const Imported imported = import("index,sub,edsname,datatype,line\n0x2000,0,Elsewhere,u8,2\n");
        QVERIFY(!imported.store->indexExists(scratch, 0x2000));
        QCOMPARE(imported.store->getIndexName(2, 0x2000), QStringLiteral("Elsewhere"));
    }

    void commands_data()
    {
        QTest::addColumn<QByteArray>("lines");
        QTest::addColumn<QList<CsvObjectRef>>("copies");
        QTest::addColumn<QList<CsvObjectRef>>("deletions");
        using List = QList<CsvObjectRef>;
        QTest::newRow("delete an object") << QByteArray("d,0x2001\n") << List{} << List{{0x2001, 0, true}};
        QTest::newRow("delete a sub-index")
            << QByteArray("d,0x2002,0x4\n") << List{} << List{{0x2002, 4, false}};
        QTest::newRow("copy an object")
            << QByteArray("c,0x3000,0x2000\n") << List{{0x3000, 0, true}, {0x2000, 0, true}} << List{};
        QTest::newRow("copy a sub-index")
            << QByteArray("c,0x2001,0x4,0x1\n") << List{{0x2001, 4, false}, {0x2001, 1, false}} << List{};
        QTest::newRow("bad commands are dropped")
            << QByteArray("d,0\nd,zero\nd,0x2002,x\nd,1,2,3\nc,0x3000,0\nc,0x2001,0x1,0x1\nc,0x3000\n")
            << List{} << List{};
        QTest::newRow("a line starting with c is a command")
            << QByteArray("count,0,Counter,u8,rw\n") << List{} << List{};
    }

    void commands()
    {
        QFETCH(QByteArray, lines);
        QFETCH(QList<CsvObjectRef>, copies);
        QFETCH(QList<CsvObjectRef>, deletions);
        const Imported imported = import("index,sub,edsname,datatype,access\n0x2000,0,Kept,u8,rw\n" + lines);
        QCOMPARE(imported.copies, copies);
        QCOMPARE(imported.deletions, deletions);
        QCOMPARE(imported.store->getIndices(scratch), QList<quint16>{0x2000});
    }
};

QTEST_GUILESS_MAIN(TestCsvImporter)
#include "tst_csvimporter.moc"
