#include "base/win.h"
#include "bench/bench.h"
#include "settings/Options.h"

#include <string>

using namespace velora;
using namespace velora::bench;

namespace {

/// A key of the benchmark's own: the settings of whoever runs it stay as they are.
constexpr wchar_t kBenchKey[] = L"Software\\Orv Software\\Velora Bench";

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
                          (std::wstring(kBenchKey) + L"\\" + openSection).c_str(), 0, KEY_READ,
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

/// The options in that key while it lives.
class BenchStore {
public:
    BenchStore() : former_(setSettingsStore(makeRegistryStore(kBenchKey))) {}
    ~BenchStore()
    {
        setSettingsStore(std::move(former_));
        for (const OptionInfo& option : optionCatalogue())
            RegDeleteKeyW(HKEY_CURRENT_USER,
                          (std::wstring(kBenchKey) + L"\\" + option.section).c_str());
        RegDeleteKeyW(HKEY_CURRENT_USER, kBenchKey);
    }

    void storeAll()
    {
        for (std::size_t at = 0; at < kOptionCount; ++at)
            if (optionCatalogue()[at].atStart)
                setOptionValue(static_cast<OptionId>(at), optionDefault(static_cast<OptionId>(at)));
    }

private:
    std::unique_ptr<SettingsStore> former_;
};

} // namespace

BENCH("options: loading all at start-up")
{
    BenchStore store;
    report.row("LoadSettings, a registry without settings", medianMs(40, LoadSettings));
    store.storeAll();
    const double raw = medianMs(40, readRaw);
    const double loaded = medianMs(40, LoadSettings);
    report.row("the same registry calls alone, every option stored", raw);
    report.row("LoadSettings, every option stored", loaded, raw);
    report.rowWithAim("LoadSettings, every option stored", loaded, 5);
}
