#include "rawcanconfigwriter.h"

#include "multiprocontext.h"
#include "pgncontext.h"

#include "store/objectdatabase.h"

#include <QStringList>

RawCanConfigWriter::RawCanConfigWriter(const MultiProContext &context)
    : context(context)
{}

QString RawCanConfigWriter::tables() const
{
    QString text = QStringLiteral("\n/* configuration of raw CAN settings */\n");
    for (const quint8 line : context.lines()) {
        if (PgnContext::isRawCanType(context.lineType(line)))
            text += lineTables(line);
    }
    return text;
}

QString RawCanConfigWriter::lineTables(quint8 line) const
{
    const QString suffix = context.flags.multiLine ? QStringLiteral("_l%1").arg(line) : QString();
    const QList<quint32> transmitIds = context.store.getCANIDs(line, Direction::Transmit);
    const QList<quint32> receiveIds = context.store.getCANIDs(line, Direction::Receive);
    const qsizetype transmitCount = transmitIds.size();
    const qsizetype receiveCount = receiveIds.size();
    QString text = directionTable(line, Direction::Transmit, transmitIds) +
                   directionTable(line, Direction::Receive, receiveIds);
    text += QStringLiteral("/* rawCAN configuration */\nRAWCAN_CONFIG_T  rawcanConfig%1 = {\n").arg(suffix);
    text += transmitCount > 0 ? QStringLiteral("\t&rawcanTransmitConfig%1[0],\n").arg(suffix) : QStringLiteral("\t0, \n");
    text += QStringLiteral("\t%1, \n").arg(transmitCount);
    text += receiveCount > 0 ? QStringLiteral("\t&rawcanReceiveConfig%1[0], \n").arg(suffix) : QStringLiteral("\t0, \n");
    text += QStringLiteral("\t%1, \n};\n").arg(receiveCount);
    return text;
}

QString RawCanConfigWriter::directionTable(quint8 line, quint8 direction, const QList<quint32> &ids) const
{
    ObjectDataBase &store = context.store;
    if (ids.isEmpty())
        return QString();
    const bool transmit = direction == Direction::Transmit;
    const QString suffix = context.flags.multiLine ? QStringLiteral("_l%1").arg(line) : QString();
    QString text = transmit ? QStringLiteral("/*  TX CANID definitions */\n"
                                             "static RAWCAN_TR_CONFIG_T\trawcanTransmitConfig%1[%2] = {\n")
                            : QStringLiteral("/*  RX CANID definitions */\n"
                                             "static RAWCAN_REC_CONFIG_T\trawcanReceiveConfig%1[%2] = {\n");
    text = text.arg(suffix).arg(ids.size());
    QStringList rows;
    for (const quint32 id : ids) {
        CANID canId;
        store.getCANID(line, id, direction, canId);
        canId.id = id;
        canId.direction = direction;
        // The mapping tables are written from the data elements, so their number decides, not a count
        // stored beside them that an import may have left behind.
        rows << row(line, canId, int(store.getDataElements(line, id, direction).size()));
    }
    return text + rows.join(QStringLiteral(",\n")) + QStringLiteral("};\n");
}

QString RawCanConfigWriter::row(quint8 line, const CANID &canId, int mappings) const
{
    const bool transmit = canId.direction == Direction::Transmit;
    const QString prefix = context.flags.multiLine ? QStringLiteral("l%1_").arg(line) : QString();
    QString text = QStringLiteral("    {\n\t%1u, /* CANID number 0x%2 */ \n")
                       .arg(canId.id)
                       .arg(canId.id, 4, 16, QLatin1Char('0'));
    if (!transmit)
        text += QStringLiteral("\t0u, /*  RX ignore mask */ \n");
    text += mappings == 0 ? QStringLiteral("\tNULL, /* no mappings */\n")
                          : QStringLiteral("\t&%1%2_mapping_%3[0], \n")
                                .arg(prefix, transmit ? QStringLiteral("tx") : QStringLiteral("rx"))
                                .arg(canId.id);
    if (transmit)
        text += QStringLiteral("\t%1u, /* cycletime in ms */ \n\t%2u, /* inhibit time in ms */ \n")
                    .arg(canId.cycletime_ms)
                    .arg(canId.inhibittime_ms);
    else
        text += QStringLiteral("\t%1u, /* monitoring time in ms (0 .. acyclic) */ \n").arg(canId.cycletime_ms);
    return text + QStringLiteral("\t%1u /* number of mappings */\n    }").arg(mappings);
}
