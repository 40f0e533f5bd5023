#include "objdictgeneratorv4.h"

#include "objdictdialect.h"

ObjDictGeneratorV4::ObjDictGeneratorV4(bool compactDescription, QObject *parent)
    : ObjDictGeneratorBase(ObjDictDialect::current(), compactDescription, parent)
{}
