// Mails in AOL's own windows, as a user encrypts, sends, reads and decrypts them.
#include "im_mail/modMailTools.h"

#include "base/files.h"
#include "base/text.h"
#include "core/clsSavedClipboard.h"
#include "core/modAOL.h"
#include "core/modClipboard.h"
#include "hook/AgentLink.h"
#include "im_mail/clsAolMailBody.h"
#include "im_mail/frmDecrypt.h"
#include "im_mail/modMail.h"
#include "settings/Options.h"
#include "support/answer_win.h"
#include "support/aolhost_win.h"
#include "support/drive_win.h"
#include "support/form_scope_win.h"
#include "support/tempdir.h"
#include "ui/Timer.h"

#include <doctest/doctest.h>

#include <richedit.h>

using namespace velora;
using namespace velora::test;

namespace {

constexpr wchar_t kEncryptBox[] = L"Velora - Encrypt E-Mail";
constexpr wchar_t kDecryptBox[] = L"Velora - Decrypt E-Mail";
constexpr wchar_t kMailBox[] = L"Velora - Mail";
constexpr wchar_t kTextWindow[] = L"Velora - Decrypted E-Mail";

std::wstring umlautsAndEmoji()
{
    return fromUtf8("Gr\xC3\xBC\xC3\x9F"
                    "e aus K\xC3\xB6ln \xF0\x9F\x98\x80!");
}

/// AOL with the mail window open; options in memory.
struct MailBench {
    explicit MailBench(int edition = 0, int version = 5, const std::wstring& body = L"",
                       bool connect = true)
        : host({.edition = edition, .version = version})
    {
        aol() = {};
        aol().folder = host.folder();
        aol().edition = edition;
        aol().version = version;
        if (connect)
            REQUIRE(connectAol());
        mail = AOL_OpenEMail();
        REQUIRE(mail);
        REQUIRE(waitFor([&] { return setAolText(mail.body, body); }));
    }
    ~MailBench()
    {
        Form::unloadAll();
        aolLink().disconnect();
        aol() = {};
    }
    std::wstring body() { return AolMailBody(mail.body).text().value_or(L"(absent)"); }
    /// Selects all of this text in the body.
    void select(const std::wstring& part)
    {
        std::wstring text = without(body(), L'\n');
        const int at = static_cast<int>(text.find(part));
        REQUIRE(AolMailBody(mail.body).select({at, at + static_cast<int>(part.size())}));
    }
    AolHost host;
    FormScope forms;
    MailWindow mail;
};

/// Answers the prompt for a password, and before it, with `whole`, the question whether to take
/// the whole mail by Yes.
///
/// The keys are posted to the prompt and not played as the keyboard's: AOL has just opened a
/// window, and the window manager may give it the focus between two of them. Nor does anything
/// here wait inside the question's loop, from which no prompt can come.
class Password {
public:
    Password(const wchar_t* caption, const wchar_t* password, bool whole = false,
             WORD key = VK_RETURN)
        : caption_(caption), password_(password), key_(key), yesDue_(whole), start_(GetTickCount())
    {
        tmrLook_.start(20, [this] { look(); });
    }
    bool done() const { return done_; }

private:
    void look()
    {
        if (GetTickCount() - start_ > 2 * drive::kPatience) {
            done_ = false;
            Form::unloadAll();
            return;
        }
        const HWND box = FindWindowW(nullptr, caption_);
        if (!box || !IsWindowVisible(box) || done_)
            return;
        if (const HWND edit = drive::child(box, L"Edit")) {
            CHECK((SendMessageW(edit, EM_GETPASSWORDCHAR, 0, 0) != 0)
                  == opt::EMail::MaskPassword.get());
            for (const wchar_t* c = password_; *c; ++c)
                SendMessageW(edit, WM_CHAR, *c, 0);
            CHECK(windowText(edit) == password_);
            done_ = PostMessageW(edit, WM_KEYDOWN, key_, 0);
        } else if (yesDue_) {
            yesDue_ = !PostMessageW(drive::child(box, L"Yes"), BM_CLICK, 0, 0);
        }
    }

    const wchar_t* caption_;
    const wchar_t* password_;
    WORD key_;
    bool yesDue_, done_ = false;
    DWORD start_;
    Timer tmrLook_;
};

std::wstring shownText()
{
    const HWND window = drive::window(kTextWindow);
    return window ? windowText(drive::child(window, RICHEDIT_CLASSW)) : L"(no window)";
}

/// Sends what is written, and opens it as a mail in which AOL has broken the digits. AOL's own
/// answer to a mail with "<BR>" is a line; one that is shown as it stands is written "&lt;BR>".
void sendAndReceive(MailBench& bench)
{
    // AOL may be busy for longer than the program itself would wait.
    REQUIRE(waitFor([&] { return setAolText(bench.mail.to, L"Rose3"); }));
    REQUIRE(waitFor([&] { return setAolText(bench.mail.subject, L"Secret"); }));
    const HWND window = bench.mail.window;
    REQUIRE(clickAolIcon(childOfClass(window, L"_AOL_Icon", 11)));
    REQUIRE(waitFor([&] { return !IsWindow(window); }));
    const auto sent = AolHost::listOf(bench.host.command(L"mailsent"));
    REQUIRE(sent.size() == 1);
    std::wstring body = AolHost::unescaped(sent[0]).substr(std::wstring(L"Rose3||Secret|").size());
    const std::size_t digits = body.find(L"<-- begin -->\r\n") + 15;
    REQUIRE(digits != 14);
    int which = 0;
    for (std::size_t at = body.find(L"\r\n<-- end -->"); at > digits + 37; at -= 37)
        body.insert(at - 20, which++ % 2 ? L"<BR>" : L"&lt;BR&gt;<BR>");
    body = replaceAll(replaceAll(body, L"\r", L""), L"\n", L"<BR>");
    bench.host.command(L"mail Joe Smith|Secret|" + body);
    REQUIRE(waitFor([&] { return bench.host.document(L"Secret") != nullptr; }));
}

} // namespace

TEST_CASE("a selection is encrypted, sent, read and decrypted in editions and versions")
{
    struct Row {
        int edition, version;
    };
    for (const Row& row : {Row{0, 3}, Row{0, 4}, Row{0, 5}, Row{0, 6}, Row{0, 7}, Row{1, 6},
                           Row{2, 4}, Row{3, 7}, Row{4, 5}, Row{5, 5}, Row{4, 7}, Row{5, 6}}) {
        CAPTURE(row.edition);
        CAPTURE(row.version);
        const std::wstring secret = L"Gr\u00FC\u00DFe aus K\u00F6ln";
        MailBench bench(row.edition, row.version, L"Dear Rose,\r\n" + secret + L"\r\nJoe");
        bench.select(secret);
        {
            const Password password(kEncryptBox, L" pw ");
            REQUIRE(EncryptMail());
            CHECK(password.done());
        }
        const std::wstring body = bench.body();
        CHECK(body.starts_with(decryptNotice()));
        CHECK(body.find(L"Dear Rose,\r\n</b></i></u><-- begin -->\r\n") != body.npos);
        CHECK(body.ends_with(L"\r\n<-- end -->\r\nJoe"));
        CHECK(body.find(secret) == body.npos);
        sendAndReceive(bench);
        const Password password(kDecryptBox, L"pw");
        REQUIRE(DecryptMail());
        CHECK(shownText() == secret);
    }
}

TEST_CASE("a whole mail with lines, umlauts and emoji comes back, boxes of either kind")
{
    for (const bool wide : {false, true}) {
        CAPTURE(wide);
        MailBench bench;
        postToAol(bench.mail.window, WM_CLOSE, 0, 0);
        REQUIRE(waitFor([&] { return !IsWindow(bench.mail.window); }));
        bench.host.command(wide ? L"edits w" : L"edits a");
        bench.mail = AOL_OpenEMail();
        REQUIRE(bench.mail);
        // An ANSI box takes what the code page lacks only from the clipboard.
        setClipboardText(nullptr, umlautsAndEmoji() + L"\r\nsecond line");
        sendToAol(bench.mail.body, WM_COMMAND, 20003, 0);
        opt::EMail::IncludeDecryptInstructions.set(false);
        {
            const Password password(kEncryptBox, L"pw", true);
            REQUIRE(EncryptMail());
        }
        CHECK(bench.body().starts_with(L"</b></i></u><-- begin -->\r\n"));
        sendAndReceive(bench);
        const Password password(kDecryptBox, L"pw");
        REQUIRE(DecryptMail());
        CHECK(shownText() == umlautsAndEmoji() + L"\r\nsecond line");
    }
}

TEST_CASE("a wrong password shows an empty window; none at all shows nothing")
{
    MailBench bench(0, 5, L"</b>" + EncryptMailText(L"secret", L"pw"));
    opt::EMail::MaskPassword.set(false);
    for (const WORD key : {VK_ESCAPE, VK_RETURN}) {
        const Password password(kDecryptBox, key == VK_RETURN ? L"  " : L"pw", false, key);
        CHECK_FALSE(DecryptMail());
        CHECK(password.done());
        CHECK_FALSE(Form::find<frmDecrypt>());
    }
    const Password password(kDecryptBox, L"PW");
    REQUIRE(DecryptMail());
    CHECK(shownText().empty());
}

TEST_CASE("the encryption is undone while nothing else has changed")
{
    MailBench bench(0, 5, L"Dear Rose,\r\nsecret\r\nJoe");
    bench.select(L"secret");
    const auto encrypt = [] {
        const Password password(kEncryptBox, L"pw");
        REQUIRE(EncryptMail());
    };
    encrypt();
    CHECK(canUndoEncryption());
    CHECK(UndoEncryption());
    CHECK(bench.body() == L"Dear Rose,\r\nsecret\r\nJoe");
    CHECK_FALSE(canUndoEncryption());

    bench.select(L"secret");
    encrypt();
    AolMailBody(bench.mail.body).select({0, 0});
    AolMailBody(bench.mail.body).replaceSelection(L"typed ");
    const std::wstring changed = bench.body();
    const Answer told(L"OK", kEncryptBox, L"cannot be undone");
    CHECK_FALSE(UndoEncryption());
    CHECK(told.came());
    CHECK(bench.body() == changed);
}

TEST_CASE("a reply is a mail, too; without a mail or an envelope the user is told")
{
    MailBench bench;
    const HWND first = bench.mail.window;
    postToAol(first, WM_CLOSE, 0, 0);
    REQUIRE(waitFor([&] { return !IsWindow(first); }));
    {
        const Answer told(L"OK", kEncryptBox, L"No E-Mail is being written!");
        CHECK_FALSE(EncryptMail());
    }
    {
        const Answer told(L"OK", kDecryptBox, L"No encrypted text has been found!");
        CHECK_FALSE(DecryptMail());
    }
    bench.host.command(L"mail Martha12|Party|Come to my party");
    const HWND read = bench.host.document(L"Party");
    REQUIRE(clickAolIcon(childOfText(read, L"Reply")));
    REQUIRE(waitFor([] { return composeWindow() != nullptr; }));
    bench.mail = mailFields(composeWindow());
    setAolText(bench.mail.body, L"I shall come");
    const Password password(kEncryptBox, L"pw", true);
    REQUIRE(EncryptMail());
    CHECK(bench.body().find(L"<-- begin -->") != std::wstring::npos);
}

TEST_CASE("what AOL copies by its own command leaves the user's clipboard as it was")
{
    // Not connected: everything goes from outside.
    MailBench bench(0, 5, L"one two three", false);
    AolMailBody body(bench.mail.body);
    REQUIRE_FALSE(aolLink().connected());
    REQUIRE(body.select({4, 7}));

    // Text, a format of another program's, and a bitmap.
    const UINT rich = RegisterClipboardFormatW(L"Rich Text Format");
    const char rtf[] = "{\\rtf1 kept}";
    const HWND owner =
        CreateWindowExW(0, L"Static", L"", 0, 0, 0, 0, 0, HWND_MESSAGE, nullptr, nullptr, nullptr);
    setClipboardText(owner, L"the user's");
    {
        const OpenedClipboard clipboard(owner);
        const HGLOBAL memory = GlobalAlloc(GMEM_MOVEABLE, sizeof rtf);
        memcpy(GlobalLock(memory), rtf, sizeof rtf);
        GlobalUnlock(memory);
        REQUIRE(SetClipboardData(rich, memory));
        REQUIRE(SetClipboardData(CF_BITMAP, CreateBitmap(3, 2, 1, 1, nullptr)));
    }
    CHECK(body.selectedText() == L"two");
    CHECK(clipboardText(owner) == L"the user's");
    {
        const OpenedClipboard clipboard(owner);
        const HANDLE memory = GetClipboardData(rich);
        REQUIRE(memory);
        CHECK(std::string(static_cast<const char*>(GlobalLock(memory))) == rtf);
        GlobalUnlock(memory);
        BITMAP bitmap = {};
        GetObjectW(GetClipboardData(CF_BITMAP), sizeof bitmap, &bitmap);
        CHECK(bitmap.bmWidth == 3);
        CHECK(bitmap.bmHeight == 2);
    }
    REQUIRE(body.select({0, 0}));
    CHECK(body.selectedText() == L"");
    CHECK(clipboardText(owner) == L"the user's");
    // Somebody else has copied something since: that stays.
    SavedClipboard saved(owner);
    setClipboardText(owner, L"copied meanwhile");
    CHECK_FALSE(saved.exchange(owner, bench.host.processId()).has_value());
    CHECK(clipboardText(owner) == L"copied meanwhile");
    DestroyWindow(owner);
}

TEST_CASE("encrypting through the code inside AOL never touches the clipboard")
{
    MailBench bench(0, 5, L"secret");
    const DWORD sequence = GetClipboardSequenceNumber();
    bench.select(L"secret");
    const Password password(kEncryptBox, L"pw");
    REQUIRE(EncryptMail());
    CHECK(GetClipboardSequenceNumber() == sequence);
}

TEST_CASE("the selection is faded; with none the user is told")
{
    MailBench bench(0, 5, L"plain colour");
    {
        const Answer told(L"OK", kMailBox, L"No text has been selected to fade!");
        AolMailBody(bench.mail.body).select({3, 3});
        CHECK_FALSE(FadeMailSelection());
        CHECK(told.came());
    }
    bench.select(L"colour");
    REQUIRE(FadeMailSelection());
    CHECK(bench.body().starts_with(L"plain <"));
    CHECK(bench.body().find(L"colour") == std::wstring::npos);
}

TEST_CASE("a mail is begun to whom the user names, and a sound that he picks goes with it")
{
    MailBench bench;
    {
        const Answer cancel(L"Cancel", kMailBox, L"To whom", L"Nobody");
        CHECK_FALSE(WriteMailTo());
    }
    {
        const Answer name(L"OK", kMailBox, L"To whom", L" Rose3 ");
        REQUIRE(WriteMailTo());
    }
    REQUIRE(waitFor([&] { return composeWindow() && composeWindow() != bench.mail.window; }));
    bench.mail = mailFields(composeWindow());
    CHECK(aolText(bench.mail.to) == L"Rose3");

    const TempDir folder;
    const std::wstring sound = folder.file(L"good bye.wav");
    replaceFile(sound, "a sound");
    {
        const Answer cancel(L"Cancel", L"Attach a Sound");
        CHECK_FALSE(AttachSound());
    }
    const Answer pick(L"Open", L"Attach a Sound", L"", sound);
    REQUIRE(AttachSound());
    CHECK(pick.came());
    REQUIRE(waitFor([&] { return setAolText(bench.mail.subject, L"A sound"); }));
    const HWND window = bench.mail.window;
    REQUIRE(clickAolIcon(childOfText(window, L"Send Now")));
    REQUIRE(waitFor([&] { return !IsWindow(window); }));
    const auto sent = AolHost::listOf(bench.host.command(L"mailsent"));
    REQUIRE(sent.size() == 1);
    CHECK(sent[0].ends_with(L"|" + sound));
}
