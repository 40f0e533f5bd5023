#pragma once

#include <QObject>
#include <QString>

// What the post-generation steps show the user. This base shows nothing; the window's handler shows a dialog.
class PostGenProgressHandler : public QObject
{
    Q_OBJECT

public:
    using QObject::QObject;

    virtual void show() {}
    virtual void setLabelText(const QString &) {}
    virtual void setCancelButtonText(const QString &) {}
    virtual void adjustSize() {}
    virtual void hide() {}
    virtual void messageBox(const QString &, const QString &, const QString &) {}

signals:
    void cancelProcess();

public slots:
    void cancelProcessTriggered() { emit cancelProcess(); }
};
