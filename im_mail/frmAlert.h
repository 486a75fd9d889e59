#pragma once
// The popup that tells of a new instant message. There is one at a time: what comes while it is
// open changes what it says. It never takes the focus.
#include "im_mail/IMEvents.h"
#include "ui/CornerForm.h"
#include "ui/Timer.h"
#include "ui/ToolTip.h"

#include <functional>
#include <set>

namespace velora {

class frmAlert final : public CornerForm {
public:
    frmAlert();

    /// Shows a message in the popup, which is opened at need, and plays the alert's sound.
    /// `im.text` isn't looked at.
    static void ShowAlert(const IMInfo& im, const std::wstring& message);
    static frmAlert* instance() { return find<frmAlert>(); }

    /// Brings an IM to the front, AOL with it.
    static void setFocusRoute(std::function<void(WindowId im)> route);

protected:
    void onCreate() override;
    Rect corner(const Rect& screen, Size size) const override;

private:
    void tell(const IMInfo& im, const std::wstring& message);
    void FormOpenDown();
    void FormExitUp();
    void reveal(int height);
    void flash();
    void stay();
    void FocusAOL();
    void ignore();
    void colour(COLORREF paper);
    void drawText(HDC dc, const Rect& area, const std::wstring& text, bool bold, bool wraps) const;

    Timer tmrSlide, tmrFlash, tmrWait;
    ToolTip tips;
    Label lblTitle, lblName, lblMessage, lblCount;
    Button cmdIgnore;

    WindowId im_ = 0;
    std::wstring name_, message_;
    std::size_t messages_ = 0;
    std::set<std::wstring> senders_;
    COLORREF ink_ = 0;
    int step_ = 0, flashTick_ = 0;
    bool leaving_ = false;
};

/// Whether another program has the whole screen (a game, a film, a presentation).
bool anotherProgramFullScreen();
/// Whether this window covers its whole monitor, task bar included.
bool coversMonitor(HWND window);

/// Raises the alerts that the options ask for, for a message of the sender's: the popup, and the
/// box of the alert text.
void alertFor(const IMInfo& im, const std::wstring& fresh);

} // namespace velora
