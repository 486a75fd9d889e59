#pragma once
// How this AOL behaves. Set by arguments ("--late=200"), by "aol.ini" in its folder ("late=200")
// and, for most of it, at run time by a command ("late 200").
#include <string>
#include <string_view>
#include <vector>

namespace aolhost {

enum class Edition { unitedStates, unitedKingdom, canada, australia, germany, france };
/// The three ways in which a program may make an MDI child.
enum class MdiWay { create, ex, plain };
enum class Notice { sent, posted };
/// Which message of the Enter key sends what stands in an input box. A character message that no
/// key brought always does.
enum class EnterOn { charMessage, keyDown };
/// The reply part of a received IM: shown, hidden until its reply button is pressed, or not made
/// before that.
enum class ReplyPart { shown, hidden, absent };

struct Options {
    Edition edition = Edition::unitedStates;
    int version = 5; ///< 3 to 7
    std::wstring folder;
    std::wstring pipe, script, transcript;
    std::wstring signOnName; ///< signed on at start when not empty
    std::wstring keyword;    ///< opened once signed on
    std::vector<std::wstring> names;
    int lateMs = 0; ///< documents get their controls that long after they exist; 0: at once
    MdiWay mdi = MdiWay::create;
    Notice notice = Notice::posted;
    EnterOn enter = EnterOn::charMessage;
    ReplyPart reply = ReplyPart::hidden;
    bool wideEdits = false;   ///< rich edits of the Unicode class
    bool chatForm = false;    ///< rooms are windows of the class "AOL_CHAT_FORM"
    bool answerModal = true;  ///< the answer to "$im_off" is a dialog, not a document
    bool plainFrench = false; ///< French IMs arrive as "Message Eclair de : "
    bool sounds = false;      ///< AOL plays its own sounds
    bool closed = false;      ///< rooms take no line: what is typed stays in the box
    long trimAt = 60000;      ///< a chat display longer than this loses its oldest lines; 0: never
};

/// Sets one option by name; false for an unknown name or a value that makes no sense.
/// What may change while AOL runs is what `isRunTimeOption` names.
bool setOption(Options& options, std::wstring_view name, std::wstring_view value);
bool isRunTimeOption(std::wstring_view name);

/// The ways in which the versions differ by themselves. Call it when edition and version are known,
/// before the options that the user gives.
void applyVersionHabits(Options& options);

} // namespace aolhost
