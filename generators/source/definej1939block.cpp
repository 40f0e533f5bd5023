#include "definej1939block.h"

#include "definecobcounter.h"
#include "definecontext.h"
#include "definej1939features.h"
#include "store/objectdatabase.h"
#include "store/protocolrecords.h"

#include <QStringList>

namespace {

// Address claiming is the stack's own; a project that lists it doesn't configure it.
constexpr quint32 addressClaimPgn = 60928;

qint64 sum(const QList<qint64> &values)
{
    qint64 total = 0;
    for (const qint64 value : values)
        total += value;
    return total;
}

} // namespace

DefineJ1939Block::DefineJ1939Block(DefineContext &context)
    : context(context)
{}

void DefineJ1939Block::write()
{
    const DefineProject &project = context.project;
    DefineWriter &out = context.out;
    DefineState &state = context.state;
    if (DefineContext::rawCanEdition() && !project.anyLine(DefineProject::isJ1939Type))
        return;
    out.text(QStringLiteral("/* J1939 Defines */\n"));
    if (context.multi() && !state.multiLineWritten) {
        out.flag(QStringLiteral("CAN_MULTI_LINE"));
        out.count(QStringLiteral("CAN_MULTI_LINE_CNT"), project.lines().size());
        state.multiLineWritten = true;
    }
    out.flag(QStringLiteral("J1939_SUPPORTED"));
    if (project.j1939Number(QStringLiteral("cia510serversupport")) == 1 ||
        project.j1939Number(QStringLiteral("cia510clientsupport")) == 1)
        out.flag(QStringLiteral("J1939_CAM11_CAM21_SUPPORTED"));
    const bool safety = project.j1939Number(QStringLiteral("safetysupport")) >= 1;
    if (safety)
        writeSafety();
    if (context.multi()) {
        writeMultiLineCounts();
        if (safety)
            writeMultiLineSafety();
    } else {
        writeSingleLineCounts();
        if (safety)
            writeSingleLineSafety();
        writeSingleLineSdoCounts();
    }
    out.text(QStringLiteral("\n"));
    writeInhibit();
    DefineJ1939Features(context).write();
    if (!state.multiProtocol)
        writeCobDefinitions();
    if (!state.bufferCountsWritten)
        writeBufferCounts();
}

QString DefineJ1939Block::blankList(const QList<qint64> &values)
{
    return ' ' + DefineWriter::countList(values);
}

DefineJ1939Block::PgnCounts DefineJ1939Block::pgnCounts(quint8 line) const
{
    ObjectDataBase &store = context.project.store();
    PgnCounts counts;
    const QList<quint32> receive = store.getPGNs(line, Direction::Receive);
    counts.received = receive.size();
    for (const quint32 number : receive) {
        PGN pgn;
        store.getPGN(line, number, Direction::Receive, pgn);
        const qint64 sources = qint64(pgn.multisourceaddress);
        counts.receiveBuffers += sources < 2 ? 1 : sources;
        counts.multiSource = counts.multiSource || sources > 1;
    }
    counts.transmitted = store.getPGNs(line, Direction::Transmit).size();
    if (store.pgnExists(line, addressClaimPgn, Direction::Transmit))
        --counts.transmitted;
    return counts;
}

qint64 DefineJ1939Block::safePgns(quint8 line, quint8 direction) const
{
    ObjectDataBase &store = context.project.store();
    qint64 safe = 0;
    const QList<quint32> numbers = store.getPGNs(line, direction);
    for (const quint32 number : numbers) {
        PGN pgn;
        if (store.getPGN(line, number, direction, pgn) && pgn.issafe)
            ++safe;
    }
    return safe;
}

void DefineJ1939Block::writeSafety()
{
    const DefineProject &project = context.project;
    ObjectDataBase &store = project.store();
    DefineWriter &out = context.out;
    out.flag(QStringLiteral("J1939_SDG_SUPPORTED"));
    bool typeOne = false;
    bool typeTwo = false;
    for (const quint8 line : project.lines()) {
        for (const quint8 direction : {Direction::Transmit, Direction::Receive}) {
            const QList<quint32> numbers = store.getPGNs(line, direction);
            for (const quint32 number : numbers) {
                PGN pgn;
                if (!store.getPGN(line, number, direction, pgn))
                    continue;
                typeOne = typeOne || pgn.safetytype == 1;
                typeTwo = typeTwo || pgn.safetytype == 2;
            }
        }
    }
    if (typeOne)
        out.flag(QStringLiteral("J1939_SDG_TYPE_1_SUPPORTED"));
    if (typeTwo)
        out.flag(QStringLiteral("J1939_SDG_TYPE_2_SUPPORTED"));
    const QString interval = project.j1939(QStringLiteral("sdm_timer_interval"));
    const bool intervalSet = !interval.isEmpty() && DefineProject::number(interval) != 0;
    out.define(QStringLiteral("J1939_SDG_TIMER_INTERVAL"), intervalSet ? interval + 'u' : interval);
    const quint8 addresses = quint8(project.j1939Number(QStringLiteral("sdm_rec_addr_cnt")));
    out.count(QStringLiteral("J1939_SDG_REC_ADDR_CNT"), addresses == 0 ? 1 : addresses);
}

void DefineJ1939Block::writeSingleLineCounts()
{
    DefineWriter &out = context.out;
    const PgnCounts counts = pgnCounts(context.project.lines().value(0));
    out.count(QStringLiteral("J1939_RECEIVE_PGN_CFG_CNT"), counts.received);
    out.count(QStringLiteral("J1939_RECEIVE_PGN_CNT"), counts.receiveBuffers);
    out.count(QStringLiteral("J1939_TRANSMIT_PGN_CNT"), counts.transmitted);
    out.count(QStringLiteral("J1939_RECEIVE_PGN_CFG_COUNTS"), counts.received);
    out.count(QStringLiteral("J1939_RECEIVE_PGN_COUNTS"), counts.receiveBuffers);
    out.count(QStringLiteral("J1939_TRANSMIT_PGN_COUNTS"), counts.transmitted);
    if (counts.multiSource)
        out.flag(QStringLiteral("J1939_MULTI_SRC_ADDR"));
}

void DefineJ1939Block::writeSingleLineSdoCounts()
{
    const DefineProject &project = context.project;
    DefineWriter &out = context.out;
    DefineState &state = context.state;
    const bool server = project.j1939Number(QStringLiteral("cia510serversupport")) == 1;
    const bool client = project.j1939Number(QStringLiteral("cia510clientsupport")) == 1;
    out.count(QStringLiteral("J1939_SSDO_COUNTS"), server ? 1 : 0);
    if (server && !state.sdoServerCntWritten) {
        out.flag(QStringLiteral("CO_SDO_SERVER_CNT"));
        state.sdoServerCntWritten = true;
    }
    out.count(QStringLiteral("J1939_CSDO_COUNTS"), client ? 1 : 0);
    if (client && !state.sdoClientCntWritten) {
        out.flag(QStringLiteral("CO_SDO_CLIENT_CNT"));
        state.sdoClientCntWritten = true;
    }
}

void DefineJ1939Block::writeSingleLineSafety()
{
    DefineWriter &out = context.out;
    const quint8 line = context.project.lines().value(0);
    const qint64 transmitted = safePgns(line, Direction::Transmit);
    if (transmitted != 0)
        out.count(QStringLiteral("J1939_SDG_TRANS_CNT"), transmitted);
    out.count(QStringLiteral("J1939_SDG_TRANS_COUNTS"), transmitted);
    const qint64 received = safePgns(line, Direction::Receive);
    if (received != 0)
        out.count(QStringLiteral("J1939_SDG_REC_CNT"), received);
    out.count(QStringLiteral("J1939_SDG_REC_COUNTS"), received);
}

void DefineJ1939Block::writeMultiLineCounts()
{
    const DefineProject &project = context.project;
    DefineWriter &out = context.out;
    DefineState &state = context.state;
    const qint64 server = project.j1939Number(QStringLiteral("cia510serversupport"));
    const qint64 client = project.j1939Number(QStringLiteral("cia510clientsupport"));
    QList<qint64> received;
    QList<qint64> receiveBuffers;
    QList<qint64> transmitted;
    QList<qint64> servers;
    QList<qint64> clients;
    bool multiSource = false;
    qint64 cia510Lines = 0;
    for (const quint8 line : project.lines()) {
        const PgnCounts counts = pgnCounts(line);
        received << counts.received;
        receiveBuffers << counts.receiveBuffers;
        transmitted << counts.transmitted;
        multiSource = multiSource || counts.multiSource;
        const int type = project.lineType(line);
        const bool j1939Only = DefineProject::isJ1939WithoutCanopen(type);
        servers << (j1939Only ? server : project.objects(line, 0x1200, 0x127F));
        clients << (j1939Only ? client : project.objects(line, 0x1280, 0x12FF));
        if (j1939Only)
            ++cia510Lines;
    }
    out.count(QStringLiteral("J1939_RECEIVE_PGN_CFG_CNT"), sum(received));
    out.count(QStringLiteral("J1939_RECEIVE_PGN_CNT"), sum(receiveBuffers));
    out.count(QStringLiteral("J1939_TRANSMIT_PGN_CNT"), sum(transmitted));
    out.define(QStringLiteral("J1939_RECEIVE_PGN_CFG_COUNTS"), blankList(received));
    out.define(QStringLiteral("J1939_RECEIVE_PGN_COUNTS"), blankList(receiveBuffers));
    out.define(QStringLiteral("J1939_TRANSMIT_PGN_COUNTS"), blankList(transmitted));
    out.define(QStringLiteral("J1939_SSDO_COUNTS"), DefineWriter::countList(servers, QStringLiteral(",")));
    out.define(QStringLiteral("J1939_CSDO_COUNTS"), DefineWriter::countList(clients, QStringLiteral(",")));
    if (multiSource)
        out.flag(QStringLiteral("J1939_PGN_BUFFER_USAGE"));
    if (server == 1 && !state.sdoServerCntWritten) {
        out.count(QStringLiteral("CO_SDO_SERVER_CNT"), cia510Lines);
        state.sdoServerCntWritten = true;
    }
    if (client == 1 && !state.sdoClientCntWritten) {
        out.count(QStringLiteral("CO_SDO_CLIENT_CNT"), cia510Lines);
        state.sdoClientCntWritten = true;
    }
}

void DefineJ1939Block::writeMultiLineSafety()
{
    DefineWriter &out = context.out;
    QList<qint64> transmitted;
    QList<qint64> received;
    for (const quint8 line : context.project.lines()) {
        transmitted << safePgns(line, Direction::Transmit);
        received << safePgns(line, Direction::Receive);
    }
    if (sum(transmitted) != 0)
        out.count(QStringLiteral("J1939_SDG_TRANS_CNT"), sum(transmitted));
    out.define(QStringLiteral("J1939_SDG_TRANS_COUNTS"), blankList(transmitted));
    if (sum(received) != 0)
        out.count(QStringLiteral("J1939_SDG_REC_CNT"), sum(received));
    out.define(QStringLiteral("J1939_SDG_REC_COUNTS"), blankList(received));
}

void DefineJ1939Block::writeInhibit()
{
    DefineState &state = context.state;
    if (state.inhibitWritten)
        return;
    ObjectDataBase &store = context.project.store();
    for (const quint8 line : context.project.lines()) {
        const QList<quint32> numbers = store.getPGNs(line, Direction::Transmit);
        for (const quint32 number : numbers) {
            PGN pgn;
            if (store.getPGN(line, number, Direction::Transmit, pgn) && pgn.inhibittime_ms != 0) {
                context.out.flag(QStringLiteral("CORE_INHIBIT_SUPPORTED"));
                state.inhibitWritten = true;
                return;
            }
        }
    }
}

void DefineJ1939Block::writeCobDefinitions()
{
    DefineWriter &out = context.out;
    const DefineCobCounter counter(context);
    QList<qint64> counts;
    for (const quint8 line : context.project.lines()) {
        const int isoTp = counter.isoTpTerm(line);
        const int extra = isoTp + counter.udsTerm(line, false);
        // The ISO-TP connections count once more beside the other extras.
        counts << extra + counter.j1939Count(line) + isoTp;
    }
    out.text(QStringLiteral("\n/* COB definitions */\n"));
    const QString gap = QStringLiteral(" \t");
    if (context.multi()) {
        out.define(QStringLiteral("CORE_COB_CNT"), QString::number(sum(counts)) + 'u', gap);
        QStringList texts;
        for (const qint64 count : counts)
            texts << QString::number(count);
        out.define(QStringLiteral("CORE_COB_COUNTS"), texts.join(QLatin1String(", ")));
    } else {
        out.define(QStringLiteral("CORE_COB_CNT"), QString::number(counts.value(0)) + 'u', gap);
        out.define(QStringLiteral("CORE_COB_COUNTS"), out.name(QStringLiteral("CORE_COB_CNT")));
    }
}

void DefineJ1939Block::writeBufferCounts()
{
    const DefineProject &project = context.project;
    DefineWriter &out = context.out;
    const QString receive = project.bufferList(QStringLiteral("receivebuffersize"), QStringLiteral("10"));
    const QString transmit = project.bufferList(QStringLiteral("transmitbuffersize"), QStringLiteral("5"));
    out.text(QStringLiteral("\n/* Number of receive/transmit buffer entries per line */\n"));
    out.define(QStringLiteral("CORE_REC_BUFFER_CNT"), receive);
    out.define(QStringLiteral("CORE_TR_BUFFER_CNT"), transmit);
    out.define(QStringLiteral("CORE_REC_BUFFER_COUNTS"), receive);
    out.define(QStringLiteral("CORE_TR_BUFFER_COUNTS"), transmit);
    context.state.bufferCountsWritten = true;
}
