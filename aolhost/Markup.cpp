#include "aolhost/Markup.h"

#include <cwchar>
#include <optional>

namespace aolhost {
namespace {

wchar_t small(wchar_t c)
{
    return c >= L'A' && c <= L'Z' ? static_cast<wchar_t>(c + 32) : c;
}

std::wstring small(std::wstring_view text)
{
    std::wstring out(text);
    for (wchar_t& c : out)
        c = small(c);
    return out;
}

bool isLetter(wchar_t c)
{
    return small(c) >= L'a' && small(c) <= L'z';
}

/// The length of the tag at the start of the text, with its brackets; 0 when none begins there.
std::size_t tagLength(std::wstring_view text)
{
    if (text.size() < 3 || text[0] != L'<')
        return 0;
    const wchar_t next = text[1] == L'/' ? text[2] : text[1];
    if (!isLetter(next))
        return 0;
    const std::size_t end = text.find(L'>');
    return end == std::wstring_view::npos ? 0 : end + 1;
}

std::optional<std::uint32_t> colorIn(const std::wstring& tag)
{
    std::size_t at = tag.find(L"color=");
    if (at == std::wstring::npos || (at > 0 && isLetter(tag[at - 1])))
        return std::nullopt;
    at += 6;
    while (at < tag.size() && (tag[at] == L'"' || tag[at] == L'#'))
        ++at;
    const std::wstring digits = tag.substr(at, 6);
    wchar_t* end = nullptr;
    const unsigned long rgb = std::wcstoul(digits.c_str(), &end, 16);
    if (digits.size() != 6 || end != digits.c_str() + 6)
        return std::nullopt;
    return static_cast<std::uint32_t>((rgb >> 16 & 0xFF) | (rgb & 0xFF00) | (rgb & 0xFF) << 16);
}

struct Entity {
    const wchar_t* name;
    wchar_t character;
};
const Entity kEntities[] = {
    {L"&lt;", L'<'}, {L"&gt;", L'>'}, {L"&amp;", L'&'}, {L"&quot;", L'"'}, {L"&nbsp;", L' '}};

class Parser {
public:
    explicit Parser(bool breaks) : breaks_(breaks), colors_{0} {}

    std::vector<Run> parse(std::wstring_view html)
    {
        while (!html.empty()) {
            if (const std::size_t tag = tagLength(html)) {
                take(small(html.substr(1, tag - 2)));
                html.remove_prefix(tag);
                continue;
            }
            html.remove_prefix(entityOrCharacter(html));
        }
        return std::move(runs_);
    }

private:
    std::size_t entityOrCharacter(std::wstring_view html)
    {
        for (const Entity& entity : kEntities) {
            const std::size_t length = std::wcslen(entity.name);
            if (html[0] == L'&' && small(html.substr(0, length)) == entity.name) {
                add(entity.character);
                return length;
            }
        }
        add(html[0]);
        return 1;
    }

    void add(wchar_t c)
    {
        style_.color = colors_.back();
        if (runs_.empty() || !runs_.back().sameStyle(style_))
            runs_.push_back(style_);
        runs_.back().text += c;
    }

    void take(const std::wstring& tag)
    {
        const bool closing = tag[0] == L'/';
        const std::wstring name = tag.substr(closing, tag.find_first_of(L" \t", closing) - closing);
        if (name == L"b")
            style_.bold = !closing;
        else if (name == L"i")
            style_.italic = !closing;
        else if (name == L"u")
            style_.underline = !closing;
        else if (name == L"font")
            font(tag, closing);
        else if (breaks_ && (name == L"br" || (name == L"p" && !closing)) && !runs_.empty())
            add(L'\n');
    }

    // AOL never closes its colour tags in a faded line, so the depth is bounded here.
    void font(const std::wstring& tag, bool closing)
    {
        if (closing && colors_.size() > 1)
            colors_.pop_back();
        if (closing)
            return;
        const std::uint32_t color = colorIn(tag).value_or(colors_.back());
        if (colors_.size() < 64)
            colors_.push_back(color);
        else
            colors_.back() = color;
    }

    bool breaks_;
    std::vector<std::uint32_t> colors_;
    Run style_;
    std::vector<Run> runs_;
};

} // namespace

std::vector<Run> parseMarkup(std::wstring_view html, bool breaks)
{
    return Parser(breaks).parse(html);
}

std::wstring plainText(std::wstring_view html, bool breaks)
{
    std::wstring out;
    for (const Run& run : parseMarkup(html, breaks))
        out += run.text;
    return out;
}

} // namespace aolhost
