// The steps of encrypting a mail, over a mail body that can fail at each of them.
#include "im_mail/modMailCommands.h"

#include "base/text.h"
#include "im_mail/modMail.h"

#include <doctest/doctest.h>
#include <vector>

using namespace velora;

namespace {

/// A text box in memory; call number `failAt` (from 1) and, with `gone`, all later ones fail.
class FakeBody final : public MailBody {
public:
    explicit FakeBody(std::wstring text, TextRange selected = {})
        : text_(text), selection_(selected)
    {
    }
    std::optional<std::wstring> text() override
    {
        return works() ? std::optional(text_) : std::nullopt;
    }
    std::optional<TextRange> selection() override
    {
        return works() ? std::optional(selection_) : std::nullopt;
    }
    std::optional<std::wstring> selectedText() override
    {
        return works() ? std::optional(part()) : std::nullopt;
    }
    bool select(TextRange range) override
    {
        if (!works())
            return false;
        selection_ = range;
        return true;
    }
    bool selectAll() override { return select({0, static_cast<int>(text_.size())}); }
    bool replaceSelection(std::wstring_view text) override
    {
        if (!works())
            return false;
        past_.push_back(text_);
        text_.replace(static_cast<std::size_t>(selection_.from), part().size(), text);
        if (text_.size() > most)
            text_.resize(most);
        selection_ = {};
        return true;
    }
    bool undo() override
    {
        if (past_.empty() || !undoes)
            return false;
        text_ = past_.back();
        past_.pop_back();
        return true;
    }

    int calls = 0, failAt = 0;
    std::size_t most = 1000000;
    bool undoes = true;
    std::wstring now() const { return text_; }
    TextRange selected() const { return selection_; }
    void type(const std::wstring& text) { text_ += text; }

private:
    bool works() { return ++calls != failAt; }
    std::wstring part() const
    {
        return text_.substr(static_cast<std::size_t>(selection_.from),
                            static_cast<std::size_t>(selection_.to - selection_.from));
    }
    std::wstring text_;
    TextRange selection_;
    std::vector<std::wstring> past_;
};

EncryptQuestions answers(bool whole, const std::wstring& password)
{
    return {[whole] { return whole; }, [password] { return password; }};
}

std::wstring decrypted(const FakeBody& body, const std::wstring& password)
{
    const std::wstring text = body.now();
    const auto envelope = FindEnvelope(text);
    return envelope ? DecryptMailText(*envelope, password) : L"(none)";
}

} // namespace

TEST_CASE("the selection becomes an envelope, trimmed, under a trimmed password")
{
    FakeBody body(L"Hi,  secret  bye", {3, 13});
    EncryptedMail undo;
    REQUIRE(encryptMail(body, answers(false, L" pw "), false, undo) == EncryptResult::done);
    CHECK(body.now() == L"Hi," + envelopeForMail(EncryptMailText(L"secret", L"pw")) + L"bye");
    CHECK(undo.after == body.now());
    CHECK(undoEncryption(body, undo));
    CHECK(body.now() == L"Hi,  secret  bye");
}

TEST_CASE("without a selection the whole mail is asked for")
{
    FakeBody no(L"all of it");
    EncryptedMail undo;
    CHECK(encryptMail(no, answers(false, L"pw"), true, undo) == EncryptResult::cancelled);
    CHECK(no.now() == L"all of it");
    FakeBody yes(L"all of it");
    REQUIRE(encryptMail(yes, answers(true, L"pw"), true, undo) == EncryptResult::done);
    CHECK(yes.now().starts_with(decryptNotice() + L"</b></i></u><-- begin -->"));
    CHECK(decrypted(yes, L"pw") == L"all of it");
    FakeBody blank(L"   ");
    CHECK(encryptMail(blank, answers(true, L"pw"), true, undo) == EncryptResult::cancelled);
}

TEST_CASE("the notice comes once")
{
    FakeBody body(L"first second", {0, 5});
    EncryptedMail undo;
    REQUIRE(encryptMail(body, answers(false, L"pw"), true, undo) == EncryptResult::done);
    const int at = static_cast<int>(body.now().find(L"second"));
    body.select({at, at + 6});
    REQUIRE(encryptMail(body, answers(false, L"pw"), true, undo) == EncryptResult::done);
    const std::wstring text = body.now();
    CHECK(text.starts_with(decryptNotice()));
    CHECK(text.find(decryptNotice(), 1) == text.npos);
}

TEST_CASE("an empty password changes nothing and gives the caret back")
{
    for (const wchar_t* password : {L"", L"   "}) {
        FakeBody body(L"some text", {4, 4});
        EncryptedMail undo;
        CHECK(encryptMail(body, answers(true, password), true, undo) == EncryptResult::cancelled);
        CHECK(body.now() == L"some text");
        CHECK(body.selected().from == 4);
        CHECK(body.selected().to == 4);
        CHECK(undo.after.empty());
    }
}

TEST_CASE("the limit of a mail")
{
    // 15 + 4 * 2 * ... characters: the last length whose envelope is below 30000, and the next.
    EncryptedMail undo;
    const std::size_t fits = (29952 / 64 * 32 - 4) / 2;
    FakeBody body(std::wstring(fits, L'x'));
    CHECK(encryptMail(body, answers(true, L"pw"), false, undo) == EncryptResult::done);
    FakeBody over(std::wstring(fits + 1, L'x'));
    CHECK(encryptMail(over, answers(true, L"pw"), false, undo) == EncryptResult::tooLong);
    CHECK(over.now() == std::wstring(fits + 1, L'x'));
}

TEST_CASE("what the user changes while the password is asked for is not lost")
{
    FakeBody body(L"Hi, secret", {4, 10});
    EncryptedMail undo;
    const EncryptQuestions typing{[] { return true; },
                                  [&] {
                                      body.select({0, 4});
                                      body.replaceSelection(L"Hello, ");
                                      return L"pw";
                                  }};
    CHECK(encryptMail(body, typing, true, undo) == EncryptResult::changed);
    CHECK(body.now() == L"Hello, secret");
    // Another caret alone is no change.
    FakeBody moved(L"Hi, secret", {4, 10});
    const EncryptQuestions clicking{[] { return true; },
                                    [&] {
                                        moved.select({0, 0});
                                        return L"pw";
                                    }};
    CHECK(encryptMail(moved, clicking, false, undo) == EncryptResult::done);
    CHECK(decrypted(moved, L"pw") == L"secret");
}

TEST_CASE("whatever step fails, the mail is whole: as before, or encrypted")
{
    const std::wstring text = L"Dear Rose, meet me at noon. Joe";
    for (const bool undoes : {true, false})
        for (int step = 1; step < 40; ++step) {
            CAPTURE(step);
            CAPTURE(undoes);
            FakeBody body(text);
            body.failAt = step;
            body.undoes = undoes;
            EncryptedMail undo;
            const EncryptResult result = encryptMail(body, answers(true, L"pw"), true, undo);
            if (result == EncryptResult::done)
                CHECK(decrypted(body, L"pw") == text);
            else
                CHECK(body.now() == text);
        }
}

TEST_CASE("a box that cuts what it gets keeps its mail")
{
    for (const std::size_t most : {60u, 100u, 150u, 300u}) {
        CAPTURE(most);
        FakeBody body(L"a short mail");
        body.most = most;
        EncryptedMail undo;
        CHECK(encryptMail(body, answers(true, L"pw"), true, undo) == EncryptResult::failed);
        CHECK(body.now() == L"a short mail");
    }
}

TEST_CASE("undoing is refused once the mail has been changed")
{
    FakeBody body(L"text", {0, 4});
    EncryptedMail undo;
    CHECK_FALSE(undoEncryption(body, undo));
    REQUIRE(encryptMail(body, answers(false, L"pw"), true, undo) == EncryptResult::done);
    body.type(L" and more");
    const std::wstring changed = body.now();
    CHECK_FALSE(undoEncryption(body, undo));
    CHECK(body.now() == changed);
}

TEST_CASE("another change of the selection keeps to the limit too")
{
    FakeBody body(L"one two", {4, 7});
    CHECK(replaceSelected(body, [](std::wstring text) { return upper(text); })
          == EncryptResult::done);
    CHECK(body.now() == L"one TWO");
    CHECK(replaceSelected(body, [](std::wstring text) { return text; })
          == EncryptResult::cancelled);
    body.select({4, 7});
    CHECK(replaceSelected(body, [](std::wstring) { return std::wstring(29996, L'x'); })
          == EncryptResult::tooLong);
    CHECK(body.now() == L"one TWO");
}
