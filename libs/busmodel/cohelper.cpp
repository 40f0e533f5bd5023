#include "cohelper.h"

#include <QHash>

#include <utility>

namespace {

struct DataTypeInfo
{
    quint16 code;
    const char *name;
    const char *shortName;
    quint32 bits;
};

// CiA 301 basic types, then the J1939 bit-field and string types from 100 upward.
constexpr DataTypeInfo dataTypes[] = {
    {1, "BOOLEAN", "b", 1},
    {2, "INTEGER8", "i8", 8},
    {3, "INTEGER16", "i16", 16},
    {4, "INTEGER32", "i32", 32},
    {5, "UNSIGNED8", "u8", 8},
    {6, "UNSIGNED16", "u16", 16},
    {7, "UNSIGNED32", "u32", 32},
    {8, "REAL32", "r32", 32},
    {9, "VISIBLE_STRING", "vs", 0},
    {10, "OCTET_STRING", "os", 0},
    {11, "UNICODE_STRING", "us", 0},
    {12, "TIME_OF_DAY", "t", 48},
    {13, "TIME_DIFFERENCE", "td", 48},
    {15, "DOMAIN", "d", 0},
    {16, "INTEGER24", "i24", 24},
    {17, "REAL64", "r64", 64},
    {18, "INTEGER40", "i40", 40},
    {19, "INTEGER48", "i48", 48},
    {20, "INTEGER56", "i56", 56},
    {21, "INTEGER64", "i64", 64},
    {22, "UNSIGNED24", "u24", 24},
    {24, "UNSIGNED40", "u40", 40},
    {25, "UNSIGNED48", "u48", 48},
    {26, "UNSIGNED56", "u56", 56},
    {27, "UNSIGNED64", "u64", 64},
    {100, "UNSIGNED2", "u2", 2},
    {101, "UNSIGNED3", "u3", 3},
    {102, "UNSIGNED4", "u4", 4},
    {103, "UNSIGNED5", "u5", 5},
    {104, "UNSIGNED6", "u6", 6},
    {105, "UNSIGNED7", "u7", 7},
    {106, "UNSIGNED9", "u9", 9},
    {107, "UNSIGNED10", "u10", 10},
    {108, "UNSIGNED11", "u11", 11},
    {109, "UNSIGNED12", "u12", 12},
    {110, "UNSIGNED13", "u13", 13},
    {111, "UNSIGNED14", "u14", 14},
    {112, "UNSIGNED15", "u15", 15},
    {117, "UNSIGNED19", "u19", 19},
    {118, "UNSIGNED18", "u18", 18},
    {119, "UNSIGNED21", "u21", 21},
    {120, "STRING_NULL_TERMINATED", "sn", 0},
    {121, "STRING_ASTERISK_TERMINATED", "sa", 0},
    {124, "UTF8_STRING", "utf8", 0},
    {129, "UNSIGNED29", "u29", 29},
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

const std::pair<quint32, const char *> objectCodeNames[] = {
    {0, "NULL"}, {2, "DOMAIN"}, {5, "DEFTYPE"}, {6, "DEFSTRUCT"}, {7, "VARIABLE"}, {8, "ARRAY"}, {9, "RECORD"},
};
const std::pair<unsigned int, const char *> pdoMappingNames[] = {
    {0, "Forbidden"}, {1, "Allowed"}, {2, "Default"}, {3, "RPDO"}, {4, "TPDO"},
};
const std::pair<quint8, const char *> implementationNames[] = {
    {0, "Managed Variable"}, {1, "Managed Const"}, {2, "Application Variable"}, {3, "Virtual Object"},
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
