#include "objdictgenerator.h"

#include "objdictdialect.h"

ObjDictGenerator::ObjDictGenerator(bool compactDescription, QObject *parent)
    : ObjDictGeneratorBase(ObjDictDialect::older(), compactDescription, parent)
{}
