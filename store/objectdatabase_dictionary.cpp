// Whole-line readers for generators that walk a line's dictionary many times over.

#include "objectdatabase.h"

#include <QSqlQuery>

QMap<quint16, INDEX_DATA_T> ObjectDataBase::getLineObjects(quint8 line)
{
    QMap<quint16, INDEX_DATA_T> objects;
    QSqlQuery query(database);
    query.setForwardOnly(true);
    if (!execQuery(query,
                   QStringLiteral("select objectindex, name, datatype, objecttype, description, category, "
                                  "device_class, fwsupported, metadata from Objects%1")
                       .arg(line)))
        return objects;
    while (query.next()) {
        INDEX_DATA_T data;
        data.name = getString(query.value(1).toInt());
        data.datatype = quint16(query.value(2).toUInt());
        data.objecttype = query.value(3).toUInt();
        data.description = getString(query.value(4).toInt());
        data.category = quint8(query.value(5).toUInt());
        data.device_class = getString(query.value(6).toInt());
        data.fwsupported = query.value(7).toInt() != 0;
        data.metadata = readMetadata(query.value(8));
        objects.insert(quint16(query.value(0).toUInt()), data);
    }
    return objects;
}

QMap<quint32, SUBINDEX_DATA_T> ObjectDataBase::getLineSubIndices(quint8 line)
{
    // The sub-index cache holds whole lines; a line that the caller has not cached is read through it
    // once and the cache is left as it was.
    const bool cached = subCache.contains(line);
    if (!cached)
        cacheAllSubs(line);
    QMap<quint32, SUBINDEX_DATA_T> subIndices;
    const auto &lineCache = subCache.value(line);
    for (auto it = lineCache.constBegin(); it != lineCache.constEnd(); ++it)
        subIndices.insert(it.key(), it.value());
    if (!cached)
        subCache.remove(line);
    return subIndices;
}
