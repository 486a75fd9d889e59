#pragma once
// What must be true of every database file, checked from its pages.
#include "jet/clsJetDatabase.h"

#include <map>
#include <string>
#include <vector>

namespace velora {

/// The first thing found wrong with the file's structure, in words; empty when it is sound. Looks
/// at every page: trees (order, depth, links, separators, prefixes), index against rows both ways,
/// counts, usage maps, and that every page belongs to exactly one owner or is free. `levels` gets
/// the depth of the deepest index.
std::string checkJetFile(JetFiles& files, const std::wstring& path, std::size_t* levels = nullptr);

/// Everything a user sees: table -> records, each the values of all fields.
using JetContent = std::map<std::wstring, std::vector<std::vector<JetValue>>>;
JetContent readJetFile(JetFiles& files, const std::wstring& path);

/// The table that Velora keeps its descriptions in.
JetTable descriptionTable(const std::wstring& name);

} // namespace velora
