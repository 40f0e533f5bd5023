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

    // --importfile and -dbmod change the project before it is saved and generated.
    void importAndModifierFilesBeforeSaving()
    {
        QTemporaryDir dir;
        ProjectBuilder other;
        other.line(0, 1);
        other.var(0, 0x2100, QStringLiteral("From other"), 6, QStringLiteral("rw"), QStringLiteral("7"));
        const QString otherProject = dir.filePath(QStringLiteral("other.kprj"));
        QVERIFY(other.save(otherProject));

        ProjectBuilder project;
        project.line(0, 1);
        project.var(0, 0x2000, QStringLiteral("Own"), 5, QStringLiteral("rw"), QStringLiteral("1"));
        const QString path = dir.filePath(QStringLiteral("P.kprj"));
        QVERIFY(project.save(path));
        QVERIFY(TestProjects::writeFile(dir.filePath(QStringLiteral("actions.ini")),
                                        "[Projects]\np1=" + otherProject.toUtf8() +
                                            "\n[Actions]\na1=import 1:0 to 0\na2=copy 0:0x2000 to 0 offset 0x400\n"));
        QVERIFY(TestProjects::writeFile(dir.filePath(QStringLiteral("settings.txt")),
                                        "GeneralSettings:co_node_id:9\nJ1939Settings:startaddress:0x22\n"));
        const auto run = TestProjects::runProgram(QStringLiteral("canopen-kestrel"),
                                                  {path, "-hidden", "-now", "--importfile", "actions.ini", "-dbmod",
                                                   "settings.txt", "-s", "-g"},
                                                  dir.path());
        QVERIFY2(run.exitCode == 0, run.standardError.right(3000).constData());
        QVERIFY2(!run.standardError.contains("Import Handler file error"), run.standardError.constData());

        // The project now carries the stamp of the edition that saved it.
        QCoreApplication::setApplicationName(QStringLiteral("CANopen Kestrel"));
        ObjectDataBase result;
        const bool opened = result.openDataBase(path);
        QCoreApplication::setApplicationName(QStringLiteral("J1939 Kestrel"));
        QVERIFY(opened);
        QCOMPARE(result.getIndices(0, 0x2000), (QList<quint16>{0x2000, 0x2100, 0x2400}));
        SUBINDEX_DATA_T imported;
        QVERIFY(result.getSubIndex(0, 0x2100, 0, imported));
        QCOMPARE(imported.defaultvalue, QStringLiteral("7"));
        QCOMPARE(result.getGeneralSetting(QStringLiteral("co_node_id")), QStringLiteral("9"));
        QCOMPARE(result.getJ1939Setting(QStringLiteral("startaddress")), QStringLiteral("0x22"));
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
