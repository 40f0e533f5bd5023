#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

// The reserved words of a DBC file and their token codes, in an open-addressing table with linear
// probing of twice the number of words plus one entries.
class CANdbKeywordTable
{
public:
    CANdbKeywordTable();

    // The token code of a keyword, 0 for any other word.
    int lookup(std::string_view word) const;

private:
    struct Entry
    {
        uint32_t hash = 0;
        std::string word;
        int code = 0;
    };

    static uint32_t hash(std::string_view word);
    void insert(std::string_view word, int code);

    std::vector<Entry> entries;
};
