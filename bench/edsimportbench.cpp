// Times the EDS import on a synthetic device description of 2,000 objects: the reader alone, and the
// whole import into the scratch line of a fresh store.

#include "busmodel/edsparser.h"
#include "importers/edsimporter.h"
#include "store/objectdatabase.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QFile>
#include <QTemporaryDir>

#include <algorithm>
#include <cstdio>

namespace {

constexpr int objectCount = 2000;
constexpr int rounds = 5;

// Three VARs, then a RECORD of eight entries; every tenth object has a description and every fiftieth
// is a compact array of sixteen elements.
QByteArray deviceDescription()
{
    QByteArray text = "[FileInfo]\nFileName=bench.eds\nEDSVersion=4.0\n\n"
                      "[DeviceInfo]\nVendorName=Bench\nNrOfRXPDO=0\nNrOfTXPDO=0\n\n";
    text += "[ManufacturerObjects]\nSupportedObjects=" + QByteArray::number(objectCount) + '\n';
    for (int object = 0; object < objectCount; ++object)
        text += QByteArray::number(object + 1) + "=0x" + QByteArray::number(0x2000 + object, 16) + '\n';
    for (int object = 0; object < objectCount; ++object) {
        const QByteArray index = QByteArray::number(0x2000 + object, 16);
        text += "\n[" + index + "]\nParameterName=Object " + QByteArray::number(object) + '\n';
        if (object % 50 == 49) {
            text += "ObjectType=0x8\nCompactSubObj=16\nDataType=0x0006\nAccessType=rw\nDefaultValue="
                    "0\nPDOMapping=1\n";
        } else if (object % 4 == 3) {
            text += "ObjectType=0x9\nSubNumber=9\n";
            for (int sub = 0; sub <= 8; ++sub) {
                text += "\n[" + index + "sub" + QByteArray::number(sub, 16) + "]\nParameterName=Entry " +
                        QByteArray::number(sub) +
                        "\nObjectType=0x7\nDataType=0x0007\nAccessType=rw\n"
                        "DefaultValue=$NODEID+0x" +
                        QByteArray::number(sub * 16, 16) + "\nPDOMapping=1\n";
            }
        } else {
            text += "ObjectType=0x7\nDataType=0x0005\nAccessType=ro\nDefaultValue=0x10\nLowLimit=0\n"
                    "HighLimit=200\nPDOMapping=0\n";
        }
        if (object % 10 == 0)
            text += ";;Description of object " + QByteArray::number(object) + "\n;;second line\n";
    }
    return text;
}

struct Timing
{
    qint64 best = 0;
    qint64 median = 0;
};

template<typename Work> Timing measure(Work work)
{
    QList<qint64> times;
    for (int round = 0; round < rounds; ++round) {
        QElapsedTimer timer;
        timer.start();
        work();
        times << timer.elapsed();
    }
    std::sort(times.begin(), times.end());
    return {times.first(), times.at(times.size() / 2)};
}

void report(const char *step, const Timing &timing)
{
    std::printf("%-45s best %6lld ms   median %6lld ms\n", step, static_cast<long long>(timing.best),
                static_cast<long long>(timing.median));
}

} // namespace

int main(int argc, char **argv)
{
    QCoreApplication application(argc, argv);
    QTemporaryDir dir;
    const QString path = dir.filePath(QStringLiteral("bench.eds"));
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(deviceDescription()) < 0)
        return 1;
    file.close();
    std::printf("%s: %lld bytes\n", qPrintable(path), static_cast<long long>(QFileInfo(path).size()));

    report("read with EdsParser", measure([&] {
               EdsParser parser;
               parser.LoadEds(path);
           }));

    int objects = 0;
    int entries = 0;
    report("import into a fresh store (EDSImporter)", measure([&] {
               ObjectDataBase store;
               store.createNewDataBase();
               store.addNode(ObjectDataBase::ScratchLine, NODE_DATA_T());
               EDSImporter importer;
               importer.setDatabase(&store);
               importer.setLine(ObjectDataBase::ScratchLine);
               importer.setIndexRange(0x1000, 0xBFFF);
               importer.setFileName(path);
               importer.start();
               importer.wait();
               const auto indices = store.getIndices(ObjectDataBase::ScratchLine);
               objects = int(indices.size());
               entries = 0;
               for (const quint16 index : indices)
                   entries += int(store.getSubIndices(ObjectDataBase::ScratchLine, index).size());
           }));
    std::printf("imported %d objects with %d sub-indices\n", objects, entries);
    return objects == objectCount ? 0 : 1;
}
