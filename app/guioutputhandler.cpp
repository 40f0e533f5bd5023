#include "guioutputhandler.h"

#include "generatoroutputform.h"

#include <QDateTime>
#include <QRegularExpression>

#include <cstdio>

void GUIOutputHandler::output(const QVariant &text)
{
    if (loggingForm)
        loggingForm->appendLogging(text.toString());
    echo(QDateTime::currentDateTime().toString(Qt::TextDate) + QStringLiteral(": ") + text.toString());
}

void GUIOutputHandler::outputPlain(const QVariant &text)
{
    if (loggingForm)
        loggingForm->appendPlainLogging(text.toString());
    echo(text.toString());
}

QString GUIOutputHandler::logText() const
{
    return loggingForm ? loggingForm->getLogging() : QString();
}

void GUIOutputHandler::echo(const QString &text) const
{
    if (!echoToStderr)
        return;
    static const QRegularExpression tags(QStringLiteral("<[^>]*>"));
    QString plain = text;
    plain.remove(tags);
    std::fprintf(stderr, "%s\n", plain.toLocal8Bit().constData());
    std::fflush(stderr);
}
