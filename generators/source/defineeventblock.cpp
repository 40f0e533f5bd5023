#include "defineeventblock.h"

#include "definecontext.h"
#include "definefamily.h"

namespace {

// A statically bound indication: set when one of the function names is given.
struct StaticEvent
{
    const char *macro;
    const char *keys[3];
};

const StaticEvent staticEvents[] = {
    {"CO_EVENT_STATIC_SDO_SERVER_READ", {"fct_sdo_server_read"}},
    {"CO_EVENT_STATIC_SDO_SERVER_WRITE", {"fct_sdo_server_write"}},
    {"CO_EVENT_STATIC_SDO_SERVER_CHECK_WRITE", {"fct_sdo_server_check_write"}},
    {"CO_EVENT_STATIC_PDO", {"fct_pdo", "fct_pdo_received", "fct_pdo_sync"}},
    {"CO_EVENT_STATIC_PDO_UPDATE", {"fct_pdo_update"}},
    {"CO_EVENT_STATIC_NMT", {"fct_nmt"}},
    {"CO_EVENT_STATIC_ERRCTRL", {"fct_errctrl"}},
    {"CO_EVENT_STATIC_SYNC", {"fct_sync"}},
    {"CO_EVENT_STATIC_FINISHED", {"fct_finished"}},
    {"CO_EVENT_STATIC_LED", {"fct_led_green", "fct_led_red"}},
    {"CORE_EVENT_STATIC_CAN", {"fct_can"}},
    {"CO_EVENT_STATIC_CFG_MAN", {"fct_cfgman"}},
    {"CO_EVENT_STATIC_SDO_CLIENT_READ", {"fct_sdo_client_read"}},
    {"CO_EVENT_STATIC_SDO_CLIENT_WRITE", {"fct_sdo_client_write"}},
    {"CO_EVENT_STATIC_EMCY", {"fct_emcy"}},
    {"CO_EVENT_STATIC_EMCY_CONSUMER", {"fct_emcy_consumer"}},
    {"CO_EVENT_STATIC_TIME", {"fct_time"}},
    {"CO_EVENT_STATIC_STORE_LOAD", {"fct_store"}},
    {"CO_EVENT_STATIC_STORE_CLEAR", {"fct_store_clear"}},
    {"CO_EVENT_STATIC_STORE_SAVE", {"fct_store_save"}},
    {"CO_EVENT_STATIC_SRD", {"fct_srd"}},
    {"CO_EVENT_STATIC_SYNC_FINISHED", {"fct_sync_finished"}},
    {"CO_EVENT_STATIC_LSS", {"fct_lss", "fct_lss_master"}},
    {"CO_EVENT_STATIC_FLYMA", {"fct_flyma"}},
    {"CO_EVENT_STATIC_MANAGER", {"fct_manager"}},
    {"CO_EVENT_STATIC_MPDO", {"fct_mpdo"}},
};

// The number of call-back functions of a service, from its setting.
struct DynamicEvent
{
    const char *key;
    const char *macro;
    // Only with CAN FD: the USDO services.
    bool fdOnly = false;
    // Only in the older family, which knows dynamic check-write events.
    bool checkWrite = false;
};

const DynamicEvent dynamicEvents[] = {
    {"usdo_server_ind_read_cnt", "CO_EVENT_DYNAMIC_USDO_SERVER_READ", true},
    {"usdo_server_ind_read_finished_cnt", "CO_EVENT_DYNAMIC_SUSDO_READ_FINISHED", true},
    {"usdo_server_ind_write_cnt", "CO_EVENT_DYNAMIC_USDO_SERVER_WRITE", true},
    {"usdo_server_ind_check_write_cnt", "CO_EVENT_DYNAMIC_USDO_SERVER_CHECK_WRITE", true, true},
    {"usdo_server_ind_domain_write_cnt", "CO_EVENT_DYNAMIC_SUSDO_DOMAIN_WRITE", true},
    {"usdo_server_ind_domain_read_cnt", "CO_EVENT_DYNAMIC_SUSDO_DOMAIN_READ", true},
    {"usdo_client_ind_read_cnt", "CO_EVENT_DYNAMIC_USDO_CLIENT_READ", true},
    {"usdo_client_ind_write_cnt", "CO_EVENT_DYNAMIC_USDO_CLIENT_WRITE", true},
    {"usdo_client_ind_domain_read_cnt", "CO_EVENT_DYNAMIC_CUSDO_DOMAIN_READ", true},
    {"usdo_client_ind_domain_write_cnt", "CO_EVENT_DYNAMIC_CUSDO_DOMAIN_WRITE", true},
    {"event_sdo_server_read", "CO_EVENT_DYNAMIC_SDO_SERVER_READ"},
    {"event_sdo_server_write", "CO_EVENT_DYNAMIC_SDO_SERVER_WRITE"},
    {"event_sdo_server_check_write", "CO_EVENT_DYNAMIC_SDO_SERVER_CHECK_WRITE", false, true},
    {"event_pdo", "CO_EVENT_DYNAMIC_PDO"},
    {"event_pdo_update", "CO_EVENT_DYNAMIC_PDO_UPDATE"},
    {"event_nmt", "CO_EVENT_DYNAMIC_NMT"},
    {"event_errctrl", "CO_EVENT_DYNAMIC_ERRCTRL"},
    {"event_sync", "CO_EVENT_DYNAMIC_SYNC"},
    {"event_sync_finished", "CO_EVENT_DYNAMIC_SYNC_FINISHED"},
    {"event_finished", "CO_EVENT_DYNAMIC_FINISHED"},
    {"event_led", "CO_EVENT_DYNAMIC_LED"},
    {"event_cfg", "CO_EVENT_DYNAMIC_CFG_MAN"},
    {"event_flyma", "CO_EVENT_DYNAMIC_FLYMA"},
    {"event_sdorouter", "CO_EVENT_DYNAMIC_NETWORK_SDOCLIENT_USER"},
    {"event_can", "CORE_EVENT_DYNAMIC_CAN"},
    {"event_sdo_client_read", "CO_EVENT_DYNAMIC_SDO_CLIENT_READ"},
    {"event_sdo_client_write", "CO_EVENT_DYNAMIC_SDO_CLIENT_WRITE"},
    {"event_emcy", "CO_EVENT_DYNAMIC_EMCY"},
    {"event_emcy_consumer", "CO_EVENT_DYNAMIC_EMCY_CONSUMER"},
    {"event_time", "CO_EVENT_DYNAMIC_TIME"},
    {"event_store", "CO_EVENT_DYNAMIC_STORE"},
    {"event_srd", "CO_EVENT_DYNAMIC_SRD"},
    {"event_lss", "CO_EVENT_DYNAMIC_LSS"},
    {"event_idnego", "CO_EVENT_DYNAMIC_IDNEGO"},
    {"event_manager", "CO_EVENT_DYNAMIC_MANAGER"},
    {"event_mpdo", "CO_EVENT_DYNAMIC_MPDO"},
    {"event_gfc", "CO_EVENT_DYNAMIC_GFC"},
    {"object_changed_event", "CO_EVENT_DYNAMIC_OBJECT_CHANGED"},
    {"event_ssdo_domain_write", "CO_EVENT_DYNAMIC_SSDO_DOMAIN_WRITE"},
    {"event_ssdo_domain_read", "CO_EVENT_DYNAMIC_SSDO_DOMAIN_READ"},
    {"isotp_server_event", "ISOTP_EVENT_DYNAMIC_SERVER"},
    {"isotp_client_event", "ISOTP_EVENT_DYNAMIC_CLIENT"},
};

const QString dynamicCan = QStringLiteral("CORE_EVENT_DYNAMIC_CAN");
const QString objectChanged = QStringLiteral("CO_EVENT_DYNAMIC_OBJECT_CHANGED");

} // namespace

DefineEventBlock::DefineEventBlock(DefineContext &context)
    : context(context)
{}

void DefineEventBlock::write()
{
    writeStaticEvents();
    writeSleep();
    bool numeric = false;
    const qint64 dynamic =
        context.project.general(QStringLiteral("enable_dynamic")).trimmed().toLongLong(&numeric);
    if (!numeric || dynamic != 0)
        writeDynamicEvents();
    context.out.text(QStringLiteral("\n"));
}

void DefineEventBlock::writeStaticEvents()
{
    for (const auto &event : staticEvents) {
        for (const char *key : event.keys) {
            if (key && !context.project.general(QLatin1String(key)).trimmed().isEmpty()) {
                context.out.flag(QLatin1String(event.macro));
                break;
            }
        }
    }
}

void DefineEventBlock::writeSleep()
{
    const DefineProject &project = context.project;
    DefineWriter &out = context.out;
    const qint64 mode = project.generalNumber(QStringLiteral("sleep_mode_selection"));
    if (mode <= 0)
        return;
    out.flag(QStringLiteral("CO_EVENT_DYNAMIC_SLEEP"));
    if (mode == 1)
        out.flag(QStringLiteral("CO_SLEEP_447"));
    else if (mode == 2)
        out.flag(QStringLiteral("CO_SLEEP_454"));
    out.flag(QStringLiteral("CORE_SLEEP_SUPPORTED"));
    out.count(QStringLiteral("CO_SLEEP_WAITTIME"), project.generalNumber(QStringLiteral("sleep_wait_time")));
}

void DefineEventBlock::writeDynamicEvents()
{
    const DefineProject &project = context.project;
    DefineWriter &out = context.out;
    out.text(QStringLiteral("/* Definition of number of call-back functions for each service*/\n"));
    for (const auto &event : dynamicEvents) {
        if ((event.fdOnly && !context.state.canFd) ||
            (event.checkWrite && !context.family().checkWriteEvents))
            continue;
        const QString macro = QLatin1String(event.macro);
        const qint64 value = project.generalNumber(QLatin1String(event.key));
        if (macro == dynamicCan) {
            context.writeDynamicCan(value, true);
            continue;
        }
        if (value <= 0)
            continue;
        out.count(macro, value);
        if (macro == objectChanged)
            out.flag(QStringLiteral("CORE_OBJECT_CHANGED"));
    }
}
