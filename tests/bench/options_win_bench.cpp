#include "base/win.h"
#include "bench/bench.h"
#include "settings/Options.h"

#include <string>

using namespace velora;
using namespace velora::bench;

namespace {

constexpr wchar_t kProductKey[] = L"Software\\Orv Software\\Velora";

/// What no way of loading can do without: open each section once, ask for each value once.
void readRaw()
{
    std::wstring openSection;
    HKEY key = nullptr;
    for (const OptionInfo& option : optionCatalogue()) {
        if (!option.atStart)
            continue;
        if (openSection != option.section) {
            if (key)
                RegCloseKey(key);
            key = nullptr;
            openSection = option.section;
            RegOpenKeyExW(HKEY_CURRENT_USER,
                          (std::wstring(kProductKey) + L"\\" + openSection).c_str(), 0, KEY_READ,
                          &key);
        }
        BYTE data[512];
        DWORD size = sizeof data, type = 0;
        if (key)
            RegQueryValueExW(key, option.key, nullptr, &type, data, &size);
    }
    if (key)
        RegCloseKey(key);
}

/// Stores every option at its default and takes that back at the end, unless settings are there.
class StoredOptions {
public:
    StoredOptions()
    {
        HKEY key = nullptr;
        if (RegOpenKeyExW(HKEY_CURRENT_USER, kProductKey, 0, KEY_READ, &key) == ERROR_SUCCESS) {
            RegCloseKey(key);
            return;
        }
        ours_ = true;
        LoadSettings();
        for (std::size_t at = 0; at < kOptionCount; ++at)
            if (optionCatalogue()[at].atStart)
                setOptionValue(static_cast<OptionId>(at), optionDefault(static_cast<OptionId>(at)));
    }
    ~StoredOptions()
    {
        if (ours_)
            for (const OptionInfo& option : optionCatalogue())
                RegDeleteKeyW(HKEY_CURRENT_USER,
                              (std::wstring(kProductKey) + L"\\" + option.section).c_str());
        if (ours_)
            RegDeleteKeyW(HKEY_CURRENT_USER, kProductKey);
    }

private:
    bool ours_ = false;
};

} // namespace

BENCH("options: loading all at start-up")
{
    LoadSettings();
    report.row("LoadSettings, a registry without settings", medianMs(40, LoadSettings));
    const StoredOptions stored;
    const double raw = medianMs(40, readRaw);
    const double loaded = medianMs(40, LoadSettings);
    report.row("the same registry calls alone, every option stored", raw);
    report.row("LoadSettings, every option stored", loaded, raw);
    report.rowWithAim("LoadSettings, every option stored", loaded, 5);
}
