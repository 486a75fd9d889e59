#include "base/handles.h"
#include "base/text.h"
#include "base/trap.h"
#include "settings/Options.h"
#include "settings/clsRegistry.h"
#include "support/denied_win.h"

#include <doctest/doctest.h>

using namespace velora;
using velora::test::Denied;

namespace {

/// A product key of this test alone; gone afterwards.
struct Scratch {
    const std::wstring path =
        L"Software\\Orv Software\\Velora test " + std::to_wstring(GetCurrentProcessId());

    ~Scratch() { removeTree(path); }

    clsRegistry at(std::wstring_view section, std::wstring_view name = {}) const
    {
        clsRegistry registry;
        registry.ClassKey(HKEY_CURRENT_USER);
        registry.SectionKey(path);
        registry.SubKey(section);
        registry.ValueKey(name);
        return registry;
    }

    void putRaw(std::wstring_view section, const wchar_t* name, DWORD type, const void* data,
                DWORD size) const
    {
        HKEY key = nullptr;
        const std::wstring full = path + (section.empty() ? L"" : L"\\") + std::wstring(section);
        REQUIRE(RegCreateKeyW(HKEY_CURRENT_USER, full.c_str(), &key) == ERROR_SUCCESS);
        const RegistryKey owner(key);
        REQUIRE(RegSetValueExW(key, name, 0, type, static_cast<const BYTE*>(data), size)
                == ERROR_SUCCESS);
    }

    static void removeTree(const std::wstring& path)
    {
        for (;;) {
            HKEY key = nullptr;
            if (RegOpenKeyW(HKEY_CURRENT_USER, path.c_str(), &key) != ERROR_SUCCESS)
                return;
            const RegistryKey owner(key);
            wchar_t name[256];
            if (RegEnumKeyW(key, 0, name, 256) != ERROR_SUCCESS)
                break;
            removeTree(path + L"\\" + name);
        }
        RegDeleteKeyW(HKEY_CURRENT_USER, path.c_str());
    }
};

/// Options on the scratch key; back at their defaults afterwards.
struct Store : Scratch {
    Store() { setSettingsStore(makeRegistryStore(path)); }
    ~Store()
    {
        setSettingsStore(nullptr);
        LoadSettings();
    }
};

std::string reasonOf(const std::function<void()>& act, unsigned long* code = nullptr)
{
    try {
        act();
    } catch (const Error& e) {
        if (code)
            *code = e.code();
        return e.what();
    }
    return {};
}

} // namespace

TEST_CASE_FIXTURE(Scratch, "every type is written as its kind and comes back")
{
    struct Case {
        RegValue written;
        ValueKind kind;
        RegValue read;
    };
    const Case cases[] = {
        {std::int16_t{-3}, ValueKind::Number, std::int32_t{-3}},
        {std::int32_t{INT32_MIN}, ValueKind::Number, std::int32_t{INT32_MIN}},
        {true, ValueKind::Text, std::wstring(L"True")},
        {false, ValueKind::Text, std::wstring(L"False")},
        {2.5, ValueKind::Text, std::wstring(L"2.5")},
        {std::wstring(L"\x65E5\x672C \x20AC"), ValueKind::Text,
         std::wstring(L"\x65E5\x672C \x20AC")},
        {std::wstring(), ValueKind::Text, std::wstring()},
        {std::wstring(70000, L'x'), ValueKind::Text, std::wstring(70000, L'x')},
    };
    for (const Case& c : cases) {
        clsRegistry value = at(L"S", L"V");
        value.Value(c.written);
        CHECK(value.ValueType() == c.kind);
        clsRegistry again = at(L"S", L"V");
        CHECK(again.Value() == c.read);
        CHECK(again.ValueType() == c.kind);
    }
    clsRegistry binary = at(L"S", L"B");
    const RegValue data = Bytes{0, 1, 2, 255, 0};
    CHECK_THROWS_AS(binary.Value(data), Error);
    binary.ValueType(ValueKind::Binary);
    binary.Value(data);
    CHECK(at(L"S", L"B").Value() == data);
}

TEST_CASE_FIXTURE(Scratch, "keys, values and their lists")
{
    CHECK_FALSE(at(L"One").KeyExists());
    CHECK(at(L"One").CreateKey());
    CHECK(at(L"One").KeyExists());
    CHECK(at(L"").KeyExists());
    clsRegistry missing = at(L"One", L"V");
    missing.Default(std::int32_t{5});
    CHECK(missing.Value() == RegValue(std::int32_t{5}));
    CHECK(missing.Default() == RegValue(std::int32_t{5}));
    at(L"One", L"V").Value(std::int32_t{6});
    at(L"One\\Inner", L"W").Value(true);
    CHECK(missing.Value() == RegValue(std::int32_t{6}));
    CHECK(at(L"").EnumerateSections() == std::vector<std::wstring>{L"One"});
    const auto values = at(L"One").EnumerateValues();
    REQUIRE(values.size() == 1);
    CHECK(values[0].first == L"V");
    CHECK(values[0].second == RegValue(std::int32_t{6}));
    CHECK_FALSE(at(L"One").DeleteKey());
    CHECK(at(L"One\\Inner").DeleteKey());
    CHECK(at(L"One", L"V").DeleteValue());
    CHECK_FALSE(at(L"One", L"V").DeleteValue());
    CHECK(at(L"One").DeleteKey());
    CHECK_FALSE(at(L"One").KeyExists());
    CHECK(at(L"Nothing").EnumerateValues().empty());
    CHECK(at(L"Nothing").EnumerateSections().empty());
}

TEST_CASE_FIXTURE(Scratch, "a sub-key of blanks is none")
{
    clsRegistry registry = at(L"   ", L"V");
    CHECK(registry.SubKey().empty());
    registry.Value(std::wstring(L"x"));
    CHECK(at(L"", L"V").Value() == RegValue(L"x"));
    registry.SubKey(L"General");
    CHECK(registry.SubKey() == L"General\\");
}

TEST_CASE_FIXTURE(Scratch, "a value of a damaged size or unknown kind gives the default")
{
    const DWORD one = 1;
    putRaw(L"S", L"short", REG_DWORD, &one, 2);
    putRaw(L"S", L"empty", REG_DWORD, &one, 0);
    putRaw(L"S", L"odd", REG_SZ, L"abc", 5);
    putRaw(L"S", L"quad", 11, L"abcdef", 8);
    putRaw(L"S", L"multi", REG_MULTI_SZ, L"a\0b\0", 10);
    for (const wchar_t* name : {L"short", L"empty", L"odd", L"quad", L"multi"}) {
        clsRegistry value = at(L"S", name);
        value.Default(std::wstring(L"default"));
        CAPTURE(name);
        CHECK(value.Value() == RegValue(L"default"));
    }
    putRaw(L"S", L"open", REG_SZ, L"abc", 6);
    putRaw(L"S", L"nul", REG_SZ, L"ab\0cd", 12);
    CHECK(at(L"S", L"open").Value() == RegValue(L"abc"));
    CHECK(at(L"S", L"nul").Value() == RegValue(L"ab"));
    CHECK(at(L"S").EnumerateValues().size() == 7);
}

TEST_CASE_FIXTURE(Store, "sections are deleted with what is in them")
{
    writeSetting(L"Templates\\1", L"Header", L"x");
    writeSetting(L"Templates\\1\\Inner", L"Header", L"x");
    writeSetting(L"Templates\\2", L"Header", L"x");
    CHECK(settingSections(L"Templates") == std::vector<std::wstring>{L"1", L"2"});
    deleteSettingSection(L"Templates\\1");
    CHECK(settingSections(L"Templates") == std::vector<std::wstring>{L"2"});
    deleteSettingSection(L"Templates\\1");
    deleteSetting(L"Templates\\2", L"Header");
    deleteSetting(L"Templates\\2", L"Header");
    CHECK(settingValues(L"Templates\\2").empty());
    CHECK_THROWS_AS(deleteSettingSection(L" "), Error);
}

TEST_CASE_FIXTURE(Store, "a denied key gives defaults and refuses writes with the whole story")
{
    opt::General::AutoCloseTime.set(9);
    {
        const Denied denied(path + L"\\General", KEY_SET_VALUE);
        LoadSettings();
        CHECK(opt::General::AutoCloseTime.get() == 9);
        unsigned long code = 0;
        const std::string reason = reasonOf([] { opt::General::AutoCloseTime.set(11); }, &code);
        CHECK(reason.ends_with("',Section: 'General',Key: 'AutoCloseTime' to value: '11'"));
        CHECK(code == ERROR_ACCESS_DENIED);
        CHECK(opt::General::AutoCloseTime.get() == 11);
        CHECK(at(L"General", L"AutoCloseTime").Value() == RegValue(std::int32_t{9}));
        CHECK(reasonOf([] {
                  opt::General::ChatLog.set(true);
              }).ends_with("',Section: 'General',Key: 'ChatLog' to value: 'True'"));
        opt::General::ChatLog.get();
    }
    {
        const Denied denied(path + L"\\General", KEY_READ);
        LoadSettings();
        CHECK(opt::General::AutoCloseTime.get() == 5);
        CHECK_FALSE(at(L"General").KeyExists());
        CHECK(readSetting(L"General", L"AutoCloseTime", 3) == 3);
        CHECK(settingValues(L"General").empty());
    }
}
