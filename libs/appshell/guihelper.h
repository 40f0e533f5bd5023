#pragma once

#include <QMessageBox>
#include <QString>

class QDialog;
class QWidget;

// The one road to every modal box and file or input dialog of the program. With the environment
// variable KESTREL_NONINTERACTIVE set to 1 each of them answers at once (a box with its default
// button, a dialog with cancel) and writes its title and text to stderr, so that scripted runs never wait.
class GuiHelper
{
public:
    static bool isNonInteractive();

    static QMessageBox::StandardButton
    showMessageBox(QWidget *parent, QMessageBox::Icon icon, const QString &title, const QString &text,
                   const QString &informativeText = QString(),
                   QMessageBox::StandardButtons buttons = QMessageBox::Ok,
                   QMessageBox::StandardButton defaultButton = QMessageBox::NoButton);

    // Runs a box that the caller has prepared (custom buttons); returns the button clicked.
    static QAbstractButton *execMessageBox(QMessageBox &box);

    // Runs any other modal dialog; QDialog::Rejected without a user.
    static int execDialog(QDialog &dialog);

    static QString getOpenFileName(QWidget *parent, const QString &caption, const QString &dir,
                                   const QString &filter);
    static QString getSaveFileName(QWidget *parent, const QString &caption, const QString &dir,
                                   const QString &filter);
    static QString getExistingDirectory(QWidget *parent, const QString &caption, const QString &dir);
    static QString getText(QWidget *parent, const QString &title, const QString &label, const QString &text,
                           bool *ok);

private:
    static void report(const QString &kind, const QString &title, const QString &text,
                       const QString &informativeText = QString());
};
