#pragma once
// What the options window works on: the text of every field as the user has it, beside what the
// settings hold. Pure.
#include "core/modOptionPages.h"

#include <optional>
#include <string>
#include <vector>

namespace velora {

class clsOptionsModel {
public:
    /// Fields are counted through all pages. The pages must outlive the model.
    using Index = std::size_t;
    struct Entry {
        const OptionField* field;
        std::size_t page;
        std::wstring stored, text;
    };

    explicit clsOptionsModel(const std::vector<OptionPage>& pages);

    const std::vector<Entry>& entries() const { return entries_; }
    /// What it needs is on, as the window has it now.
    bool enabled(Index index) const;
    /// The user's text differs from the settings in any field.
    bool changed() const;
    void change(Index index, const std::wstring& text);
    /// The option was set, here or elsewhere: its field shows that unless the user has touched it.
    void follow(OptionId option);
    /// All may be others now, the hot words too.
    void followAll();
    /// Gives the fields of a page the defaults of their options.
    void restoreDefaults(std::size_t page);
    /// The first field whose text may not stand there.
    std::optional<Index> refused() const;
    /// Writes what the user has changed. A refused text that cannot be changed now goes back to
    /// what it was. False when the settings refuse something: that holds until the program ends.
    bool save();

private:
    std::optional<Index> indexOf(OptionId option) const;
    void follow(Entry& entry);
    bool touched(const Entry& entry) const { return entry.text != entry.stored; }

    std::vector<Entry> entries_;
};

} // namespace velora
