#pragma once

#include "store/objectrecords.h"

#include <QObject>
#include <QString>

#include <atomic>
#include <memory>

class ObjectDataBase;
class QThread;

// Base of every importer: reads one foreign file on a thread of its own and fills one line of a store.
// Every doImport keeps the same frame: beginImport first, endImport last, also after a failure, for
// progress(100) is what the callers wait for.
class BaseDataImporter : public QObject
{
    Q_OBJECT

public:
    explicit BaseDataImporter(QObject *parent = nullptr);
    ~BaseDataImporter() override;

    bool setLine(quint8 line);
    // False for a null store.
    bool setDatabase(ObjectDataBase *store);
    // True only for a readable file; otherwise the name is cleared.
    bool setFileName(const QString &fileName);
    bool setIndexRange(quint32 low, quint32 high);
    void setSourceLine(quint32 line) { sourceLine = line; }

    // Runs doImport on the worker thread; false while an import runs, and for an importer with a parent.
    bool start();
    bool isFinished() const;
    // Blocks until the worker thread has ended.
    void wait();

    // The data type of an import that knows only a bit length.
    static quint16 dataTypeForBitSize(quint32 bits, bool isSigned);
    // A sub-index as the editors create it: read-only UNSIGNED8 whose default goes into the EDS.
    static SUBINDEX_DATA_T newSubIndexRecord();

signals:
    void progress(uchar percent);
    void importError(uint line, ushort index, uchar sub);
    void importError(const QString &errorString);

public slots:
    virtual void doImport() = 0;

protected:
    // Lets the store take the import's writes and keeps everybody else's statements waiting.
    void beginImport();
    // Releases the store and the thread and emits progress(100).
    void endImport();
    bool inRange(quint32 index) const { return index >= lowIndex && index <= highIndex; }

    ObjectDataBase *database = nullptr;
    quint8 line = 0;
    std::atomic<bool> running = false;
    QString fileName;
    quint32 lowIndex = 0x1000;
    quint32 highIndex = 0xBFFF;
    quint32 sourceLine = 0;

private:
    std::unique_ptr<QThread> workerThread;
    QThread *homeThread = nullptr;
};
