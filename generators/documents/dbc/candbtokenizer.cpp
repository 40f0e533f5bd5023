#include "candbtokenizer.h"

#include "generators/documents/dbc/candbkeywordtable.h"
#include "generators/documents/dbc/candbnumbertext.h"

CANdbTokenizer::CANdbTokenizer(std::string_view text, const CANdbKeywordTable &keywords, int &line,
                               ErrorReport report)
    : input(text)
    , keywords(keywords)
    , line(line)
    , report(std::move(report))
{
    buffer.reserve(bufferSize);
}

int CANdbTokenizer::peek(size_t ahead) const
{
    return pos + ahead < input.size() ? static_cast<unsigned char>(input[pos + ahead]) : -1;
}

bool CANdbTokenizer::isIdentifierStart(int c)
{
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || c == '_';
}

void CANdbTokenizer::keep(char c)
{
    if (buffer.size() < bufferSize)
        buffer.push_back(c);
    else
        overlong = true;
}

int CANdbTokenizer::fail(const std::string &message)
{
    if (report)
        report(message);
    return Error;
}

int CANdbTokenizer::next()
{
    buffer.clear();
    overlong = false;
    bool crossedLines = false;
    for (;;) {
        while (peek() >= 0 && peek() <= ' ') {
            if (peek() == '\n') {
                ++line;
                crossedLines = true;
            }
            ++pos;
        }
        if (peek() == '/' && peek(1) == '*') {
            const int lineBefore = line;
            if (!skipComment())
                return fail("Error: Unexpected eof in comment");
            crossedLines = crossedLines || line != lineBefore;
            continue;
        }
        break;
    }
    if (crossedLines)
        return EndOfLine;
    const int c = peek();
    if (c < 0)
        return endsMet++ == 0 ? EndOfLine : EndOfFile;
    if (isIdentifierStart(c))
        return readIdentifier();
    if (isDigit(c) || ((c == '+' || c == '-' || c == '.') && isDigit(peek(1))))
        return readNumber();
    if (c == '"')
        return readString();
    ++pos;
    return c;
}

bool CANdbTokenizer::skipComment()
{
    pos += 2;
    while (pos < input.size()) {
        if (input[pos] == '*' && peek(1) == '/') {
            pos += 2;
            return true;
        }
        if (input[pos] == '\n')
            ++line;
        ++pos;
    }
    return false;
}

int CANdbTokenizer::readIdentifier()
{
    while (isIdentifierPart(peek()))
        keep(input[pos++]);
    const int keyword = keywords.lookup(buffer);
    return keyword > 0 ? keyword : Identifier;
}

size_t CANdbTokenizer::readDigits()
{
    size_t count = 0;
    while (isDigit(peek())) {
        keep(input[pos++]);
        ++count;
    }
    return count;
}

int CANdbTokenizer::readNumber()
{
    const size_t start = pos;
    if (peek() == '+' || peek() == '-')
        keep(input[pos++]);
    if (peek() == '0' && (peek(1) == 'x' || peek(1) == 'X'))
        return readHexNumber(start);
    bool integral = true;
    readDigits();
    if (peek() == '.') {
        keep(input[pos++]);
        readDigits();
        integral = false;
    }
    if (peek() == 'e' || peek() == 'E') {
        keep(input[pos++]);
        if (peek() == '+' || peek() == '-')
            keep(input[pos++]);
        if (readDigits() == 0)
            return fail("Malformed number '" + std::string(input.substr(start, pos - start)) + "'");
        integral = false;
    }
    if (overlong)
        return fail("Number too long");
    const auto value = CANdbNumberText::parseDouble(buffer);
    if (!value)
        return fail("Number out of range '" + buffer + "'");
    doubleValue = *value;
    if (!integral) {
        intValue = CANdbNumberText::toInt32(*value);
        return FloatNumber;
    }
    intValue = int32_t(uint32_t(CANdbNumberText::parseDecimal(buffer)));
    return Integer;
}

int CANdbTokenizer::readHexNumber(size_t start)
{
    keep(input[pos++]);
    keep(input[pos++]);
    size_t digits = 0;
    while (isDigit(peek()) || (peek() >= 'a' && peek() <= 'f') || (peek() >= 'A' && peek() <= 'F')) {
        keep(input[pos++]);
        ++digits;
    }
    if (digits == 0)
        return fail("Malformed number '" + std::string(input.substr(start, pos - start)) + "'");
    if (overlong)
        return fail("Number too long");
    const uint64_t value = CANdbNumberText::parseHex(buffer);
    intValue = int32_t(uint32_t(value));
    doubleValue = double(value);
    return Integer;
}

int CANdbTokenizer::readString()
{
    ++pos;
    for (;;) {
        const int c = peek();
        if (c < 0)
            return fail("Unexpected eof in string");
        ++pos;
        if (c == '"') {
            if (peek() != '"')
                return String;
            ++pos;
            keep('"');
        } else if (c == '\\') {
            switch (peek()) {
            case 'n':
                keep('\n');
                ++pos;
                break;
            case 't':
                keep('\t');
                ++pos;
                break;
            case 'r':
                keep('\r');
                ++pos;
                break;
            case '"':
                keep('"');
                ++pos;
                break;
            default:
                keep('\\');
                break;
            }
        } else {
            if (c == '\n')
                ++line;
            keep(char(c));
        }
    }
}
