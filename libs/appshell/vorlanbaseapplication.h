#pragma once

#include <QApplication>

// Application object of every edition. Its dynamic property "AppNameWithVersion" is the
// application scope of all user settings: QSettings(organizationName, AppNameWithVersion).
class VorlanBaseApplication : public QApplication
{
    Q_OBJECT

public:
    VorlanBaseApplication(int &argc, char **argv, const QString &applicationName, const QString &version);

    // Records the layout version of the user settings so that a later version can convert them.
    void initSettings(unsigned char settingsVersion);

    bool instrumentFunctionsActive() const { return instrumentFunctions; }

public slots:
    // Raised with true before a generation and with false after it.
    void onInstrumentFunctionChanged(bool enable);

private:
    bool instrumentFunctions = false;
};
