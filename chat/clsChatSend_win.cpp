#include "chat/clsChatSend.h"

#include "base/trap.h"
#include "chat/modCurrentFade.h"
#include "core/modAOL.h"
#include "core/modAOLRules.h"
#include "settings/Options.h"

namespace velora {
namespace {

constexpr char kModule[] = "clsChatSend";
constexpr int kKeywordCode = 1, kLinesCode = 2, kFadedCode = 3;

bool inside(HWND window, LPARAM where)
{
    RECT area{};
    GetClientRect(window, &area);
    return PtInRect(&area, {static_cast<short>(LOWORD(where)), static_cast<short>(HIWORD(where))});
}

} // namespace

SendOptions sendOptions()
{
    SendOptions options;
    options.keywords = opt::ChatKeywords::Enabled.get();
    options.fader = opt::Fader::On.get();
    options.fadeWavOnly = opt::Fader::FadeWavOnly.get();
    options.useMultiline = opt::ChatExtender::UseMultiline.get();
    options.charsInLine = static_cast<int>(opt::ChatExtender::CharsInLine.get());
    return options;
}

clsChatSend::clsChatSend()
{
    sbcCmdLine.WndMessageX = [this](HookMessage& message) { keyPressed(message); };
    sbcSendIcon.WndMessageX = [this](HookMessage& message) {
        // From version 6 on AOL's buttons take Enter, too.
        if (message.message == WM_KEYDOWN
            || (message.message == WM_CHAR && iconPress(aol().version) == IconPress::enter))
            keyPressed(message);
        else if (message.message != WM_CHAR)
            mouse(message);
    };
    sbcCmdLine.DelayedEvent = sbcSendIcon.DelayedEvent = [this](int code) { delayed(code); };
}

bool clsChatSend::attach(AgentLink& link, HWND room)
{
    return trap(
        kModule,
        [&] {
            link_ = &link;
            input_ = chatInput(room);
            const HWND send = chatSendIcon(room);
            const bool both =
                input_ && send
                && sbcCmdLine.attach(link, input_,
                                     {WatchRule::key(WM_KEYDOWN, VK_RETURN),
                                      WatchRule::key(WM_CHAR, VK_RETURN),
                                      WatchRule::key(WM_CHAR, L'/', Delivery::postedAfter)})
                && sbcSendIcon.attach(link, send,
                                      {WatchRule::key(WM_KEYDOWN, VK_SPACE),
                                       WatchRule::key(WM_CHAR, VK_RETURN),
                                       {WM_LBUTTONDOWN},
                                       {WM_LBUTTONDBLCLK},
                                       {WM_LBUTTONUP}});
            if (!both)
                detach();
            return both;
        },
        false);
}

void clsChatSend::detach()
{
    sbcCmdLine.detach();
    sbcSendIcon.detach();
    mouseTaken_ = false;
}

void clsChatSend::keyPressed(HookMessage& message)
{
    trap(kModule, [&] {
        if (message.posted) {
            if (onSlash && GetTypedText() == L"/")
                onSlash();
            return;
        }
        if (!ownEnter())
            message.noDefault = takeOver(message);
    });
}

// AOL may act on the button's going down or up. So the press is judged when it goes down, and
// carried out when it comes up on the button; a press that is drawn off the button is given up.
void clsChatSend::mouse(HookMessage& message)
{
    trap(kModule, [&] {
        if (message.message != WM_LBUTTONUP) {
            mouseTaken_ = false;
            const auto typed = GetTypedText();
            mouseTaken_ = typed && decideSend(*typed, sendOptions()).action != SendAction::pass;
            message.noDefault = mouseTaken_;
            return;
        }
        if (!mouseTaken_)
            return;
        mouseTaken_ = false;
        message.noDefault = true;
        if (inside(message.window, message.lParam))
            takeOver(message);
    });
}

std::optional<std::wstring> clsChatSend::GetTypedText() const
{
    return link_->readText(input_);
}

bool clsChatSend::takeOver(HookMessage& message)
{
    const auto typed = GetTypedText();
    if (!typed)
        return false;
    SendDecision decision = decideSend(*typed, sendOptions());
    if (decision.action == SendAction::pass)
        return false;
    if (decision.action == SendAction::fade) {
        typed_ = faded_ = *typed;
        FadeEngine(faded_);
        if (!faded_.empty() && link_->sendLine(input_, faded_))
            message.requestDelayed(kFadedCode);
        else
            setAolText(input_, typed_);
        return true;
    }
    if (!setAolText(input_, L""))
        return false;
    if (decision.action == SendAction::keyword) {
        keyword_ = std::move(decision.keyword);
        message.requestDelayed(kKeywordCode);
    } else {
        lines_ = std::move(decision.lines);
        message.requestDelayed(kLinesCode);
    }
    return true;
}

void clsChatSend::delayed(int code)
{
    trap(kModule, [&] {
        if (code == kKeywordCode && onKeyword)
            onKeyword(std::exchange(keyword_, {}));
        if (code == kLinesCode && onLines)
            onLines(std::exchange(lines_, {}));
        // A line that AOL has not taken stays in the box, but as it was typed.
        if (code == kFadedCode && GetTypedText() == faded_)
            setAolText(input_, typed_);
    });
}

} // namespace velora
