#include "candbkeywordtable.h"

#include "generators/documents/dbc/candbtokenizer.h"

namespace {

struct Keyword
{
    const char *word;
    int code;
};

constexpr Keyword keywords[] = {
    {"BU_", CANdbTokenizer::NodesKeyword},
    {"BO_", CANdbTokenizer::MessageKeyword},
    {"SG_", CANdbTokenizer::SignalKeyword},
    {"CM_", CANdbTokenizer::CommentKeyword},
    {"NS_", CANdbTokenizer::NewSymbolsKeyword},
    {"BA_", CANdbTokenizer::AttributeKeyword},
    {"EV_", CANdbTokenizer::VariableKeyword},
    {"BA_DEF_", CANdbTokenizer::AttributeDefinitionKeyword},
    {"BA_DEF_DEF_", CANdbTokenizer::AttributeDefaultKeyword},
    {"SIG_VALTYPE_", CANdbTokenizer::SignalTypeKeyword},
    {"CAT_", CANdbTokenizer::CategoryKeyword},
    {"ENVVAR_DATA_", CANdbTokenizer::VariableDataKeyword},
    {"VAL_", CANdbTokenizer::ValueNamesKeyword},
};

} // namespace

CANdbKeywordTable::CANdbKeywordTable()
    : entries(2 * std::size(keywords) + 1)
{
    for (const auto &keyword : keywords)
        insert(keyword.word, keyword.code);
}

uint32_t CANdbKeywordTable::hash(std::string_view word)
{
    uint32_t h = 0;
    for (const char c : word) {
        const uint32_t t = uint32_t(static_cast<unsigned char>(c)) + 2 * h;
        h = (t >> 24) + (t & 0xFFFFFFu);
    }
    return h;
}

void CANdbKeywordTable::insert(std::string_view word, int code)
{
    const uint32_t h = hash(word);
    size_t slot = h % entries.size();
    while (entries[slot].code > 0)
        slot = (slot + 1) % entries.size();
    entries[slot] = Entry{h, std::string(word), code};
}

int CANdbKeywordTable::lookup(std::string_view word) const
{
    const uint32_t h = hash(word);
    for (size_t slot = h % entries.size(); entries[slot].code > 0; slot = (slot + 1) % entries.size()) {
        if (entries[slot].hash == h && entries[slot].word == word)
            return entries[slot].code;
    }
    return 0;
}
