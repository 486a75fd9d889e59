#include "chat/clsReplyHooks.h"

#include "base/text.h"
#include "chat/modTemplates.h"
#include "core/modAOL.h"
#include "core/modCaptions.h"
#include "core/modFindChild.h"
#include "settings/Options.h"
#include "support/drive_win.h"
#include "support/toolbar_win.h"

#include <algorithm>
#include <doctest/doctest.h>
#include <richedit.h>

using namespace velora;
using namespace velora::test;

namespace {

constexpr wchar_t kMailTail[] = L"|1/2/2003 4:05:06 PM";
/// What a reply to "First line" of Joe Smith begins and ends with, by template 1.
constexpr wchar_t kSeparator[] =
    L"<HTML>Hello Joe Smith,<BR><BR><FONT COLOR=\"#0000ff\">In reference to your comment:"
    L"</FONT></HTML><br>";
constexpr wchar_t kEnd[] = L"<br></b></i></u><br><br>";

std::wstring quoted(const std::wstring& text)
{
    return std::wstring(kSeparator) + L"<BLOCKQUOTE>" + text + L"</BLOCKQUOTE>" + kEnd;
}

/// A box gives its line ends as CR LF, whatever it was given.
std::wstring plainEnds(std::wstring text)
{
    std::erase(text, L'\r');
    return text;
}

class ReplyBench : public ToolbarBench {
public:
    explicit ReplyBench(int edition = 0, int version = 5)
        : ToolbarBench({.edition = edition, .version = version})
    {
        load();
    }

    /// Opens a window by a command and waits until its buttons are hooked.
    HWND read(const std::wstring& command)
    {
        const std::wstring answer = host.command(command);
        const HWND window =
            reinterpret_cast<HWND>(static_cast<UINT_PTR>(std::stoul(answer, nullptr, 16)));
        REQUIRE(waitFor([&] { return frmToolbar::instance()->replies().hooked(window); }));
        return window;
    }
    /// The toolbar has been told of all windows: AOL tells a room's opening after theirs.
    void settle()
    {
        enterRoom(L"Room " + std::to_wstring(++rooms_));
        host.command(L"leave");
        REQUIRE(waitFor([] { return !frmToolbar::instance()->scannedRoom(); }));
    }
    HWND icon(HWND window, const std::wstring& caption)
    {
        const HWND found = childOfText(window, caption);
        REQUIRE(found != nullptr);
        return found;
    }
    /// Brings a document of AOL's to the front, as a click on it would.
    void toFront(HWND window)
    {
        REQUIRE(drive::activate(host.frame()));
        postToAol(AOLMDI(), WM_MDIACTIVATE, reinterpret_cast<WPARAM>(window), 0);
        REQUIRE(waitFor([&] { return GetWindow(AOLMDI(), GW_CHILD) == window; }));
    }
    void click(HWND window, const std::wstring& caption)
    {
        toFront(window);
        REQUIRE(drive::click(icon(window, caption)));
    }
    void pressKey(HWND window, const std::wstring& caption, WORD key)
    {
        toFront(window);
        REQUIRE(aolLink().setFocus(icon(window, caption)));
        drive::key(key);
    }
    HWND replyWindow(const std::wstring& caption)
    {
        HWND found = nullptr;
        CHECK(waitFor([&] { return (found = document(caption)) != nullptr; }));
        return found;
    }
    HWND document(const std::wstring& caption)
    {
        for (const HWND child : childrenOf(AOLMDI()))
            if (windowCaption(child) == caption)
                return child;
        return nullptr;
    }
    std::wstring body(HWND reply) { return plainEnds(textOf(GetMailReplyWnd(reply))); }
    bool becomes(HWND reply, const std::wstring& text)
    {
        const bool same = waitFor([&] { return body(reply) == plainEnds(text); }, 8000);
        if (!same)
            MESSAGE("the reply holds: ", toUtf8(body(reply)));
        return same;
    }

private:
    int rooms_ = 0;
};

std::wstring mailFrom(const std::wstring& from, const std::wstring& body)
{
    return L"mail " + from + L"|Lunch|" + body + kMailTail;
}

} // namespace

TEST_CASE("a reply to a mail opens with its separator and quote, in every edition and version")
{
    const std::pair<int, int> clients[] = {{0, 3}, {0, 4}, {0, 5}, {0, 6}, {0, 7},
                                           {4, 5}, {4, 7}, {5, 4}, {5, 6}};
    int round = 0;
    for (const auto& [edition, version] : clients) {
        CAPTURE(edition);
        CAPTURE(version);
        ReplyBench bench(edition, version);
        const HWND mail = bench.read(mailFrom(L"Joe Smith", L"First line\\n1 < 2 & 3"));
        const std::wstring caption = replyCaption(edition);
        // The mouse, the space key, and Enter where AOL takes it, in turn.
        switch (round++ % 3) {
        case 0: bench.click(mail, caption); break;
        case 1: bench.pressKey(mail, caption, VK_SPACE); break;
        default: bench.pressKey(mail, caption, version >= 6 ? VK_RETURN : VK_SPACE); break;
        }
        const HWND reply = bench.replyWindow(L"Re: Lunch");
        CHECK(bench.becomes(reply, quoted(L"First line\n1 &lt; 2 &amp; 3")));
    }
}

TEST_CASE("the quote goes into each reply window once")
{
    ReplyBench bench;
    const HWND mail = bench.read(mailFrom(L"Joe Smith", L"First line"));
    bench.click(mail, L"Reply");
    const HWND first = bench.replyWindow(L"Re: Lunch");
    REQUIRE(bench.becomes(first, quoted(L"First line")));
    // What the user writes stays, whatever happens to the window.
    SetWindowTextW(first, L"Re: Lunch (draft)");
    bench.click(mail, L"Reply");
    const HWND second = bench.replyWindow(L"Re: Lunch");
    CHECK(bench.becomes(second, quoted(L"First line")));
    SetWindowTextW(first, L"Re: Lunch again");
    bench.settle();
    CHECK(bench.body(first) == quoted(L"First line"));
    CHECK(bench.body(second) == quoted(L"First line"));
}

TEST_CASE("the mail menu's quoted reply works while quoting is off, in the front mail, once")
{
    ReplyBench bench;
    opt::Templates::MailQuoteEnabled.set(false);
    opt::Templates::MailIncludeReply.set(false);
    frmToolbar* const toolbar = frmToolbar::instance();
    CHECK_FALSE(toolbar->quoteReply());
    bench.read(L"mail Joe Smith|Dinner|Other text" + std::wstring(kMailTail));
    const HWND mail = bench.read(mailFrom(L"Joe Smith", L"First line"));
    REQUIRE(toolbar->quoteReply());
    CHECK(bench.becomes(bench.replyWindow(L"Re: Lunch"), quoted(L"First line")));
    // AOL's own button has no quote still.
    SetWindowTextW(bench.replyWindow(L"Re: Lunch"), L"first");
    bench.click(mail, L"Reply");
    const HWND second = bench.replyWindow(L"Re: Lunch");
    bench.settle();
    CHECK(bench.body(second).find(L"Hello Joe Smith") == std::wstring::npos);
}

TEST_CASE("a selection is quoted alone, and AOL's own quotation of it goes")
{
    ReplyBench bench;
    const HWND mail = bench.read(mailFrom(L"Joe Smith", L"one two three"));
    const HWND text = childOfClass(mail, L"RICHCNTL");
    const std::wstring all = plainEnds(textOf(text));
    const int from = static_cast<int>(all.find(L"two"));
    REQUIRE(aolLink().select(text, from, from + 3));
    bench.click(mail, L"Reply");
    CHECK(bench.becomes(bench.replyWindow(L"Re: Lunch"), quoted(L"two")));
}

TEST_CASE("the cursor behind a long text is brought into sight")
{
    ReplyBench bench;
    std::wstring lines;
    for (int i = 0; i < 80; ++i)
        lines += L"line\\n";
    const HWND mail = bench.read(mailFrom(L"Joe Smith", lines + L"end"));
    bench.click(mail, L"Forward");
    const HWND forward = bench.replyWindow(L"Fwd: Lunch");
    HWND box = nullptr;
    const auto firstLine = [&] {
        return sendToAol(box, EM_GETFIRSTVISIBLELINE, 0, 0).value_or(-1);
    };
    REQUIRE(waitFor([&] { return (box = GetMailReplyWnd(forward)) && firstLine() > 40; }));
    sendToAol(box, WM_VSCROLL, SB_TOP, 0);
    REQUIRE(firstLine() == 0);
    ScrollToCursor(box);
    CHECK(firstLine() > 40);
}

TEST_CASE("forwards are quoted too, without AOL's copy beside it")
{
    for (const int edition : {0, 4, 5}) {
        CAPTURE(edition);
        ReplyBench bench(edition, 6);
        const HWND mail = bench.read(mailFrom(L"Joe Smith", L"First line\\nsecond"));
        bench.click(mail, forwardCaption(edition));
        const HWND forward = bench.replyWindow(edition == 4 ? L"Wtr: Lunch" : L"Fwd: Lunch");
        CHECK(bench.becomes(forward, quoted(L"First line\nsecond")));
    }
}

TEST_CASE("a board's message is answered with a quote, by the options of boards")
{
    for (const int edition : {0, 4, 5}) {
        CAPTURE(edition);
        ReplyBench bench(edition, 5);
        const std::wstring post =
            L"board Pets|Joe Smith|Cats|They sleep all day." + std::wstring(kMailTail);
        const HWND board = bench.read(post);
        opt::Templates::MailQuoteEnabled.set(false);
        bench.pressKey(board, replyCaption(edition), VK_SPACE);
        const HWND reply = bench.replyWindow(L"Re: Cats");
        CHECK(bench.becomes(reply, quoted(L"They sleep all day.")));
        aolLink().setText(reply, L"Re: done");
        opt::Templates::BoardUseQuoteStyle.set(false);
        opt::Templates::BoardIncludeReply.set(false);
        bench.click(board, replyCaption(edition));
        CHECK(bench.becomes(bench.replyWindow(L"Re: Cats"), std::wstring(kSeparator) + kEnd));
    }
}

TEST_CASE("with quoting off AOL's reply is left alone")
{
    ReplyBench bench;
    opt::Templates::MailQuoteEnabled.set(false);
    const HWND mail = bench.read(mailFrom(L"Joe Smith", L"First line"));
    bench.click(mail, L"Reply");
    const HWND reply = bench.replyWindow(L"Re: Lunch");
    bench.settle();
    CHECK(bench.body(reply).empty());
    bench.click(mail, L"Forward");
    const HWND forward = bench.replyWindow(L"Fwd: Lunch");
    bench.settle();
    CHECK(bench.body(forward) == L"First line");
}

TEST_CASE("a reply window that is built late is filled then")
{
    ReplyBench bench;
    const HWND mail = bench.read(mailFrom(L"Joe Smith", L"First line"));
    bench.host.command(L"late 600000");
    bench.click(mail, L"Reply");
    const HWND reply = bench.replyWindow(L"Re: Lunch");
    CHECK(GetMailReplyWnd(reply) == nullptr);
    SUBCASE("") {}
    SUBCASE("the read window is closed meanwhile")
    {
        bench.host.command(L"close Lunch");
        REQUIRE(waitFor([&] { return !IsWindow(mail) || !IsWindow(reply); }));
        REQUIRE(IsWindow(reply));
    }
    bench.host.command(L"build");
    CHECK(bench.becomes(reply, quoted(L"First line")));
}

TEST_CASE("what the user has aliased is called so, and a drawn-off press asks for nothing")
{
    ReplyBench bench;
    writeSetting(L"ChatAlias", L"joesmith", L"Joey");
    const HWND mail = bench.read(mailFrom(L"Joe Smith", L"First line"));
    // Pressed on Reply, let go far beside it.
    const HWND reply = bench.icon(mail, L"Reply");
    PostMessageW(reply, WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(5, 5));
    PostMessageW(reply, WM_LBUTTONUP, 0, MAKELPARAM(5, 2000));
    bench.settle();
    CHECK(bench.document(L"Re: Lunch") == nullptr);
    bench.click(mail, L"Reply");
    CHECK(waitFor([&] {
        const HWND window = bench.document(L"Re: Lunch");
        return window && bench.body(window).find(L"Hello Joey,") != std::wstring::npos;
    }));
}

TEST_CASE("more read windows than hooks: the ones in front are served")
{
    ReplyBench bench;
    std::vector<HWND> mails;
    for (int i = 0; i < 7; ++i)
        mails.push_back(bench.read(L"mail Joe Smith|Mail " + std::to_wstring(i) + L"|text "
                                   + std::to_wstring(i) + kMailTail));
    bench.click(mails.back(), L"Reply");
    CHECK(bench.becomes(bench.replyWindow(L"Re: Mail 6"), quoted(L"text 6")));
    CHECK_FALSE(frmToolbar::instance()->replies().hooked(mails[0]));
    bench.toFront(mails[0]);
    CHECK(waitFor([&] { return frmToolbar::instance()->replies().hooked(mails[0]); }));
    bench.click(mails[0], L"Reply");
    CHECK(bench.becomes(bench.replyWindow(L"Re: Mail 0"), quoted(L"text 0")));
}
