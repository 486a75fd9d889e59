#pragma once
// The one layer that knows AOL's window tree, its editions and versions, its folder and its screen
// names. Only windows of AOL's own process (waol.exe) are found and driven. Nothing here waits on
// AOL without a limit; what pumps messages while it waits says so.
#include "base/win.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace velora {

class AgentLink;

struct AolState {
    std::wstring folder; ///< without trailing backslash; empty when unknown
    int edition = 0;     ///< AOLEdition
    int version = 0;     ///< 3 to 7; 0 before it is known
    HWND chatRoom = nullptr;
    std::wstring masterScreenName;
    std::vector<std::wstring> screenNames;
};
/// The program's one record of AOL, filled at start-up and read everywhere.
AolState& aol();
/// The program's one link to the code inside AOL. Connected on demand by whoever finds AOL running.
AgentLink& aolLink();
/// Connects aolLink() to the present frame unless it is already; false when AOL isn't there or
/// doesn't let us.
bool connectAol();

// --- Windows ---------------------------------------------------------------------------------

HWND AOLWindow();
HWND AOLMDI();
HWND AOLToolbar();
/// True when the window belongs to a process waol.exe.
bool isAolWindow(HWND window);
/// True while AOL is signed on (its keyword box exists). Shows nothing.
bool IsAOLOnline();
/// The same for a feature that needs it: when AOL is offline the user is told. Pumps then.
bool RequireAOLOnline();

/// Looks for the chat room, remembers it in aol().chatRoom and answers it; 0 when none is open.
/// A room that is still there isn't looked at again, so a timer may call it often. While AOL
/// doesn't answer, the former room stays as long as its window exists.
HWND AOL_FindChat();
/// The room's parts; 0 when it is no chat room.
HWND chatDisplay(HWND room);
HWND chatInput(HWND room);
HWND chatSendIcon(HWND room);
/// Opens AOL's own window for finding people and rooms.
bool AOL_OpenFindWindow();

// --- Acting in AOL ----------------------------------------------------------------------------

enum ChatMode { kPutOnly = 0, kSendNow = 1, kSendAfterPause = 2 };
/// Puts the text into the current chat room's input box and sends it as `mode` tells. False when no
/// room is open (the user is told) or AOL does not take it. Mode 2 pumps messages for half a
/// second.
bool TextToChat(std::wstring_view text, int mode);

/// Presses an "_AOL_Icon" button the way AOL's version takes it. Never waits for its effect.
bool clickAolIcon(HWND icon);
/// Confirms the text of a field (Enter).
bool pressEnter(HWND field);
/// True while the program itself presses Enter in a field of AOL: a hook there lets it pass.
bool ownEnter();
/// Runs the item of AOL's menus that has this caption ("&" and what follows a tab don't count).
bool RunMenuByString(std::wstring_view caption);
/// Resets AOL's busy cursor by opening and closing its About window. Pumps while it waits.
bool AOL_KillCursor();

/// The Write Mail window and its fields; all 0 when it didn't open.
struct MailWindow {
    HWND window = nullptr;
    HWND to = nullptr, copy = nullptr, subject = nullptr;
    HWND body = nullptr;
    explicit operator bool() const { return window != nullptr; }
};
/// Opens a new Write Mail window and waits for it (pumps).
MailWindow AOL_OpenEMail();
inline MailWindow OpenEMail()
{
    return AOL_OpenEMail();
}
/// The fields of a Write Mail window.
MailWindow mailFields(HWND window);
/// Opens AOL's Attachments window of a Write Mail window and waits for it (pumps). 0, and the user
/// is told, when it doesn't open.
HWND AOL_OpenAttachments(HWND mail);

/// Types a keyword of AOL's into its keyword box and confirms it; false while AOL is offline or
/// busy.
bool AOL_OpenKeyword(std::wstring_view keyword);
/// Opens a member's profile by AOL's keyword box and waits for its window (pumps); 0 when it
/// doesn't come. A text that has not the form of a screen name opens nothing.
HWND AOL_GetProfile(std::wstring_view screenName);

/// The name in AOL's welcome window; empty while nobody is signed on.
std::wstring signedOnScreenName();
/// Waits (pumping) until somebody is signed on; empty when nobody was in time or AOL ended.
std::wstring waitForSignOn(DWORD limitMs);
/// The entry chosen in the sign-on window's list of screen names, from 0, and how many there are.
struct SignOnChoice {
    int chosen = -1;
    int count = 0;
};
std::optional<SignOnChoice> signOnChoice();

// --- Start-up ----------------------------------------------------------------------------------
// Each answers false after it told the user why the program can't go on: the caller ends the start.

/// Takes AOL's folder from the running waol.exe and restores its frame when minimised.
bool AOLIsRunning();
/// Runs AOL and waits for its frame and its sign-on or welcome window (pumps). Asks for the folder
/// when none is known.
bool StartAOL();
/// Asks the user for AOL's folder and remembers it.
bool GetAOLPath();
/// Fills aol().version by launch32.dll.
bool GetAOLVersion();
/// Fills aol().edition from the marker files in aol().folder.
void DetectAolEdition();
/// Fills aol().screenNames and aol().masterScreenName.
bool MSNCheck();

} // namespace velora
