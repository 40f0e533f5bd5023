#include "objdictdialect.h"

#include "generation/commongeneratorhelper.h"
#include "generation/commongeneratorhelperv4.h"

#include <QRegularExpression>

namespace {

const QList<ObjDictIndication> sdoServerIndications = {
    {"fct_sdo_server_read", "CORE_CONST CO_EVENT_SDO_SERVER_FUNCTION_T coEventSdoServerReadInd ="},
    {"fct_sdo_server_write", "CORE_CONST CO_EVENT_SDO_SERVER_FUNCTION_T coEventSdoServerWriteInd ="},
};

// Every indication after the PDO ones is the same in both generations.
const QList<ObjDictIndication> laterIndications = {
    {"fct_nmt", "CORE_CONST CO_EVENT_NMT_T coEventNmtInd ="},
    {"fct_errctrl", "CORE_CONST CO_EVENT_ERRCTRL_T coEventErrCtrlInd ="},
    {"fct_sync", "CORE_CONST CO_EVENT_SYNC_T coEventSyncInd ="},
    {"fct_sync_finished", "CORE_CONST CO_EVENT_SYNC_FINISHED_T coEventSyncFinishedInd ="},
    {"fct_led_green", "CORE_CONST CO_EVENT_LED_T coEventLedGreenInd ="},
    {"fct_led_red", "CORE_CONST CO_EVENT_LED_T coEventLedRedInd ="},
    {"fct_can", "CORE_CONST CORE_EVENT_CAN_STATE_T coreEventCanStateInd ="},
    {"fct_cfgman", "CORE_CONST CO_EVENT_CFG_MANAGER_T coEventCfgManInd ="},
    {"fct_flyma", "CORE_CONST CO_EVENT_FLYMA_T coEventFlymaInd ="},
    {"fct_sdo_client_read", "CORE_CONST CO_EVENT_SDO_CLIENT_READ_T coEventSdoClientReadInd ="},
    {"fct_sdo_client_write", "CORE_CONST CO_EVENT_SDO_CLIENT_WRITE_T coEventSdoClientWriteInd ="},
    {"fct_emcy", "CORE_CONST CO_EVENT_EMCY_T coEventEmcyInd ="},
    {"fct_emcy_consumer", "CORE_CONST CO_EVENT_EMCY_CONSUMER_T coEventEmcyConsumerInd ="},
    {"fct_time", "CORE_CONST CO_EVENT_TIME_T coEventTimeInd ="},
    {"fct_store", "CORE_CONST CO_EVENT_STORE_T coEventStoreLoadInd ="},
    {"fct_store_clear", "CORE_CONST CO_EVENT_STORE_T coEventStoreClearInd ="},
    {"fct_store_save", "CORE_CONST CO_EVENT_STORE_T coEventStoreSaveInd ="},
    {"fct_lss", "CORE_CONST CO_EVENT_LSS_T coEventLssInd ="},
    {"fct_lss_master", "CORE_CONST CO_EVENT_LSS_MASTER_T coEventLssMasterInd ="},
    {"fct_comm", "CORE_CONST CORE_EVENT_COMM_T coreEventCommInd ="},
    {"fct_manager", "CORE_CONST CO_EVENT_MANAGER_BOOTUP_T coEventManagerInd ="},
    {"fct_mpdo", "CORE_CONST CO_EVENT_MPDO_T coEventMPdoInd ="},
};

const QList<ObjDictIndication> currentIndications =
    sdoServerIndications +
    QList<ObjDictIndication>{
        {"fct_pdo", "CORE_CONST CO_EVENT_PDO_T coEventPdoInd ="},
        {"fct_pdo_update", "CORE_CONST CO_EVENT_PDO_UPDATE_T coEventPdoUpdateInd ="},
    } +
    laterIndications;

// The older generation knows a check before an SDO write and separate PDO receive and sync
// indications, but no PDO update indication.
const QList<ObjDictIndication> olderIndications =
    sdoServerIndications +
    QList<ObjDictIndication>{
        {"fct_sdo_server_check_write",
         "CORE_CONST CO_EVENT_SDO_SERVER_CHECK_WRITE_T coEventSdoServerCheckWriteInd ="},
        {"fct_pdo", "CORE_CONST CO_EVENT_PDO_T coEventPdoInd ="},
        {"fct_pdo_receive", "CORE_CONST CO_EVENT_PDO_T coEventPdoRecInd ="},
        {"fct_pdo_sync", "CORE_CONST CO_EVENT_PDO_T coEventPdoSyncInd ="},
    } +
    laterIndications;

const QList<ObjDictIndication> usdoServer = {
    {"usdo_server_read_ind_function", "CORE_CONST CO_EVENT_USDO_SERVER_T coEventUsdoServerReadInd ="},
    {"usdo_server_write_ind_function", "CORE_CONST CO_EVENT_USDO_SERVER_T coEventUsdoServerWriteInd ="},
    {"usdo_server_domain_read_ind_function",
     "CORE_CONST CO_EVENT_USDO_SERVER_DOMAIN_READ_T coEventUsdoServerDomainReadInd ="},
    {"usdo_server_domain_write_ind_function",
     "CORE_CONST CO_EVENT_USDO_SERVER_DOMAIN_WRITE_T coEventUsdoServerDomainWriteInd ="},
};

const QList<ObjDictIndication> olderUsdoServer = {
    {"usdo_server_read_ind_function", "CORE_CONST CO_EVENT_USDO_SERVER_T coEventUsdoServerReadInd ="},
    {"usdo_server_write_ind_function", "CORE_CONST CO_EVENT_USDO_SERVER_T coEventUsdoServerWriteInd ="},
    {"usdo_server_ind_check_write_function",
     "CORE_CONST CO_EVENT_USDO_SERVER_CHECK_WRITE_T coEventUsdoServerCheckWriteInd ="},
    {"usdo_server_read_finished_ind_function",
     "CORE_CONST CO_EVENT_USDO_SERVER_READ_FINISHED_T coEventUsdoServerReadFinishedInd ="},
    {"usdo_server_domain_read_ind_function",
     "CORE_CONST CO_EVENT_USDO_SERVER_DOMAIN_READ_T coEventUsdoServerDomainReadInd ="},
    {"usdo_server_domain_write_ind_function",
     "CORE_CONST CO_EVENT_USDO_SERVER_DOMAIN_WRITE_T coEventUsdoServerDomainWriteInd ="},
};

const QList<ObjDictIndication> usdoClient = {
    {"usdo_client_read_ind_function", "CORE_CONST CO_EVENT_USDO_CLIENT_T coEventUsdoClientReadInd ="},
    {"usdo_client_write_ind_function", "CORE_CONST CO_EVENT_USDO_CLIENT_T coEventUsdoClientWriteInd ="},
    {"usdo_client_domain_read_ind_function",
     "CORE_CONST CO_EVENT_USDO_CLIENT_DOMAIN_TRANSFER_T coEventUsdoClientDomainReadInd ="},
    {"usdo_client_domain_write_ind_function",
     "CORE_CONST CO_EVENT_USDO_CLIENT_DOMAIN_TRANSFER_T coEventUsdoClientDomainWriteInd ="},
};

CommonGeneratorHelperBase *createCurrentHelper(ObjectDataBase *store)
{
    return new CommonGeneratorHelperV4(store);
}

CommonGeneratorHelperBase *createOlderHelper(ObjectDataBase *store)
{
    return new CommonGeneratorHelper(store);
}

} // namespace

const ObjDictDialect &ObjDictDialect::current()
{
    static const ObjDictDialect dialect{
        " * object dictionary for %1 - generated by %2 %3 (V4)\n",
        " * virtual object dictionary for %1 - generated by %2 %3 (V4)\n",
        false,
        "core_isotp.h",
        false,
        "\t\t{NULL, (UNSIGNED8)0u, CORE_DTYPE_NON_NUMERIC, 0ul",
        false,
        "CAN_LINE",
        "CAN_MULTI_LINE_CNT",
        "CAN_LINE_TYPE",
        "coreStackInit",
        "RET_PARAMETER_INVALID",
        false,
        false,
        false,
        currentIndications,
        usdoServer,
        usdoClient,
        createCurrentHelper,
    };
    return dialect;
}

const ObjDictDialect &ObjDictDialect::older()
{
    static const ObjDictDialect dialect{
        " * object dictionary for %1 - generated by %2 %3\n",
        " * virtual object dictionary for %1 for external non-addressable memory - generated by %2 %3\n",
        true,
        "iso_tp.h",
        true,
        "\t\t{NULL, (UNSIGNED8)0u, CO_FALSE, 0ul",
        true,
        "CO_LINE",
        "CO_MULTI_LINE_CNT",
        "CO_LINE_TYPE",
        "commonStackInit",
        "RET_INVALID_PARAMETER",
        true,
        true,
        true,
        olderIndications,
        olderUsdoServer,
        usdoClient,
        createOlderHelper,
    };
    return dialect;
}

QString ObjDictDialect::spell(const QString &text) const
{
    if (!olderMacros)
        return text;
    static const QRegularExpression macros(
        QStringLiteral("\\bCORE_(CONST_STORAGE_CLASS|STORAGE_CLASS|CONST|HANDLE_WATCHDOG)\\b"));
    QString spelled = text;
    spelled.replace(macros, QStringLiteral("CO_\\1"));
    return spelled;
}
