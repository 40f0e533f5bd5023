#include "generators/source/objdictcontext.h"
#include "generatorrun.h"
#include "generators/source/objdictdialect.h"
#include "generators/source/objdictgeneratorv4.h"
#include "generators/source/objdictmodel.h"
#include "headerprojects.h"
#include "support/projectbuilder.h"
#include "support/testprojects.h"
#include "tst_objdictprojects.h"

#include <QTemporaryDir>
#include <QtTest>

namespace {

SUBINDEX_DATA_T entry(const QString &value)
{
    return ProjectBuilder::subRecord(QStringLiteral("Entry"), 6, QStringLiteral("rw"), value);
}

// An ARRAY whose entries are alike but for the defaults given by sub-index.
void arrayObject(ProjectBuilder &p, quint16 index, int entries, const QMap<int, QString> &defaults,
                 const QList<int> &missing = {})
{
    p.object(0, index, QStringLiteral("Array"), 8, 6);
    p.sub(0, index, 0, QStringLiteral("Highest sub-index"), 5, QStringLiteral("ro"),
          QString::number(entries));
    for (int sub = 1; sub <= entries; ++sub) {
        if (!missing.contains(sub))
            p.sub(0, index, quint8(sub), entry(defaults.value(sub, QStringLiteral("7"))));
    }
}

QString generated(ProjectBuilder &builder, const QString &folder, bool compact = false)
{
    TestProjects::setGeneratorApplication();
    ObjDictGeneratorV4 generator(compact);
    if (!GeneratorRun::run(generator, builder.store(), folder, QStringLiteral("device")))
        return QString();
    return TestProjects::readGenerated(folder + QStringLiteral("/gen_objdict.c"));
}

} // namespace

// gen_objdict.c and gen_vobjdict.c of both families for small devices compared whole with the expected
// files, and the rules that decide single rows.
class TestObjDictGenerator : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { TestProjects::setGeneratorApplication(); }

    void golden_data()
    {
        QTest::addColumn<QString>("project");
        QTest::addColumn<bool>("older");
        for (const auto &project : ObjDictProjects::projects()) {
            QTest::addRow("%s, current family", project.name) << QString::fromLatin1(project.name) << false;
            QTest::addRow("%s, older family", project.name) << QString::fromLatin1(project.name) << true;
        }
    }

    void golden()
    {
        QFETCH(QString, project);
        QFETCH(bool, older);
        const ObjDictProjects::Project *definition = ObjDictProjects::find(project);
        ProjectBuilder builder;
        definition->build(builder);
        QTemporaryDir dir;
        QVERIFY(ObjDictProjects::generate(builder.store(), *definition, older, dir.path()));
        const QString folder = project + (older ? QStringLiteral("_older") : QString());
        const bool update = qEnvironmentVariableIsSet("KESTREL_UPDATE_GOLDEN");
        QStringList expectedFiles;
        for (const QString &file : ObjDictProjects::writtenFiles(dir.path())) {
            const QString actual = TestProjects::readGenerated(dir.filePath(file));
            const QString goldenFile = ObjDictProjects::goldenPath(folder, file);
            if (update) {
                QDir().mkpath(QFileInfo(goldenFile).path());
                QVERIFY(TestProjects::writeFile(goldenFile, actual.toUtf8()));
            }
            QCOMPARE(actual, QString::fromUtf8(TestProjects::readFile(goldenFile)));
        }
        const QStringList goldenFiles =
            QDir(ObjDictProjects::goldenPath(folder, QString())).entryList(QDir::Files, QDir::Name);
        QCOMPARE(ObjDictProjects::writtenFiles(dir.path()), goldenFiles);
    }

    void compactStart_data()
    {
        QTest::addColumn<bool>("compact");
        QTest::addColumn<int>("index");
        QTest::addColumn<int>("entries");
        QTest::addColumn<QVariantMap>("defaults");
        QTest::addColumn<QList<int>>("missing");
        QTest::addColumn<int>("start");

        QTest::newRow("ten alike entries start at 1")
            << true << 0x2000 << 10 << QVariantMap() << QList<int>() << 1;
        QTest::newRow("compaction not wanted")
            << false << 0x2000 << 10 << QVariantMap() << QList<int>() << 255;
        QTest::newRow("only sub-indices 0 and 1")
            << true << 0x2000 << 1 << QVariantMap() << QList<int>() << 255;
        QTest::newRow("object below 0x1200") << true << 0x11FF << 5 << QVariantMap() << QList<int>() << 255;
        QTest::newRow("object at 0x1200") << true << 0x1200 << 5 << QVariantMap() << QList<int>() << 1;
        QTest::newRow("difference at 3 ends the tail at 4")
            << true << 0x2000 << 6 << QVariantMap{{QStringLiteral("3"), QStringLiteral("8")}} << QList<int>()
            << 4;
        QTest::newRow("last entry differs from all")
            << true << 0x2000 << 4 << QVariantMap{{QStringLiteral("4"), QStringLiteral("9")}} << QList<int>()
            << 255;
        QTest::newRow("gap reached by the walk")
            << true << 0x2000 << 6 << QVariantMap() << QList<int>{3} << 255;
        QTest::newRow("gap below a difference")
            << true << 0x2000 << 6 << QVariantMap{{QStringLiteral("4"), QStringLiteral("8")}} << QList<int>{2}
            << 5;
    }

    void compactStart()
    {
        QFETCH(bool, compact);
        QFETCH(int, index);
        QFETCH(int, entries);
        QFETCH(QVariantMap, defaults);
        QFETCH(QList<int>, missing);
        QFETCH(int, start);
        ProjectBuilder builder;
        builder.line(0, 1);
        QMap<int, QString> values;
        for (auto it = defaults.constBegin(); it != defaults.constEnd(); ++it)
            values.insert(it.key().toInt(), it.value().toString());
        arrayObject(builder, quint16(index), entries, values, missing);
        const ObjDictModel model(&builder.store());
        ObjDictContext context(model, ObjDictDialect::current());
        context.compactDescription = compact;
        QCOMPARE(int(context.compactStart(0, quint16(index))), start);
    }

    void lines_data()
    {
        QTest::addColumn<QString>("key");
        QTest::addColumn<QString>("value");
        QTest::addColumn<QStringList>("present");
        QTest::addColumn<QStringList>("absent");

        QTest::newRow("far memory specifier")
            << QStringLiteral("static_memory_specifier") << QStringLiteral("far")
            << QStringList{QStringLiteral("static UNSIGNED16 CORE_STORAGE_CLASS\tod_u16[1] far = {")}
            << QStringList();
        QTest::newRow("no memory specifier")
            << QStringLiteral("static_memory_specifier") << QString()
            << QStringList{QStringLiteral("static UNSIGNED16 CORE_STORAGE_CLASS\tod_u16[1]= {")}
            << QStringList();
        QTest::newRow("variables without initialisers")
            << QStringLiteral("init_static_variables") << QStringLiteral("0")
            << QStringList{QStringLiteral("static UNSIGNED16 CORE_STORAGE_CLASS\tod_u16[1];"),
                           QStringLiteral("    , &od_u16[0]")}
            << QStringList{QStringLiteral("\t(UNSIGNED16)16u /* 0x2000:0 */};")};
        QTest::newRow("limit check off")
            << QStringLiteral("limit_check") << QStringLiteral("0")
            << QStringList{QStringLiteral("\t{ (UNSIGNED8)0u, CORE_DTYPE_U16, CO_DSPEC_VAR, (UNSIGNED16)0u, "
                                          "CO_ATTR_NUM | CO_ATTR_READ | CO_ATTR_WRITE | CO_ATTR_DEFVAL | "
                                          "CO_ATTR_LIMIT,  (UNSIGNED16)0u},/* 0x2000:0*/ ")}
            << QStringList();
        QTest::newRow("limit check on")
            << QStringLiteral("limit_check") << QStringLiteral("1")
            << QStringList{QStringLiteral(
                               "\t{ (UNSIGNED8)0u, CORE_DTYPE_U16, CO_DSPEC_VAR, (UNSIGNED16)0u, "
                               "CO_ATTR_NUM | CO_ATTR_READ | CO_ATTR_WRITE | CO_ATTR_DEFVAL | "
                               "CO_ATTR_LIMIT,  (UNSIGNED16)0u, (UNSIGNED16)1u, (UNSIGNED16)2u},/* "
                               "0x2000:0*/ "),
                           QStringLiteral(
                               "static CORE_CONST UNSIGNED16 CORE_CONST_STORAGE_CLASS\tod_const_u16[3] = {")}
            << QStringList();
        QTest::newRow("static indication")
            << QStringLiteral("fct_nmt") << QStringLiteral(" myNmt ")
            << QStringList{QStringLiteral("CORE_CONST CO_EVENT_NMT_T coEventNmtInd = myNmt;")}
            << QStringList();
        QTest::newRow("empty application header")
            << QStringLiteral("applicationheader") << QStringLiteral("  ") << QStringList()
            << QStringList{QStringLiteral("/* application header file(s) */")};
        QTest::newRow("two application headers")
            << QStringLiteral("applicationheader") << QStringLiteral("a.h  b.h")
            << QStringList{QStringLiteral("#include \"a.h\""), QStringLiteral("#include \"b.h\"")}
            << QStringList();
    }

    void lines()
    {
        QFETCH(QString, key);
        QFETCH(QString, value);
        QFETCH(QStringList, present);
        QFETCH(QStringList, absent);
        ProjectBuilder builder;
        builder.line(0, 1)
            .general(QStringLiteral("init_static_variables"), QStringLiteral("1"))
            .general(QStringLiteral("limit_check"), QStringLiteral("1"))
            .general(key, value);
        SUBINDEX_DATA_T speed = ProjectBuilder::subRecord(QStringLiteral("Speed"), 6, QStringLiteral("rw"),
                                                          QStringLiteral("0x10"));
        speed.limitineds = true;
        speed.lowlimit = QStringLiteral("1");
        speed.uplimit = QStringLiteral("100");
        builder.object(0, 0x2000, QStringLiteral("Speed"), 7, 6).sub(0, 0x2000, 0, speed);
        QTemporaryDir dir;
        const QStringList text = generated(builder, dir.path()).split(QLatin1Char('\n'));
        for (const QString &line : present)
            QVERIFY2(text.contains(line), qPrintable(line));
        for (const QString &line : absent)
            QVERIFY2(!text.contains(line), qPrintable(line));
    }

    void nodeIdDefault()
    {
        ProjectBuilder builder;
        builder.line(0, 1).general(QStringLiteral("init_static_variables"), QStringLiteral("1"));
        builder.var(0, 0x2000, QStringLiteral("Own COB-ID"), 7, QStringLiteral("rw"),
                    QStringLiteral("$NODEID+0x180"));
        builder.var(0, 0x2001, QStringLiteral("Same value"), 7, QStringLiteral("rw"), QStringLiteral("384"));
        QTemporaryDir dir;
        const QString text = generated(builder, dir.path());
        QVERIFY(text.contains(QStringLiteral("od_const_u32[1] = {\n\t(UNSIGNED32)384UL};\n")));
        QVERIFY(text.contains(QStringLiteral(
            "od_u32[2]= {\n\t(UNSIGNED32)0UL /* 0x2000:0 */,\n\t(UNSIGNED32)384UL /* 0x2001:0 */};\n")));
    }

    void userHeaderRemoved()
    {
        ProjectBuilder builder;
        builder.line(0, 1).general(QStringLiteral("generate_string_defaults"), QStringLiteral("0"));
        builder.var(0, 0x2000, QStringLiteral("Value"), 5, QStringLiteral("rw"), QStringLiteral("1"));
        QTemporaryDir dir;
        QVERIFY(TestProjects::writeFile(dir.filePath(QStringLiteral("gen_user.h")), "old"));
        QVERIFY(!generated(builder, dir.path()).isEmpty());
        QVERIFY(!QFile::exists(dir.filePath(QStringLiteral("gen_user.h"))));
    }

    void unwritableFolder()
    {
        ProjectBuilder builder;
        builder.line(0, 1);
        builder.var(0, 0x2000, QStringLiteral("Value"), 5, QStringLiteral("rw"), QStringLiteral("1"));
        ObjDictGeneratorV4 generator(false);
        QList<int> progress;
        connect(&generator, &AbstractGenerator::progress, this, [&](quint8 value) { progress << value; });
        QVERIFY(GeneratorRun::run(generator, builder.store(), QStringLiteral("/nonexistent/folder"),
                                    QStringLiteral("device")));
        QCoreApplication::processEvents();
        QVERIFY(!generator.hasFailed());
        QCOMPARE(progress.last(), 100);
    }
};

QTEST_MAIN(TestObjDictGenerator)
#include "tst_objdictgenerator.moc"
