#pragma once
// What the IM manager tells the rooms and windows around it (alerts, sounds, auto-answer), and what
// its window asks of them. Pure.
//
// Events come from the message loop, one after the other and never while AOL waits: a handler may
// show a box, play a sound or answer.
#include "im_mail/clsIMs.h"

#include <functional>
#include <memory>
#include <string>

namespace velora {

/// An open IM as the events tell it.
struct IMInfo {
    WindowId window = 0;     ///< AOL's window; it may be gone by the time the event is raised
    std::wstring screenName; ///< as its caption has it
    std::wstring caption;    ///< at the time of the event
    std::wstring text;       ///< the whole conversation, CR LF between lines
    bool internet = false;   ///< its sender writes from the internet
    bool lookingAt = false;  ///< its tab is the current one and our window is in front
};

struct IMEvents {
    /// An IM is there for the first time, and its window is built. Also without tabs, and for those
    /// that are open when Velora starts.
    std::function<void(const IMInfo&)> onNewIM;
    /// The conversation has got this text since the last event; own lines are told too.
    std::function<void(const IMInfo&, const std::wstring& fresh)> onNewText;
    /// Its window is closed, its log is written. `text` is the last that was seen.
    std::function<void(const IMInfo&)> onIMClosed;
    /// Another tab is the current one; window 0 when none is left. `byUser`: a tab was clicked or a
    /// key pressed (buddy notes are shown then).
    std::function<void(const IMInfo&, bool byUser)> onCurrentIM;
};

/// Raises the events at `events` until the subscription is destroyed.
class [[nodiscard]] IMSubscription {
public:
    IMSubscription() = default;
    explicit IMSubscription(IMEvents events);

private:
    std::shared_ptr<IMEvents> events_;
};
inline IMSubscription observeIMs(IMEvents events)
{
    return IMSubscription(std::move(events));
}

/// Calls `raise` with each subscriber's table; the manager's side. What a subscriber throws is
/// reported and does not keep the event from the others.
void raiseIMEvent(const std::function<void(const IMEvents&)>& raise);

/// What the tabbed window offers beyond the manager itself. An empty entry means that nobody does
/// it: its button or menu item is left out.
struct IMRoutes {
    /// The auto-answer button (cmdAA): opens its window or switches it.
    std::function<void()> autoAnswer;
    /// Whether the auto-answer is on now (the button stays pressed in).
    std::function<bool()> autoAnswerOn;
    /// Asks for how many days and ignores the sender's IMs (mnuIgnore).
    std::function<void(const std::wstring& screenName)> addToIgnore;
    /// Opens the list of those who are ignored.
    std::function<void()> ignoredNames;
    /// Edits the buddy note of a screen name.
    std::function<void(const std::wstring& screenName)> editNotes;
    /// Switches AOL's IMs off and on.
    std::function<void(bool on)> imSwitch;
    /// Opens the IM page of the preferences.
    std::function<void()> showOptions;
};

/// The program's one table. Fill it at start-up and call Set_IM_Tabs (modIM_Manager.h) after a
/// later change.
IMRoutes& imRoutes();

} // namespace velora
