// What reading the tags of a folder costs: 10,000 files, each opened, its last 128 bytes read, and
// closed again; natively beside another tag library.
#include "base/files.h"
#include "base/text.h"
#include "bench/bench.h"
#include "sounds/clsMP3.h"

#include <filesystem>
#include <stdexcept>
#include <string>
#include <vector>

#ifdef VELORA_HAS_TAGLIB
#include <taglib/id3v1tag.h>
#include <taglib/mpegfile.h>
#endif

#ifdef _WIN32
#include "base/win.h"
#else
#include <fcntl.h>
#include <unistd.h>
#endif

using namespace velora;
using namespace velora::bench;

namespace {

constexpr int kFiles = 10000, kRounds = 7;
constexpr double kAim = 1.3;

#ifdef _WIN32
using BarePath = std::wstring;
BarePath barePath(const std::wstring& path)
{
    return path;
}
/// The least that gets at a file's end.
unsigned bareRead(const BarePath& path)
{
    char tail[clsMP3::kTagBytes];
    DWORD got = 0;
    const HANDLE file = CreateFileW(path.c_str(), GENERIC_READ, FILE_SHARE_READ, nullptr,
                                    OPEN_EXISTING, 0, nullptr);
    LARGE_INTEGER back;
    back.QuadPart = -static_cast<LONGLONG>(sizeof tail);
    SetFilePointerEx(file, back, nullptr, FILE_END);
    ReadFile(file, tail, sizeof tail, &got, nullptr);
    CloseHandle(file);
    return got + static_cast<unsigned char>(tail[3]);
}
#else
using BarePath = std::string;
BarePath barePath(const std::wstring& path)
{
    return toUtf8(path);
}
/// The least that gets at a file's end.
unsigned bareRead(const BarePath& path)
{
    char tail[clsMP3::kTagBytes];
    const int file = open(path.c_str(), O_RDONLY);
    lseek(file, -static_cast<off_t>(sizeof tail), SEEK_END);
    const auto got = read(file, tail, sizeof tail);
    close(file);
    return static_cast<unsigned>(got) + static_cast<unsigned char>(tail[3]);
}
#endif

/// Ten frames of silence, so that a reader of mp3 files finds what it expects.
std::string silence()
{
    std::string frame("\xFF\xFB\x90\x00", 4), frames;
    frame.resize(417, '\0');
    for (int i = 0; i < 10; ++i)
        frames += frame;
    return frames;
}

/// A folder of tagged files, deleted at the end.
struct Library {
    Library()
    {
        std::filesystem::remove_all(folder);
        std::filesystem::create_directory(folder);
        for (int i = 0; i < kFiles; ++i) {
            clsMP3 tag;
            tag.SetTitle(L"Title " + std::to_wstring(i));
            tag.SetArtist(L"Somebody");
            tag.SetGenre(static_cast<std::uint8_t>(i % 148));
            paths.push_back((folder / ("sound " + std::to_string(i) + ".mp3")).wstring());
            appendToFile(paths.back(), silence());
            tag.SaveTag(paths.back());
        }
    }
    ~Library() { std::filesystem::remove_all(folder); }
    const std::filesystem::path folder = std::filesystem::temp_directory_path() / "velora-tags";
    std::vector<std::wstring> paths;
};

} // namespace

BENCH("tags: reading those of 10,000 files")
{
    const Library library;
    std::vector<BarePath> bare;
    for (const std::wstring& path : library.paths)
        bare.push_back(barePath(path));
    unsigned sum = 0;
    std::vector<double> bareMs, oursMs;
    // In turns: what else the machine does weighs on both.
    for (int round = 0; round < kRounds; ++round) {
        const double start = clockMs();
        for (const BarePath& path : bare)
            sum += bareRead(path);
        const double middle = clockMs();
        clsMP3 tag;
        for (const std::wstring& path : library.paths) {
            tag.GetTag(path);
            sum += tag.Genre();
        }
        bareMs.push_back(middle - start);
        oursMs.push_back(clockMs() - middle);
        if (tag.Title().substr(0, 10) != L"Title 9999")
            throw std::runtime_error("a tag was not read");
    }
    const double least = median(bareMs), ours = median(oursMs);
    report.row("bare open, seek, read and close", least);
    report.row("clsMP3", ours, least);
    report.rowWithAim("clsMP3, as times the bare reading", ours / least, kAim);
#ifdef VELORA_HAS_TAGLIB
    report.row("taglib, its file reader without sound properties",
               medianMs(kRounds,
                        [&] {
                            for (const BarePath& path : bare) {
                                TagLib::MPEG::File file(path.c_str(), false);
                                sum += file.ID3v1Tag()->genreNumber();
                            }
                        }),
               least);
#endif
    if (sum == 0)
        throw std::runtime_error("nothing was read");
}
