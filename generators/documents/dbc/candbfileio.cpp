#include "candbfileio.h"

#include <cstdio>

namespace {

std::string limited(const std::string &text)
{
    return text.size() > CANdbFileIo::reportLength ? text.substr(0, CANdbFileIo::reportLength) : text;
}

} // namespace

CANdbFileIo::CANdbFileIo(const char *filename)
    : filename(filename ? filename : "")
    , hasFilename(filename != nullptr)
{}

void CANdbFileIo::message(const std::string &text)
{
    if (sink)
        sink->message(line, filename, limited(text));
    else
        std::printf("%s\n", limited(text).c_str());
}

void CANdbFileIo::error(const std::string &text)
{
    errors += "Error (line " + std::to_string(line) + "): " + limited(text) + "\n";
}

void CANdbFileIo::warning(const std::string &text)
{
    if (sink)
        sink->warning(line, filename, limited(text));
    else
        std::printf("Warning (line %d): %s\n", line, limited(text).c_str());
}
