#pragma once

#include <QList>
#include <QString>

class AbstractGenerator;
class ObjectDataBase;
class ProjectBuilder;

// The projects of the gen_pgn.c tests and how a test runs a generator on them as the driver would.
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

// Names the program as the heads of the generated files show it.
void setApplication();

// The expected file of a golden test.
QString goldenPath(const QString &file);

// Configures the generator as the driver does, starts it and waits until its thread has ended; false
// when it could not be started or left the store blocked.
bool run(AbstractGenerator &generator, ObjectDataBase &store, const QString &outputPath,
         const QString &projectName);

// A generated file with the date line masked; empty when it is missing.
QString readGenerated(const QString &path);

} // namespace PgnProjects
