#include "base/trap.h"
#include "base/win.h"
#include "core/modAOL.h"
#include "core/modMain.h"
#include "sounds/fileFacts.h"
#include "sounds/modWavLibrary.h"

namespace velora {
namespace {

constexpr char kModule[] = "modWavLibrary";

struct Categories {
    bool loaded = false;
    std::vector<WavCategory> list;
};

Categories& categories()
{
    static Categories instance;
    return instance;
}

std::wstring windowsFolder()
{
    wchar_t folder[MAX_PATH] = L"";
    const UINT length = GetWindowsDirectoryW(folder, MAX_PATH);
    return length < MAX_PATH ? folder : L"";
}

} // namespace

void loadWavCategories()
{
    trap(kModule, [] {
        categories().loaded = true;
        categories().list = loadCategories(windowsFolder());
    });
}

const std::vector<WavCategory>& wavCategories()
{
    if (!categories().loaded)
        loadWavCategories();
    return categories().list;
}

std::vector<WavSource> librarySources()
{
    return wavSources(aol().folder, AppPath(), wavCategories());
}

std::wstring libraryStamp(const std::vector<WavSource>& sources)
{
    std::wstring stamp;
    for (const WavSource& source : sources)
        stamp += source.path + L'|' + fileStamp(source.path) + L'\n';
    return stamp;
}

} // namespace velora
