#pragma once

#include "generation/abstractgenerator.h"

class HTMLPage;

// The HTML page of a line's object dictionary: generation information, comment, a table of contents and
// one block per object with a table per sub-index.
class HTMLGenerator : public AbstractGenerator
{
    Q_OBJECT

public:
    using AbstractGenerator::AbstractGenerator;

    GeneratorStatus start() override;
    QString outputFile() const override;
    QString generatorName() const override { return QStringLiteral("HTML documentation"); }

protected:
    void prepare() override;
    void writeContent(QTextStream &out) override;

private:
    void writeFrameStart(QTextStream &out, const QString &headCell);
    void writeGenerationTable(QTextStream &out, const QString &date);
    void writeCommentTable(QTextStream &out);
    void writeTableOfContents(QTextStream &out, const QList<quint16> &indices);
    bool writeObject(QTextStream &out, HTMLPage &page, quint16 index);
    void writeSubIndex(QTextStream &out, HTMLPage &page, quint16 index, quint8 subIndex);

    bool implInfo = false;
    bool manufacturerGap = false;
    bool profileGap = false;
};
