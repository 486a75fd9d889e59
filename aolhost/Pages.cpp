#include "aolhost/Pages.h"

#include "aolhost/Aol.h"

namespace aolhost {

TextPage::TextPage(const std::wstring& caption, const std::wstring& html) : html_(html)
{
    open(caption, {400, 300});
}

void TextPage::build()
{
    text_ = new RichText(hwnd(), RichText::Use::display);
    text_->setRuns(parseMarkup(html_, true));
}

void TextPage::layout(int width, int height)
{
    text_->place(8, 44, width - 16, height - 52);
}

void TextPage::paint(HDC dc, const RECT& area)
{
    RECT head = area;
    head.bottom = 36;
    fillGradient(dc, head, palette::kBlue, palette::kDeepBlue);
    head.left = 12;
    drawText(dc, head, text(), Face::heading, RGB(255, 255, 255), DT_VCENTER | DT_SINGLELINE);
}

FindChat::FindChat()
{
    open(aol().words.findChat(), {360, 280});
}

void FindChat::build()
{
    list_ = new Control(hwnd(), Control::Kind::list);
    for (const wchar_t* room :
         {L"Town Square - Lobby 12", L"Arts - The Sound Stage", L"Friends - Over Forty",
          L"Life - Garden Gate", L"Places - New York", L"Special - Trivia Night"})
        list_->addItem(room);
    list_->choose(0);
    list_->onNotify = [this](int what) {
        if (what == LBN_DBLCLK)
            enter();
    };
    go_ = new IconButton(hwnd(), aol().words.tr(L"Go"), Picture::none, IconLook::push);
    go_->onClick = [this] { enter(); };
}

void FindChat::layout(int width, int height)
{
    list_->place(8, 8, width - 16, height - 54);
    go_->place(width - 98, height - 38, 90, 28);
}

void FindChat::enter()
{
    const std::wstring room = list_->chosen();
    if (!room.empty())
        aol().enterRoom(room);
}

} // namespace aolhost
