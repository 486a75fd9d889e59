#pragma once
// Fade scheme files (".fde"): a fade and who made it, as lines of key=value text.
#include "chat/modFade.h"

#include <optional>
#include <string>
#include <string_view>

namespace velora {

struct FadeScheme {
    Fade fade;
    std::wstring Author, DateCreated, Modified, Comments;
    bool operator==(const FadeScheme&) const = default;
};

/// Reads both layouts: the present one ("FadeNumber=", "One=" to "Ten=", "Italic=", "ULine=") and
/// the older ("color0=" and on, "italics=", "underline="). Keys in any case; unknown lines are
/// passed over. The count is clamped to 1 to 10 and colours are cut to 24 bits. Absent when there
/// is no readable count or no colour: such a file is damaged or something else.
std::optional<FadeScheme> parseScheme(std::wstring_view text);

/// The file's text in the present layout, line ends CR LF. Line breaks in values become blanks.
std::wstring renderScheme(const FadeScheme& scheme);

/// What the fade window shows of a scheme, three lines; "Unknown" and "Orv Software" stand in for a
/// missing date and author.
std::wstring schemeTagText(const FadeScheme& scheme);

} // namespace velora
