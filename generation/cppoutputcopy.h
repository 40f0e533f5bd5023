#pragma once

#include <QString>

// Copies of the generated sources for C++ builds: gen_objdict.cpp and gen_user.hpp.
class CppOutputCopy
{
public:
    static bool run(const QString &outputPath);
};
