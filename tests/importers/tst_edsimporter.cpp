#include "edsreference.h"
#include "importers/edsimporter.h"
#include "store/objectdatabase.h"
#include "support/testprojects.h"

#include <QTemporaryDir>
#include <QtTest>

namespace {

constexpr quint8 scratch = ObjectDataBase::ScratchLine;

// A store with the scratch line, as the import dialog gives it to an importer.
std::unique_ptr<ObjectDataBase> scratchStore()
{
    auto store = std::make_unique<ObjectDataBase>();
    store->createNewDataBase();
    store->addNode(scratch, NODE_DATA_T());
    return store;
}

// Imports the file on the importer's thread and waits for its end.
void import(ObjectDataBase &store, const QString &file, bool dcf = false, quint32 low = 0x1000,
            quint32 high = 0xBFFF)
{
    EDSImporter importer;
    importer.setDcf(dcf);
    importer.setDatabase(&store);
    importer.setLine(scratch);
    importer.setIndexRange(low, high);
    QVERIFY(importer.setFileName(file));
    QVERIFY(importer.start());
    importer.wait();
}

QString writeEds(const QTemporaryDir &dir, const QByteArray &text, const char *name = "device.eds")
{
    const QString path = dir.filePath(QLatin1String(name));
    TestProjects::writeFile(path, text);
    return path;
}

SUBINDEX_DATA_T sub(ObjectDataBase &store, quint16 index, quint8 subIndex)
{
    SUBINDEX_DATA_T data;
    store.getSubIndex(scratch, index, subIndex, data);
    return data;
}

const QByteArray identity = "[1018]\nParameterName=Identity\nObjectType=9\nSubNumber=1\n"
                            "[1018sub0]\nParameterName=Count\nDataType=5\nAccessType=ro\nDefaultValue=0\n";

} // namespace

class TestEdsImporter : public QObject
{
    Q_OBJECT

private slots:
    void testFilesMatchAnIndependentReading_data()
    {
        QTest::addColumn<QString>("file");
        const QStringList files = EdsReference::testFiles();
        QVERIFY(!files.isEmpty());
        for (const QString &file : files)
            QTest::newRow(qPrintable(QFileInfo(file).fileName())) << file;
    }

    void testFilesMatchAnIndependentReading()
    {
        QFETCH(QString, file);
        QString error;
        const QJsonObject reading = EdsReference::read(file, error);
        QVERIFY2(!reading.isEmpty(), qPrintable(error));
        auto store = scratchStore();
        import(*store, file, false, 0, 0xFFFF);
        QCOMPARE(EdsReference::differences(*store, scratch, reading), QStringList());
    }

    void compactArrayWithoutNames()
    {
        QTemporaryDir dir;
        auto store = scratchStore();
        import(*store,
               writeEds(dir, "[2000]\nParameterName=Levels\nObjectType=8\nCompactSubObj=4\nDataType=6\n"
                             "AccessType=rw\nDefaultValue=7\nPDOMapping=1\n"));
        const auto subIndices = store->getSubIndices(scratch, 0x2000);
        QCOMPARE(subIndices, (QList<quint8>{0, 1, 2, 3, 4}));
        const SUBINDEX_DATA_T count = sub(*store, 0x2000, 0);
        QCOMPARE(count.name, QStringLiteral("Highest subindex supported"));
        QCOMPARE(count.defaultvalue, QStringLiteral("4"));
        QCOMPARE(count.datatype, quint16(5));
        QCOMPARE(count.pdomapping.value(), Forbidden);
        const SUBINDEX_DATA_T fourth = sub(*store, 0x2000, 4);
        QCOMPARE(fourth.name, QStringLiteral("Levels 4"));
        QCOMPARE(fourth.datatype, quint16(6));
        QCOMPARE(fourth.accesstype, QStringLiteral("rw"));
        QCOMPARE(fourth.defaultvalue, QStringLiteral("7"));
        QCOMPARE(fourth.pdomapping.value(), Allowed);
    }

    void parameterValue_data()
    {
        QTest::addColumn<bool>("dcf");
        QTest::addColumn<QString>("defaultValue");
        QTest::newRow("DCF takes the parameter value") << true << "0x10";
        QTest::newRow("EDS keeps the default value") << false << "0x20";
    }

    void parameterValue()
    {
        QFETCH(bool, dcf);
        QFETCH(QString, defaultValue);
        QTemporaryDir dir;
        auto store = scratchStore();
        import(*store,
               writeEds(dir, "[2000]\nParameterName=Value\nDataType=7\nAccessType=rw\nDefaultValue=0x20\n"
                             "ParameterValue=0x10\nDenotation=Left\n"),
               dcf);
        const SUBINDEX_DATA_T value = sub(*store, 0x2000, 0);
        QCOMPARE(value.defaultvalue, defaultValue);
        QCOMPARE(value.currentvalue, QStringLiteral("0x10"));
        QVERIFY(value.dcfcomponent);
        QCOMPARE(value.denotation, QStringLiteral("Left"));
    }

    void entryAttributes()
    {
        QTemporaryDir dir;
        auto store = scratchStore();
        import(*store,
               writeEds(dir, "[2000]\nParameterName=Limited\nDataType=5\nAccessType=rw\nDefaultValue=3\n"
                             "LowLimit=1\nHighLimit=9\nObjFlags=2\n"
                             "[2001]\nParameterName=Free\nDataType=3\nAccessType=ro\n"
                             "[2002]\nParameterName=Data\nObjectType=9\nSubNumber=1\n"
                             "[2002sub1]\nParameterName=Block\nDataType=0x000F\nAccessType=rw\n"
                             "[2003]\nParameterName=Values\nObjectType=8\nSubNumber=2\n"
                             "[2003sub0]\nParameterName=Count\nDataType=5\nAccessType=ro\nDefaultValue=1\n"
                             "[2003sub1]\nParameterName=First\nDataType=6\nAccessType=rw\n"));
        const SUBINDEX_DATA_T limited = sub(*store, 0x2000, 0);
        QVERIFY(limited.limitineds);
        QCOMPARE(limited.lowlimit + '-' + limited.uplimit, QStringLiteral("1-9"));
        QVERIFY(limited.refuseread);
        QVERIFY(!limited.refusewrite);
        QCOMPARE(int(limited.writedefaulttoeds), 1);
        QVERIFY(limited.defaultineds);
        const SUBINDEX_DATA_T free = sub(*store, 0x2001, 0);
        QVERIFY(!free.limitineds);
        QCOMPARE(free.lowlimit + ' ' + free.uplimit, QStringLiteral("-32768 32767"));
        QCOMPARE(int(free.writedefaulttoeds), 0);
        const SUBINDEX_DATA_T block = sub(*store, 0x2002, 1);
        QCOMPARE(block.implementation, quint8(2));
        QCOMPARE(block.varname, QStringLiteral("v_81941"));
        INDEX_DATA_T array;
        store->getIndex(scratch, 0x2003, array);
        QCOMPARE(array.datatype, quint16(6));
    }

    void mappingByAccess_data()
    {
        QTest::addColumn<QByteArray>("access");
        QTest::addColumn<QByteArray>("mappable");
        QTest::addColumn<int>("expected");
        QTest::newRow("read only travels out") << QByteArray("ro") << QByteArray("1") << int(TPDO);
        QTest::newRow("rwr travels out") << QByteArray("rwr") << QByteArray("1") << int(TPDO);
        QTest::newRow("write only travels in") << QByteArray("wo") << QByteArray("1") << int(RPDO);
        QTest::newRow("rww travels in") << QByteArray("rww") << QByteArray("1") << int(RPDO);
        QTest::newRow("read and write, either way") << QByteArray("rw") << QByteArray("1") << int(Allowed);
        QTest::newRow("not mappable") << QByteArray("rw") << QByteArray("0") << int(Forbidden);
    }

    void mappingByAccess()
    {
        QFETCH(QByteArray, access);
        QFETCH(QByteArray, mappable);
        QFETCH(int, expected);
        QTemporaryDir dir;
        auto store = scratchStore();
        import(*store, writeEds(dir, "[2000]\nParameterName=V\nDataType=5\nAccessType=" + access +
                                         "\nPDOMapping=" + mappable + "\n"));
        QCOMPARE(int(sub(*store, 0x2000, 0).pdomapping.value()), expected);
    }

    void pdoCompletion_data()
    {
        QTest::addColumn<QByteArray>("text");
        QTest::addColumn<QList<int>>("expected");
        const QByteArray rpdo0 = "[1400]\nParameterName=Own RPDO\nObjectType=9\nSubNumber=1\n"
                                 "[1400sub0]\nParameterName=Count\nDataType=5\nAccessType=ro\n";
        const QByteArray map0 = "[1600]\nParameterName=Own mapping\nObjectType=9\nSubNumber=1\n"
                                "[1600sub0]\nParameterName=Count\nDataType=5\nAccessType=rw\n";
        QTest::newRow("two receive PDOs declared, one there")
            << "[DeviceInfo]\nNrOfRXPDO=2\n" + rpdo0 << QList<int>{0x1400, 0x1401, 0x1600, 0x1601};
        QTest::newRow("parameters complete, a mapping missing")
            << "[DeviceInfo]\nNrOfRXPDO=1\n" + rpdo0 << QList<int>{0x1400, 0x1600};
        QTest::newRow("everything there")
            << "[DeviceInfo]\nNrOfRXPDO=1\n" + rpdo0 + map0 << QList<int>{0x1400, 0x1600};
        QTest::newRow("one transmit PDO from nothing")
            << QByteArray("[DeviceInfo]\nNrOfTXPDO=1\n") + identity << QList<int>{0x1018, 0x1800, 0x1a00};
        QTest::newRow("nothing declared") << QByteArray("[DeviceInfo]\n") + identity << QList<int>{0x1018};
    }

    void pdoCompletion()
    {
        QFETCH(QByteArray, text);
        QFETCH(QList<int>, expected);
        QTemporaryDir dir;
        auto store = scratchStore();
        import(*store, writeEds(dir, text));
        QList<int> indices;
        const auto stored = store->getIndices(scratch);
        for (const quint16 index : stored)
            indices << index;
        QCOMPARE(indices, expected);
        if (store->indexExists(scratch, 0x1400))
            QCOMPARE(store->getIndexName(scratch, 0x1400), QStringLiteral("Own RPDO"));
    }

    void pdoTemplates()
    {
        QTemporaryDir dir;
        auto store = scratchStore();
        import(*store, writeEds(dir, "[DeviceInfo]\nNrOfRXPDO=2\nNrOfTXPDO=1\n" + identity));
        QCOMPARE(store->getIndexName(scratch, 0x1401), QStringLiteral("Receive PDO parameter 2"));
        QCOMPARE(store->getIndexName(scratch, 0x1800), QStringLiteral("Transmit PDO parameter 1"));
        QCOMPARE(store->getIndexName(scratch, 0x1601), QStringLiteral("Mapping Parameter"));
        QCOMPARE(store->getSubIndices(scratch, 0x1800), (QList<quint8>{0, 1, 2, 3, 5}));
        QCOMPARE(store->getSubIndices(scratch, 0x1A00).size(), 9);
        const SUBINDEX_DATA_T count = sub(*store, 0x1601, 0);
        QCOMPARE(count.name, QStringLiteral("Number of Entries"));
        QCOMPARE(count.accesstype, QStringLiteral("rw"));
        QCOMPARE(count.defaultvalue + count.currentvalue + count.lowlimit + count.uplimit,
                 QStringLiteral("8808"));
        QVERIFY(count.limitineds);
        QVERIFY(!count.writedefaulttoeds);
        const SUBINDEX_DATA_T entry = sub(*store, 0x1601, 8);
        QCOMPARE(entry.name, QStringLiteral("Mappping Entry 8"));
        QCOMPARE(entry.defaultvalue, QStringLiteral("0x00000000"));
        QCOMPARE(entry.datatype, quint16(7));
        const SUBINDEX_DATA_T cobId = sub(*store, 0x1401, 1);
        QCOMPARE(cobId.name + ' ' + cobId.defaultvalue, QStringLiteral("COB-ID 0x80000000"));
        const SUBINDEX_DATA_T eventTimer = sub(*store, 0x1800, 5);
        QCOMPARE(eventTimer.name + ' ' + eventTimer.accesstype, QStringLiteral("Event Timer rw"));
        QCOMPARE(sub(*store, 0x1800, 0).defaultvalue, QStringLiteral("5"));
    }

    void pdoCompletionKeepsTheRange()
    {
        QTemporaryDir dir;
        auto store = scratchStore();
        import(*store, writeEds(dir, "[DeviceInfo]\nNrOfRXPDO=2\n" + identity), false, 0x1000, 0x15FF);
        QCOMPARE(store->getIndices(scratch), (QList<quint16>{0x1018, 0x1400, 0x1401}));
    }

    void commentsBecomeDescriptions()
    {
        QTemporaryDir dir;
        auto store = scratchStore();
        import(
            *store,
            writeEds(dir,
                     ";;lost before the first section\n"
                     "[2000]\nParameterName=Speed\nDataType=6\nAccessType=rw\n;;line one\n;;\n;;line three\n"
                     "[2001]\nParameterName=Pair\nObjectType=9\nSubNumber=2\n;;the pair\n"
                     "[2001sub0]\nParameterName=Count\nDataType=5\nAccessType=ro\n"
                     "[2001SUB1]\nParameterName=First\nDataType=5\nAccessType=rw\n;;first of two\n"
                     "[6000]\nParameterName=Outside\nDataType=5\nAccessType=rw\n;;dropped\n"),
            false, 0x1000, 0x5FFF);
        INDEX_DATA_T speed;
        store->getIndex(scratch, 0x2000, speed);
        QCOMPARE(speed.description, QStringLiteral("line one\n\nline three\n"));
        QCOMPARE(sub(*store, 0x2000, 0).description, QStringLiteral("line one\n\nline three\n"));
        INDEX_DATA_T pair;
        store->getIndex(scratch, 0x2001, pair);
        QCOMPARE(pair.description, QStringLiteral("the pair\n"));
        QCOMPARE(sub(*store, 0x2001, 0).description, QStringLiteral("the pair\n"));
        QCOMPARE(sub(*store, 0x2001, 1).description, QStringLiteral("first of two\n"));
        QVERIFY(!store->indexExists(scratch, 0x6000));
    }

    void descriptionSections()
    {
        QTemporaryDir dir;
        auto store = scratchStore();
        store->setDescriptionLine(scratch);
        store->setDescriptionSetting(QStringLiteral("OrderCode"), QStringLiteral("from an earlier file"));
        store->setDescriptionLine(0);
        import(*store,
               writeEds(dir, "[FileInfo]\nFileVersion=3\nFileRevision=7\nCreatedBy=Ann, Bob\nModifiedBy=Cid\n"
                             "[DeviceInfo]\nVendorName=ACME\nProductName=Widget\nLSS_Supported=1\n"
                             "BaudRate_250=1\nNrOfRXPDO=0\nNrOfTxPdo=0\n"
                             "[DummyUsage]\nDummy0005=1\n"
                             "[Comments]\nLines=2\nLine1=first\nLine2=second\n" +
                                 identity));
        QCOMPARE(store->getDescriptionLine(), quint8(0));
        store->setDescriptionLine(scratch);
        const std::pair<const char *, const char *> expected[] = {
            {"FileVersion", "3"},           {"FileRevision", "7"},  {"CreatedBy", "Ann, Bob"},
            {"ModifiedBy", "Cid"},          {"VendorName", "ACME"}, {"ProductName", "Widget"},
            {"LSS_Supported", "1"},         {"BaudRate_250", "1"},  {"Dummy0005", "1"},
            {"Comment", "first\nsecond\n"}, {"OrderCode", ""},      {"NrOfTXPDO", "0"},
            {"BaudRate_1000", ""},
        };
        for (const auto &[key, value] : expected)
            QCOMPARE(store->getDescriptionSetting(QLatin1String(key)), QLatin1String(value));
    }

    void descriptionSectionsOnly()
    {
        QTemporaryDir dir;
        auto store = scratchStore();
        EDSImporter importer;
        importer.setDatabase(store.get());
        importer.setLine(0);
        importer.setFileName(writeEds(dir, "[DeviceInfo]\nVendorName=ACME\n" + identity));
        store->setDescriptionSetting(QStringLiteral("Comment"), QStringLiteral("of an earlier file"));
        QVERIFY(importer.importDescriptionSections());
        QCOMPARE(store->getDescriptionSetting(QStringLiteral("VendorName")), QStringLiteral("ACME"));
        QCOMPARE(store->getDescriptionSetting(QStringLiteral("Comment")), QString());
        QVERIFY(store->getIndices(0).isEmpty());
    }
};

QTEST_GUILESS_MAIN(TestEdsImporter)
#include "tst_edsimporter.moc"
