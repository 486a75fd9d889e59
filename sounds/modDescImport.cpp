#include "sounds/modDescImport.h"

#include "base/files.h"
#include "base/text.h"

#include <algorithm>
#include <set>

namespace velora {
namespace {

/// One line's worth of text: what cannot be seen becomes a blank.
std::wstring visible(std::wstring_view text)
{
    std::wstring shown(text);
    std::replace_if(
        shown.begin(), shown.end(), [](wchar_t c) { return c < L' ' || c == 0x7F; }, L' ');
    return trim(shown);
}

} // namespace

OldDescriptions parseOldDescriptions(std::wstring_view text)
{
    OldDescriptions old;
    std::set<std::wstring> known;
    for (const std::wstring& line : splitLines(text)) {
        if (trimView(line).empty())
            continue;
        const auto tab = line.find(L'\t');
        const std::wstring path = visible(line.substr(0, tab));
        Description record;
        record.fileName = trim(path.substr(path.find_last_of(L"\\/") + 1));
        if (tab != line.npos)
            record.comments = visible(std::wstring_view(line).substr(tab + 1));
        record = cutToSizes(record);
        if (record.fileName.empty() || record.comments.empty()
            || !known.insert(lower(record.fileName)).second)
            ++old.skipped;
        else
            old.records.push_back(std::move(record));
    }
    return old;
}

std::vector<std::wstring> oldDescriptionFiles(const std::wstring& dataFolder)
{
    std::vector<std::wstring> paths;
    for (const FileEntry& entry : listFolder(dataFolder, L"*.dat"))
        if (!entry.folder && startsWithNoCase(entry.name, L"desc"))
            paths.push_back(joinPath(dataFolder, entry.name));
    std::sort(paths.begin(), paths.end(),
              [](const std::wstring& a, const std::wstring& b) { return lower(a) < lower(b); });
    return paths;
}

std::wstring importedName(const std::wstring& path)
{
    return path + L".imported";
}

} // namespace velora
