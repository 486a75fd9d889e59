#include "core/modErrorLog.h"

#include <array>
#include <cstdio>
#include <string_view>

namespace velora {
namespace {

constexpr std::size_t kLongestField = 1000;

/// One field of a line: no control characters, a bounded length.
std::string field(const char* text)
{
    std::string out(std::string_view(text ? text : "").substr(0, kLongestField));
    for (char& c : out)
        if (static_cast<unsigned char>(c) < 0x20 || c == 0x7F)
            c = ' ';
    return out;
}

} // namespace

std::string errorLogLine(const DateTime& when, const ErrorRecord& record)
{
    std::array<char, 80> time;
    std::snprintf(time.data(), time.size(), "%04d-%02d-%02d %02d:%02d:%02d", when.year, when.month,
                  when.day, when.hour, when.minute, when.second);
    return std::string(time.data()) + '\t' + field(record.module) + '\t' + field(record.procedure)
           + '\t' + std::to_string(record.code) + '\t' + field(record.reason) + "\r\n";
}

} // namespace velora
