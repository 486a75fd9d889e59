#pragma once
// Quoted replies: the hooks on the Reply and Forward buttons of the mails and board messages that
// the user reads, and the quote that goes into the reply window which AOL then opens.
#include "chat/modQuote.h"
#include "hook/WindowHook.h"
#include "ui/Timer.h"

#include <array>
#include <memory>
#include <vector>

namespace velora {

/// The text box of a reply or forward window; 0 when the window is none, or is not built yet.
HWND GetMailReplyWnd(HWND window);
/// Scrolls a text box of AOL so that its cursor is in sight.
void ScrollToCursor(HWND textBox);

/// Works on aolLink(). Every entry is trapped; nothing here waits for a window to appear.
class clsReplyHooks {
public:
    clsReplyHooks();
    ~clsReplyHooks();

    /// One of AOL's documents was made or has changed, and has settled (AgentLink::onChild).
    void childChanged(HWND child);
    /// One of AOL's documents is gone (AgentLink::onGone).
    void childGone(HWND child);
    /// Lets go of every window and forgets replies that have not opened.
    void detach();
    /// Presses Reply in the front one of the windows that are read, and quotes its text whatever
    /// the options say of quoting. False when no such window is open.
    bool quoteFront();

    /// The Reply and the Forward button of a window that is read; 0 when it has none, or is no such
    /// window.
    HWND GetReplyHelpIcon(HWND window) const;
    HWND GetFwdHelpIcon(HWND window) const;
    /// Whether a board's message is read in this window, alone: it can be answered, and unlike a
    /// mail not passed on.
    bool IsStandaloneMB(HWND window) const;

    /// Whether the Reply button of this window is hooked.
    bool hooked(HWND window) const;
    /// Whether the last button that the user pressed was Forward.
    bool IsFwdClicked() const { return forwarded_; }

private:
    enum class Button { reply, replyAll, forward };
    /// A window in which the user reads: its text and its buttons.
    struct ReadWindow {
        HWND window = nullptr, text = nullptr;
        std::array<HWND, 3> icons{}; ///< by Button; 0 where there is none
        std::array<WindowHook, 3> sbcMB;
        HWND pressed = nullptr; ///< the icon on which the mouse button went down
        HWND icon(Button button) const { return icons[static_cast<int>(button)]; }
        bool board() const { return !icon(Button::forward); }
    };
    /// A reply that was asked for and whose window has not been filled.
    struct Awaited {
        HWND from = nullptr; ///< the window that was read
        OriginalMessage original;
        std::wstring subject;
        bool board = false;
        bool always = false;       ///< quoted even where the options say not to
        DWORD since = 0;           ///< tick count
        std::vector<HWND> present; ///< AOL's documents at that time: none of them is the reply
        HWND window = nullptr;     ///< once it is there
    };

    const ReadWindow* find(HWND window) const;
    /// False when AOL did not answer, so that the child has to be looked at again.
    bool lookAt(HWND child);
    void hookFront();
    /// False when AOL did not take every hook.
    bool hook(ReadWindow& read);
    void happened(ReadWindow& read, Button button, HookMessage& message);
    bool remember(const ReadWindow& read, Button button, bool always = false);
    /// Gives the window to the reply that it answers, and fills it if it can be.
    bool GetReplyWnd(HWND child);
    /// False when the window is not built yet or AOL does not answer.
    bool fill(const Awaited& awaited);
    void fillAll();
    void tick();
    void keepTicking();

    std::vector<std::unique_ptr<ReadWindow>> read_;
    std::vector<Awaited> awaited_;
    std::vector<HWND> again_; ///< to be looked at again
    bool forwarded_ = false;
    bool unhooked_ = false; ///< a window in front still has to get its hooks
    Timer tmrReply;
};

} // namespace velora
