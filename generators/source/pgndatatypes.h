#pragma once

#include <QString>

// How the J1939 and raw CAN blocks name, size and store the data types of signals.
class PgnDataTypes
{
public:
    // The managed variable tables, in the order in which the source defines them.
    enum Table
    {
        U8,
        I8,
        U16,
        I16,
        U32,
        I32,
        U64,
        TableCount,
        NoTable = TableCount
    };

    // The table that holds managed values of the type; NoTable for a type without one. Raw CAN
    // signals may also be signed.
    static Table managedTable(quint16 datatype, bool rawCan);
    // All bits of the type's width set: what an SPN that no one has written reads as.
    static quint64 notAvailable(quint16 datatype);
    // "u8", "i16", ...; the C type "UNSIGNED8", ...; the suffix of a literal, "u" or "UL".
    static QString tableName(Table table);
    static QString cType(Table table);
    static QString literalSuffix(Table table);
    static bool isSigned(Table table);

    // Strings and domains are mapped with their own length and no address operator.
    static bool isNumeric(quint16 datatype);
    // The short name that the stack's type constants use: the width of the C container for the odd
    // widths above 8 bits, "u1" for a boolean.
    static QString mappingShortName(quint16 datatype);
    // "CORE_DTYPE_U8" and the like; strings and domains of a J1939 row have names of their own.
    static QString mappingTypeText(quint16 datatype, bool rawCan);
    // The managed variable table whose name a reference to a signal of the type carries.
    static QString referenceTableName(quint16 datatype, bool rawCan);
};
