// Message boxes as a user meets them: real windows, real keys and clicks.
#include "core/MsgBoxEx.h"
#include "core/frmMsg.h"
#include "settings/Options.h"
#include "support/aolhost_win.h"
#include "support/drive_win.h"
#include "ui/MessageLoop.h"
#include "ui/WinGeometry.h"

#include <doctest/doctest.h>

using namespace velora;

namespace {

// The option for the length of a test, and what it was afterwards.
class AutoClose {
public:
    explicit AutoClose(bool on, long seconds = 5)
        : on_(opt::General::AutoCloseMsgBox.get()), seconds_(opt::General::AutoCloseTime.get())
    {
        opt::General::AutoCloseMsgBox.set(on);
        opt::General::AutoCloseTime.set(seconds);
    }
    ~AutoClose()
    {
        opt::General::AutoCloseMsgBox.set(on_);
        opt::General::AutoCloseTime.set(seconds_);
    }

private:
    bool on_;
    long seconds_;
};

// Shows a box and lets `act` do something with it.
int boxAnswer(int style, const std::function<void(HWND)>& act, std::wstring_view prompt = L"Words.")
{
    drive::Script script([&] {
        const HWND box = drive::window(L"Velora - Test");
        REQUIRE(box);
        REQUIRE(drive::activate(box));
        act(box);
    });
    const int answer = MsgBoxEx(prompt, style, L"Test");
    CHECK(script.done());
    return answer;
}

// A form of ours that AOL's frame owns, as the toolbar's windows are.
class OverAol final : public Form {
public:
    explicit OverAol(HWND frame) : Form("OverAol"), frame_(frame) {}

private:
    FormOptions options() const override
    {
        FormOptions options;
        options.title = L"Over AOL";
        options.owner = frame_;
        options.client = {200, 100};
        return options;
    }
    HWND frame_;
};

} // namespace

TEST_CASE("each button answers its number")
{
    const AutoClose off(false);
    struct Case {
        int style;
        const wchar_t* button;
        int answer;
    };
    const Case cases[] = {
        {1, L"Cancel", 2},
        {2, L"Abort", 3},
        {2, L"Ignore", 5},
        {6, L"Preview", 9},
    };
    for (const Case& c : cases) {
        CAPTURE(c.style);
        CHECK(boxAnswer(c.style, [&](HWND box) { CHECK(drive::press(box, c.button)); })
              == c.answer);
    }
}

TEST_CASE("Enter, Esc, Tab, arrows and mnemonics")
{
    const AutoClose off(false);
    const auto key = [](WORD virtualKey) { return [=](HWND) { drive::key(virtualKey); }; };
    CHECK(boxAnswer(4, key(VK_RETURN)) == kAnswerYes);
    CHECK(boxAnswer(256 + 4, key(VK_RETURN)) == kAnswerNo);
    CHECK(boxAnswer(3, key(VK_ESCAPE)) == kAnswerCancel);
    CHECK(boxAnswer(3,
                    [](HWND) {
                        drive::key(VK_TAB);
                        drive::key(VK_RETURN);
                    })
          == kAnswerNo);
    CHECK(boxAnswer(3,
                    [](HWND) {
                        drive::key(VK_TAB, {VK_SHIFT});
                        drive::key(VK_SPACE);
                    })
          == kAnswerCancel);
    CHECK(boxAnswer(3,
                    [](HWND) {
                        drive::key(VK_RIGHT);
                        drive::key(VK_RETURN);
                    })
          == kAnswerNo);
    CHECK(boxAnswer(4, [](HWND) { drive::type(L"n"); }) == kAnswerNo);
    CHECK(boxAnswer(6, [](HWND) { drive::key('P', {VK_MENU}); }) == kAnswerPreview);
}

TEST_CASE("a question without Cancel wants an answer")
{
    const AutoClose off(false);
    CHECK(boxAnswer(4,
                    [](HWND box) {
                        drive::key(VK_ESCAPE);
                        PostMessageW(box, WM_CLOSE, 0, 0);
                        doEvents();
                        CHECK(IsWindow(box));
                        CHECK((GetMenuState(GetSystemMenu(box, FALSE), SC_CLOSE, MF_BYCOMMAND)
                               & (MF_GRAYED | MF_DISABLED))
                              != 0);
                        CHECK(drive::press(box, L"No"));
                    })
          == kAnswerNo);
    CHECK(boxAnswer(1, [](HWND box) { PostMessageW(box, WM_CLOSE, 0, 0); }) == kAnswerCancel);
    CHECK(boxAnswer(0, [](HWND box) { PostMessageW(box, WM_CLOSE, 0, 0); }) == kAnswerOK);
}

TEST_CASE("the drawn text is there for screen readers, and Ctrl+C copies the box")
{
    const AutoClose off(false);
    const std::wstring name = L"my~Bfile~.wav";
    drive::clearClipboard();
    boxAnswer(
        48 + 3,
        [&](HWND box) {
            const std::wstring words = L"Cannot play " + name + L"\r\nTry again?";
            CHECK(drive::child(box, words));
            drive::key('C', {VK_CONTROL});
            CHECK(drive::until([] { return !drive::clipboardText().empty(); }));
            CHECK(drive::clipboardText()
                  == L"---------------------------\r\nVelora - Test\r\n"
                     L"---------------------------\r\n"
                         + words
                         + L"\r\n---------------------------\r\nYes   No   Cancel   \r\n"
                           L"---------------------------\r\n");
            drive::key(VK_ESCAPE);
        },
        L"~B~CRCannot play~B~CN " + literal(name) + L"~NTry again?");
}

TEST_CASE("the box grows with its text, its buttons below, and stays on the screen")
{
    const AutoClose off(false);
    const auto measured = [](std::wstring_view prompt) {
        Rect box, text, button;
        boxAnswer(
            64,
            [&](HWND window) {
                box = windowRect(window);
                text = windowRect(drive::child(window, plainText(prompt)));
                button = windowRect(drive::child(window, L"OK"));
                drive::key(VK_RETURN);
            },
            prompt);
        CHECK(button.top >= text.bottom);
        CHECK(button.bottom < box.bottom);
        CHECK(text.right < box.right);
        CHECK(
            intersection(box, {0, 0, GetSystemMetrics(SM_CXSCREEN), GetSystemMetrics(SM_CYSCREEN)})
            == box);
        return box.size();
    };
    const Size small = measured(L"One line.");
    const Size five = measured(L"1~N2~N3~N4~N5");
    const Size six = measured(L"1~N2~N3~N4~N5~N6");
    CHECK(five.height > small.height);
    CHECK(six.height - five.height == measured(L"1~N2~N3~N4~N5~N6~N7").height - six.height);
    std::wstring words;
    for (int i = 0; i < 3000; ++i)
        words += L"word ";
    const Size huge = measured(words + L"end");
    CHECK(huge.height > six.height);
    CHECK(huge.width > six.width);
}

TEST_CASE("an auto-closed box fills its bar and answers the default button")
{
    const AutoClose on(true, 1);
    int seen = 0;
    bool rising = true;
    CHECK(boxAnswer(256 + 4,
                    [&](HWND box) {
                        const HWND bar = drive::child(box, PROGRESS_CLASSW);
                        REQUIRE(bar);
                        drive::until([&] {
                            if (!IsWindow(box))
                                return true;
                            const int now = static_cast<int>(SendMessageW(bar, PBM_GETPOS, 0, 0));
                            rising = rising && (now >= seen || !IsWindow(bar));
                            seen = std::max(seen, now);
                            return false;
                        });
                    })
          == kAnswerNo);
    CHECK(rising);
    CHECK(seen > 0);
    const AutoClose off(false);
    boxAnswer(0, [](HWND box) {
        const HWND bar = drive::child(box, PROGRESS_CLASSW);
        CHECK(!bar);
        drive::key(VK_RETURN);
    });
}

TEST_CASE("a box over a box: the lower one waits, and its time stands still")
{
    const AutoClose on(true, 2);
    int inner = 0;
    const int outer = boxAnswer(256 + 4, [&](HWND box) {
        const AutoClose off(false);
        drive::Script second([&] {
            const HWND over = drive::window(L"Velora - Over it");
            REQUIRE(over);
            CHECK(!IsWindowEnabled(box));
            const HWND bar = drive::child(box, PROGRESS_CLASSW);
            const auto before = SendMessageW(bar, PBM_GETPOS, 0, 0);
            pause(300);
            CHECK(SendMessageW(bar, PBM_GETPOS, 0, 0)
                  <= before + 6); // what the first tick had left
            CHECK(drive::press(over, L"Cancel"));
        });
        inner = MsgBoxEx(L"Inner", 1, L"Over it");
        CHECK(second.done());
        CHECK(IsWindowEnabled(box));
        CHECK(drive::press(box, L"Yes"));
    });
    CHECK(inner == kAnswerCancel);
    CHECK(outer == kAnswerYes);
}

TEST_CASE("the same message is not shown twice, and a storm ends")
{
    const AutoClose off(false);
    boxAnswer(
        16,
        [](HWND box) {
            CHECK(MsgBoxEx(L"Same.", 16, L"Test") == kAnswerOK); // returns at once
            drive::press(box, L"OK");
        },
        L"Same.");
    // Each tick of the storm raises another question inside the one before.
    int raised = 0, refused = 0;
    std::function<void()> storm = [&] {
        if (++raised > 20)
            return;
        drive::Script next(storm);
        if (MsgBoxEx(L"Storm " + std::to_wstring(raised), 4, L"Storm") == kAnswerNo)
            ++refused;
        Form::unloadAll();
    };
    storm();
    CHECK(raised >= 9);
    CHECK(Form::all().empty());
}

TEST_CASE("a box shuts out our forms and gives the harmless answer when the program ends")
{
    const AutoClose off(false);
    for (const auto& [style, harmless] :
         {std::pair{4, kAnswerNo}, {1, kAnswerCancel}, {2, kAnswerAbort}, {0, kAnswerOK}})
        CHECK(boxAnswer(style, [](HWND) { Form::unloadAll(); }) == harmless);
    CHECK(boxAnswer(4, [](HWND) { quitMessageLoop(3); }) == kAnswerNo);
    CHECK(runMessageLoop() == 3); // the end is not lost with the box
}

TEST_CASE("a box over AOL lives on while AOL hangs, and never disables AOL")
{
    const AutoClose off(false);
    test::AolHost aol;
    OverAol form(aol.frame());
    form.create();
    form.show();
    CHECK(drive::activate(form.hwnd()));
    const int answer = boxAnswer(4, [&](HWND box) {
        CHECK(GetWindow(box, GW_OWNER) == nullptr); // no tie to AOL's input
        CHECK(IsWindowEnabled(aol.frame()));
        CHECK(!IsWindowEnabled(form.hwnd()));
        // AOL's own window, which has just come up, may not cover the box when nothing moves it any
        // more.
        CHECK(drive::activate(box));
        aol.command(L"hang 6000");
        CHECK(drive::press(box, L"No"));
    });
    CHECK(answer == kAnswerNo);
    // Answered while AOL still hung.
    DWORD_PTR alive = 0;
    CHECK(!SendMessageTimeoutW(aol.frame(), WM_NULL, 0, 0, SMTO_ABORTIFHUNG, 100, &alive));
}

TEST_CASE("after a box the user is back where he was, in AOL too")
{
    const AutoClose off(false);
    test::AolHost aol;
    OverAol form(nullptr);
    form.create();
    form.show();
    CHECK(drive::activate(aol.frame()));
    boxAnswer(0, [](HWND) { drive::key(VK_RETURN); });
    CHECK(drive::until([&] { return GetForegroundWindow() == aol.frame(); }));
}

TEST_CASE("system-modal is topmost")
{
    const AutoClose off(false);
    for (const auto& [style, topmost] : {std::pair{4096, true}, {0, false}})
        boxAnswer(style, [&, wanted = topmost](HWND box) {
            CHECK(((GetWindowLongPtrW(box, GWL_EXSTYLE) & WS_EX_TOPMOST) != 0) == wanted);
            drive::key(VK_RETURN);
        });
}
