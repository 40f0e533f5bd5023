#include "pgnconfigwriter.h"

#include "pgncontext.h"
#include "pgndialect.h"
#include "store/objectdatabase.h"

#include <QStringList>

namespace {

const char *const transmitCountName = "J1939_TRANSMIT_PGN_CNT";
const char *const trailerFormats[] = {
    "J1939_ATF_SAE_NONE",
    "J1939_ATF_MANU_CYBERSEC_32",
    "J1939_ATF_MANU_CYBERSEC_64",
    "J1939_ATF_MANU_FUNC_SAFETY_32",
    "J1939_ATF_MANU_FUNC_SAFETY_64",
    "J1939_ATF_MANU_FUNC_CYB_SAFE_32",
};
const char *const assuranceTypes[] = {
    "J1939_ADT_NONE",
    "J1939_ADT_MANU_CYBERSEC",
    "J1939_ADT_MANU_FUNC_SAFETY",
    "J1939_ADT_MANU_FUNC_CYB_SAFE",
};
// The null address of J1939: a device without an address of its own.
const char *const nullAddress = "254";

template<size_t N> QString enumName(const char *const (&names)[N], quint8 value)
{
    return QLatin1String(value < N ? names[value] : "INVALID_VALUE");
}

QString withUnsignedSuffix(const QString &text)
{
    return text.endsWith('u') ? text : text + 'u';
}

} // namespace

PgnConfigWriter::PgnConfigWriter(const PgnContext &context)
    : context(context)
{}

int PgnConfigWriter::transmitCount(quint8 line) const
{
    return int(context.configuredPgns(line, Direction::Transmit).size());
}

int PgnConfigWriter::receiveCount(quint8 line) const
{
    return int(context.configuredPgns(line, Direction::Receive).size());
}

QString PgnConfigWriter::size(const char *singleLineName, int count) const
{
    return context.multiLine() ? QString::number(count) : QLatin1String(singleLineName);
}

QString PgnConfigWriter::transmitTables() const
{
    QString text = QStringLiteral("\n");
    for (const quint8 line : context.lines()) {
        if (!PgnContext::isJ1939Type(context.lineType(line)) || transmitCount(line) == 0)
            continue;
        text += QStringLiteral("/*  TX PGN definitions */\n");
        text +=
            QStringLiteral("static%1 J1939_PGN_CONFIG_T\tjPgnTransmitConfig%2[%3] = {\n")
                .arg(context.constText(), context.suffix(line), size(transmitCountName, transmitCount(line)));
        text += configRows(line, Direction::Transmit) + QStringLiteral("\n};\n");
    }
    return text;
}

QString PgnConfigWriter::receiveTables() const
{
    QString text = QStringLiteral("\n");
    for (const quint8 line : context.lines()) {
        if (!PgnContext::isJ1939Type(context.lineType(line)) || receiveCount(line) == 0)
            continue;
        text += QStringLiteral("/*  RX PGN definitions */\n");
        text += QStringLiteral("static %1 J1939_PGN_CONFIG_T\tjPgnReceiveConfig%2[%3]= {\n")
                    .arg(context.constText(), context.suffix(line),
                         size(context.dialect().receiveSizeName, receiveCount(line)));
        text += configRows(line, Direction::Receive) + QStringLiteral("\n};\n");
    }
    return text;
}

QString PgnConfigWriter::configRows(quint8 line, quint8 direction) const
{
    QStringList rows;
    const QList<quint32> numbers = context.configuredPgns(line, direction);
    for (const quint32 number : numbers) {
        PGN pgn;
        context.store().getPGN(line, number, direction, pgn);
        pgn.number = number;
        rows << pgnRow(line, direction, pgn);
    }
    return rows.join(QStringLiteral(",\n"));
}

QString PgnConfigWriter::pgnRow(quint8 line, quint8 direction, const PGN &pgn) const
{
    const bool transmit = direction == Direction::Transmit;
    const QString mapping = context.prefix(line) +
                            (transmit ? QStringLiteral("tx_mapping_") : QStringLiteral("rx_mapping_")) +
                            QString::number(pgn.number);
    QString text =
        QStringLiteral("    {\n\t%1u, /* PGN number */ \n\t&%2[0], \n").arg(pgn.number).arg(mapping);
    const QString cycle = QStringLiteral("\t%1u, /* cycletime in ms */ \n\t%2u, /* inhibit time in ms */ \n")
                              .arg(pgn.cycletime_ms)
                              .arg(pgn.inhibittime_ms);
    if (!context.dialect().dataTables) {
        text += cycle + QStringLiteral("\t%1u, /* priority */ \n\t%2u /* number of mappings */\n")
                            .arg(pgn.priority)
                            .arg(pgn.mappingcount);
        return text + QStringLiteral("    }");
    }
    text += QStringLiteral("\t&%1_data[0], \n\t%2u, /* number of mappings */\n")
                .arg(mapping)
                .arg(pgn.mappingcount);
    if (transmit) {
        text += QStringLiteral("#ifdef J1939_MULTI_SRC_ADDR\n\t0u,\n");
    } else {
        const quint32 sources = context.sourceAddresses(line, direction, pgn.number);
        text += QStringLiteral("#ifdef J1939_MULTI_SRC_ADDR \n\t%1u,\n").arg(sources < 2 ? 1 : sources);
    }
    text += QStringLiteral("#endif /* J1939_MULTI_SRC_ADDR */\n") + cycle;
    if (context.canFd())
        text += QStringLiteral("\t%1u, /* priority */ \n").arg(pgn.priority) + fdRows(pgn);
    else
        text += QStringLiteral("\t%1u /* priority */ \n").arg(pgn.priority);
    return text + QStringLiteral("    }");
}

QString PgnConfigWriter::fdRows(const PGN &pgn) const
{
    return QStringLiteral("\t%1,\n\t%2,\n\t%3u\n")
        .arg(enumName(trailerFormats, pgn.FD_TrailerFormat), enumName(assuranceTypes, pgn.FD_AssuranceType))
        .arg(pgn.FD_AssuranceDataSize);
}

QString PgnConfigWriter::addressClaimConfigurations() const
{
    QString text = QStringLiteral("\n");
    const QList<quint8> &lines = context.lines();
    if (lines.contains(0) && PgnContext::isJ1939Type(context.lineType(0)))
        text += QStringLiteral("/*  J1939 device Identifiy information (NAME PGN) */\n");
    const PgnDialect &dialect = context.dialect();
    const QString constMacro = context.dynamicPgns() ? QString() : QLatin1String(dialect.constMacro);
    for (const quint8 line : lines) {
        if (!PgnContext::isJ1939Type(context.lineType(line)))
            continue;
        text += QStringLiteral("static %1 J1939_PGN_CONFIG_T\taddrTrCfg%2 = {\n")
                    .arg(constMacro, context.suffix(line));
        text += QStringLiteral("\t60928u, /* PGN number */\n");
        if (!dialect.dataTables) {
            text += QStringLiteral("\t&%1tx_mapping_60928[0],\n").arg(context.prefix(line));
            text += QStringLiteral("\t0u, /* cycletime in ms */\n\t250u, /* inhibitime in us */\n");
            text += QStringLiteral("\t6u, /* priority */\n\t10u /* number of mappings */\n};\n");
            continue;
        }
        text += QStringLiteral("\t&j1939AddressClaimMapping[0],\n");
        text += QStringLiteral("\t&%1tx_mapping_60928_data[0],\n").arg(context.prefix(line));
        text += QStringLiteral("\t9u, /* number of mappings */\n");
        text += QStringLiteral("#ifdef J1939_MULTI_SRC_ADDR\n\t0u,\n#endif /* J1939_MULTI_SRC_ADDR */\n");
        text += QStringLiteral("\t0u, /* cycletime in ms */\n\t250u, /* inhibitime in us */\n\t6u");
        if (context.canFd())
            text += QStringLiteral(", /* priority */\n\tJ1939_ATF_SAE_NONE,\n\tJ1939_ADT_NONE,\n\t0\n");
        else
            text += QStringLiteral(" /* priority */\n");
        text += QStringLiteral("};\n");
    }
    return text;
}

QString PgnConfigWriter::lineConfigurations(bool *written) const
{
    QString text = QStringLiteral("\n/*  J1939 PGN configuration */\n");
    bool any = false;
    for (const quint8 line : context.lines()) {
        if (!PgnContext::isJ1939Type(context.lineType(line)))
            continue;
        any = true;
        const QString suffix = context.suffix(line);
        const int transmit = transmitCount(line);
        const int receive = receiveCount(line);
        text += QStringLiteral("J1939_CONFIG_T  j1939Config%1 = {\n").arg(suffix);
        text += transmit > 0 ? QStringLiteral("\t&jPgnTransmitConfig%1[0],\n").arg(suffix)
                             : QStringLiteral("\t0, \n");
        text += QStringLiteral("\t%1, \n").arg(size(transmitCountName, transmit));
        text += receive > 0 ? QStringLiteral("\t&jPgnReceiveConfig%1[0], \n").arg(suffix)
                            : QStringLiteral("\t0, \n");
        text += QStringLiteral("\t%1, \n").arg(size(context.dialect().receiveSizeName, receive));
        text += QStringLiteral("\t&addrTrCfg%1,\n").arg(suffix);
        text += QStringLiteral("\t%1 \n};\n").arg(address(line));
    }
    if (written)
        *written = any;
    return text;
}

QString PgnConfigWriter::address(quint8 line) const
{
    const QString setting = context.store().getJ1939Setting(QStringLiteral("startaddress")).trimmed();
    if (setting.isEmpty())
        return QLatin1String(nullAddress) + 'u';
    if (!context.multiLine())
        return withUnsignedSuffix(setting);
    if (!setting.contains(','))
        return setting;
    const QStringList entries = setting.split(',');
    const qsizetype position = context.lines().indexOf(line);
    const QString entry = entries.value(position).trimmed();
    return entry.isEmpty() ? QLatin1String(nullAddress) : withUnsignedSuffix(entry);
}
