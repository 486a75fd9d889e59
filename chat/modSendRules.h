#pragma once
// What becomes of a text that the user sends to the chat room. Pure.
#include <string>
#include <string_view>
#include <vector>

namespace velora {

enum class SendAction {
    pass,    ///< AOL sends it as typed
    keyword, ///< a command of the program's: nothing goes to the room
    fade,    ///< it goes out faded
    lines,   ///< it is too long for one line: it goes out as several, one after the other
};

struct SendOptions {
    bool keywords = true;     ///< "ChatKeywords"/"Enabled"
    bool fader = false;       ///< "Fader"/"On"
    bool fadeWavOnly = false; ///< "Fader"/"FadeWavOnly"
    bool useMultiline = true; ///< "ChatExtender"/"UseMultiline"
    int charsInLine = 60;     ///< "ChatExtender"/"CharsInLine"
};

struct SendDecision {
    SendAction action = SendAction::pass;
    std::wstring keyword;            ///< what follows the "/"
    std::vector<std::wstring> lines; ///< for SendAction::lines, two at least
};

SendDecision decideSend(std::wstring_view typed, const SendOptions& options);

/// The text in lines of at most `longest` characters, broken at blanks; a word that is longer is
/// cut. Line breaks end a line; blank lines are left out.
std::vector<std::wstring> breakLines(std::wstring_view text, int longest);

/// Seconds written with "." or "," ("1.50") as milliseconds, 100 to 60,000; 1,500 for anything
/// else.
unsigned pauseMs(std::wstring_view seconds);

} // namespace velora
