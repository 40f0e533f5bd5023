#include "gendefinegenerator.h"

#include "definefamily.h"

const DefineFamily &GenDefineGenerator::family() const
{
    return DefineFamily::current();
}
