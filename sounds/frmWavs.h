#pragma once
// The wav list: the user's sounds, to be heard and to be sent to the room. In parts:
//   frmWavs.cpp              the window, its controls and keys
//   frmWavsLists.cpp         sources, listing, finding, what the rows show
//   frmWavsSend.cpp          sending and hearing
//   frmWavsCategories.cpp    categories, favourites, copying, dropped files
//   frmWavsFiles.cpp         mail, text files, deleting, lost entries
//   frmWavsMenus.cpp         its menus
#include "base/handles.h"
#include "base/random.h"
#include "settings/Options.h"
#include "sounds/WavDescriptions.h"
#include "sounds/clsFolderWatch.h"
#include "sounds/clsWavListModel.h"
#include "sounds/modSoundCommand.h"
#include "ui/Controls.h"
#include "ui/Form.h"
#include "ui/ToolTip.h"

#include <commctrl.h>

namespace velora {

struct SoundProgress;

// Messages that several parts of the list show.
inline constexpr wchar_t kNoWavSelected[] =
    L"~B~CRNo wav selected!~B~CN~N ~NPlease choose a wav in the wav list box before attempting to "
    L"use thie feature!";
inline constexpr wchar_t kNoWavDirectory[] =
    L"~B~CRDirectory not found!~B~CN~N ~NThe Directory you chose does not exist or you have typed "
    L"an incorrect path.";

struct ImageListTraits {
    using Type = HIMAGELIST;
    static Type invalid() noexcept { return nullptr; }
    static void close(Type list) noexcept { ImageList_Destroy(list); }
};

/// The list tells where the mouse rests.
class SoundListView final : public ListView {
public:
    /// -1: it left the row that it rested on.
    std::function<void(int row)> onHover;

protected:
    std::optional<LRESULT> onMessage(UINT message, WPARAM wParam, LPARAM lParam) override;

private:
    int hovered_ = -1;
    bool tracking_ = false;
};

/// The keys that move in the list work while a name is typed, too.
class FindEdit final : public Edit {
public:
    void create(Form& form);
    std::function<void(UINT key)> onStep;

protected:
    std::optional<LRESULT> onMessage(UINT message, WPARAM wParam, LPARAM lParam) override;
};

class frmWavs final : public Form {
public:
    frmWavs();
    ~frmWavs() override;

    /// The open list; null when there is none.
    static frmWavs* instance() { return find<frmWavs>(); }
    /// Opens the list, or brings the open one to the front.
    static void openList();

    /// The file of the chosen sound; empty when none is chosen.
    std::wstring selectedPath();
    /// A sound of the room plays.
    void showPlayed(const std::wstring& name);
    /// Categories have come or gone; `select` names the one to list (empty: the present one).
    void categoriesChanged(const std::wstring& select = {});
    void descriptionsChanged();

protected:
    FormOptions options() const override;
    void onCreate() override;
    void onDestroy() override;
    void onSize(Size size) override;
    void onContextMenu(Control* over, Point at) override;
    void onDropFiles(const std::vector<std::wstring>& paths) override;

private:
    enum class Shown { nothing, tip, columns, line };
    /// A column: the name, the size, the category of a find over all, or a description's field.
    struct Column {
        enum Kind { name, size, category, field } kind;
        std::wstring fieldName;
        bool operator==(const Column&) const = default;
    };
    struct Chosen {
        std::wstring name, path;
        std::size_t source; ///< index into sources_
        SoundKind kind;
    };

    void createHead();
    void createList();
    void createFoot();
    void createButtons();
    void createTips();
    void addKeys();
    void layOut();
    void fitColumns();
    bool rollUp();
    void follow(OptionId option);

    void fillSources(const std::wstring& select);
    const WavSource& source() const;
    const WavCategory* category(const WavSource& of) const;
    SoundKind kind() const;
    bool everywhere() const;
    clsWavListModel& model() { return everywhere_ ? library_ : list_; }
    const clsWavListModel& model() const { return everywhere_ ? library_ : list_; }
    WavListOptions listOptions() const;
    /// Lists the chosen source, from a folder, a group's file or the favourites.
    void ListWavs();
    bool ListWavDir();
    bool ListWavList();
    bool ListFavWavs();
    void Refresh();
    void watchSource();
    void txtFind_Change();
    void showRows(const std::wstring& selectPath);
    void setColumns();
    void columnClicked(int column);
    std::wstring cell(int row, int column) const;
    std::optional<COLORREF> rowColour(int row) const;
    std::optional<Chosen> chosen() const;
    /// The chosen sound; when there is none the user is told and the answer is absent.
    std::optional<Chosen> chosenOrTold(const wchar_t* message);

    static Shown descriptionsShown();
    static std::vector<std::wstring> shownFields();
    std::optional<WavDescription> description(clsWavListModel::Index row) const;
    std::optional<WavDescription> description(const std::wstring& path) const;
    void showDescription();
    void showTip(int row);
    void editDescription();
    void editTag();

    void cmdSend_Click();
    void cmdPlain_Click();
    void cmdPreview_Click();
    void lstWav_DblClick();
    void enterPressed();
    std::wstring soundLine(const std::wstring& name);
    void chkFancy_Click();
    void editGlintunes();
    void showProgress(const SoundProgress& progress);
    void showStatus(const std::wstring& text);

    void newCategory();
    void CreateWavDir(const std::wstring& folder);
    void CreateWavList();
    std::wstring askCategoryName(const std::wstring& prompt, const std::wstring& initial,
                                 const std::wstring& former);
    void cmdEditCat_Click();
    void cmdDelCat_Click();
    void AddFavWav();
    void DelFavWav();
    void copyTo(const WavSource& target);
    void addFolderToGroup();
    void addToGroup(const WavSource& target, const std::vector<std::wstring>& paths);
    bool isCategory() const { return source().kind == WavSource::Kind::category; }

    bool fileThere(const Chosen& sound);
    void removeDead();
    void attachToMail();
    void printList();
    void saveList();
    void deleteFile();
    std::vector<struct ListedSound> listedSounds() const;

    void soundMenu(Menu& menu);
    void categoryMenu(Menu& menu);
    void listMenu(Menu& menu);
    void viewMenu(Menu& menu);
    void optionsMenu(Menu& menu);
    void popUp(ImageButton& button, void (frmWavs::*fill)(Menu&));
    void checkSound();

    ImageButton mnuSound, mnuCategory, mnuList, mnuView, mnuOptions;
    Label lblList, lblFind, lblDescription, lblStatus, lblCount;
    ComboBox imgcboList, cboKind;
    FindEdit txtFind;
    CheckBox chkEverywhere, chkFancy, chkRandom;
    SoundListView lstWav;
    ProgressBar pbarProgress;
    Button cmdSend, cmdPlain, cmdPreview, cmdStop, cmdGlintunes;
    ToolTip tips_, rowTip_;
    std::optional<ToolTip> progressTip_; ///< made anew when its look is another
    OptionSubscription changes_;
    UniqueHandle<ImageListTraits> images_, buttonImages_[4];

    std::vector<WavSource> sources_;
    clsWavListModel list_, library_;
    bool everywhere_ = false; ///< the rows are those of library_
    std::wstring libraryStamp_;
    std::vector<Column> columns_;
    clsFolderWatch watch_;
    std::wstring watchedStamp_;
    std::vector<std::wstring> lstFancyRnd; ///< the styles that may come by chance
    SystemRandom random_;
    NumberStyle numbers_ = regionalNumberStyle();
};

} // namespace velora
