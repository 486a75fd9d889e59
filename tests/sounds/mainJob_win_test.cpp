// The main job, with the real velora.exe beside AOL: sounds said in the room are heard, sounds are
// sent to it.
#include "base/files.h"
#include "base/handles.h"
#include "support/aolhost_win.h"
#include "support/drive_win.h"
#include "support/install_win.h"
#include "support/wavfile.h"

#include <doctest/doctest.h>

using namespace velora;
using namespace velora::test;

namespace {

/// Whether somebody has the file open: MCI keeps the file of the sound that plays.
bool isOpen(const std::wstring& path)
{
    return !FileHandle(
        CreateFileW(path.c_str(), GENERIC_READ | DELETE, 0, nullptr, OPEN_EXISTING, 0, nullptr));
}

} // namespace

TEST_CASE("a member's sound is heard, a hostile one is not, and the list sends one")
{
    const Installation installed;
    Installation::putSetting(L"General", L"AutoCloseMsgBox", false);
    AolHost host;
    const std::wstring sounds = host.folder() + L"\\sounds\\";
    makeFolder(host.folder() + L"\\sounds");
    for (const std::wstring& path :
         {sounds + L"long drop.wav", sounds + L"quick.wav", host.folder() + L"\\outside.wav"})
        replaceFile(path, wavFile(path.ends_with(L"quick.wav") ? 100 : 60000));

    Process velora = installed.start();
    const HWND panel = drive::window(L"Velora Toolbar", 30000);
    REQUIRE(panel);
    host.enterRoom();
    const HWND wavs = drive::child(panel, L"Wav List");
    REQUIRE(wavs);

    REQUIRE(drive::press(panel, L"Wav List"));
    const HWND list = drive::window(L"Velora - Wav List");
    REQUIRE(list);
    drive::activate(list);
    drive::type(L"long drop");
    REQUIRE(drive::until([&] { return drive::child(list, L"Count: 1") != nullptr; }));
    REQUIRE(drive::press(list, L"Send"));
    CHECK(drive::until([&] { return host.sent() == std::vector<std::wstring>{L"{S long drop}"}; }));
    CHECK(drive::until([&] { return isOpen(sounds + L"long drop.wav"); }));
    REQUIRE(drive::press(list, L"Stop"));
    CHECK(drive::until([&] { return !isOpen(sounds + L"long drop.wav"); }));

    host.command(L"say Mallory: {S ..\\..\\outside}");
    host.command(L"say Mallory: {S ..\\outside}");
    host.command(L"say Joe Smith: {S long drop}");
    CHECK(drive::until([&] { return isOpen(sounds + L"long drop.wav"); }));
    CHECK_FALSE(isOpen(host.folder() + L"\\outside.wav"));
    CHECK(drive::child(list, L"long drop played") != nullptr);

    // AOL's end ends Velora, whatever plays.
    host.command(L"exit");
    CHECK(velora.ended());
}
