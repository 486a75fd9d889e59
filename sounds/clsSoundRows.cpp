#include "sounds/clsSoundRows.h"

#include "base/files.h"
#include "base/text.h"
#include "sounds/fileFacts.h"
#include "sounds/modWavSources.h"

#include <algorithm>
#include <cwchar>

namespace velora {
namespace {

constexpr std::uint64_t kNotAsked = ~std::uint64_t{0};
constexpr std::size_t kLongest = 0x7FFF; // of any path
constexpr std::size_t kExtensionLength = 4;

/// The first characters as one number: most comparisons need no more.
std::uint64_t firstOf(std::wstring_view text)
{
    std::uint64_t value = 0;
    for (std::size_t i = 0; i < 4; ++i)
        value = value << 16 | (i < text.size() ? static_cast<std::uint16_t>(text[i]) : 0u);
    return value;
}

} // namespace

void clsSoundRows::clear()
{
    *this = clsSoundRows();
}

void clsSoundRows::begin(std::size_t source, std::wstring folder)
{
    source_ = source;
    if (folders_.size() < kNoFolder)
        folders_.push_back(std::move(folder));
}

std::uint32_t clsSoundRows::keep(std::wstring_view text)
{
    const auto place = static_cast<std::uint32_t>(texts_.size());
    texts_ += text;
    for (const wchar_t c : text)
        lowered_ += lowerChar(c);
    return place;
}

void clsSoundRows::addFile(std::wstring_view fileName, SoundKind kind, std::uint64_t bytes)
{
    if (fileName.size() <= kExtensionLength || fileName.size() > kLongest)
        return;
    const std::uint32_t at = keep(fileName);
    rows_.push_back(
        {bytes, at, at, static_cast<std::uint16_t>(fileName.size() - kExtensionLength),
         static_cast<std::uint16_t>(fileName.size()), static_cast<std::uint16_t>(source_),
         static_cast<std::uint16_t>(folders_.size() - 1), static_cast<std::uint16_t>(kind)});
}

void clsSoundRows::addEntry(std::wstring_view name, std::wstring_view path, SoundKind kind)
{
    if (name.size() > kLongest || path.size() > kLongest)
        return;
    const std::uint32_t at = keep(name);
    rows_.push_back({kNotAsked, at, keep(path), static_cast<std::uint16_t>(name.size()),
                     static_cast<std::uint16_t>(path.size()), static_cast<std::uint16_t>(source_),
                     kNoFolder, static_cast<std::uint16_t>(kind)});
}

std::wstring_view clsSoundRows::name(Index row, bool preserveCase) const
{
    const Row& r = rows_[row];
    return std::wstring_view(preserveCase ? texts_ : lowered_).substr(r.name, r.nameLength);
}

std::wstring_view clsSoundRows::lowered(Index row) const
{
    return name(row, false);
}

std::wstring clsSoundRows::path(Index row) const
{
    const Row& r = rows_[row];
    const std::wstring_view text = std::wstring_view(texts_).substr(r.path, r.pathLength);
    return r.folder == kNoFolder ? std::wstring(text) : joinPath(folders_[r.folder], text);
}

std::wstring_view clsSoundRows::fileName(Index row) const
{
    const Row& r = rows_[row];
    const std::wstring_view text = std::wstring_view(texts_).substr(r.path, r.pathLength);
    return text.substr(text.find_last_of(L"\\/") + 1);
}

std::uint64_t clsSoundRows::bytes(Index row) const
{
    const Row& r = rows_[row];
    if (r.bytes == kNotAsked)
        r.bytes = isLibraryPath(path(row)) ? fileBytes(path(row)).value_or(0) : 0;
    return r.bytes;
}

std::size_t clsSoundRows::memory() const
{
    return rows_.capacity() * sizeof(Row)
           + (texts_.capacity() + lowered_.capacity()) * sizeof(wchar_t);
}

std::vector<clsSoundRows::Index> clsSoundRows::sortedByName() const
{
    struct Key {
        std::uint64_t first;
        Index row;
    };
    std::vector<Key> keys(rows_.size());
    for (Index i = 0; i < count(); ++i)
        keys[i] = {firstOf(lowered(i)), i};
    std::sort(keys.begin(), keys.end(), [this](const Key& a, const Key& b) {
        if (a.first != b.first)
            return a.first < b.first;
        const int order = lowered(a.row).compare(lowered(b.row));
        return order != 0 ? order < 0 : a.row < b.row;
    });
    std::vector<Index> sorted(keys.size());
    std::transform(keys.begin(), keys.end(), sorted.begin(),
                   [](const Key& key) { return key.row; });
    return sorted;
}

} // namespace velora
