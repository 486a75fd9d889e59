#include "sounds/modDescriptions.h"

#include "core/MsgBoxEx.h"
#include "core/modMain.h"
#include "sounds/WavDescriptions.h"
#include "sounds/frmDescriptions.h"

namespace velora {
namespace {

std::optional<WavDescription> find(const std::wstring& fileName)
{
    clsDatabase& db = wavDatabase();
    if (!db.IsMatch(fileName))
        return std::nullopt;
    const Description& found = db.Record();
    return WavDescription{found.title,    found.artist, found.album,      found.year,
                          found.comments, found.genre,  found.compression};
}

bool edit(const std::wstring& path, const std::wstring& category)
{
    const bool saved = editWavDescription(path, category);
    if (saved)
        wavDescriptionsChanged();
    return saved;
}

} // namespace

clsDatabase& wavDatabase()
{
    static clsDatabase database(AppPath() + L"\\data",
                                {.message = [](const std::wstring& prompt, int style) {
                                    MsgBoxEx(prompt, style, L"Wav Descriptions");
                                }});
    return database;
}

void openWavDatabase()
{
    wavDatabase().Init();
}

void closeWavDatabase()
{
    wavDatabase().forget();
}

void routeDescriptions()
{
    wavDescriptions() = {
        .find = find,
        .editorOpen = [] { return Form::find<frmDescriptions>() != nullptr; },
        .categories = [] { return wavDatabase().GetTables(); },
        .createCategory = makeDescriptionCategory,
        .edit = edit,
        .open = frmDescriptions::openWindow,
        .changed = nullptr,
    };
}

} // namespace velora
