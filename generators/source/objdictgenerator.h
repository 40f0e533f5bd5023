#pragma once

#include "objdictgeneratorbase.h"

// gen_objdict.c for the older stack generation.
class ObjDictGenerator : public ObjDictGeneratorBase
{
    Q_OBJECT

public:
    explicit ObjDictGenerator(bool compactDescription, QObject *parent = nullptr);
};
