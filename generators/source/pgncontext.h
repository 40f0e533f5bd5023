#pragma once

#include <QHash>
#include <QList>
#include <QMap>
#include <QString>

class ObjectDataBase;
struct PgnDialect;

// What the J1939 blocks of one run read once: the lines, the settings that shape the tables and the
// source address counts of the receive PGNs. The writers of the blocks share it.
class PgnContext
{
public:
    PgnContext(ObjectDataBase &store, const PgnDialect &dialect, bool multiLine);

    ObjectDataBase &store() const { return database; }
    const PgnDialect &dialect() const { return language; }
    bool multiLine() const { return multi; }
    // J1939Settings safetysupport above 0: safe PGNs get their tables from the safety source.
    bool skipSafePgns() const { return skipSafe; }
    // J1939Settings dynsupport above 0: PGN tables live in RAM and mapping rows carry a fifth field.
    bool dynamicPgns() const { return dynamic; }
    bool canFd() const { return fd; }
    // GeneralSettings init_static_variables is 1: the managed arrays are initialised where they are
    // defined, not at run time.
    bool staticInit() const { return initialised; }

    // The lines below 32, ascending.
    const QList<quint8> &lines() const { return lineList; }
    int lineType(quint8 line) const;
    static bool isJ1939Type(int type);
    static bool isRawCanType(int type);

    // "l%1_" and "_l%1" in the multi-line form, empty otherwise.
    QString prefix(quint8 line) const;
    QString suffix(quint8 line) const;
    // " CORE_CONST " unless the PGN tables live in RAM.
    QString constText() const;

    // The PGNs of a line and direction, ascending, without the safe ones when they are skipped.
    QList<quint32> pgns(quint8 line, quint8 direction) const;
    // The configured PGNs of a line and direction: as pgns, without the stack's own address
    // claiming group among the transmit PGNs.
    QList<quint32> configuredPgns(quint8 line, quint8 direction) const;
    // How many source addresses a PGN serves, as stored; 0 when none is set.
    quint32 sourceAddresses(quint8 line, quint8 direction, quint32 pgn) const;

    // Settings as numbers in base 10; what doesn't read as a number is 0.
    static qint64 number(const QString &text);
    // Numbers in any base that their prefix says; what doesn't read as a number is 0.
    static quint64 anyBase(const QString &text);

private:
    ObjectDataBase &database;
    const PgnDialect &language;
    bool multi;
    bool skipSafe = false;
    bool dynamic = false;
    bool fd = false;
    bool initialised = false;
    QList<quint8> lineList;
    QHash<quint8, int> types;
    QHash<quint16, QMap<quint32, quint32>> sourceCounts;
};
