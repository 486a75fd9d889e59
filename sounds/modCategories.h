#pragma once
// The user's categories: a name for a folder, or for a group of files that the user put together.
// The settings section "Categories" keeps one value for each: its name is the category's, its data
// the folder, or "group:" and the name of the group's list.
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace velora {

struct WavCategory {
    std::wstring name;
    std::wstring folder; ///< no trailing separator; empty for a group
    std::wstring group;  ///< the name of the list; empty for a folder
    bool isGroup() const { return !group.empty(); }
    bool operator==(const WavCategory&) const = default;
};

/// A value of the section; absent when it is no category.
std::optional<WavCategory> parseCategory(std::wstring_view name, std::wstring_view data);
std::wstring categoryData(const WavCategory& category);

/// The list file of a group. It stays in its folder whatever the name holds.
std::wstring groupFile(const std::wstring& programFolder, std::wstring_view group);

/// The categories in the order of their names. Names that the program itself uses for its sources
/// are no categories of the user's; a "Windows Directory" without data is the Windows folder.
std::vector<WavCategory> loadCategories(const std::wstring& windowsFolder);

/// Why a category cannot get this name, as a message with markup; empty when it can. `former`: the
/// name that it has now, which it may keep in another case.
std::wstring categoryNameFault(std::wstring_view name, const std::vector<WavCategory>& present,
                               std::wstring_view former = {});

/// The name of the list for a new group: the group's own, or one with a number when a category
/// (renamed meanwhile) uses that list already.
std::wstring freeGroupName(std::wstring_view name, const std::vector<WavCategory>& present);

/// These throw Error when the settings refuse. A renamed group keeps its list; a deleted one leaves
/// it.
void saveCategory(const WavCategory& category);
void renameCategory(const WavCategory& category, const std::wstring& newName);
void deleteCategory(const WavCategory& category);

} // namespace velora
