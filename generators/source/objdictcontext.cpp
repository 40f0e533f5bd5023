#include "objdictcontext.h"

#include "objdictdialect.h"

#include "busmodel/cohelper.h"
#include "texttools/helper.h"

#include <QHash>

namespace {

enum class SubRule
{
    Any,
    AboveZero,
    One
};

struct IndexRule
{
    quint16 first;
    quint16 last;
    SubRule sub;
    const char *suffix;
};

bool matches(const IndexRule &rule, quint16 index, quint8 subIndex)
{
    if (index < rule.first || index > rule.last)
        return false;
    switch (rule.sub) {
    case SubRule::AboveZero:
        return subIndex > 0;
    case SubRule::One:
        return subIndex == 1;
    case SubRule::Any:
        break;
    }
    return true;
}

// Objects that the stack serves itself, by the service class of their rows; the first rule that holds wins.
constexpr IndexRule serviceRules[] = {
    {0x1005, 0x1006, SubRule::Any, "_SYNC"},
    {0x1019, 0x1019, SubRule::Any, "_SYNC"},
    {0x1003, 0x1003, SubRule::Any, "_EMCY"},
    {0x1014, 0x1015, SubRule::Any, "_EMCY"},
    {0x1032, 0x1032, SubRule::Any, "_EMCY"},
    {0x1028, 0x1028, SubRule::AboveZero, "_EMCY"},
    {0x1016, 0x1016, SubRule::AboveZero, "_ERRCTRL"},
    {0x100C, 0x100D, SubRule::Any, "_ERRCTRL"},
    {0x1017, 0x1017, SubRule::Any, "_ERRCTRL"},
    {0x1029, 0x1029, SubRule::One, "_ERRCTRL"},
    {0x1010, 0x1011, SubRule::AboveZero, "_STORE"},
    {0x1012, 0x1012, SubRule::Any, "_TIME"},
    {0x102A, 0x102A, SubRule::Any, "_NMT"},
    {0x1200, 0x127F, SubRule::AboveZero, "_SDO_SERVER"},
    {0x1280, 0x12FF, SubRule::AboveZero, "_SDO_CLIENT"},
    {0x1300, 0x1300, SubRule::Any, "_GFC"},
    {0x1301, 0x13F0, SubRule::AboveZero, "_SRDO"},
    {0x13FE, 0x13FF, SubRule::Any, "_SRDO"},
    {0x1400, 0x15FF, SubRule::AboveZero, "_RPDO"},
    {0x1600, 0x17FF, SubRule::Any, "_RMAP"},
    {0x1800, 0x19FF, SubRule::AboveZero, "_TPDO"},
    {0x1A00, 0x1BFF, SubRule::Any, "_TMAP"},
    {0x1F10, 0x1F11, SubRule::Any, "_SRD"},
    {0x1F2C, 0x1F2C, SubRule::AboveZero, "_NETWORK"},
    {0x1F80, 0x1F82, SubRule::Any, "_NMT"},
    {0x1F90, 0x1F90, SubRule::Any, "_FLYMA"},
};

// Objects whose value column holds the index or a service number; the offset is subtracted from the index.
struct ValueRule
{
    IndexRule range;
    quint16 offset;
};

constexpr ValueRule valueRules[] = {
    {{0x1003, 0x1003, SubRule::Any, ""}, 0},
    {{0x1005, 0x1006, SubRule::Any, ""}, 0},
    {{0x100C, 0x100D, SubRule::Any, ""}, 0},
    {{0x1014, 0x1015, SubRule::Any, ""}, 0},
    {{0x1017, 0x1017, SubRule::Any, ""}, 0},
    {{0x1019, 0x1019, SubRule::Any, ""}, 0},
    {{0x102A, 0x102A, SubRule::Any, ""}, 0},
    {{0x1032, 0x1032, SubRule::Any, ""}, 0},
    {{0x1301, 0x13FF, SubRule::Any, ""}, 0},
    {{0x1F80, 0x1F82, SubRule::Any, ""}, 0},
    {{0x1010, 0x1011, SubRule::AboveZero, ""}, 0},
    {{0x1016, 0x1016, SubRule::AboveZero, ""}, 0},
    {{0x1028, 0x1028, SubRule::AboveZero, ""}, 0},
    {{0x1F2C, 0x1F2C, SubRule::AboveZero, ""}, 0},
    {{0x1F90, 0x1F90, SubRule::AboveZero, ""}, 0},
    {{0x1029, 0x1029, SubRule::One, ""}, 0},
    {{0x1200, 0x127F, SubRule::AboveZero, ""}, 0x11FF},
    {{0x1280, 0x12FF, SubRule::AboveZero, ""}, 0x127F},
    {{0x1400, 0x15FF, SubRule::AboveZero, ""}, 0x13FF},
    {{0x1600, 0x17FF, SubRule::Any, ""}, 0x15FF},
    {{0x1800, 0x19FF, SubRule::AboveZero, ""}, 0x17FF},
    {{0x1A00, 0x1BFF, SubRule::Any, ""}, 0x19FF},
};

} // namespace

QString ObjDictContext::typeName(quint16 dataType)
{
    static const QHash<QString, QString> renamed = {
        {QStringLiteral("D"), QStringLiteral("DOMAIN")}, {QStringLiteral("B"), QStringLiteral("BOOL")},
        {QStringLiteral("U2"), QStringLiteral("U8")},    {QStringLiteral("U3"), QStringLiteral("U8")},
        {QStringLiteral("U4"), QStringLiteral("U8")},    {QStringLiteral("U5"), QStringLiteral("U8")},
        {QStringLiteral("U6"), QStringLiteral("U8")},    {QStringLiteral("U7"), QStringLiteral("U8")},
    };
    const QString name = COHelper::index2DataTypeShortString(dataType == 12 ? 25 : dataType).toUpper();
    return renamed.value(name, name);
}

ObjDictContext::ObjDictContext(const ObjDictModel &model, const ObjDictDialect &dialect)
    : model(model)
    , dialect(dialect)
{}

void ObjDictContext::collectStaticSrdoEntries()
{
    staticSrdoEntries.clear();
    if (!staticSrdo)
        return;
    const QList<quint8> lines = objectLines.isEmpty() ? QList<quint8>{0} : objectLines;
    for (const quint8 line : lines) {
        for (const quint16 index : model.indices(line, 0x1380, 0x13B0)) {
            for (const quint8 subIndex : model.subIndices(line, index, 1)) {
                const quint32 entry =
                    model.sub(line, index, subIndex)->defaultvalue.trimmed().toUInt(nullptr, 0);
                staticSrdoEntries.insert(
                    positionKey(line, quint16(entry >> 16), quint8((entry >> 8) & 0xFF)));
            }
        }
    }
}

bool ObjDictContext::isStaticSrdoEntry(quint8 line, quint16 index, quint8 subIndex) const
{
    return staticSrdo && staticSrdoEntries.contains(positionKey(line, index, subIndex));
}

quint8 ObjDictContext::compactStart(quint8 line, quint16 index) const
{
    if (!compactDescription || index < 0x1200)
        return 255;
    if (model.subCount(line, index) < 3)
        return 255;
    const QList<quint8> subs = model.subIndices(line, index, 1);
    const SUBINDEX_DATA_T &reference = *model.sub(line, index, subs.last());
    quint8 result = 255;
    int previous = subs.last();
    for (int position = int(subs.size()) - 2; position >= 0; --position) {
        const quint8 subIndex = subs.at(position);
        if (subIndex != previous - 1)
            return 255;
        const SUBINDEX_DATA_T &entry = *model.sub(line, index, subIndex);
        const bool alike =
            entry.datatype == reference.datatype && entry.accesstype == reference.accesstype &&
            entry.pdomapping == reference.pdomapping && entry.lowlimit == reference.lowlimit &&
            entry.uplimit == reference.uplimit && entry.size == reference.size &&
            entry.defaultineds == reference.defaultineds && entry.limitineds == reference.limitineds &&
            entry.implementation == reference.implementation &&
            entry.varname.simplified() == reference.varname.simplified() &&
            entry.nvstorage == reference.nvstorage && entry.defaultvalue == reference.defaultvalue &&
            entry.writedefaulttoeds == reference.writedefaulttoeds;
        if (!alike)
            return result;
        result = subIndex;
        previous = subIndex;
    }
    return result;
}

quint32 ObjDictContext::valueIndex(quint8 line, quint16 index, quint8 subIndex) const
{
    for (const auto &rule : valueRules) {
        if (matches(rule.range, index, subIndex))
            return index - rule.offset;
    }
    if (isStaticSrdoEntry(line, index, subIndex))
        return index;
    const SUBINDEX_DATA_T *sub = model.sub(line, index, subIndex);
    const quint8 keyLine = sub && sub->sharedlines ? 0 : line;
    return variablePositions.value(positionKey(keyLine, index, subIndex), 0);
}

QString ObjDictContext::indexComment(quint32 key) const
{
    const QString position =
        QStringLiteral("0x%1:%2").arg(hex4(quint16((key >> 8) & 0xFFFF))).arg(key & 0xFF);
    if (multiLineForm())
        return QStringLiteral(" /* %1-%2 */").arg(key >> 24).arg(position);
    return QStringLiteral(" /* %1 */").arg(position);
}

QString ObjDictContext::hex4(quint16 index)
{
    return QString::number(index, 16).rightJustified(4, QLatin1Char('0')).toUpper();
}

QString ObjDictContext::variableReference(quint8 line, quint16 index, quint8 subIndex) const
{
    const SUBINDEX_DATA_T *sub = model.sub(line, index, subIndex);
    if (!sub)
        return QStringLiteral("NULL");
    const quint32 key = positionKey(line, index, subIndex);
    switch (sub->implementation) {
    case 0:
        return QStringLiteral("&od_%1[%2]").arg(arraySuffix(sub->datatype)).arg(variablePositions.value(key));
    case 1:
        return QStringLiteral("&od_const_%1[%2]")
            .arg(arraySuffix(sub->datatype))
            .arg(constPositions.value(key));
    case 2: {
        const QString name = Helper::substituteVariables(sub->varname, index, subIndex, line);
        return name.contains(QLatin1Char('(')) ? name : QStringLiteral("&(%1)").arg(name);
    }
    default:
        return QStringLiteral("0");
    }
}

QString ObjDictContext::arraySuffix(quint16 dataType)
{
    return typeName(dataType).replace(QLatin1String("BOOL"), QLatin1String("B")).toLower();
}

QString ObjDictContext::dataTypeText(quint16 dataType)
{
    static const QHash<QString, QString> renamed = {
        {QStringLiteral("CORE_DTYPE_OS"), QStringLiteral("CORE_DTYPE_OCTET_STRING")},
        {QStringLiteral("CORE_DTYPE_VS"), QStringLiteral("CORE_DTYPE_STRING_NULL")},
    };
    const QString name = typeName(dataType);
    // A type without a short name has no type of its own in the stack.
    if (name.isEmpty())
        return QStringLiteral("CORE_DTYPE_NON_NUMERIC");
    const QString text = QStringLiteral("CORE_DTYPE_") + name;
    return renamed.value(text, text);
}

QString ObjDictContext::serviceSuffix(quint8 line, quint16 index, quint8 subIndex, const SUBINDEX_DATA_T &sub,
                                      bool virtualObject) const
{
    if (sub.implementation == 1)
        return QStringLiteral("_CONST");
    for (const auto &rule : serviceRules) {
        if (matches(rule, index, subIndex))
            return QString::fromLatin1(rule.suffix);
    }
    if (virtualObject)
        return QStringLiteral("_PTR");
    if (isStaticSrdoEntry(line, index, subIndex))
        return QStringLiteral("_SRDO");
    if (sub.implementation == 0)
        return QStringLiteral("_VAR");
    if (sub.implementation == 2)
        return QStringLiteral("_PTR");
    return QString();
}

QString ObjDictContext::typeAndServiceColumns(quint8 line, quint16 index, quint8 subIndex,
                                              const SUBINDEX_DATA_T &sub) const
{
    const QString suffix = serviceSuffix(line, index, subIndex, sub, false);
    if (!dialect.combinedTypeColumn)
        return dataTypeText(sub.datatype) + QStringLiteral(", CO_DSPEC") + suffix;
    QString type = QStringLiteral("CO_DTYPE_") + typeName(sub.datatype);
    if (sub.implementation == 1 && type == QLatin1String("CO_DTYPE_OS"))
        type = QStringLiteral("CO_DTYPE_VS");
    if (sub.datatype != 15)
        type += suffix;
    return type.leftJustified(18);
}

QString ObjDictContext::accessAttributes(const SUBINDEX_DATA_T &sub)
{
    const QString &access = sub.accesstype;
    QString text;
    if (access == QLatin1String("const") || access == QLatin1String("ro"))
        text = QStringLiteral("CO_ATTR_READ");
    else if (access == QLatin1String("wo"))
        text = QStringLiteral("CO_ATTR_WRITE");
    else
        text = QStringLiteral("CO_ATTR_READ | CO_ATTR_WRITE");
    if (sub.pdomapping.isMappable()) {
        const bool readOnly = access == QLatin1String("const") || access == QLatin1String("ro") ||
                              access == QLatin1String("rwr");
        const bool writeOnly = access == QLatin1String("wo") || access == QLatin1String("rww");
        if (!writeOnly)
            text += QStringLiteral(" | CO_ATTR_MAP_TR");
        if (!readOnly)
            text += QStringLiteral(" | CO_ATTR_MAP_REC");
    }
    return text;
}

QString ObjDictContext::lineSuffix(quint8 line) const
{
    if (!multiLineForm())
        return QString();
    return line <= 25 ? QString(QChar('a' + line)) : QString(QChar(line + 40));
}
