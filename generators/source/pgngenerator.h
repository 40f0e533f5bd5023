#pragma once

#include "generators/source/pgngeneratorbase.h"

// gen_pgn.c of the older stack generation.
class PGNGenerator : public PGNGeneratorBase
{
    Q_OBJECT

public:
    explicit PGNGenerator(QObject *parent = nullptr);

    // How this generation writes the J1939 blocks, for the writers that other sources use.
    static const PgnDialect &pgnDialect();

protected:
    std::unique_ptr<CommonGeneratorHelperBase> createHelper() const override;
};
