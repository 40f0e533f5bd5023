#include "modelcheckoutput.h"

ModelCheckOutput::ModelCheckOutput(std::function<void(const QString &)> emitter, int &errors)
    : emitText(std::move(emitter))
    , errorCount(errors)
{}

void ModelCheckOutput::error(const QString &text)
{
    ++errorCount;
    emitText(text);
}

void ModelCheckOutput::message(const QString &text)
{
    emitText(text);
}

QString ModelCheckOutput::hexIndex(quint32 index)
{
    return QStringLiteral("%1").arg(index, 4, 16, QLatin1Char('0'));
}

QString ModelCheckOutput::hexSubIndex(quint32 subIndex)
{
    return QStringLiteral("%1").arg(subIndex, 2, 16, QLatin1Char('0'));
}
