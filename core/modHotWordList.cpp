#include "core/modHotWordList.h"

#include "base/text.h"
#include "settings/Options.h"

#include <algorithm>

namespace velora {
namespace {

constexpr wchar_t kSection[] = L"Chat HotWords";

std::wstring wordOf(const std::wstring& name, const RegValue& value)
{
    const std::wstring text = textOf(value);
    return trimView(text).empty() ? name : text;
}

bool holds(const std::vector<std::wstring>& names, const std::wstring& name)
{
    return std::any_of(names.begin(), names.end(),
                       [&](const std::wstring& known) { return equalNoCase(known, name); });
}

} // namespace

std::vector<std::wstring> hotWords()
{
    std::vector<std::wstring> words;
    for (const auto& [name, value] : settingValues(kSection))
        words.push_back(wordOf(name, value));
    return words;
}

void setHotWords(const std::vector<std::wstring>& words)
{
    std::vector<std::wstring> added = words, names;
    for (const auto& [name, value] : settingValues(kSection)) {
        const auto kept = std::find(added.begin(), added.end(), wordOf(name, value));
        if (kept == added.end()) {
            deleteSetting(kSection, name);
        } else {
            added.erase(kept);
            names.push_back(name);
        }
    }
    for (const std::wstring& word : added) {
        // A value's name is the word itself, unless another word has that name.
        std::wstring name = word;
        for (int number = 2; holds(names, name); ++number)
            name = word + L" " + std::to_wstring(number);
        writeSetting(kSection, name, word);
        names.push_back(name);
    }
}

} // namespace velora
