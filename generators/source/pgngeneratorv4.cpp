#include "pgngeneratorv4.h"

#include "generation/commongeneratorhelperv4.h"
#include "pgndialect.h"

namespace {

const PgnDialect currentDialect = {
    .titleMark = " (V4)",
    .constMacro = "CORE_CONST",
    .watchdogMacro = "CORE_HANDLE_WATCHDOG",
    .lineCountMacro = "CAN_MULTI_LINE_CNT",
    .isotpInclude = "#include <core_isotp.h>\n",
    .stackStart = "coreStackInit",
    .receiveSizeName = "J1939_RECEIVE_PGN_CFG_CNT",
    .applicationHeaders = true,
    .dataTables = true,
    .olderServiceValues = false,
};

} // namespace

PGNGeneratorV4::PGNGeneratorV4(QObject *parent)
    : PGNGeneratorBase(currentDialect, parent)
{}

const PgnDialect &PGNGeneratorV4::pgnDialect()
{
    return currentDialect;
}

std::unique_ptr<CommonGeneratorHelperBase> PGNGeneratorV4::createHelper() const
{
    return std::make_unique<CommonGeneratorHelperV4>(database);
}
