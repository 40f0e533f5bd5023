#include "candbnumbertext.h"

#include <charconv>
#include <limits>

void CANdbNumberText::appendDouble(std::string &out, double value)
{
    char buffer[64];
    const auto result = std::to_chars(buffer, buffer + sizeof buffer, value, std::chars_format::general, 11);
    out.append(buffer, result.ptr);
}

void CANdbNumberText::appendInt(std::string &out, int64_t value)
{
    char buffer[24];
    const auto result = std::to_chars(buffer, buffer + sizeof buffer, value);
    out.append(buffer, result.ptr);
}

void CANdbNumberText::appendUInt(std::string &out, uint64_t value)
{
    char buffer[24];
    const auto result = std::to_chars(buffer, buffer + sizeof buffer, value);
    out.append(buffer, result.ptr);
}

int64_t CANdbNumberText::parseDecimal(std::string_view text)
{
    bool negative = false;
    if (!text.empty() && (text.front() == '+' || text.front() == '-')) {
        negative = text.front() == '-';
        text.remove_prefix(1);
    }
    // Accumulated as a negative number, whose range reaches one further than the positive one.
    constexpr int64_t lowest = std::numeric_limits<int64_t>::min();
    int64_t value = 0;
    for (const char c : text) {
        if (c < '0' || c > '9')
            break;
        const int digit = c - '0';
        if (value < (lowest + digit) / 10) {
            value = lowest;
            break;
        }
        value = value * 10 - digit;
    }
    if (negative)
        return value;
    return value == lowest ? std::numeric_limits<int64_t>::max() : -value;
}

uint64_t CANdbNumberText::parseHex(std::string_view text)
{
    bool negative = false;
    if (!text.empty() && (text.front() == '+' || text.front() == '-')) {
        negative = text.front() == '-';
        text.remove_prefix(1);
    }
    if (text.size() >= 2 && text[0] == '0' && (text[1] == 'x' || text[1] == 'X'))
        text.remove_prefix(2);
    uint64_t value = 0;
    for (const char c : text) {
        int digit;
        if (c >= '0' && c <= '9')
            digit = c - '0';
        else if (c >= 'a' && c <= 'f')
            digit = c - 'a' + 10;
        else if (c >= 'A' && c <= 'F')
            digit = c - 'A' + 10;
        else
            break;
        value = value * 16 + uint64_t(digit);
    }
    return negative ? 0 - value : value;
}

std::optional<double> CANdbNumberText::parseDouble(std::string_view text)
{
    // from_chars takes no plus sign.
    if (!text.empty() && text.front() == '+')
        text.remove_prefix(1);
    double value = 0.0;
    const auto result = std::from_chars(text.data(), text.data() + text.size(), value);
    if (result.ec != std::errc() || result.ptr != text.data() + text.size())
        return std::nullopt;
    return value;
}

int32_t CANdbNumberText::toInt32(double value)
{
    if (!(value == value))
        return 0;
    if (value <= double(std::numeric_limits<int32_t>::min()))
        return std::numeric_limits<int32_t>::min();
    if (value >= double(std::numeric_limits<int32_t>::max()))
        return std::numeric_limits<int32_t>::max();
    return int32_t(value);
}
