#include "core/modAOLRules.h"

#include "base/text.h"
#include "core/modCaptions.h"

#include <algorithm>

namespace velora {

int DetectEdition(const std::function<bool(std::wstring_view)>& exists)
{
    // The order is part of the rule: folders hold markers of more than one edition.
    if (exists(L"aolau.dat"))
        return kAustralia;
    if (exists(L"aolger.dat"))
        return kGermany;
    const bool french = exists(L"aolfr.dat"), british = exists(L"aoluk.dat");
    if (french && british)
        return kCanada;
    if (french)
        return kFrance;
    return british ? kUnitedKingdom : kUnitedStates;
}

int majorVersion(std::wstring_view answer)
{
    const std::wstring_view text = trimView(answer);
    if (text.empty() || text.front() < L'0' || text.front() > L'9')
        return 0;
    return text.front() - L'0';
}

bool isSupportedVersion(int version)
{
    return version >= 3 && version <= 7;
}

std::wstring folderOfAol(std::wstring_view executablePath)
{
    constexpr std::wstring_view kFile = L"\\waol.exe";
    if (executablePath.size() <= kFile.size())
        return {};
    const std::size_t end = executablePath.size() - kFile.size();
    if (!equalNoCase(executablePath.substr(end), kFile))
        return {};
    return std::wstring(executablePath.substr(0, end));
}

bool isHeadCount(std::wstring_view text)
{
    const std::wstring_view digits = trimView(text);
    return !digits.empty() && std::all_of(digits.begin(), digits.end(), [](wchar_t c) {
        return c >= L'0' && c <= L'9';
    });
}

bool isChatRoom(std::wstring_view className, const std::vector<ControlInfo>& children)
{
    const auto holds = [&](std::wstring_view wanted) {
        return std::any_of(children.begin(), children.end(), [&](const ControlInfo& child) {
            return equalNoCase(child.className, wanted);
        });
    };
    if (!holds(L"_AOL_Listbox") || !holds(L"_AOL_Combobox"))
        return false;
    if (equalNoCase(className, L"AOL_CHAT_FORM"))
        return true;
    int looked = 0;
    for (const ControlInfo& child : children) {
        if (!equalNoCase(child.className, L"_AOL_Static"))
            continue;
        if (isHeadCount(child.text))
            return true;
        if (++looked == kMostStatics)
            break;
    }
    return false;
}

IconPress iconPress(int version)
{
    return version >= 6 ? IconPress::enter : IconPress::click;
}

std::wstring_view chatDisplayClass(int version)
{
    return version == 7 ? L"RICHCNTLREADONLY" : L"RICHCNTL";
}

} // namespace velora
