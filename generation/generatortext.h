#pragma once

#include <QString>

class QTextStream;

// The recurring shapes of generated C text.
class GeneratorText
{
public:
    // "/*", the title line (%1 project, %2 application, %3 version), the date line and " */" with an empty line.
    static void writeFileHead(QTextStream &out, const QString &titleTemplate, const QString &projectName,
                              const QString &toolVersion, const QString &date = currentDate());
    // Today's date and time in the text form of the head.
    static QString currentDate();
    // "#define NAME\tvalue\n"; the caller's name may carry its own trailing blank.
    static QString defineLine(const QString &name, const QString &value);
    // A macro call holding the bytes of a value of a type without a C base type; empty for other types.
    static QString largeValueLiteral(quint16 dataType, quint64 unsignedValue, qint64 signedValue);
};
