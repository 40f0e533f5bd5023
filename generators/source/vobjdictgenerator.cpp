#include "vobjdictgenerator.h"

#include "objdictdialect.h"

VobjDictGenerator::VobjDictGenerator(bool compactDescription, QObject *parent)
    : VobjDictGeneratorBase(ObjDictDialect::older(), compactDescription, parent)
{}
