#pragma once
// A flat button with a picture. Its window text is its name for screen readers and need not be
// shown.
#include "ui/Control.h"

#include <functional>

namespace velora {

struct ButtonState {
    bool pressed = false, hot = false, focused = false, disabled = false, checked = false;
};

class ImageButton : public Control {
public:
    /// `name` may hold a mnemonic. `tabStop` false keeps it out of the Tab order (panels).
    void create(Form& form, std::wstring_view name, HICON icon, std::function<void()> clicked = {},
                bool tabStop = true);
    /// The icon stays the caller's.
    void setIcon(HICON icon, int size = 16);
    /// Draws the picture instead of the icon; the frame and the focus are drawn already. Without a
    /// name beside it the picture is all of the button.
    void setPainter(std::function<void(HDC, const Rect&, const ButtonState&)> paint);
    /// Stays pressed in (a switch that is on).
    void setChecked(bool checked);
    bool checked() const { return checked_; }
    /// Shows the name beside the picture.
    void showName(bool show);
    void click();
    std::function<void()> onClick;
    std::function<void(Point screen)> onRightClick;

protected:
    Size naturalSize() const override;
    void onCommand(int code) override;
    void onDraw(const DRAWITEMSTRUCT& item) override;
    std::optional<LRESULT> onMessage(UINT message, WPARAM wParam, LPARAM lParam) override;

private:
    void becomeHot();

    HICON icon_ = nullptr;
    int iconSize_ = 16;
    bool hot_ = false, checked_ = false, showName_ = false;
    std::function<void(HDC, const Rect&, const ButtonState&)> paint_;
};

} // namespace velora
