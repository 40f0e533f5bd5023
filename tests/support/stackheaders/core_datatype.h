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

/* Arrays with one entry per line. */
#ifdef CAN_MULTI_LINE_CNT
#define CORE_LINE_ARRAY_SIZE CAN_MULTI_LINE_CNT
#else
#define CORE_LINE_ARRAY_SIZE 1u
#endif

#endif /* CORE_DATATYPE_H */
