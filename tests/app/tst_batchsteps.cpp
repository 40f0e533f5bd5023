#include "store/objectdatabase.h"
#include "support/projectbuilder.h"
#include "support/testprojects.h"

#include <QTemporaryDir>
#include <QtTest>

class TestBatchSteps : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase()
    {
        QCoreApplication::setApplicationName(QStringLiteral("J1939 Kestrel"));
        // The projects here carry only what each step needs, not a device that passes the model check.
        QVERIFY(TestProjects::allowFailingModelCheck());
    }

    // -j takes over the PGNs and SPNs of another project on every line the project has.
    void projectImportTakesOverParameterGroups()
    {
        QTemporaryDir dir;
        ProjectBuilder source;
        source.line(0, 2).line(1, 2).line(2, 2);
        source.pgn(0, 65262, Direction::Transmit, QStringLiteral("ET1"));
        source.spn(0, 65262, Direction::Transmit, 110, QStringLiteral("Coolant"), 5, 0, 0);
        source.pgn(0, 65265, Direction::Receive, QStringLiteral("CCVS"));
        source.spn(0, 65265, Direction::Receive, 84, QStringLiteral("Speed"), 6, 0, 8);
        source.pgn(1, 61444, Direction::Transmit, QStringLiteral("EEC1"));
        source.pgn(2, 65000, Direction::Transmit, QStringLiteral("not taken"));
        const QString sourceProject = dir.filePath(QStringLiteral("S.kprj"));
        QVERIFY(source.save(sourceProject));

        ProjectBuilder target;
        target.line(0, 2).line(1, 2);
        target.pgn(0, 65262, Direction::Transmit, QStringLiteral("old name"));
        target.pgn(0, 1234, Direction::Transmit, QStringLiteral("own"));
        const QString targetProject = dir.filePath(QStringLiteral("T.kprj"));
        QVERIFY(target.save(targetProject));

        const auto run = TestProjects::runProgram(
            QStringLiteral("j1939-kestrel"), {targetProject, "-hidden", "-now", "-j", sourceProject, "-s", "-g"},
            dir.path());
        QCOMPARE(run.exitCode, 0);

        ObjectDataBase result;
        QVERIFY(result.openDataBase(targetProject));
        QCOMPARE(result.getLines(), (QList<quint8>{0, 1}));
        QCOMPARE(result.getPGNs(0, Direction::Transmit), (QList<quint32>{1234, 65262}));
        QCOMPARE(result.getPGNName(0, 65262, Direction::Transmit), QStringLiteral("ET1"));
        QCOMPARE(result.getSPNs(0, 65262, Direction::Transmit), QList<quint32>{110});
        QCOMPARE(result.getPGNs(0, Direction::Receive), QList<quint32>{65265});
        QCOMPARE(result.getSPNs(0, 65265, Direction::Receive), QList<quint32>{84});
        QCOMPARE(result.getPGNs(1, Direction::Transmit), QList<quint32>{61444});
        QVERIFY(QFile::exists(dir.filePath(QStringLiteral("gen_define.h"))));
    }

    void stepsThatFindNothingAreQuiet()
    {
        QTemporaryDir dir;
        ProjectBuilder project;
        project.line(0, 2);
        const QString path = dir.filePath(QStringLiteral("P.kprj"));
        QVERIFY(project.save(path));
        QVERIFY(TestProjects::writeFile(dir.filePath(QStringLiteral("file.xyz")), "x"));
        const auto run = TestProjects::runProgram(
            QStringLiteral("j1939-kestrel"),
            {path, "-hidden", "-now", "-i", "file.xyz", "-j", "missing.kprj", "--importfile", "missing.txt", "-g"},
            dir.path());
        QCOMPARE(run.exitCode, 0);
        QVERIFY(run.standardError.contains("try to import"));
        QVERIFY(run.standardError.contains("Import Handler file: "));
        QVERIFY(run.standardError.contains("does not exist"));
        QVERIFY(run.standardError.contains("Generation finished."));
    }
};

QTEST_GUILESS_MAIN(TestBatchSteps)
#include "tst_batchsteps.moc"
