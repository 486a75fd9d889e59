#include "sounds/modDescription.h"

#include "base/text.h"
#include "jet/clsJetDatabase.h"
#include "sounds/clsMP3.h"

#include <algorithm>

namespace velora {
namespace {

/// A field of fixed width without its padding.
std::wstring cleaned(const std::wstring& field)
{
    return trim(field.substr(0, field.find(L'\0')));
}

} // namespace

JetTable categoryTable(std::wstring_view name)
{
    JetTable table;
    table.name = name;
    for (const DescriptionField& field : kDescriptionFields)
        table.fields.push_back({field.name, kJetText, static_cast<int>(field.size)});
    table.indexes = {{L"PrimaryKey", {kDescriptionFields.front().name}, true, true}};
    return table;
}

bool isCategory(std::wstring_view tableName)
{
    return !startsWithNoCase(tableName, L"MSys");
}

std::wstring cutToSize(std::wstring_view text, std::size_t units)
{
    if (2 * text.size() <= units) // however wide its characters are
        return std::wstring(text);
    std::string bytes = toUtf16le(text);
    if (bytes.size() <= 2 * units)
        return std::wstring(text);
    bytes.resize(2 * units);
    if (!bytes.empty() && (bytes.back() & 0xFC) == 0xD8) // the first half of a character
        bytes.resize(bytes.size() - 2);
    return fromUtf16le(bytes);
}

Description cutToSizes(const Description& description)
{
    Description cut;
    for (const DescriptionField& field : kDescriptionFields)
        cut.*field.value = cutToSize(description.*field.value, field.size);
    return cut;
}

bool holdsTerm(const Description& description, std::wstring_view term)
{
    const std::wstring wanted = lower(term);
    return std::any_of(
        kDescriptionFields.begin(), kDescriptionFields.end(), [&](const auto& field) {
            return lower(description.*field.value).find(wanted) != std::wstring::npos;
        });
}

Description descriptionFromTag(const std::wstring& path, std::wstring_view fileName)
{
    clsMP3 tag;
    tag.GetTag(path);
    Description found;
    found.fileName = fileName;
    found.title = cleaned(tag.Title());
    found.artist = cleaned(tag.Artist());
    found.album = cleaned(tag.Album());
    found.year = cleaned(tag.Year());
    found.comments = cleaned(tag.Comments());
    // A blank tag counts its genre from 0 as well: that says nothing of the sound.
    const bool blank =
        (found.title + found.artist + found.album + found.year + found.comments).empty();
    if (tag.Genre() != 0 || !blank)
        found.genre = clsMP3::GetGenreString(tag.Genre());
    return found;
}

} // namespace velora
