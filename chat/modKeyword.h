#pragma once
// Chat keywords: commands that the user types into AOL's chat box behind a "/".
#include <array>
#include <string>
#include <string_view>

namespace velora {

enum class Keyword {
    Hushkit,
    ImOff,
    ImOn,
    Help,
    WavList,
    Advertise,
    Update,
    ChangeHug,
    ShowFade,
    HideFade,
    FadeOn,
    FadeOff,
    Options,
    EditKeywords,
    EditGlintunes,
    MultiLine,
    Profile,
    Email,
    Im,
    Log,
    Other, ///< no keyword of ours: a user's command, a web address or a keyword of AOL
};

struct KeywordText {
    Keyword keyword;
    /// Behind the first ":" for the keywords that take an argument, blanks at its ends removed (a
    /// log note: as typed); for Other the whole word, blanks removed, letters as typed.
    std::wstring argument;
};

/// True when a typed chat text is a keyword text: it begins with "/", and either holds no further
/// "/" or holds "http://" behind its first character.
bool isKeywordText(std::wstring_view typed);

/// What a keyword text asks for; `text` is what follows the leading "/".
KeywordText parseKeyword(std::wstring_view text);

/// True when a command's target is to be opened in the browser: http://, https:// or www. in front.
bool isWebAddress(std::wstring_view target);

/// What the command pop-up offers before the user's own commands.
inline constexpr std::array<std::wstring_view, 9> kPopupKeywords = {
    L"hushkit",  L"advertise", L"wavlist",   L"change hug", L"fade on",
    L"fade off", L"options",   L"multiline", L"profile:"};

} // namespace velora
