/* Minimal stand-in of the older stack generation's data types, for compiling generated files in tests. */
#ifndef CO_DATATYPE_H
#define CO_DATATYPE_H 1

#include <core_datatype.h>

#ifndef CO_CONST
#define CO_CONST const
#endif

typedef UNSIGNED8 CO_LINE_TYPE;

#endif /* CO_DATATYPE_H */
