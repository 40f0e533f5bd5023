#pragma once

#include <QByteArray>
#include <QString>

// Text helpers shared by generators, importers and editors.
class Helper
{
public:
    // Stands for a line break inside a CSV description cell; the CSV reader turns it back.
    static const QString csvDescLinebreak;

    // Resolves $i, $I, $s, $S, $z, $l, $L and {calculation} sections of an object or sub-index text.
    static QString substituteVariables(const QString &text, quint16 index, quint8 subIndex, quint8 line);

    // Gives every number of a list such as "10, 5" the suffix "u": "10u, 5u".
    static QString addLowerCaseUtoNumberLists(const QString &list);

    // C initialiser (a string literal) holding the UTF-8 bytes of the text.
    static QString UTF8String2ArrayString(const QString &text);
    static QByteArray UTF8String2ByteArray(const QString &text);

    // Rewrites a text file so that every line ends in the given ending.
    static bool modifyLineEnding(const QString &path, const QString &ending);
};
