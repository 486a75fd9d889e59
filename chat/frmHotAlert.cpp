#include "chat/frmHotAlert.h"

#include "base/trap.h"
#include "chat/modHotWords.h"
#include "core/modAOL.h"
#include "ui/Fonts.h"

namespace velora {
namespace {

constexpr char kModule[] = "frmHotAlert";
constexpr UINT kShownMs = 8000;
constexpr int kStripe = 5; // the coloured edge
constexpr int kTextWidth = 250;
constexpr std::size_t kLongestMessage = 160;
constexpr COLORREF kPaper = RGB(255, 252, 240);
constexpr COLORREF kInk = RGB(40, 32, 24);
constexpr CornerForm::Look kLook{L"Velora - Hot Word", {300, 96}, kPaper, RGB(214, 96, 0), kStripe};

clsAlertLimit& limit()
{
    static clsAlertLimit limit;
    return limit;
}

} // namespace

frmHotAlert::frmHotAlert(std::wstring word, std::wstring screenName, std::wstring message)
    : CornerForm(kModule, kLook), word_(std::move(word)), screenName_(std::move(screenName)),
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
    createClose([this] { close(CloseReason::user); });
    setLayout(rows({columns({grow(lblWord), cmdClose}), lblName, grow(lblMessage)}, kNear)
                  .margins(kStripe + kGap, kGap, kGap, kGap));
    tmrClose.startOnce(kShownMs, [this] { close(); });
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
