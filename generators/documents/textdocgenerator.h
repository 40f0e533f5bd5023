#pragma once

#include "generation/abstractgenerator.h"

// The plain text document of a line's object dictionary.
class TextDocGenerator : public AbstractGenerator
{
    Q_OBJECT

public:
    using AbstractGenerator::AbstractGenerator;

    QString outputFile() const override;
    QString generatorName() const override { return QStringLiteral("textual documentation"); }

protected:
    void writeContent(QTextStream &out) override;

private:
    void writeObject(QTextStream &out, quint16 index);
    void writeSubIndex(QTextStream &out, quint16 index, quint8 subIndex);
};
