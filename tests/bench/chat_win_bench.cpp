// From AOL's notice that the display changed to the line's ChatMsg, beside the ways in which a
// program outside AOL could read the same lines.
#include "base/win.h"
#include "bench/bench.h"
#include "core/clsChat.h"
#include "core/modAOL.h"
#include "core/modChatDisplay.h"
#include "hook/AgentLink.h"
#include "hook/WindowHook.h"
#include "support/aolhost_win.h"

#include <stdexcept>

using namespace velora;
using namespace velora::bench;
using velora::test::AolHost;
using velora::test::waitFor;

namespace {

constexpr UINT kTextChanged = 5143;

void lineByLine(HWND display)
{
    const LRESULT count = SendMessageW(display, EM_GETLINECOUNT, 0, 0);
    wchar_t line[1024];
    for (LRESULT at = 0; at < count; ++at) {
        line[0] = 1024;
        SendMessageW(display, EM_GETLINE, static_cast<WPARAM>(at), reinterpret_cast<LPARAM>(line));
    }
}

void wholeText(HWND display)
{
    std::wstring text(static_cast<std::size_t>(GetWindowTextLengthW(display)), L'\0');
    SendMessageW(display, WM_GETTEXTLENGTH, 0, 0);
    text.resize(static_cast<std::size_t>(SendMessageW(display, WM_GETTEXTLENGTH, 0, 0)) + 1);
    SendMessageW(display, WM_GETTEXT, text.size(), reinterpret_cast<LPARAM>(text.data()));
}

/// The reader on a hooked display, as the toolbar has it.
class Reading {
public:
    explicit Reading(HWND display) : display_(display)
    {
        chat_.ChatMsg = [this](std::wstring&, std::wstring&) { ++lines_; };
        hook_.WndMessageX = [this](HookMessage&) {
            if (chat_.CheckChat() == 0)
                chat_.HandleChat();
        };
        chat_.Init(chatDisplayReader(display));
        // A display that AOL has just filled may take it longer than the reader waits for.
        if (!waitFor([&] { return chat_.CheckChat() == 1 && !chat_.missed(); }))
            throw std::runtime_error("AOL does not let the display be read");
    }

    /// Milliseconds from the notice to the line. The line itself arrives before, with no hook
    /// there.
    double once(AolHost& aol)
    {
        const int before = lines_;
        aol.command(L"say Rose3: a line of usual length in a chat room");
        if (!hook_.attach(aolLink(), display_,
                          {{kTextChanged, 0, ~WPARAM{0}, Delivery::postedAfter, true}}))
            throw std::runtime_error("the display could not be hooked");
        const double start = clockMs();
        PostMessageW(display_, kTextChanged, 0, 0);
        while (lines_ == before && clockMs() - start < 20000) {
            MSG message;
            while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE))
                DispatchMessageW(&message);
            if (lines_ == before)
                MsgWaitForMultipleObjectsEx(0, nullptr, 100, QS_ALLINPUT, MWMO_INPUTAVAILABLE);
        }
        if (lines_ == before)
            throw std::runtime_error("the line did not arrive");
        const double taken = clockMs() - start;
        hook_.detach();
        return taken;
    }

private:
    HWND display_;
    clsChat chat_;
    WindowHook hook_;
    int lines_ = 0;
};

double noticeToLine(AolHost& aol, HWND display, int rounds)
{
    Reading reading(display);
    std::vector<double> taken;
    for (int round = 0; round < rounds; ++round)
        taken.push_back(reading.once(aol));
    return median(std::move(taken));
}

} // namespace

BENCH("chat: from AOL's notice to the line, by length of the display")
{
    AolHost aol({.more = {L"--trim=0"}});
    aol.enterRoom();
    const HWND display = aol.displayWindow();
    if (!connectAol())
        throw std::runtime_error("no way into AOL");
    double shortText = 0;
    int held = 0;
    for (const int lines : {100, 1000, 5000}) {
        aol.command(L"clear");
        aol.command(L"fill " + std::to_wstring(lines));
        held = static_cast<int>(SendMessageW(display, EM_GETLINECOUNT, 0, 0));
        const std::string with = ", " + std::to_string(held) + " display lines";
        const double text = medianMs(lines > 1000 ? 5 : 15, [&] { wholeText(display); });
        if (shortText == 0)
            shortText = text;
        report.row("one whole-text read across processes" + with, text, shortText);
        const double ours = noticeToLine(aol, display, 15);
        report.row("notice to ChatMsg" + with, ours, shortText);
        report.row("the last 1,200 characters alone" + with,
                   medianMs(15, [&] { aolLink().readTail(display, 1200); }), shortText);
        report.row("reading line by line across processes" + with,
                   medianMs(lines > 100 ? 1 : 5, [&] { lineByLine(display); }), shortText);
    }
    report.note("x: times the whole-text read of the shortest display; aim for ChatMsg: at most 2");
    aolLink().disconnect();
}
