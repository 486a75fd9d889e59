#pragma once
// The auto-answer's decisions: whom it answers, with what, and how often. Pure.
#include <cstdint>
#include <deque>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <string_view>

namespace velora {

/// AOL takes no longer IM, markup included.
inline constexpr std::size_t kMostImCharacters = 512;

/// The answer where no message of the user's serves, and the text offered for a new general
/// message.
std::wstring defaultAnswer();
std::wstring newGeneralMessage();

/// Whether a sender is answered. Modes: 0 nobody, 1 everybody, 2 only the names of the exceptions
/// list, 3 everybody but those, 4 only those with a buddy note, 5 everybody but those; any other
/// value everybody.
bool modeAnswers(int mode, bool inExceptions, bool hasNote);

/// True when the list (one name a line) holds the name.
bool listHolds(std::wstring_view list, std::wstring_view screenName);

struct AnswerChoice {
    std::wstring text;    ///< "{%}" not yet filled
    bool tooLong = false; ///< the message found was over the limit; the default answer stands in
};
/// The personalised message where there is one, else the general one, else the default file's text;
/// what is missing is empty. An empty or too long text gives the built-in answer.
AnswerChoice GetReturnMsg(const std::optional<std::wstring>& personalised,
                          const std::optional<std::wstring>& general,
                          std::wstring_view defaultText);

/// "{%}" replaced by the name, in one pass; the name's HTML signs are escaped.
std::wstring fillAnswer(std::wstring_view text, std::wstring_view name);

/// The key of a personalised message's file: lower case, blanks removed, made safe.
std::wstring personalisedFileName(std::wstring_view screenName);

/// The senders answered since auto-answer was switched on, and how often within the last hour: two
/// programs that answer each other must not go on for ever.
class clsAnswered {
public:
    explicit clsAnswered(int mostPerHour = 5) : mostPerHour_(mostPerHour) {}
    void clear();
    bool contains(std::wstring_view screenName) const;
    /// `ms` is a tick count that may wrap.
    bool mayAnswer(std::wstring_view screenName, std::uint32_t ms, bool onceOnly);
    void add(std::wstring_view screenName, std::uint32_t ms);
    void setMostPerHour(int most) { mostPerHour_ = most; }

private:
    int mostPerHour_;
    std::set<std::wstring> answered_;
    std::map<std::wstring, std::deque<std::uint32_t>> recent_;
};

} // namespace velora
