#include "definecobcounter.h"

#include "definecontext.h"
#include "definefamily.h"
#include "store/objectdatabase.h"
#include "store/protocolrecords.h"

namespace {

constexpr quint32 addressClaimPgn = 60928;

// Diagnostic messages that take a COB of their own, for the device and for a diagnostic tool;
// 22 stands twice in the tool's list, the tool sends and receives it.
constexpr int deviceDiagnosticMessages[] = {7, 13, 14, 16, 17, 18, 22, 23};
constexpr int toolDiagnosticMessages[] = {1, 2, 7, 13, 14, 16, 17, 18, 22, 22, 23};

} // namespace

DefineCobCounter::DefineCobCounter(const DefineContext &context)
    : context(context)
{}

int DefineCobCounter::canopenCount(quint8 line) const
{
    QList<quint8> withDevice;
    for (const quint8 candidate : context.project.lines()) {
        if (context.project.exists(candidate, 0x1000))
            withDevice << candidate;
    }
    if (line == AllLines) {
        int sum = 0;
        for (int position = 0; position < withDevice.size(); ++position)
            sum += canopenLineCount(withDevice.at(position), position);
        return sum;
    }
    const int position = int(withDevice.indexOf(line));
    return canopenLineCount(line, position < 0 ? line : position);
}

int DefineCobCounter::canopenLineCount(quint8 line, int position) const
{
    const DefineProject &project = context.project;
    const DefineState &state = context.state;
    const bool device = project.exists(line, 0x1000);
    const bool master = project.lineGeneralNumber(QStringLiteral("nmtmaster"), line) != 0;
    int count = 0;
    if (state.canFd) {
        count += 2;
        if (project.generalNumber(QStringLiteral("usdo_client_cnt"), true) != 0)
            count += 2;
    }
    if (device)
        count += 2;
    if (project.exists(line, 0x1014))
        count += 1;
    if (project.exists(line, 0x1028))
        count += project.subs0(line, 0x1028) - 1;
    const int servers = project.objects(line, 0x1200, 0x127F);
    count += servers == 0 && device ? 2 : 2 * servers;
    if (project.exists(line, 0x1300))
        count += 2;
    count += 2 * project.objects(line, 0x1280, 0x12FF);
    count += project.objects(line, 0x1A00, 0x1BFF) + project.objects(line, 0x1600, 0x17FF);
    count += project.objects(line, 0x1005, 0x1005);
    const int heartbeats = project.subs0(line, 0x1016);
    if (heartbeats > 1)
        count += project.generalOn(QStringLiteral("only_one_hb_buffer")) ? 1 : heartbeats - 1;
    if (project.exists(line, 0x1012))
        count += 2;
    if (project.generalOn(QStringLiteral("lss_supported"))) {
        count += 2;
        if (state.canFd && master)
            count += 1;
    }
    if (project.generalOn(QStringLiteral("idnego_supported")))
        count += 2;
    if (project.exists(line, 0x1F81)) {
        const qint64 maxSlaves = project.generalNumber(QStringLiteral("max_slave_assignment"));
        count += maxSlaves != 0 ? int(maxSlaves) : project.subs(line, 0x1F81);
    }
    switch (project.generalNumber(QStringLiteral("sleep_mode_selection"))) {
    case 1:
        count += master ? 16 : 2;
        break;
    case 2:
        count += 3;
        break;
    default:
        break;
    }
    if (project.exists(line, 0x1F10))
        count += 1;
    count += 2 * project.objects(line, 0x1301, 0x137F);
    count += additionalCount(position);
    const bool flyingMaster = context.family().flyingMasterFromSetting
                                  ? project.generalOn(QStringLiteral("flyma_supported"))
                                  : (project.defaultNumber(line, 0x1F80, 0) & 0x20) != 0;
    if (flyingMaster)
        count += 10;
    if (!state.multiProtocol) {
        if (project.generalIsOne(QStringLiteral("isotp_supported")))
            count += quint8(2 * project.lineGeneralNumber(QStringLiteral("isotp_client_con"), line, true)) +
                     2 * int(project.lineGeneralNumber(QStringLiteral("isotp_server_con"), line, true));
        if (project.generalIsOne(QStringLiteral("udsserver_supported")))
            count += 7;
        if (project.generalIsOne(QStringLiteral("udsclient_supported")))
            count += 3 * int(project.lineGeneralNumber(QStringLiteral("uds_client_cnt"), 0));
    }
    return count;
}

int DefineCobCounter::additionalCount(int position) const
{
    const QString additional = context.project.general(QStringLiteral("additional_cob_count"));
    if (additional.contains(',')) {
        const QStringList parts = additional.split(',');
        return position < parts.size() ? quint8(DefineProject::number(parts.at(position))) : 0;
    }
    return int(DefineProject::number(additional));
}

int DefineCobCounter::j1939Count(quint8 line) const
{
    const DefineProject &project = context.project;
    ObjectDataBase &store = project.store();
    const bool fd = project.generalIsOne(QStringLiteral("canfd_supported"));
    int count = fd ? 5 : 4;
    if (project.j1939Number(QStringLiteral("diagsupport")) >= 1) {
        for (const int message : deviceDiagnosticMessages) {
            if (project.j1939Number(QStringLiteral("diagsupport_dm%1").arg(message)) > 0)
                ++count;
        }
    }
    const bool tool = project.j1939Number(QStringLiteral("diagtoolsupport")) >= 1;
    if (tool) {
        ++count;
        for (const int message : toolDiagnosticMessages) {
            if (project.j1939Number(QStringLiteral("diagsupport_dmtool%1").arg(message)) > 0)
                ++count;
        }
    }
    const int transmitted = int(store.getPGNs(line, Direction::Transmit).size());
    int t = transmitted + (transmitted != 0 ? 1 : 0);
    if (store.pgnExists(line, addressClaimPgn, Direction::Transmit))
        --t;
    const int received = int(store.getPGNs(line, Direction::Receive).size());
    const int r = received + (received != 0 ? 1 : 0);
    count += t + r;
    if (tool)
        count += 2;
    if (t + r < 3 && fd)
        count += 3 - t - r;
    if (project.j1939Number(QStringLiteral("requestsupport")) > 0)
        ++count;
    if (project.j1939Number(QStringLiteral("acknowledgeindication_cnt")) > 0)
        ++count;
    if (project.j1939Number(QStringLiteral("bamsupport")) > 0 ||
        project.j1939Number(QStringLiteral("cmdtsupport")) >= 1)
        count += 6;
    if (project.j1939Number(QStringLiteral("nmea2000support")) >= 1)
        count += 2;
    if (project.j1939Number(QStringLiteral("safetysupport")) >= 1)
        count += 2;
    if (project.j1939Number(QStringLiteral("dynsupport")) > 0)
        ++count;
    if (project.j1939Number(QStringLiteral("cia510serversupport")) == 1)
        count += 2;
    if (project.j1939Number(QStringLiteral("cia510clientsupport")) == 1)
        count += 2;
    const qint64 additional = project.generalNumber(QStringLiteral("additional_cob_count"));
    if (additional >= 1)
        count += int(additional);
    if (project.j1939Number(QStringLiteral("j1939fd_11bitmultipg")) == 1)
        ++count;
    return count;
}

int DefineCobCounter::isoTpTerm(quint8 line) const
{
    const DefineProject &project = context.project;
    if (!project.generalIsOne(QStringLiteral("isotp_supported")))
        return 0;
    return quint8(2 * project.lineGeneralNumber(QStringLiteral("isotp_client_con"), line, true) +
                  2 * project.lineGeneralNumber(QStringLiteral("isotp_server_con"), line, true));
}

int DefineCobCounter::udsTerm(quint8 line, bool serverNeedsSupport) const
{
    const DefineProject &project = context.project;
    int count = 0;
    const bool server =
        project.lineGeneral(QStringLiteral("uds_server_active"), line).trimmed() == QLatin1String("1");
    if (server && (!serverNeedsSupport || project.generalIsOne(QStringLiteral("udsserver_supported"))))
        count += 7;
    if (project.generalIsOne(QStringLiteral("udsclient_supported")))
        count += 3 * int(project.lineGeneralNumber(QStringLiteral("uds_client_cnt"), line));
    return count;
}
