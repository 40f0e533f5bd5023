// The five settings tables, the per-line comma lists and the description line suffix.

#include "objectdatabase.h"
#include "projectschema.h"
#include "settingskeys.h"

#include <QDebug>
#include <QSqlError>
#include <QSqlQuery>

namespace {

const QString generalTable = QStringLiteral("GeneralSettings");
const QString j1939Table = QStringLiteral("J1939Settings");
const QString descriptionTable = QStringLiteral("DescriptionSettings");
const QString energyBusTable = QStringLiteral("EnergyBusSettings");
const QString miscTable = QStringLiteral("MiscSettings");

QString escaped(QString text)
{
    return text.replace('\'', QStringLiteral("''"));
}

// The element of a per-line list for a line; a list shorter than the line yields its last element.
QString listElement(const QString &value, quint8 line)
{
    if (value.isEmpty())
        return value;
    const QStringList elements = value.split(',');
    return elements.value(line, elements.last());
}

QString withListElement(const QString &value, const QString &element, quint8 line)
{
    QStringList elements = value.split(',');
    while (elements.size() <= line)
        elements << QStringLiteral(" ");
    elements[line] = element;
    return elements.join(',');
}

} // namespace

QString ObjectDataBase::readSetting(const QString &table, const QString &key)
{
    QSqlQuery query(database);
    if (!execQuery(query, QStringLiteral("select value from %1 where item = '%2'").arg(table, escaped(key))) ||
        !query.next())
        return QString();
    return query.value(0).toString();
}

bool ObjectDataBase::writeSetting(const QString &table, const QString &key, const QString &value, ChangeKind kind)
{
    QSqlQuery query(database);
    const QString item = escaped(key);
    if (!execQuery(query, QStringLiteral("select value from %1 where item = '%2'").arg(table, item))) {
        qDebug() << Q_FUNC_INFO << table << key << query.lastError().text();
        return false;
    }
    QString statement;
    if (query.next()) {
        if (query.value(0).toString() == value && !query.value(0).isNull())
            return true;
        statement = QStringLiteral("update %1 set value = '%2' where item = '%3'").arg(table, escaped(value), item);
    } else {
        statement = QStringLiteral("insert into %1 values('%2','%3')").arg(table, item, escaped(value));
    }
    if (!execQuery(query, statement)) {
        qDebug() << Q_FUNC_INFO << statement << query.lastError().text();
        return false;
    }
    notify(ChangeSet{kind});
    return true;
}

QStringList ObjectDataBase::settingKeys(const QString &table)
{
    QStringList keys;
    QSqlQuery query(database);
    if (execQuery(query, QStringLiteral("select item from %1").arg(table))) {
        while (query.next())
            keys << query.value(0).toString();
    }
    return keys;
}

QString ObjectDataBase::getGeneralSetting(const QString &key)
{
    return readSetting(generalTable, key);
}

bool ObjectDataBase::setGeneralSetting(const QString &key, const QString &value)
{
    return writeSetting(generalTable, key, value, GeneralSettingChanged);
}

bool ObjectDataBase::generalSettingExists(const QString &key)
{
    QSqlQuery query(database);
    return execQuery(query, QStringLiteral("select value from %1 where item = '%2'").arg(generalTable, escaped(key))) &&
           query.next();
}

QStringList ObjectDataBase::getGeneralSettingKeys()
{
    return settingKeys(generalTable);
}

QString ObjectDataBase::getLineGeneralSetting(const QString &key, quint8 line)
{
    return listElement(getGeneralSetting(key), line);
}

bool ObjectDataBase::setLineGeneralSetting(const QString &key, const QString &value, quint8 line)
{
    return setGeneralSetting(key, withListElement(getGeneralSetting(key), value, line));
}

QString ObjectDataBase::getJ1939Setting(const QString &key)
{
    return readSetting(j1939Table, key);
}

bool ObjectDataBase::setJ1939Setting(const QString &key, const QString &value)
{
    if (updatesBlocked)
        return false;
    return writeSetting(j1939Table, key, value, J1939SettingChanged);
}

QStringList ObjectDataBase::getJ1939SettingKeys()
{
    return settingKeys(j1939Table);
}

QString ObjectDataBase::getLineJ1939Setting(const QString &key, quint8 line)
{
    return listElement(getJ1939Setting(key), line);
}

bool ObjectDataBase::setLineJ1939Setting(const QString &key, const QString &value, quint8 line)
{
    return setJ1939Setting(key, withListElement(getJ1939Setting(key), value, line));
}

QString ObjectDataBase::descriptionKey(const QString &key) const
{
    return descriptionLine == 0 ? key : QStringLiteral("%1_%2").arg(key).arg(descriptionLine);
}

QString ObjectDataBase::getDescriptionSetting(const QString &key)
{
    return readSetting(descriptionTable, descriptionKey(key));
}

bool ObjectDataBase::setDescriptionSetting(const QString &key, const QString &value)
{
    return writeSetting(descriptionTable, descriptionKey(key), value, DescriptionSettingChanged);
}

QStringList ObjectDataBase::getDescriptionSettingKeys()
{
    return settingKeys(descriptionTable);
}

QString ObjectDataBase::getEnergyBusSetting(const QString &key)
{
    return readSetting(energyBusTable, key);
}

bool ObjectDataBase::setEnergyBusSetting(const QString &key, const QString &value)
{
    return writeSetting(energyBusTable, key, value, EnergyBusSettingChanged);
}

bool ObjectDataBase::removeEnergyBusSetting(const QString &key)
{
    QSqlQuery query(database);
    const QString statement = QStringLiteral("delete from %1 where item = '%2'").arg(energyBusTable, escaped(key));
    if (!execQuery(query, statement)) {
        qDebug() << Q_FUNC_INFO << statement << query.lastError().text();
        return false;
    }
    notify(ChangeSet{EnergyBusSettingChanged});
    return true;
}

QStringList ObjectDataBase::getEnergyBusKeys()
{
    return settingKeys(energyBusTable);
}

QString ObjectDataBase::getMiscSetting(const QString &key)
{
    return readSetting(miscTable, key);
}

bool ObjectDataBase::setMiscSetting(const QString &key, const QString &value)
{
    if (updatesBlocked)
        return false;
    return writeSetting(miscTable, key, value, MiscSettingChanged);
}

QStringList ObjectDataBase::getMiscSettingKeys()
{
    return settingKeys(miscTable);
}

bool ObjectDataBase::copySettingsFrom(ObjectDataBase &other)
{
    QSqlQuery query(database);
    bool ok = true;
    for (const auto &table : {generalTable, descriptionTable}) {
        ok = execQuery(query, QStringLiteral("drop table %1").arg(table)) && ok;
        ok = execQuery(query, QStringLiteral("create table %1 (item text unique, value text)").arg(table)) && ok;
    }
    const auto generalKeys = other.getGeneralSettingKeys();
    for (const auto &key : generalKeys)
        setGeneralSetting(key, other.getGeneralSetting(key));
    const auto descriptionKeys = other.getDescriptionSettingKeys();
    for (const auto &key : descriptionKeys)
        writeSetting(descriptionTable, key, other.readSetting(descriptionTable, key), DescriptionSettingChanged);
    return ok;
}

void ObjectDataBase::writeDescriptionDefaults(quint8 line)
{
    const QStringList existing = getDescriptionSettingKeys();
    for (const auto &[key, value] : SettingsKeys::descriptionDefaults()) {
        const QString lineKey = line == 0 ? key : QStringLiteral("%1_%2").arg(key).arg(line);
        if (!existing.contains(lineKey))
            writeSetting(descriptionTable, lineKey, value, DescriptionSettingChanged);
    }
}

void ObjectDataBase::removeLineFromLists(const QString &table, quint8 line)
{
    QSqlQuery query(database);
    const QString lineType = QStringLiteral("line%1type").arg(line);
    QList<QPair<QString, QString>> rows;
    if (execQuery(query, QStringLiteral("select item, value from %1").arg(table))) {
        while (query.next())
            rows.append({query.value(0).toString(), query.value(1).toString()});
    }
    for (const auto &[key, value] : std::as_const(rows)) {
        if (key.contains(lineType)) {
            execQuery(query, QStringLiteral("delete from %1 where item = '%2'").arg(table, escaped(key)));
            continue;
        }
        QStringList elements = value.split(',');
        if (value.isEmpty() || elements.size() <= line)
            continue;
        elements.removeAt(line);
        writeSetting(table, key, elements.join(','),
                     table == generalTable ? GeneralSettingChanged : J1939SettingChanged);
    }
}
