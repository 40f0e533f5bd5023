#include "vobjdictgeneratorv4.h"

#include "objdictdialect.h"

VobjDictGeneratorV4::VobjDictGeneratorV4(bool compactDescription, QObject *parent)
    : VobjDictGeneratorBase(ObjDictDialect::current(), compactDescription, parent)
{}
