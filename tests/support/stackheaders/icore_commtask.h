/* Stand-in of an internal header of the stack core; the generated files use nothing of it. */
#ifndef ICORE_COMMTASK_H
#define ICORE_COMMTASK_H 1

#endif
