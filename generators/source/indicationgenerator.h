#pragma once

#include "generators/source/indicationgeneratorbase.h"

// gen_indication.h of the older stack generation.
class indicationgenerator : public IndicationGeneratorBase
{
    Q_OBJECT

public:
    explicit indicationgenerator(QObject *parent = nullptr);
};
