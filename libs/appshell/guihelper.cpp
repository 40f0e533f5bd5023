#include "guihelper.h"

#include <QDialog>
#include <QFileDialog>
#include <QInputDialog>
#include <QPushButton>

#include <cstdio>

bool GuiHelper::isNonInteractive()
{
    return qEnvironmentVariable("KESTREL_NONINTERACTIVE") == QLatin1String("1");
}

void GuiHelper::report(const QString &kind, const QString &title, const QString &text,
                       const QString &informativeText)
{
    QString message = QStringLiteral("[%1] %2: %3").arg(kind, title, text);
    if (!informativeText.isEmpty())
        message += QStringLiteral(" (%1)").arg(informativeText);
    std::fprintf(stderr, "%s\n", message.toLocal8Bit().constData());
    std::fflush(stderr);
}

QMessageBox::StandardButton GuiHelper::showMessageBox(QWidget *parent, QMessageBox::Icon icon,
                                                      const QString &title, const QString &text,
                                                      const QString &informativeText,
                                                      QMessageBox::StandardButtons buttons,
                                                      QMessageBox::StandardButton defaultButton)
{
    QMessageBox box(icon, title, text, buttons, parent);
    box.setInformativeText(informativeText);
    if (defaultButton != QMessageBox::NoButton)
        box.setDefaultButton(defaultButton);
    return box.standardButton(execMessageBox(box));
}

QAbstractButton *GuiHelper::execMessageBox(QMessageBox &box)
{
    if (!isNonInteractive()) {
        box.exec();
        return box.clickedButton();
    }
    report(QStringLiteral("message"), box.windowTitle(), box.text(), box.informativeText());
    // QMessageBox picks its default only when shown; without a user the first accepting button stands in.
    if (QAbstractButton *button = box.defaultButton())
        return button;
    const auto buttons = box.buttons();
    for (QAbstractButton *button : buttons) {
        const auto role = box.buttonRole(button);
        if (role == QMessageBox::AcceptRole || role == QMessageBox::YesRole)
            return button;
    }
    return buttons.isEmpty() ? nullptr : buttons.first();
}

int GuiHelper::execDialog(QDialog &dialog)
{
    if (!isNonInteractive())
        return dialog.exec();
    report(QStringLiteral("dialog"), dialog.windowTitle(), QStringLiteral("cancelled"));
    return QDialog::Rejected;
}

QString GuiHelper::getOpenFileName(QWidget *parent, const QString &caption, const QString &dir,
                                   const QString &filter)
{
    if (isNonInteractive()) {
        report(QStringLiteral("file dialog"), caption, QStringLiteral("cancelled"));
        return QString();
    }
    return QFileDialog::getOpenFileName(parent, caption, dir, filter);
}

QString GuiHelper::getSaveFileName(QWidget *parent, const QString &caption, const QString &dir,
                                   const QString &filter)
{
    if (isNonInteractive()) {
        report(QStringLiteral("file dialog"), caption, QStringLiteral("cancelled"));
        return QString();
    }
    return QFileDialog::getSaveFileName(parent, caption, dir, filter);
}

QString GuiHelper::getExistingDirectory(QWidget *parent, const QString &caption, const QString &dir)
{
    if (isNonInteractive()) {
        report(QStringLiteral("file dialog"), caption, QStringLiteral("cancelled"));
        return QString();
    }
    return QFileDialog::getExistingDirectory(parent, caption, dir);
}

QString GuiHelper::getText(QWidget *parent, const QString &title, const QString &label, const QString &text,
                           bool *ok)
{
    if (isNonInteractive()) {
        report(QStringLiteral("input dialog"), title, label);
        if (ok)
            *ok = false;
        return QString();
    }
    return QInputDialog::getText(parent, title, label, QLineEdit::Normal, text, ok);
}
