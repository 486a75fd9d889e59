#include "chat/modQuoteRuns.h"

#include "base/text.h"
#include "chat/modQuote.h"

#include <algorithm>

namespace velora {
namespace {

/// The colour of a lower-case font tag, "<font color="#0000ff">"; the present one when it has none.
Colour fontColour(std::wstring_view tag, Colour present)
{
    const std::size_t at = tag.find(L"color=");
    if (at == tag.npos)
        return present;
    std::wstring_view value = tag.substr(at + 6);
    while (value.starts_with(L'"') || value.starts_with(L'#'))
        value.remove_prefix(1);
    Colour rgb = 0;
    for (std::size_t i = 0; i < 6; ++i) {
        const wchar_t c = i < value.size() ? value[i] : L'"';
        const int digit = c >= L'0' && c <= L'9'   ? c - L'0'
                          : c >= L'a' && c <= L'f' ? c - L'a' + 10
                                                   : -1;
        if (digit < 0)
            return present;
        rgb = rgb * 16 + digit;
    }
    return (rgb & 255) << 16 | (rgb & 0xFF00) | rgb >> 16;
}

class Reader {
public:
    std::vector<FadeRun> read(std::wstring_view html)
    {
        for (std::size_t i = 0; i < html.size();) {
            const std::size_t length = tagLength(html.substr(i));
            if (length != 0) {
                tag(lower(html.substr(i, std::min<std::size_t>(length, 200))));
                i += length;
                continue;
            }
            const auto [character, entity] = entityAt(html.substr(i, 8));
            const wchar_t c = entity != 0 ? character : html[i];
            if (c != L'\r' && c != L'\n')
                put(c);
            i += std::max<std::size_t>(entity, 1);
        }
        return std::move(runs_);
    }

private:
    /// Of a tag at the text's begin, 0 when there is none.
    static std::size_t tagLength(std::wstring_view text)
    {
        if (text.size() < 3 || text[0] != L'<')
            return 0;
        const wchar_t first = lowerChar(text[1]);
        const bool named = (first >= L'a' && first <= L'z') || first == L'/' || first == L'!';
        const std::size_t end = named ? text.find(L'>') : text.npos;
        return end == text.npos ? 0 : end + 1;
    }

    void put(wchar_t c)
    {
        if (!open_)
            runs_.push_back(state_);
        open_ = true;
        runs_.back().text += c;
    }

    void ownLine()
    {
        if (!runs_.empty() && !runs_.back().text.ends_with(L'\n'))
            put(L'\n');
    }

    void tag(const std::wstring& tag)
    {
        const bool end = tag[1] == L'/';
        const std::wstring name = tag.substr(end ? 2 : 1, tag.find_first_of(L" >") - (end ? 2 : 1));
        if (name == L"br") {
            put(L'\n');
            return;
        }
        if (name == L"p" || name == L"blockquote") {
            ownLine();
            for (int i = 0; i < 4 && !end && name != L"p"; ++i)
                put(L' ');
            return;
        }
        if (name == L"b")
            state_.bold = !end;
        else if (name == L"i")
            state_.italic = !end;
        else if (name == L"u")
            state_.underline = !end;
        else if (name == L"font")
            state_.colour = end ? 0 : fontColour(tag, state_.colour);
        else
            return;
        open_ = false;
    }

    std::vector<FadeRun> runs_;
    FadeRun state_;
    bool open_ = false; // the last run still takes characters
};

} // namespace

std::vector<FadeRun> quoteRuns(std::wstring_view html)
{
    return Reader().read(html);
}

} // namespace velora
