#include "vorlanbaseapplication.h"

#include <QSettings>

VorlanBaseApplication::VorlanBaseApplication(int &argc, char **argv, const QString &applicationName,
                                             const QString &version)
    : QApplication(argc, argv)
{
    setApplicationName(applicationName);
    setApplicationVersion(version);
    setProperty("AppNameWithVersion", applicationName + ' ' + version);
}

void VorlanBaseApplication::initSettings(unsigned char settingsVersion)
{
    QSettings settings(organizationName(), property("AppNameWithVersion").toString());
    settings.setValue(QStringLiteral("General/settingsversion"), settingsVersion);
}

void VorlanBaseApplication::onInstrumentFunctionChanged(bool enable)
{
    instrumentFunctions = enable;
}
