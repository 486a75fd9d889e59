#include "chat/modEditorLists.h"

#include "base/files.h"
#include "base/text.h"
#include "base/trap.h"
#include "settings/Options.h"

#include <algorithm>

namespace velora {
namespace {

constexpr char kModule[] = "modEditorLists";
constexpr wchar_t kCommands[] = L"Commands";
constexpr wchar_t kAliases[] = L"ChatAlias";
constexpr std::wstring_view kMarker = L"{%}";
constexpr std::size_t kLongest = 200;

constexpr const wchar_t* kHugStyles[] = {
    L"{{{{{{{{{{{{{{{{{{{{ {%} }}}}}}}}}}}}}}}}}}}}",
    L"((((((((((  {%}  ))))))))))",
    L"[[[[[ {%} ]]]]]",
    L"~*~*~ {{{ {%} }}} ~*~*~",
};
constexpr const wchar_t* kGlintuneStyles[] = {
    L"- \u2013 \u2014\u2022\u00A4\u2022{%}\u2022\u00A4\u2022\u2014 \u2013 -",
    L"\u00B7.\u00B8\u00B8.\u00B7 {%} \u00B7.\u00B8\u00B8.\u00B7",
    L"\u00AB\u00AB\u00AB {%} \u00BB\u00BB\u00BB",
    L"=-=-= {%} =-=-=",
};

const wchar_t* sectionOf(EditorList list)
{
    return list == EditorList::Commands ? kCommands : kAliases;
}

bool isStyleList(EditorList list)
{
    return list == EditorList::Hugs || list == EditorList::Glintunes;
}

std::wstring fileOf(EditorList list, const std::wstring& folder)
{
    return joinPath(joinPath(folder, L"styles"),
                    list == EditorList::Hugs ? L"hugs.dat" : L"glintune.dat");
}

std::wstring keyOf(EditorList list, std::wstring_view name)
{
    return list == EditorList::Aliases ? screenNameKey(name) : trim(name);
}

std::vector<EditorEntry> loadStyles(EditorList list, const std::wstring& folder)
{
    std::vector<EditorEntry> entries;
    if (const auto bytes = readFile(fileOf(list, folder), 1u << 20)) {
        for (const std::wstring& line : splitLines(decodeFileText(*bytes)))
            if (!trimView(line).empty())
                entries.push_back({{}, line.substr(0, kLongest)});
        return entries;
    }
    const auto add = [&](const auto& styles) {
        for (const wchar_t* style : styles)
            entries.push_back({{}, style});
    };
    if (list == EditorList::Hugs)
        add(kHugStyles);
    else
        add(kGlintuneStyles);
    return entries;
}

} // namespace

std::vector<EditorEntry> loadEditorList(EditorList list, const std::wstring& folder)
{
    return trap(
        kModule,
        [&] {
            if (isStyleList(list))
                return loadStyles(list, folder);
            std::vector<EditorEntry> entries;
            for (const auto& [name, value] : settingValues(sectionOf(list)))
                if (!name.empty())
                    entries.push_back({name, textOf(value)});
            std::sort(entries.begin(), entries.end(),
                      [](const auto& a, const auto& b) { return lower(a.name) < lower(b.name); });
            return entries;
        },
        std::vector<EditorEntry>());
}

void saveEditorList(EditorList list, const std::wstring& folder,
                    const std::vector<EditorEntry>& entries)
{
    if (isStyleList(list)) {
        std::wstring text;
        for (const EditorEntry& entry : entries)
            text += entry.text + L"\r\n";
        makeFolder(joinPath(folder, L"styles"));
        replaceFileKeepingCopies(fileOf(list, folder), encodeFileText(text));
        return;
    }
    const std::wstring section = sectionOf(list);
    const auto former = settingValues(section);
    for (const EditorEntry& entry : entries)
        writeSetting(section, keyOf(list, entry.name), entry.text);
    for (const auto& [name, value] : former) {
        const bool kept = std::any_of(entries.begin(), entries.end(),
                                      [&list, &name = name](const EditorEntry& entry) {
                                          return equalNoCase(keyOf(list, entry.name), name);
                                      });
        if (!kept)
            deleteSetting(section, name);
    }
}

std::wstring entryFault(EditorList list, const EditorEntry& entry)
{
    if (trimView(entry.text).empty() || (!isStyleList(list) && trimView(entry.name).empty()))
        return L"Please fill in both fields.";
    if (entry.text.size() > kLongest || entry.name.size() > kLongest)
        return L"This text is too long.";
    if (isStyleList(list) && entry.text.find(kMarker) == std::wstring::npos)
        return L"A style needs {%} where the name or the sound goes.";
    if (isStyleList(list) && entry.text.find_first_of(L"\r\n") != std::wstring::npos)
        return L"A style is a single line.";
    if (list == EditorList::Commands && entry.name.find_first_of(L"/: ") != std::wstring::npos)
        return L"A command is a single word without \"/\" and \":\".";
    return {};
}

std::wstring CheckForAlias(const std::wstring& screenName)
{
    return trap(
        kModule,
        [&] {
            const std::wstring key = screenNameKey(screenName);
            const std::wstring alias =
                key.empty() ? std::wstring() : readSetting(kAliases, key, L"");
            return trimView(alias).empty() ? screenName : trim(alias);
        },
        screenName);
}

std::wstring commandTarget(const std::wstring& word)
{
    return trap(
        kModule,
        [&] {
            const std::wstring target = without(readSetting(kCommands, word, L""), L' ');
            return target.empty() ? word : target;
        },
        word);
}

std::wstring hugText(std::wstring_view style, std::wstring_view name)
{
    if (style.find(kMarker) == style.npos)
        return std::wstring(style) + L" " + std::wstring(name);
    return replaceAll(style, kMarker, name);
}

} // namespace velora
