#include "ui/ListView.h"

#include "base/text.h"

#include <algorithm>

namespace velora {
namespace {
constexpr UINT kSelectionChanged = WM_APP + 1; // posted by the list to itself
} // namespace

void ListView::create(Form& form, std::wstring_view name, const std::vector<Column>& columns,
                      const Options& options)
{
    createWindow(form, WC_LISTVIEWW, name,
                 WS_TABSTOP | LVS_REPORT | LVS_OWNERDATA | LVS_SHOWSELALWAYS
                     | (options.multiple ? 0u : LVS_SINGLESEL)
                     | (options.header ? 0u : LVS_NOCOLUMNHEADER)
                     | (options.images ? LVS_SHAREIMAGELISTS : 0u),
                 WS_EX_CLIENTEDGE);
    subclass();
    send(LVM_SETEXTENDEDLISTVIEWSTYLE, 0,
         LVS_EX_FULLROWSELECT | LVS_EX_INFOTIP | LVS_EX_DOUBLEBUFFER);
    if (options.images)
        send(LVM_SETIMAGELIST, LVSIL_SMALL, reinterpret_cast<LPARAM>(options.images));
    for (std::size_t i = 0; i < columns.size(); ++i) {
        std::wstring title = columns[i].title;
        LVCOLUMNW column = {};
        column.mask = LVCF_TEXT | LVCF_WIDTH | LVCF_FMT;
        column.fmt = columns[i].rightAligned ? LVCFMT_RIGHT : LVCFMT_LEFT;
        column.cx = columns[i].width;
        column.pszText = title.data();
        send(LVM_INSERTCOLUMNW, i, reinterpret_cast<LPARAM>(&column));
    }
}

void ListView::setRowCount(int rows)
{
    send(LVM_SETITEMCOUNT, static_cast<WPARAM>(rows), LVSICF_NOSCROLL);
    redraw();
}

int ListView::rowCount() const
{
    return static_cast<int>(send(LVM_GETITEMCOUNT));
}

void ListView::refresh()
{
    redraw();
}

int ListView::selected() const
{
    return hwnd() ? static_cast<int>(send(LVM_GETNEXTITEM, static_cast<WPARAM>(-1), LVNI_SELECTED))
                  : -1;
}

std::vector<int> ListView::selection() const
{
    std::vector<int> rows;
    if (!hwnd())
        return rows;
    for (LRESULT row = -1;
         (row = send(LVM_GETNEXTITEM, static_cast<WPARAM>(row), LVNI_SELECTED)) >= 0;)
        rows.push_back(static_cast<int>(row));
    return rows;
}

int ListView::selectedCount() const
{
    return static_cast<int>(send(LVM_GETSELECTEDCOUNT));
}

int ListView::focusedRow() const
{
    return hwnd() ? static_cast<int>(send(LVM_GETNEXTITEM, static_cast<WPARAM>(-1), LVNI_FOCUSED))
                  : -1;
}

void ListView::select(int row)
{
    LVITEMW item = {};
    item.stateMask = LVIS_SELECTED;
    send(LVM_SETITEMSTATE, static_cast<WPARAM>(-1), reinterpret_cast<LPARAM>(&item));
    if (row < 0)
        return;
    item.state = item.stateMask = LVIS_SELECTED | LVIS_FOCUSED;
    send(LVM_SETITEMSTATE, static_cast<WPARAM>(row), reinterpret_cast<LPARAM>(&item));
    send(LVM_SETSELECTIONMARK, 0, row);
    ensureVisible(row);
}

void ListView::ensureVisible(int row)
{
    send(LVM_ENSUREVISIBLE, static_cast<WPARAM>(row), FALSE);
}

int ListView::hit(Point screen) const
{
    if (!hwnd())
        return -1;
    LVHITTESTINFO info = {};
    info.pt = {screen.x, screen.y};
    ScreenToClient(hwnd(), &info.pt);
    return static_cast<int>(send(LVM_HITTEST, 0, reinterpret_cast<LPARAM>(&info)));
}

void ListView::setSortMark(int column, int direction)
{
    const auto header = reinterpret_cast<HWND>(send(LVM_GETHEADER));
    const int count = static_cast<int>(SendMessageW(header, HDM_GETITEMCOUNT, 0, 0));
    for (int i = 0; i < count; ++i) {
        HDITEMW item = {};
        item.mask = HDI_FORMAT;
        SendMessageW(header, HDM_GETITEMW, static_cast<WPARAM>(i), reinterpret_cast<LPARAM>(&item));
        item.fmt &= ~(HDF_SORTUP | HDF_SORTDOWN);
        if (i == column && direction != 0)
            item.fmt |= direction > 0 ? HDF_SORTUP : HDF_SORTDOWN;
        SendMessageW(header, HDM_SETITEMW, static_cast<WPARAM>(i), reinterpret_cast<LPARAM>(&item));
    }
}

int ListView::columnWidth(int column) const
{
    return static_cast<int>(send(LVM_GETCOLUMNWIDTH, static_cast<WPARAM>(column)));
}

int ListView::search(std::wstring_view typed, int from) const
{
    if (findRow)
        return findRow(typed, from);
    const int rows = rowCount();
    for (int i = 0; getText && i < rows; ++i) {
        const int row = (from + i) % rows;
        if (startsWithNoCase(getText(row, 0), typed))
            return row;
    }
    return -1;
}

void ListView::giveText(LVITEMW& item) const
{
    if (item.iItem < 0 || item.iItem >= rowCount())
        return;
    if ((item.mask & LVIF_TEXT) && item.cchTextMax > 0) {
        const std::wstring text = getText ? getText(item.iItem, item.iSubItem) : std::wstring();
        const auto most = static_cast<std::size_t>(item.cchTextMax - 1);
        item.pszText[text.copy(item.pszText, most)] = 0;
    }
    if ((item.mask & LVIF_IMAGE) && getImage)
        item.iImage = getImage(item.iItem);
}

LRESULT ListView::drawRow(NMLVCUSTOMDRAW& draw) const
{
    if (!getColour)
        return CDRF_DODEFAULT;
    if (draw.nmcd.dwDrawStage == CDDS_PREPAINT)
        return CDRF_NOTIFYITEMDRAW;
    if (draw.nmcd.dwDrawStage == CDDS_ITEMPREPAINT)
        if (const auto colour = getColour(static_cast<int>(draw.nmcd.dwItemSpec)))
            draw.clrText = *colour;
    return CDRF_DODEFAULT;
}

LRESULT ListView::onNotify(NMHDR& header)
{
    switch (static_cast<int>(header.code)) {
    case static_cast<int>(LVN_GETDISPINFOW):
        giveText(reinterpret_cast<NMLVDISPINFOW&>(header).item);
        return 0;
    case static_cast<int>(LVN_ODFINDITEMW): {
        const auto& find = reinterpret_cast<NMLVFINDITEMW&>(header);
        if (!(find.lvfi.flags & (LVFI_STRING | LVFI_PARTIAL)) || !find.lvfi.psz)
            return -1;
        return search(find.lvfi.psz, std::max(0, find.iStart));
    }
    case static_cast<int>(LVN_ITEMCHANGED):
    case static_cast<int>(LVN_ODSTATECHANGED):
        // One click raises several: onSelect comes once, after the last.
        if (onSelect && !std::exchange(selectionPending_, true))
            PostMessageW(hwnd(), kSelectionChanged, 0, 0);
        return 0;
    case static_cast<int>(LVN_ITEMACTIVATE):
        if (const int row = focusedRow(); onActivate && row >= 0)
            onActivate(row);
        return 0;
    case static_cast<int>(LVN_COLUMNCLICK):
        if (onColumnClick)
            onColumnClick(reinterpret_cast<NMLISTVIEW&>(header).iSubItem);
        return 0;
    case static_cast<int>(LVN_KEYDOWN):
        if (onKey)
            onKey(reinterpret_cast<NMLVKEYDOWN&>(header).wVKey);
        return 0;
    case static_cast<int>(LVN_BEGINDRAG):
        if (onDragStart)
            onDragStart();
        return 0;
    case static_cast<int>(NM_CUSTOMDRAW): return drawRow(reinterpret_cast<NMLVCUSTOMDRAW&>(header));
    default: return 0;
    }
}

std::optional<LRESULT> ListView::onMessage(UINT message, WPARAM wParam, LPARAM lParam)
{
    if (message == kSelectionChanged) {
        selectionPending_ = false;
        if (onSelect)
            onSelect();
        return 0;
    }
    // Enter opens the row instead of pressing the default button.
    const auto* const key = reinterpret_cast<const MSG*>(lParam);
    if (message == WM_GETDLGCODE && key && key->message == WM_KEYDOWN && key->wParam == VK_RETURN
        && onActivate && focusedRow() >= 0)
        return DLGC_WANTMESSAGE;
    if (message == WM_KEYDOWN && wParam == 'A' && GetKeyState(VK_CONTROL) < 0) {
        LVITEMW item = {};
        item.state = item.stateMask = LVIS_SELECTED;
        send(LVM_SETITEMSTATE, static_cast<WPARAM>(-1), reinterpret_cast<LPARAM>(&item));
        return 0;
    }
    return std::nullopt;
}

} // namespace velora
