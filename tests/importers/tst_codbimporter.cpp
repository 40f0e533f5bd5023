#include "importers/codbimporter.h"
#include "store/objectdatabase.h"
#include "support/testprojects.h"

#include <QTemporaryDir>
#include <QtTest>

namespace {

// Reads CODB text into line 255 of a new store, as the start of the program does with its resources.
std::unique_ptr<ObjectDataBase> import(const QString &file, bool copies = false, quint32 low = 0x1000,
                                       quint32 high = 0xBFFF)
{
    auto store = std::make_unique<ObjectDataBase>();
    store->createNewDataBase();
    store->addNode(ObjectDataBase::ScratchLine, NODE_DATA_T());
    CODBImporter importer;
    importer.setObjectCopies(copies);
    importer.setLine(ObjectDataBase::ScratchLine);
    importer.setDatabase(store.get());
    importer.setIndexRange(low, high);
    importer.setFileName(file);
    importer.start();
    importer.wait();
    QCoreApplication::processEvents();
    return store;
}

std::unique_ptr<ObjectDataBase> importText(const QByteArray &text, bool copies = false)
{
    QTemporaryDir dir;
    const QString path = dir.filePath(QStringLiteral("profile.codb"));
    TestProjects::writeFile(path, text);
    return import(path, copies);
}

SUBINDEX_DATA_T sub(ObjectDataBase &store, quint16 index, quint8 subIndex)
{
    SUBINDEX_DATA_T data;
    store.getSubIndex(ObjectDataBase::ScratchLine, index, subIndex, data);
    return data;
}

INDEX_DATA_T object(ObjectDataBase &store, quint16 index)
{
    INDEX_DATA_T data;
    store.getIndex(ObjectDataBase::ScratchLine, index, data);
    return data;
}

constexpr quint8 Scratch = ObjectDataBase::ScratchLine;

} // namespace

class TestCODBImporter : public QObject
{
    Q_OBJECT

private slots:
    void variableObjectLine()
    {
        auto store = importText("# comment\n\n"
                                "1000::Device type:mandatory::VAR:m:UNSIGNED32:m:ro:m::n::n::n::n:0x00000191:m:n:m\n"
                                "1001::Error register:conditional::VAR:m:UNSIGNED8:m::d[ro,const,rw]::n::n::n::n:"
                                ":m::d\n");
        QCOMPARE(store->getIndices(Scratch), (QList<quint16>{0x1000, 0x1001}));
        const INDEX_DATA_T deviceType = object(*store, 0x1000);
        QCOMPARE(deviceType.name, QStringLiteral("Device type"));
        QCOMPARE(deviceType.objecttype, 7u);
        QCOMPARE(deviceType.category, quint8(0));
        QCOMPARE(deviceType.datatype, quint16(7));
        const SUBINDEX_DATA_T value = sub(*store, 0x1000, 0);
        QCOMPARE(value.name, QStringLiteral("Device type"));
        QCOMPARE(value.datatype, quint16(7));
        QCOMPARE(value.accesstype, QStringLiteral("ro"));
        QCOMPARE(value.defaultvalue, QStringLiteral("0x00000191"));
        QCOMPARE(value.allowedaccesstypes, QStringLiteral("const,ro,rw,wo,rww,rwr"));
        QCOMPARE(value.pdomapping.toUInt(), 0u);
        QCOMPARE(value.lowlimit, QStringLiteral("0"));
        QCOMPARE(value.uplimit, QStringLiteral("4294967295"));
        QVERIFY(!value.limitineds);

        const SUBINDEX_DATA_T errors = sub(*store, 0x1001, 0);
        QCOMPARE(object(*store, 0x1001).category, quint8(2));
        QCOMPARE(errors.accesstype, QStringLiteral("ro"));
        QCOMPARE(errors.allowedaccesstypes, QStringLiteral("ro,const,rw"));
        // An empty mapping field with the flag "d" means mappable.
        QCOMPARE(errors.pdomapping.toUInt(), 1u);
    }

    void limitsOfBothLineKinds()
    {
        // The object line ignores the limit fields; the sub-index line takes the larger hexadecimal match.
        auto store = importText(
            "1400::RPDO:optional::RECORD:m::::::n::n::n::n:::n:m\n"
            "1400:01:COB-ID:mandatory::VAR:m:UNSIGNED32:m:rw:m::n::n:0x00000080:n:0xBFFFFFFF:n:$NODEID+0x00000080:"
            "m:n:m\n"
            "1400:02:Type:mandatory::VAR:m:UNSIGNED8:m:rw:m::n::n:0x02:n::n:0xFE:m:n:m\n"
            "1401::COB-ID:optional::VAR:m:UNSIGNED32:m:rw:m::n::n:0x00000080:n:0xBFFFFFFF:n:$NODEID+0x00000080:m:"
            "n:m\n");
        const SUBINDEX_DATA_T cobId = sub(*store, 0x1400, 1);
        QCOMPARE(cobId.lowlimit, QStringLiteral("128"));
        QCOMPARE(cobId.uplimit, QStringLiteral("3221225471"));
        QVERIFY(!cobId.limitineds);
        QCOMPARE(cobId.defaultvalue, QStringLiteral("$NODEID+0x00000080"));
        const SUBINDEX_DATA_T type = sub(*store, 0x1400, 2);
        QCOMPARE(type.lowlimit, QStringLiteral("2"));
        QCOMPARE(type.uplimit, QStringLiteral("0"));
        const SUBINDEX_DATA_T variable = sub(*store, 0x1401, 0);
        QCOMPARE(variable.lowlimit, QStringLiteral("0"));
        QCOMPARE(variable.uplimit, QStringLiteral("4294967295"));
        QCOMPARE(variable.defaultvalue, QStringLiteral("$NODEID+0x00000080"));
    }

    void containersAndTheirEntries()
    {
        auto store = importText("2000::Gains:optional::ARRAY:m::::::n::n::n::n:::n:m\n"
                                "2000:00:Count:mandatory::VAR:m:UNSIGNED8:m:ro:m::n::n::n::n:2:m:n:m\n"
                                "2000:01:Gain 1:optional::VAR:m:INTEGER16:m:rw:m::n::n::n::n::m:y:m\n"
                                "2001::Drive:optional::RECORD:m::::::n::n::n::n:::n:m\n"
                                "2001:00:Count:mandatory::VAR:m:UNSIGNED8:m:ro:m::n::n::n::n:1:m:n:m\n"
                                "1018::Identity:mandatory::RECORD:m::::::n::n::n::n:::n:m\n"
                                "1018:00:Count:mandatory::VAR:m:UNSIGNED8:m:ro:m::n::n::n::n:4:m:n:m\n"
                                "2002::Mixed case:optional::Array:m::::::n::n::n::n:::n:m\n");
        QCOMPARE(object(*store, 0x2000).objecttype, 8u);
        // Sub-index 1 of an array sets the array's data type.
        QCOMPARE(object(*store, 0x2000).datatype, quint16(3));
        QCOMPARE(object(*store, 0x2000).category, quint8(1));
        QCOMPARE(object(*store, 0x2001).objecttype, 9u);
        QCOMPARE(sub(*store, 0x2000, 0).implementation, quint8(1));
        QCOMPARE(sub(*store, 0x2001, 0).implementation, quint8(1));
        QCOMPARE(sub(*store, 0x1018, 0).implementation, quint8(0));
        QCOMPARE(sub(*store, 0x2000, 1).pdomapping.toUInt(), 1u);
        // An entry without a default is not written into descriptions; sub-index 0 always is.
        QCOMPARE(int(sub(*store, 0x2000, 1).writedefaulttoeds), 0);
        QCOMPARE(int(sub(*store, 0x2000, 0).writedefaulttoeds), 1);
        QVERIFY(!store->indexExists(Scratch, 0x2002));
    }

    void dataTypeRules()
    {
        auto store = importText("1008::Name:optional::VAR:m:VISIBLE_STRING:m:const:m::n::n::n::n::m:n:m\n"
                                "1009::Version:optional::VAR:m:VISIBLE_STRING:m:const:m::n::n::n::n:1.0:m:n:m\n"
                                "1F50::Program:optional::ARRAY:m::::::n::n::n::n:::n:m\n"
                                "1F50:01:Program 1:optional::VAR:m:DOMAIN:m:wo:m::n::n::n::n::m:n:m\n");
        const SUBINDEX_DATA_T name = sub(*store, 0x1008, 0);
        QCOMPARE(name.implementation, quint8(1));
        QCOMPARE(name.defaultvalue, QStringLiteral(" "));
        QCOMPARE(name.size, 1u);
        QCOMPARE(sub(*store, 0x1009, 0).defaultvalue, QStringLiteral("1.0"));
        const SUBINDEX_DATA_T program = sub(*store, 0x1F50, 1);
        QCOMPARE(program.implementation, quint8(2));
        QCOMPARE(program.varname, QStringLiteral("v_80161"));
    }

    void objectCopiesOnlyWhenAsked()
    {
        const QByteArray text = "6421::Source:optional::VAR:m:UNSIGNED8:m:rw:m::n::n::n::n:3:m:n:m\n"
                                "$6422=6421\n"
                                "$zz=6421\n";
        QVERIFY(!importText(text, false)->indexExists(Scratch, 0x6422));
        auto store = importText(text, true);
        QVERIFY(store->indexExists(Scratch, 0x6422));
        QCOMPARE(sub(*store, 0x6422, 0).defaultvalue, QStringLiteral("3"));
        QCOMPARE(store->getIndices(Scratch), (QList<quint16>{0x6421, 0x6422}));
    }

    void rangeAppliesToObjectLines()
    {
        QTemporaryDir dir;
        const QString path = dir.filePath(QStringLiteral("profile.codb"));
        TestProjects::writeFile(path, "1000::Device type:mandatory::VAR:m:UNSIGNED32:m:ro:m::n::n::n::n:0:m:n:m\n"
                                      "2000::Outside:optional::VAR:m:UNSIGNED8:m:rw:m::n::n::n::n:0:m:n:m\n");
        auto store = import(path, false, 0x1000, 0x1FFF);
        QCOMPARE(store->getIndices(Scratch), QList<quint16>{0x1000});
    }

    void missingFileEndsNormally()
    {
        auto store = import(QStringLiteral("/nonexistent/profile.codb"));
        QVERIFY(store->getIndices(Scratch).isEmpty());
    }

    // The catalogues the program carries: every line parses, and the objects the program relies on
    // have the object codes and types of CiA 301.
    void cataloguesMatchTheStandard_data()
    {
        QTest::addColumn<QString>("resource");
        QTest::newRow("CiA 301") << ":/codb/v301.codb";
        QTest::newRow("CiA 302 additions") << ":/codb/v302.codb";
    }

    void cataloguesMatchTheStandard()
    {
        QFETCH(QString, resource);
        QFile file(resource);
        QVERIFY(file.open(QIODevice::ReadOnly | QIODevice::Text));
        QSet<quint16> declared;
        const QStringList lines = QString::fromUtf8(file.readAll()).split('\n');
        for (const QString &text : lines) {
            if (text.startsWith('$'))
                declared.insert(quint16(text.mid(1, 4).toUInt(nullptr, 16)));
            if (text.isEmpty() || text.startsWith('#') || text.startsWith('$'))
                continue;
            const QStringList fields = text.split(':');
            QVERIFY2(fields.size() == 23, qPrintable(text));
            if (fields.at(1).isEmpty()) {
                declared.insert(quint16(fields.at(0).toUInt(nullptr, 16)));
                QVERIFY2(QStringList({"VAR", "ARRAY", "RECORD"}).contains(fields.at(5)), qPrintable(text));
            } else {
                QVERIFY2(declared.contains(quint16(fields.at(0).toUInt(nullptr, 16))), qPrintable(text));
            }
        }
        auto store = import(resource, true, 0x1000, 0x1FFF);
        QCOMPARE(store->getIndices(Scratch).size(), declared.size());
        struct Expected
        {
            quint16 index;
            quint32 objectCode;
            quint16 typeOfSub0;
            quint16 typeOfSub1;
        };
        QList<Expected> standard = {
            {0x1000, 7, 7, 0},  {0x1001, 7, 5, 0},  {0x1005, 7, 7, 0},  {0x1006, 7, 7, 0},
            {0x1007, 7, 7, 0},  {0x100C, 7, 6, 0},  {0x100D, 7, 5, 0},  {0x1010, 8, 5, 7},
            {0x1011, 8, 5, 7},  {0x1012, 7, 7, 0},  {0x1014, 7, 7, 0},  {0x1015, 7, 6, 0},
            {0x1016, 8, 5, 7},  {0x1017, 7, 6, 0},  {0x1018, 9, 5, 7},  {0x1019, 7, 5, 0},
            {0x1028, 8, 5, 7},  {0x1029, 8, 5, 5},  {0x1200, 9, 5, 7},  {0x1280, 9, 5, 7},
            {0x1400, 9, 5, 7},  {0x1600, 9, 5, 7},  {0x1800, 9, 5, 7},  {0x1A00, 9, 5, 7},
            {0x102A, 7, 6, 0},  {0x12FF, 9, 5, 7},  {0x1BFF, 9, 5, 7},  {0x1F80, 7, 7, 0},
        };
        if (resource.contains(QLatin1String("v302")))
            standard.append({0x1F81, 8, 5, 7});
        for (const auto &expected : standard) {
            const QByteArray where = QByteArray::number(expected.index, 16);
            QVERIFY2(store->indexExists(Scratch, expected.index), where);
            QVERIFY2(object(*store, expected.index).objecttype == expected.objectCode, where);
            QVERIFY2(sub(*store, expected.index, 0).datatype == expected.typeOfSub0, where);
            if (expected.typeOfSub1)
                QVERIFY2(sub(*store, expected.index, 1).datatype == expected.typeOfSub1, where);
        }
    }
};

QTEST_GUILESS_MAIN(TestCODBImporter)
#include "tst_codbimporter.moc"
