#include "edscheckerwrapper.h"

#include <QFileInfo>
#include <QProcess>

bool EdsCheckerWrapper::setCheckerPath(const QString &path)
{
    if (!QFileInfo::exists(path))
        return false;
    checkerPath = path;
    return true;
}

bool EdsCheckerWrapper::start(const QString &file)
{
    if (!QFileInfo::exists(file))
        return false;
    edsFile = file;
    process = new QProcess(this);
    connect(process, &QProcess::finished, this, &EdsCheckerWrapper::processFinished);
    const QStringList arguments{QStringLiteral("-e"), edsFile, QStringLiteral("-d"),
                                QFileInfo(checkerPath).absolutePath() + QStringLiteral("/v301.codb")};
    process->start(checkerPath, arguments, QIODevice::ReadWrite);
    return true;
}

QString EdsCheckerWrapper::resultText() const
{
    return process ? QString::fromLatin1(process->readAllStandardOutput()) : QString();
}

void EdsCheckerWrapper::processFinished(int)
{
    emit finished();
}
