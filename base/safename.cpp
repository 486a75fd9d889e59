#include "base/safename.h"

#include "base/text.h"

#include <algorithm>
#include <array>
#include <cstdint>

namespace velora {
namespace {

constexpr std::size_t kLongestSafe = 120;
constexpr std::size_t kLongestPlain = 200;

bool isForbidden(wchar_t c)
{
    return static_cast<std::uint32_t>(c) < 0x20 || c == 0x7F
           || std::wstring_view(L"\\/:*?\"<>|").find(c) != std::wstring_view::npos;
}

/// Windows opens a device for these names whatever extension follows and whatever blanks precede
/// it.
bool isDeviceName(std::wstring_view name)
{
    const std::wstring stem = lower(trimView(name.substr(0, name.find(L'.'))));
    static constexpr std::array<std::wstring_view, 6> kPlain = {L"con", L"prn",    L"aux",
                                                                L"nul", L"conin$", L"conout$"};
    if (std::find(kPlain.begin(), kPlain.end(), stem) != kPlain.end())
        return true;
    if (stem.size() != 4 || (stem.compare(0, 3, L"com") != 0 && stem.compare(0, 3, L"lpt") != 0))
        return false;
    // The superscript digits count as digits here.
    return (stem[3] >= L'0' && stem[3] <= L'9') || stem[3] == 0xB9 || stem[3] == 0xB2
           || stem[3] == 0xB3;
}

void appendHex(std::wstring& out, std::uint32_t value, int digits)
{
    for (int shift = 4 * (digits - 1); shift >= 0; shift -= 4)
        out += L"0123456789ABCDEF"[value >> shift & 15];
}

std::uint32_t hashOf(std::wstring_view text)
{
    std::uint32_t hash = 2166136261u; // FNV-1a
    for (const wchar_t c : text)
        hash = (hash ^ static_cast<std::uint32_t>(c)) * 16777619u;
    return hash;
}

} // namespace

std::wstring safeFileName(std::wstring_view name)
{
    if (name.empty())
        return L"%";
    const bool device = isDeviceName(name);
    std::wstring out;
    for (std::size_t i = 0; i < name.size(); ++i) {
        const wchar_t c = name[i];
        const bool edge = (i == 0 || i + 1 == name.size()) && (c == L' ' || c == L'.');
        if (isForbidden(c) || c == L'%' || edge || (device && i == 0)) {
            out += L'%';
            appendHex(out, static_cast<std::uint32_t>(c), 2);
        } else {
            out += c;
        }
    }
    if (out.size() > kLongestSafe) {
        out.resize(kLongestSafe - 10);
        out += L"%~";
        appendHex(out, hashOf(name), 8);
    }
    return out;
}

bool isPlainFileName(std::wstring_view name)
{
    return !name.empty() && name.size() <= kLongestPlain
           && std::none_of(name.begin(), name.end(), isForbidden) && name.back() != L'.'
           && name.back() != L' ' && name.front() != L' ' && !isDeviceName(name);
}

} // namespace velora
