#include "definej1939features.h"

#include "definecontext.h"

#include <QStringList>

namespace {

// An indication count, written as the user entered it; some need their service switched on.
struct Indication
{
    const char *key;
    const char *macro;
    const char *serviceKey = nullptr;
};

const Indication indications[] = {
    {"rxindication_cnt", "J1939_REC_PGN_INDICATION_CNT"},
    {"txindication_cnt", "J1939_TR_PGN_INDICATION_CNT"},
    {"requestindication_cnt", "J1939_REQ_PGN_INDICATION_CNT", "requestsupport"},
    {"acknowledgeindication_cnt", "J1939_ACK_PGN_INDICATION_CNT"},
};

// A role in diagnostics: the switch, its buffer sizes and the macros of the single messages.
struct DiagnosticRole
{
    const char *supportKey;
    const char *supportedMacro;
    const char *receiveMacro;
    const char *receiveKey;
    const char *transmitMacro;
    const char *transmitKey;
    const char *messageKey;
    const char *messageMacro;
};

const DiagnosticRole diagnosticRoles[] = {
    {"diagsupport", "J1939_DIAGNOSTIC_SUPPORTED", "J1939_DIAG_REC_BUF_SIZE", "dm_receivesize",
     "J1939_DIAG_TR_BUF_SIZE", "dm_transmitsize", "diagsupport_dm%1", "J1939_DIAGNOSTIC_DM%1_SUPPORTED"},
    {"diagtoolsupport", "J1939_DIAGNOSTIC_TOOL_SUPPORTED", "J1939_DIAGTOOL_REC_BUF_SIZE",
     "dmtool_receivesize", "J1939_DIAGTOOL_TR_BUF_SIZE", "dmtool_transmitsize", "diagsupport_dmtool%1",
     "J1939_DIAGNOSTIC_TOOL_DM%1_SUPPORTED"},
};

constexpr int lastDiagnosticMessage = 32;

// Services that a J1939 setting switches on.
struct Switch
{
    const char *key;
    const char *macro;
};

const Switch services[] = {
    {"requestsupport", "J1939_REQUEST_SUPPORTED"},
    {"propsupport", "J1939_PROPRIETARY_SUPPORTED"},
    {"dynsupport", "J1939_DYNAMIC_PGN"},
    {"bitwisemapping", "BITWISE_MAPPING"},
};

} // namespace

DefineJ1939Features::DefineJ1939Features(DefineContext &context)
    : context(context)
{}

void DefineJ1939Features::write()
{
    if (context.project.generalNumber(QStringLiteral("canfd_supported")) >= 1)
        writeFdBuffers();
    writeIndications();
    writeTransport();
    context.writeDynamicCan(context.project.generalNumber(QStringLiteral("event_can")), false);
    writeDiagnostics();
    writeServices();
}

void DefineJ1939Features::writeFdBuffers()
{
    const DefineProject &project = context.project;
    DefineWriter &out = context.out;
    if (project.j1939Number(QStringLiteral("j1939fd_11bitmultipg")) == 1)
        out.flag(QStringLiteral("J1939_MULTI_PG_11BIT"));
    QString buffers = project.j1939(QStringLiteral("j1939fd_multipgbuffer")).trimmed();
    if (buffers.isEmpty())
        buffers = context.multi() ? QStringLiteral("1,1") : QStringLiteral("1");
    if (buffers.contains(',')) {
        qint64 total = 0;
        const QStringList parts = buffers.split(',');
        for (const QString &part : parts)
            total += DefineProject::number(part);
        out.count(QStringLiteral("J1939_DEST_BUFFER_CNT"), total);
        out.define(QStringLiteral("J1939_DEST_BUFFER_COUNTS"),
                   QString(buffers).replace(',', QLatin1String("u,")) + 'u');
    } else if (context.multi()) {
        const quint8 lines = context.state.lineCount;
        out.count(QStringLiteral("J1939_DEST_BUFFER_CNT"), DefineProject::number(buffers) * lines);
        QStringList perLine;
        for (quint8 line = 0; line < lines; ++line)
            perLine << buffers + 'u';
        out.define(QStringLiteral("J1939_DEST_BUFFER_COUNTS"), perLine.join(','));
    } else {
        out.define(QStringLiteral("J1939_DEST_BUFFER_CNT"), buffers + 'u');
        out.define(QStringLiteral("J1939_DEST_BUFFER_COUNTS"), buffers + 'u');
    }
}

void DefineJ1939Features::writeIndications()
{
    const DefineProject &project = context.project;
    DefineWriter &out = context.out;
    for (const auto &indication : indications) {
        if (indication.serviceKey && project.j1939Number(QLatin1String(indication.serviceKey)) < 1)
            continue;
        const QString value = project.j1939(QLatin1String(indication.key)).trimmed();
        if (DefineProject::number(value) >= 1)
            out.define(QLatin1String(indication.macro), value + 'u');
    }
    context.writeDynamicCan(project.generalNumber(QStringLiteral("canindication_cnt")), true);
    const QString groups = project.j1939(QStringLiteral("nmea2000groupindication_cnt")).trimmed();
    if (DefineProject::number(groups) >= 1)
        out.define(QStringLiteral("J1939_NMEA_GROUP_INDICATION_CNT"), groups + 'u');
    out.text(QStringLiteral("\n"));
    if (project.j1939Number(QStringLiteral("recalladdrclaims")) > 0)
        out.flag(QStringLiteral("J1939_REC_ALL_CLAIM_SUPPORT"));
    out.text(QStringLiteral("\n"));
    if (project.j1939Number(QStringLiteral("spnchanged")) >= 1) {
        out.flag(QStringLiteral("J1939_EVENT_SPN_CHANGED"));
        out.flag(QStringLiteral("CORE_OBJECT_CHANGED"));
    }
}

void DefineJ1939Features::writeTransport()
{
    const DefineProject &project = context.project;
    DefineWriter &out = context.out;
    if (project.j1939Number(QStringLiteral("bamsupport")) >= 1) {
        out.flag(QStringLiteral("J1939_BAM_SUPPORTED"));
        const qint64 cycle = project.j1939Number(QStringLiteral("bamcycletime"));
        if (cycle != 0)
            out.count(QStringLiteral("J1939_BAM_CYLE_TIME"), cycle);
    }
    if (project.j1939Number(QStringLiteral("nmea2000support")) >= 1)
        out.flag(QStringLiteral("J1939_NMEA2000_SUPPORTED"));
    if (project.j1939Number(QStringLiteral("cmdtsupport")) >= 1) {
        out.flag(QStringLiteral("J1939_CMDT_SUPPORTED"));
        out.count(QStringLiteral("J1939_CMDT_MAX_PACKETS"),
                  project.j1939Number(QStringLiteral("cmdtpackets")));
    }
}

void DefineJ1939Features::writeDiagnostics()
{
    const DefineProject &project = context.project;
    DefineWriter &out = context.out;
    for (const auto &role : diagnosticRoles) {
        if (project.j1939Number(QLatin1String(role.supportKey)) < 1)
            continue;
        out.flag(QLatin1String(role.supportedMacro));
        writeBufferSize(QLatin1String(role.receiveMacro), QLatin1String(role.receiveKey));
        writeBufferSize(QLatin1String(role.transmitMacro), QLatin1String(role.transmitKey));
        for (int message = 1; message <= lastDiagnosticMessage; ++message) {
            if (project.j1939Number(QString::fromLatin1(role.messageKey).arg(message)) > 0)
                out.flag(QString::fromLatin1(role.messageMacro).arg(message));
        }
    }
}

void DefineJ1939Features::writeBufferSize(const QString &macro, const QString &key)
{
    const QString size = context.project.j1939(key).trimmed();
    bool numeric = false;
    size.toLongLong(&numeric, 0);
    context.out.define(macro, numeric ? size + 'u' : size);
}

void DefineJ1939Features::writeServices()
{
    const DefineProject &project = context.project;
    DefineWriter &out = context.out;
    for (const auto &service : services) {
        if (project.j1939Number(QLatin1String(service.key)) >= 1)
            out.flag(QLatin1String(service.macro));
    }
    const quint8 connections = quint8(project.generalNumber(QStringLiteral("isotp_connection_cnt")));
    if (connections != 0) {
        out.flag(QStringLiteral("ISOTP_SUPPORTED"));
        out.count(QStringLiteral("ISOTP_CONNECTION_CNT"), connections);
    }
    if (project.j1939Number(QStringLiteral("cia510serversupport")) == 1) {
        out.flag(QStringLiteral("CO_EVENT_DYNAMIC_SDO_SERVER_READ"));
        out.flag(QStringLiteral("CO_EVENT_DYNAMIC_SDO_SERVER_WRITE"));
    }
    if (project.j1939Number(QStringLiteral("cia510clientsupport")) == 1) {
        out.flag(QStringLiteral("CO_EVENT_DYNAMIC_SDO_CLIENT_READ"));
        out.flag(QStringLiteral("CO_EVENT_DYNAMIC_SDO_CLIENT_WRITE"));
    }
}
