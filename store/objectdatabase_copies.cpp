// Copies of objects inside a store and between stores, the wizard hand-over and the clipboard line.

#include "objectdatabase.h"

#include <QDebug>

namespace {

struct ObjectCopy
{
    INDEX_DATA_T object;
    QList<QPair<quint8, SUBINDEX_DATA_T>> subIndices;
};

bool readObject(ObjectDataBase &store, quint8 line, quint16 index, ObjectCopy &copy)
{
    if (!store.getIndex(line, index, copy.object))
        return false;
    const auto subIndices = store.getSubIndices(line, index);
    for (const quint8 subindex : subIndices) {
        SUBINDEX_DATA_T data;
        if (store.getSubIndex(line, index, subindex, data))
            copy.subIndices.append({subindex, data});
    }
    return true;
}

} // namespace

bool ObjectDataBase::copyIndex(quint8 fromLine, quint16 fromIndex, quint8 toLine, quint16 toIndex)
{
    if (updatesBlocked)
        return false;
    ObjectCopy copy;
    if (!readObject(*this, fromLine, fromIndex, copy))
        return false;
    nameCache.clear();
    const bool wasBlocked = blockSignals(true);
    removeIndex(toLine, toIndex, true);
    bool ok = addIndex(toLine, toIndex, copy.object);
    for (const auto &[subindex, data] : std::as_const(copy.subIndices))
        ok = addSubIndex(toLine, toIndex, subindex, data) && ok;
    blockSignals(wasBlocked);
    emit databaseWriteExecuted();
    for (const auto &entry : std::as_const(copy.subIndices))
        notify(ChangeSet{SubIndexChanged, toIndex, entry.first, toLine});
    return ok;
}

bool ObjectDataBase::copyIndexFrom(ObjectDataBase &other, quint8 fromLine, quint16 fromIndex, quint8 toLine,
                                   quint16 toIndex, bool withSubIndices)
{
    if (updatesBlocked)
        return false;
    ObjectCopy copy;
    if (!readObject(other, fromLine, fromIndex, copy))
        return false;
    bool ok = addIndex(toLine, toIndex, copy.object);
    QList<quint8> copied;
    if (withSubIndices) {
        for (const auto &[subindex, data] : std::as_const(copy.subIndices)) {
            ok = addSubIndex(toLine, toIndex, subindex, data) && ok;
            copied << subindex;
        }
    }
    const auto existing = getSubIndices(toLine, toIndex);
    for (const quint8 subindex : existing) {
        if (!copied.contains(subindex))
            removeSubIndex(toLine, toIndex, subindex, true);
    }
    return ok;
}

bool ObjectDataBase::mergeIndexFrom(ObjectDataBase &other, quint8 fromLine, quint16 fromIndex, quint8 toLine,
                                    quint16 toIndex)
{
    if (updatesBlocked)
        return false;
    ObjectCopy copy;
    if (!readObject(other, fromLine, fromIndex, copy))
        return false;
    INDEX_DATA_T target;
    if (getIndex(toLine, toIndex, target))
        copy.object.description = target.description;
    bool ok = addIndex(toLine, toIndex, copy.object);
    QList<quint8> merged;
    for (auto [subindex, data] : std::as_const(copy.subIndices)) {
        SUBINDEX_DATA_T current;
        if (getSubIndex(toLine, toIndex, subindex, current) && current.changedbyuser) {
            data.defaultvalue = current.defaultvalue;
            data.description = current.description;
            data.changedbyuser = current.changedbyuser;
        }
        ok = addSubIndex(toLine, toIndex, subindex, data) && ok;
        merged << subindex;
    }
    const auto existing = getSubIndices(toLine, toIndex);
    for (const quint8 subindex : existing) {
        if (!merged.contains(subindex))
            removeSubIndex(toLine, toIndex, subindex, true);
    }
    return ok;
}

bool ObjectDataBase::applyWizardObjects(ObjectDataBase &other, quint8 line)
{
    if (updatesBlocked)
        return false;
    const QList<quint16> own = getIndices(line, 0x1000);
    const QList<quint16> wizard = other.getIndices(line, 0x1000);

    auto deviceClass = [&](quint16 index) {
        INDEX_DATA_T object;
        return getIndex(line, index, object) ? object.device_class : QString();
    };
    auto goes = [&](quint16 index) {
        if (index >= 0x1400 && index <= 0x17FF)
            return deviceClass(index) == QLatin1String("rpdo");
        if (index >= 0x1800 && index <= 0x1BFF)
            return !deviceClass(index).isEmpty();
        if ((index >= 0x1002 && index <= 0x10FF) || index >= 0x6000) {
            SUBINDEX_DATA_T sub;
            return getSubIndex(line, index, 0, sub) && sub.wizardsource == 454 && !wizard.contains(index);
        }
        if (index >= 0x2000 && index <= 0x5FFF)
            return false;
        return !wizard.contains(index);
    };

    for (const quint16 index : own) {
        if (goes(index))
            removeIndex(line, index, false);
    }
    bool ok = true;
    for (const quint16 index : wizard) {
        ok = (own.contains(index) ? mergeIndexFrom(other, line, index, line, index)
                                  : copyIndexFrom(other, line, index, line, index, true)) &&
             ok;
    }
    const auto keys = other.getEnergyBusKeys();
    for (const auto &key : keys)
        setEnergyBusSetting(key, other.getEnergyBusSetting(key));
    return ok;
}

bool ObjectDataBase::copySubIndex(quint8 line, quint16 index, quint8 fromSub, quint8 toSub)
{
    SUBINDEX_DATA_T data;
    return getSubIndex(line, index, fromSub, data) && addSubIndex(line, index, toSub, data);
}

bool ObjectDataBase::copySubIndexFrom(ObjectDataBase &other, quint8 fromLine, quint16 fromIndex, quint8 fromSub,
                                      quint8 toLine, quint16 toIndex, quint8 toSub)
{
    SUBINDEX_DATA_T data;
    return other.getSubIndex(fromLine, fromIndex, fromSub, data) && addSubIndex(toLine, toIndex, toSub, data);
}

bool ObjectDataBase::copyToClipboard(quint8 line, quint16 index)
{
    removeNode(ClipboardLine);
    addNode(ClipboardLine, NODE_DATA_T());
    return copyIndex(line, index, ClipboardLine, ClipboardIndex);
}

bool ObjectDataBase::pasteFromClipboard(quint8 line, quint16 index)
{
    if (!indexExists(ClipboardLine, ClipboardIndex))
        return false;
    return copyIndex(ClipboardLine, ClipboardIndex, line, index);
}

bool ObjectDataBase::getClipboardIndex(INDEX_DATA_T &data)
{
    return getIndex(ClipboardLine, ClipboardIndex, data);
}
