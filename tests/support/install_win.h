#pragma once
// Velora installed and started for a test as a user would have it: a program folder, the companion
// files in the Windows system folder, a registry of its own. All is put back at the end.
#include "settings/RegValue.h"
#include "support/process_win.h"
#include "support/tempdir.h"

#include <string>
#include <string_view>
#include <vector>

namespace velora::test {

/// A visible window of that process that shows this text anywhere (itself or a control in it);
/// waits for it, null when it does not come.
HWND windowShowing(DWORD processId, std::wstring_view text, unsigned ms = 20000);

class Installation {
public:
    /// Installs into a folder of this name; data of former tests is gone. Throws
    /// std::runtime_error when a file cannot be put in place.
    explicit Installation(const std::wstring& folderName = L"Velora 10");
    ~Installation();
    Installation(const Installation&) = delete;
    Installation& operator=(const Installation&) = delete;

    const std::wstring& folder() const { return folder_; }
    std::wstring file(std::wstring_view name) const { return folder_ + L"\\" + std::wstring(name); }
    Process start(const std::wstring& arguments = {}) const;

    /// The whole of velora.log.
    std::string log() const;
    /// A value of the product key's section; empty when it is missing.
    static RegValue setting(std::wstring_view section, std::wstring_view name);
    static void putSetting(std::wstring_view section, std::wstring_view name,
                           const RegValue& value);

    /// Takes a companion file out of the system folder until the installation goes.
    void removeCompanion(const std::wstring& name);

private:
    void putCompanions();

    TempDir temp_;
    std::wstring folder_;
    struct Companion {
        std::wstring path, kept; ///< kept: where the former file waits; empty when there was none
    };
    std::vector<Companion> companions_;
    struct SavedKey;
    std::vector<SavedKey> saved_;
};

} // namespace velora::test
