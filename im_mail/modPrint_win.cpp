#include "im_mail/modPrint.h"

#include "base/handles.h"
#include "base/trap.h"

#include <algorithm>
#include <commdlg.h>

namespace velora {
namespace {

constexpr char kModule[] = "modPrint";
constexpr int kPoints = 10;

struct GlobalTraits {
    using Type = HGLOBAL;
    static Type invalid() noexcept { return nullptr; }
    static void close(Type memory) noexcept { GlobalFree(memory); }
};

/// The device's page in dots, with a margin of an inch (less on small paper).
RECT pageOf(HDC dc)
{
    RECT page = {0, 0, GetDeviceCaps(dc, HORZRES), GetDeviceCaps(dc, VERTRES)};
    const auto margin = [dc](int dots, LONG whole) {
        return std::min(GetDeviceCaps(dc, dots), static_cast<int>(whole) / 4);
    };
    InflateRect(&page, -margin(LOGPIXELSX, page.right), -margin(LOGPIXELSY, page.bottom));
    return page;
}

Font printFont(HDC dc)
{
    return Font(CreateFontW(-MulDiv(kPoints, GetDeviceCaps(dc, LOGPIXELSY), 72), 0, 0, 0, FW_NORMAL,
                            0, 0, 0, DEFAULT_CHARSET, 0, 0, 0, 0, L"Arial"));
}

/// How many characters of a paragraph fit into one line, up to behind a blank where there is one;
/// never none, or the printing would not end.
std::size_t lineLength(HDC dc, std::wstring_view text, int width)
{
    int fits = 0;
    SIZE size = {};
    GetTextExtentExPointW(dc, text.data(), static_cast<int>(text.size()), width, &fits, nullptr,
                          &size);
    const auto most = static_cast<std::size_t>(std::max(fits, 1));
    if (most >= text.size())
        return text.size();
    const std::size_t blank = text.substr(0, most + 1).rfind(L' ');
    return blank == text.npos ? most : blank + 1;
}

/// Writes line under line and turns the page where one is full.
class Pages {
public:
    Pages(HDC dc, const std::function<bool(bool)>& page) : dc_(dc), area_(pageOf(dc)), page_(page)
    {
        TEXTMETRICW metrics = {};
        GetTextMetricsW(dc, &metrics);
        height_ = std::max<LONG>(1, metrics.tmHeight + metrics.tmExternalLeading);
    }
    int width() const { return area_.right - area_.left; }
    bool line(std::wstring_view text)
    {
        if (open_ && y_ + height_ > area_.bottom && !close())
            return false;
        if (!open_) {
            if (!page_(true))
                return false;
            open_ = true;
            y_ = area_.top;
        }
        TextOutW(dc_, area_.left, y_, text.data(), static_cast<int>(text.size()));
        y_ += height_;
        return true;
    }
    bool close()
    {
        if (!open_)
            return true;
        open_ = false;
        if (!page_(false))
            return false;
        ++count_;
        return true;
    }
    int count() const { return count_; }

private:
    HDC dc_;
    RECT area_;
    const std::function<bool(bool)>& page_;
    LONG height_ = 1, y_ = 0;
    bool open_ = false;
    int count_ = 0;
};

bool printParagraph(HDC dc, Pages& pages, std::wstring_view text)
{
    do {
        const std::size_t length = lineLength(dc, text, pages.width());
        if (!pages.line(text.substr(0, length)))
            return false;
        text.remove_prefix(length);
    } while (!text.empty());
    return true;
}

} // namespace

int printPages(std::wstring_view text, HDC dc, const std::function<bool(bool starts)>& page)
{
    const Font font = printFont(dc);
    const HGDIOBJ former = SelectObject(dc, font.get());
    Pages pages(dc, page);
    bool works = true;
    while (works && !text.empty()) {
        const std::size_t end = std::min(text.find(L'\n'), text.size());
        std::wstring_view paragraph = text.substr(0, end);
        if (paragraph.ends_with(L'\r'))
            paragraph.remove_suffix(1);
        works = printParagraph(dc, pages, paragraph);
        text.remove_prefix(std::min(end + 1, text.size()));
    }
    if (works)
        pages.close();
    SelectObject(dc, former);
    return pages.count();
}

PrintResult printText(HWND owner, std::wstring_view text, const wchar_t* title)
{
    return trap(
        kModule,
        [&] {
            PRINTDLGW wish = {};
            wish.lStructSize = sizeof wish;
            wish.hwndOwner = owner;
            wish.Flags = PD_RETURNDC | PD_NOPAGENUMS | PD_NOSELECTION | PD_HIDEPRINTTOFILE
                         | PD_USEDEVMODECOPIESANDCOLLATE | PD_NOWARNING;
            const bool chosen = PrintDlgW(&wish);
            const UniqueHandle<GlobalTraits> mode(wish.hDevMode), names(wish.hDevNames);
            if (!chosen)
                return CommDlgExtendedError() == 0 ? PrintResult::cancelled : PrintResult::failed;
            const MemoryDc dc(wish.hDC);
            DOCINFOW document = {};
            document.cbSize = sizeof document;
            document.lpszDocName = title;
            if (!dc || StartDocW(dc.get(), &document) <= 0)
                return PrintResult::failed;
            bool works = true;
            printPages(text, dc.get(), [&](bool starts) {
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
