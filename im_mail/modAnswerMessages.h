#pragma once
// The auto-answer's messages and its exceptions list, as text files below the program's data
// folder: "msg1.dat" (the default), "im\general\TITLE.dat", "im\personalized\NAME.dat" and
// "im\exceptions.dat". What writes throws Error when it fails; the former text is kept then.
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace velora {

/// Longest title of a message that a user may give.
inline constexpr std::size_t kMostTitle = 64;

enum class AnswerKind { general, personalised };

class clsAnswerMessages {
public:
    explicit clsAnswerMessages(std::wstring dataFolder) : folder_(std::move(dataFolder)) {}

    /// Titles (screen names of the personalised) in the order of the alphabet.
    std::vector<std::wstring> titles(AnswerKind kind) const;
    bool exists(AnswerKind kind, std::wstring_view title) const;
    /// Absent when there is no such message.
    std::optional<std::wstring> read(AnswerKind kind, std::wstring_view title) const;
    void save(AnswerKind kind, std::wstring_view title, std::wstring_view text) const;
    /// False, and nothing changed, when the new title is taken by another message.
    bool rename(AnswerKind kind, std::wstring_view from, std::wstring_view to) const;
    void remove(AnswerKind kind, std::wstring_view title) const;

    /// The text of "msg1.dat"; empty when it is missing.
    std::wstring defaultText() const;
    void saveDefault(std::wstring_view text) const;

    std::vector<std::wstring> exceptions() const;
    bool inExceptions(std::wstring_view screenName) const;
    /// False when the name is none, or there already.
    bool addException(std::wstring_view screenName) const;
    void removeException(std::wstring_view screenName) const;

private:
    std::wstring folderOf(AnswerKind kind) const;
    std::wstring pathOf(AnswerKind kind, std::wstring_view title) const;
    void writeExceptions(const std::vector<std::wstring>& names) const;

    std::wstring folder_;
};

} // namespace velora
