#include "sounds/modWavList.h"

#include <doctest/doctest.h>

using namespace velora;

TEST_CASE("kinds by extension")
{
    CHECK(kindOfFile(L"x.WAV") == SoundKind::wav);
    CHECK(kindOfFile(L"x.mid") == SoundKind::mid);
    CHECK(kindOfFile(L"x.Mp3") == SoundKind::mp3);
    for (const wchar_t* none : {L"x.wave", L"wav", L"x.wav.exe", L"", L"x.ogg"})
        CHECK_FALSE(kindOfFile(none));
}

TEST_CASE("a wav name is the file name less its last four characters")
{
    CHECK(wavName(L"Welcome.WAV", false) == L"welcome");
    CHECK(wavName(L"Welcome.WAV", true) == L"Welcome");
    CHECK(wavName(L"a.b.mp3", false) == L"a.b");
    CHECK(wavName(L".wav", false) == L"");
    CHECK(wavName(L"wav", false) == L"");
}

TEST_CASE("AOL's own sounds are told exactly, after the case rule")
{
    CHECK(isAolSystemSound(wavName(L"Welcome.WAV", false)));
    CHECK_FALSE(isAolSystemSound(wavName(L"Welcome.WAV", true)));
    CHECK_FALSE(isAolSystemSound(wavName(L"IM.wav", false)));
    CHECK(isAolSystemSound(wavName(L"IM.wav", true)));
    CHECK_FALSE(isAolSystemSound(L"hello"));
    CHECK(isAolSource(L"AOL Sounds"));
    CHECK(isAolSource(L"aol directory"));
    CHECK_FALSE(isAolSource(L"FavWavs"));
}
