#pragma once
// Quoted replies: the separator that introduces a quote, and the quoted text, as AOL's HTML. Pure.
#include <array>
#include <string>
#include <string_view>

namespace velora {

/// One reply template: what stands above the quote.
struct QuoteTemplate {
    std::wstring Header;   ///< its name in the menu
    std::wstring CharHtml; ///< its text, "{SN}", "{D}" and "{T}" not yet filled
};

/// The three that are made when the user has none.
const std::array<QuoteTemplate, 3>& builtInTemplates();

struct QuoteVariables {
    std::wstring screenName, date, time;
};

/// The text as it has to stand in HTML to be read as it is.
std::wstring escapeHtml(std::wstring_view text);

/// Replaces "{SN}", "{D}" and "{T}" in one pass: what a value holds is never looked at again, and
/// its
/// "<", ">" and "&" are escaped.
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

/// Sender and date from the text of a read mail's head ("Subj:", "Date:", "From:" lines, in any
/// edition's words); empty when the head has none.
std::wstring senderFromMailText(std::wstring_view text);
std::wstring dateFromMailText(std::wstring_view text);

} // namespace velora
