#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>

// Helpers that the tests share: projects made with plain SQL, the built programs, file contents.
namespace TestProjects {

// Writes a project of the current schema with line 0 from plain SQL, then runs the extra statements.
bool createProject(const QString &path, const QStringList &statements = QStringList());
// Runs SQL statements on a project file; false at the first failing one.
bool execSql(const QString &path, const QStringList &statements);
// The first column of each row of a query on a project file, as text.
QStringList querySql(const QString &path, const QString &statement);

// Path of a built edition, such as "canopen-kestrel".
QString program(const QString &name);

struct RunResult
{
    int exitCode = -1;
    bool finished = false;
    QByteArray standardError;
};
// Runs a built edition without a user, as a script would.
RunResult runProgram(const QString &name, const QStringList &arguments, const QString &workingDirectory,
                     int timeoutMs = 60000);

// Lets the built editions generate although the model check fails, as the user setting
// "Disable pre-generation check" does; for runs about other steps than the check.
bool allowFailingModelCheck();

// Reads a whole file; empty when it cannot be read.
QByteArray readFile(const QString &path);
bool writeFile(const QString &path, const QByteArray &content);

// The expected file of a golden test. With KESTREL_UPDATE_GOLDEN set in the environment the actual text
// is written over it first, so that a changed generator shows up as a diff of the golden files.
QString readExpected(const QString &path, const QString &actual);

// Names the program as the heads of generated files show it in the golden files.
void setGeneratorApplication();
// A generated file with the date line masked; empty when it is missing.
QString readGenerated(const QString &path);

// Replaces the date line of a generated C head (" * <date>") by " * DATE", so that outputs compare.
QString maskDate(const QString &text);

} // namespace TestProjects
