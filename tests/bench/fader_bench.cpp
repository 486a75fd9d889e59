// The fader's speed: a long text beside a straight copy of its markup, beside a program that
// colours text for terminals, and a chat line.
#include "bench/bench.h"
#include "chat/modFade.h"

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>

using namespace velora;
using namespace velora::bench;

namespace {

constexpr std::size_t kCharacters = 100000; // far more than AOL takes
constexpr double kBytesPerMs = 100e3;       // the aim: 100 MB of input a second
constexpr int kLines = 1000;
/// 2 microseconds a line.
constexpr double kLinesAimMs = kLines * 2e-3;
constexpr char kLine[] = "so what did you all do today? it was raining here all the time";

template <class Char>
std::basic_string<Char> text(std::size_t characters)
{
    std::basic_string<Char> all;
    while (all.size() < characters)
        all.append(std::begin(kLine), std::end(kLine) - 1);
    all.resize(characters);
    return all;
}

Fade fadeOf(int colours, bool wavy)
{
    Fade fade;
    fade.FadeNumber = colours;
    fade.colours = {255, 0xFF0000, 0x00FF00, 0x112233, 0x00FFFF,
                    0,   0x808080, 0x123456, 0xFF00FF, 0x0080FF};
    fade.Wavy = wavy;
    return fade;
}

template <class Char>
void longText(Report& report, std::size_t characters, const std::string& of)
{
    const std::basic_string<Char> input = text<Char>(characters);
    std::basic_string<Char> output;
    const auto faded = [&](const Fade& fade, bool solid) {
        return medianMs(50, [&] {
            output = input;
            FadeEngine(output, fade, solid);
        });
    };
    const double plain = faded(fadeOf(6, false), false);
    std::basic_string<Char> copy(output.size(), Char());
    const double copying =
        medianMs(50, [&] { std::memcpy(copy.data(), output.data(), copy.size() * sizeof(Char)); });
    report.row("copying the markup of " + std::to_string(characters) + of, copying);
    report.row("  the same into fresh memory",
               medianMs(50, [&] { const std::basic_string<Char> fresh(output); }), copying);
    report.row("FadeEngine, six colours", plain, copying);
    const double aim = static_cast<double>(characters) * sizeof(Char) / kBytesPerMs;
    report.rowWithAim("  the same", plain, aim);
    report.rowWithAim("FadeEngine, wavy", faded(fadeOf(6, true), false), aim);
    report.rowWithAim("FadeEngine, solid", faded(fadeOf(10, false), true), aim);
}

template <class Char>
void chatLine(Report& report, const std::string& of)
{
    const std::basic_string<Char> line = text<Char>(sizeof kLine - 1);
    const Fade fade = fadeOf(6, false);
    report.rowWithAim("1,000 chat lines of " + of,
                      medianMs(50,
                               [&] {
                                   for (int i = 0; i < kLines; ++i) {
                                       std::basic_string<Char> faded = line;
                                       FadeEngine(faded, fade, false);
                                   }
                               }),
                      kLinesAimMs);
}

#ifndef _WIN32
/// Milliseconds that a program takes for a file, its start included; nothing when it is not there.
std::optional<double> terminalProgram(const std::string& file)
{
    const std::string command = "PATH=$PATH:/usr/games lolcat -f " + file + " >/dev/null 2>&1";
    const double start = clockMs();
    if (std::system(command.c_str()) != 0)
        return std::nullopt;
    return clockMs() - start;
}

void besideTerminalProgram(Report& report)
{

    std::string lines = text<char>(kCharacters);
    for (std::size_t at = 80; at < lines.size(); at += 80)
        lines[at] = '\n';
    char file[] = "/tmp/velora-bench-XXXXXX";
    const int descriptor = mkstemp(file);
    std::FILE* const out = descriptor < 0 ? nullptr : fdopen(descriptor, "w");
    if (!out)
        return report.note("no file could be made for the terminal program");
    std::fwrite(lines.data(), 1, lines.size(), out);
    std::fclose(out);
    const auto other = terminalProgram(file);
    std::remove(file);
    if (!other)
        return report.note("lolcat is not installed: no row beside a terminal program");
    report.row("lolcat, 100,000 characters", *other);
    report.row("FadeEngine, 100,000 characters",
               medianMs(50,
                        [&] {
                            std::string faded = lines;
                            FadeEngine(faded, fadeOf(6, false), false);
                        }),
               *other);
}
#endif

} // namespace

BENCH("fader: characters a second")
{
    for (const std::size_t characters : {kCharacters / 10, kCharacters}) {
        longText<char>(report, characters, " bytes");
        longText<wchar_t>(report, characters, " wide characters");
    }
    chatLine<char>(report, "62 bytes");
    chatLine<wchar_t>(report, "62 wide characters");
#ifndef _WIN32
    besideTerminalProgram(report);
#endif
}
