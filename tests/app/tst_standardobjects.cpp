#include "app/kestrelmainwindow.h"
#include "store/objectdatabase.h"

#include <QFile>
#include <QtTest>

// The catalogue of standard objects that the program loads at start, on a thread of its own.
class TestStandardObjects : public QObject
{
    Q_OBJECT

private slots:
    void catalogueFillsLineOfStandardStore_data()
    {
        QTest::addColumn<QString>("resource");
        QTest::addColumn<bool>("j1939");
        QTest::newRow("CiA 301 catalogue") << ":/codb/v301.codb" << false;
        QTest::newRow("J1939 edition with the CiA 302 catalogue") << ":/codb/v302.codb" << true;
    }

    void catalogueFillsLineOfStandardStore()
    {
        QFETCH(QString, resource);
        QFETCH(bool, j1939);
        ObjectDataBase project;
        project.createNewDataBase();
        project.addNode(0, NODE_DATA_T());
        ObjectDataBase standard;
        standard.createNewDataBase();
        standard.addNode(0, NODE_DATA_T());
        KestrelMainWindow window(QStringList{QStringLiteral("prog")});
        window.setProjectDatabase(&project);
        window.setStandardObjectDatabase(&standard);

        QElapsedTimer started;
        started.start();
        if (j1939)
            window.startStandardObjectImportJ1939();
        else
            window.startStandardObjectImport();
        // The window goes on at once; the importer works on its own thread.
        QVERIFY(started.elapsed() < 1000);

        QFile catalogue(resource);
        QVERIFY(catalogue.open(QIODevice::ReadOnly | QIODevice::Text));
        QSet<QString> objects;
        const QStringList lines = QString::fromUtf8(catalogue.readAll()).split('\n');
        for (const QString &line : lines) {
            if (line.startsWith('$'))
                objects.insert(line.mid(1, 4).toUpper());
            else if (line.indexOf(QLatin1String("::")) == 4)
                objects.insert(line.left(4).toUpper());
        }
        QTRY_COMPARE_WITH_TIMEOUT(standard.getIndices(ObjectDataBase::ScratchLine).size(), objects.size(), 30000);
        QVERIFY(standard.indexExists(ObjectDataBase::ScratchLine, 0x1018));
        QCOMPARE(standard.indexExists(ObjectDataBase::ScratchLine, 0x1F81), j1939);
        QVERIFY(project.getIndices(0).isEmpty());
    }
};

QTEST_MAIN(TestStandardObjects)
#include "tst_standardobjects.moc"
