#pragma once

#include "generation/postgenprogresshandler.h"

#include <QPointer>

class QLabel;
class QProgressBar;
class QPushButton;
class QDialog;
class QWidget;

// Shows the post-generation steps in a small dialog with a cancel button.
class GUIPostGenProgressHandler : public PostGenProgressHandler
{
    Q_OBJECT

public:
    explicit GUIPostGenProgressHandler(QWidget *parent);
    ~GUIPostGenProgressHandler() override;

    void show() override;
    void setLabelText(const QString &text) override;
    void setCancelButtonText(const QString &text) override;
    void adjustSize() override;
    void hide() override;
    void messageBox(const QString &title, const QString &text, const QString &info) override;

private:
    QPointer<QWidget> parentWidget;
    QDialog *dialog;
    QLabel *label;
    QProgressBar *progress;
    QPushButton *cancelButton;
};
