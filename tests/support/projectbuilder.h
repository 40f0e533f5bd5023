#pragma once

#include "store/objectdatabase.h"

#include <memory>

// Builds a project in code, so that a test reads as the project it needs:
//   ProjectBuilder p; p.line(0, 1).var(0, 0x2000, "Speed", 6, "rw", "0");
// The store is a fresh one of the current schema; settings of the template are not applied.
class ProjectBuilder
{
public:
    ProjectBuilder();
    ~ProjectBuilder();

    ObjectDataBase &store() { return *database; }

    // Creates the line when it is missing and sets its type (1 CANopen, 2 J1939, 4 raw CAN, 5, 6, 7).
    ProjectBuilder &line(quint8 line, int type);
    ProjectBuilder &general(const QString &key, const QString &value);
    ProjectBuilder &j1939(const QString &key, const QString &value);
    ProjectBuilder &misc(const QString &key, const QString &value);
    ProjectBuilder &description(quint8 line, const QString &key, const QString &value);

    // An object without sub-indices; objectType 7 VAR, 8 ARRAY, 9 RECORD.
    ProjectBuilder &object(quint8 line, quint16 index, const QString &name, quint32 objectType = 7,
                           quint16 dataType = 7);
    ProjectBuilder &object(quint8 line, quint16 index, const INDEX_DATA_T &data);
    ProjectBuilder &sub(quint8 line, quint16 index, quint8 subIndex, const SUBINDEX_DATA_T &data);
    ProjectBuilder &sub(quint8 line, quint16 index, quint8 subIndex, const QString &name, quint16 dataType,
                        const QString &access, const QString &defaultValue);
    // A VAR object with its sub-index 0.
    ProjectBuilder &var(quint8 line, quint16 index, const QString &name, quint16 dataType, const QString &access,
                        const QString &defaultValue);

    ProjectBuilder &pgn(quint8 line, const PGN &data);
    ProjectBuilder &pgn(quint8 line, quint32 number, quint8 direction, const QString &name, quint8 priority = 6,
                        quint16 cycleTime = 0);
    ProjectBuilder &spn(quint8 line, const SPN &data);
    ProjectBuilder &spn(quint8 line, quint32 pgn, quint8 direction, quint32 number, const QString &name,
                        quint16 dataType, quint8 pos, quint16 bitPosition, quint8 implementation = 0,
                        const QString &varName = QString());
    ProjectBuilder &canId(quint8 line, quint32 id, quint8 direction, const QString &name, quint16 cycleTime = 0);
    ProjectBuilder &dataElement(quint8 line, const DataElement &data);

    // A sub-index record with the usual defaults of an editor entry.
    static SUBINDEX_DATA_T subRecord(const QString &name, quint16 dataType, const QString &access,
                                     const QString &defaultValue);

    bool save(const QString &path);

private:
    std::unique_ptr<ObjectDataBase> database;
};
