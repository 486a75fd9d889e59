// What the user sends to the room: keywords to the keyword processor, long texts line by line. And
// the program's items in AOL's menus.
#include "chat/frmToolbar.h"

#include "base/trap.h"
#include "chat/ToolbarRoutes.h"
#include "chat/frmCommandPopup.h"
#include "chat/frmSendLines.h"
#include "chat/modChatCommands.h"
#include "chat/modRoomText.h"
#include "chat/modShellOpen.h"
#include "core/modAOL.h"
#include "core/modCaptions.h"
#include "hook/AgentLink.h"
#include "settings/Options.h"
#include "ui/MessageLoop.h"

namespace velora {
namespace {

constexpr char kModule[] = "frmToolbar";

/// A keyword whose window does not open leaves the input box as it was.
void runKeyword(const std::wstring& text)
{
    frmCommandPopup::hideList();
    if (ActivateCommand(text))
        return;
    const HWND input = chatInput(AOL_FindChat());
    if (input && aolText(input) == L"")
        typeInRoom(L"/" + text);
}

std::wstring besideImItem()
{
    return sendImMenuCaption(aol().edition);
}

std::wstring besideAboutItem()
{
    return aboutMenuCaption(aol().edition, aol().version);
}

/// An item of ours in AOL's menus, in the popup that holds AOL's item `beside`.
struct AolMenuRow {
    UINT id;
    const wchar_t* caption;
    std::wstring (*beside)();
    bool (*there)();
    void (*chosen)();
};

bool always()
{
    return true;
}

constexpr AolMenuRow kAolMenus[] = {
    {1212, L"&Velora IM Manager", besideImItem, [] { return bool(toolbarRoutes().openIMs); },
     [] { toolbarRoutes().openIMs(); }},
    {1213, L"Chann&els", besideImItem, always, [] { AOL_OpenKeyword(L"channels"); }},
    {1214, L"Velora &Table of Contents", besideAboutItem, always, [] { openHelp(kHelpContents); }},
    {1215, L"Velora Tech &Support", besideAboutItem, always, [] { openHelp(kHelpSupport); }},
};

} // namespace

// AOL may still be building the room: Timer1 comes here again.
void frmToolbar::hookSend()
{
    trap(kModule, [&] {
        if (!room_ || Send.attached() || !aolLink().connected())
            return;
        // Later than the hook's own event: a keyword may open a box that stays for long.
        Send.onKeyword = [](const std::wstring& text) { postCall([text] { runKeyword(text); }); };
        Send.onLines = [](std::vector<std::wstring> lines) {
            postCall([lines] { frmSendLines::sendLines(lines); });
        };
        Send.onSlash = [] {
            if (opt::ChatKeywords::Enabled.get() && opt::ChatKeywords::KeywordPopup.get())
                postCall([] { frmCommandPopup::showList(true); });
        };
        Send.attach(aolLink(), room_);
    });
}

void frmToolbar::addAolMenus()
{
    trap(kModule, [&] {
        aolMenus_ = true;
        for (const AolMenuRow& row : kAolMenus)
            if (row.there())
                aolMenus_ &= aolLink().addMenuItem({{}, 0, row.beside()}, -1, row.id, row.caption);
    });
}

void frmToolbar::sbcMenu_Command(UINT id)
{
    // AOL is in the midst of closing its menu.
    postCall([id] {
        for (const AolMenuRow& row : kAolMenus)
            if (row.id == id)
                row.chosen();
    });
}

} // namespace velora
