// The buttons on AOL's mail and board windows: where they lie, and what they do under the mouse.
#include "chat/frmMailBar.h"

#include "base/text.h"
#include "chat/ToolbarRoutes.h"
#include "chat/clsReplyHooks.h"
#include "chat/frmFadeInsert.h"
#include "core/modAOL.h"
#include "core/modCaptions.h"
#include "core/modFindChild.h"
#include "im_mail/modMailTools.h"
#include "settings/Options.h"
#include "support/answer_win.h"
#include "support/toolbar_win.h"
#include "ui/WinGeometry.h"

#include <doctest/doctest.h>

using namespace velora;
using namespace velora::test;

namespace {

constexpr wchar_t kEncryptBox[] = L"Velora - Encrypt E-Mail";
constexpr wchar_t kMailBox[] = L"Velora - Mail";

class BarBench : public ToolbarBench {
public:
    explicit BarBench(int edition = 0, int version = 5)
        : ToolbarBench({.edition = edition, .version = version})
    {
        opt::General::AutoCloseMsgBox.set(false);
        routeMail(toolbarRoutes());
        toolbarRoutes().quoteReply = [] { CHECK(frmToolbar::instance()->quoteReply()); };
        load();
        REQUIRE(drive::activate(host.frame()));
    }
    /// Opens a window of AOL's by a command.
    HWND open(const std::wstring& command)
    {
        host.command(command);
        HWND window = nullptr;
        REQUIRE(waitFor([&] { return (window = front()) != nullptr && buttons() != L""; }));
        return window;
    }
    static HWND front() { return GetWindow(AOLMDI(), GW_CHILD); }
    static HWND bar()
    {
        const auto* const form = Form::find<frmMailBar>();
        return form ? form->hwnd() : nullptr;
    }
    static bool shown() { return bar() && IsWindowVisible(bar()); }
    static bool hides()
    {
        return waitFor([] { return !shown(); });
    }
    /// Presses a button of the bar with the mouse, AOL in front as for a user.
    bool press(const wchar_t* button)
    {
        return drive::activate(host.frame()) && drive::press(bar(), button);
    }
    /// The names of the buttons that the bar shows, with a comma behind each.
    static std::wstring buttons()
    {
        std::wstring names;
        for (const HWND button : shown() ? childrenOf(bar()) : std::vector<HWND>())
            if (IsWindowVisible(button))
                names += textOf(button) + L",";
        return names;
    }
    /// Waits until the bar has these buttons and lies in the window's title bar, clear of its
    /// boxes.
    static bool liesOn(HWND window, const std::wstring& names)
    {
        const bool does = waitFor([&] {
            const Rect outer = windowRect(window), place = windowRect(bar());
            const int boxes = 3 * GetSystemMetrics(SM_CXSIZE);
            POINT content{0, 0};
            ClientToScreen(window, &content);
            return buttons() == names && place.top > outer.top && place.bottom <= content.y
                   && place.left > outer.left + 60 && place.right < outer.right - boxes
                   && place.right > outer.right - boxes - 30;
        });
        if (!does)
            MESSAGE("the bar has ", toUtf8(buttons()), "; in front are ",
                    toUtf8(windowCaption(GetForegroundWindow())), ", ",
                    toUtf8(windowCaption(front())));
        return does;
    }
    static std::wstring body(HWND mail) { return textOf(GetMailReplyWnd(mail)); }
};

void place(HWND window, int x, int y, int width, int height)
{
    SetWindowPos(window, nullptr, x, y, width, height,
                 SWP_NOZORDER | SWP_NOACTIVATE | SWP_ASYNCWINDOWPOS);
}

const std::wstring kRead = L"Reply with Quote,Decrypt,";
const std::wstring kWrite = L"Fade and Insert,Encrypt,Add a Line about Velora,Mail Tools,";

} // namespace

TEST_CASE("a mail that is read is answered with its text quoted; the answer has its own buttons")
{
    const std::pair<int, int> clients[] = {{0, 3}, {4, 5}, {5, 6}, {0, 7}};
    for (const auto& [edition, version] : clients) {
        CAPTURE(edition);
        CAPTURE(version);
        BarBench bench(edition, version);
        opt::Templates::MailQuoteEnabled.set(false);
        const HWND mail = bench.open(L"mail Joe Smith|Lunch|First line|1/2/2003 4:05:06 PM");
        const clsReplyHooks& replies = frmToolbar::instance()->replies();
        CHECK(textOf(replies.GetReplyHelpIcon(mail)) == replyCaption(edition));
        CHECK(textOf(replies.GetFwdHelpIcon(mail)) == forwardCaption(edition));
        CHECK_FALSE(replies.IsStandaloneMB(mail));
        REQUIRE(bench.liesOn(mail, kRead));
        REQUIRE(bench.press(L"Reply with Quote"));
        REQUIRE(waitFor([&] { return windowCaption(bench.front()) == L"Re: Lunch"; }));
        const HWND reply = bench.front();
        CHECK(waitFor([&] { return bench.body(reply).find(L"First line") != std::wstring::npos; }));
        CHECK(bench.liesOn(reply, kWrite));
        CHECK(GetForegroundWindow() == bench.host.frame());
    }
}

TEST_CASE("a board's message has its button, and so has the answer to it")
{
    for (const int edition : {0, 4}) {
        CAPTURE(edition);
        BarBench bench(edition, 5);
        const HWND post = bench.open(L"board Pets|Joe Smith|Cats|They sleep all day.");
        CHECK(frmToolbar::instance()->replies().IsStandaloneMB(post));
        REQUIRE(bench.liesOn(post, L"Reply with Quote,"));
        REQUIRE(bench.press(L"Reply with Quote"));
        REQUIRE(waitFor([&] { return windowCaption(bench.front()) == L"Re: Cats"; }));
        CHECK(bench.liesOn(bench.front(), L"Fade and Insert,"));
    }
}

TEST_CASE("a mail that is written is given colours, a line about Velora and a password")
{
    BarBench bench;
    const HWND mail = bench.open(L"writemail");
    REQUIRE(bench.liesOn(mail, kWrite));
    const HWND text = mailFields(mail).body;
    REQUIRE(setAolText(text, L"Dear Rose"));
    REQUIRE(aolLink().select(text, 4, 4));

    REQUIRE(bench.press(L"Add a Line about Velora"));
    const std::wstring advertised = L"Dear Rose" + mailAdvertisement();
    REQUIRE(waitFor([&] { return textOf(text) == advertised; }));
    {
        const Answer told(L"OK", kMailBox, L"has the line about Velora already");
        REQUIRE(bench.press(L"Add a Line about Velora"));
        CHECK(waitFor([&] { return told.came() && !FindWindowW(nullptr, kMailBox); }));
        CHECK(textOf(text) == advertised);
    }
    opt::EMail::AdInMail.set(false);
    CHECK(bench.liesOn(mail, L"Fade and Insert,Encrypt,Mail Tools,"));

    // Where the cursor was before the line came.
    REQUIRE(bench.press(L"Fade and Insert"));
    REQUIRE(waitFor([] { return Form::find<frmFadeInsert>() != nullptr; }));
    const HWND fade = Form::find<frmFadeInsert>()->hwnd();
    REQUIRE(drive::activate(fade));
    drive::type(L"sweet");
    REQUIRE(drive::press(fade, L"Insert"));
    REQUIRE(waitFor([&] { return textOf(text).starts_with(L"Dear<"); }));
    PostMessageW(fade, WM_CLOSE, 0, 0);
    REQUIRE(drive::gone(fade));

    const Answer whole(L"Yes", kEncryptBox, L"entire E-Mail");
    const Answer password(L"OK", kEncryptBox, L"password", L"pw");
    REQUIRE(bench.press(L"Encrypt"));
    CHECK(drive::until([&] { return textOf(text).find(L"<-- begin -->") != std::wstring::npos; },
                       3 * drive::kPatience));
    CHECK(password.came());
}

TEST_CASE("the bar follows its window and is away when that is not in sight")
{
    BarBench bench;
    place(bench.host.frame(), 20, 20, 1000, 740);
    const HWND mail = bench.open(L"mail Joe Smith|Lunch|First line");
    REQUIRE(bench.liesOn(mail, kRead));
    // Everything is told: the timer is there for what is not.
    frmToolbar::instance()->DisableSubclass();
    for (const Point to : {Point{200, 150}, Point{30, 40}}) {
        const Rect before = windowRect(bench.bar());
        place(mail, to.x, to.y, 500, 300);
        CHECK(waitFor([&] { return windowRect(bench.bar()) != before; }));
        CHECK(bench.liesOn(mail, kRead));
    }
    place(mail, 30, 40, 180, 300);
    CHECK(bench.hides());
    place(mail, 30, 40, 500, 300);
    CHECK(bench.liesOn(mail, kRead));

    // Maximised it has no title bar: the line of AOL's menus is left, beside our panel.
    ShowWindowAsync(mail, SW_MAXIMIZE);
    CHECK(waitFor([&] {
        const Rect panel = windowRect(frmToolbar::instance()->hwnd());
        const Rect place = windowRect(bench.bar());
        return bench.shown() && place.right < panel.left && place.right > panel.left - 20
               && intersection(place, windowRect(AOLMDI())).empty();
    }));
    ShowWindowAsync(mail, SW_RESTORE);
    CHECK(bench.liesOn(mail, kRead));

    const struct {
        std::string what;
        std::function<void()> away, back;
    } cases[] = {
        {"minimised", [&] { ShowWindowAsync(mail, SW_MINIMIZE); },
         [&] { bench.host.command(L"activate Lunch"); }},
        {"behind a room", [&] { bench.host.enterRoom(); },
         [&] { bench.host.command(L"activate Lunch"); }},
        {"a box of AOL's", [&] { bench.host.command(L"about"); },
         [&] { clickAolIcon(childOfText(bench.host.dialog(), L"OK")); }},
        {"switched off", [] { opt::Toolbar::MailBar.set(false); },
         [] { opt::Toolbar::MailBar.set(true); }},
        {"closed", [&] { bench.host.command(L"close Lunch"); },
         [&] { bench.host.command(L"mail Joe Smith|Lunch|Second line"); }},
        {"AOL minimised", [&] { ShowWindowAsync(bench.host.frame(), SW_MINIMIZE); }, {}},
    };
    for (const auto& c : cases) {
        CAPTURE(c.what);
        c.away();
        CHECK(bench.hides());
        if (c.back) {
            c.back();
            CHECK(bench.liesOn(bench.host.document(L"Lunch"), kRead));
        }
    }
}

TEST_CASE("the bar goes when AOL is let go of, and when it ends")
{
    for (const bool ends : {false, true}) {
        CAPTURE(ends);
        BarBench bench;
        bench.open(L"writemail");
        const HWND bar = bench.bar();
        if (ends)
            bench.host.kill();
        else
            frmToolbar::instance()->UnhookSubclasses();
        CHECK(waitFor([&] { return !IsWindow(bar); }));
    }
}
