// What the buttons and menus of the tabbed window do.
#include "im_mail/frmTabIM.h"

#include "base/files.h"
#include "base/text.h"
#include "base/trap.h"
#include "chat/modEditorLists.h"
#include "core/MsgBoxEx.h"
#include "core/modAOL.h"
#include "core/modClipboard.h"
#include "core/modFindChild.h"
#include "im_mail/clsIMSession.h"
#include "im_mail/modIM_Manager.h"
#include "settings/Options.h"
#include "ui/Placement.h"

#include <shellapi.h>

namespace velora {
namespace {

constexpr char kModule[] = "frmTabIM";

template <class Option>
void toggle(Menu& menu, const wchar_t* text, const Option& option)
{
    menu.item(text, [option] { option.set(!option.get()); }, {.checked = option.get()});
}

} // namespace

void frmTabIM::send()
{
    if (sendReply())
        focusReply();
}

void frmTabIM::cancel()
{
    if (const clsIMSession* const im = current())
        CloseUNT(im->window());
}

void frmTabIM::locate()
{
    if (RequireAOLOnline())
        AOL_OpenKeyword(L"aol://3548:" + currentName());
}

void frmTabIM::mail()
{
    trap(kModule, [&] {
        const std::wstring name = currentName();
        if (!RequireAOLOnline())
            return;
        if (const MailWindow mail = AOL_OpenEMail())
            setAolText(mail.to, name);
    });
}

void frmTabIM::cmdNotify_Click()
{
    const clsIMSession* const im = current();
    if (!im || !RequireAOLOnline())
        return;
    // AOL's later IMs have a button for it; the others are reported by keyword.
    for (int which = 1; const HWND icon = FindChildByClass(im->window(), L"_AOL_Icon", which);
         ++which)
        if (windowCaption(icon).starts_with(L"Notify")) {
            clickAolIcon(icon);
            return;
        }
    AOL_OpenKeyword(L"notify aol");
}

void frmTabIM::AOL_GetInfo()
{
    if (RequireAOLOnline())
        AOL_GetProfile(currentName());
}

void frmTabIM::autoAnswer()
{
    if (imRoutes().autoAnswer)
        imRoutes().autoAnswer();
    ShowButtons_AU();
}

void frmTabIM::AddToIgnore()
{
    if (imRoutes().addToIgnore && !currentName().empty())
        imRoutes().addToIgnore(currentName());
}

void frmTabIM::editNotes()
{
    if (imRoutes().editNotes && !currentName().empty())
        imRoutes().editNotes(currentName());
}

void frmTabIM::AddAlias()
{
    trap(kModule, [&] {
        const std::wstring name = currentName();
        if (name.empty())
            return;
        const std::wstring present = CheckForAlias(name);
        const EditorEntry entry{
            name, trim(InputBoxEx(L"Please enter an alias for ~B" + literal(name) + L"~B.",
                                  L"Alias", present == name ? std::wstring() : present))};
        if (entry.text.empty())
            return;
        if (const std::wstring fault = entryFault(EditorList::Aliases, entry); !fault.empty()) {
            MsgBoxEx(literal(fault), kMsgExclamation, L"Alias");
            return;
        }
        auto entries = loadEditorList(EditorList::Aliases, imProgramFolder());
        std::erase_if(entries, [&](const EditorEntry& known) {
            return screenNameKey(known.name) == screenNameKey(name);
        });
        entries.push_back(entry);
        saveEditorList(EditorList::Aliases, imProgramFolder(), entries);
    });
}

void frmTabIM::copyText()
{
    trap(kModule, [&] {
        if (const clsIMSession* const im = current())
            setClipboardText(hwnd(), im->text());
    });
}

void frmTabIM::openLog()
{
    trap(kModule, [&] {
        const clsIMSession* const im = current();
        if (!im)
            return;
        const std::wstring path = im->logPath();
        if (!fileExists(path)) {
            MsgBoxEx(L"~BThere is no log of this member yet.~B~N ~NIMs are logged while ~BLog "
                     L"IMs~B is on in the options of this window.",
                     kMsgInformation, L"Instant Messages");
            return;
        }
        // Always as text: the name of a log ends in what a member calls himself.
        ShellExecuteW(hwnd(), L"open", L"notepad.exe", (L"\"" + path + L"\"").c_str(), nullptr,
                      SW_SHOWNORMAL);
    });
}

void frmTabIM::addView(Menu& menu)
{
    const auto style = [this, &menu](const wchar_t* text, const wchar_t* value, Mode which) {
        menu.item(text,
                  [this, value] {
                      savePlace();
                      opt::IM::Style.set(value);
                      // Each mode has its place.
                      if (const auto kept = options().place)
                          if (const auto usable = usablePlace(*kept, monitorAreas()))
                              setPlace(*usable);
                  },
                  {.checked = mode() == which, .radio = true});
    };
    style(L"&Tabs", L"tabs", tabs);
    style(L"&Buttons", L"buttons", buttons);
    style(L"&List", L"list", list);
    menu.separator();
    const bool bottom = equalNoCase(opt::IM::Position.get(), L"bottom");
    menu.item(L"At the Botto&m", [bottom] { opt::IM::Position.set(bottom ? L"top" : L"bottom"); },
              {.enabled = mode() != list, .checked = bottom});
    toggle(menu, L"Several &Rows", opt::IM::MultipleRows);
    toggle(menu, L"E&xtra Buttons", opt::IM::TabExtraBtns);
}

void frmTabIM::optionsMenu()
{
    Menu mnuOptions;
    addView(mnuOptions);
    mnuOptions.separator();
    toggle(mnuOptions, L"&Enter Sends", opt::IM::EnterSends);
    toggle(mnuOptions, L"Tab &Switches", opt::IM::TabSwitches);
    toggle(mnuOptions, L"&Above AOL", opt::IM::DisplayOnTopOfAOL);
    mnuOptions.separator();
    toggle(mnuOptions, L"Lo&g IMs", opt::IM::LogIMs);
    toggle(mnuOptions, L"Logs by &Date", opt::IM::LogIMsByDate);
    toggle(mnuOptions, L"&Close IMs on Exit", opt::IM::CloseIMsOnExit);
    if (imRoutes().imSwitch) {
        mnuOptions.separator();
        mnuOptions.item(L"Turn IMs O&ff", [] { imRoutes().imSwitch(false); });
        mnuOptions.item(L"Turn IMs O&n", [] { imRoutes().imSwitch(true); });
    }
    if (imRoutes().ignoredNames)
        mnuOptions.item(L"&Ignored Screen Names...", imRoutes().ignoredNames);
    if (imRoutes().autoAnswer)
        mnuOptions.item(L"A&uto-Answer...", imRoutes().autoAnswer);
    mnuOptions.separator();
    mnuOptions.item(L"Give IMs Bac&k to AOL", [] { setTabsOn(false); });
    if (imRoutes().showOptions)
        mnuOptions.item(L"&Preferences...", imRoutes().showOptions);
    const Rect button = cmdOptions.screenPlace();
    mnuOptions.popup(*this, {button.left, button.bottom});
}

void frmTabIM::imMenu(Point at)
{
    Menu mnuIM;
    mnuIM.item(L"&Close\tCtrl+W", [this] { cancel(); });
    mnuIM.item(L"Cop&y Conversation", [this] { copyText(); });
    mnuIM.item(L"Open Lo&g", [this] { openLog(); });
    mnuIM.separator();
    mnuIM.item(L"&Profile", [this] { AOL_GetInfo(); });
    mnuIM.item(L"&Locate", [this] { locate(); });
    mnuIM.item(L"&Mail", [this] { mail(); });
    if (imRoutes().editNotes)
        mnuIM.item(L"No&tes...", [this] { editNotes(); });
    mnuIM.item(L"&Alias...", [this] { AddAlias(); });
    if (imRoutes().addToIgnore)
        mnuIM.item(L"&Ignore...", [this] { AddToIgnore(); });
    mnuIM.separator();
    addView(mnuIM.submenu(L"&View"));
    mnuIM.popup(*this, at);
}

void frmTabIM::onContextMenu(Control* over, Point at)
{
    const int tab = over == &tabIMs ? tabIMs.hit(at) : over == &lstIMs ? lstIMs.hit(at) : -1;
    if (tab >= 0)
        stepTo(tab);
    if (openIMs().Count() > 0 && (over == &tabIMs || over == &lstIMs))
        imMenu(at);
    else
        optionsMenu();
}

} // namespace velora
