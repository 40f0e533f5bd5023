#pragma once

#include <QObject>
#include <QString>

// Reads the tool version a protocol stack asks for from its feature information file.
class VersionReader : public QObject
{
    Q_OBJECT

public:
    explicit VersionReader(const QString &fileName, QObject *parent = nullptr);

    // The text of the first required_tool_version element; "0.0" when there is none.
    QString requiredToolVersion() const;

private:
    QString fileName;
};
