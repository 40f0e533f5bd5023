/* Stand-in of an internal header of the stack core; the generated files use nothing of it. */
#ifndef ICORE_COBHANDLER_H
#define ICORE_COBHANDLER_H 1

#endif
