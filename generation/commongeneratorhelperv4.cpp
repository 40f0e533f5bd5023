#include "commongeneratorhelperv4.h"

namespace {

const CommonHelperDialect currentDialect = {
    .structVersions = {1, 6, 6, 6},
    .commonInitHead = "/* core initialization settings */\nCORE_COMMON_INIT_VAL_T    commonInitVars = {\n",
    .bufferCountRows =
        "\t{ CORE_REC_BUFFER_COUNTS },\n\t{ CORE_TR_BUFFER_COUNTS },\n\t{ CORE_COB_COUNTS }, \n",
    .protocolTexts = {nullptr, "CORE_PROT_TYPE_CANOPEN", "CORE_PROT_TYPE_J1939", nullptr,
                      "CORE_PROT_TYPE_RAWCAN", "CORE_PROT_TYPE_J1939 | CORE_PROT_TYPE_CANOPEN",
                      "CORE_PROT_TYPE_CANOPEN | CORE_PROT_TYPE_RAWCAN",
                      "CORE_PROT_TYPE_J1939 | CORE_PROT_TYPE_RAWCAN"},
    .unknownProtocol = "CORE_PROT_TYPE_UNKNOWN",
    .udsProtocolSuffix = " | CORE_PROT_TYPE_UDS",
    .udsOnlyProtocol = "CORE_PROT_TYPE_UDS",
    .isotpServerRow = "\t{ ISOTP_SERVER_COUNTS },\n",
    .declarationIndent = "",
    .serviceInitHead = "\n/* UDS common initialization structure */ \nstatic CORE_CONST "
                       "UDS_SERVICE_INIT_VAL_T udsServiceInitVars = {\n",
    .lineInitHead = "CORE_CONST UDS_CONFIG_INIT_VAL_T",
    .callIndent = "    ",
    .tableComments = true,
    .periodicIdRow = true,
    .authentication = true,
    .activeFlagEndsStructure = false,
    .bootloaderStructures = true,
};

} // namespace

CommonGeneratorHelperV4::CommonGeneratorHelperV4(ObjectDataBase *store, QObject *parent)
    : CommonGeneratorHelperBase(store, currentDialect, parent)
{}

const QList<UdsStaticIndication> &CommonGeneratorHelperV4::udsIndicationTable()
{
    static const QList<UdsStaticIndication> table = {
        {"uds_fct_check_req_session", "UDS_EVENT_STATIC_CHECK_REQ_SESSION",
         "UDS_EVENT_CHECK_REQUIRED_SESSION_TYPE_T", "udsCheckRequiredSessionInd", "RET_T",
         "UDS_CHECK_REQUIRED_SESSION_PARA_T *pPara"},
        {"uds_fct_clear_dtc_info", "UDS_EVENT_STATIC_CLEAR_DTC_INFO", "UDS_EVENT_CLEAR_DTC_INFO_FCT_T",
         "udsClearDtcInfoInd", "RET_T", "UDS_CLEAR_DTC_INFO_PARA_T *pPara"},
        {"uds_fct_dtc_info", "UDS_EVENT_STATIC_DTC_INFO", "UDS_EVENT_DTC_INFO_FCT_T", "udsReadDtcInfoInd",
         "RET_T", "UDS_DTC_INFO_PARA_T *pPara"},
        {"uds_fct_id_data_transmit", "UDS_EVENT_STATIC_ID_DATA_TRANSMIT", "UDS_EVENT_DATA_TRANSMIT_T",
         "udsDataTransmitInd", "RET_T", "UDS_DATA_TRANSMIT_PARA_T *pPara"},
        {"uds_fct_mem_data_transmit", "UDS_EVENT_STATIC_MEM_DATA_TRANSMIT", "UDS_EVENT_MEM_DATA_TRANSMIT_T",
         "udsMemDataTransmitInd", "RET_T", "UDS_MEM_DATA_TRANSMIT_PARA_T *pPara"},
        {"uds_fct_sec_access_req_key", "UDS_EVENT_STATIC_SEC_ACCESS_REQ_KEY",
         "UDS_EVENT_SECURITY_ACCESS_REQ_KEY_T", "udsEventSecurityAccessReqKeyInd", "RET_T",
         "UDS_SECURITY_ACCESS_REQ_KEY_PARA_T *pPara"},
        {"uds_fct_req_commgt", "UDS_EVENT_STATIC_REQ_COMMGT", "UDS_EVENT_REQ_COMMGT_T", "udsReqCommgtInd",
         "RET_T", "UDS_REQ_COMMGT_STATE_T state, UDS_REQ_COMMGT_PARA_T *pPara"},
        {"uds_fct_authent_req", "UDS_EVENT_STATIC_AUTHENT_REQ", "UDS_EVENT_AUTHENTICATION_REQ_T",
         "udsAuthReqInd", "RET_T", "UDS_REQ_AUTHENT_CMD_T cmd, UDS_REQ_AUTHENT_PARA_T *pPara"},
        {"uds_fct_ioctrl", "UDS_EVENT_STATIC_IOCTRL", "UDS_EVENT_ROUTINE_IOCTRL_T", "udsIoCtrlInd", "RET_T",
         "UDS_ROUTINE_IOCTRL_PARA_T *pPara"},
        {"uds_fct_routine_ctrl", "UDS_EVENT_STATIC_ROUTINE_CTRL", "UDS_EVENT_ROUTINE_CTRL_T",
         "udsRoutineCtrlInd", "RET_T", "UDS_EVENT_ROUTINE_CTRL_PARA_T *pPara"},
        {"uds_fct_data_transfer", "UDS_EVENT_STATIC_DATA_TRANSFER", "UDS_EVENT_DATA_TRANSFER_T",
         "udsEventDataTransferInd", "RET_T", "UDS_DATA_TRANSFER_PARA_T *pPara"},
        {"uds_fct_generic", "UDS_EVENT_STATIC_GENERIC_FCT", "UDS_EVENT_GENERIC_FCT_T", "udsGenericInd",
         "UNSIGNED8", "UDS_GENERIC_PARA_T *pPara"},
    };
    return table;
}

QString CommonGeneratorHelperV4::udsBootloaderInit()
{
    return QStringLiteral("    /* setup CAN-IDs */\n"
                          "    if (udsLine0.serverPhysAddrReqCanID == 0u)  {\n"
                          "        udsLine0.serverPhysAddrReqCanID = CFG_UDS_REQ_ID();\n"
                          "    }\n"
                          "    if (udsLine0.serverPhysAddrRespCanID == 0u)  {\n"
                          "        udsLine0.serverPhysAddrRespCanID = CFG_UDS_RES_ID();\n"
                          "    }\n"
                          "    if (udsLine0.serverFuncAddrReqCanID == 0u)  {\n"
                          "        udsLine0.serverFuncAddrReqCanID = CFG_UDS_FUNC_ID();\n"
                          "    }");
}

QString CommonGeneratorHelperV4::udsStaticIndications() const
{
    if (setting(QStringLiteral("uds_static_indication")).toInt() != 1)
        return QString();
    QString pointers;
    for (const auto &indication : udsIndicationTable()) {
        const QString function = setting(QLatin1String(indication.key)).trimmed();
        if (function.isEmpty())
            continue;
        pointers += QStringLiteral("#if %1\n").arg(QLatin1String(indication.guard));
        pointers +=
            QStringLiteral("CORE_CONST %1 %2 = %3;\n")
                .arg(QLatin1String(indication.pointerType), QLatin1String(indication.pointerName), function);
        pointers += QStringLiteral("#endif\n");
    }
    if (pointers.isEmpty())
        return QString();
    return QStringLiteral("\n/* definition of static indication function pointers */\n") + pointers +
           QStringLiteral("\n");
}
