/* Minimal stand-in of the stack's multi-protocol interface, for compiling generated files in tests: the
 * interfaces of the protocols that gen_define.h switches on. */
#ifndef MP_MP_H
#define MP_MP_H 1

#include <core_common.h>
#ifdef CANOPEN_SUPPORTED
#include <co_canopen.h>
#include <co_objdict_decl.h>
#endif
#ifdef J1939_SUPPORTED
#include <j1939_j1939.h>
#endif
#ifdef RAWCAN_SUPPORTED
#include <rawcan_rawcan.h>
#endif

#endif /* MP_MP_H */
