#pragma once
// What is on the user's clipboard, kept while the program has to use it, and put back.
#include "base/win.h"

#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace velora {

/// Copies every format that is memory, a bitmap or an enhanced metafile. Others are pictures that
/// Windows makes again from those (palettes, old metafiles), belong to the program that offered
/// them (owner-drawn and private formats, graphics objects), or name a live object in it; nobody
/// can copy them for it.
class SavedClipboard {
public:
    /// Throws Error when the clipboard cannot be opened, or its owner hangs (its formats would have
    /// to be asked of it).
    explicit SavedClipboard(HWND owner);
    ~SavedClipboard();
    SavedClipboard(const SavedClipboard&) = delete;
    SavedClipboard& operator=(const SavedClipboard&) = delete;

    /// The text that a process has put there meanwhile, and everything back as it was. Absent, and
    /// nothing touched, when somebody else has used the clipboard since. Throws Error.
    std::optional<std::wstring> exchange(HWND owner, DWORD process);

private:
    struct Format;
    std::vector<std::unique_ptr<Format>> formats_;
};

} // namespace velora
