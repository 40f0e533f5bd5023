#pragma once

#include "vobjdictgeneratorbase.h"

// gen_vobjdict.c for the older stack generation.
class VobjDictGenerator : public VobjDictGeneratorBase
{
    Q_OBJECT

public:
    explicit VobjDictGenerator(bool compactDescription, QObject *parent = nullptr);
};
