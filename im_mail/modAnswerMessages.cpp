#include "im_mail/modAnswerMessages.h"

#include "base/clsFileOp.h"
#include "base/files.h"
#include "base/safename.h"
#include "base/text.h"
#include "base/trap.h"
#include "im_mail/modAnswerRules.h"

#include <algorithm>

namespace velora {
namespace {

constexpr std::wstring_view kEnding = L".dat";
constexpr std::size_t kMostListed = 2000;

int hexDigit(wchar_t c)
{
    return c >= L'0' && c <= L'9' ? c - L'0' : c >= L'A' && c <= L'F' ? c - L'A' + 10 : -1;
}

/// The name that safeFileName wrote so; the file's own name when it was put there by hand.
std::wstring titleOf(const std::wstring& stem)
{
    std::wstring title;
    for (std::size_t i = 0; i < stem.size(); ++i) {
        const bool escape = stem[i] == L'%' && i + 2 < stem.size() && hexDigit(stem[i + 1]) >= 0
                            && hexDigit(stem[i + 2]) >= 0;
        if (escape) {
            title += static_cast<wchar_t>(hexDigit(stem[i + 1]) * 16 + hexDigit(stem[i + 2]));
            i += 2;
        } else {
            title += stem[i];
        }
    }
    return safeFileName(title) == stem ? title : stem;
}

void write(const std::wstring& path, std::wstring_view text)
{
    if (!clsFileOp::WriteTextToFile(path, text))
        throw Error("the message cannot be written");
}

} // namespace

std::wstring clsAnswerMessages::folderOf(AnswerKind kind) const
{
    return joinPath(joinPath(folder_, L"im"),
                    kind == AnswerKind::general ? L"general" : L"personalized");
}

std::wstring clsAnswerMessages::pathOf(AnswerKind kind, std::wstring_view title) const
{
    const std::wstring folder = folderOf(kind);
    if (kind == AnswerKind::personalised)
        return joinPath(folder, personalisedFileName(title));
    const std::wstring path = joinPath(folder, safeFileName(title) + std::wstring(kEnding));
    const std::wstring asItIs = std::wstring(title) + std::wstring(kEnding);
    if (!fileExists(path) && isPlainFileName(asItIs) && fileExists(joinPath(folder, asItIs)))
        return joinPath(folder, asItIs);
    return path;
}

std::vector<std::wstring> clsAnswerMessages::titles(AnswerKind kind) const
{
    std::vector<std::wstring> found;
    if (!folderExists(folderOf(kind)))
        return found;
    for (const FileEntry& entry : listFolder(folderOf(kind), L"*.dat"))
        if (!entry.folder && found.size() < kMostListed)
            found.push_back(titleOf(entry.name.substr(0, entry.name.size() - kEnding.size())));
    std::sort(found.begin(), found.end(),
              [](const std::wstring& a, const std::wstring& b) { return lower(a) < lower(b); });
    return found;
}

bool clsAnswerMessages::exists(AnswerKind kind, std::wstring_view title) const
{
    return fileExists(pathOf(kind, title));
}

std::optional<std::wstring> clsAnswerMessages::read(AnswerKind kind, std::wstring_view title) const
{
    const std::wstring path = pathOf(kind, title);
    if (!fileExists(path))
        return std::nullopt;
    return clsFileOp::ReadTextFromFile(path);
}

void clsAnswerMessages::save(AnswerKind kind, std::wstring_view title, std::wstring_view text) const
{
    makeFolder(folderOf(kind));
    write(pathOf(kind, title), text);
}

bool clsAnswerMessages::rename(AnswerKind kind, std::wstring_view from, std::wstring_view to) const
{
    const std::wstring former = pathOf(kind, from), wanted = pathOf(kind, to);
    if (former == wanted)
        return true;
    // A title that differs by case alone is the same file.
    const bool same = equalNoCase(former, wanted);
    if (!same && fileExists(wanted))
        return false;
    write(wanted, clsFileOp::ReadTextFromFile(former));
    if (!same)
        deleteFile(former);
    return true;
}

void clsAnswerMessages::remove(AnswerKind kind, std::wstring_view title) const
{
    deleteFile(pathOf(kind, title));
}

std::wstring clsAnswerMessages::defaultText() const
{
    return clsFileOp::ReadTextFromFile(joinPath(folder_, L"msg1.dat"));
}

void clsAnswerMessages::saveDefault(std::wstring_view text) const
{
    makeFolder(folder_);
    write(joinPath(folder_, L"msg1.dat"), text);
}

std::vector<std::wstring> clsAnswerMessages::exceptions() const
{
    std::vector<std::wstring> names;
    const std::wstring path = joinPath(joinPath(folder_, L"im"), L"exceptions.dat");
    for (const std::wstring& line : splitLines(clsFileOp::ReadTextFromFile(path)))
        if (!screenNameKey(line).empty())
            names.push_back(trim(line));
    return names;
}

bool clsAnswerMessages::inExceptions(std::wstring_view screenName) const
{
    const std::wstring key = screenNameKey(screenName);
    const auto names = exceptions();
    return !key.empty() && std::any_of(names.begin(), names.end(), [&](const std::wstring& name) {
        return screenNameKey(name) == key;
    });
}

bool clsAnswerMessages::addException(std::wstring_view screenName) const
{
    std::wstring name = trim(screenName.substr(0, kMostTitle));
    std::erase_if(name, [](wchar_t c) { return static_cast<unsigned>(c) < 0x20; });
    if (screenNameKey(name).empty() || inExceptions(name))
        return false;
    auto names = exceptions();
    names.push_back(name);
    writeExceptions(names);
    return true;
}

void clsAnswerMessages::removeException(std::wstring_view screenName) const
{
    auto names = exceptions();
    const std::wstring key = screenNameKey(screenName);
    if (std::erase_if(names, [&](const std::wstring& name) { return screenNameKey(name) == key; }))
        writeExceptions(names);
}

void clsAnswerMessages::writeExceptions(const std::vector<std::wstring>& names) const
{
    std::wstring text;
    for (const std::wstring& name : names)
        text += name + L"\r\n";
    const std::wstring folder = joinPath(folder_, L"im");
    makeFolder(folder);
    replaceFileKeepingCopies(joinPath(folder, L"exceptions.dat"), encodeFileText(text));
}

} // namespace velora
