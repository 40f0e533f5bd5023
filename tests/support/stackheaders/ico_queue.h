/* Stand-in of an internal header of the stack core; the generated files use nothing of it. */
#ifndef ICO_QUEUE_H
#define ICO_QUEUE_H 1

#endif
