#include "defineenergybusblock.h"

#include "definecontext.h"
#include "store/objectdatabase.h"

namespace {

// The device kinds as the wizard names them, and the short names of their settings.
struct DeviceKind
{
    const char *name;
    const char *kind;
};

const DeviceKind deviceKinds[] = {
    {"EnergyBus Controller", "ebc"},
    {"Battery", "bat"},
    {"Display", "hmi"},
    {"Voltage Converter", "vc"},
    {"Motor Controller Unit", "mcu"},
    {"Load Monitoring Device", "lmd"},
    {"Manufacturer specific device (passive)", "manup"},
    {"Manufacturer specific device (active)", "manua"},
    {"Security Device/Extension", "sec"},
};

const QString security = QStringLiteral("sec");
const QString controller = QStringLiteral("ebc");

// The devices of one kind inside this device, and where their sub-indices start.
struct LocalCount
{
    const char *kind;
    const char *countMacro;
    const char *offsetMacro;
};

const LocalCount localCounts[] = {
    {"ebc", "EB_EBC_CNT", nullptr},
    {"lmd", "EB_LMD_CNT", "EB_LOCAL_LMD_SUBIDX_OFFS"},
    {"sec", "EB_SECURITY_CNT", "EB_LOCAL_SECURITY_SUBIDX_OFFS"},
    {"bat", "EB_BATTERY_CNT", "EB_LOCAL_BATTERY_SUBIDX_OFFS"},
    {"hmi", "EB_HMI_CNT", "EB_LOCAL_HMI_SUBIDX_OFFS"},
    {"manup", "EB_MANU_P_CNT", "EB_LOCAL_MANU_P_SUBIDX_OFFS"},
    {"manua", "EB_MANU_A_CNT", "EB_LOCAL_MANU_A_SUBIDX_OFFS"},
    {"mcu", "EB_MCU_CNT", "EB_LOCAL_MCU_SUBIDX_OFFS"},
    {"vc", "EB_VOLT_CONV_CNT", "EB_LOCAL_VOLT_CONV_SUBIDX_OFFS"},
};

// The devices of one kind in the network that the controller manages.
struct NetworkCount
{
    const char *kind;
    const char *macro;
};

const NetworkCount networkCounts[] = {
    {"bat", "EB_NETWORK_BATTERY_CNT"},  {"mcu", "EB_NETWORK_MCU_CNT"},
    {"hmi", "EB_NETWORK_HMI_CNT"},      {"manup", "EB_NETWORK_MANU_P_CNT"},
    {"manua", "EB_NETWORK_MANU_A_CNT"}, {"sec", "EB_NETWORK_SECURITY_CNT"},
    {"vc", "EB_NETWORK_VOLT_CONV_CNT"}, {"lmd", "EB_NETWORK_LOAD_MONITORING_CNT"},
};

const NetworkCount networkOffsets[] = {
    {"bat", "EB_NETWORK_BATTERY_SUBIDX_OFFS"},  {"sec", "EB_NETWORK_SECURITY_SUBIDX_OFFS"},
    {"vc", "EB_NETWORK_VOLT_CONV_SUBIDX_OFFS"}, {"hmi", "EB_NETWORK_HMI_SUBIDX_OFFS"},
    {"manup", "EB_NETWORK_MANU_P_SUBIDX_OFFS"}, {"manua", "EB_NETWORK_MANU_A_SUBIDX_OFFS"},
    {"lmd", "EB_NETWORK_LMD_SUBIDX_OFFS"},      {"mcu", "EB_NETWORK_MCU_SUBIDX_OFFS"},
};

QString maximumKey(const char *kind)
{
    return QStringLiteral("ebc_max_%1_number").arg(QLatin1String(kind));
}

} // namespace

DefineEnergyBusBlock::DefineEnergyBusBlock(DefineContext &context)
    : context(context)
{}

void DefineEnergyBusBlock::write()
{
    const DefineProject &project = context.project;
    context.out.text(QStringLiteral("/* EnergyBus Defines */\n"));
    const bool plainSecurity = hasPlainSecurity();
    const qint64 devices = DefineProject::number(project.energyBus(QStringLiteral("device_cnt")));
    context.out.count(QStringLiteral("EB_VIRTUAL_DEV_CNT"), quint8(devices - (plainSecurity ? 1 : 0)));
    const QHash<QString, qint64> kinds = countKinds(plainSecurity);
    writeDeviceCounts(kinds);
    writeNetworkCounts(kinds, plainSecurity);
}

bool DefineEnergyBusBlock::hasPlainSecurity() const
{
    const QStringList keys = context.project.store().getEnergyBusKeys();
    for (const QString &key : keys) {
        if (key.startsWith(QLatin1String("sec_")) && key.endsWith(QLatin1String("_kind")) &&
            DefineProject::number(context.project.energyBus(key)) == 0)
            return true;
    }
    return false;
}

QHash<QString, qint64> DefineEnergyBusBlock::countKinds(bool plainSecurity) const
{
    QHash<QString, qint64> kinds;
    const QStringList keys = context.project.store().getEnergyBusKeys();
    for (const QString &key : keys) {
        if (!key.startsWith(QLatin1String("device_")))
            continue;
        // The wizard stores "<number> <kind name>".
        const QString name = context.project.energyBus(key).mid(2).trimmed();
        for (const auto &kind : deviceKinds) {
            if (name != QLatin1String(kind.name))
                continue;
            const QString shortName = QLatin1String(kind.kind);
            if (shortName != security || !plainSecurity)
                ++kinds[shortName];
        }
    }
    return kinds;
}

void DefineEnergyBusBlock::writeDeviceCounts(const QHash<QString, qint64> &kinds)
{
    DefineWriter &out = context.out;
    for (const auto &local : localCounts) {
        const qint64 count = kinds.value(QLatin1String(local.kind));
        if (count <= 0)
            continue;
        out.count(QLatin1String(local.countMacro), count);
        if (!local.offsetMacro)
            continue;
        const QString offset =
            context.project.energyBus(QStringLiteral("int_offset_%1").arg(QLatin1String(local.kind)));
        if (!offset.isEmpty())
            out.define(QLatin1String(local.offsetMacro), offset + 'u');
    }
}

void DefineEnergyBusBlock::writeNetworkCounts(const QHash<QString, qint64> &kinds, bool plainSecurity)
{
    const DefineProject &project = context.project;
    DefineWriter &out = context.out;
    bool securityWritten = false;
    const quint8 networkDevices =
        quint8(DefineProject::number(project.energyBus(QStringLiteral("ebc_max_dev_number"))));
    if (networkDevices != 0) {
        out.count(QStringLiteral("EB_NETWORK_VIRTUAL_DEV_CNT"), networkDevices);
        for (const auto &network : networkCounts) {
            const QString value = project.energyBus(maximumKey(network.kind)).trimmed();
            if (DefineProject::number(value) < 1)
                continue;
            out.define(QLatin1String(network.macro), value + 'u');
            securityWritten = securityWritten || QLatin1String(network.kind) == security;
        }
    }
    if (DefineProject::number(project.energyBus(QStringLiteral("ebc_tool_supported"))) > 0)
        out.flag(QStringLiteral("EB_NETWORK_PC_TOOL_CNT"));
    if (!securityWritten && (plainSecurity || kinds.value(security) > 0))
        out.flag(QStringLiteral("EB_NETWORK_SECURITY_CNT"));
    if (kinds.value(controller) <= 0)
        return;
    for (const auto &offset : networkOffsets) {
        if (DefineProject::number(project.energyBus(maximumKey(offset.kind))) < 1)
            continue;
        const QString start = QStringLiteral("ext_start_pos_%1").arg(QLatin1String(offset.kind));
        out.count(QLatin1String(offset.macro), quint8(DefineProject::number(project.energyBus(start))));
    }
}
