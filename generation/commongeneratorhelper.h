#pragma once

#include "generation/commongeneratorhelperbase.h"

// The shared blocks of the older stack generation. Its UDS declarations stand inside the init function.
class CommonGeneratorHelper : public CommonGeneratorHelperBase
{
    Q_OBJECT

public:
    explicit CommonGeneratorHelper(ObjectDataBase *store, QObject *parent = nullptr);
};
