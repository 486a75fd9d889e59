// The menus of the toolbar's buttons.
#include "base/text.h"
#include "chat/ToolbarRoutes.h"
#include "chat/frmCommandPopup.h"
#include "chat/frmEditor.h"
#include "chat/frmFade.h"
#include "chat/frmFadeInsert.h"
#include "chat/frmMultiLine.h"
#include "chat/frmToolbar.h"
#include "chat/modChatCommands.h"
#include "chat/modPanel.h"
#include "chat/modRoomPeople.h"
#include "chat/modRoomText.h"
#include "chat/modShellOpen.h"
#include "chat/modUseScheme.h"
#include "core/MsgBoxEx.h"
#include "core/modAOL.h"
#include "core/modClipboard.h"
#include "core/modMain.h"
#include "settings/Options.h"
#include "ui/Menu.h"

namespace velora {
namespace {

/// Longer texts are cut in a menu.
constexpr std::size_t kMenuText = 60;
/// A column of a menu; what is more goes into submenus of this many.
constexpr std::size_t kMenuLength = 25;
/// No more of the user's commands than this in a menu.
constexpr std::size_t kMostCommands = 100;

/// A text that comes from elsewhere, as an item shows it.
std::wstring itemText(std::wstring_view text)
{
    std::wstring shown(text.substr(0, kMenuText));
    if (shown.size() < text.size())
        shown += L"...";
    return replaceAll(without(shown, L'\t'), L"&", L"&&");
}

void openEditor(EditorList list)
{
    frmEditor::openEditor(list, AppPath());
}

void hug(const std::wstring& name)
{
    if (!name.empty() && requireRoom())
        sayInRoom(asTheyLeave(hugText(opt::Hugs::Current.get(), name)));
}

void hugSomebody()
{
    if (requireRoom())
        hug(trim(InputBoxEx(L"Whom do you want to hug?", L"Hugs", {}, {.maxLength = 40})));
}

/// The styles of a list, the one in use marked; choosing one takes it.
void addStyles(Menu& menu, EditorList list, const Option<std::wstring>& current)
{
    for (const EditorEntry& style : loadEditorList(list, AppPath()))
        menu.item(itemText(style.text), [current, text = style.text] { current.set(text); },
                  {.checked = style.text == current.get(), .radio = true});
}

void addSchemes(Menu& menu)
{
    const std::wstring current = opt::Fader::Default.get();
    Menu* part = &menu;
    std::size_t count = 0;
    for (const SchemeEntry& scheme : clsSchemes(AppPath()).list()) {
        if (++count % kMenuLength == 0)
            part = &part->submenu(L"More");
        part->item(itemText(scheme.name),
                   [name = scheme.name] { useScheme(clsSchemes(AppPath()), name); },
                   {.checked = equalNoCase(scheme.name, current), .radio = true});
    }
}

void addSwitch(Menu& menu, std::wstring_view text, const Option<bool>& option)
{
    menu.item(text, [option] { option.set(!option.get()); }, {.checked = option.get()});
}

} // namespace

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

void frmToolbar::addPeople(Menu& menu, const std::function<void(Menu&, const std::wstring&)>& add)
{
    Menu* part = &menu;
    std::size_t count = 0;
    for (const std::wstring& name : peopleInRoom(AOL_FindChat())) {
        if (++count % kMenuLength == 0)
            part = &part->submenu(L"More");
        add(*part, name);
    }
    if (count == 0)
        menu.item(AOL_FindChat() ? L"(nobody is listed)" : L"(you are in no chat room)", {},
                  {.enabled = false});
}

void frmToolbar::person(Menu& mnuPeopleItem, const std::wstring& name)
{
    mnuPeopleItem.item(L"&Profile", [name] { showProfile(name); });
    mnuPeopleItem.item(L"&Mail...", [name] { mailTo(name); });
    mnuPeopleItem.item(L"&Instant Message...", [name] { imTo(name); });
    mnuPeopleItem.item(L"&Hug", [name] { hug(name); });
    mnuPeopleItem.item(L"&Copy Name", [this, name] { setClipboardText(hwnd(), name); });
    if (!toolbarRoutes().ignoreMember)
        return;
    mnuPeopleItem.separator();
    mnuPeopleItem.item(L"I&gnore", [name] { toolbarRoutes().ignoreMember(name); });
}

void frmToolbar::openPeople()
{
    if (!requireRoom())
        return;
    Menu menu;
    addPeople(menu, [this](Menu& part, const std::wstring& name) {
        person(part.submenu(itemText(name)), name);
    });
    showUnder(cmdPeople, menu);
}

void frmToolbar::openHugs()
{
    Menu menu;
    addPeople(menu.submenu(L"&Hug"), [](Menu& part, const std::wstring& name) {
        part.item(itemText(name), [name] { hug(name); });
    });
    menu.item(L"Hug &Somebody...", hugSomebody);
    menu.separator();
    addStyles(menu, EditorList::Hugs, opt::Hugs::Current);
    menu.separator();
    addStyles(menu.submenu(L"&Glintune"), EditorList::Glintunes, opt::Glintune::Current);
    menu.item(L"Edit H&ugs...", [] { openEditor(EditorList::Hugs); });
    menu.item(L"Edit G&lintunes...", [] { openEditor(EditorList::Glintunes); });
    showUnder(cmdHugs, menu);
}

void frmToolbar::openFade()
{
    Menu menu;
    addSwitch(menu, L"&Fade What I Send", opt::Fader::On);
    addSwitch(menu, L"Only &Sounds from the Wav List", opt::Fader::FadeWavOnly);
    menu.separator();
    menu.item(L"Fade &Panel...", [] { frmFade::showPanel(AppPath()); });
    menu.item(L"Fade and &Insert...", [] { frmFadeInsert::showWindow(); });
    menu.separator();
    addSchemes(menu.submenu(L"S&chemes"));
    showUnder(cmdFade, menu);
}

void frmToolbar::openPlus()
{
    Menu menu;
    std::size_t count = 0;
    for (const EditorEntry& command : loadEditorList(EditorList::Commands, {}))
        if (++count <= kMostCommands)
            menu.item(itemText(command.name), [word = command.name] { runUserCommand(word); });
    if (count == 0)
        menu.item(L"(no commands of your own yet)", {}, {.enabled = false});
    menu.separator();
    menu.item(L"&Keyword List...", [] { frmCommandPopup::showList(false); });
    addSwitch(menu, L"Show the List When I Type \"/\"", opt::ChatKeywords::KeywordPopup);
    menu.item(L"&Multi-Line Entry...", [] { frmMultiLine::showWindow(); });
    menu.separator();
    menu.item(L"&Edit Keywords...", [] { openEditor(EditorList::Commands); });
    menu.item(L"Edit &Aliases...", [] { openEditor(EditorList::Aliases); });
    showUnder(cmdPlus, menu);
}

void frmToolbar::openMenu()
{
    Menu mnuMenuItem;
    fillMenu(mnuMenuItem);
    showUnder(cmdMenu, mnuMenuItem);
}

void frmToolbar::showMenu(Point at)
{
    Menu mnuMenuItem;
    fillMenu(mnuMenuItem);
    mnuMenuItem.popup(*this, at);
}

void frmToolbar::fillMenu(Menu& menu)
{
    const ToolbarRoutes& routes = toolbarRoutes();
    if (routes.openWavs)
        menu.item(L"&Wav List...", [this] { openWavs(); });
    if (routes.openIMs)
        menu.item(L"&IM Manager...", [this] { openIMs(); });
    if (routes.openJukebox)
        menu.item(L"&Jukebox", routes.openJukebox);
    menu.item(L"&Fade Panel...", [] { frmFade::showPanel(AppPath()); });
    menu.item(L"Fade and I&nsert...", [] { frmFadeInsert::showWindow(); });
    menu.item(L"&Multi-Line Entry...", [] { frmMultiLine::showWindow(); });
    menu.item(L"&Keyword List...", [] { frmCommandPopup::showList(false); });
    Menu& mnuEditItem = menu.submenu(L"&Edit");
    mnuEditItem.item(L"&Keywords...", [] { openEditor(EditorList::Commands); });
    mnuEditItem.item(L"&Aliases...", [] { openEditor(EditorList::Aliases); });
    mnuEditItem.item(L"&Hugs...", [] { openEditor(EditorList::Hugs); });
    mnuEditItem.item(L"&Glintunes...", [] { openEditor(EditorList::Glintunes); });
    menu.separator();
    if (routes.stopSounds)
        menu.item(L"&Stop Sound", routes.stopSounds);
    if (routes.muteSounds && routes.soundsMuted)
        menu.item(L"M&ute Sounds",
                  [] { toolbarRoutes().muteSounds(!toolbarRoutes().soundsMuted()); },
                  {.checked = routes.soundsMuted()});
    addSwitch(menu, L"&Play Sounds Said in the Room", opt::General::WavDetect);
    addSwitch(menu, L"&Log Chat Rooms", opt::General::ChatLog);
    if (routes.imSwitch) {
        menu.item(L"Turn IMs &Off", [] { toolbarRoutes().imSwitch(false); });
        menu.item(L"Turn IMs O&n", [] { toolbarRoutes().imSwitch(true); });
    }
    if (routes.ignoredNames)
        menu.item(L"I&gnored Screen Names...", routes.ignoredNames);
    menu.item(L"&Advertise in the Room", [] { advertise(); });
    menu.separator();
    Menu& panel = menu.submenu(L"&Toolbar");
    panel.item(L"&Upright",
               [this] {
                   opt::Toolbar::Horizontal.set(!opt::Toolbar::Horizontal.get());
                   ResizeButtons();
               },
               {.checked = !opt::Toolbar::Horizontal.get()});
    panel.item(L"&Reset Position",
               [this] {
                   opt::Toolbar::Position.set(L"");
                   SetPanelPos();
               },
               {.enabled = parsePanelOffset(opt::Toolbar::Position.get()).has_value()});
    if (routes.showOptions)
        menu.item(L"&Options...", routes.showOptions);
    Menu& help = menu.submenu(L"&Help");
    help.item(L"&Table of Contents", [] { openHelp(kHelpContents); });
    help.item(L"Chat &Keywords", [] { openHelp(kHelpKeywords); });
    help.item(L"Tech &Support", [] { openHelp(kHelpSupport); });
    if (routes.checkUpdate)
        help.item(L"Check for &Updates...", routes.checkUpdate);
    if (routes.exitProgram) {
        menu.separator();
        menu.item(L"E&xit Velora", routes.exitProgram);
    }
}

} // namespace velora
