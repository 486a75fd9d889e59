#include "im_mail/modTempIgnore.h"

#include "base/trap.h"
#include "core/modAOL.h"
#include "core/modFindChild.h"
#include "hook/aolSend.h"
#include "im_mail/modIMRules.h"
#include "ui/MessageLoop.h"

#include <algorithm>
#include <vector>

namespace velora {
namespace {

constexpr char kModule[] = "modTempIgnore";
constexpr DWORD kWindowMs = 8000; ///< for the send window, and again for the answer
constexpr wchar_t kDocument[] = L"AOL Child";
constexpr wchar_t kModal[] = L"_AOL_Modal";

std::vector<HWND> documents()
{
    std::vector<HWND> found;
    const HWND mdi = AOLMDI();
    while (const HWND next = FindChildByClass(mdi, kDocument, static_cast<int>(found.size()) + 1))
        found.push_back(next);
    return found;
}

std::vector<HWND> modals()
{
    std::vector<HWND> found;
    DWORD process = 0, frameProcess = 0;
    GetWindowThreadProcessId(AOLWindow(), &frameProcess);
    for (HWND next = nullptr; (next = FindWindowExW(nullptr, next, kModal, nullptr)) != nullptr;)
        if (GetWindowThreadProcessId(next, &process) && process == frameProcess)
            found.push_back(next);
    return found;
}

bool contains(const std::vector<HWND>& windows, HWND window)
{
    return std::find(windows.begin(), windows.end(), window) != windows.end();
}

/// The window in which an IM is begun: one recipient field and a text, and its Send icon is built.
bool isSendIm(HWND document)
{
    return FindChildByClass(document, L"_AOL_Edit") && !FindChildByClass(document, L"_AOL_Edit", 2)
           && FindChildByClass(document, L"RICHCNTL")
           && FindChildByClass(document, L"_AOL_Icon",
                               sendIconIndex(aol().edition, aol().version) + 1);
}

/// Whether the window itself or a text in it is AOL's answer.
bool saysAnswer(HWND window)
{
    if (isImSwitchAnswer(windowCaption(window)))
        return true;
    for (HWND child = GetWindow(window, GW_CHILD); child; child = GetWindow(child, GW_HWNDNEXT))
        if ((hasClass(child, L"_AOL_Static") || hasClass(child, L"RICHCNTL")
             || hasClass(child, L"RICHCNTLREADONLY"))
            && isImSwitchAnswer(aolText(child, kAolTimerTimeout).value_or(L"")))
            return true;
    return false;
}

/// The first window that is not among the known ones and fits; waits for it (pumps).
template <class Windows, class Fits>
HWND newWindow(Windows&& windows, const std::vector<HWND>& known, Fits&& fits)
{
    HWND found = nullptr;
    waitUntil(
        [&] {
            for (const HWND window : windows())
                if (!contains(known, window) && fits(window))
                    found = window;
            return found != nullptr;
        },
        kWindowMs);
    return found;
}

bool switchIms(const wchar_t* recipient)
{
    const std::vector<HWND> before = documents(), modalsBefore = modals();
    if (!AOL_OpenKeyword(std::wstring(L"aol://9293:") + recipient))
        return false;
    const HWND sendIm = newWindow(documents, before, isSendIm);
    if (!sendIm)
        return false;
    const HWND icon =
        FindChildByClass(sendIm, L"_AOL_Icon", sendIconIndex(aol().edition, aol().version) + 1);
    HWND answer = nullptr;
    if (setAolText(FindChildByClass(sendIm, L"_AOL_Edit"), recipient) && clickAolIcon(icon)) {
        std::vector<HWND> known = before;
        known.insert(known.end(), modalsBefore.begin(), modalsBefore.end());
        known.push_back(sendIm);
        answer = newWindow(
            [] {
                std::vector<HWND> all = modals();
                const std::vector<HWND> more = documents();
                all.insert(all.end(), more.begin(), more.end());
                return all;
            },
            known, saysAnswer);
    }
    if (answer)
        postToAol(answer, WM_CLOSE, 0, 0);
    // The dialog keeps AOL's other windows from being used until it is gone.
    waitUntil([&] { return !answer || !IsWindow(answer); }, kAolTimeout);
    postToAol(sendIm, WM_CLOSE, 0, 0);
    return answer != nullptr;
}

} // namespace

bool TempIgnore(bool off)
{
    static bool running = false;
    if (running)
        return false;
    running = true;
    const bool done = trap(
        kModule, [&] { return RequireAOLOnline() && switchIms(off ? L"$im_off" : L"$im_on"); },
        false);
    running = false;
    return done;
}

} // namespace velora
