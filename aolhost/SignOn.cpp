#include "aolhost/SignOn.h"

#include "aolhost/Aol.h"
#include "aolhost/MenuCommands.h"
#include "aolhost/Menus.h"

namespace aolhost {

SignOn::SignOn(bool goodbye) : goodbye_(goodbye)
{
    const Words& words = aol().words;
    open(goodbye ? words.signOffWindow() : words.signOnWindow(), {500, 360});
}

void SignOn::build()
{
    const Words& words = aol().words;
    nameLabel_ = new Control(hwnd(), Control::Kind::text, words.tr(L"Select Screen Name:"), true);
    names_ = new Control(hwnd(), Control::Kind::combo);
    for (const std::wstring& name : aol().options.names)
        names_->addItem(name);
    if (aol().options.names.empty())
        names_->addItem(L"New User");
    names_->addItem(words.guest());
    names_->choose(0);
    passwordLabel_ = new Control(hwnd(), Control::Kind::text, words.tr(L"Enter Password:"), true);
    password_ = new Control(hwnd(), Control::Kind::password);
    password_->onEnter = [this] { signOn(); };
    placeLabel_ = new Control(hwnd(), Control::Kind::text, words.tr(L"Select Location:"), true);
    places_ = new Control(hwnd(), Control::Kind::combo);
    places_->addItem(words.tr(L"Home"));
    places_->choose(0);
    setup_ = new IconButton(hwnd(), words.tr(L"Setup"), Picture::wrench, IconLook::action);
    access_ = new IconButton(hwnd(), words.tr(L"Access Numbers"), Picture::phone, IconLook::action);
    signOn_ = new IconButton(hwnd(), words.tr(L"Sign On"), Picture::none, IconLook::push);
    signOn_->onClick = [this] { signOn(); };
}

void SignOn::layout(int width, int height)
{
    const int left = width / 2 - 10;
    const int wide = width - left - 24;
    int y = 84;
    const auto row = [&](Control* label, Control* box) {
        label->place(left, y, wide, 16);
        box->place(left, y + 18, wide, 22 + (box == password_ ? 0 : 160));
        y += 56;
    };
    row(nameLabel_, names_);
    row(passwordLabel_, password_);
    row(placeLabel_, places_);
    setup_->place(24, height - 66, 80, 54);
    access_->place(110, height - 66, 100, 54);
    signOn_->place(width - 144, height - 48, 120, 30);
}

void SignOn::paint(HDC dc, const RECT& area)
{
    RECT head = area;
    head.bottom = 64;
    fillGradient(dc, head, palette::kBlue, palette::kDeepBlue);
    head.left = 24;
    drawText(dc, head, goodbye_ ? aol().words.signOffWindow() : aol().words.product(), Face::title,
             RGB(255, 255, 255), DT_VCENTER | DT_SINGLELINE);
    RECT picture{40, 90, area.right / 2 - 50, area.bottom - 90};
    drawPicture(dc, picture, Picture::triangle);
}

HWND SignOn::firstFocus() const
{
    return password_ ? password_->hwnd() : nullptr;
}

void SignOn::signOn()
{
    std::wstring name = names_->chosen();
    if (name == aol().words.guest())
        name = L"Guest";
    PostMessageW(hwnd(), WM_CLOSE, 0, 0);
    aol().signOn(name);
}

Welcome::Welcome()
{
    open(aol().words.welcome(aol().name), {580, 400});
}

void Welcome::build()
{
    const Words& words = aol().words;
    glyph_ = new Glyph(hwnd(), Picture::triangle);
    mail_ =
        new IconButton(hwnd(), words.tr(L"You've Got Mail"), Picture::mailRead, IconLook::action);
    mail_->onClick = [] { runMenuCommand(kReadMail); };
    chat_ = new IconButton(hwnd(), words.tr(L"Chat"), Picture::chat, IconLook::action);
    chat_->onClick = [] { runMenuCommand(kChatRoom); };
    buddies_ = new IconButton(hwnd(), words.tr(L"Buddy List"), Picture::people, IconLook::action);
    buddies_->onClick = [] { runMenuCommand(kSendIm); };
    today_ = new Control(hwnd(), Control::Kind::text, words.tr(L"Today on AOL"), true);
}

void Welcome::layout(int width, int)
{
    glyph_->place(width - 120, 84, 96, 96);
    mail_->place(20, 90, 110, 60);
    chat_->place(20, 160, 110, 60);
    buddies_->place(20, 230, 110, 60);
    today_->place(160, 96, width - 300, 18);
}

void Welcome::paint(HDC dc, const RECT& area)
{
    RECT head = area;
    head.bottom = 64;
    fillGradient(dc, head, palette::kBlue, palette::kDeepBlue);
    head.left = 24;
    drawText(dc, head, text(), Face::title, RGB(255, 255, 255), DT_VCENTER | DT_SINGLELINE);
}

} // namespace aolhost
