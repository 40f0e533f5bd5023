#include "candbdbc.h"

#include "generators/documents/dbc/candbdatabase.h"
#include "generators/documents/dbc/candbdbcwriter.h"
#include "generators/documents/dbc/candbkeywordtable.h"
#include "generators/documents/dbc/candbnumbertext.h"
#include "generators/documents/dbc/candbtokenizer.h"
#include "generators/documents/dbc/motorolabits.h"

#include <cstdio>
#include <memory>

namespace {

const char noNode[] = "Vector__XXX";
constexpr int maxErrors = 2;

using Token = CANdbTokenizer::Token;

// "DUMMY_NODE_VECTOR0" to "3" and "DUMMY_NODE_VECTOR8000" to "8003": the access of a variable and
// whether it holds a string.
struct PlaceHolder
{
    const char *text;
    uint32_t access;
    bool string;
};

constexpr PlaceHolder placeHolders[] = {
    {"DUMMY_NODE_VECTOR0", 1, false},   {"DUMMY_NODE_VECTOR1", 2, false},
    {"DUMMY_NODE_VECTOR2", 3, false},   {"DUMMY_NODE_VECTOR3", 4, false},
    {"DUMMY_NODE_VECTOR8000", 1, true}, {"DUMMY_NODE_VECTOR8001", 2, true},
    {"DUMMY_NODE_VECTOR8002", 3, true}, {"DUMMY_NODE_VECTOR8003", 4, true},
};

struct OwnerKeyword
{
    int token;
    uint32_t owner;
};

constexpr OwnerKeyword definitionOwners[] = {
    {Token::MessageKeyword, CANdbAttributeDefinition::Message},
    {Token::NodesKeyword, CANdbAttributeDefinition::Node},
    {Token::SignalKeyword, CANdbAttributeDefinition::Signal},
    {Token::VariableKeyword, CANdbAttributeDefinition::EnvVar},
};

struct TypeName
{
    const char *name;
    uint32_t type;
};

constexpr TypeName definitionTypes[] = {
    {"INT", CANdbAttributeDefinition::Int},       {"HEX", CANdbAttributeDefinition::Hex},
    {"FLOAT", CANdbAttributeDefinition::Float},   {"ENUM", CANdbAttributeDefinition::Enum},
    {"STRING", CANdbAttributeDefinition::String},
};

// "m" and digits: the value under which a multiplexed signal appears.
bool isMuxValue(const std::string &text)
{
    if (text.size() < 2 || text[0] != 'm')
        return false;
    for (size_t i = 1; i < text.size(); ++i) {
        if (text[i] < '0' || text[i] > '9')
            return false;
    }
    return true;
}

void setValue(CANdbAttributeList &owner, CANdbAttributeDefinition *definition, int32_t intValue,
              double floatValue, const std::string &stringValue)
{
    CANdbAttribute *attribute = findAttribute(owner, definition);
    if (!attribute) {
        owner.push_back(std::make_unique<CANdbAttribute>());
        attribute = owner.back().get();
        attribute->definition = definition;
        attribute->type = definition->type;
    }
    attribute->intValue = intValue;
    attribute->floatValue = floatValue;
    attribute->stringValue = stringValue;
}

} // namespace

int CANdbDBC::read(CANdbDatabase &target)
{
    ok = false;
    if (!hasFilename)
        return -1;
    std::FILE *file = std::fopen(filename.c_str(), "r");
    if (!file)
        return -1;
    std::string text;
    char chunk[65536];
    size_t count;
    while ((count = std::fread(chunk, 1, sizeof chunk, file)) > 0)
        text.append(chunk, count);
    std::fclose(file);
    return parse(target, text);
}

int CANdbDBC::write(const CANdbDatabase &source)
{
    if (!hasFilename)
        return -1;
    std::string text;
    text.reserve(4096 + source.messages.size() * 512);
    const int result = CANdbDBCWriter::format(source, text);
    std::FILE *file = std::fopen(filename.c_str(), "w");
    if (!file)
        return -1;
    const bool written = std::fwrite(text.data(), 1, text.size(), file) == text.size();
    const bool closed = std::fclose(file) == 0;
    return written && closed ? result : -1;
}

int CANdbDBC::parse(CANdbDatabase &target, std::string_view text)
{
    database = &target;
    ok = true;
    line = 1;
    const CANdbKeywordTable keywords;
    CANdbTokenizer reader(text, keywords, line, [this](const std::string &message) { error(message); });
    tokenizer = &reader;
    int errorCount = 0;
    int token = next();
    while (token != Token::EndOfFile) {
        int result = dispatch(token);
        if (result < 0) {
            ok = false;
            if (++errorCount >= maxErrors)
                break;
            result = resynchronise();
        }
        token = result;
    }
    tokenizer = nullptr;
    target.postProcess();
    database = nullptr;
    return ok ? 0 : -1;
}

int CANdbDBC::next()
{
    lastToken = tokenizer->next();
    return lastToken;
}

int CANdbDBC::fail(const std::string &text)
{
    error(text);
    return Token::Error;
}

bool CANdbDBC::isNumber(int token) const
{
    return token == Token::Integer || token == Token::FloatNumber;
}

std::string CANdbDBC::messageIdText() const
{
    return std::to_string(tokenizer->integer());
}

int CANdbDBC::dispatch(int token)
{
    switch (token) {
    case Token::NewSymbolsKeyword:
        return parseNewSymbols();
    case Token::NodesKeyword:
        return parseNodes();
    case Token::MessageKeyword:
        return parseMessage();
    case Token::VariableKeyword:
        return parseVariable();
    case Token::VariableDataKeyword:
        return parseVariableData();
    case Token::CommentKeyword:
        return parseComment();
    case Token::AttributeDefinitionKeyword:
        return parseAttributeDefinition();
    case Token::AttributeDefaultKeyword:
        return parseAttributeDefault();
    case Token::AttributeKeyword:
        return parseAttributeValue();
    case Token::ValueNamesKeyword:
        return parseValueNames();
    case Token::SignalTypeKeyword:
        return parseSignalType();
    case Token::CategoryKeyword:
        return skipPast(next(), ';');
    default:
        // Records that this reader does not keep ("VERSION", "BS_", value tables, relations) fall away
        // token by token.
        return token < 0 ? token : next();
    }
}

// Goes on behind a broken record: with the next line, unless the record broke at a line's end.
int CANdbDBC::resynchronise()
{
    if (lastToken == Token::EndOfLine)
        return next();
    if (lastToken == Token::EndOfFile)
        return Token::EndOfFile;
    int token = next();
    while (token != Token::EndOfLine && token != Token::EndOfFile)
        token = next();
    return token;
}

// Skips tokens from `token` on up to `stop` and returns the token behind it.
int CANdbDBC::skipPast(int token, int stop)
{
    while (token != stop && token > 0)
        token = next();
    return token == stop ? next() : token;
}

// Takes the next token if it is `wanted`; returns the token behind what was taken.
int CANdbDBC::optional(int wanted)
{
    const int token = next();
    return token == wanted ? next() : token;
}

int CANdbDBC::parseNewSymbols()
{
    int token = next();
    while (token > 0 && token != Token::NodesKeyword)
        token = next();
    return token;
}

int CANdbDBC::parseNodes()
{
    if (next() != ':')
        return fail("':' expected");
    int token = next();
    while (token == Token::Identifier) {
        if (tokenizer->text() != noNode)
            database->addNode(tokenizer->text());
        token = next();
    }
    return token;
}

int CANdbDBC::parseMessage()
{
    if (next() != Token::Integer)
        return fail("CAN id expected");
    const auto rawId = uint32_t(tokenizer->integer());
    if (next() != Token::Identifier)
        return fail("Message name missing or invalid");
    const std::string name = tokenizer->text();
    if (next() != ':')
        return fail("':' expected after message name (invalid character in name?)");
    if (next() != Token::Integer)
        return fail("DLC expected");
    const auto dlc = uint32_t(tokenizer->integer());
    int token = next();
    CANdbNode *sender = nullptr;
    if (token == Token::Identifier) {
        if (tokenizer->text() != noNode)
            sender = database->findNode(tokenizer->text());
        token = next();
    } else if (token != Token::EndOfLine) {
        return fail("Sender name expected");
    }
    CANdbMessage *message = database->addMessage(rawId & 0x7FFFFFFFu, (rawId & 0x80000000u) != 0);
    message->name = name;
    message->dlc = dlc;
    message->sender = sender;
    for (;;) {
        while (token == Token::EndOfLine)
            token = next();
        if (token != Token::SignalKeyword)
            return token;
        token = parseSignal(*message);
        if (token < 0)
            return token;
    }
}

int CANdbDBC::parseSignal(CANdbMessage &message)
{
    if (next() != Token::Identifier)
        return fail("Signal name missing or invalid");
    const std::string name = tokenizer->text();
    int token = next();
    int32_t muxValue = -1;
    bool isMultiplexer = false;
    if (token == Token::Identifier) {
        if (tokenizer->text() == "M")
            isMultiplexer = true;
        else if (isMuxValue(tokenizer->text()))
            muxValue = int32_t(
                uint32_t(CANdbNumberText::parseDecimal(std::string_view(tokenizer->text()).substr(1))));
        token = next();
    }
    if (token != ':')
        return fail("':' expected after signal name (invalid character in name?)");
    if (next() != Token::Integer)
        return fail("Signal bit position expected");
    const int32_t start = tokenizer->integer();
    if (next() != '|')
        return fail("'|' expected after signal name");
    if (next() != Token::Integer)
        return fail("Signal length expected");
    const int32_t length = tokenizer->integer();
    if (next() != '@')
        return fail("'@' expected after signal name");
    if (next() != Token::Integer)
        return fail("Signal number expected");
    const bool motorola = tokenizer->integer() == 0;
    token = next();
    if (token != '+' && token != '-')
        return fail("'+' or '-' expected");
    const uint32_t valueType = token == '+' ? CANdbSignal::Unsigned : CANdbSignal::Signed;
    if (next() != '(')
        return fail("'(' expected after signal name");
    if (!isNumber(next()))
        return fail("Factor expected");
    const double factor = tokenizer->number();
    if (next() != ',')
        return fail("',' expected after signal name");
    if (!isNumber(next()))
        return fail("Offset expected");
    const double offset = tokenizer->number();
    if (next() != ')')
        return fail("')' expected after signal name");
    if (next() != '[')
        return fail("'[' expected after signal name");
    if (!isNumber(next()))
        return fail("Min value expected");
    const double minimum = tokenizer->number();
    if (next() != '|')
        return fail("'|' expected after signal name");
    if (!isNumber(next()))
        return fail("Max value expected");
    const double maximum = tokenizer->number();
    if (next() != ']')
        return fail("']' expected after signal name");
    if (next() != Token::String)
        return fail("Signal unit expected");

    CANdbSignal *signal = message.addSignal();
    signal->name = name;
    signal->muxValue = muxValue;
    signal->isMultiplexer = isMultiplexer;
    signal->motorola = motorola;
    signal->length = length;
    signal->startBit = motorola ? MotorolaBits::fileToMemory(start, length) : start;
    signal->valueType = valueType;
    signal->factor = factor;
    signal->offset = offset;
    signal->minimum = minimum;
    signal->maximum = maximum;
    signal->unit = tokenizer->text();
    token = next();
    while (token == Token::Identifier || token == ',') {
        if (token == Token::Identifier)
            signal->addReceiver(database->findNode(tokenizer->text()));
        token = next();
    }
    return token;
}

int CANdbDBC::parseVariable()
{
    if (next() != Token::Identifier)
        return fail("Variable name expected");
    auto variable = std::make_unique<CANdbEnvVar>();
    variable->name = tokenizer->text();
    if (next() != ':')
        return fail("':' expected after variable name");
    if (next() != Token::Integer)
        return fail("variable type expected");
    switch (tokenizer->integer()) {
    case 0:
        variable->type = CANdbEnvVar::Integer;
        break;
    case 1:
        variable->type = CANdbEnvVar::Float;
        break;
    default:
        return fail("Unknown environment variable type");
    }
    if (next() != '[')
        return fail("'[' expected after variable type");
    if (!isNumber(next()))
        return fail("Min value expected");
    variable->minimum = tokenizer->number();
    if (next() != '|')
        return fail("'|' expected in variable min/max");
    if (!isNumber(next()))
        return fail("Max value expected");
    variable->maximum = tokenizer->number();
    if (next() != ']')
        return fail("']' expected after variable min/max");
    if (next() != Token::String)
        return fail("Variable unit expected");
    variable->unit = tokenizer->text();
    if (!isNumber(next()))
        return fail("Start value expected");
    variable->startValue = tokenizer->number();
    if (next() != Token::Integer)
        return fail("Num id expected");
    variable->numericId = tokenizer->integer();
    if (next() != Token::Identifier)
        return fail("dummy place holder expected");
    variable->dummyNode = tokenizer->text();
    for (const auto &placeHolder : placeHolders) {
        if (variable->dummyNode != placeHolder.text)
            continue;
        variable->access = placeHolder.access;
        if (placeHolder.string) {
            if (variable->type != CANdbEnvVar::Integer)
                return fail("Inconsistent environment variable type.");
            variable->type = CANdbEnvVar::String;
        }
    }
    int token = next();
    while (token == Token::Identifier || token == ',') {
        if (token == Token::Identifier && tokenizer->text() != noNode) {
            CANdbNode *node = database->findNode(tokenizer->text());
            if (node)
                variable->nodes.push_back(node);
        }
        token = next();
    }
    database->variables.push_back(std::move(variable));
    return token;
}

int CANdbDBC::parseVariableData()
{
    if (next() != Token::Identifier)
        return fail("variable name expected for variable data");
    CANdbEnvVar *variable = database->findVariable(tokenizer->text());
    if (next() != ':')
        return fail("':' expected");
    if (!isNumber(next()))
        return fail("Value expected");
    const double value = tokenizer->number();
    if (next() != ';')
        return fail("';' expected after variable data");
    if (variable) {
        variable->dataValue = value;
        variable->hasData = true;
    } else {
        error("No variable found for data line");
    }
    return next();
}

int CANdbDBC::parseComment()
{
    int token = next();
    switch (token) {
    case Token::String:
        database->comment = tokenizer->text();
        break;
    case Token::NodesKeyword: {
        if (next() != Token::Identifier)
            return fail("Name expected for module comment");
        CANdbNode *node = database->findNode(tokenizer->text());
        if (!node)
            error("No node found for comment line");
        if (next() != Token::String)
            return fail("String expected for node comment");
        if (node)
            node->comment = tokenizer->text();
        break;
    }
    case Token::MessageKeyword: {
        if (next() != Token::Integer)
            return fail("Id expected for message comment");
        CANdbMessage *message = database->findMessage(uint32_t(tokenizer->integer()));
        if (!message)
            error("No message found for comment line");
        if (next() != Token::String)
            return fail("String expected for message comment");
        if (message)
            message->comment = tokenizer->text();
        break;
    }
    case Token::SignalKeyword: {
        if (next() != Token::Integer)
            return fail("Id expected for signal comment");
        CANdbMessage *message = database->findMessage(uint32_t(tokenizer->integer()));
        if (!message)
            error("Message (id=" + messageIdText() + ") found for comment line");
        if (next() != Token::Identifier)
            return fail("Signal name expected for signal comment");
        CANdbSignal *signal = message ? message->findSignal(tokenizer->text()) : nullptr;
        if (message && !signal)
            error("Signal not found");
        if (next() != Token::String)
            return fail("String expected for signal comment");
        if (signal)
            signal->comment = tokenizer->text();
        break;
    }
    case Token::VariableKeyword: {
        if (next() != Token::Identifier)
            return fail("Name expected for variable comment");
        CANdbEnvVar *variable = database->findVariable(tokenizer->text());
        if (!variable)
            error("No variable found for comment line");
        if (next() != Token::String)
            return fail("String expected for variable comment");
        if (variable)
            variable->comment = tokenizer->text();
        break;
    }
    default:
        return skipPast(token, ';');
    }
    return skipPast(next(), ';');
}

int CANdbDBC::parseAttributeDefinition()
{
    int token = next();
    uint32_t owner = CANdbAttributeDefinition::Network;
    for (const auto &keyword : definitionOwners) {
        if (token == keyword.token) {
            owner = keyword.owner;
            token = next();
            break;
        }
    }
    if (token != Token::String)
        return fail("Attribute name expected");
    const std::string name = tokenizer->text();
    if (next() != Token::Identifier)
        return fail("Attribute type expected");
    CANdbAttributeDefinition *definition = database->addDefinition();
    definition->name = name;
    definition->owner = owner;
    for (const auto &typeName : definitionTypes) {
        if (tokenizer->text() == typeName.name)
            definition->type = typeName.type;
    }
    switch (definition->type) {
    case CANdbAttributeDefinition::Enum:
        token = next();
        while (token == Token::String || token == ',') {
            if (token == Token::String)
                definition->enumValues.push_back(tokenizer->text());
            token = next();
        }
        return token == ';' ? next() : token;
    case CANdbAttributeDefinition::Int:
    case CANdbAttributeDefinition::Hex:
        if (next() != Token::Integer)
            return fail("Attribute min value expected");
        definition->intMin = tokenizer->integer();
        if (next() != Token::Integer)
            return fail("Attribute max value expected");
        definition->intMax = tokenizer->integer();
        return optional(';');
    case CANdbAttributeDefinition::Float:
        if (!isNumber(next()))
            return fail("Attributes min value expected");
        definition->floatMin = tokenizer->number();
        if (!isNumber(next()))
            return fail("Attributes max value expected");
        definition->floatMax = tokenizer->number();
        return optional(';');
    case CANdbAttributeDefinition::String:
        if (next() != ';')
            return fail("';' expected (String Attribute)");
        return next();
    default:
        return skipPast(next(), ';');
    }
}

int CANdbDBC::parseAttributeDefault()
{
    if (next() != Token::String)
        return fail("Attribute name expected");
    CANdbAttributeDefinition *definition = database->findDefinition(tokenizer->text());
    if (!definition) {
        error("Attribute '" + tokenizer->text() + "' not found");
        return skipPast(next(), ';');
    }
    switch (definition->type) {
    case CANdbAttributeDefinition::String:
        if (next() != Token::String)
            return fail("String expected");
        definition->stringDefault = tokenizer->text();
        break;
    case CANdbAttributeDefinition::Enum: {
        if (next() != Token::String)
            return fail("String expected");
        definition->enumDefault = -1;
        const auto &names = definition->enumValues;
        for (size_t i = 0; i < names.size(); ++i) {
            if (names[i] == tokenizer->text()) {
                definition->enumDefault = int32_t(i);
                break;
            }
        }
        break;
    }
    case CANdbAttributeDefinition::Int:
    case CANdbAttributeDefinition::Hex:
        if (next() != Token::Integer)
            return fail("Integer value expected");
        definition->intDefault = tokenizer->integer();
        break;
    case CANdbAttributeDefinition::Float:
        if (!isNumber(next()))
            return fail("Float value expected");
        definition->floatDefault = tokenizer->number();
        break;
    default:
        return skipPast(next(), ';');
    }
    if (next() != ';')
        return fail("';' expected (attribute default value)");
    return next();
}

int CANdbDBC::parseAttributeValue()
{
    if (next() != Token::String)
        return fail("Attribute name expected");
    CANdbAttributeDefinition *definition = database->findDefinition(tokenizer->text());
    if (!definition) {
        const std::string text = "Attribute '" + tokenizer->text() + "' not found";
        message(text);
        return fail(text);
    }
    CANdbAttributeList *owner = nullptr;
    int token = next();
    switch (token) {
    case Token::MessageKeyword: {
        if (next() != Token::Integer)
            return fail("Message Id expected");
        CANdbMessage *message = database->findMessage(uint32_t(tokenizer->integer()));
        if (message)
            owner = &message->attributes;
        else
            warning("Message " + messageIdText() + " not found");
        token = next();
        break;
    }
    case Token::SignalKeyword: {
        if (next() != Token::Integer)
            return fail("Message Id expected");
        CANdbMessage *message = database->findMessage(uint32_t(tokenizer->integer()));
        if (!message)
            warning("Message " + messageIdText() + " not found");
        if (next() != Token::Identifier)
            return fail("Message name expected");
        CANdbSignal *signal = message ? message->findSignal(tokenizer->text()) : nullptr;
        if (signal)
            owner = &signal->attributes;
        token = next();
        break;
    }
    case Token::VariableKeyword: {
        if (next() != Token::Identifier)
            return fail("EnvVar name expected");
        CANdbEnvVar *variable = database->findVariable(tokenizer->text());
        if (variable)
            owner = &variable->attributes;
        token = next();
        break;
    }
    case Token::NodesKeyword: {
        if (next() != Token::Identifier)
            return fail("Node name expected");
        CANdbNode *node = database->findNode(tokenizer->text());
        if (node)
            owner = &node->attributes;
        token = next();
        break;
    }
    default:
        owner = &database->attributes;
        break;
    }
    int32_t intValue = 0;
    double floatValue = 0.0;
    std::string stringValue;
    switch (definition->type) {
    case CANdbAttributeDefinition::String:
        if (token != Token::String)
            return fail("String expected");
        stringValue = tokenizer->text();
        break;
    case CANdbAttributeDefinition::Float:
        if (!isNumber(token))
            return fail("Float value expected");
        floatValue = tokenizer->number();
        break;
    case CANdbAttributeDefinition::None:
        return skipPast(token, ';');
    default:
        if (token != Token::Integer)
            return fail("Integer value expected");
        intValue = tokenizer->integer();
        break;
    }
    if (next() != ';')
        return fail("';' expected (attribute value)");
    if (owner)
        setValue(*owner, definition, intValue, floatValue, stringValue);
    return next();
}

int CANdbDBC::parseValueNames()
{
    std::vector<CANdbValueName> *target = nullptr;
    const char *numberExpected;
    const char *stringExpected;
    int token = next();
    if (token == Token::Integer) {
        CANdbMessage *message = database->findMessage(uint32_t(tokenizer->integer()));
        if (!message)
            error("Message (id=" + messageIdText() + ") found for type info");
        if (next() != Token::Identifier)
            return fail("Signal name expected for signal value");
        CANdbSignal *signal = message ? message->findSignal(tokenizer->text()) : nullptr;
        if (message && !signal)
            error("Signal not found");
        if (signal)
            target = &signal->valueNames;
        numberExpected = "Number expected for signal value";
        stringExpected = "String expected for signal value";
    } else if (token == Token::Identifier) {
        CANdbEnvVar *variable = database->findVariable(tokenizer->text());
        if (variable)
            target = &variable->valueNames;
        else
            error("Variable not found");
        numberExpected = "Number expected for variable value";
        stringExpected = "String expected for variable value name";
    } else {
        return fail("Unsupported VAL record");
    }
    std::vector<CANdbValueName> names;
    token = next();
    while (token != ';') {
        if (!isNumber(token))
            return fail(numberExpected);
        const int32_t value =
            token == Token::Integer ? tokenizer->integer() : CANdbNumberText::toInt32(tokenizer->number());
        if (next() != Token::String)
            return fail(stringExpected);
        names.push_back(CANdbValueName{tokenizer->text(), value});
        token = next();
    }
    if (target)
        *target = std::move(names);
    return next();
}

int CANdbDBC::parseSignalType()
{
    if (next() != Token::Integer)
        return fail("Id expected for signal type");
    CANdbMessage *message = database->findMessage(uint32_t(tokenizer->integer()));
    if (!message)
        error("Message (id=" + messageIdText() + ") found for type info");
    if (next() != Token::Identifier)
        return fail("Signal name expected for signal type");
    CANdbSignal *signal = message ? message->findSignal(tokenizer->text()) : nullptr;
    if (message && !signal)
        error("Signal not found");
    if (next() != ':')
        return fail("Expected ':'");
    if (next() != Token::Integer)
        return fail("Number expected for signal type");
    const int32_t type = tokenizer->integer();
    if (type != 1 && type != 2)
        error("Unknown signal type " + std::to_string(type));
    else if (signal)
        signal->valueType = type == 1 ? CANdbSignal::Float : CANdbSignal::Double;
    return optional(';');
}
