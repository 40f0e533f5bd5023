#include "objdicttablewriter.h"

#include "objdictcontext.h"

#include <QTextStream>

namespace {

// The fields of od_data_variables in the stack's order; a null name stands for a line of text.
struct DataField
{
    const char *array;
    const char *text;
};

constexpr DataField dataFields[] = {
    {"od_const_u8", nullptr},
    {"od_const_u16", nullptr},
    {"od_const_u32", nullptr},
    {"od_const_r32", nullptr},
    {nullptr, "#ifdef CO_EXTENDED_DATA_TYPES\n"},
    {"od_const_u24", nullptr},
    {"od_const_u40", nullptr},
    {"od_const_u48", nullptr},
    {"od_const_u64", nullptr},
    {nullptr, "#endif /* CO_EXTENDED_DATA_TYPES */\n"},
    {"od_u8", nullptr},
    {"od_u16", nullptr},
    {"od_u32", nullptr},
    {"od_r32", nullptr},
    {nullptr, "#ifdef CO_EXTENDED_DATA_TYPES\n"},
    {"od_u24", nullptr},
    {"od_u40", nullptr},
    {"od_u48", nullptr},
    {"od_u64", nullptr},
    {nullptr, "#endif /* CO_EXTENDED_DATA_TYPES */\n"},
    {"od_const_i8", nullptr},
    {"od_const_i16", nullptr},
    {"od_const_i32", nullptr},
    {"od_i8", nullptr},
    {"od_i16", nullptr},
    {"od_i32", nullptr},
    {"od_ptr_u8", nullptr},
    {"od_ptr_u16", nullptr},
    {"od_ptr_u32", nullptr},
    {nullptr, "#ifdef CO_EXTENDED_DATA_TYPES\n"},
    {"od_ptr_u24", nullptr},
    {"od_ptr_u40", nullptr},
    {"od_ptr_u48", nullptr},
    {"od_ptr_u64", nullptr},
    {nullptr, "#endif /* CO_EXTENDED_DATA_TYPES */\n"},
    {"od_ptr_i8", nullptr},
    {"od_ptr_i16", nullptr},
    {"od_ptr_i32", nullptr},
    {"od_ptr_r32", nullptr},
    {"od_const_vis_string", nullptr},
    {"od_const_vis_string_len", nullptr},
    {"od_vis_string", nullptr},
    {"od_vis_string_len", nullptr},
    {"od_vis_string_actLen", nullptr},
    {nullptr, "#ifdef CO_UTF8_DATA_TYPE\n"},
    {"od_const_utf8_string", nullptr},
    {"od_const_utf8_string_len", nullptr},
    {"od_utf8_string", nullptr},
    {"od_utf8_string_len", nullptr},
    {"od_utf8_string_actLen", nullptr},
    {nullptr, "#endif\n"},
    {"od_octet_string", nullptr},
    {"od_octet_string_len", nullptr},
    {"od_octet_string_actLen", nullptr},
    {"od_domain", nullptr},
    {"od_domain_len", nullptr},
    {"od_domain_actLen", nullptr},
};

QString objectType(quint32 type)
{
    switch (type) {
    case 2:
        return QStringLiteral("CO_ODTYPE_DOM");
    case 7:
        return QStringLiteral("CO_ODTYPE_VAR");
    case 8:
        return QStringLiteral("CO_ODTYPE_ARRAY");
    case 9:
        return QStringLiteral("CO_ODTYPE_STRUCT");
    default:
        return QStringLiteral("invalid");
    }
}

QString slotText(const QMap<quint32, quint32> &positions, quint32 key)
{
    return QString::number(positions.value(key, 0));
}

} // namespace

ObjDictTableWriter::ObjDictTableWriter(ObjDictContext &context)
    : context(context)
{}

void ObjDictTableWriter::writeDescription(QTextStream &out)
{
    out << "\n/* description of the objects */\n"
        << "CORE_CONST CO_OBJECT_DESC_T CORE_CONST_STORAGE_CLASS od_description[CO_OBJ_DESC_CNT] = {\n";
    const bool limitCheck = context.model.number(QStringLiteral("limit_check")) >= 1;
    quint32 row = 0;
    for (const quint8 line : context.tableLines()) {
        const auto &objects = context.model.objects(line);
        for (auto object = objects.constBegin(); object != objects.constEnd(); ++object) {
            const quint16 index = object.key();
            const quint8 start = context.compactStart(line, index);
            int limit = 255;
            for (auto sub = object->subs.constBegin(); sub != object->subs.constEnd(); ++sub) {
                const quint8 subIndex = sub.key();
                if (subIndex > limit)
                    break;
                if (subIndex == 0)
                    context.assignPositions.insert(ObjDictContext::objectKey(line, index), row);
                if (sub->implementation == 3 || (line > 0 && sub->sharedlines))
                    continue;
                const quint32 key = ObjDictContext::positionKey(line, index, subIndex);
                const quint32 value = sub->implementation == 1 ? context.constPositions.value(key, 0)
                                                               : context.valueIndex(line, index, subIndex);
                QString attributes;
                if (sub->datatype < 9 || sub->datatype == 22)
                    attributes = QStringLiteral("CO_ATTR_NUM | ");
                attributes += ObjDictContext::accessAttributes(*sub);
                if (sub->defaultineds)
                    attributes += QStringLiteral(" | CO_ATTR_DEFVAL");
                if (sub->limitineds)
                    attributes += QStringLiteral(" | CO_ATTR_LIMIT");
                if (sub->nvstorage)
                    attributes += QStringLiteral(" | CO_ATTR_STORE");
                if (start != 255 && subIndex == start) {
                    attributes += QStringLiteral(" | CO_ATTR_COMPACT");
                    limit = subIndex;
                }
                out << "\t{ (UNSIGNED8)" << subIndex << "u, "
                    << context.typeAndServiceColumns(line, index, subIndex, *sub) << ", "
                    << QStringLiteral("(UNSIGNED16)%1u, ").arg(value) << attributes << ", "
                    << " (UNSIGNED16)" << slotText(context.constPositions, key);
                if (limitCheck)
                    out << "u, (UNSIGNED16)" << slotText(context.lowLimitPositions, key) << "u, (UNSIGNED16)"
                        << slotText(context.upLimitPositions, key) << "u},";
                else
                    out << "u},";
                out << "/* ";
                if (context.multiLineForm())
                    out << line << "-";
                out << "0x" << ObjDictContext::hex4(index) << ":" << subIndex << "*/ \n";
                ++row;
            }
        }
    }
    out << "};\n";
}

void ObjDictTableWriter::writeAssignment(QTextStream &out) const
{
    const QList<quint8> lines = context.tableLines();
    if (lines.isEmpty())
        return;
    out << "\n/* object dictionary assignment */\n"
        << "CORE_CONST CO_OD_ASSIGN_T CORE_CONST_STORAGE_CLASS od_assign[CO_OD_ASSIGN_CNT] = {\n";
    for (const quint8 line : lines) {
        const auto &objects = context.model.objects(line);
        for (auto object = objects.constBegin(); object != objects.constEnd(); ++object) {
            const quint16 index = object.key();
            const auto first = object->subs.constFind(0);
            if (first != object->subs.constEnd() && first->implementation == 3)
                continue;
            int rows = 0;
            const quint8 start = context.compactStart(line, index);
            for (auto sub = object->subs.constBegin(); sub != object->subs.constEnd(); ++sub) {
                if (context.compactDescription ? sub.key() <= start : sub->implementation != 3)
                    ++rows;
            }
            const quint8 highest = object->subs.isEmpty() ? 0 : object->subs.lastKey();
            const bool shared = first != object->subs.constEnd() && first->sharedlines;
            const quint32 firstRow =
                context.assignPositions.value(ObjDictContext::objectKey(shared ? 0 : line, index), 0);
            out << QStringLiteral("\t{ 0x%1u, %2u, %3u, %4, %5u },\n")
                       .arg(index, 4, 16, QLatin1Char('0'))
                       .arg(rows)
                       .arg(highest)
                       .arg(objectType(object->data.objecttype))
                       .arg(firstRow);
        }
    }
    out << "};\n";
}

void ObjDictTableWriter::writeDataVariables(QTextStream &out) const
{
    out << "\n/**********************************************************************/\n"
        << "/* Structure for all OD variables */\n"
        << "CORE_CONST CO_OD_DATA_VARIABLES_T od_data_variables = {\n";
    bool first = true;
    for (const auto &field : dataFields) {
        if (!field.array) {
            out << field.text;
            continue;
        }
        const QString name = QString::fromLatin1(field.array);
        const bool exists = context.writtenArrays.contains(name);
        if (first)
            out << (exists ? QStringLiteral("   &%1[0]\n").arg(name) : QStringLiteral("   NULL\n"));
        else
            out << (exists ? QStringLiteral("    , &%1[0]\n").arg(name) : QStringLiteral("    , NULL\n"));
        first = false;
    }
    out << "};\n\n";
}
