// Alerts and auto-answer on the real manager: an IM that is taken into a tab is told of, answered,
// and logged.
#include "im_mail/modIMServices.h"

#include "im_mail/frmAlert.h"
#include "im_mail/modAnswerRules.h"
#include "im_mail/modIMAnswer.h"
#include "settings/Options.h"
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
        const HWND im = bench.arrive(L"Rose3", L"are you there?");
        REQUIRE(im);
        CHECK(bench.sent(L"Rose3: " + fillAnswer(defaultAnswer(), L"Rose3")));
        CHECK(bench.logged(L"Rose3", L"Answered IM - "));
        // Nobody looks at AOL now.
        ShowWindowAsync(bench.host.frame(), SW_MINIMIZE);
        REQUIRE(waitFor([&] { return IsIconic(bench.host.frame()); }));
        REQUIRE(bench.arrive(L"Ann", L"hello"));
        REQUIRE(waitFor([] { return frmAlert::instance() != nullptr; }));
        CHECK(drive::child(frmAlert::instance()->hwnd(), L"Ann"));
        CHECK(bench.sent(L"Ann: " + fillAnswer(defaultAnswer(), L"Ann")));
        endIMServices();
        imRoutes() = {};
    }
}
