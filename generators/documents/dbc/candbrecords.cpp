#include "candbrecords.h"

#include <algorithm>

void CANdbAttributeDefinition::clearValues()
{
    intMin = intMax = intDefault = 0;
    floatMin = floatMax = floatDefault = 0.0;
    enumValues.clear();
    enumDefault = 0;
    stringDefault.clear();
}

void CANdbSignal::addReceiver(CANdbNode *node)
{
    if (node && std::find(receivers.begin(), receivers.end(), node) == receivers.end())
        receivers.push_back(node);
}

CANdbSignal *CANdbMessage::addSignal()
{
    signalList.push_back(std::make_unique<CANdbSignal>());
    CANdbSignal *signal = signalList.back().get();
    signal->message = this;
    return signal;
}

CANdbSignal *CANdbMessage::findSignal(const std::string &signalName) const
{
    for (const auto &signal : signalList) {
        if (signal->name == signalName)
            return signal.get();
    }
    return nullptr;
}

CANdbAttribute *findAttribute(const CANdbAttributeList &attributes,
                              const CANdbAttributeDefinition *definition)
{
    for (const auto &attribute : attributes) {
        if (attribute->definition == definition)
            return attribute.get();
    }
    return nullptr;
}

CANdbAttribute *findAttribute(const CANdbAttributeList &attributes, const std::string &definitionName)
{
    for (const auto &attribute : attributes) {
        if (attribute->definition && attribute->definition->name == definitionName)
            return attribute.get();
    }
    return nullptr;
}
