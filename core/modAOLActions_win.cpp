// Pressing AOL's buttons, running its menu items, and what is done through its windows.
#include "base/product.h"
#include "base/text.h"
#include "base/trap.h"
#include "core/MsgBoxEx.h"
#include "core/modAOL.h"
#include "core/modAOLRules.h"
#include "core/modCaptions.h"
#include "core/modFindChild.h"
#include "core/modScreenNames.h"
#include "hook/AgentLink.h"
#include "ui/MessageLoop.h"

#include <algorithm>

namespace velora {

namespace {

constexpr char kModule[] = "modAOL";
constexpr DWORD kWindowLimit = 10000; ///< for a window that AOL shall open
constexpr DWORD kModalLimit = 5000;
constexpr DWORD kButtonLimit = 3000;
constexpr DWORD kAboutPause = 200;
/// The place of "Write" among the toolbar's icons.
constexpr int kWriteIcon = 2;

BOOL CALLBACK collectModal(HWND window, LPARAM data) noexcept
{
    trap(kModule, [&] {
        if (hasClass(window, L"_AOL_Modal") && isAolWindow(window))
            reinterpret_cast<std::vector<HWND>*>(data)->push_back(window);
    });
    return TRUE;
}

/// A dialog of AOL (a top-level window of its own) for which `matches` holds.
template <class Matches>
HWND findModal(const Matches& matches)
{
    std::vector<HWND> modals;
    EnumWindows(collectModal, reinterpret_cast<LPARAM>(&modals));
    const auto found = std::find_if(modals.begin(), modals.end(), matches);
    return found == modals.end() ? nullptr : *found;
}

std::vector<HWND> childrenTitled(HWND parent, const std::wstring& caption)
{
    std::vector<HWND> found;
    for (int which = 1; const HWND child = FindChildByTitle(parent, caption, which); ++which)
        found.push_back(child);
    return found;
}

/// A child with that caption that isn't among `known`.
HWND newChild(const std::wstring& caption, const std::vector<HWND>& known)
{
    for (const HWND child : childrenTitled(AOLMDI(), caption))
        if (hasClass(child, L"AOL Child")
            && std::find(known.begin(), known.end(), child) == known.end())
            return child;
    return nullptr;
}

HWND attachButton(HWND mail)
{
    const std::wstring caption = attachCaption(aol().edition);
    for (int which = 1; const HWND icon = FindChildByClass(mail, L"_AOL_Icon", which); ++which)
        if (windowCaption(icon).starts_with(caption))
            return icon;
    return nullptr;
}

HWND keywordBox()
{
    const HWND box = FindChildByClass(AOLToolbar(), L"_AOL_Combobox");
    const HWND edit = FindChildByClass(box, L"Edit");
    return edit ? edit : box;
}

} // namespace

bool clickAolIcon(HWND icon)
{
    return trap(
        kModule,
        [&] {
            if (!isAolWindow(icon))
                return false;
            // What the button does may take AOL long or open a dialog: neither way waits for it.
            if (iconPress(aol().version) == IconPress::enter)
                return SendNotifyMessageW(icon, WM_CHAR, VK_RETURN, 0) != 0;
            const LPARAM place = MAKELPARAM(3, 3);
            return postToAol(icon, WM_LBUTTONDOWN, MK_LBUTTON, place)
                   && postToAol(icon, WM_LBUTTONUP, 0, place);
        },
        false);
}

bool RunMenuByString(std::wstring_view caption)
{
    return trap(
        kModule,
        [&] {
            if (!connectAol())
                return false;
            // Only code inside AOL sees AOL's menus.
            const auto id = aolLink().menuFind(caption);
            return id && postToAol(AOLWindow(), WM_COMMAND, *id, 0);
        },
        false);
}

bool AOL_KillCursor()
{
    return trap(
        kModule,
        [] {
            if (!RunMenuByString(aboutMenuCaption(aol().edition, aol().version)))
                return false;
            HWND about = nullptr;
            const auto shown = [&] {
                about = findModal([](HWND window) {
                    return FindChildByClass(window, L"_AOL_Glyph") != nullptr
                           && FindChildByClass(window, L"_AOL_Icon") != nullptr;
                });
                return about != nullptr;
            };
            if (!waitUntil(shown, kModalLimit))
                return false;
            pause(kAboutPause);
            return clickAolIcon(FindChildByClass(about, L"_AOL_Icon"))
                   && waitUntil([&] { return !IsWindow(about); }, kModalLimit);
        },
        false);
}

MailWindow mailFields(HWND window)
{
    MailWindow mail;
    mail.window = window;
    mail.to = FindChildByClass(window, L"_AOL_Edit", 1);
    mail.copy = FindChildByClass(window, L"_AOL_Edit", 2);
    mail.subject = FindChildByClass(window, L"_AOL_Edit", 3);
    mail.body = FindChildByClass(window, L"RICHCNTL");
    return mail;
}

MailWindow AOL_OpenEMail()
{
    return trap(
        kModule,
        [] {
            const std::wstring caption = writeMailCaption(aol().edition);
            const std::vector<HWND> known = childrenTitled(AOLMDI(), caption);
            MailWindow mail;
            if (!clickAolIcon(FindChildByClass(AOLToolbar(), L"_AOL_Icon", kWriteIcon)))
                return mail;
            // The window may stand there for a while before its fields do.
            const auto built = [&] {
                mail = mailFields(newChild(caption, known));
                return mail.to && mail.copy && mail.subject && mail.body;
            };
            if (!waitUntil(built, kWindowLimit))
                mail = {};
            return mail;
        },
        MailWindow{});
}

HWND AOL_OpenAttachments(HWND mail)
{
    return trap(
        kModule,
        [&]() -> HWND {
            const std::wstring name = kProductName;
            // The fields of a mail window may stand there before its buttons do.
            HWND button = nullptr;
            waitUntil([&] { return (button = attachButton(mail)) != nullptr; }, kButtonLimit);
            if (!button || !clickAolIcon(button)) {
                MsgBoxEx(name
                             + L" was unable to click the ~B~CRAttach~B~CN button.~B ~BPlease try "
                               L"this operation again!",
                         kMsgExclamation);
                return nullptr;
            }
            HWND window = nullptr;
            const auto shown = [&] {
                const std::wstring title = attachmentsCaption(aol().edition);
                window =
                    findModal([&](HWND modal) { return windowCaption(modal).starts_with(title); });
                if (!window)
                    window = FindChildByTitle(AOLMDI(), title);
                return window != nullptr;
            };
            if (!waitUntil(shown, kModalLimit))
                MsgBoxEx(name
                             + L" was unable to open the ~B~CRAttachments~B~CN window.~B ~BPlease "
                               L"try this operation again!",
                         kMsgExclamation);
            return window;
        },
        nullptr);
}

bool AOL_OpenKeyword(std::wstring_view keyword)
{
    return trap(
        kModule,
        [&] {
            const HWND box = keywordBox();
            return isAolWindow(box) && setAolText(box, keyword) && pressEnter(box);
        },
        false);
}

HWND AOL_GetProfile(std::wstring_view screenName)
{
    return trap(
        kModule,
        [&]() -> HWND {
            if (!IsScreenName(screenName))
                return nullptr;
            const std::wstring caption = profileCaption(aol().edition);
            const std::vector<HWND> known = childrenTitled(AOLMDI(), caption);
            if (!AOL_OpenKeyword(L"profile:" + std::wstring(screenName)))
                return nullptr;
            HWND profile = nullptr;
            if (!waitUntil([&] { return (profile = newChild(caption, known)) != nullptr; },
                           kWindowLimit))
                return nullptr;
            return profile;
        },
        nullptr);
}

std::optional<SignOnChoice> signOnChoice()
{
    return trap(
        kModule,
        []() -> std::optional<SignOnChoice> {
            HWND window = FindChildByTitle(AOLMDI(), signOnCaption(aol().edition));
            if (!window)
                window = FindChildByTitle(AOLMDI(), signOffCaption(aol().edition, aol().version));
            const HWND list = FindChildByClass(window, L"_AOL_Combobox");
            if (!isAolWindow(list))
                return std::nullopt;
            const auto count = sendToAol(list, CB_GETCOUNT, 0, 0);
            const auto chosen = sendToAol(list, CB_GETCURSEL, 0, 0);
            if (!count || !chosen)
                return std::nullopt;
            return SignOnChoice{static_cast<int>(*chosen), static_cast<int>(*count)};
        },
        std::nullopt);
}

} // namespace velora
