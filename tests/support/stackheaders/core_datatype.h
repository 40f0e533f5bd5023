/* Minimal stand-in of the stack's basic data types, for compiling generated files in tests. */
#ifndef CORE_DATATYPE_H
#define CORE_DATATYPE_H 1

#include <stddef.h>

typedef unsigned char BOOL_T;
#define CO_TRUE 1u
#define CO_FALSE 0u

typedef unsigned char UNSIGNED8;
typedef unsigned short UNSIGNED16;
typedef unsigned int UNSIGNED24;
typedef unsigned int UNSIGNED32;
typedef unsigned long long UNSIGNED40;
typedef unsigned long long UNSIGNED48;
typedef unsigned long long UNSIGNED56;
typedef unsigned long long UNSIGNED64;
typedef signed char INTEGER8;
typedef signed short INTEGER16;
typedef signed int INTEGER24;
typedef signed int INTEGER32;
typedef signed long long INTEGER40;
typedef signed long long INTEGER48;
typedef signed long long INTEGER56;
typedef signed long long INTEGER64;
typedef float REAL32;
typedef double REAL64;

typedef enum {
    RET_OK,
    RET_PARAMETER_INVALID,
    RET_NOT_INITIALIZED,
    RET_OUT_OF_MEMORY,
    RET_INTERNAL_ERROR
} RET_T;

#ifndef CORE_CONST
#define CORE_CONST const
#endif

typedef UNSIGNED8 CAN_LINE_TYPE;
/* The functions of one line name their line with this. */
#define CAN_LINE canLine

/* How the stack stores a value, one list for every protocol. */
typedef enum {
    CORE_DTYPE_NON_NUMERIC, CORE_DTYPE_BOOL, CORE_DTYPE_U1, CORE_DTYPE_U2, CORE_DTYPE_U3, CORE_DTYPE_U4,
    CORE_DTYPE_U5, CORE_DTYPE_U6, CORE_DTYPE_U7, CORE_DTYPE_U8, CORE_DTYPE_U9, CORE_DTYPE_U10, CORE_DTYPE_U11,
    CORE_DTYPE_U12, CORE_DTYPE_U13, CORE_DTYPE_U14, CORE_DTYPE_U15, CORE_DTYPE_U16, CORE_DTYPE_U18,
    CORE_DTYPE_U19, CORE_DTYPE_U21, CORE_DTYPE_U24, CORE_DTYPE_U29, CORE_DTYPE_U32, CORE_DTYPE_U40,
    CORE_DTYPE_U48, CORE_DTYPE_U56, CORE_DTYPE_U64, CORE_DTYPE_I8, CORE_DTYPE_I16, CORE_DTYPE_I24,
    CORE_DTYPE_I32, CORE_DTYPE_I40, CORE_DTYPE_I48, CORE_DTYPE_I56, CORE_DTYPE_I64, CORE_DTYPE_R32,
    CORE_DTYPE_R64, CORE_DTYPE_VS, CORE_DTYPE_OS, CORE_DTYPE_US, CORE_DTYPE_T, CORE_DTYPE_TD, CORE_DTYPE_D,
    CORE_DTYPE_UTF8, CORE_DTYPE_STRING_NULL, CORE_DTYPE_STRING_ASTERIKS, CORE_DTYPE_OCTET_STRING,
    CORE_DTYPE_DOMAIN, CORE_DTYPE_SN, CORE_DTYPE_SA
} CORE_DATA_TYPE_T;

/* Arrays with one entry per line. */
#if defined(CAN_MULTI_LINE_CNT)
#define CORE_LINE_ARRAY_SIZE CAN_MULTI_LINE_CNT
#elif defined(CO_MULTI_LINE_CNT)
#define CORE_LINE_ARRAY_SIZE CO_MULTI_LINE_CNT
#else
#define CORE_LINE_ARRAY_SIZE 1u
#endif

#endif /* CORE_DATATYPE_H */
