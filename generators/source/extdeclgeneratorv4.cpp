#include "extdeclgeneratorv4.h"

namespace {

const ExtDeclDialect currentDialect = {
    .titleMark = " (V4)",
    .coreHeadersAlways = true,
    .oddWidthsAsUnsigned16 = true,
};

} // namespace

ExtDeclGeneratorV4::ExtDeclGeneratorV4(QObject *parent)
    : ExtDeclGeneratorBase(currentDialect, parent)
{}
