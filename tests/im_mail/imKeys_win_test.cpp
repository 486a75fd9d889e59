// The tabbed window as a user works in it: with the keyboard and the mouse, in AOL's own windows.
#include "chat/modEditorLists.h"
#include "core/modAOL.h"
#include "hook/AgentLink.h"
#include "settings/Options.h"
#include "support/answer_win.h"
#include "support/drive_win.h"
#include "support/imbench_win.h"

#include <doctest/doctest.h>

using namespace velora;
using namespace velora::test;

namespace {

HWND focusInAol(const IMBench& bench)
{
    GUITHREADINFO info = {};
    info.cbSize = sizeof info;
    const bool known =
        GetGUIThreadInfo(GetWindowThreadProcessId(bench.host.frame(), nullptr), &info);
    return known ? info.hwndFocus : nullptr;
}

/// The current IM is that member's, and what is typed now goes into its reply box.
bool atReplyOf(const IMBench& bench, const std::wstring& name)
{
    return waitFor([&] {
        const clsIMSession* const im = bench.session(name);
        return im && openIMs().SelectedIM() == im->id() && im->parts().reply
               && focusInAol(bench) == im->parts().reply
               && GetForegroundWindow() == GetAncestor(im->window(), GA_ROOT);
    });
}

std::wstring reply(const std::wstring& name)
{
    return aolLink().readText(IMBench::session(name)->parts().reply).value_or(L"?");
}

bool replyIs(const std::wstring& name, const std::wstring& text)
{
    return waitFor([&] { return reply(name) == text; });
}

void comeToFront()
{
    REQUIRE(drive::activate(frmTabIM::instance()->hwnd()));
}

} // namespace

TEST_CASE("in each edition and version an IM is answered by typing, by Send, closed and logged")
{
    struct Case {
        int edition, version;
    };
    for (const Case& c : {Case{0, 3},
                          {0, 4},
                          {0, 5},
                          {0, 6},
                          {0, 7},
                          {3, 5},
                          {3, 6},
                          {4, 3},
                          {4, 5},
                          {4, 6},
                          {5, 4},
                          {5, 5},
                          {5, 7}}) {
        CAPTURE(c.edition);
        CAPTURE(c.version);
        IMBench bench({.edition = c.edition, .version = c.version});
        const HWND im = bench.arrive(L"Rose3", L"hello there");
        REQUIRE(im);
        CHECK(bench.happened(L"new Rose3"));

        comeToFront();
        REQUIRE(atReplyOf(bench, L"Rose3"));
        drive::type(L"Hi Rose");
        CHECK(replyIs(L"Rose3", L"Hi Rose"));
        drive::key(VK_RETURN);
        CHECK(bench.sent(L"Rose3: Hi Rose"));
        CHECK(replyIs(L"Rose3", L""));
        drive::type(L"again");
        CHECK(replyIs(L"Rose3", L"again"));
        CHECK(drive::press(frmTabIM::instance()->hwnd(), L"Send"));
        CHECK(bench.sent(L"Rose3: again"));
        CHECK(bench.logged(L"Rose3", L"again"));

        REQUIRE(atReplyOf(bench, L"Rose3"));
        drive::key('W', {VK_CONTROL});
        CHECK(bench.happened(L"closed Rose3"));
        CHECK_FALSE(IsWindow(im));
        CHECK(openIMs().Count() == 0);
        const std::wstring log = bench.log(L"Rose3");
        CHECK(log.starts_with(kBeginImLabel));
        CHECK(IMBench::count(log, L"hello there") == 1);
        CHECK(IMBench::count(log, L"Hi Rose") == 1);
        CHECK(IMBench::count(log, L"again") == 1);
        CHECK(IMBench::count(log, L"\r\nEnd IM - ") == 1);
    }
}

TEST_CASE("keys go from IM to IM; the reply box of the chosen one has the focus")
{
    for (const int version : {5, 7}) {
        CAPTURE(version);
        IMBench bench({.version = version});
        for (const wchar_t* name : {L"Rose3", L"Joe Smith", L"Anna"})
            REQUIRE(bench.arrive(name, L"hello"));
        comeToFront();
        REQUIRE(atReplyOf(bench, L"Rose3"));
        struct Step {
            const char* what;
            WORD key;
            std::initializer_list<WORD> with;
            const wchar_t* then;
        };
        const Step steps[] = {
            {"Tab", VK_TAB, {}, L"Joe Smith"},
            {"Shift+Tab", VK_TAB, {VK_SHIFT}, L"Rose3"},
            {"Shift+Tab at the first", VK_TAB, {VK_SHIFT}, L"Anna"},
            {"Ctrl+Tab at the last", VK_TAB, {VK_CONTROL}, L"Rose3"},
            {"Ctrl+Tab", VK_TAB, {VK_CONTROL}, L"Joe Smith"},
            {"Ctrl+Shift+Tab", VK_TAB, {VK_CONTROL, VK_SHIFT}, L"Rose3"},
            {"Ctrl+3", '3', {VK_CONTROL}, L"Anna"},
            {"Ctrl+9, which is none", '9', {VK_CONTROL}, L"Anna"},
            {"Ctrl+1", '1', {VK_CONTROL}, L"Rose3"},
        };
        for (const Step& step : steps) {
            CAPTURE(step.what);
            drive::key(step.key, step.with);
            CHECK(atReplyOf(bench, step.then));
        }
        drive::type(L"for Rose 123");
        CHECK(replyIs(L"Rose3", L"for Rose 123"));
        drive::key('W', {VK_CONTROL});
        CHECK(bench.happened(L"closed Rose3"));
        CHECK(atReplyOf(bench, L"Joe Smith"));
        drive::type(L"for Joe");
        drive::key(VK_RETURN);
        CHECK(bench.sent(L"Joe Smith: for Joe"));
    }
}

TEST_CASE("with the options off, Tab and Enter are AOL's own")
{
    IMBench bench({.version = 6});
    REQUIRE(bench.arrive(L"Rose3", L"hello"));
    REQUIRE(bench.arrive(L"Anna", L"hello"));
    opt::IM::TabSwitches.set(false);
    opt::IM::EnterSends.set(false);
    comeToFront();
    REQUIRE(atReplyOf(bench, L"Rose3"));
    drive::type(L"one");
    drive::key(VK_RETURN);
    drive::type(L"two");
    CHECK(replyIs(L"Rose3", L"one\r\ntwo"));
    drive::key(VK_TAB);
    drive::type(L"x");
    CHECK(replyIs(L"Rose3", L"one\r\ntwo\tx"));
    CHECK(openIMs().SelectedNick() == L"Rose3");
    CHECK(AolHost::listOf(bench.host.command(L"imsent")).empty());

    const HWND copy = drive::child(frmTabIM::instance()->hwnd(), L"Copy");
    CHECK(IsWindowVisible(copy));
    opt::IM::TabExtraBtns.set(false); // as the options window does
    CHECK_FALSE(IsWindowVisible(copy));
}

TEST_CASE("an alias for the sender of the current IM")
{
    IMBench bench;
    REQUIRE(bench.arrive(L"Rose 3", L"hello"));
    for (const wchar_t* alias : {L"Rosie", L"Rosalind"}) {
        Answer answer(L"OK", L"Velora - Alias", L"an alias for Rose 3", alias);
        frmTabIM::instance()->AddAlias();
        CHECK(CheckForAlias(L"rose3") == alias);
    }
}
