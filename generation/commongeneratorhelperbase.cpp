#include "commongeneratorhelperbase.h"

#include "diagdefs/udssiddefinitions.h"
#include "store/objectdatabase.h"

namespace {

constexpr quint8 FirstService = 16;
constexpr quint8 LastService = 254;
constexpr quint8 EcuReset = 17;
constexpr quint8 RoutineControl = 49;
constexpr quint8 LastAuthenticationService = 127;
// The periodic identifier CAN-ID of a line that has none: all 30 identifier bits set.
constexpr quint32 NoPeriodicId = 0x3fffffff;

// The CAN-ID lists of the per-line structures, one entry per line. All but the periodic identifier
// are padded with their first entry for lines beyond their end.
enum CanIdList
{
    PhysReq,
    PhysResp,
    FuncReq,
    PhysReqExt,
    PhysRespExt,
    FuncReqExt,
    Addressing,
    PeriodicId
};
const char *const canIdListKeys[] = {
    "uds_physical_request_id",
    "uds_physical_response_id",
    "uds_functional_request_id",
    "uds_physical_request_ext_addr",
    "uds_physical_response_ext_addr",
    "uds_functional_request_ext_addr",
    "uds_ext_addressing",
    "uds_rdbip_canid",
};

const char *const addressingFormats[] = {
    "ISOTP_FORMAT_NORMAL",
    "ISOTP_FORMAT_NORMAL_FIXED",
    "ISOTP_FORMAT_EXTENDED",
};

// Sub-functions that take a row of their own in the tables.
const char *const routineControlRows[] = {"UDS_ROUTINE_CTRL_START", "UDS_ROUTINE_CTRL_STOP",
                                          "UDS_ROUTINE_CTRL_REQ_RESULT"};
const char *const resetSessionRows[] = {"UDS_SUB_RESET_HR", "UDS_SUB_RESET_KOFFONR", "UDS_SUB_RESET_SR",
                                        "UDS_SUB_RESET_ERPSD", "UDS_SUB_RESET_DRPSD"};
constexpr int resetSecurityRowCount = 3;

struct SessionName
{
    quint32 session;
    const char *text;
};
const SessionName sessionNames[] = {
    {1, "UDS_SUB_SESSION_DS"},
    {2, "UDS_SUB_SESSION_PRGS"},
    {3, "UDS_SUB_SESSION_EXTDS"},
    {4, "UDS_SUB_SESSION_SSDS"},
};
constexpr quint32 ManufacturerSession = 64;

// A list entry in any base that its prefix says; 0 when it is no number.
quint32 anyBaseNumber(const QString &text)
{
    return text.trimmed().toUInt(nullptr, 0);
}

QString hexByte(quint32 value)
{
    return QStringLiteral("0x%1").arg(value, 2, 16, QChar('0'));
}

} // namespace

CommonGeneratorHelperBase::CommonGeneratorHelperBase(ObjectDataBase *store,
                                                     const CommonHelperDialect &dialect, QObject *parent)
    : QObject(parent)
    , database(store)
    , dialect(dialect)
    , serviceNames(UDSSIDDefinitions::getSIDNames())
{}

QString CommonGeneratorHelperBase::setting(const QString &key) const
{
    return database->getGeneralSetting(key);
}

QList<quint8> CommonGeneratorHelperBase::lineList() const
{
    QList<quint8> lines = database->getLines();
    lines.removeIf([](quint8 line) { return line >= 32; });
    return lines;
}

bool CommonGeneratorHelperBase::udsIsOn() const
{
    return setting(QStringLiteral("udsserver_supported")).toInt() == 1 ||
           setting(QStringLiteral("udsclient_supported")).toInt() == 1;
}

int CommonGeneratorHelperBase::udsVersion() const
{
    const quint8 version = quint8(anyBaseNumber(setting(QStringLiteral("udsserver_version"))));
    return version == 0 ? 1 : version;
}

quint8 CommonGeneratorHelperBase::initStructVersion(quint8 moduleType) const
{
    if (moduleType < std::size(dialect.structVersions))
        return dialect.structVersions[moduleType];
    if (moduleType == UdsModule)
        return quint8(setting(QStringLiteral("udsserver_version")).toUInt());
    return 0;
}

QString CommonGeneratorHelperBase::protocolText(int lineType) const
{
    const char *text = lineType >= 0 && lineType < int(std::size(dialect.protocolTexts))
                           ? dialect.protocolTexts[lineType]
                           : nullptr;
    return QLatin1String(text ? text : dialect.unknownProtocol);
}

QString CommonGeneratorHelperBase::protocolList() const
{
    const QList<quint8> lines = lineList();
    const bool uds = udsIsOn();
    const bool bootloader = setting(QStringLiteral("uds_bl_setting")) == QLatin1String("1");
    QStringList entries;
    for (const quint8 line : lines) {
        const int type = setting(QStringLiteral("line%1type").arg(line)).toInt();
        QString entry = protocolText(type);
        if (lines.size() == 1) {
            // A single raw CAN line of a bootloader project speaks UDS alone.
            if (type == 4 && bootloader && dialect.udsOnlyProtocol)
                entry = QLatin1String(dialect.udsOnlyProtocol);
            if (!bootloader && uds)
                entry += QLatin1String(dialect.udsProtocolSuffix);
        } else if (uds) {
            entry += QLatin1String(dialect.udsProtocolSuffix);
        }
        entries << entry;
    }
    return entries.join(QStringLiteral(", "));
}

QString CommonGeneratorHelperBase::commonInitText() const
{
    QString text = QLatin1String(dialect.commonInitHead);
    text += QStringLiteral("\t%1u,\n").arg(initStructVersion(CommonModule));
    text += QLatin1String(dialect.bufferCountRows);
    text += QStringLiteral("\t{ ") + protocolList() + QLatin1Char('}');
    text += QStringLiteral(",\n");
    if (setting(QStringLiteral("isotp_supported")).toInt() == 1 ||
        setting(QStringLiteral("udsserver_supported")).toInt() == 1) {
        text += QStringLiteral("\t{ ISOTP_CLIENT_COUNTS },\n");
        text += QLatin1String(dialect.isotpServerRow);
    }
    if (setting(QStringLiteral("canfd_supported")).toInt() > 0) {
        const QStringList modes(lineList().size(), QStringLiteral("CO_TRUE"));
        text += QStringLiteral("\t{ ") + modes.join(QStringLiteral(", ")) + QStringLiteral(" }\n");
    }
    text += QStringLiteral("};\n\n");
    return text;
}

QString CommonGeneratorHelperBase::udsDeclarations() const
{
    if (!udsIsOn())
        return QString();
    const QString indent = QLatin1String(dialect.declarationIndent);
    const QList<quint8> lines = lineList();
    const bool clients = setting(QStringLiteral("udsclient_supported")).toInt() == 1;
    QStringList clientCounts;
    for (const quint8 line : lines) {
        const int count =
            clients
                ? database->getLineGeneralSetting(QStringLiteral("uds_client_cnt"), line).trimmed().toInt()
                : 0;
        clientCounts << QString::number(count);
    }
    const int version = udsVersion();
    QString text = QLatin1String(dialect.serviceInitHead);
    text += indent + QStringLiteral("\t%1u,\n").arg(version);
    text += indent + QStringLiteral("\t{") + clientCounts.join(',') + QStringLiteral("}\n");
    text += indent + QStringLiteral("};\n\n");

    for (const quint8 line : lines) {
        if (database->countActiveUDSServices(line) == 0)
            continue;
        text += udsSessionTable(line) + QLatin1Char('\n') + udsSecurityTable(line) + QLatin1Char('\n');
        if (dialect.authentication)
            text += authenticationTable(line);
    }

    // Empty parts stay, so that every list has at least one entry.
    QList<QStringList> lists;
    for (const char *key : canIdListKeys)
        lists << setting(QLatin1String(key)).split(',');
    for (const quint8 line : lines)
        text += lineStructure(line, version, lists);
    return text;
}

QString CommonGeneratorHelperBase::lineStructure(quint8 line, int version,
                                                 const QList<QStringList> &lists) const
{
    // A line whose number lies beyond a list takes the list's first entry, as the padding does.
    auto entry = [&](CanIdList list) {
        const QStringList &values = lists.at(list);
        return values.value(line, values.first());
    };
    auto numberRow = [&](quint32 value, const char *end) {
        return QStringLiteral("%1\t%2u%3")
            .arg(QLatin1String(dialect.declarationIndent))
            .arg(value)
            .arg(QLatin1String(end));
    };
    auto row = [&](const QString &value) {
        return QLatin1String(dialect.declarationIndent) + QLatin1Char('\t') + value + QStringLiteral(",\n");
    };
    const QString indent = QLatin1String(dialect.declarationIndent);
    const bool bootloader = setting(QStringLiteral("uds_bl_setting")) == QLatin1String("1");

    QString text = indent + QStringLiteral("/* UDS CAN-IDs for line %1 */\n").arg(line);
    text += indent + QLatin1String(bootloader && dialect.bootloaderStructures ? "UDS_CONFIG_INIT_VAL_T"
                                                                              : dialect.lineInitHead);
    text += QStringLiteral("\tudsLine%1 = {\n").arg(line);
    for (const CanIdList list : {PhysReq, PhysResp, PhysResp, PhysReq, FuncReq})
        text += numberRow(anyBaseNumber(entry(list)), ",\n");
    if (version < 2) {
        text += numberRow(anyBaseNumber(entry(PhysResp)), "\n");
        return text + indent + QStringLiteral("};\n\n");
    }
    text += numberRow(anyBaseNumber(entry(PhysResp)), ",\n");
    if (version >= 4 && dialect.periodicIdRow) {
        const QString periodicId = lists.at(PeriodicId).value(line);
        text += numberRow(periodicId.isEmpty() ? NoPeriodicId : anyBaseNumber(periodicId), ",\n");
    }
    for (const CanIdList list : {PhysReqExt, PhysRespExt, FuncReqExt, PhysRespExt})
        text += numberRow(anyBaseNumber(entry(list)), ",\n");
    const int format = entry(Addressing).trimmed().toInt();
    if (format >= 0 && format < int(std::size(addressingFormats)))
        text += row(QLatin1String(addressingFormats[format]));
    if (version >= 3) {
        if (database->countActiveUDSServices(line) > 0) {
            text += row(sessionTableName(line));
            text += row(QString::number(sessionRowCount(line)));
            text += row(securityTableName(line));
            text += row(securityRowCount(line));
        } else {
            text += row(QStringLiteral("NULL")) + row(QStringLiteral("0")) + row(QStringLiteral("NULL")) +
                    row(QStringLiteral("0"));
        }
    }
    if (version >= 4) {
        const bool active =
            database->getLineGeneralSetting(QStringLiteral("uds_server_active"), line) == QLatin1String("1");
        const QString flag = QLatin1String(active ? "CO_TRUE" : "CO_FALSE");
        if (dialect.activeFlagEndsStructure)
            return text + indent + QLatin1Char('\t') + flag + QStringLiteral("\n") + indent +
                   QStringLiteral("};\n\n");
        text += row(flag);
    }
    if (version >= 5 && dialect.authentication) {
        const QList<quint8> services = authenticationServices(line);
        if (!services.isEmpty()) {
            text += row(QStringLiteral("authenticationTable_%1").arg(line));
            text += indent + QStringLiteral("\t%1\n").arg(services.size());
        } else {
            text += row(QStringLiteral("NULL")) + indent + QStringLiteral("\t0\n");
        }
    }
    return text + indent + QStringLiteral("};\n\n");
}

int CommonGeneratorHelperBase::sessionRowCount(quint8 line) const
{
    // Each sub-function of the two services with sub-functions takes a row of its own.
    int count = database->countActiveUDSServices(line);
    if (database->getUDSServiceActive(line, EcuReset))
        count += int(std::size(resetSessionRows)) - 1;
    if (database->getUDSServiceActive(line, RoutineControl))
        count += int(std::size(routineControlRows)) - 1;
    return count;
}

QString CommonGeneratorHelperBase::serviceRows(quint8 line, bool security) const
{
    const QString indent = QLatin1String(dialect.declarationIndent);
    QString text;
    for (int sid = FirstService; sid <= LastService; ++sid) {
        if (!database->getUDSServiceActive(line, quint8(sid)))
            continue;
        QStringList entries;
        if (security) {
            const QString levels = database->getUDSServiceUserLevels(line, quint8(sid));
            if (levels.isEmpty())
                continue;
            entries = levels.split(',');
        } else {
            QString sessions = database->getUDSServiceSessions(line, quint8(sid));
            if (sessions.isEmpty())
                sessions = QStringLiteral("1");
            const QStringList parts = sessions.split(',');
            for (const QString &part : parts)
                entries << sessionText(anyBaseNumber(part));
        }
        const QString sessionsPart = indent + QStringLiteral("\t\t{") + entries.join(QStringLiteral(", ")) +
                                     QStringLiteral("}, %1u},\n").arg(entries.size());
        text += indent + QStringLiteral("\t/* ") + serviceNames.value(quint8(sid)) + QStringLiteral(" */\n");
        auto subFunctionRows = [&](const char *const *names, int count) {
            for (int i = 0; i < count; ++i) {
                text += indent + QStringLiteral("\t{ ") + hexByte(quint32(sid)) + QStringLiteral(", ") +
                        QLatin1String(names[i]) + QStringLiteral(",\n") + sessionsPart;
            }
        };
        if (sid == RoutineControl)
            subFunctionRows(routineControlRows, int(std::size(routineControlRows)));
        else if (sid == EcuReset)
            subFunctionRows(resetSessionRows,
                            security ? resetSecurityRowCount : int(std::size(resetSessionRows)));
        else
            text += indent + QStringLiteral("\t{ ") + hexByte(quint32(sid)) + QStringLiteral(", 0u,\n") +
                    sessionsPart;
    }
    return text;
}

QString CommonGeneratorHelperBase::closeTable(QString text) const
{
    // The last row loses its comma and line end; a table without rows loses the end of its head.
    text.chop(2);
    return text + QLatin1Char('\n') + QLatin1String(dialect.declarationIndent) + QStringLiteral("};\n\n");
}

QString CommonGeneratorHelperBase::udsSessionTable(quint8 line) const
{
    const QString indent = QLatin1String(dialect.declarationIndent);
    QString text;
    if (dialect.tableComments)
        text += QStringLiteral("/* UDS Service in Sessions table (line %1) */\n").arg(line);
    text += indent + QStringLiteral("static UDS_REQ_SESSION_TYPE_TABLE_T\t") + sessionTableName(line) +
            QStringLiteral("[] = {\n") + serviceRows(line, false);
    return closeTable(text);
}

QString CommonGeneratorHelperBase::udsSecurityTable(quint8 line) const
{
    if (securityRowCount(line) == QLatin1String("0"))
        return QString();
    const QString indent = QLatin1String(dialect.declarationIndent);
    QString text;
    if (dialect.tableComments)
        text += QStringLiteral("/* UDS Service in security level table (line %1) */\n").arg(line);
    text += indent + QStringLiteral("static UDS_SECURITY_LEVEL_TABLE_T\t") + securityTableName(line) +
            QStringLiteral("[] = {\n") + serviceRows(line, true);
    return closeTable(text);
}

QString CommonGeneratorHelperBase::sessionText(quint32 session)
{
    for (const auto &name : sessionNames) {
        if (name.session == session)
            return QLatin1String(name.text);
    }
    if (session == ManufacturerSession)
        return QStringLiteral("UDS_SUB_SESSION_MANU_40");
    if (session > ManufacturerSession)
        return QStringLiteral("UDS_SUB_SESSION_MANU_40 + ") + hexByte(session - ManufacturerSession);
    return hexByte(session);
}

QString CommonGeneratorHelperBase::sessionTableName(quint8 line)
{
    return QStringLiteral("sessionTbl_%1").arg(line);
}

QString CommonGeneratorHelperBase::securityTableName(quint8 line) const
{
    if (securityRowCount(line) == QLatin1String("0"))
        return QStringLiteral("NULL");
    return QStringLiteral("securityLvlTbl_%1").arg(line);
}

QString CommonGeneratorHelperBase::securityRowCount(quint8 line) const
{
    int count = 0;
    for (int sid = FirstService; sid <= LastService; ++sid) {
        if (!database->getUDSServiceActive(line, quint8(sid)) ||
            database->getUDSServiceUserLevels(line, quint8(sid)).isEmpty())
            continue;
        count += sid == EcuReset || sid == RoutineControl ? 3 : 1;
    }
    return QString::number(count);
}

QList<quint8> CommonGeneratorHelperBase::authenticationServices(quint8 line) const
{
    QList<quint8> services;
    if (setting(QStringLiteral("udsserver_supported")).toInt() < 1)
        return services;
    for (int sid = 0; sid <= LastAuthenticationService; ++sid) {
        if (!database->getUDSAuthentication(line, quint8(sid)).isEmpty())
            services << quint8(sid);
    }
    return services;
}

QString CommonGeneratorHelperBase::authenticationTable(quint8 line) const
{
    const QList<quint8> services = authenticationServices(line);
    if (services.isEmpty())
        return QString();
    QString text = QStringLiteral("/* UDS Authentication table (line %1) */\n").arg(line);
    text += QStringLiteral("static UDS_AUTHENT_TABLE_T\tauthenticationTable_%1[] = {\n").arg(line);
    for (const quint8 sid : services)
        text += QStringLiteral("\t{ ") + hexByte(sid) + QStringLiteral(" },\n");
    return closeTable(text);
}

QString CommonGeneratorHelperBase::udsCommonInit() const
{
    if (!udsIsOn())
        return QString();
    const QString indent = QLatin1String(dialect.callIndent);
    return indent + QStringLiteral("/* UDS common initialization */ \n") + indent +
           QStringLiteral("retVal = udsStackInit_common(&udsServiceInitVars);\n") + indent +
           QStringLiteral("if (retVal != RET_OK) {\n") + indent + QStringLiteral("\treturn(retVal);\n") +
           indent + QStringLiteral("}\n");
}

QString CommonGeneratorHelperBase::udsLineInit(quint8 line, bool multiLine) const
{
    if (!udsIsOn())
        return QString();
    const QString indent = QLatin1String(dialect.callIndent);
    QString text = indent + QStringLiteral("/* UDS line initialization */ \n") + indent;
    if (multiLine)
        text += QStringLiteral("retVal = udsStackInit_line(%1, &udsLine%1);\n").arg(line);
    else
        text += QStringLiteral("retVal = udsStackInit_line(&udsLine%1);\n").arg(line);
    return text + indent + QStringLiteral("if (retVal != RET_OK) {\n") + indent +
           QStringLiteral("\treturn(retVal);\n") + indent + QStringLiteral("}\n\n");
}
