#include "definewriter.h"

#include "definefamily.h"

#include <QStringList>
#include <QTextStream>

DefineWriter::DefineWriter(QTextStream &out, const DefineFamily &family)
    : stream(out)
    , macroFamily(family)
{}

void DefineWriter::define(const QString &macro, const QString &value, const QString &separator)
{
    const QString written = macroFamily.macroName(macro);
    if (written.isEmpty())
        return;
    const QString gap =
        macroFamily.blankBeforeTab.contains(macro) ? QStringLiteral(" ") + separator : separator;
    stream << "#define " << written << gap << value << '\n';
}

void DefineWriter::flag(const QString &macro)
{
    define(macro, QStringLiteral("1u"));
}

void DefineWriter::count(const QString &macro, qint64 value)
{
    define(macro, QString::number(value) + 'u');
}

void DefineWriter::text(const QString &text)
{
    stream << text;
}

QString DefineWriter::name(const QString &macro) const
{
    return macroFamily.macroName(macro);
}

QString DefineWriter::countList(const QList<qint64> &values, const QString &separator)
{
    QStringList texts;
    for (const qint64 value : values)
        texts << QString::number(value) + 'u';
    return texts.join(separator);
}
