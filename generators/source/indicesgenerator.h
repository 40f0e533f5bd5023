#pragma once

#include "generation/abstractgenerator.h"

#include <QHash>
#include <QList>
#include <QSet>

// gen_indices.h: a C name for every object, sub-index, raw CAN-ID, data element, PGN and SPN of the
// project. Names come from free text and must end up as unique identifiers that stay the same from run
// to run, so every rule below is about naming.
class IndicesGenerator : public AbstractGenerator
{
    Q_OBJECT

public:
    using AbstractGenerator::AbstractGenerator;

    QString outputFile() const override;
    QString generatorName() const override;
    void setLines(const QList<quint8> &lineList) { lines = lineList; }

    // Letters, digits and single underscores only, without an underscore at either end.
    static QString cleanDefineName(const QString &text);

protected:
    void writeContent(QTextStream &out) override;

private:
    void writeLine(QTextStream &out, quint8 canLine);
    void writeObject(QTextStream &out, quint8 canLine, quint16 index);
    void writeSubIndices(QTextStream &out, quint8 canLine, quint16 index);
    void writePdoAlias(QTextStream &out, quint8 canLine, quint16 index, const QString &defineName);
    void writeCanIds(QTextStream &out, quint8 canLine, quint8 direction);
    void writePgns(QTextStream &out, quint8 canLine, quint8 direction);
    void writeSpns(QTextStream &out, quint8 canLine, quint32 pgn, quint8 direction);
    void writeAddressClaim(QTextStream &out, quint8 canLine) const;
    QString linePrefix(quint8 canLine) const;
    // A name already used on this line gets the next number of its counter behind it.
    QString numbered(const QString &name);
    // A name already used on this line gets the CAN-ID behind it. Only a claiming name is taken for the
    // line: data elements share their names, they never make a later name unique.
    QString withIdSuffix(const QString &name, quint32 id, bool claim);

    QList<quint8> lines;
    QHash<QString, int> nameCounts;
    QSet<QString> writtenNames;
};
