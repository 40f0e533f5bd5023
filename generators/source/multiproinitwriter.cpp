#include "multiproinitwriter.h"

#include "multiprocontext.h"
#include "multiprodialect.h"
#include "objdictdialect.h"
#include "objdictinitwriter.h"
#include "objdictservicecalls.h"
#include "pgngeneratorbase.h"

#include "generation/commongeneratorhelperbase.h"
#include "generation/commongeneratorhelperv4.h"

#include <QTextStream>

namespace {

// The protocol constant that a line of a single protocol must have been given at run time.
const char *singleProtocol(int type)
{
    switch (type) {
    case 1:
        return "CORE_PROT_TYPE_CANOPEN";
    case 2:
        return "CORE_PROT_TYPE_J1939";
    case 4:
        return "CORE_PROT_TYPE_RAWCAN";
    default:
        return nullptr;
    }
}

const char *const stackStartCheck = "    if (retVal != RET_OK) {\n"
                                    "        return (retVal);\n"
                                    "    }\n";
const char *const j1939Check = "\tif (retVal != RET_OK) {\n"
                               "\t return(retVal);\n"
                               "\t}\n"
                               "    CORE_HANDLE_WATCHDOG\n";
const char *const functionEnd = "\n    return(retVal);\n}\n\n\n";

} // namespace

MultiProInitWriter::MultiProInitWriter(const MultiProContext &context, const ObjDictServiceCalls &calls,
                                       const PGNGeneratorBase &pgn)
    : context(context)
    , calls(calls)
    , pgn(pgn)
{}

QString MultiProInitWriter::structures() const
{
    const MultiProFlags &flags = context.flags;
    QString text;
    if (context.udsOn())
        text += context.helper->udsDeclarations() + context.helper->udsStaticIndications() + '\n';
    text += context.helper->commonInitText();
    if (flags.hasRawCAN && !flags.bootloaderMode)
        text += rawCanInitVars();
    if (flags.hasCANopen)
        text += canopenInitVars();
    if (flags.hasJ1939)
        text += j1939InitVars();
    return text;
}

QString MultiProInitWriter::rawCanInitVars() const
{
    return QStringLiteral("/* rawCAN initalization values */\n"
                          "CORE_CONST RAWCAN_SERVICE_INIT_VAL_T\trawcanInitVars = {\n"
                          "       6u,\n"
                          "\t{ RAWCAN_RECEIVE_COUNTS },\n"
                          "\t{ RAWCAN_TRANSMIT_COUNTS }\n"
                          "};\n");
}

QString MultiProInitWriter::canopenInitVars() const
{
    const QString indent = QStringLiteral("       ");
    return QStringLiteral("CO_SERVICE_INIT_VAL_T\tserviceInitVars = {\n") + indent + QStringLiteral("6,\n") +
           ObjDictInitWriter::countRows(indent, !context.dialect.objDict.localServiceInitVars) + indent +
           QStringLiteral("{ CO_NODE_ID_FUNCTIONS } \n    };\n\n");
}

QString MultiProInitWriter::j1939InitVars() const
{
    return QStringLiteral("CORE_CONST J1939_SERVICE_INIT_VAL_T\tj1939InitVars = {\n\t6u,\n") + pgn.serviceInitRows() +
           QStringLiteral("};\n\n");
}

QString MultiProInitWriter::mainFunction() const
{
    const MultiProFlags &flags = context.flags;
    if (flags.rawCanOnly) {
        QString text = QStringLiteral("\n/*  stack initialization for RawCAN stack */\n");
        text += flags.fdSupport ? QStringLiteral("RET_T rawcanStackInit(BOOL_T *pModes) {\n")
                                : QStringLiteral("RET_T rawcanStackInit(void) {\n");
        text += QStringLiteral("RET_T retVal;\n\n");
        return text + (flags.multiLine ? rawCanMultiLineBody() : singleLineBody());
    }
    if (flags.bootloaderMode)
        return QStringLiteral("RET_T udsStackInit(void) {\nRET_T retVal;\n\n") + singleLineBody();
    const QString comment = QStringLiteral("\n/*  stack initialization for CAN-MultiProtocol stack */\n");
    if (!flags.multiLine)
        return comment + functionHead(QStringLiteral("mpStackInit"), false) + singleLineBody();
    if (context.dialect.commonFunction)
        return olderMultiLineFunctions();
    return comment + functionHead(QStringLiteral("mpStackInit"), true) + multiLineBody();
}

QString MultiProInitWriter::functionHead(const QString &name, bool lineVariable) const
{
    QString text = QStringLiteral("RET_T %1(\n").arg(name) +
                   QStringLiteral("         CORE_PROTOCOL_TYPE_T\t*pProtType"
                                  "\n#ifdef CANOPEN_SUPPORTED\n"
                                  "         , CO_EVENT_STORE_T\tpLoadFunction\n"
                                  "#endif /* CANOPEN_SUPPORTED */\n");
    if (context.flags.fdSupport)
        text += QStringLiteral(",        BOOL_T *pModes");
    text += QStringLiteral("\n    )\n{\nRET_T retVal;\n");
    if (lineVariable)
        text += QStringLiteral("CAN_LINE_TYPE CAN_LINE;\n");
    else if (!context.flags.multiLine && context.lines().contains(0)) {
        const int type = context.lineType(0);
        if (type == 5 || type == 6 || type == 7)
            text += QStringLiteral("CORE_PROTOCOL_TYPE_T protType;\n");
    }
    return text + '\n';
}

QString MultiProInitWriter::stackStart() const
{
    return QStringLiteral("    retVal = coreStackInit(&commonInitVars);\n") + QLatin1String(stackStartCheck) +
           QStringLiteral("    CORE_HANDLE_WATCHDOG\n");
}

QString MultiProInitWriter::multiLineBody() const
{
    const QString call = context.flags.fdSupport ? QStringLiteral("mpStackInit_line%1(%1, pModes)")
                                                 : QStringLiteral("mpStackInit_line%1(%1)");
    return multiLineCommonPart() + lineCalls(call) + finishCall(QStringLiteral("mpStackInit_finish")) +
           QLatin1String(functionEnd);
}

QString MultiProInitWriter::multiLineCommonPart() const
{
    const MultiProFlags &flags = context.flags;
    QString text = QStringLiteral("    /* check for protocol information */\n"
                                  "    if (pProtType == NULL)  {\n"
                                  "        return(RET_PARAMETER_INVALID);\n"
                                  "    }\n");
    for (const quint8 line : context.lines()) {
        const char *protocol = singleProtocol(context.lineType(line));
        if (!protocol)
            continue;
        text += QStringLiteral("    if ((pProtType[%1] & %2) != %2) {\n"
                               "        return(RET_NOT_INITIALIZED);\n"
                               "    }\n")
                    .arg(line)
                    .arg(QLatin1String(protocol));
    }
    text += QStringLiteral("    for (CAN_LINE = 0; CAN_LINE < CAN_MULTI_LINE_CNT; CAN_LINE ++)\n"
                           "    {\n"
                           "        commonInitVars.protocolType[CAN_LINE] = pProtType[CAN_LINE];\n");
    if (flags.fdSupport)
        text += QStringLiteral("        commonInitVars.fdMode[CAN_LINE] = CO_TRUE;\n"
                               "        if (pModes != NULL) {\n"
                               "            commonInitVars.fdMode[CAN_LINE] = pModes[CAN_LINE];\n"
                               "        }\n");
    text += QStringLiteral("    }\n\n") + stackStart();
    const QString watchdog = QStringLiteral("    CORE_HANDLE_WATCHDOG\n");
    if (flags.hasCANopen)
        text += QStringLiteral("    coCanOpenStackVarInit(&serviceInitVars);\n") + watchdog;
    if (flags.hasJ1939)
        text += QStringLiteral("    j1939StackInit_common(&j1939InitVars);\n") + watchdog;
    if (flags.hasRawCAN)
        text += QStringLiteral("    rawcanStackInit_common(&rawcanInitVars);\n") + watchdog;
    if (flags.hasCANopen)
        text += QStringLiteral("\n#ifdef CANOPEN_SUPPORTED\n"
                               "    /* initialize load parameter function */\n"
                               "#if defined(CO_EVENT_DYNAMIC_STORE) || defined(CO_EVENT_PROFILE_STORE)\n"
                               "    retVal = coEventRegister_LOAD_PARA(pLoadFunction);\n"
                               "    if (retVal != RET_OK) {\n"
                               "        return (retVal);\n"
                               "    }\n"
                               "#else\n"
                               "    (void)pLoadFunction;\n"
                               "#endif /* CO_EVENT_DYNAMIC_STORE || CO_EVENT_PROFILE_STORE */\n"
                               "#endif /* CANOPEN_SUPPORTED */\n");
    text += '\n';
    if (context.udsOn())
        text += context.helper->udsCommonInit() + '\n';
    return text;
}

QString MultiProInitWriter::rawCanMultiLineBody() const
{
    QString text = QStringLiteral("\n") + stackStart();
    if (context.udsOn())
        text += context.helper->udsCommonInit() + '\n';
    text += QStringLiteral("\n    rawcanStackInit_common(&rawcanInitVars);\n    CORE_HANDLE_WATCHDOG\n");
    return text + lineCalls(QStringLiteral("rawcanStackInit_line%1(%1)")) +
           finishCall(QStringLiteral("rawcanStackInit_finish")) + QLatin1String(functionEnd);
}

QString MultiProInitWriter::lineCalls(const QString &function) const
{
    QString text;
    for (const quint8 line : context.lines())
        text += QStringLiteral("    if (retVal == RET_OK) {\n        retVal = %1;\n    }\n").arg(function.arg(line));
    return text;
}

QString MultiProInitWriter::finishCall(const QString &function) const
{
    return QStringLiteral("    if (retVal == RET_OK) {\n        retVal = %1();\n    };\n").arg(function);
}

QString MultiProInitWriter::olderMultiLineFunctions() const
{
    const bool fd = context.flags.fdSupport;
    QString text = QStringLiteral("\n/*  common initialization of the CAN-MultiProtocol stack */\n") +
                   functionHead(QStringLiteral("mpStackInit_common"), true) + multiLineCommonPart() +
                   QLatin1String(functionEnd);
    text += QStringLiteral("\n/*  stack initialization for CAN-MultiProtocol stack */\n") +
            functionHead(QStringLiteral("mpStackInit"), false);
    text += QStringLiteral("    retVal = mpStackInit_common(pProtType\n"
                           "#ifdef CANOPEN_SUPPORTED\n"
                           "         , pLoadFunction\n"
                           "#endif /* CANOPEN_SUPPORTED */\n");
    if (fd)
        text += QStringLiteral("         , pModes\n");
    text += QStringLiteral("         );\n");
    const QString call = fd ? QStringLiteral("mpStackInit_line%1(%1, pProtType[%1], pModes)")
                            : QStringLiteral("mpStackInit_line%1(%1, pProtType[%1])");
    return text + lineCalls(call) + finishCall(QStringLiteral("mpStackInit_finish")) + QLatin1String(functionEnd);
}

QString MultiProInitWriter::singleLineBody() const
{
    const MultiProFlags &flags = context.flags;
    QString text;
    if (!flags.rawCanOnly && !flags.bootloaderMode)
        text += QStringLiteral("    commonInitVars.protocolType[0] = *pProtType;\n");
    if (flags.fdSupport && !flags.bootloaderMode)
        text += QStringLiteral("    commonInitVars.fdMode[0] = *pModes;\n");
    text += '\n' + stackStart();
    if (context.udsOn()) {
        const QString watchdog = QStringLiteral("    CORE_HANDLE_WATCHDOG\n");
        text += context.helper->udsCommonInit() + '\n' + watchdog;
        if (flags.bootloaderMode)
            text += CommonGeneratorHelperV4::udsBootloaderInit() + '\n';
        text += context.helper->udsLineInit(0, false) + '\n' + watchdog;
    }
    const QString protocols = singleLineProtocols();
    if (!protocols.isEmpty())
        text += protocols + QStringLiteral("    CORE_HANDLE_WATCHDOG\n");
    return text + QStringLiteral("    return(RET_OK);\n}\n");
}

QString MultiProInitWriter::singleLineProtocols() const
{
    const MultiProFlags &flags = context.flags;
    switch (context.lines().contains(0) ? context.lineType(0) : 0) {
    case 4:
        if (flags.bootloaderMode)
            return QString();
        if (flags.rawCanOnly)
            return QStringLiteral("    retVal = rawcanStackInit_common(&rawcanInitVars);\n"
                                  "    if (retVal != RET_OK) {\n"
                                  "        return(retVal);\n"
                                  "    }\n"
                                  "    retVal = rawcanStackInit_line(&rawcanConfig);\n"
                                  "    if (retVal != RET_OK) {\n"
                                  "        return(retVal);\n"
                                  "    }\n");
        return QStringLiteral("    if ((*pProtType & CORE_PROT_TYPE_RAWCAN) == CORE_PROT_TYPE_RAWCAN)  {\n") +
               guardedRawCan(false) +
               QStringLiteral("    } else {\n        return(RET_NOT_INITIALIZED);\n    }\n");
    case 5:
        return protocolCheck() + guardedCANopen() + guardedJ1939();
    case 6:
        return protocolCheck() + guardedCANopen() + guardedRawCan(true);
    case 7:
        return protocolCheck() + guardedJ1939() + guardedRawCan(true);
    default:
        return QString();
    }
}

QString MultiProInitWriter::protocolCheck() const
{
    return QStringLiteral("\n    /* check for protocol information */\n"
                          "    if (pProtType == NULL)  {\n"
                          "        return(RET_PARAMETER_INVALID);\n"
                          "    }\n"
                          "    protType = *pProtType;\n\n");
}

QString MultiProInitWriter::guardedCANopen() const
{
    QString serviceCalls;
    QTextStream out(&serviceCalls);
    calls.writeSingleLine(out);
    out.flush();
    return QStringLiteral("    /* initialize CANopen if requested */\n"
                          "    if ((protType & CORE_PROT_TYPE_CANOPEN) == CORE_PROT_TYPE_CANOPEN)  {\n"
                          "#ifdef CANOPEN_SUPPORTED\n"
                          "        /* variable initialization */\n"
                          "        coCanOpenStackVarInit(&serviceInitVars);\n") +
           serviceCalls +
           QStringLiteral("#else /* CANOPEN_SUPPORTED */\n"
                          "        return(RET_NOT_INITIALIZED);\n"
                          "#endif /* CANOPEN_SUPPORTED */\n"
                          "    }\n\n");
}

QString MultiProInitWriter::guardedJ1939() const
{
    QString text = QStringLiteral("    /* initialize J1939 if requested */\n"
                                  "    if ((protType & CORE_PROT_TYPE_J1939) == CORE_PROT_TYPE_J1939)  {\n"
                                  "#ifdef J1939_SUPPORTED\n"
                                  "\tretVal = j1939StackInit_common(&j1939InitVars);\n") +
                   QLatin1String(j1939Check);
    if (context.number("init_static_variables") != 1)
        text += pgn.addressClaimInitialisation();
    text += QStringLiteral("\tretVal = j1939StackInit_line(&j1939Config);\n") + QLatin1String(j1939Check);
    if (context.cia510()) {
        text += QStringLiteral("# ifdef CANOPEN_SUPPORTED\n"
                               "#  ifdef J1939_CAM11_CAM21_SUPPORTED\n"
                               "\tif ((protType & CORE_PROT_TYPE_CANOPEN) != CORE_PROT_TYPE_CANOPEN)  {\n"
                               "\t\t/* init CANopen OD if CANopen is not active */\n"
                               "\t\ticoOdAccessVarInit();\n"
                               "        coOdInitOdPtr(&od_assign[0], %1, od_description, %2, NULL, "
                               "&od_data_variables);\n"
                               "        CORE_HANDLE_WATCHDOG\n"
                               "\t}\n"
                               "#  endif /*J1939_CAM11_CAM21_SUPPORTED */\n"
                               "# endif /* CANOPEN_SUPPORTED */\n")
                    .arg(context.model.objectCount(0))
                    .arg(context.model.subIndexCount(0));
    }
    return text + QStringLiteral("#else /* J1939_SUPPORTED */\n"
                                 "        return(RET_NOT_INITIALIZED);\n"
                                 "#endif /* J1939_SUPPORTED */\n"
                                 "    }\n\n");
}

QString MultiProInitWriter::guardedRawCan(bool comment) const
{
    QString text = comment ? QStringLiteral("    /* initialize RAW-CAN if requested */\n") : QString();
    return text + QStringLiteral("    if ((protType & CORE_PROT_TYPE_RAWCAN) == CORE_PROT_TYPE_RAWCAN)  {\n"
                                 "#ifdef RAWCAN_SUPPORTED\n"
                                 "        rawcanStackInit_common(&rawcanInitVars);\n"
                                 "        retVal = rawcanStackInit_line(&rawcanConfig);\n"
                                 "        if (retVal != RET_OK) {\n"
                                 "            return(retVal);\n"
                                 "        }\n"
                                 "#else /* RAWCAN_SUPPORTED */\n"
                                 "        return(RET_NOT_INITIALIZED);\n"
                                 "#endif /* RAWCAN_SUPPORTED */\n"
                                 "    }\n\n");
}
