#include "im_mail/modIM_Manager.h"

#include "base/clock.h"
#include "base/clsFileOp.h"
#include "base/text.h"
#include "core/modAOL.h"
#include "hook/AgentLink.h"
#include "settings/Options.h"
#include "support/drive_win.h"
#include "support/imbench_win.h"

#include <algorithm>
#include <doctest/doctest.h>

using namespace velora;
using namespace velora::test;

namespace {

std::size_t tabs()
{
    return openIMs().Count();
}

/// Presses a button of the tabbed window.
bool press(const wchar_t* button)
{
    return drive::press(frmTabIM::instance()->hwnd(), button);
}

bool isBack(IMBench& bench, HWND im, const RECT& before)
{
    RECT now;
    GetWindowRect(im, &now);
    return GetAncestor(im, GA_PARENT) == bench.host.mdi() && EqualRect(&now, &before)
           && IsWindowVisible(im) && (GetWindowLongW(im, GWL_STYLE) & WS_CAPTION) == WS_CAPTION;
}

} // namespace

TEST_CASE("an IM that comes takes neither the focus nor the current tab; its tab is marked")
{
    IMBench bench;
    SetForegroundWindow(bench.host.frame());
    REQUIRE(waitFor([&] { return GetForegroundWindow() == bench.host.frame(); }));
    REQUIRE(bench.arrive(L"Rose3", L"first"));
    REQUIRE(bench.arrive(L"Joe Smith", L"second"));
    CHECK(GetForegroundWindow() == bench.host.frame());
    CHECK(openIMs().SelectedNick() == L"Rose3");
    CHECK(tabs() == 2);
    bench.host.command(L"im joesmith: again");
    CHECK(waitFor([&] { return openIMs().at(1).unread; }));
    CHECK(GetForegroundWindow() == bench.host.frame());
    CHECK(tabs() == 2); // Joe Smith and joesmith are one

    selectIM(bench.session(L"Joe Smith")->window(), true);
    CHECK_FALSE(openIMs().at(1).unread);
    CHECK(bench.happened(L"current Joe Smith by user"));
}

TEST_CASE("switched off, every IM is back in its old place; switched on, all are taken again")
{
    IMBench bench;
    opt::IM::TabsOn.set(false);
    const std::vector<std::wstring> names = {L"Rose3", L"Joe Smith", L"Anna"};
    std::vector<std::pair<HWND, RECT>> ims;
    for (const std::wstring& name : names) {
        const HWND im = bench.arrive(name, L"text of " + name);
        REQUIRE(im);
        RECT at;
        GetWindowRect(im, &at);
        ims.push_back({im, at});
        CHECK(bench.logged(name, L"text of " + name)); // without tabs too
    }
    CHECK(tabs() == 0);
    CHECK_FALSE(frmTabIM::instance());

    for (int round = 0; round < 2; ++round) {
        setTabsOn(true);
        REQUIRE(waitFor([&] { return tabs() == 3; }));
        for (const auto& [im, at] : ims)
            CHECK(GetAncestor(im, GA_PARENT) != bench.host.mdi());
        setTabsOn(false);
        CHECK(tabs() == 0);
        for (const auto& [im, at] : ims)
            CHECK(isBack(bench, im, at));
        CHECK_FALSE(IsWindowVisible(frmTabIM::instance()->hwnd()));
    }
    // It is still one conversation, in one block of the log.
    bench.host.command(L"im Anna: more");
    CHECK(bench.logged(L"Anna", L"more"));
    CHECK(IMBench::count(bench.log(L"Anna"), kBeginImLabel) == 1);
    CHECK(IMBench::count(bench.log(L"Anna"), L"text of Anna") == 1);
}

TEST_CASE("a log note goes into the conversation and the log, and is not sent")
{
    IMBench bench({.version = 6});
    REQUIRE(bench.arrive(L"Rose3", L"hello"));
    bench.type(L"Rose3", L"hello /log:x");
    CHECK(press(L"Send"));
    CHECK(bench.logged(L"Rose3", L"\r\nLog Note:\t /log:x"));
    CHECK(AolHost::listOf(bench.host.command(L"imsent")).empty());
    CHECK(aolLink().readText(bench.session(L"Rose3")->parts().reply) == L"");
    bench.host.command(L"im Rose3: and more");
    CHECK(bench.logged(L"Rose3", L"and more"));
    CHECK(bench.log(L"Rose3").find(L"Log Note") < bench.log(L"Rose3").find(L"and more"));
}

TEST_CASE("two IMs with one person share a day's file; in both layouts")
{
    for (const bool byDate : {true, false}) {
        IMBench bench;
        opt::IM::LogIMsByDate.set(byDate);
        for (const wchar_t* text : {L"the first", L"the second"}) {
            const HWND im = bench.arrive(L"Rose3", text);
            REQUIRE(im);
            CHECK(CloseUNT(im));
            CHECK(waitFor([&] { return !bench.session(L"Rose3"); }));
        }
        const std::wstring log = bench.log(L"Rose3");
        CHECK(IMBench::count(log, kBeginImLabel) == 2);
        CHECK(IMBench::count(log, L"\r\nEnd IM - ") == 2);
        CHECK(IMBench::count(log, L"the first") == 1);
        CHECK(IMBench::count(log, L"the second") == 1);
    }
}

TEST_CASE("with LogIMs off nothing is written")
{
    IMBench bench;
    opt::IM::LogIMs.set(false);
    const HWND im = bench.arrive(L"Rose3", L"secret");
    REQUIRE(im);
    CHECK(CloseUNT(im));
    CHECK(bench.happened(L"closed Rose3"));
    CHECK(bench.log(L"Rose3").empty());
}

TEST_CASE("who is ignored gets his window closed, with and without tabs")
{
    IMBench bench;
    clsFileOp::WriteTextToFile(bench.folder + L"\\data\\ignore.dat", L"bad Guy\r\n");
    clsFileOp::WriteTextToFile(bench.folder + L"\\data\\ignoretemp.dat",
                               L"later\t" + std::to_wstring(dateSerial(now()) + 2) + L"\r\nback\t"
                                   + std::to_wstring(dateSerial(now())) + L"\r\n");
    for (const bool on : {true, false}) {
        opt::IM::TabsOn.set(on);
        bench.host.command(L"im BadGuy: buy this");
        bench.host.command(L"im Later: and this");
        CHECK(waitFor(
            [&] { return !bench.host.document(L"BadGuy") && !bench.host.document(L"Later"); }));
        CHECK_FALSE(bench.session(L"BadGuy"));
        CHECK(bench.log(L"BadGuy").empty());
    }
    CHECK(bench.arrive(L"Back", L"hello")); // its day is over
}

TEST_CASE("a second scan takes no window twice, and gives it no second header")
{
    IMBench bench;
    const HWND im = bench.arrive(L"Rose3", L"hello");
    REQUIRE(im);
    for (int i = 0; i < 3; ++i) {
        IMsToPic();
        ScanForIM();
        watchIMs();
    }
    CHECK(imSessions().size() == 1);
    CHECK(tabs() == 1);
    CHECK(IMBench::count(bench.session(L"Rose3")->text(), kBeginImLabel) == 1);
    CHECK(std::count(bench.events.begin(), bench.events.end(), L"new Rose3") == 1);
}

TEST_CASE("windows that are built late, in every way that AOL makes them")
{
    for (const wchar_t* way : {L"create", L"ex", L"plain"})
        for (const wchar_t* reply : {L"shown", L"hidden", L"absent"}) {
            CAPTURE(std::wstring(way));
            CAPTURE(std::wstring(reply));
            IMBench bench(
                {.lateMs = 150, .mdiCreation = way, .more = {L"--reply=" + std::wstring(reply)}});
            REQUIRE(bench.arrive(L"Rose3", L"late"));
            bench.type(L"Rose3", L"answer");
            CHECK(press(L"Send"));
            CHECK(bench.sent(L"Rose3: answer"));
        }
}

TEST_CASE("a window that is closed before it is built, or by AOL's own button, leaves nothing")
{
    IMBench bench;
    bench.host.command(L"late 600000");
    bench.host.command(L"im Rose3: never seen");
    bench.host.command(L"close Rose3");
    bench.host.command(L"late 0");
    const HWND im = bench.arrive(L"Anna", L"hello");
    REQUIRE(im);
    CHECK_FALSE(bench.session(L"Rose3"));
    // The last words are said in the moment of closing.
    bench.host.command(L"im Anna: goodbye");
    const HWND cancel = childOfText(im, L"Cancel");
    REQUIRE(cancel);
    CHECK(clickAolIcon(cancel));
    CHECK(bench.happened(L"closed Anna"));
    CHECK(tabs() == 0);
    CHECK(IMBench::count(bench.log(L"Anna"), L"goodbye") == 1);
    CHECK(IMBench::count(bench.log(L"Anna"), L"\r\nEnd IM - ") == 1);
    CHECK(waitFor([&] { return !IsWindowVisible(frmTabIM::instance()->hwnd()); }));
}

TEST_CASE("the end of the program: given back, or closed, and logged either way")
{
    for (const bool close : {false, true}) {
        IMBench bench;
        opt::IM::CloseIMsOnExit.set(close);
        const HWND im = bench.arrive(L"Rose3", L"hello");
        REQUIRE(im);
        endIMs();
        CHECK(waitFor([&] { return IsWindow(im) != close; }));
        if (!close)
            CHECK(GetAncestor(im, GA_PARENT) == bench.host.mdi());
        CHECK(IMBench::count(bench.log(L"Rose3"), L"\r\nEnd IM - ") == 1);
        if (close)
            continue;
        // The next run goes on where the log ends.
        startIMs();
        REQUIRE(waitFor([&] { return bench.taken(L"Rose3"); }));
        bench.host.command(L"im Rose3: once more");
        CHECK(bench.logged(L"Rose3", L"once more"));
        CHECK(IMBench::count(bench.log(L"Rose3"), L"hello") == 1);
    }
}

TEST_CASE("AOL is killed: what was said is in the log")
{
    IMBench bench;
    REQUIRE(bench.arrive(L"Rose3", L"before the end"));
    bench.host.command(L"im Rose3: the last words");
    CHECK(bench.logged(L"Rose3", L"the last words"));
    bench.host.kill();
    CHECK(waitFor([&] { return bench.bench.ended > 0; }));
    endIMs();
    CHECK(IMBench::count(bench.log(L"Rose3"), L"\r\nEnd IM - ") == 1);
}
