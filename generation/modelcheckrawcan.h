#pragma once

class ModelCheckOutput;
class ObjectDataBase;

// The rules of one raw CAN line: identifiers, and the signals of each message.
class ModelCheckRawCan
{
public:
    ModelCheckRawCan(ObjectDataBase *database, quint8 line, ModelCheckOutput &output);

    void check();

private:
    void checkBothDirections();
    void checkMessage(quint8 direction, quint32 id);
    void checkVariableNames();

    ObjectDataBase *database;
    quint8 line;
    ModelCheckOutput &output;
    quint32 payloadBits = 64;
};
