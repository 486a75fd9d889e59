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
    drawPicture(dc, picture, Picture::emblem);
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
    open(aol().words.welcome(aol().name), {580, 380});
}

void Welcome::build()
{
    const Words& words = aol().words;
    glyph_ = new Glyph(hwnd(), Picture::emblem);
    mail_ =
        new IconButton(hwnd(), words.tr(L"You've Got Mail"), Picture::mailCenter, IconLook::action);
    mail_->onClick = [] { runMenuCommand(kReadMail); };
    chat_ = new IconButton(hwnd(), words.tr(L"Chat"), Picture::chat, IconLook::action);
    chat_->onClick = [] { runMenuCommand(kChatRoom); };
    buddies_ = new IconButton(hwnd(), words.tr(L"Buddy List"), Picture::people, IconLook::action);
    buddies_->onClick = [] { runMenuCommand(kSendIm); };
    today_ = new Control(hwnd(), Control::Kind::text, words.tr(L"Today on AOL"), true);
}

void Welcome::layout(int width, int height)
{
    mail_->place(16, 84, 126, 60);
    chat_->place(16, 154, 126, 60);
    buddies_->place(16, 224, 126, 60);
    today_->place(180, 92, width - 330, 18);
    glyph_->place(width - 124, height - 124, 96, 96);
}

void Welcome::paint(HDC dc, const RECT& area)
{
    RECT head = area;
    head.bottom = 64;
    fillGradient(dc, head, palette::kBlue, palette::kDeepBlue);
    head.left = 24;
    drawText(dc, head, text(), Face::title, RGB(255, 255, 255), DT_VCENTER | DT_SINGLELINE);
    RECT column = area;
    column.top = 64;
    column.right = 158;
    fillGradient(dc, column, RGB(214, 226, 246), palette::kSky);
    const struct {
        Picture picture;
        const wchar_t* text;
    } lines[] = {{Picture::star, L"Trivia night in Town Square at 9"},
                 {Picture::globe, L"New: rooms for gardeners"},
                 {Picture::heart, L"Send a friend a sound"}};
    int y = 122;
    for (const auto& line : lines) {
        const RECT image{180, y, 206, y + 26};
        drawPicture(dc, image, line.picture);
        drawText(dc, {216, y, area.right - 16, y + 26}, line.text, Face::normal, palette::kText,
                 DT_VCENTER | DT_SINGLELINE);
        y += 38;
    }
}

} // namespace aolhost
