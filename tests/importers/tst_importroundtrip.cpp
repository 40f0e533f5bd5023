#include "busmodel/cohelper.h"
#include "generators/documents/edsgenerator.h"
#include "generators/documents/icsvgenerator.h"
#include "generators/documents/xddgenerator.h"
#include "importers/csvimporter.h"
#include "importers/edsimporter.h"
#include "importers/xddimporter.h"
#include "store/objectdatabase.h"
#include "support/projectbuilder.h"
#include "tst_edsfixture.h"

#include <QTemporaryDir>
#include <QtTest>

namespace {

SUBINDEX_DATA_T entry(const QString &name, quint16 type, const QString &access, const QString &value,
                      PDOMappingType mapping = Forbidden)
{
    SUBINDEX_DATA_T data = ProjectBuilder::subRecord(name, type, access, value);
    data.writedefaulttoeds = true;
    data.pdomapping = PDOMapping(mapping);
    QString low;
    QString high;
    COHelper::getDefaultLimits(type, low, high);
    data.lowlimit = low;
    data.uplimit = high;
    return data;
}

void var(ProjectBuilder &project, quint16 index, const SUBINDEX_DATA_T &data,
         const QString &description = QString())
{
    INDEX_DATA_T object;
    object.name = data.name;
    object.datatype = data.datatype;
    object.description = description;
    project.object(0, index, object).sub(0, index, 0, data);
}

// A device whose entries travel through every format unchanged: each access with the mapping that it
// implies, values in decimal, sub-index 0 of each ARRAY and RECORD holding the highest sub-index.
void roundTripProject(ProjectBuilder &project)
{
    project.line(0, 1);
    project.general(QStringLiteral("canfd_supported"), QStringLiteral("1"));
    var(project, 0x1000,
        entry(QStringLiteral("Device type"), 7, QStringLiteral("ro"), QStringLiteral("401")));
    var(project, 0x1001,
        entry(QStringLiteral("Error register"), 5, QStringLiteral("ro"), QStringLiteral("0"), TPDO));
    // A constant is a managed constant, as every importer makes it.
    SUBINDEX_DATA_T highest =
        entry(QStringLiteral("Highest sub-index supported"), 5, QStringLiteral("const"), QStringLiteral("2"));
    highest.implementation = 1;
    project.object(0, 0x1018, QStringLiteral("Identity object"), 9, 7)
        .sub(0, 0x1018, 0, highest)
        .sub(0, 0x1018, 1,
             entry(QStringLiteral("Vendor-ID"), 7, QStringLiteral("ro"), QStringLiteral("2035")))
        .sub(0, 0x1018, 2,
             entry(QStringLiteral("Product code"), 7, QStringLiteral("ro"), QStringLiteral("4660")));
    SUBINDEX_DATA_T speed =
        entry(QStringLiteral("Speed"), 6, QStringLiteral("rw"), QStringLiteral("16"), Allowed);
    speed.lowlimit = QStringLiteral("10");
    speed.uplimit = QStringLiteral("1000");
    speed.limitineds = true;
    speed.nvstorage = true;
    speed.refuseread = true;
    var(project, 0x2000, speed, QStringLiteral("Motor speed\nin rpm"));
    var(project, 0x2001,
        entry(QStringLiteral("Command"), 2, QStringLiteral("wo"), QStringLiteral("-3"), RPDO));
    var(project, 0x2002,
        entry(QStringLiteral("Gain"), 8, QStringLiteral("rwr"), QStringLiteral("1.5"), TPDO));
    var(project, 0x2003,
        entry(QStringLiteral("Setpoint"), 4, QStringLiteral("rww"), QStringLiteral("-70000"), RPDO));
    SUBINDEX_DATA_T label =
        entry(QStringLiteral("Label"), 9, QStringLiteral("rw"), QStringLiteral("left wheel"));
    label.size = 16;
    var(project, 0x2004, label);
    var(project, 0x2005,
        entry(QStringLiteral("Enabled"), 1, QStringLiteral("rw"), QStringLiteral("1"), Allowed));
    SUBINDEX_DATA_T silent = entry(QStringLiteral("No default in files"), 6, QStringLiteral("rw"), QString());
    silent.writedefaulttoeds = false;
    var(project, 0x2006, silent);
    SUBINDEX_DATA_T always =
        entry(QStringLiteral("Always in files"), 5, QStringLiteral("rw"), QStringLiteral("7"));
    always.writedefaulttoeds = 2;
    always.defaultineds = false;
    var(project, 0x2007, always);
    SUBINDEX_DATA_T level = entry(QStringLiteral("Level"), 6, QStringLiteral("rw"), QStringLiteral("3"));
    level.implementation = 2;
    level.varname = QStringLiteral("app_level");
    var(project, 0x2008, level);
    SUBINDEX_DATA_T computed =
        entry(QStringLiteral("Computed"), 7, QStringLiteral("ro"), QStringLiteral("0"));
    computed.implementation = 3;
    var(project, 0x2009, computed);
    project.object(0, 0x2100, QStringLiteral("Outputs"), 8, 6)
        .sub(0, 0x2100, 0,
             entry(QStringLiteral("Number of outputs"), 5, QStringLiteral("ro"), QStringLiteral("2")))
        .sub(0, 0x2100, 1,
             entry(QStringLiteral("Output 1"), 6, QStringLiteral("rw"), QStringLiteral("100"), Allowed))
        .sub(0, 0x2100, 2,
             entry(QStringLiteral("Output 2"), 6, QStringLiteral("rw"), QStringLiteral("200"), Allowed));
    INDEX_DATA_T drive;
    drive.name = QStringLiteral("Drive data");
    drive.objecttype = 9;
    drive.description = QStringLiteral("Values of the drive");
    SUBINDEX_DATA_T torque =
        entry(QStringLiteral("Torque"), 3, QStringLiteral("ro"), QStringLiteral("-5"), TPDO);
    torque.description = QStringLiteral("Newton metres");
    torque.refusewrite = true;
    project.object(0, 0x2200, drive)
        .sub(0, 0x2200, 0,
             entry(QStringLiteral("Highest sub-index supported"), 5, QStringLiteral("ro"),
                   QStringLiteral("3")))
        .sub(0, 0x2200, 1, torque)
        .sub(0, 0x2200, 3,
             entry(QStringLiteral("Temperature"), 5, QStringLiteral("ro"), QStringLiteral("20"), TPDO));
    var(project, 0x6000,
        entry(QStringLiteral("Digital input"), 5, QStringLiteral("ro"), QStringLiteral("0"), TPDO));
}

std::unique_ptr<ObjectDataBase> importInto(BaseDataImporter &importer, const QString &file)
{
    auto store = std::make_unique<ObjectDataBase>();
    store->createNewDataBase();
    store->addNode(0, NODE_DATA_T());
    importer.setDatabase(store.get());
    importer.setLine(0);
    importer.setIndexRange(0x1000, 0xBFFF);
    importer.setFileName(file);
    importer.start();
    importer.wait();
    return store;
}

// Numbers compare by value, for the table writes them in decimal.
bool sameValue(const QString &a, const QString &b)
{
    bool okA = false;
    bool okB = false;
    const double valueA = a.toDouble(&okA);
    const double valueB = b.toDouble(&okB);
    return okA && okB ? valueA == valueB : a == b;
}

bool defaultTravels(const SUBINDEX_DATA_T &data)
{
    return EDSGenerator::writesDefault(data);
}

} // namespace

class TestImportRoundTrip : public QObject
{
    Q_OBJECT

private:
    ProjectBuilder original;

    void compareObjects(ObjectDataBase &copy)
    {
        ObjectDataBase &store = original.store();
        QCOMPARE(copy.getIndices(0), store.getIndices(0));
        const auto indices = store.getIndices(0);
        int compared = 0;
        for (const quint16 index : indices) {
            INDEX_DATA_T expected;
            INDEX_DATA_T actual;
            store.getIndex(0, index, expected);
            copy.getIndex(0, index, actual);
            const QByteArray where = QByteArray::number(index, 16);
            QVERIFY2(actual.name == expected.name, where);
            QVERIFY2(actual.objecttype == expected.objecttype, where);
            QVERIFY2(copy.getSubIndices(0, index) == store.getSubIndices(0, index), where);
            const auto subIndices = store.getSubIndices(0, index);
            for (const quint8 subIndex : subIndices) {
                SUBINDEX_DATA_T want;
                SUBINDEX_DATA_T got;
                store.getSubIndex(0, index, subIndex, want);
                copy.getSubIndex(0, index, subIndex, got);
                const QByteArray at = where + "sub" + QByteArray::number(subIndex);
                QVERIFY2(got.name == want.name, at);
                QVERIFY2(got.datatype == want.datatype, at);
                QVERIFY2(got.accesstype == want.accesstype, at);
                QVERIFY2(got.pdomapping == want.pdomapping, at);
                QVERIFY2(sameValue(got.defaultvalue, defaultTravels(want) ? want.defaultvalue : QString()),
                         at);
                ++compared;
            }
        }
        QCOMPARE(compared, 22);
    }

    // Compares a field of every entry of the original with the copy.
    template<typename Field> void compareEntries(ObjectDataBase &copy, Field field)
    {
        const auto indices = original.store().getIndices(0);
        for (const quint16 index : indices) {
            const auto subIndices = original.store().getSubIndices(0, index);
            for (const quint8 subIndex : subIndices) {
                SUBINDEX_DATA_T want;
                SUBINDEX_DATA_T got;
                original.store().getSubIndex(0, index, subIndex, want);
                copy.getSubIndex(0, index, subIndex, got);
                const QByteArray at = QByteArray::number(index, 16) + "sub" + QByteArray::number(subIndex);
                QVERIFY2(field(got) == field(want), at);
            }
        }
    }

    void compareLimits(ObjectDataBase &copy, bool limitsTravel)
    {
        const auto indices = original.store().getIndices(0);
        for (const quint16 index : indices) {
            const auto subIndices = original.store().getSubIndices(0, index);
            for (const quint8 subIndex : subIndices) {
                SUBINDEX_DATA_T want;
                SUBINDEX_DATA_T got;
                original.store().getSubIndex(0, index, subIndex, want);
                copy.getSubIndex(0, index, subIndex, got);
                const QByteArray at = QByteArray::number(index, 16) + "sub" + QByteArray::number(subIndex);
                QVERIFY2(got.limitineds == (want.limitineds && limitsTravel), at);
                // Limits that do not travel come back as the natural ones of the type.
                if (got.limitineds == want.limitineds) {
                    QVERIFY2(got.lowlimit == want.lowlimit, at);
                    QVERIFY2(got.uplimit == want.uplimit, at);
                }
            }
        }
    }

private slots:
    void initTestCase()
    {
        QCoreApplication::setApplicationName(QStringLiteral("CANopen Kestrel"));
        QCoreApplication::setApplicationVersion(QStringLiteral("4.3.2"));
        roundTripProject(original);
    }

    // The files written are valid for readers that are not ours.
    void cleanupTestCase() { QCOMPARE(EdsFixture::takeFileProblems(), QStringList()); }

    void edsComesBack()
    {
        QTemporaryDir dir;
        EDSGenerator generator;
        EdsFixture::run(generator, original.store(), dir.path());
        EDSImporter importer;
        auto copy = importInto(importer, generator.outputFile());
        compareObjects(*copy);
        compareLimits(*copy, true);
        INDEX_DATA_T speed;
        copy->getIndex(0, 0x2000, speed);
        QCOMPARE(speed.description, QStringLiteral("Motor speed\nin rpm\n"));
        INDEX_DATA_T drive;
        copy->getIndex(0, 0x2200, drive);
        QCOMPARE(drive.description, QStringLiteral("Values of the drive\n"));
        SUBINDEX_DATA_T torque;
        copy->getSubIndex(0, 0x2200, 1, torque);
        QCOMPARE(torque.description, QStringLiteral("Newton metres\n"));
        SUBINDEX_DATA_T silent;
        copy->getSubIndex(0, 0x2006, 0, silent);
        QVERIFY(!silent.writedefaulttoeds);
        compareEntries(*copy, [](const SUBINDEX_DATA_T &data) { return data.refuseread; });
        compareEntries(*copy, [](const SUBINDEX_DATA_T &data) { return data.refusewrite; });
    }

    void icsvComesBack()
    {
        QTemporaryDir dir;
        ICSVGenerator generator;
        EdsFixture::run(generator, original.store(), dir.path());
        CsvImporter importer;
        auto copy = importInto(importer, generator.outputFile());
        compareObjects(*copy);
        compareLimits(*copy, true);
        const auto indices = original.store().getIndices(0);
        for (const quint16 index : indices) {
            INDEX_DATA_T want;
            INDEX_DATA_T got;
            original.store().getIndex(0, index, want);
            copy->getIndex(0, index, got);
            QCOMPARE(got.datatype, want.datatype);
            QCOMPARE(got.description, want.description);
        }
        SUBINDEX_DATA_T torque;
        copy->getSubIndex(0, 0x2200, 1, torque);
        QCOMPARE(torque.description, QStringLiteral("Newton metres"));
        SUBINDEX_DATA_T always;
        copy->getSubIndex(0, 0x2007, 0, always);
        QCOMPARE(int(always.writedefaulttoeds), 2);
        QVERIFY(!always.defaultineds);
        compareEntries(*copy, [](const SUBINDEX_DATA_T &data) { return data.implementation; });
        compareEntries(*copy, [](const SUBINDEX_DATA_T &data) { return data.varname; });
        compareEntries(*copy, [](const SUBINDEX_DATA_T &data) { return data.nvstorage; });
        compareEntries(*copy, [](const SUBINDEX_DATA_T &data) { return data.size; });
        compareEntries(*copy, [](const SUBINDEX_DATA_T &data) { return data.defaultineds; });
        compareEntries(*copy, [](const SUBINDEX_DATA_T &data) { return data.writedefaulttoeds; });
    }

    void xddComesBack()
    {
        QTemporaryDir dir;
        XDDGenerator generator;
        EdsFixture::run(generator, original.store(), dir.path());
        XDDImporter importer;
        auto copy = importInto(importer, generator.outputFile());
        compareObjects(*copy);
        compareLimits(*copy, false);
        const auto indices = original.store().getIndices(0);
        for (const quint16 index : indices) {
            INDEX_DATA_T want;
            INDEX_DATA_T got;
            original.store().getIndex(0, index, want);
            copy->getIndex(0, index, got);
            if (want.objecttype != 9)
                QCOMPARE(got.datatype, want.datatype);
        }
    }
};

QTEST_GUILESS_MAIN(TestImportRoundTrip)
#include "tst_importroundtrip.moc"
