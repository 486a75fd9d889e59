#pragma once
// What the wav list asks of the descriptions: what is told of a file, and their windows. The
// program's entry gives it the database; without one no sound has a description.
#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace velora {

/// What is told of one sound file. A field that is not known is empty.
struct WavDescription {
    std::wstring title, artist, album, year, comments, genre;
    std::wstring compression; ///< the file's format ("PCM", ...)
};

/// Every entry may be empty: then that is not on offer, and the wav list leaves it out.
struct WavDescriptions {
    /// The description of a file name ("hello.wav", without its folder, in any case). It is asked
    /// for each row that is drawn, so it must answer at once; it may not pump messages. Absent when
    /// there is none.
    std::function<std::optional<WavDescription>(const std::wstring& fileName)> find;
    /// True while the descriptions' own window is open.
    std::function<bool()> editorOpen;
    /// The categories (tables) of the descriptions, in their order.
    std::function<std::vector<std::wstring>()> categories;
    /// False when it cannot be made (the user has been told).
    std::function<bool(const std::wstring& name)> createCategory;
    /// Edits the description of a file (its full path) in that category, making it when there is
    /// none. Pumps messages. True when it was saved.
    std::function<bool(const std::wstring& path, const std::wstring& category)> edit;
    /// Opens the descriptions' window.
    std::function<void()> open;
    /// Set by the wav list: called when descriptions have changed.
    std::function<void()> changed;
};

/// The one table, filled by the program's entry before any window is opened.
WavDescriptions& wavDescriptions();

/// For whoever changed descriptions: an open wav list shows them then.
void wavDescriptionsChanged();

} // namespace velora
