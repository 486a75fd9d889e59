// Mails with the real velora.exe beside AOL: the lock on the panel encrypts, the mail menu decrypts
// and answers.
#include "support/aolhost_win.h"
#include "support/drive_win.h"
#include "support/install_win.h"

#include <doctest/doctest.h>

#include <richedit.h>

using namespace velora;
using namespace velora::test;

namespace {

/// Chooses an item of the panel's mail menu by its mnemonic.
void chooseFromMailMenu(HWND panel, wchar_t mnemonic)
{
    REQUIRE(drive::press(panel, L"Mail"));
    HWND menu = nullptr;
    REQUIRE(drive::until([&] {
        menu = FindWindowW(L"#32768", nullptr);
        return menu && IsWindowVisible(menu);
    }));
    PostMessageW(menu, WM_KEYDOWN, static_cast<WPARAM>(towupper(mnemonic)), 0);
    PostMessageW(menu, WM_CHAR, mnemonic, 0);
}

/// Answers the prompt for a password, or another line.
void enter(const wchar_t* caption, const wchar_t* password)
{
    HWND edit = nullptr;
    REQUIRE(drive::until([&] {
        const HWND box = FindWindowW(nullptr, caption);
        edit = box ? drive::child(box, L"Edit") : nullptr;
        return edit && IsWindowVisible(edit);
    }));
    SendMessageW(edit, WM_SETTEXT, 0, reinterpret_cast<LPARAM>(password));
    PostMessageW(edit, WM_KEYDOWN, VK_RETURN, 0);
}

} // namespace

TEST_CASE("a mail is encrypted by the panel's lock, and read by the mail menu")
{
    const Installation installed;
    Installation::putSetting(L"General", L"AutoCloseMsgBox", false);
    AolHost host;
    Process velora = installed.start();
    const HWND panel = drive::window(L"Velora Toolbar", 30000);
    REQUIRE(panel);

    // A mail to somebody, begun from the menu.
    chooseFromMailMenu(panel, L'w');
    enter(L"Velora - Mail", L"Rose3");
    REQUIRE(drive::until([&] { return host.document(L"Write Mail") != nullptr; }));
    const HWND mail = host.document(L"Write Mail");
    HWND body = nullptr;
    REQUIRE(drive::until([&] { return (body = childOfClass(mail, L"RICHCNTL")) != nullptr; }));
    const HWND to = childOfClass(mail, L"_AOL_Edit", 1);
    REQUIRE(drive::until([&] { return textOf(to) == L"Rose3"; }));
    SendMessageW(body, WM_SETTEXT, 0, reinterpret_cast<LPARAM>(L"meet me at five"));
    SendMessageW(childOfClass(mail, L"_AOL_Edit", 3), WM_SETTEXT, 0,
                 reinterpret_cast<LPARAM>(L"Today"));

    REQUIRE(drive::press(panel, L"Encrypt"));
    const HWND question = drive::window(L"Velora - Encrypt E-Mail");
    REQUIRE(question);
    REQUIRE(drive::press(question, L"Yes"));
    enter(L"Velora - Encrypt E-Mail", L"pw");
    // The notice is the last thing that it puts in.
    REQUIRE(drive::until([&] {
        const std::wstring text = textOf(body);
        return text.starts_with(L"<HTML>") && text.ends_with(L"<-- end -->");
    }));
    const std::wstring secret = textOf(body);
    CHECK(secret.find(L"five") == std::wstring::npos);

    // It comes back as a mail that somebody else has sent.
    const std::size_t begin = secret.find(L"<-- begin -->");
    const std::wstring digits = secret.substr(begin + 15, secret.rfind(L"\r\n") - begin - 15);
    host.command(L"mail Joe Smith|Today's|Hello<BR>&lt;-- begin --><BR>" + digits
                 + L"<BR>&lt;-- end -->|1/2/2003 4:05:06 PM");
    REQUIRE(drive::until([&] { return host.document(L"Today's") != nullptr; }));
    chooseFromMailMenu(panel, L'd');
    enter(L"Velora - Decrypt E-Mail", L"pw");
    const HWND shown = drive::window(L"Velora - Decrypted E-Mail");
    REQUIRE(shown);
    CHECK(drive::until(
        [&] { return textOf(drive::child(shown, RICHEDIT_CLASSW)) == L"meet me at five"; }));
    PostMessageW(shown, WM_CLOSE, 0, 0);

    // And it is answered with its text quoted.
    chooseFromMailMenu(panel, L'q');
    REQUIRE(drive::until([&] { return host.document(L"Re: Today's") != nullptr; }));
    CHECK(drive::until([&] {
        return textOf(childOfClass(host.document(L"Re: Today's"), L"RICHCNTL"))
                   .find(L"Hello Joe Smith")
               != std::wstring::npos;
    }));
    host.command(L"exit");
    CHECK(velora.ended());
}
