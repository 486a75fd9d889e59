#include "core/frmMsg.h"

#include "base/text.h"
#include "base/trap.h"
#include "core/MsgBoxEx.h"
#include "core/modClipboard.h"
#include "settings/Options.h"
#include "ui/Fonts.h"

#include <algorithm>
#include <vector>

namespace velora {
namespace {
constexpr char kModule[] = "frmMsg";
constexpr int kTextLeft = 51; // the icon stands before it
constexpr UINT kTickMs = 100;
// A storm of messages must not fill the screen (and the stack: each box waits inside the one
// before).
constexpr std::size_t kMostBoxes = 8;

struct IconLook {
    const wchar_t* icon;
    UINT sound;
};

IconLook lookOf(MsgIcon icon)
{
    switch (icon) {
    case MsgIcon::critical: return {IDI_HAND, MB_ICONHAND};
    case MsgIcon::question: return {IDI_QUESTION, MB_ICONQUESTION};
    case MsgIcon::exclamation: return {IDI_EXCLAMATION, MB_ICONEXCLAMATION};
    case MsgIcon::information: return {IDI_ASTERISK, MB_ICONASTERISK};
    case MsgIcon::none: break;
    }
    return {nullptr, MB_OK};
}

std::optional<int> autoCloseSeconds()
{
    return trap(
        kModule,
        [] {
            if (!opt::General::AutoCloseMsgBox.get())
                return std::optional<int>();
            const long seconds = opt::General::AutoCloseTime.get();
            return std::optional<int>(static_cast<int>(std::clamp(seconds, 1L, 3600L)));
        },
        std::nullopt);
}

std::vector<frmMsg*> openBoxes()
{
    std::vector<frmMsg*> boxes;
    for (Form* form : Form::all())
        if (auto* box = dynamic_cast<frmMsg*>(form))
            boxes.push_back(box);
    return boxes;
}

} // namespace

bool frmMsg::Content::operator==(const Content& other) const
{
    return prompt == other.prompt && caption == other.caption && style.icon == other.style.icon
           && style.buttons.size() == other.style.buttons.size()
           && style.buttons.front().answer == other.style.buttons.front().answer;
}

frmMsg::frmMsg(Content content) : Form(kModule), content_(std::move(content)) {}

int frmMsg::ask()
{
    runModal();
    return answer_.value_or(content_.style.harmlessAnswer());
}

FormOptions frmMsg::options() const
{
    FormOptions options;
    options.title = content_.caption;
    options.topmost = content_.style.systemModal;
    return options;
}

void frmMsg::onCreate()
{
    const IconLook look = lookOf(content_.style.icon);
    lblText.create(*this, content_.prompt, kTextLeft,
                   look.icon ? LoadIconW(nullptr, look.icon) : nullptr);
    createButtons();
    if (content_.autoClose)
        startCountdown();
    else
        prgClose.show(false);
    std::vector<Box> buttons;
    for (std::size_t i = 0; i < content_.style.buttons.size(); ++i)
        buttons.push_back(cmdAnswer[i]);
    // Room for the caption, too.
    const int captionWidth = textSize(uiFont({.bold = true}), content_.caption).width + 140;
    setLayout(rows({Box(lblText).margins(0, 0, kMargin - 4, 0).grow(),
                    buttonRowCentred(buttons).margins(kMargin, 0, kMargin, 0),
                    Box(prgClose).margins(kMargin, 0, kMargin, 0)},
                   kMargin)
                  .margins(0, kMargin, 0, kMargin)
                  .atLeast({std::min(captionWidth, 400), 0}));
    for (UINT key : {UINT{'C'}, UINT{VK_INSERT}})
        addKey(MOD_CONTROL, key, [this] { copy(); });
    MessageBeep(look.sound);
}

void frmMsg::createButtons()
{
    const MsgStyle& style = content_.style;
    for (std::size_t i = 0; i < style.buttons.size(); ++i) {
        const MsgButton button = style.buttons[i];
        cmdAnswer[i].create(*this, button.text, [this, button] { answer(button.answer); });
        if (button.answer == style.escapeAnswer())
            setCancelButton(cmdAnswer[i]);
    }
    Button& preset = cmdAnswer[static_cast<std::size_t>(style.defaultButton)];
    setDefaultButton(preset);
    setFirstFocus(preset);
    if (style.escapeAnswer() == 0)
        EnableMenuItem(GetSystemMenu(hwnd(), FALSE), SC_CLOSE, MF_BYCOMMAND | MF_GRAYED);
}

void frmMsg::answer(int button)
{
    tmrClose.stop();
    answer_ = button;
    endModal(button);
}

// A question that has no Cancel wants an answer.
bool frmMsg::onClose(CloseReason reason)
{
    return reason != CloseReason::user || content_.style.escapeAnswer() != 0;
}

std::optional<LRESULT> frmMsg::onMessage(UINT message, WPARAM, LPARAM)
{
    if (message != WM_COPY)
        return std::nullopt;
    copy();
    return 0;
}

void frmMsg::copy() const
{
    setClipboardText(
        hwnd(), msgBoxAsText(content_.caption, plainText(content_.prompt), content_.style.buttons));
}

void frmMsg::startCountdown()
{
    prgClose.create(*this, 100);
    prgClose.setPreferredSize({0, 10});
    lastTick_ = GetTickCount();
    tmrClose.start(kTickMs, [this] { countDown(); });
}

void frmMsg::countDown()
{
    const DWORD tick = GetTickCount();
    // Under another box nobody can answer this one: the time stands still.
    if (IsWindowEnabled(hwnd()))
        passed_ += tick - lastTick_;
    lastTick_ = tick;
    const int percent = static_cast<int>(
        std::min<DWORD>(100, passed_ / (10 * static_cast<DWORD>(*content_.autoClose))));
    prgClose.setValue(percent);
    if (percent == 100)
        answer(content_.style.defaultAnswer());
}

int MsgBoxEx(std::wstring_view prompt, int style, std::wstring_view title)
{
    frmMsg::Content content;
    content.prompt = prompt;
    content.caption = captionOf(title);
    content.style = parseMsgStyle(style);
    const int harmless = content.style.harmlessAnswer();
    return trap(
        kModule,
        [&] {
            const auto open = openBoxes();
            for (frmMsg* box : open) {
                if (content.style.buttons.size() == 1 && box->content() == content) {
                    box->bringToFront();
                    return kAnswerOK;
                }
            }
            if (open.size() >= kMostBoxes)
                throw Error("too many messages at a time: " + toUtf8(plainText(prompt)));
            content.autoClose = autoCloseSeconds();
            return frmMsg(std::move(content)).ask();
        },
        harmless);
}

} // namespace velora
