#include "pgninitwriter.h"

#include "generation/commongeneratorhelperbase.h"
#include "pgnaddressclaim.h"
#include "pgncontext.h"
#include "pgndialect.h"
#include "store/objectdatabase.h"

namespace {

const char *const checkBlock = "\tif (retVal != RET_OK) {\n\t\treturn(retVal);\n\t}\n";
// The version of the J1939 service init structure that this generation writes.
constexpr int serviceInitVersion = 6;

} // namespace

PgnInitWriter::PgnInitWriter(const PgnContext &context, const PgnManagedVariables &variables,
                             const CommonGeneratorHelperBase &helper)
    : context(context)
    , variables(variables)
    , helper(helper)
{}

bool PgnInitWriter::udsIsOn() const
{
    ObjectDataBase &store = context.store();
    return PgnContext::number(store.getGeneralSetting(QStringLiteral("udsserver_supported"))) == 1 ||
           PgnContext::number(store.getGeneralSetting(QStringLiteral("udsclient_supported"))) == 1;
}

QString PgnInitWriter::watchdog() const
{
    return QStringLiteral("\t%1\n").arg(QLatin1String(context.dialect().watchdogMacro));
}

QString PgnInitWriter::text() const
{
    ObjectDataBase &store = context.store();
    QString text = QStringLiteral("\n") + serviceInitValues();
    if (udsIsOn())
        text += helper.udsDeclarations() + '\n';
    text += functionHead();
    text +=
        QStringLiteral("\tretVal = %1(&commonInitVars);\n").arg(QLatin1String(context.dialect().stackStart)) +
        QLatin1String(checkBlock) + watchdog();
    text +=
        QStringLiteral("\tretVal = j1939StackInit_common(&serviceInitVars);\n") + QLatin1String(checkBlock);
    if (udsIsOn())
        text += helper.udsCommonInit() + '\n';
    text += watchdog();
    if (!context.staticInit())
        text += PgnAddressClaim::initialisation(context, variables);
    text += lineInits();
    text += watchdog();
    if (PgnContext::anyBase(store.getJ1939Setting(QStringLiteral("cia510serversupport"))) == 1)
        text += cia510Inits();
    return text + QStringLiteral("\treturn RET_OK;\n}\n");
}

QString PgnInitWriter::serviceInitRows() const
{
    QString text =
        QStringLiteral("\t{ J1939_RECEIVE_PGN_CFG_COUNTS },\n\t{ J1939_RECEIVE_PGN_COUNTS },\n"
                       "\t{ J1939_TRANSMIT_PGN_COUNTS },\n\t{ J1939_SSDO_COUNTS },\n\t{ J1939_CSDO_COUNTS }");
    text += context.canFd() ? QStringLiteral(",\n\t{ J1939_DEST_BUFFER_COUNTS }\n") : QStringLiteral("\n");
    if (PgnContext::number(context.store().getJ1939Setting(QStringLiteral("safetysupport"))) > 0)
        text += QStringLiteral(",\n\t{ J1939_SDG_TRANS_COUNTS },\n\t{ J1939_SDG_REC_COUNTS }");
    return text;
}

QString PgnInitWriter::serviceInitValues() const
{
    const PgnDialect &dialect = context.dialect();
    if (PgnContext::number(context.store().getGeneralSetting(QStringLiteral("new_init_structure"))) == 1)
        return helper.commonInitText() + QStringLiteral("/* service intialization values */\n") +
               QStringLiteral("%1 J1939_SERVICE_INIT_VAL_T\tserviceInitVars = {\n\t%2u,\n")
                   .arg(QLatin1String(dialect.constMacro))
                   .arg(serviceInitVersion) +
               serviceInitRows() + QStringLiteral("};\n\n");
    if (!dialect.olderServiceValues)
        return QString();
    return QStringLiteral("/* service intialization values */\n"
                          "const J1939_SERVICE_INIT_VAL_T\tserviceInitVars = {\n\t3u,\n"
                          "\t{ CO_REC_BUFFER_COUNTS },\n\t{ CO_TR_BUFFER_COUNTS },\n\t{ CO_COB_COUNTS },\n"
                          "\t{ J1939_TRANSMIT_PGN_COUNTS }\n};\n\n");
}

QString PgnInitWriter::functionHead() const
{
    const bool fd = context.canFd();
    QString text = QStringLiteral("/*  J1939 stack initialization function */\nRET_T j1939StackInit(\n");
    text += fd ? QStringLiteral("\tBOOL_T *pModes\n") : QStringLiteral("\tvoid\n");
    text += QStringLiteral("\t)\n{\nRET_T retVal;\n");
    if (!fd)
        return text;
    if (context.multiLine())
        text += QStringLiteral("UNSIGNED8 i;\n");
    text += QStringLiteral("\tif (pModes != NULL) {\n");
    if (context.multiLine())
        text += QStringLiteral(
                    "\t\tfor (i = 0; i < %1; i++)  {\n\t\t\tcommonInitVars.fdMode[i] = pModes[i];\n\t\t}\n")
                    .arg(QLatin1String(context.dialect().lineCountMacro));
    else
        text += QStringLiteral("\t\tcommonInitVars.fdMode[0] = pModes[0];\n");
    return text + QStringLiteral("\t}\n");
}

QString PgnInitWriter::lineInits() const
{
    const bool uds = udsIsOn();
    if (!context.multiLine()) {
        QString text =
            QStringLiteral("\tretVal = j1939StackInit_line(&j1939Config);\n") + QLatin1String(checkBlock);
        if (uds)
            text += helper.udsLineInit(0, false) + '\n' + watchdog();
        return text;
    }
    QString text;
    for (const quint8 line : context.lines()) {
        if (!PgnContext::isJ1939Type(context.lineType(line)))
            continue;
        text += QStringLiteral("\tretVal = j1939StackInit_line(%1, &j1939Config_l%1);\n").arg(line) +
                QLatin1String(checkBlock);
        if (uds)
            text += helper.udsLineInit(line, true) + '\n';
        text += watchdog();
    }
    return text;
}

QString PgnInitWriter::cia510Inits() const
{
    QString text = QStringLiteral("\n\t/* initialize object dictionary for CiA510 server */\n");
    if (!context.multiLine())
        return text + QStringLiteral("\tretVal = j1939OdInit();\n") + QLatin1String(checkBlock);
    for (const quint8 line : context.lines()) {
        if (PgnContext::isJ1939Type(context.lineType(line)))
            text += QStringLiteral("\tretVal = j1939OdInit(%1);\n").arg(line) + QLatin1String(checkBlock);
    }
    return text;
}
