#include "generation/abstractgenerator.h"
#include "generation/generatormainhandler.h"
#include "generation/outputhandlerbase.h"
#include "generation/postgenprogresshandler.h"
#include "support/projectbuilder.h"
#include "support/testprojects.h"

#include <QSettings>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTextStream>
#include <QtTest>

#include <functional>

namespace {

// The file each kind writes, with %1 the folder, %2 the project, %3 the line, %4 the suffix, %5 the variant.
const QMap<GeneratorKind, QString> fileOfKind{
    {GeneratorKind::Indices, "%1/gen_indices.h"},
    {GeneratorKind::TextDoc, "%1/%2_%3%4_doc.txt"},
    {GeneratorKind::Html, "%1/%2_%3%4.html"},
    {GeneratorKind::ObjDict, "%1/gen_objdict.c"},
    {GeneratorKind::VObjDict, "%1/gen_vobjdict.c"},
    {GeneratorKind::MultiPro, "%1/gen_mp.c"},
    {GeneratorKind::J1939TextDoc, "%1/%2_%3_j1939doc.txt"},
    {GeneratorKind::RawCanTextDoc, "%1/%2_%3_rawdoc.txt"},
    {GeneratorKind::RawCanDbc, "%1/%2_%3_raw.dbc"},
    {GeneratorKind::J1939Html, "%1/%2_%3%4_j1939.html"},
    {GeneratorKind::Dbc, "%1/%2_%3.dbc"},
    {GeneratorKind::Srdo, "%1/gen_srdo.c"},
    {GeneratorKind::Define, "%1/gen_define.h"},
    {GeneratorKind::Pgn, "%1/gen_pgn.c"},
    {GeneratorKind::ExtDecl, "%1/gen_extern_decl.h"},
    {GeneratorKind::Sdm, "%1/gen_sdg.c"},
    {GeneratorKind::Indication, "%1/gen_indication.h"},
    {GeneratorKind::Csv, "%1/%2_%3.csv"},
    {GeneratorKind::Icsv, "%1/%2_%3.icsv"},
    {GeneratorKind::Eds, "%1/%2_%3%5.eds"},
    {GeneratorKind::Xdd, "%1/%2_%3.xdd"},
};

const QMap<GeneratorKind, QString> nameOfKind{
    {GeneratorKind::Indices, "Indices"},         {GeneratorKind::TextDoc, "TextDoc"},
    {GeneratorKind::Html, "Html"},               {GeneratorKind::ObjDict, "ObjDict"},
    {GeneratorKind::VObjDict, "VObjDict"},       {GeneratorKind::MultiPro, "MultiPro"},
    {GeneratorKind::J1939TextDoc, "J1939TextDoc"}, {GeneratorKind::RawCanTextDoc, "RawCanTextDoc"},
    {GeneratorKind::RawCanDbc, "RawCanDbc"},     {GeneratorKind::J1939Html, "J1939Html"},
    {GeneratorKind::Dbc, "Dbc"},                 {GeneratorKind::Srdo, "Srdo"},
    {GeneratorKind::Define, "Define"},           {GeneratorKind::Pgn, "Pgn"},
    {GeneratorKind::ExtDecl, "ExtDecl"},         {GeneratorKind::Sdm, "Sdm"},
    {GeneratorKind::Indication, "Indication"},   {GeneratorKind::Csv, "Csv"},
    {GeneratorKind::Icsv, "Icsv"},               {GeneratorKind::Eds, "Eds"},
    {GeneratorKind::Xdd, "Xdd"},
};

const QList<GeneratorKind> projectWide{GeneratorKind::Indices,  GeneratorKind::Define,     GeneratorKind::Pgn,
                                       GeneratorKind::ExtDecl,  GeneratorKind::Indication, GeneratorKind::MultiPro,
                                       GeneratorKind::ObjDict,  GeneratorKind::VObjDict,   GeneratorKind::Srdo,
                                       GeneratorKind::Sdm};

// Stands for every generator: writes a small file named by its kind and records how the driver ran it.
class RecordingGenerator : public AbstractGenerator
{
public:
    RecordingGenerator(GeneratorKind kind, const GeneratorOptions &options, QStringList *record, bool content)
        : kind(kind)
        , options(options)
        , record(record)
        , content(content)
    {
    }

    QString outputFile() const override
    {
        QString file = fileOfKind.value(kind);
        QString variant = options.edsVariant;
        if (options.fd)
            variant += QStringLiteral("_fd");
        if (options.classical)
            variant += QStringLiteral("_classical");
        if (options.camMode)
            variant += QStringLiteral("_cam");
        return file.replace(QLatin1String("%1"), outputPath)
            .replace(QLatin1String("%2"), projectName)
            .replace(QLatin1String("%3"), QString::number(line))
            .replace(QLatin1String("%4"), fileSuffix)
            .replace(QLatin1String("%5"), variant);
    }
    QString generatorName() const override { return nameOfKind.value(kind); }
    bool hasContent() override { return content; }

    GeneratorStatus start() override
    {
        QString entry = nameOfKind.value(kind);
        if (!projectWide.contains(kind))
            entry += '@' + QString::number(line);
        if (!fileSuffix.isEmpty())
            entry += fileSuffix;
        if (!options.edsVariant.isEmpty())
            entry += '[' + options.edsVariant + ']';
        if (options.fd)
            entry += QStringLiteral("+fd");
        if (options.classical)
            entry += QStringLiteral("+classical");
        if (options.camMode)
            entry += QStringLiteral("+cam");
        if (multiLine)
            entry += QStringLiteral("+ml");
        record->append(entry);
        return AbstractGenerator::start();
    }

protected:
    void writeContent(QTextStream &out) override
    {
        if (kind == GeneratorKind::Define)
            out << "#define GEN_A\t1u\n#  define  GEN_B 2\n#define GEN_A\t3\n#define 9BAD\n#undef GEN_C\n";
        else
            out << generatorName() << '\n';
    }

private:
    GeneratorKind kind;
    GeneratorOptions options;
    QStringList *record;
    bool content;
};

class RecordingFactory : public GeneratorFactory
{
public:
    std::unique_ptr<AbstractGenerator> create(GeneratorKind kind, const GeneratorOptions &options) const override
    {
        if (missing.contains(kind))
            return nullptr;
        return std::make_unique<RecordingGenerator>(kind, options, &record, kind != GeneratorKind::VObjDict ||
                                                                                 virtualObjects);
    }

    mutable QStringList record;
    QList<GeneratorKind> missing;
    bool virtualObjects = true;
};

class LogSink : public OutputHandlerBase
{
public:
    void output(const QVariant &text) override { entries << text.toString(); }
    void outputPlain(const QVariant &text) override { entries << QStringLiteral("plain:") + text.toString(); }
    QString logText() const override { return entries.join('\n'); }

    bool contains(const QString &text) const { return entries.contains(text); }

    QStringList entries;
};

class RecordingProgress : public PostGenProgressHandler
{
public:
    void messageBox(const QString &title, const QString &text, const QString &info) override
    {
        boxes << title + '|' + text + '|' + info;
    }
    QStringList boxes;
};

struct Fixture
{
    // Without blanks in the path: the post-generation command splits its arguments at blanks.
    QTemporaryDir dir{QDir::tempPath() + QStringLiteral("/kestreldriver-XXXXXX")};
    ProjectBuilder project;
    RecordingFactory factory;
    LogSink sink;
    QSharedPointer<RecordingProgress> progress = QSharedPointer<RecordingProgress>::create();
    GeneratorMainHandler driver{&sink, progress, &factory};
    QList<GeneratorMainHandler::GeneratorResult> results;

    Fixture()
    {
        QObject::connect(&driver, &GeneratorMainHandler::finished,
                         [this](GeneratorMainHandler::GeneratorResult result) { results << result; });
    }

    // The bare projects of these tests would not pass the model check; what is tested here is the run.
    void generate(bool ignoreCheckErrors = true)
    {
        driver.setProject(&project.store(), dir.path(), QStringLiteral("P"));
        driver.generate(ignoreCheckErrors);
    }

    QString path(const QString &name) const { return dir.filePath(name); }
};

QSettings userSettings()
{
    return QSettings(QCoreApplication::organizationName(), qApp->property("AppNameWithVersion").toString());
}

} // namespace

class TestGenerationDriver : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase()
    {
        QCoreApplication::setOrganizationName(QStringLiteral("vorlan"));
        QCoreApplication::setApplicationName(QStringLiteral("CAN Kestrel"));
        QCoreApplication::setApplicationVersion(QStringLiteral("4.3.2"));
        qApp->setProperty("AppNameWithVersion", QStringLiteral("CAN Kestrel 4.3.2"));
    }

    void init() { userSettings().clear(); }

    // The fixed sequence of a run, by the protocols of its lines.
    void sequence_data()
    {
        QTest::addColumn<QList<int>>("lineTypes");
        QTest::addColumn<QStringList>("expected");

        QTest::newRow("CANopen") << QList<int>{1}
                                 << QStringList{"Indices+ml", "TextDoc@0", "Html@0", "ObjDict", "VObjDict", "Define",
                                                "Indication", "Csv@0", "Icsv@0", "Eds@0"};
        QTest::newRow("two CANopen lines")
            << QList<int>{1, 1}
            << QStringList{"Indices+ml", "TextDoc@0+ml", "TextDoc@1+ml", "Html@0+ml", "Html@1+ml", "ObjDict",
                           "VObjDict", "Define", "Indication", "Csv@0+ml", "Csv@1+ml", "Icsv@0+ml", "Icsv@1+ml",
                           "Eds@0+ml", "Eds@1+ml"};
        QTest::newRow("J1939") << QList<int>{2}
                               << QStringList{"Indices+ml", "Define", "Pgn", "J1939TextDoc@0", "J1939Html@0", "Dbc@0",
                                              "ExtDecl"};
        QTest::newRow("two J1939 lines")
            << QList<int>{2, 2}
            << QStringList{"Indices+ml", "Define", "Pgn", "J1939TextDoc@0+ml", "J1939TextDoc@1+ml", "J1939Html@0+ml",
                           "J1939Html@1+ml", "Dbc@0+ml", "Dbc@1+ml", "ExtDecl"};
        QTest::newRow("raw CAN") << QList<int>{4}
                                 << QStringList{"Indices+ml", "MultiPro", "RawCanTextDoc@0", "RawCanDbc@0", "Define",
                                                "ExtDecl"};
        QTest::newRow("two raw CAN lines")
            << QList<int>{4, 4}
            << QStringList{"Indices+ml", "MultiPro", "RawCanTextDoc@0+ml", "RawCanDbc@0+ml", "RawCanTextDoc@1+ml",
                           "RawCanDbc@1+ml", "Define", "ExtDecl"};
        QTest::newRow("CANopen and J1939")
            << QList<int>{5}
            << QStringList{"Indices+ml", "TextDoc@0", "Html@0_co", "MultiPro", "J1939TextDoc@0", "J1939Html@0_j1939",
                           "Dbc@0", "Define", "ExtDecl", "Indication", "Csv@0", "Icsv@0", "Eds@0"};
        QTest::newRow("two lines CANopen and J1939")
            << QList<int>{5, 5}
            << QStringList{"Indices+ml", "TextDoc@0+ml", "TextDoc@1+ml", "Html@0_co+ml", "Html@1_co+ml", "MultiPro",
                           "J1939TextDoc@0+ml", "J1939TextDoc@1+ml", "J1939Html@0_j1939+ml", "J1939Html@1_j1939+ml",
                           "Dbc@0+ml", "Dbc@1+ml", "Define", "ExtDecl", "Indication", "Csv@0+ml", "Csv@1+ml",
                           "Icsv@0+ml", "Icsv@1+ml", "Eds@0+ml", "Eds@1+ml"};
        QTest::newRow("CANopen and raw CAN")
            << QList<int>{6}
            << QStringList{"Indices+ml", "TextDoc@0", "Html@0_co", "MultiPro", "RawCanTextDoc@0", "RawCanDbc@0",
                           "Define", "ExtDecl", "Indication", "Csv@0", "Icsv@0", "Eds@0"};
        QTest::newRow("two lines CANopen and raw CAN")
            << QList<int>{6, 6}
            << QStringList{"Indices+ml", "TextDoc@0+ml", "TextDoc@1+ml", "Html@0_co+ml", "Html@1_co+ml", "MultiPro",
                           "RawCanTextDoc@0+ml", "RawCanDbc@0+ml", "RawCanTextDoc@1+ml", "RawCanDbc@1+ml", "Define",
                           "ExtDecl", "Indication", "Csv@0+ml", "Csv@1+ml", "Icsv@0+ml", "Icsv@1+ml", "Eds@0+ml",
                           "Eds@1+ml"};
        QTest::newRow("J1939 and raw CAN")
            << QList<int>{7}
            << QStringList{"Indices+ml", "MultiPro", "J1939TextDoc@0", "RawCanTextDoc@0", "RawCanDbc@0",
                           "J1939Html@0_j1939", "Dbc@0", "Define", "ExtDecl"};
        QTest::newRow("two lines J1939 and raw CAN")
            << QList<int>{7, 7}
            << QStringList{"Indices+ml", "MultiPro", "J1939TextDoc@0+ml", "RawCanTextDoc@0+ml", "RawCanDbc@0+ml",
                           "J1939TextDoc@1+ml", "RawCanTextDoc@1+ml", "RawCanDbc@1+ml", "J1939Html@0_j1939+ml",
                           "J1939Html@1_j1939+ml", "Dbc@0+ml", "Dbc@1+ml", "Define", "ExtDecl"};
        QTest::newRow("CANopen and J1939 on two lines")
            << QList<int>{1, 2}
            << QStringList{"Indices+ml", "TextDoc@0+ml", "Html@0+ml", "MultiPro", "J1939TextDoc@1+ml",
                           "J1939Html@1+ml", "Dbc@1+ml", "Define", "ExtDecl", "Indication", "Csv@0+ml", "Icsv@0+ml",
                           "Eds@0+ml"};
        QTest::newRow("no line type") << QList<int>{0} << QStringList{"Define"};
    }

    void sequence()
    {
        QFETCH(QList<int>, lineTypes);
        QFETCH(QStringList, expected);
        Fixture fixture;
        for (int line = 0; line < lineTypes.size(); ++line) {
            if (lineTypes.at(line) == 0)
                fixture.project.store().addNode(quint8(line), NODE_DATA_T());
            else
                fixture.project.line(quint8(line), lineTypes.at(line));
        }
        fixture.project.general(QStringLiteral("use_core_headers"), QStringLiteral("V4"));
        fixture.generate();
        QCOMPARE(fixture.factory.record, expected);
        QCOMPARE(fixture.results, QList<GeneratorMainHandler::GeneratorResult>{GeneratorMainHandler::Done});
        QVERIFY(fixture.sink.contains(QStringLiteral("Generation finished.")));
        QVERIFY(fixture.sink.contains(QStringLiteral("Generation completed.")));
        if (lineTypes == QList<int>{0})
            QVERIFY(fixture.sink.contains(QStringLiteral("Warning line type not set for line 0.")));
        // Every generator's completion message follows its start message.
        for (const auto &entry : std::as_const(fixture.factory.record)) {
            const QString name = entry.section('@', 0, 0).section('+', 0, 0);
            QVERIFY2(fixture.sink.contains(QStringLiteral("Generation of %1 completed. ").arg(name)), qPrintable(name));
        }
    }

    void variantsFdAndCamMode()
    {
        Fixture fixture;
        fixture.project.line(0, 1).general(QStringLiteral("canfd_supported"), QStringLiteral("1"));
        INDEX_DATA_T object;
        object.metadata = {{QStringLiteral("eds_define"), QStringLiteral("B")}};
        fixture.project.object(0, 0x2000, object);
        SUBINDEX_DATA_T sub = ProjectBuilder::subRecord(QStringLiteral("s"), 5, QStringLiteral("ro"), QStringLiteral("0"));
        sub.metadata = {{QStringLiteral("eds_define"), QStringLiteral("A")}};
        fixture.project.object(0, 0x1000, QStringLiteral("Device type")).sub(0, 0x1000, 0, sub).sub(0, 0x2000, 0, sub);
        fixture.factory.virtualObjects = false;
        QVERIFY(TestProjects::writeFile(fixture.path(QStringLiteral("gen_vobjdict.c")), "old"));
        fixture.generate();
        QCOMPARE(fixture.factory.record,
                 (QStringList{"Indices+ml", "TextDoc@0", "Html@0", "ObjDict", "Define", "Indication", "Csv@0", "Icsv@0",
                              "Eds@0+fd", "Eds@0+classical", "Eds@0[A]+fd", "Eds@0[A]+classical", "Eds@0[B]+fd",
                              "Eds@0[B]+classical", "Xdd@0"}));
        QVERIFY(!QFile::exists(fixture.path(QStringLiteral("gen_vobjdict.c"))));
        QVERIFY(fixture.sink.contains(QStringLiteral("Warning: multiple different EDS files to be generated.\n")));
        QVERIFY(fixture.sink.contains(QStringLiteral("Generation of A classical EDS file in %1 started").arg(fixture.dir.path())));
        QVERIFY(fixture.sink.contains(QStringLiteral("Generation of  EDS file in %1 started").arg(fixture.dir.path())));

        Fixture cam;
        cam.project.line(0, 2).j1939(QStringLiteral("cia510serversupport"), QStringLiteral("0x1"));
        cam.project.j1939(QStringLiteral("safetysupport"), QStringLiteral("1"));
        QVERIFY(TestProjects::writeFile(cam.path(QStringLiteral("gen_indication.h")), "old"));
        QVERIFY(TestProjects::writeFile(cam.path(QStringLiteral("j1939_adapter.c")), "old"));
        cam.generate();
        QCOMPARE(cam.factory.record, (QStringList{"Indices+ml", "Define", "Pgn", "ObjDict+cam", "Eds@0", "J1939TextDoc@0",
                                                  "J1939Html@0", "Dbc@0", "ExtDecl", "Sdm"}));
        QVERIFY(!QFile::exists(cam.path(QStringLiteral("gen_indication.h"))));
        QVERIFY(!QFile::exists(cam.path(QStringLiteral("j1939_adapter.c"))));
        QVERIFY(cam.sink.contains(
            QStringLiteral("Generation of gen_objdict.c for CAM11/CAM21 SDO server in %1 started").arg(cam.dir.path())));
    }

    void bootloaderAndSrdo()
    {
        Fixture boot;
        boot.project.line(0, 4).general(QStringLiteral("uds_bl_setting"), QStringLiteral("1"));
        boot.generate();
        QCOMPARE(boot.factory.record, (QStringList{"MultiPro", "RawCanTextDoc@0", "RawCanDbc@0", "Define"}));

        Fixture srdo;
        srdo.project.line(0, 1).object(0, 0x1301, QStringLiteral("SRDO"));
        srdo.driver.setGenerateSrdo(false);
        srdo.generate();
        QVERIFY(!srdo.factory.record.contains(QStringLiteral("Srdo")));
        srdo.factory.record.clear();
        srdo.driver.setGenerateSrdo(true);
        srdo.generate();
        QCOMPARE(srdo.factory.record.mid(5, 2), (QStringList{"Srdo", "Define"}));
    }

    void missingGeneratorsAreSkipped()
    {
        Fixture fixture;
        fixture.project.line(0, 1);
        fixture.factory.missing = {GeneratorKind::ObjDict, GeneratorKind::Csv, GeneratorKind::Html};
        fixture.generate();
        QCOMPARE(fixture.factory.record, (QStringList{"Indices+ml", "TextDoc@0", "VObjDict", "Define", "Indication",
                                                      "Icsv@0", "Eds@0"}));
    }

    void notWritableFileIsReportedAndTheRunGoesOn()
    {
        Fixture fixture;
        fixture.project.line(0, 2);
        const QString header = fixture.path(QStringLiteral("gen_define.h"));
        QVERIFY(TestProjects::writeFile(header, "protected"));
        QFile::setPermissions(header, QFile::ReadOwner | QFile::ReadUser);
        fixture.generate();
        QVERIFY(fixture.sink.contains(QStringLiteral("The file gen_define.h in %1 is not writable").arg(fixture.dir.path())));
        QVERIFY(!fixture.factory.record.contains(QStringLiteral("Define")));
        QVERIFY(fixture.factory.record.contains(QStringLiteral("Pgn")));
        QCOMPARE(TestProjects::readFile(header), QByteArray("protected"));
        QCOMPARE(fixture.results, QList<GeneratorMainHandler::GeneratorResult>{GeneratorMainHandler::Done});
    }

    void notWritableFolderEndsTheRun()
    {
        Fixture fixture;
        fixture.project.line(0, 2);
        QFile::setPermissions(fixture.dir.path(), QFile::ReadOwner | QFile::ExeOwner);
        fixture.generate();
        QFile::setPermissions(fixture.dir.path(), QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
        QCOMPARE(fixture.results,
                 QList<GeneratorMainHandler::GeneratorResult>{GeneratorMainHandler::OutputNotWritable});
        QVERIFY(fixture.sink.contains(QStringLiteral("ABORT - The output folder %1 is not writeable.").arg(fixture.dir.path())));
        QVERIFY(fixture.factory.record.isEmpty());
    }

    void errorLogMovesAsideAfterAPassedCheck()
    {
        Fixture fixture;
        fixture.project.line(0, 2);
        const QString errorLog = fixture.path(QStringLiteral("__kesterrorlog.txt"));
        QVERIFY(TestProjects::writeFile(errorLog + QStringLiteral(".bak"), "first"));
        fixture.generate();
        QVERIFY(!QFile::exists(errorLog));
        QCOMPARE(TestProjects::readFile(errorLog + QStringLiteral(".bak")), QByteArray("first"));
        QFile::remove(errorLog + QStringLiteral(".bak"));
        fixture.generate();
        QVERIFY(TestProjects::readFile(errorLog + QStringLiteral(".bak")).contains("Check of model consistency started"));
    }

    void propsFilesCopiesAndLineEndings()
    {
        Fixture fixture;
        fixture.project.line(0, 1)
            .general(QStringLiteral("gen_csharp_props"), QStringLiteral("1"))
            .general(QStringLiteral("generate_cpp_output"), QStringLiteral("1"));
        QVERIFY(TestProjects::writeFile(fixture.path(QStringLiteral("gen_user.h")), "RET_T f(void);\n"));
        fixture.generate();
        QVERIFY(fixture.sink.contains(
            QStringLiteral("Generation of gen_define.props and Directory.Build.props in %1 finished").arg(fixture.dir.path())));
        QCOMPARE(TestProjects::readFile(fixture.path(QStringLiteral("Directory.Build.props"))),
                 QByteArray("<?xml version=\"1.0\" encoding=\"utf-8\"?>\n"
                            "<!-- Auto-imported by MSBuild. Pulls in the generated define -->\n"
                            "<!-- symbols (gen_define.props) if present; no error if absent. -->\n"
                            "<Project>\n"
                            "  <Import Project=\"$(MSBuildThisFileDirectory)gen_define.props\"\n"
                            "          Condition=\"Exists('$(MSBuildThisFileDirectory)gen_define.props')\" />\n"
                            "</Project>"));
        QCOMPARE(TestProjects::readFile(fixture.path(QStringLiteral("gen_define.props"))),
                 QByteArray("<?xml version=\"1.0\" encoding=\"utf-8\"?>\n"
                            "<!-- Auto-generated from gen_define.h - do not edit. -->\n"
                            "<!-- C# conditional-compilation symbols that make the #if in the -->\n"
                            "<!-- generated wrapper match the compiled stack_wrapper DLL. -->\n"
                            "<!-- Imported automatically by Directory.Build.props when present. -->\n"
                            "<Project>\n"
                            "  <PropertyGroup>\n"
                            "    <DefineConstants>$(DefineConstants);GEN_A</DefineConstants>\n"
                            "    <DefineConstants>$(DefineConstants);GEN_B</DefineConstants>\n"
                            "  </PropertyGroup>\n"
                            "</Project>"));
        QCOMPARE(TestProjects::readFile(fixture.path(QStringLiteral("gen_objdict.cpp"))), QByteArray("ObjDict\n"));
        QCOMPARE(TestProjects::readFile(fixture.path(QStringLiteral("gen_user.hpp"))),
                 QByteArray("extern \"C\" RET_T f(void);\n"));
    }

    void lineEndings_data()
    {
        QTest::addColumn<int>("index");
        QTest::addColumn<QByteArray>("ending");
        QTest::newRow("as written") << 0 << QByteArray("\n");
        QTest::newRow("windows") << 1 << QByteArray("\r\n");
        QTest::newRow("linux") << 2 << QByteArray("\n");
        QTest::newRow("other") << 3 << QByteArray("\r");
    }

    void lineEndings()
    {
        QFETCH(int, index);
        QFETCH(QByteArray, ending);
        userSettings().setValue(QStringLiteral("General/line_ending_index"), index);
        Fixture fixture;
        fixture.project.line(0, 1);
        fixture.generate();
        QCOMPARE(TestProjects::readFile(fixture.path(QStringLiteral("gen_objdict.c"))), "ObjDict" + ending);
        QCOMPARE(TestProjects::readFile(fixture.path(QStringLiteral("gen_indices.h"))), "Indices" + ending);
        // Files outside the list keep the ending they were written with.
        QCOMPARE(TestProjects::readFile(fixture.path(QStringLiteral("P_0.csv"))), QByteArray("Csv\n"));
    }

    void postGenerationCommand_data()
    {
        QTest::addColumn<QString>("script");
        QTest::addColumn<bool>("wait");
        QTest::addColumn<QStringList>("expected");
        QTest::newRow("echo with wait") << "echo \"$1\" \"$2\" \"$3\"\n" << true
                                        << QStringList{"plain:Post generation process standard output:\n",
                                                       "plain:\t%D/P.kprj %D P.kprj",
                                                       "Post generation process finished with code 0",
                                                       "Generation completed."};
        QTest::newRow("exit code with wait") << "echo oops >&2\nexit 3\n" << true
                                             << QStringList{"plain:Post generation process error output:\n",
                                                            "plain:\toops",
                                                            "Post generation process finished with code 3",
                                                            "<b>Warning: Generation completed, but post gen process "
                                                            "returned 3.</b>"};
        QTest::newRow("exit code without wait") << "exit 3\n" << false << QStringList{"Generation completed."};
    }

    void postGenerationCommand()
    {
        QFETCH(QString, script);
        QFETCH(bool, wait);
        QFETCH(QStringList, expected);
        Fixture fixture;
        fixture.project.line(0, 2);
        QVERIFY(TestProjects::writeFile(fixture.path(QStringLiteral("post.sh")), script.toUtf8()));
        fixture.project.misc(QStringLiteral("postGenEnabled"), QStringLiteral("true"))
            .misc(QStringLiteral("postgencmd"), QStringLiteral("/bin/sh"))
            .misc(QStringLiteral("postgencmdargs"), QStringLiteral("%D/post.sh %P %D %N"))
            .misc(QStringLiteral("postGenWait"), wait ? QStringLiteral("true") : QStringLiteral("false"));
        fixture.generate();
        QStringList tail;
        for (const auto &entry : std::as_const(fixture.sink.entries)) {
            if (entry.contains(QLatin1String("Post generation")) || entry.contains(QLatin1String("Generation completed")) ||
                entry.startsWith(QLatin1String("plain:\t")))
                tail << QString(entry).replace(fixture.dir.path(), QStringLiteral("%D"));
        }
        QCOMPARE(tail, expected);
    }

    void missingPostGenerationCommandIsReported()
    {
        Fixture fixture;
        fixture.project.line(0, 2);
        userSettings().setValue(QStringLiteral("General/postGenEnabled"), true);
        userSettings().setValue(QStringLiteral("General/postgenerationcommand"), QStringLiteral("/nonexistent/cmd"));
        userSettings().setValue(QStringLiteral("General/waitPostGen"), true);
        fixture.generate();
        QCOMPARE(fixture.progress->boxes.size(), 1);
        QVERIFY(fixture.progress->boxes.first().startsWith(QStringLiteral("CAN Kestrel|Could not start post gen process.|")));
        QVERIFY(fixture.sink.contains(QStringLiteral("Generation completed.")));
    }

    void edsCheckerRunsPerFile()
    {
        Fixture fixture;
        fixture.project.line(0, 1).line(1, 1);
        const QString checker = fixture.path(QStringLiteral("checker.sh"));
        QVERIFY(TestProjects::writeFile(checker, "#!/bin/sh\necho checked \"$2\"\n"));
        QFile::setPermissions(checker, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
        userSettings().setValue(QStringLiteral("EDSChecker/checkeds"), true);
        userSettings().setValue(QStringLiteral("EDSChecker/EDSCheckerPath"), checker);
        fixture.generate();
        QTRY_VERIFY(fixture.sink.contains(QStringLiteral("Generation completed.")));
        QVERIFY(fixture.sink.contains(QStringLiteral("EDS Checker started for line 0")));
        QVERIFY(fixture.sink.contains(QStringLiteral("EDS Checker started for line 1")));
        QCOMPARE(fixture.sink.entries.count(QStringLiteral("EDS Checker finished.\n")), 2);
        QVERIFY(fixture.sink.contains(QStringLiteral("plain:EDS Checker result:\n\nchecked %1\n").arg(fixture.path("P_0.eds"))));
        // The line endings come after both checks.
        QVERIFY(fixture.sink.entries.indexOf(QStringLiteral("Generation completed.")) >
                fixture.sink.entries.lastIndexOf(QStringLiteral("EDS Checker finished.\n")));

        Fixture skipped;
        skipped.project.line(0, 1);
        skipped.driver.setSkipEdsCheck(true);
        skipped.generate();
        QVERIFY(!skipped.sink.entries.join('\n').contains(QLatin1String("EDS Checker")));
        QVERIFY(skipped.sink.contains(QStringLiteral("Generation completed.")));
    }
};

QTEST_MAIN(TestGenerationDriver)
#include "tst_generationdriver.moc"
