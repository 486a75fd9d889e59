// Items of ours in AOL's menus. AOL may replace its menus and popups at any time, so nothing is
// kept about where an item stands: it is put in each time a popup opens without it.
#include "hook/agent/agent.h"
#include "hook/agent/text.h"

namespace velora::agent {
namespace {

constexpr int kDeepest = 6; // menus within menus
constexpr UINT kAbsent = ~0u;

bool captionIs(HMENU menu, int position, const wchar_t* wanted)
{
    wchar_t caption[128];
    return GetMenuStringW(menu, position, caption, 128, MF_BYPOSITION) > 0
           && sameCaption(static_cast<const wchar_t*>(caption), wanted);
}

bool holdsId(HMENU popup, UINT id)
{
    for (int i = GetMenuItemCount(popup); i-- > 0;)
        if (GetMenuItemID(popup, i) == id)
            return true;
    return false;
}

bool holdsCaption(HMENU popup, const wchar_t* caption)
{
    for (int i = GetMenuItemCount(popup); i-- > 0;)
        if (captionIs(popup, i, caption))
            return true;
    return false;
}

/// The popup is the one that opens under this caption, anywhere below `menu`.
bool opensUnder(HMENU menu, HMENU popup, const wchar_t* caption, int depth = 0)
{
    for (int i = GetMenuItemCount(menu); i-- > 0 && depth < kDeepest;) {
        const HMENU below = GetSubMenu(menu, i);
        if (!below)
            continue;
        if (below == popup ? captionIs(menu, i, caption)
                           : opensUnder(below, popup, caption, depth + 1))
            return true;
    }
    return false;
}

bool belongsInto(const wire::MenuItem& item, HMENU popup)
{
    if (item.popupHas)
        return holdsId(popup, item.popupHas);
    if (item.popupHasCaption[0])
        return holdsCaption(popup, wide(item.popupHasCaption));
    return opensUnder(GetMenu(g.frame), popup, wide(item.popupCaption));
}

void remember(HMENU popup)
{
    HMENU* free = nullptr;
    for (HMENU& known : g.popup) {
        if (known == popup)
            return;
        if (!free && (!known || !IsMenu(known)))
            free = &known;
    }
    if (free)
        *free = popup;
}

/// Takes our item out of one popup; one of AOL's that has come to the same identifier stays.
void removeFrom(HMENU popup, const wire::MenuItem& item)
{
    for (int i = GetMenuItemCount(popup); i-- > 0;)
        if (GetMenuItemID(popup, i) == item.id
            && ((item.flags & MF_SEPARATOR) || captionIs(popup, i, wide(item.caption))))
            DeleteMenu(popup, i, MF_BYPOSITION);
}

std::int32_t findBelow(HMENU menu, const wchar_t* caption, int depth)
{
    const int count = GetMenuItemCount(menu);
    for (int i = 0; i < count && depth < kDeepest; ++i) {
        const HMENU below = GetSubMenu(menu, i);
        if (below) {
            if (const std::int32_t id = findBelow(below, caption, depth + 1))
                return id;
        } else if (captionIs(menu, i, caption)) {
            return static_cast<std::int32_t>(GetMenuItemID(menu, i));
        }
    }
    return 0;
}

} // namespace

void removeMenus()
{
    for (HMENU& popup : g.popup) {
        if (popup && IsMenu(popup))
            for (int i = 0; i < wire::kMenuItems; ++i)
                if (g.inserted[i])
                    removeFrom(popup, g.menu[i]);
        popup = nullptr;
    }
    for (int i = 0; i < wire::kMenuItems; ++i) {
        g.menu[i] = {};
        g.inserted[i] = false;
    }
}

void syncMenus()
{
    removeMenus();
    for (int i = 0; i < wire::kMenuItems; ++i) {
        wire::MenuItem item = g.section->menu[i];
        if (!item.id || item.id >= wire::kFirstSystemCommand)
            continue;
        item.caption[wire::kCaption - 1] = 0;
        item.popupCaption[wire::kCaption - 1] = 0;
        item.popupHasCaption[wire::kCaption - 1] = 0;
        g.menu[i] = item;
    }
}

void insertInto(HMENU popup)
{
    for (int i = 0; i < wire::kMenuItems; ++i) {
        const wire::MenuItem& item = g.menu[i];
        if (!item.id || holdsId(popup, item.id) || !belongsInto(item, popup))
            continue;
        // An identifier that AOL uses elsewhere in its menus would take AOL's command away.
        if (!g.inserted[i] && GetMenuState(GetMenu(g.frame), item.id, MF_BYCOMMAND) != kAbsent)
            continue;
        const UINT position = item.position < 0 ? ~0u : static_cast<UINT>(item.position);
        if (InsertMenuW(popup, position, item.flags | MF_BYPOSITION, item.id, wide(item.caption))) {
            g.inserted[i] = true;
            remember(popup);
        }
    }
}

bool tookCommand(WPARAM wParam, LPARAM lParam)
{
    if (lParam != 0 || HIWORD(wParam) != 0)
        return false;
    for (int i = 0; i < wire::kMenuItems; ++i)
        if (g.inserted[i] && g.menu[i].id == LOWORD(wParam)) {
            postEvent(wire::Event::menu, 0, 0, g.menu[i].id);
            return true;
        }
    return false;
}

std::int32_t findItem(const wchar_t* caption)
{
    const std::int32_t id = findBelow(GetMenu(g.frame), caption, 0);
    return id > 0 ? id : static_cast<std::int32_t>(wire::kNotFound);
}

} // namespace velora::agent
