#include "generatortext.h"

#include <QCoreApplication>
#include <QDateTime>
#include <QStringList>
#include <QTextStream>

void GeneratorText::writeFileHead(QTextStream &out, const QString &titleTemplate, const QString &projectName,
                                  const QString &toolVersion, const QString &date)
{
    out << "/*\n"
        << titleTemplate.arg(projectName, QCoreApplication::applicationName(), toolVersion) << " * " << date
        << "\n */\n\n";
}

QString GeneratorText::currentDate()
{
    return QDateTime::currentDateTime().toString(Qt::TextDate);
}

QString GeneratorText::defineLine(const QString &name, const QString &value)
{
    return QStringLiteral("#define %1\t%2\n").arg(name, value);
}

QString GeneratorText::largeValueLiteral(quint16 dataType, quint64 unsignedValue, qint64 signedValue)
{
    struct Literal
    {
        quint16 type;
        const char *macro;
        int bytes;
        bool isSigned;
    };
    static const Literal literals[] = {
        {12, "U48_SET", 6, false}, {25, "U48_SET", 6, false}, {16, "I24_SET", 3, true},
        {22, "U24_SET", 3, false}, {24, "U40_SET", 5, false}, {27, "U64_SET", 8, false},
    };
    for (const auto &literal : literals) {
        if (literal.type != dataType)
            continue;
        const quint64 value = literal.isSigned ? quint64(signedValue) : unsignedValue;
        QStringList bytes;
        for (int byte = literal.bytes - 1; byte >= 0; --byte)
            bytes << QStringLiteral("0x%1").arg((value >> (8 * byte)) & 0xFF, 2, 16, QChar('0'));
        return QStringLiteral("%1(%2)").arg(QLatin1String(literal.macro), bytes.join(','));
    }
    return QString();
}
