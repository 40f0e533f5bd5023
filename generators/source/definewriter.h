#pragma once

#include <QList>
#include <QString>

class DefineFamily;
class QTextStream;

// Writes the lines of gen_define.h under the names of one generator family.
class DefineWriter
{
public:
    DefineWriter(QTextStream &out, const DefineFamily &family);

    // "#define NAME<separator>value\n"; nothing for a macro that the family doesn't write.
    void define(const QString &macro, const QString &value, const QString &separator = QStringLiteral("\t"));
    // A flag: "1u".
    void flag(const QString &macro);
    // A count: the decimal number with the suffix "u".
    void count(const QString &macro, qint64 value);
    // Text as it stands: comments, empty lines, the user's own text.
    void text(const QString &text);
    // The name under which the family writes a macro; empty when it doesn't.
    QString name(const QString &macro) const;
    // Numbers with the suffix "u", joined: the per-line lists.
    static QString countList(const QList<qint64> &values, const QString &separator = QStringLiteral(", "));
    const DefineFamily &family() const { return macroFamily; }

private:
    QTextStream &stream;
    const DefineFamily &macroFamily;
};
