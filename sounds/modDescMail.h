#pragma once
// A category of descriptions as the text of a mail.
#include "sounds/modDescription.h"

#include <vector>

namespace velora {

/// What AOL takes in one mail.
inline constexpr std::size_t kLongestDescriptionMail = 29000;

struct DescriptionMail {
    std::wstring html;
    std::size_t records; ///< of the list, how many found room in it
};
/// What would make it longer than `limit` is left out, whole records at a time.
DescriptionMail descriptionMail(std::wstring_view listName, const std::vector<Description>& records,
                                std::size_t limit = kLongestDescriptionMail);

} // namespace velora
