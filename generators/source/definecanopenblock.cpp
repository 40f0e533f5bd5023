#include "definecanopenblock.h"

#include "definecobcounter.h"
#include "definecontext.h"
#include "definefamily.h"
#include "definepdoblock.h"
#include "store/objectdatabase.h"
#include "texttools/helper.h"

#include <QRegularExpression>

#include <algorithm>

namespace {

// The line whose device type selects the profile macros.
constexpr quint8 deviceLine = 0;

// Types without a C base type, which the stack supports only on request.
constexpr quint16 extendedDataTypes[] = {12, 22, 24, 25, 27};
constexpr quint16 utf8DataType = 124;

struct StaticFunction
{
    const char *key;
    const char *macro;
};

const StaticFunction usdoServerFunctions[] = {
    {"usdo_server_read_ind_function", "CO_EVENT_STATIC_USDO_SERVER_READ"},
    {"usdo_server_read_finished_ind_function", "CO_EVENT_STATIC_SUSDO_READ_FINISHED"},
    {"usdo_server_write_ind_function", "CO_EVENT_STATIC_USDO_SERVER_WRITE"},
    {"usdo_server_ind_check_write_function", "CO_EVENT_STATIC_USDO_CHECK_WRITE"},
    {"usdo_server_domain_write_ind_function", "CO_EVENT_STATIC_SUSDO_DOMAIN_WRITE"},
    {"usdo_server_domain_read_ind_function", "CO_EVENT_STATIC_SUSDO_DOMAIN_READ"},
};

const StaticFunction usdoClientFunctions[] = {
    {"usdo_client_read_ind_function", "CO_EVENT_STATIC_CUSDO_CLIENT_READ"},
    {"usdo_client_write_ind_function", "CO_EVENT_STATIC_CUSDO_CLIENT_WRITE"},
    {"usdo_client_domain_write_ind_function", "CO_EVENT_STATIC_CUSDO_DOMAIN_WRITE"},
    {"usdo_client_domain_read_ind_function", "CO_EVENT_STATIC_CUSDO_DOMAIN_READ"},
};

// Flags of services that a setting switches on.
struct SwitchedService
{
    const char *key;
    const char *macro;
};

const SwitchedService switchedServices[] = {
    {"dynod", "CO_DYNAMIC_OBJDIC"},
    {"csdo_write_special", "CO_EVENT_CSDO_DOMAIN_WRITE"},
    {"emcy_routing", "CO_EMCY_NETWORKING"},
    {"sdo_routing", "CO_SDO_NETWORKING"},
};

} // namespace

DefineCanopenBlock::DefineCanopenBlock(DefineContext &context)
    : context(context)
{}

void DefineCanopenBlock::write()
{
    if (!context.project.lineList().isEmpty())
        writeLineSettings();
    scanDataTypes();
    context.out.text(QStringLiteral("/* Definition of numbers of CANopen services */\n"));
    writeProfile();
    writeServices();
    if (context.state.canFd)
        writeUsdo();
    DefinePdoBlock(context).write(extendedTypes, utf8Type);
    context.out.text(QStringLiteral("\n\n"));
}

QString DefineCanopenBlock::perLine(const std::function<qint64(quint8 line)> &value,
                                    const QString &separator) const
{
    QList<qint64> values;
    for (const quint8 line : context.project.lineList())
        values << value(line);
    return DefineWriter::countList(values, separator);
}

void DefineCanopenBlock::writeLineSettings()
{
    const DefineProject &project = context.project;
    DefineWriter &out = context.out;
    DefineState &state = context.state;
    const QList<quint8> &lines = project.lineList();
    out.text(QStringLiteral("/* Line Settings */\n"));
    if ((lines.size() > 1 || state.forcedMultiLine) && !state.multiLineWritten) {
        out.flag(QStringLiteral("CAN_MULTI_LINE"));
        out.count(QStringLiteral("CAN_MULTI_LINE_CNT"), lines.size());
        state.multiLineWritten = true;
    }
    out.flag(QStringLiteral("CANOPEN_SUPPORTED"));
    out.text(QStringLiteral("/* Number of receive/transmit buffer entries per line */\n"));
    out.define(QStringLiteral("CORE_REC_BUFFER_COUNTS"),
               project.bufferList(QStringLiteral("receivebuffersize"), QStringLiteral("10")));
    out.define(QStringLiteral("CORE_TR_BUFFER_COUNTS"),
               project.bufferList(QStringLiteral("transmitbuffersize"), QStringLiteral("5")));
    state.bufferCountsWritten = true;
    out.text(QStringLiteral("/* Number of objects per line */\n"));
    auto allObjects = [&](quint8 line) { return project.objects(line, 0x1000, 0xFFFF); };
    for (const quint8 line : lines)
        out.count(QStringLiteral("CO_OBJECTS_LINE_%1_CNT").arg(line), allObjects(line));
    out.define(QStringLiteral("CO_OBJECT_COUNTS"), perLine(allObjects));
    if (!state.multiProtocol) {
        const DefineCobCounter cobs(context);
        out.define(QStringLiteral("CORE_COB_COUNTS"),
                   perLine([&](quint8 line) { return cobs.canopenCount(line); }));
    }
    out.define(QStringLiteral("CO_TXPDO_COUNTS"),
               perLine([&](quint8 line) { return project.objects(line, 0x1800, 0x19FF); }));
    out.define(QStringLiteral("CO_RXPDO_COUNTS"),
               perLine([&](quint8 line) { return project.objects(line, 0x1400, 0x15FF); }));
    const bool cia510Server = project.j1939Number(QStringLiteral("cia510serversupport")) == 1;
    const bool cia510Client = project.j1939Number(QStringLiteral("cia510clientsupport")) == 1;
    out.define(QStringLiteral("CO_SSDO_COUNTS"), perLine([&](quint8 line) -> qint64 {
                   const int servers = project.objects(line, 0x1200, 0x127F);
                   if (servers != 0)
                       return servers;
                   const int type = project.lineType(line);
                   if (type == 1)
                       return state.canFd ? 0 : 1;
                   return DefineProject::isJ1939WithoutCanopen(type) && cia510Server ? 1 : 0;
               }));
    out.define(QStringLiteral("CO_CSDO_COUNTS"), perLine([&](quint8 line) -> qint64 {
                   const int clients = project.objects(line, 0x1280, 0x12FF);
                   const int type = project.lineType(line);
                   if (clients == 0 && DefineProject::isJ1939WithoutCanopen(type))
                       return cia510Client ? 1 : 0;
                   return clients;
               }));
    out.define(QStringLiteral("CO_ASSIGN_COUNTS"),
               perLine([&](quint8 line) { return project.subs(line, 0x1F81); }));
    const qint64 maxSlaves = project.generalNumber(QStringLiteral("max_slave_assignment"));
    out.define(QStringLiteral("CO_MAX_ASSIGN_COUNTS"), perLine([&](quint8 line) {
                   return maxSlaves != 0 ? maxSlaves : qint64(project.subs(line, 0x1F81));
               }));
    out.text(QStringLiteral("#define CO_GUARDING_COUNTS\tCO_MAX_ASSIGN_COUNTS\n"));
    out.define(QStringLiteral("CO_ERR_CTRL_COUNTS"),
               perLine([&](quint8 line) { return project.subs(line, 0x1016); }));
    int storeMax = 0;
    for (const quint8 line : lines)
        storeMax = qMax(storeMax, project.subs(line, 0x1010));
    if (storeMax > 0)
        out.count(QStringLiteral("CO_STORE_CNT_MAX"), storeMax);
    out.define(QStringLiteral("CO_ERR_HIST_COUNTS"),
               perLine([&](quint8 line) { return project.subs(line, 0x1003); }));
    out.define(QStringLiteral("CO_ACT_ERR_HIST_COUNTS"),
               perLine([&](quint8 line) { return project.subs(line, 0x1032); }));
    out.define(QStringLiteral("CO_EMCY_CONS_COUNTS"),
               perLine([&](quint8 line) { return project.subs(line, 0x1028); }));
    writeNodeIds();
}

void DefineCanopenBlock::writeNodeIds()
{
    const DefineProject &project = context.project;
    DefineWriter &out = context.out;
    static const QRegularExpression onlyCommas(QStringLiteral("^,{1,7}$"));
    QString nodeIds = project.general(QStringLiteral("co_node_id")).trimmed();
    if (onlyCommas.match(nodeIds).hasMatch()) {
        nodeIds = QStringLiteral("0u");
    } else if (!nodeIds.isEmpty()) {
        if (nodeIds.startsWith(','))
            nodeIds.prepend('0');
        if (nodeIds.endsWith(','))
            nodeIds.append('0');
        nodeIds.replace(QLatin1String(",,"), QLatin1String(",0,"));
    }
    out.define(QStringLiteral("CO_NODE_IDS"), nodeIds);

    // A per-line list of empty names is no longer than its commas: no line has a function.
    const QString functions = project.general(QStringLiteral("co_node_id_fct")).trimmed();
    const qsizetype lines = project.lineList().size();
    if (functions.size() <= lines) {
        QStringList nulls;
        for (qsizetype i = 0; i < lines; ++i)
            nulls << QStringLiteral("NULL");
        out.define(QStringLiteral("CO_NODE_ID_FUNCTIONS"), nulls.join(QLatin1String(", ")),
                   QStringLiteral(" "));
    } else {
        out.define(QStringLiteral("CO_NODE_ID_FUNCTIONS"), functions);
        out.text(QStringLiteral("\n"));
    }
    if (!project.general(QStringLiteral("co_network_id")).isEmpty())
        out.count(QStringLiteral("CO_NETWORK_ID"), project.generalNumber(QStringLiteral("co_network_id")));
}

void DefineCanopenBlock::scanDataTypes()
{
    ObjectDataBase &store = context.project.store();
    for (const quint8 line : context.project.lineList()) {
        const QList<quint16> indices = store.getIndices(line, 0x1000, 0xFFFF);
        for (const quint16 index : indices) {
            const QList<quint8> subIndices = store.getSubIndices(line, index, 0);
            for (const quint8 subIndex : subIndices) {
                SUBINDEX_DATA_T data;
                if (!store.getSubIndex(line, index, subIndex, data))
                    continue;
                if (std::find(std::begin(extendedDataTypes), std::end(extendedDataTypes), data.datatype) !=
                    std::end(extendedDataTypes))
                    extendedTypes = true;
                if (index >= 0x2000 && data.datatype == utf8DataType)
                    utf8Type = true;
            }
        }
    }
}

void DefineCanopenBlock::writeProfile()
{
    const DefineProject &project = context.project;
    DefineWriter &out = context.out;
    INDEX_DATA_T device;
    project.store().getIndex(deviceLine, 0x1000, device);
    const quint8 typeSub = device.objecttype == 7 ? 0 : 1;
    const quint16 profile = quint16(project.defaultNumber(deviceLine, 0x1000, typeSub));
    if (profile == 0)
        return;
    out.flag(QStringLiteral("CO_PROFILE_%1").arg(profile));
    if (profile == 454)
        out.flag(QStringLiteral("CO_EVENT_PROFILE_STORE"));
    if (profile == 447) {
        for (quint8 subIndex = 1; subIndex <= 2; ++subIndex) {
            const quint32 groups = quint32(project.defaultNumber(deviceLine, 0x6000, subIndex));
            for (int bit = 0; bit < 32; ++bit) {
                if (groups & (1u << bit))
                    out.define(QStringLiteral("CO_P447_VDFG_%1").arg((subIndex - 1) * 32 + bit + 1),
                               QStringLiteral("1u"), QStringLiteral(" \t"));
            }
        }
    }
}

void DefineCanopenBlock::writeServices()
{
    const DefineProject &project = context.project;
    DefineWriter &out = context.out;
    const QList<quint8> &lines = project.lineList();
    bool master = false;
    bool slave = false;
    bool flyingMaster = false;
    for (const quint8 line : lines) {
        const qint64 role = project.lineGeneralNumber(QStringLiteral("nmtmaster"), line);
        master = master || role == 1 || role == 2;
        slave = slave || role != 1;
        flyingMaster = flyingMaster || (project.defaultNumber(line, 0x1F80, 0) & 0x20) != 0;
    }
    if (context.family().flyingMasterFromSetting)
        flyingMaster = project.generalOn(QStringLiteral("flyma_supported"));
    if (master) {
        out.flag(QStringLiteral("CO_NMT_MASTER"));
        if (flyingMaster)
            out.flag(QStringLiteral("CO_FLYING_MASTER_SUPPORTED"));
    }
    const bool lss = project.generalOn(QStringLiteral("lss_supported"));
    if (lss && master)
        out.flag(QStringLiteral("CO_LSS_MASTER_SUPPORTED"));
    if (lss && (!master || (lines.size() >= 2 && slave)))
        out.flag(QStringLiteral("CO_LSS_SUPPORTED"));
    if (lss && project.generalOn(QStringLiteral("lss_inquiry_supported")))
        out.flag(QStringLiteral("CO_LSS_INQUIRY_SERVICES"));
    if (project.generalOn(QStringLiteral("idnego_supported")))
        out.flag(QStringLiteral("CO_IDNEGO_SUPPORTED"));
    for (const quint8 line : lines) {
        if (project.exists(line, 0x1300)) {
            out.flag(QStringLiteral("CO_GFC_SUPPORTED"));
            break;
        }
    }
    for (const auto &service : switchedServices) {
        if (project.generalOn(QLatin1String(service.key)))
            out.flag(QLatin1String(service.macro));
    }
    writeRouting();
    writeSdoCounts();
}

void DefineCanopenBlock::writeRouting()
{
    const DefineProject &project = context.project;
    DefineWriter &out = context.out;
    const QString routingCounts = project.general(QStringLiteral("routing_counts")).trimmed();
    if (context.family().routingCountsSetting && !routingCounts.isEmpty()) {
        out.define(QStringLiteral("CO_NETWORK_ROUTING_COUNTS"),
                   Helper::addLowerCaseUtoNumberLists(routingCounts));
        const qint64 sum = project.bufferSum(QStringLiteral("routing_counts"), QString());
        if (sum != 0)
            out.count(QStringLiteral("CO_NETWORK_ROUTING_CNT"), sum);
        return;
    }
    qint64 sum = 0;
    for (const quint8 line : project.lineList())
        sum += project.subs(line, 0x1F2C);
    if (sum != 0) {
        out.define(QStringLiteral("CO_NETWORK_ROUTING_COUNTS"),
                   perLine([&](quint8 line) { return project.subs(line, 0x1F2C); }));
        out.count(QStringLiteral("CO_NETWORK_ROUTING_CNT"), sum);
    } else {
        out.define(QStringLiteral("CO_NETWORK_ROUTING_COUNTS"), perLine([](quint8) { return 1; }));
    }
}

void DefineCanopenBlock::writeSdoCounts()
{
    const DefineProject &project = context.project;
    DefineWriter &out = context.out;
    DefineState &state = context.state;
    const bool cia510Server = project.j1939Number(QStringLiteral("cia510serversupport")) == 1;
    const bool cia510Client = project.j1939Number(QStringLiteral("cia510clientsupport")) == 1;
    qint64 servers = 0;
    qint64 clients = 0;
    qint64 cia510Lines = 0;
    for (const quint8 line : project.lineList()) {
        const int type = project.lineType(line);
        int lineServers = project.objects(line, 0x1200, 0x127F);
        if (lineServers == 0 && DefineProject::isCanopenType(type) && !state.canFd)
            lineServers = 1;
        servers += lineServers;
        clients += project.objects(line, 0x1280, 0x12FF);
        if (DefineProject::isJ1939WithoutCanopen(type))
            ++cia510Lines;
    }
    if (cia510Server)
        servers += cia510Lines;
    if (servers != 0) {
        out.count(QStringLiteral("CO_SDO_SERVER_CNT"), servers);
        state.sdoServerCntWritten = true;
    }
    if (clients != 0 && cia510Client)
        clients += cia510Lines;
    if (clients != 0) {
        out.count(QStringLiteral("CO_SDO_CLIENT_CNT"), clients);
        state.sdoClientCntWritten = true;
    }
}

void DefineCanopenBlock::writeUsdo()
{
    const DefineProject &project = context.project;
    DefineWriter &out = context.out;
    auto enabled = [&](const QString &key, quint8 line) {
        return project.lineGeneral(key, line).trimmed() == QLatin1String("1");
    };
    auto connections = [&](const QString &key, quint8 line) {
        return project.lineGeneralNumber(key, line, true);
    };
    auto writeStatics = [&](const auto &functions) {
        for (const auto &function : functions) {
            if (!project.general(QLatin1String(function.key)).trimmed().isEmpty())
                out.define(QLatin1String(function.macro), QStringLiteral("1u"), QStringLiteral(" "));
        }
    };
    const QString serverEnabled = QStringLiteral("usdo_server_enabled");
    const QString serverCount = QStringLiteral("usdo_server_cnt");
    const QString clientEnabled = QStringLiteral("usdo_client_enabled");
    const QString clientCount = QStringLiteral("usdo_client_cnt");

    out.flag(QStringLiteral("CO_USDO_SUPPORTED"));
    bool anyServer = false;
    qint64 serverSum = 0;
    for (const quint8 line : project.lineList()) {
        if (enabled(serverEnabled, line)) {
            anyServer = true;
            serverSum += connections(serverCount, line);
        }
    }
    if (anyServer) {
        out.count(QStringLiteral("CO_USDO_SERVER_MAX_CONN_CNT"), serverSum);
        out.define(QStringLiteral("CO_USDO_SERVER_MAX_CONN_COUNTS"),
                   perLine([&](quint8 line) { return connections(serverCount, line); }, QStringLiteral(",")));
    }
    const qint64 domainSize = project.generalNumber(QStringLiteral("usdo_server_domain_write_ind_size"));
    if (domainSize != 0)
        out.count(QStringLiteral("CO_SUSDO_DOMAIN_CNT"), domainSize);
    if (project.generalIsOne(QStringLiteral("usdo_split_indication_supported")))
        out.flag(QStringLiteral("CO_USDO_SPLIT_INDICATION"));
    writeStatics(usdoServerFunctions);

    bool anyClient = false;
    qint64 clientSum = 0;
    for (const quint8 line : project.lineList()) {
        if (enabled(clientEnabled, line)) {
            anyClient = true;
            clientSum += connections(clientCount, line);
        }
    }
    if (anyClient) {
        out.flag(QStringLiteral("CO_USDO_CLIENT_SUPPORTED"));
        out.count(QStringLiteral("CO_USDO_CLIENT_MAX_CONN_CNT"), clientSum);
        out.define(QStringLiteral("CO_USDO_CLIENT_MAX_CONN_COUNTS"),
                   perLine(
                       [&](quint8 line) -> qint64 {
                           return enabled(clientEnabled, line) ? connections(clientCount, line) : 0;
                       },
                       QStringLiteral(",")));
    }
    writeStatics(usdoClientFunctions);
}
