#pragma once

#include <QList>
#include <QMap>
#include <QObject>
#include <QString>

#include <memory>

class KprjImporter;
class ObjectDataBase;
class QSettings;

// Runs an import file: objects brought from other projects, copied and deleted inside the project.
class ImportHandler : public QObject
{
    Q_OBJECT

public:
    struct actionSetting
    {
        enum Type { Delete = 0, Import = 1, Copy = 2 };
        qint32 type = Delete;
        quint16 firstIndex = 0;
        quint16 lastIndex = 0;
        quint16 offset = 0;
        quint8 line = 0;
        quint8 targetLine = 0;
        QString text;
        QString project;
    };

    explicit ImportHandler(ObjectDataBase *store, QObject *parent = nullptr);
    ~ImportHandler() override;

    bool setImportFile(const QString &path);
    bool applyImportFile();
    QString errorText() const { return error; }

private:
    // One action of the file; false for a text that names no action.
    bool parseAction(const QString &value, actionSetting &action) const;
    void readProjects(QSettings &file);
    void readActions(QSettings &file);
    bool runAction(const actionSetting &action);
    bool runDelete(const actionSetting &action);
    bool runCopy(const actionSetting &action);
    bool runImport(const actionSetting &action);
    void waitForImporter();

    ObjectDataBase *store;
    std::unique_ptr<ObjectDataBase> scratch;
    std::unique_ptr<KprjImporter> importer;
    QString fileName;
    QString error;
    QMap<quint32, QString> projects;
    QList<actionSetting> actions;
    bool deleteObjects = false;
};
