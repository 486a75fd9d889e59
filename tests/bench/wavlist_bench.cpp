// Listing sounds beside a bare enumeration of the same folder, and what a list of 100,000 costs.
#include "base/files.h"
#include "base/text.h"
#include "bench/bench.h"
#include "sounds/clsWavListModel.h"

#include <filesystem>
#include <memory>

#ifdef _WIN32
#include "base/handles.h"
#else
#include <dirent.h>
#include <sys/stat.h>
#endif

using namespace velora;
using velora::bench::medianMs;
using velora::bench::Report;

namespace {

constexpr int kSounds[] = {10000, 100000};

std::string soundName(int i)
{
    return "Sound " + std::to_string(i * 7919LL % 1000003) + " of my "
           + (i % 3 ? "Cartoons" : "films") + ".wav";
}

#ifdef _WIN32
/// Wine looks through the whole folder for each new name, in whatever case: there the system below
/// it makes the files. False on Windows.
bool madeBelowWine(const std::filesystem::path& folder, int sounds)
{
    using UnixName = char*(CDECL*)(LPCWSTR);
    const auto unixName = reinterpret_cast<UnixName>(reinterpret_cast<void*>(
        GetProcAddress(GetModuleHandleW(L"kernel32.dll"), "wine_get_unix_file_name")));
    if (!unixName)
        return false;
    const std::filesystem::path names = folder / "names";
    if (FILE* const list = std::fopen(names.string().c_str(), "wb")) {
        for (int i = 0; i < sounds; ++i)
            std::fprintf(list, "%s\n", soundName(i).c_str());
        std::fclose(list);
    }
    const std::filesystem::path script = folder / "make.sh";
    if (FILE* const text = std::fopen(script.string().c_str(), "wb")) {
        std::fprintf(text,
                     "cd \"$(dirname \"$0\")\" && xargs -d '\\n' touch < names && rm names $0\n");
        std::fclose(text);
    }
    // It returns before the script has ended: that takes itself away at its end.
    const std::string command = std::string("start /unix /bin/sh ") + unixName(script.c_str());
    if (std::system(command.c_str()) != 0)
        return false;
    for (int i = 0; i < 1200 && std::filesystem::exists(script); ++i)
        Sleep(100);
    return !std::filesystem::exists(script);
}
#else
bool madeBelowWine(const std::filesystem::path&, int)
{
    return false;
}
#endif

/// A folder of empty sounds with names as users have them, taken away at the end.
class Folder {
public:
    explicit Folder(int sounds)
        : path_(std::filesystem::temp_directory_path() / ("velora-wavs-" + std::to_string(sounds)))
    {
        std::filesystem::remove_all(path_);
        std::filesystem::create_directory(path_);
        if (!madeBelowWine(path_, sounds))
            for (int i = 0; i < sounds; ++i)
                if (FILE* const made = std::fopen((path_ / soundName(i)).string().c_str(), "wb"))
                    std::fclose(made);
    }
    ~Folder() { std::filesystem::remove_all(path_); }
    std::wstring path() const { return path_.wstring(); }

private:
    std::filesystem::path path_;
};

/// The least that gives each name and size.
std::size_t enumerate(const std::wstring& folder)
{
    std::size_t count = 0, sum = 0;
#ifdef _WIN32
    WIN32_FIND_DATAW found;
    const FindHandle search(FindFirstFileW((folder + L"\\*").c_str(), &found));
    if (!search)
        return 0;
    do {
        ++count;
        sum += found.nFileSizeLow;
    } while (FindNextFileW(search.get(), &found));
#else
    const std::string path = toUtf8(folder);
    const std::unique_ptr<DIR, int (*)(DIR*)> directory(opendir(path.c_str()), closedir);
    while (const dirent* const entry = readdir(directory.get())) {
        struct stat data;
        if (lstat((path + "/" + entry->d_name).c_str(), &data) == 0)
            sum += static_cast<std::size_t>(data.st_size);
        ++count;
    }
#endif
    return count + sum;
}

void measure(Report& report, int sounds)
{
    const Folder folder(sounds);
    const std::string what = std::to_string(sounds) + " sounds: ";
    const int rounds = sounds > 10000 ? 3 : 9;
    clsWavListModel model;
    const WavSource source{L"mine", folder.path()};
    const double bare = medianMs(rounds, [&] { enumerate(folder.path()); });
    const double listed = medianMs(rounds, [&] { model.fill(source, SoundKind::wav, {}); });
    report.row(what + "bare enumeration", bare);
    report.rowWithAim(what + "listed and sorted", listed, 1.5 * bare);
    report.row(what + "sorted by size",
               medianMs(rounds, [&] { model.sortBy(clsWavListModel::Column::size); }), bare);
    report.row(what + "found by three letters", medianMs(rounds, [&] { model.find(L"art"); }),
               bare);
    model.find(L"");
    report.bytes(what + "memory of the rows", model.rows().memory(),
                 static_cast<unsigned long long>(sounds) * (sizeof(void*) == 4 ? 250 : 400));
    report.note(what + std::to_string(model.count()) + " listed");
}

} // namespace

BENCH("wav list")
{
    for (const int sounds : kSounds)
        measure(report, sounds);
}
