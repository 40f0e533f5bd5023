#include "versionreader.h"

#include <QDomDocument>
#include <QFile>

VersionReader::VersionReader(const QString &file, QObject *parent)
    : QObject(parent)
    , fileName(file)
{
}

QString VersionReader::requiredToolVersion() const
{
    QString version = QStringLiteral("0.0");
    QFile file(fileName);
    if (!file.open(QIODevice::ReadOnly))
        return version;
    QDomDocument document;
    QString error;
    if (!document.setContent(&file, &error) || !error.isEmpty())
        return version;
    const QDomNodeList elements = document.elementsByTagName(QStringLiteral("required_tool_version"));
    if (!elements.isEmpty())
        version = elements.at(0).firstChild().nodeValue();
    return version;
}
