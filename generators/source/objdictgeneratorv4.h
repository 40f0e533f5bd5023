#pragma once

#include "objdictgeneratorbase.h"

// gen_objdict.c for the current stack generation.
class ObjDictGeneratorV4 : public ObjDictGeneratorBase
{
    Q_OBJECT

public:
    explicit ObjDictGeneratorV4(bool compactDescription, QObject *parent = nullptr);
};
