#pragma once
// A category of descriptions as the text of a mail.
#include "sounds/modDescription.h"
#include "sounds/modPrintedList.h"

#include <vector>

namespace velora {

PrintedList descriptionMail(std::wstring_view listName, const std::vector<Description>& records,
                            std::size_t limit = kLongestMail);

} // namespace velora
