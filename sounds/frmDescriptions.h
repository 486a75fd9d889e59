#pragma once
// The descriptions of sounds by category: to browse and search, to edit, move, delete and print.
#include "sounds/clsDescriptionsModel.h"
#include "ui/Controls.h"
#include "ui/Form.h"
#include "ui/Menu.h"
#include "ui/ToolTip.h"

namespace velora {

class clsDatabase;

class frmDescriptions final : public Form {
public:
    frmDescriptions() : Form("frmDescriptions") {}
    /// Opens the window, or brings the open one to the front. A database that is closed is opened
    /// first; the window stays away when that cannot be. Pumps messages then.
    static void openWindow();
    /// Reads the categories and records anew.
    void refresh();

protected:
    FormOptions options() const override;
    void onCreate() override;
    void onDestroy() override;
    void onContextMenu(Control* over, Point at) override;

private:
    // The window.
    void createMenu();
    void createTop();
    void createList();
    void createButtons();
    void addRecordItems(Menu& menu);
    void loadCategories(const std::wstring& select);
    void loadRecords(const std::wstring& table = {}, const std::wstring& fileName = {});
    void showRows(const std::wstring& table, const std::wstring& fileName);
    void txtFind_Change();
    void sort(int column);
    void selectionChanged();
    std::wstring category() const;
    bool everywhere() const { return chkAll.checked(); }
    std::vector<DescriptionRow> selectedRows() const;
    /// The selected rows; none, and the user is told, when nothing is selected.
    std::vector<DescriptionRow> rowsOrTold();
    /// Everything shows what has changed, the wav list too.
    void changed(const std::wstring& table = {}, const std::wstring& fileName = {});

    // Records.
    void NewRecord();
    void EditRecord();
    void MoveRecord();
    void TransferRecord(const std::vector<DescriptionRow>& rows, const std::wstring& target);
    void DeleteRecord();

    // Categories and the file.
    bool categoryOrTold();
    void NewCategory();
    void EditCategory();
    void DeleteCategory();
    void GetWavs();
    void ListToEMail();
    void offerImport();
    void importFiles(const std::vector<std::wstring>& paths);
    void CompactDatabase();
    void RepairDatabase();

    Label lblCategory, lblFind, lblCount;
    ComboBox cboCategory;
    Edit txtFind;
    CheckBox chkAll;
    ListView lstDescriptions;
    Button cmdNew, cmdEdit, cmdMove, cmdDelete, cmdClose;
    Menu mnuBar;
    ToolTip tips_;

    std::vector<std::wstring> categories_;
    clsDescriptionsModel model_;
};

/// Asks for a description and stores it; true when it was saved. `path` is the sound file's.
/// Pumps messages.
bool editWavDescription(const std::wstring& path, const std::wstring& category);
/// Makes a category; false when it cannot be made, of which the user has been told.
bool makeDescriptionCategory(const std::wstring& name);

} // namespace velora
