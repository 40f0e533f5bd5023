#pragma once

#include "store/objectrecords.h"

#include <QHash>
#include <QList>
#include <QMap>
#include <QString>

class ObjectDataBase;

// One object of a line with its sub-indices in ascending order.
struct ObjDictObject
{
    INDEX_DATA_T data;
    QMap<quint8, SUBINDEX_DATA_T> subs;
};

// The object dictionaries of the lines below 32, read once with one query per line, so that the many
// walks of the dictionary sources run in memory. Settings are read through on demand.
class ObjDictModel
{
public:
    explicit ObjDictModel(ObjectDataBase *store);

    ObjectDataBase *store() const { return database; }

    // The lines of the store below 32, in the store's order.
    const QList<quint8> &lines() const { return storeLines; }
    // Lines from 0 to 31 with at least one object, ascending.
    QList<quint8> linesWithObjects(int minimumObjects = 1) const;

    const QMap<quint16, ObjDictObject> &objects(quint8 line) const;
    QList<quint16> indices(quint8 line, quint16 from = 0, quint16 to = 0xFFFF) const;
    bool exists(quint8 line, quint16 index) const;
    // Null when the sub-index does not exist.
    const SUBINDEX_DATA_T *sub(quint8 line, quint16 index, quint8 subIndex) const;
    QList<quint8> subIndices(quint8 line, quint16 index, quint8 from = 0) const;
    int subCount(quint8 line, quint16 index, quint8 from = 0) const;
    int objectCount(quint8 line) const { return objects(line).size(); }
    // The sub-indices of all objects of a line, from 0.
    int subIndexCount(quint8 line) const;

    QString setting(const QString &key) const;
    bool settingExists(const QString &key) const;
    // A setting read as number in base 10; 0 for what does not read as one.
    qint64 number(const QString &key) const;
    QString lineSetting(const QString &key, quint8 line) const;
    qint64 lineNumber(const QString &key, quint8 line) const;

private:
    ObjectDataBase *database;
    QList<quint8> storeLines;
    QHash<quint8, QMap<quint16, ObjDictObject>> dictionary;
};
