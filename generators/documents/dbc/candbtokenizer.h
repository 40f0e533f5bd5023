#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <string>
#include <string_view>

class CANdbKeywordTable;

// Splits DBC text into tokens. A token is a code: a keyword, an identifier, a number, a string, the end
// of a line, the end of the text, an error, or any other character as its own code.
class CANdbTokenizer
{
public:
    enum Token : int
    {
        Error = -1,
        EndOfFile = 0,
        EndOfLine = 999,
        NodesKeyword = 1000,
        MessageKeyword = 1001,
        SignalKeyword = 1003,
        CommentKeyword = 1004,
        NewSymbolsKeyword = 1005,
        AttributeKeyword = 1006,
        VariableKeyword = 1007,
        AttributeDefinitionKeyword = 1008,
        AttributeDefaultKeyword = 1009,
        SignalTypeKeyword = 1010,
        CategoryKeyword = 1011,
        VariableDataKeyword = 1012,
        ValueNamesKeyword = 1020,
        Identifier = 1021,
        Integer = 1022,
        FloatNumber = 1023,
        String = 1024,
    };

    // Text of a string, identifier or number beyond this length is read and dropped.
    static constexpr size_t bufferSize = 1000;

    using ErrorReport = std::function<void(const std::string &)>;

    // `line` is counted up at each line feed; `report` receives the text of every error token.
    CANdbTokenizer(std::string_view text, const CANdbKeywordTable &keywords, int &line, ErrorReport report);

    int next();

    // The text of the last identifier, string or number.
    const std::string &text() const { return buffer; }
    // The last number truncated to 32 bits, as integers are kept.
    int32_t integer() const { return intValue; }
    // The last number, integer or not.
    double number() const { return doubleValue; }

private:
    int peek(size_t ahead = 0) const;
    static bool isDigit(int c) { return c >= '0' && c <= '9'; }
    static bool isIdentifierStart(int c);
    static bool isIdentifierPart(int c) { return isIdentifierStart(c) || isDigit(c); }
    void keep(char c);
    int fail(const std::string &message);
    bool skipComment();
    int readIdentifier();
    int readNumber();
    int readHexNumber(size_t start);
    int readString();
    size_t readDigits();

    std::string_view input;
    size_t pos = 0;
    const CANdbKeywordTable &keywords;
    int &line;
    ErrorReport report;
    int endsMet = 0;
    std::string buffer;
    bool overlong = false;
    int32_t intValue = 0;
    double doubleValue = 0.0;
};
