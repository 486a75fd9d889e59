#include "aolhost/MenuCommands.h"

#include "aolhost/Aol.h"
#include "aolhost/ChatRoom.h"
#include "aolhost/Frame.h"
#include "aolhost/Menus.h"

namespace aolhost {

bool runMenuCommand(int id)
{
    switch (id) {
    case kExit: PostMessageW(aol().frame->hwnd(), WM_CLOSE, 0, 0); return true;
    case kSignOff: aol().signOff(); return true;
    case kKeyword: aol().frame->focusKeyword(); return true;
    case kCascade: SendMessageW(aol().frame->mdiClient(), WM_MDICASCADE, 0, 0); return true;
    case kTile: SendMessageW(aol().frame->mdiClient(), WM_MDITILE, 0, 0); return true;
    case kChatRoom:
        if (aol().online())
            aol().enterRoom(L"Town Square - Lobby 12");
        return true;
    default: return false;
    }
}

} // namespace aolhost
