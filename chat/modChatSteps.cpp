#include "chat/modChatSteps.h"

#include "base/trap.h"
#include "chat/ToolbarRoutes.h"
#include "chat/modHotWords.h"
#include "core/modHotWordList.h"
#include "settings/Options.h"

namespace velora {
namespace {

constexpr char kModule[] = "modChatSteps";

constexpr ChatStep kSteps[] = {
    {"CheckForAlias",
     [] { return opt::General::ChatAliasEnabled.get() && toolbarRoutes().checkForAlias; },
     [](ChatLine& line) { line.screenName = toolbarRoutes().checkForAlias(line.screenName); }},
    {"WavDetect", [] { return opt::General::WavDetect.get() && toolbarRoutes().detectWav; },
     [](ChatLine& line) { toolbarRoutes().detectWav(line.screenName, line.message, line.own); }},
    {"AppendChatLog", [] { return opt::General::ChatLog.get() && toolbarRoutes().logLine; },
     [](ChatLine& line) { toolbarRoutes().logLine(line.screenName, line.message); }},
    {"HotWords", [] { return opt::HotWords::Active.get() && toolbarRoutes().hotWord; },
     [](ChatLine& line) {
         const auto word =
             line.own ? std::nullopt
                      : findHotWord(line.message, hotWords(), opt::HotWords::CaseSensitive.get());
         if (word)
             toolbarRoutes().hotWord(*word, line.screenName, line.message);
     }},
};

} // namespace

std::span<const ChatStep> chatSteps()
{
    return kSteps;
}

void routeChatLine(ChatLine line, std::span<const ChatStep> steps)
{
    for (const ChatStep& step : steps)
        trap(
            kModule,
            [&] {
                if (step.on())
                    step.run(line);
            },
            step.name);
}

} // namespace velora
