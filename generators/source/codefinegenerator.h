#pragma once

#include "generators/source/definegeneratorbase.h"

// gen_define.h of the older stack generation, for projects whose `use_core_headers` isn't "V4".
class CoDefineGenerator : public DefineGeneratorBase
{
    Q_OBJECT

public:
    using DefineGeneratorBase::DefineGeneratorBase;

protected:
    const DefineFamily &family() const override;
};
