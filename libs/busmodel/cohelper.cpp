#include "cohelper.h"

#include <QHash>

#include <cfloat>
#include <limits>
#include <optional>
#include <utility>

namespace {

// How the values of a type are ranged.
enum class Range
{
    None,
    Boolean,
    Unsigned,
    Signed,
    Real32,
    Real64
};

struct DataTypeInfo
{
    quint16 code;
    const char *name;
    const char *shortName;
    quint32 bits;
    Range range;
};

// CiA 301 basic types, then the J1939 bit-field and string types from 100 upward.
constexpr DataTypeInfo dataTypes[] = {
    {1, "BOOLEAN", "b", 1, Range::Boolean},
    {2, "INTEGER8", "i8", 8, Range::Signed},
    {3, "INTEGER16", "i16", 16, Range::Signed},
    {4, "INTEGER32", "i32", 32, Range::Signed},
    {5, "UNSIGNED8", "u8", 8, Range::Unsigned},
    {6, "UNSIGNED16", "u16", 16, Range::Unsigned},
    {7, "UNSIGNED32", "u32", 32, Range::Unsigned},
    {8, "REAL32", "r32", 32, Range::Real32},
    {9, "VISIBLE_STRING", "vs", 0, Range::None},
    {10, "OCTET_STRING", "os", 0, Range::None},
    {11, "UNICODE_STRING", "us", 0, Range::None},
    {12, "TIME_OF_DAY", "t", 48, Range::None},
    {13, "TIME_DIFFERENCE", "td", 48, Range::None},
    {15, "DOMAIN", "d", 0, Range::None},
    {16, "INTEGER24", "i24", 24, Range::Signed},
    {17, "REAL64", "r64", 64, Range::Real64},
    {18, "INTEGER40", "i40", 40, Range::Signed},
    {19, "INTEGER48", "i48", 48, Range::Signed},
    {20, "INTEGER56", "i56", 56, Range::Signed},
    {21, "INTEGER64", "i64", 64, Range::Signed},
    {22, "UNSIGNED24", "u24", 24, Range::Unsigned},
    {24, "UNSIGNED40", "u40", 40, Range::Unsigned},
    {25, "UNSIGNED48", "u48", 48, Range::Unsigned},
    {26, "UNSIGNED56", "u56", 56, Range::Unsigned},
    {27, "UNSIGNED64", "u64", 64, Range::Unsigned},
    {100, "UNSIGNED2", "u2", 2, Range::Unsigned},
    {101, "UNSIGNED3", "u3", 3, Range::Unsigned},
    {102, "UNSIGNED4", "u4", 4, Range::Unsigned},
    {103, "UNSIGNED5", "u5", 5, Range::Unsigned},
    {104, "UNSIGNED6", "u6", 6, Range::Unsigned},
    {105, "UNSIGNED7", "u7", 7, Range::Unsigned},
    {106, "UNSIGNED9", "u9", 9, Range::Unsigned},
    {107, "UNSIGNED10", "u10", 10, Range::Unsigned},
    {108, "UNSIGNED11", "u11", 11, Range::Unsigned},
    {109, "UNSIGNED12", "u12", 12, Range::Unsigned},
    {110, "UNSIGNED13", "u13", 13, Range::Unsigned},
    {111, "UNSIGNED14", "u14", 14, Range::Unsigned},
    {112, "UNSIGNED15", "u15", 15, Range::Unsigned},
    {117, "UNSIGNED19", "u19", 19, Range::Unsigned},
    {118, "UNSIGNED18", "u18", 18, Range::Unsigned},
    {119, "UNSIGNED21", "u21", 21, Range::Unsigned},
    {120, "VIS_STRING_NULL", "sn", 0, Range::None},
    {121, "VIS_STRING_ASTERIKS", "sa", 0, Range::None},
    {124, "UTF8_STRING", "utf8", 0, Range::None},
    {129, "UNSIGNED29", "u29", 29, Range::Unsigned},
};

// Further spellings that tables written by hand use. "u8s" is the UNSIGNED8 of a constant entry.
const std::pair<const char *, quint16> dataTypeAliases[] = {
    {"u8s", 5}, {"bool", 1}, {"float", 8}, {"double", 17}, {"string", 9},
};

const DataTypeInfo *findDataType(quint16 code)
{
    static const QHash<quint16, const DataTypeInfo *> byCode = [] {
        QHash<quint16, const DataTypeInfo *> map;
        for (const auto &info : dataTypes)
            map.insert(info.code, &info);
        return map;
    }();
    return byCode.value(code, nullptr);
}

} // namespace

quint32 COHelper::getDataLengthBits(quint16 dataType)
{
    const auto *info = findDataType(dataType);
    return info ? info->bits : 0;
}

QString COHelper::index2DataTypeString(quint16 dataType)
{
    const auto *info = findDataType(dataType);
    return info ? QString::fromLatin1(info->name) : QString();
}

QString COHelper::index2DataTypeShortString(quint16 dataType)
{
    const auto *info = findDataType(dataType);
    return info ? QString::fromLatin1(info->shortName) : QString();
}

quint16 COHelper::mapDataTypeString(const QString &text)
{
    static const QHash<QString, quint16> byName = [] {
        QHash<QString, quint16> map;
        for (const auto &info : dataTypes) {
            map.insert(QString::fromLatin1(info.name).toLower(), info.code);
            map.insert(QString::fromLatin1(info.shortName), info.code);
        }
        for (const auto &[alias, code] : dataTypeAliases)
            map.insert(QString::fromLatin1(alias), code);
        return map;
    }();
    const QString key = text.trimmed().toLower();
    const auto found = byName.constFind(key);
    if (found != byName.constEnd())
        return found.value();
    bool ok = false;
    const uint code = key.toUInt(&ok, 0);
    return ok && code <= 0xFFFF ? quint16(code) : 0;
}

void COHelper::getDefaultLimits(quint16 dataType, QString &low, QString &high)
{
    low.clear();
    high.clear();
    const auto *info = findDataType(dataType);
    if (!info)
        return;
    switch (info->range) {
    case Range::None:
        return;
    case Range::Boolean:
        low = QStringLiteral("0");
        high = QStringLiteral("1");
        return;
    case Range::Unsigned:
        low = QStringLiteral("0");
        high = QString::number(info->bits >= 64 ? ~quint64(0) : (quint64(1) << info->bits) - 1);
        return;
    case Range::Signed: {
        const qint64 highest =
            info->bits >= 64 ? std::numeric_limits<qint64>::max() : (qint64(1) << (info->bits - 1)) - 1;
        low = QString::number(-highest - 1);
        high = QString::number(highest);
        return;
    }
    case Range::Real32:
        // All digits of the double value: a shorter form may round above FLT_MAX and no longer read as float.
        low = QString::number(double(-FLT_MAX), 'g', 17);
        high = QString::number(double(FLT_MAX), 'g', 17);
        return;
    case Range::Real64:
        low = QString::number(-DBL_MAX, 'g', 17);
        high = QString::number(DBL_MAX, 'g', 17);
        return;
    }
}

namespace {

template<typename Key, size_t N>
QString nameOf(const std::pair<Key, const char *> (&names)[N], Key key)
{
    for (const auto &[code, name] : names) {
        if (code == key)
            return QString::fromLatin1(name);
    }
    return QString();
}

template<typename Key, size_t N>
std::optional<Key> codeOf(const std::pair<Key, const char *> (&names)[N], const QString &name)
{
    for (const auto &[code, codeName] : names) {
        if (name == QLatin1String(codeName))
            return code;
    }
    return std::nullopt;
}

const std::pair<quint32, const char *> objectCodeNames[] = {
    {0, "NULL"}, {2, "DOMAIN"}, {5, "DEFTYPE"}, {6, "DEFSTRUCT"}, {7, "VARIABLE"}, {8, "ARRAY"}, {9, "RECORD"},
};
// Spellings that are read but never shown.
const std::pair<quint32, const char *> objectCodeAliases[] = {{7, "VAR"}};
const std::pair<unsigned int, const char *> pdoMappingNames[] = {
    {0, "Forbidden"}, {1, "Allowed"}, {2, "Default"}, {3, "RPDO"}, {4, "TPDO"},
};
const std::pair<quint8, const char *> implementationNames[] = {
    {0, "Managed Variable"}, {1, "Managed Const"}, {2, "Application Variable"}, {3, "Virtual Object"},
};

// Canonical access type and a spelling of it.
const std::pair<const char *, const char *> accessTypeSpellings[] = {
    {"const", "const"},   {"const", "c"},       {"const", "constant"}, {"ro", "ro"},   {"ro", "r"},
    {"ro", "read"},       {"ro", "readonly"},   {"ro", "read only"},   {"wo", "wo"},   {"wo", "w"},
    {"wo", "write"},      {"wo", "writeonly"},  {"wo", "write only"},  {"rw", "rw"},   {"rw", "readwrite"},
    {"rw", "read/write"}, {"rw", "read write"}, {"rwr", "rwr"},        {"rww", "rww"},
};

const std::pair<quint8, const char *> categoryNames[] = {
    {0, "mandatory"},
    {1, "optional"},
    {2, "conditional"},
};

} // namespace

QString COHelper::objectCode2String(quint32 objectCode)
{
    return nameOf(objectCodeNames, objectCode);
}

QString COHelper::pdoMapping2String(unsigned int mapping)
{
    return nameOf(pdoMappingNames, mapping);
}

QString COHelper::implementation2String(quint8 implementation)
{
    return nameOf(implementationNames, implementation);
}

quint32 COHelper::string2objectCode(const QString &text)
{
    const QString name = text.trimmed().toUpper();
    if (const auto code = codeOf(objectCodeNames, name))
        return *code;
    if (const auto code = codeOf(objectCodeAliases, name))
        return *code;
    bool ok = false;
    const uint code = name.toUInt(&ok, 0);
    return ok ? code : 7;
}

QString COHelper::normalizeAccessType(const QString &text)
{
    const auto canonical = codeOf(accessTypeSpellings, text.simplified().toLower());
    return QString::fromLatin1(canonical ? *canonical : "ro");
}

quint8 COHelper::convertCategory(const QString &text)
{
    return codeOf(categoryNames, text.trimmed().toLower()).value_or(1);
}
