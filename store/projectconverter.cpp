#include "projectconverter.h"

#include "objectdatabase.h"

#include <QCoreApplication>
#include <QDebug>
#include <QMap>
#include <QSettings>

namespace {

const QString groupFilterDefine = QStringLiteral("\n\n /* old group filter setting */\n#define CO_DRV_GROUP_FILTER 1u\n");
constexpr int maxEnergyBusDevices = 48;

} // namespace

bool ProjectConverter::setDatabase(ObjectDataBase *store)
{
    database = store;
    return store != nullptr;
}

void ProjectConverter::convert(ObjectDataBase *store, const QString &applicationName)
{
    ProjectConverter converter;
    converter.setDatabase(store);
    converter.doGenericCorrection();
    converter.doCANopenCorrection();
    if (applicationName == QLatin1String("EnergyBus Kestrel Wizard"))
        converter.doEnergyBusCorrection();
    if (applicationName.contains(QLatin1String("J1939"))) {
        converter.doJ1939Correction();
    } else if (applicationName.contains(QLatin1String("CAN Kestrel"))) {
        converter.doRawCanCorrection();
        converter.doJ1939Correction();
    }
}

bool ProjectConverter::doGenericCorrection()
{
    qDebug() << Q_FUNC_INFO;
    if (database->getGeneralSetting(QStringLiteral("drv_group_filter")).toInt() == 1) {
        database->setGeneralSetting(QStringLiteral("drv_group_filter"), QStringLiteral("0"));
        database->setGeneralSetting(QStringLiteral("hw_defines"),
                                    database->getGeneralSetting(QStringLiteral("hw_defines")) + groupFilterDefine);
    }
    if (database->getGeneralSetting(QStringLiteral("udsserver_version")).toInt() == 5)
        database->setGeneralSetting(QStringLiteral("udsserver_version"), QStringLiteral("6"));
    return true;
}

bool ProjectConverter::doCANopenCorrection()
{
    if (database->getMiscSetting(QStringLiteral("costackpath")).isEmpty()) {
        const QSettings settings(QCoreApplication::organizationName(),
                                 qApp ? qApp->property("AppNameWithVersion").toString() : QString());
        const QString path = settings.value(QStringLiteral("General/costackpath")).toString();
        if (!path.isEmpty())
            database->setMiscSetting(QStringLiteral("costackpath"), path);
    }
    const QList<quint8> lines = database->getLines();
    const QString masterList = database->getGeneralSetting(QStringLiteral("co_ml_ms"));
    if (!lines.isEmpty() && masterList.contains(',')) {
        database->setGeneralSetting(QStringLiteral("nmtmaster"), masterList);
        database->setGeneralSetting(QStringLiteral("co_ml_ms"), QString());
    }
    for (const char *kind : {"server", "client"}) {
        const QString enabled = QStringLiteral("usdo_%1_enabled").arg(QLatin1String(kind));
        const QString count = QStringLiteral("usdo_%1_cnt").arg(QLatin1String(kind));
        if (database->getGeneralSetting(enabled).toInt() == 0 && database->getGeneralSetting(count).toInt() != 0)
            database->setGeneralSetting(enabled, QStringLiteral("1"));
    }
    for (const quint8 line : lines) {
        SUBINDEX_DATA_T sub;
        if (database->getSubIndex(line, 0x1032, 0, sub) && sub.implementation == 1) {
            sub.implementation = 0;
            database->addSubIndex(line, 0x1032, 0, sub);
        }
    }
    return true;
}

bool ProjectConverter::doEnergyBusCorrection()
{
    qDebug() << "ProjectConverter::doEnergyBusCorrection()";
    auto device = [](int n) { return QStringLiteral("device_%1").arg(n); };
    auto securityKind = [](int n) { return QStringLiteral("sec_%1_kind").arg(n); };

    QMap<int, QString> kinds;
    for (int n = 0; n <= maxEnergyBusDevices; ++n) {
        const QString value = database->getEnergyBusSetting(securityKind(n));
        if (!value.isEmpty())
            kinds.insert(n, QString::number(value.toLongLong(nullptr, 0)));
    }
    const int count = database->getEnergyBusSetting(QStringLiteral("device_cnt")).toInt();
    for (int n = count + 1; n <= maxEnergyBusDevices; ++n) {
        if (n < 1)
            continue;
        database->removeEnergyBusSetting(device(n));
        database->removeEnergyBusSetting(securityKind(n));
    }
    for (int n = 1; n <= count; ++n) {
        const QString text = database->getEnergyBusSetting(device(n));
        const QStringList parts = text.split(' ', Qt::SkipEmptyParts);
        if (parts.isEmpty())
            continue;
        const int k = parts.first().toInt();
        if (k == n)
            continue;
        qDebug() << "correct " << text;
        QString corrected = QStringLiteral("%1 ").arg(n);
        for (qsizetype i = 1; i < parts.size(); ++i)
            corrected += parts.at(i) + ' ';
        database->setEnergyBusSetting(device(n), corrected.trimmed());
        if (parts.size() > 1 && parts.at(1).contains(QLatin1String("ecurity"), Qt::CaseInsensitive) &&
            kinds.contains(k))
            database->setEnergyBusSetting(securityKind(n), kinds.value(k));
    }
    for (int n = 1; n <= count; ++n) {
        if (!database->getEnergyBusSetting(device(n)).contains(QLatin1String("security"), Qt::CaseInsensitive))
            database->removeEnergyBusSetting(securityKind(n));
    }
    return true;
}

bool ProjectConverter::doRawCanCorrection()
{
    const QList<quint8> lines = database->getLines();
    for (const quint8 line : lines)
        database->removePGN(line, 60928, Direction::Transmit);
    return true;
}

bool ProjectConverter::doJ1939Correction()
{
    database->updatePGNMappingCounts();
    database->mergeDataPageIntoPGNs();
    database->markSafePGNs();
    return true;
}
