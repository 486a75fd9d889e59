// Many IMs at once, hostile ones, and an AOL that hangs.
#include "base/files.h"
#include "core/modAOL.h"
#include "im_mail/frmAlert.h"
#include "im_mail/modIMServices.h"
#include "settings/Options.h"
#include "support/answer_win.h"
#include "support/drive_win.h"
#include "support/imbench_win.h"

#include <algorithm>
#include <doctest/doctest.h>

#include <commctrl.h>

using namespace velora;
using namespace velora::test;

namespace {

/// All files under a folder, as paths from there.
std::vector<std::wstring> filesUnder(const std::wstring& folder, const std::wstring& prefix = {})
{
    std::vector<std::wstring> all;
    for (const FileEntry& entry : listFolder(folder)) {
        if (!entry.folder)
            all.push_back(prefix + entry.name);
        else
            for (const std::wstring& inner :
                 filesUnder(folder + L"\\" + entry.name, prefix + entry.name + L"\\"))
                all.push_back(inner);
    }
    return all;
}

int alerts()
{
    const auto& all = Form::all();
    return static_cast<int>(std::count_if(all.begin(), all.end(), [](Form* form) {
        return dynamic_cast<frmAlert*>(form) != nullptr;
    }));
}

} // namespace

TEST_CASE(
    "a burst of 50 comes to tabs and logs; what is over the limit is logged; one alert at a time")
{
    IMBench bench({.version = 6});
    startIMServices({.focusIM = [](WindowId) {}, .adjustIMWindow = ShowButtons_AU});
    opt::IM::AlertSeconds.set(60);
    ShowWindowAsync(bench.host.frame(), SW_MINIMIZE);
    REQUIRE(waitFor([&] { return IsIconic(bench.host.frame()); }));

    const auto comes = [&](int from, int to) {
        for (int i = from; i < to; ++i) {
            bench.host.command(L"im Member" + std::to_wstring(i) + L": text of "
                               + std::to_wstring(i) + L".");
            drive::until([n = 0]() mutable { return n++ > 0; });
            CHECK(alerts() <= 1);
        }
    };
    comes(0, 50);
    REQUIRE(waitFor([] { return openIMs().Count() == 50; }));
    for (int i = 0; i < 50; ++i)
        CHECK(
            bench.logged(L"Member" + std::to_wstring(i), L"text of " + std::to_wstring(i) + L"."));
    comes(50, 90);
    // Those over the limit stay in AOL, and are logged all the same.
    REQUIRE(waitFor([] { return imSessions().size() == 90; }));
    CHECK(openIMs().Count() == kMostTakenIMs);
    CHECK(bench.logged(L"Member89", L"text of 89."));
    CHECK(alerts() == 1);

    // One that leaves makes room for one that waits.
    CHECK(CloseUNT(bench.session(L"Member7")->window()));
    CHECK(bench.happened(L"closed Member7"));
    CHECK(waitFor([] { return openIMs().Count() == kMostTakenIMs; }));
    endIMServices();
    imRoutes() = {};
}

TEST_CASE("opened and closed at once, before and while they are taken: nothing is left")
{
    IMBench bench({.version = 5});
    for (int i = 0; i < 20; ++i) {
        const std::wstring name = L"Brief" + std::to_wstring(i);
        bench.host.command(L"im " + name + L": hi");
        if (i % 2)
            waitFor([&, n = 0]() mutable { return ++n > i / 2; });
        bench.host.command(L"close " + name);
    }
    CHECK(waitFor([] { return imSessions().empty() && openIMs().Count() == 0; }));
    CHECK(waitFor([&] { return bench.host.status()[L"documents"] == L"1"; })); // the welcome
    CHECK(bench.arrive(L"Rose3", L"still here"));
}

TEST_CASE("names and texts of all kinds end in a tab and in a log of their own, nowhere else")
{
    IMBench bench({.version = 6});
    const std::wstring names[] = {L"..\\\\..\\\\evil",
                                  L"C:\\\\x\\\\y",
                                  L"con",
                                  L"COM1.log",
                                  L"a/b|c*d?",
                                  L"~B~CRred~B",
                                  L"<b>b</b>",
                                  L"{S drop}",
                                  L"x\\ty",
                                  std::wstring(300, L'n'),
                                  L"%41",
                                  L"&Tab"};
    for (const std::wstring& name : names) {
        CAPTURE(name);
        bench.host.command(L"im " + name
                           + L": <a href=\"file:///c:/\">~B~CR</a> End IM - 1 \\n\\nEnd IM - x");
    }
    CHECK(waitFor([&] { return openIMs().Count() == std::size(names); }));
    for (std::size_t i = 0; i < openIMs().Count(); ++i)
        selectIM(reinterpret_cast<HWND>(openIMs().at(i).window), true);
    CHECK(waitFor([&] {
        const auto files = filesUnder(bench.folder);
        return files.size() == std::size(names)
               && std::all_of(files.begin(), files.end(), [](const std::wstring& path) {
                      return path.starts_with(L"im logs\\") && path.ends_with(L".log")
                             && std::count(path.begin(), path.end(), L'\\') == 2;
                  });
    }));
}

TEST_CASE("a text of 64 KB is logged once, whole")
{
    IMBench bench({.version = 7});
    REQUIRE(bench.arrive(L"Rose3", L"first"));
    std::wstring large;
    for (int i = 0; large.size() < 65536; ++i)
        large += L"word" + std::to_wstring(i) + L" ";
    bench.host.command(L"im Rose3: " + large + L"the end");
    CHECK(bench.logged(L"Rose3", L"the end"));
    bench.host.command(L"im Rose3: after it");
    CHECK(bench.logged(L"Rose3", L"after it"));
    const std::wstring log = bench.log(L"Rose3");
    for (const wchar_t* part : {L"first", L"word0 ", L"word5000 ", L"the end", L"after it"})
        CHECK(IMBench::count(log, part) == 1);
}

TEST_CASE("a mail or a board message with the caption of an IM is none")
{
    IMBench bench({.version = 6});
    bench.host.command(L"mail Mallory|IM From: Rose3|Begin IM - now");
    bench.host.command(L"board B|Mallory|IM From: Rose3|text");
    bench.host.command(L"keyword IM From: Rose3");
    REQUIRE(bench.arrive(L"Anna", L"a real one"));
    watchIMs();
    CHECK(openIMs().Count() == 1);
    CHECK_FALSE(bench.session(L"Rose3"));
}

TEST_CASE("AOL hangs while it is held: our window goes on, and so do the IMs afterwards")
{
    IMBench bench({.version = 6});
    for (const wchar_t* name : {L"Rose3", L"Anna", L"Joe Smith"})
        REQUIRE(bench.arrive(name, L"hello"));
    frmTabIM& form = *frmTabIM::instance();
    REQUIRE(drive::activate(form.hwnd()));
    const HWND strip = drive::child(form.hwnd(), WC_TABCONTROLW);
    REQUIRE(strip);

    constexpr int kHang = 5000;
    const DWORD start = GetTickCount();
    bench.host.command(L"hang " + std::to_wstring(kHang));
    const auto tab = [&](int index) {
        RECT at;
        SendMessageW(strip, TCM_GETITEMRECT, static_cast<WPARAM>(index),
                     reinterpret_cast<LPARAM>(&at));
        return drive::clickAt(strip, at.left + 8, (at.top + at.bottom) / 2)
               && waitFor([&] { return openIMs().selectedIndex() == std::size_t(index); });
    };
    CHECK(tab(2));
    CHECK(drive::press(form.hwnd(), L"Send"));
    CHECK(drive::press(form.hwnd(), L"Profile"));
    SetWindowPos(form.hwnd(), nullptr, 60, 60, 500, 400, SWP_NOZORDER | SWP_NOACTIVATE);
    CHECK(tab(1));
    watchIMs();
    drive::key('W', {VK_CONTROL});
    SendMessageW(form.hwnd(), WM_SYSCOMMAND, SC_MINIMIZE, 0);
    {
        Answer answer(L"Yes", L"Velora - Instant Messages");
        SendMessageW(form.hwnd(), WM_CLOSE, 0, 0);
        CHECK(answer.said(L"Close all 3 instant messages?"));
    }
    CHECK(openIMs().Count() == 3); // AOL did not take it
    CHECK(IsWindowVisible(form.hwnd()));
    CHECK(GetTickCount() - start < kHang); // all of it while AOL hung

    bench.host.command(L"im Anna: awake");
    CHECK(bench.logged(L"Anna", L"awake"));
    bench.type(L"Anna", L"me too");
    CHECK(drive::press(form.hwnd(), L"Send"));
    CHECK(bench.sent(L"Anna: me too"));
}
