#pragma once

#include <QObject>

class ObjectDataBase;

// Brings the content of an older project up to date after opening. Every step is idempotent.
class ProjectConverter : public QObject
{
    Q_OBJECT

public:
    using QObject::QObject;

    bool setDatabase(ObjectDataBase *store);
    bool doGenericCorrection();
    bool doCANopenCorrection();
    bool doEnergyBusCorrection();
    bool doRawCanCorrection();
    bool doJ1939Correction();

    // The passes of one conversion in their order for the edition of the given application name.
    static void convert(ObjectDataBase *store, const QString &applicationName);

private:
    ObjectDataBase *database = nullptr;
};
