#include "sounds/frmWavs.h"

#include "base/text.h"
#include "base/trap.h"
#include "chat/modIcons_win.h"
#include "core/MsgBoxEx.h"
#include "core/modAOL.h"
#include "core/modMain.h"
#include "settings/Options.h"
#include "sounds/modFavWavs.h"
#include "sounds/modPlayback.h"
#include "sounds/modSounds.h"
#include "ui/Menu.h"
#include "ui/MessageLoop.h"
#include "ui/WinGeometry.h"

namespace velora {
namespace {

constexpr char kModule[] = "frmWavs";
constexpr wchar_t kSection[] = L"Wav List";
constexpr int kIcon = 16;
constexpr Size kStartSize{360, 420};
constexpr Size kButtonSize{92, 26};
constexpr int kSizeColumn = 76;
constexpr IconId kKindIcons[] = {IconId::soundWav, IconId::soundMid, IconId::soundMp3};

constexpr wchar_t kNothingSelected[] =
    L"~B~CRNo wav selected!~B~CN~N ~NPlease choose a wav in the wav list box before attempting to "
    L"use thie feature!";
constexpr wchar_t kNoFolder[] =
    L"~B~CRDirectory not found!~B~CN~N ~NThe Directory you chose does not exist or you have typed "
    L"an incorrect path.";

/// The setting "left,top,right,bottom"; absent when it is anything else.
std::optional<Rect> keptPlace()
{
    const std::vector<std::wstring> parts = split(readSetting(kSection, L"Position", L""), L',');
    std::vector<long> numbers;
    for (const std::wstring& part : parts)
        if (const auto number = parseLong(part))
            numbers.push_back(*number);
    if (parts.size() != 4 || numbers.size() != 4)
        return std::nullopt;
    return Rect{static_cast<int>(numbers[0]), static_cast<int>(numbers[1]),
                static_cast<int>(numbers[2]), static_cast<int>(numbers[3])};
}

std::wstring placeText(const Rect& place)
{
    return std::to_wstring(place.left) + L"," + std::to_wstring(place.top) + L","
           + std::to_wstring(place.right) + L"," + std::to_wstring(place.bottom);
}

} // namespace

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
    options.place = keptPlace();
    options.icon = sharedIcon(IconId::wavs, kIcon);
    return options;
}

void frmWavs::onCreate()
{
    sources_ = wavSources(aol().folder, AppPath());
    std::vector<std::wstring> names;
    for (const WavSource& wavSource : sources_)
        names.push_back(wavSource.name);

    lblList.create(*this, L"&List:");
    imgcboList.create(*this, names, 0);
    imgcboList.onChange = [this] { ListWavDir(); };
    cboKind.create(*this, {L"Wav", L"Midi", L"MP3"}, 0);
    cboKind.setPreferredSize({72, 0});
    cboKind.onChange = [this] { ListWavDir(); };
    lblFind.create(*this, L"&Find:");
    txtFind.create(*this);
    txtFind.setCue(L"Type a part of a name");
    txtFind.onChange = [this] { txtFind_Change(); };
    createList();
    lblStatus.create(*this, L"");
    pbarProgress.create(*this, 100);
    pbarProgress.show(false);
    lblCount.create(*this, L"Count: 0");

    createButtons();
    tips_.add(cmdSend, L"Sends the sound to the chat room (Ctrl+Enter)");
    tips_.add(cmdPreview, L"Plays the sound on this computer only (F2)");
    tips_.add(cmdStop, L"Ends the sound that plays (F3)");
    tips_.add(txtFind, L"Shows only the sounds whose names hold these words");
    tips_.add(cboKind, L"The kind of sound files to list");

    const int labels =
        std::max(Box(lblList).preferredSize().width, Box(lblFind).preferredSize().width);
    const auto label = [labels](Label& text) {
        return Box(text).atLeast({labels, 0}).align(Align::middle);
    };
    setLayout(rows({
                       columns({label(lblList), grow(imgcboList), cboKind}, kNear),
                       columns({label(lblFind), grow(txtFind)}, kNear),
                       grow(lstWav),
                       columns({grow(Box(lblStatus).align(Align::middle)),
                                Box(pbarProgress).align(Align::middle),
                                Box(lblCount).align(Align::middle)}),
                       buttonRowCentred({cmdSend, cmdPreview, cmdStop}),
                   })
                  .margins());
    addKeys();
    setFirstFocus(txtFind);
    onSoundProgress([this](const SoundProgress& progress) { showProgress(progress); });
    ListWavDir();
}

void frmWavs::createList()
{
    images_.reset(ImageList_Create(kIcon, kIcon, ILC_COLOR32, 3, 0));
    for (const IconId icon : kKindIcons)
        ImageList_AddIcon(images_.get(), sharedIcon(icon, kIcon));
    ListView::Options look;
    look.multiple = false;
    look.images = images_.get();
    lstWav.create(*this, L"Sounds", {{L"Name", 220}, {L"Size", kSizeColumn, true}}, look);
    lstWav.getText = [this](int row, int column) { return cell(row, column); };
    lstWav.getImage = [this](int row) { return static_cast<int>(model_[row].kind); };
    lstWav.findRow = [this](std::wstring_view typed, int from) {
        return model_.beginningWith(typed, from);
    };
    lstWav.onActivate = [this](int) { lstWav_DblClick(); };
    lstWav.onColumnClick = [this](int column) {
        const SoundRow* const row = selectedRow();
        const std::wstring path = row ? row->path : std::wstring();
        model_.sortBy(column == 0 ? clsWavListModel::Column::name : clsWavListModel::Column::size);
        lstWav.setSortMark(column, model_.descending() ? -1 : 1);
        showRows(path);
    };
}

void frmWavs::createButtons()
{
    cmdSend.create(*this, L"&Send", [this] { cmdSend_Click(); });
    cmdPreview.create(*this, L"&Preview", [this] { cmdPreview_Click(); });
    cmdStop.create(*this, L"S&top", [] { StopSound(); });
    constexpr IconId kIcons[] = {IconId::send, IconId::play, IconId::stop};
    int index = 0;
    for (Button* button : {&cmdSend, &cmdPreview, &cmdStop}) {
        const HICON icon = sharedIcon(kIcons[index], kIcon);
        auto& images = buttonImages_[index++];
        images.reset(ImageList_Create(kIcon, kIcon, ILC_COLOR32, 1, 0));
        ImageList_AddIcon(images.get(), icon);
        // Without the common controls of version 6 the buttons have their names alone.
        BUTTON_IMAGELIST look{images.get(), {12, 0, 0, 0}, BUTTON_IMAGELIST_ALIGN_LEFT};
        SendMessageW(button->hwnd(), BCM_SETIMAGELIST, 0, reinterpret_cast<LPARAM>(&look));
        button->setPreferredSize(kButtonSize);
    }
}

void frmWavs::addKeys()
{
    addKey(0, VK_RETURN, [this] { enterPressed(); });
    addKey(MOD_CONTROL, VK_RETURN, [this] { cmdSend_Click(); });
    addKey(0, VK_F2, [this] { cmdPreview_Click(); });
    addKey(0, VK_F3, [] { StopSound(); });
    addKey(0, VK_F5, [this] { Refresh(); });
    addKey(0, VK_ESCAPE, [this] { close(CloseReason::user); });
}

void frmWavs::onDestroy()
{
    onSoundProgress(nullptr);
    trap(kModule, [&] { writeSetting(kSection, L"Position", placeText(place())); });
}

void frmWavs::onSize(Size)
{
    fitColumns();
}

// The name takes what the size and a scroll bar leave.
void frmWavs::fitColumns()
{
    if (lstWav.hwnd())
        ListView_SetColumnWidth(lstWav.hwnd(), 0,
                                std::max(80, clientSize(lstWav.hwnd()).width - kSizeColumn));
}

const WavSource& frmWavs::source() const
{
    return sources_[std::max(0, imgcboList.selected())];
}

SoundKind frmWavs::kind() const
{
    return static_cast<SoundKind>(std::max(0, cboKind.selected()));
}

void frmWavs::ListWavDir()
{
    trap(kModule, [&] {
        const WavListOptions options{opt::WavList::PreserveCase.get(),
                                     opt::WavList::NoAOLWavs.get()};
        const SoundRow* const row = selectedRow();
        const std::wstring path = row ? row->path : std::wstring();
        const bool there = model_.fill(source(), kind(), options);
        showRows(path);
        showStatus(L"");
        // Shown over the list, not instead of it.
        if (!there)
            postCall([] { MsgBoxEx(kNoFolder, kMsgExclamation, L"Wav List"); });
    });
}

void frmWavs::Refresh()
{
    ListWavDir();
}

void frmWavs::txtFind_Change()
{
    trap(kModule, [&] {
        model_.find(txtFind.text());
        // What is typed chooses the first match, so that Enter acts on it.
        showRows(txtFind.text().empty() || model_.count() == 0 ? std::wstring() : model_[0].path);
    });
}

void frmWavs::showRows(const std::wstring& selectPath)
{
    lstWav.setRowCount(model_.count());
    lstWav.select(selectPath.empty() ? -1 : model_.indexOf(selectPath));
    lblCount.setText(L"Count: " + std::to_wstring(model_.count()));
    fitColumns();
    relayout();
}

std::wstring frmWavs::cell(int row, int column) const
{
    if (row < 0 || row >= model_.count())
        return {};
    return column == 0 ? model_[row].name : sizeText(model_[row].bytes, numbers_);
}

std::wstring frmWavs::selectedPath()
{
    const SoundRow* const row = selectedRow();
    return row ? row->path : std::wstring();
}

const SoundRow* frmWavs::selectedRow()
{
    const int row = lstWav.selected();
    return row >= 0 && row < model_.count() ? &model_[row] : nullptr;
}

void frmWavs::cmdSend_Click()
{
    trap(kModule, [&] {
        const SoundRow* const row = selectedRow();
        if (!row) {
            MsgBoxEx(kNothingSelected, kMsgExclamation, L"Wav List");
            return;
        }
        const std::wstring line = soundCommand(row->name, opt::WavList::UseUpperWavTrigger.get());
        AOL_FindChat();
        if (TextToChat(line, kSendNow) && isOpen())
            showStatus(L"Sent " + line);
    });
}

void frmWavs::cmdPreview_Click()
{
    trap(kModule, [&] {
        const SoundRow* const row = selectedRow();
        if (!row) {
            MsgBoxEx(kNothingSelected, kMsgExclamation, L"Wav List");
            return;
        }
        const std::wstring name = row->name;
        if (PlaySoundEx(row->path) && isOpen())
            showStatus(L"Previewing " + name);
    });
}

void frmWavs::lstWav_DblClick()
{
    const bool sends = equalNoCase(opt::WavList::DoubleClick.get(), L"Send") && AOL_FindChat();
    if (sends)
        cmdSend_Click();
    else
        cmdPreview_Click();
}

void frmWavs::enterPressed()
{
    for (Button* button : {&cmdSend, &cmdPreview, &cmdStop})
        if (button->focused()) {
            button->click();
            return;
        }
    lstWav_DblClick();
}

void frmWavs::onContextMenu(Control* over, Point at)
{
    const SoundRow* const row = selectedRow();
    if (over != &lstWav || !row)
        return;
    Menu mnuListBox;
    mnuListBox.item(L"&Send", [this] { cmdSend_Click(); });
    mnuListBox.item(L"&Preview", [this] { cmdPreview_Click(); });
    mnuListBox.separator();
    if (source().listFile)
        mnuListBox.item(L"&Remove from FavWavs", [this] { toFavourites(false); });
    else
        mnuListBox.item(L"&Add to FavWavs", [this] { toFavourites(true); });
    mnuListBox.popup(*this, at);
}

void frmWavs::toFavourites(bool add)
{
    trap(kModule, [&] {
        const SoundRow* const row = selectedRow();
        if (!row)
            return;
        const std::wstring name = row->name;
        if (add) {
            const bool added = AddFavWav(favWavsFile(), name, row->path);
            showStatus(name + (added ? L" added to FavWavs" : L" is in FavWavs already"));
        } else if (DelFavWav(favWavsFile(), row->path)) {
            ListWavDir();
            showStatus(name + L" removed from FavWavs");
        }
    });
}

void frmWavs::showPlayed(const std::wstring& name)
{
    showStatus(name + L" played");
}

void frmWavs::showProgress(const SoundProgress& progress)
{
    const bool visible = !progress.path.empty() && opt::WavList::ShowProgress.get();
    if (visible != pbarProgress.shown()) {
        pbarProgress.show(visible);
        relayout();
    }
    if (visible)
        pbarProgress.setValue(static_cast<int>(progress.played * 100));
    else if (lblStatus.text().starts_with(L"Previewing"))
        showStatus(L"");
}

void frmWavs::showStatus(const std::wstring& text)
{
    lblStatus.setText(text);
}

} // namespace velora
