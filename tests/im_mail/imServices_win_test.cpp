// Alerts and auto-answer on the real manager: an IM that is taken into a tab is told of, answered,
// and logged.
#include "im_mail/modIMServices.h"

#include "im_mail/frmAlert.h"
#include "im_mail/modAnswerRules.h"
#include "im_mail/modIMAnswer.h"
#include "settings/Options.h"
#include "sounds/modPlayback.h"
#include "support/answer_win.h"
#include "support/drive_win.h"
#include "support/imbench_win.h"

#include <doctest/doctest.h>

using namespace velora;
using namespace velora::test;

TEST_CASE("a taken IM raises the alert and is answered, with the tabs on and off")
{
    for (const bool tabs : {true, false}) {
        CAPTURE(tabs);
        IMBench bench({.version = 6});
        opt::IM::TabsOn.set(tabs);
        WindowId focused = 0;
        startIMServices(
            {.focusIM = [&](WindowId im) { focused = im; }, .adjustIMWindow = ShowButtons_AU});
        opt::IM::AlertSeconds.set(60);
        setAnswerMode(0);
        setAnswerMode(1);
        bench.bench.addSound(L"ding.wav", 60000);
        bench.bench.addSound(L"alarm.wav", 60000);
        const auto plays = [](const wchar_t* name) {
            return waitFor([&] { return playingSound().ends_with(name); });
        };
        const HWND im = bench.arrive(L"Rose3", L"are you there? {s ding}");
        REQUIRE(im);
        CHECK(plays(L"ding.wav"));
        CHECK(bench.sent(L"Rose3: " + fillAnswer(defaultAnswer(), L"Rose3")));
        CHECK(bench.logged(L"Rose3", L"Answered IM - "));
        // Nobody looks at AOL now.
        ShowWindowAsync(bench.host.frame(), SW_MINIMIZE);
        REQUIRE(waitFor([&] { return IsIconic(bench.host.frame()); }));
        opt::IM::PlayAlertWav.set(true);
        opt::IM::AlertWav.set(L"alarm");
        REQUIRE(bench.arrive(L"Ann", L"hello"));
        REQUIRE(waitFor([] { return frmAlert::instance() != nullptr; }));
        CHECK(drive::child(frmAlert::instance()->hwnd(), L"Ann"));
        if (tabs) // the second alert comes within the pause between two alert sounds
            CHECK(plays(L"alarm.wav"));
        CHECK(bench.sent(L"Ann: " + fillAnswer(defaultAnswer(), L"Ann")));
        endIMServices();
        imRoutes() = {};
    }
}

TEST_CASE(
    "with AutoAcceptAIM off the user is asked about IMs from the internet, one after the other")
{
    IMBench bench({.version = 6});
    startIMServices({.focusIM = [](WindowId) {}, .adjustIMWindow = ShowButtons_AU});
    opt::IM::AutoAcceptAIM.set(false);
    opt::IM::DisplayAlert.set(false);
    Answer yes(L"Yes", L"Velora - Instant Message", L"Ann~B writes");
    Answer no(L"No", L"Velora - Instant Message", L"Mallory writes");
    bench.host.command(L"internetim Ann~B: hello");
    bench.host.command(L"internetim Mallory: buy this");
    REQUIRE(bench.arrive(L"Rose3", L"a member is not asked about"));
    CHECK(waitFor([&] { return yes.came() && no.came(); }));
    CHECK(bench.happened(L"closed Mallory"));
    CHECK(bench.taken(L"Ann~B"));
    endIMServices();
    imRoutes() = {};
}
