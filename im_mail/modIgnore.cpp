#include "im_mail/modIgnore.h"

#include "base/text.h"

#include <algorithm>

namespace velora {
namespace {

struct IgnoreLine {
    std::wstring key;
    long until = 0; ///< 0: for good
};

IgnoreLine readLine(std::wstring_view line)
{
    const std::size_t tab = line.find(L'\t');
    IgnoreLine read{screenNameKey(line.substr(0, tab)), 0};
    if (tab != line.npos)
        read.until = std::max(parseLong(trimView(line.substr(tab + 1))).value_or(0), 0L);
    return read;
}

bool expired(const IgnoreLine& line, long today)
{
    return line.until != 0 && line.until <= today;
}

/// The lines that `keep` keeps, as file text.
template <class Keep>
std::wstring filtered(std::wstring_view list, Keep&& keep)
{
    std::wstring out;
    for (const std::wstring& line : splitLines(list))
        if (const IgnoreLine read = readLine(line); !read.key.empty() && keep(read))
            out += line + L"\r\n";
    return out;
}

} // namespace

bool isIgnored(std::wstring_view list, std::wstring_view screenName, long today)
{
    const std::wstring key = screenNameKey(screenName);
    if (key.empty())
        return false;
    const auto lines = splitLines(list);
    return std::any_of(lines.begin(), lines.end(), [&](const std::wstring& line) {
        const IgnoreLine read = readLine(line);
        return read.key == key && !expired(read, today);
    });
}

bool isListed(std::wstring_view list, std::wstring_view screenName)
{
    const std::wstring key = screenNameKey(screenName);
    const auto lines = splitLines(list);
    return !key.empty() && std::any_of(lines.begin(), lines.end(), [&](const std::wstring& line) {
        return readLine(line).key == key;
    });
}

std::wstring withIgnored(std::wstring_view list, std::wstring_view screenName, long today,
                         long until)
{
    const std::wstring key = screenNameKey(screenName);
    std::wstring out = filtered(
        list, [&](const IgnoreLine& line) { return line.key != key && !expired(line, today); });
    // A TAB or line end in a name would be read as another field or line.
    std::wstring name(screenName);
    std::erase_if(name, [](wchar_t c) { return static_cast<unsigned>(c) < 0x20; });
    out += name;
    if (until != 0)
        out += L"\t" + std::to_wstring(until);
    return out + L"\r\n";
}

std::wstring withoutIgnored(std::wstring_view list, std::wstring_view screenName)
{
    const std::wstring key = screenNameKey(screenName);
    return filtered(list, [&](const IgnoreLine& line) { return line.key != key; });
}

} // namespace velora
