#include "objectdatabase.h"

#include <QCoreApplication>
#include <QDebug>
#include <QFile>
#include <QScopeGuard>
#include <QSet>
#include <QSqlError>
#include <QSqlQuery>
#include <QSqlRecord>
#include <QThread>

#include <cstdlib>

namespace {

QAtomicInt instanceCounter;

// Statements after which the working file differs, for the undo manager.
bool isWritingStatement(const QString &statement)
{
    static const QStringList writes{QStringLiteral("insert"), QStringLiteral("update"), QStringLiteral("delete"),
                                    QStringLiteral("replace"), QStringLiteral("create"), QStringLiteral("drop"),
                                    QStringLiteral("alter")};
    const QString text = statement.trimmed();
    for (const auto &word : writes) {
        if (text.startsWith(word, Qt::CaseInsensitive))
            return true;
    }
    return false;
}

} // namespace

ObjectDataBase::ObjectDataBase(QObject *parent)
    : QObject(parent)
{
    connectionName = QStringLiteral("db%1").arg(instanceCounter.fetchAndAddOrdered(1) + 1);
    std::srand(static_cast<unsigned int>(reinterpret_cast<quintptr>(QThread::currentThreadId())));
    database = QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), connectionName);
    if (!database.isValid()) {
        qDebug() << "Db drivers: " << QSqlDatabase::drivers();
        qDebug() << "Db last error: " << database.lastError().text();
    }
}

ObjectDataBase::~ObjectDataBase()
{
    closeDatabase();
    database = QSqlDatabase();
    QSqlDatabase::removeDatabase(connectionName);
    for (const auto &file : std::as_const(tempFiles))
        QFile::remove(file);
}

bool ObjectDataBase::execQuery(QSqlQuery &query, const QString &statement)
{
    if (writeBlock && !allowedThreads.contains(QThread::currentThreadId())) {
        while (writeBlock) {
            QCoreApplication::processEvents();
            QThread::yieldCurrentThread();
        }
    }
    statementsInFlight.ref();
    const bool ok = statement.isEmpty() ? query.exec() : query.exec(statement);
    statementsInFlight.deref();
    if (!ok || !notifyWrites)
        return ok;
    if (isWritingStatement(statement.isEmpty() ? query.lastQuery() : statement))
        emit databaseWriteExecuted();
    return ok;
}

bool ObjectDataBase::executeSql(const QString &statement)
{
    sqlResults.clear();
    // Reading the rows steps the statement too, so close must wait for the whole read.
    statementsInFlight.ref();
    const auto leave = qScopeGuard([this] { statementsInFlight.deref(); });
    QSqlQuery query(database);
    if (!execQuery(query, statement)) {
        sqlResults << query.lastError().text();
        return false;
    }
    while (query.next()) {
        QString row;
        const int columns = qMin(query.record().count(), 10);
        for (int column = 0; column < columns; ++column)
            row += query.value(column).toString() + ' ';
        sqlResults << row;
    }
    return true;
}

bool ObjectDataBase::readPrepared(const QString &statement, const QVariantList &values,
                                  const std::function<void(const QSqlQuery &row)> &reader)
{
    const auto key = qMakePair(QThread::currentThreadId(), statement);
    auto prepared = preparedQueries.find(key);
    if (prepared == preparedQueries.end()) {
        QSqlQuery query(database);
        query.setForwardOnly(true);
        if (!query.prepare(statement))
            return false;
        prepared = preparedQueries.insert(key, query);
    }
    statementsInFlight.ref();
    const auto leave = qScopeGuard([this] { statementsInFlight.deref(); });
    QSqlQuery &query = prepared.value();
    for (qsizetype i = 0; i < values.size(); ++i)
        query.bindValue(int(i), values.at(i));
    const bool ok = execQuery(query, QString());
    if (ok) {
        while (query.next())
            reader(query);
    }
    // A statement left open would keep its tables locked against drop and alter.
    query.finish();
    return ok;
}

void ObjectDataBase::setBlockUpdates(bool block)
{
    updatesBlocked = block;
    setWriteBlock(block);
}

void ObjectDataBase::setWriteBlock(bool block)
{
    const Qt::HANDLE thread = QThread::currentThreadId();
    if (block) {
        if (!allowedThreads.contains(thread))
            allowedThreads.append(thread);
    } else {
        allowedThreads.removeAll(thread);
    }
    writeBlock = block;
    emit blockStateChanged(block);
}

void ObjectDataBase::notify(const ChangeSet &change)
{
    emit updateNotify(change);
}

qint32 ObjectDataBase::getStringId(const QString &text)
{
    const auto cached = idsByString.constFind(text);
    if (cached != idsByString.constEnd())
        return cached.value();
    QString escaped = text;
    escaped.replace('\'', QStringLiteral("''"));
    QSqlQuery query(database);
    if (!execQuery(query, QStringLiteral("insert into Strings values(NULL,'%1')").arg(escaped))) {
        qDebug() << Q_FUNC_INFO << query.lastError().text();
        return -1;
    }
    if (!execQuery(query, QStringLiteral("select id from Strings where string = '%1'").arg(escaped)) ||
        !query.next()) {
        qDebug() << Q_FUNC_INFO << query.lastError().text();
        return -1;
    }
    const qint32 id = query.value(0).toInt();
    idsByString.insert(text, id);
    stringsById.insert(id, text);
    return id;
}

QString ObjectDataBase::getString(qint32 id)
{
    const auto cached = stringsById.constFind(id);
    if (cached != stringsById.constEnd())
        return cached.value();
    QSqlQuery query(database);
    if (!execQuery(query, QStringLiteral("select string from Strings where id = %1").arg(id)) || !query.next())
        return QString();
    const QString text = query.value(0).toString();
    stringsById.insert(id, text);
    return text;
}

void ObjectDataBase::cacheStrings()
{
    stringsById.clear();
    idsByString.clear();
    QSqlQuery query(database);
    if (!execQuery(query, QStringLiteral("select * from Strings")))
        return;
    while (query.next()) {
        const qint32 id = query.value(0).toInt();
        const QString text = query.value(1).toString();
        stringsById.insert(id, text);
        // The first row of a text wins, as the select of getStringId would find it.
        if (!idsByString.contains(text))
            idsByString.insert(text, id);
    }
}

void ObjectDataBase::cleanUnusedStrings()
{
    struct StringColumns
    {
        const char *table;
        const char *columns;
    };
    static const StringColumns lineColumns[] = {
        {"Objects%1", "name, description, device_class"},
        {"SubObjects%1", "name, denotation, description"},
        {"PGNs%1", "name, desc"},
        {"CANIDs%1", "name, desc"},
        {"SPNs%1", "name, desc"},
        {"DataElements%1", "name, desc"},
    };

    QSqlQuery query(database);
    QList<qint32> ids;
    if (execQuery(query, QStringLiteral("select id from Strings"))) {
        while (query.next())
            ids << query.value(0).toInt();
    }

    QSet<qint32> used;
    auto collect = [&](const QString &statement) {
        if (!execQuery(query, statement))
            return;
        const int columns = query.record().count();
        while (query.next()) {
            for (int column = 0; column < columns; ++column)
                used.insert(query.value(column).toInt());
        }
    };
    collect(QStringLiteral("select distinct name from Signals"));
    const auto lines = getLines();
    for (const quint8 line : lines) {
        for (const auto &source : lineColumns) {
            collect(QStringLiteral("select distinct %1 from %2")
                        .arg(QLatin1String(source.columns), QString::fromLatin1(source.table).arg(line)));
        }
    }

    for (const qint32 id : std::as_const(ids)) {
        if (!used.contains(id))
            execQuery(query, QStringLiteral("delete from Strings where id = %1").arg(id));
    }
    cacheStrings();
}
