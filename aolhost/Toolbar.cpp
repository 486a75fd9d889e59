#include "aolhost/Toolbar.h"

#include "aolhost/Aol.h"
#include "aolhost/Menus.h"
#include "aolhost/Text.h"

#include <vector>

namespace aolhost {
namespace {

struct Button {
    const wchar_t* caption;
    Picture picture;
    UINT command;
};

const Button kButtons[] = {
    {L"Read", Picture::mailRead, kReadMail},
    {L"Write", Picture::mailWrite, kWriteMail},
    {L"Mail Center", Picture::mailCenter, kReadMail},
    {L"Print", Picture::printer, kPrint},
    {L"My Files", Picture::files, kHelp},
    {L"My AOL", Picture::star, kHelp},
    {L"Favorites", Picture::heart, kHelp},
    {L"Internet", Picture::globe, kKeyword},
    {L"Channels", Picture::channels, kHelp},
    {L"People", Picture::people, kChatRoom},
    {L"Quotes", Picture::chart, kHelp},
};

constexpr int kRow = 48;

} // namespace

class ToolbarBar final : public Window {
public:
    explicit ToolbarBar(HWND parent)
    {
        create({.className = L"_AOL_Toolbar",
                .style = WS_CHILD | WS_VISIBLE | WS_CLIPCHILDREN,
                .parent = parent});
        for (const Button& button : kButtons)
            addButton(button);
        // The first button also opens the find window by its letter.
        icons_.front()->onLetter = [this](wchar_t letter) {
            const bool find = lowered(std::wstring(1, letter))[0] == aol().words.findLetter();
            if (find)
                post(kFindChat);
            return find;
        };
    }

    void showKeywordBox(bool visible)
    {
        if (visible == (keyword_ != nullptr))
            return;
        if (!visible) {
            DestroyWindow(std::exchange(keyword_, nullptr)->hwnd());
            DestroyWindow(std::exchange(go_, nullptr)->hwnd());
            return;
        }
        keyword_ = new Control(hwnd(), Control::Kind::dropDown);
        keyword_->onEnter = [this] { go(); };
        go_ = new IconButton(hwnd(), aol().words.tr(L"Go"), Picture::none, IconLook::push);
        go_->onClick = [this] { go(); };
        layout();
    }

    void focusKeyword()
    {
        if (keyword_)
            SetFocus(keyword_->hwnd());
    }

protected:
    LRESULT handle(UINT message, WPARAM wParam, LPARAM lParam) override
    {
        switch (message) {
        case WM_SIZE: layout(); break;
        case WM_ERASEBKGND: return 1;
        case WM_PAINT: {
            BufferedPaint buffer(hwnd());
            draw(buffer.dc());
            return 0;
        }
        case WM_PRINTCLIENT: draw(reinterpret_cast<HDC>(wParam)); return 0;
        default: break;
        }
        return Window::handle(message, wParam, lParam);
    }

private:
    void post(UINT command) const
    {
        PostMessageW(GetAncestor(hwnd(), GA_ROOT), WM_COMMAND, command, 0);
    }

    void addButton(const Button& button)
    {
        auto* icon = new IconButton(hwnd(), aol().words.tr(button.caption), button.picture,
                                    IconLook::toolbar);
        icon->onClick = [this, command = button.command] { post(command); };
        icons_.push_back(icon);
    }

    void go()
    {
        const std::wstring word = trimmed(keyword_->text());
        if (word.empty())
            return;
        keyword_->removeItem(word);
        keyword_->addItem(word);
        aol().openKeyword(word);
    }

    void layout()
    {
        const int width = client().right;
        int x = 6;
        for (IconButton* icon : icons_) {
            icon->place(x, 2, 62, kRow - 4);
            x += 64;
        }
        if (keyword_) {
            keyword_->place(90, kRow + 2, width - 160 > 120 ? width - 160 : 120, 200);
            go_->place(width - 62, kRow + 2, 54, 22);
        }
        InvalidateRect(hwnd(), nullptr, TRUE);
    }

    void draw(HDC dc) const
    {
        RECT area = client();
        RECT row = area;
        row.bottom = kRow;
        fillGradient(dc, row, RGB(232, 238, 250), palette::kSky);
        row.top = kRow;
        row.bottom = area.bottom;
        fillGradient(dc, row, palette::kBlue, palette::kDeepBlue);
        if (keyword_) {
            RECT label{8, kRow, 88, area.bottom};
            drawText(dc, label, aol().words.tr(L"Keyword") + L":", Face::bold, RGB(255, 255, 255),
                     DT_RIGHT | DT_VCENTER | DT_SINGLELINE);
        }
    }

    std::vector<IconButton*> icons_;
    Control* keyword_ = nullptr;
    IconButton* go_ = nullptr;
};

void Toolbar::registerClasses()
{
    WindowClasses::add(L"AOL Toolbar", nullptr);
    WindowClasses::add(L"_AOL_Toolbar", nullptr);
}

Toolbar::Toolbar(HWND frame)
{
    create({.className = L"AOL Toolbar",
            .style = WS_CHILD | WS_VISIBLE | WS_CLIPCHILDREN,
            .parent = frame});
    bar_ = new ToolbarBar(hwnd());
}

void Toolbar::showKeywordBox(bool visible)
{
    bar_->showKeywordBox(visible);
}

void Toolbar::focusKeyword()
{
    bar_->focusKeyword();
}

LRESULT Toolbar::handle(UINT message, WPARAM wParam, LPARAM lParam)
{
    if (message == WM_SIZE && bar_)
        bar_->place(0, 0, LOWORD(lParam), HIWORD(lParam));
    return Window::handle(message, wParam, lParam);
}

} // namespace aolhost
