#pragma once
// The commands of the pipe and the script. They are read on threads of their own and run on the
// window thread; each has one answer line, "ok ..." or "error ...".
#include "base/win.h"

#include <string>
#include <vector>

namespace aolhost {

struct Request {
    std::wstring line;
    std::wstring answer;
    HANDLE answered; ///< set when `answer` is there
};

/// Runs one request on the window thread. "hang" answers before it hangs; "crash" and "exit" only
/// answer: the reading thread lets endAol follow when the answer is with the client.
void runRequest(Request& request) noexcept;
bool endsAol(const std::wstring& line);
void endAol(bool crash);

/// Start the reading threads for what the options name.
void startPipe(const std::wstring& name, HWND frame);
void startScript(const std::wstring& path, HWND frame);

/// Sends lines to the pipe of a running AOL and prints each answer; the exit code: 0 when every
/// answer was "ok".
int tell(const std::wstring& pipe, const std::vector<std::wstring>& lines);

} // namespace aolhost
