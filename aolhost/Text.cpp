#include "aolhost/Text.h"

#include "base/win.h"

#include <cwchar>
#include <cwctype>

namespace aolhost {
namespace {

std::wstring decode(UINT codePage, std::string_view bytes)
{
    const int size = static_cast<int>(bytes.size());
    std::wstring out(
        static_cast<std::size_t>(MultiByteToWideChar(codePage, 0, bytes.data(), size, nullptr, 0)),
        L'\0');
    MultiByteToWideChar(codePage, 0, bytes.data(), size, out.data(), static_cast<int>(out.size()));
    return out;
}

std::string encode(UINT codePage, std::wstring_view text)
{
    const int size = static_cast<int>(text.size());
    std::string out(static_cast<std::size_t>(WideCharToMultiByte(codePage, 0, text.data(), size,
                                                                 nullptr, 0, nullptr, nullptr)),
                    '\0');
    WideCharToMultiByte(codePage, 0, text.data(), size, out.data(), static_cast<int>(out.size()),
                        nullptr, nullptr);
    return out;
}

} // namespace

std::wstring fromUtf8(std::string_view bytes)
{
    return decode(CP_UTF8, bytes);
}

std::string toUtf8(std::wstring_view text)
{
    return encode(CP_UTF8, text);
}

std::string toAnsi(std::wstring_view text)
{
    return encode(1252, text);
}

std::wstring fromAnsi(std::string_view bytes)
{
    return decode(1252, bytes);
}

std::wstring escaped(std::wstring_view text)
{
    std::wstring out;
    for (const wchar_t c : text) {
        switch (c) {
        case L'\n': out += L"\\n"; break;
        case L'\r': out += L"\\r"; break;
        case L'\t': out += L"\\t"; break;
        case L'\\': out += L"\\\\"; break;
        default: out += c;
        }
    }
    return out;
}

std::wstring unescaped(std::wstring_view text)
{
    std::wstring out;
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (text[i] != L'\\' || i + 1 == text.size()) {
            out += text[i];
            continue;
        }
        switch (text[++i]) {
        case L'n': out += L'\n'; break;
        case L'r': out += L'\r'; break;
        case L't': out += L'\t'; break;
        default: out += text[i];
        }
    }
    return out;
}

std::wstring trimmed(std::wstring_view text)
{
    const std::size_t first = text.find_first_not_of(L" \t\r\n");
    if (first == std::wstring_view::npos)
        return {};
    return std::wstring(text.substr(first, text.find_last_not_of(L" \t\r\n") - first + 1));
}

std::wstring lowered(std::wstring_view text)
{
    std::wstring out(text);
    for (wchar_t& c : out)
        c = static_cast<wchar_t>(std::towlower(c));
    return out;
}

bool sameNoCase(std::wstring_view a, std::wstring_view b)
{
    return a.size() == b.size() && lowered(a) == lowered(b);
}

bool startsNoCase(std::wstring_view text, std::wstring_view prefix)
{
    return text.size() >= prefix.size() && sameNoCase(text.substr(0, prefix.size()), prefix);
}

std::vector<std::wstring> splitAt(std::wstring_view text, wchar_t separator)
{
    std::vector<std::wstring> parts;
    for (;;) {
        const std::size_t at = text.find(separator);
        parts.emplace_back(text.substr(0, at));
        if (at == std::wstring_view::npos)
            return parts;
        text.remove_prefix(at + 1);
    }
}

long numberOr(std::wstring_view text, long fallback)
{
    const std::wstring digits = trimmed(text);
    wchar_t* end = nullptr;
    const long value = std::wcstol(digits.c_str(), &end, 10);
    return digits.empty() || *end != L'\0' ? fallback : value;
}

bool isOn(std::wstring_view text)
{
    const std::wstring word = lowered(trimmed(text));
    return word == L"1" || word == L"on" || word == L"yes" || word == L"true";
}

} // namespace aolhost
