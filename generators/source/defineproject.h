#pragma once

#include <QList>
#include <QString>

class ObjectDataBase;

// What the configuration header reads of the project: settings as text and as numbers, the lines
// and their protocols, and the counts of objects and sub-indices that the formulas are made of.
class DefineProject
{
public:
    explicit DefineProject(ObjectDataBase &store);

    ObjectDataBase &store() const { return database; }

    // A setting as a number; base 10 unless anyBase, where a prefix picks it. What doesn't read is 0.
    static qint64 number(const QString &text, bool anyBase = false);

    QString general(const QString &key) const;
    qint64 generalNumber(const QString &key, bool anyBase = false) const;
    // Greater than 0.
    bool generalOn(const QString &key) const;
    // Exactly the number 1.
    bool generalIsOne(const QString &key) const;
    QString j1939(const QString &key) const;
    qint64 j1939Number(const QString &key) const;
    QString energyBus(const QString &key) const;
    // The element of a per-line comma list; beyond its end the last element.
    QString lineGeneral(const QString &key, quint8 line) const;
    qint64 lineGeneralNumber(const QString &key, quint8 line, bool anyBase = false) const;

    // The project's lines, without the store's internal ones.
    const QList<quint8> &lines() const { return projectLines; }
    // 0 up to the number of lines less 1: the positions that per-line lists are written for.
    const QList<quint8> &lineList() const { return positions; }
    int lineType(quint8 line) const;
    static bool isCanopenType(int type);
    static bool isJ1939Type(int type);
    static bool isRawCanType(int type);
    // J1939 without CANopen: such a line has the CiA 510 SDO server and client of the J1939 settings.
    static bool isJ1939WithoutCanopen(int type);
    // Whether one of the lines carries the protocol.
    bool anyLine(bool (*protocol)(int type)) const;

    int objects(quint8 line, quint16 first, quint16 last) const;
    // Sub-indices of an object from 1 upward, and from 0 upward.
    int subs(quint8 line, quint16 index) const;
    int subs0(quint8 line, quint16 index) const;
    bool exists(quint8 line, quint16 index) const;
    QString defaultValue(quint8 line, quint16 index, quint8 subIndex) const;
    // A default value as a number of any base.
    qint64 defaultNumber(quint8 line, quint16 index, quint8 subIndex) const;

    // A buffer size list with the suffix "u" on every number; the default when the key is empty.
    QString bufferList(const QString &key, const QString &fallback) const;
    // The sum of the numbers of a buffer size list.
    qint64 bufferSum(const QString &key, const QString &fallback) const;

private:
    ObjectDataBase &database;
    QList<quint8> projectLines;
    QList<quint8> positions;
};
