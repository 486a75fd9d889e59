#pragma once
// What the stand-in draws: its palette, fonts and small pictures, all made of lines and shapes.
#include "base/win.h"

#include <string>

namespace aolhost {

enum class Picture {
    none,
    mailRead,
    mailWrite,
    mailCenter,
    printer,
    files,
    heart,
    star,
    globe,
    channels,
    people,
    chart,
    find,
    key,
    send,
    bold,
    italic,
    underline,
    colors,
    smile,
    link,
    image,
    attach,
    address,
    later,
    cancel,
    reply,
    forward,
    trash,
    person,
    bell,
    door,
    phone,
    wrench,

    emblem,
    chat,
    bigger,
    smaller,
    spell,
    back,
    next,
    stop
};

/// toolbar: picture over caption, flat until touched; push: a raised button with its caption;
/// small: a picture alone; action: picture over caption on a page; link: text in blue.
enum class IconLook { toolbar, push, small, action, link };

namespace palette {
constexpr COLORREF kPage = RGB(236, 240, 248);
constexpr COLORREF kDeepBlue = RGB(16, 44, 112);
constexpr COLORREF kBlue = RGB(52, 96, 176);
constexpr COLORREF kSky = RGB(168, 196, 236);
constexpr COLORREF kSilver = RGB(206, 212, 224);
constexpr COLORREF kLine = RGB(120, 136, 168);
constexpr COLORREF kText = RGB(16, 24, 56);
constexpr COLORREF kWorkspaceTop = RGB(90, 120, 172);
constexpr COLORREF kWorkspaceEnd = RGB(44, 66, 116);
constexpr COLORREF kGold = RGB(236, 184, 52);
} // namespace palette

enum class Face { normal, bold, small, title, heading };
/// Made once, kept for the life of the program.
HFONT font(Face face);
HBRUSH pageBrush();

void fillGradient(HDC dc, const RECT& area, COLORREF from, COLORREF to, bool vertical = true);
void drawText(HDC dc, RECT area, const std::wstring& text, Face face, COLORREF color, UINT flags);
void drawPicture(HDC dc, const RECT& area, Picture picture);

/// A small window icon of a picture; lives as long as the program.
HICON makeIcon(Picture picture);

struct IconState {
    bool down, hot, focused, enabled;
};
void drawIcon(HDC dc, const RECT& area, const std::wstring& caption, Picture picture, IconLook look,
              const IconState& state);

/// Draws off the screen and copies at once when it goes out of scope, so that nothing flickers.
class BufferedPaint {
public:
    explicit BufferedPaint(HWND window);
    ~BufferedPaint();
    BufferedPaint(const BufferedPaint&) = delete;
    BufferedPaint& operator=(const BufferedPaint&) = delete;
    HDC dc() const { return memory_; }
    const RECT& area() const { return area_; }

private:
    HWND window_;
    PAINTSTRUCT paint_{};
    RECT area_{};
    HDC memory_ = nullptr;
    HBITMAP bitmap_ = nullptr;
    HGDIOBJ former_ = nullptr;
};

} // namespace aolhost
