#pragma once

#include <QString>

class ModelCheckOutput;

// Whether the protocol stack in the project's stack folder was made for this version of the tool, as its
// feature information files tell.
class ModelCheckStackVersion
{
public:
    // stackPath as the project holds it; a relative one is taken from projectDirectory.
    static void check(const QString &stackPath, const QString &projectDirectory, ModelCheckOutput &output);
    // The part of an application version that a stack names: "4.3.2" gives "4.3".
    static QString comparedVersion(const QString &applicationVersion);
};
