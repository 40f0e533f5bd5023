#pragma once

#include <QHash>
#include <QList>
#include <QString>

class ObjDictContext;
class QTextStream;

// The mapping tables of the static PDOs. A PDO whose mapping the stack may change at run time has no
// table. Without routing between lines, RPDOs with equal mappings share one table.
class ObjDictPdoTables
{
public:
    explicit ObjDictPdoTables(const ObjDictContext &context);

    void write(QTextStream &out);

    // Whether the mapping of a PDO is fixed: its mapping object's sub-index 0 exists and is not "rw".
    bool isStaticMapping(quint8 line, quint16 commIndex) const;
    // Whether a table was written for the PDO: static, with at least one entry.
    bool hasTable(quint8 line, quint16 commIndex) const;
    // The table of an RPDO among the shared tables of its line; the given text when it has none.
    QString uniqueRpdoTable(quint8 line, quint16 commIndex, const QString &table) const;
    // The number of sub-indices from 1 of the routing objects over the initialised lines.
    int routedEntries() const;

private:
    struct Entry
    {
        QString reference;
        quint8 length = 0;
        quint32 value = 0;
        bool operator==(const Entry &) const = default;
    };
    using Table = QList<Entry>;

    int mappingCount(quint8 line, quint16 commIndex) const;
    Table entries(quint8 line, quint16 commIndex) const;
    QString row(quint8 line, const Entry &entry) const;
    // One mapping table "mapTable<name>" of the stack type, its rows, the unused rows, the closing.
    void writeMapTable(QTextStream &out, quint8 line, const char *type, const QString &name,
                       const Table &table, bool routed, const QString &filler) const;
    void writeFiller(QTextStream &out, int from, const QString &routing) const;
    QString routingList(quint32 value) const;

    const ObjDictContext &context;
    int maxEntries = 0;
    bool bitwise = false;
    QHash<quint8, QList<Table>> uniqueRpdoTables;
};
