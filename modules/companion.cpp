// The companion files that an installation is checked for at start-up. Their work is done by
// velora.exe and dwspy36.dll; each of these says in its own words what it stands for (README.md),
// and answers what an installer may ask of a control.
#include "base/win.h"

extern "C" {

/// What the file stands for, in a sentence that lives as long as the module is loaded.
__declspec(dllexport) const wchar_t* __stdcall CompanionPurpose()
{
    return VELORA_PURPOSE;
}

// There is nothing to register, so registering it never fails and never touches the registry.
__declspec(dllexport) HRESULT __stdcall DllRegisterServer()
{
    return S_OK;
}

__declspec(dllexport) HRESULT __stdcall DllUnregisterServer()
{
    return S_OK;
}

BOOL WINAPI DllMain(HINSTANCE module, DWORD reason, LPVOID)
{
    if (reason == DLL_PROCESS_ATTACH)
        DisableThreadLibraryCalls(module);
    return TRUE;
}
}
