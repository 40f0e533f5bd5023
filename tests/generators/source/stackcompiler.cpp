#include "stackcompiler.h"

#include "support/testprojects.h"

#include <QDir>
#include <QProcess>
#include <QStandardPaths>

namespace StackCompiler {

bool available()
{
    return !QStandardPaths::findExecutable(QStringLiteral("cc")).isEmpty();
}

bool writeGenDefine(const QString &folder, const QStringList &lines)
{
    QString text = QStringLiteral("#ifndef GEN_DEFINE_H\n#define GEN_DEFINE_H 1\n\n");
    for (const QString &line : lines)
        text += line + QLatin1Char('\n');
    text += QStringLiteral("\n#endif /* GEN_DEFINE_H */\n");
    return TestProjects::writeFile(QDir(folder).filePath(QStringLiteral("gen_define.h")), text.toUtf8());
}

bool compile(const QString &folder, const QString &fileName, const QString &source,
             const QStringList &extraArguments, QString *messages)
{
    const QString path = QDir(folder).filePath(fileName);
    if (!TestProjects::writeFile(path, source.toUtf8())) {
        *messages = QStringLiteral("cannot write ") + path;
        return false;
    }
    QProcess compiler;
    compiler.setProcessChannelMode(QProcess::MergedChannels);
    QStringList arguments{QStringLiteral("-fsyntax-only"),
                          QStringLiteral("-Werror"),
                          QStringLiteral("-I"),
                          folder,
                          QStringLiteral("-I"),
                          QStringLiteral(KESTREL_STACK_HEADERS_DIR)};
    arguments << extraArguments << path;
    compiler.start(QStringLiteral("cc"), arguments);
    if (!compiler.waitForFinished(60000)) {
        *messages = QStringLiteral("cc did not finish: ") + compiler.errorString();
        return false;
    }
    *messages = QString::fromLocal8Bit(compiler.readAll());
    return compiler.exitStatus() == QProcess::NormalExit && compiler.exitCode() == 0;
}

} // namespace StackCompiler
