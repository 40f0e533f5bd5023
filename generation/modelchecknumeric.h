#pragma once

#include <QString>

class ModelCheckOutput;
class ObjectDataBase;

// Whether texts that stand for numbers of a CANopen data type read as such numbers, for default values
// and for the settings that hold numbers.
class ModelCheckNumeric
{
public:
    // An empty text, and a type that is not checked, pass.
    static bool passes(quint16 dataType, const QString &text);
    // Every comma-separated piece of the numeric settings of the project; one error per failing piece.
    static void checkSettings(ObjectDataBase *database, ModelCheckOutput &output);
};
