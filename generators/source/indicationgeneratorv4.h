#pragma once

#include "generators/source/indicationgeneratorbase.h"

// gen_indication.h of the current stack generation, with the static UDS indications.
class indicationgeneratorv4 : public IndicationGeneratorBase
{
    Q_OBJECT

public:
    explicit indicationgeneratorv4(QObject *parent = nullptr);
};
