#pragma once
// A report list that asks for the text of each row it shows: 100,000 rows cost nothing until seen.
// The form holds the rows, sorted as it likes, and tells only their number.
#include "ui/Control.h"

#include <commctrl.h>

#include <functional>
#include <vector>

namespace velora {

class ListView : public Control {
public:
    struct Column {
        std::wstring title;
        int width; // pixels
        bool rightAligned = false;
    };
    struct Options {
        bool multiple = true;
        bool header = true;
        HIMAGELIST images = nullptr; // 16 x 16; stays the caller's
    };
    /// `name` is the accessible name.
    void create(Form& form, std::wstring_view name, const std::vector<Column>& columns,
                const Options& options);
    void create(Form& form, std::wstring_view name, const std::vector<Column>& columns)
    {
        create(form, name, columns, Options());
    }

    /// The number of rows; draws them anew and keeps the scroll position where it can.
    void setRowCount(int rows);
    int rowCount() const;
    void refresh();       // texts changed
    int selected() const; // the first; -1 = none
    std::vector<int> selection() const;
    int selectedCount() const;
    int focusedRow() const;
    /// Selects this row alone (-1 = none), focuses it and scrolls to it.
    void select(int row);
    void ensureVisible(int row);
    int hit(Point screen) const;
    /// The arrow in a column's header: > 0 ascending, < 0 descending, 0 none.
    void setSortMark(int column, int direction);
    int columnWidth(int column) const;

    std::function<std::wstring(int row, int column)> getText;
    std::function<int(int row)> getImage;
    /// Text colour of a row.
    std::function<std::optional<COLORREF>(int row)> getColour;
    /// Row whose first column begins with what was typed, searched from `from` on; -1 = none.
    /// Without it the list compares the texts row by row.
    std::function<int(std::wstring_view typed, int from)> findRow;
    std::function<void()> onSelect;
    std::function<void(int row)> onActivate; // double click, Enter
    std::function<void(int column)> onColumnClick;
    std::function<void(UINT virtualKey)> onKey;
    std::function<void()> onDragStart;

protected:
    Size naturalSize() const override { return {240, 160}; }
    LRESULT onNotify(NMHDR& header) override;
    std::optional<LRESULT> onMessage(UINT message, WPARAM wParam, LPARAM lParam) override;

private:
    void giveText(LVITEMW& item) const;
    LRESULT drawRow(NMLVCUSTOMDRAW& draw) const;
    int search(std::wstring_view typed, int from) const;
    bool selectionPending_ = false;
};

} // namespace velora
