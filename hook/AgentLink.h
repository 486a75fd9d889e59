#pragma once
// The program's end of the line into AOL: one object for the AOL process that is being watched.
// Everything the program has to do inside AOL goes through it.
#include "hook/EditLines.h"
#include "hook/aolSend.h"

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

namespace velora {

/// How a popup of AOL's menus is known: by its caption in the menu bar ("&File"), or by an item
/// that it holds. Captions are compared without "&", what follows a tab, and case.
struct PopupLocator {
    std::wstring caption;
    UINT holdsId = 0;
    std::wstring holdsCaption;
};

/// What the agent has counted since the connection was made.
struct AgentCounters {
    unsigned questions = 0;  ///< verdicts asked for
    unsigned timeouts = 0;   ///< of them, not answered in time
    unsigned lostEvents = 0; ///< posted events that found the queue full
};

class WindowHook;
class AgentImpl;

/// All members are for the user-interface thread. Commands wait for AOL at most `timeoutMs` and
/// then answer "absent" or false; until AOL shows a sign of life again, further commands fail at
/// once (busy()). They may be called inside a hook's event. A window that is none of AOL's thread
/// is refused.
class AgentLink {
public:
    AgentLink();
    ~AgentLink(); ///< disconnects
    AgentLink(const AgentLink&) = delete;
    AgentLink& operator=(const AgentLink&) = delete;

    /// Loads the agent into the thread of AOL's frame (at most 3 s). `dll`: full path of
    /// dwspy36.dll; empty: the one beside the program, else the one in the system folder. False
    /// when it failed; lastError() says why. Connecting again to the same frame is a success that
    /// does nothing.
    bool connect(HWND frame, std::wstring_view dll = {});
    /// Gives AOL back all that was taken (hooks, menu items, held windows) and lets go.
    void disconnect();
    /// False again when AOL has ended, or another program has taken the agent over.
    bool connected() const;
    /// The reason for the last failed connect as a system error number (5: AOL runs with more
    /// rights than the program).
    DWORD lastError() const;
    /// AOL did not answer in time and has not been heard since.
    bool busy() const;
    /// Signalled when AOL ends (SYNCHRONIZE right); 0 when not connected.
    /// Asks AOL for a sign of life and waits for it that long.
    bool answers(DWORD timeoutMs = kAolTimerTimeout);
    HANDLE aolProcess() const;
    HWND frame() const;
    AgentCounters counters() const;

    // Reading. One message to AOL each, whatever the length.
    /// Display lines from number `first` (from 0) on, at most `most` of them.
    std::optional<EditLines> readLines(HWND edit, int first = 0, int most = 1 << 20,
                                       DWORD timeoutMs = kAolTimeout);
    /// The last `chars` characters of the text (a paragraph's end counts as one), each paragraph's
    /// end as CR LF; soft wraps do not show.
    std::optional<std::wstring> readTail(HWND edit, int chars, DWORD timeoutMs = kAolTimeout);
    std::optional<std::wstring> readText(HWND edit, DWORD timeoutMs = kAolTimeout);

    std::optional<std::wstring> selectionText(HWND edit);
    bool replaceSelection(HWND edit, std::wstring_view text);
    bool select(HWND edit, int from, int to);
    bool setText(HWND edit, std::wstring_view text);
    bool setFocus(HWND window);
    /// Puts a line into a field and confirms it with Enter, the field's focus on it and its text
    /// unseen; no hook is asked about that Enter. False when AOL does not take the text or is busy.
    bool sendLine(HWND edit, std::wstring_view text);

    // Menus.
    /// Identifier of the item of AOL's menus with this caption; absent when there is none, or AOL
    /// is busy.
    std::optional<UINT> menuFind(std::wstring_view caption);
    /// An item of ours, shown in AOL's popup from the next time it opens. `id` 1 to 0xEFFF, none of
    /// AOL's; `position` from 0, -1 for the end; `flags` as for InsertMenu. An item with the same
    /// id is replaced. Choosing it raises onMenu; AOL never sees it.
    bool addMenuItem(const PopupLocator& popup, int position, UINT id, std::wstring_view caption,
                     UINT flags = 0);
    void removeMenuItems();

    // Instant message windows. A held window lives in a holder: a borderless window of AOL's thread
    // that lies over `place` (screen co-ordinates) and belongs to `owner`, a window of ours. It
    // goes back to AOL when it is given, when the owner is destroyed and when the program ends.
    /// The holder; 0 when it failed.
    HWND takeIM(HWND im, const RECT& place, HWND owner);
    /// Shows the holder there and hides the others of its owner. Whoever had the focus in one of
    /// them has it in this one.
    bool showIM(HWND im, const RECT& place);
    /// Moves, shows and hides the holder without waiting for AOL.
    void placeIM(HWND im, const RECT& place, bool visible);
    bool giveIM(HWND im);
    /// Gives it back unseen and asks it to close.
    bool closeIM(HWND im);

    // Raised in the program's message loop, never while AOL waits. Exceptions are trapped.
    std::function<void(HWND)> onChild; ///< an MDI child was made or changed; each at least once
    std::function<void(HWND)> onGone;  ///< an MDI child, a hooked window or the frame is destroyed
    std::function<void()> onMoved;     ///< the frame moved, changed size, activation or visibility
    std::function<void(UINT)> onMenu;  ///< an item of ours was chosen
    std::function<void()> onAolEnded;

    /// The connected link into this window's thread, if any.
    static AgentLink* forWindow(HWND window);

private:
    friend class WindowHook;
    friend class AgentImpl;
    friend std::optional<LRESULT> sendToAol(HWND, UINT, WPARAM, LPARAM, DWORD);
    void noteBusy();
    std::shared_ptr<AgentImpl> impl_;
};

/// One line of an edit control of AOL (from 1), read inside AOL; empty when it cannot be had.
std::wstring dwXGetEditLine(HWND edit, int line);

} // namespace velora
