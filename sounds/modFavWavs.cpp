#include "sounds/modFavWavs.h"

#include "base/files.h"
#include "base/text.h"
#include "base/trap.h"

#include <algorithm>
#include <set>

namespace velora {
namespace {

constexpr char kModule[] = "modFavWavs";
constexpr std::uint64_t kLargestList = 16u << 20;

std::optional<SoundKind> kindInPath(std::wstring_view path)
{
    const std::wstring lowered = lower(path);
    for (const SoundKind kind : {SoundKind::wav, SoundKind::mid, SoundKind::mp3})
        if (lowered.find(extensionOf(kind)) != std::wstring::npos)
            return kind;
    return std::nullopt;
}

bool fitsLine(std::wstring_view field)
{
    return !field.empty()
           && std::none_of(field.begin(), field.end(), [](wchar_t c) { return c < L' '; });
}

/// The path of a list line; absent for a line without a TAB.
std::optional<std::wstring_view> pathOfLine(std::wstring_view line)
{
    const std::size_t tab = line.find(L'\t');
    if (tab == std::wstring_view::npos)
        return std::nullopt;
    return line.substr(tab + 1);
}

/// The text of a list file that is about to be edited: empty when there is none yet, absent when it
/// is there and cannot be read (writing would then lose it).
std::optional<std::wstring> textToEdit(const std::wstring& listFile)
{
    if (!fileExists(listFile))
        return std::wstring();
    const std::optional<std::string> bytes = readFile(listFile, kLargestList);
    if (!bytes)
        return std::nullopt;
    return decodeFileText(*bytes);
}

/// The text without the lines whose path, in lower case, is one of these.
std::wstring withoutPaths(std::wstring_view text, const std::set<std::wstring>& paths)
{
    std::wstring out;
    for (std::size_t at = 0; at < text.size();) {
        std::size_t end = std::min(text.find_first_of(L"\r\n", at), text.size());
        const std::optional<std::wstring_view> path = pathOfLine(text.substr(at, end - at));
        end += text.substr(end).starts_with(L"\r\n") ? 2 : end < text.size() ? 1 : 0;
        if (!path || !paths.contains(lower(*path)))
            out.append(text.substr(at, end - at));
        at = end;
    }
    return out;
}

} // namespace

std::vector<ListEntry> parseListFile(std::wstring_view text, bool preserveCase)
{
    std::vector<ListEntry> entries;
    for (const std::wstring& line : splitLines(text)) {
        const std::optional<std::wstring_view> path = pathOfLine(line);
        if (!path)
            continue;
        const std::wstring name = line.substr(0, line.find(L'\t'));
        entries.push_back(
            {preserveCase ? name : lower(name), std::wstring(*path), kindInPath(*path)});
    }
    return entries;
}

std::optional<std::wstring> addListEntry(std::wstring_view text, std::wstring_view name,
                                         std::wstring_view path)
{
    if (!fitsLine(name) || !fitsLine(path))
        return std::nullopt;
    std::wstring out(text);
    if (!out.empty() && out.back() != L'\n' && out.back() != L'\r')
        out += L"\r\n";
    return out.append(name).append(L"\t").append(path).append(L"\r\n");
}

std::wstring removeListEntry(std::wstring_view text, std::wstring_view path)
{
    return withoutPaths(text, {lower(path)});
}

std::vector<ListEntry> readListFile(const std::wstring& path, bool preserveCase)
{
    return trap(
        kModule,
        [&] {
            const std::optional<std::string> bytes = readFile(path, kLargestList);
            return bytes ? parseListFile(decodeFileText(*bytes), preserveCase)
                         : std::vector<ListEntry>();
        },
        std::vector<ListEntry>());
}

bool AddFavWav(const std::wstring& listFile, std::wstring_view name, std::wstring_view path)
{
    return trap(
        kModule,
        [&] {
            const std::optional<std::wstring> text = textToEdit(listFile);
            if (!text || removeListEntry(*text, path) != *text)
                return false;
            const std::optional<std::wstring> added = addListEntry(*text, name, path);
            if (added)
                replaceFileKeepingCopies(listFile, encodeFileText(*added));
            return added.has_value();
        },
        false);
}

bool DelFavWav(const std::wstring& listFile, std::wstring_view path)
{
    return removeListEntries(listFile, {std::wstring(path)});
}

std::size_t addListEntries(const std::wstring& listFile, const std::vector<std::wstring>& paths)
{
    return trap(
        kModule,
        [&]() -> std::size_t {
            std::optional<std::wstring> text = textToEdit(listFile);
            if (!text)
                return 0;
            std::set<std::wstring> present;
            for (const ListEntry& entry : parseListFile(*text, true))
                present.insert(lower(entry.path));
            std::size_t added = 0;
            for (const std::wstring& path : paths) {
                const std::wstring name = path.substr(path.find_last_of(L"\\/") + 1);
                if (!present.insert(lower(path)).second)
                    continue;
                if (auto more = addListEntry({}, wavName(name, true), path)) {
                    if (!text->empty() && text->back() != L'\n' && text->back() != L'\r')
                        *text += L"\r\n";
                    *text += *more;
                    ++added;
                }
            }
            if (added)
                replaceFileKeepingCopies(listFile, encodeFileText(*text));
            return added;
        },
        std::size_t{0});
}

bool removeListEntries(const std::wstring& listFile, const std::vector<std::wstring>& paths)
{
    return trap(
        kModule,
        [&] {
            const std::optional<std::wstring> text = textToEdit(listFile);
            if (!text)
                return false;
            std::set<std::wstring> gone;
            for (const std::wstring& path : paths)
                gone.insert(lower(path));
            const std::wstring left = withoutPaths(*text, gone);
            if (left == *text)
                return false;
            replaceFileKeepingCopies(listFile, encodeFileText(left));
            return true;
        },
        false);
}

} // namespace velora
