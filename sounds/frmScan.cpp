#include "sounds/frmScan.h"

#include "base/files.h"
#include "base/text.h"
#include "base/trap.h"
#include "chat/modIcons_win.h"
#include "core/MsgBoxEx.h"
#include "core/modMain.h"
#include "core/modWindowPlace.h"
#include "sounds/frmWavs.h"
#include "sounds/modFavWavs.h"
#include "sounds/modWavLibrary.h"
#include "ui/FolderDialog.h"
#include "ui/Menu.h"

#include <algorithm>

namespace velora {
namespace {

constexpr char kModule[] = "frmScan";
constexpr wchar_t kSection[] = L"WavScan";
constexpr wchar_t kTitle[] = L"Scan Hard Drive for Sounds";
constexpr DWORD kSliceMs = 40; ///< of each tick; the user's keys come between two of them
constexpr int kProgress = 1000;

/// A name for a category of this folder that no other has yet.
std::wstring freeName(const std::wstring& folder)
{
    const std::wstring own = folder.substr(folder.find_last_of(L'\\') + 1);
    std::wstring name = own.substr(0, 90);
    for (int number = 2; name.empty() || !categoryNameFault(name, wavCategories()).empty();
         ++number)
        name = own.substr(0, 90) + L" " + std::to_wstring(number);
    return name;
}

void tellList(const std::wstring& select)
{
    if (frmWavs* const list = frmWavs::instance())
        list->categoriesChanged(select);
}

} // namespace

std::vector<std::wstring> hardDrives()
{
    std::vector<std::wstring> drives;
    const DWORD present = GetLogicalDrives();
    for (int i = 0; i < 26; ++i) {
        const std::wstring root = {static_cast<wchar_t>(L'A' + i), L':', L'\\'};
        if ((present >> i & 1) && GetDriveTypeW(root.c_str()) == DRIVE_FIXED)
            drives.push_back(root);
    }
    return drives;
}

void frmScan::openScan()
{
    trap(kModule, [] {
        frmScan* scan = find<frmScan>();
        if (!scan)
            scan = &open<frmScan>();
        scan->bringToFront();
    });
}

FormOptions frmScan::options() const
{
    FormOptions options;
    options.title = L"Velora - " + std::wstring(kTitle);
    options.kind = FormKind::sizable;
    options.client = {520, 360};
    options.icon = sharedIcon(IconId::wavs, 16);
    options.place = rememberedPlace(kSection, L"ScanPosition");
    return options;
}

void frmScan::onCreate()
{
    roots_ = hardDrives();
    std::vector<std::wstring> names = {L"All hard drives"};
    names.insert(names.end(), roots_.begin(), roots_.end());
    lblWhere.create(*this, L"&Look in:");
    cboWhere.create(*this, names, 0);
    cmdFolder.create(*this, L"&Directory...", [this] { chooseRoot(); });
    cmdScan.create(*this, L"&Search Hard Drive for Sound Files", [this] { cmdScan_Click(); });
    lblFound.create(*this, L"Directories with s&ounds:");
    lstFound.create(*this, L"Directories with sounds",
                    {{L"Directory", 380}, {L"Sounds", 80, true}});
    lstFound.getText = [this](int row, int column) -> std::wstring {
        if (!scan_ || row >= static_cast<int>(scan_->found().size()))
            return {};
        const clsSoundScan::Found& found = scan_->found()[static_cast<std::size_t>(row)];
        return column == 0 ? found.folder : std::to_wstring(found.files.size());
    };
    lstFound.onSelect = [this] { selectionChanged(); };
    pbarProgress.create(*this, kProgress);
    lblStatus.create(*this, L"Choose where to look and press Search.");
    cmdCategory.create(*this, L"Make &Categories", [this] { makeCategories(); });
    cmdGroup.create(*this, L"Add to a &Group...", [this] { groupMenu(); });
    cmdCancel.create(*this, L"Close", [this] { cmdCancel_Click(); });
    setDefaultButton(cmdScan);
    setCancelButton(cmdCancel);
    setLayout(rows({
                       columns({Box(lblWhere).align(Align::middle), grow(cboWhere), cmdFolder}),
                       cmdScan,
                       rows({lblFound, grow(lstFound)}, kNear).grow(),
                       pbarProgress,
                       lblStatus,
                       buttonRow({cmdCategory, cmdGroup, cmdCancel}),
                   })
                  .margins());
    selectionChanged();
}

void frmScan::onDestroy()
{
    tmrScan.stop();
    rememberPlace(kSection, place(), L"ScanPosition");
}

void frmScan::chooseRoot()
{
    const std::wstring folder = chooseFolder(hwnd(), L"The directory to search:", {});
    if (!folder.empty() && isOpen())
        addRoot(folder);
}

void frmScan::addRoot(const std::wstring& folder)
{
    roots_.push_back(folder);
    cboWhere.add(folder);
    cboWhere.select(cboWhere.count() - 1);
}

void frmScan::cmdScan_Click()
{
    trap(kModule, [&] {
        const int chosen = cboWhere.selected();
        scan_ = std::make_unique<clsSoundScan>(
            chosen > 0 ? std::vector{roots_[static_cast<std::size_t>(chosen - 1)]} : hardDrives());
        lstFound.setRowCount(0);
        lstFound.select(-1);
        cmdScan.enable(false);
        cmdCancel.setText(L"Cancel");
        cmdCancel.focus();
        selectionChanged();
        tmrScan.start(10, [this] { tick(); });
    });
}

void frmScan::tick()
{
    const DWORD start = GetTickCount();
    bool more = true;
    while (more && GetTickCount() - start < kSliceMs)
        more = scan_->step();
    pbarProgress.setValue(static_cast<int>(scan_->progress() * kProgress));
    lstFound.setRowCount(static_cast<int>(scan_->found().size()));
    const std::wstring sofar = std::to_wstring(scan_->files()) + L" sounds in "
                               + std::to_wstring(scan_->found().size()) + L" directories";
    if (more)
        lblStatus.setText(sofar + L", searching "
                          + replaceAll(scan_->current(), L"&", L"&&").substr(0, 60));
    else
        finish(sofar + L".");
}

void frmScan::finish(const std::wstring& status)
{
    tmrScan.stop();
    lblStatus.setText(status);
    cmdScan.enable(true);
    cmdCancel.setText(L"Close");
    selectionChanged();
    lstFound.focus();
    if (lstFound.rowCount() > 0)
        lstFound.select(0);
}

void frmScan::cmdCancel_Click()
{
    if (tmrScan.active())
        finish(L"Stopped: " + std::to_wstring(scan_->files()) + L" sounds found so far.");
    else
        close(CloseReason::user);
}

void frmScan::selectionChanged()
{
    const bool some = !tmrScan.active() && lstFound.selectedCount() > 0;
    cmdCategory.enable(some);
    cmdGroup.enable(some);
}

void frmScan::makeCategories()
{
    trap(kModule, [&] {
        std::wstring last;
        std::size_t made = 0;
        for (const int row : lstFound.selection()) {
            const std::wstring folder = scan_->found()[static_cast<std::size_t>(row)].folder;
            // A drive is "C:\" again.
            const std::wstring path = folder.size() == 2 ? folder + L"\\" : folder;
            const auto& present = wavCategories();
            if (std::any_of(present.begin(), present.end(), [&](const WavCategory& category) {
                    return equalNoCase(category.folder, path);
                }))
                continue;
            last = freeName(folder);
            saveCategory({last, path, {}});
            loadWavCategories();
            ++made;
        }
        if (made)
            tellList(last);
        lblStatus.setText(made ? std::to_wstring(made) + L" categories made."
                               : std::wstring(L"There are categories of these directories "
                                              L"already."));
    });
}

void frmScan::groupMenu()
{
    Menu menu;
    menu.item(L"&New Group...", [this] { newGroup(); });
    menu.separator();
    for (const WavCategory& category : wavCategories())
        if (category.isGroup())
            menu.item(replaceAll(category.name, L"&", L"&&"),
                      [this, group = category.group] { addToGroup(group); });
    const Rect place = cmdGroup.screenPlace();
    menu.popup(*this, {place.left, place.bottom});
}

void frmScan::newGroup()
{
    trap(kModule, [&] {
        const std::wstring name =
            trim(InputBoxEx(L"Enter a name for this new Category and click ~BOK~B.", kTitle, {},
                            {.masked = false, .maxLength = 100}));
        if (name.empty() || !isOpen())
            return;
        if (const std::wstring fault = categoryNameFault(name, wavCategories()); !fault.empty()) {
            MsgBoxEx(fault, kMsgExclamation, kTitle);
            return;
        }
        const WavCategory made{name, {}, freeGroupName(name, wavCategories())};
        saveCategory(made);
        loadWavCategories();
        addToGroup(made.group);
    });
}

void frmScan::addToGroup(const std::wstring& group)
{
    trap(kModule, [&] {
        std::vector<std::wstring> paths;
        for (const int row : lstFound.selection()) {
            const clsSoundScan::Found& found = scan_->found()[static_cast<std::size_t>(row)];
            for (const std::wstring& file : found.files)
                paths.push_back(joinPath(found.folder, file));
        }
        const std::wstring list = groupFile(AppPath(), group);
        makeFolder(list.substr(0, list.find_last_of(L'\\')));
        const std::size_t added = addListEntries(list, paths);
        tellList({});
        lblStatus.setText(std::to_wstring(added) + L" sounds added to "
                          + replaceAll(group, L"&", L"&&") + L".");
    });
}

} // namespace velora
