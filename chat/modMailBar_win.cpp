#include "chat/modMailBar_win.h"

#include "base/trap.h"
#include "chat/clsReplyHooks.h"
#include "chat/modQuote.h"
#include "core/MsgBoxEx.h"
#include "core/modAOL.h"
#include "core/modFindChild.h"
#include "hook/AgentLink.h"
#include "ui/WinGeometry.h"

#include <algorithm>

namespace velora {
namespace {

constexpr char kModule[] = "modMailBar";
/// Left of the menu bar's end: there AOL shows the boxes of a maximised document.
constexpr int kMaximisedBoxes = 64;
/// What AOL's menus take where the system does not tell.
constexpr int kMenus = 480;

Rect clientRect(HWND window)
{
    POINT corner{0, 0};
    ClientToScreen(window, &corner);
    return rectOf({static_cast<int>(corner.x), static_cast<int>(corner.y)}, clientSize(window));
}

Rect titleLineOf(HWND document)
{
    const LONG style = GetWindowLongW(document, GWL_STYLE);
    TitledWindow titled{windowRect(document), clientRect(document)};
    if (style & WS_SYSMENU)
        titled.boxes = style & (WS_MINIMIZEBOX | WS_MAXIMIZEBOX) ? 3 : 1;
    titled.boxWidth = GetSystemMetrics(SM_CXSIZE);
    Rect line = titleLine(titled);
    // What is moved out of the workspace is not to be seen.
    const Rect workspace = clientRect(GetParent(document));
    line.right = std::min(line.right, workspace.right);
    return line.top < workspace.top || line.bottom > workspace.bottom ? Rect{} : line;
}

MailBarRoom menuRoom(HWND frame)
{
    MailBarRoom room;
    const HMENU menu = GetMenu(frame);
    if (!menu)
        return room;
    const Rect client = clientRect(frame);
    room.line = {client.left, client.top - GetSystemMetrics(SM_CYMENU),
                 client.right - kMaximisedBoxes, client.top};
    const int items = GetMenuItemCount(menu);
    if (items <= 0)
        room.line.left += kMenus;
    for (int i = 0; i < items; ++i) {
        RECT item = {};
        if (GetMenuItemRect(frame, menu, static_cast<UINT>(i), &item))
            room.inTheWay.push_back(fromRECT(item));
    }
    return room;
}

struct Search {
    HWND frame;
    Rect part;
    bool found = false;
};

BOOL CALLBACK findCovering(HWND window, LPARAM parameter) noexcept
{
    auto& search = *reinterpret_cast<Search*>(parameter);
    // Menus and tips lie above everything by themselves.
    if (window == search.frame || !IsWindowVisible(window)
        || (GetWindowLongW(window, GWL_EXSTYLE) & WS_EX_TOPMOST))
        return TRUE;
    search.found = !intersection(windowRect(window), search.part).empty();
    return !search.found;
}

} // namespace

HWND frontDocument()
{
    HWND child = GetWindow(AOLMDI(), GW_CHILD);
    while (child && !IsWindowVisible(child))
        child = GetWindow(child, GW_HWNDNEXT);
    return IsIconic(child) ? nullptr : child;
}

MailKind writtenKind(HWND document)
{
    MailTraits traits;
    traits.writes = GetMailReplyWnd(document) != nullptr;
    while (traits.writes && FindChildByClass(document, L"_AOL_Edit", traits.fields + 1))
        ++traits.fields;
    traits.reply = isReplySubject(windowCaption(document));
    return mailKind(traits);
}

MailBarRoom mailBarRoom(HWND document)
{
    return IsZoomed(document) ? menuRoom(AOLWindow()) : MailBarRoom{titleLineOf(document), {}};
}

bool coveredByAol(const Rect& part)
{
    Search search{AOLWindow(), part};
    EnumThreadWindows(GetWindowThreadProcessId(search.frame, nullptr), findCovering,
                      reinterpret_cast<LPARAM>(&search));
    return search.found;
}

bool MailAdvertise(HWND mail)
{
    return trap(
        kModule,
        [&] {
            const auto tell = [](const wchar_t* what) {
                MsgBoxEx(what, kMsgInformation, L"Mail");
                return false;
            };
            constexpr int end = 0x7FFFFFF0; // behind any text
            AgentLink& link = aolLink();
            const HWND body = connectAol() ? GetMailReplyWnd(mail) : nullptr;
            const auto text = body ? link.readText(body) : std::nullopt;
            if (text && holdsAdvertisement(*text))
                return tell(L"Your E-Mail has the line about Velora already.");
            const LRESULT cursor = sendToAol(body, EM_GETSEL, 0, 0).value_or(0);
            if (!text || !link.select(body, end, end)
                || !link.replaceSelection(body, mailAdvertisement()))
                return tell(L"~B~CRAOL did not take the line about Velora!~B~CN~N ~NPlease try "
                            L"this operation again.");
            link.select(body, LOWORD(cursor), HIWORD(cursor));
            ScrollToCursor(body);
            return true;
        },
        false);
}

} // namespace velora
