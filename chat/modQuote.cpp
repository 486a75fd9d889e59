#include "chat/modQuote.h"

#include "base/text.h"

#include <algorithm>
#include <span>

namespace velora {
namespace {

constexpr std::wstring_view kAolAddressEnd = L".aol.com>";

/// "<joe@mail.aol.com>" to "joe@mail.aol.com". Only what has the form of an address loses its
/// signs: no blank, no further "<" in between.
std::wstring withoutAddressBrackets(std::wstring_view text)
{
    std::wstring out(text);
    std::size_t from = 0;
    for (;;) {
        const std::wstring low = lower(out);
        const std::size_t end = low.find(kAolAddressEnd, from);
        if (end == low.npos)
            return out;
        const std::size_t close = end + kAolAddressEnd.size() - 1;
        const std::size_t open = out.find_last_of(L"< >\r\n", close - 1);
        from = close;
        if (open == out.npos || out[open] != L'<')
            continue;
        out.erase(close, 1);
        out.erase(open, 1);
        from = close - 1;
    }
}

/// The value of the first line that begins with one of the labels (compared without case).
std::wstring headValue(std::wstring_view text, std::span<const std::wstring_view> labels)
{
    for (const std::wstring& line : splitLines(text.substr(0, 4000))) {
        const std::wstring_view trimmed = trimView(line);
        for (const std::wstring_view label : labels)
            if (startsWithNoCase(trimmed, label))
                return trim(replaceAll(trimmed.substr(label.size()), L"\t", L" "));
    }
    return {};
}

bool isExcessTag(std::wstring_view tag)
{
    static constexpr std::wstring_view kNames[] = {L"html", L"body", L"head", L"!"};
    std::wstring_view name = tag.substr(1);
    if (name.starts_with(L'/'))
        name.remove_prefix(1);
    for (const std::wstring_view excess : kNames) {
        if (!startsWithNoCase(name, excess))
            continue;
        const std::wstring_view rest = name.substr(excess.size());
        if (excess == L"!" || rest.empty() || rest[0] == L'>' || rest[0] == L' ')
            return true;
    }
    return false;
}

} // namespace

const std::array<QuoteTemplate, 3>& builtInTemplates()
{
    static const std::array<QuoteTemplate, 3> templates = {{
        {L"In reference to your comment",
         L"<HTML>Hello {SN},<BR><BR><FONT COLOR=\"#0000ff\">In reference to your comment:</FONT>"
         L"</HTML>"},
        {L"On date at time",
         L"<HTML><FONT COLOR=\"#ff0000\">On {D} at {T} {SN} wrote:</FONT></HTML>"},
        {L"Name wrote", L"<HTML><FONT COLOR=\"#000000\"><B>{SN} wrote:</B></FONT></HTML>"},
    }};
    return templates;
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

std::wstring FillVariables(std::wstring_view text, const QuoteVariables& values)
{
    const std::pair<std::wstring_view, const std::wstring*> variables[] = {
        {L"{SN}", &values.screenName}, {L"{D}", &values.date}, {L"{T}", &values.time}};
    std::wstring out;
    for (std::size_t i = 0; i < text.size();) {
        const auto* found =
            std::find_if(std::begin(variables), std::end(variables),
                         [&](const auto& v) { return startsWithNoCase(text.substr(i), v.first); });
        if (found != std::end(variables)) {
            out += escapeHtml(*found->second);
            i += found->first.size();
        } else {
            out += text[i++];
        }
    }
    return out;
}

std::wstring StripReturns(std::wstring_view text)
{
    std::wstring out;
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (text[i] != L'\r' && text[i] != L'\n')
            out += text[i];
        else if (!out.empty() && out.back() != L' ')
            out += L' ';
    }
    return out;
}

std::wstring RemoveExcessHTML(std::wstring_view html)
{
    std::wstring out;
    for (std::size_t i = 0; i < html.size();) {
        const std::size_t end = html[i] == L'<' ? html.find(L'>', i) : html.npos;
        if (end != html.npos && isExcessTag(html.substr(i, end - i + 1))) {
            i = end + 1;
            continue;
        }
        out += html[i++];
    }
    return out;
}

std::wstring FormatQuote(std::wstring_view separator, std::wstring_view quoted,
                         const QuoteStyle& style)
{
    std::wstring text = withoutAddressBrackets(RemoveExcessHTML(quoted));
    if (style.stripReturns)
        text = StripReturns(text);
    if (style.quoteStyle)
        text = L"<BLOCKQUOTE>" + text + L"</BLOCKQUOTE>";
    std::wstring out = std::wstring(separator) + L"<br>" + text + L"<br></b></i></u>" + L"<br><br>";
    return style.aolVersion == 7 ? replaceAll(out, L"\r\n", L"\n") : out;
}

ReplyAndSignature GetReplyAndSig(std::wstring_view html)
{
    constexpr std::wstring_view quoteEnd = L"</blockquote>", lineBreak = L"<br>";
    const std::wstring low = lower(html);
    const auto part = [&](std::size_t from, std::size_t to) {
        return std::wstring(html.substr(from, to - from));
    };
    if (const std::size_t at = low.rfind(quoteEnd); at != low.npos)
        return {part(0, at + quoteEnd.size()), part(at + quoteEnd.size(), html.size())};
    if (const std::size_t at = low.find(lineBreak); at != low.npos)
        return {part(0, at), part(at + lineBreak.size(), html.size())};
    return {std::wstring(html), {}};
}

bool isReplySubject(std::wstring_view subject)
{
    subject = trimView(subject);
    return startsWithNoCase(subject, L"re:") || startsWithNoCase(subject, L"fwd:")
           || startsWithNoCase(subject, L"wtr:");
}

std::wstring senderFromMailText(std::wstring_view text)
{
    static constexpr std::wstring_view labels[] = {L"From:", L"Von:", L"De:", L"De :",
                                                   L"Absender:"};
    std::wstring sender = headValue(text, labels);
    // "Joe (joe@x.y)" and "joe@x.y (Joe)" keep the part in front.
    return trim(std::wstring_view(sender).substr(0, sender.find(L" (")));
}

std::wstring dateFromMailText(std::wstring_view text)
{
    static constexpr std::wstring_view labels[] = {L"Date:", L"Sent:", L"Datum:", L"Date :"};
    return headValue(text, labels);
}

} // namespace velora
