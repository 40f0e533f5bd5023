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

/* The common initialisation of the older generation; its tests define one of these on the command line. */
#if defined(KESTREL_OLDER_STACK) || defined(CO_STACK_GENERATION_OLDER)
#include <co_datatype.h>
#if defined(CO_MULTI_LINE_CNT)
#define CO_COMMON_LINE_CNT CO_MULTI_LINE_CNT
#else
#define CO_COMMON_LINE_CNT 1u
#endif
typedef UNSIGNED16 MP_PROTOCOL_TYPE_T;
#define MP_PROT_TYPE_UNKNOWN 0x00u
#define MP_PROT_TYPE_CANOPEN 0x01u
#define MP_PROT_TYPE_J1939 0x02u
#define MP_PROT_TYPE_RAWCAN 0x04u
#define MP_PROT_TYPE_UDS 0x08u
typedef struct {
    UNSIGNED8 version;
    UNSIGNED16 recBufferCnt[CO_COMMON_LINE_CNT];
    UNSIGNED16 trBufferCnt[CO_COMMON_LINE_CNT];
    UNSIGNED16 cobCnt[CO_COMMON_LINE_CNT];
    MP_PROTOCOL_TYPE_T protocolType[CO_COMMON_LINE_CNT];
#ifdef ISOTP_SUPPORTED
    UNSIGNED8 isotpClientCnt[CO_COMMON_LINE_CNT];
    UNSIGNED8 isotpServerCnt[CO_COMMON_LINE_CNT];
#endif
#ifdef CO_CANFD_SUPPORTED
    BOOL_T fdMode[CO_COMMON_LINE_CNT];
#endif
} CO_COMMON_INIT_VAL_T;
RET_T commonStackInit(CO_COMMON_INIT_VAL_T *pInitVals);
#define RET_INVALID_PARAMETER RET_PARAMETER_INVALID
#define RET_SERVICE_NOT_INITIALIZED RET_NOT_INITIALIZED
#endif

#endif /* CORE_COMMON_H */
