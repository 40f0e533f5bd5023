#pragma once

#include <QList>

class ModelCheckOutput;
class ObjectDataBase;

// The rules of one J1939 line: settings of the stack, the NAME of the line, and its parameter groups with
// their SPNs.
class ModelCheckJ1939
{
public:
    ModelCheckJ1939(ObjectDataBase *database, quint8 line, const QList<quint32> &specialPgns,
                    ModelCheckOutput &output);

    void check();

private:
    void checkSettings();
    void checkName();
    void checkSpecialPgns();
    void checkParameterGroups();
    void checkParameterGroup(quint8 direction, quint32 number);
    void checkTransportProtocols();
    void checkSpns(quint8 direction, quint32 number);
    void checkVariableNames();

    ObjectDataBase *database;
    quint8 line;
    const QList<quint32> &specialPgns;
    ModelCheckOutput &output;
    bool canFd = false;
    int bamSupport = 0;
    int cmdtSupport = 0;
    int safetySupport = 0;
    bool hasLongPgns = false;
};
