#include "core/MsgBoxEx.h"
#include "support/drive_win.h"
#include "ui/MessageLoop.h"

#include <doctest/doctest.h>

#include <commctrl.h>

using namespace velora;

namespace {
std::wstring entered(const std::function<void(HWND)>& act, std::wstring_view initial = {},
                     const InputBoxOptions& options = {})
{
    drive::Script script([&] {
        const HWND box = drive::window(L"Velora - Name");
        REQUIRE(box);
        REQUIRE(drive::activate(box));
        act(box);
    });
    const std::wstring text = InputBoxEx(L"~BName~B of the room:", L"Name", initial, options);
    CHECK(script.done());
    return text;
}
} // namespace

TEST_CASE("what is typed replaces the selected default and is the answer")
{
    CHECK(entered(
              [](HWND box) {
                  CHECK(drive::child(box, L"Name of the room:"));
                  drive::type(L"Lobby 7");
                  drive::key(VK_RETURN);
              },
              L"old")
          == L"Lobby 7");
    CHECK(entered([](HWND) { drive::key(VK_RETURN); }, L"old") == L"old");
    CHECK(entered([](HWND box) { drive::press(box, L"OK"); }, L"old") == L"old");
}

TEST_CASE("cancelled in any way, the answer is empty")
{
    CHECK(entered([](HWND) { drive::key(VK_ESCAPE); }, L"old").empty());
    CHECK(entered([](HWND box) { drive::press(box, L"Cancel"); }, L"old").empty());
    CHECK(entered([](HWND box) { PostMessageW(box, WM_CLOSE, 0, 0); }, L"old").empty());
}

TEST_CASE("a masked box hides the text until it is asked to show it")
{
    CHECK(entered(
              [](HWND box) {
                  const HWND edit = drive::child(box, WC_EDITW);
                  CHECK(SendMessageW(edit, EM_GETPASSWORDCHAR, 0, 0) != 0);
                  drive::type(L"secret");
                  CHECK(drive::press(box, L"Show what I type"));
                  CHECK(drive::until(
                      [&] { return SendMessageW(edit, EM_GETPASSWORDCHAR, 0, 0) == 0; }));
                  drive::key(VK_RETURN);
              },
              {}, {.masked = true})
          == L"secret");
}

TEST_CASE("no more characters than asked for")
{
    CHECK(entered(
              [](HWND) {
                  drive::type(L"123456");
                  drive::key(VK_RETURN);
              },
              {}, {.maxLength = 4})
          == L"1234");
}
