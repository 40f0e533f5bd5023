#include "implinfosetting.h"

#include <QCoreApplication>
#include <QSettings>
#include <QVariant>

bool ImplInfoSetting::read()
{
    QSettings settings(QCoreApplication::organizationName(),
                       QCoreApplication::instance()
                           ? QCoreApplication::instance()->property("AppNameWithVersion").toString()
                           : QString());
    settings.beginGroup(QStringLiteral("General"));
    return settings.value(QStringLiteral("implinfo"), 0).toInt() == 1;
}
