#include "edsreference.h"
#include "store/objectdatabase.h"
#include "support/projectbuilder.h"
#include "support/testprojects.h"

#include <QTemporaryDir>
#include <QtTest>

// The -i step of the built program: a device description of another tool goes into line 0 of the project,
// and -s saves it. A run without -g does not end by itself; the run is stopped after the time that the
// import and the save need.
class TestEdsBatchImport : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { QCoreApplication::setApplicationName(QStringLiteral("CANopen Kestrel")); }

    void savedProjectHoldsTheFile_data()
    {
        QTest::addColumn<QString>("file");
        const QStringList files = EdsReference::testFiles();
        QVERIFY(!files.isEmpty());
        for (const QString &file : files)
            QTest::newRow(qPrintable(QFileInfo(file).fileName())) << file;
    }

    void savedProjectHoldsTheFile()
    {
        QFETCH(QString, file);
        QString error;
        const QJsonObject reading = EdsReference::read(file, error);
        QVERIFY2(!reading.isEmpty(), qPrintable(error));

        QTemporaryDir dir;
        ProjectBuilder project;
        project.line(0, 1);
        const QString path = dir.filePath(QStringLiteral("device.kprj"));
        QVERIFY(project.save(path));
        const auto run =
            TestProjects::runProgram(QStringLiteral("canopen-kestrel"),
                                     {path, "-hidden", "-now", "-i", file, "-s"}, dir.path(), 30000);
        QVERIFY2(run.standardError.contains("try to import"), run.standardError.right(2000));

        ObjectDataBase saved;
        QVERIFY(saved.openDataBase(path));
        QVERIFY(!saved.getIndices(0).isEmpty());
        QCOMPARE(EdsReference::differences(saved, 0, reading), QStringList());
    }
};

QTEST_GUILESS_MAIN(TestEdsBatchImport)
#include "tst_edsbatchimport.moc"
