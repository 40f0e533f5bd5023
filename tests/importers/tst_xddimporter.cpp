#include "importers/xddimporter.h"
#include "store/objectdatabase.h"
#include "support/testprojects.h"

#include <QTemporaryDir>
#include <QtTest>

namespace {

constexpr quint8 scratch = ObjectDataBase::ScratchLine;

struct Imported
{
    std::unique_ptr<ObjectDataBase> store;
    QStringList errors;
};

Imported import(const QByteArray &xml)
{
    Imported result;
    result.store = std::make_unique<ObjectDataBase>();
    result.store->createNewDataBase();
    result.store->addNode(scratch, NODE_DATA_T());
    QTemporaryDir dir;
    const QString path = dir.filePath(QStringLiteral("device.xdd"));
    TestProjects::writeFile(path, xml);
    XDDImporter importer;
    importer.setDatabase(result.store.get());
    importer.setLine(scratch);
    importer.setFileName(path);
    QObject::connect(&importer, qOverload<const QString &>(&BaseDataImporter::importError),
                     [&](const QString &text) { result.errors << text.section('/', -1); });
    importer.start();
    importer.wait();
    QCoreApplication::processEvents();
    return result;
}

QByteArray objectList(const QByteArray &objects)
{
    return "<?xml version=\"1.0\"?>\n<ISO15745ProfileContainer><ISO15745Profile><ProfileBody>"
           "<DeviceIdentity><productName>Widget "
           "FD</productName></DeviceIdentity></ProfileBody></ISO15745Profile>"
           "<ISO15745Profile><ProfileBody><ApplicationLayers><CANopenFDObjectList>" +
           objects +
           "</CANopenFDObjectList></ApplicationLayers></ProfileBody></ISO15745Profile></"
           "ISO15745ProfileContainer>\n";
}

SUBINDEX_DATA_T sub(const Imported &imported, quint16 index, quint8 subIndex)
{
    SUBINDEX_DATA_T data;
    imported.store->getSubIndex(scratch, index, subIndex, data);
    return data;
}

} // namespace

class TestXddImporter : public QObject
{
    Q_OBJECT

private slots:
    void objectsAndProductName()
    {
        const Imported imported = import(objectList(
            "<CANopenFDDataObject index=\"2000\" name=\"Settings\" objectType=\"9\">"
            "<CANopenFDDataElement subIndex=\"00\" name=\"Count\" dataType=\"05\" modification=\"false\" "
            "accessUSDO=\"ro\" accessPDO=\"no\" defaultValue=\"1\"/>"
            "<CANopenFDDataElement subIndex=\"01\" name=\"Gain\" dataType=\"03\" accessUSDO=\"rw\" "
            "accessPDO=\"t\" lowLimit=\"-10\" highLimit=\"10\"/>"
            "</CANopenFDDataObject>"
            "<CANopenFDDataObject index=\"C000\" name=\"High\" dataType=\"07\"/>"
            "<CANopenFDDataObject name=\"No index\"><CANopenFDDataElement subIndex=\"00\"/>"
            "</CANopenFDDataObject>"));
        QVERIFY(imported.errors.isEmpty());
        QCOMPARE(imported.store->getIndices(scratch), (QList<quint16>{0x2000, 0xC000}));
        INDEX_DATA_T settings;
        imported.store->getIndex(scratch, 0x2000, settings);
        QCOMPARE(settings.name, QStringLiteral("Settings"));
        QCOMPARE(settings.objecttype, 9u);
        QCOMPARE(settings.datatype, quint16(5));
        INDEX_DATA_T high;
        imported.store->getIndex(scratch, 0xC000, high);
        QCOMPARE(high.objecttype, 7u);
        QCOMPARE(high.datatype, quint16(7));

        const SUBINDEX_DATA_T count = sub(imported, 0x2000, 0);
        QCOMPARE(count.accesstype, QStringLiteral("const"));
        QCOMPARE(count.implementation, quint8(1));
        QCOMPARE(count.defaultvalue, QStringLiteral("1"));
        QVERIFY(count.defaultineds && count.writedefaulttoeds);
        QVERIFY(!count.limitineds);
        QCOMPARE(count.lowlimit + '-' + count.uplimit, QStringLiteral("0-255"));
        const SUBINDEX_DATA_T gain = sub(imported, 0x2000, 1);
        QCOMPARE(gain.datatype, quint16(3));
        QVERIFY(gain.limitineds);
        QCOMPARE(gain.lowlimit + ' ' + gain.uplimit, QStringLiteral("-10 10"));
        QVERIFY(!gain.defaultineds && !gain.writedefaulttoeds);

        imported.store->setDescriptionLine(scratch);
        QCOMPARE(imported.store->getDescriptionSetting(QStringLiteral("ProductName")),
                 QStringLiteral("Widget FD"));
    }

    void accessAndMapping_data()
    {
        QTest::addColumn<QByteArray>("attributes");
        QTest::addColumn<QString>("access");
        QTest::addColumn<int>("mapping");
        QTest::addColumn<int>("implementation");
        QTest::newRow("read only, transmit")
            << QByteArray("accessUSDO=\"ro\" accessPDO=\"t\"") << "ro" << int(TPDO) << 0;
        QTest::newRow("write only, receive")
            << QByteArray("accessUSDO=\"wo\" accessPDO=\"r\"") << "wo" << int(RPDO) << 0;
        QTest::newRow("read and write, transmit")
            << QByteArray("accessUSDO=\"rw\" accessPDO=\"t\"") << "rwr" << int(TPDO) << 0;
        QTest::newRow("read and write, receive")
            << QByteArray("accessUSDO=\"rw\" accessPDO=\"r\"") << "rww" << int(RPDO) << 0;
        QTest::newRow("read and write, both ways")
            << QByteArray("accessUSDO=\"rw\" accessPDO=\"tr\"") << "rw" << int(Allowed) << 0;
        QTest::newRow("defaults of the attributes") << QByteArray() << "ro" << int(Forbidden) << 0;
        QTest::newRow("unknown texts")
            << QByteArray("accessUSDO=\"xx\" accessPDO=\"yy\"") << "ro" << int(Forbidden) << 0;
        QTest::newRow("constant ignores the access")
            << QByteArray("modification=\"false\" accessUSDO=\"rw\" accessPDO=\"t\"") << "const"
            << int(Forbidden) << 1;
    }

    void accessAndMapping()
    {
        QFETCH(QByteArray, attributes);
        QFETCH(QString, access);
        QFETCH(int, mapping);
        QFETCH(int, implementation);
        const Imported imported =
            import(objectList("<CANopenFDDataObject index=\"2001\" name=\"V\" objectType=\"7\" "
                              "dataType=\"05\"><CANopenFDDataElement subIndex=\"0\" name=\"V\" "
                              "dataType=\"05\" " +
                              attributes + "/></CANopenFDDataObject>"));
        const SUBINDEX_DATA_T value = sub(imported, 0x2001, 0);
        QCOMPARE(value.accesstype, access);
        QCOMPARE(int(value.pdomapping.value()), mapping);
        QCOMPARE(int(value.implementation), implementation);
    }

    void filesThatAreNoDeviceDescription_data()
    {
        QTest::addColumn<QByteArray>("content");
        QTest::addColumn<QStringList>("errors");
        QTest::newRow("XML without objects")
            << QByteArray("<?xml version=\"1.0\"?><root><productName>Only a name</productName></root>")
            << QStringList{"device.xdd has is not in CiA 1311 XDD format."};
        QTest::newRow("broken XML") << objectList("<CANopenFDDataObject index=\"2000\" name=\"A\"></Wrong>")
                                    << QStringList{"Opening and ending tag mismatch."};
        QTest::newRow("not XML at all")
            << QByteArray("[FileInfo]\nFileName=x.eds\n")
            << QStringList{"device.xdd has is not in CiA 1311 XDD format.", "Start tag expected."};
    }

    void filesThatAreNoDeviceDescription()
    {
        QFETCH(QByteArray, content);
        QFETCH(QStringList, errors);
        const Imported imported = import(content);
        QCOMPARE(imported.errors, errors);
    }
};

QTEST_GUILESS_MAIN(TestXddImporter)
#include "tst_xddimporter.moc"
