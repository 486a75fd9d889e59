#pragma once
// The tooltips of a form's controls, and balloons.
#include "base/win.h"
#include "ui/Geometry.h"
#include "ui/Timer.h"

#include <optional>
#include <string_view>
#include <utility>

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
    /// Of the tips and the balloon.
    void setColours(COLORREF text, COLORREF background);
    /// False: what showBalloon shows is a plain box.
    void setBalloonShape(bool balloon);
    void setDelays(int showAfterMs, int hideAfterMs);

    enum class Sign { none, information, warning, error };
    /// A balloon that points at a place on the screen until hideBalloon() or `milliseconds` are
    /// over.
    void showBalloon(Form& form, Point at, std::wstring_view title, std::wstring_view text,
                     Sign sign = Sign::none, UINT milliseconds = 5000);
    void hideBalloon();

private:
    void applyColours(HWND tip) const;

    HWND tip_ = nullptr;
    HWND balloon_ = nullptr;
    DWORD balloonStyle_ = 0x40;                            // TTS_BALLOON
    std::optional<std::pair<COLORREF, COLORREF>> colours_; // text, background
    Timer hideTimer_;
};

} // namespace velora
