#pragma once
// A reply's HTML as a reader sees it, for previews: the few tags that matter are applied, the rest
// is left out. Pure.
#include "chat/modFadeRuns.h"

namespace velora {

/// Font colours, <B>, <I>, <U>, line breaks and block quotes are applied, entities read. Other tags
/// leave nothing; a "<" that begins no tag is text.
std::vector<FadeRun> quoteRuns(std::wstring_view html);

} // namespace velora
