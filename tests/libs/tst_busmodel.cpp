#include "busmodel/cohelper.h"
#include "busmodel/pdomapping.h"

#include <QtTest>

class TestBusModel : public QObject
{
    Q_OBJECT

private slots:
    void mapDataTypeString_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<int>("expected");
        QTest::newRow("standard name") << "UNSIGNED8" << 5;
        QTest::newRow("standard name in lower case") << "unsigned32" << 7;
        QTest::newRow("short name") << "i16" << 3;
        QTest::newRow("constant UNSIGNED8") << "u8s" << 5;
        QTest::newRow("bit field") << "UNSIGNED19" << 117;
        QTest::newRow("blanks around") << "  REAL64 " << 17;
        QTest::newRow("number") << "0x0009" << 9;
        QTest::newRow("alias") << "float" << 8;
        QTest::newRow("unknown") << "QUATERNION" << 0;
        QTest::newRow("empty") << "" << 0;
    }

    void mapDataTypeString()
    {
        QFETCH(QString, text);
        QFETCH(int, expected);
        QCOMPARE(int(COHelper::mapDataTypeString(text)), expected);
    }

    void namesReadBack()
    {
        for (quint16 type = 1; type < 200; ++type) {
            const QString name = COHelper::index2DataTypeString(type);
            if (!name.isEmpty())
                QCOMPARE(COHelper::mapDataTypeString(name), type);
        }
    }

    void defaultLimits_data()
    {
        QTest::addColumn<int>("type");
        QTest::addColumn<QString>("low");
        QTest::addColumn<QString>("high");
        QTest::newRow("BOOLEAN") << 1 << "0"
                                 << "1";
        QTest::newRow("INTEGER8") << 2 << "-128"
                                  << "127";
        QTest::newRow("UNSIGNED8") << 5 << "0"
                                   << "255";
        QTest::newRow("INTEGER24") << 16 << "-8388608"
                                   << "8388607";
        QTest::newRow("UNSIGNED32") << 7 << "0"
                                    << "4294967295";
        QTest::newRow("INTEGER64") << 21 << "-9223372036854775808"
                                   << "9223372036854775807";
        QTest::newRow("UNSIGNED64") << 27 << "0"
                                    << "18446744073709551615";
        QTest::newRow("UNSIGNED3") << 101 << "0"
                                   << "7";
        QTest::newRow("UNSIGNED29") << 129 << "0"
                                    << "536870911";
        QTest::newRow("REAL32") << 8 << "-3.4028234663852886e+38"
                                << "3.4028234663852886e+38";
        QTest::newRow("VISIBLE_STRING has none") << 9 << ""
                                                 << "";
        QTest::newRow("DOMAIN has none") << 15 << ""
                                         << "";
        QTest::newRow("unknown type") << 64 << ""
                                      << "";
    }

    void defaultLimits()
    {
        QFETCH(int, type);
        QFETCH(QString, low);
        QFETCH(QString, high);
        QString lowLimit = QStringLiteral("old");
        QString highLimit = QStringLiteral("old");
        COHelper::getDefaultLimits(quint16(type), lowLimit, highLimit);
        QCOMPARE(lowLimit, low);
        QCOMPARE(highLimit, high);
    }

    void realLimitsReadAsTheirType()
    {
        QString low;
        QString high;
        bool ok = false;
        COHelper::getDefaultLimits(8, low, high);
        QCOMPARE(high.toFloat(&ok), std::numeric_limits<float>::max());
        QVERIFY(ok);
        COHelper::getDefaultLimits(17, low, high);
        QCOMPARE(low.toDouble(&ok), -std::numeric_limits<double>::max());
        QVERIFY(ok);
    }

    void accessTypes_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("expected");
        QTest::newRow("upper case") << "RW"
                                    << "rw";
        QTest::newRow("read only spelled out") << "Read Only"
                                               << "ro";
        QTest::newRow("constant") << "CONST"
                                  << "const";
        QTest::newRow("write only") << "wo"
                                    << "wo";
        QTest::newRow("mapped on transmit") << "rwr"
                                            << "rwr";
        QTest::newRow("mapped on receive") << " rww "
                                           << "rww";
        QTest::newRow("unknown is read only") << "sometimes"
                                              << "ro";
        QTest::newRow("empty is read only") << ""
                                            << "ro";
    }

    void accessTypes()
    {
        QFETCH(QString, text);
        QFETCH(QString, expected);
        QCOMPARE(COHelper::normalizeAccessType(text), expected);
    }

    void objectCodes_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<int>("expected");
        QTest::newRow("VARIABLE") << "VARIABLE" << 7;
        QTest::newRow("VAR") << "VAR" << 7;
        QTest::newRow("ARRAY in lower case") << "array" << 8;
        QTest::newRow("RECORD") << "RECORD" << 9;
        QTest::newRow("DOMAIN") << "DOMAIN" << 2;
        QTest::newRow("number") << "0x9" << 9;
        QTest::newRow("empty is a variable") << "" << 7;
        QTest::newRow("unknown is a variable") << "LIST" << 7;
    }

    void objectCodes()
    {
        QFETCH(QString, text);
        QFETCH(int, expected);
        QCOMPARE(int(COHelper::string2objectCode(text)), expected);
    }

    void categories()
    {
        QCOMPARE(COHelper::convertCategory(QStringLiteral("mandatory")), quint8(0));
        QCOMPARE(COHelper::convertCategory(QStringLiteral("Optional")), quint8(1));
        QCOMPARE(COHelper::convertCategory(QStringLiteral("conditional")), quint8(2));
        QCOMPARE(COHelper::convertCategory(QStringLiteral("sometimes")), quint8(1));
    }

    void pdoMappingTexts_data()
    {
        QTest::addColumn<int>("value");
        QTest::addColumn<int>("binary");
        QTest::addColumn<QString>("xdd");
        QTest::addColumn<QString>("csv");
        QTest::newRow("forbidden") << 0 << 0 << "no"
                                   << "no";
        QTest::newRow("allowed") << 1 << 1 << "tr"
                                 << "yes";
        QTest::newRow("default") << 2 << 1 << "tr"
                                 << "default";
        QTest::newRow("receive") << 3 << 1 << "r"
                                 << "rpdo";
        QTest::newRow("transmit") << 4 << 1 << "t"
                                  << "tpdo";
    }

    void pdoMappingTexts()
    {
        QFETCH(int, value);
        QFETCH(int, binary);
        QFETCH(QString, xdd);
        QFETCH(QString, csv);
        const PDOMapping mapping(value);
        QCOMPARE(int(mapping.toBinary()), binary);
        QCOMPARE(mapping.getXDDStringValue(), xdd);
        QCOMPARE(mapping.getCSVStringValue(), csv);
        QCOMPARE(PDOMapping::fromCSVString(csv), mapping);
        QCOMPARE(PDOMapping::fromCSVString(csv.toUpper() + ' '), mapping);
    }

    void pdoMappingFromHandWrittenTables_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<int>("expected");
        QTest::newRow("y") << "y" << 1;
        QTest::newRow("n") << "n" << 0;
        QTest::newRow("1") << "1" << 1;
        QTest::newRow("t") << "t" << 4;
        QTest::newRow("r") << "r" << 3;
        QTest::newRow("optional") << "optional" << 1;
        QTest::newRow("unknown") << "maybe" << 0;
        QTest::newRow("empty") << "" << 0;
    }

    void pdoMappingFromHandWrittenTables()
    {
        QFETCH(QString, text);
        QFETCH(int, expected);
        QCOMPARE(int(PDOMapping::fromCSVString(text).toUInt()), expected);
    }
};

QTEST_GUILESS_MAIN(TestBusModel)
#include "tst_busmodel.moc"
