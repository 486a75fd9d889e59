// The menus of the toolbar's buttons, and its own.
#include "chat/ToolbarRoutes.h"
#include "chat/frmCommandPopup.h"
#include "chat/frmFade.h"
#include "chat/frmFadeInsert.h"
#include "chat/frmMultiLine.h"
#include "chat/frmToolbar.h"
#include "chat/modChatCommands.h"
#include "chat/modRoomText.h"
#include "chat/modToolbarMenus.h"
#include "core/modMain.h"
#include "settings/Options.h"
#include "ui/Menu.h"

namespace velora {

void frmToolbar::openWavs()
{
    toolbarRoutes().openWavs();
}

void frmToolbar::openIMs()
{
    toolbarRoutes().openIMs();
}

void frmToolbar::openEncrypt()
{
    toolbarRoutes().encryptMail();
}

void frmToolbar::openMail()
{
    Menu mnuMailItem;
    toolbarRoutes().mailMenu(mnuMailItem);
    showUnder(cmdMail, mnuMailItem);
}

void frmToolbar::openQuotes()
{
    Menu mnuQuoteItem;
    toolbarRoutes().quotesMenu(mnuQuoteItem);
    showUnder(cmdQuotes, mnuQuoteItem);
}

void frmToolbar::openPeople()
{
    if (!requireRoom())
        return;
    Menu mnuPeopleItem;
    fillPeopleItems(mnuPeopleItem);
    showUnder(cmdPeople, mnuPeopleItem);
}

void frmToolbar::openHugs()
{
    Menu menu;
    fillHugItems(menu);
    showUnder(cmdHugs, menu);
}

void frmToolbar::openFade()
{
    Menu menu;
    fillFadeItems(menu);
    showUnder(cmdFade, menu);
}

void frmToolbar::openPlus()
{
    Menu mnuExItem;
    fillExItems(mnuExItem);
    showUnder(cmdPlus, mnuExItem);
}

void frmToolbar::openMenu()
{
    Menu mnuMenuItem;
    fillMenu(mnuMenuItem);
    showUnder(cmdMenu, mnuMenuItem);
}

// Two buttons open a window; what else belongs to it is behind the right mouse button. Elsewhere
// that is the program's menu.
void frmToolbar::onContextMenu(Control* over, Point at)
{
    Menu menu;
    if (over == &cmdWavs)
        fillWavItems(menu);
    else if (over == &cmdIMs)
        fillIMItems(menu);
    else
        fillMenu(menu);
    menu.popup(*this, at);
}

void frmToolbar::fillMenu(Menu& menu)
{
    const ToolbarRoutes& routes = toolbarRoutes();
    if (routes.openWavs)
        menu.item(L"&Wav List...", [this] { openWavs(); });
    if (routes.openIMs)
        menu.item(L"&IM Manager...", [this] { openIMs(); });
    menu.item(L"&Fade Panel...", [] { frmFade::showPanel(AppPath()); });
    menu.item(L"Fade and I&nsert...", [] { frmFadeInsert::showWindow(); });
    menu.item(L"&Multi-Line Entry...", [] { frmMultiLine::showWindow(); });
    menu.item(L"&Keyword List...", [] { frmCommandPopup::showList(false); });
    menu.separator();
    Menu& mnuWavItem = menu.submenu(L"&Sounds");
    fillWavItems(mnuWavItem);
    Menu& mnuIMItem = menu.submenu(L"Instant Messa&ges");
    fillIMItems(mnuIMItem);
    Menu& mnuEditItem = menu.submenu(L"&Edit");
    fillEditItems(mnuEditItem);
    menu.separator();
    menu.item(L"&Log Chat Rooms", [] { opt::General::ChatLog.set(!opt::General::ChatLog.get()); },
              {.checked = opt::General::ChatLog.get()});
    menu.item(L"&Advertise in the Room", [] { advertise(); });
    menu.separator();
    fillPanelItems(menu.submenu(L"&Toolbar"));
    if (routes.showOptions)
        menu.item(L"&Options...", routes.showOptions);
    fillHelpItems(menu.submenu(L"&Help"));
    if (routes.exitProgram) {
        menu.separator();
        menu.item(L"E&xit Velora", routes.exitProgram);
    }
}

} // namespace velora
