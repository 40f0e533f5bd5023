#include "pgndatatypes.h"

#include "busmodel/cohelper.h"

#include <QHash>

namespace {

struct TableRow
{
    const char *name;
    const char *cType;
    const char *suffix;
    bool isSigned;
};

const TableRow tableRows[PgnDataTypes::TableCount] = {
    {"u8", "UNSIGNED8", "u", false},  {"i8", "INTEGER8", "u", true},      {"u16", "UNSIGNED16", "u", false},
    {"i16", "INTEGER16", "u", true},  {"u32", "UNSIGNED32", "UL", false}, {"i32", "INTEGER32", "UL", true},
    {"u64", "UNSIGNED64", "", false},
};

struct TypeTable
{
    quint16 datatype;
    PgnDataTypes::Table table;
    // J1939 signals are unsigned; the signed tables serve raw CAN alone.
    bool rawCanOnly;
};

const TypeTable typeTables[] = {
    {1, PgnDataTypes::U8, false},    {5, PgnDataTypes::U8, false},    {100, PgnDataTypes::U8, false},
    {101, PgnDataTypes::U8, false},  {102, PgnDataTypes::U8, false},  {103, PgnDataTypes::U8, false},
    {104, PgnDataTypes::U8, false},  {105, PgnDataTypes::U8, false},  {6, PgnDataTypes::U16, false},
    {106, PgnDataTypes::U16, false}, {107, PgnDataTypes::U16, false}, {108, PgnDataTypes::U16, false},
    {109, PgnDataTypes::U16, false}, {110, PgnDataTypes::U16, false}, {111, PgnDataTypes::U16, false},
    {112, PgnDataTypes::U16, false}, {7, PgnDataTypes::U32, false},   {22, PgnDataTypes::U32, false},
    {117, PgnDataTypes::U32, false}, {118, PgnDataTypes::U32, false}, {119, PgnDataTypes::U32, false},
    {129, PgnDataTypes::U32, false}, {24, PgnDataTypes::U64, false},  {25, PgnDataTypes::U64, false},
    {27, PgnDataTypes::U64, false},  {2, PgnDataTypes::I8, true},     {3, PgnDataTypes::I16, true},
    {4, PgnDataTypes::I32, true},    {16, PgnDataTypes::I32, true},
};

// Short names whose values the stack keeps in a wider container.
const QHash<QString, QString> &containerNames()
{
    static const QHash<QString, QString> names = {
        {"u9", "u16"},  {"u10", "u16"}, {"u11", "u16"}, {"u12", "u16"}, {"u13", "u16"},
        {"u14", "u16"}, {"u15", "u16"}, {"u18", "u32"}, {"u19", "u32"}, {"u21", "u32"},
        {"u24", "u32"}, {"u29", "u32"}, {"b", "u1"},
    };
    return names;
}

// J1939 strings and domains, mapped with the length of the signal.
struct NonNumericType
{
    quint16 datatype;
    const char *typeText;
};

const NonNumericType nonNumericTypes[] = {
    {121, "CORE_DTYPE_STRING_ASTERIKS"},
    {120, "CORE_DTYPE_STRING_NULL"},
    {10, "CORE_DTYPE_NON_NUMERIC"},
    {15, "CORE_DTYPE_NON_NUMERIC"},
};

const NonNumericType *nonNumeric(quint16 datatype)
{
    for (const auto &type : nonNumericTypes) {
        if (type.datatype == datatype)
            return &type;
    }
    return nullptr;
}

} // namespace

PgnDataTypes::Table PgnDataTypes::managedTable(quint16 datatype, bool rawCan)
{
    for (const auto &row : typeTables) {
        if (row.datatype == datatype)
            return row.rawCanOnly && !rawCan ? NoTable : row.table;
    }
    return NoTable;
}

quint64 PgnDataTypes::notAvailable(quint16 datatype)
{
    const quint32 bits = COHelper::getDataLengthBits(datatype);
    if (managedTable(datatype, false) == U64 || bits >= 64)
        return ~quint64(0);
    return (quint64(1) << bits) - 1;
}

QString PgnDataTypes::tableName(Table table)
{
    return QString::fromLatin1(tableRows[table].name);
}

QString PgnDataTypes::cType(Table table)
{
    return QString::fromLatin1(tableRows[table].cType);
}

QString PgnDataTypes::literalSuffix(Table table)
{
    return QString::fromLatin1(tableRows[table].suffix);
}

bool PgnDataTypes::isSigned(Table table)
{
    return tableRows[table].isSigned;
}

bool PgnDataTypes::isNumeric(quint16 datatype)
{
    return nonNumeric(datatype) == nullptr;
}

QString PgnDataTypes::mappingShortName(quint16 datatype)
{
    const QString shortName = COHelper::index2DataTypeShortString(datatype).toLower();
    return containerNames().value(shortName, shortName);
}

QString PgnDataTypes::mappingTypeText(quint16 datatype, bool rawCan)
{
    const NonNumericType *special = rawCan ? nullptr : nonNumeric(datatype);
    if (special)
        return QString::fromLatin1(special->typeText);
    return QStringLiteral("CORE_DTYPE_") + mappingShortName(datatype).toUpper();
}

QString PgnDataTypes::referenceTableName(quint16 datatype, bool rawCan)
{
    const Table table = managedTable(datatype, rawCan);
    if (table != NoTable)
        return tableName(table);
    const QString shortName = mappingShortName(datatype);
    static const QHash<QString, QString> byteSized = {{"u1", "u8"}, {"u2", "u8"}, {"u3", "u8"}, {"u4", "u8"},
                                                      {"u5", "u8"}, {"u6", "u8"}, {"u7", "u8"}};
    return byteSized.value(shortName, shortName);
}
