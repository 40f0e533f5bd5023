/* Stand-in of an internal header of the stack core; the generated files use nothing of it. */
#ifndef ICO_COBHANDLER_H
#define ICO_COBHANDLER_H 1

#endif
