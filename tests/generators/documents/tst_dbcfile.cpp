#include "dbcdump.h"

#include "generators/documents/dbc/candbdatabase.h"
#include "generators/documents/dbc/candbdbc.h"
#include "generators/documents/dbc/candbdbcwriter.h"
#include "generators/documents/dbc/candbkeywordtable.h"
#include "generators/documents/dbc/candbtokenizer.h"
#include "generators/documents/dbc/kvadb.h"
#include "generators/documents/dbc/motorolabits.h"

#include <QDir>
#include <QElapsedTimer>
#include <QProcess>
#include <QTemporaryDir>
#include <QtTest>

#include <clocale>
#include <cstdlib>
#include <random>

namespace {

// Swallows the notes of a read, so that damaged input doesn't flood the test log.
class QuietSink : public CANdbMessageSink
{
public:
    void message(int, const std::string &, const std::string &) override {}
    void warning(int, const std::string &, const std::string &text) override { warnings.push_back(text); }
    std::vector<std::string> warnings;
};

QString tokens(const QByteArray &input, QStringList *errors = nullptr)
{
    const CANdbKeywordTable keywords;
    int line = 1;
    CANdbTokenizer tokenizer(std::string_view(input.constData(), size_t(input.size())), keywords, line,
                             [errors](const std::string &text) {
                                 if (errors)
                                     *errors << QString::fromStdString(text);
                             });
    QStringList result;
    for (int guard = 0; guard < 1000; ++guard) {
        const int token = tokenizer.next();
        const QString text = QString::fromStdString(tokenizer.text());
        switch (token) {
        case CANdbTokenizer::EndOfFile:
            result << QStringLiteral("EOF");
            return result.join(' ');
        case CANdbTokenizer::EndOfLine:
            result << QStringLiteral("EOL");
            break;
        case CANdbTokenizer::Error:
            result << QStringLiteral("ERR");
            break;
        case CANdbTokenizer::Identifier:
            result << QStringLiteral("id(%1)").arg(text);
            break;
        case CANdbTokenizer::Integer:
            result << QStringLiteral("int(%1)").arg(tokenizer.integer());
            break;
        case CANdbTokenizer::FloatNumber:
            result << QStringLiteral("num(%1)").arg(dbcNumber(tokenizer.number()));
            break;
        case CANdbTokenizer::String:
            result << QStringLiteral("str(%1)").arg(text);
            break;
        default:
            result << (token >= CANdbTokenizer::NodesKeyword ? QString::number(token)
                                                             : QStringLiteral("'%1'").arg(QChar(token)));
            break;
        }
    }
    return QStringLiteral("no end");
}

struct ParseResult
{
    int status = 0;
    QString dump;
    QString errors;
};

ParseResult parse(const QByteArray &text)
{
    CANdbDatabase database;
    CANdbDBC reader("memory.dbc");
    QuietSink sink;
    reader.setSink(&sink);
    ParseResult result;
    result.status = reader.parse(database, std::string_view(text.constData(), size_t(text.size())));
    result.dump = dumpDatabase(database);
    result.errors = QString::fromStdString(reader.errorText());
    return result;
}

std::string formatted(const CANdbDatabase &database)
{
    std::string text;
    CANdbDBCWriter::format(database, text);
    return text;
}

// The fixed start of every written file, up to and including "BS_:".
QByteArray writtenHead()
{
    QByteArray head =
        "VERSION \"HIPBNYYYYYYYYYYYYYYYYYYYYYYYYYYYYYYYYYYYYY/4/%%%/4/'%**4YYY///\"\n\n\nNS_ : \n";
    for (const char *symbol : {"NS_DESC_",     "CM_",
                               "BA_DEF_",      "BA_",
                               "VAL_",         "CAT_DEF_",
                               "CAT_",         "FILTER",
                               "BA_DEF_DEF_",  "EV_DATA_",
                               "ENVVAR_DATA_", "SGTYPE_",
                               "SGTYPE_VAL_",  "BA_DEF_SGTYPE_",
                               "BA_SGTYPE_",   "SIG_TYPE_REF_",
                               "VAL_TABLE_",   "SIG_GROUP_",
                               "SIG_VALTYPE_", "SIGTYPE_VALTYPE_",
                               "BO_TX_BU_",    "BA_DEF_REL_",
                               "BA_REL_",      "BA_DEF_DEF_REL_",
                               "BU_SG_REL_",   "BU_EV_REL_",
                               "BU_BO_REL_",   "SG_MUL_VAL_"})
        head += QByteArray("\t") + symbol + "\n";
    return head + "\nBS_:\n\n";
}

QStringList corpusFiles()
{
    const QDir dir(QStringLiteral(KESTREL_SHARED_TESTDATA_DIR "/dbc"));
    QStringList files;
    const auto names = dir.entryList({QStringLiteral("*.dbc")}, QDir::Files, QDir::Name);
    for (const QString &name : names)
        files << dir.filePath(name);
    return files;
}

// A database with one message of one signal, made through the handle layer.
struct HandleFixture
{
    KvaDbHnd set = nullptr;
    KvaDbMessageHnd message = nullptr;
    KvaDbSignalHnd signal = nullptr;

    HandleFixture()
    {
        kvaDbOpen(&set);
        kvaDbCreate(set, "net", nullptr);
        kvaDbAddMsg(set, &message);
        kvaDbSetMsgName(message, "M");
        kvaDbAddSignal(message, &signal);
        kvaDbSetSignalName(signal, "S");
    }
    ~HandleFixture() { kvaDbClose(set); }

    KvaDbAttributeDefHnd definition(const char *name, int owner, int type)
    {
        KvaDbAttributeDefHnd handle = nullptr;
        kvaDbAddAttributeDefinition(set, &handle);
        kvaDbSetAttributeDefinitionName(handle, name);
        kvaDbSetAttributeDefinitionOwner(handle, owner);
        kvaDbSetAttributeDefinitionType(handle, type);
        return handle;
    }

    QByteArray text() const { return QByteArray::fromStdString(formatted(*set->databases.front())); }
};

} // namespace

class TestDbcFile : public QObject
{
    Q_OBJECT

private slots:
    void tokenizer_data()
    {
        QTest::addColumn<QByteArray>("input");
        QTest::addColumn<QString>("expected");
        QTest::newRow("keywords and other words")
            << QByteArray(
                   "BU_ BO_ SG_ CM_ NS_ BA_ EV_ BA_DEF_ BA_DEF_DEF_ SIG_VALTYPE_ CAT_ ENVVAR_DATA_ VAL_ "
                   "BA_DEF_REL_ Vector__XXX")
            << "1000 1001 1003 1004 1005 1006 1007 1008 1009 1010 1011 1012 1020 id(BA_DEF_REL_) "
               "id(Vector__XXX) EOL EOF";
        QTest::newRow("signal line") << QByteArray(" SG_ S m3 : 7|16@0- (0.5,-40) [-40|87.5] \"degC\"  A,B")
                                     << "1003 id(S) id(m3) ':' int(7) '|' int(16) '@' int(0) '-' '(' "
                                        "num(0.5) ',' int(-40) ')' '[' int(-40) "
                                        "'|' num(87.5) ']' str(degC) id(A) ',' id(B) EOL EOF";
        QTest::newRow("numbers")
            << QByteArray(
                   "1 -2 +3 .5 -0.25 1e3 2.5E-2 7. 0x1F -0x10 4294967295 2147483705 99999999999999999999")
            << "int(1) int(-2) int(3) num(0.5) num(-0.25) num(1000) num(0.025) num(7) int(31) int(-16) "
               "int(-1) "
               "int(-2147483591) int(-1) EOL EOF";
        QTest::newRow("signs and points without digits")
            << QByteArray("- + . -x a/b") << "'-' '+' '.' '-' id(x) id(a) '/' id(b) EOL EOF";
        QTest::newRow("string escapes") << QByteArray("\"a\"\"b\" \"\\n\\t\\r\\\"\" \"back\\slash\" \"\"")
                                        << "str(a\"b) str(\n\t\r\") str(back\\slash) str() EOL EOF";
        QTest::newRow("line feed inside a string")
            << QByteArray("\"one\ntwo\" x") << "str(one\ntwo) id(x) EOL EOF";
        QTest::newRow("comment within a line") << QByteArray("a /* x */ b") << "id(a) id(b) EOL EOF";
        QTest::newRow("comment across lines") << QByteArray("a /* x\n y */ b") << "id(a) EOL id(b) EOL EOF";
        QTest::newRow("line ends of any kind") << QByteArray("a\r\n\n\tb\n") << "id(a) EOL id(b) EOL EOL EOF";
        QTest::newRow("bytes above ASCII are characters")
            << QByteArray("\xe4 x") << QStringLiteral("'\u00e4' id(x) EOL EOF");
        QTest::newRow("end of file inside a comment") << QByteArray("a /* x") << "id(a) ERR EOL EOF";
        QTest::newRow("end of file inside a string") << QByteArray("\"abc") << "ERR EOL EOF";
        QTest::newRow("exponent without digits") << QByteArray("1e+ x") << "ERR id(x) EOL EOF";
        QTest::newRow("0x without digits") << QByteArray("0x x") << "ERR id(x) EOL EOF";
        QTest::newRow("empty text") << QByteArray() << "EOL EOF";
    }

    void tokenizer()
    {
        QFETCH(QByteArray, input);
        QFETCH(QString, expected);
        QCOMPARE(tokens(input), expected);
    }

    void tokenizerErrorTexts_data()
    {
        QTest::addColumn<QByteArray>("input");
        QTest::addColumn<QString>("expected");
        QTest::newRow("comment") << QByteArray("/* open") << "Error: Unexpected eof in comment";
        QTest::newRow("string") << QByteArray("\"open") << "Unexpected eof in string";
        QTest::newRow("number") << QByteArray("3e") << "Malformed number '3e'";
    }

    void tokenizerErrorTexts()
    {
        QFETCH(QByteArray, input);
        QFETCH(QString, expected);
        QStringList errors;
        tokens(input, &errors);
        QCOMPARE(errors, QStringList{expected});
    }

    void tokenizerKeepsThousandCharacters()
    {
        const QByteArray longText(1500, 'x');
        const QByteArray input = '"' + longText + "\" " + longText + " end";
        const CANdbKeywordTable keywords;
        int line = 1;
        CANdbTokenizer tokenizer(std::string_view(input.constData(), size_t(input.size())), keywords, line,
                                 nullptr);
        QCOMPARE(tokenizer.next(), int(CANdbTokenizer::String));
        QCOMPARE(tokenizer.text().size(), size_t(1000));
        QCOMPARE(tokenizer.next(), int(CANdbTokenizer::Identifier));
        QCOMPARE(tokenizer.text().size(), size_t(1000));
        QCOMPARE(tokenizer.next(), int(CANdbTokenizer::Identifier));
        QCOMPARE(tokenizer.text(), std::string("end"));
    }

    void motorolaBits_data()
    {
        QTest::addColumn<int>("fileStart");
        QTest::addColumn<int>("length");
        QTest::addColumn<int>("startBit");
        QTest::newRow("byte 0 filled") << 7 << 8 << 0;
        QTest::newRow("16 bits in bytes 1 and 2") << 15 << 16 << 16;
        QTest::newRow("12 bits from the low bit of byte 0") << 0 << 12 << 21;
        QTest::newRow("12 bits from bit 3") << 3 << 12 << 8;
        QTest::newRow("top bit of byte 0") << 7 << 1 << 7;
        QTest::newRow("low bit of byte 0") << 0 << 1 << 0;
        QTest::newRow("all 64 bits") << 7 << 64 << 56;
    }

    void motorolaBits()
    {
        QFETCH(int, fileStart);
        QFETCH(int, length);
        QFETCH(int, startBit);
        QCOMPARE(MotorolaBits::fileToMemory(fileStart, length), startBit);
        QCOMPARE(MotorolaBits::memoryToFile(startBit, length), fileStart);
    }

    void records_data()
    {
        QTest::addColumn<QByteArray>("text");
        QTest::addColumn<QString>("expected");

        QTest::newRow("nodes, message, signals and receivers")
            << QByteArray("VERSION \"1\"\nNS_ :\n\tCM_\n\tBA_\nBS_:\nBU_: A B Vector__XXX\n"
                          "BO_ 2147483905 Msg: 8 A\n"
                          " SG_ Mux M : 0|8@1+ (1,0) [0|255] \"\" B\n"
                          " SG_ Temp m1 : 15|16@0- (0.5,-40) [-40|87.5] \"degC\"  A,B,Unknown,A\n")
            << "node A \"\"\nnode B \"\"\nmessage 257 ext Msg dlc 8 from A \"\"\n"
               "  signal Mux M 0|8 intel type 2 (1,0) [0|255] \"\" to B \"\" values \n"
               "  signal Temp m1 16|16 motorola type 1 (0.5,-40) [-40|87.5] \"degC\" to A,B \"\" values ";
        QTest::newRow("message without sender")
            << QByteArray(
                   "BO_ 5 M: 2\n SG_ S : 0|1@1+ (1,0) [0|1] \"\" Vector__XXX\nBO_ 6 N: 0 Vector__XXX\n")
            << "message 5 M dlc 2 from - \"\"\n  signal S 0|1 intel type 2 (1,0) [0|1] \"\" to  \"\" values "
               "\n"
               "message 6 N dlc 0 from - \"\"";
        QTest::newRow("comments of every owner")
            << QByteArray("BU_: A\nBO_ 1 M: 8 A\n SG_ S : 0|8@1+ (1,0) [0|0] \"\" A\n"
                          "EV_ V: 0 [0|10] \"\" 0 7 DUMMY_NODE_VECTOR0 A;\n"
                          "CM_ \"net\";\nCM_ BU_ A \"node\";\nCM_ BO_ 1 \"two\nlines\";\n"
                          "CM_ SG_ 1 S \"sig \\\"q\\\"\";\nCM_ EV_ V \"var\";\n")
            << "comment \"net\"\nnode A \"node\"\nmessage 1 M dlc 8 from A \"two\nlines\"\n"
               "  signal S 0|8 intel type 2 (1,0) [0|0] \"\" to A \"sig \"q\"\" values \n"
               "variable V type 1 access 1 [0|10] \"\" start 0 id 7 DUMMY_NODE_VECTOR0 nodes A data - "
               "\"var\" values ";
        QTest::newRow("environment variables, data and value names")
            << QByteArray("BU_: A B\nEV_ F: 1 [-1.5|2.5] \"V\" 0.5 3 DUMMY_NODE_VECTOR2 A,B;\n"
                          "EV_ T: 0 [0|0] \"\" 0 4 DUMMY_NODE_VECTOR8001 Vector__XXX;\n"
                          "ENVVAR_DATA_ T: 12;\nVAL_ F 1 \"one\" 0 \"zero\" ;\n")
            << "node A \"\"\nnode B \"\"\n"
               "variable F type 2 access 3 [-1.5|2.5] \"V\" start 0.5 id 3 DUMMY_NODE_VECTOR2 nodes A,B data "
               "- \"\" "
               "values 1=one,0=zero\n"
               "variable T type 3 access 2 [0|0] \"\" start 0 id 4 DUMMY_NODE_VECTOR8001 nodes  data 12 \"\" "
               "values ";
        QTest::newRow("attribute definitions, defaults and values")
            << QByteArray(
                   "BU_: A\nBO_ 1 M: 8 A\n SG_ S : 0|8@1+ (1,0) [0|0] \"\" A\n"
                   "BA_DEF_ \"Net\" STRING ;\nBA_DEF_ BO_ \"Cycle\" INT 0 1000;\nBA_DEF_ BU_ \"Addr\" HEX 0 "
                   "255;\n"
                   "BA_DEF_ SG_ \"Kind\" ENUM \"a\",\"b\",\"c\";\nBA_DEF_ EV_ \"F\" FLOAT -1.5 1e3;\n"
                   "BA_DEF_ BO_ \"Odd\" WORD 1 2;\n"
                   "BA_DEF_DEF_ \"Net\" \"x\";\nBA_DEF_DEF_ \"Cycle\" 100;\nBA_DEF_DEF_ \"Kind\" \"b\";\n"
                   "BA_DEF_DEF_ \"F\" 0.25;\nBA_DEF_DEF_ \"Addr\" 0x10;\n"
                   "BA_ \"Net\" \"y\";\nBA_ \"Cycle\" BO_ 1 50;\nBA_ \"Cycle\" BO_ 1 60;\nBA_ \"Kind\" SG_ 1 "
                   "S 2;\n"
                   "BA_ \"Addr\" BU_ A 7;\nBA_ \"Cycle\" BO_ 99 5;\n")
            << "node A \"\"\n  attribute node Addr = 7\nmessage 1 M dlc 8 from A \"\"\n  attribute message "
               "Cycle = 60\n"
               "  signal S 0|8 intel type 2 (1,0) [0|0] \"\" to A \"\" values \n  attribute signal Kind = 2\n"
               "definition Net owner 1 type 5 default \"x\"\ndefinition Cycle owner 2 type 1 0..1000 default "
               "100\n"
               "definition Addr owner 3 type 2 0..255 default 16\ndefinition Kind owner 4 type 4 a,b,c "
               "default 1\n"
               "definition F owner 5 type 3 -1.5..1000 default 0.25\ndefinition Odd owner 2 type 0 \n"
               "  attribute network Net = \"y\"";
        QTest::newRow("signal value names and value types")
            << QByteArray("BO_ 3 M: 8 Vector__XXX\n SG_ A : 0|32@1- (1,0) [0|0] \"\" Vector__XXX\n"
                          " SG_ B : 32|32@1- (1,0) [0|0] \"\" Vector__XXX\n"
                          "VAL_ 3 A -5 \"neg\" 1 \"one\" ;\nSIG_VALTYPE_ 3 A : 1;\nSIG_VALTYPE_ 3 B : 2;\n"
                          "SIG_VALTYPE_ 3 B : 0;\nCAT_ skipped ; BA_DEF_ \"after\" STRING ;\n")
            << "message 3 M dlc 8 from - \"\"\n"
               "  signal A 0|32 intel type 3 (1,0) [0|0] \"\" to  \"\" values -5=neg,1=one\n"
               "  signal B 32|32 intel type 4 (1,0) [0|0] \"\" to  \"\" values \n"
               "definition after owner 1 type 5 default \"\"";
    }

    void records()
    {
        QFETCH(QByteArray, text);
        QFETCH(QString, expected);
        const ParseResult result = parse(text);
        QCOMPARE(result.status, 0);
        QCOMPARE(result.dump, expected);
    }

    void recordErrors_data()
    {
        QTest::addColumn<QByteArray>("text");
        QTest::addColumn<int>("status");
        QTest::addColumn<QString>("errors");
        QTest::newRow("unknown owners are reported, reading goes on")
            << QByteArray("BO_ 1 M: 8 X\n SG_ S : 0|8@1+ (1,0) [0|0] \"\" X\nCM_ BU_ Nobody \"a\";\n"
                          "CM_ BO_ 9 \"b\";\nCM_ SG_ 9 S \"c\";\nCM_ SG_ 1 T \"d\";\nCM_ EV_ V \"e\";\n"
                          "ENVVAR_DATA_ V: 1;\nVAL_ 9 S 1 \"x\" ;\nVAL_ V 1 \"x\" ;\nSIG_VALTYPE_ 1 S : 7;\n"
                          "BA_DEF_DEF_ \"None\" 1;\n")
            << 0
            << "Error (line 3): No node found for comment line\nError (line 4): No message found for comment "
               "line\n"
               "Error (line 5): Message (id=9) found for comment line\nError (line 6): Signal not found\n"
               "Error (line 7): No variable found for comment line\nError (line 8): No variable found for "
               "data line\n"
               "Error (line 9): Message (id=9) found for type info\nError (line 10): Variable not found\n"
               "Error (line 11): Unknown signal type 7\nError (line 12): Attribute 'None' not found\n";
        QTest::newRow("a broken record costs one error, the next line is read")
            << QByteArray("BO_ 1 M 8 A\nBO_ 2 N: 8 Vector__XXX\n") << -1
            << "Error (line 1): ':' expected after message name (invalid character in name?)\n";
        QTest::newRow("reading stops at the second error")
            << QByteArray("BO_ x\nBO_ 1 M: y\nBO_ 1 M: 8\nBO_ z\n") << -1
            << "Error (line 1): CAN id expected\nError (line 2): DLC expected\n";
        QTest::newRow("signal syntax")
            << QByteArray("BO_ 1 M: 8 Vector__XXX\n SG_ S : 0|8@1* (1,0) [0|0] \"\" X\n") << -1
            << "Error (line 2): '+' or '-' expected\n";
        QTest::newRow("value of an unknown attribute")
            << QByteArray("BA_ \"Missing\" BO_ 1 2;\nBO_ 1 M: 8 Vector__XXX\n") << -1
            << "Error (line 1): Attribute 'Missing' not found\n";
        QTest::newRow("unsupported VAL and inconsistent variable")
            << QByteArray("VAL_ \"x\";\nEV_ V: 1 [0|1] \"\" 0 1 DUMMY_NODE_VECTOR8000 ;\n") << -1
            << "Error (line 1): Unsupported VAL record\nError (line 2): Inconsistent environment variable "
               "type.\n";
        QTest::newRow("tokenizer error at the top")
            << QByteArray("VERSION 1e\nBO_ 1 M: 8 A\n") << -1 << "Error (line 1): Malformed number '1e'\n";
    }

    void recordErrors()
    {
        QFETCH(QByteArray, text);
        QFETCH(int, status);
        QFETCH(QString, errors);
        const ParseResult result = parse(text);
        QCOMPARE(result.status, status);
        QCOMPARE(result.errors, errors);
    }

    void unknownMessageOfAnAttributeIsOnlyAWarning()
    {
        CANdbDatabase database;
        CANdbDBC reader("memory.dbc");
        QuietSink sink;
        reader.setSink(&sink);
        const std::string text = "BA_DEF_ BO_ \"C\" INT 0 9;\nBA_ \"C\" BO_ 77 1;\n";
        QCOMPARE(reader.parse(database, text), 0);
        QCOMPARE(sink.warnings, std::vector<std::string>{"Message 77 not found"});
        QVERIFY(reader.errorText().empty());
    }

    void postProcessing_data()
    {
        QTest::addColumn<QByteArray>("text");
        QTest::addColumn<uint>("protocol");
        QTest::addColumn<QString>("messages");
        const QByteArray messages = "BO_ 2566834942 A: 8 Vector__XXX\nBO_ 419358974 B: 8 Vector__XXX\n"
                                    "BO_ 418316544 C: 8 Vector__XXX\n";
        QTest::newRow("J1939PGN attribute")
            << messages + "BA_DEF_ \"J1939PGN\" INT 0 1;\nBA_ \"J1939PGN\" 1;\n"
            << 1u
            << "419351294 ext mask 8001ffff kind 1, 419358974 mask 8001ffff kind 1, 418316544 mask 8001ffff "
               "kind 1";
        QTest::newRow("J1939PGN by default")
            << messages + "BA_DEF_ \"J1939PGN\" INT 0 1;\nBA_DEF_DEF_ \"J1939PGN\" 1;\n"
            << 1u
            << "419351294 ext mask 8001ffff kind 1, 419358974 mask 8001ffff kind 1, 418316544 mask 8001ffff "
               "kind 1";
        QTest::newRow("ProtocolType J1939 masks extended messages")
            << messages + "BA_DEF_ \"ProtocolType\" STRING ;\nBA_ \"ProtocolType\" \"J1939\";\n"
            << 2u
            << "419351294 ext mask 81ffff00 kind 2, 419358974 mask ffffffff kind 0, 418316544 mask ffffffff "
               "kind 0";
        QTest::newRow("VFrameFormat J1939PG by message and by default")
            << messages + "BA_DEF_ BO_ \"VFrameFormat\" ENUM \"S\",\"E\",\"r\",\"J1939PG\";\n"
                          "BA_DEF_DEF_ \"VFrameFormat\" \"J1939PG\";\nBA_ \"VFrameFormat\" BO_ 419358974 1;\n"
            << 0u
            << "419351294 ext mask 81ffff00 kind 2, 419358974 mask ffffffff kind 0, 418316544 ext mask "
               "81ff0000 kind 2";
        QTest::newRow("no protocol") << messages << 0u
                                     << "419351294 ext mask ffffffff kind 0, 419358974 mask ffffffff kind 0, "
                                        "418316544 mask ffffffff kind 0";
    }

    void postProcessing()
    {
        QFETCH(QByteArray, text);
        QFETCH(uint, protocol);
        QFETCH(QString, messages);
        CANdbDatabase database;
        CANdbDBC reader("memory.dbc");
        QCOMPARE(reader.parse(database, std::string_view(text.constData(), size_t(text.size()))), 0);
        QCOMPARE(uint(database.protocol), protocol);
        QStringList found;
        for (const auto &message : database.messages)
            found << QStringLiteral("%1%2 mask %3 kind %4")
                         .arg(message->id)
                         .arg(message->extended ? QStringLiteral(" ext") : QString())
                         .arg(message->idMask, 0, 16)
                         .arg(message->protocolKind);
        QCOMPARE(found.join(QStringLiteral(", ")), messages);
    }

    void signSignalMakesUnsignedSigned()
    {
        const ParseResult result = parse(
            "BO_ 1 M: 8 Vector__XXX\n SG_ Value : 0|8@1+ (1,0) [0|100] \"\" Vector__XXX\n"
            " SG_ Sign : 8|1@1+ (1,0) [0|1] \"\" Vector__XXX\n SG_ Other : 9|7@1+ (1,0) [5|9] \"\" "
            "Vector__XXX\n"
            "BA_DEF_ SG_ \"SignSignal\" STRING ;\nBA_DEF_ SG_ \"VorzeichenSignal\" STRING ;\n"
            "BA_ \"SignSignal\" SG_ 1 Value \"Sign\";\nBA_ \"VorzeichenSignal\" SG_ 1 Other \"Sign\";\n");
        QCOMPARE(result.status, 0);
        QVERIFY2(result.dump.contains("signal Value 0|8 intel type 1 (1,0) [-100|100]"),
                 qPrintable(result.dump));
        QVERIFY2(result.dump.contains("signal Other 9|7 intel type 1 (1,0) [5|9]"), qPrintable(result.dump));
        QVERIFY2(result.dump.contains("signal Sign 8|1 intel type 2"), qPrintable(result.dump));
    }

    void writtenText_data()
    {
        QTest::addColumn<QByteArray>("input");
        QTest::addColumn<QByteArray>("expected");
        const QByteArray empty = writtenHead() + "BU_:\n\n\n\n";
        QTest::newRow("database without nodes") << QByteArray() << empty;
        QTest::newRow("receivers and place holders")
            << QByteArray("BU_: A B\nBO_ 2147483905 M: 8 A\n SG_ None : 0|8@1+ (1,0) [0|0] \"\" Vector__XXX\n"
                          " SG_ One : 8|8@1- (0.1,-5) [-5|20.5] \"km/h\" B\n SG_ Two M : 16|8@1+ (1,0) [0|0] "
                          "\"\" A,B\n"
                          " SG_ Moto m2 : 31|12@0+ (1,0) [0|0] \"\" A\n")
            << writtenHead() + "BU_: A B\n\n\n"
                               "BO_ 2147483905 M: 8 A\n"
                               " SG_ None : 0|8@1+ (1,0) [0|0] \"\" Vector__XXX\n"
                               " SG_ One : 8|8@1- (0.1,-5) [-5|20.5] \"km/h\"  B\n"
                               " SG_ Two M : 16|8@1+ (1,0) [0|0] \"\"  A,B\n"
                               " SG_ Moto m2 : 31|12@0+ (1,0) [0|0] \"\"  A\n"
                               "\n\n";
        QTest::newRow("all record kinds in their order")
            << QByteArray(
                   "BU_: A\nBO_ 1 M: 8 A\n SG_ S : 0|32@1- (1,0) [0|0] \"\" A\n"
                   "EV_ V: 1 [0|1.5] \"u\" 0.5 9 DUMMY_NODE_VECTOR1 A;\nENVVAR_DATA_ V: 4;\n"
                   "CM_ SG_ 1 S \"s\";\nCM_ EV_ V \"v\";\nCM_ BO_ 1 \"m\";\nCM_ BU_ A \"a\";\nCM_ \"n\";\n"
                   "BA_DEF_ \"N\" STRING ;\nBA_DEF_ BO_ \"I\" INT -1 9;\nBA_DEF_ BU_ \"H\" HEX 0 15;\n"
                   "BA_DEF_ SG_ \"E\" ENUM \"x\",\"y\";\nBA_DEF_ EV_ \"F\" FLOAT 0 1;\n"
                   "BA_ \"F\" EV_ V 0.5;\nBA_ \"N\" \"t\\tab\";\nBA_ \"H\" BU_ A 3;\nBA_ \"E\" SG_ 1 S 1;\n"
                   "BA_ \"I\" BO_ 1 4;\nVAL_ V 0 \"off\" ;\nVAL_ 1 S 1 \"on\" ;\nSIG_VALTYPE_ 1 S : 1;\n")
            << writtenHead() + "BU_: A\n\n\n"
                               "BO_ 1 M: 8 A\n"
                               " SG_ S : 0|32@1- (1,0) [0|0] \"\"  A\n"
                               "\n"
                               "\nEV_ V: 1 [0|1.5] \"u\" 0.5 9 DUMMY_NODE_VECTOR1  A;\n"
                               "ENVVAR_DATA_ V: 4;\n"
                               "\n"
                               "CM_ \"n\";\n"
                               "CM_ BU_ A \"a\";\n"
                               "CM_ BO_ 1 \"m\";\n"
                               "CM_ SG_ 1 S \"s\";\n"
                               "CM_ EV_ V \"v\";\n"
                               "BA_DEF_  \"N\" STRING ;\n"
                               "BA_DEF_ BO_  \"I\" INT -1 9;\n"
                               "BA_DEF_ BU_  \"H\" HEX 0 15;\n"
                               "BA_DEF_ SG_  \"E\" ENUM  \"x\",\"y\";\n"
                               "BA_DEF_ EV_  \"F\" FLOAT 0 1;\n"
                               "BA_DEF_DEF_  \"N\" \"\";\n"
                               "BA_DEF_DEF_  \"I\" 0;\n"
                               "BA_DEF_DEF_  \"H\" 0;\n"
                               "BA_DEF_DEF_  \"E\" \"x\";\n"
                               "BA_DEF_DEF_  \"F\" 0;\n"
                               "BA_ \"I\" BO_ 1 4;\n"
                               "BA_ \"E\" SG_ 1 S 1;\n"
                               "BA_ \"H\" BU_ A 3;\n"
                               "BA_ \"F\" EV_ V 0.5;\n"
                               "BA_ \"N\" \"t\\tab\";\n"
                               "VAL_ 1 S 1 \"on\" ;\n"
                               "VAL_ V 0 \"off\" ;\n"
                               "SIG_VALTYPE_ 1 S : 1;\n";
        QTest::newRow("escapes in quoted text")
            << QByteArray("CM_ \"q\\\" t\\t r\\r n\\n \x01 \xc3\xa4\";\n")
            << writtenHead() + "BU_:\n\n\n\nCM_ \"q\\\" t\\t r\\r n\n \\x01 \xc3\xa4\";\n";
    }

    void writtenText()
    {
        QFETCH(QByteArray, input);
        QFETCH(QByteArray, expected);
        CANdbDatabase database;
        CANdbDBC reader("memory.dbc");
        QCOMPARE(reader.parse(database, std::string_view(input.constData(), size_t(input.size()))), 0);
        QCOMPARE(QByteArray::fromStdString(formatted(database)), expected);
    }

    void writerStopsAtAnOwnerlessDefinition()
    {
        HandleFixture fixture;
        fixture.definition("Good", 2, 1);
        KvaDbAttributeDefHnd bad = nullptr;
        kvaDbAddAttributeDefinition(fixture.set, &bad);
        kvaDbSetAttributeDefinitionName(bad, "Bad");
        kvaDbSetAttributeDefinitionType(bad, 1);
        std::string text;
        QCOMPARE(CANdbDBCWriter::format(*fixture.set->databases.front(), text), 1);
        QVERIFY(QByteArray::fromStdString(text).endsWith("BA_DEF_ BO_  \"Good\" INT 0 0;\n"));
        QTemporaryDir dir;
        QCOMPARE(kvaDbWriteFile(fixture.set, QFile::encodeName(dir.filePath("bad.dbc")).constData()),
                 int(KvaDbFileError));
    }

    void enumValuesFillWithReserved()
    {
        HandleFixture fixture;
        KvaDbAttributeDefHnd definition = fixture.definition("Send", 2, 4);
        QCOMPARE(kvaDbAddAttributeDefinitionEnum(definition, "cyclic", 0), int(KvaDbOk));
        QCOMPARE(kvaDbAddAttributeDefinitionEnum(definition, "none", 8), int(KvaDbOk));
        QCOMPARE(kvaDbAddAttributeDefinitionEnum(definition, "active", 2), int(KvaDbOk));
        QCOMPARE(kvaDbAddAttributeDefinitionEnum(definition, "x", -1), int(KvaDbFail));
        QCOMPARE(kvaDbAddAttributeDefinitionEnum(definition, nullptr, 1), int(KvaDbFail));
        QCOMPARE(kvaDbSetAttributeValueEnumeration(definition, 8), int(KvaDbOk));
        QCOMPARE(kvaDbSetAttributeValueEnumeration(definition, 9), int(KvaDbBadArgument));
        const QByteArray text = fixture.text();
        QVERIFY2(text.contains("BA_DEF_ BO_  \"Send\" ENUM  \"cyclic\",\"reserved\",\"active\",\"reserved\","
                               "\"reserved\",\"reserved\",\"reserved\",\"reserved\",\"none\";\n"
                               "BA_DEF_DEF_  \"Send\" \"none\";\n"),
                 text.constData());
        KvaDbAttributeDefHnd notEnum = fixture.definition("Int", 2, 1);
        QCOMPARE(kvaDbAddAttributeDefinitionEnum(notEnum, "a", 0), int(KvaDbFail));
    }

    void handlesAreChecked()
    {
        HandleFixture fixture;
        CANdbMessage stranger;
        KvaDbSignalHnd signal = nullptr;
        QCOMPARE(kvaDbAddSignal(&stranger, &signal), int(KvaDbBadArgument));
        QCOMPARE(kvaDbSetMsgName(nullptr, "x"), int(KvaDbBadArgument));
        QCOMPARE(kvaDbSetMsgName(fixture.message, nullptr), int(KvaDbBadArgument));
        QCOMPARE(kvaDbAddMsg(fixture.set, nullptr), int(KvaDbBadArgument));
        QCOMPARE(kvaDbSetSignalValueType(fixture.signal, 5), int(KvaDbBadArgument));
        QCOMPARE(kvaDbSetSignalValueType(fixture.signal, 4), int(KvaDbOk));
        QCOMPARE(kvaDbSetSignalValueSize(fixture.signal, -1, 8), int(KvaDbBadArgument));
        QCOMPARE(kvaDbSetAttributeDefinitionType(reinterpret_cast<KvaDbAttributeDefHnd>(fixture.signal), 1),
                 int(KvaDbBadArgument));
        QCOMPARE(kvaDbCreate(fixture.set, nullptr, nullptr), int(KvaDbBadArgument));

        KvaDbHnd closed = nullptr;
        QCOMPARE(kvaDbOpen(&closed), int(KvaDbOk));
        QCOMPARE(kvaDbCreate(closed, "x", nullptr), int(KvaDbOk));
        KvaDbMessageHnd message = nullptr;
        QCOMPARE(kvaDbAddMsg(closed, &message), int(KvaDbOk));
        QCOMPARE(kvaDbClose(closed), int(KvaDbOk));
        QCOMPARE(kvaDbClose(closed), int(KvaDbBadArgument));
        QCOMPARE(kvaDbSetMsgDlc(message, 8), int(KvaDbBadArgument));
    }

    void namesAreUnique()
    {
        HandleFixture fixture;
        KvaDbMessageHnd second = nullptr;
        QCOMPARE(kvaDbAddMsg(fixture.set, &second), int(KvaDbOk));
        QCOMPARE(kvaDbSetMsgName(second, "M"), int(KvaDbNameInUse));
        QCOMPARE(kvaDbSetMsgName(fixture.message, "M"), int(KvaDbOk));
        QCOMPARE(QString::fromStdString(second->name), QString());
        QVERIFY(fixture.text().contains("BO_ 0 : 0 Vector__XXX\n"));

        KvaDbAttributeDefHnd first = fixture.definition("A", 2, 1);
        KvaDbAttributeDefHnd other = fixture.definition("B", 2, 1);
        QCOMPARE(kvaDbSetAttributeDefinitionName(other, "A"), int(KvaDbNameInUse));
        QCOMPARE(kvaDbSetAttributeDefinitionName(first, "A"), int(KvaDbOk));
    }

    void attributesFitTheirOwner()
    {
        HandleFixture fixture;
        KvaDbAttributeDefHnd messageDef = fixture.definition("Cycle", 2, 1);
        KvaDbAttributeDefHnd signalDef = fixture.definition("Text", 4, 5);
        KvaDbAttributeDefHnd networkDef = fixture.definition("Proto", 1, 5);
        QCOMPARE(kvaDbSetAttributeDefinitionInt(messageDef, 10, 0, 100), int(KvaDbOk));
        QCOMPARE(kvaDbSetAttributeDefinitionInt(signalDef, 10, 0, 100), int(KvaDbFail));
        QCOMPARE(kvaDbSetAttributeDefinitionString(signalDef, "dflt"), int(KvaDbOk));
        KvaDbAttributeHnd attribute = nullptr;
        QCOMPARE(kvaDbAddSignalAttribute(fixture.signal, messageDef, &attribute), int(KvaDbWrongOwner));
        QCOMPARE(kvaDbAddMsgAttribute(fixture.message, messageDef, &attribute), int(KvaDbOk));
        QCOMPARE(attribute->intValue, 10);
        QCOMPARE(kvaDbAddMsgAttribute(fixture.message, messageDef, &attribute), int(KvaDbFail));
        QCOMPARE(kvaDbSetAttributeValueString(attribute, "x", 1), int(KvaDbFail));
        KvaDbAttributeHnd text = nullptr;
        QCOMPARE(kvaDbAddSignalAttribute(fixture.signal, signalDef, &text), int(KvaDbOk));
        QCOMPARE(kvaDbSetAttributeValueInt(text, 1), int(KvaDbFail));
        QCOMPARE(kvaDbSetAttributeValueString(text, "abc\0def", 7), int(KvaDbOk));
        KvaDbAttributeHnd network = nullptr;
        QCOMPARE(kvaDbAddNetworkAttribute(fixture.set, messageDef, &network), int(KvaDbWrongOwner));
        QCOMPARE(kvaDbAddNetworkAttribute(fixture.set, networkDef, &network), int(KvaDbOk));
        QCOMPARE(kvaDbSetAttributeValueString(network, "J1939", 5), int(KvaDbOk));
        const QByteArray written = fixture.text();
        QVERIFY2(written.contains(
                     "BA_ \"Cycle\" BO_ 0 10;\nBA_ \"Text\" SG_ 0 S \"abc\";\nBA_ \"Proto\" \"J1939\";\n"),
                 written.constData());
    }

    void writeFileNeedsOneDatabase()
    {
        QTemporaryDir dir;
        const QByteArray path = QFile::encodeName(dir.filePath(QStringLiteral("out.dbc")));
        KvaDbHnd set = nullptr;
        kvaDbOpen(&set);
        QCOMPARE(kvaDbWriteFile(set, path.constData()), int(KvaDbNoDatabase));
        KvaDbAttributeDefHnd definition = nullptr;
        QCOMPARE(kvaDbAddAttributeDefinition(set, &definition), int(KvaDbNoDatabase));
        QCOMPARE(kvaDbCreate(set, "one", nullptr), int(KvaDbOk));
        QCOMPARE(kvaDbWriteFile(set, path.constData()), int(KvaDbOk));
        QCOMPARE(kvaDbWriteFile(set, "/nonexistent/folder/out.dbc"), int(KvaDbFileError));
        QCOMPARE(kvaDbCreate(set, "two", nullptr), int(KvaDbOk));
        QCOMPARE(kvaDbWriteFile(set, path.constData()), int(KvaDbNameInUse));
        QCOMPARE(kvaDbAddAttributeDefinition(set, &definition), int(KvaDbNameInUse));
        kvaDbClose(set);
    }

    void createFromFile_data()
    {
        QTest::addColumn<QString>("fileName");
        QTest::addColumn<QByteArray>("content");
        QTest::addColumn<int>("status");
        QTest::addColumn<QString>("databaseName");
        QTest::addColumn<QString>("parseError");
        QTest::newRow("named after the file up to the first point")
            << "motor.v2.dbc" << QByteArray("BU_: A\n") << int(KvaDbOk) << "motor"
            << "";
        QTest::newRow("behind a backslash") << "dir\\bus.dbc" << QByteArray() << int(KvaDbOk) << "bus"
                                            << "";
        QTest::newRow("no base name") << ".dbc" << QByteArray() << int(KvaDbOk) << "unkown"
                                      << "";
        QTest::newRow("cut to 100 characters")
            << QString(120, 'n') + ".dbc" << QByteArray() << int(KvaDbOk) << QString(100, 'n') << "";
        QTest::newRow("broken file keeps its error text")
            << "broken.dbc" << QByteArray("BO_ x\nBO_ y\n") << int(KvaDbParseError) << ""
            << "Error (line 1): CAN id expected\nError (line 2): CAN id expected\n";
    }

    void createFromFile()
    {
        QFETCH(QString, fileName);
        QFETCH(QByteArray, content);
        QFETCH(int, status);
        QFETCH(QString, databaseName);
        QFETCH(QString, parseError);
        QTemporaryDir dir;
        QFile file(dir.filePath(fileName));
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write(content);
        file.close();
        KvaDbHnd set = nullptr;
        kvaDbOpen(&set);
        QCOMPARE(kvaDbCreate(set, nullptr, QFile::encodeName(file.fileName()).constData()), status);
        if (status == KvaDbOk) {
            QCOMPARE(QString::fromStdString(set->databases.front()->name), databaseName);
            QCOMPARE(QString::fromStdString(set->databases.front()->filename), file.fileName());
        } else {
            QVERIFY(set->databases.empty());
        }
        QCOMPARE(QString::fromStdString(kvaDbLastParseError()), parseError);
        kvaDbClose(set);
    }

    void createFromMissingFile()
    {
        KvaDbHnd set = nullptr;
        kvaDbOpen(&set);
        QCOMPARE(kvaDbCreate(set, "x", "/nonexistent/none.dbc"), int(KvaDbFileError));
        QCOMPARE(kvaDbCreate(set, "given", KESTREL_SHARED_TESTDATA_DIR "/dbc/motohawk.dbc"), int(KvaDbOk));
        QCOMPARE(QString::fromStdString(set->databases.front()->name), QStringLiteral("given"));
        QCOMPARE(QString::fromStdString(kvaDbLastParseError()), QString());
        kvaDbClose(set);
    }

    void decimalPointWhateverTheLocale()
    {
        QTemporaryDir locales;
        const int made =
            QProcess::execute(QStringLiteral("localedef"),
                              {QStringLiteral("-i"), QStringLiteral("de_DE"), QStringLiteral("-f"),
                               QStringLiteral("UTF-8"), locales.filePath(QStringLiteral("de_DE.UTF-8"))});
        if (made != 0)
            QSKIP("localedef cannot make a locale with a decimal comma here");
        qputenv("LOCPATH", QFile::encodeName(locales.path()));
        const std::string previous = std::setlocale(LC_NUMERIC, nullptr);
        QVERIFY(std::setlocale(LC_NUMERIC, "de_DE.UTF-8"));
        char check[16];
        std::snprintf(check, sizeof check, "%.1f", 1.5);
        const QByteArray input =
            "BO_ 1 M: 8 Vector__XXX\n SG_ S : 0|8@1- (0.25,-1.5) [-1.5e2|6.375] \"\" Vector__XXX\n";
        CANdbDatabase database;
        CANdbDBC reader("memory.dbc");
        const int status = reader.parse(database, std::string_view(input.constData(), size_t(input.size())));
        const std::string text = formatted(database);
        std::setlocale(LC_NUMERIC, previous.c_str());
        qunsetenv("LOCPATH");
        QCOMPARE(QByteArray(check), QByteArray("1,5"));
        QCOMPARE(status, 0);
        QVERIFY(QByteArray::fromStdString(text).contains(
            " SG_ S : 0|8@1- (0.25,-1.5) [-150|6.375] \"\" Vector__XXX\n"));
    }

    void corpusReadsAndRoundTrips_data()
    {
        QTest::addColumn<QString>("path");
        const QStringList files = corpusFiles();
        QVERIFY(files.size() >= 18);
        for (const QString &path : files)
            QTest::newRow(qPrintable(QFileInfo(path).fileName())) << path;
    }

    void corpusReadsAndRoundTrips()
    {
        QFETCH(QString, path);
        CANdbDatabase first;
        CANdbDBC reader(QFile::encodeName(path).constData());
        QuietSink sink;
        reader.setSink(&sink);
        const int status = reader.read(first);
        // One file of the corpus has INT limits written as floating point numbers, which an INT doesn't take.
        QCOMPARE(status, QFileInfo(path).fileName() == QLatin1String("big_numbers.dbc") ? -1 : 0);

        QTemporaryDir dir;
        const QByteArray copy = QFile::encodeName(dir.filePath(QStringLiteral("copy.dbc")));
        CANdbDBC writer(copy.constData());
        QCOMPARE(writer.write(first), 0);
        CANdbDatabase second;
        CANdbDBC rereader(copy.constData());
        rereader.setSink(&sink);
        QCOMPARE(rereader.read(second), 0);
        QCOMPARE(dumpDatabase(second), dumpDatabase(first));
        QCOMPARE(second.messageCount(), first.messageCount());
    }

    void corpusFacts()
    {
        KvaDbHnd set = nullptr;
        kvaDbOpen(&set);
        QCOMPARE(kvaDbCreate(set, nullptr, KESTREL_SHARED_TESTDATA_DIR "/dbc/foobar.dbc"), int(KvaDbOk));
        const CANdbDatabase &database = *set->databases.front();
        const QString dump = dumpDatabase(database);
        QVERIFY2(dump.contains("message 74544 ext Foo dlc 8 from FOO \"Foo.\"\n"), qPrintable(dump));
        QVERIFY2(
            dump.contains("  signal Foo 21|12 motorola type 1 (0.01,250) [229.53|270.47] \"degK\" to BAR"),
            qPrintable(dump));
        QVERIFY2(dump.contains("node BAR \"fam \"1\"\""), qPrintable(dump));
        QVERIFY2(dump.contains("message 74547 ext CanFd dlc 64 from FOO"), qPrintable(dump));
        kvaDbClose(set);
    }

    void mutatedInputNeverBreaksTheReader()
    {
        QList<QByteArray> seeds;
        for (const QString &path : corpusFiles()) {
            QFile file(path);
            QVERIFY(file.open(QIODevice::ReadOnly));
            seeds << file.readAll();
        }
        static const QByteArray fragments[] = {"BO_ ",        "SG_ ",
                                               "CM_ ",        "BA_DEF_ ",
                                               "BA_ ",        "VAL_ ",
                                               "EV_ ",        "\"",
                                               "/*",          "*/",
                                               "0x",          "1e",
                                               "-",           ".",
                                               ":",           ";",
                                               "|",           "@",
                                               "\n",          "4294967295",
                                               "-2147483648", "99999999999999999999"};
        std::mt19937 random(20240517u);
        auto pick = [&random](size_t count) { return size_t(random() % (count == 0 ? 1 : count)); };
        QElapsedTimer timer;
        timer.start();
        QuietSink sink;
        constexpr int rounds = 4000;
        for (int round = 0; round < rounds; ++round) {
            QByteArray text = seeds.at(qsizetype(pick(size_t(seeds.size()))));
            const int mutations = 1 + int(pick(8));
            for (int m = 0; m < mutations; ++m) {
                const qsizetype at = qsizetype(pick(size_t(text.size()) + 1));
                switch (pick(6)) {
                case 0:
                    if (at < text.size())
                        text[at] = char(random());
                    break;
                case 1:
                    text.insert(at, fragments[pick(std::size(fragments))]);
                    break;
                case 2:
                    text.remove(at, qsizetype(pick(64)));
                    break;
                case 3:
                    text.insert(at, text.mid(qsizetype(pick(size_t(text.size()))), qsizetype(pick(200))));
                    break;
                case 4:
                    text.truncate(at);
                    break;
                default:
                    text.insert(at, char(pick(256)));
                    break;
                }
            }
            CANdbDatabase database;
            CANdbDBC reader("fuzz.dbc");
            reader.setSink(&sink);
            reader.parse(database, std::string_view(text.constData(), size_t(text.size())));
            // Whatever was read must write and read back without harm.
            const std::string written = formatted(database);
            CANdbDatabase again;
            CANdbDBC rereader("fuzz.dbc");
            rereader.setSink(&sink);
            rereader.parse(again, written);
        }
        QVERIFY2(timer.elapsed() < 30000, qPrintable(QStringLiteral("%1 ms").arg(timer.elapsed())));
    }
};

QTEST_APPLESS_MAIN(TestDbcFile)
#include "tst_dbcfile.moc"
