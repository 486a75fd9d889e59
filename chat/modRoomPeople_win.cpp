#include "chat/modRoomPeople.h"

#include "base/text.h"
#include "base/trap.h"
#include "core/modAOL.h"
#include "core/modFindChild.h"
#include "core/modScreenNames.h"
#include "hook/aolSend.h"

#include <algorithm>

namespace velora {
namespace {

constexpr char kModule[] = "modRoomPeople";
constexpr LRESULT kMostPeople = 200, kLongestEntry = 250;

std::wstring entryText(HWND list, LRESULT index)
{
    const auto at = static_cast<WPARAM>(index);
    const auto length = sendToAol(list, LB_GETTEXTLEN, at, 0);
    if (!length || *length <= 0 || *length > kLongestEntry)
        return {};
    // Roomier than the entry was, in case another has taken its place meanwhile.
    std::wstring text(static_cast<std::size_t>(4 * kLongestEntry), L'\0');
    const auto copied = sendToAol(list, LB_GETTEXT, at, reinterpret_cast<LPARAM>(text.data()));
    if (!copied || *copied <= 0)
        return {};
    text.resize(wcsnlen(text.data(), text.size()));
    return trim(text);
}

} // namespace

std::vector<std::wstring> peopleInRoom(HWND room)
{
    return trap(
        kModule,
        [&] {
            std::vector<std::wstring> people;
            const HWND list = FindChildByClass(room, L"_AOL_Listbox");
            if (!isAolWindow(list))
                return people;
            const LRESULT count = sendToAol(list, LB_GETCOUNT, 0, 0).value_or(0);
            for (LRESULT i = 0; i < std::min(count, kMostPeople); ++i)
                if (const std::wstring name = entryText(list, i); IsScreenName(name))
                    people.push_back(name);
            return people;
        },
        std::vector<std::wstring>());
}

} // namespace velora
