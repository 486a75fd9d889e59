#pragma once
// The display lines of one of AOL's text windows, as they are read inside AOL.
#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace velora {

/// One line of a display as it is shown, without its line end. A soft-wrapped line goes on in the
/// next one; the one blank at which it was broken is dropped.
struct EditLine {
    std::wstring text;
    bool softWrapped = false;
    bool operator==(const EditLine&) const = default;
};

struct EditLines {
    int total = 0; ///< display lines of the window
    int first = 0; ///< number of lines[0], from 0
    std::vector<EditLine> lines;
    bool truncated = false; ///< there was more than fits; ask again from first + lines.size()
};

/// Takes apart what the agent wrote: `count` lines, each a wire::LineHead and its UTF-16 units.
/// Absent when the bytes end early.
std::optional<std::vector<EditLine>> parseLines(std::string_view bytes, std::size_t count);

/// The text with CR LF for each paragraph end, be it CR, LF or CR LF.
std::wstring withCrLf(std::wstring_view text);

} // namespace velora
