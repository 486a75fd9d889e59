#include "im_mail/modIM_Manager.h"

#include "base/clsFileOp.h"
#include "base/text.h"
#include "base/trap.h"
#include "chat/ToolbarRoutes.h"
#include "core/MsgBoxEx.h"
#include "core/modAOL.h"
#include "core/modFindChild.h"
#include "hook/AgentLink.h"
#include "im_mail/clsIMSession.h"
#include "im_mail/frmTabIM.h"
#include "im_mail/modIMRules.h"
#include "im_mail/modIgnore.h"
#include "settings/Options.h"
#include "ui/MessageLoop.h"
#include "ui/Timer.h"

#include <algorithm>

namespace velora {
namespace {

constexpr char kModule[] = "modIM_Manager";
/// ms after which one turn of the scan takes no further IM, so that a flood leaves the window
/// quick.
constexpr DWORD kTurnLimit = 50;
/// ms until the next turn. A timer comes after all that the user does, other than a posted message.
constexpr UINT kTurnMs = 10;
/// Conversations that are hooked at a time; the others are looked at by the timer.
constexpr int kMostWatched = 12;
/// Conversations without a hook that one tick of the timer looks at.
constexpr std::size_t kPolledPerTick = 40;
/// ms in which a window that was asked to close should be gone.
constexpr DWORD kCloseLimit = 3000;
/// Where a window is taken first: on no screen, so that it does not flash.
constexpr int kOffScreen = -30000;

struct Manager {
    std::vector<std::unique_ptr<clsIMSession>> sessions;
    clsIMs taken;
    Timer tmrTurn;
    bool scanning = false, scanPosted = false, ended = false, told = false;
    std::size_t nextPolled = 0;
};

Manager& manager()
{
    static auto& one = *new Manager;
    return one;
}

WindowId idOf(HWND window)
{
    return reinterpret_cast<WindowId>(window);
}
HWND windowOf(WindowId id)
{
    return reinterpret_cast<HWND>(id);
}

frmTabIM* form()
{
    return Form::find<frmTabIM>();
}

IMInfo infoOf(const clsIMSession& session)
{
    IMInfo info = session.info();
    const frmTabIM* const window = form();
    info.lookingAt = window && manager().taken.SelectedIM() == session.id() && window->isInFront();
    return info;
}

/// Events are raised from the loop: their handlers may pump.
void raiseLater(std::function<void(const IMEvents&)> raise)
{
    postCall([raise = std::move(raise)] { raiseIMEvent(raise); });
}

void raiseCurrent(bool byUser)
{
    IMInfo info;
    if (const clsIMSession* session = imSession(windowOf(manager().taken.SelectedIM())))
        info = infoOf(*session);
    raiseLater([info, byUser](const IMEvents& events) {
        if (events.onCurrentIM)
            events.onCurrentIM(info, byUser);
    });
}

/// Hooks go to the current IM and to those with the latest changes.
void shareHooks()
{
    std::vector<clsIMSession*> order = imSessions();
    const WindowId current = manager().taken.SelectedIM();
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

void showTabs()
{
    if (frmTabIM* const window = form())
        window->ResizeTabs();
}

/// In the loop: the change may have been seen while AOL waits.
void onFresh(clsIMSession& session, const std::wstring& fresh)
{
    const HWND window = session.window();
    postCall([window, fresh] {
        clsIMSession* const known = imSession(window);
        if (!known)
            return;
        const IMInfo info = infoOf(*known);
        if (manager().taken.markUnread(info.window))
            showTabs();
        if (known->taken && !info.lookingAt)
            if (frmTabIM* const tabs = form())
                tabs->flashQuietly();
        if (!known->watched())
            shareHooks();
        raiseIMEvent([&](const IMEvents& events) {
            if (events.onNewText)
                events.onNewText(info, fresh);
        });
    });
}

std::wstring readList(const wchar_t* name)
{
    return clsFileOp::ReadTextFromFile(imProgramFolder() + L"\\data\\" + name);
}

/// The session of a window that has the caption of an IM; null when it is not ready, is ignored, or
/// AOL does not answer.
clsIMSession* meet(HWND window, const std::wstring& caption)
{
    const std::wstring name = senderFromCaption(caption);
    if (screenNameKey(name).empty() || !findIMParts(window))
        return nullptr;
    if (IgnoreIMs(name, false) || IgnoreIMs(name, true)) {
        postToAol(window, WM_CLOSE, 0, 0);
        return nullptr;
    }
    auto session = std::make_unique<clsIMSession>(window, name);
    if (!session->begin())
        return nullptr;
    session->onFresh = onFresh;
    clsIMSession& known = *session;
    manager().sessions.push_back(std::move(session));
    shareHooks();
    return &known;
}

void raiseNew(const clsIMSession& session)
{
    const IMInfo info = infoOf(session);
    raiseLater([info](const IMEvents& events) {
        if (events.onNewIM)
            events.onNewIM(info);
    });
}

/// False when it stays where it is: no work was done for it.
bool takeSession(clsIMSession& session)
{
    clsIMs& taken = manager().taken;
    // One that was asked to close is on its way; AOL may keep it, then it is taken again.
    if (session.closing && GetTickCount() - session.closing < kCloseLimit)
        return false;
    session.closing = 0;
    if (taken.Count() >= kMostTakenIMs || taken.CheckForDuplicate(session.screenName())
        || !Initialize())
        return false;
    frmTabIM& window = *form();
    RECT place = window.pageOnScreen();
    const bool first = taken.Count() == 0;
    OffsetRect(&place, kOffScreen - place.left, kOffScreen - place.top);
    if (!aolLink().takeIM(session.window(), place, window.hwnd()))
        return false;
    session.taken = true;
    session.placedVisible = -1;
    taken.Add(session.screenName(), session.id());
    if (!first)
        taken.markUnread(session.id());
    window.ResizeTabs();
    if (first) {
        window.showQuietly();
        selectIM(session.window(), false);
    }
    ResizeRICHCNTL();
    return true;
}

/// Puts an IM over the page of the tabbed window, hides the others.
void putInFront(WindowId front)
{
    frmTabIM* const window = form();
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

/// The IM has left the tabbed window, whoever took it out. `focus`: the one that comes to the front
/// gets it.
void dropTab(clsIMSession& session, bool focus)
{
    clsIMs& taken = manager().taken;
    const bool current = taken.SelectedIM() == session.id();
    session.taken = false;
    if (!taken.Remove(session.id()))
        return;
    frmTabIM* const window = form();
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
        raiseCurrent(false);
    }
}

bool inFront()
{
    const frmTabIM* const window = form();
    return window && window->isInFront();
}

void forget(clsIMSession& session)
{
    dropTab(session, inFront());
    session.finish();
    const IMInfo info = session.info();
    raiseLater([info](const IMEvents& events) {
        if (events.onIMClosed)
            events.onIMClosed(info);
    });
    std::erase_if(manager().sessions, [&](const auto& known) { return known.get() == &session; });
}

std::vector<HWND> documents()
{
    std::vector<HWND> found;
    const HWND mdi = AOLMDI();
    for (HWND child = mdi ? GetWindow(mdi, GW_CHILD) : nullptr; child;
         child = GetWindow(child, GW_HWNDNEXT))
        if (hasClass(child, L"AOL Child"))
            found.push_back(child);
    return found;
}

/// Somebody else gave it back: the agent, when the connection ended.
bool wasGivenBack(const clsIMSession& session)
{
    return session.taken && GetAncestor(session.window(), GA_PARENT) == AOLMDI();
}

void scanAsOptioned()
{
    if (manager().ended)
        return;
    if (opt::IM::TabsOn.get())
        IMsToPic();
    else
        ScanForIM();
}

} // namespace

clsIMs& openIMs()
{
    return manager().taken;
}

clsIMSession* imSession(HWND im)
{
    for (const auto& session : manager().sessions)
        if (im && session->window() == im)
            return session.get();
    return nullptr;
}

std::vector<clsIMSession*> imSessions()
{
    std::vector<clsIMSession*> all;
    for (const auto& session : manager().sessions)
        all.push_back(session.get());
    return all;
}

bool Initialize()
{
    return trap(
        kModule,
        [] {
            if (form())
                return true;
            if (AOLMDI()) {
                Form::open<frmTabIM>();
                return true;
            }
            if (!std::exchange(manager().told, true))
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

void IMsToPic()
{
    if (!FindImTab(true))
        manager().tmrTurn.startOnce(kTurnMs, scanAsOptioned);
}

void ScanForIM()
{
    if (!FindImTab(false))
        manager().tmrTurn.startOnce(kTurnMs, scanAsOptioned);
}

void scanIMsSoon()
{
    if (std::exchange(manager().scanPosted, true))
        return;
    postCall([] {
        manager().scanPosted = false;
        if (!manager().tmrTurn.active())
            scanAsOptioned();
    });
}

bool FindImTab(bool take)
{
    Manager& m = manager();
    if (m.scanning || m.ended)
        return true;
    m.scanning = true;
    struct Done {
        bool& flag;
        ~Done() { flag = false; }
    } const done{m.scanning};
    return trap(
        kModule,
        [&] {
            // Without work done there is no further turn: a window that cannot be taken would make
            // them go on for ever.
            const DWORD start = GetTickCount();
            bool worked = false;
            for (const HWND document : documents()) {
                if (worked && GetTickCount() - start > kTurnLimit)
                    return false;
                clsIMSession* session = imSession(document);
                if (!session) {
                    const std::wstring caption = windowCaption(document);
                    if (!isImCaption(caption, aol().edition, aol().version)
                        || m.sessions.size() >= kMostIMs)
                        continue;
                    if (!aolLink().connected() || aolLink().busy())
                        return true; // the timer comes again
                    session = meet(document, caption);
                    if (!session)
                        continue;
                    worked = true;
                    if (take)
                        takeSession(*session);
                    raiseNew(*session);
                } else if (take && !session->taken) {
                    worked |= takeSession(*session);
                }
            }
            return true;
        },
        true);
}

bool IgnoreIMs(std::wstring_view screenName, bool temporary)
{
    return trap(
        kModule,
        [&] {
            return isIgnored(readList(temporary ? L"ignoretemp.dat" : L"ignore.dat"), screenName,
                             dateSerial(now()));
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
    routes.imSwitch = [](bool on) {
        if (imRoutes().imSwitch)
            imRoutes().imSwitch(on);
    };
    routes.ignoreMember = [](const std::wstring& screenName) {
        if (imRoutes().addToIgnore)
            imRoutes().addToIgnore(screenName);
    };
}

void imDocumentChanged(HWND document)
{
    trap(kModule, [&] {
        clsIMSession* const session = imSession(document);
        if (!session || !session->taken)
            scanIMsSoon();
        if (!session)
            return;
        if (session->findParts()) {
            shareHooks();
            if (frmTabIM* const window = form())
                window->currentChanged(false);
        }
        session->refresh();
    });
}

void imDocumentGone(HWND document)
{
    trap(kModule, [&] {
        if (clsIMSession* const session = imSession(document))
            forget(*session);
    });
}

void resetims()
{
    trap(kModule, [] {
        for (clsIMSession* const session : imSessions()) {
            if (!IsWindow(session->window()))
                forget(*session);
            else if (wasGivenBack(*session))
                dropTab(*session, false);
        }
    });
}

void watchIMs()
{
    trap(kModule, [] {
        Manager& m = manager();
        if (m.ended)
            return;
        resetims();
        const auto sessions = imSessions();
        for (std::size_t i = 0; i < std::min(sessions.size(), kPolledPerTick); ++i) {
            clsIMSession& session = *sessions[m.nextPolled++ % sessions.size()];
            if (aolLink().busy())
                break;
            session.refresh();
        }
        if (frmTabIM* const window = form())
            window->keepAbove();
        shareHooks();
        scanIMsSoon();
    });
}

void imFrameMoved()
{
    trap(kModule, [] {
        if (frmTabIM* const window = form())
            window->keepAbove();
    });
}

void setTabsOn(bool on)
{
    trap(kModule, [&] {
        opt::IM::TabsOn.set(on);
        if (on)
            scanIMsSoon();
        else
            Tab_UnhookIMs(false);
    });
}

void showIMs()
{
    trap(kModule, [] {
        if (!opt::IM::TabsOn.get())
            setTabsOn(true);
        if (!Initialize() || !form()->mayStack())
            return;
        form()->bringToFront();
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
                dropTab(*session, false);
        }
    });
}

void endIMs()
{
    trap(kModule, [] {
        Manager& m = manager();
        if (std::exchange(m.ended, true))
            return;
        m.tmrTurn.stop();
        for (clsIMSession* const session : imSessions())
            session->finish();
        Tab_UnhookIMs(opt::IM::CloseIMsOnExit.get());
        if (frmTabIM* const window = form()) {
            SaveIMPos();
            window->close(CloseReason::unload);
        }
        m.sessions.clear();
        m.taken = {};
    });
}

void startIMs()
{
    manager().ended = manager().told = false;
    scanIMsSoon();
}

void WipeNew(HWND im)
{
    trap(kModule, [&] {
        manager().taken.markRead(idOf(im));
        showTabs();
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
            const bool focus = inFront();
            // The next one comes first, so that the focus is never on the way to another window.
            if (session->taken && manager().taken.SelectedIM() == session->id())
                putInFront(manager().taken.successor(session->id()));
            const bool asked =
                session->taken ? aolLink().closeIM(im) : postToAol(im, WM_CLOSE, 0, 0);
            if (asked) {
                session->closing = GetTickCount() | 1;
                dropTab(*session, focus);
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
        clsIMs& taken = manager().taken;
        if (!taken.indexOf(idOf(im)))
            return;
        taken.SetSelectedIM(idOf(im));
        if (frmTabIM* const window = form()) {
            window->ResizeTabs();
            ResizeRICHCNTL();
            window->currentChanged(byUser);
        }
        shareHooks();
        raiseCurrent(byUser);
    });
}

void focusIM(HWND im)
{
    trap(kModule, [&] {
        const clsIMSession* const session = imSession(im);
        if (session && session->taken) {
            if (form()->mayStack())
                form()->bringToFront();
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
            clsIMSession* const session = imSession(windowOf(manager().taken.SelectedIM()));
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
        if (frmTabIM* const window = form())
            window->DoResize();
    });
}

void ShowButtons_AU()
{
    Set_IM_Tabs();
}

void ResizeRICHCNTL()
{
    trap(kModule, [] { putInFront(manager().taken.SelectedIM()); });
}

void SaveIMPos()
{
    trap(kModule, [] {
        if (const frmTabIM* const window = form())
            window->savePlace();
    });
}

} // namespace velora
