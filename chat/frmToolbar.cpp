// The panel: its buttons, its menu and its place. The hooks are in frmToolbarHooks.cpp.
#include "chat/frmToolbar.h"

#include "base/trap.h"
#include "chat/ToolbarRoutes.h"
#include "chat/frmTray.h"
#include "chat/modIcons_win.h"
#include "core/modAOL.h"
#include "settings/Options.h"
#include "ui/Menu.h"
#include "ui/Placement.h"
#include "ui/WinGeometry.h"

namespace velora {
namespace {

constexpr char kModule[] = "frmToolbar";
constexpr int kIconSize = 20;
constexpr Size kButtonSize{28, 26};
constexpr int kGrip = 9;  // pixels along the panel
constexpr int kFrame = 2; // around the buttons
constexpr UINT kDragMs = 15;
/// Left free at the right end: there AOL shows the buttons of a maximised window of its own.
constexpr int kFromRight = 64;

bool has(const std::function<void()>& route)
{
    return static_cast<bool>(route);
}

bool always(const ToolbarRoutes&)
{
    return true;
}

} // namespace

/// One button of the panel, in their order.
struct frmToolbar::ButtonRow {
    ImageButton frmToolbar::*button;
    const wchar_t* name; ///< its window text, too
    const wchar_t* tip;
    IconId icon;
    bool (*there)(const ToolbarRoutes& routes); ///< whether somebody does what it asks for
    void (frmToolbar::*clicked)();
};

const frmToolbar::ButtonRow frmToolbar::kButtons[] = {
    {&frmToolbar::cmdWavs, L"Wav List", L"Wav List: hear sounds and send them to the room",
     IconId::wavs, [](const ToolbarRoutes& routes) { return has(routes.openWavs); },
     &frmToolbar::openWavs},
    {&frmToolbar::cmdIMs, L"IM Manager", L"IM Manager: all your instant messages in one window",
     IconId::ims, [](const ToolbarRoutes& routes) { return has(routes.openIMs); },
     &frmToolbar::openIMs},
    {&frmToolbar::cmdMail, L"Mail", L"Mail tools", IconId::mail,
     [](const ToolbarRoutes& routes) { return bool(routes.mailMenu); }, &frmToolbar::openMail},
    {&frmToolbar::cmdPeople, L"People", L"People: who is in the room", IconId::people, always,
     &frmToolbar::openPeople},
    {&frmToolbar::cmdQuotes, L"Quotes", L"Quotes: how your replies quote", IconId::quotes,
     [](const ToolbarRoutes& routes) { return bool(routes.quotesMenu); }, &frmToolbar::openQuotes},
    {&frmToolbar::cmdHugs, L"Hugs", L"Hugs: hug somebody in the room", IconId::hugs, always,
     &frmToolbar::openHugs},
    {&frmToolbar::cmdFade, L"Fader", L"Fader: colours for what you write", IconId::fade, always,
     &frmToolbar::openFade},
    {&frmToolbar::cmdEncrypt, L"Encrypt", L"Encrypt the mail that is open", IconId::encrypt,
     [](const ToolbarRoutes& routes) { return has(routes.encryptMail); }, &frmToolbar::openEncrypt},
    {&frmToolbar::cmdMenu, L"Menu", L"Velora's menu", IconId::menu, always, &frmToolbar::openMenu},
    {&frmToolbar::cmdPlus, L"Commands", L"Your own commands", IconId::plus, always,
     &frmToolbar::openPlus},
};

frmToolbar::frmToolbar() : Form("frmToolbar") {}

frmToolbar::~frmToolbar() = default;

frmToolbar& frmToolbar::load()
{
    frmToolbar& form = open<frmToolbar>();
    if (!opt::General::ShowToolbar.get())
        form.ShowToolbar(false); // the user likes to begin without it
    form.EnableSubclass();
    form.SetPanelPos();
    form.RefreshTray();
    return form;
}

FormOptions frmToolbar::options() const
{
    FormOptions options;
    options.title = L"Velora Toolbar";
    options.kind = FormKind::panel;
    options.owner = AOLWindow();
    options.activates = false;
    return options;
}

void frmToolbar::onCreate()
{
    frame_ = AOLWindow();
    for (const ButtonRow& row : kButtons) {
        if (!row.there(toolbarRoutes()))
            continue;
        ImageButton& button = this->*row.button;
        button.create(
            *this, row.name, sharedIcon(row.icon, kIconSize),
            [this, clicked = row.clicked] { (this->*clicked)(); }, false);
        button.setIcon(sharedIcon(row.icon, kIconSize), kIconSize);
        button.setPreferredSize(kButtonSize);
        tips_.add(button, row.tip);
    }
    ResizeButtons();
    changes_ = onOptionChanged([this](OptionId id) { optionChanged(id); });
}

void frmToolbar::optionChanged(OptionId id)
{
    if (!isOpen())
        return;
    if (id == opt::Toolbar::Horizontal.id() || id == opt::Toolbar::Buttons.id())
        ResizeButtons();
    if (id == opt::Toolbar::ShowToolbar.id() || id == opt::Toolbar::Position.id())
        SetPanelPos();
    if (id == opt::Toolbar::ShowToolbar.id() || id == opt::Toolbar::MenuAccess.id())
        RefreshTray();
}

void frmToolbar::ResizeButtons()
{
    trap(kModule, [&] {
        const bool horizontal = opt::Toolbar::Horizontal.get();
        const std::wstring hidden = opt::Toolbar::Buttons.get();
        std::vector<Box> buttons;
        for (const ButtonRow& row : kButtons) {
            ImageButton& button = this->*row.button;
            if (!button.hwnd())
                continue;
            button.show(!holdsName(hidden, row.name));
            buttons.push_back(button);
        }
        const Box row = line(buttons, 0, !horizontal);
        const Box layout = horizontal ? row.margins(kGrip + kFrame, kFrame, kFrame, kFrame)
                                      : row.margins(kFrame, kGrip + kFrame, kFrame, kFrame);
        setLayout(layout);
        setPlace(rectOf({place().left, place().top}, layout.preferredSize()));
        relayout();
        SetPanelPos();
        RefreshPanel();
    });
}

void frmToolbar::RefreshPanel()
{
    RedrawWindow(hwnd(), nullptr, nullptr, RDW_INVALIDATE | RDW_ERASE | RDW_ALLCHILDREN);
}

void frmToolbar::ShowToolbar(bool visible)
{
    trap(kModule, [&] { opt::Toolbar::ShowToolbar.set(visible); });
}

void frmToolbar::PositionMe()
{
    trap(kModule, [] { opt::Toolbar::Position.set(L""); });
}

void frmToolbar::RefreshTray()
{
    const bool wanted =
        menuInTray(opt::Toolbar::MenuAccess.get()) || !opt::Toolbar::ShowToolbar.get();
    if (ended_ || !wanted)
        frmTray::hideIcon();
    else
        frmTray::showIcon(signedOn_.empty() ? L"Velora" : L"Velora - " + signedOn_);
}

void frmToolbar::fillButtonItems(Menu& menu)
{
    const std::wstring hidden = opt::Toolbar::Buttons.get();
    for (const ButtonRow& row : kButtons) {
        if (!(this->*row.button).hwnd())
            continue;
        const bool shown = !holdsName(hidden, row.name);
        menu.item(row.name,
                  [name = row.name, shown] {
                      const std::wstring before = opt::Toolbar::Buttons.get();
                      opt::Toolbar::Buttons.set(shown ? withName(before, name)
                                                      : withoutName(before, name));
                  },
                  {.checked = shown});
    }
}

void frmToolbar::fillPanelItems(Menu& menu)
{
    const bool wanted = opt::Toolbar::ShowToolbar.get();
    const bool horizontal = opt::Toolbar::Horizontal.get();
    menu.item(L"&Show the Toolbar", [this, wanted] { ShowToolbar(!wanted); }, {.checked = wanted});
    menu.item(L"&Upright", [horizontal] { opt::Toolbar::Horizontal.set(!horizontal); },
              {.checked = !horizontal});
    fillButtonItems(menu.submenu(L"&Buttons"));
    menu.item(L"&Reset Position", [this] { PositionMe(); },
              {.enabled = parsePanelOffset(opt::Toolbar::Position.get()).has_value()});
    menu.separator();
    const bool inTray = menuInTray(opt::Toolbar::MenuAccess.get());
    menu.item(L"Icon in the &Notification Area",
              [inTray] { opt::Toolbar::MenuAccess.set(inTray ? L"Toolbar" : L"Tray"); },
              {.checked = inTray});
}

PanelOffset frmToolbar::offset() const
{
    if (dragged_)
        return *dragged_;
    if (const auto kept = parsePanelOffset(opt::Toolbar::Position.get()))
        return *kept;
    // Over the right end of AOL's menu bar.
    POINT client{0, 0};
    ClientToScreen(frame_, &client);
    const int menuBar = GetMenu(frame_) ? GetSystemMetrics(SM_CYMENU) : 0;
    const int top = static_cast<int>(client.y) - menuBar - windowRect(frame_).top;
    return {kFromRight, std::max(0, top)};
}

void frmToolbar::SetPanelPos()
{
    trap(kModule, [&] {
        if (!isOpen())
            return;
        const bool over = IsWindow(frame_) && IsWindowVisible(frame_) && !IsIconic(frame_);
        if (!over || !opt::Toolbar::ShowToolbar.get()) {
            if (IsWindowVisible(hwnd()))
                show(false);
            return;
        }
        const Rect present = place();
        const Rect wanted = movedInto(panelPlace(windowRect(frame_), present.size(), offset()),
                                      monitorAreaNear(windowRect(frame_)));
        if (wanted != present)
            setPlace(wanted);
        if (!IsWindowVisible(hwnd()))
            show();
    });
}

void frmToolbar::showUnder(ImageButton& button, Menu& menu)
{
    const Rect place = button.screenPlace();
    // Its tip would come up over the menu.
    tips_.remove(button);
    if (opt::Toolbar::Horizontal.get())
        menu.popup(*this, {place.left, place.bottom});
    else
        menu.popup(*this, {place.right, place.top});
    if (!isOpen())
        return;
    for (const ButtonRow& row : kButtons)
        if (&(this->*row.button) == &button)
            tips_.add(button, row.tip);
}

bool frmToolbar::onClose(CloseReason reason)
{
    // Something outside asks the program's main window to close.
    if (reason != CloseReason::user)
        return true;
    if (toolbarRoutes().exitProgram)
        toolbarRoutes().exitProgram();
    return false;
}

Rect frmToolbar::gripRect() const
{
    const Size size = clientSize(hwnd());
    return opt::Toolbar::Horizontal.get() ? Rect{0, 0, kGrip + kFrame, size.height}
                                          : Rect{0, 0, size.width, kGrip + kFrame};
}

void frmToolbar::onPaint(HDC dc, const Rect& client)
{
    RECT edge = toRECT(client);
    DrawEdge(dc, &edge, BDR_RAISEDINNER, BF_RECT);
    // Two rows of dots to take hold of.
    const Rect grip = gripRect();
    const bool horizontal = grip.height() > grip.width();
    const int length = horizontal ? grip.height() : grip.width();
    for (int along = 7; along + 7 < length; along += 4)
        for (const int across : {4, 7}) {
            const Point dot = horizontal ? Point{across, along} : Point{along, across};
            SetPixelV(dc, dot.x + 1, dot.y + 1, GetSysColor(COLOR_3DHILIGHT));
            SetPixelV(dc, dot.x, dot.y, GetSysColor(COLOR_3DSHADOW));
        }
}

// Not by capturing the mouse: a window that is not in front loses it to the one under the pointer.
void frmToolbar::startDrag()
{
    GetCursorPos(&dragFrom_);
    dragStart_ = place();
    dragged_ = offset();
    tmrDrag.start(kDragMs, [this] { drag(); });
}

void frmToolbar::drag()
{
    POINT at;
    GetCursorPos(&at);
    const int dx = at.x - dragFrom_.x, dy = at.y - dragFrom_.y;
    dragged_ = panelOffset(windowRect(frame_), {dragStart_.left + dx, dragStart_.top + dy,
                                                dragStart_.right + dx, dragStart_.bottom + dy});
    SetPanelPos();
    const int button = GetSystemMetrics(SM_SWAPBUTTON) ? VK_RBUTTON : VK_LBUTTON;
    if (GetAsyncKeyState(button) >= 0)
        endDrag();
}

void frmToolbar::endDrag()
{
    tmrDrag.stop();
    if (place() != dragStart_)
        opt::Toolbar::Position.set(panelOffsetText(*dragged_));
    dragged_.reset();
}

std::optional<LRESULT> frmToolbar::onMessage(UINT message, WPARAM wParam, LPARAM lParam)
{
    switch (message) {
    case WM_SYSCOLORCHANGE: RefreshPanel(); return 0;
    case WM_SETCURSOR: {
        POINT at;
        GetCursorPos(&at);
        ScreenToClient(hwnd(), &at);
        const RECT grip = toRECT(gripRect());
        if (reinterpret_cast<HWND>(wParam) != hwnd() || !PtInRect(&grip, at))
            return std::nullopt;
        SetCursor(LoadCursorW(nullptr, IDC_SIZEALL));
        return TRUE;
    }
    case WM_LBUTTONDOWN: {
        const RECT grip = toRECT(gripRect());
        if (PtInRect(&grip,
                     {static_cast<short>(LOWORD(lParam)), static_cast<short>(HIWORD(lParam))}))
            startDrag();
        return 0;
    }
    case WM_LBUTTONUP:
        if (dragged_)
            endDrag();
        return 0;
    default: return std::nullopt;
    }
}

} // namespace velora
