// libFuzzer entry of the DBC reader: any text must read, write and read again without a crash, a hang or
// a sanitizer report.

#include "generators/documents/dbc/candbdatabase.h"
#include "generators/documents/dbc/candbdbc.h"
#include "generators/documents/dbc/candbdbcwriter.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace {

class QuietSink : public CANdbMessageSink
{
public:
    void message(int, const std::string &, const std::string &) override {}
    void warning(int, const std::string &, const std::string &) override {}
};

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    QuietSink sink;
    CANdbDatabase database;
    CANdbDBC reader("fuzz.dbc");
    reader.setSink(&sink);
    reader.parse(database, std::string_view(reinterpret_cast<const char *>(data), size));

    std::string text;
    CANdbDBCWriter::format(database, text);
    CANdbDatabase again;
    CANdbDBC rereader("fuzz.dbc");
    rereader.setSink(&sink);
    rereader.parse(again, text);
    return 0;
}
