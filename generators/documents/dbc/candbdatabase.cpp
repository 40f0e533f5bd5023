#include "candbdatabase.h"

namespace {

constexpr uint32_t pdu1Mask = 0x81FF0000u;
constexpr uint32_t pdu2Mask = 0x81FFFF00u;
constexpr uint32_t pgnAttributeMask = 0x8001FFFFu;
constexpr int32_t j1939FrameFormat = 3;

// The names under which files name the signal that carries the sign of another one.
const char *const signSignalAttributes[] = {"VorzeichenSignal", "SignSignal"};

} // namespace

CANdbNode *CANdbDatabase::addNode(const std::string &nodeName)
{
    nodes.push_back(std::make_unique<CANdbNode>());
    CANdbNode *node = nodes.back().get();
    node->name = nodeName;
    node->database = this;
    return node;
}

CANdbNode *CANdbDatabase::findNode(const std::string &nodeName) const
{
    for (const auto &node : nodes) {
        if (node->name == nodeName)
            return node.get();
    }
    return nullptr;
}

CANdbMessage *CANdbDatabase::addMessage(uint32_t id, bool extended)
{
    messages.push_back(std::make_unique<CANdbMessage>());
    CANdbMessage *message = messages.back().get();
    message->id = id & 0x7FFFFFFFu;
    message->extended = extended;
    message->database = this;
    hashTable[bucketOf(message->fileId())].push_back(message);
    return message;
}

CANdbMessage *CANdbDatabase::findMessage(uint32_t fileId) const
{
    for (CANdbMessage *message : hashTable[bucketOf(fileId)]) {
        if (message->fileId() == fileId)
            return message;
    }
    return nullptr;
}

CANdbMessage *CANdbDatabase::findMessage(const std::string &messageName) const
{
    for (const auto &message : messages) {
        if (message->name == messageName)
            return message.get();
    }
    return nullptr;
}

CANdbEnvVar *CANdbDatabase::addVariable()
{
    variables.push_back(std::make_unique<CANdbEnvVar>());
    return variables.back().get();
}

CANdbEnvVar *CANdbDatabase::findVariable(const std::string &variableName) const
{
    for (const auto &variable : variables) {
        if (variable->name == variableName)
            return variable.get();
    }
    return nullptr;
}

CANdbAttributeDefinition *CANdbDatabase::addDefinition()
{
    definitions.push_back(std::make_unique<CANdbAttributeDefinition>());
    CANdbAttributeDefinition *definition = definitions.back().get();
    definition->database = this;
    return definition;
}

CANdbAttributeDefinition *CANdbDatabase::findDefinition(const std::string &definitionName) const
{
    for (const auto &definition : definitions) {
        if (definition->name == definitionName)
            return definition.get();
    }
    return nullptr;
}

const CANdbAttributeDefinition *CANdbDatabase::valueOf(const CANdbAttributeList &owner,
                                                       const std::string &definitionName,
                                                       const CANdbAttribute *&attribute) const
{
    const CANdbAttributeDefinition *definition = findDefinition(definitionName);
    attribute = definition ? findAttribute(owner, definition) : nullptr;
    return definition;
}

bool CANdbDatabase::networkIntIs(const std::string &definitionName, int32_t value) const
{
    const CANdbAttribute *attribute = nullptr;
    const CANdbAttributeDefinition *definition = valueOf(attributes, definitionName, attribute);
    if (!definition || definition->type != CANdbAttributeDefinition::Int)
        return false;
    return (attribute ? attribute->intValue : definition->intDefault) == value;
}

bool CANdbDatabase::networkStringIs(const std::string &definitionName, const std::string &value) const
{
    const CANdbAttribute *attribute = nullptr;
    const CANdbAttributeDefinition *definition = valueOf(attributes, definitionName, attribute);
    if (!definition || definition->type != CANdbAttributeDefinition::String)
        return false;
    return (attribute ? attribute->stringValue : definition->stringDefault) == value;
}

void CANdbDatabase::postProcess()
{
    if (networkIntIs("J1939PGN", 1))
        protocol = J1939ByPgnAttribute;
    else if (networkStringIs("ProtocolType", "J1939"))
        protocol = J1939ByProtocolType;

    for (const auto &message : messages) {
        resolveSignSignals(*message);
        if (protocol == J1939ByPgnAttribute) {
            message->idMask = pgnAttributeMask;
            message->protocolKind = J1939ByPgnAttribute;
        } else {
            applyJ1939Mask(*message);
        }
    }
}

void CANdbDatabase::resolveSignSignals(CANdbMessage &message) const
{
    for (const auto &signal : message.signalList) {
        for (const char *attributeName : signSignalAttributes) {
            const CANdbAttribute *attribute = findAttribute(signal->attributes, attributeName);
            if (!attribute || attribute->type != CANdbAttributeDefinition::String)
                continue;
            CANdbSignal *sign = message.findSignal(attribute->stringValue);
            if (!sign || sign == signal.get())
                continue;
            signal->signSignal = sign;
            if (signal->valueType == CANdbSignal::Unsigned) {
                signal->valueType = CANdbSignal::Signed;
                if (signal->minimum == 0.0)
                    signal->minimum = -signal->maximum;
            }
            break;
        }
    }
}

void CANdbDatabase::applyJ1939Mask(CANdbMessage &message) const
{
    const CANdbAttribute *attribute = nullptr;
    const CANdbAttributeDefinition *frameFormat = valueOf(message.attributes, "VFrameFormat", attribute);
    bool j1939 = false;
    if (frameFormat && frameFormat->type == CANdbAttributeDefinition::Enum) {
        j1939 = (attribute ? attribute->intValue : frameFormat->enumDefault) == j1939FrameFormat;
        if (j1939)
            message.extended = true;
    } else {
        j1939 = protocol == J1939ByProtocolType && message.extended;
    }
    if (!j1939)
        return;
    const uint32_t pduFormat = (message.id >> 16) & 0xFF;
    message.idMask = pduFormat < 240 ? pdu1Mask : pdu2Mask;
    message.protocolKind = J1939ByProtocolType;
}
