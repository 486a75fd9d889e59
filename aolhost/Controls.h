#pragma once
// AOL's own control classes.
#include "aolhost/Art.h"
#include "aolhost/Window.h"

#include <functional>
#include <utility>

namespace aolhost {

/// Registers "_AOL_Icon", "_AOL_Static", "_AOL_Edit", "_AOL_Listbox", "_AOL_Combobox",
/// "_AOL_Checkbox", "_AOL_FontCombo" and "_AOL_Glyph".
void registerControlClasses();

/// "_AOL_Icon": a button. The mouse and the space key press it in every version; a character
/// message with 13 does from version 6 on.
class IconButton final : public Window {
public:
    IconButton(HWND parent, const std::wstring& caption, Picture picture, IconLook look);

    std::function<void()> onClick;
    /// A character sent to the button; true when it was taken.
    std::function<bool(wchar_t)> onLetter;
    static bool pressedByReturn; ///< set once for the version

protected:
    LRESULT handle(UINT message, WPARAM wParam, LPARAM lParam) override;

private:
    void paint();
    void setDown(bool down);
    void mouseUp(POINT at);
    Picture picture_;
    IconLook look_;
    bool down_ = false, hot_ = false, spaceDown_ = false;
};

/// "_AOL_Glyph": a picture.
class Glyph final : public Window {
public:
    Glyph(HWND parent, Picture picture);

protected:
    LRESULT handle(UINT message, WPARAM wParam, LPARAM lParam) override;

private:
    Picture picture_;
};

/// The controls that are made from the system's own.
class Control final : public Window {
public:
    enum class Kind { text, edit, password, list, combo, dropDown, check, fontCombo };
    Control(HWND parent, Kind kind, const std::wstring& caption = {}, bool bold = false);

    std::function<void()> onEnter;
    std::function<void()> onEscape;
    /// From the parent's WM_COMMAND.
    std::function<void(int notification)> onNotify;

    // For lists and combo boxes.
    void addItem(const std::wstring& item);
    bool removeItem(const std::wstring& item);
    int count() const;
    std::wstring chosen() const;
    void choose(int index);

protected:
    LRESULT handle(UINT message, WPARAM wParam, LPARAM lParam) override;

private:
    bool isList() const { return kind_ == Kind::list; }
    std::wstring item(int index) const;
    Kind kind_;
};

} // namespace aolhost
