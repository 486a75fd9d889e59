#include "chat/modCurrentFade.h"

#include "base/text.h"
#include "base/trap.h"
#include "settings/Options.h"

namespace velora {
namespace {

constexpr char kModule[] = "modCurrentFade";
int g_same = 0;

const std::array<Option<long>, kMostColours>& colourOptions()
{
    using namespace opt::FadeScheme;
    static const std::array<Option<long>, kMostColours> options = {One, Two,   Three, Four, Five,
                                                                   Six, Seven, Eight, Nine, Ten};
    return options;
}

template <class T>
void setIfChanged(const Option<T>& option, T value)
{
    if (option.get() != value)
        option.set(value);
}

} // namespace

std::function<std::optional<Fade>(RandomSource&)> nextScheme;

SameFade::SameFade()
{
    ++g_same;
}

SameFade::~SameFade()
{
    --g_same;
}

Fade currentFade()
{
    Fade fade;
    fade.FadeNumber = static_cast<int>(opt::FadeScheme::FadeNumber.get());
    for (std::size_t i = 0; i < fade.colours.size(); ++i)
        fade.colours[i] = static_cast<Colour>(colourOptions()[i].get());
    fade.Wavy = opt::FadeScheme::Wavy.get();
    fade.Bold = opt::FadeScheme::Bold.get();
    fade.Italic = opt::FadeScheme::Italic.get();
    fade.ULine = opt::FadeScheme::ULine.get();
    return fade;
}

void setCurrentFade(const Fade& fade)
{
    setIfChanged(opt::FadeScheme::FadeNumber, long{fade.FadeNumber});
    for (std::size_t i = 0; i < fade.colours.size(); ++i)
        setIfChanged(colourOptions()[i], long{fade.colours[i]});
    setIfChanged(opt::FadeScheme::Wavy, fade.Wavy);
    setIfChanged(opt::FadeScheme::Bold, fade.Bold);
    setIfChanged(opt::FadeScheme::Italic, fade.Italic);
    setIfChanged(opt::FadeScheme::ULine, fade.ULine);
}

void FadeEngine(std::wstring& text, bool breakLines)
{
    trap(kModule, [&] {
        if (trimView(text).empty())
            return;
        FadeEngine(text, currentFade(), opt::Fader::SolidFade.get(), breakLines);
        static SystemRandom random;
        prepareNextFade(random);
    });
}

void prepareNextFade(RandomSource& random)
{
    trap(kModule, [&] {
        if (g_same > 0 || !opt::Fader::NewFadeAfterUse.get() || !opt::Fader::DoRandomFade.get())
            return;
        RandomFadeOptions options;
        options.RandomizeFadeNumber = opt::Fader::RandomizeFadeNumber.get();
        options.UseRandomBold = opt::Fader::UseRandomBold.get();
        options.UseRandomItalic = opt::Fader::UseRandomItalic.get();
        options.UseRandomULine = opt::Fader::UseRandomULine.get();
        options.UseRandomWavy = opt::Fader::UseRandomWavy.get();
        Fade fade = currentFade();
        if (opt::Fader::UseRandomColors.get())
            drawRandomColours(fade, options, random);
        else if (nextScheme)
            fade = nextScheme(random).value_or(fade);
        drawRandomStyles(fade, options, random);
        setCurrentFade(fade);
    });
}

} // namespace velora
