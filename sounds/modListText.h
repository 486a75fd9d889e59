#pragma once
// A sound list for the eyes of others: as HTML in a mail, and as a text file.
#include "sounds/WavDescriptions.h"

namespace velora {

struct ListedSound {
    std::wstring name;
    std::wstring size; ///< as the list shows it
    std::optional<WavDescription> description;
};

/// What AOL takes in one mail.
inline constexpr std::size_t kLongestListMail = 29000;

struct ListMail {
    std::wstring html;
    std::size_t sounds; ///< of the list, how many found room in it
};
/// The list as a mail's text. What would make it longer than `limit` is left out, whole sounds at a
/// time.
ListMail listMail(std::wstring_view listName, const std::vector<ListedSound>& sounds,
                  std::size_t limit = kLongestListMail);

/// One block of lines for each sound.
std::wstring listText(std::wstring_view listName, const std::vector<ListedSound>& sounds);

} // namespace velora
