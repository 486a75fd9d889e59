#include "support/drive_win.h"
#include "ui/Controls.h"
#include "ui/Form.h"
#include "ui/MessageLoop.h"
#include "ui/WinGeometry.h"

#include <doctest/doctest.h>

#include <commctrl.h>

#include <algorithm>
#include <string>

using namespace velora;

namespace {

class ControlForm final : public Form {
public:
    explicit ControlForm(std::function<Box(Form&)> make)
        : Form("ControlForm"), make_(std::move(make))
    {
        create();
        show();
        drive::activate(hwnd());
    }

private:
    FormOptions options() const override
    {
        FormOptions o;
        o.title = L"Controls";
        o.kind = FormKind::sizable;
        return o;
    }
    void onCreate() override { setLayout(make_(*this).margins()); }

    std::function<Box(Form&)> make_;
};

int g_getText = 0;

} // namespace

TEST_CASE("a list of 100,000 rows asks only for what it shows, finds, selects and opens")
{
    ListView list;
    Button cmdOK;
    g_getText = 0;
    int ok = 0, opened = -1, changes = 0;
    const auto rowText = [](int row) -> std::wstring {
        if (row == 12300)
            return L"zebra";
        std::wstring number = std::to_wstring(row);
        return L"s" + std::wstring(6 - number.size(), L'0') + number;
    };
    list.getText = [&](int row, int column) {
        ++g_getText;
        return column == 0 ? rowText(row) : L"column two";
    };
    list.onActivate = [&](int row) { opened = row; };
    list.onSelect = [&] { ++changes; };
    ControlForm form([&](Form& f) {
        list.create(f, L"Sounds", {{L"Name", 120}, {L"Size", 80, true}});
        list.setRowCount(100000);
        cmdOK.create(f, L"OK", [&] { ++ok; });
        f.setDefaultButton(cmdOK);
        return rows({grow(list), cmdOK});
    });
    CHECK(list.rowCount() == 100000);
    CHECK(windowText(list.hwnd()) == L"Sounds");
    UpdateWindow(list.hwnd());
    CHECK(g_getText > 0);
    CHECK(g_getText < 500);

    list.focus();
    list.select(99999);
    CHECK(list.selection() == std::vector<int>{99999});
    CHECK(list.focusedRow() == 99999);
    CHECK(drive::until([&] { return changes > 0; }));
    doEvents();
    CHECK(changes == 1);
    list.select(99998); // the list tells of the row before and the new one
    CHECK(drive::until([&] { return changes > 1; }));
    doEvents();
    CHECK(changes == 2);

    LVFINDINFOW what = {};
    what.flags = LVFI_PARTIAL;
    what.psz = L"S01234"; // what a user has typed in quick succession
    CHECK(SendMessageW(list.hwnd(), LVM_FINDITEMW, static_cast<WPARAM>(-1),
                       reinterpret_cast<LPARAM>(&what))
          == 12340);
    drive::type(L"z");
    CHECK(drive::until([&] { return list.selected() == 12300; }));
    drive::key(VK_RETURN);
    CHECK(drive::until([&] { return opened == 12300; }));
    CHECK(ok == 0);

    list.select(5);
    drive::key(VK_DOWN, {VK_SHIFT});
    drive::key(VK_DOWN, {VK_SHIFT});
    CHECK(drive::until([&] { return list.selectedCount() == 3; }));
    CHECK(list.selection() == std::vector<int>{5, 6, 7});
    list.setRowCount(3);
    CHECK(list.rowCount() == 3);
    const auto left = list.selection();
    CHECK(std::all_of(left.begin(), left.end(), [](int row) { return row < 3; }));
    list.select(-1);
    CHECK(list.selected() == -1);
}

TEST_CASE("the list's own search, a longer text than it takes, and clicks on headers")
{
    ListView list;
    int sorted = -1;
    list.getText = [](int row, int) {
        return row == 1 ? std::wstring(5000, L'x')
                        : std::wstring(1, static_cast<wchar_t>(L'a' + row));
    };
    list.findRow = [](std::wstring_view typed, int) { return typed == L"q" ? 2 : -1; };
    list.onColumnClick = [&](int column) { sorted = column; };
    ControlForm form([&](Form& f) {
        list.create(f, L"Rows", {{L"One", 100}, {L"Two", 100}});
        list.setRowCount(4);
        return rows({grow(list)});
    });
    list.focus();
    drive::type(L"q");
    CHECK(drive::until([&] { return list.selected() == 2; }));
    const auto header = reinterpret_cast<HWND>(SendMessageW(list.hwnd(), LVM_GETHEADER, 0, 0));
    CHECK(drive::clickAt(header, 150, 5));
    CHECK(drive::until([&] { return sorted == 1; }));
    list.setSortMark(1, -1);
    HDITEMW item = {};
    item.mask = HDI_FORMAT;
    SendMessageW(header, HDM_GETITEMW, 1, reinterpret_cast<LPARAM>(&item));
    CHECK((item.fmt & HDF_SORTDOWN) != 0);
}

TEST_CASE("an icon-only button has its name, works by mouse and keyboard")
{
    ImageButton cmdWavs;
    Edit txt;
    Button cmdOK;
    int clicks = 0, ok = 0;
    ControlForm form([&](Form& f) {
        cmdWavs.create(f, L"&Wavs", LoadIconW(nullptr, IDI_APPLICATION), [&] { ++clicks; });
        txt.create(f);
        cmdOK.create(f, L"OK", [&] { ++ok; });
        f.setDefaultButton(cmdOK);
        return rows({cmdWavs, txt, cmdOK});
    });
    CHECK(drive::child(form.hwnd(), L"Wavs") == cmdWavs.hwnd());
    CHECK(drive::press(form.hwnd(), L"Wavs"));
    CHECK(drive::until([&] { return clicks == 1; }));
    cmdWavs.focus();
    drive::key(VK_RETURN);
    CHECK(drive::until([&] { return clicks == 2; }));
    drive::key(VK_SPACE);
    CHECK(drive::until([&] { return clicks == 3; }));
    CHECK(ok == 0);
    txt.focus();
    drive::key('W', {VK_MENU});
    CHECK(drive::until([&] { return clicks == 4; }));
    // Quick clicks are all clicks, no double clicks.
    drive::click(cmdWavs.hwnd());
    drive::click(cmdWavs.hwnd());
    CHECK(drive::until([&] { return clicks == 6; }));
}

TEST_CASE("check boxes, radio buttons, combo and list boxes by keyboard")
{
    CheckBox chk;
    RadioButton optA, optB;
    ComboBox cbo;
    ListBox lst;
    int changes = 0;
    ControlForm form([&](Form& f) {
        chk.create(f, L"&Check", true);
        chk.onChange = [&] { ++changes; };
        optA.create(f, L"A", true);
        optB.create(f, L"B");
        optA.setChecked(true);
        cbo.create(f, {L"red", L"green", L"blue"}, 1);
        cbo.onChange = [&] { changes += 10; };
        lst.create(f, {L"one", L"two", L"three"});
        lst.onSelect = [&] { changes += 100; };
        return rows({chk, optA, optB, cbo, grow(lst)});
    });
    CHECK(chk.checked());
    chk.focus();
    drive::key(VK_SPACE);
    CHECK(drive::until([&] { return changes == 1; }));
    CHECK(!chk.checked());
    optA.focus();
    drive::key(VK_DOWN);
    CHECK(drive::until([&] { return optB.checked(); }));
    CHECK(!optA.checked());
    CHECK(cbo.itemText(cbo.selected()) == L"green");
    cbo.focus();
    drive::key(VK_DOWN);
    CHECK(drive::until([&] { return cbo.selected() == 2 && changes == 11; }));
    // Esc closes the open list, not the form.
    drive::key(VK_DOWN, {VK_MENU});
    CHECK(drive::until([&] { return SendMessageW(cbo.hwnd(), CB_GETDROPPEDSTATE, 0, 0) != 0; }));
    drive::key(VK_ESCAPE);
    CHECK(drive::until([&] { return SendMessageW(cbo.hwnd(), CB_GETDROPPEDSTATE, 0, 0) == 0; }));
    CHECK(form.isOpen());
    lst.focus();
    drive::type(L"t");
    CHECK(drive::until([&] { return lst.selected() == 1; }));
    CHECK(lst.itemText(2) == L"three");
    lst.remove(0);
    lst.insert(0, L"zero");
    CHECK(lst.count() == 3);
    CHECK(lst.itemText(0) == L"zero");
    CHECK(lst.itemText(77).empty());
}

TEST_CASE("edits: limits, selection, masks, numbers, lines")
{
    Edit txt, txtMany;
    Button cmdOK;
    int ok = 0, changes = 0;
    ControlForm form([&](Form& f) {
        txt.create(f, L"abc", {.maxLength = 5});
        txt.onChange = [&] { ++changes; };
        txtMany.create(f, L"", {.multiline = true, .wantsReturn = true});
        cmdOK.create(f, L"OK", [&] { ++ok; });
        f.setDefaultButton(cmdOK);
        return rows({txt, grow(txtMany), cmdOK});
    });
    txt.focus();
    txt.select(1, 2);
    CHECK(txt.selection() == std::pair{1, 2});
    drive::type(L"12345"); // two more than there is room for
    doEvents();
    CHECK(drive::until([&] { return txt.text() == L"a123c"; }));
    CHECK(changes > 0);
    txt.setText(L" 42 ");
    CHECK(txt.number(7) == 42);
    txt.setText(L"4x");
    CHECK(txt.number(7) == 7);
    txtMany.focus();
    drive::type(L"a");
    drive::key(VK_RETURN);
    drive::type(L"b");
    CHECK(drive::until([&] { return txtMany.text() == L"a\r\nb"; }));
    CHECK(ok == 0);
    drive::key(VK_TAB);
    CHECK(drive::until([&] { return cmdOK.focused(); }));
    drive::key(VK_TAB, {VK_SHIFT});
    CHECK(drive::until([&] { return txtMany.focused(); }));
    CHECK(txtMany.selection().first == txtMany.selection().second); // many lines: not selected
    drive::key(VK_TAB, {VK_SHIFT});
    CHECK(drive::until([&] { return txt.focused(); }));
    CHECK(txt.selection() == std::pair{0, 2});
}

TEST_CASE("tabs: the page's place, a change that is refused, names")
{
    TabStrip tabs;
    int selected = -1;
    bool mayLeave = true;
    ControlForm form([&](Form& f) {
        tabs.create(f, {L"First", L"Second"});
        tabs.onSelect = [&] { selected = tabs.selected(); };
        tabs.onLeave = [&] { return mayLeave; };
        return rows({grow(tabs)});
    });
    CHECK(tabs.count() == 2);
    CHECK(tabs.pageRect().top > tabs.place().top + 10);
    CHECK(tabs.pageRect().bottom <= tabs.place().bottom);
    const auto clickTab = [&](int index) {
        RECT r = {};
        SendMessageW(tabs.hwnd(), TCM_GETITEMRECT, static_cast<WPARAM>(index),
                     reinterpret_cast<LPARAM>(&r));
        CHECK(tabs.hit({windowRect(tabs.hwnd()).left + static_cast<int>(r.left) + 5,
                        windowRect(tabs.hwnd()).top + static_cast<int>(r.top) + 5})
              == index);
        drive::clickAt(tabs.hwnd(), r.left + 5, r.top + 5);
    };
    clickTab(1);
    CHECK(drive::until([&] { return selected == 1; }));
    mayLeave = false;
    clickTab(0);
    pause(100);
    CHECK(tabs.selected() == 1);
    tabs.setTitle(1, L"New");
    CHECK(tabs.title(1) == L"New");
    tabs.insert(1, L"Between");
    CHECK(tabs.title(2) == L"New");
    tabs.remove(0);
    CHECK(tabs.count() == 2);
}

TEST_CASE("a page lies in its strip, and the Tab key comes to it in its place")
{
    class Page final : public Form {
    public:
        explicit Page(HWND parent) : Form("Page"), parent_(parent) { create(); }
        Edit txtInside;

    private:
        FormOptions options() const override
        {
            FormOptions options;
            options.kind = FormKind::child;
            options.owner = parent_;
            return options;
        }
        void onCreate() override
        {
            txtInside.create(*this, L"inside");
            setLayout(rows({txtInside}).margins());
        }
        HWND parent_;
    };
    Edit txtBefore;
    TabStrip tabs;
    Button cmdOK;
    int ok = 0;
    ControlForm form([&](Form& f) {
        txtBefore.create(f, L"before");
        tabs.create(f, {L"First", L"Second"});
        cmdOK.create(f, L"OK", [&] { ++ok; });
        f.setDefaultButton(cmdOK);
        return rows({txtBefore, grow(tabs), cmdOK});
    });
    Page page(form.hwnd());
    tabs.showPage(page);
    CHECK(windowRect(page.hwnd()).size() == tabs.pageRect().size());
    CHECK(page.txtInside.place().width() == tabs.pageRect().width() - 2 * kMargin);
    // Not covered by the strip.
    const Rect r = windowRect(page.txtInside.hwnd());
    CHECK(WindowFromPoint({r.left + 5, r.top + 5}) == page.txtInside.hwnd());
    txtBefore.focus();
    drive::key(VK_TAB);
    CHECK(drive::until([&] { return page.txtInside.focused(); }));
    drive::key(VK_RETURN); // the default button of the form around the page
    CHECK(drive::until([&] { return ok == 1; }));
    drive::key(VK_TAB);
    CHECK(drive::until([&] { return tabs.focused(); }));
    drive::key(VK_RIGHT);
    CHECK(drive::until([&] { return tabs.selected() == 1; }));
}

TEST_CASE("a track bar by its keys, and a rich text that leaves a key to the form")
{
    TrackBar track;
    RichEdit rich;
    Label lbl;
    int moved = 0, swallowed = 0;
    ControlForm form([&](Form& f) {
        track.create(f, 0, 10, 4);
        track.onChange = [&] { ++moved; };
        rich.create(f, RichEdit::Options());
        rich.onKey = [&](UINT key) { return key == VK_RETURN && ++swallowed > 0; };
        lbl.create(f, L"Two\r\nlines");
        return rows({track, grow(rich), lbl});
    });
    track.focus();
    drive::key(VK_RIGHT);
    CHECK(drive::until([&] { return track.value() == 5 && moved > 0; }));
    rich.append(L"red ", {.colour = RGB(255, 0, 0)});
    rich.append(L"bold", {.bold = true});
    rich.focus();
    drive::key(VK_RETURN);
    CHECK(drive::until([&] { return swallowed == 1; }));
    CHECK(rich.length() == 8);
    CHECK(lbl.preferredSize().height >= 24);
}

TEST_CASE("a control that dies before its form leaves it in order")
{
    auto button = std::make_unique<Button>();
    ControlForm form([&](Form& f) {
        button->create(f, L"Short-lived");
        return rows({});
    });
    const HWND window = button->hwnd();
    button.reset();
    CHECK(!IsWindow(window));
    form.relayout();
    SendMessageW(form.hwnd(), WM_COMMAND, MAKEWPARAM(100, BN_CLICKED),
                 reinterpret_cast<LPARAM>(window));
    Label early; // never created: harmless
    early.setText(L"x");
    early.show(false);
    early.place({0, 0, 1, 1});
    CHECK(early.text().empty());
    CHECK(!early.enabled());
}
