#pragma once

#include <QString>

// Whether the program may write a file or into a folder. The write bits of the owner count for the
// owner even when the process could override them (as root can): a file the user protected stays protected.
class FilePermissions
{
public:
    static bool isWritable(const QString &path);
};
