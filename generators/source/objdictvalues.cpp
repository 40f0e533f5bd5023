#include "objdictvalues.h"

#include "generation/generatortext.h"

#include <QHash>

namespace ObjDictValues {

namespace {

enum class Form
{
    Cast,
    Large,
    Real
};

struct ArrayInfo
{
    const char *suffix;
    const char *cType;
    Form form;
    bool isSigned;
    bool wide;
    // The suffix of a cast value; for large values the data type of the macro.
    const char *unit;
    quint16 literalType;
    bool limits;
};

constexpr ArrayInfo arrays[ArrayCount] = {
    {"u8", "UNSIGNED8", Form::Cast, false, false, "u", 0, true},
    {"u16", "UNSIGNED16", Form::Cast, false, false, "u", 0, true},
    {"u24", "UNSIGNED24", Form::Large, false, false, "", 22, false},
    {"u32", "UNSIGNED32", Form::Cast, false, false, "UL", 0, true},
    {"u40", "UNSIGNED40", Form::Large, false, true, "", 24, false},
    {"u48", "UNSIGNED48", Form::Large, false, true, "", 25, false},
    {"u64", "UNSIGNED64", Form::Large, false, true, "", 27, false},
    {"i8", "INTEGER8", Form::Cast, true, false, "", 0, true},
    {"i16", "INTEGER16", Form::Cast, true, false, "", 0, true},
    {"i24", "INTEGER24", Form::Large, true, false, "", 16, true},
    {"i32", "INTEGER32", Form::Cast, true, false, "L", 0, true},
    {"r32", "REAL32", Form::Real, true, false, "f", 0, true},
};

bool valid(int array)
{
    return array >= 0 && array < ArrayCount;
}

} // namespace

QString suffix(int array)
{
    return valid(array) ? QString::fromLatin1(arrays[array].suffix) : QString();
}

QString cType(int array)
{
    return valid(array) ? QString::fromLatin1(arrays[array].cType) : QString();
}

int arrayOf(quint16 dataType)
{
    static const QHash<quint16, int> byType = {
        {1, U8},   {5, U8},  {100, U8}, {101, U8}, {102, U8}, {103, U8}, {104, U8},
        {105, U8}, {6, U16}, {22, U24}, {7, U32},  {24, U40}, {12, U48}, {25, U48},
        {27, U64}, {2, I8},  {3, I16},  {16, I24}, {4, I32},  {8, R32},
    };
    return byType.value(dataType, NoArray);
}

bool hasLimits(int array)
{
    return valid(array) && arrays[array].limits;
}

QString row(int array, const QString &text, Reading reading, bool constant)
{
    if (!valid(array))
        return QString();
    const ArrayInfo &info = arrays[array];
    const QString value = text.trimmed();
    const int base = info.isSigned && reading == Reading::Limit ? 10 : 0;
    bool ok = false;
    if (info.form == Form::Real) {
        const float number = value.toFloat(&ok);
        return QStringLiteral("\t(REAL32)%1f").arg(double(ok ? number : 0.0f), 0, 'f', constant ? 8 : 7);
    }
    quint64 unsignedValue = 0;
    qint64 signedValue = 0;
    if (info.isSigned) {
        signedValue = value.toInt(&ok, base);
        if (!ok)
            signedValue = 0;
        unsignedValue = quint64(signedValue);
    } else if (info.wide) {
        unsignedValue = value.toULongLong(&ok, base);
        if (!ok)
            unsignedValue = 0;
    } else {
        unsignedValue = value.toUInt(&ok, base);
        if (!ok)
            unsignedValue = 0;
    }
    if (info.form == Form::Large) {
        const QString literal =
            GeneratorText::largeValueLiteral(info.literalType, unsignedValue, signedValue);
        return array == U24 ? QLatin1Char('\t') + literal : literal;
    }
    const QString number = info.isSigned ? QString::number(signedValue) : QString::number(unsignedValue);
    return QStringLiteral("\t(%1)%2%3").arg(QLatin1String(info.cType), number, QLatin1String(info.unit));
}

} // namespace ObjDictValues
