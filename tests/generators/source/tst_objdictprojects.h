#pragma once

#include <QList>
#include <QString>
#include <QStringList>

class ObjectDataBase;
class ProjectBuilder;

// The small devices of the object dictionary tests, and how a test runs the dictionary generators on
// them as the driver does.
namespace ObjDictProjects {

struct Project
{
    const char *name;
    void (*build)(ProjectBuilder &project);
    bool compact;
    bool camMode;
};

const QList<Project> &projects();
const Project *find(const QString &name);

QString goldenPath(const QString &folder, const QString &file);

// Runs gen_objdict.c and, when the project has virtual objects, gen_vobjdict.c of the family into the
// folder; false when a generator could not be run. gen_vobjdict.c is removed otherwise, as by the driver.
bool generate(ObjectDataBase &store, const Project &project, bool older, const QString &folder);

// The names of the files that generate wrote or left.
QStringList writtenFiles(const QString &folder);

} // namespace ObjDictProjects
