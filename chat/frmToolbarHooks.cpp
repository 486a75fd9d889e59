// What the toolbar hears from AOL: the frame's moves and end, chat rooms coming and going, and the
// text of the room that is read.
#include "chat/frmToolbar.h"

#include "base/text.h"
#include "base/trap.h"
#include "chat/ToolbarRoutes.h"
#include "chat/frmFade.h"
#include "chat/modChatSteps.h"
#include "core/modAOL.h"
#include "core/modChatDisplay.h"
#include "core/modFindChild.h"
#include "core/modMain.h"
#include "ui/MessageLoop.h"

#include <algorithm>

namespace velora {
namespace {

constexpr char kModule[] = "frmToolbar";
constexpr UINT kTimer1Ms = 500, kIMWatchMs = 1000;
/// AOL's notice that the text of a display changed.
constexpr UINT kTextChanged = 5143;
/// A connection that fails is tried again after a second, then ever more rarely.
constexpr DWORD kFirstConnectDelay = 1000, kLongestConnectDelay = 30000;
/// Rooms are looked for when AOL's windows change; this is for a change that nobody told.
constexpr DWORD kLookEvery = 10000;

bool isDue(DWORD when)
{
    return static_cast<LONG>(GetTickCount() - when) >= 0;
}

template <class Route, class... Values>
void call(const Route& route, Values... values)
{
    if (route)
        route(values...);
}

} // namespace

void frmToolbar::EnableSubclass()
{
    trap(kModule, [&] {
        AgentLink& link = aolLink();
        link.onMoved = [this] { sbcMenu_Moved(); };
        link.onMenu = [this](UINT id) { sbcMenu_Command(id); };
        link.onChild = [this](HWND document) { sbcRealMDI_ChildChanged(document); };
        link.onGone = [this](HWND window) { sbcMDI_ChildGone(window); };
        link.onAolEnded = [this] { aolEnded(); };
        connect();
        Timer1.start(kTimer1Ms, [this] { Timer1_Timer(); });
        tmrIMWatch.start(kIMWatchMs, [] { call(toolbarRoutes().watchIMs); });
        RefreshWelcome();
        watchRoom(true);
    });
}

void frmToolbar::DisableSubclass()
{
    Timer1.stop();
    tmrIMWatch.stop();
}

void frmToolbar::RemoveSubclasses()
{
    ChatScanOff();
    MailBar.detach();
    Replies.detach();
}

void frmToolbar::UnhookSubclasses()
{
    trap(kModule, [&] {
        DisableSubclass();
        RemoveSubclasses();
        AgentLink& link = aolLink();
        link.onMoved = nullptr;
        link.onChild = link.onGone = nullptr;
        link.onMenu = nullptr;
        link.onAolEnded = nullptr;
        link.disconnect();
    });
}

void frmToolbar::onDestroy()
{
    tmrDrag.stop();
    UnhookSubclasses();
}

void frmToolbar::connect()
{
    if (aolLink().connected()) {
        if (!aolMenus_)
            addAolMenus();
        return;
    }
    aolMenus_ = false;
    if (!isDue(nextConnect_))
        return;
    if (connectAol()) {
        connectDelay_ = 0;
        addAolMenus();
        return;
    }
    connectDelay_ = std::clamp(connectDelay_ * 2, kFirstConnectDelay, kLongestConnectDelay);
    nextConnect_ = GetTickCount() + connectDelay_;
}

void frmToolbar::Timer1_Timer()
{
    trap(kModule, [&] {
        if (!IsWindow(frame_)) {
            aolEnded();
            return;
        }
        connect();
        SetPanelPos();
        MailBar.follow();
        watchRoom(false);
    });
}

// While the room that is read is there, nothing is asked of AOL. Otherwise its windows are looked
// through when one of them came or went, and now and then in case nobody told.
void frmToolbar::watchRoom(bool changed)
{
    trap(kModule, [&] {
        roomsChanged_ |= changed;
        if (room_ && IsWindow(room_)) {
            keepReading();
            return;
        }
        if (!room_ && !roomsChanged_ && !isDue(nextLook_))
            return;
        roomsChanged_ = false;
        nextLook_ = GetTickCount() + kLookEvery;
        ChatScanOff();
        if (const HWND room = AOL_FindChat())
            ChatScanOn(room);
    });
}

void frmToolbar::keepReading()
{
    const bool hooked = sbcChat.window() || hookDisplay();
    hookSend();
    // Without a hook the timer is the notice; a look that AOL did not answer is made again.
    if (!hooked || Chat->missed())
        checkChat();
}

bool frmToolbar::hookDisplay()
{
    const HWND display = aolLink().connected() ? chatDisplay(room_) : nullptr;
    return display
           && sbcChat.attach(aolLink(), display,
                             {{kTextChanged, 0, ~WPARAM{0}, Delivery::postedAfter, true}});
}

void frmToolbar::ChatScanOn(HWND chatRoom)
{
    trap(kModule, [&] {
        if (chatRoom == room_)
            return;
        ChatScanOff();
        const HWND display = chatDisplay(chatRoom);
        if (!display) {
            roomsChanged_ = true; // AOL is still building the room
            return;
        }
        room_ = chatRoom;
        RefreshWelcome();
        Chat = std::make_unique<clsChat>();
        Chat->ChatMsg = [this](std::wstring& screenName, std::wstring& message) {
            Chat_ChatMsg(screenName, message);
        };
        sbcChat.WndMessageX = [this](HookMessage&) { checkChat(); };
        hookDisplay();
        hookSend();
        Chat->Init(chatDisplayReader(display));
        call(toolbarRoutes().roomEntered, windowCaption(chatRoom));
        frmFade::roomEntered(AppPath());
    });
}

void frmToolbar::ChatScanOff()
{
    trap(kModule, [&] {
        sbcChat.detach();
        Send.detach();
        Chat.reset();
        if (!std::exchange(room_, nullptr))
            return;
        call(toolbarRoutes().roomLeft);
        frmFade::roomLeft();
    });
}

void frmToolbar::checkChat()
{
    trap(kModule, [&] {
        if (!Chat || Chat->CheckChat() != 0)
            return;
        // What a line sets off may write to the room: its notices wait until all lines are through.
        const WindowHook::Pause pause(sbcChat);
        Chat->HandleChat();
    });
}

void frmToolbar::Chat_ChatMsg(std::wstring& screenName, std::wstring& message)
{
    trap(kModule, [&] {
        const bool own =
            !signedOn_.empty() && screenNameKey(screenName) == screenNameKey(signedOn_);
        routeChatLine({screenName, message, own});
    });
}

void frmToolbar::RefreshWelcome()
{
    std::wstring name = signedOnScreenName();
    if (name == signedOn_)
        return;
    signedOn_ = std::move(name);
    RefreshTray();
}

void frmToolbar::sbcMenu_Moved()
{
    SetPanelPos();
    MailBar.follow();
    call(toolbarRoutes().frameMoved);
}

void frmToolbar::sbcRealMDI_ChildChanged(HWND child)
{
    RefreshWelcome();
    watchRoom(true);
    Replies.childChanged(child);
    MailBar.documentChanged(child);
    call(toolbarRoutes().documentChanged, child);
}

void frmToolbar::sbcMDI_ChildGone(HWND child)
{
    if (child == frame_) {
        aolEnded();
        return;
    }
    RefreshWelcome();
    watchRoom(true);
    Replies.childGone(child);
    MailBar.documentGone(child);
    call(toolbarRoutes().documentGone, child);
}

void frmToolbar::aolEnded()
{
    if (ended_)
        return;
    ended_ = true;
    DisableSubclass();
    RemoveSubclasses();
    show(false);
    RefreshTray();
    // Not from here: the link that tells it is taken down by what follows.
    if (toolbarRoutes().aolEnded)
        postCall(toolbarRoutes().aolEnded);
}

} // namespace velora
