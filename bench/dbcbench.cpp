// Reads and writes a DBC file of 1,000 messages with 10,000 signals through the handle layer and prints
// the best and the median time of each over several rounds.

#include "generators/documents/dbc/candbdatabase.h"
#include "generators/documents/dbc/kvadb.h"

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

namespace {

constexpr int messageCount = 1000;
constexpr int signalsPerMessage = 10;
constexpr int rounds = 7;

// A file as a network tool exports one: nodes, messages with signals, comments, attributes, value names.
std::string sampleText()
{
    std::string text = "VERSION \"\"\n\nNS_ :\n\nBS_:\n\nBU_: ECU1 ECU2 ECU3\n\n";
    for (int m = 0; m < messageCount; ++m) {
        const unsigned id = 0x80000000u | (0x18FF0000u + unsigned(m));
        text += "BO_ " + std::to_string(id) + " Message_" + std::to_string(m) + ": 8 ECU" +
                std::to_string(1 + m % 3) + "\n";
        for (int s = 0; s < signalsPerMessage; ++s) {
            const bool motorola = s % 3 == 0;
            const int start = motorola ? s * 6 + 5 : s * 6;
            text += " SG_ Signal_" + std::to_string(m) + "_" + std::to_string(s) + " : " +
                    std::to_string(start) + "|6@" + (motorola ? "0" : "1") + (s % 2 ? "-" : "+") +
                    " (0.125,-40) [-40|87.5] \"degC\"  ECU2,ECU3\n";
        }
        text += "\n";
    }
    for (int m = 0; m < messageCount; ++m) {
        const std::string id = std::to_string(0x80000000u | (0x18FF0000u + unsigned(m)));
        text += "CM_ BO_ " + id + " \"Message number " + std::to_string(m) + "\";\n";
        text += "CM_ SG_ " + id + " Signal_" + std::to_string(m) + "_0 \"First signal\";\n";
    }
    text += "BA_DEF_ BO_ \"GenMsgCycleTime\" INT 0 3600000;\nBA_DEF_ SG_ \"SPN\" INT 0 524287;\n";
    text += "BA_DEF_DEF_ \"GenMsgCycleTime\" 0;\nBA_DEF_DEF_ \"SPN\" 0;\n";
    for (int m = 0; m < messageCount; ++m) {
        const std::string id = std::to_string(0x80000000u | (0x18FF0000u + unsigned(m)));
        text += "BA_ \"GenMsgCycleTime\" BO_ " + id + " 100;\n";
        for (int s = 0; s < signalsPerMessage; ++s)
            text += "BA_ \"SPN\" SG_ " + id + " Signal_" + std::to_string(m) + "_" + std::to_string(s) + " " +
                    std::to_string(m * signalsPerMessage + s) + ";\n";
        text += "VAL_ " + id + " Signal_" + std::to_string(m) + "_1 0 \"off\" 1 \"on\" ;\n";
    }
    return text;
}

double milliseconds(std::chrono::steady_clock::duration duration)
{
    return std::chrono::duration<double, std::milli>(duration).count();
}

void report(const char *what, std::vector<double> times)
{
    std::sort(times.begin(), times.end());
    std::printf("%-6s best %8.2f ms, median %8.2f ms\n", what, times.front(), times[times.size() / 2]);
}

} // namespace

int main()
{
    const auto folder = std::filesystem::temp_directory_path() / "kestrel_dbcbench";
    std::filesystem::create_directories(folder);
    const std::string input = (folder / "input.dbc").string();
    const std::string output = (folder / "output.dbc").string();
    {
        std::ofstream file(input, std::ios::binary);
        file << sampleText();
    }
    std::printf("input: %ju bytes, %d messages, %d signals\n",
                std::uintmax_t(std::filesystem::file_size(input)), messageCount,
                messageCount * signalsPerMessage);

    std::vector<double> readTimes;
    std::vector<double> writeTimes;
    for (int round = 0; round < rounds; ++round) {
        KvaDbHnd set = nullptr;
        kvaDbOpen(&set);
        auto begin = std::chrono::steady_clock::now();
        const int read = kvaDbCreate(set, nullptr, input.c_str());
        readTimes.push_back(milliseconds(std::chrono::steady_clock::now() - begin));
        if (read != KvaDbOk || set->databases.front()->messageCount() != messageCount) {
            std::printf("read failed: %d %s\n", read, kvaDbLastParseError().c_str());
            return 1;
        }
        begin = std::chrono::steady_clock::now();
        const int written = kvaDbWriteFile(set, output.c_str());
        writeTimes.push_back(milliseconds(std::chrono::steady_clock::now() - begin));
        kvaDbClose(set);
        if (written != KvaDbOk) {
            std::printf("write failed: %d\n", written);
            return 1;
        }
    }
    report("read", readTimes);
    report("write", writeTimes);
    std::filesystem::remove_all(folder);
    return 0;
}
