#include "texttools/helper.h"

#include <QProcess>
#include <QTemporaryDir>
#include <QtTest>

class TestTextTools : public QObject
{
    Q_OBJECT

private slots:
    void substituteVariables_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<int>("index");
        QTest::addColumn<int>("subIndex");
        QTest::addColumn<int>("line");
        QTest::addColumn<QString>("expected");

        QTest::newRow("no variables") << "Device Type" << 0x1000 << 0 << 0 << "Device Type";
        QTest::newRow("index decimal and hex") << "obj$i_$I" << 0x2A0F << 0 << 0 << "obj10767_2A0F";
        QTest::newRow("sub-index decimal and hex") << "sub$s/$S" << 0x2000 << 0x1F << 0 << "sub31/1F";
        QTest::newRow("sub-index minus one") << "entry$z" << 0x2000 << 3 << 0 << "entry2";
        QTest::newRow("line and line counted from one") << "l$l L$L" << 0x2000 << 0 << 2 << "l2 L3";
        QTest::newRow("calculation with hex") << "Output {$s + 0x40}" << 0x6200 << 2 << 0 << "Output 66";
        QTest::newRow("array index") << "myData[{$i-0x100}].value" << 0x2105 << 0 << 0 << "myData[8197].value";
        QTest::newRow("precedence and parentheses") << "{2+3*4} {(2+3)*4} {$s*2-1}" << 0 << 5 << 0 << "14 20 9";
        QTest::newRow("hex variable in a calculation is its value") << "{$I+1}" << 0x10 << 0 << 0 << "17";
        QTest::newRow("malformed calculation stays") << "x{$s+}y" << 0 << 4 << 0 << "x{4+}y";
        QTest::newRow("division by zero stays") << "{$s/0}" << 0 << 4 << 0 << "{4/0}";
        QTest::newRow("unknown variable stays") << "cost $x $" << 0 << 0 << 0 << "cost $x $";
        QTest::newRow("unclosed brace") << "a{$s" << 0 << 7 << 0 << "a{7";
    }

    void substituteVariables()
    {
        QFETCH(QString, text);
        QFETCH(int, index);
        QFETCH(int, subIndex);
        QFETCH(int, line);
        QFETCH(QString, expected);
        QCOMPARE(Helper::substituteVariables(text, quint16(index), quint8(subIndex), quint8(line)), expected);
    }

    void numberLists_data()
    {
        QTest::addColumn<QString>("list");
        QTest::addColumn<QString>("expected");
        QTest::newRow("two counts") << "10, 5" << "10u, 5u";
        QTest::newRow("without blanks") << "10,5,7" << "10u,5u,7u";
        QTest::newRow("single") << "3" << "3u";
        QTest::newRow("hexadecimal") << "0x1F, 2" << "0x1Fu, 2u";
        QTest::newRow("already suffixed stays") << "4u, 5" << "4u, 5u";
        QTest::newRow("padding blanks stay") << "11, ,5" << "11u, ,5u";
        QTest::newRow("empty") << "" << "";
    }

    void numberLists()
    {
        QFETCH(QString, list);
        QFETCH(QString, expected);
        QCOMPARE(Helper::addLowerCaseUtoNumberLists(list), expected);
    }

    void utf8ArrayString_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("expected");
        QTest::newRow("ascii") << "abc" << "\"abc\"";
        QTest::newRow("umlaut") << QString::fromUtf8("\xc3\xa4") << "\"\\xc3\\xa4\"";
        QTest::newRow("hex digit after escape is split off")
            << QString::fromUtf8("\xc3\xa4" "b1") << "\"\\xc3\\xa4\" \"b1\"";
        QTest::newRow("quote, backslash and question mark") << "a\"b\\c?" << "\"a\\\"b\\\\c\\?\"";
        QTest::newRow("empty") << "" << "\"\"";
    }

    void utf8ArrayString()
    {
        QFETCH(QString, text);
        QFETCH(QString, expected);
        QCOMPARE(Helper::UTF8String2ArrayString(text), expected);
        QCOMPARE(Helper::UTF8String2ByteArray(text), text.toUtf8());
    }

    // The initialiser must give a C compiler exactly the UTF-8 bytes of the text.
    void utf8ArrayStringCompiles()
    {
        QTemporaryDir dir;
        const QString text = QString::fromUtf8("gr\xc3\xbc\xc3\x9f" "e \xe2\x82\xac" "1 \"q\" a\\b ?\?=");
        QFile source(dir.filePath(QStringLiteral("t.c")));
        QVERIFY(source.open(QIODevice::WriteOnly));
        source.write("#include <string.h>\nstatic const char s[] = " + Helper::UTF8String2ArrayString(text).toUtf8() +
                     ";\nstatic const char e[] = {" + [&] {
                         QByteArray bytes;
                         for (const char c : text.toUtf8())
                             bytes += QByteArray::number(int(static_cast<unsigned char>(c))) + ',';
                         return bytes;
                     }() + "0};\nint main(void) { return memcmp(s, e, sizeof e) != 0 || sizeof s != sizeof e; }\n");
        source.close();
        const QString binary = dir.filePath(QStringLiteral("t"));
        QCOMPARE(QProcess::execute(QStringLiteral("cc"), {QStringLiteral("-std=c99"), QStringLiteral("-Werror"),
                                                          QStringLiteral("-Wall"), source.fileName(),
                                                          QStringLiteral("-o"), binary}),
                 0);
        QCOMPARE(QProcess::execute(binary, {}), 0);
    }

    void modifyLineEnding_data()
    {
        QTest::addColumn<QByteArray>("content");
        QTest::addColumn<QString>("ending");
        QTest::addColumn<QByteArray>("expected");
        QTest::newRow("lf to crlf") << QByteArray("a\nb\n") << "\r\n" << QByteArray("a\r\nb\r\n");
        QTest::newRow("crlf to lf") << QByteArray("a\r\nb\r\n") << "\n" << QByteArray("a\nb\n");
        QTest::newRow("mixed to cr") << QByteArray("a\r\nb\nc\rd") << "\r" << QByteArray("a\rb\rc\rd");
        QTest::newRow("no line end") << QByteArray("abc") << "\r\n" << QByteArray("abc");
    }

    void modifyLineEnding()
    {
        QFETCH(QByteArray, content);
        QFETCH(QString, ending);
        QFETCH(QByteArray, expected);
        QTemporaryDir dir;
        const QString path = dir.filePath(QStringLiteral("f.txt"));
        QFile file(path);
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write(content);
        file.close();
        QVERIFY(Helper::modifyLineEnding(path, ending));
        QVERIFY(file.open(QIODevice::ReadOnly));
        QCOMPARE(file.readAll(), expected);
        QVERIFY(!Helper::modifyLineEnding(dir.filePath(QStringLiteral("missing")), ending));
    }
};

QTEST_GUILESS_MAIN(TestTextTools)
#include "tst_texttools.moc"
