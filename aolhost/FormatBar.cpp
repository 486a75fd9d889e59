#include "aolhost/FormatBar.h"

#include <algorithm>
#include <richedit.h>

namespace aolhost {
namespace {

struct Tool {
    Picture picture;
    const wchar_t* name;
    void (*act)(CHARFORMATW&);
};

void toggle(CHARFORMATW& f, DWORD mask)
{
    f.dwMask = mask;
    f.dwEffects ^= mask;
}

void resize(CHARFORMATW& f, LONG twips)
{
    f.dwMask = CFM_SIZE;
    f.yHeight = std::clamp<LONG>(f.yHeight + twips, 120, 720);
}

const Tool kTools[] = {
    {Picture::colors, L"Text color",
     [](CHARFORMATW& f) {
         f.dwMask = CFM_COLOR;
         f.dwEffects = 0;
         f.crTextColor = f.crTextColor == RGB(0, 0, 255) ? RGB(255, 0, 0) : RGB(0, 0, 255);
     }},
    {Picture::smaller, L"Smaller", [](CHARFORMATW& f) { resize(f, -40); }},
    {Picture::bigger, L"Bigger", [](CHARFORMATW& f) { resize(f, 40); }},
    {Picture::bold, L"Bold", [](CHARFORMATW& f) { toggle(f, CFM_BOLD); }},
    {Picture::italic, L"Italic", [](CHARFORMATW& f) { toggle(f, CFM_ITALIC); }},
    {Picture::underline, L"Underline", [](CHARFORMATW& f) { toggle(f, CFM_UNDERLINE); }},
    {Picture::link, L"Hyperlink", nullptr},
    {Picture::smile, L"Smiley", nullptr},
    {Picture::spell, L"Spell check", nullptr},
    {Picture::image, L"Picture", nullptr},
};

void apply(RichText& target, const Tool& tool)
{
    if (tool.picture == Picture::smile)
        target.send(EM_REPLACESEL, TRUE,
                    target.ansi() ? reinterpret_cast<LPARAM>(":)")
                                  : reinterpret_cast<LPARAM>(L":)"));
    if (tool.act) {
        CHARFORMATW f{};
        f.cbSize = sizeof f;
        target.send(EM_GETCHARFORMAT, SCF_SELECTION, reinterpret_cast<LPARAM>(&f));
        tool.act(f);
        target.send(EM_SETCHARFORMAT, SCF_SELECTION, reinterpret_cast<LPARAM>(&f));
    }
    SetFocus(target.hwnd());
}

} // namespace

void FormatBar::build(HWND parent, RichText& target, int count)
{
    for (int i = 0; i < count; ++i) {
        const Tool& tool = kTools[i];
        auto* icon = new IconButton(parent, tool.name, tool.picture, IconLook::small);
        icon->onClick = [&target, &tool] { apply(target, tool); };
        icons_.push_back(icon);
    }
}

void FormatBar::place(int x, int y)
{
    for (IconButton* icon : icons_) {
        icon->place(x, y, kStep - 1, 24);
        x += kStep;
    }
}

void FormatBar::show(bool visible)
{
    for (IconButton* icon : icons_)
        icon->show(visible);
}

} // namespace aolhost
