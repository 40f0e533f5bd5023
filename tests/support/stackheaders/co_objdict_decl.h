/* Minimal stand-in of the stack's object dictionary interface, for compiling generated object
 * dictionaries (gen_objdict.c, gen_vobjdict.c) in tests. It reads the configuration of gen_define.h:
 * CO_CONFIG_LIMIT_CHECK (limit columns of a description row), CO_EXTENDED_DATA_TYPES and
 * CO_UTF8_DATA_TYPE (fields of od_data_variables), CO_MAX_MAP_ENTRIES (size of a PDO mapping table),
 * CO_NETWORK_ROUTING_CNT (routing column of an RPDO mapping table), the line count of either stack
 * generation, and CO_STACK_GENERATION_OLDER, which a test sets for files of the older generation
 * (one column of type and service class in a description row).
 * The stack's functions are declared without parameter lists: the tables are what is checked here. */
#ifndef CO_OBJDICT_DECL_H
#define CO_OBJDICT_DECL_H 1

#include <string.h>
#include <gen_define.h>
#include <core_datatype.h>
#include <core_common.h>

#if defined(CAN_MULTI_LINE_CNT)
#define CO_OD_LINE_CNT CAN_MULTI_LINE_CNT
#elif defined(CO_MULTI_LINE_CNT)
#define CO_OD_LINE_CNT CO_MULTI_LINE_CNT
#else
#define CO_OD_LINE_CNT 1u
#endif
#ifndef CAN_LINE_ARRAY_DECL
#define CAN_LINE_ARRAY_DECL CO_OD_LINE_CNT
#endif

#ifndef CO_CONST
#define CO_CONST const
#endif

/* Values of types without a C base type. */
#define U24_SET(b2, b1, b0) ((UNSIGNED24)(((b2) << 16) | ((b1) << 8) | (b0)))
#define I24_SET(b2, b1, b0) ((INTEGER24)((((b2) << 16) | ((b1) << 8) | (b0)) ^ 0x800000) - 0x800000)
#define U40_SET(b4, b3, b2, b1, b0) \
    ((UNSIGNED40)(((UNSIGNED40)(b4) << 32) | ((UNSIGNED40)(b3) << 24) | ((b2) << 16) | ((b1) << 8) | (b0)))
#define U48_SET(b5, b4, b3, b2, b1, b0) ((UNSIGNED48)(((UNSIGNED48)(b5) << 40) | U40_SET(b4, b3, b2, b1, b0)))
#define U64_SET(b7, b6, b5, b4, b3, b2, b1, b0) \
    ((UNSIGNED64)(((UNSIGNED64)(b7) << 56) | ((UNSIGNED64)(b6) << 48) | U48_SET(b5, b4, b3, b2, b1, b0)))

typedef char *VIS_STRING;
typedef char *UTF8_STRING;
typedef UNSIGNED8 OCTET_STRING;
typedef UNSIGNED8 *CO_DOMAIN_PTR;

/* Service classes: who serves the value of a sub-index. */
enum {
    CO_DSPEC, CO_DSPEC_CONST, CO_DSPEC_SYNC, CO_DSPEC_EMCY, CO_DSPEC_ERRCTRL, CO_DSPEC_STORE, CO_DSPEC_TIME,
    CO_DSPEC_NMT, CO_DSPEC_SDO_SERVER, CO_DSPEC_SDO_CLIENT, CO_DSPEC_GFC, CO_DSPEC_SRDO, CO_DSPEC_RPDO,
    CO_DSPEC_RMAP, CO_DSPEC_TPDO, CO_DSPEC_TMAP, CO_DSPEC_SRD, CO_DSPEC_NETWORK, CO_DSPEC_FLYMA, CO_DSPEC_VAR,
    CO_DSPEC_PTR
};

/* Attributes of a sub-index. */
#define CO_ATTR_NUM 0x0001u
#define CO_ATTR_READ 0x0002u
#define CO_ATTR_WRITE 0x0004u
#define CO_ATTR_MAP_TR 0x0008u
#define CO_ATTR_MAP_REC 0x0010u
#define CO_ATTR_DEFVAL 0x0020u
#define CO_ATTR_LIMIT 0x0040u
#define CO_ATTR_STORE 0x0080u
#define CO_ATTR_COMPACT 0x0100u
#define CO_ATTR_DYNOD 0x0200u

#define CO_ODTYPE_DOM 2u
#define CO_ODTYPE_VAR 7u
#define CO_ODTYPE_ARRAY 8u
#define CO_ODTYPE_STRUCT 9u

#ifdef CO_STACK_GENERATION_OLDER
/* The older generation joins type and service class in one value. */
#define CO_DTYPE_OLDER(type, service) ((type) * 32u + (service))
#define CO_OLDER_TYPES(X) \
    X(BOOL) X(U8) X(U16) X(U24) X(U32) X(U40) X(U48) X(U64) X(I8) X(I16) X(I24) X(I32) X(R32) X(VS) X(OS) X(UTF8)
enum {
#define CO_OLDER_SERVICES(type) \
    CO_DTYPE_##type, CO_DTYPE_##type##_CONST = CO_DTYPE_OLDER(CORE_DTYPE_##type, CO_DSPEC_CONST), \
    CO_DTYPE_##type##_VAR = CO_DTYPE_OLDER(CORE_DTYPE_##type, CO_DSPEC_VAR), \
    CO_DTYPE_##type##_PTR = CO_DTYPE_OLDER(CORE_DTYPE_##type, CO_DSPEC_PTR), \
    CO_DTYPE_##type##_SYNC = CO_DTYPE_OLDER(CORE_DTYPE_##type, CO_DSPEC_SYNC), \
    CO_DTYPE_##type##_EMCY = CO_DTYPE_OLDER(CORE_DTYPE_##type, CO_DSPEC_EMCY), \
    CO_DTYPE_##type##_ERRCTRL = CO_DTYPE_OLDER(CORE_DTYPE_##type, CO_DSPEC_ERRCTRL), \
    CO_DTYPE_##type##_STORE = CO_DTYPE_OLDER(CORE_DTYPE_##type, CO_DSPEC_STORE), \
    CO_DTYPE_##type##_TIME = CO_DTYPE_OLDER(CORE_DTYPE_##type, CO_DSPEC_TIME), \
    CO_DTYPE_##type##_NMT = CO_DTYPE_OLDER(CORE_DTYPE_##type, CO_DSPEC_NMT), \
    CO_DTYPE_##type##_SDO_SERVER = CO_DTYPE_OLDER(CORE_DTYPE_##type, CO_DSPEC_SDO_SERVER), \
    CO_DTYPE_##type##_SDO_CLIENT = CO_DTYPE_OLDER(CORE_DTYPE_##type, CO_DSPEC_SDO_CLIENT), \
    CO_DTYPE_##type##_RPDO = CO_DTYPE_OLDER(CORE_DTYPE_##type, CO_DSPEC_RPDO), \
    CO_DTYPE_##type##_RMAP = CO_DTYPE_OLDER(CORE_DTYPE_##type, CO_DSPEC_RMAP), \
    CO_DTYPE_##type##_TPDO = CO_DTYPE_OLDER(CORE_DTYPE_##type, CO_DSPEC_TPDO), \
    CO_DTYPE_##type##_TMAP = CO_DTYPE_OLDER(CORE_DTYPE_##type, CO_DSPEC_TMAP),
    CO_OLDER_TYPES(CO_OLDER_SERVICES)
#undef CO_OLDER_SERVICES
    CO_DTYPE_DOMAIN
};
#endif

typedef struct {
    UNSIGNED8 subIndex;
#ifdef CO_STACK_GENERATION_OLDER
    UNSIGNED16 dType;
#else
    UNSIGNED16 dType;
    UNSIGNED16 dSpec;
#endif
    UNSIGNED16 tableIdx;
    UNSIGNED16 attr;
    UNSIGNED16 defValIdx;
#ifdef CO_CONFIG_LIMIT_CHECK
    UNSIGNED16 limitMinIdx;
    UNSIGNED16 limitMaxIdx;
#endif
} CO_OBJECT_DESC_T;

typedef struct {
    UNSIGNED16 index;
    UNSIGNED8 numberOfSubs;
    UNSIGNED8 highestSub;
    UNSIGNED8 odType;
    UNSIGNED16 odDescIdx;
} CO_OD_ASSIGN_T;

/* The arrays of a generated object dictionary, in the order of od_data_variables. */
typedef struct {
    CORE_CONST UNSIGNED8 *odConstU8;
    CORE_CONST UNSIGNED16 *odConstU16;
    CORE_CONST UNSIGNED32 *odConstU32;
    CORE_CONST REAL32 *odConstR32;
#ifdef CO_EXTENDED_DATA_TYPES
    CORE_CONST UNSIGNED24 *odConstU24;
    CORE_CONST UNSIGNED40 *odConstU40;
    CORE_CONST UNSIGNED48 *odConstU48;
    CORE_CONST UNSIGNED64 *odConstU64;
#endif
    UNSIGNED8 *odU8;
    UNSIGNED16 *odU16;
    UNSIGNED32 *odU32;
    REAL32 *odR32;
#ifdef CO_EXTENDED_DATA_TYPES
    UNSIGNED24 *odU24;
    UNSIGNED40 *odU40;
    UNSIGNED48 *odU48;
    UNSIGNED64 *odU64;
#endif
    CORE_CONST INTEGER8 *odConstI8;
    CORE_CONST INTEGER16 *odConstI16;
    CORE_CONST INTEGER32 *odConstI32;
    INTEGER8 *odI8;
    INTEGER16 *odI16;
    INTEGER32 *odI32;
    UNSIGNED8 *CORE_CONST *odPtrU8;
    UNSIGNED16 *CORE_CONST *odPtrU16;
    UNSIGNED32 *CORE_CONST *odPtrU32;
#ifdef CO_EXTENDED_DATA_TYPES
    UNSIGNED24 *CORE_CONST *odPtrU24;
    UNSIGNED40 *CORE_CONST *odPtrU40;
    UNSIGNED48 *CORE_CONST *odPtrU48;
    UNSIGNED64 *CORE_CONST *odPtrU64;
#endif
    INTEGER8 *CORE_CONST *odPtrI8;
    INTEGER16 *CORE_CONST *odPtrI16;
    INTEGER32 *CORE_CONST *odPtrI32;
    REAL32 *CORE_CONST *odPtrR32;
    CORE_CONST VIS_STRING *odConstVisString;
    CORE_CONST UNSIGNED32 *odConstVisStringLen;
    VIS_STRING *odVisString;
    UNSIGNED32 *odVisStringLen;
    UNSIGNED32 *odVisStringActLen;
#ifdef CO_UTF8_DATA_TYPE
    CORE_CONST UTF8_STRING *odConstUtf8String;
    CORE_CONST UNSIGNED32 *odConstUtf8StringLen;
    VIS_STRING *odUtf8String;
    UNSIGNED32 *odUtf8StringLen;
    UNSIGNED32 *odUtf8StringActLen;
#endif
    OCTET_STRING **odOctetString;
    UNSIGNED32 *odOctetStringLen;
    UNSIGNED32 *odOctetStringActLen;
    CO_DOMAIN_PTR *odDomain;
    UNSIGNED32 *odDomainLen;
    UNSIGNED32 *odDomainActLen;
} CO_OD_DATA_VARIABLES_T;

/* PDO mapping tables; an RPDO entry of a routing project names the TPDO of each line. */
#ifndef CO_MAX_MAP_ENTRIES
#define CO_MAX_MAP_ENTRIES 1u
#endif
typedef struct {
    CORE_CONST void *pVar;
    UNSIGNED8 len;
    UNSIGNED16 dType;
    UNSIGNED32 val;
} PDO_TR_MAP_ENTRY_T;
typedef struct {
    UNSIGNED8 mapCnt;
    PDO_TR_MAP_ENTRY_T mapEntry[CO_MAX_MAP_ENTRIES];
} PDO_TR_MAP_TABLE_T;
typedef struct {
    CORE_CONST void *pVar;
    UNSIGNED8 len;
    UNSIGNED16 dType;
    UNSIGNED32 val;
#ifdef CO_NETWORK_ROUTING_CNT
    UNSIGNED8 route[CO_OD_LINE_CNT];
#endif
} PDO_REC_MAP_ENTRY_T;
typedef struct {
    UNSIGNED8 mapCnt;
    PDO_REC_MAP_ENTRY_T mapEntry[CO_MAX_MAP_ENTRIES];
} PDO_REC_MAP_TABLE_T;

/* Service counts per line, as gen_define.h lists them. */
typedef RET_T (*CO_NODE_ID_FUNCTION_T)(void);
typedef struct {
    UNSIGNED8 version;
    UNSIGNED16 objectCnt[CO_OD_LINE_CNT];
    UNSIGNED16 txPdoCnt[CO_OD_LINE_CNT];
    UNSIGNED16 rxPdoCnt[CO_OD_LINE_CNT];
#ifdef CO_SRDO_SUPPORTED
    UNSIGNED16 srdoCnt[CO_OD_LINE_CNT];
#endif
    UNSIGNED16 ssdoCnt[CO_OD_LINE_CNT];
    UNSIGNED16 csdoCnt[CO_OD_LINE_CNT];
#ifdef CO_USDO_SERVER_MAX_CONN_CNT
    UNSIGNED16 usdoServerCnt[CO_OD_LINE_CNT];
#endif
#ifdef CO_USDO_CLIENT_MAX_CONN_CNT
    UNSIGNED16 usdoClientCnt[CO_OD_LINE_CNT];
#endif
    UNSIGNED16 errCtrlCnt[CO_OD_LINE_CNT];
    UNSIGNED16 errHistCnt[CO_OD_LINE_CNT];
    UNSIGNED16 actErrHistCnt[CO_OD_LINE_CNT];
    UNSIGNED16 emcyConsCnt[CO_OD_LINE_CNT];
#ifdef CO_NETWORK_ROUTING_CNT
    UNSIGNED16 routingCnt[CO_OD_LINE_CNT];
#endif
    UNSIGNED16 assignCnt[CO_OD_LINE_CNT];
    UNSIGNED16 guardingCnt[CO_OD_LINE_CNT];
    UNSIGNED8 nodeIds[CO_OD_LINE_CNT];
    CO_NODE_ID_FUNCTION_T nodeIdFunctions[CO_OD_LINE_CNT];
} CO_SERVICE_INIT_VAL_T;

typedef struct {
    UNSIGNED8 master;
} CO_INIT_OPTION_T;

typedef RET_T (*CO_EVENT_STORE_T)();

/* The multi-line entry calls the common part before the file defines it. */
RET_T coCanOpenStackInit_common();

RET_T coOdInitOdPtr();
RET_T coLedInit();
RET_T coSdoServerInit();
RET_T coUsdoServerInit();
RET_T coUsdoClientInit();
RET_T coSdoClientInit();
RET_T coErrorCtrlInit();
RET_T coEmcyProducerInit();
RET_T coSyncInit();
RET_T coEmcyConsumerInit();
RET_T coTimeInit();
RET_T coPdoTransmitInit();
RET_T coPdoReceiveInit();
RET_T coSrdInit();
RET_T coGfcInit();
RET_T coSrdoInit();
RET_T isoTpInit();
RET_T coIdNegoInit();
RET_T coGuardingInit();
RET_T coEventRegister_LOAD_PARA();
RET_T coLssMasterInit();
RET_T coLssInit();
RET_T coNmtInit();
RET_T coCanOpenStackVarInit();
RET_T coPdoNetworkRouting();
RET_T coOdGetDefaultVal_u32();
RET_T coOdSetCobid();
UNSIGNED8 coNmtGetNodeId();

#endif /* CO_OBJDICT_DECL_H */
