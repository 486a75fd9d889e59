#include "chat/modFadeRuns.h"

#include "base/text.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <optional>

namespace velora {
namespace {

// Yellow on white reads as 1.07, light grey (C0C0C0) as 1.8.
constexpr double kReadable = 1.9;

std::optional<Colour> colourOfTag(std::wstring_view tag)
{
    constexpr std::wstring_view fade = L"<FONT COLOR=#";
    if (tag == L"<font color=0>")
        return 0;
    if (!tag.starts_with(fade) || tag.size() != fade.size() + 7)
        return std::nullopt;
    Colour rgb = 0;
    for (const wchar_t c : tag.substr(fade.size(), 6)) {
        const int digit = c >= L'0' && c <= L'9'   ? c - L'0'
                          : c >= L'A' && c <= L'F' ? c - L'A' + 10
                                                   : -1;
        if (digit < 0)
            return std::nullopt;
        rgb = rgb * 16 + digit;
    }
    return (rgb & 255) << 16 | (rgb & 0xFF00) | rgb >> 16;
}

/// Applies a tag; false when it is none of the fader's.
bool applyTag(std::wstring_view tag, FadeRun& state)
{
    if (const auto colour = colourOfTag(tag)) {
        state.colour = *colour;
        return true;
    }
    const std::wstring low = lower(tag);
    if (low == L"<sup>" || low == L"<sub>")
        state.shift = low == L"<sup>" ? 1 : -1;
    else if (low == L"</sup>" || low == L"</sub>")
        state.shift = 0;
    else if (low == L"<b>" || low == L"</b>")
        state.bold = low[1] == L'b';
    else if (low == L"<i>" || low == L"</i>")
        state.italic = low[1] == L'i';
    else if (low == L"<u>" || low == L"</u>")
        state.underline = low[1] == L'u';
    else
        return low == L"</promo>";
    return true;
}

double luminance(Colour colour)
{
    const auto linear = [&](int shift) {
        const double c = (colour >> shift & 255) / 255.0;
        return c <= 0.03928 ? c / 12.92 : std::pow((c + 0.055) / 1.055, 2.4);
    };
    return 0.2126 * linear(0) + 0.7152 * linear(8) + 0.0722 * linear(16);
}

} // namespace

std::vector<FadeRun> fadeRuns(std::wstring_view markup)
{
    std::vector<FadeRun> runs;
    FadeRun state;
    bool open = false; // the last run still takes characters
    const auto put = [&](wchar_t c) {
        if (!open)
            runs.push_back(state);
        open = true;
        runs.back().text += c;
    };
    for (std::size_t i = 0; i < markup.size();) {
        const std::size_t end = markup[i] == L'<' ? markup.find(L'>', i) : markup.npos;
        const std::wstring_view tag =
            end == markup.npos ? std::wstring_view() : markup.substr(i, end - i + 1);
        if (equalNoCase(tag, L"<br>")) {
            put(L'\n');
            i += tag.size();
        } else if (!tag.empty() && applyTag(tag, state)) {
            open = false;
            i += tag.size();
        } else {
            put(markup[i++]);
        }
    }
    return runs;
}

double contrast(Colour a, Colour b)
{
    const double la = luminance(a), lb = luminance(b);
    return (std::max(la, lb) + 0.05) / (std::min(la, lb) + 0.05);
}

double hardToRead(const std::vector<FadeRun>& runs, Colour background)
{
    std::size_t all = 0, hard = 0;
    for (const FadeRun& run : runs) {
        const auto visible = static_cast<std::size_t>(
            std::count_if(run.text.begin(), run.text.end(), [](wchar_t c) { return c > L' '; }));
        all += visible;
        hard += contrast(run.colour, background) < kReadable ? visible : 0;
    }
    return all == 0 ? 0 : static_cast<double>(hard) / static_cast<double>(all);
}

} // namespace velora
