#pragma once
// Files and lists in mails of AOL.
#include "base/win.h"

#include <string>

namespace velora {

/// Opens a new mail and attaches the file through AOL's own windows. Pumps while it waits for them.
/// False when one of them does not come.
bool attachToNewMail(const std::wstring& path);
/// The same for a mail that is being written.
bool attachToMail(HWND mail, const std::wstring& path);

/// The body of the mail that is being written, the one nearest to the front; null when there is
/// none.
HWND openMailBody();

} // namespace velora
