#pragma once

#include "objdictcontext.h"
#include "objdictmodel.h"

#include <QHash>
#include <QList>
#include <QString>

#include <memory>

class CommonGeneratorHelperBase;
class ObjectDataBase;
struct MultiProDialect;

// Which protocols a multi-protocol project holds, and so which file it makes.
struct MultiProFlags
{
    bool hasCANopen = false;
    bool hasJ1939 = false;
    bool hasRawCAN = false;
    bool rawCanOnly = false;
    bool bootloaderMode = false;
    bool fdSupport = false;
    bool multiLine = false;

    // `bootloader` says whether the generation knows bootloader projects at all.
    static MultiProFlags read(ObjectDataBase &store, bool multiLine, bool bootloader);
    // gen_rawcan.c, gen_uds.c or gen_mp.c, with %1 for the output folder.
    QString filePattern() const;
};

// What the sections of a multi-protocol source share: the flags, the lines and their types, the object
// dictionary in the form its writers read it, and the shared init blocks of the generation.
class MultiProContext
{
public:
    MultiProContext(ObjectDataBase &store, const MultiProDialect &dialect, const MultiProFlags &flags,
                    bool compact);
    ~MultiProContext();

    ObjectDataBase &store;
    const MultiProDialect &dialect;
    MultiProFlags flags;
    const ObjDictModel model;
    ObjDictContext objDict;
    const std::unique_ptr<CommonGeneratorHelperBase> helper;

    // The lines below 32, ascending.
    const QList<quint8> &lines() const { return lineList; }
    static QList<quint8> projectLines(ObjectDataBase &store);
    int lineType(quint8 line) const;
    // A UDS server or client is configured.
    bool udsOn() const;
    // A general setting as a number in base 10; 0 for what does not read as one.
    qint64 number(const char *key) const;
    // The J1939 device serves a CiA 510 object dictionary.
    bool cia510() const;

    // J1939 and raw CAN lines are told apart as the PGN blocks tell them (PgnContext).
    static bool isCANopenType(int type) { return type == 1 || type == 5 || type == 6; }

private:
    QList<quint8> lineList;
    QHash<quint8, int> types;
};
