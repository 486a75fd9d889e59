// Finding AOL's windows, and the record of what is known of AOL.
#include "core/modAOL.h"

#include "base/text.h"
#include "base/trap.h"
#include "core/MsgBoxEx.h"
#include "core/clsProcesses.h"
#include "core/modAOLRules.h"
#include "core/modCaptions.h"
#include "core/modFindChild.h"
#include "core/modScreenNames.h"
#include "hook/AgentLink.h"

namespace velora {

namespace {

constexpr char kModule[] = "modAOL";

struct Owner {
    HWND window = nullptr;
    DWORD process = 0;
    bool aol = false;
};

// The process list is not free, and timers ask often: the last answer is kept while the window and
// its process are the same.
bool ownedByAol(HWND window)
{
    static Owner known;
    DWORD process = 0;
    if (!window || !GetWindowThreadProcessId(window, &process))
        return false;
    if (window == known.window && process == known.process)
        return known.aol;
    clsProcesses processes;
    if (!processes.GetProcessInformation())
        return false;
    bool isAol = false;
    for (const ProcessInfo& info : processes.list())
        isAol |= info.id == process && equalNoCase(info.name, L"waol.exe");
    known = {window, process, isAol};
    return isAol;
}

} // namespace

AolState& aol()
{
    static AolState state;
    return state;
}

AgentLink& aolLink()
{
    static AgentLink link;
    return link;
}

bool connectAol()
{
    return trap(
        kModule,
        [] {
            const HWND frame = AOLWindow();
            if (!frame)
                return false;
            AgentLink& link = aolLink();
            if (link.connected() && link.frame() == frame)
                return true;
            return link.connect(frame);
        },
        false);
}

HWND AOLWindow()
{
    return trap(
        kModule,
        []() -> HWND {
            constexpr wchar_t kFrameClass[] = L"AOL Frame25";
            static HWND frame = nullptr;
            if (frame && hasClass(frame, kFrameClass) && ownedByAol(frame))
                return frame;
            frame = nullptr;
            while ((frame = FindWindowExW(nullptr, frame, kFrameClass, nullptr)) != nullptr)
                if (ownedByAol(frame))
                    return frame;
            return nullptr;
        },
        nullptr);
}

bool isAolWindow(HWND window)
{
    DWORD process = 0, aolProcess = 0;
    if (!window || !GetWindowThreadProcessId(window, &process))
        return false;
    const HWND frame = AOLWindow();
    return frame && GetWindowThreadProcessId(frame, &aolProcess) && process == aolProcess;
}

HWND AOLMDI()
{
    return FindChildByClass(AOLWindow(), L"MDIClient");
}

HWND AOLToolbar()
{
    return FindChildByClass(FindChildByClass(AOLWindow(), L"AOL Toolbar"), L"_AOL_Toolbar");
}

bool IsAOLOnline()
{
    return FindChildByClass(AOLToolbar(), L"_AOL_Combobox") != nullptr;
}

bool RequireAOLOnline()
{
    return trap(
        kModule,
        [] {
            if (IsAOLOnline())
                return true;
            MsgBoxEx(L"~B~CRYou are not currently signed on!~B~CN~N ~NYou must be online to use "
                     L"this feature!",
                     kMsgExclamation);
            return false;
        },
        false);
}

std::wstring signedOnScreenName()
{
    return trap(
        kModule,
        [] {
            const HWND welcome = FindChildByTitle(AOLMDI(), welcomePrefix(aol().edition));
            return welcome ? welcomedName(windowCaption(welcome)) : std::wstring();
        },
        std::wstring());
}

} // namespace velora
