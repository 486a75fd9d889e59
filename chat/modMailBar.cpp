#include "chat/modMailBar.h"

#include <algorithm>

namespace velora {
namespace {

constexpr MailButton kMail[] = {MailButton::reply, MailButton::decrypt};
constexpr MailButton kWriteMail[] = {MailButton::fade, MailButton::encrypt, MailButton::advertise,
                                     MailButton::tools};
constexpr MailButton kBoard[] = {MailButton::reply};
constexpr MailButton kBoardReply[] = {MailButton::fade};

/// To, Copy To and Subject; a board's answer has fewer.
constexpr int kMailFields = 3;

/// Left of the title bar that stays AOL's: the icon and the beginning of the title.
constexpr int kTitle = 84;
/// Between the bar and what is beside it.
constexpr int kBeside = 4;

constexpr std::wstring_view kAdvertisement =
    L"Written with Velora: sounds, faded text and mail tools for AOL.";

} // namespace

MailKind mailKind(const MailTraits& traits)
{
    if (traits.read)
        return traits.standalone ? MailKind::board : MailKind::mail;
    if (!traits.writes)
        return MailKind::none;
    if (traits.fields >= kMailFields)
        return MailKind::writeMail;
    // An instant message is begun in a window much like a board's; only its caption differs.
    return traits.reply ? MailKind::boardReply : MailKind::none;
}

std::span<const MailButton> mailButtons(MailKind kind)
{
    switch (kind) {
    case MailKind::mail: return kMail;
    case MailKind::writeMail: return kWriteMail;
    case MailKind::board: return kBoard;
    case MailKind::boardReply: return kBoardReply;
    case MailKind::none: break;
    }
    return {};
}

Rect titleLine(const TitledWindow& titled)
{
    const int border = titled.client.left - titled.window.left;
    // The title bar ends with a line of the frame's colour.
    return {titled.window.left + border + kTitle, titled.window.top + border,
            titled.window.right - border - titled.boxes * titled.boxWidth - kBeside,
            titled.client.top - 1};
}

std::optional<Rect> mailBarPlace(const Rect& line, std::vector<Rect> inTheWay, Size bar)
{
    std::sort(inTheWay.begin(), inTheWay.end(),
              [](const Rect& a, const Rect& b) { return a.right > b.right; });
    const int top = line.top + (line.height() - bar.height) / 2;
    Rect place = rectOf({line.right - bar.width, top}, bar);
    for (const Rect& other : inTheWay) {
        Rect around = other;
        around.left -= kBeside;
        around.right += kBeside;
        if (!intersection(around, place).empty())
            place = rectOf({around.left - bar.width, top}, bar);
    }
    if (line.empty() || place.left < line.left)
        return std::nullopt;
    return place;
}

std::wstring mailAdvertisement()
{
    // What stands before it may have left a style open.
    return L"<BR></b></i></u><FONT SIZE=1 PTSIZE=8>" + std::wstring(kAdvertisement) + L"</FONT>";
}

bool holdsAdvertisement(std::wstring_view mailText)
{
    return mailText.find(kAdvertisement) != mailText.npos;
}

} // namespace velora
