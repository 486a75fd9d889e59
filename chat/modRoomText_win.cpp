#include "chat/modRoomText.h"

#include "base/text.h"
#include "base/trap.h"
#include "chat/modCurrentFade.h"
#include "core/MsgBoxEx.h"
#include "core/modAOL.h"
#include "hook/AgentLink.h"
#include "settings/Options.h"

namespace velora {
namespace {
constexpr char kModule[] = "modRoomText";
}

HWND requireRoom()
{
    const HWND room = AOL_FindChat();
    if (!room)
        MsgBoxEx(L"~B~CRNo valid chat room found!~B~CN~N ~NYou must be in a chat room to use this "
                 L"feature!",
                 kMsgExclamation);
    return room;
}

std::wstring asTheyLeave(std::wstring text)
{
    if (opt::Fader::On.get() && !opt::Fader::FadeWavOnly.get())
        FadeEngine(text);
    return text;
}

bool sayInRoom(const std::wstring& line)
{
    return trap(
        kModule,
        [&] {
            const HWND input = chatInput(AOL_FindChat());
            const auto begun = aolText(input);
            if (!TextToChat(line, kSendNow))
                return false;
            if (begun && !trimView(*begun).empty())
                typeInRoom(*begun);
            return true;
        },
        false);
}

bool typeInRoom(const std::wstring& text)
{
    return trap(
        kModule,
        [&] {
            if (!TextToChat(text, kPutOnly))
                return false;
            if (aolLink().connected())
                aolLink().select(chatInput(AOL_FindChat()), static_cast<int>(text.size()),
                                 static_cast<int>(text.size()));
            return true;
        },
        false);
}

} // namespace velora
