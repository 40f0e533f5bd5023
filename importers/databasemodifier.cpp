#include "databasemodifier.h"

#include "store/objectdatabase.h"

#include <QDebug>
#include <QFile>
#include <QFileInfo>
#include <QTextStream>

#include <functional>

namespace {

using Setter = std::function<bool(ObjectDataBase &, const QString &, const QString &)>;

// Only these two tables may be changed from a script.
const QHash<QString, Setter> &setters()
{
    static const QHash<QString, Setter> table{
        {QStringLiteral("GeneralSettings"),
         [](ObjectDataBase &store, const QString &key, const QString &value) {
             return store.setGeneralSetting(key, value);
         }},
        {QStringLiteral("J1939Settings"),
         [](ObjectDataBase &store, const QString &key, const QString &value) {
             return store.setJ1939Setting(key, value);
         }},
    };
    return table;
}

} // namespace

DatabaseModifier::DatabaseModifier(ObjectDataBase *projectStore, QObject *parent)
    : QObject(parent)
    , store(projectStore)
{}

bool DatabaseModifier::setModifierFile(const QString &path)
{
    const QFileInfo info(path);
    if (!info.isFile() || !info.isReadable() || info.size() <= 10)
        return false;
    fileName = path;
    return true;
}

bool DatabaseModifier::applyModifierFile()
{
    store->setBlockUpdates(false);
    qDebug() << "Applying " << fileName;
    QFile file(fileName);
    if (!file.open(QIODevice::ReadOnly | QIODevice::Text))
        return false;
    QTextStream in(&file);
    bool result = false;
    QString text;
    while (in.readLineInto(&text)) {
        qDebug() << text;
        if (text.isEmpty() || text.startsWith('#'))
            continue;
        const QStringList fields = text.split(':');
        if (fields.size() != 3)
            continue;
        const auto setter = setters().constFind(fields.first());
        if (setter == setters().constEnd())
            continue;
        result = (*setter)(*store, fields.at(1), fields.at(2));
        if (!result) {
            error = text;
            return false;
        }
    }
    return result;
}
