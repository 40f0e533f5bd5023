#pragma once

#include <QString>

#include <functional>

// The channel every finding of the model check goes out on. Only errors count; warnings, hints, infos,
// corrections and the one error text that does not stop a run are messages.
class ModelCheckOutput
{
public:
    ModelCheckOutput(std::function<void(const QString &)> emitText, int &errorCount);

    void error(const QString &text);
    void message(const QString &text);

    // An index as four lower-case hexadecimal digits, a sub-index as two.
    static QString hexIndex(quint32 index);
    static QString hexSubIndex(quint32 subIndex);

private:
    std::function<void(const QString &)> emitText;
    int &errorCount;
};
