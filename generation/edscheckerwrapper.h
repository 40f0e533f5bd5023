#pragma once

#include <QObject>
#include <QString>

class QProcess;

// Runs the external EDS checker on one file.
class EdsCheckerWrapper : public QObject
{
    Q_OBJECT

public:
    using QObject::QObject;

    bool setCheckerPath(const QString &path);
    bool start(const QString &edsFile);
    // What the checker wrote to its standard output, read as Latin-1.
    QString resultText() const;

signals:
    void finished();

public slots:
    void processFinished(int exitcode);

private:
    QString checkerPath;
    QString edsFile;
    QProcess *process = nullptr;
};
