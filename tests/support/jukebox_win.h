#pragma once
// This test program as the jukebox that Velora starts: under the name jukebox.exe it shows one
// window with the jukebox's caption, its command line as a child's text, until it is closed.

namespace velora::test {

/// True when it was that; `main` has nothing more to do then.
bool ranAsJukebox();

} // namespace velora::test
