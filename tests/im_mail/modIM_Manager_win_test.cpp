#include "im_mail/modIM_Manager.h"

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

std::size_t count(const std::wstring& text, std::wstring_view part)
{
    std::size_t found = 0;
    for (std::size_t at = text.find(part); at != text.npos; at = text.find(part, at + 1))
        ++found;
    return found;
}

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

TEST_CASE("in each edition and version an IM comes to a tab, is answered by Send, and is logged")
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
                          {4, 5},
                          {4, 6},
                          {5, 5},
                          {5, 7}}) {
        CAPTURE(c.edition);
        CAPTURE(c.version);
        IMBench bench({.edition = c.edition, .version = c.version});
        const HWND im = bench.arrive(L"Rose3", L"hello there");
        REQUIRE(im);
        CHECK(bench.happened(L"new Rose3"));
        CHECK(tabs() == 1);
        CHECK(openIMs().SelectedNick() == L"Rose3");
        CHECK(bench.logged(L"Rose3", L"Rose3:\thello there"));
        CHECK(count(bench.session(L"Rose3")->text(), kBeginImLabel) == 1);

        bench.type(L"Rose3", L"hi Rose");
        CHECK(press(L"Send"));
        CHECK(bench.sent(L"Rose3: hi Rose"));
        CHECK(bench.logged(L"Rose3", L"hi Rose"));

        CHECK(press(L"Cancel"));
        CHECK(bench.happened(L"closed Rose3"));
        CHECK_FALSE(IsWindow(im));
        CHECK(tabs() == 0);
        const std::wstring log = bench.log(L"Rose3");
        CHECK(log.starts_with(kBeginImLabel));
        CHECK(count(log, L"\r\nEnd IM - ") == 1);
        CHECK(log.ends_with(L"\r\n"));
        CHECK(count(log, L"hello there") == 1);
        CHECK(count(log, L"hi Rose") == 1);
    }
}

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
    CHECK(count(bench.log(L"Anna"), kBeginImLabel) == 1);
    CHECK(count(bench.log(L"Anna"), L"text of Anna") == 1);
}
