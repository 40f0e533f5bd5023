#pragma once

#include <QObject>
#include <QVariant>

// The sink of all messages of a generation run.
class OutputHandlerBase : public QObject
{
    Q_OBJECT

public:
    using QObject::QObject;

    // One log entry with a time stamp.
    virtual void output(const QVariant &text) = 0;
    // One log entry without a time stamp.
    virtual void outputPlain(const QVariant &text) { output(text); }
    // The whole log so far.
    virtual QString logText() const = 0;
};
