#pragma once
// Mail and message boards: written, read and answered.
#include "aolhost/Document.h"
#include "aolhost/FormatBar.h"
#include "aolhost/RichText.h"

#include <vector>

namespace aolhost {

struct MailText {
    std::wstring from = {}, to = {}, copy = {}, subject = {}, body = {}, date = {};
};

/// The compose window; a reply's and a forward's too, which have the subject as their caption.
class WriteMail final : public Document {
public:
    explicit WriteMail(const MailText& draft = {});

protected:
    void build() override;
    void layout(int width, int height) override;
    HWND firstFocus() const override;

private:
    void sendMail();
    MailText draft_;
    std::vector<std::wstring> files_;
    Control *labels_[3]{}, *fields_[3]{}, *receipt_ = nullptr;
    FormatBar format_;
    RichText* body_ = nullptr;
    std::vector<IconButton*> actions_;
};

/// A received mail, or a board's message: its head and text in one box.
class ReadMessage final : public Document {
public:
    enum class Kind { mail, board };
    ReadMessage(Kind kind, const std::wstring& caption, const MailText& mail);

protected:
    void build() override;
    void layout(int width, int height) override;
    HWND firstFocus() const override { return text_ ? text_->hwnd() : nullptr; }

private:
    enum class Answer { reply, all, forward };
    void answer(Answer how);
    std::wstring quoted() const;
    Kind kind_;
    MailText mail_;
    RichText* text_ = nullptr;
    std::vector<IconButton*> actions_;
};

/// A board's compose window: a subject and a text.
class BoardReply final : public Document {
public:
    BoardReply(const std::wstring& subject, const std::wstring& body);

protected:
    void build() override;
    void layout(int width, int height) override;
    HWND firstFocus() const override { return body_ ? body_->hwnd() : nullptr; }

private:
    std::wstring subject_, start_;
    Control *label_ = nullptr, *field_ = nullptr;
    RichText* body_ = nullptr;
    IconButton *send_ = nullptr, *cancel_ = nullptr;
};

/// The mail box: what has come, newest last.
class MailBox final : public Document {
public:
    MailBox();
    void refresh();

protected:
    void build() override;
    void layout(int width, int height) override;

private:
    void readChosen();
    Control* list_ = nullptr;
    IconButton *read_ = nullptr, *close_ = nullptr;
};

} // namespace aolhost
