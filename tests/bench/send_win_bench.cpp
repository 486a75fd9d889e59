// From the Enter key in AOL's chat box to AOL's sending: AOL alone, and with the toolbar's hooks on
// the box.
#include "base/win.h"
#include "bench/bench.h"
#include "chat/clsChatSend.h"
#include "chat/modCurrentFade.h"
#include "core/modAOL.h"
#include "hook/AgentLink.h"
#include "hook/aolSend.h"
#include "settings/Options.h"
#include "support/aolhost_win.h"
#include "support/memory_store.h"

#include <algorithm>
#include <stdexcept>

using namespace velora;
using namespace velora::bench;
using velora::test::AolHost;
using velora::test::textOf;

namespace {

constexpr int kRounds = 60;
constexpr DWORD kIdleMs = 30; // AOL paints what was said before the next key comes
constexpr double kAddedAimMs = 5;
constexpr wchar_t kLine[] = L"so what did you all do today? it was raining here";

struct Times {
    double usual = 0;       ///< the median
    double undisturbed = 0; ///< nine of ten take longer: other work on the machine slows the rest
};

/// Milliseconds from the key to AOL's having sent the line and emptied its box.
Times enterToSent(AolHost& aol, HWND input, const std::wstring& line)
{
    aol.command(L"clear"); // a long display takes AOL longer
    const std::size_t before = aol.sent().size();
    std::vector<double> taken;
    for (int round = 0; round < kRounds; ++round) {
        setAolText(input, line);
        Sleep(kIdleMs);
        const double start = clockMs();
        SendMessageW(input, WM_KEYDOWN, VK_RETURN, 0x001C0001);
        SendMessageW(input, WM_CHAR, VK_RETURN, 0x001C0001);
        taken.push_back(clockMs() - start);
        if (!textOf(input).empty())
            throw std::runtime_error("AOL did not send the line");
    }
    const std::vector<std::wstring> sent = aol.sent();
    if (sent.size() != before + kRounds)
        throw std::runtime_error("not every line was sent once");
    std::sort(taken.begin(), taken.end());
    return {taken[taken.size() / 2], taken[taken.size() / 10]};
}

/// Milliseconds to put the markup in the place of the line, unseen: no way of fading can do
/// without.
double puttingMarkup(HWND input, const std::wstring& markup)
{
    std::vector<double> taken;
    for (int round = 0; round < kRounds; ++round) {
        setAolText(input, kLine);
        Sleep(kIdleMs);
        const double start = clockMs();
        sendToAol(input, WM_SETREDRAW, FALSE, 0);
        setAolText(input, markup);
        taken.push_back(clockMs() - start);
        setAolText(input, L"");
        sendToAol(input, WM_SETREDRAW, TRUE, 0);
    }
    std::sort(taken.begin(), taken.end());
    return taken[taken.size() / 2];
}

} // namespace

BENCH("send: from Enter in AOL's chat box to AOL's sending")
{
    setSettingsStore(std::make_unique<MemoryStore>());
    LoadSettings();
    opt::Fader::NewFadeAfterUse.set(false);
    AolHost host;
    aol() = {};
    aol().folder = host.folder();
    aol().version = 5;
    const HWND room = host.enterRoom(), input = host.inputWindow();
    std::wstring markup = kLine;
    FadeEngine(markup);
    const Times alone = enterToSent(host, input, kLine);
    report.row("AOL alone", alone.usual);
    // What AOL itself takes to show so many colours is not ours.
    const Times coloured = enterToSent(host, input, markup);
    report.row("AOL alone, given the faded line's markup", coloured.usual, alone.usual);
    const double putting = puttingMarkup(input, markup);
    report.row("putting that markup into AOL's box", putting, alone.usual);
    if (!connectAol())
        throw std::runtime_error("no way into AOL");
    clsChatSend send;
    if (!send.attach(aolLink(), room))
        throw std::runtime_error("the chat box could not be hooked");
    const auto with = [&](const std::string& what, const Times& without, double unavoidable) {
        const Times took = enterToSent(host, input, kLine);
        report.row("with Velora, " + what, took.usual, without.usual);
        report.rowWithAim("  added", took.usual - without.usual, kAddedAimMs);
        report.rowWithAim("  added, in the least disturbed tenth",
                          took.undisturbed - without.undisturbed, kAddedAimMs);
        if (unavoidable > 0)
            report.rowWithAim("  added to AOL's taking the markup",
                              took.usual - without.usual - unavoidable, kAddedAimMs);
    };
    with("the line as typed", alone, 0);
    opt::Fader::On.set(true);
    with("the line faded", coloured, putting);
    send.detach();
    aolLink().disconnect();
    aol() = {};
    setSettingsStore(nullptr);
}
