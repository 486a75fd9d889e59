#pragma once
// The tooltips of a form's controls, and balloons.
#include "base/win.h"
#include "ui/Geometry.h"
#include "ui/Timer.h"

#include <string_view>

namespace velora {

class Control;
class Form;

class ToolTip {
public:
    ToolTip() = default;
    ~ToolTip();
    ToolTip(const ToolTip&) = delete;
    ToolTip& operator=(const ToolTip&) = delete;

    /// Makes the tip window; add() does it at need, in the plain look.
    void create(Form& form, bool balloonShape = false);
    /// Sets or changes the tip of a control. Line breaks are kept; long lines wrap.
    void add(Control& control, std::wstring_view text);
    void remove(Control& control);
    void setColours(COLORREF text, COLORREF background);
    void setDelays(int showAfterMs, int hideAfterMs);

    enum class Sign { none, information, warning, error };
    /// A balloon that points at a place on the screen until hideBalloon() or `milliseconds` are
    /// over.
    void showBalloon(Form& form, Point at, std::wstring_view title, std::wstring_view text,
                     Sign sign = Sign::none, UINT milliseconds = 5000);
    void hideBalloon();

private:
    HWND tip_ = nullptr;
    HWND balloon_ = nullptr;
    Timer hideTimer_;
};

} // namespace velora
