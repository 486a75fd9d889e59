#include "im_mail/frmDecrypt.h"

#include "base/files.h"
#include "base/text.h"
#include "core/modClipboard.h"
#include "im_mail/modPrint.h"
#include "support/answer_win.h"
#include "support/drive_win.h"
#include "support/form_scope_win.h"
#include "support/tempdir.h"

#include <doctest/doctest.h>

#include <richedit.h>

using namespace velora;
using namespace velora::test;

namespace {

struct Shown : FormScope {
    explicit Shown(const std::wstring& text)
    {
        window = frmDecrypt::DisplayMessage(text).hwnd();
        box = drive::child(window, RICHEDIT_CLASSW);
        REQUIRE(box);
    }
    std::wstring selected() const
    {
        CHARRANGE range = {};
        SendMessageW(box, EM_EXGETSEL, 0, reinterpret_cast<LPARAM>(&range));
        return without(windowText(box), L'\r')
            .substr(static_cast<std::size_t>(range.cpMin),
                    static_cast<std::size_t>(range.cpMax - range.cpMin));
    }
    HWND window = nullptr, box = nullptr;
};

} // namespace

TEST_CASE("a decrypted text can be read, not changed, copied and searched; Esc closes it")
{
    Shown shown(L"one\r\ntwo Three\r\nthree");
    CHECK(windowText(shown.box) == L"one\r\ntwo Three\r\nthree");
    REQUIRE(drive::activate(shown.window));
    drive::type(L"x");
    CHECK(windowText(shown.box) == L"one\r\ntwo Three\r\nthree");

    REQUIRE(drive::press(shown.window, L"Copy"));
    CHECK(drive::until([&] { return clipboardText(shown.window) == windowText(shown.box); }));

    drive::key('F', {VK_CONTROL});
    drive::type(L"three");
    drive::key(VK_F3);
    CHECK(drive::until([&] { return shown.selected() == L"Three"; }));
    drive::key(VK_F3);
    CHECK(drive::until([&] { return shown.selected() == L"three"; }));
    drive::key(VK_F3); // around the end
    CHECK(drive::until([&] { return shown.selected() == L"Three"; }));

    drive::key(VK_ESCAPE);
    CHECK(drive::gone(shown.window));
}

TEST_CASE("an empty text offers nothing but to close the window")
{
    Shown shown(L"");
    for (const wchar_t* name : {L"Copy", L"Save As...", L"Print...", L"Find Next"})
        CHECK_FALSE(IsWindowEnabled(drive::child(shown.window, name)));
    REQUIRE(drive::press(shown.window, L"Exit"));
    CHECK(drive::gone(shown.window));
}

TEST_CASE("the text is saved where the user says, and a place that refuses it is told of")
{
    const std::wstring text = fromUtf8("Gr\xC3\xBC\xC3\x9F"
                                       "e \xF0\x9F\x98\x80\r\nsecond line");
    Shown shown(text);
    const TempDir folder;
    const wchar_t dialog[] = L"Save the Decrypted E-Mail";
    const auto save = [&] {
        SendMessageW(drive::child(shown.window, L"Save As..."), BM_CLICK, 0, 0);
    };
    {
        const Answer cancel(L"Cancel", dialog, L"", folder.file(L"not.txt"));
        save();
        CHECK(cancel.came());
    }
    CHECK_FALSE(fileExists(folder.file(L"not.txt")));
    {
        const Answer answer(L"Save", dialog, L"", folder.file(L"secret"));
        save();
        CHECK(answer.came());
    }
    CHECK(decodeFileText(readFile(folder.file(L"secret.txt")).value_or("")) == text);
    {
        const HANDLE held = CreateFileW(folder.file(L"held.txt").c_str(), GENERIC_WRITE,
                                        FILE_SHARE_READ, nullptr, CREATE_ALWAYS, 0, nullptr);
        const Answer answer(L"Save", dialog, L"", folder.file(L"held.txt"));
        const Answer replace(L"Yes", dialog, L"exists");
        const Answer told(L"OK", L"Velora - Decrypted E-Mail", L"could not be saved");
        save();
        CHECK(told.came());
        CloseHandle(held);
    }
    CHECK(windowText(shown.box) == text);
}

TEST_CASE("without a printer the user is told so")
{
    wchar_t device[8] = L"";
    if (GetProfileStringW(L"windows", L"device", L"", device, 8) != 0) {
        MESSAGE("this system has a printer: the case is not for it");
        return;
    }
    Shown shown(L"secret");
    // Wine says it by itself, asked not to, and calls it a cancelling.
    const Answer wines(L"OK", L"Print", L"need to install a printer");
    const Answer told(L"OK", L"Velora - Decrypted E-Mail", L"could not be printed");
    SendMessageW(drive::child(shown.window, L"Print..."), BM_CLICK, 0, 0);
    CHECK(told.came() != wines.came());
}

TEST_CASE("every line of a long text is printed, over several pages")
{
    std::wstring text;
    for (int i = 0; i < 400; ++i)
        text += L"line " + std::to_wstring(i) + L"\r\n";
    text += std::wstring(3000, L'w'); // one word, longer than a line
    const HDC screen = GetDC(nullptr);
    const HDC dc = CreateCompatibleDC(screen);
    ReleaseDC(nullptr, screen);
    int starts = 0, ends = 0;
    const int pages = printPages(text, dc, [&](bool start) {
        ++(start ? starts : ends);
        return true;
    });
    CHECK(pages > 1);
    CHECK(pages < 100);
    CHECK(starts == pages);
    CHECK(ends == pages);
    // A printer that refuses its first page ends it.
    CHECK(printPages(text, dc, [](bool) { return false; }) == 0);
    CHECK(printPages(L"short", dc, [](bool) { return true; }) == 1);
    CHECK(printPages(L"", dc, [](bool) { return true; }) == 0);
    DeleteDC(dc);
}
