#pragma once

#include "generation/outputhandlerbase.h"

#include <QPointer>

class GeneratorOutputForm;

// Writes the messages of a run into the page "Generator Output"; in a hidden run also to stderr,
// so that a script sees the log.
class GUIOutputHandler : public OutputHandlerBase
{
    Q_OBJECT

public:
    using OutputHandlerBase::OutputHandlerBase;

    void setLoggingForm(GeneratorOutputForm *form) { loggingForm = form; }
    void setEchoToStderr(bool echo) { echoToStderr = echo; }

    void output(const QVariant &text) override;
    void outputPlain(const QVariant &text) override;
    QString logText() const override;

private:
    void echo(const QString &text) const;

    QPointer<GeneratorOutputForm> loggingForm;
    bool echoToStderr = false;
};
