#pragma once
// What the parts of the IM manager share: its state, and the steps that touch a session, its tab
// and its hooks together. Not for other rooms: those use modIM_Manager.h.
#include "im_mail/IMEvents.h"
#include "im_mail/clsIMSession.h"
#include "im_mail/frmTabIM.h"
#include "im_mail/modIM_Manager.h"
#include "ui/Timer.h"

#include <functional>
#include <memory>
#include <vector>

namespace velora {

struct IMManager {
    std::vector<std::unique_ptr<clsIMSession>> sessions;
    clsIMs taken;
    Timer tmrTurn;
    OptionSubscription changes;
    bool scanning = false, scanPosted = false, ended = false, told = false;
    std::size_t nextPolled = 0;
};
IMManager& imManager();

inline WindowId idOf(HWND window)
{
    return reinterpret_cast<WindowId>(window);
}
inline HWND windowOf(WindowId id)
{
    return reinterpret_cast<HWND>(id);
}
/// The tabbed window; null while there is none.
inline frmTabIM* imForm()
{
    return Form::find<frmTabIM>();
}

/// The session as events tell it.
IMInfo imInfoOf(const clsIMSession& session);
/// Events are raised from the loop: their handlers may pump.
void raiseIMLater(std::function<void(const IMEvents&)> raise);
void raiseCurrentIM(bool byUser);
/// Hooks go to the current IM and to those with the latest changes.
void shareIMHooks();
/// The tabs say what the list of open IMs holds.
void showIMTabs();
/// Puts an IM over the page of the tabbed window, hides the others.
void putIMInFront(WindowId front);
/// The IM has left the tabbed window, whoever took it out. `focus`: the one that comes to the front
/// gets it.
void dropIMTab(clsIMSession& session, bool focus);
/// The user is in the tabbed window or in one of its IMs.
bool userInIMs();
/// The IM's window is gone: its tab and session go, its log ends.
void forgetIM(clsIMSession& session);

} // namespace velora
