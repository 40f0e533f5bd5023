#include "pdomapping.h"
