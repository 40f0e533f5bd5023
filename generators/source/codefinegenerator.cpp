#include "codefinegenerator.h"

#include "definefamily.h"

const DefineFamily &CoDefineGenerator::family() const
{
    return DefineFamily::older();
}
