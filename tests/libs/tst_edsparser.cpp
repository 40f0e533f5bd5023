#include "busmodel/edsparser.h"

#include <QRandomGenerator>
#include <QtTest>

namespace {

// What a parser reported, in the order it reported it.
class Recorder : public QObject
{
public:
    explicit Recorder(EdsParser &parser)
    {
        connect(&parser, &EdsParser::newIndex, this,
                [this](const CANopen::CANopenIndex &index) { indices << index; });
        connect(&parser, &EdsParser::newSubIndex, this,
                [this](const CANopenSubindex &sub) { entries << sub; });
    }

    QList<CANopen::CANopenIndex> indices;
    QList<CANopenSubindex> entries;

    QStringList addresses() const
    {
        QStringList result;
        for (const auto &index : indices)
            result << QStringLiteral("%1").arg(index.index, 4, 16, QChar('0'));
        for (const auto &entry : entries)
            result << QStringLiteral("%1sub%2").arg(entry.index, 4, 16, QChar('0')).arg(entry.subIndex);
        return result;
    }
};

const QByteArray var2000 = "[2000]\nParameterName=Value\nObjectType=0x7\nDataType=0x0007\nAccessType=rw\n"
                           "PDOMapping=1\n";

bool anyContains(const QStringList &texts, const QString &part)
{
    for (const QString &text : texts) {
        if (text.contains(part))
            return true;
    }
    return false;
}

QString testFile(const char *name)
{
    return QStringLiteral(KESTREL_SHARED_TESTDATA_DIR "/eds/") + QLatin1String(name);
}

} // namespace

class TestEdsParser : public QObject
{
    Q_OBJECT

private slots:
    void namesWithoutRegardToCase()
    {
        EdsParser parser;
        Recorder recorder(parser);
        QVERIFY(
            parser.loadEdsData("[1A00]\nparametername=Mapping\nOBJECTTYPE=0x9\nsubnumber=1\n"
                               "[1a00SUB0]\nParameterName=Count\nObjectType=7\nDATATYPE=5\naccesstype=RW\n"
                               "DefaultValue=1\n"));
        QCOMPARE(recorder.addresses(), QStringList({"1a00", "1a00sub0"}));
        QCOMPARE(recorder.indices.first().name, QStringLiteral("Mapping"));
        QCOMPARE(recorder.indices.first().objectCode, 9u);
        QCOMPARE(recorder.entries.first().accessType, QStringLiteral("rw"));
        QCOMPARE(recorder.entries.first().defaultValue.toString(), QStringLiteral("1"));
        QCOMPARE(parser.warnings(), QStringList());
    }

    void numberBases_data()
    {
        QTest::addColumn<QByteArray>("dataType");
        QTest::addColumn<int>("expected");
        QTest::newRow("hexadecimal") << QByteArray("0x0007") << 7;
        QTest::newRow("upper-case prefix") << QByteArray("0X1B") << 27;
        QTest::newRow("decimal") << QByteArray("9") << 9;
        QTest::newRow("octal") << QByteArray("010") << 8;
        QTest::newRow("leading zero without octal digits") << QByteArray("09") << 9;
    }

    void numberBases()
    {
        QFETCH(QByteArray, dataType);
        QFETCH(int, expected);
        EdsParser parser;
        Recorder recorder(parser);
        parser.loadEdsData(
            "[2000]\nParameterName=Value\nObjectType=7\nAccessType=ro\nPDOMapping=0\nDataType=" + dataType);
        QCOMPARE(recorder.entries.size(), 1);
        QCOMPARE(int(recorder.entries.first().dataType), expected);
    }

    void nodeIdExpressions_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<bool>("valid");
        QTest::addColumn<qint64>("expected");
        QTest::newRow("node-ID plus hexadecimal") << "$NODEID+0x180" << true << qint64(0x185);
        QTest::newRow("number first") << "1280+$NODEID" << true << qint64(1285);
        QTest::newRow("any case, blanks") << "$nodeid + 0x80000200" << true << qint64(0x80000205);
        QTest::newRow("node-ID alone") << "$NODEID" << true << qint64(5);
        QTest::newRow("difference") << "$NODEID-1" << true << qint64(4);
        QTest::newRow("negative number") << "-5" << true << qint64(-5);
        QTest::newRow("octal") << "010" << true << qint64(8);
        QTest::newRow("text") << "abc" << false << qint64(0);
        QTest::newRow("product") << "$NODEID*2" << false << qint64(0);
        QTest::newRow("missing term") << "0x180+" << false << qint64(0);
        QTest::newRow("two signs") << "5+-3" << false << qint64(0);
        QTest::newRow("empty") << "" << false << qint64(0);
    }

    void nodeIdExpressions()
    {
        QFETCH(QString, text);
        QFETCH(bool, valid);
        QFETCH(qint64, expected);
        const auto value = EdsParser::evaluateValue(text, 5);
        QCOMPARE(value.has_value(), valid);
        if (valid)
            QCOMPARE(*value, expected);
    }

    void singleObjectComesWithItsEntry()
    {
        EdsParser parser;
        Recorder recorder(parser);
        parser.loadEdsData(var2000 + "DefaultValue=$NODEID+0x180\nLowLimit=0x10\nHighLimit=\nObjFlags=3\n"
                                     "; DataType=0x0009 is a comment\n;;a description line\n");
        QCOMPARE(recorder.addresses(), QStringList({"2000", "2000sub0"}));
        const CANopenSubindex &entry = recorder.entries.first();
        QCOMPARE(entry.dataType, quint16(7));
        QCOMPARE(entry.defaultValue.toString(), QStringLiteral("$NODEID+0x180"));
        QCOMPARE(entry.defaultInEds, quint8(1));
        QVERIFY(entry.pdoMapping);
        QVERIFY(entry.hasLimits);
        QCOMPARE(entry.lowLimit, QStringLiteral("0x10"));
        QVERIFY(entry.refuseRead && entry.refuseWrite);
        QCOMPARE(recorder.indices.first().dataType, quint16(7));
        QCOMPARE(parser.warnings(), QStringList());
    }

    void entryWithoutDefault()
    {
        EdsParser parser;
        Recorder recorder(parser);
        parser.loadEdsData(var2000);
        QCOMPARE(recorder.entries.size(), 1);
        QVERIFY(!recorder.entries.first().defaultValue.isValid());
        QCOMPARE(recorder.entries.first().defaultInEds, quint8(0));
        QVERIFY(!recorder.entries.first().hasLimits);
    }

    void dcfValues()
    {
        EdsParser parser;
        Recorder recorder(parser);
        parser.loadEdsData(var2000 + "DefaultValue=0x20\nParameterValue=0x10\nDenotation=Left wheel\n");
        QCOMPARE(recorder.entries.first().parameterValue, QStringLiteral("0x10"));
        QCOMPARE(recorder.entries.first().defaultValue.toString(), QStringLiteral("0x20"));
        QCOMPARE(recorder.entries.first().denotation, QStringLiteral("Left wheel"));
    }

    void compactArray()
    {
        EdsParser parser;
        Recorder recorder(parser);
        parser.loadEdsData(
            "[3004]\nCompactSubObj=3\nParameterName=Sensor Status\nObjectType=8\nDataType=0x0006\n"
            "AccessType=ro\nDefaultValue=3\nPDOMapping=1\n"
            "[3004Name]\nNrOfEntries=2\n1=First sensor\n0x3=Third sensor\n");
        QCOMPARE(recorder.addresses(), QStringList({"3004"}));
        const CANopen::CANopenIndex &array = recorder.indices.first();
        QCOMPARE(array.compactSubObj, 3u);
        QCOMPARE(array.dataType, quint16(6));
        QCOMPARE(array.accessType, QStringLiteral("ro"));
        QCOMPARE(array.defaultValue.toString(), QStringLiteral("3"));
        QVERIFY(array.pdoMapping);
        const QMap<QString, QString> names{{"1", "First sensor"}, {"3", "Third sensor"}};
        QCOMPARE(parser.getCompactSubObjNames(0x3004), names);
        QVERIFY(parser.getCompactSubObjNames(0x3005).isEmpty());
    }

    void compactArrayIsCut()
    {
        EdsParser parser;
        Recorder recorder(parser);
        parser.loadEdsData(
            "[3006]\nCompactSubObj=300\nParameterName=Big\nObjectType=8\nDataType=5\nAccessType=rw\n");
        QCOMPARE(recorder.indices.first().compactSubObj, 254u);
        QVERIFY(anyContains(parser.warnings(), QStringLiteral("CompactSubObj=300 of [3006] is cut to 254")));
    }

    void objectLinks()
    {
        EdsParser parser;
        parser.loadEdsData("[2100]\nParameterName=Linked\nObjectType=9\nSubNumber=0\n"
                           "[2100ObjectLinks]\nObjectLinks=2\n1=0x2101\n2=0x2200\n");
        QCOMPARE(parser.getObjectLinks(0x2100), (QList<quint16>{0x2101, 0x2200}));
    }

    void skipsAndTells_data()
    {
        QTest::addColumn<QByteArray>("text");
        QTest::addColumn<QStringList>("reported");
        QTest::addColumn<QString>("warning");
        QTest::newRow("entry without data type")
            << QByteArray("[2000]\nParameterName=Value\nObjectType=7\nAccessType=rw\n") << QStringList()
            << "[2000] has no DataType, the entry is skipped";
        QTest::newRow("data type no number")
            << QByteArray("[2000]\nParameterName=V\nDataType=big\nAccessType=rw\n") << QStringList()
            << "DataType \"big\" of [2000] is no type";
        QTest::newRow("sub-index section without its object")
            << var2000 + "[2001sub1]\nParameterName=Lost\nDataType=5\nAccessType=ro\n"
            << QStringList({"2000", "2000sub0"}) << "sub-index sections of 0x2001 without an object section";
        QTest::newRow("sub-index above ff")
            << QByteArray("[2001]\nParameterName=R\nObjectType=9\nSubNumber=0\n[2001sub100]\nDataType=5\n")
            << QStringList({"2001"}) << "section [2001sub100] names no sub-index";
        QTest::newRow("listed object without a section")
            << var2000 + "[OptionalObjects]\nSupportedObjects=1\n1=0x2005\n"
            << QStringList({"2000", "2000sub0"}) << "object 0x2005 of [OptionalObjects] has no section";
        QTest::newRow("list count wrong")
            << var2000 + "[ManufacturerObjects]\nSupportedObjects=0\n1=0x2000\n"
            << QStringList({"2000", "2000sub0"})
            << "[ManufacturerObjects] gives SupportedObjects=0 but lists 1 objects";
        QTest::newRow("sub-index count wrong")
            << QByteArray("[2001]\nParameterName=R\nObjectType=9\nSubNumber=3\n"
                          "[2001sub0]\nParameterName=C\nDataType=5\nAccessType=ro\n")
            << QStringList({"2001", "2001sub0"}) << "[2001] gives SubNumber=3 but has 1 sub-index sections";
        QTest::newRow("malformed section head")
            << "[2000\n" + var2000 << QStringList({"2000", "2000sub0"}) << "line 1: malformed section head";
        QTest::newRow("key outside a section")
            << "Loose=1\n" + var2000 << QStringList({"2000", "2000sub0"}) << "line 1: key outside a section";
        QTest::newRow("line without a key")
            << var2000 + "just words\n"
            << QStringList({"2000", "2000sub0"}) << "line 7: \"just words\" is no key=value line";
        QTest::newRow("unknown access type")
            << QByteArray("[2000]\nParameterName=V\nDataType=5\nAccessType=sometimes\n")
            << QStringList({"2000", "2000sub0"})
            << "AccessType \"sometimes\" of [2000] is unknown, ro stands";
        QTest::newRow("default value no number")
            << var2000 + "DefaultValue=abc\n"
            << QStringList({"2000", "2000sub0"})
            << "DefaultValue \"abc\" of [2000] is no value of type UNSIGNED32";
        QTest::newRow("key given twice") << var2000 + "DataType=5\n"
                                         << QStringList({"2000", "2000sub0"})
                                         << "key DataType appears again in [2000], the first value stands";
        QTest::newRow("object type no number")
            << QByteArray("[2000]\nParameterName=V\nObjectType=var\nDataType=5\nAccessType=ro\n")
            << QStringList({"2000", "2000sub0"}) << "ObjectType \"var\" of [2000] is no number, 7 stands";
    }

    void skipsAndTells()
    {
        QFETCH(QByteArray, text);
        QFETCH(QStringList, reported);
        QFETCH(QString, warning);
        EdsParser parser;
        Recorder recorder(parser);
        parser.loadEdsData(text);
        QCOMPARE(recorder.addresses(), reported);
        QVERIFY2(anyContains(parser.warnings(), warning), qPrintable(parser.warnings().join('\n')));
    }

    void latin1Text()
    {
        EdsParser parser;
        Recorder recorder(parser);
        parser.loadEdsData("[2000]\nParameterName=Temperature \xb0"
                           "C\nDataType=5\nAccessType=ro\n");
        QCOMPARE(recorder.indices.first().name, QStringLiteral("Temperature \u00b0C"));
    }

    void testFiles_data()
    {
        QTest::addColumn<QString>("file");
        QTest::addColumn<int>("objects");
        QTest::addColumn<int>("entries");
        QTest::newRow("sample.eds") << testFile("sample.eds") << 40 << 95;
        QTest::newRow("DS301_profile.eds") << testFile("DS301_profile.eds") << 33 << 170;
    }

    void testFiles()
    {
        QFETCH(QString, file);
        QFETCH(int, objects);
        QFETCH(int, entries);
        EdsParser parser;
        Recorder recorder(parser);
        QVERIFY(parser.LoadEds(file));
        QCOMPARE(recorder.indices.size(), objects);
        QCOMPARE(recorder.entries.size(), entries);
    }

    void sampleFileDetails()
    {
        EdsParser parser;
        Recorder recorder(parser);
        parser.LoadEds(testFile("sample.eds"));
        QStringList identity;
        for (const auto &entry : std::as_const(recorder.entries)) {
            if (entry.index == 0x1018)
                identity << entry.name;
        }
        QCOMPARE(identity,
                 QStringList({"Highest sub-index supported", "Vendor-ID", "Product code", "Serial number"}));
        const auto array = std::find_if(recorder.indices.cbegin(), recorder.indices.cend(),
                                        [](const auto &index) { return index.index == 0x3006; });
        QVERIFY(array != recorder.indices.cend());
        QCOMPARE(array->compactSubObj, 24u);
        QCOMPARE(parser.getCompactSubObjNames(0x3004).value(QStringLiteral("2")),
                 QStringLiteral("Sensor Status 2"));
        const auto record = std::find_if(recorder.entries.cbegin(), recorder.entries.cend(),
                                         [](const auto &entry) { return entry.index == 0x3010; });
        QVERIFY(record != recorder.entries.cend());
        QCOMPARE(record->name, QStringLiteral("Temperature"));
        QVERIFY(
            anyContains(parser.warnings(), QStringLiteral("[ManufacturerObjects] gives SupportedObjects=0")));
    }

    void unreadableInput()
    {
        EdsParser parser;
        Recorder recorder(parser);
        QVERIFY(!parser.LoadEds(QStringLiteral("/no/such/file.eds")));
        QVERIFY(!parser.warnings().isEmpty());
        QVERIFY(!parser.loadEdsData(QByteArray()));
        QByteArray noise(64 * 1024, '\0');
        QRandomGenerator random(17);
        for (char &byte : noise)
            byte = char(random.bounded(256));
        QVERIFY(!parser.loadEdsData(noise));
        QVERIFY(recorder.indices.isEmpty());
        QVERIFY(parser.warnings().size() <= 101);
    }
};

QTEST_GUILESS_MAIN(TestEdsParser)
#include "tst_edsparser.moc"
