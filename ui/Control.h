#pragma once
// What all controls share. A control is a value member of its form; create() makes its window in
// the form. Before that, and after the form has closed, every call is harmless and answers the
// empty value.
#include "base/win.h"
#include "ui/Layout.h"

#include <optional>
#include <string>
#include <string_view>

namespace velora {

class Form;

class Control : public Placeable {
public:
    Control() = default;
    virtual ~Control();
    Control(const Control&) = delete;
    Control& operator=(const Control&) = delete;

    HWND hwnd() const { return hwnd_; }
    /// The window text, which is also the accessible name.
    std::wstring text() const;
    void setText(std::wstring_view text);
    void show(bool visible = true);
    bool shown() const { return shown_; }
    void enable(bool enabled = true);
    bool enabled() const;
    void focus();
    bool focused() const;
    /// The font stays the caller's (ui/Fonts.h).
    void setFont(HFONT font);
    HFONT font() const { return font_; }
    /// Own colours for static text, edits, lists.
    void setColours(COLORREF text, COLORREF background);
    /// Replaces the natural size, a direction of 0 does not.
    void setPreferredSize(Size size) { wanted_ = size; }
    Rect place() const; // in the form
    Rect screenPlace() const;
    void redraw();
    Form* form() const { return form_; }

    Size preferredSize() const final;
    void place(const Rect& where) override;
    bool takesSpace() const override { return shown_; }

protected:
    void createWindow(Form& form, const wchar_t* windowClass, std::wstring_view text, DWORD style,
                      DWORD exStyle = 0);
    /// For styles that cannot be changed: a new window in the place and the order of the former.
    void remakeWindow(const wchar_t* windowClass, DWORD style);
    LRESULT send(UINT message, WPARAM wParam = 0, LPARAM lParam = 0) const;
    virtual Size naturalSize() const;
    /// Routes the window's own messages to onMessage first.
    void subclass();
    /// Mouse handling of a button in a form that does not take the focus: the system's own would
    /// set the focus to the button and so activate the form.
    std::optional<LRESULT> pressQuietly(UINT message, LPARAM lParam);

    virtual void onCommand(int /*code*/) {}
    virtual LRESULT onNotify(NMHDR&) { return 0; }
    virtual void onDraw(const DRAWITEMSTRUCT&) {}
    virtual void onScroll() {}
    virtual std::optional<LRESULT> onMessage(UINT, WPARAM, LPARAM) { return std::nullopt; }

private:
    friend class Form;
    static Control* fromWindow(HWND window);
    static LRESULT CALLBACK subclassProc(HWND, UINT, WPARAM, LPARAM) noexcept;
    HBRUSH colour(HDC dc);
    void release();

    HWND hwnd_ = nullptr;
    Form* form_ = nullptr;
    HFONT font_ = nullptr;
    WNDPROC original_ = nullptr;
    bool shown_ = true, held_ = false;
    Size wanted_;
    std::optional<COLORREF> textColour_, backColour_;
    HBRUSH brush_ = nullptr;
};

/// The text of a window of this process.
std::wstring windowText(HWND window);

} // namespace velora
