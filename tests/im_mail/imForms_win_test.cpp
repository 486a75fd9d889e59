// The windows around the IM manager, driven as a user drives them, and IMs off and on in AOL.
#include "base/clock.h"
#include "base/clsFileOp.h"
#include "base/files.h"
#include "core/modAOL.h"
#include "im_mail/clsIMSession.h"
#include "im_mail/frmAutoAnswer.h"
#include "im_mail/frmEditNotes.h"
#include "im_mail/frmIgnored.h"
#include "im_mail/modAnswerRules.h"
#include "im_mail/modBuddyNotes.h"
#include "im_mail/modIMAnswer.h"
#include "im_mail/modIgnore.h"
#include "im_mail/modTempIgnore.h"
#include "settings/Options.h"
#include "settings/clsRegistry.h"
#include "support/answer_win.h"
#include "support/aolhost_win.h"
#include "support/form_scope_win.h"
#include "support/steps_win.h"
#include "support/tempdir.h"
#include "ui/MessageLoop.h"

#include <doctest/doctest.h>

#include <commctrl.h>

using namespace velora;
using namespace velora::test;

namespace {

struct Bench : FormScope {
    TempDir temp;
    std::wstring former = imProgramFolder();

    Bench()
    {
        aol() = {};
        imProgramFolder() = temp.path();
    }
    ~Bench() { imProgramFolder() = former; }
    std::wstring file(const wchar_t* name) const
    {
        return clsFileOp::ReadTextFromFile(joinPath(joinPath(temp.path(), L"data"), name));
    }
};

void click(HWND window, const wchar_t* button)
{
    PostMessageW(drive::child(window, button), BM_CLICK, 0, 0);
}

std::wstring noteValue(const std::wstring& name)
{
    clsRegistry registry;
    registry.SectionKey(L"Software\\Orv Software\\Notes");
    registry.ValueKey(name);
    registry.Default(std::wstring());
    return textOf(registry.Value());
}

} // namespace

TEST_CASE("ignoring asks for the days; nothing is for good; a name in the list is refused")
{
    Bench bench;
    const auto ask = [](const wchar_t* name, const wchar_t* days, const wchar_t* button = L"OK") {
        Steps({{L"Velora - Ignore", {}, button, days}}, [=] { AddToIgnore(name); });
    };
    ask(L"Joe Smith", L"");
    CHECK(bench.file(L"ignore.dat") == L"Joe Smith\r\n");
    ask(L"Ann", L"3");
    CHECK(bench.file(L"ignoretemp.dat")
          == L"Ann\t" + std::to_wstring(dateSerial(now()) + 3) + L"\r\n");
    ask(L"Bob", L"5", L"Cancel");
    CHECK_FALSE(isListed(bench.file(L"ignoretemp.dat"), L"Bob"));
    {
        Answer answer(L"OK", L"Velora - Ignore");
        AddToIgnore(L"joesmith");
        CHECK(answer.said(L"Name already exists in list!"));
    }
}

TEST_CASE("the list of ignored names: add, see, remove")
{
    Bench bench;
    addIgnored(joinPath(bench.temp.path(), L"data"), L"Joe Smith", 0, dateSerial(now()));
    frmIgnored::openList();
    frmIgnored* const form = Form::find<frmIgnored>();
    REQUIRE(form);
    const HWND list = drive::child(form->hwnd(), WC_LISTVIEWW);
    REQUIRE(list);
    CHECK(ListView_GetItemCount(list) == 1);
    constexpr wchar_t kBox[] = L"Velora - Ignore";
    Steps({{kBox, L"the screen name to ignore", L"OK", L"Ann"},
           {kBox, L"the number of days", L"OK", L"2"}},
          [&] { click(form->hwnd(), L"Add..."); });
    CHECK(waitFor([&] { return ListView_GetItemCount(list) == 2; }));
    ListView_SetItemState(list, 0, LVIS_SELECTED, LVIS_SELECTED);
    CHECK(drive::press(form->hwnd(), L"Remove"));
    CHECK(waitFor([&] { return ListView_GetItemCount(list) == 1; }));
    CHECK(bench.file(L"ignore.dat").empty());
    CHECK(isListed(bench.file(L"ignoretemp.dat"), L"Ann"));
}

TEST_CASE("a buddy note: OK writes, Cancel discards, blanks and case of the name don't count")
{
    Bench bench;
    saveBuddyNote(L"Note Tester", L"");
    const auto edit = [](const wchar_t* text, const wchar_t* button) {
        frmEditNotes::edit(L"Note Tester");
        const HWND window = Form::find<frmEditNotes>()->hwnd();
        SendMessageW(drive::child(window, L"Edit"), WM_SETTEXT, 0, reinterpret_cast<LPARAM>(text));
        CHECK(drive::press(window, button));
        CHECK(drive::gone(window));
    };
    edit(L"likes\r\ntea", L"OK");
    CHECK(noteValue(L"Note Tester") == L"likes\r\ntea");
    CHECK(GetBuddyNotes(L"notetester") == L"likes\r\ntea");
    edit(L"other", L"Cancel");
    CHECK(GetBuddyNotes(L"Note Tester") == L"likes\r\ntea");

    CHECK(saveBuddyNote(L"notetester", std::wstring(100000, L'x')));
    CHECK(GetBuddyNotes(L"Note Tester").size() == kMostNote);
    CHECK(saveBuddyNote(L"Note Tester", L" "));
    CHECK(GetBuddyNotes(L"Note Tester").empty());
    for (const wchar_t* name : {L"", L"  ", L"\x01\x02"})
        CHECK_FALSE(saveBuddyNote(name, L"x"));
    const std::wstring hostile = L"a\\b\t" + std::wstring(70000, L'c');
    CHECK(saveBuddyNote(hostile, L"y"));
    CHECK(GetBuddyNotes(hostile) == L"y");
    CHECK(saveBuddyNote(hostile, L""));
}

TEST_CASE("the auto-answer's window: a message is added, counted, renamed, refused, deleted")
{
    Bench bench;
    frmAutoAnswer::openWindow();
    frmAutoAnswer* const form = Form::find<frmAutoAnswer>();
    REQUIRE(form);
    const HWND window = form->hwnd();
    constexpr wchar_t kBox[] = L"Velora - Auto-Answer";
    constexpr wchar_t kEditor[] = L"Velora - IM Answer Message";
    const std::wstring tooLong(513, L'x');
    Steps({{kBox, L"a title for this General", L"OK", L"Lunch"},
           {kEditor, newGeneralMessage(), L"OK", tooLong},
           {kBox, L"The outgoing IM character limit is 512 characters."},
           {kEditor, tooLong, L"OK", L"at lunch"}},
          [&] { click(window, L"Add..."); });
    CHECK(waitFor([&] { return bench.file(L"im\\general\\Lunch.dat") == L"at lunch"; }));
    CHECK(waitFor([] { return opt::IM::Message.get() == L"Lunch"; }));
    Steps({{kBox, L"a title for this General", L"OK", L"lunch"},
           {kBox, L"Message title already exists!"}},
          [&] { click(window, L"Add..."); });
    Steps({{kBox, L"a title for this General", L"OK", L"Dinner"}},
          [&] { click(window, L"Rename..."); });
    CHECK(waitFor([] { return opt::IM::Message.get() == L"Dinner"; }));
    CHECK(bench.file(L"im\\general\\Dinner.dat") == L"at lunch");
    Steps({{kBox, L"from your General IM Answer Message Queue.", L"Yes"}},
          [&] { click(window, L"Delete"); });
    CHECK(waitFor([] { return opt::IM::Message.get().empty(); }));

    const HWND mode = drive::child(window, L"ComboBox");
    REQUIRE(mode);
    SendMessageW(mode, CB_SETCURSEL, 3, 0);
    SendMessageW(window, WM_COMMAND, MAKEWPARAM(GetDlgCtrlID(mode), CBN_SELCHANGE),
                 reinterpret_cast<LPARAM>(mode));
    CHECK(opt::IM::IMAnswerMode.get() == 3);
    CHECK(autoAnswerOn());
}

TEST_CASE("IMs off and on: AOL is told, and both of its windows are closed")
{
    struct Row {
        int edition, version;
        std::vector<std::wstring> more;
    };
    for (const Row& row : {Row{0, 3, {}}, Row{0, 5, {}}, Row{0, 6, {L"--answer=child"}},
                           Row{3, 6, {}}, Row{4, 5, {}}, Row{4, 6, {L"--answer=child"}},
                           Row{5, 5, {}}, Row{5, 7, {L"--answer=child"}}}) {
        CAPTURE(row.edition);
        CAPTURE(row.version);
        AolHost host(
            {.edition = row.edition, .version = row.version, .lateMs = 50, .more = row.more});
        Bench bench;
        aol().folder = host.folder();
        aol().edition = row.edition;
        aol().version = row.version;
        const std::wstring before = host.status()[L"documents"];
        CHECK(TempIgnore(true));
        CHECK(host.status()[L"imson"] == L"0");
        CHECK(TempIgnore(false));
        CHECK(host.status()[L"imson"] == L"1");
        CHECK(waitFor([&] { return host.status()[L"documents"] == before; }));
        CHECK(waitFor([&] { return host.dialog() == nullptr; }));
        CHECK(IsWindowEnabled(host.frame()));
        aol() = {};
    }
}
