#include "chat/modChatSteps.h"

#include "base/trap.h"
#include "chat/ToolbarRoutes.h"
#include "settings/Options.h"

#include <doctest/doctest.h>
#include <vector>

using namespace velora;

namespace {

std::vector<std::wstring> heard;
std::string reported;

/// Routes that write down what reaches them; the table is emptied again afterwards.
struct Routes {
    Routes()
    {
        heard.clear();
        toolbarRoutes().checkForAlias = [](const std::wstring& name) {
            return name == L"Joe" ? L"My Joe" : name;
        };
        toolbarRoutes().detectWav = [](const std::wstring& name, const std::wstring& message,
                                       bool own) {
            heard.push_back(name + L"|" + message + (own ? L"|own" : L""));
        };
    }
    ~Routes()
    {
        toolbarRoutes() = {};
        opt::General::WavDetect.set(true);
        opt::General::ChatAliasEnabled.set(true);
    }
};

} // namespace

TEST_CASE("a line goes through the aliases to wav detect")
{
    const Routes routes;
    opt::General::ChatAliasEnabled.set(true);
    opt::General::WavDetect.set(true);
    routeChatLine({L"Joe", L"{S x}", false});
    routeChatLine({L"Ann", L"hi", true});
    CHECK(heard == std::vector<std::wstring>{L"My Joe|{S x}", L"Ann|hi|own"});
}

TEST_CASE("options and missing routes switch steps off")
{
    const Routes routes;
    opt::General::ChatAliasEnabled.set(false);
    routeChatLine({L"Joe", L"1", false});
    opt::General::WavDetect.set(false);
    routeChatLine({L"Joe", L"2", false});
    CHECK(heard == std::vector<std::wstring>{L"Joe|1"});
    opt::General::WavDetect.set(true);
    opt::General::ChatAliasEnabled.set(true);
    toolbarRoutes() = {};
    routeChatLine({L"Joe", L"3", false});
    CHECK(heard.size() == 1);
}

TEST_CASE("a step that fails is reported under its name, and the next one goes on")
{
    const Routes routes;
    toolbarRoutes().checkForAlias = [](const std::wstring&) -> std::wstring {
        throw Error("no aliases");
    };
    reported.clear();
    const ErrorSink former =
        setErrorSink([](const ErrorRecord& record) noexcept { reported = record.procedure; });
    routeChatLine({L"Joe", L"1", false});
    setErrorSink(former);
    CHECK(reported == "CheckForAlias");
    CHECK(heard == std::vector<std::wstring>{L"Joe|1"});
}
