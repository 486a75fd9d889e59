#include "im_mail/frmAlert.h"

#include "base/handles.h"
#include "base/text.h"
#include "base/trap.h"
#include "core/modAOL.h"
#include "im_mail/modAlertRules.h"
#include "im_mail/modIMRules.h"
#include "settings/Options.h"
#include "sounds/modPlayback.h"
#include "sounds/modSounds.h"
#include "ui/Fonts.h"
#include "ui/MessageLoop.h"
#include "ui/WinGeometry.h"

#include <algorithm>

namespace velora {
namespace {

constexpr char kModule[] = "frmAlert";
constexpr Size kSize{290, 104};
constexpr int kSteps = 10;
constexpr UINT kSlideMs = 15, kFlashMs = 250;
constexpr int kEdgeWidth = 4;
constexpr CornerForm::Look kLook{L"Velora - Instant Message", kSize, RGB(255, 255, 240),
                                 RGB(64, 96, 160), kEdgeWidth};
constexpr std::size_t kMostSenders = 300;
constexpr DWORD kSoundPauseMs = 3000; // a flood makes no drum roll

std::function<void(WindowId)>& focusRoute()
{
    static std::function<void(WindowId)> route;
    return route;
}

/// The file that option AlertWav names: a path, or the name of a sound.
std::wstring alertWav()
{
    const std::wstring wav = opt::IM::AlertWav.get();
    return wav.find(L'\\') == wav.npos && !wav.empty() ? GetWavPath(wav) : wav;
}

void playAlertWav()
{
    static DWORD last = GetTickCount() - kSoundPauseMs;
    if (!opt::IM::PlayAlertWav.get() || GetTickCount() - last < kSoundPauseMs)
        return;
    const std::wstring path = alertWav();
    if (path.empty())
        return;
    last = GetTickCount();
    // Opening a sound takes its time: not inside what raised the alert.
    postCall([path] { playUnasked(path); });
}

} // namespace

frmAlert::frmAlert() : CornerForm(kModule, kLook) {}

void frmAlert::setFocusRoute(std::function<void(WindowId)> route)
{
    focusRoute() = std::move(route);
}

void frmAlert::ShowAlert(const IMInfo& im, const std::wstring& message)
{
    trap(kModule, [&] {
        if (frmAlert* const present = instance(); present && !present->leaving_) {
            present->tell(im, message);
        } else {
            if (present)
                present->close();
            frmAlert& alert = open<frmAlert>();
            alert.tell(im, message);
            alert.FormOpenDown();
        }
        playAlertWav();
    });
}

Rect frmAlert::corner(const Rect& screen, Size size) const
{
    return alertPlace(opt::IM::AlertPos.get(), screen, size);
}

void frmAlert::onCreate()
{
    ink_ = static_cast<COLORREF>(ContrastingColor(static_cast<int>(paper())));
    lblTitle.createDrawn(*this, L"Instant Message from", [this](HDC dc, const Rect& area) {
        drawText(dc, area, L"Instant Message from", false, false);
    });
    createClose([this] { FormExitUp(); });
    lblName.createDrawn(
        *this, L"", [this](HDC dc, const Rect& area) { drawText(dc, area, name_, true, false); });
    lblMessage.createDrawn(*this, L"", [this](HDC dc, const Rect& area) {
        drawText(dc, area, message_, false, true);
    });
    lblCount.createDrawn(*this, L"", [this](HDC dc, const Rect& area) {
        drawText(dc, area, alertCount(messages_, senders_.size()), false, false);
    });
    cmdIgnore.create(*this, L"Ignore...", [this] { ignore(); });
    cmdIgnore.setPreferredSize({70, 22});
    for (Label* label : {&lblName, &lblMessage})
        label->onClick = [this] { FocusAOL(); };
    tips.add(lblName, L"Click to bring this Instant Message to the front");
    tips.add(cmdIgnore, L"Shut out IMs from this screen name");
    tips.add(cmdClose, L"Close this alert");
    setLayout(rows({columns({grow(lblTitle), cmdClose}), Box(lblName).atLeast({0, 17}),
                    grow(lblMessage), columns({grow(lblCount), cmdIgnore})},
                   2)
                  .margins(kEdgeWidth + kGap, kNear + 1, kGap, kGap));
}

void frmAlert::tell(const IMInfo& im, const std::wstring& message)
{
    im_ = im.window;
    name_ = im.screenName;
    message_ = opt::IM::DisplayMessage.get() ? alertText(message) : std::wstring();
    ++messages_;
    if (senders_.size() < kMostSenders)
        senders_.insert(screenNameKey(im.screenName));
    lblName.setText(name_);
    lblMessage.setText(message_);
    lblCount.setText(alertCount(messages_, senders_.size()));
    for (Label* label : {&lblName, &lblMessage, &lblCount})
        label->redraw();
    if (!tmrSlide.active())
        stay();
}

void frmAlert::FormOpenDown()
{
    reveal(1);
    show();
    step_ = 0;
    tmrSlide.start(kSlideMs, [this] {
        reveal(slideHeight(++step_, kSteps, kSize.height));
        if (step_ < kSteps)
            return;
        tmrSlide.stop();
        stay();
        if (opt::IM::AlertFlash.get())
            flash();
    });
}

void frmAlert::FormExitUp()
{
    if (leaving_)
        return;
    leaving_ = true;
    tmrWait.stop();
    tmrFlash.stop();
    step_ = kSteps;
    tmrSlide.start(kSlideMs, [this] {
        if (--step_ > 0)
            return reveal(slideHeight(step_, kSteps, kSize.height));
        tmrSlide.stop();
        close();
    });
}

/// Only that much of the window is there, from its top: the controls keep their places meanwhile.
void frmAlert::reveal(int height)
{
    if (height >= kSize.height) {
        SetWindowRgn(hwnd(), nullptr, TRUE);
        return;
    }
    Region region(CreateRectRgn(0, 0, kSize.width, std::max(height, 1)));
    if (SetWindowRgn(hwnd(), region.get(), TRUE))
        region.release(); // the system's now
}

void frmAlert::flash()
{
    flashTick_ = 0;
    const auto tick = [this] {
        const auto flash = static_cast<COLORREF>(opt::IM::FlashColor.get()) & 0xFFFFFFu;
        colour(flashesAt(flashTick_) ? flash : kLook.paper);
        if (++flashTick_ >= 2 * kFlashes)
            tmrFlash.stop();
    };
    tick();
    tmrFlash.start(kFlashMs, tick);
}

void frmAlert::stay()
{
    const long seconds = std::clamp(opt::IM::AlertSeconds.get(), 1L, 3600L);
    tmrWait.startOnce(static_cast<UINT>(seconds) * 1000, [this] { FormExitUp(); });
}

void frmAlert::colour(COLORREF paper)
{
    ink_ = static_cast<COLORREF>(ContrastingColor(static_cast<int>(paper)));
    setPaper(paper);
    for (Label* label : {&lblTitle, &lblName, &lblMessage, &lblCount})
        label->redraw();
}

void frmAlert::drawText(HDC dc, const Rect& area, const std::wstring& text, bool bold,
                        bool wraps) const
{
    RECT where = toRECT(area);
    const Brush back(CreateSolidBrush(paper()));
    FillRect(dc, &where, back.get());
    SetBkMode(dc, TRANSPARENT);
    SetTextColor(dc, ink_);
    SelectObject(dc, uiFont({.bold = bold}));
    const UINT how = wraps ? DT_WORDBREAK | DT_EDITCONTROL : DT_SINGLELINE | DT_VCENTER;
    DrawTextW(dc, text.c_str(), static_cast<int>(text.size()), &where,
              how | DT_NOPREFIX | DT_END_ELLIPSIS);
}

void frmAlert::FocusAOL()
{
    const WindowId im = im_;
    if (const HWND frame = AOLWindow()) {
        if (IsIconic(frame))
            ShowWindowAsync(frame, SW_RESTORE);
        SetForegroundWindow(frame);
    }
    if (focusRoute())
        postCall([im] { focusRoute()(im); });
    FormExitUp();
}

void frmAlert::ignore()
{
    const std::wstring name = name_;
    FormExitUp();
    if (imRoutes().addToIgnore)
        postCall([name] {
            if (imRoutes().addToIgnore)
                imRoutes().addToIgnore(name);
        });
}

} // namespace velora
