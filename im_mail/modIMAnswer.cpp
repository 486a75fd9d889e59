#include "im_mail/modIMAnswer.h"

#include "base/text.h"
#include "im_mail/modIMRules.h"
#include "sounds/modSoundCommand.h"

namespace velora {
namespace {

constexpr std::size_t kMostSender = 64;

/// Captions carry a name without its dots.
std::wstring speakerKey(std::wstring_view name)
{
    return screenNameKey(without(name, L'.'));
}

/// The text behind "NAME:" when the line is that member's.
std::optional<std::wstring> saidBy(const std::wstring& line, const std::wstring& key)
{
    const std::size_t colon = line.find(L':');
    if (colon == line.npos || speakerKey(std::wstring_view(line).substr(0, colon)) != key)
        return std::nullopt;
    std::size_t from = colon + 1;
    while (from < line.size() && (line[from] == L'\t' || line[from] == L' '))
        ++from;
    return line.substr(from);
}

} // namespace

std::wstring lastMessageOf(std::wstring_view conversation, std::wstring_view screenName)
{
    const std::wstring key = speakerKey(screenName);
    if (key.empty())
        return {};
    const auto lines = splitLines(conversation);
    for (auto line = lines.rbegin(); line != lines.rend(); ++line)
        if (auto said = saidBy(*line, key))
            return *said;
    return {};
}

bool hearsFrom(std::wstring_view text, std::wstring_view screenName)
{
    const std::wstring key = speakerKey(screenName);
    if (key.empty())
        return false;
    for (const std::wstring& line : splitLines(text))
        if (saidBy(line, key))
            return true;
    return false;
}

std::wstring soundNamedBy(std::wstring_view text, std::wstring_view screenName)
{
    const std::wstring key = speakerKey(screenName);
    if (key.empty())
        return {};
    for (const std::wstring& line : splitLines(text))
        if (const auto said = saidBy(line, key))
            if (std::wstring wav = ParseWavName(*said); !wav.empty())
                return wav;
    return {};
}

std::optional<PreparedAnswer> prepareAnswer(std::wstring_view caption, int edition, int version,
                                            const AnswerPolicy& policy, clsAnswered& answered,
                                            std::uint32_t ms, const AnswerSources& sources)
{
    if (!isUnreadImCaption(caption, edition, version))
        return std::nullopt;
    const std::wstring shown = senderFromCaption(caption);
    const std::wstring sender = lower(shown);
    if (sender.empty() || sender.size() > kMostSender
        || !answered.mayAnswer(sender, ms, policy.once))
        return std::nullopt;
    const bool listed = (policy.mode == 2 || policy.mode == 3) && sources.inExceptions(sender);
    const bool noted = (policy.mode == 4 || policy.mode == 5) && sources.hasNote(sender);
    if (!modeAnswers(policy.mode, listed, noted))
        return std::nullopt;

    std::optional<std::wstring> personalised, general;
    if (policy.personal)
        personalised = sources.personalised(sender);
    if (!personalised && !policy.message.empty())
        general = sources.general(policy.message);
    const bool useDefault = !personalised && !general;
    const AnswerChoice choice =
        GetReturnMsg(personalised, general, useDefault ? sources.defaultText() : std::wstring());

    const std::wstring name = sources.nameFor(shown);
    std::wstring text = fillAnswer(choice.text, name);
    // The name can lengthen a message over what AOL takes.
    if (text.size() > kMostImCharacters)
        text = fillAnswer(defaultAnswer(), name);
    if (text.size() > kMostImCharacters)
        text = fillAnswer(defaultAnswer(), L"");
    return PreparedAnswer{shown, text, choice.tooLong};
}

} // namespace velora
