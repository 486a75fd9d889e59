#include "aolhost/Menus.h"

#include "aolhost/RichText.h"
#include "aolhost/Words.h"

namespace aolhost {
namespace {

struct Item {
    UINT id;
    const wchar_t* english;
    const wchar_t* key = L"";
};

HMENU popup(const Words& words, std::initializer_list<Item> items)
{
    const HMENU menu = CreatePopupMenu();
    for (const Item& item : items) {
        if (item.id == 0)
            AppendMenuW(menu, MF_SEPARATOR, 0, nullptr);
        else
            AppendMenuW(menu, MF_STRING, item.id, (words.tr(item.english) + item.key).c_str());
    }
    return menu;
}

} // namespace

FrameMenus makeMenus(const Words& words)
{
    const HMENU bar = CreateMenu();
    const auto add = [&](HMENU menu, const wchar_t* english) {
        AppendMenuW(bar, MF_POPUP, reinterpret_cast<UINT_PTR>(menu), words.tr(english).c_str());
        return menu;
    };
    add(popup(words, {{kPrint, L"&Print...", L"\tCtrl+P"}, {0, L""}, {kExit, L"E&xit"}}), L"&File");
    add(popup(words, {{kCut, L"Cu&t", L"\tCtrl+X"},
                      {kCopy, L"&Copy", L"\tCtrl+C"},
                      {kPaste, L"&Paste", L"\tCtrl+V"},
                      {0, L""},
                      {kSelectAll, L"Select &All", L"\tCtrl+A"}}),
        L"&Edit");
    add(popup(words,
              {{kReadMail, L"&Read Mail", L"\tCtrl+R"}, {kWriteMail, L"&Write Mail", L"\tCtrl+M"}}),
        L"&Mail");
    add(popup(words, {{kChatRoom, L"&Chat Room"},
                      {kSendIm, L"Send &Instant Message", L"\tCtrl+I"},
                      {0, L""},
                      {kProfile, L"&Member Profile", L"\tCtrl+G"}}),
        L"&People");
    const HMENU window =
        add(popup(words, {{kCascade, L"&Cascade"}, {kTile, L"&Tile"}}), L"&Window");
    add(popup(words, {{kSignOff, L"&Sign Off"}}), L"&Sign Off");
    const HMENU help = add(popup(words, {{kHelp, L"&Contents"}, {0, L""}}), L"&Help");
    AppendMenuW(help, MF_STRING, kAbout, words.aboutItem().c_str());
    return {bar, window};
}

HACCEL makeKeys()
{
    ACCEL keys[] = {{FCONTROL | FVIRTKEY, 'M', kWriteMail}, {FCONTROL | FVIRTKEY, 'I', kSendIm},
                    {FCONTROL | FVIRTKEY, 'R', kReadMail},  {FCONTROL | FVIRTKEY, 'G', kProfile},
                    {FCONTROL | FVIRTKEY, 'K', kKeyword},   {FCONTROL | FVIRTKEY, 'P', kPrint}};
    return CreateAcceleratorTableW(keys, 6);
}

} // namespace aolhost
