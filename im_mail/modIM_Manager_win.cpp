#include "im_mail/modIM_Manager.h"

#include "base/text.h"
#include "base/trap.h"
#include "chat/ToolbarRoutes.h"
#include "core/MsgBoxEx.h"
#include "core/modAOL.h"
#include "core/modFindChild.h"
#include "hook/AgentLink.h"
#include "im_mail/IMManager.h"
#include "im_mail/modIMRules.h"
#include "settings/Options.h"
#include "ui/MessageLoop.h"

#include <algorithm>

namespace velora {
namespace {

constexpr char kModule[] = "modIM_Manager";
/// Conversations that are hooked at a time; the others are looked at by the timer.
constexpr int kMostWatched = 12;

} // namespace

IMManager& imManager()
{
    static auto& one = *new IMManager;
    return one;
}

IMInfo imInfoOf(const clsIMSession& session)
{
    IMInfo info = session.info();
    const frmTabIM* const window = imForm();
    info.lookingAt =
        window && imManager().taken.SelectedIM() == session.id() && window->isInFront();
    return info;
}

void raiseIMLater(std::function<void(const IMEvents&)> raise)
{
    postCall([raise = std::move(raise)] { raiseIMEvent(raise); });
}

void raiseCurrentIM(bool byUser)
{
    IMInfo info;
    if (const clsIMSession* session = imSession(windowOf(imManager().taken.SelectedIM())))
        info = imInfoOf(*session);
    raiseIMLater([info, byUser](const IMEvents& events) {
        if (events.onCurrentIM)
            events.onCurrentIM(info, byUser);
    });
}

void shareIMHooks()
{
    std::vector<clsIMSession*> order = imSessions();
    const WindowId current = imManager().taken.SelectedIM();
    std::stable_sort(order.begin(), order.end(), [&](const auto* a, const auto* b) {
        if ((a->id() == current) != (b->id() == current))
            return a->id() == current;
        return static_cast<LONG>(a->lastChange - b->lastChange) > 0;
    });
    for (std::size_t i = kMostWatched; i < order.size(); ++i)
        order[i]->watch(false);
    for (std::size_t i = 0; i < order.size() && i < kMostWatched; ++i)
        order[i]->watch(true);
}

void showIMTabs()
{
    if (frmTabIM* const window = imForm())
        window->ResizeTabs();
}

void putIMInFront(WindowId front)
{
    frmTabIM* const window = imForm();
    if (!window)
        return;
    const bool shown = window->showsPage();
    const RECT page = window->pageOnScreen();
    const auto sessions = imSessions();
    const auto wanted = [&](const clsIMSession& s) { return int{shown && s.id() == front}; };
    for (clsIMSession* const session : sessions)
        if (session->taken && wanted(*session) && session->placedVisible != 1
            && aolLink().showIM(session->window(), page)) {
            for (clsIMSession* const other : sessions)
                other->placedVisible = other == session;
            session->placedAt = page;
        }
    for (clsIMSession* const session : sessions) {
        const int visible = wanted(*session);
        // The size of those behind follows when they come to the front.
        if (!session->taken
            || (session->placedVisible == visible
                && (!visible || EqualRect(&session->placedAt, &page))))
            continue;
        session->placedAt = page;
        session->placedVisible = visible;
        aolLink().placeIM(session->window(), page, visible != 0);
    }
}

void dropIMTab(clsIMSession& session, bool focus)
{
    clsIMs& taken = imManager().taken;
    const bool current = taken.SelectedIM() == session.id();
    session.taken = false;
    if (!taken.Remove(session.id()))
        return;
    frmTabIM* const window = imForm();
    if (!window)
        return;
    window->ResizeTabs();
    if (taken.Count() == 0) {
        SaveIMPos();
        window->hideQuietly();
    }
    ResizeRICHCNTL();
    if (current) {
        window->currentChanged(focus);
        raiseCurrentIM(false);
    }
}

bool userInIMs()
{
    const frmTabIM* const window = imForm();
    return window && window->isInFront();
}

void forgetIM(clsIMSession& session)
{
    dropIMTab(session, userInIMs());
    session.finish();
    const IMInfo info = session.info();
    raiseIMLater([info](const IMEvents& events) {
        if (events.onIMClosed)
            events.onIMClosed(info);
    });
    std::erase_if(imManager().sessions, [&](const auto& known) { return known.get() == &session; });
}

clsIMs& openIMs()
{
    return imManager().taken;
}

clsIMSession* imSession(HWND im)
{
    for (const auto& session : imManager().sessions)
        if (im && session->window() == im)
            return session.get();
    return nullptr;
}

std::vector<clsIMSession*> imSessions()
{
    std::vector<clsIMSession*> all;
    for (const auto& session : imManager().sessions)
        all.push_back(session.get());
    return all;
}

bool Initialize()
{
    return trap(
        kModule,
        [] {
            if (imForm())
                return true;
            if (AOLMDI()) {
                Form::open<frmTabIM>();
                return true;
            }
            if (!std::exchange(imManager().told, true))
                postCall([] {
                    MsgBoxEx(L"~B~CRUnable to initialize the IM Manager!~B~CN~N ~NThis is "
                             L"typically caused by a corrupted AOL File menu.  Please end and "
                             L"restart the AOL software to resolve this issue.",
                             kMsgExclamation);
                });
            return false;
        },
        false);
}

void routeIMs(ToolbarRoutes& routes)
{
    routes.documentChanged = [](void* window) { imDocumentChanged(static_cast<HWND>(window)); };
    routes.documentGone = [](void* window) { imDocumentGone(static_cast<HWND>(window)); };
    routes.frameMoved = imFrameMoved;
    routes.watchIMs = watchIMs;
    routes.openIMs = showIMs;
    routes.takeIMs = setTabsOn;
    routes.imSwitch = [](bool on) {
        if (imRoutes().imSwitch)
            imRoutes().imSwitch(on);
    };
    routes.ignoreMember = [](const std::wstring& screenName) {
        if (imRoutes().addToIgnore)
            imRoutes().addToIgnore(screenName);
    };
}

void imFrameMoved()
{
    trap(kModule, [] {
        if (frmTabIM* const window = imForm())
            window->keepAbove();
    });
}

void setTabsOn(bool on)
{
    trap(kModule, [&] { opt::IM::TabsOn.set(on); });
}

void showIMs()
{
    trap(kModule, [] {
        if (!opt::IM::TabsOn.get())
            setTabsOn(true);
        if (!Initialize() || !imForm()->mayStack())
            return;
        imForm()->bringToFront();
        ResizeRICHCNTL();
        IMsToPic();
    });
}

void Tab_UnhookIMs(bool close)
{
    trap(kModule, [&] {
        for (clsIMSession* const session : imSessions()) {
            if (!session->taken)
                continue;
            if (close)
                session->finish();
            const bool done =
                close ? aolLink().closeIM(session->window()) : aolLink().giveIM(session->window());
            if (done)
                dropIMTab(*session, false);
        }
    });
}

void endIMs()
{
    trap(kModule, [] {
        IMManager& m = imManager();
        if (std::exchange(m.ended, true))
            return;
        m.tmrTurn.stop();
        m.changes = {};
        for (clsIMSession* const session : imSessions())
            session->finish();
        Tab_UnhookIMs(opt::IM::CloseIMsOnExit.get());
        if (frmTabIM* const window = imForm()) {
            SaveIMPos();
            window->close(CloseReason::unload);
        }
        m.sessions.clear();
        m.taken = {};
    });
}

void startIMs()
{
    IMManager& m = imManager();
    m.ended = m.told = false;
    m.changes = onOptionChanged([](OptionId option) {
        if (option != opt::IM::TabsOn.id())
            return;
        if (opt::IM::TabsOn.get())
            scanIMsSoon();
        else
            Tab_UnhookIMs(false);
    });
    scanIMsSoon();
}

void WipeNew(HWND im)
{
    trap(kModule, [&] {
        imManager().taken.markRead(idOf(im));
        showIMTabs();
    });
}

bool CloseUNT(HWND im)
{
    return trap(
        kModule,
        [&] {
            clsIMSession* const session = imSession(im);
            if (!session)
                return false;
            session->refresh();
            const bool focus = userInIMs();
            // The next one comes first, so that the focus is never on the way to another window.
            if (session->taken && imManager().taken.SelectedIM() == session->id())
                putIMInFront(imManager().taken.successor(session->id()));
            const bool asked =
                session->taken ? aolLink().closeIM(im) : postToAol(im, WM_CLOSE, 0, 0);
            if (asked) {
                session->closing = GetTickCount() | 1;
                dropIMTab(*session, focus);
            } else {
                ResizeRICHCNTL();
            }
            return asked; // its log ends when its window does
        },
        false);
}

void selectIM(HWND im, bool byUser)
{
    trap(kModule, [&] {
        clsIMs& taken = imManager().taken;
        if (!taken.indexOf(idOf(im)))
            return;
        taken.SetSelectedIM(idOf(im));
        if (frmTabIM* const window = imForm()) {
            window->ResizeTabs();
            ResizeRICHCNTL();
            window->currentChanged(byUser);
        }
        shareIMHooks();
        raiseCurrentIM(byUser);
    });
}

void focusIM(HWND im)
{
    trap(kModule, [&] {
        const clsIMSession* const session = imSession(im);
        if (session && session->taken) {
            if (imForm()->mayStack())
                imForm()->bringToFront();
            selectIM(im, true);
        } else if (session && IsWindow(im)) {
            const HWND frame = AOLWindow();
            if (IsIconic(frame))
                ShowWindowAsync(frame, SW_RESTORE);
            SetForegroundWindow(frame);
            sendToAol(AOLMDI(), WM_MDIACTIVATE, reinterpret_cast<WPARAM>(im), 0);
        }
    });
}

bool sendReply()
{
    return trap(
        kModule,
        [] {
            clsIMSession* const session = imSession(windowOf(imManager().taken.SelectedIM()));
            if (!session)
                return false;
            // A reply part that is closed is opened; there is nothing to send yet.
            session->findParts();
            if (const HWND respond = session->parts().respond) {
                clickAolIcon(respond);
                return false;
            }
            const HWND reply = session->parts().reply;
            const auto text = aolLink().readText(reply);
            if (!text || trimView(*text).empty())
                return false;
            if (const auto note = logNoteOf(*text))
                return aolLink().setText(reply, L"") && session->addNote(*note);
            const int index = sendIconIndex(aol().edition, aol().version);
            return clickAolIcon(FindChildByClass(session->window(), L"_AOL_Icon", index + 1));
        },
        false);
}

void Set_IM_Tabs()
{
    trap(kModule, [] {
        if (frmTabIM* const window = imForm())
            window->DoResize();
    });
}

void ShowButtons_AU()
{
    Set_IM_Tabs();
}

void ResizeRICHCNTL()
{
    trap(kModule, [] { putIMInFront(imManager().taken.SelectedIM()); });
}

void SaveIMPos()
{
    trap(kModule, [] {
        if (const frmTabIM* const window = imForm())
            window->savePlace();
    });
}

} // namespace velora
