/* Minimal stand-in of the stack's internal object dictionary access, for compiling generated files in
 * tests. */
#ifndef ICO_ODACCESS_H
#define ICO_ODACCESS_H 1

#include <core_datatype.h>

void icoOdAccessVarInit(void);

#endif /* ICO_ODACCESS_H */
