#include "objdictmodel.h"

#include "store/objectdatabase.h"

#include <algorithm>

ObjDictModel::ObjDictModel(ObjectDataBase *store)
    : database(store)
{
    if (!database)
        return;
    for (const quint8 line : database->getLines()) {
        if (line >= 32)
            continue;
        storeLines << line;
        auto &objects = dictionary[line];
        const QMap<quint16, INDEX_DATA_T> records = database->getLineObjects(line);
        for (auto it = records.constBegin(); it != records.constEnd(); ++it)
            objects[it.key()].data = it.value();
        const QMap<quint32, SUBINDEX_DATA_T> subs = database->getLineSubIndices(line);
        for (auto it = subs.constBegin(); it != subs.constEnd(); ++it) {
            const auto object = objects.find(quint16(it.key() >> 8));
            if (object != objects.end())
                object->subs.insert(quint8(it.key() & 0xFF), it.value());
        }
    }
}

QList<quint8> ObjDictModel::linesWithObjects(int minimumObjects) const
{
    QList<quint8> result;
    for (const quint8 line : storeLines) {
        if (objectCount(line) >= minimumObjects)
            result << line;
    }
    std::sort(result.begin(), result.end());
    return result;
}

const QMap<quint16, ObjDictObject> &ObjDictModel::objects(quint8 line) const
{
    static const QMap<quint16, ObjDictObject> none;
    const auto found = dictionary.constFind(line);
    return found == dictionary.constEnd() ? none : found.value();
}

QList<quint16> ObjDictModel::indices(quint8 line, quint16 from, quint16 to) const
{
    QList<quint16> result;
    const auto &all = objects(line);
    for (auto it = all.lowerBound(from); it != all.constEnd() && it.key() <= to; ++it)
        result << it.key();
    return result;
}

bool ObjDictModel::exists(quint8 line, quint16 index) const
{
    return objects(line).contains(index);
}

const SUBINDEX_DATA_T *ObjDictModel::sub(quint8 line, quint16 index, quint8 subIndex) const
{
    const auto &all = objects(line);
    const auto object = all.constFind(index);
    if (object == all.constEnd())
        return nullptr;
    const auto found = object->subs.constFind(subIndex);
    return found == object->subs.constEnd() ? nullptr : &found.value();
}

QList<quint8> ObjDictModel::subIndices(quint8 line, quint16 index, quint8 from) const
{
    QList<quint8> result;
    const auto &all = objects(line);
    const auto object = all.constFind(index);
    if (object == all.constEnd())
        return result;
    for (auto it = object->subs.lowerBound(from); it != object->subs.constEnd(); ++it)
        result << it.key();
    return result;
}

int ObjDictModel::subCount(quint8 line, quint16 index, quint8 from) const
{
    return subIndices(line, index, from).size();
}

QString ObjDictModel::setting(const QString &key) const
{
    return database ? database->getGeneralSetting(key) : QString();
}

bool ObjDictModel::settingExists(const QString &key) const
{
    return database && database->generalSettingExists(key);
}

qint64 ObjDictModel::number(const QString &key) const
{
    return setting(key).trimmed().toLongLong();
}

QString ObjDictModel::lineSetting(const QString &key, quint8 line) const
{
    return database ? database->getLineGeneralSetting(key, line) : QString();
}

qint64 ObjDictModel::lineNumber(const QString &key, quint8 line) const
{
    return lineSetting(key, line).trimmed().toLongLong();
}

int ObjDictModel::subIndexCount(quint8 line) const
{
    int count = 0;
    for (const ObjDictObject &object : objects(line))
        count += int(object.subs.size());
    return count;
}
