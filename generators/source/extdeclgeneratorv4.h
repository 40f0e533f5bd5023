#pragma once

#include "generators/source/extdeclgeneratorbase.h"

// gen_extern_decl.h and gen_var_decl.c of the current stack generation.
class ExtDeclGeneratorV4 : public ExtDeclGeneratorBase
{
    Q_OBJECT

public:
    explicit ExtDeclGeneratorV4(QObject *parent = nullptr);
};
