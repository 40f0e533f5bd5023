// Times gen_objdict.c for a synthetic device of 2,000 objects with 20,000 sub-indices, with the store's
// sub-index cache filled as the driver fills it and without.

#include "generators/source/objdictgeneratorv4.h"
#include "store/objectdatabase.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QFileInfo>
#include <QTemporaryDir>

#include <algorithm>
#include <cstdio>

namespace {

constexpr int objectCount = 2000;
constexpr int entriesPerObject = 9;
constexpr int rounds = 5;

SUBINDEX_DATA_T entry(quint16 type, const QString &access, const QString &value, quint8 implementation)
{
    SUBINDEX_DATA_T data;
    data.name = QStringLiteral("Entry");
    data.datatype = type;
    data.accesstype = access;
    data.defaultvalue = value;
    data.implementation = implementation;
    data.varname = QStringLiteral("appTable[$s]");
    data.defaultineds = true;
    data.limitineds = type == 6;
    data.lowlimit = QStringLiteral("0");
    data.uplimit = QStringLiteral("1000");
    data.pdomapping = PDOMapping(PDOMappingType::Allowed);
    return data;
}

// Records of nine entries of four types; every fifth object is an array of alike entries, every
// seventh holds application variables, and a third of the values repeat.
bool fillDevice(ObjectDataBase &store)
{
    const quint16 types[] = {5, 6, 7, 4};
    QList<SubEntry> entries;
    for (int object = 0; object < objectCount; ++object) {
        const quint16 index = quint16(0x2000 + object);
        INDEX_DATA_T data;
        data.name = QStringLiteral("Object %1").arg(object);
        data.objecttype = object % 5 == 0 ? 8 : 9;
        if (!store.addIndex(0, index, data))
            return false;
        entries.append({0, index, 0, entry(5, QStringLiteral("ro"), QString::number(entriesPerObject), 0)});
        for (int sub = 1; sub <= entriesPerObject; ++sub) {
            const bool array = object % 5 == 0;
            const quint16 type = array ? 6 : types[sub % 4];
            const QString value = array ? QStringLiteral("7") : QString::number((object * 13 + sub) % 3000);
            const quint8 implementation = object % 7 == 0 ? 2 : (sub == 9 ? 1 : 0);
            entries.append({0, index, quint8(sub), entry(type, QStringLiteral("rw"), value, implementation)});
        }
    }
    return store.addSubIndices(entries);
}

qint64 generate(ObjectDataBase &store, const QString &folder)
{
    QElapsedTimer timer;
    timer.start();
    ObjDictGeneratorV4 generator(true);
    generator.setOutputPath(folder);
    generator.setDatabase(&store);
    generator.setProjectName(QStringLiteral("bench"));
    generator.setLine(0);
    generator.start();
    generator.waitForFinished();
    generator.waitForThread();
    return timer.elapsed();
}

void report(const char *step, QList<qint64> times)
{
    std::sort(times.begin(), times.end());
    std::printf("%-40s best %6lld ms   median %6lld ms\n", step, static_cast<long long>(times.first()),
                static_cast<long long>(times.at(times.size() / 2)));
}

} // namespace

int main(int argc, char **argv)
{
    QCoreApplication application(argc, argv);
    QCoreApplication::setApplicationName(QStringLiteral("CANopen Kestrel"));
    QCoreApplication::setApplicationVersion(QStringLiteral("4.3.2"));
    QTemporaryDir folder;
    ObjectDataBase store;
    if (!store.createNewDataBase() || !store.addNode(0, NODE_DATA_T()) || !fillDevice(store)) {
        std::printf("cannot build the device: %s\n", qPrintable(store.lastError()));
        return 1;
    }
    store.setGeneralSetting(QStringLiteral("limit_check"), QStringLiteral("1"));
    store.setGeneralSetting(QStringLiteral("init_static_variables"), QStringLiteral("1"));

    QList<qint64> uncached;
    for (int round = 0; round < rounds; ++round)
        uncached << generate(store, folder.path());
    store.cacheAllSubs(0);
    QList<qint64> cached;
    for (int round = 0; round < rounds; ++round)
        cached << generate(store, folder.path());
    report("gen_objdict.c, store not cached", uncached);
    report("gen_objdict.c, sub-indices cached", cached);
    std::printf("file size %lld bytes\n",
                static_cast<long long>(QFileInfo(folder.filePath(QStringLiteral("gen_objdict.c"))).size()));
    return 0;
}
