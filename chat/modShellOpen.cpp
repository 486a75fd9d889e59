#include "chat/modShellOpen.h"

#include "base/text.h"

#include <algorithm>
#include <cstdio>

namespace velora {
namespace {

constexpr std::size_t kLongestAddress = 2000, kLongestKeyword = 200;

bool isControl(wchar_t c)
{
    return c < 0x20 || c == 0x7F;
}

/// A byte of an address that may stand as it is in the path of a file address.
bool isPlain(unsigned char c)
{
    return c < 0x80
           && ((c >= '0' && c <= '9') || (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z')
               || std::string_view("-._~/:()!$,;=@").find(static_cast<char>(c))
                      != std::string_view::npos);
}

} // namespace

std::wstring browserAddress(std::wstring_view target)
{
    std::wstring address(target);
    if (startsWithNoCase(address, L"www."))
        address = L"http://" + address;
    const bool web =
        startsWithNoCase(address, L"http://") || startsWithNoCase(address, L"https://");
    const bool clean = std::none_of(address.begin(), address.end(), [](wchar_t c) {
        return isControl(c) || c == L' ' || c == L'"' || c == L'<' || c == L'>' || c == L'\\';
    });
    // A bare "http://" leads nowhere.
    const bool host = address.find(L"://") + 3 < address.size();
    return web && clean && host && address.size() <= kLongestAddress ? address : std::wstring();
}

std::wstring aolKeywordArgument(std::wstring_view keyword)
{
    std::wstring word;
    for (const wchar_t c : keyword.substr(0, kLongestKeyword))
        if (!isControl(c) && c != L' ' && c != L'"')
            word += c;
    return word.empty() ? word : L"-s" + word;
}

std::wstring fileAddress(std::wstring_view path, std::wstring_view place)
{
    std::wstring address = L"file:///";
    for (const char c : toUtf8(replaceAll(path, L"\\", L"/"))) {
        char coded[4];
        const auto byte = static_cast<unsigned char>(c);
        std::snprintf(coded, sizeof coded, "%%%02X", byte);
        address += isPlain(byte) ? std::wstring(1, static_cast<wchar_t>(byte)) : fromUtf8(coded);
    }
    return place.empty() ? address : address + L"#" + std::wstring(place);
}

} // namespace velora
