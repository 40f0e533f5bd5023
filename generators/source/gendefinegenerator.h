#pragma once

#include "generators/source/definegeneratorbase.h"

// gen_define.h of the current stack generation.
class GenDefineGenerator : public DefineGeneratorBase
{
    Q_OBJECT

public:
    using DefineGeneratorBase::DefineGeneratorBase;

protected:
    void writeContent(QTextStream &out) override;

private:
    void writeToolBlock(QTextStream &out) const;
    void writeVersionBlock(QTextStream &out);
};
