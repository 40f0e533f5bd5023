/* Minimal stand-in of the older stack generation's ISO-TP module, for compiling generated files in tests. */
#ifndef ISO_TP_H
#define ISO_TP_H 1

#include <core_isotp.h>

#endif /* ISO_TP_H */
