#include "core/modMsgStyle.h"

#include "base/product.h"
#include "base/text.h"

#include <algorithm>

namespace velora {
namespace {

constexpr MsgButton kOK{L"OK", kAnswerOK};
constexpr MsgButton kCancel{L"Cancel", kAnswerCancel};
constexpr MsgButton kAbort{L"&Abort", kAnswerAbort};
constexpr MsgButton kRetry{L"&Retry", kAnswerRetry};
constexpr MsgButton kIgnore{L"&Ignore", kAnswerIgnore};
constexpr MsgButton kYes{L"&Yes", kAnswerYes};
constexpr MsgButton kNo{L"&No", kAnswerNo};
constexpr MsgButton kDelete{L"&Delete", kAnswerDelete};
constexpr MsgButton kPreview{L"&Preview", kAnswerPreview};

std::vector<MsgButton> buttonSet(int set)
{
    switch (set) {
    case kMsgOKCancel: return {kOK, kCancel};
    case kMsgAbortRetryIgnore: return {kAbort, kRetry, kIgnore};
    case kMsgYesNoCancel: return {kYes, kNo, kCancel};
    case kMsgYesNo: return {kYes, kNo};
    case kMsgRetryCancel: return {kRetry, kCancel};
    case kMsgDeletePreviewCancel: return {kDelete, kPreview, kCancel};
    default: return {kOK};
    }
}

// Takes `part` off when the rest is at least as large: how the number is read from the top.
bool take(int& rest, int part)
{
    if (rest < part)
        return false;
    rest -= part;
    return true;
}

} // namespace

MsgStyle parseMsgStyle(int style)
{
    int rest = std::max(0, style) % (2 * kMsgSystemModal);
    MsgStyle result;
    result.systemModal = take(rest, kMsgSystemModal);
    if (take(rest, kMsgThirdDefault))
        result.defaultButton = 2;
    else if (take(rest, kMsgSecondDefault))
        result.defaultButton = 1;
    if (take(rest, kMsgInformation))
        result.icon = MsgIcon::information;
    else if (take(rest, kMsgExclamation))
        result.icon = MsgIcon::exclamation;
    else if (take(rest, kMsgQuestion))
        result.icon = MsgIcon::question;
    else if (take(rest, kMsgCritical))
        result.icon = MsgIcon::critical;
    result.buttons = buttonSet(rest);
    if (result.defaultButton >= static_cast<int>(result.buttons.size()))
        result.defaultButton = 0;
    return result;
}

int MsgStyle::defaultAnswer() const
{
    return buttons[static_cast<std::size_t>(defaultButton)].answer;
}

int MsgStyle::escapeAnswer() const
{
    for (const MsgButton& button : buttons)
        if (button.answer == kAnswerCancel)
            return kAnswerCancel;
    return buttons.size() == 1 ? kAnswerOK : 0;
}

int MsgStyle::harmlessAnswer() const
{
    if (const int escape = escapeAnswer())
        return escape;
    const bool yesNo = buttons.back().answer == kAnswerNo;
    return yesNo ? kAnswerNo : kAnswerAbort;
}

std::wstring captionOf(std::wstring_view title)
{
    std::wstring caption = kProductName;
    if (!title.empty())
        caption.append(L" - ").append(title);
    return caption;
}

std::wstring msgBoxAsText(std::wstring_view caption, std::wstring_view text,
                          const std::vector<MsgButton>& buttons)
{
    const std::wstring rule = std::wstring(27, L'-') + L"\r\n";
    std::wstring result = rule;
    result.append(caption).append(L"\r\n").append(rule);
    result.append(text).append(L"\r\n").append(rule);
    for (const MsgButton& button : buttons)
        result += without(button.text, L'&') + L"   ";
    return result + L"\r\n" + rule;
}

} // namespace velora
