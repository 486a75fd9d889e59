#pragma once
// What happens to one line of the room, step by step. The table is in modChatSteps.cpp.
#include <span>
#include <string>

namespace velora {

struct ChatLine {
    std::wstring screenName; ///< a step may change it for those after it (aliases)
    std::wstring message;
    bool own = false; ///< said by the user of this machine
};

struct ChatStep {
    const char* name; ///< for the error log
    /// Whether the step is wanted and there is somebody to do it.
    bool (*on)();
    void (*run)(ChatLine& line);
};

std::span<const ChatStep> chatSteps();

/// Takes the line through the steps that are on, in order. A step that fails is reported and the
/// next one goes on.
void routeChatLine(ChatLine line, std::span<const ChatStep> steps = chatSteps());

} // namespace velora
