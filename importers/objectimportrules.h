#pragma once

#include <QString>

class ObjectDataBase;

// What the import dialog does to each object it brings from the scratch line into the project: replace
// the target as a whole, give its entries the chosen implementation, cut sub-indices, set the count of
// sub-index 0 and wipe the marks of the source.
class ObjectImportRules
{
public:
    enum class Implementation
    {
        Managed,
        Application,
        KeepSource
    };

    // False when the source lacks the object; the target is then left alone.
    static bool importObject(ObjectDataBase &from, quint8 fromLine, quint16 index, ObjectDataBase &to,
                             quint8 toLine, quint16 target, Implementation implementation,
                             int firstCutSubIndex);
    // The form of a name in a C identifier: blanks to "_", no "-", lower case.
    static QString mangle(const QString &name);
};
