/* Minimal stand-in of the stack's raw CAN module, for compiling generated files in tests. The older
 * generation's mapping rows have no bit position: its tests define KESTREL_OLDER_STACK. */
#ifndef RAWCAN_RAWCAN_H
#define RAWCAN_RAWCAN_H 1

#include <core_common.h>

#if defined(CAN_MULTI_LINE_CNT)
#define RAWCAN_LINE_ARRAY_SIZE CAN_MULTI_LINE_CNT
#elif defined(CO_MULTI_LINE_CNT)
#define RAWCAN_LINE_ARRAY_SIZE CO_MULTI_LINE_CNT
#else
#define RAWCAN_LINE_ARRAY_SIZE 1u
#endif

/* Where one signal lies in the CAN data and in memory. */
typedef struct {
    void *pVar;
#ifndef KESTREL_OLDER_STACK
    UNSIGNED16 bitPosition;
#endif
    UNSIGNED16 bitLength;
    CORE_DATA_TYPE_T dataType;
} CORE_MAPPING_T;

typedef struct {
    UNSIGNED32 canId;
    CORE_CONST CORE_MAPPING_T *pMapping;
    UNSIGNED16 cycleTime;
    UNSIGNED16 inhibitTime;
    UNSIGNED16 mappingCnt;
} RAWCAN_TR_CONFIG_T;

typedef struct {
    UNSIGNED32 canId;
    UNSIGNED32 ignoreMask;
    CORE_CONST CORE_MAPPING_T *pMapping;
    UNSIGNED16 monitorTime;
    UNSIGNED16 mappingCnt;
} RAWCAN_REC_CONFIG_T;

/* The configuration of one line. */
typedef struct {
    RAWCAN_TR_CONFIG_T *pTransmit;
    UNSIGNED16 transmitCnt;
    RAWCAN_REC_CONFIG_T *pReceive;
    UNSIGNED16 receiveCnt;
} RAWCAN_CONFIG_T;

/* The counts of the raw CAN services per line. */
typedef struct {
    UNSIGNED8 version;
    UNSIGNED16 receiveCnt[RAWCAN_LINE_ARRAY_SIZE];
    UNSIGNED16 transmitCnt[RAWCAN_LINE_ARRAY_SIZE];
} RAWCAN_SERVICE_INIT_VAL_T;

RET_T rawcanStackInit_common(CORE_CONST RAWCAN_SERVICE_INIT_VAL_T *initVars);
#if defined(CAN_MULTI_LINE) || defined(CO_MULTI_LINE)
RET_T rawcanStackInit_line(CAN_LINE_TYPE canLine, RAWCAN_CONFIG_T *pConfig);
#else
RET_T rawcanStackInit_line(RAWCAN_CONFIG_T *pConfig);
#endif

#endif /* RAWCAN_RAWCAN_H */
