#pragma once

#include <QList>
#include <QString>

class ObjectDataBase;
class ProjectBuilder;

// The projects of the golden-file tests of gen_indices.h, gen_extern_decl.h, gen_var_decl.c and
// gen_indication.h.
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

} // namespace HeaderProjects
