#include "databasetextconverter.h"

#include "objectdatabase.h"

#include <QDataStream>
#include <QDebug>
#include <QFile>
#include <QRegularExpression>
#include <QSettings>
#include <QSqlError>
#include <QSqlField>
#include <QSqlQuery>
#include <QSqlRecord>

namespace {

const QStringList alwaysLeftOut{
    QStringLiteral("CANIDs"),       QStringLiteral("Connections"),    QStringLiteral("DataElements"),
    QStringLiteral("EnergyBusSettings"), QStringLiteral("Groups"),   QStringLiteral("SignalGroups"),
    QStringLiteral("Signals"),      QStringLiteral("Strings"),        QStringLiteral("VirtualNodes"),
    QStringLiteral("LockedMappings"), QStringLiteral("LockedPDOs"),
};
const QStringList canopenWords{QStringLiteral("Objects"), QStringLiteral("Nodes"), QStringLiteral("SubObjects")};
const QStringList j1939Words{QStringLiteral("PGNs"), QStringLiteral("SPNs"), QStringLiteral("J1939Settings")};

// Columns that hold an id of the Strings table and travel as their text.
const QStringList objectStringColumns{QStringLiteral("name"), QStringLiteral("description"),
                                      QStringLiteral("device_class")};
const QStringList subObjectStringColumns{QStringLiteral("name"), QStringLiteral("description")};
const QStringList pgnStringColumns{QStringLiteral("name"), QStringLiteral("desc")};

// Sub-index columns that the text form does not carry: the key, and what only the tool itself sets.
const QStringList subObjectLeftOutColumns{QStringLiteral("objectindex"), QStringLiteral("subindex"),
                                          QStringLiteral("cyclicread"),  QStringLiteral("changedbyuser"),
                                          QStringLiteral("dcfcomponent"), QStringLiteral("wizardsource"),
                                          QStringLiteral("signalid"),    QStringLiteral("denotation")};

QString hexGroup(qint64 value)
{
    return QStringLiteral("0x%1").arg(value, 0, 16);
}

int trailingLine(const QString &name)
{
    static const QRegularExpression digits(QStringLiteral("(\\d+)$"));
    const auto match = digits.match(name);
    if (!match.hasMatch())
        return -1;
    bool ok = false;
    const int line = match.captured(1).toInt(&ok);
    if (!ok) {
        qDebug() << "Could not convert captured digits:" << match.captured(1);
        return -1;
    }
    return line;
}

bool holdsEntries(const QByteArray &blob)
{
    if (blob.isEmpty())
        return false;
    QMap<QString, QString> map;
    QDataStream stream(blob);
    stream.setVersion(QDataStream::Qt_5_6);
    stream >> map;
    return stream.status() == QDataStream::Ok && !map.isEmpty();
}

} // namespace

DatabaseTextConverter::DatabaseTextConverter(QObject *parent)
    : QObject(parent)
{
}

DatabaseTextConverter::~DatabaseTextConverter() = default;

void DatabaseTextConverter::openForReading(const QString &path)
{
    settings = std::make_unique<QSettings>(path, QSettings::IniFormat);
}

void DatabaseTextConverter::openForWriting(const QString &path)
{
    QFile::remove(path);
    settings = std::make_unique<QSettings>(path, QSettings::IniFormat);
}

int DatabaseTextConverter::lineType(int line)
{
    QSqlQuery query(sql);
    if (!query.exec(QStringLiteral("select value from GeneralSettings where item = 'line%1type'").arg(line)) ||
        !query.next())
        return -1;
    return query.value(0).toString().toInt();
}

QString DatabaseTextConverter::stringOf(const QVariant &id)
{
    QSqlQuery query(sql);
    if (!query.exec(QStringLiteral("select string from Strings where id = %1").arg(id.toLongLong())) || !query.next())
        return QString();
    return query.value(0).toString();
}

void DatabaseTextConverter::normaliseColumns(const QStringList &tables)
{
    // Set-wise, one statement per column: no NULL reaches the text, and a text of blanks becomes empty.
    QSqlQuery query(sql);
    for (const auto &table : tables) {
        QList<QPair<QString, QString>> columns;
        if (query.exec(QStringLiteral("select name, type from pragma_table_info('%1')").arg(table))) {
            while (query.next())
                columns.append({query.value(0).toString(), query.value(1).toString().toLower()});
        }
        for (const auto &[column, type] : std::as_const(columns)) {
            if (type.contains(QLatin1String("integer")))
                query.exec(QStringLiteral("update \"%1\" set \"%2\"=0 where \"%2\" is null or \"%2\" = ''")
                               .arg(table, column));
            else if (type.contains(QLatin1String("text")))
                query.exec(QStringLiteral("update \"%1\" set \"%2\" = '' where \"%2\" is null or "
                                          "trim(\"%2\", ' ' || char(9) || char(10) || char(11) || char(12) || "
                                          "char(13)) = '' and \"%2\" != ''")
                               .arg(table, column));
        }
    }
}

QStringList DatabaseTextConverter::leftOutWords()
{
    QStringList words = alwaysLeftOut;
    bool canopen = false;
    bool j1939 = false;
    for (int line = 0; line <= 254 && !(canopen && j1939); ++line) {
        const int type = lineType(line);
        canopen = canopen || type == 1 || type == 5;
        j1939 = j1939 || type == 2 || type == 5;
    }
    if (!canopen)
        words << canopenWords;
    if (!j1939)
        words << j1939Words;
    return words;
}

bool DatabaseTextConverter::isLeftOut(const QString &table, const QStringList &words)
{
    auto containsAny = [&](const QStringList &list) {
        return std::any_of(list.begin(), list.end(), [&](const QString &word) { return table.contains(word); });
    };
    if (containsAny(words))
        return true;
    const int line = trailingLine(table);
    if (line < 0)
        return false;
    const int type = lineType(line);
    return (type == 1 && containsAny(j1939Words)) || (type == 2 && containsAny(canopenWords));
}

bool DatabaseTextConverter::convertSqlToText()
{
    if (!settings)
        return false;
    QStringList tables;
    QSqlQuery query(sql);
    if (query.exec(QStringLiteral("SELECT name FROM sqlite_master WHERE type='table' ORDER BY name"))) {
        while (query.next())
            tables << query.value(0).toString();
    }
    normaliseColumns(tables);
    const QStringList words = leftOutWords();

    for (const auto &table : std::as_const(tables)) {
        if (isLeftOut(table, words)) {
            qDebug() << "Ignored table " << table;
            continue;
        }
        if (table == QLatin1String("DescriptionSettings") || table == QLatin1String("GeneralSettings") ||
            table == QLatin1String("MiscSettings") || table.contains(QLatin1String("J1939Settings")))
            writeSettings(table);
        else if (table.contains(QLatin1String("SubObjects")))
            writeSubObjects(table);
        else if (table.contains(QLatin1String("Objects")))
            writeObjects(table);
        else if (table == QLatin1String("Nodes"))
            writeNodes();
        else if (table.contains(QLatin1String("SPNs")))
            writeSPNs(table);
        else if (table.contains(QLatin1String("PGNs")))
            writePGNs(table);
        else if (table.contains(QLatin1String("UDSSettings")))
            writeUniqueKeyed(table);
        else
            writeUnhandled(table);
    }
    settings->sync();
    return true;
}

void DatabaseTextConverter::writeSettings(const QString &table)
{
    QSqlQuery query(sql);
    if (!query.exec(QStringLiteral("SELECT * FROM %1 ORDER BY item").arg(table)))
        return;
    settings->beginGroup(table);
    while (query.next())
        settings->setValue(query.value(0).toString(), query.value(1).toString());
    settings->endGroup();
}

void DatabaseTextConverter::writeKeyedRows(const QString &table, const QString &statement,
                                           const QStringList &keyColumns, const GroupOf &groupOf,
                                           const ValueOf &valueOf)
{
    QSqlQuery query(sql);
    if (!query.exec(statement))
        return;
    const QSqlRecord record = query.record();
    settings->beginGroup(table);
    while (query.next()) {
        settings->beginGroup(groupOf(query));
        for (int column = 0; column < record.count(); ++column) {
            const QString name = record.fieldName(column);
            if (!keyColumns.contains(name))
                settings->setValue(name, valueOf(name, query.value(column)));
        }
        settings->endGroup();
    }
    settings->endGroup();
}

DatabaseTextConverter::ValueOf DatabaseTextConverter::textOf(const QStringList &stringColumns)
{
    return [this, stringColumns](const QString &name, const QVariant &value) -> QVariant {
        return stringColumns.contains(name) ? stringOf(value) : value.toString();
    };
}

// A metadata blob travels as itself when the rule takes it, else as "0".
DatabaseTextConverter::ValueOf DatabaseTextConverter::withMetadata(const QStringList &stringColumns,
                                                                   bool (*keepsBlob)(const QByteArray &))
{
    return [text = textOf(stringColumns), keepsBlob](const QString &name, const QVariant &value) -> QVariant {
        if (name != QLatin1String("metadata"))
            return text(name, value);
        const QByteArray blob = value.typeId() == QMetaType::QByteArray ? value.toByteArray() : QByteArray();
        return keepsBlob(blob) ? blob : QByteArray("0");
    };
}

void DatabaseTextConverter::writeObjects(const QString &table)
{
    writeKeyedRows(
        table, QStringLiteral("SELECT * FROM %1 ORDER by objectindex").arg(table),
        {QStringLiteral("objectindex")},
        [](const QSqlQuery &row) { return hexGroup(row.value(QStringLiteral("objectindex")).toLongLong()); },
        withMetadata(objectStringColumns, holdsEntries));
}

void DatabaseTextConverter::writeSubObjects(const QString &table)
{
    writeKeyedRows(
        table, QStringLiteral("SELECT * FROM %1 ORDER by objectindex").arg(table), subObjectLeftOutColumns,
        [](const QSqlQuery &row) {
            return hexGroup(row.value(QStringLiteral("objectindex")).toLongLong()) + '/' +
                   hexGroup(row.value(QStringLiteral("subindex")).toLongLong());
        },
        withMetadata(subObjectStringColumns, [](const QByteArray &blob) { return !blob.isEmpty(); }));
}

void DatabaseTextConverter::writeNodes()
{
    writeKeyedRows(
        QStringLiteral("Nodes"), QStringLiteral("SELECT * FROM Nodes ORDER BY nodeId"),
        {QStringLiteral("nodeId")},
        [](const QSqlQuery &row) { return row.value(QStringLiteral("nodeId")).toString(); }, textOf({}));
}

void DatabaseTextConverter::writePGNs(const QString &table)
{
    writeKeyedRows(
        table, QStringLiteral("SELECT * FROM %1 ORDER by number").arg(table), {QStringLiteral("number")},
        [](const QSqlQuery &row) { return row.value(QStringLiteral("number")).toString(); },
        textOf(pgnStringColumns));
}

void DatabaseTextConverter::writeSPNs(const QString &table)
{
    QList<qint64> pgns;
    QSqlQuery query(sql);
    if (query.exec(QStringLiteral("SELECT DISTINCT number FROM PGNs%1 ORDER BY number").arg(trailingLine(table)))) {
        while (query.next())
            pgns << query.value(0).toLongLong();
    }
    for (const qint64 pgn : std::as_const(pgns)) {
        writeKeyedRows(
            table,
            QStringLiteral("SELECT * FROM %1 WHERE pgnnumber = %2 ORDER by spnnumber").arg(table).arg(pgn),
            {QStringLiteral("pgnnumber"), QStringLiteral("spnnumber")},
            [pgn](const QSqlQuery &row) {
                return QStringLiteral("%1/%2").arg(pgn).arg(
                    row.value(QStringLiteral("spnnumber")).toString());
            },
            textOf(pgnStringColumns));
    }
}

void DatabaseTextConverter::writeUniqueKeyed(const QString &table)
{
    QSqlQuery query(sql);
    if (!query.exec(QStringLiteral("SELECT ii.name AS Spaltenname FROM  pragma_index_list('%1') AS il, "
                                   "pragma_index_info(il.name) AS ii WHERE il.\"unique\" = 1;")
                        .arg(table)) ||
        !query.next())
        return;
    const QString unique = query.value(0).toString();
    writeKeyedRows(
        table, QStringLiteral("SELECT * FROM %1 ORDER BY %2").arg(table, unique), {unique},
        [unique](const QSqlQuery &row) { return unique + '/' + row.value(unique).toString(); }, textOf({}));
}

void DatabaseTextConverter::writeUnhandled(const QString &table)
{
    qDebug() << "unhandled table" << table;
    QSqlQuery query(sql);
    if (!query.exec(QStringLiteral("SELECT * FROM \"%1\"").arg(table)))
        return;
    const QSqlRecord record = query.record();
    settings->beginGroup(table);
    while (query.next()) {
        for (int column = 0; column < record.count(); ++column)
            settings->setValue(record.fieldName(column), query.value(column).toString());
    }
    settings->endGroup();
}

QString DatabaseTextConverter::textValue(const QString &key) const
{
    // A hand-edited list without quotes reads as a list; the store wants the text.
    const QVariant value = settings->value(key);
    return value.typeId() == QMetaType::QStringList ? value.toStringList().join(',') : value.toString();
}

bool DatabaseTextConverter::convertTextToSql()
{
    if (!settings || !database)
        return false;
    QStringList groups = settings->childGroups();
    if (groups.isEmpty())
        return false;
    groups.removeAll(QStringLiteral("Nodes"));
    readNodes();

    for (const auto &group : std::as_const(groups)) {
        if (group.contains(QLatin1String("DescriptionSettings")) || group.contains(QLatin1String("GeneralSettings")) ||
            group.contains(QLatin1String("MiscSettings")))
            readSettings(group);
        else if (group.contains(QLatin1String("SubObjects")))
            readSubObjects(group);
        else if (group.contains(QLatin1String("Objects")))
            readObjects(group);
        else if (group.contains(QLatin1String("UDSSettings")))
            readRows(group);
        else if (group.contains(QLatin1String("J1939Settings")))
            readSettings(group);
        else if (group.contains(QLatin1String("PGNs")) || group.contains(QLatin1String("SPNs")))
            readRows(group);
        else
            qDebug() << "unhandled group" << group;
    }
    return true;
}

void DatabaseTextConverter::readNodes()
{
    settings->beginGroup(QStringLiteral("Nodes"));
    const QStringList lines = settings->childGroups();
    for (const auto &lineGroup : lines) {
        bool ok = false;
        const uint line = lineGroup.toUInt(&ok);
        if (!ok || line > 255)
            continue;
        database->addNode(quint8(line), NODE_DATA_T());
        settings->beginGroup(lineGroup);
        const QStringList keys = settings->childKeys();
        for (const auto &key : keys)
            database->setNodeSqlValue(quint8(line), key, textValue(key));
        settings->endGroup();
    }
    settings->endGroup();
}

void DatabaseTextConverter::readSettings(const QString &group)
{
    settings->beginGroup(group);
    const QStringList keys = settings->childKeys();
    database->setDescriptionLine(0);
    for (const auto &key : keys) {
        const QString value = textValue(key);
        if (group.contains(QLatin1String("DescriptionSettings")))
            database->setDescriptionSetting(key, value);
        else if (group.contains(QLatin1String("GeneralSettings")))
            database->setGeneralSetting(key, value);
        else if (group.contains(QLatin1String("MiscSettings")))
            database->setMiscSetting(key, value);
        else
            database->setJ1939Setting(key, value);
    }
    settings->endGroup();
}

void DatabaseTextConverter::readObjects(const QString &group)
{
    settings->beginGroup(group);
    const QStringList indices = settings->childGroups();
    for (const auto &index : indices) {
        settings->beginGroup(index);
        const QStringList keys = settings->childKeys();
        for (const auto &key : keys) {
            const QVariant value = settings->value(key);
            database->setObjectIndexSqlValue(group, index, key,
                                             key == QLatin1String("metadata") ? value : QVariant(textValue(key)));
        }
        settings->endGroup();
    }
    settings->endGroup();
}

void DatabaseTextConverter::readSubObjects(const QString &group)
{
    settings->beginGroup(group);
    const QStringList indices = settings->childGroups();
    for (const auto &index : indices) {
        settings->beginGroup(index);
        const QStringList subIndices = settings->childGroups();
        for (const auto &subIndex : subIndices) {
            settings->beginGroup(subIndex);
            const QStringList keys = settings->childKeys();
            for (const auto &key : keys) {
                const QVariant value = settings->value(key);
                database->setSubindexSqlValue(group, index, subIndex, key,
                                              key == QLatin1String("metadata") ? value : QVariant(textValue(key)));
            }
            settings->endGroup();
        }
        settings->endGroup();
    }
    settings->endGroup();
}

void DatabaseTextConverter::readRows(const QString &group)
{
    const QSqlRecord tableRecord = sql.record(group);
    QSqlQuery query(sql);
    auto insert = [&](const QStringList &keyColumns, const QStringList &keyValues) {
        QStringList columns = keyColumns;
        QStringList values = keyValues;
        const QStringList keys = settings->childKeys();
        for (const auto &key : keys) {
            QString value = textValue(key);
            if (pgnStringColumns.contains(key) && !group.contains(QLatin1String("UDSSettings")))
                value = QString::number(database->getStringId(value));
            else if (tableRecord.contains(key) && tableRecord.field(key).metaType().id() == QMetaType::QString)
                value = '\'' + value.replace('\'', QStringLiteral("''")) + '\'';
            else if (value.isEmpty())
                value = QStringLiteral("NULL");
            columns << key;
            values << value;
        }
        const QString statement = QStringLiteral("INSERT OR REPLACE INTO %1 (%2) VALUES (%3)")
                                      .arg(group, columns.join(QStringLiteral(", ")), values.join(QStringLiteral(", ")));
        if (!query.exec(statement))
            qDebug() << Q_FUNC_INFO << "Line:" << __LINE__ << "failed:" << query.lastError().text();
    };

    settings->beginGroup(group);
    const QStringList outer = settings->childGroups();
    for (const auto &first : outer) {
        settings->beginGroup(first);
        if (group.contains(QLatin1String("PGNs"))) {
            insert({QStringLiteral("number")}, {first});
        } else {
            const QStringList inner = settings->childGroups();
            for (const auto &second : inner) {
                settings->beginGroup(second);
                if (group.contains(QLatin1String("SPNs")))
                    insert({QStringLiteral("pgnnumber"), QStringLiteral("spnnumber")}, {first, second});
                else
                    insert({first}, {second});
                settings->endGroup();
            }
        }
        settings->endGroup();
    }
    settings->endGroup();
}
