#pragma once

#include "generation/abstractgenerator.h"

// What both configuration header generators share: the file, the user section that survives
// regeneration, and the include guard's end.
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
    void writeTail(QTextStream &out) const;

private:
    QString userSectionText;
};
