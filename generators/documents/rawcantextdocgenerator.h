#pragma once

#include "generation/abstractgenerator.h"

struct CANID;

// The plain text document of a raw CAN line: its identifiers and their signals, transmitted ones first.
class RawCANTextDocGenerator : public AbstractGenerator
{
    Q_OBJECT

public:
    using AbstractGenerator::AbstractGenerator;

    QString outputFile() const override;
    QString generatorName() const override { return QStringLiteral("rawcan_doc.txt"); }

protected:
    void writeContent(QTextStream &out) override;

private:
    void writeDirection(QTextStream &out, quint8 direction);
    void writeMessage(QTextStream &out, const CANID &canId);
};
