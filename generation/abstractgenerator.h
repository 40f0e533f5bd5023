#pragma once

#include "generation/generatorstatus.h"

#include <QObject>
#include <QString>

#include <atomic>
#include <memory>

class ObjectDataBase;
class QTextStream;
class QThread;

// Base of every generator: one object writes one file in one run, on a thread of its own while the
// driver waits. Subclasses name their file and write its content; the frame around it is here.
class AbstractGenerator : public QObject
{
    Q_OBJECT

public:
    explicit AbstractGenerator(QObject *parent = nullptr);
    ~AbstractGenerator() override;

    virtual bool isOutputWritable();
    virtual GeneratorStatus start();
    virtual GeneratorStatus abort();
    virtual QString resultInfo() const { return QString(); }
    // Whether the project holds anything for this file; a generator without content is not run.
    virtual bool hasContent() { return true; }

    GeneratorStatus setOutputPath(const QString &path);
    GeneratorStatus setDatabase(ObjectDataBase *store);
    GeneratorStatus setProjectName(const QString &name);
    GeneratorStatus setLine(quint8 line);
    void setFileSuffix(const QString &suffix) { fileSuffix = suffix; }
    void setMultiLine(bool value) { multiLine = value; }
    void setHasJ1939(bool value) { hasJ1939 = value; }
    void setMultiProtocol(bool value) { multiProtocol = value; }

    void waitForFinished();
    // Blocks until the worker thread has ended, so that everything it emitted is queued.
    void waitForThread();
    bool hasFailed() const { return failed; }
    QString errorText() const { return errorMessage; }
    bool isRunning() const { return running; }

    // Path of the file this generator writes.
    virtual QString outputFile() const = 0;
    // The text the log shows for this generator.
    virtual QString generatorName() const = 0;

signals:
    void progress(quint8 percent);

public slots:
    virtual void doJob();

protected:
    // Work before the output file is opened (reading what the old file holds, for example).
    virtual void prepare() {}
    // Writes the sections of the file.
    virtual void writeContent(QTextStream &out) = 0;

    void setGeneratorActive(bool active);
    // The end of every run: the thread quits, the store is free again, and progress 100 tells the driver.
    void finishJob();
    void fail(const QString &message);
    bool multiLineForm() const { return multiLine || forcedMultiLine; }
    QString filePath(const QString &pattern) const;

    quint8 line = 0;
    std::atomic_bool abortRequested = false;
    std::atomic_bool running = false;
    bool multiLine = false;
    QString projectName;
    QString outputPath;
    ObjectDataBase *database = nullptr;
    QThread *workerThread = nullptr;
    QThread *homeThread = nullptr;
    QString toolVersion;
    bool hasJ1939 = false;
    bool multiProtocol = false;
    bool forcedMultiLine = false;
    bool failed = false;
    QString errorMessage;
    QString fileSuffix;
};
