#include "kvadb.h"

#include "generators/documents/dbc/candbdatabase.h"
#include "generators/documents/dbc/candbdbc.h"

#include <mutex>
#include <new>
#include <set>

namespace {

constexpr size_t parseErrorLength = 511;
constexpr size_t baseNameLength = 100;

struct StatusText
{
    int status;
    const char *text;
};

constexpr StatusText statusTexts[] = {
    {KvaDbOk, "done"},
    {KvaDbFail, "general failure"},
    {KvaDbNoDatabase, "no database"},
    {KvaDbBadArgument, "invalid handle or argument"},
    {KvaDbNoHandle, "no handle could be registered"},
    {KvaDbFileError, "the file could not be opened or written"},
    {KvaDbNoOwner, "the owner record is missing"},
    {KvaDbNameInUse, "the name is in use, or the set holds more than one database"},
    {KvaDbWrongOwner, "the definition does not apply to this kind of record"},
    {KvaDbParseError, "the file could not be parsed"},
};

// The handles given out, one registry per kind, and the text of the last failed read; shared by the
// whole process, so guarded.
struct Registry
{
    std::mutex mutex;
    std::set<const void *> sets;
    std::set<const void *> definitions;
    std::set<const void *> messages;
    std::set<const void *> signalHandles;
    std::set<const void *> attributes;
    std::string lastParseError;
};

Registry &registry()
{
    static Registry instance;
    return instance;
}

bool isRegistered(const std::set<const void *> &handles, const void *handle)
{
    if (!handle)
        return false;
    std::lock_guard lock(registry().mutex);
    return handles.count(handle) != 0;
}

bool enrol(std::set<const void *> &handles, const void *handle)
{
    try {
        std::lock_guard lock(registry().mutex);
        handles.insert(handle);
        return true;
    } catch (const std::bad_alloc &) {
        return false;
    }
}

void withdrawAttributes(Registry &r, const CANdbAttributeList &attributes)
{
    for (const auto &attribute : attributes)
        r.attributes.erase(attribute.get());
}

void withdrawDatabase(Registry &r, const CANdbDatabase &database)
{
    for (const auto &message : database.messages) {
        for (const auto &signal : message->signalList) {
            withdrawAttributes(r, signal->attributes);
            r.signalHandles.erase(signal.get());
        }
        withdrawAttributes(r, message->attributes);
        r.messages.erase(message.get());
    }
    for (const auto &node : database.nodes)
        withdrawAttributes(r, node->attributes);
    for (const auto &variable : database.variables)
        withdrawAttributes(r, variable->attributes);
    withdrawAttributes(r, database.attributes);
    for (const auto &definition : database.definitions)
        r.definitions.erase(definition.get());
}

// The name a database read from a file gets without one of its own.
std::string baseName(const std::string &file)
{
    const size_t separator = file.find_last_of("\\/");
    std::string name = separator == std::string::npos ? file : file.substr(separator + 1);
    name = name.substr(0, name.find('.'));
    if (name.size() > baseNameLength)
        name.resize(baseNameLength);
    return name.empty() ? std::string("unkown") : name;
}

std::string textOf(const char *text)
{
    return text ? std::string(text) : std::string();
}

CANdbDatabase *currentDatabase(KvaDbHnd set)
{
    return set->databases.empty() ? nullptr : set->databases.back().get();
}

// Adds an attribute of the definition to an owner, carrying the definition's default as its value.
int addAttribute(CANdbAttributeList &owner, KvaDbAttributeDefHnd definition, uint32_t ownerKind,
                 KvaDbAttributeHnd *attribute)
{
    if (!attribute || !isRegistered(registry().definitions, definition))
        return KvaDbBadArgument;
    if (definition->owner != ownerKind)
        return KvaDbWrongOwner;
    if (findAttribute(owner, definition))
        return KvaDbFail;
    owner.push_back(std::make_unique<CANdbAttribute>());
    CANdbAttribute *added = owner.back().get();
    added->definition = definition;
    added->type = definition->type;
    added->intValue =
        definition->type == CANdbAttributeDefinition::Enum ? definition->enumDefault : definition->intDefault;
    added->floatValue = definition->floatDefault;
    added->stringValue = definition->stringDefault;
    if (!enrol(registry().attributes, added))
        return KvaDbNoHandle;
    *attribute = added;
    return KvaDbOk;
}

} // namespace

const char *kvaDbStatusText(int status)
{
    for (const auto &entry : statusTexts) {
        if (entry.status == status)
            return entry.text;
    }
    return "unknown status";
}

std::string kvaDbLastParseError()
{
    std::lock_guard lock(registry().mutex);
    return registry().lastParseError;
}

int kvaDbOpen(KvaDbHnd *set)
{
    if (!set)
        return KvaDbBadArgument;
    auto created = std::make_unique<CANdbDatabaseSet>();
    if (!enrol(registry().sets, created.get()))
        return KvaDbNoHandle;
    *set = created.release();
    return KvaDbOk;
}

int kvaDbCreate(KvaDbHnd set, const char *name, const char *file)
{
    if (!isRegistered(registry().sets, set) || (!name && !file))
        return KvaDbBadArgument;
    auto database = std::make_unique<CANdbDatabase>();
    if (!file) {
        database->name = name;
        database->filename = name;
        set->databases.push_back(std::move(database));
        return KvaDbOk;
    }
    CANdbDBC reader(file);
    if (reader.read(*database) != 0) {
        const std::string text = reader.errorText().substr(0, parseErrorLength);
        {
            std::lock_guard lock(registry().mutex);
            registry().lastParseError = text;
        }
        return text.empty() ? KvaDbFileError : KvaDbParseError;
    }
    {
        std::lock_guard lock(registry().mutex);
        registry().lastParseError.clear();
    }
    database->name = name ? std::string(name) : baseName(file);
    database->filename = file;
    set->databases.push_back(std::move(database));
    return KvaDbOk;
}

int kvaDbClose(KvaDbHnd set)
{
    if (!isRegistered(registry().sets, set))
        return KvaDbBadArgument;
    {
        Registry &r = registry();
        std::lock_guard lock(r.mutex);
        for (const auto &database : set->databases)
            withdrawDatabase(r, *database);
        r.sets.erase(set);
    }
    delete set;
    return KvaDbOk;
}

int kvaDbWriteFile(KvaDbHnd set, const char *path)
{
    if (!isRegistered(registry().sets, set) || !path)
        return KvaDbBadArgument;
    if (set->databases.size() > 1)
        return KvaDbNameInUse;
    if (set->databases.empty())
        return KvaDbNoDatabase;
    CANdbDBC writer(path);
    return writer.write(*set->databases.front()) == 0 ? KvaDbOk : KvaDbFileError;
}

int kvaDbAddMsg(KvaDbHnd set, KvaDbMessageHnd *message)
{
    if (!isRegistered(registry().sets, set) || !message)
        return KvaDbBadArgument;
    CANdbDatabase *database = currentDatabase(set);
    if (!database)
        return KvaDbNoDatabase;
    CANdbMessage *added = database->addMessage(0, false);
    if (!enrol(registry().messages, added))
        return KvaDbNoHandle;
    *message = added;
    return KvaDbOk;
}

int kvaDbSetMsgName(KvaDbMessageHnd message, const char *name)
{
    if (!isRegistered(registry().messages, message) || !name)
        return KvaDbBadArgument;
    if (!message->database)
        return KvaDbNoDatabase;
    const CANdbMessage *holder = message->database->findMessage(std::string(name));
    if (holder == message)
        return KvaDbOk;
    if (holder)
        return KvaDbNameInUse;
    message->name = name;
    return KvaDbOk;
}

int kvaDbSetMsgId(KvaDbMessageHnd message, unsigned int id, unsigned int)
{
    if (!isRegistered(registry().messages, message))
        return KvaDbBadArgument;
    message->id = id & 0x7FFFFFFFu;
    message->extended = (id & 0x80000000u) != 0;
    return KvaDbOk;
}

int kvaDbSetMsgDlc(KvaDbMessageHnd message, int dlc)
{
    if (!isRegistered(registry().messages, message) || dlc < 0)
        return KvaDbBadArgument;
    message->dlc = uint32_t(dlc);
    return KvaDbOk;
}

int kvaDbSetMsgComment(KvaDbMessageHnd message, const char *comment)
{
    if (!isRegistered(registry().messages, message))
        return KvaDbBadArgument;
    message->comment = textOf(comment);
    return KvaDbOk;
}

int kvaDbAddSignal(KvaDbMessageHnd message, KvaDbSignalHnd *signal)
{
    if (!isRegistered(registry().messages, message) || !signal)
        return KvaDbBadArgument;
    CANdbSignal *added = message->addSignal();
    if (!enrol(registry().signalHandles, added))
        return KvaDbNoHandle;
    *signal = added;
    return KvaDbOk;
}

int kvaDbSetSignalName(KvaDbSignalHnd signal, const char *name)
{
    if (!isRegistered(registry().signalHandles, signal) || !name)
        return KvaDbBadArgument;
    signal->name = name;
    return KvaDbOk;
}

int kvaDbSetSignalComment(KvaDbSignalHnd signal, const char *comment)
{
    if (!isRegistered(registry().signalHandles, signal))
        return KvaDbBadArgument;
    signal->comment = textOf(comment);
    return KvaDbOk;
}

int kvaDbSetSignalValueSize(KvaDbSignalHnd signal, int startBit, int length)
{
    if (!isRegistered(registry().signalHandles, signal) || startBit < 0 || length < 0)
        return KvaDbBadArgument;
    signal->startBit = startBit;
    signal->length = length;
    return KvaDbOk;
}

int kvaDbSetSignalValueType(KvaDbSignalHnd signal, int type)
{
    if (!isRegistered(registry().signalHandles, signal) || type < int(CANdbSignal::Signed) ||
        type > int(CANdbSignal::Double))
        return KvaDbBadArgument;
    signal->valueType = uint32_t(type);
    return KvaDbOk;
}

int kvaDbAddAttributeDefinition(KvaDbHnd set, KvaDbAttributeDefHnd *definition)
{
    if (!isRegistered(registry().sets, set) || !definition)
        return KvaDbBadArgument;
    if (set->databases.size() > 1)
        return KvaDbNameInUse;
    if (set->databases.empty())
        return KvaDbNoDatabase;
    CANdbAttributeDefinition *added = set->databases.front()->addDefinition();
    if (!enrol(registry().definitions, added))
        return KvaDbNoHandle;
    *definition = added;
    return KvaDbOk;
}

int kvaDbSetAttributeDefinitionName(KvaDbAttributeDefHnd definition, const char *name)
{
    if (!isRegistered(registry().definitions, definition) || !name)
        return KvaDbBadArgument;
    if (!definition->database)
        return KvaDbNoDatabase;
    const CANdbAttributeDefinition *holder = definition->database->findDefinition(std::string(name));
    if (holder && holder != definition)
        return KvaDbNameInUse;
    definition->name = name;
    return KvaDbOk;
}

int kvaDbSetAttributeDefinitionOwner(KvaDbAttributeDefHnd definition, int owner)
{
    if (!isRegistered(registry().definitions, definition) || owner < 0)
        return KvaDbBadArgument;
    definition->owner = uint32_t(owner);
    return KvaDbOk;
}

int kvaDbSetAttributeDefinitionType(KvaDbAttributeDefHnd definition, int type)
{
    if (!isRegistered(registry().definitions, definition) || type < int(CANdbAttributeDefinition::Int) ||
        type > int(CANdbAttributeDefinition::String))
        return KvaDbBadArgument;
    definition->type = uint32_t(type);
    definition->clearValues();
    return KvaDbOk;
}

int kvaDbSetAttributeDefinitionInt(KvaDbAttributeDefHnd definition, int defaultValue, int min, int max)
{
    if (!isRegistered(registry().definitions, definition))
        return KvaDbBadArgument;
    if (definition->type != CANdbAttributeDefinition::Int &&
        definition->type != CANdbAttributeDefinition::Hex)
        return KvaDbFail;
    definition->intDefault = defaultValue;
    definition->intMin = min;
    definition->intMax = max;
    return KvaDbOk;
}

int kvaDbSetAttributeDefinitionString(KvaDbAttributeDefHnd definition, const char *defaultValue)
{
    if (!isRegistered(registry().definitions, definition))
        return KvaDbBadArgument;
    if (definition->type != CANdbAttributeDefinition::String)
        return KvaDbFail;
    definition->stringDefault = textOf(defaultValue);
    return KvaDbOk;
}

int kvaDbAddAttributeDefinitionEnum(KvaDbAttributeDefHnd definition, const char *name, int index)
{
    if (!isRegistered(registry().definitions, definition))
        return KvaDbBadArgument;
    if (index < 0 || !name || definition->type != CANdbAttributeDefinition::Enum)
        return KvaDbFail;
    auto &values = definition->enumValues;
    if (size_t(index) >= values.size())
        values.resize(size_t(index) + 1, "reserved");
    values[size_t(index)] = name;
    return KvaDbOk;
}

int kvaDbSetAttributeValueEnumeration(KvaDbAttributeDefHnd definition, int index)
{
    if (!isRegistered(registry().definitions, definition))
        return KvaDbBadArgument;
    if (definition->type != CANdbAttributeDefinition::Enum)
        return KvaDbFail;
    if (index < 0 || size_t(index) >= definition->enumValues.size())
        return KvaDbBadArgument;
    definition->enumDefault = index;
    return KvaDbOk;
}

int kvaDbAddNetworkAttribute(KvaDbHnd set, KvaDbAttributeDefHnd definition, KvaDbAttributeHnd *attribute)
{
    if (!isRegistered(registry().sets, set))
        return KvaDbBadArgument;
    CANdbDatabase *database = currentDatabase(set);
    if (!database)
        return KvaDbNoDatabase;
    return addAttribute(database->attributes, definition, CANdbAttributeDefinition::Network, attribute);
}

int kvaDbAddMsgAttribute(KvaDbMessageHnd message, KvaDbAttributeDefHnd definition,
                         KvaDbAttributeHnd *attribute)
{
    if (!isRegistered(registry().messages, message))
        return KvaDbBadArgument;
    return addAttribute(message->attributes, definition, CANdbAttributeDefinition::Message, attribute);
}

int kvaDbAddSignalAttribute(KvaDbSignalHnd signal, KvaDbAttributeDefHnd definition,
                            KvaDbAttributeHnd *attribute)
{
    if (!isRegistered(registry().signalHandles, signal))
        return KvaDbBadArgument;
    return addAttribute(signal->attributes, definition, CANdbAttributeDefinition::Signal, attribute);
}

int kvaDbSetAttributeValueInt(KvaDbAttributeHnd attribute, int value)
{
    if (!isRegistered(registry().attributes, attribute))
        return KvaDbBadArgument;
    if (attribute->type == CANdbAttributeDefinition::String)
        return KvaDbFail;
    if (attribute->type == CANdbAttributeDefinition::Float)
        attribute->floatValue = value;
    else
        attribute->intValue = value;
    return KvaDbOk;
}

int kvaDbSetAttributeValueString(KvaDbAttributeHnd attribute, const char *text, int)
{
    if (!isRegistered(registry().attributes, attribute))
        return KvaDbBadArgument;
    if (attribute->type != CANdbAttributeDefinition::String)
        return KvaDbFail;
    attribute->stringValue = textOf(text);
    return KvaDbOk;
}
