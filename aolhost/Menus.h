#pragma once
#include "base/win.h"

namespace aolhost {

class Words;

/// Identifiers of the frame's menu items; the Edit menu's are in RichText.h.
enum MenuCommand {
    kNewMessage = 101,
    kPrint = 105,
    kExit = 110,
    kReadMail = 201,
    kWriteMail = 202,
    kChatRoom = 301,
    kSendIm = 302,
    kProfile = 303,
    kFindChat = 304,
    kKeyword = 305,
    kCascade = 401,
    kTile = 402,
    kSignOff = 501,
    kSignOn = 502,
    kHelp = 901,
    kAbout = 902
};
/// Documents in the Window menu have identifiers from here on.
constexpr UINT kFirstChildId = 50000;

struct FrameMenus {
    HMENU bar, window;
};
FrameMenus makeMenus(const Words& words);
HACCEL makeKeys();

} // namespace aolhost
