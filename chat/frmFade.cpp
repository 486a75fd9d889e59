#include "chat/frmFade.h"

#include "base/text.h"
#include "base/trap.h"
#include "chat/frmSaveScheme.h"
#include "chat/modCurrentFade.h"
#include "chat/modFadePreview_win.h"
#include "chat/modUseScheme.h"
#include "core/ColourWell.h"
#include "core/MsgBoxEx.h"
#include "core/modAOL.h"
#include "core/modWindowPlace.h"
#include "ui/Fonts.h"
#include "ui/WinGeometry.h"

namespace velora {
namespace {

constexpr char kModule[] = "frmFade";
constexpr wchar_t kSection[] = L"Fader";
constexpr Size kWell{44, 30};
constexpr wchar_t kSample[] = L"The quick brown fox jumps over the lazy dog :-) 0123456789";
constexpr COLORREF kWhite = RGB(255, 255, 255);
constexpr COLORREF kBlack = RGB(0, 0, 0);
/// Where more than this share of the letters is hard to read the user is told.
constexpr double kHintShare = 0.2;

} // namespace

frmFade::frmFade(std::wstring programFolder) : Form(kModule), schemes_(std::move(programFolder)) {}

void frmFade::showPanel(const std::wstring& programFolder)
{
    trap(kModule, [&] {
        frmFade* form = find<frmFade>();
        if (!form)
            form = &open<frmFade>(programFolder);
        form->withRoom_ = false;
        form->bringToFront();
    });
}

void frmFade::roomEntered(const std::wstring& programFolder)
{
    trap(kModule, [&] {
        if (!opt::Fader::On.get() || !opt::Fader::ShowFadePanelWithChat.get() || find<frmFade>())
            return;
        frmFade& form = open<frmFade>(programFolder);
        form.withRoom_ = true;
        ShowWindow(form.hwnd(), SW_SHOWNOACTIVATE);
    });
}

void frmFade::roomLeft()
{
    trap(kModule, [] {
        frmFade* const form = find<frmFade>();
        if (form && form->withRoom_)
            form->close();
    });
}

void frmFade::hidePanel()
{
    trap(kModule, [] {
        if (frmFade* form = find<frmFade>())
            form->close();
    });
}

const std::array<frmFade::Switch, 15>& frmFade::switches()
{
    static const std::array<Switch, 15> all = {{
        {&frmFade::chkOn, opt::Fader::On},
        {&frmFade::chkWavOnly, opt::Fader::FadeWavOnly},
        {&frmFade::chkSolid, opt::Fader::SolidFade},
        {&frmFade::chkWavy, opt::FadeScheme::Wavy},
        {&frmFade::chkBold, opt::FadeScheme::Bold},
        {&frmFade::chkItalic, opt::FadeScheme::Italic},
        {&frmFade::chkULine, opt::FadeScheme::ULine},
        {&frmFade::chkNewFade, opt::Fader::NewFadeAfterUse},
        {&frmFade::chkRandom, opt::Fader::DoRandomFade},
        {&frmFade::chkRandomColours, opt::Fader::UseRandomColors},
        {&frmFade::chkRandomNumber, opt::Fader::RandomizeFadeNumber},
        {&frmFade::chkRandomBold, opt::Fader::UseRandomBold},
        {&frmFade::chkRandomItalic, opt::Fader::UseRandomItalic},
        {&frmFade::chkRandomULine, opt::Fader::UseRandomULine},
        {&frmFade::chkRandomWavy, opt::Fader::UseRandomWavy},
    }};
    return all;
}

FormOptions frmFade::options() const
{
    FormOptions options;
    options.title = L"Velora - Fader";
    options.minimizeBox = true;
    options.place = rememberedPlace(kSection, L"PanelPosition");
    return options;
}

void frmFade::createSwitch(CheckBox& box, std::wstring_view text, std::wstring_view tip)
{
    box.create(*this, text);
    tips_.add(box, tip);
    for (const auto& [member, option] : switches())
        if (&(this->*member) == &box)
            box.onChange = [&box, option = option] { option.set(box.checked()); };
}

void frmFade::onCreate()
{
    createSwitch(chkOn, L"&Fade what I send", L"Text typed in the chat room goes out faded");
    createSwitch(chkWavOnly, L"Only &sounds from the Wav List",
                 L"Typed text goes out plain; sound lines go out faded");
    const Box head = columns({chkOn, chkWavOnly}, 3 * kGap);
    const Box left = rows({colourGroup(), styleGroup(), afterUseGroup()});
    const Box right = schemeGroup();
    const Box preview = previewGroup();
    cmdClose.create(*this, L"Close", [this] { close(CloseReason::user); });
    setCancelButton(cmdClose);
    setLayout(rows({head, columns({left, grow(right)}), preview, buttonRow({cmdClose})}).margins());

    fillSchemes(opt::Fader::Default.get());
    refresh();
    changes_ = onOptionChanged([this](OptionId) { refresh(); });
}

Box frmFade::colourGroup()
{
    grpColours.create(*this, L"Colours");
    lblCount.create(*this, L"&Number of colours:");
    std::vector<std::wstring> counts;
    for (int n = 1; n <= kMostColours; ++n)
        counts.push_back(std::to_wstring(n));
    cboCount.create(*this, counts);
    cboCount.onChange = [this] { chooseCount(); };
    cboCount.setPreferredSize({56, 0});
    std::vector<Box> first, second;
    for (std::size_t i = 0; i < cmdColour.size(); ++i) {
        cmdColour[i].create(*this, L"Colour " + std::to_wstring(i + 1), nullptr,
                            [this, i] { chooseColour(i); });
        cmdColour[i].setPreferredSize(kWell);
        cmdColour[i].setPainter(
            [this, i](HDC dc, const Rect& where, const ButtonState&) { drawWell(dc, where, i); });
        tips_.add(cmdColour[i], L"Colour " + std::to_wstring(i + 1) + L": click to choose another");
        (i < 5 ? first : second).push_back(cmdColour[i]);
    }
    cmdDraw.create(*this, L"&Draw new colours", [] {
        SystemRandom random;
        Fade fade = currentFade();
        RandomFadeOptions options;
        options.RandomizeFadeNumber = opt::Fader::RandomizeFadeNumber.get();
        drawRandomColours(fade, options, random);
        setCurrentFade(fade);
    });
    createSwitch(chkSolid, L"S&olid: one colour after another",
                 L"Every letter takes the next colour, without shades in between");
    return grpColours.around(
        rows({columns({lblCount, Box(cboCount).align(Align::middle), space(), cmdDraw}),
              columns(first, kNear), columns(second, kNear), chkSolid}));
}

Box frmFade::styleGroup()
{
    grpStyle.create(*this, L"Style");
    createSwitch(chkBold, L"&Bold", L"The whole line in bold letters");
    createSwitch(chkItalic, L"&Italic", L"The whole line in italics");
    createSwitch(chkULine, L"&Underline", L"The whole line underlined");
    createSwitch(chkWavy, L"&Wavy", L"Letters are raised and lowered in turn");
    return grpStyle.around(columns({chkBold, chkItalic, chkULine, chkWavy}));
}

Box frmFade::afterUseGroup()
{
    grpAfterUse.create(*this, L"After each use");
    createSwitch(chkNewFade, L"Take a n&ew fade", L"The next line gets another fade");
    createSwitch(chkRandom, L"at &random", L"A new fade is drawn at random");
    createSwitch(chkRandomColours, L"ne&w colours",
                 L"On: new colours are drawn. Off: one of the saved schemes is taken");
    createSwitch(chkRandomNumber, L"&how many colours", L"2 to 10 colours, as it happens");
    createSwitch(chkRandomBold, L"bold", L"Bold comes out on half of the time");
    createSwitch(chkRandomItalic, L"italic", L"Italic comes out on half of the time");
    createSwitch(chkRandomULine, L"underline", L"Underline comes out on half of the time");
    createSwitch(chkRandomWavy, L"wavy", L"Wavy comes out on half of the time");
    return grpAfterUse.around(
        rows({columns({chkNewFade, chkRandom}), columns({chkRandomColours, chkRandomNumber}),
              columns({chkRandomBold, chkRandomItalic, chkRandomULine, chkRandomWavy})}));
}

Box frmFade::schemeGroup()
{
    grpSchemes.create(*this, L"Schemes");
    lblSchemes.create(*this, L"Saved s&chemes:");
    lstSchemes.create(*this);
    lstSchemes.onSelect = [this] { showSchemeTag(); };
    lstSchemes.onActivate = [this] { loadScheme(); };
    lblTag.create(*this, L"");
    lblTag.setPreferredSize({230, fontHeight(uiFont()) * 4 + 2});
    cmdLoad.create(*this, L"&Load", [this] { loadScheme(); });
    cmdSave.create(*this, L"Sa&ve...", [this] { saveScheme(); });
    cmdDelete.create(*this, L"Dele&te", [this] { deleteScheme(); });
    cmdRefresh.create(*this, L"Re&fresh", [this] { fillSchemes(selectedScheme()); });
    return grpSchemes.around(
        rows({lblSchemes, grow(lstSchemes), lblTag,
              columns({cmdLoad, cmdSave, cmdDelete, cmdRefresh}, kNear).sameSizes()}));
}

Box frmFade::previewGroup()
{
    grpPreview.create(*this, L"Preview");
    lblSample.create(*this, L"Sam&ple text:");
    txtSample.create(*this, kSample);
    txtSample.onChange = [this] { refreshPreview(); };
    lblOnWhite.createDrawn(*this, L"Preview on white",
                           [this](HDC dc, const Rect& where) { drawPreview(dc, where, kWhite); });
    lblOnBlack.createDrawn(*this, L"Preview on black",
                           [this](HDC dc, const Rect& where) { drawPreview(dc, where, kBlack); });
    lblOnWhite.setPreferredSize({0, 50});
    lblOnBlack.setPreferredSize({0, 50});
    lblHint.create(*this, L"");
    lblHint.setPreferredSize({0, fontHeight(uiFont())});
    return grpPreview.around(rows({columns({Box(lblSample).align(Align::middle), grow(txtSample)}),
                                   lblOnWhite, lblOnBlack, lblHint},
                                  kNear));
}

void frmFade::refresh()
{
    // Setting a control raises no change, but a style drawn meanwhile would come back here.
    if (refreshing_ || !isOpen())
        return;
    refreshing_ = true;
    for (const auto& [member, option] : switches())
        if ((this->*member).checked() != option.get())
            (this->*member).setChecked(option.get());
    const int count = static_cast<int>(opt::FadeScheme::FadeNumber.get());
    if (cboCount.selected() != count - 1)
        cboCount.select(count - 1);
    for (std::size_t i = 0; i < cmdColour.size(); ++i) {
        cmdColour[i].enable(static_cast<int>(i) < count);
        cmdColour[i].redraw();
    }
    const bool random = opt::Fader::NewFadeAfterUse.get() && opt::Fader::DoRandomFade.get();
    chkRandom.enable(opt::Fader::NewFadeAfterUse.get());
    for (CheckBox* box : {&chkRandomColours, &chkRandomNumber, &chkRandomBold, &chkRandomItalic,
                          &chkRandomULine, &chkRandomWavy})
        box->enable(random);
    refreshPreview();
    refreshing_ = false;
}

void frmFade::refreshPreview()
{
    std::wstring sample = txtSample.text();
    const int phase = wavePhase(); // a preview uses up nothing
    FadeEngine(sample, currentFade(), opt::Fader::SolidFade.get());
    setWavePhase(phase);
    runs_ = fadeRuns(sample);
    const bool onWhite = hardToRead(runs_, kWhite) > kHintShare;
    const bool onBlack = hardToRead(runs_, kBlack) > kHintShare;
    lblHint.setText(onWhite && onBlack ? L"Hard to read on white and on black."
                    : onWhite          ? L"Hard to read on a white background, AOL's usual one."
                                       : L"");
    lblOnWhite.redraw();
    lblOnBlack.redraw();
}

void frmFade::drawPreview(HDC dc, const Rect& where, COLORREF background) const
{
    drawFaded(dc, where, runs_, background);
    RECT frame = toRECT(where);
    DrawEdge(dc, &frame, BDR_SUNKENOUTER, BF_RECT);
}

void frmFade::drawWell(HDC dc, const Rect& where, std::size_t index) const
{
    const bool used = static_cast<long>(index) < opt::FadeScheme::FadeNumber.get();
    drawColourWell(dc, where,
                   used ? std::optional(static_cast<COLORREF>(currentFade().colours[index]))
                        : std::nullopt);
}

void frmFade::chooseColour(std::size_t index)
{
    const auto colour = pickColour(hwnd(), static_cast<COLORREF>(currentFade().colours[index]));
    if (!colour)
        return;
    Fade fade = currentFade(); // it may have changed while the picker was open
    fade.colours[index] = static_cast<Colour>(*colour);
    setCurrentFade(fade);
}

void frmFade::chooseCount()
{
    Fade fade = currentFade();
    fade.FadeNumber = cboCount.selected() + 1;
    setCurrentFade(fade);
}

void frmFade::fillSchemes(const std::wstring& selected)
{
    entries_ = schemes_.list();
    std::vector<std::wstring> names;
    int index = -1;
    for (const SchemeEntry& entry : entries_) {
        if (equalNoCase(entry.name, selected))
            index = static_cast<int>(names.size());
        names.push_back(entry.name);
    }
    lstSchemes.setItems(names);
    if (index >= 0)
        lstSchemes.select(index);
    showSchemeTag();
}

std::wstring frmFade::selectedScheme() const
{
    const int index = lstSchemes.selected();
    return index < 0 ? std::wstring() : entries_[static_cast<std::size_t>(index)].name;
}

void frmFade::showSchemeTag()
{
    const std::wstring name = selectedScheme();
    cmdLoad.enable(!name.empty());
    cmdDelete.enable(!name.empty());
    const auto scheme = name.empty() ? std::nullopt : schemes_.load(name);
    const std::wstring tag = name.empty() ? L""
                             : scheme     ? schemeTagText(*scheme) + L"\r\n" + scheme->Comments
                                          : L"This file cannot be read as a fade scheme.";
    lblTag.setText(tag);
    showTagTip(tag);
}

// What the narrow label below the list may cut off. Made anew, as its shape cannot be changed.
void frmFade::showTagTip(const std::wstring& tag)
{
    tagTip_.reset();
    if (tag.empty() || !opt::Fader::ShowTagToolTips.get())
        return;
    tagTip_.emplace();
    tagTip_->create(*this, opt::Fader::FadeTipBalloon.get());
    tagTip_->setColours(systemColour(opt::Fader::FadeTipTextColor.get()),
                        systemColour(opt::Fader::FadeTipBackColor.get()));
    tagTip_->add(lstSchemes, tag);
}

void frmFade::loadScheme()
{
    const std::wstring name = selectedScheme();
    if (!name.empty() && useScheme(schemes_, name))
        refresh();
}

void frmFade::saveScheme()
{
    const std::wstring selected = selectedScheme();
    const FadeScheme shown = schemes_.load(selected).value_or(FadeScheme());
    const std::wstring author = shown.Author.empty() ? signedOnScreenName() : shown.Author;
    const auto label = frmSaveScheme({selected, author, shown.Comments}).ask();
    if (!label)
        return;
    const std::wstring& name = label->name;
    if (schemes_.exists(name)
        && MsgBoxEx(L"The Scheme ~B~CB" + literal(name)
                        + L"~B~CN already exists.~N ~NDo you wish to replace it with these new "
                          L"settings?",
                    kMsgYesNo | kMsgQuestion, L"Save Scheme")
               != kAnswerYes)
        return;
    FadeScheme scheme = schemes_.load(name).value_or(FadeScheme());
    scheme.fade = currentFade();
    scheme.Author = label->author;
    scheme.Comments = label->comments;
    if (!schemes_.save(name, scheme)) {
        MsgBoxEx(L"~B~CRCannot save the Scheme!~B~CN~N ~NThe folder ~BFader\\Schemes~B cannot be "
                 L"written.",
                 kMsgExclamation, L"Save Scheme");
        return;
    }
    fillSchemes(name);
}

void frmFade::deleteScheme()
{
    const std::wstring name = selectedScheme();
    if (name.empty()
        || MsgBoxEx(L"~BDelete the Scheme ~CR" + literal(name) + L"~CN ?~B",
                    kMsgYesNo | kMsgQuestion, L"Delete Scheme")
               != kAnswerYes)
        return;
    schemes_.remove(name);
    fillSchemes({});
}

bool frmFade::onClose(CloseReason)
{
    rememberPlace(kSection, place(), L"PanelPosition");
    return true;
}

} // namespace velora
