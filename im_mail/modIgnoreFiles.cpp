#include "im_mail/modIgnoreFiles.h"

#include "base/clsFileOp.h"
#include "base/files.h"
#include "base/text.h"
#include "im_mail/modIgnore.h"

#include <algorithm>

namespace velora {
namespace {

constexpr wchar_t kForGood[] = L"ignore.dat";
constexpr wchar_t kForDays[] = L"ignoretemp.dat";

std::wstring read(const std::wstring& folder, const wchar_t* file)
{
    return clsFileOp::ReadTextFromFile(joinPath(folder, file));
}

void write(const std::wstring& folder, const wchar_t* file, const std::wstring& text)
{
    makeFolder(folder);
    replaceFileKeepingCopies(joinPath(folder, file), encodeFileText(text));
}

void appendNames(std::vector<IgnoredName>& names, const std::wstring& list, long today)
{
    for (const std::wstring& line : splitLines(list)) {
        const std::size_t tab = line.find(L'\t');
        const std::wstring name = trim(line.substr(0, tab));
        if (!isIgnored(line, name, today))
            continue;
        const long until =
            tab == line.npos ? 0
                             : std::max(parseLong(trimView(line.substr(tab + 1))).value_or(0), 0L);
        names.push_back({name, until == 0 ? 0 : until - today});
    }
}

} // namespace

std::vector<IgnoredName> ignoredNames(const std::wstring& dataFolder, long today)
{
    std::vector<IgnoredName> names;
    for (const wchar_t* file : {kForGood, kForDays})
        appendNames(names, read(dataFolder, file), today);
    std::stable_sort(names.begin(), names.end(), [](const IgnoredName& a, const IgnoredName& b) {
        return (a.daysLeft != 0) < (b.daysLeft != 0);
    });
    return names;
}

IgnoreResult addIgnored(const std::wstring& dataFolder, std::wstring_view screenName, long days,
                        long today)
{
    std::wstring name = trim(screenName);
    std::erase_if(name, [](wchar_t c) { return static_cast<unsigned>(c) < 0x20; });
    if (screenNameKey(name).empty() || name.size() > kMostIgnoredName)
        return IgnoreResult::noName;
    for (const wchar_t* file : {kForGood, kForDays})
        if (isIgnored(read(dataFolder, file), name, today))
            return IgnoreResult::exists;
    const wchar_t* const file = days <= 0 ? kForGood : kForDays;
    const long until = days <= 0 ? 0 : today + std::min(days, kMostIgnoredDays);
    write(dataFolder, file, withIgnored(read(dataFolder, file), name, today, until));
    return IgnoreResult::added;
}

void removeIgnored(const std::wstring& dataFolder, std::wstring_view screenName)
{
    for (const wchar_t* file : {kForGood, kForDays})
        if (const std::wstring list = read(dataFolder, file); isListed(list, screenName))
            write(dataFolder, file, withoutIgnored(list, screenName));
}

long ignoreDaysOf(std::wstring_view typed)
{
    const std::wstring_view text = trimView(typed);
    if (text.empty())
        return 0;
    const auto days = parseLong(text);
    return days ? std::clamp(*days, 0L, kMostIgnoredDays) : -1;
}

} // namespace velora
