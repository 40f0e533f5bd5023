// J1939 parameter groups and SPNs, raw CAN-IDs and data elements, and the UDS service table of a line.

#include "objectdatabase.h"
#include "projectschema.h"

#include <QDebug>
#include <QSqlError>
#include <QSqlQuery>

namespace {

QString escaped(QString text)
{
    return text.replace('\'', QStringLiteral("''"));
}

QString quoted(const QString &text)
{
    return '\'' + escaped(text) + '\'';
}

int flag(bool value)
{
    return value ? 1 : 0;
}

QString directionFilter(quint8 direction, const char *prefix = " where")
{
    return direction == Direction::Both ? QString()
                                        : QStringLiteral("%1 direction = %2").arg(QLatin1String(prefix)).arg(direction);
}

const char *const pgnColumns = "number, edp_dp_key, priority, cycletime_ms, inhibittime_ms, mappingcount, direction, "
                               "name, desc, issafe, srvt_ms, FD_TrailerFormat, FD_AssuranceType, "
                               "FD_AssuranceDataSize, multisourceaddress, safetytype, FD_DataID";
const char *const spnColumns = "pgnnumber, spnnumber, datatype, implementation, varname, defaultvalue, name, desc, "
                               "pos, bitsize, direction, slot_df, bitposition";
const char *const canIdColumns = "id, cycletime_ms, inhibittime_ms, mappingcount, direction, name, desc";
const char *const dataElementColumns = "canid, number, datatype, implementation, varname, defaultvalue, name, desc, "
                                       "pos, bitsize, direction, bitpos";

// The condition that picks the rows of the given key values in one direction.
QString keyCondition(std::initializer_list<std::pair<const char *, quint32>> keys, quint8 direction)
{
    QStringList terms;
    for (const auto &[column, value] : keys)
        terms << QStringLiteral("%1 = %2").arg(QLatin1String(column)).arg(value);
    terms << QStringLiteral("direction = %1").arg(direction);
    return terms.join(QLatin1String(" and "));
}

// Writes a row keyed by the given condition: an update of all columns when it exists, else an insert.
QString upsertStatement(bool exists, const QString &table, const char *columns, const QStringList &values,
                        const QString &condition)
{
    if (!exists)
        return QStringLiteral("insert into %1 (%2) values(%3)").arg(table, QLatin1String(columns), values.join(','));
    const QStringList names = QString::fromLatin1(columns).split(QStringLiteral(", "));
    QStringList assignments;
    for (qsizetype i = 0; i < names.size(); ++i)
        assignments << names.at(i) + QStringLiteral(" = ") + values.at(i);
    return QStringLiteral("update %1 set %2 where %3").arg(table, assignments.join(QStringLiteral(", ")), condition);
}

} // namespace

QList<quint32> ObjectDataBase::numberList(const QString &statement)
{
    QList<quint32> numbers;
    QSqlQuery query(database);
    if (execQuery(query, statement)) {
        while (query.next())
            numbers << query.value(0).toUInt();
    }
    return numbers;
}

bool ObjectDataBase::rowExists(const QString &table, const QString &condition)
{
    return !numberList(QStringLiteral("select 1 from %1 where %2").arg(table, condition)).isEmpty();
}

bool ObjectDataBase::readRow(QSqlQuery &query, const char *columns, const QString &table,
                             const QString &condition)
{
    return execQuery(
               query,
               QStringLiteral("select %1 from %2 where %3").arg(QLatin1String(columns), table, condition)) &&
           query.next();
}

bool ObjectDataBase::writeRows(const QStringList &statements)
{
    QSqlQuery query(database);
    for (const QString &statement : statements) {
        if (!execQuery(query, statement)) {
            qDebug() << statement << query.lastError().text();
            return false;
        }
    }
    return true;
}

bool ObjectDataBase::upsertRow(const QString &table, const char *columns, const QStringList &values,
                               const QString &condition)
{
    return writeRows({upsertStatement(rowExists(table, condition), table, columns, values, condition)});
}

PGN ObjectDataBase::pgnFromQuery(const QSqlQuery &query)
{
    PGN pgn;
    int column = 0;
    auto number = [&] { return query.value(column++).toUInt(); };
    pgn.number = number();
    pgn.edp_dp_key = quint8(number());
    pgn.priority = quint8(number());
    pgn.cycletime_ms = quint16(number());
    pgn.inhibittime_ms = quint16(number());
    pgn.mappingcount = quint16(number());
    pgn.direction = quint8(number());
    pgn.name = getString(qint32(number()));
    pgn.desc = getString(qint32(number()));
    pgn.issafe = number() != 0;
    pgn.srvt_ms = quint16(number());
    pgn.FD_TrailerFormat = quint8(number());
    pgn.FD_AssuranceType = quint8(number());
    pgn.FD_AssuranceDataSize = quint8(number());
    pgn.multisourceaddress = quint8(number());
    pgn.safetytype = quint8(number());
    pgn.FD_DataId = number();
    return pgn;
}

bool ObjectDataBase::addPGN(quint8 line, quint32 number, const PGN &pgn)
{
    if (updatesBlocked)
        return false;
    QSqlQuery query(database);
    // Tables that an importer made before the migration ran lack the safety and FD columns.
    if (numberList(QStringLiteral("SELECT name FROM PRAGMA_TABLE_INFO('PGNs%1') ORDER BY name").arg(line)).size() < 14) {
        for (const char *column : {"issafe", "srvt_ms", "FD_TrailerFormat", "FD_AssuranceType", "FD_AssuranceDataSize",
                                   "multisourceaddress"})
            execQuery(query, QStringLiteral("alter table PGNs%1 add %2 integer").arg(line).arg(QLatin1String(column)));
    }
    const qint32 name = getStringId(pgn.name);
    const qint32 desc = getStringId(pgn.desc);
    const QStringList values{QString::number(number),
                                       QString::number(pgn.edp_dp_key),
                                       QString::number(pgn.priority),
                                       QString::number(pgn.cycletime_ms),
                                       QString::number(pgn.inhibittime_ms),
                                       QString::number(pgn.mappingcount),
                                       QString::number(pgn.direction),
                                       QString::number(name),
                                       QString::number(desc),
                                       QString::number(flag(pgn.issafe)),
                                       QString::number(pgn.srvt_ms),
                                       QString::number(pgn.FD_TrailerFormat),
                                       QString::number(pgn.FD_AssuranceType),
                                       QString::number(pgn.FD_AssuranceDataSize),
                                       QString::number(pgn.multisourceaddress),
                                       QString::number(pgn.safetytype),
                             QString::number(pgn.FD_DataId)};
    if (!upsertRow(QStringLiteral("PGNs%1").arg(line), pgnColumns, values,
                   keyCondition({{"number", number}}, pgn.direction)))
        return false;
    ChangeSet change{PGNAdded, 0, 0, line};
    change.pgn = number;
    notify(change);
    return true;
}

bool ObjectDataBase::removePGN(quint8 line, quint32 number, quint8 direction)
{
    if (updatesBlocked)
        return false;
    if (!writeRows({QStringLiteral("delete from SPNs%1 where %2")
                        .arg(line)
                        .arg(keyCondition({{"pgnnumber", number}}, direction)),
                    QStringLiteral("delete from PGNs%1 where %2")
                        .arg(line)
                        .arg(keyCondition({{"number", number}}, direction))}))
        return false;
    ChangeSet change{PGNRemoved, 0, 0, line};
    change.pgn = number;
    change.direction = direction;
    notify(change);
    return true;
}

bool ObjectDataBase::getPGN(quint8 line, quint32 number, quint8 direction, PGN &pgn)
{
    QSqlQuery query(database);
    if (!readRow(query, pgnColumns, QStringLiteral("PGNs%1").arg(line),
                 keyCondition({{"number", number}}, direction)))
        return false;
    pgn = pgnFromQuery(query);
    return true;
}

QString ObjectDataBase::getPGNName(quint8 line, quint32 number, quint8 direction)
{
    PGN pgn;
    return getPGN(line, number, direction, pgn) ? pgn.name : QString();
}

bool ObjectDataBase::pgnExists(quint8 line, quint32 number, quint8 direction)
{
    return rowExists(QStringLiteral("PGNs%1").arg(line), keyCondition({{"number", number}}, direction));
}

QList<quint32> ObjectDataBase::getPGNs(quint8 line, quint8 direction, bool withoutSafe)
{
    QString statement = QStringLiteral("select distinct number from PGNs%1").arg(line) + directionFilter(direction);
    if (withoutSafe)
        statement += QLatin1String(direction == Direction::Both ? " where" : " and") +
                     QStringLiteral(" (issafe = 0 or issafe is NULL)");
    return numberList(statement + QStringLiteral(" order by number"));
}

SPN ObjectDataBase::spnFromQuery(const QSqlQuery &query)
{
    SPN spn;
    spn.pgnnumber = query.value(0).toUInt();
    spn.spnnumber = query.value(1).toUInt();
    spn.datatype = quint16(query.value(2).toUInt());
    spn.implementation = quint8(query.value(3).toUInt());
    spn.varname = query.value(4).toString();
    spn.defaultvalue = query.value(5).toString();
    spn.name = getString(query.value(6).toInt());
    spn.desc = getString(query.value(7).toInt());
    spn.pos = quint8(query.value(8).toUInt());
    spn.bitsize = quint16(query.value(9).toUInt());
    spn.direction = quint8(query.value(10).toUInt());
    spn.slot_df = quint16(query.value(11).toUInt());
    spn.bitposition = quint16(query.value(12).toUInt());
    return spn;
}

bool ObjectDataBase::addSPN(quint8 line, quint32 pgn, quint8 direction, quint32 spn, const SPN &data)
{
    if (updatesBlocked)
        return false;
    const qint32 name = getStringId(data.name);
    const qint32 desc = getStringId(data.desc);
    const QStringList values{QString::number(pgn),
                             QString::number(spn),
                             QString::number(data.datatype),
                             QString::number(data.implementation),
                             quoted(data.varname),
                             quoted(data.defaultvalue),
                             QString::number(name),
                             QString::number(desc),
                             QString::number(data.pos),
                             QString::number(data.bitsize),
                             QString::number(direction),
                             QString::number(data.slot_df),
                             QString::number(data.bitposition)};
    if (!upsertRow(QStringLiteral("SPNs%1").arg(line), spnColumns, values,
                   keyCondition({{"pgnnumber", pgn}, {"spnnumber", spn}}, direction)))
        return false;
    ChangeSet change{SPNAdded, 0, 0, line};
    change.pgn = pgn;
    change.spn = spn;
    notify(change);
    return true;
}

bool ObjectDataBase::removeSPN(quint8 line, quint32 pgn, quint32 spn, quint8 direction)
{
    if (updatesBlocked)
        return false;
    if (!writeRows({QStringLiteral("delete from SPNs%1 where %2")
                        .arg(line)
                        .arg(keyCondition({{"pgnnumber", pgn}, {"spnnumber", spn}}, direction))}))
        return false;
    ChangeSet change{SignalRemoved, 0, 0, line};
    change.pgn = pgn;
    change.spn = spn;
    change.direction = direction;
    notify(change);
    return true;
}

bool ObjectDataBase::getSPN(quint8 line, quint32 pgn, quint8 direction, quint32 spn, SPN &data)
{
    if (spnCache.valid && spnCache.line == line && spnCache.spnsByPgn.value(direction).contains(pgn)) {
        const auto records = spnCache.records.value(direction);
        const auto found = records.constFind({pgn, spn});
        if (found == records.constEnd())
            return false;
        data = found.value();
        return true;
    }
    QSqlQuery query(database);
    if (!readRow(query, spnColumns, QStringLiteral("SPNs%1").arg(line),
                 keyCondition({{"pgnnumber", pgn}, {"spnnumber", spn}}, direction)))
        return false;
    data = spnFromQuery(query);
    return true;
}

QList<quint32> ObjectDataBase::getSPNs(quint8 line, quint32 pgn, quint8 direction)
{
    if (spnCache.valid && spnCache.line == line) {
        const auto byPgn = spnCache.spnsByPgn.value(direction);
        const auto found = byPgn.constFind(pgn);
        if (found != byPgn.constEnd())
            return found.value();
    }
    return numberList(QStringLiteral("select spnnumber from SPNs%1 where pgnnumber = %2 and direction = %3 order by pos")
                          .arg(line)
                          .arg(pgn)
                          .arg(direction));
}

QString ObjectDataBase::getSPNName(quint8 line, quint32 pgn, quint8 direction, quint32 spn)
{
    SPN data;
    return getSPN(line, pgn, direction, spn, data) ? data.name : QString();
}

quint16 ObjectDataBase::getSPNDataType(quint8 line, quint32 pgn, quint8 direction, quint32 spn)
{
    SPN data;
    return getSPN(line, pgn, direction, spn, data) ? data.datatype : 0;
}

bool ObjectDataBase::spnExists(quint8 line, quint32 pgn, quint32 spn, quint8 direction)
{
    return rowExists(QStringLiteral("SPNs%1").arg(line),
                     keyCondition({{"pgnnumber", pgn}, {"spnnumber", spn}}, direction));
}

void ObjectDataBase::cacheAllSPNs(quint8 line)
{
    spnCache = SpnCache();
    QSqlQuery query(database);
    query.setForwardOnly(true);
    if (!execQuery(query, QStringLiteral("SELECT %1 from SPNs%2 order by pgnnumber asc, pos asc")
                              .arg(QLatin1String(spnColumns))
                              .arg(line)))
        return;
    while (query.next()) {
        const SPN spn = spnFromQuery(query);
        spnCache.spnsByPgn[spn.direction][spn.pgnnumber].append(spn.spnnumber);
        spnCache.records[spn.direction].insert({spn.pgnnumber, spn.spnnumber}, spn);
    }
    spnCache.line = line;
    spnCache.valid = true;
}

void ObjectDataBase::clearSPNCache()
{
    spnCache = SpnCache();
}

CANID ObjectDataBase::canIdFromQuery(const QSqlQuery &query)
{
    CANID canId;
    canId.id = query.value(0).toUInt();
    canId.cycletime_ms = quint16(query.value(1).toUInt());
    canId.inhibittime_ms = quint16(query.value(2).toUInt());
    canId.mappingcount = quint16(query.value(3).toUInt());
    canId.direction = quint8(query.value(4).toUInt());
    canId.name = getString(query.value(5).toInt());
    canId.desc = getString(query.value(6).toInt());
    return canId;
}

bool ObjectDataBase::addCANID(quint8 line, quint32 id, const CANID &canId)
{
    if (updatesBlocked)
        return false;
    const qint32 name = getStringId(canId.name);
    const qint32 desc = getStringId(canId.desc);
    const QStringList values{QString::number(id),
                             QString::number(canId.cycletime_ms),
                             QString::number(canId.inhibittime_ms),
                             QString::number(canId.mappingcount),
                             QString::number(canId.direction),
                             QString::number(name),
                             QString::number(desc)};
    if (!upsertRow(QStringLiteral("CANIDs%1").arg(line), canIdColumns, values,
                   keyCondition({{"id", id}}, canId.direction)))
        return false;
    ChangeSet change{CANIDAdded, 0, 0, line};
    change.canId = id;
    notify(change);
    return true;
}

bool ObjectDataBase::removeCANID(quint8 line, quint32 id, quint8 direction)
{
    if (updatesBlocked)
        return false;
    if (!writeRows({QStringLiteral("delete from DataElements%1 where %2")
                        .arg(line)
                        .arg(keyCondition({{"canid", id}}, direction)),
                    QStringLiteral("delete from CANIDs%1 where %2")
                        .arg(line)
                        .arg(keyCondition({{"id", id}}, direction))}))
        return false;
    ChangeSet change{CANIDRemoved, 0, 0, line};
    change.canId = id;
    change.direction = direction;
    notify(change);
    return true;
}

bool ObjectDataBase::getCANID(quint8 line, quint32 id, quint8 direction, CANID &canId)
{
    QSqlQuery query(database);
    if (!readRow(query, canIdColumns, QStringLiteral("CANIDs%1").arg(line),
                 keyCondition({{"id", id}}, direction)))
        return false;
    canId = canIdFromQuery(query);
    return true;
}

QString ObjectDataBase::getCANIDName(quint8 line, quint32 id, quint8 direction)
{
    CANID canId;
    return getCANID(line, id, direction, canId) ? canId.name : QString();
}

bool ObjectDataBase::canIdExists(quint8 line, quint32 id, quint8 direction)
{
    return rowExists(QStringLiteral("CANIDs%1").arg(line), keyCondition({{"id", id}}, direction));
}

QList<quint32> ObjectDataBase::getCANIDs(quint8 line, quint8 direction)
{
    return numberList(QStringLiteral("select distinct id from CANIDs%1").arg(line) + directionFilter(direction) +
                      QStringLiteral(" order by id"));
}

DataElement ObjectDataBase::dataElementFromQuery(const QSqlQuery &query)
{
    DataElement element;
    element.canid = query.value(0).toUInt();
    element.number = query.value(1).toUInt();
    element.datatype = quint16(query.value(2).toUInt());
    element.implementation = quint8(query.value(3).toUInt());
    element.varname = query.value(4).toString();
    element.defaultvalue = query.value(5).toString();
    element.name = getString(query.value(6).toInt());
    element.desc = getString(query.value(7).toInt());
    element.pos = quint8(query.value(8).toUInt());
    element.bitsize = quint16(query.value(9).toUInt());
    element.direction = quint8(query.value(10).toUInt());
    element.bitpos = quint16(query.value(11).toUInt());
    return element;
}

bool ObjectDataBase::addDataElement(quint8 line, quint32 canid, quint8 direction, quint32 number,
                                    const DataElement &data)
{
    if (updatesBlocked)
        return false;
    const qint32 name = getStringId(data.name);
    const qint32 desc = getStringId(data.desc);
    const QStringList values{QString::number(canid),
                             QString::number(number),
                             QString::number(data.datatype),
                             QString::number(data.implementation),
                             quoted(data.varname),
                             quoted(data.defaultvalue),
                             QString::number(name),
                             QString::number(desc),
                             QString::number(data.pos),
                             QString::number(data.bitsize),
                             QString::number(direction),
                             QString::number(data.bitpos)};
    if (!upsertRow(QStringLiteral("DataElements%1").arg(line), dataElementColumns, values,
                   keyCondition({{"canid", canid}, {"number", number}}, direction)))
        return false;
    ChangeSet change{DataElementAdded, 0, 0, line};
    change.canId = canid;
    change.element = number;
    notify(change);
    return true;
}

bool ObjectDataBase::removeDataElement(quint8 line, quint32 canid, quint32 number, quint8 direction)
{
    if (updatesBlocked)
        return false;
    if (!writeRows({QStringLiteral("delete from DataElements%1 where %2")
                        .arg(line)
                        .arg(keyCondition({{"canid", canid}, {"number", number}}, direction))}))
        return false;
    ChangeSet change{SignalRemoved, 0, 0, line};
    change.canId = canid;
    change.element = number;
    change.direction = direction;
    notify(change);
    return true;
}

bool ObjectDataBase::getDataElement(quint8 line, quint32 canid, quint8 direction, quint32 number, DataElement &data)
{
    QSqlQuery query(database);
    if (!readRow(query, dataElementColumns, QStringLiteral("DataElements%1").arg(line),
                 keyCondition({{"canid", canid}, {"number", number}}, direction)))
        return false;
    data = dataElementFromQuery(query);
    return true;
}

QList<quint32> ObjectDataBase::getDataElements(quint8 line, quint32 canid, quint8 direction)
{
    return numberList(QStringLiteral("select number from DataElements%1 where canid = %2 and direction = %3 order by "
                                     "number")
                          .arg(line)
                          .arg(canid)
                          .arg(direction));
}

QString ObjectDataBase::getDataElementName(quint8 line, quint32 canid, quint8 direction, quint32 number)
{
    DataElement element;
    return getDataElement(line, canid, direction, number, element) ? element.name : QString();
}

bool ObjectDataBase::createUDSSettingsTable(quint8 line, QSqlQuery &query)
{
    return execQuery(query, ProjectSchema::createLineStatement(*ProjectSchema::lineTable("UDSSettings"), line));
}

bool ObjectDataBase::writeUDSRow(quint8 line, quint8 sid, bool active, const QString &sessions,
                                 const QString &levels, const QString &authentication)
{
    return writeRows({QStringLiteral("insert or replace into UDSSettings%1 values(%2,%3,'%4','%5','%6')")
                          .arg(line)
                          .arg(sid)
                          .arg(flag(active))
                          .arg(escaped(sessions), escaped(levels), escaped(authentication))});
}

bool ObjectDataBase::setUDSServiceActive(quint8 line, quint8 sid, bool active)
{
    return writeUDSRow(line, sid, active, getUDSServiceSessions(line, sid), getUDSServiceUserLevels(line, sid),
                       getUDSAuthentication(line, sid));
}

bool ObjectDataBase::setUDSServiceSessions(quint8 line, quint8 sid, const QString &sessions)
{
    return writeUDSRow(line, sid, getUDSServiceActive(line, sid), sessions, getUDSServiceUserLevels(line, sid),
                       getUDSAuthentication(line, sid));
}

bool ObjectDataBase::setUDSServiceUserLevels(quint8 line, quint8 sid, const QString &levels)
{
    return writeUDSRow(line, sid, getUDSServiceActive(line, sid), getUDSServiceSessions(line, sid), levels,
                       getUDSAuthentication(line, sid));
}

bool ObjectDataBase::setUDSAuthentication(quint8 line, quint8 sid, const QString &authentication)
{
    return writeUDSRow(line, sid, getUDSServiceActive(line, sid), getUDSServiceSessions(line, sid),
                       getUDSServiceUserLevels(line, sid), authentication);
}

QVariant ObjectDataBase::readUDSColumn(quint8 line, quint8 sid, const char *column)
{
    QSqlQuery query(database);
    if (!execQuery(query, QStringLiteral("select %1 from UDSSettings%2 where sid = %3")
                              .arg(QLatin1String(column))
                              .arg(line)
                              .arg(sid)) ||
        !query.next())
        return QVariant();
    return query.value(0);
}

bool ObjectDataBase::getUDSServiceActive(quint8 line, quint8 sid)
{
    return readUDSColumn(line, sid, "active").toInt() != 0;
}

QString ObjectDataBase::getUDSServiceSessions(quint8 line, quint8 sid)
{
    return readUDSColumn(line, sid, "sessions").toString();
}

QString ObjectDataBase::getUDSServiceUserLevels(quint8 line, quint8 sid)
{
    return readUDSColumn(line, sid, "userlevels").toString();
}

QString ObjectDataBase::getUDSAuthentication(quint8 line, quint8 sid)
{
    return readUDSColumn(line, sid, "authentication").toString();
}

int ObjectDataBase::countActiveUDSServices(quint8 line)
{
    QSqlQuery query(database);
    if (!execQuery(query, QStringLiteral("select count(*) from UDSSettings%1 where active = 1").arg(line)) ||
        !query.next())
        return 0;
    return query.value(0).toInt();
}

void ObjectDataBase::forEachPGN(const std::function<void(quint8, quint8, quint32)> &work)
{
    database.transaction();
    const auto lines = getLines();
    for (const quint8 line : lines) {
        for (const quint8 direction : {Direction::Receive, Direction::Transmit}) {
            const auto numbers = getPGNs(line, direction);
            for (const quint32 number : numbers)
                work(line, direction, number);
        }
    }
    database.commit();
    clearSPNCache();
}

void ObjectDataBase::updatePGNMappingCounts()
{
    QSqlQuery query(database);
    forEachPGN([&](quint8 line, quint8 direction, quint32 number) {
        PGN pgn;
        const qsizetype count = getSPNs(line, number, direction).size();
        if (getPGN(line, number, direction, pgn) && pgn.mappingcount != count)
            execQuery(query, QStringLiteral("update PGNs%1 SET mappingcount = %2 where number = %3 AND direction = %4 ")
                                 .arg(line)
                                 .arg(count)
                                 .arg(number)
                                 .arg(direction));
    });
}

void ObjectDataBase::mergeDataPageIntoPGNs()
{
    forEachPGN([&](quint8 line, quint8 direction, quint32 number) {
        PGN pgn;
        if (!getPGN(line, number, direction, pgn) || pgn.edp_dp_key == 0)
            return;
        const quint32 merged = (quint32(pgn.edp_dp_key) << 16) + number;
        pgn.number = merged;
        pgn.edp_dp_key = 0;
        addPGN(line, merged, pgn);
        const auto spns = getSPNs(line, number, direction);
        for (const quint32 spnNumber : spns) {
            SPN spn;
            if (!getSPN(line, number, direction, spnNumber, spn))
                continue;
            spn.pgnnumber = merged;
            addSPN(line, merged, direction, spnNumber, spn);
        }
        removePGN(line, number, direction);
    });
}

void ObjectDataBase::markSafePGNs()
{
    forEachPGN([&](quint8 line, quint8 direction, quint32 number) {
        PGN pgn;
        if (getPGN(line, number, direction, pgn) && pgn.issafe && pgn.safetytype == 0) {
            pgn.safetytype = 1;
            addPGN(line, number, pgn);
        }
    });
}
