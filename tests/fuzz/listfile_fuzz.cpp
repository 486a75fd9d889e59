// List files of favourites and groups: whatever bytes they hold, reading gives entries of whole
// lines, edits change nothing but the line they are about, no entry leads out of the library, and
// rows, finding and what is written about them hold together. Categories read from the settings.
#include "base/text.h"
#include "fuzz/fuzz.h"
#include "sounds/clsSoundRows.h"
#include "sounds/modFavWavs.h"
#include "sounds/modListText.h"
#include "sounds/modWavSources.h"

#include <algorithm>

using namespace velora;
using fuzz::require;

namespace {

void checkRows(const std::vector<ListEntry>& entries)
{
    clsSoundRows rows;
    rows.begin(0);
    std::vector<ListedSound> sounds;
    for (const ListEntry& entry : entries) {
        rows.addEntry(entry.name, entry.path, SoundKind::wav);
        sounds.push_back({entry.name, L"1 KB", std::nullopt});
        if (isLibraryPath(entry.path)) {
            require(entry.path.find(L"..") == std::wstring::npos
                    || entry.path.find(L"/../") == std::wstring::npos);
            require(entry.path.find_first_of(L":*?\"<>|\\") == std::wstring::npos);
            require(kindOfFile(entry.path).has_value());
        }
    }
    const auto order = rows.sortedByName();
    require(order.size() == rows.count());
    for (std::size_t i = 1; i < order.size(); ++i)
        require(rows.lowered(order[i - 1]) <= rows.lowered(order[i]));
    for (const auto row : order)
        require(rows.path(row).ends_with(rows.fileName(row)));
    const PrintedList mail = listMail(L"list", sounds, 2000);
    require(mail.html.size() <= 2000 && mail.html.ends_with(L"</PRE></HTML>"));
    require(std::count(mail.html.begin(), mail.html.end(), L'<')
            == std::count(mail.html.begin(), mail.html.end(), L'>'));
}

void checkCategory(std::wstring_view text)
{
    const std::size_t tab = std::min(text.find(L'\t'), text.size());
    const auto category =
        parseCategory(text.substr(0, tab), text.substr(std::min(tab + 1, text.size())));
    if (!category)
        return;
    if (category->isGroup())
        require(parseCategory(category->name, categoryData(*category)) == category);
    const std::wstring file = groupFile(L"P", category->group);
    require(file.starts_with(L"P/data/wav groups/") && file.ends_with(L".dat"));
    require(file.find_first_of(L"/\\:", 18) == std::wstring::npos);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const std::wstring text = decodeFileText(fuzz::bytesOf(data, size));
    const auto entries = parseListFile(text, true);
    for (const ListEntry& entry : entries) {
        require(entry.name.find_first_of(L"\t\r\n") == std::wstring::npos);
        require(entry.path.find_first_of(L"\r\n") == std::wstring::npos);
    }

    checkRows(entries);
    checkCategory(text);

    const std::wstring path = L"C:\\fuzz\\never there \u263a.wav";
    require(removeListEntry(text, path) == text);
    const auto added = addListEntry(text, L"name", path);
    require(added.has_value());
    const auto more = parseListFile(*added, true);
    require(more.size() == entries.size() + 1);
    require(more.back().name == L"name" && more.back().path == path);
    require(parseListFile(removeListEntry(*added, path), true).size() == entries.size());

    for (const ListEntry& entry : entries) {
        const std::wstring left = removeListEntry(text, entry.path);
        require(left.size() < text.size());
        for (const ListEntry& other : parseListFile(left, true))
            require(!equalNoCase(other.path, entry.path));
        if (entries.size() > 20)
            break;
    }
    return 0;
}
