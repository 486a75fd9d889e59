#include "chat/frmMailBar.h"

#include "base/trap.h"
#include "chat/ToolbarRoutes.h"
#include "chat/clsReplyHooks.h"
#include "chat/frmFadeInsert.h"
#include "chat/modIcons_win.h"
#include "chat/modMailBar_win.h"
#include "core/modAOL.h"
#include "ui/Menu.h"
#include "ui/WinGeometry.h"

#include <algorithm>
#include <utility>

namespace velora {
namespace {

constexpr char kModule[] = "frmMailBar";
constexpr int kIconSize = 16;
constexpr Size kButtonSize{20, 16};
constexpr int kFrame = 1; // around the buttons
constexpr wchar_t kToolsTip[] = L"More mail tools";
/// AOL tells of a change of documents while it is still at it.
constexpr UINT kSettleMs = 60;

enum class InFront { aol, ours, other };

InFront programInFront()
{
    const HWND front = GetForegroundWindow();
    DWORD process = 0;
    GetWindowThreadProcessId(front, &process);
    if (process == GetCurrentProcessId())
        return InFront::ours;
    return isAolWindow(front) ? InFront::aol : InFront::other;
}

/// The places of our other panels over the frame.
std::vector<Rect> ourPanels(HWND frame, const Form& bar)
{
    std::vector<Rect> places;
    for (const Form* form : Form::all())
        if (form != &bar && GetWindow(form->hwnd(), GW_OWNER) == frame
            && IsWindowVisible(form->hwnd()))
            places.push_back(form->place());
    return places;
}

} // namespace

/// One button. What it does is somewhere else; without that somewhere it stays away.
struct frmMailBar::ButtonRow {
    MailButton id;
    ImageButton frmMailBar::*button;
    const wchar_t* name; ///< its window text, too
    const wchar_t* tip;
    IconId icon;
    bool (*there)();
    void (*clicked)(frmMailBar& bar);
};

const frmMailBar::ButtonRow frmMailBar::kButtons[] = {
    {MailButton::reply, &frmMailBar::cmdReply, L"Reply with Quote",
     L"Reply with Quote: answer with the text quoted, or what you have selected of it",
     IconId::replyQuote, [] { return bool(toolbarRoutes().quoteReply); },
     [](frmMailBar&) { toolbarRoutes().quoteReply(); }},
    {MailButton::decrypt, &frmMailBar::cmdDecrypt, L"Decrypt",
     L"Decrypt: show the encrypted text of this mail", IconId::decrypt,
     [] { return bool(toolbarRoutes().decryptMail); },
     [](frmMailBar&) { toolbarRoutes().decryptMail(); }},
    {MailButton::fade, &frmMailBar::cmdFade, L"Fade and Insert",
     L"Fade and Insert: write a text in colours where the cursor is", IconId::fade,
     [] { return true; }, [](frmMailBar&) { frmFadeInsert::showWindow(); }},
    {MailButton::encrypt, &frmMailBar::cmdEncrypt, L"Encrypt",
     L"Encrypt: lock this mail with a password", IconId::encrypt,
     [] { return bool(toolbarRoutes().encryptMail); },
     [](frmMailBar&) { toolbarRoutes().encryptMail(); }},
    {MailButton::advertise, &frmMailBar::cmdAdvertise, L"Add a Line about Velora",
     L"Add a line about Velora at the end of this mail", IconId::advertise,
     [] { return opt::EMail::AdInMail.get(); },
     [](frmMailBar& bar) { MailAdvertise(bar.window_); }},
    {MailButton::tools, &frmMailBar::cmdTools, L"Mail Tools", kToolsTip, IconId::mail,
     [] { return bool(toolbarRoutes().mailMenu); }, [](frmMailBar& bar) { bar.openTools(); }},
};

frmMailBar::frmMailBar(const clsReplyHooks& replies) : Form("frmMailBar"), replies_(replies)
{
    sbcMail.WndMessageX = [this](HookMessage&) {
        follow();
        tmrSettle.startOnce(kSettleMs, [this] { follow(); });
    };
}

frmMailBar::~frmMailBar() = default;

FormOptions frmMailBar::options() const
{
    FormOptions options;
    options.title = L"Velora Mail Buttons";
    options.kind = FormKind::panel;
    options.owner = AOLWindow();
    options.activates = false;
    return options;
}

void frmMailBar::onCreate()
{
    for (const ButtonRow& row : kButtons) {
        ImageButton& button = this->*row.button;
        button.create(
            *this, row.name, sharedIcon(row.icon, kIconSize),
            [this, clicked = row.clicked] { clicked(*this); }, false);
        button.setPreferredSize(kButtonSize);
        tips_.add(button, row.tip);
    }
    changes_ = onOptionChanged([this](OptionId id) {
        if (id != opt::Toolbar::MailBar.id() && id != opt::EMail::AdInMail.id())
            return;
        showButtons();
        follow();
    });
}

void frmMailBar::onDestroy()
{
    ended_ = true;
    tmrSettle.stop();
    changes_ = {};
    sbcMail.detach();
}

void frmMailBar::detach()
{
    trap(kModule, [&] {
        ended_ = true;
        tmrSettle.stop();
        sbcMail.detach();
        close();
    });
}

void frmMailBar::onPaint(HDC dc, const Rect& client)
{
    PaintMailControls(dc, client);
}

// Raised like the boxes of a title bar.
void frmMailBar::PaintMailControls(HDC dc, const Rect& client)
{
    RECT edge = toRECT(client);
    DrawEdge(dc, &edge, BDR_RAISEDINNER, BF_RECT);
}

void frmMailBar::ButtonsToMail(HWND window)
{
    setButtons(MailKind::mail, window);
}

void frmMailBar::ButtonsToWriteMail(HWND window)
{
    setButtons(MailKind::writeMail, window);
}

void frmMailBar::ButtonsToMB(HWND window)
{
    setButtons(MailKind::board, window);
}

void frmMailBar::ButtonsToMbReply(HWND window)
{
    setButtons(MailKind::boardReply, window);
}

void frmMailBar::setButtons(MailKind kind, HWND window)
{
    if (!isOpen())
        create();
    window_ = window;
    if (std::exchange(kind_, kind) != kind)
        showButtons();
}

void frmMailBar::showButtons()
{
    const auto wanted = mailButtons(kind_);
    std::vector<Box> buttons;
    for (const ButtonRow& row : kButtons) {
        ImageButton& button = this->*row.button;
        button.show(std::find(wanted.begin(), wanted.end(), row.id) != wanted.end() && row.there());
        buttons.push_back(button);
    }
    const Box layout = line(buttons, 0, false).margins(kFrame);
    setLayout(layout);
    setPlace(rectOf({place().left, place().top}, layout.preferredSize()));
    relayout();
}

MailKind frmMailBar::kindOf(HWND document)
{
    if (replies_.GetReplyHelpIcon(document))
        return mailKind({.read = true, .standalone = replies_.IsStandaloneMB(document)});
    if (document && std::exchange(lookedAt_, document) != document)
        written_ = writtenKind(document);
    return document ? written_ : MailKind::none;
}

void frmMailBar::documentChanged(HWND document)
{
    if (document == lookedAt_)
        lookedAt_ = nullptr;
    follow();
}

void frmMailBar::documentGone(HWND document)
{
    documentChanged(document);
    // Another document takes its place.
    if (!ended_)
        tmrSettle.startOnce(kSettleMs, [this] { follow(); });
}

// Of a mail's window all that may change its place is told; of another document in front only that
// it gives way.
void frmMailBar::watch(HWND document)
{
    const bool moves = window_ != nullptr;
    if (sbcMail.window() == document && moves_ == moves)
        return;
    sbcMail.detach();
    moves_ = moves;
    if (!document || !aolLink().connected())
        return;
    const auto rule = [](UINT message) {
        return WatchRule{message, 0, ~WPARAM{0}, Delivery::postedAfter, true};
    };
    if (moves)
        sbcMail.attach(aolLink(), document, {rule(WM_MDIACTIVATE), rule(WM_WINDOWPOSCHANGED)});
    else
        sbcMail.attach(aolLink(), document, {rule(WM_MDIACTIVATE)});
}

void frmMailBar::follow()
{
    trap(kModule, [&] {
        if (ended_)
            return;
        const HWND front = opt::Toolbar::MailBar.get() ? frontDocument() : nullptr;
        switch (kindOf(front)) {
        case MailKind::mail: ButtonsToMail(front); break;
        case MailKind::writeMail: ButtonsToWriteMail(front); break;
        case MailKind::board: ButtonsToMB(front); break;
        case MailKind::boardReply: ButtonsToMbReply(front); break;
        case MailKind::none: window_ = nullptr; break;
        }
        watch(front);
        if (!isOpen())
            return;
        const auto wanted = placeNow();
        if (wanted && *wanted != place())
            setPlace(*wanted);
        if (wanted.has_value() != (IsWindowVisible(hwnd()) != FALSE))
            show(wanted.has_value());
    });
}

std::optional<Rect> frmMailBar::placeNow() const
{
    const HWND frame = AOLWindow();
    if (!window_ || !IsWindowVisible(frame) || !IsWindowEnabled(frame) || IsIconic(frame))
        return std::nullopt;
    // While one of our own windows is in front, what is shown stays, and nothing comes up.
    const InFront front = programInFront();
    if (front == InFront::other || (front == InFront::ours && !IsWindowVisible(hwnd())))
        return std::nullopt;
    MailBarRoom room = mailBarRoom(window_);
    for (const Rect& panel : ourPanels(frame, *this))
        room.inTheWay.push_back(panel);
    const auto wanted = mailBarPlace(room.line, room.inTheWay, place().size());
    return wanted && !coveredByAol(*wanted) ? wanted : std::nullopt;
}

void frmMailBar::openTools()
{
    Menu mnuMailItem;
    toolbarRoutes().mailMenu(mnuMailItem);
    const Rect below = cmdTools.screenPlace();
    // Its tip would come up over the menu.
    tips_.remove(cmdTools);
    mnuMailItem.popup(*this, {below.left, below.bottom});
    if (isOpen())
        tips_.add(cmdTools, kToolsTip);
}

} // namespace velora
