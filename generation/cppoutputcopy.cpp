#include "cppoutputcopy.h"

#include <QFile>
#include <QFileInfo>

bool CppOutputCopy::run(const QString &outputPath)
{
    const QFileInfo directory(outputPath);
    if (outputPath.isEmpty() || !directory.exists() || !directory.isWritable())
        return false;

    const QString objdict = outputPath + QStringLiteral("/gen_objdict.c");
    const QString objdictCpp = outputPath + QStringLiteral("/gen_objdict.cpp");
    QFile::remove(objdictCpp);
    if (!QFile::copy(objdict, objdictCpp))
        return false;

    const QString user = outputPath + QStringLiteral("/gen_user.h");
    if (QFile::exists(user)) {
        const QString userHpp = outputPath + QStringLiteral("/gen_user.hpp");
        QFile::remove(userHpp);
        QFile input(user);
        QFile output(userHpp);
        if (input.open(QIODevice::ReadOnly) && output.open(QIODevice::WriteOnly)) {
            QByteArray content = input.readAll();
            content.replace("RET_T", "extern \"C\" RET_T");
            output.write(content);
        }
    }
    return true;
}
