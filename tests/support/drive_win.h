#pragma once
// Driving real windows as a user would: find a window by its caption, press a button by its text,
// type. Everything here waits for conditions and pumps this process's messages meanwhile, so that
// it works on windows of this process (inside a Script) and of others alike.
#include "base/win.h"
#include "ui/Timer.h"

#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace velora::drive {

inline constexpr DWORD kPatience = 10000; // ms

/// Pumps until the condition holds; false when the patience is over.
bool until(const std::function<bool()>& condition, DWORD milliseconds = kPatience);

/// A visible top-level window with this caption (of any process); null when none comes in time.
HWND window(std::wstring_view caption, DWORD milliseconds = kPatience);
bool gone(HWND window, DWORD milliseconds = kPatience);
/// The window's text without "&" before a mnemonic. Bounded in time, whatever the window does.
std::wstring text(HWND window);
/// All descendants in the order of creation.
std::vector<HWND> children(HWND window);
/// The first descendant with this text (mnemonics left out) or, failing that, of this class; null
/// when there is none.
HWND child(HWND window, std::wstring_view textOrClass);

/// Whether a menu is open, of any process.
bool menuIsOpen();
/// Presses a button by its text, with the mouse; waits until it is there, visible and enabled.
/// False when there is none.
bool press(HWND window, std::wstring_view buttonText);
/// The left (or right) mouse button on the middle of a window, or at a place in it.
bool click(HWND window, bool right = false);
bool clickAt(HWND window, int x, int y, bool right = false);
/// Makes the window the foreground one and waits for it.
bool activate(HWND window);

/// Types text into whatever has the focus.
void type(std::wstring_view text);
/// A key with the modifiers held (VK_CONTROL, VK_SHIFT, VK_MENU).
void key(WORD virtualKey, std::initializer_list<WORD> modifiers = {});

/// The text on the clipboard, empty when there is none.
std::wstring clipboardText();
void clearClipboard();

/// Runs `script` from the message loop of this thread, as soon as one runs: the way to drive a
/// modal box that the test itself opens.
///
///   drive::Script script([] { CHECK(drive::press(drive::window(L"Velora - Quit"), L"Yes")); });
///   CHECK(MsgBoxEx(L"Quit?", 4, L"Quit") == 6);
///   CHECK(script.done());
class Script {
public:
    explicit Script(std::function<void()> script);
    Script(const Script&) = delete;
    Script& operator=(const Script&) = delete;
    bool done() const { return done_; }

private:
    void run();

    std::function<void()> script_;
    Timer start_, guard_;
    bool done_ = false;
};

/// Goes through a menu that this process is about to open, with the mouse, by the texts of its
/// items: submenus first. It never pumps, because the menu's own loop takes the mouse.
class MenuPick {
public:
    explicit MenuPick(std::vector<std::wstring> items);
    /// The last item was clicked and the menu is gone.
    bool done() const { return items_.empty() && !menuIsOpen(); }

private:
    void look();

    std::vector<std::wstring> items_;
    Timer look_;
};

} // namespace velora::drive
