#pragma once

#include <QList>
#include <QString>

class AbstractGenerator;
class ObjectDataBase;
class ProjectBuilder;

// The projects of the golden-file tests of gen_indices.h, gen_extern_decl.h, gen_var_decl.c and
// gen_indication.h, and how a test runs a generator on them as the driver would.
namespace HeaderProjects {

struct Project
{
    const char *name;
    void (*build)(ProjectBuilder &project);
    // The driver writes the declarations for projects with J1939 or raw CAN, the indications for
    // projects with CANopen or static UDS indications.
    bool declarations;
    bool indications;
};

const QList<Project> &projects();
const Project *find(const QString &name);

// The folder of the expected files of a project.
QString goldenFolder(const QString &project);

// Names the program as the heads of the generated files show it.
void setApplication();

// Configures the generator as the driver does, starts it and waits until its thread has ended; false
// when it could not be started or left the store blocked. The indices generator gets no line; every
// other one line 0.
bool run(AbstractGenerator &generator, ObjectDataBase &store, const QString &outputPath,
         const QString &projectName, bool indices = false);

// A file that the generator wrote, with the date line masked; empty when it is missing.
QString readGenerated(const QString &path);

} // namespace HeaderProjects
