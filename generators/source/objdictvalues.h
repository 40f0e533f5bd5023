#pragma once

#include <QString>

// The numeric arrays of the dictionary sources, one per C type, and how a value becomes a row of them.
namespace ObjDictValues {

enum Array : int
{
    U8,
    U16,
    U24,
    U32,
    U40,
    U48,
    U64,
    I8,
    I16,
    I24,
    I32,
    R32,
    ArrayCount,
    NoArray = -1
};

// "u8", "i16", ... as the array names carry it.
QString suffix(int array);
// "UNSIGNED8", ... as the declarations carry it.
QString cType(int array);
// The array of a CANopen data type; NoArray for strings, domains and types without a C type.
int arrayOf(quint16 dataType);
// Whether a limit of the array's type is checked by the stack.
bool hasLimits(int array);

// How a text is read: as default value (numbers of any base) or as limit (signed types in decimal).
enum class Reading
{
    Default,
    Limit
};
// The row of a value in a managed or a constant array; a text that is no number gives 0. Managed reals
// carry 7 digits, constant ones 8.
QString row(int array, const QString &text, Reading reading, bool constant);

} // namespace ObjDictValues
