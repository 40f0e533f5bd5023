#pragma once

#include "generators/documents/dbc/candbrecords.h"

#include <array>
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

// One network: its nodes, messages, environment variables and attributes.
class CANdbDatabase
{
public:
    enum Protocol : uint32_t
    {
        NoProtocol = 0,
        J1939ByPgnAttribute = 1,
        J1939ByProtocolType = 2
    };

    static constexpr uint32_t hashSize = 2048;

    CANdbDatabase() = default;
    CANdbDatabase(const CANdbDatabase &) = delete;
    CANdbDatabase &operator=(const CANdbDatabase &) = delete;

    std::string name;
    std::string comment;
    std::string filename;
    std::vector<std::unique_ptr<CANdbNode>> nodes;
    std::vector<std::unique_ptr<CANdbMessage>> messages;
    std::vector<std::unique_ptr<CANdbEnvVar>> variables;
    std::vector<std::unique_ptr<CANdbAttributeDefinition>> definitions;
    CANdbAttributeList attributes;
    uint32_t protocol = NoProtocol;

    uint32_t messageCount() const { return uint32_t(messages.size()); }

    CANdbNode *addNode(const std::string &nodeName);
    CANdbNode *findNode(const std::string &nodeName) const;

    // Appends a message and files it under its identifier for lookup. A later change of the identifier
    // does not move it, so the lookup serves readers, which know the identifier first.
    CANdbMessage *addMessage(uint32_t id, bool extended);
    // By the identifier as a file writes it, with bit 31 for an extended one.
    CANdbMessage *findMessage(uint32_t fileId) const;
    CANdbMessage *findMessage(const std::string &messageName) const;

    CANdbEnvVar *addVariable();
    CANdbEnvVar *findVariable(const std::string &variableName) const;

    CANdbAttributeDefinition *addDefinition();
    CANdbAttributeDefinition *findDefinition(const std::string &definitionName) const;

    // Derives the protocol, the sign signals and the J1939 masks after a read.
    void postProcess();

private:
    static uint32_t bucketOf(uint32_t fileId) { return fileId % hashSize; }
    // The value of the attribute on the owner, else the definition's default; null without a definition.
    const CANdbAttributeDefinition *valueOf(const CANdbAttributeList &owner,
                                            const std::string &definitionName,
                                            const CANdbAttribute *&attribute) const;
    bool networkIntIs(const std::string &definitionName, int32_t value) const;
    bool networkStringIs(const std::string &definitionName, const std::string &value) const;
    void resolveSignSignals(CANdbMessage &message) const;
    void applyJ1939Mask(CANdbMessage &message) const;

    std::array<std::vector<CANdbMessage *>, hashSize> hashTable;
};

// What kvaDbOpen hands out: the databases of one session, in the order of their creation.
struct CANdbDatabaseSet
{
    std::vector<std::unique_ptr<CANdbDatabase>> databases;
};
