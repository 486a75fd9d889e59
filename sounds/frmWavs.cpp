#include "sounds/frmWavs.h"

#include "base/text.h"
#include "base/trap.h"
#include "chat/modIcons_win.h"
#include "core/modWindowPlace.h"
#include "settings/Options.h"
#include "sounds/modPlayback.h"
#include "ui/Menu.h"
#include "ui/MessageLoop.h"
#include "ui/WinGeometry.h"

namespace velora {
namespace {

constexpr char kModule[] = "frmWavs";
constexpr wchar_t kSection[] = L"Wav List";
constexpr int kIcon = 16;
constexpr Size kStartSize{440, 480};
constexpr Size kButtonSize{92, 26};
constexpr IconId kKindIcons[] = {IconId::soundWav, IconId::soundMid, IconId::soundMp3};

} // namespace

std::optional<LRESULT> SoundListView::onMessage(UINT message, WPARAM wParam, LPARAM lParam)
{
    const auto tell = [this](int row) {
        if (std::exchange(hovered_, row) != row && onHover)
            onHover(row);
    };
    if (message == WM_MOUSEMOVE) {
        TRACKMOUSEEVENT track{sizeof track, TME_HOVER | TME_LEAVE, hwnd(), HOVER_DEFAULT};
        if (!tracking_)
            tracking_ = TrackMouseEvent(&track) != 0;
        POINT at{static_cast<short>(LOWORD(lParam)), static_cast<short>(HIWORD(lParam))};
        ClientToScreen(hwnd(), &at);
        if (hovered_ >= 0 && hit({at.x, at.y}) != hovered_)
            tell(-1);
    } else if (message == WM_MOUSEHOVER) {
        tracking_ = false;
        POINT at;
        GetCursorPos(&at);
        tell(hit({at.x, at.y}));
        return 0; // the list would select the row
    } else if (message == WM_MOUSELEAVE) {
        tracking_ = false;
        tell(-1);
    }
    return ListView::onMessage(message, wParam, lParam);
}

void FindEdit::create(Form& form)
{
    Edit::create(form);
    subclass();
}

std::optional<LRESULT> FindEdit::onMessage(UINT message, WPARAM wParam, LPARAM lParam)
{
    const bool steps =
        wParam == VK_DOWN || wParam == VK_UP || wParam == VK_NEXT || wParam == VK_PRIOR;
    if (message == WM_KEYDOWN && steps && onStep) {
        onStep(static_cast<UINT>(wParam));
        return 0;
    }
    return Edit::onMessage(message, wParam, lParam);
}

frmWavs::frmWavs() : Form("frmWavs") {}

frmWavs::~frmWavs() = default;

void frmWavs::openList()
{
    trap(kModule, [] {
        frmWavs* list = instance();
        if (!list)
            list = &open<frmWavs>();
        list->bringToFront();
    });
}

FormOptions frmWavs::options() const
{
    FormOptions options;
    options.title = L"Velora - Wav List";
    options.kind = FormKind::sizable;
    options.client = kStartSize;
    options.place = rememberedPlace(kSection);
    options.icon = sharedIcon(IconId::wavs, kIcon);
    return options;
}

void frmWavs::onCreate()
{
    createHead();
    createList();
    createFoot();
    createButtons();
    createTips();
    layOut();
    addKeys();
    setFirstFocus(txtFind);
    acceptDroppedFiles();
    onSoundProgress([this](const SoundProgress& progress) { showProgress(progress); });
    wavDescriptions().changed = [this] { descriptionsChanged(); };
    fillSources(opt::WavList::LastList.get());
    ListWavs();
    changes_ = onOptionChanged([this](OptionId option) { follow(option); });
}

/// What the list shows follows its options, wherever they are set.
void frmWavs::follow(OptionId option)
{
    using namespace opt::WavList;
    using namespace opt::Descriptions;
    const auto among = [option](std::initializer_list<OptionId> options) {
        return std::find(options.begin(), options.end(), option) != options.end();
    };
    if (among({PreserveCase.id(), NoAOLWavs.id()}))
        Refresh();
    if (among({ProgressTooltipBalloon.id(), WpTipTextColor.id(), WpTipBackColor.id()}))
        progressTip_.reset();
    if (among({Show.id(), ShowAs.id(), IncludeTitle.id(), IncludeArtist.id(), IncludeAlbum.id(),
               IncludeYear.id(), IncludeComments.id(), IncludeGenre.id(), IncludeCompression.id()}))
        descriptionsChanged();
}

void frmWavs::createHead()
{
    const auto menu = [this](ImageButton& button, const wchar_t* name,
                             void (frmWavs::*fill)(Menu&)) {
        button.create(*this, name, nullptr, [this, &button, fill] { popUp(button, fill); });
        button.showName(true);
    };
    menu(mnuSound, L"S&ound", &frmWavs::soundMenu);
    menu(mnuCategory, L"&Category", &frmWavs::categoryMenu);
    menu(mnuList, L"Lis&t", &frmWavs::listMenu);
    menu(mnuView, L"&View", &frmWavs::viewMenu);
    menu(mnuOptions, L"O&ptions", &frmWavs::optionsMenu);

    lblList.create(*this, L"&List:");
    imgcboList.create(*this, {});
    imgcboList.onChange = [this] { ListWavs(); };
    cboKind.create(*this, {L"Wav", L"Midi", L"MP3"},
                   std::clamp(static_cast<int>(opt::WavList::LastKind.get()), 0, 2));
    cboKind.setPreferredSize({72, 0});
    cboKind.onChange = [this] { ListWavs(); };
    lblFind.create(*this, L"&Find:");
    txtFind.create(*this);
    txtFind.setCue(L"Type a part of a name");
    txtFind.onChange = [this] { txtFind_Change(); };
    txtFind.onStep = [this](UINT key) { SendMessageW(lstWav.hwnd(), WM_KEYDOWN, key, 0); };
    chkEverywhere.create(*this, L"In &all lists", opt::WavList::FindEverywhere.get());
    chkEverywhere.onChange = [this] {
        opt::WavList::FindEverywhere.set(chkEverywhere.checked());
        txtFind_Change();
    };
}

void frmWavs::createList()
{
    images_.reset(ImageList_Create(kIcon, kIcon, ILC_COLOR32, 3, 0));
    for (const IconId icon : kKindIcons)
        ImageList_AddIcon(images_.get(), sharedIcon(icon, kIcon));
    ListView::Options look;
    look.multiple = false;
    look.images = images_.get();
    lstWav.create(*this, L"Sounds", {}, look);
    lstWav.getText = [this](int row, int column) { return cell(row, column); };
    lstWav.getImage = [this](int row) {
        return row < model().count() ? static_cast<int>(model().kind(row)) : 0;
    };
    lstWav.getColour = [this](int row) { return rowColour(row); };
    lstWav.findRow = [this](std::wstring_view typed, int from) {
        return model().beginningWith(typed, from);
    };
    lstWav.onActivate = [this](int) { lstWav_DblClick(); };
    lstWav.onColumnClick = [this](int column) { columnClicked(column); };
    lstWav.onSelect = [this] { showDescription(); };
    lstWav.onHover = [this](int row) { showTip(row); };
    lstWav.onKey = [this](UINT key) {
        if (key == VK_DELETE)
            source().listFile && !everywhere_ ? DelFavWav() : deleteFile();
    };
}

void frmWavs::createFoot()
{
    lblDescription.create(*this, L"");
    lblStatus.create(*this, L"");
    pbarProgress.create(*this, 100);
    pbarProgress.show(false);
    lblCount.create(*this, L"Count: 0");
    chkFancy.create(*this, L"&Glintune", opt::Glintune::On.get());
    chkFancy.onChange = [this] { chkFancy_Click(); };
    chkRandom.create(*this, L"&Random style", opt::Glintune::Random.get());
    chkRandom.onChange = [this] { opt::Glintune::Random.set(chkRandom.checked()); };
    cmdGlintunes.create(*this, L"&Edit Glintunes...", [this] { editGlintunes(); });
}

void frmWavs::createButtons()
{
    cmdSend.create(*this, L"&Send", [this] { cmdSend_Click(); });
    cmdPlain.create(*this, L"Send Plai&n", [this] { cmdPlain_Click(); });
    cmdPreview.create(*this, L"Previe&w", [this] { cmdPreview_Click(); });
    cmdStop.create(*this, L"Stop", [] { StopSound(); });
    constexpr IconId kIcons[] = {IconId::send, IconId::send, IconId::play, IconId::stop};
    int index = 0;
    for (Button* button : {&cmdSend, &cmdPlain, &cmdPreview, &cmdStop}) {
        const HICON icon = sharedIcon(kIcons[index], kIcon);
        auto& images = buttonImages_[index++];
        images.reset(ImageList_Create(kIcon, kIcon, ILC_COLOR32, 1, 0));
        ImageList_AddIcon(images.get(), icon);
        // Without the common controls of version 6 the buttons have their names alone.
        BUTTON_IMAGELIST look{images.get(), {8, 0, 0, 0}, BUTTON_IMAGELIST_ALIGN_LEFT};
        if (button != &cmdPlain)
            SendMessageW(button->hwnd(), BCM_SETIMAGELIST, 0, reinterpret_cast<LPARAM>(&look));
        button->setPreferredSize(kButtonSize);
    }
}

void frmWavs::createTips()
{
    const std::pair<Control*, const wchar_t*> tips[] = {
        {&cmdSend, L"Sends the sound to the chat room, or to the instant message in front of AOL "
                   L"(Ctrl+Enter)"},
        {&cmdPlain, L"Sends the sound without Glintune, fade and description (Ctrl+Shift+Enter)"},
        {&cmdPreview, L"Plays the sound on this computer only (F2)"},
        {&cmdStop, L"Ends the sound that plays (F3)"},
        {&txtFind, L"Shows only the sounds whose names hold these words"},
        {&chkEverywhere, L"Finds in every list, whatever the kind of sound, not only in the one "
                         L"that is shown"},
        {&cboKind, L"The kind of sound files to list"},
        {&chkFancy, L"Puts the sound into your Glintune style"},
        {&chkRandom, L"Takes another of your Glintune styles each time"},
        {&cmdGlintunes, L"Opens the Glintune Editor (Ctrl+G)"},
    };
    for (const auto& [control, text] : tips)
        tips_.add(*control, text);
}

void frmWavs::layOut()
{
    const int labels =
        std::max(Box(lblList).preferredSize().width, Box(lblFind).preferredSize().width);
    const auto label = [labels](Label& text) {
        return Box(text).atLeast({labels, 0}).align(Align::middle);
    };
    const auto middle = [](Control& control) { return Box(control).align(Align::middle); };
    chkRandom.enable(chkFancy.checked());
    lblDescription.show(descriptionsShown() == Shown::line);
    setLayout(rows({
                       columns({mnuSound, mnuCategory, mnuList, mnuView, mnuOptions, space()}, 0),
                       columns({label(lblList), grow(imgcboList), cboKind}, kNear),
                       columns({label(lblFind), grow(txtFind), middle(chkEverywhere)}, kNear),
                       grow(lstWav),
                       lblDescription,
                       columns({grow(middle(lblStatus)), middle(pbarProgress), middle(lblCount)}),
                       columns({middle(chkFancy), middle(chkRandom), space(), cmdGlintunes}),
                       buttonRowCentred({cmdSend, cmdPlain, cmdPreview, cmdStop}),
                   })
                  .margins(kMargin, kNear, kMargin, kMargin));
}

void frmWavs::addKeys()
{
    const std::tuple<UINT, UINT, void (frmWavs::*)()> keys[] = {
        {0, VK_RETURN, &frmWavs::enterPressed},
        {MOD_CONTROL, VK_RETURN, &frmWavs::cmdSend_Click},
        {MOD_CONTROL | MOD_SHIFT, VK_RETURN, &frmWavs::cmdPlain_Click},
        {0, VK_F2, &frmWavs::cmdPreview_Click},
        {0, VK_F5, &frmWavs::Refresh},
        {MOD_CONTROL, 'G', &frmWavs::editGlintunes},
        {MOD_CONTROL, 'D', &frmWavs::AddFavWav},
        {MOD_CONTROL, 'E', &frmWavs::editDescription},
        {MOD_CONTROL, 'T', &frmWavs::editTag},
        {MOD_CONTROL, 'N', &frmWavs::newCategory},
        {MOD_CONTROL, 'M', &frmWavs::attachToMail},
        {MOD_CONTROL, 'P', &frmWavs::printList},
        {MOD_CONTROL, 'S', &frmWavs::saveList},
        {MOD_CONTROL, 'K', &frmWavs::checkSound},
    };
    for (const auto& [modifiers, key, act] : keys)
        addKey(modifiers, key, [this, act = act] { (this->*act)(); });
    addKey(0, VK_F3, [] { StopSound(); });
    addKey(0, VK_ESCAPE, [this] {
        if (!rollUp())
            close(CloseReason::user);
    });
    addKey(MOD_CONTROL, 'F', [this] {
        txtFind.focus();
        txtFind.select();
    });
}

void frmWavs::onDestroy()
{
    onSoundProgress(nullptr);
    wavDescriptions().changed = nullptr;
    watch_.stop();
    rememberPlace(kSection, place());
    trap(kModule, [&] {
        opt::WavList::LastList.set(source().name);
        opt::WavList::LastKind.set(static_cast<long>(kind()));
    });
}

void frmWavs::onSize(Size)
{
    fitColumns();
}

/// True when a list of a combo box was down, and is up again.
bool frmWavs::rollUp()
{
    for (const ComboBox* const combo : {&imgcboList, &cboKind})
        if (SendMessageW(combo->hwnd(), CB_GETDROPPEDSTATE, 0, 0)) {
            SendMessageW(combo->hwnd(), CB_SHOWDROPDOWN, FALSE, 0);
            return true;
        }
    return false;
}

void frmWavs::showStatus(const std::wstring& text)
{
    lblStatus.setText(replaceAll(text, L"&", L"&&"));
}

} // namespace velora
