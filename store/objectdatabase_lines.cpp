// Lines: adding, reading, removing and copying them with their per-line tables.

#include "objectdatabase.h"
#include "projectschema.h"
#include "settingskeys.h"

#include <QDebug>
#include <QSet>
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

// The services a new line offers, active in the default session.
const quint8 newLineUdsServices[] = {16, 17, 62, 34, 46};

} // namespace

QList<quint8> ObjectDataBase::getLines()
{
    QList<quint8> lines;
    QSqlQuery query(database);
    if (execQuery(query, QStringLiteral("select nodeId from nodes"))) {
        while (query.next())
            lines << quint8(query.value(0).toUInt());
    }
    return lines;
}

bool ObjectDataBase::lineExists(quint8 line)
{
    QSqlQuery query(database);
    return execQuery(query, QStringLiteral("select nodeId from nodes where nodeId = %1").arg(line)) && query.next();
}

bool ObjectDataBase::addNode(quint8 line, const NODE_DATA_T &data)
{
    if (updatesBlocked)
        return false;
    QSqlQuery query(database);
    QString statement;
    if (lineExists(line)) {
        statement = QStringLiteral("update Nodes set name = '%2', edspath = '%3', xddpath ='%4', dcfpath = '%5',  "
                                   "tpdocnt = %6, rpdocnt = %7, ismaster = %8, issyncproducer = %9, "
                                   "issyncconsumer = %10,  ishbconsumer = %11, isemergencyproducer = %12, "
                                   "isemergencyconsumer =%13,  ismpdosupported = %14, iscanopengateway = %15, "
                                   "allpdosstatic = %16,  excludegeneration = %17, generatedcf= %18, "
                                   "prefix = '%19', outputpath = '%20', iconpath = '%21' where nodeId = %1")
                        .arg(line)
                        .arg(escaped(data.name), escaped(data.edspath), escaped(data.xddpath), escaped(data.dcfpath))
                        .arg(data.tpdocnt)
                        .arg(data.rpdocnt)
                        .arg(flag(data.ismaster))
                        .arg(flag(data.issyncproducer))
                        .arg(flag(data.issyncconsumer))
                        .arg(flag(data.ishbconsumer))
                        .arg(flag(data.isemergencyproducer))
                        .arg(flag(data.isemergencyconsumer))
                        .arg(flag(data.ismpdosupported))
                        .arg(flag(data.iscanopengateway))
                        .arg(flag(data.allpdosstatic))
                        .arg(flag(data.excludegeneration))
                        .arg(flag(data.generatedcf))
                        .arg(escaped(data.prefix), escaped(data.outputpath), escaped(data.iconpath));
    } else {
        const QStringList values{
            QString::number(line),
            '\'' + escaped(data.name) + '\'',
            '\'' + escaped(data.edspath) + '\'',
            '\'' + escaped(data.xddpath) + '\'',
            '\'' + escaped(data.dcfpath) + '\'',
            QString::number(data.tpdocnt),
            QString::number(data.rpdocnt),
            QString::number(flag(data.ismaster)),
            QString::number(flag(data.issyncproducer)),
            QString::number(flag(data.issyncconsumer)),
            QString::number(flag(data.ishbconsumer)),
            QString::number(flag(data.isemergencyproducer)),
            QString::number(flag(data.isemergencyconsumer)),
            QString::number(flag(data.ismpdosupported)),
            QString::number(flag(data.iscanopengateway)),
            QString::number(flag(data.allpdosstatic)),
            QString::number(flag(data.excludegeneration)),
            QString::number(flag(data.generatedcf)),
            '\'' + escaped(data.prefix) + '\'',
            '\'' + escaped(data.outputpath) + '\'',
            '\'' + escaped(data.iconpath) + '\'',
            QString::number(flag(data.isbootupmanager)),
            QString::number(flag(data.isconfigmanager)),
            QString::number(flag(data.excludepdolinking)),
            QString::number(data.multilinedata),
            QString::number(flag(data.lssslave)),
        };
        statement = QStringLiteral("insert into Nodes values(%1)").arg(values.join(','));
    }
    if (!execQuery(query, statement)) {
        qDebug() << Q_FUNC_INFO << statement << query.lastError().text();
        return false;
    }

    for (const auto &table : ProjectSchema::lineTables()) {
        if (QLatin1String(table.name) != QLatin1String("UDSSettings"))
            execQuery(query, ProjectSchema::createLineStatement(table, line));
    }

    if (line != ClipboardLine) {
        for (const auto &key : SettingsKeys::lineExtendedGeneralKeys()) {
            const QString value = getGeneralSetting(key);
            if (!value.isEmpty())
                setLineGeneralSetting(key, getLineGeneralSetting(key, line), line);
        }
        writeDescriptionDefaults(line);
    }

    createUDSSettingsTable(line, query);
    for (const quint8 sid : newLineUdsServices) {
        setUDSServiceActive(line, sid, true);
        setUDSServiceSessions(line, sid, QStringLiteral("1"));
    }
    notify(ChangeSet{NodeAdded, 0, 0, line});
    return true;
}

bool ObjectDataBase::getNode(quint8 line, NODE_DATA_T &data)
{
    QSqlQuery query(database);
    if (!execQuery(query, QStringLiteral("select name, edspath, xddpath, dcfpath, tpdocnt, rpdocnt, ismaster, "
                                         "issyncproducer, issyncconsumer, ishbconsumer, isemergencyproducer, "
                                         "isemergencyconsumer, ismpdosupported, iscanopengateway, allpdosstatic, "
                                         "excludegeneration, generatedcf, prefix, outputpath, iconpath, "
                                         "isbootupmanager, isconfigmanager, excludepdolinking, multilinedata, "
                                         "lssslave from Nodes where nodeId = %1")
                                  .arg(line)) ||
        !query.next())
        return false;
    int column = 0;
    auto text = [&] { return query.value(column++).toString(); };
    auto number = [&] { return query.value(column++).toInt(); };
    auto boolean = [&] { return query.value(column++).toInt() != 0; };
    data.name = text();
    data.edspath = text();
    data.xddpath = text();
    data.dcfpath = text();
    data.tpdocnt = quint16(number());
    data.rpdocnt = quint16(number());
    data.ismaster = boolean();
    data.issyncproducer = boolean();
    data.issyncconsumer = boolean();
    data.ishbconsumer = boolean();
    data.isemergencyproducer = boolean();
    data.isemergencyconsumer = boolean();
    data.ismpdosupported = boolean();
    data.iscanopengateway = boolean();
    data.allpdosstatic = boolean();
    data.excludegeneration = boolean();
    data.generatedcf = boolean();
    data.prefix = text();
    data.outputpath = text();
    data.iconpath = text();
    data.isbootupmanager = boolean();
    data.isconfigmanager = boolean();
    data.excludepdolinking = boolean();
    data.multilinedata = number();
    data.lssslave = boolean();
    return true;
}

bool ObjectDataBase::removeNode(quint8 line)
{
    if (updatesBlocked)
        return false;
    QSqlQuery query(database);
    for (const auto &table : ProjectSchema::lineTableNames(line))
        execQuery(query, QStringLiteral("drop table %1").arg(table));
    const bool ok = execQuery(query, QStringLiteral("delete from Nodes where nodeId = %1").arg(line));
    removeDescriptionRows(line);
    removeLineFromLists(QStringLiteral("GeneralSettings"), line);
    removeLineFromLists(QStringLiteral("J1939Settings"), line);
    execQuery(query, QStringLiteral("delete from Connections where prodnode = %1 or connode = %1").arg(line));
    subCache.remove(line);
    notify(ChangeSet{NodeRemoved, 0, 0, line});
    return ok;
}

void ObjectDataBase::removeDescriptionRows(quint8 line)
{
    // Keys of line 0 such as BaudRate_10 end in a number too; they are not rows of line 10.
    QSet<QString> lineZeroKeys;
    for (const auto &entry : SettingsKeys::descriptionDefaults())
        lineZeroKeys.insert(entry.first);
    const QString suffix = QStringLiteral("_%1").arg(line);
    QSqlQuery query(database);
    const auto keys = getDescriptionSettingKeys();
    for (const auto &key : keys) {
        if (key.endsWith(suffix) && !lineZeroKeys.contains(key))
            execQuery(query, QStringLiteral("delete from DescriptionSettings where item = '%1'").arg(escaped(key)));
    }
}

bool ObjectDataBase::copyLine(ObjectDataBase &from, quint8 fromLine, quint8 toLine, quint16 indexFrom,
                              quint16 indexTo)
{
    from.cacheAllSubs(fromLine);
    const auto indices = from.getIndices(fromLine, indexFrom, indexTo);
    for (const quint16 index : indices) {
        INDEX_DATA_T object;
        if (!from.getIndex(fromLine, index, object))
            continue;
        removeIndex(toLine, index);
        addIndex(toLine, index, object);
        const auto subIndices = from.getSubIndices(fromLine, index);
        for (const quint8 subindex : subIndices) {
            SUBINDEX_DATA_T sub;
            if (from.getSubIndex(fromLine, index, subindex, sub))
                addSubIndex(toLine, index, subindex, sub);
        }
    }
    from.subCache.remove(fromLine);
    copyPGNs(from, fromLine, toLine, 0, 0x1FFFF, Direction::Receive);
    copyPGNs(from, fromLine, toLine, 0, 0x1FFFF, Direction::Transmit);

    QSqlQuery query(database);
    const bool ok = execQuery(query, QStringLiteral("delete from UDSSettings%1").arg(toLine)) &&
                    execQuery(query, QStringLiteral("insert into UDSSettings%1 select * from UDSSettings%2")
                                         .arg(toLine)
                                         .arg(fromLine));
    if (!ok)
        qDebug() << Q_FUNC_INFO << query.lastError().text();
    return true;
}

bool ObjectDataBase::copyPGNs(ObjectDataBase &from, quint8 fromLine, quint8 toLine, quint32 numberFrom,
                              quint32 numberTo, quint8 direction)
{
    const auto numbers = from.getPGNs(fromLine, direction, false);
    if (numbers.isEmpty())
        return false;
    for (const quint32 number : numbers) {
        if (number >= numberFrom && number <= numberTo)
            importPGN(from, fromLine, toLine, number, direction);
    }
    return true;
}

bool ObjectDataBase::importPGN(ObjectDataBase &from, quint8 fromLine, quint8 toLine, quint32 number,
                               quint8 direction)
{
    PGN pgn;
    if (!from.getPGN(fromLine, number, direction, pgn))
        return false;
    removePGN(toLine, number, direction);
    if (!addPGN(toLine, number, pgn)) {
        qDebug() << "adPGN() failed: " << database.lastError().text();
        return false;
    }
    const auto spns = from.getSPNs(fromLine, number, direction);
    for (const quint32 spnNumber : spns) {
        SPN spn;
        if (from.getSPN(fromLine, number, direction, spnNumber, spn))
            addSPN(toLine, number, direction, spnNumber, spn);
    }
    return true;
}

bool ObjectDataBase::importCANID(ObjectDataBase &from, quint8 fromLine, quint8 toLine, quint32 id,
                                 quint8 direction)
{
    CANID canId;
    if (!from.getCANID(fromLine, id, direction, canId))
        return false;
    removeCANID(toLine, id, direction);
    if (!addCANID(toLine, id, canId)) {
        qDebug() << "addCANID() failed: " << database.lastError().text();
        return false;
    }
    const auto elements = from.getDataElements(fromLine, id, direction);
    for (const quint32 number : elements) {
        DataElement element;
        if (from.getDataElement(fromLine, id, direction, number, element))
            addDataElement(toLine, id, direction, number, element);
    }
    return true;
}

void ObjectDataBase::setNodeSqlValue(quint8 line, const QString &column, const QString &value)
{
    const QString simplified = value.simplified();
    if (simplified.isEmpty())
        return;
    QSqlQuery query(database);
    const QString statement =
        QStringLiteral("update Nodes set %1='%2' where nodeId = %3 ").arg(column, escaped(simplified)).arg(line);
    if (!execQuery(query, statement))
        qDebug() << Q_FUNC_INFO << statement << query.lastError().text();
}
