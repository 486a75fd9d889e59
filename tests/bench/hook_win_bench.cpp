// What the module inside AOL costs and saves: batch reads beside whole-text reads and beside
// reading line by line from outside, a verdict beside the same message unwatched, attaching.
#include "base/win.h"
#include "bench/bench.h"
#include "hook/WindowHook.h"
#include "support/aolhost_win.h"

#include <stdexcept>

using namespace velora;
using namespace velora::bench;
using velora::test::AolHost;

namespace {

struct Ground {
    AolHost aol{{.more = {L"--trim=0"}}};
    AgentLink link;
    HWND display = nullptr, input = nullptr;

    Ground()
    {
        aol.enterRoom();
        display = aol.displayWindow();
        input = aol.inputWindow();
        if (!link.connect(aol.frame()))
            throw std::runtime_error("no way into AOL");
    }
};

double wholeTextFromOutside(HWND display, int rounds)
{
    std::wstring text;
    return medianMs(rounds, [&] {
        text.resize(static_cast<std::size_t>(SendMessageW(display, WM_GETTEXTLENGTH, 0, 0)) + 1);
        SendMessageW(display, WM_GETTEXT, text.size(), reinterpret_cast<LPARAM>(text.data()));
    });
}

void linesFromOutside(HWND display, int count)
{
    wchar_t line[1024];
    for (int at = 0; at < count; ++at) {
        line[0] = 1024;
        SendMessageW(display, EM_GETLINE, static_cast<WPARAM>(at), reinterpret_cast<LPARAM>(line));
    }
}

} // namespace

BENCH("hook: reading a display of 1,000 lines")
{
    Ground ground;
    ground.aol.command(L"fill 1000");
    AgentLink& link = ground.link;
    const HWND display = ground.display;
    const auto all = link.readLines(display, 0, 1 << 20, 10000);
    if (!all)
        throw std::runtime_error("the display could not be read");
    const double whole = wholeTextFromOutside(display, 15);
    report.row("one whole-text read from outside", whole);
    report.row("whole text, by the agent", medianMs(15, [&] { link.readText(display); }), whole);
    report.row("tail of 1,000 characters, by the agent",
               medianMs(15, [&] { link.readTail(display, 1000); }), whole);
    report.row("last 20 display lines, by the agent",
               medianMs(15, [&] { link.readLines(display, all->total - 20); }), whole);
    report.row("all " + std::to_string(all->total) + " display lines, by the agent",
               medianMs(5, [&] { link.readLines(display, 0, 1 << 20, 10000); }), whole);
    report.row("the same from outside, line by line",
               medianMs(1, [&] { linesFromOutside(display, all->total); }), whole);
}

BENCH("hook: a key with and without a verdict, attaching")
{
    Ground ground;
    const auto key = [&] { sendToAol(ground.input, WM_KEYUP, VK_F24, 0); };
    const double plain = medianMs(200, key);
    report.row("a key sent to AOL's input box, unwatched", plain);
    WindowHook hook;
    hook.WndMessageX = [](HookMessage&) {};
    const auto watch = [&](UINT message) {
        if (!hook.attach(ground.link, ground.input, {WatchRule::key(message, VK_F24)}))
            throw std::runtime_error("the input box could not be hooked");
    };
    watch(WM_KEYDOWN);
    report.row("the same with a hook that does not want it", medianMs(200, key), plain);
    watch(WM_KEYUP);
    report.row("the same with a verdict", medianMs(200, key), plain);
    hook.detach();
    report.row("attaching and detaching",
               medianMs(100,
                        [&] {
                            watch(WM_KEYUP);
                            hook.detach();
                        }),
               plain);
    report.row("connecting and disconnecting",
               medianMs(10,
                        [&] {
                            ground.link.disconnect();
                            ground.link.connect(ground.aol.frame());
                        }),
               plain);
}
