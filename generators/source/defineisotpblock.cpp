#include "defineisotpblock.h"

#include "definecontext.h"
#include "definefamily.h"
#include "store/objectdatabase.h"

namespace {

// Highest service identifier of the UDS service tables.
constexpr quint8 lastUdsService = 127;

// UDS indications that the application binds at compile time, and the macros that guard them.
struct UdsIndication
{
    const char *key;
    const char *macro;
};

const UdsIndication udsIndications[] = {
    {"uds_fct_check_req_session", "UDS_EVENT_STATIC_CHECK_REQ_SESSION"},
    {"uds_fct_clear_dtc_info", "UDS_EVENT_STATIC_CLEAR_DTC_INFO"},
    {"uds_fct_dtc_info", "UDS_EVENT_STATIC_DTC_INFO"},
    {"uds_fct_id_data_transmit", "UDS_EVENT_STATIC_ID_DATA_TRANSMIT"},
    {"uds_fct_mem_data_transmit", "UDS_EVENT_STATIC_MEM_DATA_TRANSMIT"},
    {"uds_fct_sec_access_req_key", "UDS_EVENT_STATIC_SEC_ACCESS_REQ_KEY"},
    {"uds_fct_req_commgt", "UDS_EVENT_STATIC_REQ_COMMGT"},
    {"uds_fct_authent_req", "UDS_EVENT_STATIC_AUTHENT_REQ"},
    {"uds_fct_ioctrl", "UDS_EVENT_STATIC_IOCTRL"},
    {"uds_fct_routine_ctrl", "UDS_EVENT_STATIC_ROUTINE_CTRL"},
    {"uds_fct_data_transfer", "UDS_EVENT_STATIC_DATA_TRANSFER"},
    {"uds_fct_generic", "UDS_EVENT_STATIC_GENERIC_FCT"},
};

// ISO-TP call-backs; the optional ones are written when set, or when the UDS server needs them.
struct IsoTpEvent
{
    const char *key;
    const char *macro;
    bool optional;
};

const IsoTpEvent isoTpEvents[] = {
    {"isotp_dyn_server_ind", "ISOTP_EVENT_DYNAMIC_SERVER", false},
    {"isotp_dyn_client_ind", "ISOTP_EVENT_DYNAMIC_CLIENT", false},
    {"isotp_dyn_split_ind", "ISOTP_EVENT_DYNAMIC_SSPLIT", true},
    {"isotp_dyn_client_txack_ind", "ISOTP_EVENT_DYNAMIC_CLIENT_TXACK", true},
};

} // namespace

DefineIsoTpBlock::DefineIsoTpBlock(DefineContext &context)
    : context(context)
{}

void DefineIsoTpBlock::write()
{
    const DefineProject &project = context.project;
    if (!project.generalIsOne(QStringLiteral("isotp_supported")) &&
        !project.generalIsOne(QStringLiteral("udsserver_supported")) &&
        !project.generalIsOne(QStringLiteral("udsclient_supported")))
        return;
    context.out.text(QStringLiteral("\n/* ISO-TP Defines */\n"));
    context.out.flag(QStringLiteral("ISOTP_SUPPORTED"));
    writeConnections();
    writeEvents();
    if (project.generalIsOne(QStringLiteral("udsserver_supported")))
        writeUdsServer();
    if (project.generalIsOne(QStringLiteral("udsclient_supported")))
        writeUdsClient();
    if (context.family().readsBootloaderSettings &&
        project.generalIsOne(QStringLiteral("uds_static_indication")))
        writeStaticIndications();
}

QStringList DefineIsoTpBlock::connectionEntries(const QString &key) const
{
    QStringList entries;
    const QStringList parts = context.project.general(key).split(',');
    for (const QString &part : parts) {
        if (!part.trimmed().isEmpty())
            entries << part.trimmed();
    }
    return entries;
}

void DefineIsoTpBlock::writeConnections()
{
    const DefineProject &project = context.project;
    DefineWriter &out = context.out;
    const bool isoTp = project.generalIsOne(QStringLiteral("isotp_supported"));
    const bool server = project.generalIsOne(QStringLiteral("udsserver_supported"));
    QStringList clients;
    QStringList servers;
    if (isoTp) {
        // The UDS server takes a client and two server connections of its own.
        const int clientExtra = server ? 1 : 0;
        const int serverExtra = server ? 2 : 0;
        for (const QString &entry : connectionEntries(QStringLiteral("isotp_client_con")))
            clients << (server ? QString::number(DefineProject::number(entry, true) + clientExtra) : entry);
        for (const QString &entry : connectionEntries(QStringLiteral("isotp_server_con")))
            servers << (server ? QString::number(DefineProject::number(entry, true) + serverExtra) : entry);
    } else {
        for (const quint8 line : project.lines()) {
            if (server) {
                clients << QStringLiteral("1");
                servers << QStringLiteral("2");
            } else {
                const qint64 udsClients = project.lineGeneralNumber(QStringLiteral("uds_client_cnt"), line);
                clients << QString::number(udsClients);
                servers << QString::number(2 * udsClients);
            }
        }
    }
    auto total = [](const QStringList &entries) {
        qint64 sum = 0;
        for (const QString &entry : entries)
            sum += DefineProject::number(entry, true);
        return sum;
    };
    out.count(QStringLiteral("ISOTP_CLIENT_CONNECTION_CNT"), total(clients));
    out.count(QStringLiteral("ISOTP_SERVER_CONNECTION_CNT"), total(servers));
    out.define(QStringLiteral("ISOTP_CLIENT_COUNTS"), clients.join(QLatin1String("u,")) + 'u');
    out.define(QStringLiteral("ISOTP_SERVER_COUNTS"), servers.join(QLatin1String("u,")) + 'u');
}

void DefineIsoTpBlock::writeEvents()
{
    const DefineProject &project = context.project;
    const bool server = project.generalIsOne(QStringLiteral("udsserver_supported"));
    const qint64 extra = server ? 1 : 0;
    for (const auto &event : isoTpEvents) {
        const QString value = project.general(QLatin1String(event.key));
        if (event.optional && value.trimmed().isEmpty() && !server)
            continue;
        context.out.count(QLatin1String(event.macro), DefineProject::number(value) + extra);
    }
}

void DefineIsoTpBlock::writeUdsServer()
{
    const DefineProject &project = context.project;
    DefineWriter &out = context.out;
    out.flag(QStringLiteral("UDS_SERVER_SUPPORTED"));
    out.count(QStringLiteral("UDS_SECURITY_SEED_KEY_LEN"),
              project.generalNumber(QStringLiteral("uds_seedkey_length")));
    out.count(QStringLiteral("UDS_SESSION_TIMEOUT"),
              project.generalNumber(QStringLiteral("uds_session_timeout")));
    if (authenticationRequired())
        out.flag(QStringLiteral("UDS_AUTHENTICATION_REQUIRED"));
    if (project.generalIsOne(QStringLiteral("uds_only_appl_session_check")))
        out.flag(QStringLiteral("UDS_ONLY_APPL_REQUIRED_SESSION_CHECK"));
    if (project.generalIsOne(QStringLiteral("uds_only_appl_security_check")))
        out.flag(QStringLiteral("UDS_ONLY_APPL_SECURITY_LEVEL_CHECK"));
}

bool DefineIsoTpBlock::authenticationRequired() const
{
    ObjectDataBase &store = context.project.store();
    for (const quint8 line : context.project.lines()) {
        for (int service = 0; service <= lastUdsService; ++service) {
            if (!store.getUDSAuthentication(line, quint8(service)).isEmpty())
                return true;
        }
    }
    return false;
}

void DefineIsoTpBlock::writeUdsClient()
{
    const DefineProject &project = context.project;
    DefineWriter &out = context.out;
    out.flag(QStringLiteral("UDS_CLIENT_SUPPORTED"));
    qint64 clients = 0;
    for (const quint8 line : project.lines())
        clients += project.lineGeneralNumber(QStringLiteral("uds_client_cnt"), line);
    out.define(QStringLiteral("UDS_CLIENT_CNT"), QString::number(clients));
    if (project.general(QStringLiteral("uds_client_partial_download")) == QLatin1String("1"))
        out.flag(QStringLiteral("UDSCLIENT_EVENT_DYNAMIC_DATA_DOWNLOAD"));
}

void DefineIsoTpBlock::writeStaticIndications()
{
    context.out.text(QStringLiteral("\n/* static UDS indication binding */\n"));
    for (const auto &indication : udsIndications) {
        if (!context.project.general(QLatin1String(indication.key)).trimmed().isEmpty())
            context.out.flag(QLatin1String(indication.macro));
    }
}
