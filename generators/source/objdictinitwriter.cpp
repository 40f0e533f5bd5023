#include "objdictinitwriter.h"

#include "objdictcontext.h"
#include "objdictdialect.h"
#include "objdictservicecalls.h"

#include "generation/commongeneratorhelperbase.h"

#include <QTextStream>

#include <memory>

namespace {

// Rows of the service count structure; the USDO rows exist in the current generation only.
struct CountRow
{
    const char *text;
    bool usdo;
};

constexpr CountRow serviceCountRows[] = {
    {"{ CO_OBJECT_COUNTS },\n", false},
    {"{ CO_TXPDO_COUNTS },\n", false},
    {"{ CO_RXPDO_COUNTS },\n", false},
    {"#ifdef CO_SRDO_SUPPORTED\n", false},
    {"{ CO_SRDO_COUNTS },\n", false},
    {"#endif /* CO_SRDO_SUPPORTED */\n", false},
    {"{ CO_SSDO_COUNTS },\n", false},
    {"{ CO_CSDO_COUNTS },\n", false},
    {"#ifdef CO_USDO_SERVER_MAX_CONN_CNT\n", true},
    {"{ CO_USDO_SERVER_MAX_CONN_COUNTS },\n", true},
    {"#endif /* CO_USDO_SERVER_MAX_CONN_CNT */\n", true},
    {"#ifdef CO_USDO_CLIENT_MAX_CONN_CNT\n", true},
    {"{ CO_USDO_CLIENT_MAX_CONN_COUNTS },\n", true},
    {"#endif /* CO_USDO_CLIENT_MAX_CONN_CNT */\n", true},
    {"{ CO_ERR_CTRL_COUNTS },\n", false},
    {"{ CO_ERR_HIST_COUNTS },\n", false},
    {"{ CO_ACT_ERR_HIST_COUNTS },\n", false},
    {"{ CO_EMCY_CONS_COUNTS },\n", false},
    {"#ifdef CO_NETWORK_ROUTING_CNT\n", false},
    {"{ CO_NETWORK_ROUTING_COUNTS }, \n", false},
    {"#endif /* CO_NETWORK_ROUTING_CNT */\n", false},
    {"{ CO_ASSIGN_COUNTS },\n", false},
    {"{ CO_GUARDING_COUNTS },\n", false},
    {"{ CO_NODE_IDS }, \n", false},
};

// Version of the CANopen service init structure that the current sources write.
constexpr int canopenInitVersion = 6;

} // namespace

ObjDictInitWriter::ObjDictInitWriter(const ObjDictContext &context, const ObjDictServiceCalls &calls)
    : context(context)
    , calls(calls)
{}

bool ObjDictInitWriter::udsOn() const
{
    return context.model.number(QStringLiteral("udsserver_supported")) == 1 ||
           context.model.number(QStringLiteral("udsclient_supported")) == 1;
}

bool ObjDictInitWriter::newInitStructure() const
{
    return context.model.number(QStringLiteral("new_init_structure")) == 1;
}

QString ObjDictInitWriter::commonInitText() const
{
    std::unique_ptr<CommonGeneratorHelperBase> helper(context.dialect.createHelper(context.model.store()));
    return helper->commonInitText();
}

QString ObjDictInitWriter::udsDeclarations() const
{
    std::unique_ptr<CommonGeneratorHelperBase> helper(context.dialect.createHelper(context.model.store()));
    return helper->udsDeclarations();
}

QString ObjDictInitWriter::udsCommonInit() const
{
    std::unique_ptr<CommonGeneratorHelperBase> helper(context.dialect.createHelper(context.model.store()));
    return helper->udsCommonInit();
}

QString ObjDictInitWriter::udsLineInit(quint8 line, bool multiLine) const
{
    std::unique_ptr<CommonGeneratorHelperBase> helper(context.dialect.createHelper(context.model.store()));
    return helper->udsLineInit(line, multiLine);
}

QString ObjDictInitWriter::countRows(const QString &indent, bool usdo)
{
    QString text;
    for (const auto &row : serviceCountRows) {
        if (row.usdo && !usdo)
            continue;
        const QString rowText = QString::fromLatin1(row.text);
        text += rowText.startsWith(QLatin1Char('#')) ? rowText : indent + rowText;
    }
    return text;
}

QString ObjDictInitWriter::serviceInitVars(bool local) const
{
    const QString indent = local ? QStringLiteral("       ") : QStringLiteral("   ");
    QString text = local ? QStringLiteral("    CO_SERVICE_INIT_VAL_T\tserviceInitVars = {\n")
                         : QStringLiteral("/* CANopen service initialization variables */\n"
                                          "CO_SERVICE_INIT_VAL_T\tserviceInitVars = {\n");
    if (newInitStructure())
        text += indent + QStringLiteral("%1u,\n").arg(canopenInitVersion);
    text += countRows(indent, !context.dialect.localServiceInitVars);
    if (context.canFd && !newInitStructure())
        text += indent + QStringLiteral("{ CO_NODE_ID_FUNCTIONS }, \n") + indent +
                QStringLiteral("{ CO_TRUE }\n");
    else
        text += indent + QStringLiteral("{ CO_NODE_ID_FUNCTIONS } \n");
    text += local ? QStringLiteral("    };\n") : QStringLiteral("};\n");
    return text;
}

void ObjDictInitWriter::writeSingleLine(QTextStream &out) const
{
    const bool local = context.dialect.localServiceInitVars;
    if (newInitStructure())
        out << commonInitText();
    if (!local)
        out << serviceInitVars(false);
    if (udsOn())
        out << udsDeclarations() << "\n";
    out << "\n";
    if (context.model.number(QStringLiteral("nmtmaster")) != 2) {
        out << "RET_T coCanOpenStackInit(\n";
        if (context.canFd)
            out << "         CO_EVENT_STORE_T pLoadFunction,\n         BOOL_T *pModes\n";
        else
            out << "         CO_EVENT_STORE_T pLoadFunction\n";
    } else {
        out << "RET_T coCanOpenStackInitPara(\n"
               "         CO_EVENT_STORE_T pLoadFunction,\n"
               "         CO_INIT_OPTION_T *pCoOptions\n";
    }
    out << "    )\n{\n    RET_T retVal;\n";
    if (local)
        out << serviceInitVars(true);
    out << "\n\n";
    if (context.canFd) {
        out << "    if (pModes != NULL) {\n";
        if (newInitStructure())
            out << "        commonInitVars.fdMode[0] = pModes[0];\n";
        else
            out << "        serviceInitVars.fdMode[0] = pModes[0];\n";
        out << "    }\n";
    }
    if (newInitStructure())
        out << "    /* common initialization */\n"
            << "    retVal = " << context.dialect.stackEntry << "(&commonInitVars);\n"
            << ObjDictServiceCalls::check();
    if (udsOn())
        out << udsCommonInit() << "\n";
    out << "    /* variable initialization */\n"
        << "    retVal = coCanOpenStackVarInit(&serviceInitVars);\n"
        << ObjDictServiceCalls::check();
    calls.writeSingleLine(out);
    out << "\n";
    if (udsOn())
        out << udsLineInit(0, false) << "\n";
    out << "    return(RET_OK);\n}\n";
}

void ObjDictInitWriter::writeMultiLine(QTextStream &out) const
{
    const QList<quint8> lines = context.initLines();
    QStringList numbers;
    for (const quint8 line : lines)
        numbers << QString::number(line);
    out << "\nUNSIGNED8 canLineTable[CAN_LINE_ARRAY_DECL] = {" << numbers.join(QStringLiteral(", ")) << " };"
        << "\n";
    if (udsOn())
        out << udsDeclarations() << "\n";
    if (newInitStructure())
        out << commonInitText();
    if (!context.dialect.localServiceInitVars)
        out << serviceInitVars(false) << "\n";

    const bool dynamic = context.model.setting(QStringLiteral("nmtmaster")).contains(QLatin1Char('2'));
    if (dynamic)
        out << "RET_T coCanOpenStackInitPara(\n"
               "         CO_EVENT_STORE_T pLoadFunction,\n"
               "         CO_INIT_OPTION_T *pCoOptions\n";
    else
        out << "RET_T coCanOpenStackInit(\n         CO_EVENT_STORE_T pLoadFunction\n";
    if (context.canFd)
        out << "         , BOOL_T *pModes\n";
    out << "    )\n{\n    CO_INIT_OPTION_T *pCoInitOpt = NULL;\n    RET_T retVal;\n";
    if (context.canFd)
        out << "    retVal = coCanOpenStackInit_common(pLoadFunction, pModes);\n";
    else
        out << "    retVal = coCanOpenStackInit_common(pLoadFunction);\n";
    for (const quint8 line : context.objectLines) {
        out << "    if (retVal == RET_OK) {\n";
        if (dynamic)
            out << "        pCoInitOpt = &pCoOptions[" << line << "];\n";
        out << "        retVal = coCanOpenStackInit_line" << line << "(" << line
            << (context.canFd ? ", pCoInitOpt, pModes);\n" : ", pCoInitOpt);\n") << "    }\n";
    }
    out << "    if (retVal == RET_OK) {\n"
           "            retVal = coCanOpenStackInit_finish();\n"
           "    }\n"
           "    return(retVal);\n"
           "}\n";
    writeCommonFunction(out);
    writeLineSwitch(out);

    int odStart = 0;
    for (const quint8 line : lines) {
        out << "\n"
            << "\n/* "
               "****************************************************************************************** "
               "*/\n"
            << "/* Initialize line << " << line << " */\n"
            << "RET_T coCanOpenStackInit_line" << line << "(\n"
            << "                  UNSIGNED8 canLine,\n"
            << "                  CO_INIT_OPTION_T *pCoOptions\n";
        if (context.canFd)
            out << "                  , BOOL_T *pModes\n";
        out << "       )\n{\n    RET_T retVal;\n";
        if (!dynamic)
            out << "    (void) pCoOptions; /* currently unused */\n\n";
        if (context.model.number(QStringLiteral("udsserver_supported")) == 1)
            out << udsLineInit(line, true) << "\n";
        calls.writeLine(out, line, odStart, dynamic);
        out << "    return(RET_OK);\n}\n";
        odStart += context.model.objectCount(line);
    }
    writeFinishFunction(out);
}

void ObjDictInitWriter::writeCommonFunction(QTextStream &out) const
{
    const ObjDictDialect &dialect = context.dialect;
    out << "RET_T coCanOpenStackInit_common(\n         CO_EVENT_STORE_T pLoadFunction\n";
    if (context.canFd)
        out << "         , BOOL_T *pModes\n";
    out << "    )\n{\n";
    if (context.canFd)
        out << "    " << dialect.lineType << "    " << dialect.lineVariable << ";\n";
    out << "    RET_T retVal = RET_OK;\n";
    if (dialect.localServiceInitVars)
        out << serviceInitVars(true);
    if (context.canFd) {
        const QString structure =
            newInitStructure() ? QStringLiteral("commonInitVars") : QStringLiteral("serviceInitVars");
        const QString variable = QString::fromLatin1(dialect.lineVariable);
        out << "    for (" << variable << " = 0; " << variable << " < " << dialect.lineCount << "; "
            << variable << " ++)\n"
            << "    {\n"
            << "        " << structure << ".fdMode[" << variable << "] = CO_TRUE;\n"
            << "        if (pModes != NULL) {\n"
            << "            " << structure << ".fdMode[" << variable << "] = pModes[" << variable << "];\n"
            << "        }\n"
            << "    }\n";
    }
    if (newInitStructure())
        out << "    /* common initialization */\n"
            << "    retVal = " << dialect.stackEntry << "(&commonInitVars);\n"
            << "    if (retVal != RET_OK) {\n"
               "        return (retVal);\n"
               "    }\n";
    if (udsOn())
        out << udsCommonInit() << "\n";
    out << "    /* multi-line initialization */\n"
           "    retVal = coCanOpenStackVarInit(&serviceInitVars);\n"
           "    if (retVal != RET_OK) {\n"
           "        return(retVal);\n"
           "    }\n";
    calls.writeLoadParameter(out, true);
    out << "\n    return(retVal);\n}\n";
}

void ObjDictInitWriter::writeLineSwitch(QTextStream &out) const
{
    out << "RET_T coCanOpenStackInit_line(\n"
           "                  UNSIGNED8 canLine,\n"
           "                  CO_INIT_OPTION_T *pCoOptions\n";
    if (context.canFd)
        out << "                  , BOOL_T *pModes\n";
    out << "       )\n{\n    RET_T retVal;\n    switch(canLine) {\n";
    for (const quint8 line : context.initLines())
        out << "   \tcase " << line << ":\n"
            << "   \t\tretVal = coCanOpenStackInit_line" << line
            << (context.canFd ? "(canLine, pCoOptions, pModes);\n" : "(canLine, pCoOptions);\n")
            << "   \t\tbreak;\n";
    out << "   \tdefault:\n"
        << "   \t\tretVal = " << context.dialect.invalidParameter << ";\n"
        << "   \tbreak;\n"
           "    }\n"
           "    return(retVal);\n"
           "}\n";
}

bool ObjDictInitWriter::pdoRouting(const ObjDictModel &model, const QList<quint8> &lines)
{
    int routed = 0;
    int maps = 0;
    int dynamicMaps = 0;
    for (const quint8 line : lines) {
        routed += model.subCount(line, 0x1F2C, 1);
        for (const quint16 index : model.indices(line, 0x1600, 0x17FF)) {
            ++maps;
            const SUBINDEX_DATA_T *count = model.sub(line, index, 0);
            if (count && count->accesstype == QLatin1String("rw"))
                ++dynamicMaps;
        }
    }
    return routed > 0 && maps > 0 && dynamicMaps > 0;
}

void ObjDictInitWriter::writeFinishFunction(QTextStream &out) const
{
    out << "RET_T coCanOpenStackInit_finish(void)\n{\n";
    if (pdoRouting(context.model, context.initLines()))
        out << "    RET_T retVal;\n    /* initialize PDO routing */ \n    retVal = coPdoNetworkRouting();\n"
            << ObjDictServiceCalls::check();
    else
        out << "    /*\n"
               "     * Currently this function is only required to initialize PDO Routing.\n"
               "     * Without it the function is empty, but may be used later for additional\n"
               "     * purposes.\n"
               "     */\n";
    out << "    return(RET_OK);\n}\n";
}

void ObjDictInitWriter::writeJ1939OdInit(QTextStream &out) const
{
    const QList<quint8> lines = context.tableLines();
    if (lines.size() <= 1) {
        out << "RET_T\tj1939OdInit(void)\n{\n"
               "\tcoOdInitOdPtr(&od_assign[0], CO_OD_ASSIGN_CNT, &od_description[0], CO_OBJ_DESC_CNT, NULL, "
               "&od_data_variables);\n"
               "\n\treturn(RET_OK);\n}\n";
        return;
    }
    out << "RET_T\tj1939OdInit(\n\tUNSIGNED8 canLine\n)\n{\n\tswitch (canLine) {\n";
    int start = 0;
    for (const quint8 line : lines) {
        const auto &objects = context.model.objects(line);
        out << "\t\tcase " << line << ":\n"
            << "\t\t/* initialize object dictionary variables and pointers */\n"
            << "\t\tcoOdInitOdPtr(canLine, &od_assign[" << start << "], " << objects.size()
            << ", od_description, " << context.model.subIndexCount(line) << ", NULL, &od_data_variables);\n"
            << "\n\t\tbreak;\n";
        start += int(objects.size());
    }
    out << "\tdefault:\n\tbreak;\n\t}\n\treturn(RET_OK);\n}\n";
}
