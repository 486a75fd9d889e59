#include "base/wildcard.h"

namespace velora {

bool wildcardMatch(std::wstring_view pattern, std::wstring_view text)
{
    // Only the last "*" seen can be worth widening, so the time is bounded by the two lengths'
    // product: a caption made to be slow stays harmless.
    constexpr auto none = std::wstring_view::npos;
    std::size_t p = 0, t = 0, star = none, mark = 0;
    while (t < text.size()) {
        if (p < pattern.size() && pattern[p] == L'*') {
            star = p++;
            mark = t;
        } else if (p < pattern.size() && pattern[p] == text[t]) {
            ++p;
            ++t;
        } else if (star != none) {
            p = star + 1;
            t = ++mark;
        } else {
            return false;
        }
    }
    while (p < pattern.size() && pattern[p] == L'*')
        ++p;
    return p == pattern.size();
}

} // namespace velora
