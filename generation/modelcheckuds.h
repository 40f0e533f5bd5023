#pragma once

class ModelCheckOutput;
class ObjectDataBase;

// The project-wide UDS rules: server and client on one line, and the callbacks of the static indication.
class ModelCheckUds
{
public:
    // lineCount: the lines of the project below 32.
    static void check(ObjectDataBase *database, int lineCount, ModelCheckOutput &output);

private:
    static void checkServerAndClient(ObjectDataBase *database, int lineCount, ModelCheckOutput &output);
    static void checkStaticIndication(ObjectDataBase *database, ModelCheckOutput &output);
};
