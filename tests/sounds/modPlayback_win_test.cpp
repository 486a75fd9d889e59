// Hearing sounds, with and without Media Player, and the jukebox.
#include "sounds/modPlayback.h"

#include "base/files.h"
#include "core/modAOL.h"
#include "sounds/frmMPlayer.h"
#include "sounds/modJukebox.h"
#include "sounds/modMediaPlayer.h"
#include "support/answer_win.h"
#include "support/drive_win.h"
#include "support/fakemplayer_win.h"
#include "support/form_scope_win.h"
#include "support/process_win.h"
#include "support/tempdir.h"
#include "support/wavfile.h"

#include <doctest/doctest.h>

using namespace velora;
using namespace velora::test;

namespace {

using Calls = std::vector<std::wstring>;

/// Options in memory; AOL's sounds folder is the test's own.
struct Sounds : FormScope {
    Sounds()
    {
        aol().folder = folder.path();
        folder.folder(L"sounds");
        onSoundProgress([this](const SoundProgress& progress) { told.push_back(progress); });
    }
    ~Sounds()
    {
        onSoundProgress(nullptr);
        StopSound();
        MuteSounds(false);
        aol() = {};
    }
    std::wstring sound(const wchar_t* name, int milliseconds = 60000) const
    {
        const std::wstring path = folder.path() + L"\\sounds\\" + name;
        replaceFile(path, wavFile(milliseconds));
        return path;
    }
    TempDir folder;
    std::vector<SoundProgress> told;
};

} // namespace

TEST_CASE("without Media Player an mp3 leads to its page, and the jukebox does not start")
{
    Sounds sounds;
    lookForMediaPlayer();
    REQUIRE_FALSE(mediaPlayerUsable());
    {
        const Answer no(L"No", L"Velora", L"To preview MP3 files through Velora requires");
        CHECK_FALSE(PlaySoundEx(sounds.sound(L"a.mp3")));
        CHECK(no.came());
    }
    const Answer no(L"No", L"Velora", L"The Velora Jukebox feature requires");
    CHECK_FALSE(StartJukebox());
    CHECK(no.came());
}

TEST_CASE("an mp3 plays on the hidden window's control, with its progress, to its end")
{
    Sounds sounds;
    FakeMediaPlayer control;
    const std::wstring mp3 = sounds.sound(L"a b.mp3");
    REQUIRE(PlaySoundEx(mp3));
    REQUIRE(frmMPlayer::instance());
    CHECK_FALSE(IsWindowVisible(frmMPlayer::instance()->hwnd()));
    CHECK(control.window == frmMPlayer::instance()->hwnd());
    CHECK(control.calls == Calls{L"site", L"FileName=" + mp3, L"Play"});
    CHECK(soundBusy());
    CHECK(playingSound() == mp3);
    CHECK(sounds.told.back().played == doctest::Approx(0.25));
    PauseSound();
    CHECK(soundBusy());
    PauseSound();
    CHECK(control.calls.back() == L"Play");
    control.position = 6;
    CHECK(drive::until([&] { return sounds.told.back().played > 0.7; }));
    control.state = 0;
    CHECK(drive::until([&] { return sounds.told.back().path.empty(); }));
    CHECK(control.calls.back() == L"FileName="); // its file is free again

    // A wav ends it, and the other way round.
    REQUIRE(PlaySoundEx(mp3));
    REQUIRE(PlaySoundEx(sounds.sound(L"c.wav")));
    CHECK(control.state == 0);
    CHECK(playingSound().ends_with(L"c.wav"));
    REQUIRE(PlaySoundEx(mp3));
    CHECK(playingSound() == mp3);

    // A control that answers nothing any more is no reason to wait, nor to ask for another.
    control.refuses = true;
    CHECK_FALSE(soundBusy());
    CHECK_FALSE(PlaySoundEx(mp3));
    control.refuses = false;
    Form::unloadAll();
    CHECK(control.calls.back() == L"no site");
    CHECK(control.living == 0);
}

TEST_CASE("the sound of an IM is found and heard, one at a time, within the limit, not while muted")
{
    Sounds sounds;
    opt::WavScan::MaxPerMinute.set(2);
    const std::wstring ding = sounds.sound(L"ding.wav");
    for (const wchar_t* hostile : {L"..\\sounds\\ding", L"nothing", L""})
        CHECK_FALSE(PlayIMWav(hostile));
    MuteSounds(true);
    CHECK_FALSE(PlayIMWav(L"ding"));
    CHECK_FALSE(playThroughMci(ding));
    REQUIRE(PlaySoundEx(ding)); // the user's own wish
    MuteSounds(true);
    CHECK_FALSE(soundBusy());
    MuteSounds(false);
    CHECK(PlayIMWav(L"DING"));
    CHECK(soundBusy());
    CHECK_FALSE(PlayIMWav(L"ding"));
    StopSound();
    CHECK(PlayIMWav(L"ding"));
    StopSound();
    CHECK_FALSE(PlayIMWav(L"ding"));
}

TEST_CASE("the jukebox starts with its token, when it is there")
{
    Sounds sounds;
    FakeMediaPlayer control;
    const std::wstring folder = sounds.folder.folder(L"Velora 10");
    {
        const Answer told(L"OK", L"Velora", L"JUKEBOX.EXE not found!");
        CHECK_FALSE(StartJukebox(folder));
        CHECK(told.came());
    }
    copyFile(buildFolder() + L"\\velora_tests.exe", folder + L"\\jukebox.exe", false);
    REQUIRE(StartJukebox(folder));
    const HWND window = drive::window(L"Velora Jukebox", 30000);
    REQUIRE(window);
    CHECK(drive::until([&] {
        const auto children = drive::children(window);
        return !children.empty()
               && drive::text(children[0]) == L"\"" + folder + L"\\jukebox.exe\" tandrel";
    }));
    PostMessageW(window, WM_CLOSE, 0, 0);
    CHECK(drive::gone(window));
}
