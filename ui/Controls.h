#pragma once
// The controls. Each has create(form, ...), in the order of the Tab key; a label is created just
// before the control that it names, whose mnemonic it carries. Handlers run inside the form's
// trapped window procedure and may close the form.
#include "ui/Control.h"
#include "ui/ImageButton.h"
#include "ui/ListView.h"
#include "ui/RichEdit.h"

#include <functional>
#include <vector>

namespace velora {

class Label : public Control {
public:
    void create(Form& form, std::wstring_view text);
    /// Draws itself; its window text still is what a screen reader says.
    void createDrawn(Form& form, std::wstring_view text,
                     std::function<void(HDC, const Rect&)> draw);
    /// Wraps at this width; 0 = one line for each line of the text.
    void setWrapWidth(int width) { wrap_ = width; }
    std::function<void()> onClick;
    std::function<void()> onDoubleClick;

protected:
    Size naturalSize() const override;
    void onCommand(int code) override;
    void onDraw(const DRAWITEMSTRUCT& item) override;

private:
    int wrap_ = 0;
    std::function<void(HDC, const Rect&)> draw_;
};

/// A line across the form.
class Divider : public Control {
public:
    void create(Form& form);

protected:
    Size naturalSize() const override { return {20, 2}; }
};

class GroupBox : public Control {
public:
    void create(Form& form, std::wstring_view text);
    /// The box around a layout: create it before the controls in it, then use around(rows({...})).
    Box around(const Box& inner);

protected:
    Size naturalSize() const override { return {40, 20}; }
};

class Button : public Control {
public:
    void create(Form& form, std::wstring_view text, std::function<void()> clicked = {});
    std::function<void()> onClick;
    void click();

protected:
    Size naturalSize() const override;
    void onCommand(int code) override;
    std::optional<LRESULT> onMessage(UINT message, WPARAM wParam, LPARAM lParam) override;
};

class CheckBox : public Control {
public:
    void create(Form& form, std::wstring_view text, bool checked = false);
    bool checked() const;
    void setChecked(bool checked);
    std::function<void()> onChange; // by the user only

protected:
    Size naturalSize() const override;
    void onCommand(int code) override;
};

class RadioButton : public Control {
public:
    /// `first` begins a group: one of a group is chosen, the arrow keys move in it.
    void create(Form& form, std::wstring_view text, bool first = false);
    bool checked() const;
    void setChecked(bool checked);
    std::function<void()> onChange;

protected:
    Size naturalSize() const override;
    void onCommand(int code) override;
};

class Edit : public Control {
public:
    struct Options {
        bool multiline = false;
        bool readOnly = false;
        bool number = false;
        bool masked = false;
        bool wantsReturn = false; // Enter makes a line here instead of pressing the default button
        int maxLength = 0;        // characters; 0 = the system's limit
    };
    void create(Form& form, std::wstring_view text, const Options& options);
    void create(Form& form, std::wstring_view text = {}) { create(form, text, Options()); }
    void select(int from = 0, int to = -1);
    std::pair<int, int> selection() const;
    void replaceSelection(std::wstring_view text);
    void setMasked(bool masked);
    /// Grey text while empty (where the system knows it).
    void setCue(std::wstring_view cue);
    long number(long otherwise) const;
    std::function<void()> onChange;

protected:
    Size naturalSize() const override;
    void onCommand(int code) override;

private:
    Options options_;
};

class ComboBox : public Control {
public:
    /// `editable`: text may be typed as well.
    void create(Form& form, const std::vector<std::wstring>& items, int selected = -1,
                bool editable = false);
    void setItems(const std::vector<std::wstring>& items);
    void add(std::wstring_view item);
    int selected() const; // -1 = none
    void select(int index);
    int count() const;
    std::wstring itemText(int index) const;
    std::function<void()> onChange;

protected:
    Size naturalSize() const override;
    void onCommand(int code) override;
    void place(const Rect& where) override;
};

class ListBox : public Control {
public:
    void create(Form& form, const std::vector<std::wstring>& items = {}, bool multiple = false);
    void setItems(const std::vector<std::wstring>& items);
    void add(std::wstring_view item);
    void insert(int index, std::wstring_view item);
    void remove(int index);
    int count() const;
    int selected() const; // -1 = none
    std::vector<int> selection() const;
    void select(int index);
    std::wstring itemText(int index) const;
    std::function<void()> onSelect;
    std::function<void()> onActivate; // double click

protected:
    Size naturalSize() const override { return {120, 80}; }
    void onCommand(int code) override;

private:
    bool multiple_ = false;
};

class ProgressBar : public Control {
public:
    void create(Form& form, int maximum = 100);
    void setMaximum(int maximum);
    void setValue(int value);
    int value() const;

protected:
    Size naturalSize() const override { return {120, 14}; }
};

class TrackBar : public Control {
public:
    void create(Form& form, int minimum, int maximum, int value);
    int value() const;
    void setValue(int value);
    std::function<void()> onChange; // also while it is dragged

protected:
    Size naturalSize() const override { return {120, 28}; }
    void onScroll() override;
};

/// Tabs above a page. The pages are the form's affair: forms of FormKind::child placed in
/// pageRect().
class TabStrip : public Control {
public:
    void create(Form& form, const std::vector<std::wstring>& titles = {});
    /// The look: TCS_BUTTONS, TCS_BOTTOM, TCS_MULTILINE and such. A new one makes the window anew;
    /// marks are lost.
    void setLook(DWORD styles);
    int count() const;
    /// "&" stands for itself in a title.
    void insert(int index, std::wstring_view title);
    void remove(int index);
    void setTitle(int index, std::wstring_view title);
    std::wstring title(int index) const;
    int selected() const;
    /// Does not call onSelect.
    void select(int index);
    /// Draws the tab so that it catches the eye (a message that has not been read).
    void setMarked(int index, bool marked);
    /// Tab under a place of the screen, -1 = none.
    int hit(Point screen) const;
    /// The inner area in the form's coordinates.
    Rect pageRect() const;
    /// Puts a page (FormKind::child) into the inner area and shows it. The form hides the one
    /// before, and calls this again in onSize.
    void showPage(Form& page);
    std::function<void()> onSelect;
    /// False keeps the present page.
    std::function<bool()> onLeave;

protected:
    Size naturalSize() const override { return {200, 120}; }
    LRESULT onNotify(NMHDR& header) override;
};

} // namespace velora
