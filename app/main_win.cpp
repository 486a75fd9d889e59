#include "app/wiring_win.h"
#include "base/handles.h"
#include "base/product.h"
#include "base/trap.h"
#include "core/modAOL.h"
#include "core/modCrash.h"
#include "core/modErrorLog.h"
#include "core/modMain.h"
#include "core/modStartup.h"
#include "settings/Options.h"
#include "ui/Form.h"
#include "ui/MessageLoop.h"

#include <ole2.h>

namespace velora {
namespace {

constexpr char kModule[] = "WinMain";

/// Ends the program when AOL's process ends, whether or not anything is hooked.
class AolWatch {
public:
    AolWatch()
    {
        DWORD id = 0;
        GetWindowThreadProcessId(AOLWindow(), &id);
        process_.reset(OpenProcess(SYNCHRONIZE, FALSE, id));
        if (process_)
            wait_ = addWaitHandle(process_.get(), [] { UnloadAllForms(false); });
        else if (!AOLWindow())
            UnloadAllForms(false);
    }

private:
    KernelHandle process_;
    WaitHandle wait_;
};

int run()
{
    openErrorLog(AppPath());
    installCrashHandler(errorLogFolder(), giveAolBack);
    setSettingsStore(makeRegistryStore(kProductKey));
    fillToolbarRoutes();
    int code = 0;
    if (Main(argumentsOf(GetCommandLineW()), startupServices())) {
        const AolWatch watch;
        code = runMessageLoop();
    }
    Form::unloadAll();
    giveAolBack();
    closeDatabase();
    return code;
}

} // namespace
} // namespace velora

int WINAPI WinMain(HINSTANCE, HINSTANCE, LPSTR, int)
{
    // No library is ever taken from the folder that a file was opened in.
    SetDllDirectoryW(L"");
    SetErrorMode(SEM_FAILCRITICALERRORS | SEM_NOOPENFILEERRORBOX);
    OleInitialize(nullptr);
    const int code = velora::trap(velora::kModule, velora::run, 1);
    OleUninitialize();
    return code;
}
