#include "chat/clsEditorModel.h"

#include "base/text.h"

namespace velora {
namespace {

constexpr std::size_t kMostEntries = 500;

/// What two entries may not share. Names are kept without regard to case, those of members without
/// blanks.
std::wstring keyOf(EditorList list, const EditorEntry& entry)
{
    switch (list) {
    case EditorList::Commands: return lower(trim(entry.name));
    case EditorList::Aliases: return screenNameKey(entry.name);
    default: return entry.text;
    }
}

} // namespace

clsEditorModel::clsEditorModel(EditorList list, std::vector<EditorEntry> entries,
                               std::wstring current)
    : list_(list), entries_(std::move(entries)), saved_(entries_), current_(std::move(current)),
      savedCurrent_(current_)
{
}

bool clsEditorModel::changed() const
{
    return entries_ != saved_ || current_ != savedCurrent_;
}

std::wstring clsEditorModel::fault(const EditorEntry& entry, int at) const
{
    const std::wstring reason = entryFault(list_, entry);
    if (!reason.empty())
        return reason;
    if (at < 0 && entries_.size() >= kMostEntries)
        return L"The list is full.";
    for (std::size_t i = 0; i < entries_.size(); ++i)
        if (static_cast<int>(i) != at && keyOf(list_, entries_[i]) == keyOf(list_, entry))
            return L"This entry is in the list already.";
    return {};
}

int clsEditorModel::add(const EditorEntry& added)
{
    if (!fault(added).empty())
        return -1;
    entries_.push_back(added);
    return static_cast<int>(entries_.size()) - 1;
}

bool clsEditorModel::replace(int at, const EditorEntry& with)
{
    if (!has(at) || !fault(with, at).empty())
        return false;
    // The style in use stays in use when it is mended.
    if (!hasNames() && entry(at).text == current_)
        current_ = with.text;
    entry(at) = with;
    return true;
}

bool clsEditorModel::remove(int at)
{
    if (!has(at))
        return false;
    entries_.erase(entries_.begin() + at);
    return true;
}

int clsEditorModel::move(int at, int by)
{
    if (!has(at) || !has(at + by))
        return at;
    std::swap(entry(at), entry(at + by));
    return at + by;
}

bool clsEditorModel::makeCurrent(int at)
{
    if (hasNames() || !has(at))
        return false;
    current_ = entry(at).text;
    return true;
}

} // namespace velora
