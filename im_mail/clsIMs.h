#pragma once
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace velora {

/// A window of AOL's as a number, so that the models need no window system; 0 is none.
using WindowId = std::uintptr_t;

/// The IMs that the tabbed window holds, in the order of their tabs. One conversation for each
/// screen name: names are compared without blanks and case.
class clsIMs {
public:
    struct Entry {
        std::wstring screenName; ///< as its caption has it
        WindowId window = 0;
        bool unread = false;
    };

    /// False, and nothing added, when the name or the window is there already.
    bool Add(std::wstring_view screenName, WindowId window);
    std::size_t Count() const { return entries_.size(); }
    /// Removes the window's entry. The selection moves to the tab that takes its place, at the end
    /// to the one before. False when it was not there.
    bool Remove(WindowId window);
    /// The IM whose tab becomes the current one when this current one is removed; 0 when none is
    /// left.
    WindowId successor(WindowId window) const;
    bool CheckForDuplicate(std::wstring_view screenName) const;

    const Entry& at(std::size_t index) const { return entries_.at(index); }
    std::optional<std::size_t> indexOf(WindowId window) const;
    std::optional<std::size_t> indexOf(std::wstring_view screenName) const;

    /// The current tab's window and name; 0 and empty when there is none. Setting one to what is
    /// not in the list changes nothing. A selected IM counts as read.
    WindowId SelectedIM() const;
    void SetSelectedIM(WindowId window);
    std::wstring SelectedNick() const;
    void SetSelectedNick(std::wstring_view screenName);
    std::optional<std::size_t> selectedIndex() const;

    /// Marks an IM that has something new, unless it is the current one. False when it stays as it
    /// was.
    bool markUnread(WindowId window);
    /// Takes the mark away.
    void markRead(WindowId window);
    std::size_t unreadCount() const;

private:
    void select(std::size_t index);

    std::vector<Entry> entries_;
    std::size_t selected_ = 0; ///< counts only while there are entries
};

} // namespace velora
