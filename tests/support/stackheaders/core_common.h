/* Minimal stand-in of the stack core's common initialisation, for compiling generated files in tests. */
#ifndef CORE_COMMON_H
#define CORE_COMMON_H 1

#include <core_datatype.h>

typedef UNSIGNED16 CORE_PROTOCOL_TYPE_T;
#define CORE_PROT_TYPE_UNKNOWN 0x00u
#define CORE_PROT_TYPE_CANOPEN 0x01u
#define CORE_PROT_TYPE_J1939 0x02u
#define CORE_PROT_TYPE_RAWCAN 0x04u
#define CORE_PROT_TYPE_UDS 0x08u

typedef struct {
    UNSIGNED8 version;
    UNSIGNED16 recBufferCnt[CORE_LINE_ARRAY_SIZE];
    UNSIGNED16 trBufferCnt[CORE_LINE_ARRAY_SIZE];
    UNSIGNED16 cobCnt[CORE_LINE_ARRAY_SIZE];
    CORE_PROTOCOL_TYPE_T protocolType[CORE_LINE_ARRAY_SIZE];
#ifdef ISOTP_SUPPORTED
    UNSIGNED8 isotpClientCnt[CORE_LINE_ARRAY_SIZE];
    UNSIGNED8 isotpServerCnt[CORE_LINE_ARRAY_SIZE];
#endif
#ifdef CORE_CANFD_SUPPORTED
    BOOL_T fdMode[CORE_LINE_ARRAY_SIZE];
#endif
} CORE_COMMON_INIT_VAL_T;

RET_T coreStackInit(CORE_COMMON_INIT_VAL_T *pInitVals);

#endif /* CORE_COMMON_H */
