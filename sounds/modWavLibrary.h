#pragma once
// The user's library as it is now: AOL's sounds, the favourites and the categories of the settings.
#include "sounds/modWavSources.h"

namespace velora {

/// Reads the categories. A step of start-up; done again after each change of them.
void loadWavCategories();
const std::vector<WavCategory>& wavCategories();

/// All sources, in the order of the source list.
std::vector<WavSource> librarySources();

/// Says which folders and lists have which contents: another text after a change.
std::wstring libraryStamp(const std::vector<WavSource>& sources);

} // namespace velora
