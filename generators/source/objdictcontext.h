#pragma once

#include "objdictmodel.h"

#include <QMap>
#include <QSet>
#include <QString>

struct ObjDictDialect;

// What the sections of gen_objdict.c share: the dictionary, the run's flags, the slots that earlier
// sections assigned and the rules by which a sub-index becomes text.
class ObjDictContext
{
public:
    ObjDictContext(const ObjDictModel &model, const ObjDictDialect &dialect);

    // Position keys: line shifted left 24, plus index shifted left 8, plus sub-index; for objects the
    // index is not shifted.
    static quint32 positionKey(quint8 line, quint16 index, quint8 subIndex)
    {
        return (quint32(line) << 24) | (quint32(index) << 8) | subIndex;
    }
    static quint32 objectKey(quint8 line, quint16 index) { return (quint32(line) << 24) | index; }

    const ObjDictModel &model;
    const ObjDictDialect &dialect;

    bool compactDescription = false;
    bool camMode = false;
    bool canFd = false;
    bool multiLine = false;
    bool forcedMultiLine = false;
    QString projectName;
    QString outputPath;
    QString toolVersion;
    QList<quint8> objectLines;
    QSet<quint32> staticSrdoEntries;
    bool staticSrdo = false;

    QMap<quint32, quint32> variablePositions;
    QMap<quint32, quint32> constPositions;
    QMap<quint32, quint32> lowLimitPositions;
    QMap<quint32, quint32> upLimitPositions;
    QMap<quint32, quint32> assignPositions;
    QMap<quint32, quint32> stringDefaultOffsets;
    QMap<quint32, quint32> stringDefaultLengths;
    // Names of the arrays that were written; they decide od_data_variables.
    QSet<QString> writtenArrays;

    bool multiLineForm() const { return multiLine || forcedMultiLine; }
    // Lines from 0 to 31 with at least one object: the order of the tables.
    QList<quint8> tableLines() const { return model.linesWithObjects(1); }
    // Lines from 0 to 31 with more than one object: the lines that the stack initialises.
    QList<quint8> initLines() const { return model.linesWithObjects(2); }

    void collectStaticSrdoEntries();
    bool isStaticSrdoEntry(quint8 line, quint16 index, quint8 subIndex) const;

    // The lowest sub-index from which all sub-indices of an array are alike; 255 for none.
    quint8 compactStart(quint8 line, quint16 index) const;
    quint32 valueIndex(quint8 line, quint16 index, quint8 subIndex) const;
    QString indexComment(quint32 key) const;
    // The C expression of the address of a sub-index's value.
    QString variableReference(quint8 line, quint16 index, quint8 subIndex) const;
    // The short name of a type in upper case as the stack spells it: "U8", "DOMAIN", "BOOL"; "U2" to
    // "U7" are "U8", and TIME_OF_DAY is "U48".
    static QString typeName(quint16 dataType);
    // "CORE_DTYPE_U8", ... of a data type.
    static QString dataTypeText(quint16 dataType);
    // The service class suffix ("_VAR", "_SDO_SERVER", ...); empty for none.
    QString serviceSuffix(quint8 line, quint16 index, quint8 subIndex, const SUBINDEX_DATA_T &sub,
                          bool virtualObject) const;
    // Type and service class of a description row, one column or two by the generation.
    QString typeAndServiceColumns(quint8 line, quint16 index, quint8 subIndex,
                                  const SUBINDEX_DATA_T &sub) const;
    // The access and mapping part of an attribute text.
    static QString accessAttributes(const SUBINDEX_DATA_T &sub);
    // The letter of a line's PDO tables in the multi-line form; empty otherwise.
    QString lineSuffix(quint8 line) const;
    // The short name of a type in lower case as array suffixes carry it; "u2" to "u7" are "u8".
    static QString arraySuffix(quint16 dataType);
    // An index in four upper case hexadecimal digits, as comments show it.
    static QString hex4(quint16 index);
};
