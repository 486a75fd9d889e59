#include "support/imbench_win.h"

#include "base/clsFileOp.h"
#include "base/files.h"
#include "base/text.h"
#include "chat/ToolbarRoutes.h"
#include "core/modAOL.h"
#include "hook/AgentLink.h"
#include "settings/Options.h"

#include <algorithm>
#include <doctest/doctest.h>

namespace velora::test {

IMBench::IMBench(const AolHost::Options& options)
    : bench(options), folder(temp_.path()), formerFolder_(imProgramFolder())
{
    imProgramFolder() = folder;
    makeFolder(folder + L"\\data");
    IMEvents table;
    table.onNewIM = [this](const IMInfo& im) { events.push_back(L"new " + im.screenName); };
    table.onNewText = [this](const IMInfo& im, const std::wstring& fresh) {
        events.push_back(L"text " + im.screenName + L": " + replaceAll(fresh, L"\r\n", L"|"));
    };
    table.onIMClosed = [this](const IMInfo& im) { events.push_back(L"closed " + im.screenName); };
    table.onCurrentIM = [this](const IMInfo& im, bool byUser) {
        events.push_back(L"current " + im.screenName + (byUser ? L" by user" : L""));
    };
    subscription_ = observeIMs(std::move(table));
    routeIMs(toolbarRoutes());
    bench.load();
    startIMs();
}

IMBench::~IMBench()
{
    endIMs();
    imProgramFolder() = formerFolder_;
}

HWND IMBench::arrive(const std::wstring& name, const std::wstring& text)
{
    host.command(L"im " + name + L": " + text);
    const bool tabs = opt::IM::TabsOn.get();
    if (!waitFor([&] { return tabs ? taken(name) : session(name) != nullptr; }))
        return nullptr;
    return session(name)->window();
}

clsIMSession* IMBench::session(const std::wstring& name)
{
    for (clsIMSession* known : imSessions())
        if (screenNameKey(known->screenName()) == screenNameKey(name))
            return known;
    return nullptr;
}

bool IMBench::taken(const std::wstring& name)
{
    const clsIMSession* known = session(name);
    return known && known->taken;
}

std::wstring IMBench::log(const std::wstring& name) const
{
    return clsFileOp::ReadTextFromFile(
        imLogPath(folder + L"\\im logs", name, opt::IM::LogIMsByDate.get(), now()));
}

bool IMBench::logged(const std::wstring& name, const std::wstring& text) const
{
    return waitFor([&] { return log(name).find(text) != std::wstring::npos; });
}

bool IMBench::happened(const std::wstring& event) const
{
    return waitFor([&] { return std::find(events.begin(), events.end(), event) != events.end(); });
}

void IMBench::type(const std::wstring& name, const std::wstring& text)
{
    REQUIRE(taken(name));
    clsIMSession& im = *session(name);
    selectIM(im.window(), true);
    // Before version 6 the reply part is opened first.
    REQUIRE(waitFor([&] {
        im.findParts();
        return im.parts().reply && !im.parts().respond;
    }));
    REQUIRE(aolLink().setText(im.parts().reply, text));
}

bool IMBench::sent(const std::wstring& what)
{
    return waitFor([&] {
        const auto list = AolHost::listOf(host.command(L"imsent"));
        return std::find(list.begin(), list.end(), what) != list.end();
    });
}

std::size_t IMBench::count(const std::wstring& text, std::wstring_view part)
{
    std::size_t found = 0;
    for (std::size_t at = text.find(part); at != text.npos; at = text.find(part, at + 1))
        ++found;
    return found;
}

} // namespace velora::test
