// What stands in the menus of the toolbar.
#include "chat/modToolbarMenus.h"

#include "base/text.h"
#include "chat/ToolbarRoutes.h"
#include "chat/frmCommandPopup.h"
#include "chat/frmEditor.h"
#include "chat/frmFade.h"
#include "chat/frmFadeInsert.h"
#include "chat/frmMultiLine.h"
#include "chat/frmToolbar.h"
#include "chat/modChatCommands.h"
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

#include <functional>

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

using AddPerson = std::function<void(Menu&, const std::wstring&)>;

void addPeople(Menu& menu, const AddPerson& add)
{
    Menu* part = &menu;
    std::size_t count = 0;
    const HWND room = AOL_FindChat();
    for (const std::wstring& name : peopleInRoom(room)) {
        if (++count % kMenuLength == 0)
            part = &part->submenu(L"More");
        add(*part, name);
    }
    if (count == 0)
        menu.item(room ? L"(nobody is listed)" : L"(you are in no chat room)", {},
                  {.enabled = false});
}

void copyName(const std::wstring& name)
{
    if (const frmToolbar* const toolbar = frmToolbar::instance())
        setClipboardText(toolbar->hwnd(), name);
}

void addPerson(Menu& menu, const std::wstring& name)
{
    menu.item(L"&Profile", [name] { showProfile(name); });
    menu.item(L"&Mail...", [name] { mailTo(name); });
    menu.item(L"&Instant Message...", [name] { imTo(name); });
    menu.item(L"&Hug", [name] { hug(name); });
    menu.item(L"&Copy Name", [name] { copyName(name); });
    if (!toolbarRoutes().ignoreMember)
        return;
    menu.separator();
    menu.item(L"I&gnore", [name] { toolbarRoutes().ignoreMember(name); });
}

/// An item for something that another room of the program does, or does not.
void addRoute(Menu& menu, std::wstring_view text, const std::function<void()>& route)
{
    if (route)
        menu.item(text, route);
}

} // namespace

void fillWavItems(Menu& mnuWavItem)
{
    const ToolbarRoutes& routes = toolbarRoutes();
    addRoute(mnuWavItem, L"&Wav List...", routes.openWavs);
    addRoute(mnuWavItem, L"&Jukebox", routes.openJukebox);
    mnuWavItem.separator();
    addSwitch(mnuWavItem, L"&Play Sounds Said in the Room", opt::General::WavDetect);
    if (routes.muteSounds && routes.soundsMuted)
        mnuWavItem.item(L"M&ute Sounds",
                        [] { toolbarRoutes().muteSounds(!toolbarRoutes().soundsMuted()); },
                        {.checked = routes.soundsMuted()});
    addRoute(mnuWavItem, L"&Stop Sound", routes.stopSounds);
}

void fillIMItems(Menu& mnuIMItem)
{
    const ToolbarRoutes& routes = toolbarRoutes();
    addRoute(mnuIMItem, L"&IM Manager...", routes.openIMs);
    addRoute(mnuIMItem, L"&Auto-Answer...", routes.autoAnswer);
    addRoute(mnuIMItem, L"I&gnored Screen Names...", routes.ignoredNames);
    if (routes.takeIMs) {
        mnuIMItem.separator();
        mnuIMItem.item(L"&Take IMs into Tabs",
                       [] { toolbarRoutes().takeIMs(!opt::IM::TabsOn.get()); },
                       {.checked = opt::IM::TabsOn.get()});
    }
    if (!routes.imSwitch)
        return;
    mnuIMItem.separator();
    mnuIMItem.item(L"Turn IMs &Off", [] { toolbarRoutes().imSwitch(false); });
    mnuIMItem.item(L"Turn IMs O&n", [] { toolbarRoutes().imSwitch(true); });
}

void fillPeopleItems(Menu& mnuPeopleItem)
{
    addPeople(mnuPeopleItem, [](Menu& part, const std::wstring& name) {
        addPerson(part.submenu(itemText(name)), name);
    });
}

void fillHugItems(Menu& menu)
{
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
}

void fillFadeItems(Menu& menu)
{
    addSwitch(menu, L"&Fade What I Send", opt::Fader::On);
    addSwitch(menu, L"Only &Sounds from the Wav List", opt::Fader::FadeWavOnly);
    menu.separator();
    menu.item(L"Fade &Panel...", [] { frmFade::showPanel(AppPath()); });
    menu.item(L"Fade and &Insert...", [] { frmFadeInsert::showWindow(); });
    menu.separator();
    addSchemes(menu.submenu(L"S&chemes"));
}

void fillExItems(Menu& mnuExItem)
{
    std::size_t count = 0;
    for (const EditorEntry& command : loadEditorList(EditorList::Commands, {}))
        if (++count <= kMostCommands)
            mnuExItem.item(itemText(command.name), [word = command.name] { runUserCommand(word); });
    if (count == 0)
        mnuExItem.item(L"(no commands of your own yet)", {}, {.enabled = false});
    mnuExItem.separator();
    mnuExItem.item(L"&Keyword List...", [] { frmCommandPopup::showList(false); });
    addSwitch(mnuExItem, L"Show the List When I Type \"/\"", opt::ChatKeywords::KeywordPopup);
    mnuExItem.item(L"&Multi-Line Entry...", [] { frmMultiLine::showWindow(); });
    mnuExItem.separator();
    mnuExItem.item(L"&Edit Keywords...", [] { openEditor(EditorList::Commands); });
    mnuExItem.item(L"Edit &Aliases...", [] { openEditor(EditorList::Aliases); });
}

void fillEditItems(Menu& mnuEditItem)
{
    mnuEditItem.item(L"&Keywords...", [] { openEditor(EditorList::Commands); });
    mnuEditItem.item(L"&Aliases...", [] { openEditor(EditorList::Aliases); });
    mnuEditItem.item(L"&Hugs...", [] { openEditor(EditorList::Hugs); });
    mnuEditItem.item(L"&Glintunes...", [] { openEditor(EditorList::Glintunes); });
    addRoute(mnuEditItem, L"&Reply Templates...", toolbarRoutes().editTemplates);
}

void fillHelpItems(Menu& menu)
{
    menu.item(L"&Table of Contents", [] { openHelp(kHelpContents); });
    menu.item(L"Chat &Keywords", [] { openHelp(kHelpKeywords); });
    menu.item(L"Tech &Support", [] { openHelp(kHelpSupport); });
    addRoute(menu, L"Check for &Updates...", toolbarRoutes().checkUpdate);
}

} // namespace velora
