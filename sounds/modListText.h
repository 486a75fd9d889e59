#pragma once
// A sound list for the eyes of others: as HTML in a mail, and as a text file.
#include "sounds/WavDescriptions.h"
#include "sounds/modPrintedList.h"

namespace velora {

struct ListedSound {
    std::wstring name;
    std::wstring size; ///< as the list shows it
    std::optional<WavDescription> description;
};

/// The list as a mail's text.
PrintedList listMail(std::wstring_view listName, const std::vector<ListedSound>& sounds,
                     std::size_t limit = kLongestMail);

/// One block of lines for each sound.
std::wstring listText(std::wstring_view listName, const std::vector<ListedSound>& sounds);

} // namespace velora
