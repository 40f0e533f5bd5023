/* Minimal stand-in of the stack's static UDS indications, for compiling generated files in tests.
 * The configuration switches each indication on with its UDS_EVENT_STATIC_... macro; the generated
 * source then defines the pointer declared here. */
#ifndef UDS_INDICATION_H
#define UDS_INDICATION_H 1

#include <uds_uds.h>

#if UDS_EVENT_STATIC_CHECK_REQ_SESSION
extern CORE_CONST UDS_EVENT_CHECK_REQUIRED_SESSION_TYPE_T udsCheckRequiredSessionInd;
#endif
#if UDS_EVENT_STATIC_CLEAR_DTC_INFO
extern CORE_CONST UDS_EVENT_CLEAR_DTC_INFO_FCT_T udsClearDtcInfoInd;
#endif
#if UDS_EVENT_STATIC_DTC_INFO
extern CORE_CONST UDS_EVENT_DTC_INFO_FCT_T udsReadDtcInfoInd;
#endif
#if UDS_EVENT_STATIC_ID_DATA_TRANSMIT
extern CORE_CONST UDS_EVENT_DATA_TRANSMIT_T udsDataTransmitInd;
#endif
#if UDS_EVENT_STATIC_MEM_DATA_TRANSMIT
extern CORE_CONST UDS_EVENT_MEM_DATA_TRANSMIT_T udsMemDataTransmitInd;
#endif
#if UDS_EVENT_STATIC_SEC_ACCESS_REQ_KEY
extern CORE_CONST UDS_EVENT_SECURITY_ACCESS_REQ_KEY_T udsEventSecurityAccessReqKeyInd;
#endif
#if UDS_EVENT_STATIC_REQ_COMMGT
extern CORE_CONST UDS_EVENT_REQ_COMMGT_T udsReqCommgtInd;
#endif
#if UDS_EVENT_STATIC_AUTHENT_REQ
extern CORE_CONST UDS_EVENT_AUTHENTICATION_REQ_T udsAuthReqInd;
#endif
#if UDS_EVENT_STATIC_IOCTRL
extern CORE_CONST UDS_EVENT_ROUTINE_IOCTRL_T udsIoCtrlInd;
#endif
#if UDS_EVENT_STATIC_ROUTINE_CTRL
extern CORE_CONST UDS_EVENT_ROUTINE_CTRL_T udsRoutineCtrlInd;
#endif
#if UDS_EVENT_STATIC_DATA_TRANSFER
extern CORE_CONST UDS_EVENT_DATA_TRANSFER_T udsEventDataTransferInd;
#endif
#if UDS_EVENT_STATIC_GENERIC_FCT
extern CORE_CONST UDS_EVENT_GENERIC_FCT_T udsGenericInd;
#endif

#endif /* UDS_INDICATION_H */
