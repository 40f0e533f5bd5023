#include "filepermissions.h"

#include <QFileInfo>

#include <unistd.h>

bool FilePermissions::isWritable(const QString &path)
{
    const QFileInfo info(path);
    if (!info.exists() || !info.isWritable())
        return false;
    return info.ownerId() != uint(::geteuid()) || info.permission(QFile::WriteOwner);
}
