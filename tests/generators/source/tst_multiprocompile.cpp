#include "multiproprojects.h"
#include "stackcompiler.h"
#include "support/projectbuilder.h"
#include "support/testprojects.h"

#include <QDir>
#include <QTemporaryDir>
#include <QtTest>

// Every multi-protocol source of the test projects compiles as C99 against the minimal stack headers,
// together with the gen_define.h, gen_extern_decl.h and gen_indication.h of the same run.
class TestMultiProCompile : public QObject
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
        for (const auto &project : MultiProProjects::projects()) {
            QTest::newRow(project.name) << QString::fromLatin1(project.name) << false;
            // The older generation has no bootloader projects.
            if (QLatin1String(project.name) != QLatin1String("bootloader"))
                QTest::newRow(qPrintable(QStringLiteral("%1, older family").arg(QLatin1String(project.name))))
                << QString::fromLatin1(project.name) << true;
        }
    }

    void compile()
    {
        QFETCH(QString, project);
        QFETCH(bool, older);
        ProjectBuilder builder;
        MultiProProjects::build(*MultiProProjects::find(project), builder, older);
        QTemporaryDir dir;
        QVERIFY(MultiProProjects::generate(builder.store(), dir.path()));
        QVERIFY(TestProjects::writeFile(dir.filePath(QStringLiteral("app.h")), "extern UNSIGNED16 speed;\n"));
        const QStringList sources = QDir(dir.path()).entryList(
            {QStringLiteral("gen_mp.c"), QStringLiteral("gen_rawcan.c"), QStringLiteral("gen_uds.c")}, QDir::Files);
        QCOMPARE(sources.size(), 1);
        const QString source = QString::fromUtf8(TestProjects::readFile(dir.filePath(sources.first())));
        QStringList arguments{QStringLiteral("-std=c99")};
        if (older)
            arguments << QStringLiteral("-DKESTREL_OLDER_STACK") << QStringLiteral("-DCO_STACK_GENERATION_OLDER");
        QString messages;
        QVERIFY2(StackCompiler::compile(dir.path(), QStringLiteral("source.c"), source, arguments, &messages),
                 qPrintable(messages));
    }
};

QTEST_MAIN(TestMultiProCompile)
#include "tst_multiprocompile.moc"
