#include "objdictvariablewriter.h"

#include "objdictcontext.h"
#include "objdictvalues.h"

#include "texttools/helper.h"

#include <QTextStream>

namespace {

struct OwnedRange
{
    quint16 first;
    quint16 last;
    // The stack owns all sub-indices, sub-index 1 alone, or all but sub-index 0.
    enum
    {
        All,
        One,
        AboveZero
    } subs;
};

constexpr OwnedRange ownedRanges[] = {
    {0x1005, 0x1006, OwnedRange::All},       {0x1016, 0x1016, OwnedRange::All},
    {0x1019, 0x1019, OwnedRange::All},       {0x100C, 0x100D, OwnedRange::All},
    {0x1012, 0x1012, OwnedRange::All},       {0x1017, 0x1017, OwnedRange::All},
    {0x102A, 0x102A, OwnedRange::All},       {0x1F10, 0x1F11, OwnedRange::All},
    {0x1300, 0x1300, OwnedRange::All},       {0x1029, 0x1029, OwnedRange::One},
    {0x1010, 0x1011, OwnedRange::AboveZero}, {0x1028, 0x1028, OwnedRange::AboveZero},
    {0x1F81, 0x1F82, OwnedRange::AboveZero}, {0x1200, 0x12FF, OwnedRange::AboveZero},
    {0x1301, 0x13FF, OwnedRange::AboveZero}, {0x1400, 0x1BFF, OwnedRange::AboveZero},
};

// The pad that aligns the short type name of the 8-bit signed arrays with the others.
QString typeColumn(int array)
{
    return ObjDictValues::cType(array) +
           (array == ObjDictValues::I8 ? QStringLiteral("  ") : QStringLiteral(" "));
}

QString joinRows(const QStringList &rows)
{
    return rows.join(QStringLiteral(",\n"));
}

} // namespace

ObjDictVariableWriter::ObjDictVariableWriter(ObjDictContext &context)
    : context(context)
{}

bool ObjDictVariableWriter::ownedByStack(quint16 index, quint8 subIndex)
{
    for (const auto &range : ownedRanges) {
        if (index < range.first || index > range.last)
            continue;
        switch (range.subs) {
        case OwnedRange::All:
            return true;
        case OwnedRange::One:
            return subIndex == 1;
        case OwnedRange::AboveZero:
            return subIndex > 0;
        }
    }
    return false;
}

void ObjDictVariableWriter::writeManaged(QTextStream &out)
{
    out << "\n/* definition of managed variables */"
        << "\n";
    QList<Row> arrays[ObjDictValues::ArrayCount];
    for (const quint8 line : context.tableLines()) {
        const auto &objects = context.model.objects(line);
        for (auto object = objects.constBegin(); object != objects.constEnd(); ++object) {
            for (auto sub = object->subs.constBegin(); sub != object->subs.constEnd(); ++sub) {
                if (sub->implementation != 0 || ownedByStack(object.key(), sub.key()) ||
                    (line > 0 && sub->sharedlines))
                    continue;
                const int array = ObjDictValues::arrayOf(sub->datatype);
                if (array == ObjDictValues::NoArray)
                    continue;
                const quint32 key = ObjDictContext::positionKey(line, object.key(), sub.key());
                context.variablePositions.insert(key, quint32(arrays[array].size()));
                arrays[array].append(
                    {ObjDictValues::row(array, sub->defaultvalue, ObjDictValues::Reading::Default, false),
                     key});
            }
        }
    }
    const bool initialised = context.model.number(QStringLiteral("init_static_variables")) == 1;
    for (int array = 0; array < ObjDictValues::ArrayCount; ++array) {
        const QString name = QStringLiteral("od_") + ObjDictValues::suffix(array);
        writeArray(out, QStringLiteral("static %1CORE_STORAGE_CLASS\t").arg(typeColumn(array)), name,
                   arrays[array], initialised);
    }
}

void ObjDictVariableWriter::writeArray(QTextStream &out, const QString &opening, const QString &name,
                                       const QList<Row> &rows, bool initialised)
{
    if (rows.isEmpty())
        return;
    const QString specifier = context.model.setting(QStringLiteral("static_memory_specifier"));
    out << opening << name << "[" << rows.size() << "]";
    if (!specifier.isEmpty())
        out << " " << specifier << " ";
    if (!initialised) {
        out << ";\n";
    } else {
        QStringList texts;
        for (const Row &row : rows)
            texts << row.text + context.indexComment(row.key);
        out << "= {\n" << joinRows(texts) << "};\n";
    }
    context.writtenArrays.insert(name);
}

void ObjDictVariableWriter::writeApplication(QTextStream &out)
{
    out << "\n/* definition of application variables */"
        << "\n";
    QList<Row> arrays[ObjDictValues::ArrayCount];
    QList<StringRow> visibleStrings;
    QList<StringRow> utf8Strings;
    QList<StringRow> octetStrings;
    int domains = 0;
    for (const quint8 line : context.tableLines()) {
        const auto &objects = context.model.objects(line);
        for (auto object = objects.constBegin(); object != objects.constEnd(); ++object) {
            for (auto sub = object->subs.constBegin(); sub != object->subs.constEnd(); ++sub) {
                if (sub->implementation != 2 || context.isStaticSrdoEntry(line, object.key(), sub.key()))
                    continue;
                const quint32 key = ObjDictContext::positionKey(line, object.key(), sub.key());
                const QString name = Helper::substituteVariables(sub->varname, object.key(), sub.key(), line);
                const int array = ObjDictValues::arrayOf(sub->datatype);
                if (array != ObjDictValues::NoArray) {
                    context.variablePositions.insert(key, quint32(arrays[array].size()));
                    const bool expression = name.contains(QLatin1Char('(')) && array != ObjDictValues::U24;
                    const QString text =
                        expression ? QLatin1Char('\t') + name : QStringLiteral("\t&(%1)").arg(name);
                    arrays[array].append({text + context.indexComment(key), key});
                    continue;
                }
                QList<StringRow> *strings = nullptr;
                switch (sub->datatype) {
                case 9:
                    strings = &visibleStrings;
                    break;
                case 124:
                    strings = &utf8Strings;
                    break;
                case 10:
                    strings = &octetStrings;
                    break;
                case 15:
                    context.variablePositions.insert(key, quint32(domains++));
                    continue;
                default:
                    continue;
                }
                context.variablePositions.insert(key, quint32(strings->size()));
                strings->append({name, sub->size});
            }
        }
    }
    for (int array = 0; array < ObjDictValues::ArrayCount; ++array) {
        const QList<Row> &rows = arrays[array];
        if (rows.isEmpty())
            continue;
        const QString name = QStringLiteral("od_ptr_") + ObjDictValues::suffix(array);
        QStringList texts;
        for (const Row &row : rows)
            texts << row.text;
        out << "static " << typeColumn(array) << "CORE_CONST_STORAGE_CLASS * CORE_CONST \t" << name << "["
            << rows.size() << "] = {\n"
            << joinRows(texts) << "};\n";
        context.writtenArrays.insert(name);
    }
    writeStrings(out, QStringLiteral("static VIS_STRING\t"), QStringLiteral("od_vis_string"),
                 QStringLiteral("static UNSIGNED32\t"), visibleStrings);
    writeStrings(out, QStringLiteral("static VIS_STRING\t"), QStringLiteral("od_utf8_string"),
                 QStringLiteral("static UNSIGNED32\t"), utf8Strings);
    writeStrings(out, QStringLiteral("static OCTET_STRING\t*"), QStringLiteral("od_octet_string"),
                 QStringLiteral("static UNSIGNED32 CORE_STORAGE_CLASS\t"), octetStrings);
    writeDomains(out, domains);
}

void ObjDictVariableWriter::writeStrings(QTextStream &out, const QString &opening, const QString &name,
                                         const QString &lengthType, const QList<StringRow> &rows)
{
    if (rows.isEmpty())
        return;
    QStringList pointers;
    QStringList lengths;
    for (const StringRow &row : rows) {
        pointers << QStringLiteral("\t&(%1[0])").arg(row.name);
        lengths << QStringLiteral("\t%1ul").arg(row.size);
    }
    out << opening << name << "[" << rows.size() << "] = {\n" << joinRows(pointers) << "};\n";
    for (const QString &suffix : {QStringLiteral("_len"), QStringLiteral("_actLen")})
        out << lengthType << name << suffix << "[" << rows.size() << "] = {\n" << joinRows(lengths) << "};\n";
    context.writtenArrays << name << name + QStringLiteral("_len") << name + QStringLiteral("_actLen");
}

void ObjDictVariableWriter::writeDomains(QTextStream &out, int count)
{
    if (count == 0)
        return;
    const QStringList nulls(count, QStringLiteral("\tNULL"));
    const QStringList zeros(count, QStringLiteral("\t0ul"));
    out << "static CO_DOMAIN_PTR\tod_domain[" << count << "] = {\n" << joinRows(nulls) << "};\n";
    for (const char *name : {"od_domain_len", "od_domain_actLen"})
        out << "static UNSIGNED32 CORE_STORAGE_CLASS\t" << name << "[" << count << "] = {\n"
            << joinRows(zeros) << "};\n";
    context.writtenArrays << QStringLiteral("od_domain") << QStringLiteral("od_domain_len")
                          << QStringLiteral("od_domain_actLen");
}
