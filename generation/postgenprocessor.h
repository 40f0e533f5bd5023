#pragma once

#include <QList>
#include <QObject>
#include <QProcess>
#include <QSharedPointer>

class EdsCheckerWrapper;
class ObjectDataBase;
class OutputHandlerBase;
class PostGenProgressHandler;

// What follows a generation, as a small state machine: the user's command, the EDS check, the line
// endings. Each step may end later, on a signal, while the window stays alive.
class PostGenProcessor : public QObject
{
    Q_OBJECT

public:
    enum State { Idle = 0, CommandDone = 1, CheckDone = 2, AllDone = 3 };

    PostGenProcessor(OutputHandlerBase *output, QSharedPointer<PostGenProgressHandler> handler,
                     QObject *parent = nullptr);

    void setData(ObjectDataBase *store, const QString &outputPath, const QString &projectName);
    void setSkipEdsCheck(bool skip) { skipEdsCheck = skip; }
    void setHiddenRun(bool hidden) { hiddenRun = hidden; }
    void start();
    int currentState() const { return state; }

signals:
    void proceedGeneration();

public slots:
    void edsCheckFinished();
    void proceedGenerationSlot();
    void startEdsCheck();
    void postGenProcessFinished(int exitCode, QProcess::ExitStatus exitStatus);
    void postGenProcessReadyReadStandardError();
    void postGenProcessReadyReadStandardOutput();
    void cancelPostGenProcess();

private:
    void proceedTo(State next);
    void startChecker(const QString &edsFile, const QString &startedText);
    void applyLineEndings();

    OutputHandlerBase *output;
    QSharedPointer<PostGenProgressHandler> progressHandler;
    QProcess *process;
    ObjectDataBase *database = nullptr;
    QString outputPath;
    QString projectName;
    bool skipEdsCheck = false;
    bool hiddenRun = false;
    bool waitForProcess = false;
    int exitCode = 0;
    bool stderrSeen = false;
    bool stdoutSeen = false;
    int state = Idle;
    QList<EdsCheckerWrapper *> edsCheckers;
};
