/* Minimal stand-in of the stack's CiA 510 server, for compiling generated files in tests. */
#ifndef J1939_CAM11_CAM21_H
#define J1939_CAM11_CAM21_H 1

#include <j1939_j1939.h>

#endif /* J1939_CAM11_CAM21_H */
