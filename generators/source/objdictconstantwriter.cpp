#include "objdictconstantwriter.h"

#include "objdictcontext.h"
#include "objdictvalues.h"

#include "texttools/helper.h"

#include <QRegularExpression>
#include <QTextStream>

namespace {

// The order of the constant arrays in the file, which differs from that of the variables.
constexpr int arrayOrder[] = {ObjDictValues::U8,  ObjDictValues::U16, ObjDictValues::U32, ObjDictValues::U24,
                              ObjDictValues::U40, ObjDictValues::U48, ObjDictValues::U64, ObjDictValues::I8,
                              ObjDictValues::I16, ObjDictValues::I24, ObjDictValues::I32, ObjDictValues::R32};

bool writable(const QString &access)
{
    return access == QLatin1String("rw") || access == QLatin1String("rwr") ||
           access == QLatin1String("rww") || access == QLatin1String("wo");
}

// A string in C: plain text as it stands, "|x" followed by hexadecimal pairs as escapes.
QString stringRow(const QString &text)
{
    if (!text.startsWith(QLatin1String("|x")))
        return QStringLiteral("\t\"%1\"").arg(text);
    QString escaped;
    const QString digits = text.mid(2);
    for (int position = 0; position + 1 < digits.size(); position += 2)
        escaped += QStringLiteral("\\x%1").arg(digits.mid(position, 2).toLower());
    return QStringLiteral("\t\"%1\"").arg(escaped);
}

} // namespace

ObjDictConstantWriter::ObjDictConstantWriter(ObjDictContext &context)
    : context(context)
    , rows(ObjDictValues::ArrayCount)
    , slotsByRow(ObjDictValues::ArrayCount)
{}

quint32 ObjDictConstantWriter::slotOf(int array, const QString &row)
{
    const auto found = slotsByRow[array].constFind(row);
    if (found != slotsByRow[array].constEnd())
        return found.value();
    const quint32 slot = quint32(rows[array].size());
    rows[array] << row;
    slotsByRow[array].insert(row, slot);
    return slot;
}

void ObjDictConstantWriter::write(QTextStream &out)
{
    static const QRegularExpression nodeId(QStringLiteral("\\$nodeid\\+"),
                                           QRegularExpression::CaseInsensitiveOption);
    out << "\n/* definition of constants */"
        << "\n";
    const bool limitCheck =
        context.model.setting(QStringLiteral("limit_check")).trimmed().toLongLong(nullptr, 0) >= 1;
    QStringList strings;
    QStringList stringLengths;
    QStringList utf8Strings;
    QStringList utf8Lengths;
    for (const quint8 line : context.tableLines()) {
        const auto &objects = context.model.objects(line);
        for (auto object = objects.constBegin(); object != objects.constEnd(); ++object) {
            for (auto sub = object->subs.constBegin(); sub != object->subs.constEnd(); ++sub) {
                const quint32 key = ObjDictContext::positionKey(line, object.key(), sub.key());
                const QString value = QString(sub->defaultvalue).remove(nodeId);
                const int array = ObjDictValues::arrayOf(sub->datatype);
                if (array != ObjDictValues::NoArray) {
                    context.constPositions.insert(
                        key, slotOf(array,
                                    ObjDictValues::row(array, value, ObjDictValues::Reading::Default, true)));
                    if (limitCheck && sub->limitineds && writable(sub->accesstype) &&
                        ObjDictValues::hasLimits(array)) {
                        context.lowLimitPositions.insert(
                            key, slotOf(array, ObjDictValues::row(array, sub->lowlimit,
                                                                  ObjDictValues::Reading::Limit, true)));
                        context.upLimitPositions.insert(
                            key, slotOf(array, ObjDictValues::row(array, sub->uplimit,
                                                                  ObjDictValues::Reading::Limit, true)));
                    }
                    continue;
                }
                if (sub->implementation != 1)
                    continue;
                if (sub->datatype == 9 || sub->datatype == 10) {
                    context.constPositions.insert(key, quint32(strings.size()));
                    strings << stringRow(sub->defaultvalue);
                    stringLengths << QStringLiteral("\t%1").arg(sub->size);
                } else if (sub->datatype == 124) {
                    context.constPositions.insert(key, quint32(utf8Strings.size()));
                    utf8Strings << QLatin1Char('\t') + Helper::UTF8String2ArrayString(sub->defaultvalue) +
                                       QStringLiteral(",\n");
                    utf8Lengths << QStringLiteral("\t%1").arg(sub->size);
                }
            }
        }
    }
    const QString separator = QStringLiteral(",\n");
    for (const int array : arrayOrder)
        writeArray(out, ObjDictValues::cType(array),
                   QStringLiteral("od_const_") + ObjDictValues::suffix(array), rows[array], separator);
    writeArray(out, QStringLiteral("VIS_STRING"), QStringLiteral("od_const_vis_string"), strings, separator);
    writeArray(out, QStringLiteral("UNSIGNED32"), QStringLiteral("od_const_vis_string_len"), stringLengths,
               separator);
    writeArray(out, QStringLiteral("UTF8_STRING"), QStringLiteral("od_const_utf8_string"), utf8Strings,
               QString());
    writeArray(out, QStringLiteral("UNSIGNED32"), QStringLiteral("od_const_utf8_string_len"), utf8Lengths,
               separator);
}

void ObjDictConstantWriter::writeArray(QTextStream &out, const QString &type, const QString &name,
                                       const QStringList &arrayRows, const QString &separator)
{
    if (arrayRows.isEmpty())
        return;
    out << "static CORE_CONST " << type << " CORE_CONST_STORAGE_CLASS\t" << name << "[" << arrayRows.size()
        << "] = {\n"
        << arrayRows.join(separator) << "};\n";
    context.writtenArrays.insert(name);
}
