#pragma once
#include "base/trap.h"
#include "base/win.h"

namespace velora {

/// Throws Error with the reason and the calling thread's last error.
[[noreturn]] inline void throwLastError(const char* reason)
{
    const DWORD code = GetLastError();
    throw Error(reason, code);
}

} // namespace velora
