#pragma once

#include <QList>
#include <QObject>
#include <QString>

class ObjectDataBase;

// The consistency check before a generation: one message per finding, and the count of errors.
class ModelChecker : public QObject
{
    Q_OBJECT

public:
    explicit ModelChecker(QObject *parent = nullptr);

    int checkCommon(ObjectDataBase *database, const QString &projectDirectory);
    int checkCANopenLine(quint8 line, ObjectDataBase *database, bool &corrected);
    int checkJ1939Line(quint8 line, ObjectDataBase *database, QList<quint32> &specialPgns);
    int checkRawCANLine(quint8 line, ObjectDataBase *database);

signals:
    void newError(QString errorText);
};
