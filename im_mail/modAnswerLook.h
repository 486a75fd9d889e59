#pragma once
// How AOL will show an answer message, and the markup that the editor inserts. Pure.
#include <string>
#include <string_view>
#include <vector>

namespace velora {

struct LookRun {
    std::wstring text;
    bool bold = false, italic = false, underline = false, link = false;
    bool operator==(const LookRun&) const = default;
};
/// The runs of a message: B, I, U, A, BR and P count, other tags are left out; what is no tag shows
/// as it is.
std::vector<LookRun> answerLook(std::wstring_view html);

/// A link around a text: "<a href=ADDRESS>text</a>", quoted when the address needs it. The address
/// itself as text when there is none. Empty without an address.
std::wstring hyperlink(std::wstring_view address, std::wstring_view text);

} // namespace velora
