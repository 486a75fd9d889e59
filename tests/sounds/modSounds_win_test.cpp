// Sounds said in a room of a real AOL window, and sounds sent to it from the wav list.
#include "sounds/modSounds.h"

#include "core/modAOL.h"
#include "settings/Options.h"
#include "sounds/frmWavs.h"
#include "sounds/modPlayback.h"
#include "support/drive_win.h"
#include "support/steps_win.h"
#include "support/toolbar_win.h"

#include <doctest/doctest.h>
#include <set>

using namespace velora;
using namespace velora::test;

namespace {

using Names = std::vector<std::wstring>;

} // namespace

TEST_CASE("a flood of sound commands is heard as far as the limit goes")
{
    // First in this file: the limit counts what the other cases play, too.
    ToolbarBench bench;
    for (int i = 0; i < 20; ++i)
        bench.addSound(L"f" + std::to_wstring(i) + L".wav", 20);
    opt::WavScan::MaxPerMinute.set(5);
    bench.load();
    bench.enterRoom(L"Town Square");
    for (int i = 0; i < 1000; ++i)
        bench.host.command(L"say Joe Smith: {S f" + std::to_wstring(i % 20) + L"}");
    CHECK(waitFor([&] { return bench.heard.size() >= 1000; }, 60000));
    CHECK(bench.heard.size() == 1000);
    CHECK(bench.played.size() >= 1);
    CHECK(bench.played.size() <= 5);
}

TEST_CASE("a sound said in the room plays, one at a time, and ends")
{
    ToolbarBench bench;
    bench.addSound(L"drop.wav", 60000);
    bench.addSound(L"ding.wav", 300);
    opt::WavScan::MaxPerMinute.set(1000);
    bench.load();
    bench.enterRoom(L"Town Square");

    bench.host.command(L"say Joe Smith: listen {S drop} everyone");
    CHECK(waitFor([&] { return bench.played == Names{L"drop.wav"} && soundBusy(); }));
    bench.host.command(L"say Ann: {S ding}");
    CHECK(bench.hears(L"Ann|{S ding}"));
    CHECK(bench.played == Names{L"drop.wav"});
    StopSound();
    CHECK_FALSE(soundBusy());

    bench.host.command(L"say Ann: {s DING}");
    CHECK(waitFor([&] { return bench.played.size() == 2; }));
    CHECK(waitFor([] { return playingSound().empty(); }));

    // The switch of the menu.
    opt::General::WavDetect.set(false);
    const int lines = bench.lines;
    bench.host.command(L"say Ann: {S ding}");
    CHECK(waitFor([&] { return bench.lines == lines + 1; }));
    opt::General::WavDetect.set(true);
    bench.host.command(L"say Ann: {S drop}");
    CHECK(waitFor([&] { return bench.played.size() == 3; }));
    CHECK(bench.played.back() == L"drop.wav");
}

TEST_CASE("Enter in the wav list previews, or sends by the option")
{
    ToolbarBench bench;
    for (const wchar_t* name : {L"Hello.wav", L"help me.wav", L"zebra.wav"})
        bench.addSound(name, 60000);
    frmToolbar& toolbar = bench.load();
    bench.enterRoom(L"Town Square");
    REQUIRE(drive::press(toolbar.hwnd(), L"Wav List"));
    const HWND list = drive::window(L"Velora - Wav List");
    REQUIRE(list);
    CHECK(drive::until([&] { return GetForegroundWindow() == list; }));
    drive::type(L"zeb");
    CHECK(drive::until([&] { return drive::child(list, L"Count: 1") != nullptr; }));
    drive::key(VK_RETURN);
    CHECK(drive::until([] { return playingSound().ends_with(L"\\zebra.wav") && soundBusy(); }));
    CHECK(bench.host.sent().empty());
    StopSound();

    opt::WavList::DoubleClick.set(L"Send");
    opt::WavList::UseUpperWavTrigger.set(false);
    REQUIRE(drive::activate(list));
    drive::key(VK_RETURN);
    CHECK(drive::until([&] { return bench.host.sent() == Names{L"{s zebra}"}; }));
}

TEST_CASE("the wav list says why it cannot send")
{
    ToolbarBench bench;
    opt::General::AutoCloseMsgBox.set(false);
    bench.addSound(L"hello.wav", 300);
    bench.load();
    frmWavs::openList();
    const HWND list = drive::window(L"Velora - Wav List");
    REQUIRE(list);
    for (const auto& [typed, says] :
         {std::pair{L"", L"No wav selected!"}, {L"hello", L"No AOL Chat Room visible!"}}) {
        SetWindowTextW(drive::child(list, L"Edit"), typed);
        Steps({{typed[0] ? L"Velora" : L"Velora - Wav List", says}},
              [&] { PostMessageW(drive::child(list, L"Send"), BM_CLICK, 0, 0); });
    }
    CHECK(bench.host.sent().empty());
}
