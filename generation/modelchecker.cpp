#include "modelchecker.h"

ModelChecker::ModelChecker(QObject *parent)
    : QObject(parent)
{
}

int ModelChecker::checkCommon(ObjectDataBase *, const QString &)
{
    return 0;
}

int ModelChecker::checkCANopenLine(quint8, ObjectDataBase *, bool &)
{
    return 0;
}

int ModelChecker::checkJ1939Line(quint8, ObjectDataBase *, QList<quint32> &)
{
    return 0;
}

int ModelChecker::checkRawCANLine(quint8, ObjectDataBase *)
{
    return 0;
}
