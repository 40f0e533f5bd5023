/* Minimal stand-in of the stack's ISO-TP module, for compiling generated files in tests. */
#ifndef CORE_ISOTP_H
#define CORE_ISOTP_H 1

#include <core_datatype.h>

typedef enum {
    ISOTP_FORMAT_NORMAL,
    ISOTP_FORMAT_NORMAL_FIXED,
    ISOTP_FORMAT_EXTENDED
} ISOTP_FORMAT_T;

#endif /* CORE_ISOTP_H */
