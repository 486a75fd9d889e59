#include "base/clock.h"

#include <chrono>
#include <ctime>
#include <cwchar>

namespace velora {
namespace {

std::wstring format(const wchar_t* pattern, const DateTime& when)
{
    std::tm t{};
    t.tm_year = when.year - 1900;
    t.tm_mon = when.month - 1;
    t.tm_mday = when.day;
    t.tm_hour = when.hour;
    t.tm_min = when.minute;
    wchar_t text[64];
    return std::wstring(text, std::wcsftime(text, 64, pattern, &t));
}

} // namespace

DateTime now()
{
    const std::time_t t = std::time(nullptr);
    const std::tm* l = std::localtime(&t);
    return {l->tm_year + 1900, l->tm_mon + 1, l->tm_mday, l->tm_hour, l->tm_min, l->tm_sec};
}

std::wstring shortDate(const DateTime& when)
{
    return format(L"%m/%d/%Y", when);
}
std::wstring longDate(const DateTime& when)
{
    return format(L"%B %d, %Y", when);
}
std::wstring mediumTime(const DateTime& when)
{
    return format(L"%I:%M %p", when);
}

std::uint32_t tickCount()
{
    using namespace std::chrono;
    return static_cast<std::uint32_t>(
        duration_cast<milliseconds>(steady_clock::now().time_since_epoch()).count());
}

} // namespace velora
