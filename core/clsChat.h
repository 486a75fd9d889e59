#pragma once
// The chat room reader: turns the text of AOL's chat display into a stream of chat lines.
//
// A chat line reads: screen name, ":", a tab, the message. Parts of a line that AOL broke follow on
// lines of their own that hold no ":". The reader looks at the display's end only, as far back as
// the section it saw last reaches, and takes the whole text when that isn't found there.
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace velora {

/// What the reader asks of the chat display. Each call is one message to AOL at the most, answered
/// from one moment of the display; absent when AOL didn't answer or the display is gone.
class ChatDisplay {
public:
    struct Tail {
        std::wstring text;
        bool whole; ///< nothing stands before it
    };
    virtual ~ChatDisplay() = default;
    /// The end of the display's text, about `characters` characters long.
    virtual std::optional<Tail> tail(std::size_t characters) = 0;
    /// All of it, as far as the display reads at all.
    virtual std::optional<std::wstring> whole() = 0;
};

/// The lines of a display's text as the control gives them. Ends are CR, CR LF, LF or VT; NULs are
/// dropped; the empty lines after the last line end are none.
std::vector<std::wstring> displayLines(std::wstring_view displayText);

// The rules, pure functions of their arguments. A line is counted from 1; lines end at CR, and the
// character after it belongs to the end.

/// The chat text of display lines: a line that holds ":" begins a chat line (CR LF before it), any
/// other goes on with the one before (a blank before it).
std::wstring GetChat(const std::vector<std::wstring>& lines);
/// The last kSectionLength characters, or all of a shorter text.
std::wstring LastSection(std::wstring_view text);
inline constexpr std::size_t kSectionLength = 1000;
std::wstring LastLine(std::wstring_view text);
int LineCount(std::wstring_view text);
/// Without its CR and LF; empty when there is no such line.
std::wstring LineFromString(std::wstring_view text, int index);
/// What stands before the first ":"; empty when there is none.
std::wstring AolChatLineSN(std::wstring_view line);
/// What stands after the first tab; empty when there is none.
std::wstring AolChatLineMsg(std::wstring_view line);

/// Where in `text` the text begins that follows the previous section. Absent when the section isn't
/// in it.
std::optional<std::size_t> endOfSection(std::wstring_view text, std::wstring_view section);
/// The same for a whole text that doesn't hold the section: where the rest that is left of it ends
/// (AOL cut the display at its head), or 0 when nothing of it is left: all is new.
std::size_t endOfRemainder(std::wstring_view text, std::wstring_view section);

class clsChat {
public:
    clsChat() = default;
    /// A HandleChat in progress stops at its next line, also when the reader is destroyed by one of
    /// its own handlers.
    ~clsChat() { Release(); }
    clsChat(const clsChat&) = delete;
    clsChat& operator=(const clsChat&) = delete;

    /// Raised once for every new chat line, in display order.
    std::function<void(std::wstring& screenName, std::wstring& message)> ChatMsg;
    /// Called when HandleChat is done, so that the hook on the display is attached again. Notices
    /// that came meanwhile are lost to the hook: call CheckChat once more after it.
    std::function<void()> Reattach;

    /// Starts reading a display; nothing is raised for the text that it holds now. When AOL doesn't
    /// answer, the first check that gets an answer takes this part.
    void Init(std::unique_ptr<ChatDisplay> display);
    /// Looks at the display: 0 when its end changed since the last HandleChat, 1 when not (or when
    /// AOL didn't answer: see missed()).
    int CheckChat();
    /// Raises the new lines of what CheckChat saw.
    void HandleChat();
    /// Ends reading.
    void Release();

    bool active() const { return state_ && state_->active; }
    /// True when AOL didn't answer the last look: look again soon, without waiting for its notice.
    bool missed() const { return missed_; }

private:
    struct State {
        std::unique_ptr<ChatDisplay> display;
        bool active = true;
        bool started = false;  ///< the sections have been read once
        bool handling = false; ///< HandleChat runs; what it pumps must not start another
        std::wstring previous; ///< the section seen when lines were last raised
        std::wstring current;
        std::wstring fresh;     ///< the text that follows `previous`
        std::size_t behind = 0; ///< its length: how much further the next look has to reach
    };
    void firstLook();
    bool look();
    static bool raiseLines(State& state, const decltype(ChatMsg)& handler);

    std::shared_ptr<State> state_; ///< kept by a HandleChat in progress, whatever its handlers do
    bool missed_ = false;
};

} // namespace velora
