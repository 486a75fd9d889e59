#pragma once
// The auto-answer: decides whether an IM that holds a new message is answered, and with what
// (pure), and answers it in AOL. Nothing here waits: an answer goes its way in steps from a timer,
// so that an open message box doesn't hold it up.
#include "im_mail/IMEvents.h"
#include "im_mail/modAnswerRules.h"

#include <functional>
#include <optional>
#include <string>
#include <string_view>

namespace velora {

// --- Deciding. Pure. ----------------------------------------------------------------------------

/// The last message of a member in a conversation ("NAME:" TAB text, a line each); empty when the
/// member has said nothing.
std::wstring lastMessageOf(std::wstring_view conversation, std::wstring_view screenName);
/// Whether a line of the text is the member's: own lines raise no answer.
bool hearsFrom(std::wstring_view text, std::wstring_view screenName);

/// The sound that a member's lines name; the first one, empty when they name none.
std::wstring soundNamedBy(std::wstring_view text, std::wstring_view screenName);

struct AnswerPolicy {
    int mode = 0;              ///< option IMAnswerMode
    bool once = false;         ///< option AnswerOnce
    bool personal = true;      ///< option UsePersonalMessages
    std::wstring message = {}; ///< option Message: the general message in use
};

/// Where the answer procedure asks; each is asked only when its turn comes.
struct AnswerSources {
    std::function<bool(const std::wstring&sender)> inExceptions, hasNote;
    std::function<std::optional<std::wstring>(const std::wstring& sender)> personalised;
    std::function<std::wstring(const std::wstring& title)> general; ///< empty when missing
    std::function<std::wstring()> defaultText;
    /// What "{%}" becomes.
    std::function<std::wstring(const std::wstring& sender)> nameFor;
};

struct PreparedAnswer {
    std::wstring sender;  ///< as the caption has it
    std::wstring text;    ///< at most kMostImCharacters, "{%}" filled
    bool tooLong = false; ///< the message in use was over the limit; the user is to be told
};
/// The answer to a window with this caption; absent when it is not to be answered. `ms` is a tick
/// count.
std::optional<PreparedAnswer> prepareAnswer(std::wstring_view caption, int edition, int version,
                                            const AnswerPolicy& policy, clsAnswered& answered,
                                            std::uint32_t ms, const AnswerSources& sources);

// --- Answering. For the user-interface thread. --------------------------------------------------

/// The sender of an IM window of AOL; empty when its caption names none.
std::wstring SenderSN(WindowId im);
/// The sender's last message there; empty when AOL doesn't answer.
std::wstring GetSenderMsg(WindowId im);

/// Answers an IM when the settings say so: types the answer into its reply box, presses Send, and
/// logs the conversation. True when an answer is on its way. A reply box in which the user has
/// begun to write is left alone.
bool AnswerIM(const IMInfo& im);

/// True while a mode other than "off" is set.
bool autoAnswerOn();
/// Sets the option; switching on forgets who was answered before.
void setAnswerMode(int mode);

/// Called after each answer that was sent: for the window that shows them. One listener.
void onAnswered(std::function<void(const std::wstring& sender)> listener);
/// Waiting answers are dropped (the program ends).
void endAnswers();

} // namespace velora
