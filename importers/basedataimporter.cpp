#include "basedataimporter.h"

#include "store/objectdatabase.h"

#include <QFileInfo>
#include <QThread>

#include <utility>

BaseDataImporter::BaseDataImporter(QObject *parent)
    : QObject(parent)
{}

BaseDataImporter::~BaseDataImporter()
{
    if (workerThread) {
        workerThread->quit();
        workerThread->wait();
    }
}

bool BaseDataImporter::setLine(quint8 newLine)
{
    line = newLine;
    return true;
}

bool BaseDataImporter::setDatabase(ObjectDataBase *store)
{
    if (!store)
        return false;
    database = store;
    return true;
}

bool BaseDataImporter::setFileName(const QString &name)
{
    const QFileInfo info(name);
    if (!info.isFile() || !info.isReadable()) {
        fileName.clear();
        return false;
    }
    fileName = name;
    return true;
}

bool BaseDataImporter::setIndexRange(quint32 low, quint32 high)
{
    lowIndex = low;
    highIndex = high;
    return true;
}

bool BaseDataImporter::start()
{
    // An object with a parent cannot change its thread.
    if (running || parent())
        return false;
    if (!workerThread)
        workerThread = std::make_unique<QThread>();
    running = true;
    homeThread = thread();
    moveToThread(workerThread.get());
    workerThread->start(QThread::InheritPriority);
    QMetaObject::invokeMethod(this, "doImport", Qt::QueuedConnection);
    return true;
}

bool BaseDataImporter::isFinished() const
{
    return workerThread ? workerThread->isFinished() : !running;
}

void BaseDataImporter::wait()
{
    if (workerThread)
        workerThread->wait();
}

void BaseDataImporter::beginImport()
{
    running = true;
    if (!database)
        return;
    database->setBlockUpdates(false);
    database->setWriteBlock(true);
}

void BaseDataImporter::endImport()
{
    if (database)
        database->setWriteBlock(false);
    running = false;
    if (workerThread && thread() == workerThread.get()) {
        // Back to the caller's thread, so that the caller can delete the importer and start it anew.
        moveToThread(homeThread);
        workerThread->quit();
    }
    emit progress(100);
}

quint16 BaseDataImporter::dataTypeForBitSize(quint32 bits, bool isSigned)
{
    static const std::pair<quint32, quint16> unsignedTypes[] = {
        {1, 1},    {2, 100},  {3, 101},  {4, 102},  {5, 103},  {6, 104}, {7, 105},  {8, 5},
        {10, 107}, {11, 108}, {12, 109}, {13, 110}, {14, 111}, {16, 6},  {18, 118}, {19, 117},
        {21, 119}, {24, 22},  {29, 129}, {32, 7},   {40, 24},  {48, 25}, {64, 27},  {0, 121},
    };
    static const std::pair<quint32, quint16> signedTypes[] = {{8, 2}, {16, 3}, {32, 4}};
    if (isSigned) {
        for (const auto &[size, type] : signedTypes) {
            if (size == bits)
                return type;
        }
    }
    for (const auto &[size, type] : unsignedTypes) {
        if (size == bits)
            return type;
    }
    return bits > 64 ? 10 : 0;
}

SUBINDEX_DATA_T BaseDataImporter::newSubIndexRecord()
{
    SUBINDEX_DATA_T data;
    data.name = QStringLiteral("unnamed subindex");
    data.datatype = 5;
    data.accesstype = QStringLiteral("ro");
    data.defaultineds = true;
    data.writedefaulttoeds = 1;
    data.allowedaccesstypes = QStringLiteral("const,ro,rw,wo,rww,rwr");
    return data;
}
