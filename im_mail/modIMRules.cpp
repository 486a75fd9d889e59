#include "im_mail/modIMRules.h"

#include "base/text.h"
#include "base/wildcard.h"
#include "core/modCaptions.h"

#include <algorithm>

namespace velora {
namespace {

constexpr std::wstring_view kNoteCommand = L"/log:";

bool anyEqual(std::wstring_view text, std::initializer_list<std::wstring_view> words)
{
    return std::any_of(words.begin(), words.end(),
                       [&](std::wstring_view word) { return equalNoCase(text, word); });
}

} // namespace

bool isImCaption(std::wstring_view caption, int edition, int version)
{
    const auto matches = [&](const std::wstring& pattern) {
        return !pattern.empty() && wildcardMatch(pattern, caption);
    };
    return matches(imReceivedPattern(edition, version)) || matches(imSentPattern(edition, version))
           || matches(internetImPattern(edition, version));
}

bool isUnreadImCaption(std::wstring_view caption, int edition, int version)
{
    const std::wstring_view pattern = edition == kGermany  ? L"*> Telegramm von: *"
                                      : edition == kFrance ? L"*>Message Eclair de : *"
                                      : version < 6        ? L"*>Instant Message From: *"
                                                           : L"*>IM From: *";
    return wildcardMatch(pattern, caption);
}

std::wstring senderFromCaption(std::wstring_view caption)
{
    const std::size_t colon = caption.find(L':');
    if (colon == caption.npos)
        return {};
    return without(trimView(caption.substr(colon + 1)), L'.');
}

bool isInternetSenderText(std::wstring_view text)
{
    for (const std::wstring_view words : {L"Internet user", L"Internet-Anwender", L"L'internaute"})
        if (text.find(words) != text.npos)
            return true;
    return false;
}

bool isReplyCaption(std::wstring_view caption)
{
    return anyEqual(trimView(caption),
                    {L"respond", L"antworten", L"r\u00E9pondre", L"click here to reply"});
}

int sendIconIndex(int edition, int version)
{
    if (version < 5)
        return 0;
    const int further = version == 5 ? 8 : 9;
    return edition == kAustralia ? further + 1 : further;
}

std::optional<std::wstring> logNoteOf(std::wstring_view reply)
{
    if (reply.find(kNoteCommand) == reply.npos)
        return std::nullopt;
    return std::wstring(reply.substr(kNoteCommand.size()));
}

std::wstring logNoteText(std::wstring_view note)
{
    return L"\r\nLog Note:\t" + std::wstring(note);
}

bool isImSwitchAnswer(std::wstring_view text)
{
    const std::wstring low = lower(trimView(text));
    for (const std::wstring_view words :
         {L"online?", L"available?", L"check to see if", L"disponible?"})
        if (low.find(words) != low.npos)
            return true;
    return false;
}

int ContrastingColor(int background)
{
    const int red = background & 255, green = background >> 8 & 255, blue = background >> 16 & 255;
    // Perceived brightness in thousandths; green counts most.
    return 299 * red + 587 * green + 114 * blue >= 128000 ? 0x000000 : 0xFFFFFF;
}

bool raisesAlert(const AlertSituation& now)
{
    if (!now.displayAlert || now.lookingAtThisIm || now.quiet)
        return false;
    if (now.aolMinimised)
        return now.alertIfMinimised;
    return !now.aolInFront;
}

} // namespace velora
