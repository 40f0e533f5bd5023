#pragma once

#include <QObject>
#include <QSqlDatabase>
#include <QStringList>
#include <QVariant>

#include <functional>
#include <memory>

class ObjectDataBase;
class QSettings;
class QSqlQuery;

// Turns an open store into the INI text form of a project (.ktxt) and back. The text form carries the
// CANopen and J1939 content; CAN-IDs, connections and the other bookkeeping tables stay out of it.
class DatabaseTextConverter : public QObject
{
    Q_OBJECT

public:
    explicit DatabaseTextConverter(QObject *parent = nullptr);
    ~DatabaseTextConverter() override;

    void setStore(ObjectDataBase *store) { database = store; }
    void setConnection(const QSqlDatabase &connection) { sql = connection; }
    void openForReading(const QString &path);
    void openForWriting(const QString &path);

    bool convertSqlToText();
    bool convertTextToSql();

private:
    void normaliseColumns(const QStringList &tables);
    QStringList leftOutWords();
    bool isLeftOut(const QString &table, const QStringList &words);
    void writeSettings(const QString &table);
    using GroupOf = std::function<QString(const QSqlQuery &row)>;
    using ValueOf = std::function<QVariant(const QString &column, const QVariant &value)>;
    // Each row of the statement's result becomes a group of the table's section, named by groupOf; the
    // key columns, which the group name carries, are left out.
    void writeKeyedRows(const QString &table, const QString &statement, const QStringList &keyColumns,
                        const GroupOf &groupOf, const ValueOf &valueOf);
    // String ids of the given columns as their text, every other value as it reads.
    ValueOf textOf(const QStringList &stringColumns);
    ValueOf withMetadata(const QStringList &stringColumns, bool (*keepsBlob)(const QByteArray &));
    void writeObjects(const QString &table);
    void writeSubObjects(const QString &table);
    void writeNodes();
    void writePGNs(const QString &table);
    void writeSPNs(const QString &table);
    void writeUniqueKeyed(const QString &table);
    void writeUnhandled(const QString &table);
    QString stringOf(const QVariant &id);
    int lineType(int line);

    void readNodes();
    void readSettings(const QString &group);
    void readObjects(const QString &group);
    void readSubObjects(const QString &group);
    void readRows(const QString &group);
    QString textValue(const QString &key) const;

    QSqlDatabase sql;
    ObjectDataBase *database = nullptr;
    std::unique_ptr<QSettings> settings;
};
