// The tabbed window: its controls, its place and its keys. What its buttons do is in
// frmTabIMActions.cpp.
#include "im_mail/frmTabIM.h"

#include "base/text.h"
#include "base/trap.h"
#include "chat/modIcons_win.h"
#include "core/ColourWell.h"
#include "core/MsgBoxEx.h"
#include "core/modAOL.h"
#include "hook/AgentLink.h"
#include "im_mail/clsIMSession.h"
#include "im_mail/modBuddyNotes.h"
#include "im_mail/modIM_Manager.h"
#include "settings/Options.h"
#include "ui/MessageLoop.h"
#include "ui/Placement.h"
#include "ui/WinGeometry.h"

#include <commctrl.h>

#include <algorithm>

namespace velora {
namespace {

constexpr char kModule[] = "frmTabIM";
constexpr wchar_t kSection[] = L"IM";
constexpr std::size_t kLongestTitle = 24;
constexpr Size kFirstSize{620, 440};
constexpr int kListWidth = 150;
constexpr int kIcon = 16;
constexpr std::size_t kMostNoteShown = 600;
constexpr UINT kNotesMs = 5000, kNotesMsEach = 40;
constexpr UINT kFocusMs = 150, kShownMs = 700;
constexpr int kNextKey = 1, kBackKey = 2; // hot keys
enum DelayedCode { kSend = 1, kNext, kBack, kClose, kToButtons, kTabOne = 10 };

bool has(const std::function<void()>& route)
{
    return static_cast<bool>(route);
}

/// What a tab shows for a name that may hold anything.
std::wstring tabTitle(const clsIMs::Entry& entry)
{
    std::wstring title;
    for (const wchar_t c : entry.screenName)
        title += c < 0x20 ? L' ' : c;
    if (title.size() > kLongestTitle)
        title = title.substr(0, kLongestTitle - 1) + L"\u2026";
    return entry.unread ? L"\u2022 " + title : title;
}

} // namespace

/// One button, in their order.
struct frmTabIM::ButtonRow {
    ImageButton frmTabIM::*button;
    const wchar_t* name;
    const wchar_t* tip;
    IconId icon;
    bool extra; ///< shown with the option TabExtraBtns
    bool (*there)();
    void (frmTabIM::*clicked)();
};

const frmTabIM::ButtonRow frmTabIM::kButtons[] = {
    {&frmTabIM::cmdSend, L"&Send", L"Send the reply", IconId::send, false, [] { return true; },
     &frmTabIM::send},
    {&frmTabIM::cmdCancel, L"&Cancel", L"Close this IM (Ctrl+W)", IconId::stop, false,
     [] { return true; }, &frmTabIM::cancel},
    {&frmTabIM::cmdLocate, L"&Locate", L"Find out where the member is", IconId::locate, false,
     [] { return true; }, &frmTabIM::locate},
    {&frmTabIM::cmdMail, L"&Mail", L"Write mail to the member", IconId::mail, false,
     [] { return true; }, &frmTabIM::mail},
    {&frmTabIM::cmdNotify, L"&Notify", L"Notify AOL of this IM", IconId::notify, false,
     [] { return true; }, &frmTabIM::cmdNotify_Click},
    {&frmTabIM::cmdProfile, L"&Profile", L"Show the member's profile", IconId::profile, false,
     [] { return true; }, &frmTabIM::AOL_GetInfo},
    {&frmTabIM::cmdAA, L"&Auto-Answer", L"Answer IMs while you are away", IconId::answer, false,
     [] { return has(imRoutes().autoAnswer); }, &frmTabIM::autoAnswer},
    {&frmTabIM::cmdIgnore, L"&Ignore", L"Shut out IMs of this member", IconId::ignore, true,
     [] { return static_cast<bool>(imRoutes().addToIgnore); }, &frmTabIM::AddToIgnore},
    {&frmTabIM::cmdNotes, L"No&tes", L"Edit your note on this member", IconId::notes, true,
     [] { return static_cast<bool>(imRoutes().editNotes); }, &frmTabIM::editNotes},
    {&frmTabIM::cmdCopy, L"Cop&y", L"Copy the conversation", IconId::copy, true,
     [] { return true; }, &frmTabIM::copyText},
    {&frmTabIM::cmdLog, L"Lo&g", L"Open the member's log", IconId::log, true, [] { return true; },
     &frmTabIM::openLog},
    {&frmTabIM::cmdOptions, L"&Options", L"Options of this window", IconId::menu, false,
     [] { return true; }, &frmTabIM::optionsMenu},
};

frmTabIM::frmTabIM() : Form("frmTabIM") {}

frmTabIM::Mode frmTabIM::mode()
{
    const std::wstring style = opt::IM::Style.get();
    return equalNoCase(style, L"list") ? list : equalNoCase(style, L"buttons") ? buttons : tabs;
}

FormOptions frmTabIM::options() const
{
    FormOptions options;
    options.title = L"Velora - Instant Messages";
    options.kind = FormKind::sizable;
    options.client = kFirstSize;
    options.extraExStyle = WS_EX_APPWINDOW; // a button in the task bar in any case
    const std::wstring prefix = mode() == list ? L"List" : L"Tab";
    Rect place;
    place.left = static_cast<int>(readSetting(kSection, prefix + L"Left", 0));
    place.top = static_cast<int>(readSetting(kSection, prefix + L"Top", 0));
    place.right = static_cast<int>(readSetting(kSection, prefix + L"Right", 0));
    place.bottom = static_cast<int>(readSetting(kSection, prefix + L"Bottom", 0));
    if (!place.empty())
        options.place = place;
    return options;
}

void frmTabIM::savePlace() const
{
    trap(kModule, [&] {
        const Rect at = place();
        if (at.empty())
            return;
        const std::wstring prefix = mode() == list ? L"List" : L"Tab";
        writeSetting(kSection, prefix + L"Left", at.left);
        writeSetting(kSection, prefix + L"Top", at.top);
        writeSetting(kSection, prefix + L"Right", at.right);
        writeSetting(kSection, prefix + L"Bottom", at.bottom);
    });
}

void frmTabIM::onCreate()
{
    for (const ButtonRow& row : kButtons) {
        ImageButton& button = this->*row.button;
        button.create(*this, row.name, sharedIcon(row.icon, kIcon),
                      [this, clicked = row.clicked] { (this->*clicked)(); });
        button.showName(true);
        tips_.add(button, row.tip);
    }
    tabIMs.create(*this);
    tabIMs.onSelect = [this] { selected(tabIMs.selected()); };
    lstIMs.create(*this, L"Open instant messages", {{L"Screen name", kListWidth - 22}},
                  {.multiple = false, .header = false});
    lstIMs.getText = [](int row, int) {
        const auto at = static_cast<std::size_t>(row);
        return at < openIMs().Count() ? tabTitle(openIMs().at(at)) : std::wstring();
    };
    lstIMs.onSelect = [this] { selected(lstIMs.selected()); };
    lstIMs.onActivate = [this](int row) { selected(row); };
    lblPage.create(*this, L"");
    const auto key = [this](HookMessage& message) { onKey(message); };
    const auto delayed = [this](int code) { onDelayed(code); };
    sbcReply.WndMessageX = sbcConversation.WndMessageX = key;
    sbcReply.DelayedEvent = sbcConversation.DelayedEvent = delayed;
    addKeys();
    DoResize();
    changes_ = onOptionChanged([this](OptionId option) { follow(option); });
}

/// What the window looks like follows its options, wherever they are set.
void frmTabIM::follow(OptionId option)
{
    using namespace opt::IM;
    if (option == DisplayOnTopOfAOL.id())
        keepAbove();
    for (const OptionId look :
         {Style.id(), Position.id(), MultipleRows.id(), TabExtraBtns.id(), IMAnswerMode.id()})
        if (option == look)
            DoResize();
}

void frmTabIM::applyStyle()
{
    DWORD look = TCS_RAGGEDRIGHT;
    if (mode() == buttons)
        look |= TCS_BUTTONS;
    if (equalNoCase(opt::IM::Position.get(), L"bottom"))
        look |= TCS_BOTTOM;
    if (opt::IM::MultipleRows.get())
        look |= TCS_MULTILINE;
    syncing_ = true;
    tabIMs.setLook(look);
    syncing_ = false;
}

void frmTabIM::DoResize()
{
    trap(kModule, [&] {
        if (!isOpen())
            return;
        const bool extra = opt::IM::TabExtraBtns.get();
        std::vector<Box> bar;
        for (const ButtonRow& row : kButtons) {
            (this->*row.button).show(row.there() && (!row.extra || extra));
            bar.push_back(this->*row.button);
        }
        if (imRoutes().autoAnswerOn)
            cmdAA.setChecked(imRoutes().autoAnswerOn());
        applyStyle();
        const bool any = openIMs().Count() > 0, asList = mode() == list;
        tabIMs.show(any && !asList);
        lstIMs.show(asList);
        lstIMs.setPreferredSize({kListWidth, 80});
        lblPage.show(asList || !any);
        lblPage.setText(any ? L"" : L"No instant messages are open.");
        const Box page = columns({lstIMs, grow(tabIMs), grow(lblPage)}, kNear);
        setLayout(rows({columns(bar, 0), grow(page)}, kNear).margins(kNear));
        relayout();
        ResizeTabs();
        ResizeRICHCNTL();
    });
}

void frmTabIM::ResizeTabs()
{
    if (!isOpen() || syncing_)
        return;
    syncing_ = true;
    const clsIMs& ims = openIMs();
    const bool any = ims.Count() > 0;
    while (tabIMs.count() > static_cast<int>(ims.Count()))
        tabIMs.remove(tabIMs.count() - 1);
    for (int i = 0; i < static_cast<int>(ims.Count()); ++i) {
        const clsIMs::Entry& entry = ims.at(static_cast<std::size_t>(i));
        const std::wstring title = tabTitle(entry);
        if (i >= tabIMs.count())
            tabIMs.insert(i, title);
        else if (tabIMs.title(i) != title)
            tabIMs.setTitle(i, title);
        tabIMs.setMarked(i, entry.unread);
    }
    if (const auto now = ims.selectedIndex())
        tabIMs.select(static_cast<int>(*now));
    ResizeList();
    syncing_ = false;
    // The first and the last tab change what is shown, and a row more moves the page.
    if (any == (lblPage.shown() && mode() != list))
        DoResize();
    else
        ResizeRICHCNTL();
}

void frmTabIM::ResizeList()
{
    if (mode() != list)
        return;
    lstIMs.setRowCount(static_cast<int>(openIMs().Count()));
    lstIMs.refresh();
    const auto now = openIMs().selectedIndex();
    if (now && lstIMs.selected() != static_cast<int>(*now))
        lstIMs.select(static_cast<int>(*now));
}

RECT frmTabIM::pageOnScreen() const
{
    constexpr int kInset = 2;
    Rect page = tabIMs.shown() ? tabIMs.pageRect() : lblPage.place();
    page = {page.left + kInset, page.top + kInset, page.right - kInset, page.bottom - kInset};
    RECT screen = toRECT(page);
    MapWindowPoints(hwnd(), nullptr, reinterpret_cast<POINT*>(&screen), 2);
    return screen;
}

bool frmTabIM::showsPage() const
{
    return isOpen() && IsWindowVisible(hwnd()) && !IsIconic(hwnd());
}

bool frmTabIM::isInFront() const
{
    return showsPage() && (GetForegroundWindow() == hwnd() || isInIM());
}

/// The user is in one of the IMs that lie over the page.
bool frmTabIM::isInIM() const
{
    const HWND front = GetForegroundWindow();
    return isAolWindow(front) && GetWindow(front, GW_OWNER) == hwnd();
}

void frmTabIM::showQuietly()
{
    // Not under the window that the user works in when that is AOL: the IM would not be seen.
    const HWND front = GetForegroundWindow();
    const bool overAol = isAolWindow(front);
    // Some window managers give the focus to every new window; they ask the window first.
    setActivates(false);
    SetWindowPos(hwnd(), overAol || !front ? HWND_TOP : front, 0, 0, 0, 0,
                 SWP_SHOWWINDOW | SWP_NOACTIVATE | SWP_NOMOVE | SWP_NOSIZE);
    tmrShown.startOnce(kShownMs, [this] { setActivates(true); });
    keepAbove();
}

void frmTabIM::setActivates(bool activates)
{
    const LONG style = GetWindowLongW(hwnd(), GWL_EXSTYLE);
    SetWindowLongW(hwnd(), GWL_EXSTYLE,
                   activates ? style & ~WS_EX_NOACTIVATE : style | WS_EX_NOACTIVATE);
}

void frmTabIM::hideQuietly()
{
    show(false);
}

/// Wherever this window goes in the order of windows, and when it is hidden, the system takes the
/// IMs over it along, which waits for AOL without a limit.
bool frmTabIM::mayStack() const
{
    return openIMs().Count() == 0 || aolLink().answers();
}

void frmTabIM::flashQuietly()
{
    FLASHWINFO flash = {sizeof flash, hwnd(), FLASHW_TRAY, 3, 0};
    FlashWindowEx(&flash);
}

void frmTabIM::keepAbove()
{
    if (!isOpen())
        return;
    updateHotKeys();
    const HWND front = GetForegroundWindow();
    const bool wanted =
        opt::IM::DisplayOnTopOfAOL.get() && showsPage() && (front == hwnd() || isAolWindow(front));
    if (wanted == onTop_ || !mayStack())
        return;
    onTop_ = wanted;
    constexpr UINT kStay = SWP_NOMOVE | SWP_NOSIZE | SWP_NOACTIVATE;
    SetWindowPos(hwnd(), wanted ? HWND_TOPMOST : HWND_NOTOPMOST, 0, 0, 0, 0, kStay);
    // Otherwise it would stay above the program that has come to the front.
    if (!wanted && front)
        SetWindowPos(hwnd(), front, 0, 0, 0, 0, kStay);
}

void frmTabIM::onSize(Size)
{
    ResizeRICHCNTL();
}

void frmTabIM::onMove()
{
    ResizeRICHCNTL();
}

void frmTabIM::onShow(bool)
{
    // The window's state changes after this message.
    postCall([] { ResizeRICHCNTL(); });
}

void frmTabIM::onActivate(bool active)
{
    updateHotKeys();
    tmrFocus.stop();
    // A click says itself where the focus goes, and it takes a moment to show as one.
    if (active && !std::exchange(keepFocus_, false))
        tmrFocus.startOnce(kFocusMs, [this] {
            const bool clicking = GetCapture() || GetAsyncKeyState(VK_LBUTTON) < 0
                                  || GetAsyncKeyState(VK_RBUTTON) < 0;
            if (!clicking && GetForegroundWindow() == hwnd())
                focusReply();
        });
}

bool frmTabIM::onClose(CloseReason reason)
{
    SaveIMPos();
    if (reason == CloseReason::unload)
        return true;
    const std::size_t count = openIMs().Count();
    if (count > 1
        && MsgBoxEx(L"~BClose all " + std::to_wstring(count)
                        + L" instant messages?~B~N ~NWhat was said stays in your IM logs.",
                    kMsgYesNo | kMsgQuestion, L"Instant Messages")
               != kAnswerYes)
        return false;
    for (clsIMSession* const session : imSessions())
        if (session->taken)
            CloseUNT(session->window());
    // AOL may be too busy for some; they stay to be seen. The window of the last goes with it.
    if (openIMs().Count() == 0)
        hideQuietly();
    return false;
}

void frmTabIM::onDestroy()
{
    if (hotKeys_) {
        UnregisterHotKey(hwnd(), kNextKey);
        UnregisterHotKey(hwnd(), kBackKey);
    }
    tmrFocus.stop();
    tmrShown.stop();
    sbcReply.detach();
    sbcConversation.detach();
}

std::optional<LRESULT> frmTabIM::onMessage(UINT message, WPARAM wParam, LPARAM)
{
    if (message == WM_HOTKEY) {
        step(wParam == kNextKey ? 1 : -1);
        return 0;
    }
    if (message == WM_SIZE && wParam == SIZE_MINIMIZED)
        postCall([] { ResizeRICHCNTL(); });
    if (message == WM_SYSCOMMAND && (wParam & 0xFFF0) == SC_MINIMIZE && !mayStack())
        return 0;
    return std::nullopt;
}

clsIMSession* frmTabIM::current() const
{
    return imSession(reinterpret_cast<HWND>(openIMs().SelectedIM()));
}

std::wstring frmTabIM::currentName() const
{
    return openIMs().SelectedNick();
}

void frmTabIM::addKeys()
{
    addKey(MOD_CONTROL, VK_TAB, [this] { step(1); });
    addKey(MOD_CONTROL | MOD_SHIFT, VK_TAB, [this] { step(-1); });
    addKey(MOD_CONTROL, 'W', [this] { cancel(); });
    for (int digit = 1; digit <= 9; ++digit)
        addKey(MOD_CONTROL, static_cast<UINT>('0' + digit), [this, digit] { stepTo(digit - 1); });
    addKey(0, VK_ESCAPE, [this] { focusReply(); });
}

/// The keys that AOL's windows get, while AOL waits: decide here, act when AOL is done.
void frmTabIM::onKey(HookMessage& message)
{
    if (message.posted) {
        updateHotKeys();
        return;
    }
    const bool control = message.control, shift = message.shift;
    int code = 0;
    if (message.wParam == VK_RETURN)
        code = message.window == sbcReply.window() && !control && !shift && !ownEnter()
                       && opt::IM::EnterSends.get()
                   ? kSend
                   : 0;
    else if (message.wParam == VK_TAB)
        code = control || opt::IM::TabSwitches.get() ? (shift ? kBack : kNext) : 0;
    else if (message.wParam == VK_F6)
        code = kToButtons;
    else if (control && message.wParam == 'W')
        code = kClose;
    else if (control)
        code = kTabOne + static_cast<int>(message.wParam) - '1';
    if (!code)
        return;
    message.noDefault = true;
    message.requestDelayed(code);
}

void frmTabIM::onDelayed(int code)
{
    switch (code) {
    case kSend: send(); return;
    case kNext: step(1); return;
    case kBack: step(-1); return;
    case kClose: cancel(); return;
    case kToButtons:
        keepFocus_ = true;
        setActivates(true);
        bringToFront();
        cmdSend.focus();
        return;
    default: stepTo(code - kTabOne); return;
    }
}

void frmTabIM::step(int by)
{
    const auto now = openIMs().selectedIndex();
    const int count = static_cast<int>(openIMs().Count());
    if (now && count > 1)
        stepTo((static_cast<int>(*now) + by + count) % count);
}

void frmTabIM::stepTo(int index)
{
    if (index >= 0 && index < static_cast<int>(openIMs().Count()))
        selectIM(reinterpret_cast<HWND>(openIMs().at(static_cast<std::size_t>(index)).window),
                 true);
}

void frmTabIM::selected(int index)
{
    if (!syncing_)
        stepTo(index);
}

void frmTabIM::currentChanged(bool focus)
{
    const std::wstring name = currentName();
    setTitle(name.empty() ? L"Velora - Instant Messages" : L"Velora - IM: " + name);
    for (const ButtonRow& row : kButtons)
        if (row.button != &frmTabIM::cmdOptions && row.button != &frmTabIM::cmdAA)
            (this->*row.button).enable(!name.empty());
    const auto watch = [](WindowHook& hook, HWND window) {
        if (!window)
            hook.detach();
        else if (hook.window() != window)
            hook.attach(aolLink(), window,
                        {WatchRule::key(WM_KEYDOWN, VK_RETURN),
                         WatchRule::key(WM_KEYDOWN, VK_TAB),
                         WatchRule::key(WM_KEYDOWN, VK_F6),
                         {WM_KEYDOWN, 'W', 'W', Delivery::verdict, false, true},
                         {WM_KEYDOWN, '1', '9', Delivery::verdict, false, true},
                         {WM_SETFOCUS, 0, ~WPARAM{0}, Delivery::postedAfter, true},
                         {WM_KILLFOCUS, 0, ~WPARAM{0}, Delivery::postedAfter, true}});
    };
    const clsIMSession* const im = current();
    watch(sbcReply, im ? im->parts().reply : nullptr);
    watch(sbcConversation, im ? im->parts().conversation : nullptr);
    tipNotes_.hideBalloon();
    if (!focus)
        return;
    focusReply();
    if (opt::IM::DisplayNotes.get())
        showBuddyNotes();
}

void frmTabIM::InitBuddyTooltip()
{
    tipNotes_.setBalloonShape(opt::IM::BuddyTipBalloon.get());
    ResetTipColors();
}

void frmTabIM::ResetTipColors()
{
    tipNotes_.setColours(systemColour(opt::IM::BuddyTipTextColor.get()),
                         systemColour(opt::IM::BuddyTipBackColor.get()));
}

void frmTabIM::showBuddyNotes()
{
    std::wstring note = GetBuddyNotes(currentName());
    if (note.empty())
        return;
    if (note.size() > kMostNoteShown)
        note = note.substr(0, kMostNoteShown) + L"\u2026";
    InitBuddyTooltip();
    // Under the tab's first letters, or beside the row.
    RECT page = pageOnScreen();
    const int index = tabIMs.selected();
    RECT tab = {};
    if (tabIMs.shown()
        && SendMessageW(tabIMs.hwnd(), TCM_GETITEMRECT, static_cast<WPARAM>(index),
                        reinterpret_cast<LPARAM>(&tab))) {
        MapWindowPoints(tabIMs.hwnd(), nullptr, reinterpret_cast<POINT*>(&tab), 2);
        page.left = (tab.left + tab.right) / 2;
        page.top = tab.bottom;
    }
    tipNotes_.showBalloon(*this, {page.left, page.top}, currentName(), note,
                          ToolTip::Sign::information,
                          kNotesMs + kNotesMsEach * static_cast<UINT>(note.size()));
}

void frmTabIM::focusReply()
{
    clsIMSession* const im = current();
    // To be in front is to be asked by the system, which waits for AOL without a limit.
    if (!im || !showsPage() || !aolLink().answers())
        return;
    im->findParts();
    // An IM whose reply part is closed gets it opened, which puts the focus there.
    const IMParts& parts = im->parts();
    const HWND holder = GetAncestor(im->window(), GA_ROOT);
    SetForegroundWindow(holder);
    if (parts.respond)
        clickAolIcon(parts.respond);
    else
        aolLink().setFocus(parts.reply);
    updateHotKeys();
}

/// AOL's own message loop takes Ctrl+Tab before any window of it gets the key, so it is a hot key
/// as long as an IM of this window has the focus.
void frmTabIM::updateHotKeys()
{
    const bool wanted = isInIM();
    if (wanted == hotKeys_)
        return;
    hotKeys_ = wanted;
    if (wanted) {
        RegisterHotKey(hwnd(), kNextKey, MOD_CONTROL, VK_TAB);
        RegisterHotKey(hwnd(), kBackKey, MOD_CONTROL | MOD_SHIFT, VK_TAB);
    } else {
        UnregisterHotKey(hwnd(), kNextKey);
        UnregisterHotKey(hwnd(), kBackKey);
    }
}

} // namespace velora
