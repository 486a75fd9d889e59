#include "chat/modCurrentFade.h"

#include "settings/Options.h"
#include "support/memory_store.h"

#include <doctest/doctest.h>

using namespace velora;

namespace {

struct HalfRandom : RandomSource {
    double rnd() override { return 0.5; }
};

/// Options over a store of the test's own.
struct FreshOptions : StoreScope {
    ~FreshOptions() { nextScheme = nullptr; }
};

} // namespace

TEST_CASE("the fade in use lives in the options, and only changes are announced")
{
    const FreshOptions options;
    Fade fade;
    fade.FadeNumber = 3;
    fade.colours[9] = 0x123456;
    fade.Italic = true;
    int announced = 0;
    const auto subscription = onOptionChanged([&](OptionId) { ++announced; });
    setCurrentFade(fade);
    CHECK(announced == 3);
    setCurrentFade(fade);
    CHECK(announced == 3);
    CHECK(currentFade() == fade);
    CHECK(readSetting(L"Fader\\Schemes\\Cool Fade", L"Ten", 0) == 0x123456);
}

TEST_CASE("the next fade is prepared only when the user wants it")
{
    const FreshOptions options;
    HalfRandom random;
    const Fade before = currentFade();
    prepareNextFade(random); // random fade is off
    CHECK(currentFade() == before);

    opt::Fader::DoRandomFade.set(true);
    {
        const SameFade same;
        prepareNextFade(random);
        CHECK(currentFade() == before);
    }
    prepareNextFade(random);
    CHECK(currentFade().colours[0] == 8388608);
    CHECK(currentFade().FadeNumber == 6);

    Fade saved;
    saved.FadeNumber = 2;
    nextScheme = [&](RandomSource&) { return std::optional(saved); };
    opt::Fader::UseRandomColors.set(false);
    opt::Fader::UseRandomBold.set(true);
    prepareNextFade(random);
    saved.Bold = true;
    CHECK(currentFade() == saved);
}

TEST_CASE("fading a text uses the fade up; a blank text does not")
{
    const FreshOptions options;
    opt::Fader::DoRandomFade.set(true);
    const Fade before = currentFade();
    std::wstring blank = L"  ";
    FadeEngine(blank);
    CHECK(blank == L"  ");
    CHECK(currentFade() == before);
    std::wstring text = L"hi";
    FadeEngine(text);
    CHECK(text == L"<FONT COLOR=#000000>h<FONT COLOR=#000000>i");
    CHECK(currentFade() != before);
}
