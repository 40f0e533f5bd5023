#include "definerawcanblock.h"

#include "definecontext.h"
#include "store/objectdatabase.h"
#include "store/protocolrecords.h"

namespace {

struct Indication
{
    const char *key;
    const char *macro;
};

const Indication indications[] = {
    {"rxindication_cnt", "RAWCAN_REC_INDICATION_CNT"},
    {"txindication_cnt", "RAWCAN_TR_INDICATION_CNT"},
    {"changedindication_cnt", "RAWCAN_CHANGED_INDICATION_CNT"},
};

const QString changedIndication = QStringLiteral("changedindication_cnt");

} // namespace

DefineRawCanBlock::DefineRawCanBlock(DefineContext &context)
    : context(context)
{}

void DefineRawCanBlock::write()
{
    const DefineProject &project = context.project;
    DefineWriter &out = context.out;
    DefineState &state = context.state;
    if (!project.anyLine(DefineProject::isRawCanType))
        return;
    if (context.multi() && !state.multiLineWritten) {
        out.flag(QStringLiteral("CAN_MULTI_LINE"));
        out.count(QStringLiteral("CAN_MULTI_LINE_CNT"), project.lines().size());
        state.multiLineWritten = true;
    }
    context.writeDynamicCan(project.generalNumber(QStringLiteral("event_can")), true);
    out.text(QStringLiteral("\n/* CAN RAW Defines */\n"));
    out.flag(QStringLiteral("RAWCAN_SUPPORTED"));
    writeIdCounts();
    if (!state.bufferCountsWritten) {
        out.define(QStringLiteral("CORE_REC_BUFFER_COUNTS"),
                   project.bufferList(QStringLiteral("receivebuffersize"), QStringLiteral("10")));
        out.define(QStringLiteral("CORE_TR_BUFFER_COUNTS"),
                   project.bufferList(QStringLiteral("transmitbuffersize"), QStringLiteral("5")));
        state.bufferCountsWritten = true;
    }
    writeIndications();
    writeInhibit();
}

void DefineRawCanBlock::writeIdCounts()
{
    ObjectDataBase &store = context.project.store();
    DefineWriter &out = context.out;
    if (!context.multi()) {
        const quint8 line = context.project.lines().value(0);
        out.count(QStringLiteral("RAWCAN_RECEIVE_CNT"), store.getCANIDs(line, Direction::Receive).size());
        out.count(QStringLiteral("RAWCAN_RECEIVE_COUNTS"), store.getCANIDs(line, Direction::Receive).size());
        out.count(QStringLiteral("RAWCAN_TRANSMIT_CNT"), store.getCANIDs(line, Direction::Transmit).size());
        out.count(QStringLiteral("RAWCAN_TRANSMIT_COUNTS"),
                  store.getCANIDs(line, Direction::Transmit).size());
        return;
    }
    QList<qint64> transmitted;
    QList<qint64> received;
    qint64 transmitSum = 0;
    qint64 receiveSum = 0;
    for (const quint8 line : context.project.lines()) {
        transmitted << store.getCANIDs(line, Direction::Transmit).size();
        received << store.getCANIDs(line, Direction::Receive).size();
        transmitSum += transmitted.last();
        receiveSum += received.last();
    }
    out.count(QStringLiteral("RAWCAN_RECEIVE_CNT"), receiveSum);
    out.define(QStringLiteral("RAWCAN_RECEIVE_COUNTS"), ' ' + DefineWriter::countList(received));
    out.count(QStringLiteral("RAWCAN_TRANSMIT_CNT"), transmitSum);
    out.define(QStringLiteral("RAWCAN_TRANSMIT_COUNTS"), ' ' + DefineWriter::countList(transmitted));
}

void DefineRawCanBlock::writeIndications()
{
    const DefineProject &project = context.project;
    for (const auto &indication : indications) {
        const QString value = project.general(QLatin1String(indication.key)).trimmed();
        if (DefineProject::number(value) <= 0)
            continue;
        context.out.define(QLatin1String(indication.macro), value + 'u');
        if (QLatin1String(indication.key) == changedIndication)
            context.out.flag(QStringLiteral("CORE_OBJECT_CHANGED"));
    }
}

void DefineRawCanBlock::writeInhibit()
{
    DefineState &state = context.state;
    if (state.inhibitWritten)
        return;
    ObjectDataBase &store = context.project.store();
    for (const quint8 line : context.project.lines()) {
        const QList<quint32> ids = store.getCANIDs(line, Direction::Transmit);
        for (const quint32 id : ids) {
            CANID canId;
            if (store.getCANID(line, id, Direction::Transmit, canId) && canId.inhibittime_ms != 0) {
                context.out.flag(QStringLiteral("CORE_INHIBIT_SUPPORTED"));
                state.inhibitWritten = true;
                return;
            }
        }
    }
}
