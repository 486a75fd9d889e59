#include "core/modSettingsFile.h"

#include "base/text.h"
#include "base/trap.h"
#include "settings/Options.h"
#include "support/memory_store.h"

#include <doctest/doctest.h>

using namespace velora;

namespace {

const std::string kHead = "Velora settings 1\r\n";

} // namespace

TEST_CASE("all settings but those of this machine go into the file and come back")
{
    StoreScope scope;
    LoadSettings();
    opt::Product::AOLPath.set(L"C:\\AOL");
    opt::Fader::On.set(true);
    opt::IM::FlashColor.set(-5);
    opt::Fader::Default.set(L"A\\B"); // the name of a scheme is a section of its own
    writeSetting(L"Commands", L"two lines", L"1\r\n2\t\\n \x20AC \x4E2D");
    writeSetting(L"Fader\\Schemes\\Cool Fade", L"One", 7);
    const std::vector<Setting> before = presentSettings();
    CHECK(before.size() == 5);
    const std::string file = settingsFile(before);
    const ReadSettings read = readSettingsFile(file);
    CHECK_FALSE(read.badLine);
    CHECK(read.settings == before);

    opt::Fader::On.set(false);
    opt::IM::EnterSends.set(false);
    writeSetting(L"Chat HotWords", L"cat", L"cat");
    std::vector<OptionId> told;
    const auto changes = onOptionChanged([&](OptionId id) { told.push_back(id); });
    replaceSettings(read.settings);
    CHECK(told == std::vector{opt::Fader::On.id(), opt::IM::EnterSends.id()});
    CHECK(opt::Fader::On.get());
    CHECK(opt::IM::EnterSends.get()); // its default: the file has none
    CHECK(settingValues(L"Chat HotWords").empty());
    CHECK(opt::Product::AOLPath.get() == L"C:\\AOL");
    CHECK(readSetting(L"Commands", L"two lines", L"") == L"1\r\n2\t\\n \x20AC \x4E2D");
}

TEST_CASE("a file that is damaged is refused whole, with its first bad line")
{
    const std::string good = "Fader\tOn\ttext\tTrue\r\n";
    CHECK(readSettingsFile(kHead).settings.empty());
    CHECK_FALSE(readSettingsFile(kHead).badLine);
    CHECK(readSettingsFile(kHead + good).settings.size() == 1);
    const struct {
        std::string bytes;
        std::size_t line;
    } cases[] = {
        {"", 1},
        {"Velora settings 2\r\n" + good, 1},
        {std::string(3u << 20, 'x'), 1},
        {kHead + good + "\r\n", 3},
        {kHead + good + "Fader\tOn\ttext", 3},
        {kHead + good + "Fader\tx\ttext\tTrue\tx", 3},
        {kHead + good + "fader\tON\ttext\tFalse", 3}, // twice
        {kHead + "\tAOL Path\ttext\tC:\\\\", 2},      // the product key's own
        {kHead + "Fader\t\ttext\tTrue", 2},
        {kHead + "\\Fader\tOn\ttext\tTrue", 2},
        {kHead + "a\\\\b\tOn\ttext\tTrue", 2},
        {kHead + "a\\b\\c\\d\\e\\f\\g\tOn\ttext\tTrue", 2},
        {kHead + std::string(256, 'a') + "\tOn\ttext\tTrue", 2},
        {kHead + "Fader\tOn\ttruth\tTrue", 2},
        {kHead + "Fader\tOn\ttext\tx\\", 2},
        {kHead + "Fader\tOn\ttext\t\\x", 2},
        {kHead + "Fader\tOn\ttext\t" + std::string(20001, 'x'), 2},
        {kHead + "Fader\tOn\tnumber\t2147483648", 2},
        {kHead + "Fader\tOn\tnumber\t", 2},
        {kHead + "Fa\1der\tOn\tnumber\t1", 2},
    };
    for (const auto& [bytes, line] : cases) {
        CAPTURE(bytes.substr(0, 60));
        const ReadSettings read = readSettingsFile(bytes);
        CHECK(read.badLine == line);
        CHECK(read.settings.empty());
    }
}

TEST_CASE("settings that cannot be written are put back")
{
    class Stubborn final : public SettingsStore {
    public:
        MemoryStore inner;
        void withSection(std::wstring_view section,
                         const std::function<void(const Reader&)>& use) override
        {
            inner.withSection(section, use);
        }
        void write(std::wstring_view section, std::wstring_view name,
                   const RegValue& value) override
        {
            if (section == L"Bad")
                throw Error("denied", 5);
            inner.write(section, name, value);
        }
        void remove(std::wstring_view section, std::wstring_view name) override
        {
            inner.remove(section, name);
        }
        void removeSection(std::wstring_view section) override { inner.removeSection(section); }
        std::vector<std::pair<std::wstring, RegValue>> values(std::wstring_view section) override
        {
            return inner.values(section);
        }
        std::vector<std::wstring> sections(std::wstring_view section) override
        {
            return inner.sections(section);
        }
    };
    auto former = setSettingsStore(std::make_unique<Stubborn>());
    LoadSettings();
    opt::Fader::On.set(true);
    const std::vector<Setting> before = presentSettings();
    CHECK_THROWS_AS(replaceSettings({{L"Aaa", L"b", RegValue(std::wstring(L"c"))},
                                     {L"Bad", L"b", RegValue(1)}}),
                    Error);
    CHECK(presentSettings() == before);
    setSettingsStore(std::move(former));
}
