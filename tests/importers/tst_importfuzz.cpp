#include "busmodel/edsparser.h"
#include "importers/csvimporter.h"
#include "importers/edsimporter.h"
#include "store/objectdatabase.h"
#include "support/testprojects.h"

#include <QElapsedTimer>
#include <QRandomGenerator>
#include <QTemporaryDir>
#include <QtTest>

namespace {

constexpr quint8 scratch = ObjectDataBase::ScratchLine;

// Pieces that reach the corners of the readers: section heads, counts far beyond the limits, node-ID
// expressions, separators, quotes, the line break mark of a description cell, commands.
const char *const tokens[] = {
    "[",
    "]",
    "=",
    "\n",
    ";;",
    "sub",
    "Sub",
    "$NODEID",
    "0x",
    ",",
    ";",
    "\"",
    "<br>",
    "\xff\xfe",
    "CompactSubObj=254\n",
    "CompactSubObj=99999999999\n",
    "ObjectType=8\n",
    "ObjectType=0x9\n",
    "SubNumber=300\n",
    "[1000]\n",
    "[1400sub1]\n",
    "[2000Name]\nNrOfEntries=5\n1=x\n",
    "NrOfRXPDO=512\n",
    "NrOfTXPDO=4294967295\n",
    "[Comments]\nLines=999999999\n",
    "DataType=0x000F\n",
    "DataType=-1\n",
    "DefaultValue=$NODEID+0x180\n",
    "d,0x2001\n",
    "c,0x3000,0x2000\n",
    "c,0x2000,0x1,0x2\n",
    "VirtualObject",
    "ARRAY",
    "0xFFFFFFFFFFFFFFFFFF",
    "-0",
    "99999999999999999999",
    "\t",
    "\r",
};

class Mutator
{
public:
    explicit Mutator(quint32 seed)
        : random(seed)
    {}

    QByteArray mutate(QByteArray data)
    {
        const int steps = 1 + random.bounded(8);
        for (int step = 0; step < steps; ++step)
            apply(data);
        return data;
    }

private:
    qsizetype position(const QByteArray &data)
    {
        return data.isEmpty() ? 0 : random.bounded(data.size() + 1);
    }

    QList<QByteArray> lines(const QByteArray &data) { return data.split('\n'); }

    void apply(QByteArray &data)
    {
        switch (random.bounded(7)) {
        case 0:
            if (!data.isEmpty())
                data[random.bounded(data.size())] = char(random.bounded(256));
            break;
        case 1:
            data.insert(position(data), tokens[random.bounded(int(std::size(tokens)))]);
            break;
        case 2: {
            const qsizetype at = position(data);
            data.remove(at, random.bounded(64));
            break;
        }
        case 3: {
            QList<QByteArray> parts = lines(data);
            const qsizetype line = random.bounded(parts.size());
            parts.insert(line, parts.at(line));
            data = parts.join('\n');
            break;
        }
        case 4: {
            QList<QByteArray> parts = lines(data);
            parts.swapItemsAt(random.bounded(parts.size()), random.bounded(parts.size()));
            data = parts.join('\n');
            break;
        }
        case 5:
            data.truncate(position(data));
            break;
        default: {
            QByteArray noise(1 + random.bounded(16), '\0');
            for (char &byte : noise)
                byte = char(random.bounded(256));
            data.insert(position(data), noise);
            break;
        }
        }
    }

    QRandomGenerator random;
};

QByteArray seed(const QString &path)
{
    const QByteArray data = TestProjects::readFile(path);
    if (data.isEmpty())
        qFatal("seed file %s is missing", qPrintable(path));
    return data;
}

QList<QByteArray> edsSeeds()
{
    const QString golden = qEnvironmentVariable("KESTREL_SOURCE_DIR") +
                           QStringLiteral("/tests/generators/documents/golden/cia/");
    return {seed(QStringLiteral(KESTREL_SHARED_TESTDATA_DIR "/eds/sample.eds")),
            seed(QStringLiteral(KESTREL_SHARED_TESTDATA_DIR "/eds/DS301_profile.eds")),
            seed(golden + "basic.eds")};
}

QList<QByteArray> csvSeeds()
{
    const QString golden = qEnvironmentVariable("KESTREL_SOURCE_DIR") +
                           QStringLiteral("/tests/generators/documents/golden/cia/");
    return {
        seed(golden + "board.icsv"), seed(golden + "board.csv"),
        QByteArray("index;sub;edsname;datatype;access;value;implementation;line\n"
                   "0x2000;0;\"Quoted; name\";u8s;const;1;VirtualObject;0\nd;0x2001\nc;0x2001;0x1;0x2\n")};
}

// Runs one import of the bytes on the importer's thread; false when it did not end in time.
bool importOnce(BaseDataImporter &importer, ObjectDataBase &store, const QString &path,
                const QByteArray &data)
{
    TestProjects::writeFile(path, data);
    store.removeNode(scratch);
    store.addNode(scratch, NODE_DATA_T());
    importer.setDatabase(&store);
    importer.setLine(scratch);
    importer.setIndexRange(0, 0xFFFF);
    importer.setFileName(path);
    QElapsedTimer clock;
    clock.start();
    importer.start();
    importer.wait();
    return clock.elapsed() < 5000 && importer.isFinished() && !store.isBlocked();
}

} // namespace

class TestImportFuzz : public QObject
{
    Q_OBJECT

private slots:
    void edsParserOnMutatedFiles()
    {
        const auto seeds = edsSeeds();
        Mutator mutator(20240611);
        QElapsedTimer clock;
        for (int round = 0; round < 3000; ++round) {
            clock.start();
            const QByteArray input = mutator.mutate(seeds.at(round % seeds.size()));
            EdsParser parser;
            int reported = 0;
            connect(&parser, &EdsParser::newIndex, this, [&](const CANopen::CANopenIndex &index) {
                QVERIFY(index.compactSubObj <= 254);
                ++reported;
            });
            connect(&parser, &EdsParser::newSubIndex, this, [&](const CANopenSubindex &) { ++reported; });
            parser.loadEdsData(input);
            QVERIFY(parser.warnings().size() <= 101);
            for (quint16 index = 0x3000; index < 0x3008; ++index)
                QVERIFY(parser.getCompactSubObjNames(index).size() <= 256);
            QVERIFY2(clock.elapsed() < 2000, qPrintable(QString::number(round)));
        }
    }

    void edsImporterOnMutatedFiles()
    {
        const auto seeds = edsSeeds();
        Mutator mutator(7);
        QTemporaryDir dir;
        ObjectDataBase store;
        store.createNewDataBase();
        for (int round = 0; round < 100; ++round) {
            EDSImporter importer;
            importer.setDcf(round % 2 == 1);
            QVERIFY2(importOnce(importer, store, dir.filePath(QStringLiteral("device.eds")),
                                mutator.mutate(seeds.at(round % seeds.size()))),
                     qPrintable(QString::number(round)));
            QVERIFY(store.getIndices(scratch).size() <= 0x10000);
        }
    }

    void csvImporterOnMutatedFiles()
    {
        const auto seeds = csvSeeds();
        Mutator mutator(11);
        QTemporaryDir dir;
        ObjectDataBase store;
        store.createNewDataBase();
        for (int round = 0; round < 300; ++round) {
            CsvImporter importer;
            QVERIFY2(importOnce(importer, store, dir.filePath(QStringLiteral("table.csv")),
                                mutator.mutate(seeds.at(round % seeds.size()))),
                     qPrintable(QString::number(round)));
            QList<CsvObjectRef> copies;
            importer.getCopyList(copies);
            QCOMPARE(copies.size() % 2, 0);
        }
    }
};

QTEST_GUILESS_MAIN(TestImportFuzz)
#include "tst_importfuzz.moc"
