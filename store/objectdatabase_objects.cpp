// Objects and sub-indices of the object dictionary, their metadata and the read caches.

#include "objectdatabase.h"

#include <QDataStream>
#include <QDebug>
#include <QIODevice>
#include <QMutexLocker>
#include <QRegularExpression>
#include <QSqlError>
#include <QSqlQuery>

namespace {

QString escaped(QString text)
{
    return text.replace('\'', QStringLiteral("''"));
}

int flag(bool value)
{
    return value ? 1 : 0;
}

quint32 subKey(quint16 index, quint8 subindex)
{
    return (quint32(index) << 8) | subindex;
}

quint32 nameKey(quint8 line, quint16 index, quint8 subindex)
{
    return (quint32(index) << 16) | (quint32(line) << 8) | subindex;
}

const char *const subIndexColumns =
    "name, datatype, accesstype, defaultvalue, currentvalue, pdomapping, lowlimit, uplimit, size, defaultineds, "
    "limitineds, refuseread, refusewrite, dcfcomponent, cyclicread, allowedaccesstypes, implementation, "
    "description, varname, category, writedefaulttoeds, changedbyuser, wizardsource, sharedlines, denotation, "
    "managedbymrn, signalid, nvstorage, metadata";

} // namespace

MetadataMap ObjectDataBase::readMetadata(const QVariant &value) const
{
    MetadataMap metadata;
    // Rows written without metadata hold NULL or the number 0; only a blob carries a map.
    if (value.typeId() != QMetaType::QByteArray)
        return metadata;
    const QByteArray bytes = value.toByteArray();
    if (bytes.isEmpty())
        return metadata;
    QDataStream stream(bytes);
    stream.setVersion(QDataStream::Qt_5_6);
    stream >> metadata;
    if (stream.status() != QDataStream::Ok)
        return MetadataMap();
    return metadata;
}

bool ObjectDataBase::writeMetadata(quint8 line, quint16 index, int subindex, const MetadataMap &metadata)
{
    QByteArray bytes;
    QDataStream stream(&bytes, QIODevice::WriteOnly);
    stream.setVersion(QDataStream::Qt_5_6);
    stream << metadata;

    QMutexLocker locker(&metadataMutex);
    QSqlQuery query(database);
    if (subindex < 0) {
        query.prepare(QStringLiteral("update Objects%1 SET metadata = :metadata where objectindex = :objectindex")
                          .arg(line));
    } else {
        query.prepare(QStringLiteral("update SubObjects%1 SET metadata = :metadata where objectindex = "
                                     ":objectindex and subindex = :subindex")
                          .arg(line));
        query.bindValue(QStringLiteral(":subindex"), subindex);
    }
    query.bindValue(QStringLiteral(":metadata"), bytes);
    query.bindValue(QStringLiteral(":objectindex"), index);
    if (!execQuery(query, QString())) {
        qDebug() << Q_FUNC_INFO << query.lastError().text();
        return false;
    }
    return true;
}

bool ObjectDataBase::addIndex(quint8 line, quint16 index, const INDEX_DATA_T &data)
{
    if (updatesBlocked)
        return false;
    const qint32 description = getStringId(data.description);
    const qint32 name = getStringId(data.name);
    const qint32 deviceClass = getStringId(data.device_class);
    QSqlQuery query(database);
    const QString statement =
        indexExists(line, index)
            ? QStringLiteral("update Objects%1 set name = %3, datatype = %4, objecttype = %5, description = %6, "
                             "category = %7, device_class = %8, fwsupported = %9, metadata = NULL "
                             "where objectindex = %2")
                  .arg(line)
                  .arg(index)
                  .arg(name)
                  .arg(data.datatype)
                  .arg(data.objecttype)
                  .arg(description)
                  .arg(data.category)
                  .arg(deviceClass)
                  .arg(flag(data.fwsupported))
            : QStringLiteral("insert into Objects%1 values(%2,%3,%4,%5,%6,%7,%8,%9,NULL)")
                  .arg(line)
                  .arg(index)
                  .arg(name)
                  .arg(data.datatype)
                  .arg(data.objecttype)
                  .arg(description)
                  .arg(data.category)
                  .arg(deviceClass)
                  .arg(flag(data.fwsupported));
    if (!execQuery(query, statement)) {
        qDebug() << Q_FUNC_INFO << statement << query.lastError().text();
        return false;
    }
    if (!data.metadata.isEmpty())
        writeMetadata(line, index, -1, data.metadata);
    notify(ChangeSet{IndexChanged, index, 0, line});
    return true;
}

void ObjectDataBase::deleteConnections(quint8 line, quint16 index, int subindex)
{
    QSqlQuery query(database);
    if (subindex < 0) {
        execQuery(query, QStringLiteral("delete from Connections where (prodnode = %1 and prodindex = %2) or "
                                        "(connode = %1 and conindex = %2)")
                             .arg(line)
                             .arg(index));
        return;
    }
    execQuery(query, QStringLiteral("delete from Connections where prodnode = %1 and prodindex = %2 and prodsub = %3")
                         .arg(line)
                         .arg(index)
                         .arg(subindex));
    removeConsumerConnection(line, index, quint8(subindex));
}

bool ObjectDataBase::removeConsumerConnection(quint8 line, quint16 index, quint8 subindex)
{
    QSqlQuery query(database);
    return execQuery(query, QStringLiteral("delete from Connections where connode = %1 and conindex = %2 and consub = %3")
                                .arg(line)
                                .arg(index)
                                .arg(subindex));
}

bool ObjectDataBase::removeIndex(quint8 line, quint16 index, bool keepConnections)
{
    if (updatesBlocked)
        return false;
    QSqlQuery query(database);
    const bool ok =
        execQuery(query, QStringLiteral("delete from SubObjects%1 where objectindex = %2").arg(line).arg(index)) &&
        execQuery(query, QStringLiteral("delete from Objects%1 where objectindex = %2").arg(line).arg(index));
    if (!ok) {
        qDebug() << Q_FUNC_INFO << query.lastQuery() << query.lastError().text();
        return false;
    }
    if (!keepConnections)
        deleteConnections(line, index, -1);
    notify(ChangeSet{IndexRemoved, index, 0, line});
    return true;
}

bool ObjectDataBase::getIndex(quint8 line, quint16 index, INDEX_DATA_T &data)
{
    bool found = false;
    readPrepared(QStringLiteral("select name, datatype, objecttype, description, category, device_class, "
                                "fwsupported, metadata from Objects%1 where objectindex = ?")
                     .arg(line),
                 {index}, [&](const QSqlQuery &row) {
                     data.name = getString(row.value(0).toInt());
                     data.datatype = quint16(row.value(1).toUInt());
                     data.objecttype = row.value(2).toUInt();
                     data.description = getString(row.value(3).toInt());
                     data.category = quint8(row.value(4).toUInt());
                     data.device_class = getString(row.value(5).toInt());
                     data.fwsupported = row.value(6).toInt() != 0;
                     data.metadata = readMetadata(row.value(7));
                     found = true;
                 });
    return found;
}

bool ObjectDataBase::indexExists(quint8 line, quint16 index)
{
    bool found = false;
    readPrepared(QStringLiteral("select objectindex from Objects%1 where objectindex = ?").arg(line), {index},
                 [&](const QSqlQuery &) { found = true; });
    return found;
}

QList<quint16> ObjectDataBase::getIndices(quint8 line, quint16 from, quint16 to)
{
    QList<quint16> indices;
    QSqlQuery query(database);
    if (execQuery(query, QStringLiteral("select objectindex from Objects%1 where objectindex >= %2 and objectindex <= "
                                        "%3 order by objectindex")
                             .arg(line)
                             .arg(from)
                             .arg(to))) {
        while (query.next())
            indices << quint16(query.value(0).toUInt());
    }
    return indices;
}

QString ObjectDataBase::getIndexName(quint8 line, quint16 index)
{
    QSqlQuery query(database);
    if (!execQuery(query, QStringLiteral("select name from Objects%1 where objectindex = %2").arg(line).arg(index)) ||
        !query.next())
        return QString();
    return getString(query.value(0).toInt());
}

bool ObjectDataBase::setIndexName(quint8 line, quint16 index, const QString &name)
{
    if (updatesBlocked)
        return false;
    QSqlQuery query(database);
    return execQuery(query, QStringLiteral("update Objects%1 set name = %2 where objectindex = %3")
                                .arg(line)
                                .arg(getStringId(name))
                                .arg(index));
}

QList<quint16> ObjectDataBase::findIndices(quint8 line, const QString &column, const QString &value)
{
    QList<quint16> indices;
    QSqlQuery query(database);
    if (execQuery(query,
                  QStringLiteral("select objectindex from Objects%1 where %2 = %3").arg(line).arg(column, value))) {
        while (query.next())
            indices << quint16(query.value(0).toUInt());
    }
    return indices;
}

quint16 ObjectDataBase::firstFreeIndex(quint8 line, quint16 from)
{
    const auto used = getIndices(line, from);
    quint32 candidate = from;
    for (const quint16 index : used) {
        if (index != candidate)
            break;
        ++candidate;
    }
    return candidate >= 0xFFFF ? 0xFFFF : quint16(candidate);
}

bool ObjectDataBase::insertSubIndexRow(quint8 line, quint16 index, quint8 subindex, const SUBINDEX_DATA_T &data)
{
    const qint32 description = getStringId(data.description);
    const qint32 name = getStringId(data.name);
    const qint32 denotation = getStringId(data.denotation);
    const QStringList values{
        QString::number(index),
        QString::number(subindex),
        QString::number(name),
        QString::number(data.datatype),
        '\'' + escaped(data.accesstype) + '\'',
        '\'' + escaped(data.defaultvalue) + '\'',
        '\'' + escaped(data.currentvalue) + '\'',
        QString::number(data.pdomapping.toUInt()),
        '\'' + escaped(data.lowlimit) + '\'',
        '\'' + escaped(data.uplimit) + '\'',
        QString::number(data.size),
        QString::number(flag(data.defaultineds)),
        QString::number(flag(data.limitineds)),
        QString::number(flag(data.refuseread)),
        QString::number(flag(data.refusewrite)),
        '\'' + escaped(data.allowedaccesstypes) + '\'',
        QString::number(data.implementation),
        '\'' + escaped(data.varname) + '\'',
        QString::number(description),
        QString::number(data.category),
        QString::number(data.writedefaulttoeds),
        QString::number(flag(data.cyclicread)),
        QString::number(flag(data.dcfcomponent)),
        QString::number(flag(data.changedbyuser)),
        QString::number(data.wizardsource),
        QString::number(denotation),
        QString::number(flag(data.sharedlines)),
        QString::number(flag(data.managedbymrn)),
        QString::number(data.signalid),
        QString::number(flag(data.nvstorage)),
        QStringLiteral("0"),
    };
    const QString statement =
        QStringLiteral("insert or replace into SubObjects%1 values(%2)").arg(line).arg(values.join(','));
    QSqlQuery query(database);
    if (!execQuery(query, statement)) {
        qDebug() << Q_FUNC_INFO << statement << query.lastError().text();
        return false;
    }
    if (!data.metadata.isEmpty())
        writeMetadata(line, index, subindex, data.metadata);
    const auto cachedLine = subCache.find(line);
    if (cachedLine != subCache.end() && cachedLine->contains(subKey(index, subindex)))
        cachedLine->insert(subKey(index, subindex), data);
    return true;
}

bool ObjectDataBase::addSubIndex(quint8 line, quint16 index, quint8 subindex, const SUBINDEX_DATA_T &data)
{
    if (updatesBlocked)
        return false;
    const bool ok = insertSubIndexRow(line, index, subindex, data);
    notify(ChangeSet{SubIndexChanged, index, subindex, line});
    return ok;
}

bool ObjectDataBase::addSubIndices(const QList<SubEntry> &entries)
{
    if (updatesBlocked)
        return false;
    database.transaction();
    bool ok = true;
    for (const auto &entry : entries)
        ok = insertSubIndexRow(entry.line, entry.index, entry.subindex, entry.data) && ok;
    return database.commit() && ok;
}

bool ObjectDataBase::removeSubIndex(quint8 line, quint16 index, quint8 subindex, bool keepConnections)
{
    if (updatesBlocked)
        return false;
    const bool existed = subIndexExists(line, index, subindex);
    QSqlQuery query(database);
    const QString statement =
        QStringLiteral("delete from SubObjects%1 where objectindex = %2 and subindex = %3").arg(line).arg(index).arg(subindex);
    if (!execQuery(query, statement)) {
        qDebug() << Q_FUNC_INFO << statement << query.lastError().text();
        return false;
    }
    if (!keepConnections)
        deleteConnections(line, index, subindex);
    if (existed)
        notify(ChangeSet{SubIndexRemoved, index, subindex, line});
    return true;
}

SUBINDEX_DATA_T ObjectDataBase::subIndexFromQuery(const QSqlQuery &query, int firstColumn)
{
    SUBINDEX_DATA_T data;
    int column = firstColumn;
    auto value = [&] { return query.value(column++); };
    auto text = [&] { return value().toString(); };
    auto number = [&] { return value().toUInt(); };
    auto boolean = [&] { return value().toInt() != 0; };
    auto interned = [&] { return getString(value().toInt()); };
    data.name = interned();
    data.datatype = quint16(number());
    data.accesstype = text();
    data.defaultvalue = text();
    data.currentvalue = text();
    data.pdomapping = PDOMapping(number());
    data.lowlimit = text();
    data.uplimit = text();
    data.size = number();
    data.defaultineds = boolean();
    data.limitineds = boolean();
    data.refuseread = boolean();
    data.refusewrite = boolean();
    data.dcfcomponent = boolean();
    data.cyclicread = boolean();
    data.allowedaccesstypes = text();
    data.implementation = quint8(number());
    data.description = interned();
    data.varname = text();
    data.category = quint8(number());
    data.writedefaulttoeds = quint8(number());
    data.changedbyuser = boolean();
    data.wizardsource = quint16(number());
    data.sharedlines = boolean();
    data.denotation = interned();
    data.managedbymrn = boolean();
    data.signalid = number();
    data.nvstorage = boolean();
    data.metadata = readMetadata(value());
    return data;
}

bool ObjectDataBase::getSubIndex(quint8 line, quint16 index, quint8 subindex, SUBINDEX_DATA_T &data)
{
    const auto cachedLine = subCache.constFind(line);
    if (cachedLine != subCache.constEnd()) {
        const auto cached = cachedLine->constFind(subKey(index, subindex));
        if (cached != cachedLine->constEnd()) {
            data = cached.value();
            return true;
        }
    }
    bool found = false;
    readPrepared(QStringLiteral("select %1 from SubObjects%2 where objectindex = ? and subindex = ?")
                     .arg(QLatin1String(subIndexColumns))
                     .arg(line),
                 {index, subindex}, [&](const QSqlQuery &row) {
                     data = subIndexFromQuery(row);
                     found = true;
                 });
    return found;
}

bool ObjectDataBase::subIndexExists(quint8 line, quint16 index, quint8 subindex)
{
    bool found = false;
    readPrepared(QStringLiteral("select subindex from SubObjects%1 where objectindex = ? and subindex = ?").arg(line),
                 {index, subindex}, [&](const QSqlQuery &) { found = true; });
    return found;
}

QList<quint8> ObjectDataBase::getSubIndices(quint8 line, quint16 index, quint8 from)
{
    QList<quint8> subIndices;
    readPrepared(QStringLiteral("select subindex from SubObjects%1 where objectindex = ? and subindex >= ? "
                                "order by subindex")
                     .arg(line),
                 {index, from}, [&](const QSqlQuery &row) { subIndices << quint8(row.value(0).toUInt()); });
    return subIndices;
}

quint8 ObjectDataBase::firstFreeSubIndex(quint8 line, quint16 index, quint8 from)
{
    const auto used = getSubIndices(line, index, from);
    quint32 candidate = from;
    for (const quint8 subindex : used) {
        if (subindex != candidate)
            break;
        ++candidate;
    }
    return candidate > 0xFF ? 0xFF : quint8(candidate);
}

QString ObjectDataBase::getSubIndexName(quint8 line, quint16 index, quint8 subindex, bool preferDenotation)
{
    const auto cached = nameCache.constFind(nameKey(line, index, subindex));
    if (cached != nameCache.constEnd())
        return cached.value();
    QSqlQuery query(database);
    if (!execQuery(query, QStringLiteral("select denotation, name from SubObjects%1 where objectindex = %2 and "
                                         "subindex = %3")
                              .arg(line)
                              .arg(index)
                              .arg(subindex)) ||
        !query.next())
        return QString();
    if (preferDenotation) {
        const QString denotation = getString(query.value(0).toInt());
        if (!denotation.isEmpty())
            return denotation;
    }
    return getString(query.value(1).toInt());
}

bool ObjectDataBase::setSubIndexName(quint8 line, quint16 index, quint8 subindex, const QString &name)
{
    if (updatesBlocked)
        return false;
    QSqlQuery query(database);
    return execQuery(query, QStringLiteral("update SubObjects%1 set name = %2 where objectindex = %3 and subindex = %4")
                                .arg(line)
                                .arg(getStringId(name))
                                .arg(index)
                                .arg(subindex));
}

QString ObjectDataBase::getSubIndexDefaultValue(quint8 line, quint16 index, quint8 subindex)
{
    QSqlQuery query(database);
    if (!execQuery(query, QStringLiteral("select defaultvalue from SubObjects%1 where objectindex = %2 and subindex = %3")
                              .arg(line)
                              .arg(index)
                              .arg(subindex)) ||
        !query.next())
        return QString();
    return query.value(0).toString();
}

bool ObjectDataBase::setSubIndexDefaultValue(quint8 line, quint16 index, quint8 subindex, const QString &value)
{
    if (updatesBlocked)
        return false;
    QSqlQuery query(database);
    const QString statement =
        QStringLiteral("update SubObjects%1 set defaultvalue='%2' where objectindex = %3 and subindex = %4")
            .arg(line)
            .arg(escaped(value))
            .arg(index)
            .arg(subindex);
    if (!execQuery(query, statement)) {
        qDebug() << Q_FUNC_INFO << statement << query.lastError().text();
        return false;
    }
    const auto cachedLine = subCache.find(line);
    if (cachedLine != subCache.end()) {
        const auto cached = cachedLine->find(subKey(index, subindex));
        if (cached != cachedLine->end())
            cached->defaultvalue = value;
    }
    return true;
}

quint16 ObjectDataBase::getSubIndexDataType(quint8 line, quint16 index, quint8 subindex)
{
    QSqlQuery query(database);
    if (!execQuery(query, QStringLiteral("select datatype from SubObjects%1 where objectindex = %2 and subindex = %3")
                              .arg(line)
                              .arg(index)
                              .arg(subindex)) ||
        !query.next())
        return 0;
    return quint16(query.value(0).toUInt());
}

QList<ObjectDataBase::IndexSubIndex> ObjectDataBase::findSubIndices(quint8 line, const QString &column,
                                                                    const QString &value)
{
    bool numeric = false;
    value.toLongLong(&numeric);
    const QString operand = numeric ? value : '\'' + escaped(value) + '\'';
    QList<IndexSubIndex> found;
    QSqlQuery query(database);
    if (execQuery(query, QStringLiteral("select objectindex, subindex from SubObjects%1 where %2 = %3 and objectindex "
                                        "in (select objectindex from Objects%1) order by objectindex, subindex")
                             .arg(line)
                             .arg(column, operand))) {
        while (query.next())
            found.append({quint16(query.value(0).toUInt()), quint8(query.value(1).toUInt())});
    }
    return found;
}

bool ObjectDataBase::isMappedInPdo(quint8 line, quint16 index, quint8 subindex)
{
    if (index < 0x2000)
        return false;
    QSqlQuery query(database);
    if (!execQuery(query, QStringLiteral("select defaultvalue from SubObjects%1 where subindex > 0 and "
                                         "((objectindex >= %2 and objectindex <= %3) or "
                                         "(objectindex >= %4 and objectindex <= %5))")
                              .arg(line)
                              .arg(0x1600)
                              .arg(0x17FF)
                              .arg(0x1A00)
                              .arg(0x1BFF)))
        return false;
    while (query.next()) {
        bool ok = false;
        const quint32 entry = query.value(0).toString().trimmed().toUInt(&ok, 0);
        if (ok && (entry >> 16) == index && ((entry >> 8) & 0xFF) == subindex)
            return true;
    }
    return false;
}

QList<ObjectDataBase::IndexSubIndex> ObjectDataBase::getMappableSubIndices(quint8 line, quint16 from)
{
    QList<IndexSubIndex> found;
    QSqlQuery query(database);
    if (execQuery(query, QStringLiteral("select objectindex, subindex from SubObjects%1 where pdomapping != %2 and "
                                        "objectindex >= %3 and objectindex in (select objectindex from Objects%1) "
                                        "order by objectindex, subindex")
                             .arg(line)
                             .arg(int(PDOMappingType::Forbidden))
                             .arg(from))) {
        while (query.next())
            found.append({quint16(query.value(0).toUInt()), quint8(query.value(1).toUInt())});
    }
    return found;
}

void ObjectDataBase::cacheAllSubs(quint8 line, quint16 index)
{
    subCache.remove(line);
    QString statement = QStringLiteral("select objectindex, subindex, %1 from SubObjects%2")
                            .arg(QLatin1String(subIndexColumns))
                            .arg(line);
    if (index != 0)
        statement += QStringLiteral(" where objectindex = %1").arg(index);
    QSqlQuery query(database);
    query.setForwardOnly(true);
    if (!execQuery(query, statement))
        return;
    auto &cache = subCache[line];
    while (query.next()) {
        const quint16 objectIndex = quint16(query.value(0).toUInt());
        const quint8 subindex = quint8(query.value(1).toUInt());
        cache.insert(subKey(objectIndex, subindex), subIndexFromQuery(query, 2));
    }
}

void ObjectDataBase::cacheSubObjectNames(quint8 line, quint16 index)
{
    QString statement = QStringLiteral("select denotation, name, objectindex, subindex from SubObjects%1").arg(line);
    if (index != 0)
        statement += QStringLiteral(" where objectindex = %1").arg(index);
    QSqlQuery query(database);
    if (!execQuery(query, statement))
        return;
    while (query.next()) {
        const QString denotation = getString(query.value(0).toInt());
        const QString name = getString(query.value(1).toInt());
        nameCache.insert(nameKey(line, quint16(query.value(2).toUInt()), quint8(query.value(3).toUInt())),
                         denotation.isEmpty() ? name : denotation);
    }
}

void ObjectDataBase::clearSubCache()
{
    subCache.clear();
}

void ObjectDataBase::clearNameCache()
{
    nameCache.clear();
}

QString ObjectDataBase::sqlTextValue(const QString &column, const QVariant &value, const QStringList &stringColumns)
{
    const QString simplified = value.toString().simplified();
    return stringColumns.contains(column) ? QString::number(getStringId(simplified)) : escaped(simplified);
}

void ObjectDataBase::setObjectIndexSqlValue(const QString &table, const QString &index, const QString &column,
                                            const QVariant &value)
{
    if (!value.isValid())
        return;
    static const QStringList stringColumns{QStringLiteral("name"), QStringLiteral("description"),
                                           QStringLiteral("device_class")};
    QSqlQuery query(database);
    if (!execQuery(query, QStringLiteral("select objectindex from %1 where objectindex = %2").arg(table, index)))
        return;
    if (!query.next() &&
        !execQuery(query, QStringLiteral("insert into %1 values(%2,0,0,0,0,0,0,0,0)").arg(table, index))) {
        qDebug() << Q_FUNC_INFO << query.lastError().text();
        return;
    }
    if (column == QLatin1String("metadata")) {
        const MetadataMap metadata = readMetadata(QVariant(value.toByteArray()));
        static const QRegularExpression digits(QStringLiteral("(\\d+)$"));
        if (!metadata.isEmpty())
            writeMetadata(quint8(digits.match(table).captured(1).toUInt()), quint16(index.toUInt(nullptr, 0)), -1,
                          metadata);
        return;
    }
    const QString statement = QStringLiteral("update %1 set %2='%3' where objectindex = %4")
                                  .arg(table, column, sqlTextValue(column, value, stringColumns), index);
    if (!execQuery(query, statement))
        qDebug() << Q_FUNC_INFO << statement << query.lastError().text();
}

void ObjectDataBase::setSubindexSqlValue(const QString &table, const QString &index, const QString &subindex,
                                         const QString &column, const QVariant &value)
{
    if (updatesBlocked || !value.isValid())
        return;
    if (column != QLatin1String("metadata") && value.toString().simplified().isEmpty())
        return;
    static const QStringList stringColumns{QStringLiteral("name"), QStringLiteral("description")};
    QSqlQuery query(database);
    if (!execQuery(query, QStringLiteral("select objectindex from %1 where objectindex = %2 and subindex = %3")
                              .arg(table, index, subindex)))
        return;
    if (!query.next() &&
        !execQuery(query, QStringLiteral("insert into %1 values(%2,%3,NULL,0,0,NULL,NULL,NULL,NULL,NULL,NULL,NULL,"
                                         "NULL,NULL,NULL,NULL,0,NULL,NULL,NULL,NULL,NULL,NULL,NULL,NULL,NULL,NULL,"
                                         "NULL,NULL,NULL,NULL)")
                              .arg(table, index, subindex))) {
        qDebug() << Q_FUNC_INFO << query.lastError().text();
        return;
    }
    if (column == QLatin1String("metadata")) {
        const MetadataMap metadata = readMetadata(QVariant(value.toByteArray()));
        static const QRegularExpression digits(QStringLiteral("(\\d+)$"));
        if (!metadata.isEmpty())
            writeMetadata(quint8(digits.match(table).captured(1).toUInt()), quint16(index.toUInt(nullptr, 0)),
                          int(subindex.toUInt(nullptr, 0)), metadata);
        return;
    }
    const QString statement = QStringLiteral("update %1 set %2='%3' where objectindex = %4 and subindex = %5")
                                  .arg(table, column, sqlTextValue(column, value, stringColumns), index, subindex);
    if (!execQuery(query, statement))
        qDebug() << Q_FUNC_INFO << statement << query.lastError().text();
}
