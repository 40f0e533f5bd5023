#include "generation/abstractgenerator.h"
#include "generation/generatormainhandler.h"
#include "generation/outputhandlerbase.h"
#include "generation/postgenprogresshandler.h"
#include "support/projectbuilder.h"
#include "support/testprojects.h"
#include "tst_modelcheckerfixture.h"

#include <QSignalSpy>
#include <QTemporaryDir>
#include <QtTest>

using namespace ModelCheckFixture;

namespace {

// No generator exists: a run that passes the check writes nothing but its log.
class NoGenerators : public GeneratorFactory
{
public:
    std::unique_ptr<AbstractGenerator> create(GeneratorKind, const GeneratorOptions &) const override
    {
        return nullptr;
    }
};

class LogSink : public OutputHandlerBase
{
public:
    void output(const QVariant &text) override { entries << text.toString(); }
    void outputPlain(const QVariant &text) override { entries << QStringLiteral("plain:") + text.toString(); }
    QString logText() const override { return entries.join('\n'); }

    QStringList entries;
};

const QString timerMissing =
    QStringLiteral("<strong><font color='red'>Error: </font></strong>Timer interval not set "
                   "in Common Settings -> Hardware/Target.");

QString heading(int line)
{
    return QStringLiteral("plain:<strong>________________________________________ Checking line %1 "
                          "________________________________________</strong>")
        .arg(line);
}

struct Run
{
    QTemporaryDir dir;
    ProjectBuilder project;
    NoGenerators factory;
    LogSink sink;
    GeneratorMainHandler driver{&sink, QSharedPointer<PostGenProgressHandler>::create(), &factory};
    QList<GeneratorMainHandler::GeneratorResult> results;
    QSignalSpy corrections{&driver, &GeneratorMainHandler::doneCorrection};

    Run()
    {
        QObject::connect(&driver, &GeneratorMainHandler::finished,
                         [this](GeneratorMainHandler::GeneratorResult result) { results << result; });
    }

    void generate(bool ignoreCheckErrors)
    {
        driver.setProject(&project.store(), dir.path(), QStringLiteral("P"));
        driver.generate(ignoreCheckErrors);
    }

    QString errorLog() const { return dir.filePath(QStringLiteral("__kesterrorlog.txt")); }
    QString backup() const { return errorLog() + QStringLiteral(".bak"); }
    // The log as it stood before the given entry.
    QString logBefore(const QString &entry) const
    {
        const qsizetype end = sink.entries.indexOf(entry);
        return sink.entries.mid(0, end).join('\n');
    }
};

} // namespace

// The check inside a generation run: what stops the run, what is logged, what is saved.
class TestModelCheckerDriver : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { setApplication(); }
    void init() { userSettings().clear(); }

    void failingCheckStopsTheRun()
    {
        Run run;
        cleanJ1939(run.project);
        run.generate(false);
        const QString abort =
            QStringLiteral("ABORT - Check of model consistency finished: failed (1 errors)");
        QCOMPARE(run.results,
                 QList<GeneratorMainHandler::GeneratorResult>{GeneratorMainHandler::CheckFailed});
        QCOMPARE(run.sink.entries,
                 (QStringList{"\nCheck of model consistency started", timerMissing, abort}));
        QCOMPARE(QString::fromUtf8(TestProjects::readFile(run.errorLog())), run.logBefore(abort));
        QVERIFY(!QFile::exists(run.backup()));
        QCOMPARE(run.corrections.count(), 0);
    }

    void disabledCheckLetsTheRunGoOn()
    {
        Run run;
        cleanJ1939(run.project);
        run.generate(true);
        const QString finished = QStringLiteral("\nCheck of model consistency finished.\n");
        QCOMPARE(run.results, QList<GeneratorMainHandler::GeneratorResult>{GeneratorMainHandler::Done});
        QCOMPARE(run.sink.entries.mid(0, 3),
                 (QStringList{"\nCheck of model consistency started", timerMissing, finished}));
        QVERIFY(run.sink.entries.contains(QStringLiteral("Generation finished.")));
        QVERIFY(!QFile::exists(run.errorLog()));
        QCOMPARE(QString::fromUtf8(TestProjects::readFile(run.backup())), run.logBefore(finished));
    }

    void passingCheckKeepsTheFirstBackup()
    {
        Run run;
        cleanJ1939(run.project);
        run.project.general(QStringLiteral("co_timer_interval"), QStringLiteral("10000"));
        QVERIFY(TestProjects::writeFile(run.backup(), "earlier"));
        run.generate(false);
        QCOMPARE(run.results, QList<GeneratorMainHandler::GeneratorResult>{GeneratorMainHandler::Done});
        QCOMPARE(run.sink.entries.mid(0, 2), (QStringList{"\nCheck of model consistency started",
                                                          "\nCheck of model consistency finished.\n"}));
        QVERIFY(!QFile::exists(run.errorLog()));
        QCOMPARE(TestProjects::readFile(run.backup()), QByteArray("earlier"));
    }

    void errorsOfAllLinesAddUpUnderTheirHeadings()
    {
        Run run;
        cleanJ1939(run.project, 0);
        cleanJ1939(run.project, 1);
        run.project.store().setLineJ1939Setting(QStringLiteral("startaddress"), QString(), 1);
        run.generate(false);
        const QString address = QStringLiteral(
            "<strong>Error: </strong>An address needs to defined in the J1939 configuration for line 1.");
        QCOMPARE(run.sink.entries,
                 (QStringList{"\nCheck of model consistency started", timerMissing, "plain:", heading(0),
                              "plain:", heading(1), address,
                              "ABORT - Check of model consistency finished: failed (2 errors)"}));
        QCOMPARE(run.results,
                 QList<GeneratorMainHandler::GeneratorResult>{GeneratorMainHandler::CheckFailed});
    }

    void correctionsAreHandedToTheProject()
    {
        const QString stack = stackFolder();
        Run run;
        cleanProject(run.project, stack, {1, 1});
        run.project.general(QStringLiteral("co_timer_interval"), QString());
        for (const quint8 line : {0, 1})
            object(run.project, 0x2000, QStringLiteral("Values"), 8,
                   {entry(QStringLiteral("Count"), 5, QStringLiteral("ro"), QStringLiteral("0")),
                    entry(QStringLiteral("Value"), 6, QStringLiteral("rw"), QStringLiteral("0"))},
                   line);
        run.generate(false);
        QDir(stack).removeRecursively();
        const QString corrected =
            QStringLiteral("<i>Corrected: Object 0x2000</i>: The value of subindex 0 does not "
                           "fit to the highest subindex.");
        QCOMPARE(run.sink.entries,
                 (QStringList{"\nCheck of model consistency started", timerMissing, "plain:", heading(0),
                              corrected, "plain:", heading(1), corrected,
                              "ABORT - Check of model consistency finished: failed (1 errors)"}));
        QCOMPARE(run.corrections.count(), 1);
        QCOMPARE(run.project.store().getSubIndexDefaultValue(0, 0x2000, 0), QStringLiteral("1"));
        QCOMPARE(run.project.store().getSubIndexDefaultValue(1, 0x2000, 0), QStringLiteral("1"));
    }
};

QTEST_MAIN(TestModelCheckerDriver)
#include "tst_modelcheckerdriver.moc"
