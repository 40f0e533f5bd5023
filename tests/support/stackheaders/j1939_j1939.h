/* Minimal stand-in of the stack's J1939 module, for compiling generated files in tests.
 * Both stack generations include it. The older one lays its tables out differently: its tests define
 * KESTREL_OLDER_STACK on the compiler's command line. */
#ifndef J1939_J1939_H
#define J1939_J1939_H 1

#include <co_datatype.h>
#include <core_common.h>

/* Arrays with one entry per line, in the macros of either generation. */
#if defined(CAN_MULTI_LINE_CNT)
#define J1939_LINE_ARRAY_SIZE CAN_MULTI_LINE_CNT
#elif defined(CO_MULTI_LINE_CNT)
#define J1939_LINE_ARRAY_SIZE CO_MULTI_LINE_CNT
#else
#define J1939_LINE_ARRAY_SIZE 1u
#endif

/* A 64-bit value from its bytes, most significant first, where the stack's data types header has none. */
#ifndef U64_SET
#define U64_SET(b7, b6, b5, b4, b3, b2, b1, b0)                                                               \
    ((((UNSIGNED64)(b7)) << 56) | (((UNSIGNED64)(b6)) << 48) | (((UNSIGNED64)(b5)) << 40) |                 \
     (((UNSIGNED64)(b4)) << 32) | (((UNSIGNED64)(b3)) << 24) | (((UNSIGNED64)(b2)) << 16) |                 \
     (((UNSIGNED64)(b1)) << 8) | ((UNSIGNED64)(b0)))
#endif

#if defined(CORE_CANFD_SUPPORTED) || defined(CO_CANFD_SUPPORTED)
#define J1939_FD_FIELDS 1
#endif

/* Automotive trailer formats and assurance data types of J1939 FD. */
typedef enum {
    J1939_ATF_SAE_NONE, J1939_ATF_MANU_CYBERSEC_32, J1939_ATF_MANU_CYBERSEC_64, J1939_ATF_MANU_FUNC_SAFETY_32,
    J1939_ATF_MANU_FUNC_SAFETY_64, J1939_ATF_MANU_FUNC_CYB_SAFE_32
} J1939_ATF_T;
typedef enum {
    J1939_ADT_NONE, J1939_ADT_MANU_CYBERSEC, J1939_ADT_MANU_FUNC_SAFETY, J1939_ADT_MANU_FUNC_CYB_SAFE
} J1939_ADT_T;

/* Where one signal lies in a parameter group. */
typedef struct {
#ifdef KESTREL_OLDER_STACK
    UNSIGNED8 *pVar;
    UNSIGNED16 bitLength;
    UNSIGNED32 spn;
#else
    UNSIGNED32 spn;
    UNSIGNED16 bitPosition;
    UNSIGNED16 bitLength;
#endif
    CORE_DATA_TYPE_T dataType;
#ifdef J1939_DYNAMIC_PGN
    UNSIGNED8 flags;
#endif
} J1939_MAPPING_T;

/* One transmit or receive parameter group. */
typedef struct {
    UNSIGNED32 pgn;
#ifdef KESTREL_OLDER_STACK
    CO_CONST J1939_MAPPING_T *pMapping;
    UNSIGNED16 cycleTime;
    UNSIGNED16 inhibitTime;
    UNSIGNED8 priority;
    UNSIGNED8 mappingCnt;
#else
    CORE_CONST J1939_MAPPING_T *pMapping;
    UNSIGNED8 *CORE_CONST *pData;
    UNSIGNED8 mappingCnt;
#ifdef J1939_MULTI_SRC_ADDR
    UNSIGNED8 sourceAddressCnt;
#endif
    UNSIGNED16 cycleTime;
    UNSIGNED16 inhibitTime;
    UNSIGNED8 priority;
#ifdef J1939_FD_FIELDS
    J1939_ATF_T trailerFormat;
    J1939_ADT_T assuranceType;
    UNSIGNED8 assuranceDataSize;
#endif
#endif
} J1939_PGN_CONFIG_T;

/* The configuration of one line. */
typedef struct {
    CORE_CONST J1939_PGN_CONFIG_T *pTransmitPgns;
    UNSIGNED16 transmitPgnCnt;
    CORE_CONST J1939_PGN_CONFIG_T *pReceivePgns;
    UNSIGNED16 receivePgnCnt;
    CORE_CONST J1939_PGN_CONFIG_T *pAddressClaim;
    UNSIGNED8 address;
} J1939_CONFIG_T;

/* The counts of the J1939 services per line. */
typedef struct {
    UNSIGNED8 version;
    UNSIGNED16 receivePgnCfgCnt[J1939_LINE_ARRAY_SIZE];
    UNSIGNED16 receivePgnCnt[J1939_LINE_ARRAY_SIZE];
    UNSIGNED16 transmitPgnCnt[J1939_LINE_ARRAY_SIZE];
    UNSIGNED8 ssdoCnt[J1939_LINE_ARRAY_SIZE];
    UNSIGNED8 csdoCnt[J1939_LINE_ARRAY_SIZE];
#ifdef J1939_FD_FIELDS
    UNSIGNED8 destBufferCnt[J1939_LINE_ARRAY_SIZE];
#endif
#ifdef J1939_SDG_SUPPORTED
    UNSIGNED8 sdgTransmitCnt[J1939_LINE_ARRAY_SIZE];
    UNSIGNED8 sdgReceiveCnt[J1939_LINE_ARRAY_SIZE];
#endif
} J1939_SERVICE_INIT_VAL_T;

/* The mapping of the address claiming group, which the stack brings. */
extern CORE_CONST J1939_MAPPING_T j1939AddressClaimMapping[];

RET_T j1939StackInit_common(CORE_CONST J1939_SERVICE_INIT_VAL_T *pInitVals);
#if defined(CAN_MULTI_LINE) || defined(CO_MULTI_LINE)
RET_T j1939StackInit_line(CAN_LINE_TYPE canLine, J1939_CONFIG_T *pConfig);
RET_T j1939OdInit(CAN_LINE_TYPE canLine);
#else
RET_T j1939StackInit_line(J1939_CONFIG_T *pConfig);
RET_T j1939OdInit(void);
#endif
#ifdef J1939_FD_FIELDS
RET_T j1939StackInit(BOOL_T *pModes);
#else
RET_T j1939StackInit(void);
#endif



#endif /* J1939_J1939_H */
