#pragma once

#include <string>

class CANdbDatabase;

// Puts a database down as DBC text.
class CANdbDBCWriter
{
public:
    // 0, or 1 when a definition has an owner that no record kind fits; the text then ends before it.
    static int format(const CANdbDatabase &database, std::string &out);
    // A double quote, the text with tab, carriage return, quote and other control characters escaped
    // (a line feed stays as it is), a double quote.
    static void appendQuoted(std::string &out, const std::string &text);
};
