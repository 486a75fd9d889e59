#pragma once
// The lists that the editor window edits: the user's chat commands, the aliases of members, the hug
// and Glintune styles. Pure over the settings and files.
#include <string>
#include <string_view>
#include <vector>

namespace velora {

enum class EditorList { Commands, Aliases, Hugs, Glintunes };

/// One entry. Styles have a text alone.
struct EditorEntry {
    std::wstring name; ///< command word or screen name
    std::wstring text; ///< target, alias or style
    bool operator==(const EditorEntry&) const = default;
};

/// Commands: section "Commands", blanks of the targets removed where they are used. Aliases:
/// section "ChatAlias", the name in lower case without blanks. Styles: one a line in
/// "styles\hugs.dat" and "styles\glintune.dat" below `folder`; without a file there are the styles
/// that come with the program.
std::vector<EditorEntry> loadEditorList(EditorList list, const std::wstring& folder);
/// Throws Error when it cannot be written; what was there stays then.
void saveEditorList(EditorList list, const std::wstring& folder,
                    const std::vector<EditorEntry>& entries);

/// What is wrong with an entry, as a sentence for the user; empty when it can be taken.
std::wstring entryFault(EditorList list, const EditorEntry& entry);

/// The alias of a member; the name as it is when it has none.
std::wstring CheckForAlias(const std::wstring& screenName);

/// The target of a command word: what is stored for it, without blanks, else the word itself.
std::wstring commandTarget(const std::wstring& word);

/// A hug for a name: the style with "{%}" replaced. A style without "{%}" is followed by the name.
std::wstring hugText(std::wstring_view style, std::wstring_view name);

} // namespace velora
