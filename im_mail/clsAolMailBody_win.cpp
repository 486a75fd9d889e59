#include "im_mail/clsAolMailBody.h"

#include "base/trap.h"
#include "core/clsSavedClipboard.h"
#include "core/modAOL.h"
#include "core/modFindChild.h"
#include "hook/AgentLink.h"

namespace velora {
namespace {

constexpr char kModule[] = "clsAolMailBody";
/// AOL's text boxes take these commands of its Edit menu by themselves.
constexpr WPARAM kCopyCommand = 20002;
constexpr WPARAM kSelectAllCommand = 20005;
/// What a message can answer of a position; a mail holds less.
constexpr LRESULT kNoPositions = -1;

bool isCompose(HWND document)
{
    return FindChildByClass(document, L"_AOL_Edit", 3) && FindChildByClass(document, L"RICHCNTL");
}

/// Owns nothing and is never shown: the clipboard wants a window.
class ClipboardWindow {
public:
    ClipboardWindow()
        : window_(CreateWindowExW(0, L"Static", L"", 0, 0, 0, 0, 0, HWND_MESSAGE, nullptr, nullptr,
                                  nullptr))
    {
    }
    ~ClipboardWindow() { DestroyWindow(window_); }
    ClipboardWindow(const ClipboardWindow&) = delete;
    ClipboardWindow& operator=(const ClipboardWindow&) = delete;
    HWND hwnd() const { return window_; }

private:
    HWND window_;
};

} // namespace

std::optional<std::wstring> copiedSelection(HWND box)
{
    return trap(
        kModule,
        [&]() -> std::optional<std::wstring> {
            const ClipboardWindow owner;
            SavedClipboard saved(owner.hwnd());
            const DWORD before = GetClipboardSequenceNumber();
            if (!sendToAol(box, WM_COMMAND, kCopyCommand, 0))
                return std::nullopt;
            if (GetClipboardSequenceNumber() == before)
                return std::wstring();
            DWORD process = 0;
            GetWindowThreadProcessId(box, &process);
            return saved.exchange(owner.hwnd(), process);
        },
        std::nullopt);
}

std::optional<std::wstring> AolMailBody::text()
{
    if (auto read = aolLink().readText(body_))
        return read;
    if (const auto asked = aolText(body_))
        return withCrLf(*asked);
    return std::nullopt;
}

std::optional<TextRange> AolMailBody::selection()
{
    const auto range = sendToAol(body_, EM_GETSEL, 0, 0);
    if (!range || *range == kNoPositions)
        return std::nullopt;
    return TextRange{LOWORD(*range), HIWORD(*range)};
}

std::optional<std::wstring> AolMailBody::selectedText()
{
    if (auto read = aolLink().selectionText(body_))
        return read;
    return copiedSelection(body_);
}

bool AolMailBody::select(TextRange range)
{
    return aolLink().select(body_, range.from, range.to)
           || sendToAol(body_, EM_SETSEL, static_cast<WPARAM>(range.from), range.to).has_value();
}

bool AolMailBody::selectAll()
{
    return sendToAol(body_, WM_COMMAND, kSelectAllCommand, 0).has_value();
}

bool AolMailBody::replaceSelection(std::wstring_view text)
{
    return aolLink().replaceSelection(body_, text)
           || sendToAol(body_, EM_REPLACESEL, TRUE,
                        reinterpret_cast<LPARAM>(std::wstring(text).c_str()))
                  .has_value();
}

bool AolMailBody::undo()
{
    const auto undone = sendToAol(body_, EM_UNDO, 0, 0);
    return undone && *undone;
}

std::vector<HWND> documentsByOrder()
{
    std::vector<HWND> documents;
    const HWND mdi = AOLMDI();
    const auto active = sendToAol(mdi, WM_MDIGETACTIVE, 0, 0);
    const HWND front = active ? reinterpret_cast<HWND>(*active) : nullptr;
    if (front)
        documents.push_back(front);
    for (int which = 1; const HWND child = FindChildByClass(mdi, L"AOL Child", which); ++which)
        if (child != front && IsWindowVisible(child) && !IsIconic(child))
            documents.push_back(child);
    return documents;
}

HWND documentText(HWND document)
{
    const HWND box = FindChildByClass(document, L"RICHCNTL");
    return box ? box : FindChildByClass(document, L"RICHCNTLREADONLY");
}

HWND composeWindow()
{
    for (const HWND document : documentsByOrder())
        if (isCompose(document))
            return document;
    return nullptr;
}

} // namespace velora
