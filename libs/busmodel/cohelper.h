#pragma once

#include <QString>

// Conversions around CANopen and J1939 data types and object codes.
class COHelper
{
public:
    // Length of a value of the type in bits; 0 for strings, domains and unknown types.
    static quint32 getDataLengthBits(quint16 dataType);
    // Standard name, such as "UNSIGNED8"; empty for an unknown type.
    static QString index2DataTypeString(quint16 dataType);
    // Short name, such as "u8", "i16", "b" for BOOLEAN, "u3" for 3 bits; empty for an unknown type.
    static QString index2DataTypeShortString(quint16 dataType);
    // Type code of a standard name, a short name or a number, in any case ("UNSIGNED8", "u8", "u8s", "0x5");
    // 0 for a text that names no type.
    static quint16 mapDataTypeString(const QString &text);
    // The natural range of a type as decimal texts; both empty for types without a numeric range.
    static void getDefaultLimits(quint16 dataType, QString &low, QString &high);

    // Display texts of an object code (7 "VARIABLE", 8 "ARRAY", 9 "RECORD", ...), a PDO mapping value
    // and an implementation type; empty for values without a name.
    static QString objectCode2String(quint32 objectCode);
    static QString pdoMapping2String(unsigned int mapping);
    static QString implementation2String(quint8 implementation);

    // Object code of a name ("VAR", "VARIABLE", "ARRAY", "RECORD", ...) or a number; 7 for anything else.
    static quint32 string2objectCode(const QString &text);
    // One of "const", "ro", "wo", "rw", "rwr", "rww" for the usual spellings of an access type; "ro" for
    // a text that names none, so that an unknown access never grants writing.
    static QString normalizeAccessType(const QString &text);
    // 0 "mandatory", 1 "optional", 2 "conditional"; 1 for anything else.
    static quint8 convertCategory(const QString &text);
};
