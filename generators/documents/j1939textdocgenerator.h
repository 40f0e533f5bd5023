#pragma once

#include "generation/abstractgenerator.h"

struct PGN;

// The plain text document of a line's parameter groups and their SPNs.
class J1939TextDocGenerator : public AbstractGenerator
{
    Q_OBJECT

public:
    using AbstractGenerator::AbstractGenerator;

    QString outputFile() const override;
    QString generatorName() const override { return QStringLiteral("j1939 textual documentation"); }

protected:
    void writeContent(QTextStream &out) override;

private:
    void writeGroups(QTextStream &out, quint8 direction);
    void writeGroup(QTextStream &out, const PGN &pgn);
};
