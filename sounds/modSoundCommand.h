#pragma once
// The sound command of AOL's chat rooms, "{S name}", and the small texts around it.
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace velora {

/// The command that plays a wav in the room. Nothing in the name is escaped.
std::wstring soundCommand(std::wstring_view wavName, bool upperTrigger);

/// The sound name inside a chat or IM line: what follows the first "{s " (in either case) up to the
/// next "}", with its case kept. Empty when there is no trigger, or no "}" after it.
std::wstring ParseWavName(std::wstring_view line);

/// Whether a name that came from outside may be looked up as a sound: it must be able to be a file
/// name as it stands, without a folder, drive, stream or device in it.
bool isSafeSoundName(std::wstring_view wavName);

/// How the user's system writes numbers.
struct NumberStyle {
    std::wstring decimal = L".";
    std::wstring thousands = L",";
    bool leadingZero = true;
};
/// The user's own style, from the regional settings.
NumberStyle regionalNumberStyle();

/// A file's size in KB or MB with one decimal place. The value is rounded to three places and the
/// last two are cut off, so that a rounding up in the third can carry. Empty from 1 GB on.
std::wstring sizeText(std::uint64_t bytes, const NumberStyle& style);

/// The Glintune style that is used when the chosen one has no place for the command.
extern const wchar_t kBuiltInGlintune[];

struct Glintune {
    std::wstring line;
    /// Set when the style had no "{%}" and the built-in one was used: it is to be stored then.
    std::optional<std::wstring> newStyle;
};
/// The command inside a style: it takes the place of the style's first "{%}".
Glintune decorate(std::wstring_view style, std::wstring_view command);

} // namespace velora
