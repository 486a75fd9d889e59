#include "base/files.h"
#include "base/handles.h"
#include "base/text.h"
#include "base/win.h"
#include "sounds/clsMultiMedia.h"
#include "support/fakemci.h"
#include "support/tempdir.h"
#include "support/wavfile.h"

#include <doctest/doctest.h>
#include <functional>

using namespace velora;

namespace {

constexpr DWORD kPatience = 20000;

bool until(const std::function<bool()>& condition)
{
    const DWORD start = GetTickCount();
    while (!condition()) {
        if (GetTickCount() - start > kPatience)
            return false;
        Sleep(5);
    }
    return true;
}

/// A device that is closed lets go of its file.
bool isFree(const std::wstring& path)
{
    return static_cast<bool>(FileHandle(
        CreateFileW(path.c_str(), GENERIC_READ | DELETE, 0, nullptr, OPEN_EXISTING, 0, nullptr)));
}

} // namespace

TEST_CASE("a wav really plays through MCI, whatever its path")
{
    const TempDir dir;
    for (const wchar_t* name : {L"plain.wav", L"My Sounds.Wav", L"Caf\u00e9 \u2022.wav",
                                L"\u0416\u043b\u0430 x.wav", L"a 'b' & (c)!.wav"}) {
        CAPTURE(toUtf8(name));
        const std::wstring path = dir.file(name);
        replaceFile(path, wavFile(8000));
        SystemRandom random;
        clsMultiMedia sound(systemMci(), random);
        sound.mmOpen(path);
        REQUIRE(sound.FileName() == path);
        CHECK(sound.Status() == L"stopped");
        CHECK(sound.Length() == 8000);
        CHECK(sound.FormatTag() == L"PCM");
        CHECK(sound.Bits() == 8);
        CHECK(sound.Channels() == 1);
        CHECK(sound.SamplingRate() == 8000);

        sound.mmPlay();
        CHECK(until([&] { return sound.Status() == L"playing" && sound.Position() > 50; }));
        const long earlier = sound.Position();
        CHECK(until([&] { return sound.Position() > earlier; }));
        sound.mmPause();
        CHECK(until([&] { return sound.Status() == L"paused"; }));
        sound.mmStop();
        sound.mmSeek(4000);
        CHECK(until([&] { return sound.Position() == 4000; }));
        sound.mmClose();
        CHECK(isFree(path));
    }
}

TEST_CASE("a sound that waits has come to its end")
{
    const TempDir dir;
    replaceFile(dir.file(L"short.wav"), wavFile(60));
    SystemRandom random;
    clsMultiMedia sound(systemMci(), random);
    sound.mmOpen(dir.file(L"short.wav"));
    sound.Wait(true);
    sound.mmPlay();
    CHECK(sound.Status() == L"stopped");
}

TEST_CASE("the player plays one at a time and frees what has ended")
{
    const TempDir dir;
    replaceFile(dir.file(L"one.wav"), wavFile(60000));
    replaceFile(dir.file(L"two.wav"), wavFile(200));
    SystemRandom random;
    FakeControl control;
    clsSoundPlayer player(systemMci(), random, control);
    REQUIRE(player.play(dir.file(L"one.wav")));
    CHECK(until([&] { return player.busy(); }));
    REQUIRE(player.play(dir.file(L"two.wav")));
    CHECK(isFree(dir.file(L"one.wav")));
    CHECK(until([&] { return player.closeFinished(); }));
    CHECK(isFree(dir.file(L"two.wav")));
}

TEST_CASE("what is no sound opens nothing")
{
    const TempDir dir;
    replaceFile(dir.file(L"text.wav"), "this is no wav file");
    replaceFile(dir.file(L"empty.mid"), "");
    SystemRandom random;
    FakeControl control;
    clsSoundPlayer player(systemMci(), random, control);
    for (const wchar_t* name : {L"text.wav", L"empty.mid", L"missing.wav"}) {
        CAPTURE(name);
        CHECK_FALSE(player.play(dir.file(name)));
        CHECK(player.path().empty());
        CHECK_FALSE(player.busy());
    }
}
