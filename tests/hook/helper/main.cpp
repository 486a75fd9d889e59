// velora_hook_helper aol TITLE a|w
// velora_hook_helper companion FRAME attached|inside|holding|once EVENT
#include "base/win.h"

#include <shellapi.h>
#include <string>

namespace velora::smallaol {
int run(const std::wstring& title, bool ansi);
}
namespace velora::companion {
int run(HWND frame, const std::wstring& mode, const std::wstring& readyName);
}

int main()
{
    int count = 0;
    wchar_t** arguments = CommandLineToArgvW(GetCommandLineW(), &count);
    const std::wstring what = count > 3 ? arguments[1] : L"";
    if (what == L"aol")
        return velora::smallaol::run(arguments[2], arguments[3][0] == L'a');
    if (what == L"companion" && count > 4)
        return velora::companion::run(reinterpret_cast<HWND>(std::stoul(arguments[2])),
                                      arguments[3], arguments[4]);
    return 2;
}
