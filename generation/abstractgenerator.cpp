#include "abstractgenerator.h"

#include "store/objectdatabase.h"
#include "texttools/filepermissions.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTextStream>
#include <QThread>

AbstractGenerator::AbstractGenerator(QObject *parent)
    : QObject(parent)
    , toolVersion(QCoreApplication::applicationVersion())
{
}

AbstractGenerator::~AbstractGenerator()
{
    if (workerThread) {
        workerThread->quit();
        workerThread->wait();
    }
}

bool AbstractGenerator::isOutputWritable()
{
    const QString file = outputFile();
    return !QFileInfo::exists(file) || FilePermissions::isWritable(file);
}

GeneratorStatus AbstractGenerator::start()
{
    if (running)
        return GeneratorStatus::Busy;
    setObjectName(generatorName());
    homeThread = thread();
    // Set before the worker starts: a short job may finish before this thread runs on.
    running = true;
    workerThread = new QThread(this);
    moveToThread(workerThread);
    workerThread->start(QThread::InheritPriority);
    QMetaObject::invokeMethod(this, "doJob", Qt::QueuedConnection);
    return GeneratorStatus::Ok;
}

GeneratorStatus AbstractGenerator::abort()
{
    if (!running)
        return GeneratorStatus::NotRunning;
    abortRequested = true;
    return GeneratorStatus::Ok;
}

GeneratorStatus AbstractGenerator::setOutputPath(const QString &path)
{
    if (running)
        return GeneratorStatus::Busy;
    outputPath = path;
    const QFileInfo info(path);
    if (!info.exists() || !info.isDir())
        return GeneratorStatus::PathMissing;
    if (!info.isReadable())
        return GeneratorStatus::PathUnreadable;
    return GeneratorStatus::Ok;
}

GeneratorStatus AbstractGenerator::setDatabase(ObjectDataBase *store)
{
    if (running)
        return GeneratorStatus::Busy;
    if (!store)
        return GeneratorStatus::InvalidDatabase;
    database = store;
    return store->getLines().isEmpty() ? GeneratorStatus::InvalidDatabase : GeneratorStatus::Ok;
}

GeneratorStatus AbstractGenerator::setProjectName(const QString &name)
{
    if (running)
        return GeneratorStatus::Busy;
    projectName = name;
    return GeneratorStatus::Ok;
}

GeneratorStatus AbstractGenerator::setLine(quint8 newLine)
{
    if (running)
        return GeneratorStatus::Busy;
    line = newLine;
    if (database && !database->lineExists(newLine))
        return GeneratorStatus::InvalidLine;
    return GeneratorStatus::Ok;
}

void AbstractGenerator::waitForFinished()
{
    if (!workerThread)
        return;
    while (workerThread->isRunning() && running)
        QCoreApplication::processEvents(QEventLoop::AllEvents, 10);
}

void AbstractGenerator::waitForThread()
{
    if (workerThread)
        workerThread->wait();
}

void AbstractGenerator::setGeneratorActive(bool active)
{
    if (database)
        database->setBlockUpdates(active);
}

void AbstractGenerator::fail(const QString &message)
{
    failed = true;
    errorMessage = message;
}

QString AbstractGenerator::filePath(const QString &pattern) const
{
    return pattern.contains(QLatin1String("%2")) ? pattern.arg(outputPath, projectName) : pattern.arg(outputPath);
}

void AbstractGenerator::doJob()
{
    running = true;
    setGeneratorActive(true);
    forcedMultiLine = database && database->getMiscSetting(QStringLiteral("generateML")) == QLatin1String("true");
    prepare();
    QFile file(outputFile());
    if (file.open(QIODevice::WriteOnly | QIODevice::Text | QIODevice::Truncate)) {
        QTextStream out(&file);
        writeContent(out);
        out.flush();
    }
    running = false;
    file.close();
    finishJob();
}

void AbstractGenerator::finishJob()
{
    running = false;
    if (workerThread) {
        // Back to the driver's thread, so that the driver can delete the generator and its thread.
        moveToThread(homeThread);
        workerThread->quit();
    }
    setGeneratorActive(false);
    emit progress(100);
}
