#pragma once
// A Media Player control of the tests: a small COM server in this process, registered for the
// user's own classes while the object lives, and a file by which Velora tells the control's
// version. It plays nothing; a "sound" lasts as long as the test says.
#include "base/win.h"
#include "support/tempdir.h"

#include <string>
#include <vector>

namespace velora::test {

class FakeMediaPlayer {
public:
    /// Registers the server; its file has the version 6.4.
    FakeMediaPlayer();
    /// Takes everything back.
    ~FakeMediaPlayer();
    FakeMediaPlayer(const FakeMediaPlayer&) = delete;
    FakeMediaPlayer& operator=(const FakeMediaPlayer&) = delete;

    /// What the control was told, in order: "FileName=...", "Play", "Stop", "Pause", "site",
    /// "no site".
    std::vector<std::wstring> calls;
    /// The window that it was activated in.
    HWND window = nullptr;
    long state = 0; ///< as the control's PlayState
    double duration = 8, position = 2;
    bool refuses = false; ///< every call fails
    int living = 0;       ///< controls that have not been released

private:
    TempDir folder_;
    DWORD classObject_ = 0;
    bool oleInitialised_ = false;
};

} // namespace velora::test
