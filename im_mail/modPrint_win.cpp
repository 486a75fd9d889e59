#include "im_mail/modPrint.h"

#include "base/handles.h"
#include "base/trap.h"

#include <commdlg.h>
#include <richedit.h>

#include <algorithm>

namespace velora {
namespace {

constexpr char kModule[] = "modPrint";
constexpr int kTwipsAnInch = 1440;
constexpr int kMostPages = 10000;

struct GlobalTraits {
    using Type = HGLOBAL;
    static Type invalid() noexcept { return nullptr; }
    static void close(Type memory) noexcept { GlobalFree(memory); }
};

/// The printable area of the device, an inch inside its paper, in twips.
RECT pageOf(HDC dc, RECT& paper)
{
    const auto twips = [dc](int width, int dots) {
        return MulDiv(GetDeviceCaps(dc, width), kTwipsAnInch, std::max(1, GetDeviceCaps(dc, dots)));
    };
    paper = {0, 0, twips(HORZRES, LOGPIXELSX), twips(VERTRES, LOGPIXELSY)};
    RECT page = paper;
    InflateRect(&page, -std::min(kTwipsAnInch, static_cast<int>(paper.right) / 4),
                -std::min(kTwipsAnInch, static_cast<int>(paper.bottom) / 4));
    return page;
}

} // namespace

int printPages(HWND richEdit, HDC dc, const std::function<bool(bool starts)>& page)
{
    FORMATRANGE range = {};
    range.hdc = range.hdcTarget = dc;
    const RECT area = pageOf(dc, range.rcPage);
    GETTEXTLENGTHEX how = {GTL_NUMCHARS | GTL_PRECISE, 1200};
    const auto length = static_cast<LONG>(
        SendMessageW(richEdit, EM_GETTEXTLENGTHEX, reinterpret_cast<WPARAM>(&how), 0));
    range.chrg = {0, -1};
    int pages = 0;
    while (range.chrg.cpMin < length && pages < kMostPages) {
        range.rc = area;
        if (!page(true))
            break;
        const auto next = static_cast<LONG>(
            SendMessageW(richEdit, EM_FORMATRANGE, TRUE, reinterpret_cast<LPARAM>(&range)));
        if (!page(false))
            break;
        ++pages;
        // A page that takes nothing (paper smaller than a letter) would go on for ever.
        if (next <= range.chrg.cpMin)
            break;
        range.chrg.cpMin = next;
    }
    SendMessageW(richEdit, EM_FORMATRANGE, FALSE, 0); // what it keeps for the device
    return pages;
}

PrintResult printRichText(HWND owner, HWND richEdit, const wchar_t* title)
{
    return trap(
        kModule,
        [&] {
            PRINTDLGW wish = {};
            wish.lStructSize = sizeof wish;
            wish.hwndOwner = owner;
            wish.Flags = PD_RETURNDC | PD_NOPAGENUMS | PD_NOSELECTION | PD_HIDEPRINTTOFILE
                         | PD_USEDEVMODECOPIESANDCOLLATE;
            const bool chosen = PrintDlgW(&wish);
            const UniqueHandle<GlobalTraits> mode(wish.hDevMode), names(wish.hDevNames);
            if (!chosen)
                return CommDlgExtendedError() == 0 ? PrintResult::cancelled : PrintResult::failed;
            const MemoryDc dc(wish.hDC);
            DOCINFOW document = {};
            document.cbSize = sizeof document;
            document.lpszDocName = title;
            if (!dc || !IsWindow(richEdit) || StartDocW(dc.get(), &document) <= 0)
                return PrintResult::failed;
            bool works = true;
            printPages(richEdit, dc.get(), [&](bool starts) {
                return works = (starts ? StartPage(dc.get()) : EndPage(dc.get())) > 0;
            });
            if (!works) {
                AbortDoc(dc.get());
                return PrintResult::failed;
            }
            return EndDoc(dc.get()) > 0 ? PrintResult::done : PrintResult::failed;
        },
        PrintResult::failed);
}

} // namespace velora
