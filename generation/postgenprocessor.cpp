#include "postgenprocessor.h"

#include "edscheckerwrapper.h"
#include "outputhandlerbase.h"
#include "postgenprogresshandler.h"

#include "store/objectdatabase.h"
#include "texttools/helper.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QSettings>

namespace {

QSettings applicationSettings()
{
    return QSettings(QCoreApplication::organizationName(), qApp->property("AppNameWithVersion").toString());
}

bool readsTrue(const QString &text)
{
    return text == QLatin1String("true") || text == QLatin1String("1");
}

// Files whose line ending the user may choose; the others keep the platform's.
const char *const lineEndingFiles[] = {"gen_define.h", "gen_indication.h", "gen_indices.h", "gen_extern_decl.h",
                                       "gen_var_decl.h", "gen_srdo.c", "gen_sdg.c", "gen_objdict.c", "gen_pgn.c",
                                       "gen_define.props", "Directory.Build.props"};
const char *const lineEndings[] = {"", "\r\n", "\n", "\r"};

} // namespace

PostGenProcessor::PostGenProcessor(OutputHandlerBase *sink, QSharedPointer<PostGenProgressHandler> handler,
                                   QObject *parent)
    : QObject(parent)
    , output(sink)
    , progressHandler(std::move(handler))
    , process(new QProcess(this))
{
    connect(process, &QProcess::finished, this, &PostGenProcessor::postGenProcessFinished);
    connect(process, &QProcess::readyReadStandardError, this, &PostGenProcessor::postGenProcessReadyReadStandardError);
    connect(process, &QProcess::readyReadStandardOutput, this,
            &PostGenProcessor::postGenProcessReadyReadStandardOutput);
    connect(this, &PostGenProcessor::proceedGeneration, this, &PostGenProcessor::proceedGenerationSlot,
            Qt::DirectConnection);
    connect(progressHandler.data(), &PostGenProgressHandler::cancelProcess, this,
            &PostGenProcessor::cancelPostGenProcess);
}

void PostGenProcessor::setData(ObjectDataBase *store, const QString &path, const QString &name)
{
    database = store;
    outputPath = path;
    projectName = name;
}

void PostGenProcessor::proceedTo(State next)
{
    state = next;
    emit proceedGeneration();
}

void PostGenProcessor::start()
{
    QString command;
    QString arguments;
    waitForProcess = false;
    if (database && readsTrue(database->getMiscSetting(QStringLiteral("postGenEnabled")))) {
        command = database->getMiscSetting(QStringLiteral("postgencmd"));
        arguments = database->getMiscSetting(QStringLiteral("postgencmdargs"));
        waitForProcess = readsTrue(database->getMiscSetting(QStringLiteral("postGenWait")));
    } else {
        const QSettings settings = applicationSettings();
        if (settings.value(QStringLiteral("General/postGenEnabled"), false).toBool()) {
            command = settings.value(QStringLiteral("General/postgenerationcommand")).toString();
            arguments = settings.value(QStringLiteral("General/postgenerationcommandarguments")).toString();
            waitForProcess = settings.value(QStringLiteral("General/waitPostGen"), false).toBool();
        }
    }
    arguments.replace(QLatin1String("%P"), outputPath + '/' + projectName + QStringLiteral(".kprj"));
    arguments.replace(QLatin1String("%D"), outputPath);
    arguments.replace(QLatin1String("%N"), projectName + QStringLiteral(".kprj"));

    exitCode = 0;
    stderrSeen = false;
    stdoutSeen = false;
    if (database)
        database->blockSignals(false);
    if (command.isEmpty()) {
        proceedTo(CommandDone);
        return;
    }
    QDir::setCurrent(outputPath);
    if (process->state() != QProcess::NotRunning) {
        progressHandler->messageBox(QCoreApplication::applicationName(), tr("Post generation process is already running."),
                                    QString());
        return;
    }
    process->setWorkingDirectory(outputPath);
    process->start(command, arguments.split(' ', Qt::SkipEmptyParts), QIODevice::ReadWrite);
    if (!process->waitForStarted(30000)) {
        progressHandler->messageBox(QCoreApplication::applicationName(), tr("Could not start post gen process."),
                                    process->errorString());
        proceedTo(CommandDone);
        return;
    }
    if (!waitForProcess) {
        proceedTo(CommandDone);
        return;
    }
    progressHandler->setLabelText(tr("Post generation process running ... "));
    progressHandler->setCancelButtonText(tr("Cancel process"));
    while (process->state() != QProcess::NotRunning && waitForProcess)
        QCoreApplication::processEvents(QEventLoop::AllEvents, 50);
}

void PostGenProcessor::postGenProcessFinished(int code, QProcess::ExitStatus)
{
    if (!waitForProcess)
        return;
    exitCode = code;
    output->output(tr("Post generation process finished with code %1").arg(code));
    proceedTo(CommandDone);
}

void PostGenProcessor::postGenProcessReadyReadStandardError()
{
    if (!stderrSeen)
        output->outputPlain(tr("Post generation process error output:\n"));
    stderrSeen = true;
    output->outputPlain(QStringLiteral("\t") + QString::fromLocal8Bit(process->readAllStandardError()).simplified());
}

void PostGenProcessor::postGenProcessReadyReadStandardOutput()
{
    if (!stdoutSeen)
        output->outputPlain(tr("Post generation process standard output:\n"));
    stdoutSeen = true;
    output->outputPlain(QStringLiteral("\t") + QString::fromLocal8Bit(process->readAllStandardOutput()).simplified());
}

void PostGenProcessor::cancelPostGenProcess()
{
    if (process->state() != QProcess::NotRunning) {
        process->terminate();
        process->waitForFinished(100);
        if (process->state() != QProcess::NotRunning)
            process->kill();
        progressHandler->show();
    }
    progressHandler->setCancelButtonText(tr("Cancel process"));
    progressHandler->adjustSize();
}

void PostGenProcessor::proceedGenerationSlot()
{
    if (!hiddenRun)
        progressHandler->show();
    switch (state) {
    case CommandDone:
        progressHandler->setCancelButtonText(tr("Cancel process"));
        progressHandler->adjustSize();
        if (!skipEdsCheck) {
            startEdsCheck();
            return;
        }
        proceedTo(CheckDone);
        break;
    case CheckDone:
        progressHandler->setLabelText(tr("EDS Checker running"));
        applyLineEndings();
        proceedTo(AllDone);
        break;
    case AllDone:
        progressHandler->hide();
        if (exitCode != 0)
            output->output(tr("<b>Warning: Generation completed, but post gen process returned %1.</b>").arg(exitCode));
        else
            output->output(tr("Generation completed."));
        state = Idle;
        break;
    default:
        break;
    }
}

void PostGenProcessor::startChecker(const QString &edsFile, const QString &startedText)
{
    if (!QFile::exists(edsFile))
        return;
    const QSettings settings = applicationSettings();
    auto *checker = new EdsCheckerWrapper(this);
    connect(checker, &EdsCheckerWrapper::finished, this, &PostGenProcessor::edsCheckFinished);
    if (checker->setCheckerPath(settings.value(QStringLiteral("EDSChecker/EDSCheckerPath")).toString()) &&
        checker->start(edsFile)) {
        edsCheckers.append(checker);
        output->output(startedText);
    } else {
        output->output(tr("Start of EDS Checker failed"));
        checker->deleteLater();
    }
}

void PostGenProcessor::startEdsCheck()
{
    const QSettings settings = applicationSettings();
    progressHandler->setLabelText(tr("EDS Checker running"));
    if (settings.value(QStringLiteral("EDSChecker/checkeds"), false).toBool()) {
        startChecker(QStringLiteral("%1/%2.eds").arg(outputPath, projectName), tr("EDS Checker started"));
        for (int line = 0; line < 8; ++line)
            startChecker(QStringLiteral("%1/%2_%3.eds").arg(outputPath, projectName).arg(line),
                         tr("EDS Checker started for line %1").arg(line));
    }
    if (edsCheckers.isEmpty())
        proceedTo(CheckDone);
}

void PostGenProcessor::edsCheckFinished()
{
    auto *checker = qobject_cast<EdsCheckerWrapper *>(sender());
    if (!checker)
        return;
    output->outputPlain(tr("EDS Checker result:\n\n") + checker->resultText());
    output->output(tr("EDS Checker finished.\n"));
    edsCheckers.removeAll(checker);
    checker->deleteLater();
    if (edsCheckers.isEmpty())
        proceedTo(CheckDone);
}

void PostGenProcessor::applyLineEndings()
{
    const int index = applicationSettings().value(QStringLiteral("General/line_ending_index"), 0).toInt();
    if (index <= 0 || index > 3)
        return;
    for (const char *file : lineEndingFiles)
        Helper::modifyLineEnding(outputPath + '/' + QLatin1String(file), QLatin1String(lineEndings[index]));
}
