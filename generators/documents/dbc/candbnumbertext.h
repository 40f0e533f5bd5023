#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

// Numbers in DBC text, always with a decimal point whatever the locale of the process: the conversions
// below never consult it, so that no global locale has to be switched while other threads run.
class CANdbNumberText
{
public:
    // printf's "%.11lg".
    static void appendDouble(std::string &out, double value);
    static void appendInt(std::string &out, int64_t value);
    static void appendUInt(std::string &out, uint64_t value);

    // A decimal integer with an optional sign, saturated to the 64-bit range as atoll does.
    static int64_t parseDecimal(std::string_view text);
    // Hexadecimal digits behind an optional sign and "0x", wrapping like "%lx".
    static uint64_t parseHex(std::string_view text);
    // A floating point number; empty when it is malformed or out of the range of a double.
    static std::optional<double> parseDouble(std::string_view text);
    // Truncated toward zero and saturated to the 32-bit range; 0 for NaN.
    static int32_t toInt32(double value);
};
