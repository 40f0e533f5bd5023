#pragma once

#include "multiprogeneratorframe.h"
#include "objdictgenerator.h"
#include "pgngenerator.h"

// gen_mp.c or gen_rawcan.c of the older stack generation, which has no bootloader projects.
class MultiProGenerator : public MultiProGeneratorFrame<ObjDictGenerator, PGNGenerator>
{
    Q_OBJECT

public:
    explicit MultiProGenerator(bool compactDescription, QObject *parent = nullptr);
};
