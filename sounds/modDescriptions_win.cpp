#include "sounds/modDescriptions.h"

#include "core/MsgBoxEx.h"
#include "core/modMain.h"

namespace velora {

clsDatabase& wavDatabase()
{
    static clsDatabase database(AppPath() + L"\\data",
                                {.message = [](const std::wstring& prompt, int style) {
                                    MsgBoxEx(prompt, style, L"Wav Descriptions");
                                }});
    return database;
}

void openWavDatabase()
{
    wavDatabase().Init();
}

void closeWavDatabase()
{
    wavDatabase().forget();
}

} // namespace velora
