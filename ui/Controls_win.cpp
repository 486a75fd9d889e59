// The plain controls: texts, buttons, edits.
#include "ui/Controls.h"

#include "base/text.h"
#include "ui/Fonts.h"
#include "ui/Form.h"
#include "ui/WinGeometry.h"

#include <commctrl.h>

#include <algorithm>

namespace velora {
namespace {

HFONT fontOf(const Control& control)
{
    return control.font() ? control.font() : uiFont();
}

std::wstring withoutMnemonic(std::wstring_view text)
{
    std::wstring result;
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (text[i] == L'&' && ++i == text.size())
            break;
        result += text[i];
    }
    return result;
}

// The system's dialogs give a line of text 8 pixels of frame, a button 10.
int lineControlHeight(const Control& control)
{
    return fontHeight(fontOf(control)) + 8;
}

Size checkSize(const Control& control)
{
    constexpr int kMark = 13, kBetween = 9; // the mark, and the blank and the focus frame after it
    const Size text = textSize(fontOf(control), withoutMnemonic(control.text()));
    return {kMark + kBetween + text.width, std::max(text.height + 4, 17)};
}

} // namespace

void Label::create(Form& form, std::wstring_view text)
{
    createWindow(form, WC_STATICW, text, SS_LEFT | SS_NOTIFY);
}

void Label::createDrawn(Form& form, std::wstring_view text,
                        std::function<void(HDC, const Rect&)> draw)
{
    draw_ = std::move(draw);
    createWindow(form, WC_STATICW, text, SS_OWNERDRAW | SS_NOTIFY);
}

Size Label::naturalSize() const
{
    return wrappedTextSize(fontOf(*this), text(), wrap_);
}

void Label::onCommand(int code)
{
    if (code == STN_CLICKED && onClick)
        onClick();
    if (code == STN_DBLCLK && onDoubleClick)
        onDoubleClick();
}

void Label::onDraw(const DRAWITEMSTRUCT& item)
{
    if (draw_)
        draw_(item.hDC, fromRECT(item.rcItem));
}

void Divider::create(Form& form)
{
    createWindow(form, WC_STATICW, L"", SS_ETCHEDHORZ);
}

void GroupBox::create(Form& form, std::wstring_view text)
{
    // Transparent: the form, which leaves its controls out when it paints, must paint its inside.
    createWindow(form, WC_BUTTONW, text, BS_GROUPBOX, WS_EX_TRANSPARENT);
}

Box GroupBox::around(const Box& inner)
{
    const int top = fontHeight(fontOf(*this)) + 6;
    return rows({inner.grow()}).margins(kMargin, top, kMargin, kMargin).framedBy(*this);
}

void Button::create(Form& form, std::wstring_view text, std::function<void()> clicked)
{
    onClick = std::move(clicked);
    createWindow(form, WC_BUTTONW, text, BS_PUSHBUTTON | BS_NOTIFY | WS_TABSTOP);
    if (!form.takesFocus())
        subclass();
}

Size Button::naturalSize() const
{
    const Size words = textSize(fontOf(*this), withoutMnemonic(text()));
    return {std::max(75, words.width + 20), words.height + 10};
}

std::optional<LRESULT> Button::onMessage(UINT message, WPARAM, LPARAM lParam)
{
    return pressQuietly(message, lParam);
}

void Button::onCommand(int code)
{
    // A quick second click is a double click to the system and a click to the user.
    if ((code != BN_CLICKED && code != BN_DBLCLK) || !onClick)
        return;
    const auto clicked = onClick; // the handler may end the form and this button with it
    clicked();
}

void Button::click()
{
    send(BM_CLICK);
}

void CheckBox::create(Form& form, std::wstring_view text, bool checked)
{
    createWindow(form, WC_BUTTONW, text, BS_AUTOCHECKBOX | WS_TABSTOP);
    setChecked(checked);
}

bool CheckBox::checked() const
{
    return send(BM_GETCHECK) == BST_CHECKED;
}

void CheckBox::setChecked(bool checked)
{
    send(BM_SETCHECK, checked ? BST_CHECKED : BST_UNCHECKED);
}

Size CheckBox::naturalSize() const
{
    return checkSize(*this);
}

void CheckBox::onCommand(int code)
{
    if (code == BN_CLICKED && onChange)
        onChange();
}

void RadioButton::create(Form& form, std::wstring_view text, bool first)
{
    createWindow(form, WC_BUTTONW, text, BS_AUTORADIOBUTTON | (first ? WS_GROUP | WS_TABSTOP : 0u));
}

bool RadioButton::checked() const
{
    return send(BM_GETCHECK) == BST_CHECKED;
}

void RadioButton::setChecked(bool checked)
{
    send(BM_SETCHECK, checked ? BST_CHECKED : BST_UNCHECKED);
}

Size RadioButton::naturalSize() const
{
    return checkSize(*this);
}

void RadioButton::onCommand(int code)
{
    if (code == BN_CLICKED && onChange)
        onChange();
}

void Edit::create(Form& form, std::wstring_view text, const Options& options)
{
    options_ = options;
    DWORD style = WS_TABSTOP;
    if (options.multiline)
        style |= ES_MULTILINE | ES_AUTOVSCROLL | WS_VSCROLL;
    else
        style |= ES_AUTOHSCROLL;
    if (options.wantsReturn)
        style |= ES_WANTRETURN;
    if (options.readOnly)
        style |= ES_READONLY;
    if (options.number)
        style |= ES_NUMBER;
    createWindow(form, WC_EDITW, text, style, WS_EX_CLIENTEDGE);
    if (options.masked)
        setMasked(true);
    if (options.maxLength > 0)
        send(EM_SETLIMITTEXT, static_cast<WPARAM>(options.maxLength));
    else
        send(EM_SETLIMITTEXT, 0); // the most the system allows, not its 30,000
}

void Edit::select(int from, int to)
{
    send(EM_SETSEL, static_cast<WPARAM>(from), to);
    send(EM_SCROLLCARET);
}

std::pair<int, int> Edit::selection() const
{
    DWORD from = 0, to = 0;
    send(EM_GETSEL, reinterpret_cast<WPARAM>(&from), reinterpret_cast<LPARAM>(&to));
    return {static_cast<int>(from), static_cast<int>(to)};
}

void Edit::replaceSelection(std::wstring_view text)
{
    send(EM_REPLACESEL, TRUE, reinterpret_cast<LPARAM>(std::wstring(text).c_str()));
}

void Edit::setMasked(bool masked)
{
    send(EM_SETPASSWORDCHAR, masked ? L'\x2022' : 0);
    redraw();
}

void Edit::setCue(std::wstring_view cue)
{
    constexpr UINT kSetCueBanner = 0x1501; // EM_SETCUEBANNER, with the controls of version 6
    send(kSetCueBanner, TRUE, reinterpret_cast<LPARAM>(std::wstring(cue).c_str()));
}

long Edit::number(long otherwise) const
{
    return parseLong(trimView(text())).value_or(otherwise);
}

Size Edit::naturalSize() const
{
    const int line = fontHeight(fontOf(*this));
    return options_.multiline ? Size{200, line * 4 + 8} : Size{160, line + 8};
}

void Edit::onCommand(int code)
{
    if (code == EN_CHANGE && onChange)
        onChange();
}

void ComboBox::create(Form& form, const std::vector<std::wstring>& items, int selected,
                      bool editable)
{
    createWindow(form, WC_COMBOBOXW, L"",
                 WS_TABSTOP | WS_VSCROLL | CBS_AUTOHSCROLL
                     | (editable ? CBS_DROPDOWN : CBS_DROPDOWNLIST));
    setItems(items);
    select(selected);
}

void ComboBox::setItems(const std::vector<std::wstring>& items)
{
    send(CB_RESETCONTENT);
    for (const auto& item : items)
        add(item);
}

void ComboBox::add(std::wstring_view item)
{
    send(CB_ADDSTRING, 0, reinterpret_cast<LPARAM>(std::wstring(item).c_str()));
}

int ComboBox::selected() const
{
    return hwnd() ? static_cast<int>(send(CB_GETCURSEL)) : -1;
}

void ComboBox::select(int index)
{
    send(CB_SETCURSEL, static_cast<WPARAM>(index));
}

int ComboBox::count() const
{
    return static_cast<int>(send(CB_GETCOUNT));
}

std::wstring ComboBox::itemText(int index) const
{
    const auto length = send(CB_GETLBTEXTLEN, static_cast<WPARAM>(index));
    if (!hwnd() || length <= 0)
        return {};
    std::wstring text(static_cast<std::size_t>(length), L'\0');
    send(CB_GETLBTEXT, static_cast<WPARAM>(index), reinterpret_cast<LPARAM>(text.data()));
    return text;
}

Size ComboBox::naturalSize() const
{
    return {120, lineControlHeight(*this)};
}

void ComboBox::place(const Rect& where)
{
    // The height of a combo box is that of its open list.
    constexpr int kOpen = 200;
    Control::place({where.left, where.top, where.right, where.bottom + kOpen});
}

void ComboBox::onCommand(int code)
{
    if ((code == CBN_SELCHANGE || code == CBN_EDITCHANGE) && onChange)
        onChange();
}

void ListBox::create(Form& form, const std::vector<std::wstring>& items, bool multiple)
{
    multiple_ = multiple;
    createWindow(form, WC_LISTBOXW, L"",
                 WS_TABSTOP | WS_VSCROLL | LBS_NOTIFY | LBS_NOINTEGRALHEIGHT
                     | (multiple ? LBS_EXTENDEDSEL : 0u),
                 WS_EX_CLIENTEDGE);
    setItems(items);
}

void ListBox::setItems(const std::vector<std::wstring>& items)
{
    send(WM_SETREDRAW, FALSE);
    send(LB_RESETCONTENT);
    for (const auto& item : items)
        add(item);
    send(WM_SETREDRAW, TRUE);
    redraw();
}

void ListBox::add(std::wstring_view item)
{
    send(LB_ADDSTRING, 0, reinterpret_cast<LPARAM>(std::wstring(item).c_str()));
}

void ListBox::insert(int index, std::wstring_view item)
{
    send(LB_INSERTSTRING, static_cast<WPARAM>(index),
         reinterpret_cast<LPARAM>(std::wstring(item).c_str()));
}

void ListBox::remove(int index)
{
    send(LB_DELETESTRING, static_cast<WPARAM>(index));
}

int ListBox::count() const
{
    return static_cast<int>(send(LB_GETCOUNT));
}

int ListBox::selected() const
{
    const auto chosen = selection();
    return chosen.empty() ? -1 : chosen.front();
}

std::vector<int> ListBox::selection() const
{
    if (!hwnd())
        return {};
    if (!multiple_) {
        const int chosen = static_cast<int>(send(LB_GETCURSEL));
        return chosen < 0 ? std::vector<int>() : std::vector<int>{chosen};
    }
    std::vector<int> chosen(static_cast<std::size_t>(std::max<LRESULT>(0, send(LB_GETSELCOUNT))));
    send(LB_GETSELITEMS, chosen.size(), reinterpret_cast<LPARAM>(chosen.data()));
    return chosen;
}

void ListBox::select(int index)
{
    if (!multiple_) {
        send(LB_SETCURSEL, static_cast<WPARAM>(index));
        return;
    }
    send(LB_SETSEL, FALSE, -1);
    if (index >= 0)
        send(LB_SETSEL, TRUE, index);
}

std::wstring ListBox::itemText(int index) const
{
    const auto length = send(LB_GETTEXTLEN, static_cast<WPARAM>(index));
    if (!hwnd() || length <= 0)
        return {};
    std::wstring text(static_cast<std::size_t>(length), L'\0');
    send(LB_GETTEXT, static_cast<WPARAM>(index), reinterpret_cast<LPARAM>(text.data()));
    return text;
}

void ListBox::onCommand(int code)
{
    if (code == LBN_SELCHANGE && onSelect)
        onSelect();
    if (code == LBN_DBLCLK && onActivate)
        onActivate();
}

} // namespace velora
