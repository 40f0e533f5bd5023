/* Minimal stand-in of the stack's UDS module, for compiling generated files in tests. */
#ifndef UDS_UDS_H
#define UDS_UDS_H 1

#include <core_datatype.h>
#include <core_isotp.h>

#ifndef GEN_UDS_INIT_STRUCT_VERSION
#define GEN_UDS_INIT_STRUCT_VERSION 1u
#endif

/* Sessions, and the sub-functions that take a table row of their own. */
#define UDS_SUB_SESSION_DS 0x01u
#define UDS_SUB_SESSION_PRGS 0x02u
#define UDS_SUB_SESSION_EXTDS 0x03u
#define UDS_SUB_SESSION_SSDS 0x04u
#define UDS_SUB_SESSION_MANU_40 0x40u
#define UDS_SUB_RESET_HR 0x01u
#define UDS_SUB_RESET_KOFFONR 0x02u
#define UDS_SUB_RESET_SR 0x03u
#define UDS_SUB_RESET_ERPSD 0x04u
#define UDS_SUB_RESET_DRPSD 0x05u
#define UDS_ROUTINE_CTRL_START 0x01u
#define UDS_ROUTINE_CTRL_STOP 0x02u
#define UDS_ROUTINE_CTRL_REQ_RESULT 0x03u

#define UDS_MAX_TABLE_ENTRIES 8u

/* Sessions in which a service may run, and security levels it needs. */
typedef struct {
    UNSIGNED8 service;
    UNSIGNED8 subFunction;
    UNSIGNED8 sessions[UDS_MAX_TABLE_ENTRIES];
    UNSIGNED8 sessionCnt;
} UDS_REQ_SESSION_TYPE_TABLE_T;

typedef struct {
    UNSIGNED8 service;
    UNSIGNED8 subFunction;
    UNSIGNED8 levels[UDS_MAX_TABLE_ENTRIES];
    UNSIGNED8 levelCnt;
} UDS_SECURITY_LEVEL_TABLE_T;

typedef struct {
    UNSIGNED8 service;
} UDS_AUTHENT_TABLE_T;

typedef struct {
    UNSIGNED8 version;
    UNSIGNED8 clientCnt[CORE_LINE_ARRAY_SIZE];
} UDS_SERVICE_INIT_VAL_T;

typedef struct {
    UNSIGNED32 serverPhysAddrReqCanID;
    UNSIGNED32 serverPhysAddrRespCanID;
    UNSIGNED32 clientPhysAddrReqCanID;
    UNSIGNED32 clientPhysAddrRespCanID;
    UNSIGNED32 serverFuncAddrReqCanID;
    UNSIGNED32 clientFuncAddrReqCanID;
#if GEN_UDS_INIT_STRUCT_VERSION >= 4
    UNSIGNED32 periodicIdCanID;
#endif
#if GEN_UDS_INIT_STRUCT_VERSION >= 2
    UNSIGNED8 serverPhysAddrReqExtAddr;
    UNSIGNED8 serverPhysAddrRespExtAddr;
    UNSIGNED8 serverFuncAddrReqExtAddr;
    UNSIGNED8 clientPhysAddrReqExtAddr;
    ISOTP_FORMAT_T addressingFormat;
#endif
#if GEN_UDS_INIT_STRUCT_VERSION >= 3
    CORE_CONST UDS_REQ_SESSION_TYPE_TABLE_T *pSessionTable;
    UNSIGNED16 sessionTableCnt;
    CORE_CONST UDS_SECURITY_LEVEL_TABLE_T *pSecurityTable;
    UNSIGNED16 securityTableCnt;
#endif
#if GEN_UDS_INIT_STRUCT_VERSION >= 4
    BOOL_T serverActive;
#endif
#if GEN_UDS_INIT_STRUCT_VERSION >= 5
    CORE_CONST UDS_AUTHENT_TABLE_T *pAuthenticationTable;
    UNSIGNED16 authenticationTableCnt;
#endif
} UDS_CONFIG_INIT_VAL_T;

/* The bootloader's board configuration gives the UDS CAN-IDs that the project leaves at 0. */
UNSIGNED32 CFG_UDS_REQ_ID(void);
UNSIGNED32 CFG_UDS_RES_ID(void);
UNSIGNED32 CFG_UDS_FUNC_ID(void);

RET_T udsStackInit_common(CORE_CONST UDS_SERVICE_INIT_VAL_T *pInitVals);
#if defined(CAN_MULTI_LINE) || defined(CO_MULTI_LINE)
RET_T udsStackInit_line(CAN_LINE_TYPE canLine, CORE_CONST UDS_CONFIG_INIT_VAL_T *pConfig);
#else
RET_T udsStackInit_line(CORE_CONST UDS_CONFIG_INIT_VAL_T *pConfig);
#endif

/* Parameters of the static indications. */
typedef struct UDS_CHECK_REQUIRED_SESSION_PARA UDS_CHECK_REQUIRED_SESSION_PARA_T;
typedef struct UDS_CLEAR_DTC_INFO_PARA UDS_CLEAR_DTC_INFO_PARA_T;
typedef struct UDS_DTC_INFO_PARA UDS_DTC_INFO_PARA_T;
typedef struct UDS_DATA_TRANSMIT_PARA UDS_DATA_TRANSMIT_PARA_T;
typedef struct UDS_MEM_DATA_TRANSMIT_PARA UDS_MEM_DATA_TRANSMIT_PARA_T;
typedef struct UDS_SECURITY_ACCESS_REQ_KEY_PARA UDS_SECURITY_ACCESS_REQ_KEY_PARA_T;
typedef enum { UDS_REQ_COMMGT_ENABLE, UDS_REQ_COMMGT_DISABLE } UDS_REQ_COMMGT_STATE_T;
typedef struct UDS_REQ_COMMGT_PARA UDS_REQ_COMMGT_PARA_T;
typedef enum { UDS_REQ_AUTHENT_DEAUTHENTICATE, UDS_REQ_AUTHENT_VERIFY } UDS_REQ_AUTHENT_CMD_T;
typedef struct UDS_REQ_AUTHENT_PARA UDS_REQ_AUTHENT_PARA_T;
typedef struct UDS_ROUTINE_IOCTRL_PARA UDS_ROUTINE_IOCTRL_PARA_T;
typedef struct UDS_EVENT_ROUTINE_CTRL_PARA UDS_EVENT_ROUTINE_CTRL_PARA_T;
typedef struct UDS_DATA_TRANSFER_PARA UDS_DATA_TRANSFER_PARA_T;
typedef struct UDS_GENERIC_PARA UDS_GENERIC_PARA_T;

/* The static indications take the line first in the multi-line form. */
#if defined(CAN_MULTI_LINE) || defined(CO_MULTI_LINE)
#define UDS_LINE_PARAMETER CAN_LINE_TYPE canLine,
#else
#define UDS_LINE_PARAMETER
#endif

typedef RET_T (*UDS_EVENT_CHECK_REQUIRED_SESSION_TYPE_T)(UDS_LINE_PARAMETER UDS_CHECK_REQUIRED_SESSION_PARA_T *pPara);
typedef RET_T (*UDS_EVENT_CLEAR_DTC_INFO_FCT_T)(UDS_LINE_PARAMETER UDS_CLEAR_DTC_INFO_PARA_T *pPara);
typedef RET_T (*UDS_EVENT_DTC_INFO_FCT_T)(UDS_LINE_PARAMETER UDS_DTC_INFO_PARA_T *pPara);
typedef RET_T (*UDS_EVENT_DATA_TRANSMIT_T)(UDS_LINE_PARAMETER UDS_DATA_TRANSMIT_PARA_T *pPara);
typedef RET_T (*UDS_EVENT_MEM_DATA_TRANSMIT_T)(UDS_LINE_PARAMETER UDS_MEM_DATA_TRANSMIT_PARA_T *pPara);
typedef RET_T (*UDS_EVENT_SECURITY_ACCESS_REQ_KEY_T)(UDS_LINE_PARAMETER UDS_SECURITY_ACCESS_REQ_KEY_PARA_T *pPara);
typedef RET_T (*UDS_EVENT_REQ_COMMGT_T)(UDS_LINE_PARAMETER UDS_REQ_COMMGT_STATE_T state, UDS_REQ_COMMGT_PARA_T *pPara);
typedef RET_T (*UDS_EVENT_AUTHENTICATION_REQ_T)(UDS_LINE_PARAMETER UDS_REQ_AUTHENT_CMD_T cmd,
                                                UDS_REQ_AUTHENT_PARA_T *pPara);
typedef RET_T (*UDS_EVENT_ROUTINE_IOCTRL_T)(UDS_LINE_PARAMETER UDS_ROUTINE_IOCTRL_PARA_T *pPara);
typedef RET_T (*UDS_EVENT_ROUTINE_CTRL_T)(UDS_LINE_PARAMETER UDS_EVENT_ROUTINE_CTRL_PARA_T *pPara);
typedef RET_T (*UDS_EVENT_DATA_TRANSFER_T)(UDS_LINE_PARAMETER UDS_DATA_TRANSFER_PARA_T *pPara);
typedef UNSIGNED8 (*UDS_EVENT_GENERIC_FCT_T)(UDS_LINE_PARAMETER UDS_GENERIC_PARA_T *pPara);

#endif /* UDS_UDS_H */
