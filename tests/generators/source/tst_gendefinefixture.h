#pragma once

#include "store/objectrecords.h"

#include <QList>
#include <QMetaType>
#include <QString>
#include <QStringList>

#include <functional>

class ObjectDataBase;
class ProjectBuilder;

// Projects and runs of the configuration header generators, shared by the gen_define.h tests.
namespace GenDefineFixture {

using Setup = std::function<void(ProjectBuilder &)>;

// An ARRAY with its count in sub-index 0 and the given number of entries.
void array(ProjectBuilder &p, quint8 line, quint16 index, const QString &name, quint16 dataType, int entries);
// A RECORD with "Highest sub-index" and UNSIGNED32 entries at the given sub-indices.
void record(ProjectBuilder &p, quint8 line, quint16 index, const QString &name, const QList<int> &subIndices);
// A PDO mapping object with the count and access of its sub-index 0 and that many entries.
void mapping(ProjectBuilder &p, quint8 line, quint16 index, const QString &name, int entries,
             const QString &access);
// A sub-index whose value lives outside the stack's memory.
SUBINDEX_DATA_T virtualSub(const QString &name, quint16 dataType);

struct Generated
{
    QString path;
    // The file with its date line masked.
    QString masked;
    QList<int> progress;
    bool failed = false;
};

// Runs the generator of the family on the store as the driver does, with line 0 and the flags
// that the driver derives from the line types.
Generated generate(ObjectDataBase &store, const QString &folder, const QString &project, bool older);
// Saves the project, changes it with SQL as only an older file or importer could, opens it again
// and generates from that.
Generated generateReopened(ProjectBuilder &builder, const QStringList &statements, const QString &folder,
                           const QString &project, bool older);

QString goldenPath(const QString &name);
// What the C preprocessor says about the file with warnings as errors; empty when it takes it.
QString preprocessorMessages(const QString &path);
// Whether the C preprocessor takes the file without a warning (a macro defined twice with two values).
bool preprocesses(const QString &path);
// The lines of the file that define a macro, without the line feed.
QStringList defineLines(const QString &text);

// Sets the application name for the lifetime of the object; the header depends on the edition.
class ApplicationName
{
public:
    explicit ApplicationName(const QString &name);
    ~ApplicationName();

private:
    QString previous;
};

} // namespace GenDefineFixture

Q_DECLARE_METATYPE(GenDefineFixture::Setup)
