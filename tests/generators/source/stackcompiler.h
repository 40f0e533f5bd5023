#pragma once

#include <QString>
#include <QStringList>

// Compiles generated C text against the minimal stack headers of tests/support/stackheaders, as the
// target's build would, but only for syntax.
namespace StackCompiler {

// Whether a C compiler named cc can be started.
bool available();

// Writes gen_define.h into the folder: the include guard around the given lines, each a complete line.
bool writeGenDefine(const QString &folder, const QStringList &lines);

// Writes the source into the folder and runs "cc -fsyntax-only -Werror" on it with the folder and the
// stack headers on the include path. The compiler's messages go to `messages`.
bool compile(const QString &folder, const QString &fileName, const QString &source,
             const QStringList &extraArguments, QString *messages);

} // namespace StackCompiler
