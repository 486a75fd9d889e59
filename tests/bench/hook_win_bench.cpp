// What the module inside AOL costs: a verdict beside the same message unwatched, attaching. What it
// saves is measured with the chat.
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
    AolHost aol;
    AgentLink link;
    HWND input = nullptr;

    Ground()
    {
        aol.enterRoom();
        input = aol.inputWindow();
        if (!link.connect(aol.frame()))
            throw std::runtime_error("no way into AOL");
    }
};

} // namespace

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
