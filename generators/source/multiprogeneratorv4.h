#pragma once

#include "multiprogeneratorframe.h"
#include "objdictgeneratorv4.h"
#include "pgngeneratorv4.h"

// gen_mp.c, gen_rawcan.c or gen_uds.c of the current stack generation.
class MultiProGeneratorV4 : public MultiProGeneratorFrame<ObjDictGeneratorV4, PGNGeneratorV4>
{
    Q_OBJECT

public:
    explicit MultiProGeneratorV4(bool compactDescription, QObject *parent = nullptr);
};
