#pragma once
// The saved fade schemes: files "<name>.fde" in "Fader\Schemes" and "download" below the program's
// folder.
#include "base/random.h"
#include "chat/modScheme.h"

#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace velora {

struct SchemeEntry {
    std::wstring name;
    std::wstring path;
};

class clsSchemes {
public:
    explicit clsSchemes(std::wstring programFolder);

    /// All schemes in the order of their names; of two with one name the program's own counts.
    std::vector<SchemeEntry> list() const;
    /// Absent when the file is gone, or no scheme.
    std::optional<FadeScheme> load(const std::wstring& name) const;
    bool exists(const std::wstring& name) const;
    /// Writes the scheme under a safe form of its name; a file of that name is replaced (and kept
    /// as a copy), its creation date kept. False when it cannot be written.
    bool save(const std::wstring& name, FadeScheme scheme) const;
    bool remove(const std::wstring& name) const;
    /// Brings a scheme file from elsewhere in, under its own name. False when it is none.
    bool import(const std::wstring& file) const;
    /// Writes the schemes that come with the program where the folder has none at all.
    void provideBuiltIn() const;

private:
    std::wstring folder() const;
    std::wstring pathOf(const std::wstring& name) const;
    std::wstring program_;
};

/// Makes the fader ready at start-up: the schemes that come with the program, the fade of the
/// scheme in use where the settings do not hold it yet, and the choice of the next scheme after a
/// use.
void prepareFader(const std::wstring& programFolder);

} // namespace velora
