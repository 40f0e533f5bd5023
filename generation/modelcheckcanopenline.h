#pragma once

struct ModelCheckCANopenContext;

// The CANopen rules of one line that look at settings of the line and at single communication objects.
class ModelCheckCANopenLine
{
public:
    explicit ModelCheckCANopenLine(ModelCheckCANopenContext &context);

    // Every default value must read as a number of its data type.
    void checkValueConversion();
    // Node-ID, CAN buffers and the master/slave list of the line.
    void checkLineSettings();
    // Device type, mandatory objects and the objects whose content the stack relies on.
    void checkCommunicationObjects();
    // The older stack family needs both static PDO indication functions or none.
    void checkStaticPdoIndication();
    // EMCY routing needs producers and consumers somewhere in the project; told once per run.
    void checkEmcyRouting(bool &reported);

private:
    void checkDeviceType();
    void checkMandatoryObjects();
    void checkSlaveAssignment();
    void checkGaps();
    void checkSyncProducer();
    void checkUsdoServer();
    void checkStoreRestore();
    void checkNmtInhibitTime();
    void checkIdentity();
    void checkErrorHistory();
    void checkEmcyConsumers();

    ModelCheckCANopenContext &context;
};
