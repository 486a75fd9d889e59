#include "sounds/modWavList.h"

#include "base/text.h"

#include <algorithm>

namespace velora {
namespace {

constexpr std::size_t kExtensionLength = 4;
constexpr std::wstring_view kExtensions[] = {L".wav", L".mid", L".mp3"};
constexpr std::wstring_view kAolSystemSounds[] = {L"welcome",  L"IM",     L"goodbye", L"filedone",
                                                  L"gotmail",  L"drop",   L"buddyin", L"buddyout",
                                                  L"inactive", L"gotpics"};

} // namespace

std::wstring_view extensionOf(SoundKind kind)
{
    return kExtensions[static_cast<int>(kind)];
}

std::optional<SoundKind> kindOfFile(std::wstring_view fileName)
{
    if (fileName.size() < kExtensionLength)
        return std::nullopt;
    const std::wstring end = lower(fileName.substr(fileName.size() - kExtensionLength));
    for (const SoundKind kind : {SoundKind::wav, SoundKind::mid, SoundKind::mp3})
        if (end == extensionOf(kind))
            return kind;
    return std::nullopt;
}

std::wstring wavName(std::wstring_view fileName, bool preserveCase)
{
    const std::size_t length =
        fileName.size() > kExtensionLength ? fileName.size() - kExtensionLength : 0;
    const std::wstring_view name = fileName.substr(0, length);
    return preserveCase ? std::wstring(name) : lower(name);
}

bool isAolSystemSound(std::wstring_view name)
{
    return std::find(std::begin(kAolSystemSounds), std::end(kAolSystemSounds), name)
           != std::end(kAolSystemSounds);
}

bool isAolSource(std::wstring_view sourceName)
{
    return equalNoCase(sourceName, L"aol directory") || equalNoCase(sourceName, L"aol sounds");
}

void sortRows(std::vector<SoundRow>& rows)
{
    // The keys are made once: a comparison that lowers both names would do it thousands of times.
    std::vector<std::pair<std::wstring, std::size_t>> keys(rows.size());
    for (std::size_t i = 0; i < rows.size(); ++i)
        keys[i] = {lower(rows[i].name), i};
    std::sort(keys.begin(), keys.end());
    std::vector<SoundRow> sorted;
    sorted.reserve(rows.size());
    for (const auto& [key, index] : keys)
        sorted.push_back(std::move(rows[index]));
    rows = std::move(sorted);
}

std::vector<std::size_t> quickFind(const std::vector<SoundRow>& rows, std::wstring_view typed)
{
    std::vector<std::wstring> words = split(lower(typed), L' ');
    std::erase(words, std::wstring());
    std::vector<std::size_t> found;
    for (std::size_t i = 0; i < rows.size(); ++i) {
        const std::wstring name = lower(rows[i].name);
        if (std::all_of(words.begin(), words.end(), [&](const std::wstring& word) {
                return name.find(word) != std::wstring::npos;
            }))
            found.push_back(i);
    }
    return found;
}

} // namespace velora
