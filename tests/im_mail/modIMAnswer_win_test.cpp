// The auto-answer in a real AOL window: it types, presses Send, logs, and stops.
#include "im_mail/modIMAnswer.h"

#include "base/clock.h"
#include "base/clsFileOp.h"
#include "base/files.h"
#include "base/text.h"
#include "base/trap.h"
#include "core/MsgBoxEx.h"
#include "core/modAOL.h"
#include "core/modFindChild.h"
#include "im_mail/clsIMSession.h"
#include "im_mail/frmAnswered.h"
#include "im_mail/modAnswerMessages.h"
#include "im_mail/modBuddyNotes.h"
#include "im_mail/modIMLog.h"
#include "im_mail/modIMRules.h"
#include "im_mail/modIMServices.h"
#include "settings/Options.h"
#include "support/answer_win.h"
#include "support/aolhost_win.h"
#include "support/memory_store.h"
#include "support/tempdir.h"
#include "ui/Form.h"
#include "ui/Timer.h"

#include <algorithm>
#include <doctest/doctest.h>

using namespace velora;
using namespace velora::test;

namespace {

/// AOL with Velora's ends in this process: options in memory, files in a folder of the test's.
struct Bench {
    TempDir temp;
    StoreScope settings;
    AolHost host;
    std::wstring formerFolder = imProgramFolder();
    ErrorSink formerSink;

    explicit Bench(const AolHost::Options& options = {}) : host(options)
    {
        formerSink = setErrorSink([](const ErrorRecord& record) noexcept {
            MESSAGE(record.module, ".", record.procedure, ": ", record.reason);
        });
        aol() = {};
        aol().folder = host.folder();
        aol().edition = options.edition;
        aol().version = options.version;
        imProgramFolder() = temp.path();
        setAnswerMode(0);
        setAnswerMode(1);
    }
    ~Bench()
    {
        endIMServices();
        Form::unloadAll();
        imProgramFolder() = formerFolder;
        aol() = {};
        setErrorSink(formerSink);
    }
    clsAnswerMessages messages() const { return clsAnswerMessages(joinPath(temp.path(), L"data")); }

    /// A message comes; what the manager would tell of it, once it stands in its window.
    IMInfo arrive(const std::wstring& name, const std::wstring& text,
                  const wchar_t* command = L"im ")
    {
        host.command(command + name + L": " + text);
        IMInfo im;
        REQUIRE(waitFor([&] {
            const HWND window = host.document(name);
            im.window = reinterpret_cast<WindowId>(window);
            im.text = textOf(childOfClass(window, L"RICHCNTL"));
            return window && im.text.find(text) != im.text.npos;
        }));
        im.caption = windowCaption(reinterpret_cast<HWND>(im.window));
        im.screenName = senderFromCaption(im.caption);
        return im;
    }
    std::vector<std::wstring> sent() { return AolHost::listOf(host.command(L"imsent")); }
    bool sends(std::size_t count)
    {
        return waitFor([&] { return sent().size() >= count; });
    }
    std::wstring logOf(const std::wstring& name) const
    {
        return clsFileOp::ReadTextFromFile(
            imLogPath(joinPath(temp.path(), L"im logs"), name, true, now()));
    }
};

std::wstring builtIn(const wchar_t* name)
{
    return std::wstring(name) + L": " + fillAnswer(defaultAnswer(), name);
}

} // namespace

TEST_CASE("an IM is answered once, in each edition and version, by the right icon, and logged")
{
    struct Row {
        int edition, version;
        std::vector<std::wstring> more;
    };
    const std::vector<std::wstring> plain{L"--plainfrench=on"};
    for (const Row& row :
         {Row{0, 3, {}}, Row{0, 4, {}}, Row{0, 5, {}}, Row{0, 6, {}}, Row{0, 7, {}}, Row{3, 5, {}},
          Row{4, 5, {}}, Row{4, 6, {}}, Row{5, 5, plain}, Row{5, 7, plain}}) {
        CAPTURE(row.edition);
        CAPTURE(row.version);
        Bench bench({.edition = row.edition, .version = row.version, .more = row.more});
        opt::IM::AnswerOnce.set(true);
        const IMInfo im = bench.arrive(L"Rose3", L"are you there?");
        CHECK(SenderSN(im.window) == L"Rose3");
        CHECK(GetSenderMsg(im.window) == L"are you there?");
        CHECK(AnswerIM(im));
        REQUIRE(bench.sends(1));
        CHECK(bench.sent()[0] == builtIn(L"Rose3"));
        CHECK(waitFor([&] { return !bench.logOf(L"Rose3").empty(); }));
        const std::wstring log = bench.logOf(L"Rose3");
        CHECK(log.starts_with(L"Answered IM - "));
        CHECK(log.find(L"Rose3:\tare you there?") != log.npos);
        CHECK(log.find(L"\r\nEnd IM - ") != log.npos);
        CHECK_FALSE(AnswerIM(bench.arrive(L"Rose3", L"hello?")));
    }
}

TEST_CASE("a reply part that is only made when asked for, and one that is late")
{
    Bench bench({.version = 5, .lateMs = 300, .more = {L"--reply=absent"}});
    CHECK(AnswerIM(bench.arrive(L"Rose3", L"hi")));
    REQUIRE(bench.sends(1));
    CHECK(bench.sent()[0] == builtIn(L"Rose3"));
}

TEST_CASE("the accented French caption is not answered")
{
    Bench bench({.edition = 5, .version = 6});
    const IMInfo im = bench.arrive(L"Rose3", L"salut");
    CHECK(im.caption.starts_with(L">Message \u00E9"));
    CHECK_FALSE(AnswerIM(im));
}

TEST_CASE("two programs that answer each other stop")
{
    Bench bench({.version = 6});
    std::size_t answers = 0;
    while (answers < 20 && AnswerIM(bench.arrive(L"Rose3", L"auto " + std::to_wstring(answers)))) {
        ++answers;
        REQUIRE(bench.sends(answers));
        // The next message comes when this answer is done with.
        REQUIRE(waitFor([&] {
            return bench.logOf(L"Rose3").find(L"auto " + std::to_wstring(answers - 1))
                   != std::wstring::npos;
        }));
    }
    CHECK(answers == 5);
    CHECK(AnswerIM(bench.arrive(L"Ann", L"hi"))); // others are not held up
    setAnswerMode(0);
    setAnswerMode(1);
    CHECK(AnswerIM(bench.arrive(L"Rose3", L"hi again")));
}

TEST_CASE("513 characters: the default answer goes while the warning is still open")
{
    Bench bench({.version = 6});
    bench.messages().save(AnswerKind::personalised, L"rose3", std::wstring(513, L'x'));
    opt::General::AutoCloseMsgBox.set(false);
    bool sentWhileOpen = false;
    Timer watch;
    watch.start(50, [&] {
        const HWND box = FindWindowW(nullptr, L"Velora - Auto-Answer");
        if (!box || !IsWindowVisible(box) || bench.sent().empty())
            return;
        sentWhileOpen = true;
        watch.stop();
        CHECK(drive::press(box, L"OK"));
    });
    CHECK(AnswerIM(bench.arrive(L"Rose3", L"hi")));
    CHECK(waitFor([&] { return sentWhileOpen; }));
    CHECK(bench.sent() == std::vector<std::wstring>{builtIn(L"Rose3")});
}

TEST_CASE("a personalised message, an alias, and a name with markup in it")
{
    Bench bench({.version = 7});
    bench.messages().save(AnswerKind::personalised, L"Rose3", L"<b>Hi {%}</b>");
    opt::IM::UseAlias.set(true);
    writeSetting(L"ChatAlias", L"rose3", L"R&<se");
    CHECK(AnswerIM(bench.arrive(L"Rose3", L"x")));
    REQUIRE(bench.sends(1));
    CHECK(bench.sent()[0] == L"Rose3: <b>Hi R&amp;&lt;se</b>");
}

TEST_CASE("what the user has begun to write stays, and is not sent")
{
    Bench bench({.version = 6});
    const IMInfo im = bench.arrive(L"Rose3", L"hi");
    const HWND reply = childOfClass(reinterpret_cast<HWND>(im.window), L"RICHCNTL", 2);
    REQUIRE(reply);
    SendMessageW(reply, WM_SETTEXT, 0, reinterpret_cast<LPARAM>(L"my own words"));
    CHECK(AnswerIM(im));
    CHECK(AnswerIM(bench.arrive(L"Ann", L"hi"))); // its turn comes after the other one's
    REQUIRE(bench.sends(1));
    CHECK(bench.sent()[0] == builtIn(L"Ann"));
    CHECK(textOf(reply) == L"my own words");
}

TEST_CASE("an IM that is closed, and an AOL that hangs, hold nothing up")
{
    Bench bench({.version = 6});
    const IMInfo gone = bench.arrive(L"Rose3", L"hi");
    CHECK(AnswerIM(gone));
    bench.host.command(L"close Rose3");
    const IMInfo im = bench.arrive(L"Ann", L"hi");
    bench.host.command(L"hang 1500");
    CHECK(AnswerIM(im));
    REQUIRE(bench.sends(1));
    CHECK(bench.sent().back() == builtIn(L"Ann"));
}

TEST_CASE("events: own lines raise no answer, hostile senders make no paths, the answer window")
{
    Bench bench({.version = 6});
    startIMServices({});
    opt::IM::ShowAnswerWin.set(true);
    opt::IM::DisplayAlert.set(false);
    const IMInfo im = bench.arrive(L"..\\..\\evil", L"hi");
    raiseIMEvent([&](const IMEvents& events) { events.onNewText(im, L"Orv Tester:\tmy words"); });
    raiseIMEvent([&](const IMEvents& events) { events.onNewText(im, im.text); });
    REQUIRE(bench.sends(1));
    CHECK(waitFor([&] { return !bench.logOf(im.screenName).empty(); }));
    CHECK(bench.sent().size() == 1);
    CHECK(listFolder(joinPath(bench.temp.path(), L"im logs")).size() == 1);
    frmAnswered* const list = Form::find<frmAnswered>();
    REQUIRE(list);
    CHECK(GetForegroundWindow() != list->hwnd());
}
