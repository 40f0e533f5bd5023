#include "generators/source/codefinegenerator.h"
#include "generatorrun.h"
#include "generators/source/gendefinegenerator.h"
#include "generators/source/indicationgenerator.h"
#include "generators/source/indicationgeneratorv4.h"
#include "headerprojects.h"
#include "stackcompiler.h"
#include "support/projectbuilder.h"
#include "support/testprojects.h"
#include "tst_objdictprojects.h"

#include <QTemporaryDir>
#include <QtTest>

#include <memory>

namespace {

// The application's side of the test devices: the variables that the dictionaries point to, and the
// headers of the J1939 stack that a CAM mode file includes.
const char applicationHeader[] = "#include <string.h>\n"
                                 "extern UNSIGNED8 appU8;\n"
                                 "extern UNSIGNED16 appTable[4];\n"
                                 "extern UNSIGNED24 appU24;\n"
                                 "extern struct { UNSIGNED32 value; } appStruct;\n"
                                 "extern char appName[16];\n"
                                 "extern OCTET_STRING appOctets[4];\n"
                                 "extern char appText[6];\n";

} // namespace

// gen_objdict.c, gen_vobjdict.c and gen_user.h of every test device compile with the gen_define.h and
// gen_indication.h of the same run against the minimal stack headers; a table longer than the array
// its configuration sizes makes the compiler fail.
class TestObjDictCompile : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase()
    {
        TestProjects::setGeneratorApplication();
        if (!StackCompiler::available())
            QSKIP("no C compiler");
    }

    void compile_data()
    {
        QTest::addColumn<QString>("project");
        QTest::addColumn<bool>("older");
        for (const auto &project : ObjDictProjects::projects()) {
            QTest::addRow("%s, current family", project.name) << QString::fromLatin1(project.name) << false;
            QTest::addRow("%s, older family", project.name) << QString::fromLatin1(project.name) << true;
        }
    }

    void compile()
    {
        QFETCH(QString, project);
        QFETCH(bool, older);
        const ObjDictProjects::Project *definition = ObjDictProjects::find(project);
        ProjectBuilder builder;
        definition->build(builder);
        builder.general(QStringLiteral("use_core_headers"),
                        older ? QStringLiteral("1") : QStringLiteral("V4"));
        ObjectDataBase &store = builder.store();
        QTemporaryDir dir;

        std::unique_ptr<AbstractGenerator> define;
        std::unique_ptr<AbstractGenerator> indication;
        if (older) {
            define = std::make_unique<CoDefineGenerator>();
            indication = std::make_unique<indicationgenerator>();
        } else {
            define = std::make_unique<GenDefineGenerator>();
            indication = std::make_unique<indicationgeneratorv4>();
        }
        define->setHasJ1939(definition->camMode);
        QVERIFY(GeneratorRun::run(*define, store, dir.path(), project));
        QVERIFY(GeneratorRun::run(*indication, store, dir.path(), project));
        QVERIFY(ObjDictProjects::generate(store, *definition, older, dir.path()));
        QVERIFY(TestProjects::writeFile(dir.filePath(QStringLiteral("app_vars.h")), applicationHeader));
        for (const char *stub : {"co_odaccess.h", "j1939_cam11_cam21.h"})
            QVERIFY(TestProjects::writeFile(dir.filePath(QLatin1String(stub)), "/* not needed here */\n"));

        // The memory specifier of a test device is one that the target's compiler knows.
        QStringList arguments{QStringLiteral("-std=c99"), QStringLiteral("-Dfar=")};
        if (older)
            arguments << QStringLiteral("-DCO_STACK_GENERATION_OLDER");
        const QString prelude = QStringLiteral("#include <gen_define.h>\n#include <co_canopen.h>\n"
                                               "#include <co_objdict_decl.h>\n");
        for (const QString &file : ObjDictProjects::writtenFiles(dir.path())) {
            if (!file.endsWith(QLatin1String(".c")) && file != QLatin1String("gen_user.h"))
                continue;
            QString messages;
            QVERIFY2(StackCompiler::compile(dir.path(), QStringLiteral("unit_") + file + QStringLiteral(".c"),
                                            prelude + QStringLiteral("#include \"%1\"\n").arg(file),
                                            arguments, &messages),
                     qPrintable(file + QLatin1Char('\n') + messages));
        }
    }
};

QTEST_MAIN(TestObjDictCompile)
#include "tst_objdictcompile.moc"
