// List files of favourites and groups: whatever bytes they hold, reading gives entries of whole
// lines, and edits change nothing but the line they are about.
#include "base/text.h"
#include "sounds/modFavWavs.h"

#include <cstdint>
#include <cstdlib>

using namespace velora;

namespace {

void require(bool holds)
{
    if (!holds)
        std::abort();
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const std::wstring text =
        decodeFileText(std::string_view(reinterpret_cast<const char*>(data), size));
    const auto entries = parseListFile(text, true);
    for (const ListEntry& entry : entries) {
        require(entry.name.find_first_of(L"\t\r\n") == std::wstring::npos);
        require(entry.path.find_first_of(L"\r\n") == std::wstring::npos);
    }

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
