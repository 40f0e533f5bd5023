#include "edition.h"

#include <QCoreApplication>

namespace {

const QString canopenName = QStringLiteral("CANopen Kestrel");
const QString j1939Name = QStringLiteral("J1939 Kestrel");
const QString canName = QStringLiteral("CAN Kestrel");
const QString energyBusName = QStringLiteral("EnergyBus Kestrel Wizard");

} // namespace

bool Edition::isCANopen(const QString &applicationName)
{
    return applicationName.contains(QLatin1String("CANopen"));
}

bool Edition::isJ1939(const QString &applicationName)
{
    return applicationName == j1939Name;
}

bool Edition::isCan(const QString &applicationName)
{
    return applicationName == canName;
}

bool Edition::isEnergyBusWizard(const QString &applicationName)
{
    return applicationName == energyBusName;
}

QString Edition::startLineType(const QString &applicationName)
{
    if (applicationName.contains(QLatin1String("CANopen")))
        return QStringLiteral("1");
    if (applicationName.contains(QLatin1String("J1939")))
        return QStringLiteral("2");
    return QString();
}

QString Edition::templatePath(const QString &applicationName)
{
    if (isJ1939(applicationName))
        return QStringLiteral(":/databases/data/mtj1939.data");
    return QCoreApplication::applicationDirPath() + QStringLiteral("/data/mt.data");
}

QString Edition::standardObjectLibrary(const QString &applicationName)
{
    return isJ1939(applicationName) ? QStringLiteral(":/codb/v302.codb") : QStringLiteral(":/codb/v301.codb");
}

QString Edition::current()
{
    return QCoreApplication::applicationName();
}
