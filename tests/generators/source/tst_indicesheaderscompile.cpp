#include "generators/source/extdeclgenerator.h"
#include "generatorrun.h"
#include "generators/source/extdeclgeneratorv4.h"
#include "generators/source/indicationgenerator.h"
#include "generators/source/indicationgeneratorv4.h"
#include "generators/source/indicesgenerator.h"
#include "headerprojects.h"
#include "stackcompiler.h"
#include "support/projectbuilder.h"
#include "support/testprojects.h"

#include <QTemporaryDir>
#include <QtTest>

namespace {

// Configuration that the minimal stack headers read: the line count and every static UDS indication.
QStringList genDefineLines(int lineCount)
{
    QStringList lines;
    if (lineCount > 1) {
        lines << QStringLiteral("#define CAN_MULTI_LINE\t1u")
              << QStringLiteral("#define CAN_MULTI_LINE_CNT\t%1u").arg(lineCount);
    }
    for (const char *guard :
         {"UDS_EVENT_STATIC_CHECK_REQ_SESSION", "UDS_EVENT_STATIC_CLEAR_DTC_INFO",
          "UDS_EVENT_STATIC_DTC_INFO", "UDS_EVENT_STATIC_ID_DATA_TRANSMIT",
          "UDS_EVENT_STATIC_MEM_DATA_TRANSMIT", "UDS_EVENT_STATIC_SEC_ACCESS_REQ_KEY",
          "UDS_EVENT_STATIC_REQ_COMMGT", "UDS_EVENT_STATIC_AUTHENT_REQ", "UDS_EVENT_STATIC_IOCTRL",
          "UDS_EVENT_STATIC_ROUTINE_CTRL", "UDS_EVENT_STATIC_DATA_TRANSFER", "UDS_EVENT_STATIC_GENERIC_FCT"})
        lines << QStringLiteral("#define %1\t1u").arg(QLatin1String(guard));
    return lines;
}

} // namespace

// The headers that a run writes for each project include, in the order of a protocol source, without
// a complaint of the compiler; gen_var_decl.c compiles with and without its variables.
class TestIndicesHeadersCompile : public QObject
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
        QTest::addColumn<bool>("currentFamily");
        for (const auto &project : HeaderProjects::projects()) {
            QTest::addRow("%s, current family", project.name) << QString::fromLatin1(project.name) << true;
            QTest::addRow("%s, older family", project.name) << QString::fromLatin1(project.name) << false;
        }
    }

    void compile()
    {
        QFETCH(QString, project);
        QFETCH(bool, currentFamily);
        const HeaderProjects::Project *definition = HeaderProjects::find(project);
        ProjectBuilder builder;
        definition->build(builder);
        ObjectDataBase &store = builder.store();
        QTemporaryDir dir;

        IndicesGenerator indices;
        indices.setLines(store.getLines());
        indices.setMultiLine(true);
        QVERIFY(GeneratorRun::run(indices, store, dir.path(), project, true));
        QString source = QStringLiteral("#include <gen_define.h>\n#include <co_canopen.h>\n");
        if (currentFamily)
            source += QStringLiteral(
                "#include <core_isotp.h>\n#include <uds_uds.h>\n#include <uds_indication.h>\n");
        if (definition->indications) {
            std::unique_ptr<AbstractGenerator> indication;
            if (currentFamily)
                indication = std::make_unique<indicationgeneratorv4>();
            else
                indication = std::make_unique<indicationgenerator>();
            QVERIFY(GeneratorRun::run(*indication, store, dir.path(), project));
            source += QStringLiteral("#include <gen_indication.h>\n");
        }
        if (definition->declarations) {
            std::unique_ptr<AbstractGenerator> declarations;
            if (currentFamily)
                declarations = std::make_unique<ExtDeclGeneratorV4>();
            else
                declarations = std::make_unique<ExtDeclGenerator>();
            QVERIFY(GeneratorRun::run(*declarations, store, dir.path(), project));
            source += QStringLiteral("#include <gen_extern_decl.h>\n");
        }
        source += QStringLiteral("#include <gen_indices.h>\n");
        QVERIFY(StackCompiler::writeGenDefine(dir.path(), genDefineLines(int(store.getLines().size()))));

        QString messages;
        QVERIFY2(StackCompiler::compile(dir.path(), QStringLiteral("stack.c"), source, {}, &messages),
                 qPrintable(messages));
        if (!definition->declarations)
            return;
        const QString definitions =
            QString::fromUtf8(TestProjects::readFile(dir.filePath(QStringLiteral("gen_var_decl.c"))));
        QVERIFY2(StackCompiler::compile(dir.path(), QStringLiteral("vardecl.c"), definitions, {}, &messages),
                 qPrintable(messages));
        QVERIFY2(StackCompiler::compile(dir.path(), QStringLiteral("vardecl.c"), definitions,
                                        {QStringLiteral("-DKJN_USE_GENERATED_VARIABLES")}, &messages),
                 qPrintable(messages));
    }
};

QTEST_MAIN(TestIndicesHeadersCompile)
#include "tst_indicesheaderscompile.moc"
