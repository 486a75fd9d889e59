#include "chat/modQuote.h"

#include "base/text.h"

#include <algorithm>
#include <span>
#include <vector>

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

constexpr wchar_t kBlanks[] = L" \t\r\n";

/// Where the head of a read message ends: behind its empty line. 0 when the text has no head.
std::size_t headEnd(std::wstring_view text)
{
    // Its first line has a label ("Subj:", "Objet :").
    const std::wstring_view first = text.substr(0, text.find_first_of(L"\r\n"));
    const std::size_t colon = first.find(L':');
    if (colon == first.npos || colon > 12 || GetScreenNameFromMail(text).empty())
        return 0;
    std::size_t at = 0;
    while (at < text.size()) {
        const std::size_t end = std::min(text.find_first_of(L"\r\n", at), text.size());
        const bool empty = trimView(text.substr(at, end - at)).empty();
        at = end + (text.substr(end).starts_with(L"\r\n") ? 2 : 1);
        if (empty)
            return std::min(at, text.size());
    }
    return 0;
}

bool isHtml(std::wstring_view text)
{
    return startsWithNoCase(trimView(text), L"<html");
}

/// A text in which every run of blanks and line ends is one blank, and where each character was.
struct Collapsed {
    std::wstring text;
    std::vector<std::size_t> from;
};

Collapsed collapsed(std::wstring_view text)
{
    Collapsed out;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const bool blank = text[i] <= L' ' || text[i] == L'\u00A0';
        if (blank && (out.text.empty() || out.text.back() == L' '))
            continue;
        out.text += blank ? L' ' : text[i];
        out.from.push_back(i);
    }
    while (out.text.ends_with(L' ')) {
        out.text.pop_back();
        out.from.pop_back();
    }
    return out;
}

/// The line in front of AOL's own quotation that introduces it ("In a message dated ... writes:").
std::size_t introductionStart(std::wstring_view text, std::size_t quote)
{
    const std::size_t last = quote == 0 ? text.npos : text.find_last_not_of(kBlanks, quote - 1);
    if (last == text.npos || text[last] != L':')
        return quote;
    const std::size_t lineEnd = text.find_last_of(L"\r\n", last);
    return lineEnd == text.npos ? 0 : lineEnd + 1;
}

/// `text` without AOL's copy of `copied`. AOL puts it at the very beginning or between "<<" and
/// ">>": only there it is looked for, so that long texts cost little.
std::wstring withoutCopy(std::wstring_view text, std::wstring_view copied)
{
    const Collapsed here = collapsed(text), copy = collapsed(copied);
    if (copy.text.empty())
        return std::wstring(text);
    const auto cut = [&](std::size_t from, std::size_t to) {
        return std::wstring(text.substr(0, from)) + std::wstring(text.substr(to));
    };
    const auto originalEnd = [&](std::size_t at) { return here.from[at - 1] + 1; };
    if (here.text.starts_with(copy.text))
        return cut(0, originalEnd(copy.text.size()));
    std::size_t sign = 0;
    for (int tries = 0; tries < 8; ++tries, sign += 2) {
        sign = here.text.find(L"<<", sign);
        if (sign == here.text.npos)
            break;
        const std::size_t start = here.text.find_first_not_of(L' ', sign + 2);
        if (start == here.text.npos || here.text.compare(start, copy.text.size(), copy.text) != 0)
            continue;
        std::size_t end = start + copy.text.size();
        const std::size_t closing = here.text.find_first_not_of(L' ', end);
        if (closing != here.text.npos && here.text.compare(closing, 2, L">>") == 0)
            end = closing + 2;
        return cut(introductionStart(text, here.from[sign]), originalEnd(end));
    }
    return std::wstring(text);
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

std::wstring_view bareSubject(std::wstring_view subject)
{
    while (isReplySubject(subject))
        subject = trimView(subject.substr(subject.find(L':') + 1));
    return trimView(subject);
}

bool answersSubject(std::wstring_view reply, std::wstring_view original)
{
    const std::wstring_view a = bareSubject(reply), b = bareSubject(original);
    return b.empty() || (!a.empty() && (startsWithNoCase(a, b) || startsWithNoCase(b, a)));
}

std::wstring GetScreenNameFromMail(std::wstring_view text)
{
    static constexpr std::wstring_view labels[] = {L"From:", L"Von:", L"De:", L"De :",
                                                   L"Absender:"};
    std::wstring sender = headValue(text, labels);
    // "Joe (joe@x.y)" and "joe@x.y (Joe)" keep the part in front.
    return trim(std::wstring_view(sender).substr(0, sender.find(L" (")));
}

std::wstring GetDateFromMail(std::wstring_view text)
{
    static constexpr std::wstring_view labels[] = {L"Date:", L"Sent:", L"Datum:", L"Date :"};
    return headValue(text, labels);
}

std::wstring subjectFromMailText(std::wstring_view text)
{
    static constexpr std::wstring_view labels[] = {L"Subj:",   L"Subject:", L"Betreff:",
                                                   L"Objet :", L"Objet:",   L"Thema:"};
    return headValue(text, labels);
}

std::wstring bodyFromMailText(std::wstring_view text)
{
    return std::wstring(text.substr(headEnd(text)));
}

DateAndTime splitMailDate(std::wstring_view text)
{
    text = trimView(text);
    const auto digit = [&](std::size_t at) {
        return at < text.size() && text[at] >= L'0' && text[at] <= L'9';
    };
    for (std::size_t i = 1; i + 2 < text.size(); ++i) {
        if ((text[i] != L':' && text[i] != L'h') || !digit(i - 1) || !digit(i + 1) || !digit(i + 2))
            continue;
        const std::size_t start = i >= 2 && digit(i - 2) ? i - 2 : i - 1;
        const std::size_t dateEnd = text.substr(0, start).find_last_not_of(L" ,\t");
        return {std::wstring(text.substr(0, dateEnd == text.npos ? 0 : dateEnd + 1)),
                trim(text.substr(start))};
    }
    return {std::wstring(text), {}};
}

std::pair<wchar_t, std::size_t> entityAt(std::wstring_view text)
{
    static constexpr std::pair<std::wstring_view, wchar_t> kEntities[] = {
        {L"&lt;", L'<'}, {L"&gt;", L'>'}, {L"&amp;", L'&'}, {L"&quot;", L'"'}, {L"&nbsp;", L' '}};
    for (const auto& [name, character] : kEntities)
        if (startsWithNoCase(text, name))
            return {character, name.size()};
    return {0, 0};
}

std::wstring plainFromHtml(std::wstring_view html)
{
    std::wstring out;
    for (std::size_t i = 0; i < html.size();) {
        const std::size_t end = html[i] == L'<' ? html.find(L'>', i) : html.npos;
        if (end != html.npos) {
            const std::wstring tag = lower(html.substr(i, std::min<std::size_t>(end - i, 4)));
            if (tag.starts_with(L"<br") || tag == L"<p" || tag.starts_with(L"<p "))
                out += L"\r\n";
            i = end + 1;
            continue;
        }
        const auto [character, length] = entityAt(html.substr(i, 8));
        if (length == 0 && html[i] != L'\r' && html[i] != L'\n')
            out += html[i];
        else if (length != 0)
            out += character;
        i += std::max<std::size_t>(length, 1);
    }
    return out;
}

std::wstring shownText(const OriginalMessage& original)
{
    return isHtml(original.text) ? plainFromHtml(original.text) : original.text;
}

std::wstring GetQuoteText(const OriginalMessage& original, bool withHead)
{
    std::wstring text = original.selection;
    // A selection is text; a whole message may be HTML, with its colours, and then has no head to
    // be taken away safely.
    if (trimView(text).empty() && isHtml(original.text)) {
        if (original.text.size() <= kMostQuoted)
            return original.text;
        text = withHead ? shownText(original) : bodyFromMailText(shownText(original));
    } else if (trimView(text).empty()) {
        text = withHead ? original.text : bodyFromMailText(original.text);
    }
    text.erase(text.find_last_not_of(kBlanks) + 1);
    if (text.size() > kMostQuoted)
        text = text.substr(0, kMostQuoted) + L"\r\n[...]";
    return escapeHtml(withoutAddressBrackets(text));
}

std::wstring composeReply(std::wstring_view existing, const OriginalMessage& original,
                          std::wstring_view quote)
{
    const std::wstring shown = shownText(original);
    const std::wstring copied =
        trimView(original.selection).empty() ? bodyFromMailText(shown) : original.selection;
    const ReplyAndSignature parts = GetReplyAndSig(withoutCopy(existing, copied));
    std::wstring out;
    for (const std::wstring& part : {parts.reply, parts.signature}) {
        const std::size_t end = part.find_last_not_of(kBlanks);
        if (end != part.npos)
            out += part.substr(0, end + 1) + L"<br>";
    }
    return out + std::wstring(quote);
}

} // namespace velora
