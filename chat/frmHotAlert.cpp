#include "chat/frmHotAlert.h"

#include "base/handles.h"
#include "base/trap.h"
#include "chat/modHotWords.h"
#include "core/modAOL.h"
#include "ui/Fonts.h"
#include "ui/Placement.h"
#include "ui/WinGeometry.h"

namespace velora {
namespace {

constexpr char kModule[] = "frmHotAlert";
constexpr UINT kShownMs = 8000;
constexpr Size kSize{300, 96};
constexpr int kStripe = 5; // the coloured edge
constexpr int kTextWidth = 250;
constexpr std::size_t kLongestMessage = 160;
constexpr COLORREF kStripeColour = RGB(214, 96, 0);
constexpr COLORREF kPaper = RGB(255, 252, 240);
constexpr COLORREF kInk = RGB(40, 32, 24);

clsAlertLimit& limit()
{
    static clsAlertLimit limit;
    return limit;
}

} // namespace

frmHotAlert::frmHotAlert(std::wstring word, std::wstring screenName, std::wstring message)
    : Form(kModule), word_(std::move(word)), screenName_(std::move(screenName)),
      message_(std::move(message))
{
    if (message_.size() > kLongestMessage)
        message_ = message_.substr(0, kLongestMessage) + L"\u2026";
}

void frmHotAlert::alert(const std::wstring& word, const std::wstring& screenName,
                        const std::wstring& message)
{
    trap(kModule, [&] {
        if (!limit().mayAlert(GetTickCount()))
            return;
        if (frmHotAlert* former = find<frmHotAlert>())
            former->close();
        open<frmHotAlert>(word, screenName, message).show();
    });
}

FormOptions frmHotAlert::options() const
{
    FormOptions options;
    options.title = L"Velora - Hot Word";
    options.kind = FormKind::panel;
    options.topmost = true;
    options.activates = false;
    options.client = kSize;
    const std::vector<Rect> areas = monitorAreas();
    if (!areas.empty())
        options.place = rectOf(
            {areas[0].right - kSize.width - kMargin, areas[0].bottom - kSize.height - kMargin},
            kSize);
    return options;
}

void frmHotAlert::onCreate()
{
    lblWord.create(*this, L"Hot word: " + word_);
    lblWord.setFont(uiFont({.bold = true}));
    lblName.create(*this, screenName_ + L" said:");
    lblMessage.create(*this, message_);
    lblMessage.setWrapWidth(kTextWidth);
    for (Label* label : {&lblWord, &lblName, &lblMessage}) {
        label->setColours(kInk, kPaper);
        label->onClick = [this] { toAol(); };
    }
    cmdClose.create(*this, L"\u00D7", [this] { close(CloseReason::user); });
    cmdClose.setPreferredSize({22, 20});
    setLayout(rows({columns({grow(lblWord), cmdClose}), lblName, grow(lblMessage)}, kNear)
                  .margins(kStripe + kGap, kGap, kGap, kGap));
    tmrClose.startOnce(kShownMs, [this] { close(); });
}

void frmHotAlert::onPaint(HDC dc, const Rect& client)
{
    const RECT all = toRECT(client);
    const Brush paper(CreateSolidBrush(kPaper)), stripe(CreateSolidBrush(kStripeColour));
    FillRect(dc, &all, paper.get());
    const RECT edge{all.left, all.top, all.left + kStripe, all.bottom};
    FillRect(dc, &edge, stripe.get());
    FrameRect(dc, &all, stripe.get());
}

void frmHotAlert::toAol()
{
    if (const HWND frame = AOLWindow()) {
        if (IsIconic(frame))
            ShowWindowAsync(frame, SW_RESTORE);
        SetForegroundWindow(frame);
    }
    close();
}

} // namespace velora
