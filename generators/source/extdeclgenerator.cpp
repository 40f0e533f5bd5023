#include "extdeclgenerator.h"

namespace {

const ExtDeclDialect olderDialect = {
    .titleMark = "",
    .coreHeadersAlways = false,
    .oddWidthsAsUnsigned16 = false,
};

} // namespace

ExtDeclGenerator::ExtDeclGenerator(QObject *parent)
    : ExtDeclGeneratorBase(olderDialect, parent)
{}
