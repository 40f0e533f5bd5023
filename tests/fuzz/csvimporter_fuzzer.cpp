// Feeds arbitrary bytes as an object table to the CSV importer, which writes what it reads into the
// scratch line of a store: no crash, no hang, and copy commands always in pairs.
#include "importers/csvimporter.h"
#include "store/objectdatabase.h"

#include <QCoreApplication>
#include <QFile>
#include <QTemporaryDir>

#include <cstdlib>

namespace {

QCoreApplication *application = nullptr;
ObjectDataBase *store = nullptr;
QTemporaryDir *folder = nullptr;
int runs = 0;

} // namespace

extern "C" int LLVMFuzzerInitialize(int *argc, char ***argv)
{
    application = new QCoreApplication(*argc, *argv);
    folder = new QTemporaryDir;
    store = new ObjectDataBase;
    store->createNewDataBase();
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const unsigned char *data, unsigned long size)
{
    const QString path = folder->filePath(QStringLiteral("table.csv"));
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly | QIODevice::Truncate))
        return 0;
    file.write(reinterpret_cast<const char *>(data), qint64(size));
    file.close();
    // A fresh line now and then keeps the scratch tables small without paying for new tables each run.
    if (runs++ % 64 == 0) {
        store->removeNode(ObjectDataBase::ScratchLine);
        store->addNode(ObjectDataBase::ScratchLine, NODE_DATA_T());
    }
    CsvImporter importer;
    importer.setDatabase(store);
    importer.setLine(ObjectDataBase::ScratchLine);
    importer.setIndexRange(0, 0xFFFF);
    importer.setFileName(path);
    importer.doImport();
    QList<CsvObjectRef> copies;
    importer.getCopyList(copies);
    if (copies.size() % 2 != 0 || store->isBlocked())
        std::abort();
    return 0;
}
