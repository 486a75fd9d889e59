#include "aolhost/Sounds.h"

#include <cmath>
#include <cstdint>
#include <functional>
#include <initializer_list>

namespace aolhost {
namespace {

constexpr int kRate = 11025;
constexpr double kPi = 3.14159265358979323846;

void put(std::string& out, std::uint32_t value, int bytes)
{
    for (int i = 0; i < bytes; ++i)
        out += static_cast<char>(value >> (8 * i) & 0xFF);
}

/// An 8-bit mono wave file of samples from -1 to 1.
std::string waveFile(const std::vector<double>& samples)
{
    std::string out = "RIFF";
    const auto size = static_cast<std::uint32_t>(samples.size());
    put(out, 36 + size + (size & 1), 4);
    out += "WAVEfmt ";
    put(out, 16, 4);
    put(out, 1, 2);
    put(out, 1, 2);
    put(out, kRate, 4);
    put(out, kRate, 4);
    put(out, 1, 2);
    put(out, 8, 2);
    out += "data";
    put(out, size, 4);
    for (const double s : samples)
        out += static_cast<char>(static_cast<int>(128 + 110 * std::fmax(-1, std::fmin(1, s))));
    if (size & 1)
        out += '\0';
    return out;
}

struct Tone {
    double from, to; ///< Hz, gliding
    int ms;
    double noise = 0; ///< share of noise, 0 to 1
};

/// Tones one after another, each with a quick start and a bell-like end.
std::vector<double> melody(std::initializer_list<Tone> tones)
{
    std::vector<double> out;
    double phase = 0;
    std::uint32_t seed = 12345;
    for (const Tone& tone : tones) {
        const int count = kRate * tone.ms / 1000;
        for (int i = 0; i < count; ++i) {
            const double part = static_cast<double>(i) / count;
            phase += 2 * kPi * (tone.from + (tone.to - tone.from) * part) / kRate;
            seed = seed * 1664525u + 1013904223u;
            const double hiss = static_cast<double>(seed >> 16) / 32768.0 - 1;
            const double wave = 0.8 * std::sin(phase) + 0.2 * std::sin(2 * phase);
            const double envelope = std::fmin(1, i / 60.0) * std::exp(-3 * part);
            out.push_back(envelope * ((1 - tone.noise) * wave + tone.noise * hiss));
        }
    }
    return out;
}

void note(std::string& track, int key, int ticks)
{
    put(track, 0, 1);
    for (const int b : {0x90, key, 96})
        put(track, static_cast<std::uint32_t>(b), 1);
    put(track, static_cast<std::uint32_t>(ticks), 1);
    for (const int b : {0x80, key, 64})
        put(track, static_cast<std::uint32_t>(b), 1);
}

/// Big-endian, as MIDI files are.
void putBig(std::string& out, std::uint32_t value, int bytes)
{
    for (int i = bytes - 1; i >= 0; --i)
        out += static_cast<char>(value >> (8 * i) & 0xFF);
}

std::string midiFile(std::initializer_list<int> keys)
{
    std::string track;
    for (const int key : keys)
        note(track, key, 48);
    track += std::string("\x00\xFF\x2F\x00", 4);
    std::string out = "MThd";
    putBig(out, 6, 4);
    putBig(out, 0, 2);
    putBig(out, 1, 2);
    putBig(out, 96, 2);
    out += "MTrk";
    putBig(out, static_cast<std::uint32_t>(track.size()), 4);
    return out + track;
}

} // namespace

std::vector<SoundFile> allSounds()
{
    const auto wave = [](const wchar_t* name, std::initializer_list<Tone> tones) {
        return SoundFile{name, waveFile(melody(tones))};
    };
    return {
        wave(L"welcome.wav",
             {{523, 523, 180}, {659, 659, 180}, {784, 784, 180}, {1047, 1047, 420}}),
        wave(L"goodbye.wav", {{1047, 1047, 180}, {784, 784, 180}, {523, 523, 420}}),
        wave(L"IM.wav", {{988, 988, 90}, {1319, 1319, 220}}),
        wave(L"gotmail.wav", {{784, 784, 140}, {784, 784, 140}, {1175, 1175, 380}}),
        wave(L"filedone.wav", {{659, 659, 150}, {880, 880, 300}}),
        wave(L"drop.wav", {{1200, 300, 160}}),
        wave(L"buddyin.wav", {{180, 320, 260, 0.4}, {240, 240, 60}}),
        wave(L"buddyout.wav", {{320, 160, 240, 0.4}, {90, 60, 160, 0.8}}),
        wave(L"inactive.wav", {{440, 440, 250}, {415, 415, 350}}),
        wave(L"gotpics.wav", {{880, 880, 60, 0.7}, {1175, 1175, 260}}),
        wave(L"boing.wav", {{180, 520, 120}, {520, 240, 180}, {240, 380, 260}}),
        wave(L"laser.wav", {{2400, 300, 320}}),
        wave(L"cowbell.wav", {{560, 555, 260, 0.1}}),
        wave(L"drumroll.wav", {{90, 80, 70, 0.8},
                               {90, 80, 70, 0.8},
                               {90, 80, 70, 0.8},
                               {90, 80, 70, 0.8},
                               {90, 80, 70, 0.8},
                               {160, 70, 420, 0.7}}),
        wave(L"tada.wav", {{523, 523, 120}, {784, 784, 120}, {1047, 1047, 120}, {1319, 1319, 560}}),
        wave(L"hello there.wav", {{392, 440, 200}, {330, 300, 300}}),
        wave(L"Applause.wav", {{400, 400, 300, 1}, {400, 400, 300, 1}, {400, 400, 500, 1}}),
        wave(L"uhoh.wav", {{370, 370, 160}, {262, 250, 300}}),
        {L"jingle.mid", midiFile({72, 76, 79, 84, 79, 76, 72})},
    };
}

} // namespace aolhost
