#include "multiprolinewriter.h"

#include "multiprocontext.h"
#include "multiprodialect.h"
#include "objdictinitwriter.h"
#include "objdictservicecalls.h"

#include "generation/commongeneratorhelperbase.h"

#include <QTextStream>

MultiProLineWriter::MultiProLineWriter(const MultiProContext &context, const ObjDictServiceCalls &calls)
    : context(context)
    , calls(calls)
{}

QString MultiProLineWriter::lineFunctions() const
{
    QString text;
    int odStart = 0;
    for (const quint8 line : context.lines()) {
        const int type = context.lineType(line);
        text += QStringLiteral("\n/* init line %1 */\n").arg(line) + head(line, type) + body(line, type, odStart) +
                QStringLiteral("    return(retVal);\n}\n");
    }
    return text;
}

QString MultiProLineWriter::head(quint8 line, int type) const
{
    if (context.flags.rawCanOnly)
        return QStringLiteral("RET_T rawcanStackInit_line%1(\n\tUNSIGNED8 canLine\n    )\n{\n").arg(line);
    QString text = QStringLiteral("RET_T mpStackInit_line%1(\n\tUNSIGNED8 canLine\n").arg(line);
    if (context.dialect.commonFunction)
        text += QStringLiteral("\t, CORE_PROTOCOL_TYPE_T protType\n");
    if (context.flags.fdSupport)
        text += QStringLiteral("\t, BOOL_T *pModes\n");
    text += type == 2 ? QStringLiteral("\t)\n") : QStringLiteral("    )\n");
    return text + QStringLiteral("{\n");
}

QString MultiProLineWriter::body(quint8 line, int type, int &odStart) const
{
    const QString check = ObjDictServiceCalls::check();
    switch (type) {
    case 1:
        return QStringLiteral("RET_T retVal = RET_OK;\n") + canopenInit(line, odStart);
    case 2:
        return QStringLiteral("RET_T retVal;\n") +
               QStringLiteral("    retVal = j1939StackInit_line(canLine, &j1939Config_l%1);\n").arg(line) + check +
               cia510Part(line, odStart) + isotpPart() + udsLineInit(line);
    case 4:
        return QStringLiteral("RET_T retVal;\n") +
               QStringLiteral("    retVal = rawcanStackInit_line(canLine, &rawcanConfig_l%1);\n").arg(line) + check +
               isotpPart() + udsLineInit(line);
    case 5:
        return QStringLiteral("RET_T retVal = RET_PARAMETER_INVALID;\n") + canopenBranch(line, odStart) +
               j1939Branch(line, odStart) + udsLineInit(line);
    case 6:
        return QStringLiteral("RET_T retVal = RET_PARAMETER_INVALID;\n") + canopenBranch(line, odStart) +
               rawCanBranch(line) + udsLineInit(line);
    case 7:
        return QStringLiteral("RET_T retVal = RET_PARAMETER_INVALID;\n") + j1939Branch(line, odStart) +
               rawCanBranch(line) + udsLineInit(line);
    default:
        return QStringLiteral("RET_T retVal = RET_OK;\n");
    }
}

QString MultiProLineWriter::canopenInit(quint8 line, int &odStart) const
{
    QString text;
    QTextStream out(&text);
    // The line functions take no init options, so a master chosen at run time is not offered here.
    calls.writeLine(out, line, odStart, false);
    out.flush();
    odStart += context.model.objectCount(line);
    return text;
}

QString MultiProLineWriter::protocolOf() const
{
    return context.dialect.commonFunction ? QStringLiteral("protType")
                                          : QStringLiteral("commonInitVars.protocolType[CAN_LINE]");
}

QString MultiProLineWriter::canopenBranch(quint8 line, int &odStart) const
{
    return QStringLiteral("    if ((%1 & CORE_PROT_TYPE_CANOPEN) == CORE_PROT_TYPE_CANOPEN) {\n").arg(protocolOf()) +
           canopenInit(line, odStart) + QStringLiteral("    }\n");
}

QString MultiProLineWriter::j1939Branch(quint8 line, int &odStart) const
{
    QString text = QStringLiteral("    if ((%1 & CORE_PROT_TYPE_J1939) == CORE_PROT_TYPE_J1939) {\n").arg(protocolOf()) +
                   QStringLiteral("        retVal = j1939StackInit_line(canLine, &j1939Config_l%1);\n").arg(line) +
                   ObjDictServiceCalls::check(4);
    if (context.lineType(line) == 7)
        text += cia510Part(line, odStart);
    return text + QStringLiteral("    }\n");
}

QString MultiProLineWriter::rawCanBranch(quint8 line) const
{
    return QStringLiteral("    if ((%1 & CORE_PROT_TYPE_RAWCAN) == CORE_PROT_TYPE_RAWCAN) {\n").arg(protocolOf()) +
           QStringLiteral("        retVal = rawcanStackInit_line(canLine, &rawcanConfig_l%1);\n").arg(line) +
           ObjDictServiceCalls::check(4) + QStringLiteral("    }\n");
}

QString MultiProLineWriter::cia510Part(quint8 line, int &odStart) const
{
    if (!context.cia510())
        return QString();
    const int objects = context.model.objectCount(line);
    const QString text =
        QStringLiteral("    /* initialize object dictionary variables and pointers CiA 510 */\n"
                       "    coOdInitOdPtr(canLine, &od_assign[%1], %2, od_description, %3, NULL, &od_data_variables);\n")
            .arg(odStart)
            .arg(objects)
            .arg(context.model.subIndexCount(line));
    odStart += objects;
    return text;
}

QString MultiProLineWriter::isotpPart() const
{
    if (context.number("isotp_connection_cnt") == 0)
        return QString();
    return QStringLiteral("\n    /* initialize ISO-TP */\n    retVal = isoTpInit(canLine);\n") + ObjDictServiceCalls::check();
}

QString MultiProLineWriter::udsLineInit(quint8 line) const
{
    if (!context.udsOn())
        return QString();
    return context.helper->udsLineInit(line, true) + '\n';
}

QString MultiProLineWriter::finishFunction() const
{
    QString text = context.flags.rawCanOnly ? QStringLiteral("\n\nRET_T rawcanStackInit_finish(void)\n{\n")
                                            : QStringLiteral("\n\nRET_T mpStackInit_finish(void)\n{\n");
    if (ObjDictInitWriter::pdoRouting(context.model, context.lines()))
        text += QStringLiteral("RET_T retVal;\n"
                               "    /* initialize PDO routing */ \n"
                               "    retVal = coPdoNetworkRouting();\n"
                               "    if (retVal != RET_OK) {\n"
                               "        return(retVal);\n"
                               "    }\n"
                               "    CORE_HANDLE_WATCHDOG\n");
    else
        text += QStringLiteral("    /*\n"
                               "     * Currently the function is empty, but may be used later for additional\n"
                               "     * purposes.\n"
                               "     */\n");
    return text + QStringLiteral("    return(RET_OK);\n}\n");
}
