#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

// The records of a CAN network description. Lists keep the order in which records were added, which is
// the order of the file. Records are owned through unique pointers so that their addresses, which the
// handle layer gives out, stay valid while a list grows.

class CANdbDatabase;
struct CANdbAttributeDefinition;

struct CANdbAttribute
{
    CANdbAttributeDefinition *definition = nullptr;
    uint32_t type = 0;
    int32_t intValue = 0;
    double floatValue = 0.0;
    std::string stringValue;
};

using CANdbAttributeList = std::vector<std::unique_ptr<CANdbAttribute>>;

struct CANdbAttributeDefinition
{
    enum Type : uint32_t
    {
        None = 0,
        Int = 1,
        Hex = 2,
        Float = 3,
        Enum = 4,
        String = 5
    };
    enum Owner : uint32_t
    {
        NotSet = 0,
        Network = 1,
        Message = 2,
        Node = 3,
        Signal = 4,
        EnvVar = 5
    };

    uint32_t type = None;
    uint32_t owner = NotSet;
    std::string name;
    CANdbDatabase *database = nullptr;
    std::string comment;

    // INT and HEX.
    int32_t intMin = 0;
    int32_t intMax = 0;
    int32_t intDefault = 0;
    // FLOAT.
    double floatMin = 0.0;
    double floatMax = 0.0;
    double floatDefault = 0.0;
    // ENUM: the value of a name is its place in the list.
    std::vector<std::string> enumValues;
    int32_t enumDefault = 0;
    // STRING.
    std::string stringDefault;

    // Empties the type-specific part, as a change of type requires.
    void clearValues();
};

struct CANdbValueName
{
    std::string name;
    int32_t value = 0;
};

struct CANdbNode
{
    std::string name;
    std::string comment;
    CANdbAttributeList attributes;
    CANdbDatabase *database = nullptr;
};

struct CANdbMessage;

struct CANdbSignal
{
    enum ValueType : uint32_t
    {
        Unset = 0,
        Signed = 1,
        Unsigned = 2,
        Float = 3,
        Double = 4
    };

    std::string name;
    std::string comment;
    std::string unit;
    double minimum = 0.0;
    double maximum = 0.0;
    double offset = 0.0;
    double factor = 1.0;
    // Position of the least significant bit, byte times 8 plus bit, in both byte orders.
    int32_t startBit = 0;
    int32_t length = 0;
    int32_t muxValue = -1;
    bool isMultiplexer = false;
    bool motorola = false;
    uint32_t valueType = Unset;
    std::vector<CANdbValueName> valueNames;
    CANdbSignal *signSignal = nullptr;
    CANdbAttributeList attributes;
    CANdbMessage *message = nullptr;
    std::vector<CANdbNode *> receivers;

    // Adds a receiver unless it is there already.
    void addReceiver(CANdbNode *node);
};

struct CANdbMessage
{
    std::string name;
    std::string comment;
    CANdbNode *sender = nullptr;
    // Without the extended bit.
    uint32_t id = 0;
    std::vector<std::unique_ptr<CANdbSignal>> signalList;
    uint32_t dlc = 0;
    uint32_t idMask = 0xFFFFFFFF;
    bool extended = false;
    CANdbAttributeList attributes;
    CANdbDatabase *database = nullptr;
    uint32_t protocolKind = 0;

    CANdbSignal *addSignal();
    CANdbSignal *findSignal(const std::string &signalName) const;
    // The identifier as the file writes it: bit 31 set for an extended identifier.
    uint32_t fileId() const { return extended ? (id | 0x80000000u) : id; }
};

struct CANdbEnvVar
{
    enum Type : uint32_t
    {
        Integer = 1,
        Float = 2,
        String = 3
    };

    std::string name;
    std::string comment;
    std::string unit;
    std::string dummyNode;
    uint32_t type = Integer;
    uint32_t access = 0;
    double minimum = 0.0;
    double maximum = 0.0;
    double startValue = 0.0;
    double dataValue = 0.0;
    bool hasData = false;
    int32_t numericId = 0;
    std::vector<CANdbNode *> nodes;
    std::vector<CANdbValueName> valueNames;
    CANdbAttributeList attributes;
};

// Finds the attribute of a definition in an owner's list; null when the owner has none.
CANdbAttribute *findAttribute(const CANdbAttributeList &attributes,
                              const CANdbAttributeDefinition *definition);
CANdbAttribute *findAttribute(const CANdbAttributeList &attributes, const std::string &definitionName);
