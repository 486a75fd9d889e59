#include "base/text.h"
#include "base/trap.h"
#include "chat/modCurrentFade.h"
#include "chat/modRoomText.h"
#include "core/modAOL.h"
#include "core/modFindChild.h"
#include "hook/AgentLink.h"
#include "settings/Options.h"
#include "sounds/modSendSound.h"
#include "sounds/modSoundLine.h"
#include "ui/Form.h"
#include "ui/Timer.h"

#include <algorithm>
#include <list>

namespace velora {
namespace {

constexpr char kModule[] = "modSendSound";
constexpr UINT kDescriptionPause = 1500; // ms

std::wstring faded(std::wstring line)
{
    if (opt::Fader::On.get())
        FadeEngine(line);
    return line;
}

/// The box that is typed in: of an instant message the second, below the conversation.
HWND typingEdit(HWND document)
{
    const HWND first = FindChildByClass(document, L"RICHCNTL");
    const HWND second = FindChildByClass(document, L"RICHCNTL", 2);
    return second ? second : first;
}

/// The edit of a document of AOL that takes sounds; null when it takes none. A mail that is read
/// may be called "Re:" too, but has no fields.
HWND editOf(HWND document)
{
    if (!hasClass(document, L"AOL Child"))
        return nullptr;
    const std::wstring caption = windowCaption(document);
    const bool mail = caption.starts_with(L"Re:") || caption.starts_with(L"Fwd:");
    if (!takesSounds(caption) || (mail && !FindChildByClass(document, L"_AOL_Edit")))
        return nullptr;
    return typingEdit(document);
}

struct HeldSearch {
    HWND owner, edit;
};

BOOL CALLBACK findHeld(HWND window, LPARAM data) noexcept
{
    trap(kModule, [&] {
        auto& wanted = *reinterpret_cast<HeldSearch*>(data);
        if (!wanted.edit && GetWindow(window, GW_OWNER) == wanted.owner && IsWindowVisible(window)
            && isAolWindow(window))
            wanted.edit = typingEdit(FindChildByClass(window, L"AOL Child"));
    });
    return TRUE;
}

/// The box of the instant message that a form of ours holds: it lies in a window of AOL's that the
/// form owns.
HWND heldImEdit(HWND form)
{
    HeldSearch search{form, nullptr};
    EnumWindows(findHeld, reinterpret_cast<LPARAM>(&search));
    return search.edit;
}

/// Whether the first window lies before the second.
bool before(HWND first, HWND second)
{
    for (HWND at = GetTopWindow(nullptr); at; at = GetWindow(at, GW_HWNDNEXT))
        if (at == first || at == second)
            return at == first;
    return false;
}

bool typeInto(HWND edit, const std::wstring& text)
{
    if (connectAol() && aolLink().replaceSelection(edit, text))
        return true;
    const auto present = aolText(edit);
    return present && setAolText(edit, *present + text);
}

/// Of the lines that wait. Those whose time has come are taken out when the next one comes.
std::list<Timer>& waiting()
{
    static auto& timers = *new std::list<Timer>;
    return timers;
}

void sayLater(const std::wstring& line)
{
    std::list<Timer>& timers = waiting();
    timers.remove_if([](const Timer& timer) { return !timer.active(); });
    timers.emplace_back().startOnce(kDescriptionPause, [line] {
        // The user may have left the room meanwhile: that is no reason to trouble him.
        if (AOL_FindChat())
            sayInRoom(line);
    });
}

} // namespace

HWND soundEditInFront()
{
    return trap(
        kModule,
        []() -> HWND {
            for (const Form* const form : Form::all())
                if (IsWindowVisible(form->hwnd()) && !IsIconic(form->hwnd())
                    && before(form->hwnd(), AOLWindow()))
                    if (const HWND edit = heldImEdit(form->hwnd()))
                        return edit;
            const HWND mdi = AOLMDI();
            return mdi ? editOf(GetTopWindow(mdi)) : nullptr;
        },
        nullptr);
}

bool sendSound(const SoundToSend& sound)
{
    return trap(
        kModule,
        [&] {
            const auto look = [&](const std::wstring& line) {
                return sound.plain ? line : faded(line);
            };
            if (const HWND edit = soundEditInFront())
                return typeInto(edit, look(sound.line));
            // A fade that is used up for a room that is not there would be a loss.
            if (!sayInRoom(AOL_FindChat() ? look(sound.line) : sound.line))
                return false;
            if (!sound.description.empty())
                sayLater(look(sound.description));
            return true;
        },
        false);
}

bool descriptionWaits()
{
    return std::any_of(waiting().begin(), waiting().end(),
                       [](const Timer& timer) { return timer.active(); });
}

} // namespace velora
