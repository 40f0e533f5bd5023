#include "importers/databasemodifier.h"
#include "importers/importhandler.h"
#include "importers/kprjimporter.h"
#include "support/projectbuilder.h"
#include "support/testprojects.h"

#include <QTemporaryDir>
#include <QtTest>

namespace {

QString write(const QTemporaryDir &dir, const QString &name, const QByteArray &text)
{
    const QString path = dir.filePath(name);
    TestProjects::writeFile(path, text);
    return path;
}

// A project with objects 0x2000, 0x2001 and 0x2100 on line 0 and 0x2200 on line 1.
void source(ProjectBuilder &project)
{
    project.line(0, 1).line(1, 1);
    project.var(0, 0x2000, QStringLiteral("First"), 5, QStringLiteral("rw"), QStringLiteral("1"))
        .var(0, 0x2001, QStringLiteral("Second"), 6, QStringLiteral("rw"), QStringLiteral("2"))
        .var(0, 0x2100, QStringLiteral("Third"), 7, QStringLiteral("ro"), QStringLiteral("3"))
        .var(1, 0x2200, QStringLiteral("Other line"), 5, QStringLiteral("rw"), QStringLiteral("4"));
}

QString nameOf(ObjectDataBase &store, quint8 line, quint16 index)
{
    INDEX_DATA_T data;
    return store.getIndex(line, index, data) ? data.name : QString();
}

struct Run
{
    bool result = false;
    QString error;
};

Run apply(ObjectDataBase &store, const QString &file)
{
    ImportHandler handler(&store);
    Run run;
    run.result = handler.setImportFile(file) && handler.applyImportFile();
    run.error = handler.errorText();
    return run;
}

} // namespace

class TestImportHandler : public QObject
{
    Q_OBJECT

private slots:
    void copyAndDeleteWithoutProjects()
    {
        QTemporaryDir dir;
        ProjectBuilder project;
        source(project);
        const QString file = write(dir, QStringLiteral("actions.ini"),
                                   "[Actions]\n"
                                   "a1=copy 0:0x2000-0x2001 to 1 offset 0x10\n"
                                   "a2=delete 0:0x2000\n"
                                   "a3=delete 0:0x2100-0x2000\n"
                                   "b1=delete 0:0x2001\n");
        const Run run = apply(project.store(), file);
        QVERIFY(run.result);
        QCOMPARE(run.error, QStringLiteral("No projects found."));
        QCOMPARE(project.store().getIndices(0), (QList<quint16>{0x2001, 0x2100}));
        QCOMPARE(project.store().getIndices(1), (QList<quint16>{0x2010, 0x2011, 0x2200}));
        QCOMPARE(nameOf(project.store(), 1, 0x2011), QStringLiteral("Second"));
    }

    void keysRunInSortedOrder()
    {
        // "a10" sorts before "a2": the copy runs before the delete and finds its object.
        QTemporaryDir dir;
        ProjectBuilder project;
        source(project);
        const QString file = write(dir, QStringLiteral("order.ini"),
                                   "[Actions]\na2=delete 0:0x2000\na10=copy 0:0x2000 to 0 offset 0x500\n");
        QVERIFY(apply(project.store(), file).result);
        QCOMPARE(project.store().getIndices(0), (QList<quint16>{0x2001, 0x2100, 0x2500}));
    }

    void failuresAndResult()
    {
        QTemporaryDir dir;
        ProjectBuilder project;
        source(project);
        const QString failing = write(dir, QStringLiteral("failing.ini"),
                                      "[Actions]\na1=copy 0:0x3000 to 1\na2=copy 0:0x3001 to 1\n");
        const Run failed = apply(project.store(), failing);
        QVERIFY(!failed.result);
        QCOMPARE(failed.error, QStringLiteral("copy 0:0x3001 to 1 failed"));

        const QString recovering = write(dir, QStringLiteral("recovering.ini"),
                                         "[Actions]\na1=copy 0:0x3000 to 1\na2=copy 0:0x2000 to 1\n"
                                         "a3=bogus 1:2\na4=delete\n");
        const Run recovered = apply(project.store(), recovering);
        QVERIFY(recovered.result);
        QCOMPARE(recovered.error, QStringLiteral("copy 0:0x3000 to 1 failed"));
    }

    void fileChecks_data()
    {
        QTest::addColumn<QByteArray>("content");
        QTest::addColumn<QString>("error");
        QTest::newRow("too small") << QByteArray("[A]\na=1\n") << "File too small";
        QTest::newRow("one key only") << QByteArray("[Actions]\na1=delete 0:0x2000\n") << "Invalid file structure";
    }

    void fileChecks()
    {
        QFETCH(QByteArray, content);
        QFETCH(QString, error);
        QTemporaryDir dir;
        ProjectBuilder project;
        ImportHandler handler(&project.store());
        QVERIFY(!handler.setImportFile(dir.filePath(QStringLiteral("missing.ini"))));
        QCOMPARE(handler.errorText(), QString());
        QVERIFY(!handler.setImportFile(write(dir, QStringLiteral("f.ini"), content)));
        QCOMPARE(handler.errorText(), error);
    }

    void importFromProjects_data()
    {
        QTest::addColumn<bool>("deleteObjects");
        QTest::addColumn<QString>("offset");
        QTest::addColumn<QList<quint16>>("expected");
        QTest::newRow("replace, keep the rest") << false << "" << QList<quint16>{0x1000, 0x2000, 0x2001, 0x2100, 0x2300};
        QTest::newRow("exactly the source") << true << "" << QList<quint16>{0x2000, 0x2001, 0x2100};
        QTest::newRow("with offset") << false << " offset 0x100"
                                     << QList<quint16>{0x1000, 0x2000, 0x2100, 0x2101, 0x2200, 0x2300};
    }

    void importFromProjects()
    {
        QFETCH(bool, deleteObjects);
        QFETCH(QString, offset);
        QFETCH(QList<quint16>, expected);
        QTemporaryDir dir;
        ProjectBuilder other;
        source(other);
        const QString otherPath = dir.filePath(QStringLiteral("other.kprj"));
        QVERIFY(other.save(otherPath));

        ProjectBuilder project;
        project.line(0, 1);
        project.var(0, 0x1000, QStringLiteral("Device type"), 7, QStringLiteral("ro"), QStringLiteral("0"))
            .var(0, 0x2000, QStringLiteral("Old first"), 5, QStringLiteral("rw"), QStringLiteral("9"))
            .var(0, 0x2300, QStringLiteral("Own"), 5, QStringLiteral("rw"), QStringLiteral("9"));
        const QString file =
            write(dir, QStringLiteral("import.ini"),
                  QStringLiteral("[Projects]\np1=%1\np2=%2\n[Options]\ndelete_objects=%3\n[Actions]\n"
                                 "a1=import 1:0 to 0%4\n")
                      .arg(otherPath, dir.filePath(QStringLiteral("missing.kprj")),
                           deleteObjects ? QStringLiteral("true") : QStringLiteral("false"), offset)
                      .toUtf8());
        const Run run = apply(project.store(), file);
        QVERIFY(run.result);
        QCOMPARE(project.store().getIndices(0), expected);
        const quint16 shift = offset.isEmpty() ? 0 : 0x100;
        QCOMPARE(nameOf(project.store(), 0, quint16(0x2001 + shift)), QStringLiteral("Second"));
        SUBINDEX_DATA_T value;
        QVERIFY(project.store().getSubIndex(0, quint16(0x2100 + shift), 0, value));
        QCOMPARE(value.defaultvalue, QStringLiteral("3"));
    }

    void importOfUnknownProjectFails()
    {
        QTemporaryDir dir;
        ProjectBuilder project;
        source(project);
        const QString file = write(dir, QStringLiteral("import.ini"),
                                   "[Projects]\np1=/nonexistent.kprj\n[Actions]\na1=import 1:0 to 0\n");
        const Run run = apply(project.store(), file);
        QVERIFY(!run.result);
        QCOMPARE(run.error, QStringLiteral("import 1:0 to 0 failed"));
        QCOMPARE(project.store().getIndices(0), (QList<quint16>{0x2000, 0x2001, 0x2100}));
    }

    // The project importer fills the scratch line from the chosen source line, within the range.
    void projectImporterTakesOneLine()
    {
        QTemporaryDir dir;
        ProjectBuilder other;
        source(other);
        other.line(1, 7);
        other.pgn(1, 0x2010, Direction::Receive, QStringLiteral("Request"));
        other.var(1, 0x2300, QStringLiteral("Outside"), 5, QStringLiteral("rw"), QStringLiteral("0"));
        const QString path = dir.filePath(QStringLiteral("other.kprj"));
        QVERIFY(other.save(path));

        ProjectBuilder scratch;
        scratch.store().addNode(ObjectDataBase::ScratchLine, NODE_DATA_T());
        KprjImporter importer;
        importer.setSourceLine(1);
        importer.setLine(0);
        importer.setDatabase(&scratch.store());
        importer.setIndexRange(0x2000, 0x22FF);
        importer.setDirection(Direction::Receive);
        QVERIFY(importer.setFileName(path));
        QVERIFY(importer.start());
        importer.wait();
        QCOMPARE(scratch.store().getIndices(ObjectDataBase::ScratchLine), QList<quint16>{0x2200});
        QCOMPARE(scratch.store().getIndices(0), QList<quint16>());
        QCOMPARE(scratch.store().getPGNs(ObjectDataBase::ScratchLine, Direction::Receive), QList<quint32>{0x2010});
    }

    void modifierWritesOnlySettings()
    {
        QTemporaryDir dir;
        ProjectBuilder project;
        project.line(0, 2);
        const QString file = write(dir, QStringLiteral("mod.txt"),
                                   "# settings of the board\n\n"
                                   "GeneralSettings:co_node_id:5\n"
                                   "GeneralSettings:a:b:c\n"
                                   "Objects0:name:x\n"
                                   "J1939Settings:startaddress:0x80\n");
        DatabaseModifier modifier(&project.store());
        QVERIFY(modifier.setModifierFile(file));
        QVERIFY(modifier.applyModifierFile());
        QCOMPARE(project.store().getGeneralSetting(QStringLiteral("co_node_id")), QStringLiteral("5"));
        QCOMPARE(project.store().getGeneralSetting(QStringLiteral("a")), QString());
        QCOMPARE(project.store().getJ1939Setting(QStringLiteral("startaddress")), QStringLiteral("0x80"));

        DatabaseModifier empty(&project.store());
        QVERIFY(!empty.setModifierFile(write(dir, QStringLiteral("small.txt"), "G:a:b\n")));
        QVERIFY(empty.setModifierFile(write(dir, QStringLiteral("none.txt"), "# nothing to change here\n")));
        QVERIFY(!empty.applyModifierFile());
    }
};

QTEST_GUILESS_MAIN(TestImportHandler)
#include "tst_importhandler.moc"
