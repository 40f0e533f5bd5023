#pragma once

#include "generators/documents/dbc/candbfileio.h"

#include <string>
#include <string_view>

class CANdbTokenizer;
struct CANdbMessage;

// The DBC format: a record parser over the tokenizer, and the writer.
class CANdbDBC : public CANdbFileIo
{
public:
    using CANdbFileIo::CANdbFileIo;

    int read(CANdbDatabase &database) override;
    int write(const CANdbDatabase &database) override;
    // Reads text that is already in memory, as read does with the contents of the file.
    int parse(CANdbDatabase &database, std::string_view text);

private:
    int next();
    int fail(const std::string &text);
    int dispatch(int token);
    int resynchronise();
    int skipPast(int token, int stop);
    int optional(int wanted);

    int parseNewSymbols();
    int parseNodes();
    int parseMessage();
    int parseSignal(CANdbMessage &message);
    int parseVariable();
    int parseVariableData();
    int parseComment();
    int parseAttributeDefinition();
    int parseAttributeDefault();
    int parseAttributeValue();
    int parseValueNames();
    int parseSignalType();

    std::string messageIdText() const;
    bool isNumber(int token) const;

    CANdbTokenizer *tokenizer = nullptr;
    CANdbDatabase *database = nullptr;
    int lastToken = 0;
};
