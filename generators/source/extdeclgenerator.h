#pragma once

#include "generators/source/extdeclgeneratorbase.h"

// gen_extern_decl.h and gen_var_decl.c of the older stack generation.
class ExtDeclGenerator : public ExtDeclGeneratorBase
{
    Q_OBJECT

public:
    explicit ExtDeclGenerator(QObject *parent = nullptr);
};
