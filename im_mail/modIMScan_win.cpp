// Finding AOL's IM windows, taking them into the tabbed window, and following what becomes of them.
#include "base/clsFileOp.h"
#include "base/text.h"
#include "base/trap.h"
#include "core/modAOL.h"
#include "core/modFindChild.h"
#include "hook/AgentLink.h"
#include "im_mail/IMManager.h"
#include "im_mail/modIMRules.h"
#include "im_mail/modIgnore.h"
#include "settings/Options.h"
#include "ui/MessageLoop.h"

#include <algorithm>

namespace velora {
namespace {

constexpr char kModule[] = "modIMScan";
/// ms after which one turn of the scan takes no further IM, so that a flood leaves the window
/// quick.
constexpr DWORD kTurnLimit = 50;
/// ms until the next turn. A timer comes after all that the user does, other than a posted message.
constexpr UINT kTurnMs = 10;
/// Conversations without a hook that one tick of the timer looks at.
constexpr std::size_t kPolledPerTick = 40;
/// ms in which a window that was asked to close should be gone.
constexpr DWORD kCloseLimit = 3000;
/// Where a window is taken first: on no screen, so that it does not flash.
constexpr int kOffScreen = -30000;

/// In the loop: the change may have been seen while AOL waits.
void onFresh(clsIMSession& session, const std::wstring& fresh)
{
    const HWND window = session.window();
    postCall([window, fresh] {
        clsIMSession* const known = imSession(window);
        if (!known)
            return;
        const IMInfo info = imInfoOf(*known);
        if (imManager().taken.markUnread(info.window))
            showIMTabs();
        if (known->taken && !info.lookingAt)
            if (frmTabIM* const tabs = imForm())
                tabs->flashQuietly();
        if (!known->watched())
            shareIMHooks();
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
    imManager().sessions.push_back(std::move(session));
    shareIMHooks();
    return &known;
}

void raiseNew(const clsIMSession& session)
{
    const IMInfo info = imInfoOf(session);
    raiseIMLater([info](const IMEvents& events) {
        if (events.onNewIM)
            events.onNewIM(info);
    });
}

/// False when it stays where it is: no work was done for it.
bool takeSession(clsIMSession& session)
{
    clsIMs& taken = imManager().taken;
    // One that was asked to close is on its way; AOL may keep it, then it is taken again.
    if (session.closing && GetTickCount() - session.closing < kCloseLimit)
        return false;
    session.closing = 0;
    if (taken.Count() >= kMostTakenIMs || taken.CheckForDuplicate(session.screenName())
        || !Initialize())
        return false;
    frmTabIM& window = *imForm();
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
    if (imManager().ended)
        return;
    if (opt::IM::TabsOn.get())
        IMsToPic();
    else
        ScanForIM();
}

} // namespace

void IMsToPic()
{
    if (!FindImTab(true))
        imManager().tmrTurn.startOnce(kTurnMs, scanAsOptioned);
}

void ScanForIM()
{
    if (!FindImTab(false))
        imManager().tmrTurn.startOnce(kTurnMs, scanAsOptioned);
}

void scanIMsSoon()
{
    if (std::exchange(imManager().scanPosted, true))
        return;
    postCall([] {
        imManager().scanPosted = false;
        if (!imManager().tmrTurn.active())
            scanAsOptioned();
    });
}

bool FindImTab(bool take)
{
    IMManager& m = imManager();
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

void imDocumentChanged(HWND document)
{
    trap(kModule, [&] {
        clsIMSession* const session = imSession(document);
        if (!session || !session->taken)
            scanIMsSoon();
        if (!session)
            return;
        if (session->findParts()) {
            shareIMHooks();
            if (frmTabIM* const window = imForm())
                window->currentChanged(false);
        }
        session->refresh();
    });
}

void imDocumentGone(HWND document)
{
    trap(kModule, [&] {
        if (clsIMSession* const session = imSession(document))
            forgetIM(*session);
    });
}

void resetims()
{
    trap(kModule, [] {
        for (clsIMSession* const session : imSessions()) {
            if (!IsWindow(session->window()))
                forgetIM(*session);
            else if (wasGivenBack(*session))
                dropIMTab(*session, false);
        }
    });
}

void watchIMs()
{
    trap(kModule, [] {
        IMManager& m = imManager();
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
        if (frmTabIM* const window = imForm())
            window->keepAbove();
        shareIMHooks();
        scanIMsSoon();
    });
}

} // namespace velora
