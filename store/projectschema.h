#pragma once

#include <QList>
#include <QString>

// The statements that create the tables of a project file. Several operations of the store create
// tables (a new project, the schema migration, a new line, the UNIQUE repair of old sub-index tables),
// so the texts live here once.
class ProjectSchema
{
public:
    struct Table
    {
        const char *name;
        const char *columns;
    };

    // Tables that exist once per file, in the order a new project creates them.
    static const QList<Table> &globalTables();
    // Tables that exist once per line, as templates with %1 for the line.
    static const QList<Table> &lineTables();

    static QString createStatement(const Table &table, bool ifNotExists = false);
    static QString createLineStatement(const Table &table, quint8 line, bool ifNotExists = true);
    static const Table *lineTable(const char *name);
    static const Table *globalTable(const char *name);

    // Names of the per-line tables a line owns, UDSSettings%1 included.
    static QStringList lineTableNames(quint8 line);
};
