#include "generatorcatalog.h"

#include "generators/source/gendefinegenerator.h"

std::unique_ptr<AbstractGenerator> GeneratorCatalog::create(GeneratorKind kind, const GeneratorOptions &options) const
{
    Q_UNUSED(options)
    switch (kind) {
    case GeneratorKind::Define:
        return std::make_unique<GenDefineGenerator>();
    default:
        return nullptr;
    }
}
