#include "support/wavfile.h"

#include <cstdint>

namespace {

void number(std::string& out, std::uint32_t value, int bytes)
{
    for (int i = 0; i < bytes; ++i)
        out += static_cast<char>(value >> 8 * i & 0xFF);
}

} // namespace

std::string wavFile(int milliseconds, int samplesPerSecond)
{
    const auto samples = static_cast<std::uint32_t>(milliseconds * (samplesPerSecond / 1000));
    std::string out = "RIFF";
    number(out, 36 + samples, 4);
    out += "WAVEfmt ";
    number(out, 16, 4);
    number(out, 1, 2); // PCM
    number(out, 1, 2); // mono
    number(out, static_cast<std::uint32_t>(samplesPerSecond), 4);
    number(out, static_cast<std::uint32_t>(samplesPerSecond), 4);
    number(out, 1, 2);
    number(out, 8, 2);
    out += "data";
    number(out, samples, 4);
    for (std::uint32_t i = 0; i < samples; ++i)
        out += static_cast<char>(128 + (i / 10 % 2 ? 4 : -4));
    return out;
}
