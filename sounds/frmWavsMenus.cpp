// The wav list's menus. They are built when they are opened.
#include "base/text.h"
#include "base/trap.h"
#include "core/MsgBoxEx.h"
#include "settings/Options.h"
#include "sounds/frmScan.h"
#include "sounds/frmWavCheck.h"
#include "sounds/frmWavs.h"
#include "sounds/modPlayback.h"
#include "sounds/modSoundLine.h"
#include "sounds/modWavLibrary.h"
#include "ui/Menu.h"

namespace velora {
namespace {

constexpr char kModule[] = "frmWavs";
constexpr std::size_t kMostInMenu = 40;

/// An item that turns an option on and off.
void addSwitch(Menu& menu, std::wstring_view text, const Option<bool>& option)
{
    menu.item(text, [option] { option.set(!option.get()); }, {.checked = option.get()});
}

std::wstring menuText(const std::wstring& name)
{
    return replaceAll(name, L"&", L"&&");
}

} // namespace

void frmWavs::popUp(ImageButton& button, void (frmWavs::*fill)(Menu&))
{
    Menu menu;
    (this->*fill)(menu);
    const Rect place = button.screenPlace();
    menu.popup(*this, {place.left, place.bottom});
}

void frmWavs::onContextMenu(Control* over, Point at)
{
    if (over != &lstWav)
        return;
    Menu mnuListBox;
    soundMenu(mnuListBox);
    mnuListBox.popup(*this, at);
}

void frmWavs::soundMenu(Menu& menu)
{
    const auto sound = chosen();
    const MenuItem one{.enabled = sound.has_value()};
    menu.item(
        L"&Send\tCtrl+Enter", [this] { cmdSend_Click(); }, one);
    menu.item(
        L"Send Plai&n\tCtrl+Shift+Enter", [this] { cmdPlain_Click(); }, one);
    menu.item(
        L"&Preview\tF2", [this] { cmdPreview_Click(); }, one);
    menu.item(L"S&top\tF3", [] { StopSound(); });
    menu.separator();
    menu.item(
        L"&Add to FavWavs\tCtrl+D", [this] { AddFavWav(); }, one);
    const bool inList = sound && sources_[sound->source].listFile;
    menu.item(inList ? L"&Remove from " + menuText(sources_[sound->source].name)
                     : std::wstring(L"&Remove from FavWavs"),
              [this] { DelFavWav(); }, {.enabled = inList});
    Menu& copies = menu.submenu(L"&Copy to Category", sound.has_value());
    std::size_t shown = 0;
    for (const WavSource& target : sources_)
        if (target.kind != WavSource::Kind::aol && ++shown <= kMostInMenu)
            copies.item(menuText(target.name), [this, target] { copyTo(target); });
    menu.separator();
    menu.item(
        L"Attach to a New &Mail\tCtrl+M", [this] { attachToMail(); }, one);
    if (wavDescriptions().edit)
        menu.item(
            L"&Edit Description...\tCtrl+E", [this] { editDescription(); }, one);
    menu.item(
        L"Edit Ta&g...\tCtrl+T", [this] { editTag(); }, one);
    menu.separator();
    menu.item(
        L"&Delete File...", [this] { deleteFile(); }, one);
}

void frmWavs::categoryMenu(Menu& menu)
{
    menu.item(L"&New Category...\tCtrl+N", [this] { newCategory(); });
    menu.item(L"&Edit Category...", [this] { cmdEditCat_Click(); });
    menu.item(L"&Delete Category...", [this] { cmdDelCat_Click(); });
    menu.separator();
    menu.item(L"&Add a Directory's Files...", [this] { addFolderToGroup(); },
              {.enabled = source().listFile});
    menu.item(L"&Remove Entries without a File...", [this] { removeDead(); },
              {.enabled = source().listFile});
    menu.separator();
    menu.item(L"&Scan Hard Drive for Sounds...", [] { frmScan::openScan(); });
}

void frmWavs::listMenu(Menu& menu)
{
    menu.item(L"&Refresh\tF5", [this] { Refresh(); });
    menu.item(L"&Write the List into a Mail\tCtrl+P", [this] { printList(); });
    menu.item(L"&Save the List as Text...\tCtrl+S", [this] { saveList(); });
    menu.separator();
    menu.item(L"&Check a Sound...\tCtrl+K", [this] { checkSound(); });
    if (wavDescriptions().open)
        menu.item(L"&Descriptions...", [] { wavDescriptions().open(); });
}

void frmWavs::viewMenu(Menu& menu)
{
    const Shown shown = descriptionsShown();
    const bool known = static_cast<bool>(wavDescriptions().find);
    const auto show = [&](const wchar_t* text, Shown which, const wchar_t* as) {
        menu.item(text,
                  [as] {
                      opt::Descriptions::Show.set(as != nullptr);
                      if (as)
                          opt::Descriptions::ShowAs.set(as);
                  },
                  {.enabled = known, .checked = shown == which, .radio = true});
    };
    show(L"&No Descriptions", Shown::nothing, nullptr);
    show(L"Descriptions in a &Tooltip", Shown::tip, L"ToolTip");
    show(L"Descriptions in &Columns", Shown::columns, L"Columns");
    show(L"Description in a &Line below", Shown::line, L"Line");
    Menu& fields = menu.submenu(L"&Fields", known);
    using namespace opt::Descriptions;
    const Option<bool> options[] = {IncludeTitle,    IncludeArtist, IncludeAlbum,      IncludeYear,
                                    IncludeComments, IncludeGenre,  IncludeCompression};
    for (std::size_t i = 0; i < std::size(options); ++i)
        addSwitch(fields, L"&" + descriptionFields()[i], options[i]);
    addSwitch(menu, L"Tooltip as a &Balloon", UseBalloon);
    menu.separator();
    addSwitch(menu, L"Names in &Upper and Lower Case", opt::WavList::PreserveCase);
    addSwitch(menu, L"&Hide AOL's Own Sounds", opt::WavList::NoAOLWavs);
    menu.separator();
    addSwitch(menu, L"Show the Pro&gress of a Sound", opt::WavList::ShowProgress);
    addSwitch(menu, L"Progress in a Toolti&p", opt::WavList::ShowProgressTooltip);
}

void frmWavs::optionsMenu(Menu& menu)
{
    const bool sends = equalNoCase(opt::WavList::DoubleClick.get(), L"Send");
    Menu& doubleClick = menu.submenu(L"&Double Click");
    doubleClick.item(L"&Previews the Sound", [] { opt::WavList::DoubleClick.set(L"Preview"); },
                     {.checked = !sends, .radio = true});
    doubleClick.item(L"&Sends the Sound", [] { opt::WavList::DoubleClick.set(L"Send"); },
                     {.checked = sends, .radio = true});
    addSwitch(menu, L"Send {&S in Upper Case", opt::WavList::UseUpperWavTrigger);
    menu.separator();
    addSwitch(menu, L"&Fade on Sending", opt::Fader::On);
    addSwitch(menu, L"Fade Only &Sounds", opt::Fader::FadeWavOnly);
    menu.separator();
    addSwitch(menu, L"Send the D&escription to the Room", opt::Descriptions::SendToRoom);
    addSwitch(menu, L"Without the Word \"Des&crip:\"", opt::Descriptions::TrimDescrip);
    const auto field = [&](const wchar_t* text, const Option<std::wstring>& option, bool none) {
        Menu& fields = menu.submenu(text);
        if (none)
            fields.item(L"&None", [option] { option.set(L""); },
                        {.checked = option.get().empty(), .radio = true});
        for (const std::wstring& name : descriptionFields())
            fields.item(L"&" + name, [option, name] { option.set(name); },
                        {.checked = equalNoCase(option.get(), name), .radio = true});
    };
    field(L"Description: F&irst Field", opt::Descriptions::DescripField1, false);
    field(L"Description: Secon&d Field", opt::Descriptions::DescripField2, true);
    menu.separator();
    addSwitch(menu, L"&Hear the Sounds of the Room", opt::General::WavDetect);
    Menu& check = menu.submenu(L"&Wav Check");
    addSwitch(check, L"&Check the Sounds of the Room", opt::WavScan::Active);
    addSwitch(check, L"&Notify of Unknown Sounds", opt::WavScan::Notify);
    addSwitch(check, L"Show &Properties", opt::WavScan::ShowProperties);
    addSwitch(check, L"No &Messages", opt::WavScan::NoPrompt);
}

void frmWavs::checkSound()
{
    trap(kModule, [&] {
        const auto sound = chosen();
        const std::wstring name = trim(
            InputBoxEx(L"The name of the sound to look for in your wav categories:", L"WavCheck",
                       sound ? sound->name : std::wstring(), {.masked = false, .maxLength = 200}));
        if (!name.empty())
            frmWavCheck::check(name, true);
    });
}

} // namespace velora
