#include "sounds/frmDescriptions.h"

#include "base/text.h"
#include "base/trap.h"
#include "chat/modIcons_win.h"
#include "core/MsgBoxEx.h"
#include "core/modWindowPlace.h"
#include "settings/Options.h"
#include "sounds/WavDescriptions.h"
#include "sounds/modDescriptions.h"
#include "ui/MessageLoop.h"

namespace velora {
namespace {

constexpr char kModule[] = "frmDescriptions";
constexpr wchar_t kSection[] = L"Descriptions";
constexpr wchar_t kTitle[] = L"Wav Descriptions";
constexpr wchar_t kNothingSelected[] =
    L"~B~CRNo description selected!~B~CN~N ~NPlease select a description in the list before "
    L"attempting to use this feature.";
constexpr Size kListSize{660, 240};
constexpr int kWidths[clsDescriptionsModel::kColumns] = {110, 120, 70, 90, 44, 200, 80, 110, 110};

} // namespace

void frmDescriptions::openWindow()
{
    trap(kModule, [] {
        static bool opening = false;
        if (frmDescriptions* const present = find<frmDescriptions>())
            return present->bringToFront();
        if (std::exchange(opening, true))
            return;
        const bool ready = wavDatabase().isOpen() || wavDatabase().Init();
        opening = false;
        if (!ready)
            return;
        open<frmDescriptions>().show();
        // Over the window, not instead of it.
        postCall([] {
            if (frmDescriptions* const shown = find<frmDescriptions>())
                shown->offerImport();
        });
    });
}

FormOptions frmDescriptions::options() const
{
    FormOptions options;
    options.title = L"Velora - Wav Descriptions";
    options.kind = FormKind::sizable;
    options.place = rememberedPlace(kSection);
    options.icon = sharedIcon(IconId::wavs, 16);
    return options;
}

void frmDescriptions::onCreate()
{
    createMenu();
    createTop();
    createList();
    createButtons();
    lblCount.create(*this, L"Count: 0");
    const int labels =
        std::max(Box(lblCategory).preferredSize().width, Box(lblFind).preferredSize().width);
    const auto label = [labels](Label& text) {
        return Box(text).atLeast({labels, 0}).align(Align::middle);
    };
    setLayout(rows({
                       columns({label(lblCategory), grow(cboCategory)}, kNear),
                       columns({label(lblFind), grow(txtFind), blank(kNear),
                                Box(chkAll).align(Align::middle)},
                               kNear),
                       grow(lstDescriptions),
                       columns({Box(lblCount).align(Align::middle).grow(),
                                buttonRow({cmdNew, cmdEdit, cmdMove, cmdDelete, cmdClose})}),
                   })
                  .margins());
    setCancelButton(cmdClose);
    setFirstFocus(lstDescriptions);
    addKey(MOD_CONTROL, 'N', [this] { NewRecord(); });
    addKey(MOD_CONTROL, 'P', [this] { ListToEMail(); });
    addKey(0, VK_F5, [this] { refresh(); });
    addKey(MOD_CONTROL, 'F', [this] {
        txtFind.focus();
        txtFind.select();
    });
    loadCategories(readSetting(kSection, L"Category", L""));
    loadRecords();
}

void frmDescriptions::createMenu()
{
    Menu& categories = mnuBar.submenu(L"&Category");
    categories.item(L"&New...", [this] { NewCategory(); });
    categories.item(L"&Rename...", [this] { EditCategory(); });
    categories.item(L"&Delete...", [this] { DeleteCategory(); });
    categories.separator();
    categories.item(L"&Fill from Folder...", [this] { GetWavs(); });
    categories.item(L"&Print to E-Mail\tCtrl+P", [this] { ListToEMail(); });
    categories.separator();
    categories.item(L"&Close\tEsc", [this] { close(CloseReason::user); });
    addRecordItems(mnuBar.submenu(L"&Description"));
    Menu& file = mnuBar.submenu(L"Data&base");
    file.item(L"&Import Older Descriptions...", [this] { offerImport(); });
    file.separator();
    file.item(L"&Compact", [this] { CompactDatabase(); });
    file.item(L"&Repair", [this] { RepairDatabase(); });
    setMenuBar(mnuBar);
}

void frmDescriptions::addRecordItems(Menu& menu)
{
    menu.item(L"&New...\tCtrl+N", [this] { NewRecord(); });
    menu.item(L"&Edit...\tEnter", [this] { EditRecord(); });
    menu.item(L"&Move...", [this] { MoveRecord(); });
    menu.item(L"&Delete\tDel", [this] { DeleteRecord(); });
}

void frmDescriptions::createTop()
{
    lblCategory.create(*this, L"Ca&tegory:");
    cboCategory.create(*this, {});
    cboCategory.onChange = [this] {
        if (everywhere())
            chkAll.setChecked(false);
        loadRecords();
    };
    lblFind.create(*this, L"&Find:");
    txtFind.create(*this);
    txtFind.setCue(L"Type a part of a name or description");
    txtFind.onChange = [this] { txtFind_Change(); };
    chkAll.create(*this, L"In &all categories");
    chkAll.onChange = [this] { loadRecords(); };
    tips_.add(txtFind, L"Shows only the descriptions in which a field holds this (Ctrl+F)");
    tips_.add(chkAll, L"Lists and searches the descriptions of every category");
}

void frmDescriptions::createList()
{
    std::vector<ListView::Column> columns;
    for (int i = 0; i < clsDescriptionsModel::kColumns; ++i)
        columns.push_back({clsDescriptionsModel::title(i), kWidths[i]});
    lstDescriptions.create(*this, L"Descriptions", columns);
    lstDescriptions.setPreferredSize(kListSize);
    lstDescriptions.getText = [this](int row, int column) { return model_.cell(row, column); };
    lstDescriptions.findRow = [this](std::wstring_view typed, int from) {
        return model_.beginningWith(typed, from);
    };
    lstDescriptions.onSelect = [this] { selectionChanged(); };
    lstDescriptions.onActivate = [this](int) { EditRecord(); };
    lstDescriptions.onColumnClick = [this](int column) { sort(column); };
    lstDescriptions.onKey = [this](UINT key) {
        if (key == VK_DELETE)
            DeleteRecord();
    };
    lstDescriptions.setSortMark(0, 1);
}

void frmDescriptions::createButtons()
{
    cmdNew.create(*this, L"&New...", [this] { NewRecord(); });
    cmdEdit.create(*this, L"&Edit...", [this] { EditRecord(); });
    cmdMove.create(*this, L"&Move...", [this] { MoveRecord(); });
    cmdDelete.create(*this, L"De&lete", [this] { DeleteRecord(); });
    cmdClose.create(*this, L"Close", [this] { close(CloseReason::user); });
    tips_.add(cmdNew, L"Describes a sound in this category (Ctrl+N)");
    tips_.add(cmdEdit, L"Changes the selected description (Enter)");
    tips_.add(cmdMove, L"Moves the selected descriptions to another category");
    tips_.add(cmdDelete, L"Deletes the selected descriptions, not the sound files (Del)");
}

void frmDescriptions::onDestroy()
{
    rememberPlace(kSection, place());
    trap(kModule, [&] { writeSetting(kSection, L"Category", category()); });
}

void frmDescriptions::onContextMenu(Control* over, Point at)
{
    if (over != &lstDescriptions)
        return;
    Menu menu;
    addRecordItems(menu);
    menu.popup(*this, at);
}

// --- What is shown ----------------------------------------------------------------------------

void frmDescriptions::refresh()
{
    const std::vector<DescriptionRow> kept = selectedRows();
    loadCategories(category());
    if (kept.empty())
        loadRecords();
    else
        loadRecords(kept.front().table, kept.front().record.fileName);
}

void frmDescriptions::loadCategories(const std::wstring& select)
{
    categories_ = wavDatabase().GetTables();
    cboCategory.setItems(categories_);
    int selected = categories_.empty() ? -1 : 0;
    for (std::size_t i = 0; i < categories_.size(); ++i)
        if (equalNoCase(categories_[i], select))
            selected = static_cast<int>(i);
    cboCategory.select(selected);
}

void frmDescriptions::loadRecords(const std::wstring& table, const std::wstring& fileName)
{
    trap(kModule, [&] {
        clsDatabase& db = wavDatabase();
        std::vector<DescriptionRow> all;
        db.SetTerm({});
        for (const std::wstring& one :
             everywhere() ? categories_ : std::vector<std::wstring>{category()}) {
            if (one.empty())
                continue;
            db.SetTable(one);
            for (Description& record : db.GetRecords())
                all.push_back({one, std::move(record)});
        }
        model_.setRows(std::move(all));
        showRows(table, fileName);
    });
}

void frmDescriptions::showRows(const std::wstring& table, const std::wstring& fileName)
{
    lstDescriptions.setRowCount(model_.count());
    lstDescriptions.select(fileName.empty() ? -1 : model_.indexOf(table, fileName));
    lstDescriptions.refresh();
    lblCount.setText(L"Count: " + std::to_wstring(model_.count()));
    selectionChanged();
}

void frmDescriptions::txtFind_Change()
{
    trap(kModule, [&] {
        wavDatabase().SetTerm(txtFind.text());
        model_.find(txtFind.text());
        showRows({}, {});
    });
}

void frmDescriptions::sort(int column)
{
    const std::vector<DescriptionRow> kept = selectedRows();
    model_.sortBy(column);
    lstDescriptions.setSortMark(column, model_.descending() ? -1 : 1);
    if (kept.empty())
        showRows({}, {});
    else
        showRows(kept.front().table, kept.front().record.fileName);
}

void frmDescriptions::selectionChanged()
{
    const int selected = lstDescriptions.selectedCount();
    cmdNew.enable(!categories_.empty());
    cmdEdit.enable(selected == 1);
    cmdMove.enable(selected > 0);
    cmdDelete.enable(selected > 0);
}

std::wstring frmDescriptions::category() const
{
    const int selected = cboCategory.selected();
    return selected < 0 || selected >= static_cast<int>(categories_.size())
               ? std::wstring()
               : categories_[static_cast<std::size_t>(selected)];
}

std::vector<DescriptionRow> frmDescriptions::selectedRows() const
{
    std::vector<DescriptionRow> selected;
    for (const int row : lstDescriptions.selection())
        if (row < model_.count())
            selected.push_back(model_[row]);
    return selected;
}

std::vector<DescriptionRow> frmDescriptions::rowsOrTold()
{
    std::vector<DescriptionRow> selected = selectedRows();
    if (selected.empty())
        MsgBoxEx(kNothingSelected, kMsgExclamation, kTitle);
    return selected;
}

void frmDescriptions::changed(const std::wstring& table, const std::wstring& fileName)
{
    if (isOpen())
        loadRecords(table, fileName);
    wavDescriptionsChanged();
}

} // namespace velora
