#pragma once

#include "generators/source/definegeneratorbase.h"

// gen_define.h of the current stack generation.
class GenDefineGenerator : public DefineGeneratorBase
{
    Q_OBJECT

public:
    using DefineGeneratorBase::DefineGeneratorBase;

protected:
    const DefineFamily &family() const override;
};
