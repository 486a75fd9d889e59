#pragma once
// The descriptive record of a sound file.
#include <array>
#include <string>
#include <string_view>

namespace velora {

struct JetTable;

/// A field that is not known is empty.
struct Description {
    std::wstring fileName = {}; ///< without its folder; the key, in any case
    std::wstring title = {}, artist = {}, album = {}, year = {}, comments = {}, genre = {};
    std::wstring compression = {};
    bool operator==(const Description&) const = default;
};

struct DescriptionField {
    const wchar_t* name; ///< in the database and on the screen
    std::size_t size;    ///< UTF-16 units
    std::wstring Description::*value;
};
inline constexpr std::array<DescriptionField, 8> kDescriptionFields = {{
    {L"Filename", 255, &Description::fileName},
    {L"Title", 255, &Description::title},
    {L"Artist", 255, &Description::artist},
    {L"Album", 255, &Description::album},
    {L"Year", 4, &Description::year},
    {L"Comments", 255, &Description::comments},
    {L"Genre", 100, &Description::genre},
    {L"Compression Type", 100, &Description::compression},
}};

/// The table of a category: the eight fields, and the primary index on the file name.
JetTable categoryTable(std::wstring_view name);
/// The engine's own tables are no categories.
bool isCategory(std::wstring_view tableName);

/// What fits into so many UTF-16 units; never half a character.
std::wstring cutToSize(std::wstring_view text, std::size_t units);
/// All fields cut to their sizes.
Description cutToSizes(const Description& description);
/// True when a field holds the term, in any case. Every description holds the empty one.
bool holdsTerm(const Description& description, std::wstring_view term);

/// What the tag of a sound file says of it.
Description descriptionFromTag(const std::wstring& path, std::wstring_view fileName);

} // namespace velora
