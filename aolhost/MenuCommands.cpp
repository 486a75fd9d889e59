#include "aolhost/MenuCommands.h"

#include "aolhost/Aol.h"
#include "aolhost/ChatRoom.h"
#include "aolhost/Frame.h"
#include "aolhost/ImWindow.h"
#include "aolhost/Mail.h"
#include "aolhost/Menus.h"
#include "aolhost/Modal.h"
#include "aolhost/Pages.h"

namespace aolhost {
namespace {

/// What only a signed-on member can open; false for any other identifier.
bool runOnlineCommand(int id)
{
    switch (id) {
    case kReadMail:
        if (auto* box = aol().first<MailBox>())
            box->activate();
        else
            new MailBox;
        return true;
    case kWriteMail: new WriteMail; return true;
    case kSendIm: new SendImWindow; return true;
    case kProfile: aol().openKeyword(L"profile:" + aol().name); return true;
    case kFindChat: new FindChat; return true;
    case kKeyword: aol().frame->focusKeyword(); return true;
    case kChatRoom:
        if (ChatRoom* room = aol().room())
            room->activate();
        else
            aol().enterRoom(L"Town Square - Lobby 12");
        return true;
    default: return false;
    }
}

} // namespace

bool runMenuCommand(int id)
{
    if (aol().online() && runOnlineCommand(id))
        return true;
    switch (id) {
    case kExit: PostMessageW(aol().frame->hwnd(), WM_CLOSE, 0, 0); return true;
    case kSignOff: aol().signOff(); return true;
    case kAbout: MessageModal::about(); return true;
    case kCascade: SendMessageW(aol().frame->mdiClient(), WM_MDICASCADE, 0, 0); return true;
    case kTile: SendMessageW(aol().frame->mdiClient(), WM_MDITILE, 0, 0); return true;
    default: return false;
    }
}

} // namespace aolhost
