#include "guipostgenprogresshandler.h"

#include "appshell/guihelper.h"

#include <QDialog>
#include <QLabel>
#include <QProgressBar>
#include <QPushButton>
#include <QVBoxLayout>

GUIPostGenProgressHandler::GUIPostGenProgressHandler(QWidget *parent)
    : parentWidget(parent)
    , dialog(new QDialog(parent))
    , label(new QLabel(dialog))
    , progress(new QProgressBar(dialog))
    , cancelButton(new QPushButton(tr("Cancel process"), dialog))
{
    auto *layout = new QVBoxLayout(dialog);
    layout->addWidget(label);
    progress->setRange(0, 0);
    layout->addWidget(progress);
    layout->addWidget(cancelButton);
    connect(cancelButton, &QPushButton::clicked, this, &PostGenProgressHandler::cancelProcessTriggered);
}

GUIPostGenProgressHandler::~GUIPostGenProgressHandler() = default;

void GUIPostGenProgressHandler::show()
{
    dialog->show();
}

void GUIPostGenProgressHandler::setLabelText(const QString &text)
{
    label->setText(text);
}

void GUIPostGenProgressHandler::setCancelButtonText(const QString &text)
{
    cancelButton->setText(text);
}

void GUIPostGenProgressHandler::adjustSize()
{
    dialog->adjustSize();
}

void GUIPostGenProgressHandler::hide()
{
    dialog->hide();
}

void GUIPostGenProgressHandler::messageBox(const QString &title, const QString &text, const QString &info)
{
    GuiHelper::showMessageBox(parentWidget, QMessageBox::Warning, title, text, info, QMessageBox::Ok);
}
