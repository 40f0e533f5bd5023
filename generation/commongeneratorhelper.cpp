#include "commongeneratorhelper.h"

namespace {

// The older stack knows no line that carries CANopen or J1939 together with raw CAN.
const CommonHelperDialect olderDialect = {
    .structVersions = {1, 4, 5, 5},
    .commonInitHead = "/* core initialization settings */\nCO_COMMON_INIT_VAL_T    commonInitVars = {\n",
    .bufferCountRows = "\t{ CO_REC_BUFFER_COUNTS },\n\t{ CO_TR_BUFFER_COUNTS },\n\t{ CO_COB_COUNTS }, \n",
    .protocolTexts = {nullptr, "MP_PROT_TYPE_CANOPEN", "MP_PROT_TYPE_J1939", nullptr, "MP_PROT_TYPE_RAWCAN",
                      "MP_PROT_TYPE_J1939 | MP_PROT_TYPE_CANOPEN", nullptr, nullptr},
    .unknownProtocol = "MP_PROT_TYPE_UNKNOWN",
    .udsProtocolSuffix = " | MP_PROT_TYPE_UDS",
    .udsOnlyProtocol = nullptr,
    .isotpServerRow = "\t{ ISOTP_SERVER_COUNTS }\n",
    .declarationIndent = "\t",
    .serviceInitHead = "\t/* UDS common initialization structure */ \n\tconst UDS_SERVICE_INIT_VAL_T "
                       "udsServiceInitVars = {\n",
    .lineInitHead = "const UDS_CONFIG_INIT_VAL_T",
    .callIndent = "\t",
    .tableComments = false,
    .periodicIdRow = false,
    .authentication = false,
    .activeFlagEndsStructure = true,
    .bootloaderStructures = false,
};

} // namespace

CommonGeneratorHelper::CommonGeneratorHelper(ObjectDataBase *store, QObject *parent)
    : CommonGeneratorHelperBase(store, olderDialect, parent)
{}
