#pragma once

#include <QList>
#include <QString>

class ObjectDataBase;
class ProjectBuilder;

// The projects of the multi-protocol source tests, and a whole generation run on them as the program
// does it, so that a test sees the run's gen_define.h and declarations beside the source.
namespace MultiProProjects {

struct Project
{
    const char *name;
    void (*build)(ProjectBuilder &project);
    // The source the run writes.
    const char *file;
};

const QList<Project> &projects();
const Project *find(const QString &name);

// Builds the project for one generation of the stack.
void build(const Project &project, ProjectBuilder &builder, bool older);

// Generates every file of the project into the folder; false when the run did not finish.
bool generate(ObjectDataBase &store, const QString &folder);

QString goldenPath(const QString &file);

} // namespace MultiProProjects
