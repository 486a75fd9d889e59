#pragma once
// What start-up finds and does outside its own rules: the program, its files, AOL and the user. The
// rules (modMain) run over this, so that their order and their refusals are tested without Windows.
#include <string>
#include <string_view>
#include <vector>

namespace velora {

class StartupHost {
public:
    virtual ~StartupHost() = default;

    virtual std::wstring programFolder() = 0; ///< without a trailing backslash, as all folders here
    virtual std::wstring executableName() = 0; ///< without ".exe"
    virtual std::wstring systemFolder() = 0;
    virtual void noteSystem() = 0; ///< whether this is Windows NT
    /// False when another instance is running.
    virtual bool claimInstance() = 0;
    virtual bool windowExists(const wchar_t* className) = 0;
    /// The path of a running executable; empty when it does not run.
    virtual std::wstring processPath(std::wstring_view executable) = 0;

    /// A message or question to the user; answers the button.
    virtual int message(const std::wstring& prompt, int style) = 0;
    virtual void pause(unsigned long milliseconds) = 0;

    virtual bool fileExists(const std::wstring& path) = 0;
    virtual bool folderExists(const std::wstring& path) = 0;
    virtual std::vector<std::wstring> filesIn(const std::wstring& folder) = 0;
    /// These three throw Error. A file that is copied over is kept as a copy of its own.
    virtual void copy(const std::wstring& from, const std::wstring& to) = 0;
    virtual void makeFolder(const std::wstring& path) = 0;
    virtual void deleteFile(const std::wstring& path) = 0;
    virtual bool canWriteTo(const std::wstring& folder) = 0;
    /// Folders whose files are never deleted, whatever lies among them (the user's, the system's).
    virtual std::vector<std::wstring> protectedFolders() = 0;

    // AOL. What answers false has told the user why.
    virtual std::wstring aolFolder() = 0;
    virtual void setAolFolder(const std::wstring& folder) = 0;
    virtual bool aolWindowExists() = 0;
    virtual bool takeRunningAol() = 0;
    virtual void detectEdition() = 0;
    virtual bool startAol() = 0;
    virtual bool askAolFolder() = 0;
    virtual bool readAolVersion() = 0;
    virtual int aolVersion() = 0;
    virtual bool readScreenNames() = 0;
    virtual std::wstring masterScreenName() = 0;

    // The start-up window.
    virtual void showStart() = 0;
    virtual void moveStatusBar(std::wstring_view text, int percent) = 0;
    virtual void closeStart() = 0;
    /// The user closed it, or the program ends for another reason.
    virtual bool cancelled() = 0;

    /// The last step: files, registry and the toolbar.
    virtual void initProgram() = 0;
};

} // namespace velora
