#include "pgngenerator.h"

#include "generation/commongeneratorhelper.h"
#include "pgndialect.h"

namespace {

const PgnDialect olderDialect = {
    .titleMark = "",
    .constMacro = "CO_CONST",
    .watchdogMacro = "CO_HANDLE_WATCHDOG",
    .lineCountMacro = "CO_MULTI_LINE_CNT",
    .isotpInclude = "#include <iso_tp.h>\n",
    .stackStart = "commonStackInit",
    .receiveSizeName = "J1939_RECEIVE_PGN_CNT",
    .applicationHeaders = false,
    .dataTables = false,
    .olderServiceValues = true,
};

} // namespace

PGNGenerator::PGNGenerator(QObject *parent)
    : PGNGeneratorBase(olderDialect, parent)
{}

const PgnDialect &PGNGenerator::pgnDialect()
{
    return olderDialect;
}

std::unique_ptr<CommonGeneratorHelperBase> PGNGenerator::createHelper() const
{
    return std::make_unique<CommonGeneratorHelper>(database);
}
