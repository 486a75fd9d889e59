#include "sounds/modMci.h"

#include <doctest/doctest.h>

using namespace velora;

TEST_CASE("devices")
{
    CHECK(mciDevice(L"C:\\x.Wav") == std::wstring(L"Waveaudio"));
    CHECK(mciDevice(L"C:\\x.MID") == std::wstring(L"Sequencer"));
    for (const wchar_t* none : {L"C:\\x.mp3", L"C:\\x.wave", L"av", L"", L"C:\\x.wav "})
        CHECK_FALSE(mciDevice(none));
}

TEST_CASE("opening")
{
    const std::wstring alias = mciAlias(L"C:\\x.Wav", 7, 5, 1000);
    CHECK(alias == L"Wav751000");
    CHECK(mciOpen(L"C:\\x.Wav", alias)
          == std::wstring(L"Open C:\\x.Wav ALIAS Wav751000 TYPE Waveaudio wait"));
    CHECK(mciOpen(L"C:\\My Sounds\\x.mid", L"a")
          == std::wstring(L"Open \"C:\\My Sounds\\x.mid\" ALIAS a TYPE Sequencer wait"));
    CHECK_FALSE(mciOpen(L"C:\\x.mp3", L"a"));
    for (const wchar_t* hostile :
         {L"C:\\x\" alias y\\z.wav", L"\"C:\\x.wav", L"C:\\x\r\ny.wav", L"C:\\x\ty.wav"})
        CHECK_FALSE(mciOpen(hostile, L"a"));
    CHECK_FALSE(mciOpen(std::wstring_view(L"C:\\x\0.wav", 9), L"a"));
}

TEST_CASE("a path with an exclamation mark has a second form")
{
    CHECK(mciOpenElement(L"C:\\My Sounds\\yeah!.wav", L"a")
          == std::wstring(L"Open \"Waveaudio!C:\\My Sounds\\yeah!.wav\" ALIAS a wait"));
    CHECK(mciOpenElement(L"C:\\yeah!.mid", L"a")
          == std::wstring(L"Open Sequencer!C:\\yeah!.mid ALIAS a wait"));
    for (const wchar_t* none : {L"C:\\x.wav", L"C:\\x!.mp3", L"C:\\x!\" alias y.wav"})
        CHECK_FALSE(mciOpenElement(none, L"a"));
}
