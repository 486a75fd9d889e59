#pragma once
// The hooks on the room's input box and Send button: a text that the user sends is looked at before
// AOL gets it, and goes out faded, in lines, or not at all because it is a keyword.
#include "chat/modSendRules.h"
#include "hook/WindowHook.h"

#include <functional>
#include <optional>
#include <string>

namespace velora {

class clsChatSend {
public:
    clsChatSend();

    /// Hooks the room's input box and Send button; false, and nothing hooked, when AOL has not
    /// built them yet or does not answer.
    bool attach(AgentLink& link, HWND room);
    void detach();
    /// False again when AOL has replaced one of the two.
    bool attached() const { return sbcCmdLine.window() && sbcSendIcon.window(); }

    /// A keyword text, what follows its "/"; AOL is not waiting.
    std::function<void(const std::wstring&)> onKeyword;
    /// Lines to send one after the other; AOL is not waiting.
    std::function<void(std::vector<std::wstring>)> onLines;
    /// The user has begun a keyword: the box holds a "/" and nothing else.
    std::function<void()> onSlash;

private:
    void keyPressed(HookMessage& message);
    void mouse(HookMessage& message);
    /// Looks at what is typed; true when AOL is not to send it.
    bool takeOver(HookMessage& message);
    void delayed(int code);
    /// What stands in the input box; absent when AOL does not answer.
    std::optional<std::wstring> GetTypedText() const;

    AgentLink* link_ = nullptr;
    HWND input_ = nullptr;
    WindowHook sbcCmdLine;
    WindowHook sbcSendIcon;
    /// The button went down on Send and AOL has not been told: its release is ours too.
    bool mouseTaken_ = false;
    std::wstring keyword_;
    std::vector<std::wstring> lines_;
    std::wstring typed_, faded_; ///< the line that was last handed over, as typed and as it left
};

/// What the options say now.
SendOptions sendOptions();

} // namespace velora
