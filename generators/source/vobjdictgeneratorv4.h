#pragma once

#include "vobjdictgeneratorbase.h"

// gen_vobjdict.c for the current stack generation.
class VobjDictGeneratorV4 : public VobjDictGeneratorBase
{
    Q_OBJECT

public:
    explicit VobjDictGeneratorV4(bool compactDescription, QObject *parent = nullptr);
};
