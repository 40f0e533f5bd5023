#pragma once

#include <QString>

// Writes Directory.Build.props and gen_define.props, which hand the macros of gen_define.h to C# builds.
class CSharpPropsWriter
{
public:
    // False when a file cannot be written.
    static bool write(const QString &outputPath);
};
