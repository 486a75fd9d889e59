#pragma once
// The only ways in which the program sends messages to AOL's windows: always with a time limit and
// given up at once when AOL hangs. None of them pumps posted messages; a sent message (AOL asking a
// hook) is answered while they wait.
#include "base/win.h"

#include <optional>
#include <string>
#include <string_view>

namespace velora {

inline constexpr DWORD kAolTimeout = 1000;     ///< ms; what a user's command may wait for AOL
inline constexpr DWORD kAolTimerTimeout = 300; ///< ms; what a timer may wait

/// Sends and gives the result; absent when AOL is busy or the window is gone. Once AOL has let a
/// message time out, further calls are absent at once until AOL shows a sign of life.
std::optional<LRESULT> sendToAol(HWND window, UINT message, WPARAM wParam, LPARAM lParam,
                                 DWORD timeoutMs = kAolTimeout);

/// Posts; false when the window is gone.
bool postToAol(HWND window, UINT message, WPARAM wParam, LPARAM lParam);

/// The text of a window or control (line ends as the control gives them); absent as above.
std::optional<std::wstring> aolText(HWND window, DWORD timeoutMs = kAolTimeout);
bool setAolText(HWND window, std::wstring_view text, DWORD timeoutMs = kAolTimeout);

} // namespace velora
