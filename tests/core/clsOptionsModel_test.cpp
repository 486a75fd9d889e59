#include "core/clsOptionsModel.h"

#include "base/text.h"
#include "core/modHotWordList.h"
#include "support/memory_store.h"

#include <doctest/doctest.h>

#include <set>

using namespace velora;

namespace {

clsOptionsModel::Index indexOf(const clsOptionsModel& model, OptionId option)
{
    const auto& entries = model.entries();
    for (std::size_t i = 0; i < entries.size(); ++i)
        if (entries[i].field->option == option)
            return i;
    FAIL("no such field");
    return 0;
}

const OptionField& fieldOf(OptionId option)
{
    static const clsOptionsModel model(optionPages());
    return *model.entries()[indexOf(model, option)].field;
}

} // namespace

TEST_CASE("the table of pages is sound")
{
    std::set<OptionId> options;
    for (const OptionPage& page : optionPages()) {
        CAPTURE(to1252(page.name));
        std::wstring mnemonics(kWindowKeys);
        std::size_t fields = 0;
        for (const OptionGroup& group : page.groups)
            for (const OptionField& field : group.fields) {
                CAPTURE(to1252(field.caption));
                ++fields;
                mnemonics += keysOf(field.kind);
                const wchar_t mnemonic = mnemonicOf(field.caption);
                if (mnemonic) {
                    CHECK(mnemonics.find(mnemonic) == mnemonics.npos);
                    mnemonics += mnemonic;
                }
                if (!field.option)
                    continue;
                CHECK(options.insert(*field.option).second);
                CHECK(fieldValue(field, textOf(optionDefault(*field.option))));
                CHECK_FALSE(fieldRefusal(field).empty());
            }
        CHECK(fields > 0);
    }
    for (const OptionPage& page : optionPages())
        for (const OptionGroup& group : page.groups)
            for (const OptionField& field : group.fields)
                if (field.needs)
                    CHECK(options.count(*field.needs) == 1);
}

TEST_CASE("what may be typed")
{
    const struct {
        OptionId option;
        const wchar_t* text;
        bool taken;
    } cases[] = {
        {opt::ChatExtender::CharsInLine.id(), L" 10 ", true},
        {opt::ChatExtender::CharsInLine.id(), L"1000", true},
        {opt::ChatExtender::CharsInLine.id(), L"9", false},
        {opt::ChatExtender::CharsInLine.id(), L"1001", false},
        {opt::ChatExtender::CharsInLine.id(), L"", false},
        {opt::ChatExtender::CharsInLine.id(), L"6o", false},
        {opt::ChatExtender::CharsInLine.id(), L"99999999999999999999", false},
        {opt::ChatExtender::MultilineBurst.id(), L"0.1", true},
        {opt::ChatExtender::MultilineBurst.id(), L"60,00", true},
        {opt::ChatExtender::MultilineBurst.id(), L"0.099", false},
        {opt::ChatExtender::MultilineBurst.id(), L"60.001", false},
        {opt::ChatExtender::MultilineBurst.id(), L"1.", true},
        {opt::ChatExtender::MultilineBurst.id(), L".5", false},
        {opt::ChatExtender::MultilineBurst.id(), L"-1", false},
        {opt::ChatExtender::MultilineBurst.id(), L"1.2.3", false},
        {opt::WavList::DoubleClick.id(), L"send", true},
        {opt::WavList::DoubleClick.id(), L"Sing", false},
        {opt::Descriptions::DescripField1.id(), L"", false},
        {opt::Descriptions::DescripField2.id(), L"", true},
        {opt::IM::AlertWav.id(), L"hello", true},
        {opt::IM::AlertWav.id(), L"Z:\\no\\such.wav", false},
        {opt::IM::FlashColor.id(), L"-2147483624", true},
    };
    for (const auto& [option, text, taken] : cases) {
        CAPTURE(to1252(text));
        CHECK(fieldValue(fieldOf(option), text).has_value() == taken);
    }
}

TEST_CASE("what is set elsewhere shows, unless the user has touched the field")
{
    StoreScope scope;
    LoadSettings();
    clsOptionsModel model(optionPages());
    const auto on = indexOf(model, opt::Fader::On.id()),
               line = indexOf(model, opt::ChatExtender::CharsInLine.id());
    const auto changes = onOptionChanged([&](OptionId option) { model.follow(option); });
    CHECK_FALSE(model.changed());

    opt::Fader::On.set(true);
    CHECK(model.entries()[on].text == L"True");
    CHECK_FALSE(model.changed());
    model.change(line, L"70");
    opt::ChatExtender::CharsInLine.set(80);
    CHECK(model.entries()[line].text == L"70");
    CHECK(model.changed());
    model.change(line, L"80"); // as it is now
    CHECK_FALSE(model.changed());

    model.change(line, L"7");
    CHECK(model.refused() == line);
    model.change(line, L"70");
    CHECK_FALSE(model.refused());
    CHECK(model.save());
    CHECK(opt::ChatExtender::CharsInLine.get() == 70);
    CHECK_FALSE(model.changed());
}

TEST_CASE("a field waits for what it needs, through all steps; a wrong text there troubles nobody")
{
    StoreScope scope;
    LoadSettings();
    clsOptionsModel model(optionPages());
    const auto fresh = indexOf(model, opt::Fader::NewFadeAfterUse.id()),
               random = indexOf(model, opt::Fader::DoRandomFade.id()),
               colours = indexOf(model, opt::Fader::UseRandomColors.id()),
               close = indexOf(model, opt::General::AutoCloseMsgBox.id()),
               seconds = indexOf(model, opt::General::AutoCloseTime.id());
    model.change(random, L"True");
    CHECK(model.enabled(colours));
    model.change(fresh, L"False");
    CHECK_FALSE(model.enabled(colours));

    model.change(seconds, L"none");
    CHECK(model.refused() == seconds);
    model.change(close, L"False");
    CHECK_FALSE(model.refused());
    CHECK(model.save());
    CHECK(model.entries()[seconds].text == L"5");
    CHECK(opt::General::AutoCloseTime.get() == 5);
    CHECK_FALSE(opt::General::AutoCloseMsgBox.get());
}

TEST_CASE("defaults come back page by page, and leave the hot words alone")
{
    StoreScope scope;
    LoadSettings();
    setHotWords({L"cat"});
    opt::HotWords::Active.set(true);
    opt::Fader::On.set(true);
    clsOptionsModel model(optionPages());
    const auto active = indexOf(model, opt::HotWords::Active.id());
    model.restoreDefaults(model.entries()[active].page);
    CHECK(model.save());
    CHECK_FALSE(opt::HotWords::Active.get());
    CHECK(opt::Fader::On.get());
    CHECK(hotWords() == std::vector<std::wstring>{L"cat"});
}

TEST_CASE("settings that cannot be written are told")
{
    StoreScope scope;
    LoadSettings();
    clsOptionsModel model(optionPages());
    model.change(indexOf(model, opt::Fader::On.id()), L"True");
    scope.store->denied = true;
    CHECK_FALSE(model.save());
}
