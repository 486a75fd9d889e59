#include "chat/frmTemplates.h"

#include "chat/modQuotesMenu_win.h"
#include "support/drive_win.h"
#include "support/form_scope_win.h"
#include "support/steps_win.h"
#include "ui/Menu.h"

#include <doctest/doctest.h>

using namespace velora;

namespace {

constexpr wchar_t kCaption[] = L"Velora - Reply Templates";

/// The editor over settings of the test's own.
struct Editor : test::FormScope {
    Editor()
    {
        MakeDefaultTemplates();
        frmTemplates::showWindow();
        window = drive::window(kCaption);
        REQUIRE(window);
        REQUIRE(drive::activate(window));
    }
    HWND list() const { return drive::child(window, L"ListBox"); }
    /// The box for the name (0) or the HTML (1).
    HWND edit(int which) const
    {
        for (const HWND child : drive::children(window)) {
            wchar_t name[32] = L"";
            GetClassNameW(child, name, 32);
            if (lstrcmpiW(name, L"Edit") == 0 && which-- == 0)
                return child;
        }
        return nullptr;
    }
    HWND window = nullptr;
};

/// Presses Cancel and answers the question that comes.
void cancelWith(HWND window, const wchar_t* answer)
{
    test::Steps({{kCaption, L"You have changed the templates.", answer}},
                [&] { PostMessageW(drive::child(window, L"Cancel"), BM_CLICK, 0, 0); });
}

void collect(HMENU menu, std::vector<std::wstring>& out)
{
    for (int i = 0; i < GetMenuItemCount(menu); ++i) {
        wchar_t text[100] = L"";
        MENUITEMINFOW info{};
        info.cbSize = sizeof info;
        info.fMask = MIIM_STRING | MIIM_STATE | MIIM_FTYPE | MIIM_SUBMENU;
        info.dwTypeData = text;
        info.cch = 100;
        GetMenuItemInfoW(menu, static_cast<UINT>(i), TRUE, &info);
        if (info.fType & MFT_SEPARATOR)
            continue;
        out.push_back((info.fState & MFS_CHECKED ? L"*" : L"")
                      + std::wstring(info.fType & MFT_RADIOCHECK ? L"o " : L"") + text);
        if (info.hSubMenu)
            collect(info.hSubMenu, out);
    }
}

} // namespace

TEST_CASE("a template is edited with the keyboard and kept by OK")
{
    Editor editor;
    drive::key('N', {VK_MENU}); // the name
    drive::key('A', {VK_CONTROL});
    drive::type(L"Mine");
    drive::key('Q', {VK_MENU}); // its HTML
    REQUIRE(drive::until([&] { return GetFocus() == editor.edit(1); }));
    SendMessageW(editor.edit(1), EM_SETSEL, 0, -1);
    drive::type(L"From ");
    drive::key('S', {VK_MENU});
    CHECK(drive::until([&] { return drive::text(editor.edit(1)) == L"From {SN}"; }));
    CHECK(drive::until([&] {
        wchar_t text[100] = L"";
        SendMessageW(editor.list(), LB_GETTEXT, 0, reinterpret_cast<LPARAM>(text));
        return std::wstring(text) == L"Mine (default)";
    }));
    CHECK(loadTemplate(1) == builtInTemplates()[0]); // nothing is kept before OK
    REQUIRE(drive::press(editor.window, L"OK"));
    CHECK(drive::gone(editor.window));
    CHECK(loadTemplate(1) == QuoteTemplate{L"Mine", L"From {SN}"});
    CHECK(loadTemplate(2) == builtInTemplates()[1]);
}

TEST_CASE("Cancel asks before changes are lost")
{
    Editor editor;
    SetWindowTextW(editor.edit(0), L"Mine");
    cancelWith(editor.window, L"Cancel");
    CHECK(IsWindow(editor.window));
    CHECK(drive::text(editor.edit(0)) == L"Mine");
    SUBCASE("kept")
    {
        cancelWith(editor.window, L"Yes");
        CHECK(drive::gone(editor.window));
        CHECK(loadTemplate(1).Header == L"Mine");
    }
    SUBCASE("given up")
    {
        cancelWith(editor.window, L"No");
        CHECK(drive::gone(editor.window));
        CHECK(loadTemplate(1) == builtInTemplates()[0]);
    }
}

TEST_CASE("Esc closes at once when nothing was changed")
{
    Editor editor;
    drive::key(VK_ESCAPE);
    CHECK(drive::gone(editor.window));
}

TEST_CASE("the default is chosen and a built-in text restored")
{
    Editor editor;
    CHECK_FALSE(IsWindowEnabled(drive::child(editor.window, L"Use as Default")));
    CHECK_FALSE(IsWindowEnabled(drive::child(editor.window, L"Restore Built-in")));
    REQUIRE(SetFocus(editor.list()));
    drive::key(VK_DOWN);
    REQUIRE(drive::until(
        [&] { return drive::text(editor.edit(1)) == builtInTemplates()[1].CharHtml; }));
    REQUIRE(SetFocus(editor.edit(1)));
    drive::type(L"spoilt");
    REQUIRE(drive::until(
        [&] { return IsWindowEnabled(drive::child(editor.window, L"Restore Built-in")) != 0; }));
    REQUIRE(drive::press(editor.window, L"Restore Built-in"));
    CHECK(drive::until(
        [&] { return drive::text(editor.edit(1)) == builtInTemplates()[1].CharHtml; }));
    REQUIRE(drive::press(editor.window, L"Use as Default"));
    REQUIRE(drive::press(editor.window, L"OK"));
    CHECK(drive::gone(editor.window));
    CHECK(defaultTemplate() == 2);
    CHECK(loadTemplate(2) == builtInTemplates()[1]);
}

TEST_CASE("the quotes menu shows the templates and turns quoting on and off")
{
    Editor editor;
    saveTemplate(3, {L"Tom & Ann", L"x"});
    opt::Templates::Default.set(3);
    Menu menu;
    LoadQuotesMenu(menu);
    std::vector<std::wstring> items;
    collect(menu.handle(), items);
    REQUIRE(items.size() == 16);
    CHECK(items[0] == L"o &1  In reference to your comment");
    CHECK(items[2] == L"*o &3  Tom && Ann");
    CHECK(items[3] == L"&Edit Templates...");
    CHECK(items[4] == L"*Quote in &Mail Replies");
    CHECK(menu.run(static_cast<int>(GetMenuItemID(menu.handle(), 1))));
    CHECK(defaultTemplate() == 2);
    const int mail = GetMenuItemID(menu.handle(), 6);
    CHECK(menu.run(mail));
    CHECK_FALSE(quoteRules(false).enabled);
    CHECK(quoteRules(true).enabled);
}
