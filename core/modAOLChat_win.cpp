// The chat room: finding it, and putting text into it.
#include "base/trap.h"
#include "core/MsgBoxEx.h"
#include "core/modAOL.h"
#include "core/modAOLRules.h"
#include "core/modCaptions.h"
#include "core/modFindChild.h"
#include "hook/AgentLink.h"
#include "ui/MessageLoop.h"

#include <utility>

namespace velora {

namespace {

constexpr char kModule[] = "modAOL";
constexpr DWORD kPauseBeforeEnter = 500;
constexpr int kMostChildren = 200;

int g_ownEnters = 0;

enum class Look { room, other, noAnswer };

/// The texts of the "_AOL_Static" children are asked for only where the rest fits, and only those
/// that the rule looks at: a timer may call this for every document that is open.
Look lookAt(HWND window)
{
    const std::wstring className = windowClass(window);
    std::vector<ControlInfo> children;
    std::vector<HWND> statics;
    HWND child = GetWindow(window, GW_CHILD);
    for (int i = 0; child && i < kMostChildren; ++i, child = GetWindow(child, GW_HWNDNEXT)) {
        children.push_back({windowClass(child), windowCaption(child)});
        if (hasClass(child, L"_AOL_Static") && statics.size() < kMostStatics)
            statics.push_back(child);
    }
    if (isChatRoom(className, children))
        return Look::room;
    // Would a head count make it one? Then the statics are asked: not all show their text outside.
    std::vector<ControlInfo> counted = children;
    counted.insert(counted.begin(), {L"_AOL_Static", L"1"});
    if (!isChatRoom(className, counted))
        return Look::other;
    for (const HWND label : statics) {
        const auto text = aolText(label, kAolTimerTimeout);
        if (!text)
            return Look::noAnswer;
        if (isHeadCount(*text))
            return Look::room;
    }
    return Look::other;
}

bool fromVersion7(int version)
{
    return chatDisplayClass(version) != L"RICHCNTL";
}

/// Whether the window has the focus of its thread. Sends no message.
bool hasFocus(HWND window)
{
    GUITHREADINFO info{};
    info.cbSize = sizeof info;
    return GetGUIThreadInfo(GetWindowThreadProcessId(window, nullptr), &info)
           && info.hwndFocus == window;
}

struct OwnEnter {
    OwnEnter() { ++g_ownEnters; }
    ~OwnEnter() { --g_ownEnters; }
};

} // namespace

HWND AOL_FindChat()
{
    return trap(
        kModule,
        []() -> HWND {
            HWND& room = aol().chatRoom;
            const HWND mdi = AOLMDI();
            if (room && IsWindow(room) && mdi && GetParent(room) == mdi)
                return room;
            room = nullptr;
            HWND child = mdi ? GetWindow(mdi, GW_CHILD) : nullptr;
            for (int i = 0; child && i < kMostChildren;
                 ++i, child = GetWindow(child, GW_HWNDNEXT)) {
                const Look look = lookAt(child);
                if (look == Look::noAnswer)
                    break;
                if (look == Look::room) {
                    room = child;
                    break;
                }
            }
            return room;
        },
        nullptr);
}

HWND chatDisplay(HWND room)
{
    const int version = aol().version;
    if (!isSupportedVersion(version) || fromVersion7(version))
        if (const HWND display = FindChildByClass(room, L"RICHCNTLREADONLY"))
            return display;
    return FindChildByClass(room, L"RICHCNTL");
}

HWND chatInput(HWND room)
{
    return FindNextByClass(chatDisplay(room), L"RICHCNTL");
}

HWND chatSendIcon(HWND room)
{
    return FindNextByClass(chatInput(room), L"_AOL_Icon");
}

bool ownEnter()
{
    return g_ownEnters > 0;
}

bool pressEnter(HWND field)
{
    return trap(
        kModule,
        [&] {
            if (!isAolWindow(field))
                return false;
            const OwnEnter guard;
            return sendToAol(field, WM_CHAR, VK_RETURN, 0).has_value();
        },
        false);
}

bool TextToChat(std::wstring_view text, int mode)
{
    return trap(
        kModule,
        [&] {
            const HWND room = AOL_FindChat();
            if (!room) {
                MsgBoxEx(L"~B~CRNo AOL Chat Room visible!~B~CN~N ~NYou must be in a chat room to "
                         L"use this feature!",
                         kMsgExclamation);
                return false;
            }
            const HWND input = chatInput(room);
            if (!isAolWindow(input))
                return false;
            // Only code inside AOL can move AOL's focus; the text arrives without it, too.
            if (aolLink().connected() && !hasFocus(input))
                aolLink().setFocus(input);
            if (!setAolText(input, text))
                return false;
            if (mode == kPutOnly)
                return true;
            if (mode == kSendAfterPause)
                pause(kPauseBeforeEnter);
            return pressEnter(input);
        },
        false);
}

bool AOL_OpenFindWindow()
{
    return trap(
        kModule,
        [] {
            const HWND icon = FindChildByClass(AOLToolbar(), L"_AOL_Icon");
            return icon && isAolWindow(icon)
                   && SendNotifyMessageW(icon, WM_CHAR, findWindowLetter(aol().edition), 0);
        },
        false);
}

} // namespace velora
