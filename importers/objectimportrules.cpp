#include "objectimportrules.h"

#include "store/objectdatabase.h"

#include <QMap>

namespace {

constexpr quint32 varObject = 7;
constexpr quint32 arrayObject = 8;
constexpr quint32 recordObject = 9;
constexpr quint16 visibleString = 9;
constexpr quint16 octetString = 10;
constexpr quint16 domain = 15;
constexpr quint16 utf8String = 124;

using Entries = QMap<quint8, SUBINDEX_DATA_T>;

bool isComposite(quint32 objectType)
{
    return objectType == arrayObject || objectType == recordObject;
}

// What the managed rule makes of an entry.
enum class Managed
{
    Unchanged,
    Constant,
    ApplicationVariable,
    StackVariable
};

Managed managedForm(quint32 objectType, quint8 subIndex, const SUBINDEX_DATA_T &sub)
{
    if (isComposite(objectType)) {
        if (subIndex == 0)
            return Managed::Unchanged;
        return sub.datatype == domain ? Managed::ApplicationVariable : Managed::StackVariable;
    }
    if (objectType != varObject)
        return Managed::Unchanged;
    if (sub.datatype == visibleString || sub.datatype == utf8String)
        return sub.accesstype == QLatin1String("ro") ? Managed::Constant : Managed::ApplicationVariable;
    if (sub.datatype == octetString || sub.datatype == domain)
        return Managed::ApplicationVariable;
    return Managed::StackVariable;
}

void applyManaged(quint32 objectType, Entries &entries)
{
    for (auto it = entries.begin(); it != entries.end(); ++it) {
        SUBINDEX_DATA_T &sub = it.value();
        switch (managedForm(objectType, it.key(), sub)) {
        case Managed::Unchanged:
            break;
        case Managed::Constant:
            sub.implementation = 1;
            break;
        case Managed::ApplicationVariable:
            sub.implementation = 2;
            sub.varname = ObjectImportRules::mangle(sub.name);
            break;
        case Managed::StackVariable:
            sub.implementation = 0;
            sub.varname.clear();
            break;
        }
    }
}

void applyApplication(quint32 objectType, const QString &objectName, Entries &entries)
{
    for (auto it = entries.begin(); it != entries.end(); ++it) {
        if (isComposite(objectType) && it.key() == 0)
            continue;
        SUBINDEX_DATA_T &sub = it.value();
        sub.implementation = 2;
        if (!sub.varname.isEmpty())
            continue;
        if (objectType == varObject)
            sub.varname = ObjectImportRules::mangle(sub.name);
        else if (objectType == arrayObject)
            sub.varname = ObjectImportRules::mangle(objectName) + QStringLiteral("[%1]").arg(it.key() - 1);
        else if (objectType == recordObject)
            sub.varname = ObjectImportRules::mangle(objectName) + '.' + ObjectImportRules::mangle(sub.name);
    }
}

// Communication objects whose count means something else than the highest sub-index.
bool keepsItsCount(quint16 index)
{
    return index == 0x1003 || (index >= 0x1381 && index <= 0x13FD) || index == 0x13FF ||
           (index >= 0x1600 && index <= 0x17FF) || (index >= 0x1A00 && index <= 0x1BFF);
}

void correctCount(quint16 index, quint32 objectType, Entries &entries)
{
    if (!isComposite(objectType) || entries.isEmpty() || keepsItsCount(index) || !entries.contains(0))
        return;
    SUBINDEX_DATA_T &count = entries[0];
    count.defaultvalue = QString::number(entries.lastKey());
    if (count.implementation != 3)
        count.implementation = 1;
}

} // namespace

QString ObjectImportRules::mangle(const QString &name)
{
    return name.simplified().replace(' ', '_').remove('-').toLower();
}

bool ObjectImportRules::importObject(ObjectDataBase &from, quint8 fromLine, quint16 index, ObjectDataBase &to,
                                     quint8 toLine, quint16 target, Implementation implementation,
                                     int firstCutSubIndex)
{
    if (!from.indexExists(fromLine, index))
        return false;
    to.removeIndex(toLine, target);
    if (!to.copyIndexFrom(from, fromLine, index, toLine, target, true))
        return false;
    INDEX_DATA_T object;
    to.getIndex(toLine, target, object);
    Entries entries;
    const auto subIndices = to.getSubIndices(toLine, target);
    for (const quint8 subIndex : subIndices)
        to.getSubIndex(toLine, target, subIndex, entries[subIndex]);

    if (implementation == Implementation::Managed)
        applyManaged(object.objecttype, entries);
    else if (implementation == Implementation::Application)
        applyApplication(object.objecttype, object.name, entries);
    for (const quint8 subIndex : subIndices) {
        if (subIndex >= firstCutSubIndex) {
            to.removeSubIndex(toLine, target, subIndex);
            entries.remove(subIndex);
        }
    }
    correctCount(target, object.objecttype, entries);

    object.device_class.clear();
    object.fwsupported = false;
    to.addIndex(toLine, target, object);
    for (auto it = entries.begin(); it != entries.end(); ++it) {
        it->changedbyuser = false;
        it->wizardsource = 0;
        to.addSubIndex(toLine, target, it.key(), it.value());
    }
    return true;
}
