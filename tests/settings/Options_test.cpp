#include "base/files.h"
#include "base/text.h"
#include "base/trap.h"
#include "settings/Options.h"
#include "support/memory_store.h"
#include "support/testdata.h"

#include <doctest/doctest.h>

#include <map>

using namespace velora;

namespace {

constexpr const wchar_t* typeName(OptionType type)
{
    switch (type) {
    case OptionType::Boolean: return L"Boolean";
    case OptionType::Integer: return L"Integer";
    case OptionType::Long: return L"Long";
    default: return L"String";
    }
}

std::vector<OptionId> startOptions()
{
    std::vector<OptionId> ids;
    for (std::size_t i = 0; i < kOptionCount; ++i)
        if (optionCatalogue()[i].atStart)
            ids.push_back(OptionId{i});
    return ids;
}

RegValue valueNow(OptionId id)
{
    switch (optionCatalogue()[static_cast<std::size_t>(id)].type) {
    case OptionType::Boolean: return optionValue<bool>(id);
    case OptionType::String: return optionValue<std::wstring>(id);
    default: return static_cast<std::int32_t>(optionValue<long>(id));
    }
}

const wchar_t* keyOf(OptionId id)
{
    return optionCatalogue()[static_cast<std::size_t>(id)].key;
}

/// A value that is not the default.
RegValue otherValue(OptionId id)
{
    const RegValue preset = optionDefault(id);
    if (const auto* on = std::get_if<bool>(&preset))
        return !*on;
    if (const auto* number = std::get_if<std::int32_t>(&preset))
        return *number / 2 + 1234;
    return std::get<std::wstring>(preset) + L"\x20AC x";
}

using Fixture = StoreScope;

} // namespace

TEST_CASE("the catalogue is the list of options")
{
    const auto bytes = readFile(testData(L"settings/catalogue.tsv"));
    REQUIRE(bytes);
    const auto lines = splitLines(fromUtf8(*bytes));
    const auto ids = startOptions();
    REQUIRE(lines.size() == 132);
    REQUIRE(ids.size() == 132);
    for (std::size_t i = 0; i < lines.size(); ++i) {
        const auto fields = split(lines[i], L'\t');
        REQUIRE(fields.size() == 4);
        const OptionInfo& info = optionCatalogue()[i];
        CAPTURE(i);
        CHECK(static_cast<std::size_t>(ids[i]) == i);
        CHECK(toUtf8(info.section) == toUtf8(fields[0]));
        CHECK(toUtf8(info.key) == toUtf8(fields[1]));
        CHECK(toUtf8(typeName(info.type)) == toUtf8(fields[2]));
        CHECK(toUtf8(textOf(optionDefault(ids[i]))) == toUtf8(fields[3]));
    }
}

TEST_CASE_FIXTURE(Fixture, "an empty store gives every default")
{
    for (const OptionId id : startOptions()) {
        CAPTURE(keyOf(id));
        CHECK(valueNow(id) == optionDefault(id));
    }
}

TEST_CASE_FIXTURE(Fixture, "every option is kept in memory, written, and read again")
{
    for (std::size_t i = 0; i < kOptionCount; ++i) {
        const OptionId id{i};
        // Before the scheme's name changes: its options belong to the scheme that is present.
        if (id == opt::Fader::Default.id())
            continue;
        const RegValue value = otherValue(id);
        CAPTURE(keyOf(id));
        setOptionValue(id, value);
        CHECK(valueNow(id) == value);
        CHECK(store->data[optionSection(id)][keyOf(id)] == value);
    }
    LoadSettings();
    for (std::size_t i = 0; i < kOptionCount; ++i) {
        const OptionId id{i};
        CAPTURE(keyOf(id));
        CHECK(valueNow(id)
              == (id == opt::Fader::Default.id() ? optionDefault(id) : otherValue(id)));
    }
    store->data.clear();
    LoadSettings();
    CHECK(opt::General::AutoCloseTime.get() == 5);
}

TEST_CASE_FIXTURE(Fixture, "a value of another type gives the default")
{
    const RegValue wrong[] = {std::int32_t{100000}, std::wstring(L"junk"), Bytes(4, 0xFF)};
    for (const OptionId id : startOptions()) {
        if (id == opt::Fader::Default.id())
            continue;
        CAPTURE(keyOf(id));
        for (const RegValue& value : wrong) {
            const OptionType type = optionCatalogue()[static_cast<std::size_t>(id)].type;
            if ((type == OptionType::String && asText(value))
                || (type == OptionType::Long && asLong(value)))
                continue;
            store->data[optionSection(id)][keyOf(id)] = value;
            LoadSettings();
            CHECK(valueNow(id) == optionDefault(id));
        }
        store->data.clear();
    }
}

TEST_CASE_FIXTURE(Fixture, "loading opens each section once")
{
    store->opened = 0;
    LoadSettings();
    CHECK(store->opened == 17);
}

TEST_CASE_FIXTURE(Fixture, "the fade scheme's options follow the scheme")
{
    store->data[L"Fader"][L"Default"] = std::wstring(L"Sunset");
    store->data[L"Fader\\Schemes\\Sunset"][L"FadeNumber"] = std::int32_t{3};
    store->data[L"Fader\\Schemes\\Sunset"][L"One"] = std::int32_t{255};
    LoadSettings();
    CHECK(opt::FadeScheme::FadeNumber.get() == 3);
    CHECK(opt::FadeScheme::One.get() == 255);
    opt::Fader::Default.set(L"Night");
    opt::FadeScheme::Two.set(9);
    CHECK(store->data[L"Fader\\Schemes\\Night"][L"Two"] == RegValue(std::int32_t{9}));
    LoadFadeScheme();
    CHECK(opt::FadeScheme::FadeNumber.get() == 6);
    CHECK(opt::FadeScheme::Two.get() == 9);
}

TEST_CASE_FIXTURE(Fixture, "a refused store gives defaults and memory keeps what is set")
{
    store->data[L"General"][L"AutoCloseTime"] = std::int32_t{9};
    store->denied = true;
    LoadSettings();
    CHECK(opt::General::AutoCloseTime.get() == 5);
    int told = 0;
    const auto subscription = onOptionChanged([&](OptionId) { ++told; });
    CHECK_THROWS_AS(opt::General::AutoCloseTime.set(20), Error);
    CHECK(opt::General::AutoCloseTime.get() == 20);
    CHECK(told == 1);
}

TEST_CASE_FIXTURE(Fixture, "an on-demand option is read where it is used")
{
    store->data[L"IM"][L"TabsOn"] = false;
    CHECK_FALSE(opt::IM::TabsOn.get());
    store->data[L"IM"][L"TabsOn"] = std::int32_t{0};
    CHECK(opt::IM::TabsOn.get());
    opt::Product::AOLPath.set(L"C:\\AOL");
    CHECK(store->data[L""][L"AOL Path"] == RegValue(L"C:\\AOL"));
}

TEST_CASE_FIXTURE(Fixture, "observers hear of each change while they are subscribed")
{
    std::vector<OptionId> heard;
    {
        const auto first = onOptionChanged([&](OptionId id) { heard.push_back(id); });
        const auto throws = onOptionChanged([](OptionId) { throw Error("x"); });
        opt::General::ChatLog.set(true);
    }
    opt::General::ChatLog.set(false);
    CHECK(heard == std::vector<OptionId>{opt::General::ChatLog.id()});
}

TEST_CASE_FIXTURE(Fixture, "settings beside the catalogue")
{
    writeSetting(L"Categories", L"Mine", L"C:\\Sounds");
    writeSetting(L"Categories", L"Count", 7);
    writeSetting(L"Categories", L"Shown", true);
    CHECK(readSetting(L"Categories", L"Mine", L"") == L"C:\\Sounds");
    CHECK(readSetting(L"Categories", L"Count", 1) == 7);
    CHECK(readSetting(L"Categories", L"Shown", false));
    CHECK(readSetting(L"Categories", L"Missing", L"none") == L"none");
    CHECK(readSetting(L"Categories", L"Mine", 3) == 3);
    CHECK(readSetting(L"Categories", L"Count", true));
    CHECK(store->data[L"Categories"][L"Shown"] == RegValue(true));
    CHECK(settingValues(L"Categories").size() == 3);
    deleteSetting(L"Categories", L"Count");
    CHECK(settingValues(L"Categories").size() == 2);
}

TEST_CASE("without a store options live in memory")
{
    opt::IM::TabsOn.set(false);
    CHECK_FALSE(opt::IM::TabsOn.get());
    opt::IM::TabsOn.set(true);
    CHECK(readSetting(L"X", L"Y", 4) == 4);
    writeSetting(L"X", L"Y", 5);
    CHECK(readSetting(L"X", L"Y", 4) == 4);
}
