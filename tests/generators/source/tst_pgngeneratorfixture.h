#pragma once

#include <QList>
#include <QString>

class ObjectDataBase;
class ProjectBuilder;

// The projects of the gen_pgn.c tests.
namespace PgnProjects {

struct Project
{
    const char *name;
    void (*build)(ProjectBuilder &project);
};

const QList<Project> &projects();
const Project *find(const QString &name);

// Builds the project into the builder's store.
void build(const Project &project, ProjectBuilder &builder);

// The expected file of a golden test.
QString goldenPath(const QString &file);

} // namespace PgnProjects
