#pragma once
// What the editor window does to its list. Pure; nothing is kept before the user says so.
#include "chat/modEditorLists.h"

#include <cstddef>

namespace velora {

class clsEditorModel {
public:
    /// `current`: the style in use; empty for lists without one.
    clsEditorModel(EditorList list, std::vector<EditorEntry> entries, std::wstring current);

    EditorList list() const { return list_; }
    const std::vector<EditorEntry>& entries() const { return entries_; }
    const std::wstring& current() const { return current_; }
    bool changed() const;
    bool hasNames() const { return list_ == EditorList::Commands || list_ == EditorList::Aliases; }

    /// Why the entry cannot be added, or cannot take the place of the one at `at`; empty when it
    /// can.
    std::wstring fault(const EditorEntry& entry, int at = -1) const;
    /// These do nothing for an entry with a fault, or an index that is none. `add` answers the
    /// index of the new entry, -1 when there is none.
    int add(const EditorEntry& entry);
    bool replace(int at, const EditorEntry& entry);
    bool remove(int at);
    /// Up (-1) or down (1); the entry's new index, `at` when it stays.
    int move(int at, int by);
    bool makeCurrent(int at);

private:
    bool has(int at) const { return at >= 0 && static_cast<std::size_t>(at) < entries_.size(); }
    EditorEntry& entry(int at) { return entries_[static_cast<std::size_t>(at)]; }

    EditorList list_;
    std::vector<EditorEntry> entries_, saved_;
    std::wstring current_, savedCurrent_;
};

} // namespace velora
