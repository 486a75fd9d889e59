#include "aolhost/ImWindow.h"

#include "aolhost/Aol.h"
#include "aolhost/Text.h"

namespace aolhost {
namespace {

/// How many icons stand before the Send button.
int iconsBeforeSend()
{
    const Options& options = aol().options;
    if (options.version < 5)
        return 0;
    const bool australia = options.edition == Edition::australia;
    if (options.version == 5)
        return australia ? 9 : 8;
    return australia ? 10 : 9;
}

std::wstring caption(const std::wstring& who, ImWindow::Kind kind, bool unread)
{
    const Words& words = aol().words;
    switch (kind) {
    case ImWindow::Kind::from: return words.imFrom(who, unread, aol().options.plainFrench);
    case ImWindow::Kind::internet: return words.internetFrom(who, unread);
    case ImWindow::Kind::to: return (unread ? L">" : L"") + words.imTo(who);
    }
    return {};
}

} // namespace

ImWindow::ImWindow(const std::wstring& who, Kind kind) : who_(who), kind_(kind)
{
    replyOpen_ = kind == Kind::to || aol().options.reply == ReplyPart::shown;
    open(caption(), {430, 330}, kind == Kind::to ? Arrival::toFront : Arrival::behind);
}

ImWindow* ImWindow::with(const std::wstring& who)
{
    for (Document* document : aol().documents)
        if (auto* im = dynamic_cast<ImWindow*>(document))
            if (sameNoCase(im->who_, who))
                return im;
    return nullptr;
}

std::wstring ImWindow::caption() const
{
    return aolhost::caption(who_, kind_, unread_);
}

void ImWindow::build()
{
    conversation_ = new RichText(hwnd(), RichText::Use::display);
    conversation_->onFocus = [this] { setUnread(false); };
    if (replyOpen_ || aol().options.reply == ReplyPart::hidden)
        buildReply();
    buildButtons();
    showReply(replyOpen_);
    for (const Line& line : std::exchange(waiting_, {}))
        show(line);
}

void ImWindow::buildReply()
{
    reply_ = new RichText(hwnd(), RichText::Use::input);
    reply_->onSendKey = [this] { sendTyped(); };
    reply_->onFocus = [this] { setUnread(false); };
    format_.build(hwnd(), *reply_, iconsBeforeSend());
    send_ = new IconButton(hwnd(), aol().words.send(), Picture::send, IconLook::action);
    send_->onClick = [this] { sendTyped(); };
}

void ImWindow::buildButtons()
{
    const Words& words = aol().words;
    if (!replyOpen_) {
        respond_ = new IconButton(hwnd(), words.respond(), Picture::reply, IconLook::action);
        respond_->onClick = [this] { openReply(); };
    }
    profile_ = new IconButton(hwnd(), words.tr(L"Get Profile"), Picture::person, IconLook::action);
    profile_->onClick = [this] { aol().openKeyword(L"profile:" + who_); };
    cancel_ = new IconButton(hwnd(), words.tr(L"Cancel"), Picture::cancel, IconLook::action);
    cancel_->onClick = [this] { PostMessageW(hwnd(), WM_CLOSE, 0, 0); };
    sender_ = new Control(hwnd(), Control::Kind::text,
                          kind_ == Kind::internet ? words.internetUser() : who_, true);
}

void ImWindow::openReply()
{
    replyOpen_ = true;
    if (!reply_) {
        // The reply part comes first among the icons, so the others are made anew behind it.
        for (IconButton** icon : {&respond_, &profile_, &cancel_})
            DestroyWindow(std::exchange(*icon, nullptr)->hwnd());
        DestroyWindow(std::exchange(sender_, nullptr)->hwnd());
        buildReply();
        buildButtons();
    }
    if (respond_)
        respond_->show(false);
    showReply(true);
    const RECT area = client();
    layout(area.right, area.bottom);
    SetFocus(reply_->hwnd());
}

void ImWindow::showReply(bool visible)
{
    if (!reply_)
        return;
    reply_->show(visible);
    format_.show(visible);
    send_->show(visible);
}

void ImWindow::layout(int width, int height)
{
    const int buttons = height - 56;
    const int top = 30;
    sender_->place(12, 9, width - 24, 16);
    if (replyOpen_) {
        const int half = top + (buttons - top) * 55 / 100;
        conversation_->place(8, top, width - 16, half - top - 30);
        format_.place(8, half - 27);
        reply_->place(8, half, width - 16, buttons - half - 6);
        send_->place(8, buttons, 76, 50);
    } else {
        conversation_->place(8, top, width - 16, buttons - top - 6);
        respond_->place(8, buttons, 110, 50);
    }
    profile_->place(width - 168, buttons, 80, 50);
    cancel_->place(width - 84, buttons, 76, 50);
    InvalidateRect(hwnd(), nullptr, TRUE);
}

void ImWindow::paint(HDC dc, const RECT& area)
{
    RECT band = area;
    band.bottom = 5;
    fillGradient(dc, band, palette::kBlue, palette::kSky);
}

HWND ImWindow::firstFocus() const
{
    return replyOpen_ && reply_ ? reply_->hwnd() : conversation_ ? conversation_->hwnd() : nullptr;
}

LRESULT ImWindow::handle(UINT message, WPARAM wParam, LPARAM lParam)
{
    if (message == WM_PARENTNOTIFY && LOWORD(wParam) == WM_LBUTTONDOWN)
        setUnread(false);
    return Document::handle(message, wParam, lParam);
}

void ImWindow::setUnread(bool unread)
{
    if (unread_ == unread)
        return;
    unread_ = unread;
    setText(caption());
}

void ImWindow::receive(const std::wstring& html)
{
    aol().transcript.add(L"im", who_, html);
    add({who_, html});
    aol().play(L"IM");
    if (!inFront())
        setUnread(true);
}

void ImWindow::add(const Line& line)
{
    if (built())
        show(line);
    else
        waiting_.push_back(line);
}

void ImWindow::show(const Line& line)
{
    const bool own = line.who != who_;
    std::vector<Run> runs{{.text = (conversation_->length() > 0 ? L"\r\n" : L"") + line.who + L":",
                           .color = own ? RGB(176, 0, 0) : RGB(0, 0, 176),
                           .bold = true}};
    runs.push_back({.text = L"\t"});
    for (Run& run : parseMarkup(line.html, true))
        runs.push_back(std::move(run));
    conversation_->append(runs);
    conversation_->notifyChanged(aol().options.notice);
}

void ImWindow::sendText(const std::wstring& html)
{
    aol().imsSent.push_back(who_ + L": " + html);
    aol().transcript.add(L"imsent", who_, html);
    add({aol().name, html});
}

void ImWindow::sendTyped()
{
    const std::wstring typed = reply_->text();
    if (trimmed(typed).empty())
        return;
    reply_->clear();
    setUnread(false);
    sendText(typed);
}

std::wstring ImWindow::conversationText() const
{
    return conversation_ ? conversation_->text() : std::wstring();
}

SendImWindow::SendImWindow(const std::wstring& to) : to_(to)
{
    open(aol().words.sendIm(), {430, 300});
}

void SendImWindow::build()
{
    const Words& words = aol().words;
    label_ = new Control(hwnd(), Control::Kind::text, words.tr(L"To:"), true);
    name_ = new Control(hwnd(), Control::Kind::edit);
    name_->setText(to_);
    text_ = new RichText(hwnd(), RichText::Use::input);
    text_->onSendKey = [this] { sendTyped(); };
    format_.build(hwnd(), *text_, iconsBeforeSend());
    send_ = new IconButton(hwnd(), words.send(), Picture::send, IconLook::action);
    send_->onClick = [this] { sendTyped(); };
    available_ = new IconButton(hwnd(), words.available(), Picture::person, IconLook::action);
    cancel_ = new IconButton(hwnd(), words.tr(L"Cancel"), Picture::cancel, IconLook::action);
    cancel_->onClick = [this] { PostMessageW(hwnd(), WM_CLOSE, 0, 0); };
}

void SendImWindow::layout(int width, int height)
{
    const int buttons = height - 56;
    label_->place(10, 14, 40, 16);
    name_->place(54, 10, width - 64, 22);
    format_.place(8, 38);
    text_->place(8, 66, width - 16, buttons - 72);
    send_->place(8, buttons, 76, 50);
    available_->place(width - 168, buttons, 80, 50);
    cancel_->place(width - 84, buttons, 76, 50);
}

HWND SendImWindow::firstFocus() const
{
    return !name_ ? nullptr : to_.empty() ? name_->hwnd() : text_->hwnd();
}

void SendImWindow::sendTyped()
{
    const std::wstring to = trimmed(name_->text());
    const std::wstring typed = text_->text();
    if (sameNoCase(to, L"$im_off") || sameNoCase(to, L"$im_on")) {
        aol().switchIms(sameNoCase(to, L"$im_on"));
        return;
    }
    if (to.empty() || trimmed(typed).empty())
        return;
    PostMessageW(hwnd(), WM_CLOSE, 0, 0);
    ImWindow* im = ImWindow::with(to);
    (im ? im : new ImWindow(to, ImWindow::Kind::to))->sendText(typed);
}

} // namespace aolhost
