#pragma once

#include "generation/abstractgenerator.h"
#include "generators/source/definestate.h"

class DefineFamily;

// gen_define.h, the header that configures the protocol stack at compile time. Both generator
// families write the same blocks in the same order; what differs is the family's table.
class DefineGeneratorBase : public AbstractGenerator
{
    Q_OBJECT

public:
    using AbstractGenerator::AbstractGenerator;

    QString outputFile() const override;
    QString generatorName() const override;
    // The user's part of the old file, as read by the last run.
    QString userSection() const { return userSectionText; }

protected:
    void prepare() override;
    void writeContent(QTextStream &out) override;
    virtual const DefineFamily &family() const = 0;

private:
    QString headDate() const;
    void readDevice();
    // The generation counter of the old file; 0 without file or counter.
    static qint32 readGenerationCount(const QString &path);

    QString userSectionText;
    DefineState state;
};
