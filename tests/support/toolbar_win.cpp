#include "support/toolbar_win.h"

#include "base/files.h"
#include "chat/ToolbarRoutes.h"
#include "core/modAOL.h"
#include "hook/AgentLink.h"
#include "settings/Options.h"
#include "sounds/modPlayback.h"
#include "sounds/modSounds.h"
#include "support/memory_store.h"
#include "support/wavfile.h"

#include <algorithm>
#include <doctest/doctest.h>

namespace velora::test {

ToolbarBench::ToolbarBench(const AolHost::Options& options) : host(options)
{
    formerSink_ = setErrorSink([](const ErrorRecord& record) noexcept {
        MESSAGE(record.module, ".", record.procedure, ": ", record.reason);
    });
    setSettingsStore(std::make_unique<MemoryStore>());
    LoadSettings();
    aol() = {};
    aol().folder = host.folder();
    aol().edition = options.edition;
    aol().version = options.version;
    makeFolder(host.folder() + L"\\sounds");

    ToolbarRoutes& routes = toolbarRoutes();
    routeSounds(routes);
    routes.detectWav = [this, detect = routes.detectWav](const std::wstring& screenName,
                                                         const std::wstring& message, bool own) {
        heard.push_back(screenName + L"|" + message + (own ? L"|own" : L""));
        const std::wstring before = playingSound();
        detect(screenName, message, own);
        const std::wstring path = playingSound();
        if (path != before && !path.empty())
            played.push_back(path.substr(path.rfind(L'\\') + 1));
    };
    routes.checkForAlias = [this](const std::wstring& screenName) {
        ++lines;
        return screenName;
    };
    routes.aolEnded = [this] { ++ended; };
}

ToolbarBench::~ToolbarBench()
{
    StopSound();
    Form::unloadAll();
    aolLink().disconnect();
    toolbarRoutes() = {};
    aol() = {};
    setSettingsStore(nullptr);
    setErrorSink(formerSink_);
}

void ToolbarBench::addSound(const std::wstring& name, int milliseconds)
{
    replaceFile(host.folder() + L"\\sounds\\" + name, wavFile(milliseconds));
}

frmToolbar& ToolbarBench::load()
{
    frmToolbar& form = frmToolbar::load();
    REQUIRE(waitFor([&] { return aolLink().connected() && IsWindowVisible(form.hwnd()); }));
    return form;
}

void ToolbarBench::enterRoom(const std::wstring& name)
{
    const HWND room = host.enterRoom(name);
    REQUIRE(waitFor([&] { return frmToolbar::instance()->scannedRoom() == room; }));
}

bool ToolbarBench::hears(const std::wstring& line)
{
    return waitFor([&] { return std::find(heard.begin(), heard.end(), line) != heard.end(); });
}

} // namespace velora::test
