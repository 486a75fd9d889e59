#include "sounds/clsMultiMedia.h"
#include "sounds/clsSoundPlayer.h"
#include "support/fakemci.h"

#include <doctest/doctest.h>

using namespace velora;

namespace {

struct FixedRandom final : RandomSource {
    double rnd() override { return value; }
    double value = 0.9999;
};

/// The alias in "Open x.wav ALIAS a TYPE ...".
std::wstring aliasIn(const std::wstring& command)
{
    const std::size_t from = command.find(L" ALIAS ") + 7;
    return command.substr(from, command.find(L" TYPE ") - from);
}

} // namespace

TEST_CASE("a file is opened, played and closed under one alias")
{
    FakeMci mci;
    FixedRandom random;
    clsMultiMedia sound(mci, random);
    sound.mmOpen(L"C:\\My Sounds\\x.Wav");
    REQUIRE(mci.sent.size() == 1);
    CHECK(mci.sent[0].starts_with(L"Open \"C:\\My Sounds\\x.Wav\" ALIAS Wav"));
    CHECK(mci.sent[0].ends_with(L"1000 TYPE Waveaudio wait"));
    CHECK(sound.FileName() == L"C:\\My Sounds\\x.Wav");
    const std::wstring alias = aliasIn(mci.sent[0]);

    sound.mmPlay();
    sound.Wait(true);
    sound.mmPlay();
    sound.mmPause();
    sound.Position(250);
    sound.mmStop();
    sound.mmClose();
    CHECK(sound.FileName().empty());
    sound.mmClose();
    const std::vector<std::wstring> expected = {
        mci.sent[0],
        L"Play " + alias,
        L"Play " + alias + L" wait",
        L"Pause " + alias,
        L"seek " + alias + L" to 250",
        L"Stop " + alias,
        L"Close " + alias,
    };
    CHECK(mci.sent == expected);
}

TEST_CASE("nothing is sent while no file is open")
{
    FakeMci mci;
    FixedRandom random;
    clsMultiMedia sound(mci, random);
    sound.Bits(8);
    sound.Channels(2);
    sound.SamplingRate(8000);
    sound.mmPlay();
    sound.mmPause();
    sound.mmStop();
    sound.mmSeek(1);
    sound.mmClose();
    CHECK(sound.Bits() == 8);
    CHECK(sound.Channels() == 2);
    CHECK(sound.SamplingRate() == 8000);
    CHECK(sound.FormatTag().empty());
    CHECK(sound.Length() == 0);
    CHECK(sound.Status().empty());
    sound.mmOpen(L"C:\\x.mp3");
    sound.mmOpen(L"C:\\x\" alias y.wav");
    sound.mmOpen(L"");
    CHECK(sound.FileName().empty());
    CHECK(mci.sent.empty());
}

TEST_CASE("a file that does not open leaves nothing open")
{
    FakeMci mci;
    mci.fails = true;
    FixedRandom random;
    clsMultiMedia sound(mci, random);
    sound.mmOpen(L"C:\\x.wav");
    CHECK(sound.FileName().empty());
    sound.mmPlay();
    CHECK(mci.sent.size() == 1);
}

TEST_CASE("opening a second file closes the first")
{
    FakeMci mci;
    FixedRandom random;
    clsMultiMedia sound(mci, random);
    sound.mmOpen(L"C:\\a.wav");
    random.value = 0;
    sound.FileName(L"C:\\b.mid");
    REQUIRE(mci.sent.size() == 3);
    CHECK(mci.sent[1] == L"Close " + aliasIn(mci.sent[0]));
    CHECK(aliasIn(mci.sent[0]) != aliasIn(mci.sent[2]));
    CHECK(mci.sent[2].ends_with(L"1 TYPE Sequencer wait"));
}

TEST_CASE("a path outside the code page goes by its short form, the alias by its own")
{
    FakeMci mci;
    mci.shortPath = L"C:\\A~1.WAV";
    FixedRandom random;
    clsMultiMedia sound(mci, random);
    sound.mmOpen(L"C:\\\u0416 x.wav");
    CHECK(mci.sent[0].starts_with(L"Open C:\\A~1.WAV ALIAS wav"));
    CHECK(sound.FileName() == L"C:\\\u0416 x.wav");
}

TEST_CASE("what the device tells of a file")
{
    FakeMci mci;
    FixedRandom random;
    clsMultiMedia sound(mci, random);
    sound.mmOpen(L"C:\\x.wav");
    const struct {
        const wchar_t* answer;
        const wchar_t* tag;
        std::int16_t bits;
    } cases[] = {
        {L"PCM", L"PCM", 16},     {L"pcm", L"PCM", 16}, {L"2", L"MS ADPCM", 4},
        {L"17", L"IMA ADPCM", 4}, {L"", L"", 16},       {L"85", L"Unknown", 16},
    };
    for (const auto& c : cases) {
        CAPTURE(c.answer);
        sound.Bits(16);
        mci.answers = {{L" format tag wait", c.answer}, {L" bitspersample wait", L"16"}};
        CHECK(sound.FormatTag() == c.tag);
        CHECK(sound.Bits() == c.bits);
    }
    mci.answers = {{L" samplespersec wait", L"22050"},
                   {L" channels wait", L"2"},
                   {L" length", L"1500"},
                   {L" position", L"20"},
                   {L" mode", L"playing"}};
    CHECK(sound.SamplingRate() == 22050);
    CHECK(sound.Channels() == 2);
    CHECK(sound.Length() == 1500);
    CHECK(sound.Position() == 20);
    CHECK(sound.Status() == L"playing");

    mci.fails = true;
    CHECK(sound.SamplingRate() == 22050);
    CHECK(sound.FormatTag() == L"Unknown");
    CHECK(sound.Status().empty());
    CHECK(sound.Length() == 0);
}

TEST_CASE("the player ends one sound before the next and frees a finished file")
{
    FakeMci mci;
    FixedRandom random;
    FakeControl control;
    clsSoundPlayer player(mci, random, control);
    CHECK_FALSE(player.busy());
    CHECK_FALSE(player.play(L"C:\\x.txt"));
    CHECK(player.play(L"C:\\a.wav"));
    mci.answers = {{L" mode", L"playing"}, {L" length", L"200"}, {L" position", L"50"}};
    CHECK(player.busy());
    CHECK(player.progress() == doctest::Approx(0.25));
    CHECK_FALSE(player.closeFinished());
    mci.answers[L" mode"] = L"paused";
    CHECK(player.busy());
    player.pause();
    CHECK(mci.sent.back().starts_with(L"Play "));
    mci.answers[L" mode"] = L"stopped";
    CHECK_FALSE(player.busy());
    CHECK(player.closeFinished());
    CHECK(player.path().empty());
    CHECK_FALSE(player.closeFinished());
}

TEST_CASE("an mp3 goes to the control, and either ends the other")
{
    FakeMci mci;
    FixedRandom random;
    FakeControl control;
    clsSoundPlayer player(mci, random, control);
    mci.answers = {{L" mode", L"playing"}};
    CHECK(player.play(L"C:\\a.wav"));
    CHECK(player.play(L"C:\\b.MP3"));
    CHECK(mci.sent.back().starts_with(L"Close "));
    CHECK(control.playing == L"C:\\b.MP3");
    CHECK(player.path() == L"C:\\b.MP3");
    CHECK(player.busy());
    CHECK(player.progress() == doctest::Approx(0.25));
    const std::size_t sent = mci.sent.size();
    player.pause();
    CHECK(control.pauses == 1);
    CHECK(mci.sent.size() == sent);
    control.isBusy = false;
    CHECK(player.closeFinished());
    CHECK(control.playing.empty());
    CHECK(player.path().empty());

    control.isBusy = true;
    CHECK(player.play(L"C:\\b.mp3"));
    CHECK(player.play(L"C:\\a.wav"));
    CHECK(control.playing.empty());
    CHECK(player.path() == L"C:\\a.wav");
    control.works = false;
    CHECK_FALSE(player.play(L"C:\\b.mp3"));
    CHECK(player.path().empty());
}
