#include "im_mail/frmDecrypt.h"

#include "base/files.h"
#include "base/text.h"
#include "core/modClipboard.h"
#include "im_mail/modPrint.h"
#include "settings/Options.h"
#include "support/drive_win.h"
#include "support/memory_store.h"
#include "ui/MessageLoop.h"

#include <doctest/doctest.h>

#include <richedit.h>

using namespace velora;

namespace {

struct Shown {
    explicit Shown(const std::wstring& text)
        : former(setSettingsStore(std::make_unique<MemoryStore>()))
    {
        LoadSettings();
        window = frmDecrypt::DisplayMessage(text).hwnd();
        box = drive::child(window, RICHEDIT_CLASSW);
        REQUIRE(box);
    }
    ~Shown()
    {
        Form::unloadAll();
        doEvents();
        setSettingsStore(std::move(former));
        LoadSettings();
    }
    std::wstring selected() const
    {
        CHARRANGE range = {};
        SendMessageW(box, EM_EXGETSEL, 0, reinterpret_cast<LPARAM>(&range));
        return without(windowText(box), L'\r')
            .substr(static_cast<std::size_t>(range.cpMin),
                    static_cast<std::size_t>(range.cpMax - range.cpMin));
    }
    std::unique_ptr<SettingsStore> former;
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
