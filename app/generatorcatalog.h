#pragma once

#include "generation/generatorfactory.h"

// The one place that knows every generator class of the program.
class GeneratorCatalog : public GeneratorFactory
{
public:
    std::unique_ptr<AbstractGenerator> create(GeneratorKind kind, const GeneratorOptions &options) const override;
};
