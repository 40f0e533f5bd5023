#include "candbdbcwriter.h"

#include "generators/documents/dbc/candbdatabase.h"
#include "generators/documents/dbc/candbnumbertext.h"
#include "generators/documents/dbc/motorolabits.h"

namespace {

const char header[] =
    "VERSION \"HIPBNYYYYYYYYYYYYYYYYYYYYYYYYYYYYYYYYYYYYY/4/%%%/4/'%**4YYY///\"\n\n\nNS_ : \n";

const char *const newSymbols[] = {
    "NS_DESC_",     "CM_",
    "BA_DEF_",      "BA_",
    "VAL_",         "CAT_DEF_",
    "CAT_",         "FILTER",
    "BA_DEF_DEF_",  "EV_DATA_",
    "ENVVAR_DATA_", "SGTYPE_",
    "SGTYPE_VAL_",  "BA_DEF_SGTYPE_",
    "BA_SGTYPE_",   "SIG_TYPE_REF_",
    "VAL_TABLE_",   "SIG_GROUP_",
    "SIG_VALTYPE_", "SIGTYPE_VALTYPE_",
    "BO_TX_BU_",    "BA_DEF_REL_",
    "BA_REL_",      "BA_DEF_DEF_REL_",
    "BU_SG_REL_",   "BU_EV_REL_",
    "BU_BO_REL_",   "SG_MUL_VAL_",
};

// Keyword of an owner kind in a definition; indexed by CANdbAttributeDefinition::Owner.
const char *const ownerKeywords[] = {nullptr, "", "BO_ ", "BU_ ", "SG_ ", "EV_ "};

const char noNode[] = "Vector__XXX";

class Writer
{
public:
    Writer(const CANdbDatabase &database, std::string &out)
        : db(database)
        , out(out)
    {}

    int run()
    {
        writeHead();
        writeNodes();
        for (const auto &message : db.messages)
            writeMessage(*message);
        writeVariables();
        writeComments();
        if (!writeDefinitions())
            return 1;
        writeDefaults();
        writeAttributeValues();
        writeValueNames();
        writeValueTypes();
        return 0;
    }

private:
    void number(double value) { CANdbNumberText::appendDouble(out, value); }
    void integer(int64_t value) { CANdbNumberText::appendInt(out, value); }
    void id(const CANdbMessage &message) { CANdbNumberText::appendUInt(out, message.fileId()); }
    void quoted(const std::string &text) { CANdbDBCWriter::appendQuoted(out, text); }

    void writeHead()
    {
        out += header;
        for (const char *symbol : newSymbols) {
            out += '\t';
            out += symbol;
            out += '\n';
        }
        out += "\nBS_:\n\n";
    }

    void writeNodes()
    {
        out += "BU_:";
        for (const auto &node : db.nodes) {
            out += ' ';
            out += node->name;
        }
        out += "\n\n\n";
    }

    // Two blanks and the names joined by commas, or one blank and the place holder without nodes.
    void writeNodeList(const std::vector<CANdbNode *> &nodes)
    {
        if (nodes.empty()) {
            out += ' ';
            out += noNode;
            return;
        }
        out += ' ';
        for (size_t i = 0; i < nodes.size(); ++i) {
            out += i == 0 ? ' ' : ',';
            out += nodes[i]->name;
        }
    }

    void writeMessage(const CANdbMessage &message)
    {
        out += "BO_ ";
        id(message);
        out += ' ';
        out += message.name;
        out += ": ";
        integer(int32_t(message.dlc));
        out += ' ';
        out += message.sender && !message.sender->name.empty() ? message.sender->name : std::string(noNode);
        out += '\n';
        for (const auto &signal : message.signalList)
            writeSignal(*signal);
        out += '\n';
    }

    void writeSignal(const CANdbSignal &signal)
    {
        out += " SG_ ";
        out += signal.name;
        if (signal.isMultiplexer) {
            out += " M";
        } else if (signal.muxValue != -1) {
            out += " m";
            integer(signal.muxValue);
        }
        out += " : ";
        integer(signal.motorola ? MotorolaBits::memoryToFile(signal.startBit, signal.length)
                                : signal.startBit);
        out += '|';
        integer(signal.length);
        out += signal.motorola ? "@0" : "@1";
        out += signal.valueType == CANdbSignal::Unsigned ? '+' : '-';
        out += " (";
        number(signal.factor);
        out += ',';
        number(signal.offset);
        out += ") [";
        number(signal.minimum);
        out += '|';
        number(signal.maximum);
        out += "] ";
        quoted(signal.unit);
        writeNodeList(signal.receivers);
        out += '\n';
    }

    void writeVariables()
    {
        for (const auto &variable : db.variables) {
            out += "\nEV_ ";
            out += variable->name;
            out += ": ";
            out += variable->type == CANdbEnvVar::Float ? '1' : '0';
            out += " [";
            number(variable->minimum);
            out += '|';
            number(variable->maximum);
            out += "] ";
            quoted(variable->unit);
            out += ' ';
            number(variable->startValue);
            out += ' ';
            integer(variable->numericId);
            out += ' ';
            out += variable->dummyNode;
            writeNodeList(variable->nodes);
            out += ";\n";
        }
        for (const auto &variable : db.variables) {
            if (!variable->hasData)
                continue;
            out += "ENVVAR_DATA_ ";
            out += variable->name;
            out += ": ";
            number(variable->dataValue);
            out += ";\n";
        }
        out += '\n';
    }

    void commentLine(const char *prefix, const std::string &comment)
    {
        out += prefix;
        quoted(comment);
        out += ";\n";
    }

    void writeComments()
    {
        if (!db.comment.empty())
            commentLine("CM_ ", db.comment);
        for (const auto &node : db.nodes) {
            if (!node->comment.empty())
                commentLine(("CM_ BU_ " + node->name + ' ').c_str(), node->comment);
        }
        for (const auto &message : db.messages) {
            if (!message->comment.empty()) {
                out += "CM_ BO_ ";
                id(*message);
                commentLine(" ", message->comment);
            }
            for (const auto &signal : message->signalList) {
                if (signal->comment.empty())
                    continue;
                out += "CM_ SG_ ";
                id(*message);
                commentLine((' ' + signal->name + ' ').c_str(), signal->comment);
            }
        }
        for (const auto &variable : db.variables) {
            if (!variable->comment.empty())
                commentLine(("CM_ EV_ " + variable->name + ' ').c_str(), variable->comment);
        }
    }

    // Definitions without a type carry nothing that a file can hold; they are left out with their values.
    static bool written(const CANdbAttributeDefinition *definition)
    {
        return definition && definition->type != CANdbAttributeDefinition::None;
    }

    bool writeDefinitions()
    {
        for (const auto &definition : db.definitions) {
            if (!written(definition.get()))
                continue;
            if (definition->owner == CANdbAttributeDefinition::NotSet ||
                definition->owner > CANdbAttributeDefinition::EnvVar)
                return false;
            out += "BA_DEF_ ";
            out += ownerKeywords[definition->owner];
            out += ' ';
            quoted(definition->name);
            out += ' ';
            switch (definition->type) {
            case CANdbAttributeDefinition::Int:
            case CANdbAttributeDefinition::Hex:
                out += definition->type == CANdbAttributeDefinition::Int ? "INT " : "HEX ";
                integer(definition->intMin);
                out += ' ';
                integer(definition->intMax);
                break;
            case CANdbAttributeDefinition::Float:
                out += "FLOAT ";
                number(definition->floatMin);
                out += ' ';
                number(definition->floatMax);
                break;
            case CANdbAttributeDefinition::Enum:
                out += "ENUM  ";
                for (size_t i = 0; i < definition->enumValues.size(); ++i) {
                    if (i > 0)
                        out += ',';
                    quoted(definition->enumValues[i]);
                }
                break;
            default:
                out += "STRING ";
                break;
            }
            out += ";\n";
        }
        return true;
    }

    void writeDefaults()
    {
        for (const auto &definition : db.definitions) {
            if (!written(definition.get()))
                continue;
            out += "BA_DEF_DEF_  ";
            quoted(definition->name);
            out += ' ';
            switch (definition->type) {
            case CANdbAttributeDefinition::Int:
            case CANdbAttributeDefinition::Hex:
                integer(definition->intDefault);
                break;
            case CANdbAttributeDefinition::Float:
                number(definition->floatDefault);
                break;
            case CANdbAttributeDefinition::Enum: {
                const auto &names = definition->enumValues;
                const int32_t index = definition->enumDefault;
                quoted(index >= 0 && size_t(index) < names.size() ? names[size_t(index)] : std::string());
                break;
            }
            default:
                quoted(definition->stringDefault);
                break;
            }
            out += ";\n";
        }
    }

    void writeValue(const CANdbAttribute &attribute)
    {
        switch (attribute.type) {
        case CANdbAttributeDefinition::Float:
            number(attribute.floatValue);
            break;
        case CANdbAttributeDefinition::String:
            quoted(attribute.stringValue);
            break;
        default:
            integer(attribute.intValue);
            break;
        }
        out += ";\n";
    }

    // One "BA_" line per attribute of an owner; `owner` stands between the name and the value.
    void writeAttributes(const CANdbAttributeList &attributes, const std::string &owner)
    {
        for (const auto &attribute : attributes) {
            if (!written(attribute->definition))
                continue;
            out += "BA_ ";
            quoted(attribute->definition->name);
            out += owner;
            writeValue(*attribute);
        }
    }

    std::string messageOwner(const char *keyword, const CANdbMessage &message)
    {
        std::string text = keyword;
        CANdbNumberText::appendUInt(text, message.fileId());
        return text + ' ';
    }

    void writeAttributeValues()
    {
        for (const auto &message : db.messages) {
            writeAttributes(message->attributes, messageOwner(" BO_ ", *message));
            for (const auto &signal : message->signalList)
                writeAttributes(signal->attributes, messageOwner(" SG_ ", *message) + signal->name + ' ');
        }
        for (const auto &node : db.nodes)
            writeAttributes(node->attributes, " BU_ " + node->name + ' ');
        for (const auto &variable : db.variables)
            writeAttributes(variable->attributes, " EV_ " + variable->name + ' ');
        writeAttributes(db.attributes, " ");
    }

    void writeValueNameList(const std::vector<CANdbValueName> &names)
    {
        for (const auto &entry : names) {
            out += ' ';
            integer(entry.value);
            out += ' ';
            quoted(entry.name);
        }
        out += " ;\n";
    }

    void writeValueNames()
    {
        for (const auto &message : db.messages) {
            for (const auto &signal : message->signalList) {
                if (signal->valueNames.empty())
                    continue;
                out += "VAL_ ";
                id(*message);
                out += ' ';
                out += signal->name;
                writeValueNameList(signal->valueNames);
            }
        }
        for (const auto &variable : db.variables) {
            if (variable->valueNames.empty())
                continue;
            out += "VAL_ ";
            out += variable->name;
            writeValueNameList(variable->valueNames);
        }
    }

    void writeValueTypes()
    {
        for (const auto &message : db.messages) {
            for (const auto &signal : message->signalList) {
                if (signal->valueType != CANdbSignal::Float && signal->valueType != CANdbSignal::Double)
                    continue;
                out += "SIG_VALTYPE_ ";
                id(*message);
                out += ' ';
                out += signal->name;
                out += signal->valueType == CANdbSignal::Float ? " : 1;\n" : " : 2;\n";
            }
        }
    }

    const CANdbDatabase &db;
    std::string &out;
};

} // namespace

int CANdbDBCWriter::format(const CANdbDatabase &database, std::string &out)
{
    return Writer(database, out).run();
}

void CANdbDBCWriter::appendQuoted(std::string &out, const std::string &text)
{
    static const char hexDigits[] = "0123456789abcdef";
    out += '"';
    for (const char c : text) {
        const auto byte = static_cast<unsigned char>(c);
        switch (byte) {
        case '\n':
            out += '\n';
            break;
        case '\t':
            out += "\\t";
            break;
        case '\r':
            out += "\\r";
            break;
        case '"':
            out += "\\\"";
            break;
        default:
            if (byte < 32) {
                out += "\\x";
                out += hexDigits[byte >> 4];
                out += hexDigits[byte & 0xF];
            } else {
                out += c;
            }
            break;
        }
    }
    out += '"';
}
