#include "importhandler.h"

#include "importers/kprjimporter.h"
#include "store/objectdatabase.h"

#include <QDebug>
#include <QEventLoop>
#include <QFileInfo>
#include <QSet>
#include <QSettings>
#include <QTimer>

namespace {

// "0x2000-0x2FFF" or a single number, each with the base of its prefix.
void readRange(const QString &text, quint16 &first, quint16 &last)
{
    const QStringList bounds = text.split('-');
    first = quint16(bounds.first().toUInt(nullptr, 0));
    last = bounds.size() > 1 ? quint16(bounds.at(1).toUInt(nullptr, 0)) : first;
}

// Keys of a group that begin with the letter, in the order QSettings lists them.
QStringList keysOf(QSettings &file, const QString &group, QChar letter)
{
    file.beginGroup(group);
    QStringList keys;
    const QStringList all = file.allKeys();
    for (const QString &key : all) {
        if (key.startsWith(letter))
            keys << key;
    }
    file.endGroup();
    return keys;
}

const QMap<QString, qint32> actionTypes{
    {QStringLiteral("delete"), ImportHandler::actionSetting::Delete},
    {QStringLiteral("import"), ImportHandler::actionSetting::Import},
    {QStringLiteral("copy"), ImportHandler::actionSetting::Copy},
};

} // namespace

ImportHandler::ImportHandler(ObjectDataBase *projectStore, QObject *parent)
    : QObject(parent)
    , store(projectStore)
{}

ImportHandler::~ImportHandler()
{
    if (importer)
        importer->wait();
}

bool ImportHandler::setImportFile(const QString &path)
{
    const QFileInfo info(path);
    if (!info.isFile() || !info.isReadable())
        return false;
    if (info.size() < 11) {
        error = tr("File too small");
        return false;
    }
    QSettings file(path, QSettings::IniFormat);
    if (file.allKeys().size() < 2) {
        error = tr("Invalid file structure");
        return false;
    }
    fileName = path;
    return true;
}

bool ImportHandler::applyImportFile()
{
    store->setBlockUpdates(false);
    qDebug() << "Applying " << fileName;
    QSettings file(fileName, QSettings::IniFormat);
    readProjects(file);
    if (projects.isEmpty())
        error = QStringLiteral("No projects found.");
    const QString deleteKey = QStringLiteral("Options/delete_objects");
    if (file.contains(deleteKey))
        deleteObjects = file.value(deleteKey).toBool();
    readActions(file);
    bool result = true;
    for (const auto &action : std::as_const(actions)) {
        result = runAction(action);
        if (!result)
            error = action.text + QStringLiteral(" failed");
    }
    return result;
}

void ImportHandler::readProjects(QSettings &file)
{
    const QString group = QStringLiteral("Projects");
    for (const QString &key : keysOf(file, group, 'p')) {
        const QString path = file.value(group + '/' + key).toString();
        if (QFileInfo::exists(path))
            projects.insert(key.mid(1).toUInt(nullptr, 0), path);
    }
}

void ImportHandler::readActions(QSettings &file)
{
    const QString group = QStringLiteral("Actions");
    for (const QString &key : keysOf(file, group, 'a')) {
        actionSetting action;
        if (parseAction(file.value(group + '/' + key).toString(), action))
            actions << action;
    }
}

bool ImportHandler::parseAction(const QString &value, actionSetting &action) const
{
    const QStringList words = value.toLower().split(' ');
    if (words.size() < 2 || !actionTypes.contains(words.first()))
        return false;
    action.type = actionTypes.value(words.first());
    action.text = value;
    const QStringList place = words.at(1).split(':');
    if (action.type == actionSetting::Delete) {
        if (place.size() != 2)
            return false;
        action.line = quint8(place.first().toUInt(nullptr, 0));
        readRange(place.at(1), action.firstIndex, action.lastIndex);
        return true;
    }
    if (words.size() < 4)
        return false;
    if (place.size() == 2) {
        if (action.type == actionSetting::Import) {
            action.project = projects.value(place.first().toUInt(nullptr, 0));
            action.line = quint8(place.at(1).toUInt(nullptr, 0));
        } else {
            action.line = quint8(place.first().toUInt(nullptr, 0));
            readRange(place.at(1), action.firstIndex, action.lastIndex);
        }
    }
    action.targetLine = quint8(words.at(3).toUInt(nullptr, 0));
    if (words.size() > 5 && words.at(4) == QLatin1String("offset"))
        action.offset = quint16(words.at(5).toUInt(nullptr, 0));
    return true;
}

bool ImportHandler::runAction(const actionSetting &action)
{
    switch (action.type) {
    case actionSetting::Delete:
        return runDelete(action);
    case actionSetting::Copy:
        return runCopy(action);
    default:
        return runImport(action);
    }
}

bool ImportHandler::runDelete(const actionSetting &action)
{
    qDebug() << action.text;
    bool ok = true;
    for (quint32 index = action.firstIndex; index <= action.lastIndex; ++index)
        ok = store->removeIndex(action.line, quint16(index), false) && ok;
    return ok;
}

bool ImportHandler::runCopy(const actionSetting &action)
{
    qDebug() << action.text;
    bool ok = true;
    for (quint32 index = action.firstIndex; index <= action.lastIndex; ++index)
        ok = store->copyIndex(action.line, quint16(index), action.targetLine,
                              quint16(index + action.offset)) &&
             ok;
    return ok;
}

bool ImportHandler::runImport(const actionSetting &action)
{
    if (!scratch) {
        scratch = std::make_unique<ObjectDataBase>();
        scratch->createNewDataBase();
    }
    scratch->removeNode(ObjectDataBase::ScratchLine);
    scratch->addNode(ObjectDataBase::ScratchLine, NODE_DATA_T());
    importer = std::make_unique<KprjImporter>();
    importer->setSourceLine(action.line);
    importer->setLine(ObjectDataBase::ScratchLine);
    importer->setDatabase(scratch.get());
    importer->setIndexRange(0, 65535);
    const bool started = importer->setFileName(action.project) && importer->start();
    if (started)
        waitForImporter();

    const auto oldList = store->getIndices(action.targetLine, 0x1000, 0xFFFF);
    const auto newList = scratch->getIndices(ObjectDataBase::ScratchLine, 0x1000, 0xFFFF);
    for (const quint16 index : newList) {
        store->copyIndexFrom(*scratch, ObjectDataBase::ScratchLine, index, action.targetLine,
                             quint16(index + action.offset), true);
    }
    if (deleteObjects) {
        const QSet<quint16> taken(newList.cbegin(), newList.cend());
        for (const quint16 index : oldList) {
            if (!taken.contains(index))
                store->removeIndex(action.targetLine, index, false);
        }
    }
    return started;
}

void ImportHandler::waitForImporter()
{
    // The importer reports to this thread, so its event loop keeps turning while we wait.
    while (!importer->isFinished()) {
        QEventLoop loop;
        QTimer::singleShot(100, &loop, &QEventLoop::quit);
        loop.exec();
    }
}
