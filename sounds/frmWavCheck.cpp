#include "sounds/frmWavCheck.h"

#include "base/files.h"
#include "base/text.h"
#include "base/trap.h"
#include "chat/modIcons_win.h"
#include "core/MsgBoxEx.h"
#include "core/modWindowPlace.h"
#include "settings/Options.h"
#include "sounds/fileFacts.h"
#include "sounds/frmScan.h"
#include "sounds/frmWavs.h"
#include "sounds/modPlayback.h"
#include "sounds/modSoundLine.h"
#include "sounds/modSounds.h"
#include "sounds/modWavLibrary.h"
#include "sounds/modWavLookup.h"

namespace velora {
namespace {

constexpr char kModule[] = "frmWavCheck";
constexpr wchar_t kSection[] = L"WavScan";
constexpr DWORD kSliceMs = 40;
constexpr int kProgress = 1000;

struct Hit {
    std::wstring source, path;
};

/// The first source that has the sound; an empty path when none has.
Hit inLibrary(const std::wstring& name)
{
    static clsListFiles lists;
    for (const WavSource& source : lookupOrder(librarySources()))
        if (std::wstring path = wavPathIn(source, name, lists, fileExists); !path.empty())
            return {source.name, std::move(path)};
    return {};
}

std::vector<std::wstring> includedFields()
{
    using namespace opt::Descriptions;
    const std::pair<bool, const wchar_t*> fields[] = {
        {IncludeTitle.get(), L"Title"},       {IncludeArtist.get(), L"Artist"},
        {IncludeAlbum.get(), L"Album"},       {IncludeYear.get(), L"Year"},
        {IncludeComments.get(), L"Comments"}, {IncludeGenre.get(), L"Genre"}};
    std::vector<std::wstring> included;
    for (const auto& [on, name] : fields)
        if (on)
            included.emplace_back(name);
    return included;
}

std::wstring notFound(const std::wstring& name)
{
    return L"~B~CR" + literal(name)
           + L" not found!~B~CN~N ~NVelora did not find this wav in any of your wav categories.";
}

std::wstring foundText(const std::wstring& name, const Hit& hit)
{
    std::wstring text =
        L"~B~CG" + literal(name) + L"~B~CN is in your list ~B" + literal(hit.source) + L"~B.";
    if (opt::WavScan::ShowProperties.get())
        text += L"~N ~N~BFile:~B " + literal(hit.path) + L"~N~BSize:~B "
                + sizeText(fileBytes(hit.path).value_or(0), regionalNumberStyle());
    const auto described =
        wavDescriptions().find
            ? wavDescriptions().find(hit.path.substr(hit.path.find_last_of(L'\\') + 1))
            : std::nullopt;
    if (described)
        if (const std::wstring fields = descriptionMarkup(*described, includedFields());
            !fields.empty())
            text += L"~N ~N" + fields;
    return text;
}

} // namespace

void frmWavCheck::check(const std::wstring& name, bool asked)
{
    trap(kModule, [&] {
        frmWavCheck* window = find<frmWavCheck>();
        const bool known = !inLibrary(name).path.empty();
        if (!window && !asked && (known || !opt::WavScan::Notify.get()))
            return;
        if (!window)
            window = &open<frmWavCheck>();
        // A search that the user waits for goes on, whatever members say.
        if (asked || !window->tmrSearch.active())
            window->showAnswer(name);
        if (asked)
            window->bringToFront();
        else
            SetWindowPos(window->hwnd(), nullptr, 0, 0, 0, 0,
                         SWP_NOACTIVATE | SWP_NOMOVE | SWP_NOSIZE | SWP_NOZORDER | SWP_SHOWWINDOW);
        if (asked && !known && !opt::WavScan::NoPrompt.get())
            MsgBoxEx(notFound(name), kMsgExclamation, L"WavCheck");
    });
}

FormOptions frmWavCheck::options() const
{
    FormOptions options;
    options.title = L"WavCheck";
    options.kind = FormKind::sizable;
    options.client = {380, 220};
    options.icon = sharedIcon(IconId::wavs, 16);
    options.place = rememberedPlace(kSection, L"CheckPosition");
    return options;
}

void frmWavCheck::onCreate()
{
    lblName.create(*this, L"&Sound:");
    txtName.create(*this);
    cmdCheck.create(*this, L"&Check", [this] {
        if (const std::wstring name = trim(txtName.text()); !name.empty())
            check(name, true);
    });
    lblAnswer.create(*this, L"Answer:");
    rtfAnswer.create(*this, {.readOnly = true});
    rtfAnswer.setPreferredSize({340, 90});
    pbarProgress.create(*this, kProgress);
    pbarProgress.show(false);
    cmdPreview.create(*this, L"&Preview", [this] {
        if (!path_.empty())
            PlaySoundEx(path_);
    });
    cmdFav.create(*this, L"&Add to FavWavs", [this] { toFavourites(); });
    cmdSearch.create(*this, L"Search &Hard Drive", [this] { cmdSearch_Click(); });
    cmdCancel.create(*this, L"Close", [this] { cmdCancel_Click(); });
    setDefaultButton(cmdCheck);
    setCancelButton(cmdCancel);
    setLayout(rows({
                       columns({Box(lblName).align(Align::middle), grow(txtName), cmdCheck}),
                       rows({lblAnswer, grow(rtfAnswer)}, kNear).grow(),
                       pbarProgress,
                       buttonRow({cmdPreview, cmdFav, cmdSearch, cmdCancel}),
                   })
                  .margins());
}

void frmWavCheck::onDestroy()
{
    tmrSearch.stop();
    rememberPlace(kSection, place(), L"CheckPosition");
}

void frmWavCheck::showAnswer(const std::wstring& name)
{
    stopSearch();
    name_ = name;
    const Hit hit = inLibrary(name);
    path_ = hit.path;
    inLibrary_ = !path_.empty();
    txtName.setText(name);
    showMarkup(inLibrary_ ? foundText(name, hit) : notFound(name));
    cmdPreview.enable(inLibrary_);
    cmdFav.enable(inLibrary_);
    cmdSearch.enable(!inLibrary_);
}

void frmWavCheck::showMarkup(const std::wstring& markup)
{
    rtfAnswer.setText(L"");
    for (const MarkupRun& run : parseMarkup(markup)) {
        if (run.newLine)
            rtfAnswer.append(L"\r\n", {});
        // What is not coloured has the window's colour, whatever that is.
        const COLORREF colour =
            run.style.colour == kMarkupNormal ? GetSysColor(COLOR_WINDOWTEXT) : run.style.colour;
        rtfAnswer.append(run.text, {.colour = colour, .bold = run.style.bold});
    }
}

void frmWavCheck::cmdSearch_Click()
{
    trap(kModule, [&] {
        scan_ = std::make_unique<clsSoundScan>(hardDrives());
        cmdSearch.enable(false);
        cmdCancel.setText(L"Cancel");
        pbarProgress.show(true);
        relayout();
        tmrSearch.start(10, [this] { tick(); });
    });
}

void frmWavCheck::tick()
{
    const DWORD start = GetTickCount();
    const std::wstring wanted = lower(name_);
    bool more = true;
    while (more && path_.empty() && GetTickCount() - start < kSliceMs) {
        const std::size_t before = scan_->found().size();
        more = scan_->step();
        path_ = scan_->fileNamed(wanted, before);
    }
    pbarProgress.setValue(static_cast<int>(scan_->progress() * kProgress));
    if (path_.empty() && more)
        return;
    stopSearch();
    cmdPreview.enable(!path_.empty());
    cmdFav.enable(!path_.empty());
    showMarkup(notFound(name_)
               + (path_.empty() ? L"~N ~NIt is not on your hard drive either."
                                : L"~N ~N" + literal(path_)
                                      + L"~N ~NTo preview the wav found on your hard drive, click "
                                        L"~BPreview~B"));
}

void frmWavCheck::stopSearch()
{
    if (!tmrSearch.active())
        return;
    tmrSearch.stop();
    cmdCancel.setText(L"Close");
    cmdSearch.enable(true);
    pbarProgress.show(false);
    relayout();
}

void frmWavCheck::cmdCancel_Click()
{
    if (tmrSearch.active())
        stopSearch();
    else
        close(CloseReason::user);
}

void frmWavCheck::toFavourites()
{
    trap(kModule, [&] {
        if (path_.empty() || !AddFavWav(favWavsFile(), name_, path_))
            return;
        cmdFav.enable(false);
        if (frmWavs* const list = frmWavs::instance())
            list->categoriesChanged();
    });
}

} // namespace velora
