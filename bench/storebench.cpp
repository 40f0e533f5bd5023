// Times the project store on a synthetic device of 2,000 objects with 20,000 sub-indices.

#include "store/objectdatabase.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QTemporaryDir>

#include <cstdio>

namespace {

constexpr int objectCount = 2000;
constexpr int subsPerObject = 10;

void report(const char *step, QElapsedTimer &timer)
{
    std::printf("%-40s %8lld ms\n", step, static_cast<long long>(timer.restart()));
}

} // namespace

int main(int argc, char **argv)
{
    QCoreApplication application(argc, argv);
    QCoreApplication::setApplicationName(QStringLiteral("CANopen Kestrel"));
    QTemporaryDir dir;
    const QString path = dir.filePath(QStringLiteral("bench.kprj"));
    QElapsedTimer timer;
    timer.start();
    {
        ObjectDataBase store;
        store.createNewDataBase();
        store.setGeneralSetting(QStringLiteral("line0type"), QStringLiteral("1"));
        QList<SubEntry> entries;
        for (int object = 0; object < objectCount; ++object) {
            const quint16 index = quint16(0x2000 + object);
            INDEX_DATA_T record;
            record.name = QStringLiteral("Object %1").arg(object);
            record.objecttype = 9;
            store.addIndex(0, index, record);
            for (int sub = 0; sub < subsPerObject; ++sub) {
                SUBINDEX_DATA_T data;
                data.name = QStringLiteral("Entry %1").arg(sub);
                data.datatype = 7;
                data.accesstype = QStringLiteral("rw");
                data.defaultvalue = QString::number(object * sub);
                data.varname = QStringLiteral("var_%1_%2").arg(object).arg(sub);
                entries.append(SubEntry{0, index, quint8(sub), data});
            }
        }
        report("add 2,000 objects", timer);
        store.addSubIndices(entries);
        report("addSubIndices of 20,000 sub-indices", timer);
        int read = 0;
        for (int object = 0; object < objectCount; ++object) {
            const quint16 index = quint16(0x2000 + object);
            for (const quint8 sub : store.getSubIndices(0, index)) {
                SUBINDEX_DATA_T data;
                read += store.getSubIndex(0, index, sub, data) ? 1 : 0;
            }
        }
        report("read back 20,000 sub-indices one by one", timer);
        store.cacheAllSubs(0);
        report("cacheAllSubs of the line", timer);
        store.clearSubCache();
        for (int object = 0; object < 500; ++object)
            store.copyIndex(0, quint16(0x2000 + object), 0, quint16(0x4000 + object));
        report("copy 500 objects", timer);
        store.saveDatabase(path);
        report("save", timer);
        std::printf("read %d sub-indices\n", read);
    }
    report("close", timer);
    {
        ObjectDataBase store;
        store.openDataBase(path);
        report("open", timer);
        store.saveDatabase(path);
        report("save again", timer);
    }
    report("close", timer);
    return 0;
}
