#include "base/text.h"

#include <algorithm>
#include <array>

namespace velora {
namespace {

// Bytes 80 to 9F; the rest of the code page is Latin-1.
constexpr std::array<char16_t, 32> kHigh = {
    0x20AC, 0x0081, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021, 0x02C6, 0x2030, 0x0160,
    0x2039, 0x0152, 0x008D, 0x017D, 0x008F, 0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022,
    0x2013, 0x2014, 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x009D, 0x017E, 0x0178};

constexpr std::string_view kUtf8Mark = "\xEF\xBB\xBF";

/// The byte of a character, or -1.
int byteOf(wchar_t c)
{
    const auto code = static_cast<char32_t>(c);
    if (code < 0x80 || (code >= 0xA0 && code <= 0xFF))
        return static_cast<int>(code);
    for (std::size_t i = 0; i < kHigh.size(); ++i)
        if (kHigh[i] == code)
            return static_cast<int>(0x80 + i);
    return -1;
}

constexpr bool isHighSurrogate(char32_t c)
{
    return c >= 0xD800 && c <= 0xDBFF;
}
constexpr bool isLowSurrogate(char32_t c)
{
    return c >= 0xDC00 && c <= 0xDFFF;
}

void appendCodePoint(std::wstring& out, char32_t c)
{
    if constexpr (sizeof(wchar_t) == 2) {
        if (c > 0xFFFF) {
            out += static_cast<wchar_t>(0xD800 + ((c - 0x10000) >> 10));
            out += static_cast<wchar_t>(0xDC00 + ((c - 0x10000) & 0x3FF));
            return;
        }
    }
    out += static_cast<wchar_t>(c);
}

/// Takes the next code point from `text` at `i`, joining a pair of surrogates.
char32_t nextCodePoint(std::wstring_view text, std::size_t& i)
{
    const auto c = static_cast<char32_t>(text[i++]);
    if (isHighSurrogate(c) && i < text.size() && isLowSurrogate(static_cast<char32_t>(text[i]))) {
        const auto low = static_cast<char32_t>(text[i++]);
        return 0x10000 + ((c - 0xD800) << 10) + (low - 0xDC00);
    }
    return c;
}

/// Length and value of the UTF-8 sequence at `i`; length 0 when it is malformed.
std::pair<std::size_t, char32_t> utf8At(std::string_view s, std::size_t i)
{
    const auto at = [&](std::size_t k) { return static_cast<unsigned char>(s[k]); };
    const unsigned char first = at(i);
    if (first < 0x80)
        return {1, first};
    const std::size_t length = first >= 0xF0 ? 4 : first >= 0xE0 ? 3 : 2;
    if (first < 0xC2 || first > 0xF4 || i + length > s.size())
        return {0, 0};
    char32_t value = first & (0xFF >> (length + 1));
    for (std::size_t k = 1; k < length; ++k) {
        if ((at(i + k) & 0xC0) != 0x80)
            return {0, 0};
        value = (value << 6) | (at(i + k) & 0x3F);
    }
    constexpr char32_t smallest[] = {0, 0, 0x80, 0x800, 0x10000};
    if (value < smallest[length] || value > 0x10FFFF || (value >= 0xD800 && value <= 0xDFFF))
        return {0, 0};
    return {length, value};
}

} // namespace

std::wstring from1252(std::string_view bytes)
{
    std::wstring out;
    out.reserve(bytes.size());
    for (const char c : bytes) {
        const auto b = static_cast<unsigned char>(c);
        out += static_cast<wchar_t>(b >= 0x80 && b <= 0x9F ? kHigh[b - 0x80] : b);
    }
    return out;
}

std::string to1252(std::wstring_view text)
{
    std::string out;
    out.reserve(text.size());
    for (std::size_t i = 0; i < text.size();) {
        const std::size_t before = i;
        nextCodePoint(text, i);
        const int b = i - before == 1 ? byteOf(text[before]) : -1;
        out += b < 0 ? '?' : static_cast<char>(b);
    }
    return out;
}

bool fits1252(std::wstring_view text)
{
    return std::all_of(text.begin(), text.end(), [](wchar_t c) { return byteOf(c) >= 0; });
}

std::wstring fromUtf8(std::string_view bytes)
{
    std::wstring out;
    out.reserve(bytes.size());
    for (std::size_t i = 0; i < bytes.size();) {
        const auto [length, value] = utf8At(bytes, i);
        appendCodePoint(out, length ? value : 0xFFFD);
        i += length ? length : 1;
    }
    return out;
}

std::string toUtf8(std::wstring_view text)
{
    std::string out;
    out.reserve(text.size());
    for (std::size_t i = 0; i < text.size();) {
        char32_t c = nextCodePoint(text, i);
        if (c > 0x10FFFF || (c >= 0xD800 && c <= 0xDFFF))
            c = 0xFFFD;
        if (c < 0x80) {
            out += static_cast<char>(c);
        } else if (c < 0x800) {
            out += static_cast<char>(0xC0 | (c >> 6));
            out += static_cast<char>(0x80 | (c & 0x3F));
        } else if (c < 0x10000) {
            out += static_cast<char>(0xE0 | (c >> 12));
            out += static_cast<char>(0x80 | ((c >> 6) & 0x3F));
            out += static_cast<char>(0x80 | (c & 0x3F));
        } else {
            out += static_cast<char>(0xF0 | (c >> 18));
            out += static_cast<char>(0x80 | ((c >> 12) & 0x3F));
            out += static_cast<char>(0x80 | ((c >> 6) & 0x3F));
            out += static_cast<char>(0x80 | (c & 0x3F));
        }
    }
    return out;
}

std::wstring fromUtf16le(std::string_view bytes)
{
    std::wstring out;
    out.reserve(bytes.size() / 2);
    const auto unit = [&](std::size_t i) {
        return static_cast<char32_t>(static_cast<unsigned char>(bytes[i])
                                     | static_cast<unsigned char>(bytes[i + 1]) << 8);
    };
    for (std::size_t i = 0; i + 1 < bytes.size(); i += 2) {
        const char32_t c = unit(i);
        if (isHighSurrogate(c) && i + 3 < bytes.size() && isLowSurrogate(unit(i + 2))) {
            appendCodePoint(out, 0x10000 + ((c - 0xD800) << 10) + (unit(i + 2) - 0xDC00));
            i += 2;
        } else {
            out += static_cast<wchar_t>(c);
        }
    }
    return out;
}

std::string toUtf16le(std::wstring_view text)
{
    std::string out;
    out.reserve(text.size() * 2);
    const auto put = [&](char32_t unit) {
        out += static_cast<char>(unit & 0xFF);
        out += static_cast<char>(unit >> 8 & 0xFF);
    };
    for (const wchar_t w : text) {
        const auto c = static_cast<char32_t>(w);
        if (c > 0xFFFF) {
            put(0xD800 + ((c - 0x10000) >> 10 & 0x3FF));
            put(0xDC00 + ((c - 0x10000) & 0x3FF));
        } else {
            put(c);
        }
    }
    return out;
}

std::wstring decodeFileText(std::string_view bytes)
{
    if (bytes.substr(0, kUtf8Mark.size()) == kUtf8Mark)
        return fromUtf8(bytes.substr(kUtf8Mark.size()));
    return from1252(bytes);
}

std::string encodeFileText(std::wstring_view text)
{
    if (fits1252(text)) {
        std::string bytes = to1252(text);
        // Plain text that happens to begin with the mark's three bytes has to carry a mark of its
        // own.
        if (bytes.compare(0, kUtf8Mark.size(), kUtf8Mark) != 0)
            return bytes;
    }
    return std::string(kUtf8Mark) + toUtf8(text);
}

wchar_t lowerChar(wchar_t c)
{
    if ((c >= L'A' && c <= L'Z') || (c >= 0xC0 && c <= 0xDE && c != 0xD7))
        return static_cast<wchar_t>(c + 0x20);
    switch (c) {
    case 0x0160: return 0x0161;
    case 0x0152: return 0x0153;
    case 0x017D: return 0x017E;
    case 0x0178: return 0x00FF;
    default: return c;
    }
}

std::wstring lower(std::wstring_view text)
{
    std::wstring out(text);
    std::transform(out.begin(), out.end(), out.begin(), lowerChar);
    return out;
}

std::wstring upper(std::wstring_view text)
{
    std::wstring out(text);
    for (wchar_t& c : out) {
        if ((c >= L'a' && c <= L'z') || (c >= 0xE0 && c <= 0xFE && c != 0xF7))
            c = static_cast<wchar_t>(c - 0x20);
        else if (c == 0x0161 || c == 0x0153 || c == 0x017E)
            c = static_cast<wchar_t>(c - 1);
        else if (c == 0xFF)
            c = 0x0178;
    }
    return out;
}

bool equalNoCase(std::wstring_view a, std::wstring_view b)
{
    return a.size() == b.size() && startsWithNoCase(a, b);
}

bool startsWithNoCase(std::wstring_view text, std::wstring_view prefix)
{
    if (prefix.size() > text.size())
        return false;
    for (std::size_t i = 0; i < prefix.size(); ++i)
        if (lowerChar(text[i]) != lowerChar(prefix[i]))
            return false;
    return true;
}

std::wstring_view trimView(std::wstring_view text)
{
    const auto first = text.find_first_not_of(L' ');
    if (first == std::wstring_view::npos)
        return {};
    return text.substr(first, text.find_last_not_of(L' ') - first + 1);
}

std::wstring trim(std::wstring_view text)
{
    return std::wstring(trimView(text));
}

std::wstring replaceAll(std::wstring_view text, std::wstring_view what, std::wstring_view with)
{
    if (what.empty())
        return std::wstring(text);
    std::wstring out;
    std::size_t from = 0;
    for (std::size_t at; (at = text.find(what, from)) != std::wstring_view::npos;
         from = at + what.size()) {
        out += text.substr(from, at - from);
        out += with;
    }
    out += text.substr(from);
    return out;
}

std::wstring without(std::wstring_view text, wchar_t c)
{
    std::wstring out(text);
    std::erase(out, c);
    return out;
}

std::vector<std::wstring> split(std::wstring_view text, wchar_t separator)
{
    std::vector<std::wstring> out;
    std::size_t from = 0;
    for (std::size_t at; (at = text.find(separator, from)) != std::wstring_view::npos;
         from = at + 1)
        out.emplace_back(text.substr(from, at - from));
    out.emplace_back(text.substr(from));
    return out;
}

std::vector<std::wstring> splitLines(std::wstring_view text)
{
    std::vector<std::wstring> out;
    std::size_t from = 0;
    while (from < text.size()) {
        const std::size_t at = std::min(text.find_first_of(L"\r\n", from), text.size());
        out.emplace_back(text.substr(from, at - from));
        const bool pair = at + 1 < text.size() && text[at] == L'\r' && text[at + 1] == L'\n';
        from = at + (pair ? 2 : 1);
    }
    return out;
}

std::optional<long> parseLong(std::wstring_view text)
{
    const bool negative = !text.empty() && text.front() == L'-';
    if (!text.empty() && (text.front() == L'-' || text.front() == L'+'))
        text.remove_prefix(1);
    if (text.empty() || text.size() > 10)
        return std::nullopt;
    std::int64_t value = 0;
    for (const wchar_t c : text) {
        if (c < L'0' || c > L'9')
            return std::nullopt;
        value = value * 10 + (c - L'0');
    }
    value = negative ? -value : value;
    if (value < INT32_MIN || value > INT32_MAX)
        return std::nullopt;
    return static_cast<long>(value);
}

std::wstring screenNameKey(std::wstring_view screenName)
{
    return lower(without(screenName, L' '));
}

std::wstring escapeHtml(std::wstring_view text)
{
    std::wstring out;
    for (const wchar_t c : text)
        switch (c) {
        case L'<': out += L"&lt;"; break;
        case L'>': out += L"&gt;"; break;
        case L'&': out += L"&amp;"; break;
        case L'"': out += L"&quot;"; break;
        default: out += c;
        }
    return out;
}

} // namespace velora
