#include "support/aolhost_win.h"

#include "base/text.h"

#include <doctest/doctest.h>

using namespace velora::test;

namespace {

void press(HWND icon)
{
    PostMessageW(icon, WM_LBUTTONDOWN, 0, 0);
    PostMessageW(icon, WM_LBUTTONUP, 0, 0);
}

void setText(HWND window, const wchar_t* text)
{
    SendMessageW(window, WM_SETTEXT, 0, reinterpret_cast<LPARAM>(text));
}

} // namespace

TEST_CASE("a mail is written in three fields and a body, and sent")
{
    AolHost aol;
    aol.command(L"writemail");
    const HWND mail = aol.document(L"Write Mail");
    REQUIRE(mail);
    setText(childOfClass(mail, L"_AOL_EDIT", 1), L"Rose3");
    setText(childOfClass(mail, L"_AOL_EDIT", 2), L"Joe");
    setText(childOfClass(mail, L"_AOL_EDIT", 3), L"Tulips");
    setText(childOfClass(mail, L"RICHCNTL"), L"They grow.");
    CHECK(childOfText(mail, L"Attach"));
    press(childOfText(mail, L"Send Now"));
    CHECK(waitFor([&] { return !IsWindow(mail); }));
    CHECK(AolHost::listOf(aol.command(L"mailsent"))
          == std::vector<std::wstring>{L"Rose3|Joe|Tulips|They grow."});
}

TEST_CASE("a read mail's Reply and Forward open a compose window for it")
{
    struct Words {
        int edition;
        const wchar_t *subject, *from, *reply, *forward, *prefix;
    };
    for (const Words& w :
         {Words{0, L"Subj:", L"From:", L"Reply", L"Forward", L"Fwd: Party"},
          Words{4, L"Betreff:", L"Von:", L"Antworten", L"Weiterleiten", L"Wtr: Party"}}) {
        CAPTURE(w.edition);
        AolHost::Options options;
        options.edition = w.edition;
        AolHost aol(options);
        aol.command(L"mail Martha12|Party|Come to <i>my</i> party|11/22/99 3:05:00 PM");
        const HWND read = aol.document(L"Party");
        REQUIRE(read);
        const std::wstring text = textOf(childOfClass(read, L"RICHCNTL"));
        CHECK(text.find(std::wstring(w.subject) + L"\tParty\r\n") == 0);
        CHECK(text.find(std::wstring(w.from) + L"\tMartha12\r\n") != std::wstring::npos);
        CHECK(text.find(L"Come to my party") != std::wstring::npos);
        press(childOfText(read, w.reply));
        CHECK(waitFor([&] { return aol.document(L"Re: Party") != nullptr; }));
        const HWND reply = aol.document(L"Re: Party");
        CHECK(textOf(childOfClass(reply, L"_AOL_EDIT", 1)) == L"Martha12");
        CHECK(textOf(childOfClass(reply, L"_AOL_EDIT", 3)) == L"Re: Party");
        press(childOfText(read, w.forward));
        CHECK(waitFor([&] { return aol.document(w.prefix) != nullptr; }));
    }
}

TEST_CASE("a board's message is answered in a window of its own")
{
    AolHost aol;
    aol.command(L"board Garden Talk|Rose3|Tulips|They grow");
    const HWND board = aol.document(L"Garden Talk");
    REQUIRE(board);
    press(childOfText(board, L"Reply"));
    CHECK(waitFor([&] { return aol.document(L"Re: Tulips") != nullptr; }));
    const HWND reply = aol.document(L"Re: Tulips");
    setText(childOfClass(reply, L"RICHCNTL"), L"Mine too");
    press(childOfText(reply, L"Send"));
    CHECK(waitFor([&] { return aol.status()[L"posted"] == L"1"; }));
    CHECK(AolHost::listOf(aol.command(L"posted"))
          == std::vector<std::wstring>{L"Re: Tulips|Mine too"});
}

TEST_CASE("a text box obeys the Edit menu's commands by itself")
{
    AolHost aol;
    aol.command(L"writemail");
    const HWND body = childOfClass(aol.document(L"Write Mail"), L"RICHCNTL");
    setText(body, L"all of it");
    SendMessageW(body, WM_COMMAND, 20005, 0);
    SendMessageW(body, WM_COMMAND, 20002, 0);
    SendMessageW(body, WM_COMMAND, 20001, 0);
    CHECK(textOf(body).empty());
    SendMessageW(body, WM_COMMAND, 20003, 0);
    CHECK(velora::toUtf8(textOf(body)) == "all of it");
}
