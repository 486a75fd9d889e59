#include "sounds/modCategories.h"

#include "base/files.h"
#include "base/safename.h"
#include "base/text.h"
#include "settings/Options.h"

#include <algorithm>

namespace velora {
namespace {

constexpr wchar_t kSection[] = L"Categories";
constexpr std::wstring_view kGroup = L"group:";
constexpr std::wstring_view kOwnNames[] = {L"favwavs", L"aol directory", L"aol sounds"};
constexpr std::size_t kLongestName = 100;

bool isOwnName(std::wstring_view name)
{
    return std::find(std::begin(kOwnNames), std::end(kOwnNames), lower(name))
           != std::end(kOwnNames);
}

} // namespace

std::optional<WavCategory> parseCategory(std::wstring_view name, std::wstring_view data)
{
    if (trimView(name).empty() || isOwnName(name))
        return std::nullopt;
    WavCategory category{std::wstring(name), {}, {}};
    if (startsWithNoCase(data, kGroup)) {
        category.group = trim(data.substr(kGroup.size()));
        return category.group.empty() ? std::nullopt : std::optional(category);
    }
    category.folder = data;
    while (category.folder.size() > 3 && category.folder.ends_with(L'\\'))
        category.folder.pop_back();
    if (category.folder.empty() && !equalNoCase(name, L"windows directory"))
        return std::nullopt;
    return category;
}

std::wstring categoryData(const WavCategory& category)
{
    return category.isGroup() ? std::wstring(kGroup) + category.group : category.folder;
}

std::wstring groupFile(const std::wstring& programFolder, std::wstring_view group)
{
    return joinPath(joinPath(joinPath(programFolder, L"data"), L"wav groups"),
                    safeFileName(group) + L".dat");
}

std::vector<WavCategory> loadCategories(const std::wstring& windowsFolder)
{
    std::vector<WavCategory> categories;
    for (const auto& [name, value] : settingValues(kSection))
        if (const auto* const data = std::get_if<std::wstring>(&value))
            if (std::optional<WavCategory> category = parseCategory(name, *data)) {
                if (category->folder.empty() && !category->isGroup())
                    category->folder = windowsFolder;
                categories.push_back(std::move(*category));
            }
    std::sort(categories.begin(), categories.end(),
              [](const auto& a, const auto& b) { return lower(a.name) < lower(b.name); });
    return categories;
}

std::wstring categoryNameFault(std::wstring_view name, const std::vector<WavCategory>& present,
                               std::wstring_view former)
{
    if (name.size() > kLongestName
        || std::any_of(name.begin(), name.end(), [](wchar_t c) { return c < L' '; }))
        return L"~B~CRThis cannot be the name of a Category!~B~CN~N ~NPlease choose another name "
               L"of at most 100 characters.";
    const bool taken =
        isOwnName(name) || std::any_of(present.begin(), present.end(), [&](const auto& other) {
            return equalNoCase(other.name, name) && !equalNoCase(other.name, former);
        });
    return taken ? L"~B~CRCategory name already exists!~B~CN~N ~NPlease choose another name for "
                   L"this Category."
                 : L"";
}

std::wstring freeGroupName(std::wstring_view name, const std::vector<WavCategory>& present)
{
    std::wstring group(name);
    for (int number = 2; std::any_of(
             present.begin(), present.end(),
             [&](const auto& other) { return other.isGroup() && equalNoCase(other.group, group); });
         ++number)
        group = std::wstring(name) + L" " + std::to_wstring(number);
    return group;
}

void saveCategory(const WavCategory& category)
{
    writeSetting(kSection, category.name, categoryData(category));
}

void renameCategory(const WavCategory& category, const std::wstring& newName)
{
    if (newName == category.name)
        return;
    WavCategory renamed = category;
    renamed.name = newName;
    // In another case it is the same value of the registry: the former name must go first.
    if (equalNoCase(newName, category.name)) {
        deleteCategory(category);
        saveCategory(renamed);
        return;
    }
    saveCategory(renamed);
    deleteCategory(category);
}

void deleteCategory(const WavCategory& category)
{
    deleteSetting(kSection, category.name);
}

} // namespace velora
