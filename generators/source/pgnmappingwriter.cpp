#include "pgnmappingwriter.h"

#include "busmodel/cohelper.h"
#include "pgncontext.h"
#include "pgndatatypes.h"
#include "pgndialect.h"
#include "pgnmanagedvariables.h"
#include "pgnsignal.h"
#include "store/objectdatabase.h"

#include <QStringList>

namespace {

// The stack brings the mapping of its address claiming group; the project gives the values only.
constexpr quint32 addressClaimPgn = 60928;
constexpr quint16 unsigned8 = 5;

QString directionName(quint8 direction)
{
    return direction == Direction::Transmit ? QStringLiteral("tx_mapping_") : QStringLiteral("rx_mapping_");
}

QString hex4(quint32 value)
{
    return QStringLiteral("%1").arg(value, 4, 16, QLatin1Char('0'));
}

QString nameComment(const QString &name)
{
    return name.isEmpty() ? QString() : QStringLiteral("\t/* %1 */").arg(name);
}

} // namespace

PgnMappingWriter::PgnMappingWriter(const PgnContext &context, const PgnManagedVariables &variables)
    : context(context)
    , variables(variables)
{}

QString PgnMappingWriter::tables() const
{
    QString text = QStringLiteral("\n/*  PGN Mapping Definitions */\n");
    for (const quint8 line : context.lines()) {
        const int type = context.lineType(line);
        if (PgnContext::isJ1939Type(type))
            text += j1939Tables(line);
        if (PgnContext::isRawCanType(type))
            text += rawCanTables(line);
    }
    return text;
}

QString PgnMappingWriter::j1939Tables(quint8 line) const
{
    QString text;
    for (const quint8 direction : {Direction::Receive, Direction::Transmit}) {
        const QList<quint32> pgns = context.pgns(line, direction);
        for (const quint32 pgn : pgns)
            text += pgnTables(line, direction, pgn);
    }
    return text;
}

QString PgnMappingWriter::pgnTables(quint8 line, quint8 direction, quint32 pgn) const
{
    ObjectDataBase &store = context.store();
    const QString name = context.prefix(line) + directionName(direction) + QString::number(pgn);
    const quint32 sources = context.sourceAddresses(line, direction, pgn);
    const QList<quint32> numbers = store.getSPNs(line, pgn, direction);
    QList<PgnSignal> signalList;
    for (const quint32 number : numbers) {
        SPN record;
        store.getSPN(line, pgn, direction, number, record);
        signalList << PgnSignal::fromSpn(record);
    }
    const bool dataTables = context.dialect().dataTables;
    QString text;
    if (!dataTables || pgn != addressClaimPgn || direction != Direction::Transmit) {
        text += QStringLiteral("/* PGN %1/0x%2 %3 */\n")
                    .arg(pgn)
                    .arg(hex4(pgn), store.getPGNName(line, pgn, direction));
        text += QStringLiteral("static %1J1939_MAPPING_T %2[] = {\n").arg(context.constText(), name);
        QStringList rows;
        for (const PgnSignal &signal : std::as_const(signalList))
            rows << mappingRow(line, signal, sources, direction);
        if (!rows.isEmpty())
            text += rows.join(QStringLiteral(",\n")) + '\n';
        text += QStringLiteral("};\n\n");
    }
    if (!dataTables)
        return text;
    text += QStringLiteral("static UNSIGNED8 * %1_data[] = {\n").arg(name);
    QStringList rows;
    for (const PgnSignal &signal : std::as_const(signalList))
        rows << '\t' + pointer(line, signal, sources, direction);
    if (!rows.isEmpty())
        text += rows.join(QStringLiteral(",\n")) + '\n';
    return text + QStringLiteral("};\n");
}

QString PgnMappingWriter::mappingRow(quint8 line, const PgnSignal &signal, quint32 sourceAddresses,
                                     quint8 direction) const
{
    const quint32 bits = PgnDataTypes::isNumeric(signal.datatype)
                             ? COHelper::getDataLengthBits(signal.datatype)
                             : signal.bitsize;
    const QString type = PgnDataTypes::mappingTypeText(signal.datatype, false);
    QString row = context.dialect().dataTables ? QStringLiteral("\t{ %1, %2u, %3u, %4")
                                                     .arg(signal.number)
                                                     .arg(signal.bitposition)
                                                     .arg(bits)
                                                     .arg(type)
                                               : QStringLiteral("\t{ %1, %2u, %3u, %4")
                                                     .arg(pointer(line, signal, sourceAddresses, direction))
                                                     .arg(bits)
                                                     .arg(signal.number)
                                                     .arg(type);
    if (context.dynamicPgns())
        row += QStringLiteral(", 0u");
    return row + QStringLiteral(" }") + nameComment(signal.name);
}

QString PgnMappingWriter::pointer(quint8 line, const PgnSignal &signal, quint32 sourceAddresses,
                                  quint8 direction) const
{
    QString expression = signal.implementation != 0 ? signal.varname : variables.reference(line, signal);
    if (PgnDataTypes::isNumeric(signal.datatype) && !expression.contains('&') && !expression.contains('*'))
        expression.prepend('&');
    if (signal.rawCan)
        return expression;
    if (signal.datatype != unsigned8 && !expression.contains(QLatin1String("_u8")))
        expression.prepend(QStringLiteral("(UNSIGNED8 *)"));
    if (direction == Direction::Receive && signal.implementation == 2 && sourceAddresses >= 2)
        expression += QStringLiteral("[0]");
    return expression;
}

QString PgnMappingWriter::rawCanTables(quint8 line) const
{
    QString text;
    for (const quint8 direction : {Direction::Receive, Direction::Transmit}) {
        const QList<quint32> ids = context.store().getCANIDs(line, direction);
        for (const quint32 id : ids)
            text += canIdTable(line, direction, id);
    }
    return text;
}

QString PgnMappingWriter::canIdTable(quint8 line, quint8 direction, quint32 id) const
{
    ObjectDataBase &store = context.store();
    const QList<quint32> numbers = store.getDataElements(line, id, direction);
    if (numbers.isEmpty())
        return QString();
    QString text = QStringLiteral("/* canid %1/0x%2 %3 */\n")
                       .arg(id)
                       .arg(hex4(id), store.getCANIDName(line, id, direction));
    text +=
        QStringLiteral("static  %1 CORE_MAPPING_T %2%3%4[] = {\n")
            .arg(QLatin1String(context.dialect().constMacro), context.prefix(line), directionName(direction))
            .arg(id);
    QStringList rows;
    for (const quint32 number : numbers) {
        DataElement record;
        store.getDataElement(line, id, direction, number, record);
        const PgnSignal signal = PgnSignal::fromDataElement(record);
        const quint32 bits = COHelper::getDataLengthBits(signal.datatype);
        const QString type = PgnDataTypes::mappingTypeText(signal.datatype, true);
        const QString where = pointer(line, signal, 0, direction);
        const QString row = context.dialect().dataTables
                                ? QStringLiteral("\t{ %1, %2, %3u, %4 }")
                                      .arg(where)
                                      .arg(signal.bitposition)
                                      .arg(bits)
                                      .arg(type)
                                : QStringLiteral("\t{ %1, %2u, %3 }").arg(where).arg(bits).arg(type);
        rows << row + nameComment(signal.name);
    }
    return text + rows.join(QStringLiteral(",\n")) + QStringLiteral("\n};\n");
}
