#pragma once

#include "generators/source/pgngeneratorbase.h"

// gen_pgn.c of the current stack generation.
class PGNGeneratorV4 : public PGNGeneratorBase
{
    Q_OBJECT

public:
    explicit PGNGeneratorV4(QObject *parent = nullptr);

    // How this generation writes the J1939 blocks, for the writers that other sources use.
    static const PgnDialect &pgnDialect();

protected:
    std::unique_ptr<CommonGeneratorHelperBase> createHelper() const override;
};
