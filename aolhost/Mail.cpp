#include "aolhost/Mail.h"

#include "aolhost/Aol.h"
#include "aolhost/Modal.h"
#include "aolhost/Text.h"

#include <richedit.h>

namespace aolhost {
namespace {

constexpr int kActionWidth = 92;

/// The head of a read message, in the edition's words.
std::wstring head(const MailText& mail, bool board)
{
    const Words& words = aol().words;
    const std::wstring subject =
        board || words.german() || words.french() ? words.tr(L"Subject:") : L"Subj:";
    std::wstring out = subject + L"\t" + mail.subject + L"\n" + words.tr(L"Date:") + L"\t"
                       + mail.date + L"\n" + words.tr(L"From:") + L"\t" + mail.from + L"\n";
    if (!board)
        out += words.tr(L"To:") + L"\t" + mail.to + L"\n";
    return out + L"\n";
}

std::wstring withPrefix(const std::wstring& prefix, const std::wstring& subject)
{
    return startsNoCase(subject, prefix) ? subject : prefix + subject;
}

void placeColumn(const std::vector<IconButton*>& icons, int x, int y)
{
    for (IconButton* icon : icons) {
        icon->place(x, y, kActionWidth - 8, 52);
        y += 56;
    }
}

} // namespace

WriteMail::WriteMail(const MailText& draft) : draft_(draft)
{
    open(draft.subject.empty() ? aol().words.writeMail() : draft.subject, {600, 420});
}

void WriteMail::build()
{
    const Words& words = aol().words;
    const wchar_t* captions[] = {L"To:", L"Copy To:", L"Subject:"};
    const std::wstring values[] = {draft_.to, draft_.copy, draft_.subject};
    for (int i = 0; i < 3; ++i) {
        labels_[i] = new Control(hwnd(), Control::Kind::text, words.tr(captions[i]), true);
        fields_[i] = new Control(hwnd(), Control::Kind::edit);
        fields_[i]->setText(values[i]);
    }
    body_ = new RichText(hwnd(), RichText::Use::input);
    format_.build(hwnd(), *body_, 10);
    if (!draft_.body.empty())
        body_->setRuns(parseMarkup(draft_.body, true));
    const auto action = [&](const std::wstring& caption, Picture picture) {
        auto* icon = new IconButton(hwnd(), caption, picture, IconLook::action);
        actions_.push_back(icon);
        return icon;
    };
    action(words.tr(L"Send Now"), Picture::send)->onClick = [this] { sendMail(); };
    action(words.tr(L"Send Later"), Picture::later);
    action(words.tr(L"Address Book"), Picture::address);
    action(words.attach(), Picture::attach)->onClick = [this] { new AttachmentsModal(files_); };
    receipt_ = new Control(hwnd(), Control::Kind::check, words.tr(L"Request Return Receipt"));
}

void WriteMail::layout(int width, int height)
{
    const int right = width - kActionWidth - 8;
    for (int i = 0; i < 3; ++i) {
        const int y = 10 + 27 * i;
        labels_[i]->place(10, y + 4, 66, 16);
        fields_[i]->place(80, y, right - 88, 22);
    }
    format_.place(10, 94);
    body_->place(10, 122, right - 18, height - 122 - 34);
    receipt_->place(10, height - 28, 220, 20);
    placeColumn(actions_, right + 4, 10);
}

HWND WriteMail::firstFocus() const
{
    return !body_ ? nullptr : draft_.to.empty() ? fields_[0]->hwnd() : body_->hwnd();
}

void WriteMail::sendMail()
{
    const std::wstring to = trimmed(fields_[0]->text());
    if (to.empty()) {
        new MessageModal(aol().words.product(), aol().words.tr(L"To:") + L" ?", Picture::mailWrite);
        return;
    }
    std::wstring record =
        to + L"|" + fields_[1]->text() + L"|" + fields_[2]->text() + L"|" + body_->text();
    for (const std::wstring& file : files_)
        record += L"|" + file;
    aol().mailsSent.push_back(record);
    aol().transcript.add(L"mailsent", to, record);
    PostMessageW(hwnd(), WM_CLOSE, 0, 0);
}

ReadMessage::ReadMessage(Kind kind, const std::wstring& caption, const MailText& mail)
    : kind_(kind), mail_(mail)
{
    open(caption, {560, 400});
}

void ReadMessage::build()
{
    const Words& words = aol().words;
    text_ = new RichText(hwnd(), RichText::Use::display);
    std::vector<Run> runs{{.text = head(mail_, kind_ == Kind::board), .bold = true}};
    for (Run& run : parseMarkup(mail_.body, true))
        runs.push_back(std::move(run));
    text_->setRuns(runs);
    const auto action = [&](const std::wstring& caption, Picture picture, Answer how) {
        auto* icon = new IconButton(hwnd(), caption, picture, IconLook::action);
        icon->onClick = [this, how] { answer(how); };
        actions_.push_back(icon);
    };
    action(words.reply(), Picture::reply, Answer::reply);
    if (kind_ == Kind::mail) {
        action(words.forward(), Picture::forward, Answer::forward);
        action(words.replyAll(), Picture::people, Answer::all);
    }
    auto* close = new IconButton(hwnd(), words.tr(L"Close"), Picture::cancel, IconLook::action);
    close->onClick = [this] { PostMessageW(hwnd(), WM_CLOSE, 0, 0); };
    actions_.push_back(close);
}

void ReadMessage::layout(int width, int height)
{
    const int right = width - kActionWidth - 8;
    text_->place(8, 8, right - 12, height - 16);
    placeColumn(actions_, right + 4, 8);
}

std::wstring ReadMessage::quoted() const
{
    CHARRANGE range{};
    text_->send(EM_EXGETSEL, 0, reinterpret_cast<LPARAM>(&range));
    if (range.cpMin == range.cpMax)
        return {};
    const auto count = static_cast<std::size_t>(range.cpMax - range.cpMin) + 1;
    std::wstring chosen;
    if (text_->ansi()) {
        std::string bytes(count, '\0');
        bytes.resize(static_cast<std::size_t>(
            text_->send(EM_GETSELTEXT, 0, reinterpret_cast<LPARAM>(bytes.data()))));
        chosen = fromAnsi(bytes);
    } else {
        chosen.resize(count);
        chosen.resize(static_cast<std::size_t>(
            text_->send(EM_GETSELTEXT, 0, reinterpret_cast<LPARAM>(chosen.data()))));
    }
    return L"In a message dated " + mail_.date + L", " + mail_.from + L" writes:<BR><BR>&lt;&lt; "
           + chosen + L" &gt;&gt;<BR>";
}

void ReadMessage::answer(Answer how)
{
    const std::wstring subject =
        withPrefix(how == Answer::forward ? aol().words.forwardPrefix() : L"Re: ", mail_.subject);
    aol().transcript.add(how == Answer::forward ? L"forward" : L"reply", mail_.from, mail_.subject);
    if (kind_ == Kind::board) {
        new BoardReply(subject, quoted());
        return;
    }
    MailText draft{.subject = subject, .body = quoted()};
    if (how == Answer::forward)
        draft.body += mail_.body;
    else
        draft.to = mail_.from;
    if (how == Answer::all)
        draft.copy = mail_.copy;
    new WriteMail(draft);
}

BoardReply::BoardReply(const std::wstring& subject, const std::wstring& body)
    : subject_(subject), start_(body)
{
    open(subject, {520, 360});
}

void BoardReply::build()
{
    const Words& words = aol().words;
    label_ = new Control(hwnd(), Control::Kind::text, words.tr(L"Subject:"), true);
    field_ = new Control(hwnd(), Control::Kind::edit);
    field_->setText(subject_);
    body_ = new RichText(hwnd(), RichText::Use::input);
    if (!start_.empty())
        body_->setRuns(parseMarkup(start_, true));
    send_ = new IconButton(hwnd(), words.send(), Picture::none, IconLook::push);
    send_->onClick = [this] {
        const std::wstring record = field_->text() + L"|" + body_->text();
        aol().postsSent.push_back(record);
        aol().transcript.add(L"posted", field_->text(), record);
        PostMessageW(hwnd(), WM_CLOSE, 0, 0);
    };
    cancel_ = new IconButton(hwnd(), words.tr(L"Cancel"), Picture::none, IconLook::push);
    cancel_->onClick = [this] { PostMessageW(hwnd(), WM_CLOSE, 0, 0); };
}

void BoardReply::layout(int width, int height)
{
    label_->place(10, 14, 66, 16);
    field_->place(80, 10, width - 90, 22);
    body_->place(10, 42, width - 20, height - 92);
    send_->place(10, height - 40, 90, 28);
    cancel_->place(width - 100, height - 40, 90, 28);
}

MailBox::MailBox()
{
    open(aol().words.tr(L"You've Got Mail"), {460, 300});
}

void MailBox::build()
{
    list_ = new Control(hwnd(), Control::Kind::list);
    list_->onNotify = [this](int what) {
        if (what == LBN_DBLCLK)
            readChosen();
    };
    read_ = new IconButton(hwnd(), aol().words.tr(L"Read"), Picture::none, IconLook::push);
    read_->onClick = [this] { readChosen(); };
    close_ = new IconButton(hwnd(), aol().words.tr(L"Close"), Picture::none, IconLook::push);
    close_->onClick = [this] { PostMessageW(hwnd(), WM_CLOSE, 0, 0); };
    refresh();
}

void MailBox::refresh()
{
    if (!list_)
        return;
    list_->send(LB_RESETCONTENT);
    for (const MailText& mail : aol().mailBox)
        list_->addItem(mail.date + L"   " + mail.from + L"   " + mail.subject);
    list_->choose(0);
}

void MailBox::layout(int width, int height)
{
    list_->place(8, 8, width - 16, height - 58);
    read_->place(8, height - 40, 90, 28);
    close_->place(width - 98, height - 40, 90, 28);
}

void MailBox::readChosen()
{
    const LRESULT at = list_->send(LB_GETCURSEL);
    if (at < 0)
        return;
    const MailText mail = aol().mailBox[static_cast<std::size_t>(at)];
    new ReadMessage(ReadMessage::Kind::mail, mail.subject, mail);
}

} // namespace aolhost
