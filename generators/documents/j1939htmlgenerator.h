#pragma once

#include "generation/abstractgenerator.h"

class HTMLPage;
struct PGN;

// The HTML page of a line's parameter groups: a table of contents and one block per group with a table
// per SPN, transmitted groups first.
class J1939HTMLGenerator : public AbstractGenerator
{
    Q_OBJECT

public:
    using AbstractGenerator::AbstractGenerator;

    GeneratorStatus start() override;
    QString outputFile() const override;
    QString generatorName() const override { return QStringLiteral("HTML documentation"); }

protected:
    void writeContent(QTextStream &out) override;

private:
    QList<PGN> readGroups(quint8 direction);
    void writeTableOfContents(QTextStream &out, const QList<PGN> &groups);
    void writeGroup(QTextStream &out, HTMLPage &page, const PGN &pgn);

    bool implInfo = false;
};
