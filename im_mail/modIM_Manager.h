#pragma once
// The IM manager: finds the Instant Message windows that AOL opens, takes them into the tabbed
// window, writes their logs and shuts out the senders that the user ignores. Everything here is for
// the user-interface thread. Nothing waits for AOL longer than a second, and nothing pumps.
//
// Every IM that is found has a session (clsIMSession), with the tabs on or off; what was said is in
// the log soon after it was said.
#include "base/win.h"
#include "im_mail/clsIMs.h"

#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace velora {

class clsIMSession;
struct ToolbarRoutes;

/// More IMs than this stay in AOL, where they are logged all the same.
inline constexpr std::size_t kMostTakenIMs = 60;
/// More open IMs than this are left alone (a flood).
inline constexpr std::size_t kMostIMs = 250;

/// The IMs that the tabbed window holds.
clsIMs& openIMs();
/// The session of an IM window; null when it is none that is known.
clsIMSession* imSession(HWND im);
/// All sessions, the oldest first.
std::vector<clsIMSession*> imSessions();

/// Builds the tabbed window, once. False, and the user is told, when AOL's frame isn't there or the
/// window cannot be made.
bool Initialize();
/// Looks through AOL's windows and takes each new IM into the tabbed window.
void IMsToPic();
/// The same without taking: logs, ignoring and events only.
void ScanForIM();
/// Whichever of the two the option TabsOn asks for, soon, from the message loop. Any number of
/// calls makes one scan.
void scanIMsSoon();
/// The scan itself; `take` as above. Answers at once while one runs. False when some are left for
/// another turn.
bool FindImTab(bool take);

/// True when the sender is on the ignore list: for good or, with `temporary`, for some days.
bool IgnoreIMs(std::wstring_view screenName, bool temporary);

/// Fills what the toolbar tells of AOL's documents, and its button.
void routeIMs(ToolbarRoutes& routes);

/// A document of AOL was made or changed, or is gone.
void imDocumentChanged(HWND document);
void imDocumentGone(HWND document);
/// The tick of tmrIMWatch: what no event told.
void watchIMs();
/// AOL's frame was moved, or came to the front.
void imFrameMoved();

/// Puts the manager's switch (option TabsOn): on takes all open IMs, off gives all back.
void setTabsOn(bool on);
/// Opens the tabbed window, and switches the manager on if need be.
void showIMs();

/// Gives every taken IM back to AOL, to its old place. With `close` they are closed instead.
void Tab_UnhookIMs(bool close);
/// Begins: call when the routes are filled. After endIMs it begins anew.
void startIMs();
/// The program ends, or AOL has: logs get their end records, IMs are given back (or closed, by the
/// option CloseIMsOnExit), and nothing of AOL is watched any more.
void endIMs();
/// Forgets the tabs of windows that are gone.
void resetims();
/// Clears the mark of a new message.
void WipeNew(HWND im);
/// Closes an IM; its log is complete before that.
bool CloseUNT(HWND im);
/// Makes an IM's tab the current one. `byUser`: the reply box gets the focus.
void selectIM(HWND im, bool byUser);
/// Brings an IM to the front: its tab in our window or, with the tabs off, its window in AOL. The
/// user has asked for it.
void focusIM(HWND im);
/// Sends what the reply box of the current IM holds; a log note is kept instead. False when there
/// is nothing to send, or AOL doesn't take it.
bool sendReply();

/// Lays out tabs and buttons anew after an option or a route changed.
void Set_IM_Tabs();
/// Puts the current IM over the page of the tabbed window, hides the others.
void ResizeRICHCNTL();
/// Shows the auto-answer button if somebody answers.
void ShowButtons_AU();
/// Remembers where the tabbed window is.
void SaveIMPos();

} // namespace velora
