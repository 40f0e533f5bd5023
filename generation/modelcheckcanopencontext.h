#pragma once

#include "store/objectrecords.h"

#include <QList>
#include <QString>

class ModelCheckOutput;
class ObjectDataBase;

// What the CANopen rules of one line share: the store and line in work, the settings read for the line,
// the output, and reads that give a missing record the values the rules expect of it.
struct ModelCheckCANopenContext
{
    ModelCheckCANopenContext(ObjectDataBase *database, quint8 line, ModelCheckOutput &output,
                             bool &corrected);

    // The record, or when it cannot be read the defaults of an editor entry: "ro", UNSIGNED8, mappable,
    // default value in the EDS.
    SUBINDEX_DATA_T subIndex(quint16 index, quint8 subIndex) const;
    // The default value text; empty for a missing sub-index.
    QString text(quint16 index, quint8 subIndex) const;
    // The default value as a number of automatic base; 0 for what does not read as one.
    quint64 value(quint16 index, quint8 subIndex) const;
    bool exists(quint16 index) const;
    bool exists(quint16 index, quint8 subIndex) const;
    QList<quint8> subIndices(quint16 index, quint8 from = 0) const;
    QList<quint16> indices(quint16 from, quint16 to) const;

    // Writes a corrected default value; the whole record, so that the store's cache of the line, which the
    // generators read after the check, holds it too. Nothing is written for a missing sub-index.
    void correctDefaultValue(quint16 index, quint8 subIndex, const QString &value);
    // Writes a corrected record.
    void correctSubIndex(quint16 index, quint8 subIndex, const SUBINDEX_DATA_T &data);
    // Whether auto-correction may change the project.
    bool mayCorrect() const { return !autoCorrectionDisabled; }

    // A number of automatic base; 0 for what does not read as one.
    static quint64 number(const QString &text);
    // Whether the default value goes into a device description.
    static bool defaultGoesToEds(const SUBINDEX_DATA_T &data);

    ObjectDataBase *database;
    quint8 line;
    ModelCheckOutput &output;
    bool &corrected;

    bool limitCheckEnabled = false;
    bool autoCorrectionDisabled = false;
    bool canFd = false;
    bool bitwiseMappingEnabled = false;
    quint8 granularity = 8;
};
