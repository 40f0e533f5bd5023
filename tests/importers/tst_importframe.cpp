#include "importers/commandlineimport.h"
#include "importers/edsimporter.h"
#include "importers/objectimportrules.h"
#include "store/objectdatabase.h"
#include "support/projectbuilder.h"
#include "support/testprojects.h"

#include <QSignalSpy>
#include <QTemporaryDir>
#include <QtTest>

namespace {

constexpr quint8 scratch = ObjectDataBase::ScratchLine;
using Implementation = ObjectImportRules::Implementation;

const QByteArray smallEds = "[2000]\nParameterName=Speed\nDataType=6\nAccessType=rw\nDefaultValue=1\n"
                            "[C000]\nParameterName=Outside\nDataType=5\nAccessType=rw\n";

QString writeFile(const QTemporaryDir &dir, const char *name, const QByteArray &content)
{
    const QString path = dir.filePath(QLatin1String(name));
    TestProjects::writeFile(path, content);
    return path;
}

// A scratch line holding one object of each kind, as a read leaves it for the dialog.
void fillScratch(ProjectBuilder &source)
{
    source.line(scratch, 1);
    INDEX_DATA_T marked;
    marked.name = QStringLiteral("Motor Speed-Set");
    marked.device_class = QStringLiteral("rpdo");
    marked.fwsupported = true;
    SUBINDEX_DATA_T speed = ProjectBuilder::subRecord(QStringLiteral("Motor Speed-Set"), 6,
                                                      QStringLiteral("rw"), QStringLiteral("1"));
    speed.varname = QStringLiteral("old_name");
    speed.implementation = 2;
    speed.changedbyuser = true;
    speed.wizardsource = 454;
    source.object(scratch, 0x2000, marked).sub(scratch, 0x2000, 0, speed);
    source.object(scratch, 0x2001, QStringLiteral("Serial"), 7, 9)
        .sub(scratch, 0x2001, 0, QStringLiteral("Serial"), 9, QStringLiteral("ro"), QStringLiteral("abc"));
    source.object(scratch, 0x2002, QStringLiteral("Label"), 7, 9)
        .sub(scratch, 0x2002, 0, QStringLiteral("Label"), 9, QStringLiteral("rw"), QStringLiteral("x"));
    source.object(scratch, 0x2100, QStringLiteral("Out Values"), 8, 5)
        .sub(scratch, 0x2100, 0, QStringLiteral("Count"), 5, QStringLiteral("ro"), QStringLiteral("9"))
        .sub(scratch, 0x2100, 1, QStringLiteral("First"), 5, QStringLiteral("rw"), QStringLiteral("1"))
        .sub(scratch, 0x2100, 3, QStringLiteral("Third"), 15, QStringLiteral("rw"), QString());
    source.object(scratch, 0x2200, QStringLiteral("Drive Data"), 9)
        .sub(scratch, 0x2200, 0, QStringLiteral("Count"), 5, QStringLiteral("ro"), QStringLiteral("9"))
        .sub(scratch, 0x2200, 2, QStringLiteral("Top Speed"), 6, QStringLiteral("rw"), QStringLiteral("1"));
    source.object(scratch, 0x1600, QStringLiteral("RPDO mapping"), 9)
        .sub(scratch, 0x1600, 0, QStringLiteral("Count"), 5, QStringLiteral("rw"), QStringLiteral("1"))
        .sub(scratch, 0x1600, 4, QStringLiteral("Entry"), 7, QStringLiteral("rw"), QStringLiteral("0"));
}

} // namespace

class TestImportFrame : public QObject
{
    Q_OBJECT

private slots:
    void importRunsOnItsThreadAndEndsWithHundred()
    {
        QTemporaryDir dir;
        ProjectBuilder project;
        project.line(0, 1);
        ObjectDataBase &store = project.store();
        store.setBlockUpdates(true);
        EDSImporter importer;
        QVERIFY(!importer.setDatabase(nullptr));
        QVERIFY(importer.setDatabase(&store));
        QVERIFY(importer.setFileName(writeFile(dir, "device.eds", smallEds)));
        QList<int> progress;
        QList<QThread *> threads;
        connect(&importer, &BaseDataImporter::progress, this, [&](uchar value) { progress << value; });
        connect(
            &store, &ObjectDataBase::blockStateChanged, this, [&] { threads << QThread::currentThread(); },
            Qt::DirectConnection);
        QVERIFY(importer.start());
        importer.wait();
        QVERIFY(importer.isFinished());
        QTRY_COMPARE(progress, QList<int>{100});
        QVERIFY(threads.size() >= 2);
        QVERIFY(!threads.contains(QThread::currentThread()));
        QVERIFY(!store.isBlocked());
        QCOMPARE(store.getIndices(0), QList<quint16>{0x2000});
        QCOMPARE(importer.thread(), QThread::currentThread());
        QVERIFY(store.addIndex(0, 0x3000, INDEX_DATA_T()));

        QVERIFY(importer.start());
        importer.wait();
        QTRY_COMPARE(progress, (QList<int>{100, 100}));
    }

    void unreadableFileEndsQuietly()
    {
        ProjectBuilder project;
        project.line(0, 1);
        EDSImporter importer;
        importer.setDatabase(&project.store());
        QVERIFY(!importer.setFileName(QStringLiteral("/no/such/device.eds")));
        QSignalSpy progress(&importer, &BaseDataImporter::progress);
        QVERIFY(importer.start());
        importer.wait();
        QTRY_COMPARE(progress.size(), 1);
        QVERIFY(project.store().getIndices(0).isEmpty());
    }

    void dataTypeForBitSize_data()
    {
        QTest::addColumn<int>("bits");
        QTest::addColumn<bool>("isSigned");
        QTest::addColumn<int>("expected");
        QTest::newRow("bit") << 1 << false << 1;
        QTest::newRow("2 bits") << 2 << false << 100;
        QTest::newRow("7 bits") << 7 << false << 105;
        QTest::newRow("byte") << 8 << false << 5;
        QTest::newRow("signed byte") << 8 << true << 2;
        QTest::newRow("9 bits have no type") << 9 << false << 0;
        QTest::newRow("14 bits") << 14 << false << 111;
        QTest::newRow("signed word") << 16 << true << 3;
        QTest::newRow("18 bits") << 18 << false << 118;
        QTest::newRow("19 bits") << 19 << false << 117;
        QTest::newRow("21 bits") << 21 << false << 119;
        QTest::newRow("24 bits") << 24 << false << 22;
        QTest::newRow("signed 24 bits take the unsigned type") << 24 << true << 22;
        QTest::newRow("29 bits") << 29 << false << 129;
        QTest::newRow("signed double word") << 32 << true << 4;
        QTest::newRow("40 bits") << 40 << false << 24;
        QTest::newRow("48 bits") << 48 << false << 25;
        QTest::newRow("64 bits") << 64 << false << 27;
        QTest::newRow("no length") << 0 << false << 121;
        QTest::newRow("more than 64 bits") << 65 << false << 10;
    }

    void dataTypeForBitSize()
    {
        QFETCH(int, bits);
        QFETCH(bool, isSigned);
        QFETCH(int, expected);
        QCOMPARE(int(BaseDataImporter::dataTypeForBitSize(quint32(bits), isSigned)), expected);
    }

    void commandLineImport_data()
    {
        QTest::addColumn<QString>("name");
        QTest::addColumn<QByteArray>("content");
        QTest::addColumn<bool>("imported");
        QTest::addColumn<QList<quint16>>("indices");
        QTest::newRow("EDS, range of the command line")
            << "device.eds" << smallEds << true << QList<quint16>{0x2000};
        QTest::newRow("DCF") << "device.DCF" << smallEds << true << QList<quint16>{0x2000};
        QTest::newRow("ICSV") << "table.icsv"
                              << QByteArray("index,sub,edsname,datatype,access\n0x2100,0,T,u8,rw\n") << true
                              << QList<quint16>{0x2100};
        QTest::newRow("XDD is no batch format")
            << "device.xdd" << QByteArray("<x/>") << false << QList<quint16>{};
        QTest::newRow("missing file") << "" << QByteArray() << false << QList<quint16>{};
    }

    void commandLineImport()
    {
        QFETCH(QString, name);
        QFETCH(QByteArray, content);
        QFETCH(bool, imported);
        QFETCH(QList<quint16>, indices);
        QTemporaryDir dir;
        const QString path = name.isEmpty() ? dir.filePath(QStringLiteral("missing.eds"))
                                            : writeFile(dir, name.toLatin1().constData(), content);
        ProjectBuilder project;
        project.line(0, 1);
        QCOMPARE(CommandLineImport::run(project.store(), path), imported);
        QCOMPARE(project.store().getIndices(0), indices);
    }

    void implementationRules_data()
    {
        QTest::addColumn<int>("implementation");
        QTest::addColumn<int>("index");
        QTest::addColumn<int>("subIndex");
        QTest::addColumn<int>("expectedImplementation");
        QTest::addColumn<QString>("expectedVarName");
        const int managed = int(Implementation::Managed);
        const int application = int(Implementation::Application);
        const int keep = int(Implementation::KeepSource);
        QTest::newRow("managed: plain VAR") << managed << 0x2000 << 0 << 0 << "";
        QTest::newRow("managed: read-only string") << managed << 0x2001 << 0 << 1 << "";
        QTest::newRow("managed: writable string") << managed << 0x2002 << 0 << 2 << "label";
        QTest::newRow("managed: array counter unchanged") << managed << 0x2100 << 0 << 1 << "";
        QTest::newRow("managed: array element") << managed << 0x2100 << 1 << 0 << "";
        QTest::newRow("managed: domain element") << managed << 0x2100 << 3 << 2 << "third";
        QTest::newRow("application: VAR") << application << 0x2000 << 0 << 2 << "old_name";
        QTest::newRow("application: string") << application << 0x2002 << 0 << 2 << "label";
        QTest::newRow("application: array element") << application << 0x2100 << 1 << 2 << "out_values[0]";
        QTest::newRow("application: record entry")
            << application << 0x2200 << 2 << 2 << "drive_data.top_speed";
        QTest::newRow("keep as in source") << keep << 0x2000 << 0 << 2 << "old_name";
    }

    void implementationRules()
    {
        QFETCH(int, implementation);
        QFETCH(int, index);
        QFETCH(int, subIndex);
        QFETCH(int, expectedImplementation);
        QFETCH(QString, expectedVarName);
        ProjectBuilder source;
        fillScratch(source);
        ProjectBuilder project;
        project.line(0, 1);
        QVERIFY(ObjectImportRules::importObject(source.store(), scratch, quint16(index), project.store(), 0,
                                                quint16(index), Implementation(implementation), 255));
        SUBINDEX_DATA_T entry;
        QVERIFY(project.store().getSubIndex(0, quint16(index), quint8(subIndex), entry));
        QCOMPARE(int(entry.implementation), expectedImplementation);
        QCOMPARE(entry.varname, expectedVarName);
    }

    void copiedObjectIsCleanAndReplacesTheTarget()
    {
        ProjectBuilder source;
        fillScratch(source);
        ProjectBuilder project;
        project.line(0, 1);
        project.object(0, 0x2300, QStringLiteral("Old"), 8, 5)
            .sub(0, 0x2300, 0, QStringLiteral("Count"), 5, QStringLiteral("ro"), QStringLiteral("7"))
            .sub(0, 0x2300, 7, QStringLiteral("Seventh"), 5, QStringLiteral("rw"), QStringLiteral("0"));
        QVERIFY(ObjectImportRules::importObject(source.store(), scratch, 0x2000, project.store(), 0, 0x2300,
                                                Implementation::KeepSource, 255));
        INDEX_DATA_T object;
        project.store().getIndex(0, 0x2300, object);
        QCOMPARE(object.name, QStringLiteral("Motor Speed-Set"));
        QVERIFY(object.device_class.isEmpty());
        QVERIFY(!object.fwsupported);
        QCOMPARE(project.store().getSubIndices(0, 0x2300), QList<quint8>{0});
        SUBINDEX_DATA_T speed;
        project.store().getSubIndex(0, 0x2300, 0, speed);
        QVERIFY(!speed.changedbyuser);
        QCOMPARE(speed.wizardsource, quint16(0));
        QVERIFY(!ObjectImportRules::importObject(source.store(), scratch, 0x2999, project.store(), 0, 0x2300,
                                                 Implementation::KeepSource, 255));
        QVERIFY(project.store().indexExists(0, 0x2300));
    }

    void cutAndCount_data()
    {
        QTest::addColumn<int>("index");
        QTest::addColumn<int>("firstCut");
        QTest::addColumn<QList<quint8>>("subIndices");
        QTest::addColumn<QString>("count");
        QTest::addColumn<int>("countImplementation");
        QTest::newRow("nothing cut, count follows the highest")
            << 0x2100 << 255 << QList<quint8>{0, 1, 3} << "3" << 1;
        QTest::newRow("highest sub-index 1") << 0x2100 << 2 << QList<quint8>{0, 1} << "1" << 1;
        QTest::newRow("highest sub-index 0") << 0x2100 << 1 << QList<quint8>{0} << "0" << 1;
        QTest::newRow("mapping keeps its count") << 0x1600 << 255 << QList<quint8>{0, 4} << "1" << 0;
    }

    void cutAndCount()
    {
        QFETCH(int, index);
        QFETCH(int, firstCut);
        QFETCH(QList<quint8>, subIndices);
        QFETCH(QString, count);
        QFETCH(int, countImplementation);
        ProjectBuilder source;
        fillScratch(source);
        ProjectBuilder project;
        project.line(0, 1);
        ObjectImportRules::importObject(source.store(), scratch, quint16(index), project.store(), 0,
                                        quint16(index), Implementation::KeepSource, firstCut);
        QCOMPARE(project.store().getSubIndices(0, quint16(index)), subIndices);
        SUBINDEX_DATA_T counter;
        project.store().getSubIndex(0, quint16(index), 0, counter);
        QCOMPARE(counter.defaultvalue, count);
        QCOMPARE(int(counter.implementation), countImplementation);
    }

    void mangle()
    {
        QCOMPARE(ObjectImportRules::mangle(QStringLiteral("  Motor  Speed-Set ")),
                 QStringLiteral("motor_speedset"));
    }
};

QTEST_GUILESS_MAIN(TestImportFrame)
#include "tst_importframe.moc"
