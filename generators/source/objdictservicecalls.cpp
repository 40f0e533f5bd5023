#include "objdictservicecalls.h"

#include "objdictcontext.h"
#include "objdictdialect.h"
#include "objdictpdotables.h"

#include <QTextStream>

#include <algorithm>

ObjDictServiceCalls::ObjDictServiceCalls(const ObjDictContext &context, const ObjDictPdoTables &pdoTables)
    : context(context)
    , pdoTables(pdoTables)
{}

QString ObjDictServiceCalls::check(int extraBlanks)
{
    const QString pad(extraBlanks, QLatin1Char(' '));
    return pad + QStringLiteral("    if (retVal != RET_OK) {\n") + pad +
           QStringLiteral("        return(retVal);\n") + pad + QStringLiteral("    }\n") + pad +
           QStringLiteral("    CORE_HANDLE_WATCHDOG\n");
}

qint64 ObjDictServiceCalls::number(const char *key) const
{
    return context.model.number(QString::fromLatin1(key));
}

QString ObjDictServiceCalls::constSlot(quint8 line, quint16 index, quint8 subIndex) const
{
    return QString::number(
        context.constPositions.value(ObjDictContext::positionKey(line, index, subIndex), 0));
}

QString ObjDictServiceCalls::optionalParameter(quint8 line, quint16 index, quint8 subIndex,
                                               const char *array) const
{
    if (!context.model.sub(line, index, subIndex))
        return QStringLiteral(", 0u");
    return QStringLiteral(", od_const_%1[%2]").arg(QLatin1String(array), constSlot(line, index, subIndex));
}

void ObjDictServiceCalls::writeSingleLine(QTextStream &out) const
{
    const ObjDictModel &model = context.model;
    out << "    /* initialize object dictionary variables and pointers */\n"
        << "    coOdInitOdPtr(&od_assign[0], CO_OD_ASSIGN_CNT, &od_description[0], CO_OBJ_DESC_CNT, NULL, "
           "&od_data_variables);\n"
        << "\n";
    if (number("event_led") > 0 && number("enable_dynamic") == 1)
        out << "    /* initialization of LED module */\n    coLedInit();\n\n";
    if (context.canFd) {
        out << "    /* initialize (u)sdo server(s) */\n"
               "    if (commonInitVars.fdMode[0] == CO_TRUE) {\n"
               "       retVal = coUsdoServerInit();\n"
               "       if (retVal != RET_OK) {\n"
               "           return(retVal);\n"
               "       }\n"
               "#ifdef CO_SDO_SERVER_CNT\n"
               "    } else {\n"
               "        retVal = coSdoServerInit(1);\n"
               "       if (retVal != RET_OK) {\n"
               "           return(retVal);\n"
               "       }\n"
               "#endif /* CO_SDO_SERVER_CNT */\n"
               "    }\n";
    } else {
        out << "    /* initialize sdo server(s) */\n    retVal = coSdoServerInit(1u);\n" << check();
    }
    for (const quint16 index : model.indices(0, 0x1201, 0x127F))
        out << "    retVal = coSdoServerInit(" << index - 0x11FF << "u);\n" << check();
    if (model.exists(0, 0x1280))
        out << "    /* initialize sdo clients(s) */\n";
    if (context.canFd && model.lineNumber(QStringLiteral("usdo_client_cnt"), 0) != 0 &&
        model.lineNumber(QStringLiteral("usdo_client_enabled"), 0) != 0)
        out << "    /* initialize (u)sdo clients(s) */\n"
               "    if (commonInitVars.fdMode[0] == CO_TRUE) {\n"
               "         retVal = coUsdoClientInit();\n"
            << check(4) << "    }\n";
    for (const quint16 index : model.indices(0, 0x1280, 0x12FF))
        out << "    retVal = coSdoClientInit(" << index - 0x127F << "u);\n" << check();
    writeErrorControlToTime(out, 0, QString());
    writePdos(out, 0);
    if (model.exists(0, 0x1F10))
        out << "\n    /* initialize SDO Requesting Device (SRD) */\n    retVal = coSrdInit();\n" << check();
    if (model.exists(0, 0x1300))
        out << "\n    /* initialize  GFC Producer - Consumer */\n    retVal = coGfcInit(CO_TRUE, CO_TRUE);\n"
            << check();
    for (const quint16 index : model.indices(0, 0x1301, 0x1340))
        out << "\n    /* initialize SRDO  */\n    retVal = coSrdoInit(" << index - 0x1300 << "u);\n"
            << check();
    if (number("isotp_connection_cnt") > 0)
        out << "\n    /* initialize ISO-TP */\n    retVal = isoTpInit();\n" << check();
    if (number("idnego_supported") > 0)
        out << "\n    /* initialization of ID negotiation module */\n    coIdNegoInit();\n" << check();
    if (number("bootup_manager") > 0 && model.exists(0, 0x1F81))
        out << "\n    /* initialization of node guarding master*/\n    retVal = coGuardingInit();\n"
            << check();
    writeLoadParameter(out, false);
    const qint64 master = number("nmtmaster");
    const bool lss = number("lss_supported") >= 1;
    if (master == 2) {
        out << "    /* Check dynamic options for master flag */\n    if (pCoOptions->master == 1) {\n";
        if (lss)
            out << "        /* initialize LSS Master */\n        retVal = coLssMasterInit();\n" << check(4);
        out << "        /* initialize NMT master */ \n        retVal = coNmtInit(1u);\n"
            << check(4) << "    } else {\n";
        if (lss)
            out << "        /* initialize LSS Slave */\n        retVal = coLssInit();\n" << check(4);
        out << "        /* initialize NMT slave */ \n        retVal = coNmtInit(0u);\n"
            << check(4) << "    }\n";
        return;
    }
    if (lss) {
        out << "\n";
        if (master == 1)
            out << "    /* initialize LSS Master */\n    retVal = coLssMasterInit();\n";
        else
            out << "    /* initialize LSS Slave */\n    retVal =  coLssInit();\n";
        out << check();
    }
    if (master > 0)
        out << "    /* initialize NMT master */ \n    retVal = coNmtInit(1u);\n";
    else
        out << "    /* initialize NMT slave */ \n    retVal = coNmtInit(0u);\n";
    out << check();
}

void ObjDictServiceCalls::writeErrorControlToTime(QTextStream &out, quint8 line,
                                                  const QString &lineArgument) const
{
    const ObjDictModel &model = context.model;
    const int consumers = std::max(0, model.subCount(line, 0x1016) - 1);
    if (model.exists(line, 0x1017))
        out << "    /* initialize error control */\n    retVal = coErrorCtrlInit(" << lineArgument
            << "od_const_u16[" << constSlot(line, 0x1017, 0) << "], " << consumers << "u);\n"
            << check();
    else if (model.exists(line, 0x100C))
        out << "    /* initialize error control (Node Guarding) */\n    retVal = coErrorCtrlInit("
            << lineArgument << "0, " << consumers << "u);\n"
            << check();
    if (model.exists(line, 0x1014))
        // The call takes the line alone, without the comma that the other calls carry behind it.
        out << "    /* initialize emergency */\n    retVal = coEmcyProducerInit("
            << QString(lineArgument).remove(QStringLiteral(", ")) << ");\n"
            << check();
    if (model.exists(line, 0x1005))
        out << "    /* initialize sync */\n    retVal = coSyncInit(" << lineArgument << "od_const_u32["
            << constSlot(line, 0x1005, 0) << "]);\n"
            << check();
    if (model.exists(line, 0x1028))
        out << "\n    /* initialize EMCY consumer */\n    retVal = coEmcyConsumerInit(" << lineArgument
            << std::max(0, model.subCount(line, 0x1028) - 1) << "u);\n"
            << check();
    if (model.exists(line, 0x1012)) {
        const SUBINDEX_DATA_T *time = model.sub(line, 0x1012, 0);
        const quint32 cobId = time ? time->defaultvalue.trimmed().toUInt(nullptr, 0) : 0;
        out << "\n    /* initialize Time service */\n    retVal = coTimeInit(" << lineArgument
            << ((cobId & (1u << 30)) ? "CO_TRUE" : "CO_FALSE") << ", "
            << ((cobId & (1u << 31)) ? "CO_TRUE" : "CO_FALSE") << ");\n"
            << check();
    }
}

void ObjDictServiceCalls::writePdos(QTextStream &out, quint8 line) const
{
    const ObjDictModel &model = context.model;
    const QString lineArgument = context.multiLineForm() ? QStringLiteral("%1, ").arg(line) : QString();
    const QString suffix = context.lineSuffix(line);
    for (const quint16 index : model.indices(line, 0x1800, 0x19FF)) {
        const int number = index - 0x17FF;
        out << "    /* initialize TPDO " << number << " */\n"
            << "    retVal = coPdoTransmitInit(" << lineArgument << number << "u, od_const_u8["
            << constSlot(line, index, 2) << "]" << optionalParameter(line, index, 3, "u16")
            << optionalParameter(line, index, 5, "u16") << optionalParameter(line, index, 6, "u8");
        if (pdoTables.hasTable(line, index))
            out << ", &mapTableTPDO" << suffix << number << ");\n";
        else
            out << ", NULL);\n";
        out << check();
    }
    const bool routing = pdoTables.routedEntries() != 0;
    for (const quint16 index : model.indices(line, 0x1400, 0x15FF)) {
        const int number = index - 0x13FF;
        out << "    /* initialize RPDO " << number << " */\n"
            << "    retVal = coPdoReceiveInit(" << lineArgument << number << "u, od_const_u8["
            << constSlot(line, index, 2) << "]" << optionalParameter(line, index, 3, "u16")
            << optionalParameter(line, index, 5, "u16");
        if (pdoTables.hasTable(line, index)) {
            const QString table = QStringLiteral("&mapTableRPDO%1%2").arg(suffix).arg(number);
            out << ", " << (routing ? table : pdoTables.uniqueRpdoTable(line, index, table)) << ");\n";
        } else {
            out << ", NULL);\n";
        }
        out << check();
    }
}

void ObjDictServiceCalls::writeLoadParameter(QTextStream &out, bool multiLine) const
{
    const bool storeFunction = !context.model.setting(QStringLiteral("fct_store")).trimmed().isEmpty();
    out << "\n    /* initialize load parameter function */\n"
           "#if defined(CO_EVENT_DYNAMIC_STORE) || defined(CO_EVENT_PROFILE_STORE)\n"
           "    retVal = coEventRegister_LOAD_PARA(pLoadFunction);\n"
           "    if (retVal != RET_OK) {\n"
           "        return(retVal);\n"
           "    }\n"
           "#else\n";
    if (!storeFunction)
        out << "    if (pLoadFunction != NULL) {\n        return(" << context.dialect.invalidParameter
            << ");\n    }\n";
    else if (multiLine)
        out << "    (void)pLoadFunction;\n";
    out << "#endif /* CO_EVENT_DYNAMIC_STORE || CO_EVENT_PROFILE_STORE */\n";
}

void ObjDictServiceCalls::writeLine(QTextStream &out, quint8 line, int odStart, bool dynamicMaster) const
{
    const ObjDictModel &model = context.model;
    out << "    /* initialize object dictionary variables and pointers */\n"
        << "    coOdInitOdPtr(canLine, &od_assign[" << odStart << "], " << model.objectCount(line)
        << ", od_description, " << model.subIndexCount(line) << ", NULL, &od_data_variables);\n"
        << "\n";

    out << "    /* initialize (u)sdo server(s) */\n";
    QString serverCalls;
    for (const quint16 index : model.indices(line, 0x1201, 0x127F))
        serverCalls +=
            QStringLiteral("    retVal = coSdoServerInit(canLine, %1u);\n").arg(index - 0x11FF) + check();
    if (!context.canFd) {
        out << "    retVal = coSdoServerInit(canLine, 1u);\n" << check() << serverCalls;
    } else {
        out << "    if (pModes != NULL) {\n"
               "        if (pModes[canLine] == CO_TRUE) {\n"
               "            retVal = coUsdoServerInit(canLine);\n"
               "            if (retVal != RET_OK) {\n"
               "                return(retVal);\n"
               "            }\n"
               "#ifdef CO_SDO_SERVER_CNT\n"
               "        }\n"
               "        else {\n"
               "            retVal = coSdoServerInit(canLine, 1u);\n"
               "            if (retVal != RET_OK) {\n"
               "                return(retVal);\n"
               "            }\n"
            << serverCalls
            << "#endif /* CO_SDO_SERVER_CNT */\n"
               "        }\n"
               "    } else {\n"
               "        retVal = coUsdoServerInit(canLine);\n"
            << check() << "    }\n";
    }
    if (model.lineNumber(QStringLiteral("usdo_client_cnt"), line) != 0 &&
        model.lineNumber(QStringLiteral("usdo_client_enabled"), line) != 0) {
        const QString pad = context.canFd ? QStringLiteral("        ") : QString();
        if (context.canFd)
            out << "    if (pModes != NULL) {\n        if (pModes[canLine] == CO_TRUE) {\n";
        out << pad << "    /* initialize usdo clients(s) */\n"
            << pad << "    retVal = coUsdoClientInit(canLine);\n"
            << check(int(pad.size()));
        if (context.canFd)
            out << "        }\n    } else {\n        retVal = coUsdoClientInit(canLine);\n"
                << check(4) << "    }\n";
    }
    for (const quint16 index : model.indices(line, 0x1280, 0x12FF))
        out << "    /* initialize sdo client */\n    retVal = coSdoClientInit(canLine, " << index - 0x127F
            << "u);\n"
            << check();
    writeErrorControlToTime(out, line, QStringLiteral("canLine, "));
    writePdos(out, line);
    if (model.exists(line, 0x1F10))
        out << "\n    /* initialize SDO Requesting Device (SRD) */\n    retVal = coSrdInit(canLine);\n"
            << check();
    if (number("isotp_connection_cnt") > 0)
        out << "\n    /* initialize ISO-TP */\n    retVal = isoTpInit(canLine);\n" << check();
    if (number("idnego_supported") > 0)
        out << "\n    /* initialization of ID negotiation module */\n    coIdNegoInit(canLine);\n" << check();
    if (number("bootup_manager") > 0 && model.exists(line, 0x1F81))
        out << "\n    /* initialization of node guarding master*/\n    retVal = coGuardingInit(canLine);\n"
            << check();
    if (model.exists(line, 0x1300))
        out << "    /* initialize  GFC (Producer, Consumer) */\n    retVal = coGfcInit(canLine, CO_TRUE, "
               "CO_TRUE);\n"
            << check();
    for (const quint16 index : model.indices(line, 0x1301, 0x1340))
        out << "    /* initialize SRDO  */\n    retVal = coSrdoInit(canLine, " << index - 0x1300 << "u);\n"
            << check();
    if (number("event_led") > 0 && number("enable_dynamic") == 1)
        out << "    /* initialization of LED module */\n    coLedInit(canLine);\n\n";
    const qint64 master = model.lineNumber(QStringLiteral("nmtmaster"), line);
    const bool lss = number("lss_supported") >= 1;
    if (lss) {
        out << "\n";
        if (master == 1)
            out << "    /* initialize LSS Master */\n#ifdef CO_LSS_MASTER_SUPPORTED\n"
                   "    retVal = coLssMasterInit(canLine);\n#endif /* CO_LSS_MASTER_SUPPORTED */\n";
        else if (master == 0)
            out << "    /* initialize LSS Slave */\n    retVal =  coLssInit(canLine);\n";
        out << check();
    }
    if (dynamicMaster && master == 2) {
        out << "    /* Check dynamic options for master flag */\n"
               "    if (pCoOptions->master == 1) {\n"
               "        /* initialize Master */\n"
               "        retVal = coNmtInit(canLine, 1u);\n"
            << check(4)
            << "#ifdef CO_LSS_MASTER_SUPPORTED\n"
               "       retVal = coLssMasterInit(canLine);\n"
            << check(4)
            << "#endif /* CO_LSS_MASTER_SUPPORTED */\n"
               "    } else {\n"
               "        /* initialize NMT slave */ \n"
               "        retVal = coNmtInit(canLine, 0u);\n"
            << check(4);
        if (lss)
            out << "        /* initialize LSS Slave */\n        retVal =  coLssInit(canLine);\n" << check(4);
        out << "    }\n\n" << check();
        return;
    }
    if (master == 1)
        out << "    /* initialize NMT master */ \n    retVal = coNmtInit(canLine, 1u);\n";
    else
        out << "    /* initialize NMT slave */ \n    retVal = coNmtInit(canLine, 0u);\n";
    out << check();
}
