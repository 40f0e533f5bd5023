#pragma once

#include "generation/abstractgenerator.h"

#include <QMap>

class ObjDictContext;
struct ObjDictDialect;

// gen_vobjdict.c: the description and assignment tables of the virtual sub-indices, whose values lie
// in memory that the stack reaches through the application. The twins of the two stack generations
// derive from this and give it their dialect.
class VobjDictGeneratorBase : public AbstractGenerator
{
    Q_OBJECT

public:
    QString outputFile() const override;
    QString generatorName() const override;
    bool hasContent() override { return hasVirtualObjects(); }

    // Whether a sub-index of a table line is virtual; without one the driver writes no file.
    bool hasVirtualObjects();
    // The value column holds the object's index instead of a slot.
    void setSpecialVirtualObjects(bool value) { specialVirtualObjects = value; }

protected:
    VobjDictGeneratorBase(const ObjDictDialect &dialect, bool compactDescription, QObject *parent);

    void prepare() override;
    void writeContent(QTextStream &out) override;

private:
    void assignSlots(const ObjDictContext &context);
    void writeDescription(QTextStream &out, const ObjDictContext &context);
    void writeAssignment(QTextStream &out, const ObjDictContext &context) const;
    QString typeColumns(const ObjDictContext &context, quint8 line, quint16 index, quint8 subIndex,
                        quint16 dataType) const;
    // Lines from 0 to 31 with more than one object from 0x1000 upward.
    static QList<quint8> tableLines(const ObjDictContext &context);

    const ObjDictDialect &dialect;
    bool compactDescription;
    bool specialVirtualObjects = false;
    QMap<quint32, quint32> variablePositions;
    QMap<quint32, quint32> assignPositions;
    QMap<quint32, quint32> rowCounts;
};
