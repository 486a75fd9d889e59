#pragma once
// Quoted replies: the separator that introduces a quote, and the quoted text, as AOL's HTML. Pure.
#include <array>
#include <string>
#include <string_view>
#include <utility>

namespace velora {

/// One reply template: what stands above the quote.
struct QuoteTemplate {
    std::wstring Header;   ///< its name in the menu
    std::wstring CharHtml; ///< its text, "{SN}", "{D}" and "{T}" not yet filled
    bool operator==(const QuoteTemplate&) const = default;
};

/// The three that are made when the user has none.
const std::array<QuoteTemplate, 3>& builtInTemplates();

struct QuoteVariables {
    std::wstring screenName, date, time;
};

/// Replaces "{SN}", "{D}" and "{T}" in one pass: what a value holds is never looked at again, and
/// its "<", ">" and "&" are escaped.
std::wstring FillVariables(std::wstring_view text, const QuoteVariables& values);

/// What the options of a reply ask for.
struct QuoteStyle {
    bool quoteStyle = true;    ///< put the quote into a block of its own
    bool stripReturns = false; ///< the quote's line ends become blanks
    int aolVersion = 6;        ///< with 7 line ends are LF alone
};

/// Separator and quoted text joined. The "<" and ">" around sender addresses that end in
/// ".aol.com>" go, open styles are closed and two line breaks follow.
std::wstring FormatQuote(std::wstring_view separator, std::wstring_view quoted,
                         const QuoteStyle& style);

/// The text with its line ends as blanks; runs of them become one blank.
std::wstring StripReturns(std::wstring_view text);

/// The HTML without what a quote does not need: <HTML>, <BODY ...>, <HEAD> and their ends,
/// comments.
std::wstring RemoveExcessHTML(std::wstring_view html);

/// A reply window's text taken apart: what the user (or AOL) put above the quote, and the signature
/// behind the last quote.
struct ReplyAndSignature {
    std::wstring reply, signature;
};
/// Splits at the last "</BLOCKQUOTE>", and without one at the first "<BR>"; a text with neither is
/// all reply.
ReplyAndSignature GetReplyAndSig(std::wstring_view html);

/// True when the caption or subject is that of a reply or forward: "re:", "fwd:" or "wtr:" in
/// front.
bool isReplySubject(std::wstring_view subject);

/// The subject without the mark of a reply or forward in front.
std::wstring_view bareSubject(std::wstring_view subject);
/// Whether a reply window's subject answers a message with that subject. Captions may be cut short;
/// a message without a known subject is answered by any.
bool answersSubject(std::wstring_view reply, std::wstring_view original);

/// Sender, date and subject from the head of a read message ("Subj:", "Date:", "From:" lines, in
/// any edition's words); empty when the head has none.
std::wstring GetScreenNameFromMail(std::wstring_view text);
std::wstring GetDateFromMail(std::wstring_view text);
std::wstring subjectFromMailText(std::wstring_view text);
/// What follows the head and its empty line; all of a text that has no head.
std::wstring bodyFromMailText(std::wstring_view text);

/// A date line in its two parts, "1/2/2003" and "4:05:06 PM"; a date without a time of day is all
/// date.
struct DateAndTime {
    std::wstring date, time;
};
DateAndTime splitMailDate(std::wstring_view text);

/// A message as it was on the screen when the user asked for a reply.
struct OriginalMessage {
    std::wstring text;      ///< all of its window's text, head and body; HTML when it says so
    std::wstring selection; ///< what the user had selected
};

/// The character that an entity at the text's begin stands for, and the entity's length; 0 when
/// there is none.
std::pair<wchar_t, std::size_t> entityAt(std::wstring_view text);

/// HTML as a reader sees it, for the versions of AOL whose windows give their text as HTML.
std::wstring plainFromHtml(std::wstring_view html);

/// The part of the message that is quoted, as HTML: the selection, else the body. A text longer
/// than kMostQuoted characters is cut there, with "[...]".
std::wstring GetQuoteText(const OriginalMessage& original, bool withHead = false);
inline constexpr std::size_t kMostQuoted = 30000;

/// The template filled with what the message tells about itself. `alias` gives the name to show for
/// a sender.
template <class Alias>
std::wstring GetSeperatorText(std::wstring_view charHtml, const OriginalMessage& original,
                              const Alias& alias);

/// The reply window's new text: what stands there already, then the quote. What AOL itself has
/// copied into it (the selection between "<<" and ">>", the whole text of a forward) is left out,
/// for the quote says it.
std::wstring composeReply(std::wstring_view existing, const OriginalMessage& original,
                          std::wstring_view quote);

/// The text of a message for finding its head: as it is, or read from HTML.
std::wstring shownText(const OriginalMessage& original);

template <class Alias>
std::wstring GetSeperatorText(std::wstring_view charHtml, const OriginalMessage& original,
                              const Alias& alias)
{
    const std::wstring shown = shownText(original);
    const DateAndTime when = splitMailDate(GetDateFromMail(shown));
    return FillVariables(charHtml, {alias(GetScreenNameFromMail(shown)), when.date, when.time});
}

} // namespace velora
