#include "im_mail/clsIMs.h"

#include "base/text.h"

#include <algorithm>

namespace velora {

bool clsIMs::Add(std::wstring_view screenName, WindowId window)
{
    if (window == 0 || CheckForDuplicate(screenName) || indexOf(window))
        return false;
    entries_.push_back({std::wstring(screenName), window, false});
    return true;
}

bool clsIMs::Remove(WindowId window)
{
    const auto index = indexOf(window);
    if (!index)
        return false;
    entries_.erase(entries_.begin() + static_cast<std::ptrdiff_t>(*index));
    if (*index < selected_ || selected_ == entries_.size())
        selected_ -= selected_ > 0;
    if (!entries_.empty())
        entries_[selected_].unread = false;
    return true;
}

WindowId clsIMs::successor(WindowId window) const
{
    const auto index = indexOf(window);
    if (!index || entries_.size() < 2)
        return 0;
    return entries_[*index + 1 < entries_.size() ? *index + 1 : *index - 1].window;
}

bool clsIMs::CheckForDuplicate(std::wstring_view screenName) const
{
    return indexOf(screenName).has_value();
}

std::optional<std::size_t> clsIMs::indexOf(WindowId window) const
{
    for (std::size_t i = 0; i < entries_.size(); ++i)
        if (entries_[i].window == window)
            return i;
    return std::nullopt;
}

std::optional<std::size_t> clsIMs::indexOf(std::wstring_view screenName) const
{
    const std::wstring key = screenNameKey(screenName);
    for (std::size_t i = 0; i < entries_.size(); ++i)
        if (screenNameKey(entries_[i].screenName) == key)
            return i;
    return std::nullopt;
}

std::optional<std::size_t> clsIMs::selectedIndex() const
{
    return entries_.empty() ? std::nullopt : std::optional(selected_);
}

WindowId clsIMs::SelectedIM() const
{
    return entries_.empty() ? 0 : entries_[selected_].window;
}

std::wstring clsIMs::SelectedNick() const
{
    return entries_.empty() ? std::wstring() : entries_[selected_].screenName;
}

void clsIMs::select(std::size_t index)
{
    selected_ = index;
    entries_[index].unread = false;
}

void clsIMs::SetSelectedIM(WindowId window)
{
    if (const auto index = indexOf(window))
        select(*index);
}

void clsIMs::SetSelectedNick(std::wstring_view screenName)
{
    if (const auto index = indexOf(screenName))
        select(*index);
}

bool clsIMs::markUnread(WindowId window)
{
    const auto index = indexOf(window);
    if (!index || *index == selected_ || entries_[*index].unread)
        return false;
    return entries_[*index].unread = true;
}

void clsIMs::markRead(WindowId window)
{
    if (const auto index = indexOf(window))
        entries_[*index].unread = false;
}

std::size_t clsIMs::unreadCount() const
{
    return static_cast<std::size_t>(
        std::count_if(entries_.begin(), entries_.end(), [](const Entry& e) { return e.unread; }));
}

} // namespace velora
