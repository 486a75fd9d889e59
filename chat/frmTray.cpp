#include "chat/frmTray.h"

#include "base/trap.h"
#include "chat/ToolbarRoutes.h"
#include "chat/frmToolbar.h"
#include "chat/modToolbarMenus.h"
#include "core/modAOL.h"
#include "ui/Menu.h"

#include <algorithm>

namespace velora {
namespace {

constexpr char kModule[] = "frmTray";
constexpr UINT kIconId = 1, kIconMessage = WM_APP + 70;
/// The task bar may come up after the program does.
constexpr UINT kAgainMs = 2000;
constexpr int kMostTries = 60;

UINT taskBarCreated()
{
    static const UINT message = RegisterWindowMessageW(L"TaskbarCreated");
    return message;
}

/// The small one of the program file's icons. The system's own where it has none.
HICON programIcon()
{
    const HANDLE icon =
        LoadImageW(GetModuleHandleW(nullptr), MAKEINTRESOURCEW(1), IMAGE_ICON,
                   GetSystemMetrics(SM_CXSMICON), GetSystemMetrics(SM_CYSMICON), LR_SHARED);
    return icon ? static_cast<HICON>(icon) : LoadIconW(nullptr, IDI_APPLICATION);
}

/// AOL in front, out of its button in the task bar. It is not waited for.
void showAol()
{
    const HWND frame = AOLWindow();
    if (IsIconic(frame))
        ShowWindowAsync(frame, SW_RESTORE);
    SetForegroundWindow(frame);
}

} // namespace

void frmTray::showIcon(std::wstring_view tip)
{
    trap(kModule, [&] {
        frmTray* form = instance();
        if (form && form->added_ && form->tip_ == tip)
            return;
        if (!form)
            form = &open<frmTray>();
        form->tip_ = tip;
        form->tries_ = 0;
        form->put();
    });
}

void frmTray::hideIcon()
{
    trap(kModule, [] {
        if (frmTray* const form = instance())
            form->close();
    });
}

FormOptions frmTray::options() const
{
    FormOptions options;
    options.title = L"Velora Icon";
    options.kind = FormKind::tool;
    return options;
}

NOTIFYICONDATAW frmTray::data(UINT flags) const
{
    NOTIFYICONDATAW data{};
    data.cbSize = NOTIFYICONDATAW_V2_SIZE; // a later form is refused by Windows XP
    data.hWnd = hwnd();
    data.uID = kIconId;
    data.uFlags = flags;
    data.uCallbackMessage = kIconMessage;
    data.hIcon = programIcon();
    std::copy_n(tip_.begin(), std::min(tip_.size(), std::size(data.szTip) - 1), data.szTip);
    return data;
}

void frmTray::put()
{
    NOTIFYICONDATAW icon = data(NIF_MESSAGE | NIF_ICON | NIF_TIP);
    added_ = (added_ && Shell_NotifyIconW(NIM_MODIFY, &icon)) || Shell_NotifyIconW(NIM_ADD, &icon);
    if (!added_ && ++tries_ < kMostTries)
        tmrAgain.start(kAgainMs, [this] { put(); });
    else
        tmrAgain.stop();
}

void frmTray::onDestroy()
{
    tmrAgain.stop();
    NOTIFYICONDATAW icon = data(0);
    if (added_)
        Shell_NotifyIconW(NIM_DELETE, &icon);
    added_ = false;
}

std::optional<LRESULT> frmTray::onMessage(UINT message, WPARAM, LPARAM lParam)
{
    if (message == kIconMessage) {
        clicked(static_cast<UINT>(lParam));
        return 0;
    }
    if (message == taskBarCreated()) {
        added_ = false;
        tries_ = 0;
        put();
        return 0;
    }
    return std::nullopt;
}

void frmTray::clicked(UINT mouse)
{
    trap(kModule, [&] {
        if (mouse == WM_LBUTTONUP)
            showAol();
        // While one of the program's boxes waits for an answer its other windows are shut.
        if ((mouse == WM_RBUTTONUP || mouse == WM_CONTEXTMENU) && IsWindowEnabled(hwnd()))
            showMenu();
    });
}

void frmTray::showMenu()
{
    Menu mnuTrayItem;
    mnuTrayItem.item(L"Show &AOL", showAol, {.isDefault = true});
    mnuTrayItem.separator();
    Menu& mnuTrayWav = mnuTrayItem.submenu(L"&Sounds");
    fillWavItems(mnuTrayWav);
    Menu& mnuTrayIM = mnuTrayItem.submenu(L"&Instant Messages");
    fillIMItems(mnuTrayIM);
    Menu& mnuTrayPeople = mnuTrayItem.submenu(L"&People", AOL_FindChat() != nullptr);
    fillPeopleItems(mnuTrayPeople);
    Menu& mnuTrayEdit = mnuTrayItem.submenu(L"&Edit");
    fillEditItems(mnuTrayEdit);
    mnuTrayItem.separator();
    if (frmToolbar* const toolbar = frmToolbar::instance())
        toolbar->fillPanelItems(mnuTrayItem.submenu(L"&Toolbar"));
    if (toolbarRoutes().showOptions)
        mnuTrayItem.item(L"&Options...", toolbarRoutes().showOptions);
    fillHelpItems(mnuTrayItem.submenu(L"&Help"));
    if (toolbarRoutes().exitProgram) {
        mnuTrayItem.separator();
        mnuTrayItem.item(L"E&xit Velora", toolbarRoutes().exitProgram);
    }
    mnuTrayItem.popupAtCursor(*this);
}

} // namespace velora
