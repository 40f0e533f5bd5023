#include "objdictpdotables.h"

#include "objdictcontext.h"
#include "objdictdialect.h"

#include <QTextStream>

#include <algorithm>

namespace {

// The stack holds at most this many entries in a PDO; a larger count is taken as one.
constexpr int maximumMappingEntries = 64;

} // namespace

ObjDictPdoTables::ObjDictPdoTables(const ObjDictContext &context)
    : context(context)
{}

bool ObjDictPdoTables::hasTable(quint8 line, quint16 commIndex) const
{
    return isStaticMapping(line, commIndex) && mappingCount(line, commIndex) > 0;
}

bool ObjDictPdoTables::isStaticMapping(quint8 line, quint16 commIndex) const
{
    const SUBINDEX_DATA_T *count = context.model.sub(line, quint16(commIndex + 0x200), 0);
    return count && count->accesstype != QLatin1String("rw");
}

int ObjDictPdoTables::mappingCount(quint8 line, quint16 commIndex) const
{
    const SUBINDEX_DATA_T *count = context.model.sub(line, quint16(commIndex + 0x200), 0);
    const int value = count ? int(count->defaultvalue.trimmed().toUInt(nullptr, 0) & 0xFF) : 0;
    return value > maximumMappingEntries ? 1 : value;
}

ObjDictPdoTables::Table ObjDictPdoTables::entries(quint8 line, quint16 commIndex) const
{
    Table table;
    const quint16 mapIndex = quint16(commIndex + 0x200);
    const int count = mappingCount(line, commIndex);
    for (int subIndex = 1; subIndex <= count; ++subIndex) {
        const SUBINDEX_DATA_T *entry = context.model.sub(line, mapIndex, quint8(subIndex));
        Entry mapped;
        mapped.value = entry ? entry->defaultvalue.trimmed().toUInt(nullptr, 0) : 0;
        mapped.reference =
            context.variableReference(line, quint16(mapped.value >> 16), quint8((mapped.value >> 8) & 0xFF));
        mapped.length = bitwise ? quint8(mapped.value & 0xFF) : quint8((mapped.value & 0xFF) >> 3);
        table << mapped;
    }
    return table;
}

QString ObjDictPdoTables::row(quint8 line, const Entry &entry) const
{
    const SUBINDEX_DATA_T *mapped =
        context.model.sub(line, quint16(entry.value >> 16), quint8((entry.value >> 8) & 0xFF));
    const quint16 type = mapped ? mapped->datatype : 0;
    QString typeColumn;
    if (context.dialect.mappingNumericFlag)
        typeColumn = type < 9 || type == 16 ? QStringLiteral("CO_TRUE") : QStringLiteral("CO_FALSE");
    else
        typeColumn = ObjDictContext::dataTypeText(type);
    return QStringLiteral("\t\t{%1, %2u, %3, 0x%4UL")
        .arg(entry.reference)
        .arg(entry.length)
        .arg(typeColumn)
        .arg(QString::number(entry.value, 16).rightJustified(8, QLatin1Char('0')).toUpper());
}

void ObjDictPdoTables::writeMapTable(QTextStream &out, quint8 line, const char *type, const QString &name,
                                     const Table &table, bool routed, const QString &filler) const
{
    out << "static CORE_CONST " << type << " CORE_CONST_STORAGE_CLASS\tmapTable" << name << " = {\n"
        << "\t(UNSIGNED8)" << table.size() << "u,\n\t{\n";
    for (const Entry &entry : table) {
        out << row(line, entry);
        if (routed)
            out << ", " << routingList(entry.value);
        out << " },\n";
    }
    writeFiller(out, int(table.size()), filler);
    out << "\t}\n};\n";
}

void ObjDictPdoTables::writeFiller(QTextStream &out, int from, const QString &routing) const
{
    for (int entry = from; entry < maxEntries; ++entry) {
        out << context.dialect.mappingFiller << routing << "}";
        if (entry + 1 < maxEntries)
            out << ",";
        out << "\n";
    }
}

int ObjDictPdoTables::routedEntries() const
{
    int routed = 0;
    for (const quint8 line : context.initLines())
        routed += context.model.subCount(line, 0x1F2C, 1);
    return routed;
}

QString ObjDictPdoTables::routingList(quint32 value) const
{
    QStringList elements;
    for (const quint8 line : context.initLines()) {
        const SUBINDEX_DATA_T *mapped =
            context.model.sub(line, quint16(value >> 16), quint8((value >> 8) & 0xFF));
        int tpdo = 0;
        if (mapped && mapped->sharedlines) {
            for (const quint16 mapIndex : context.model.indices(line, 0x1A00, 0x1BFF)) {
                for (const quint8 subIndex : context.model.subIndices(line, mapIndex, 1)) {
                    if (context.model.sub(line, mapIndex, subIndex)
                            ->defaultvalue.trimmed()
                            .toUInt(nullptr, 0) == value)
                        tpdo = mapIndex - 0x19FF;
                }
            }
        }
        elements << QString::number(tpdo);
    }
    return QStringLiteral("{%1}").arg(elements.join(QLatin1Char(',')));
}

void ObjDictPdoTables::write(QTextStream &out)
{
    const QList<quint8> lines = context.initLines();
    maxEntries = 0;
    for (const quint8 line : lines) {
        for (const auto &[first, last] : {std::pair<quint16, quint16>{0x1600, 0x17FF}, {0x1A00, 0x1BFF}}) {
            for (const quint16 index : context.model.indices(line, first, last))
                maxEntries = std::max(maxEntries, context.model.subCount(line, index, 1));
        }
    }
    bitwise = context.model.number(QStringLiteral("bitwise_mapping")) != 0 && maxEntries > 0;
    const bool routing = routedEntries() != 0;
    const QString noRoutes =
        QStringLiteral(",{%1}").arg(QStringList(lines.size(), QStringLiteral("0")).join(QLatin1Char(',')));

    out << "\n/* static PDO mapping tables */\n";
    for (const quint8 line : lines) {
        uniqueRpdoTables[line].clear();
        const QString suffix = context.lineSuffix(line);
        for (const quint16 index : context.model.indices(line, 0x1800, 0x19FF)) {
            if (!isStaticMapping(line, index))
                continue;
            const int number = index - 0x17FF;
            out << "/* Mapping table TPDO " << number << " */\n";
            const Table table = entries(line, index);
            if (table.isEmpty())
                continue;
            writeMapTable(out, line, "PDO_TR_MAP_TABLE_T", QStringLiteral("TPDO%1%2").arg(suffix).arg(number),
                          table, false, QString());
        }
        for (const quint16 index : context.model.indices(line, 0x1400, 0x15FF)) {
            if (!isStaticMapping(line, index))
                continue;
            const Table table = entries(line, index);
            if (routing) {
                const int number = index - 0x13FF;
                out << "/* Mapping table RPDO " << number << " */\n";
                if (table.isEmpty())
                    continue;
                writeMapTable(out, line, "PDO_REC_MAP_TABLE_T",
                              QStringLiteral("RPDO%1%2").arg(suffix).arg(number), table, true, noRoutes);
            } else if (!table.isEmpty() && !uniqueRpdoTables[line].contains(table)) {
                uniqueRpdoTables[line].append(table);
            }
        }
        const QList<Table> &unique = uniqueRpdoTables[line];
        for (int number = 0; number < unique.size(); ++number) {
            out << "/* unique rpdo defintion */\n";
            writeMapTable(out, line, "PDO_REC_MAP_TABLE_T",
                          QStringLiteral("RPDO%1%2").arg(suffix).arg(number), unique.at(number), false,
                          QString());
        }
    }
}

QString ObjDictPdoTables::uniqueRpdoTable(quint8 line, quint16 commIndex, const QString &table) const
{
    const int position = uniqueRpdoTables.value(line).indexOf(entries(line, commIndex));
    if (position < 0)
        return table;
    return QStringLiteral("&mapTableRPDO%1%2").arg(context.lineSuffix(line)).arg(position);
}
