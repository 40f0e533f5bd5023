#pragma once

#include <QObject>
#include <QString>

class ObjectDataBase;

// Runs a modifier file: lines "group:key:value" written into the project's general or J1939 settings.
class DatabaseModifier : public QObject
{
    Q_OBJECT

public:
    explicit DatabaseModifier(ObjectDataBase *store, QObject *parent = nullptr);

    bool setModifierFile(const QString &path);
    bool applyModifierFile();
    QString errorText() const { return error; }

private:
    ObjectDataBase *store;
    QString fileName;
    QString error;
};
