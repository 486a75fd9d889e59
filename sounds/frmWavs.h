#pragma once
// The wav list: the user's sounds, to be heard and to be sent to the room.
#include "base/handles.h"
#include "sounds/clsWavListModel.h"
#include "sounds/modSoundCommand.h"
#include "ui/Controls.h"
#include "ui/Form.h"
#include "ui/ToolTip.h"

#include <commctrl.h>

namespace velora {

struct SoundProgress;

struct ImageListTraits {
    using Type = HIMAGELIST;
    static Type invalid() noexcept { return nullptr; }
    static void close(Type list) noexcept { ImageList_Destroy(list); }
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

protected:
    FormOptions options() const override;
    void onCreate() override;
    void onDestroy() override;
    void onSize(Size size) override;
    void onContextMenu(Control* over, Point at) override;

private:
    void createList();
    void createButtons();
    void fitColumns();
    void addKeys();
    const WavSource& source() const;
    SoundKind kind() const;
    void ListWavDir();
    void Refresh();
    void txtFind_Change();
    void showRows(const std::wstring& selectPath);
    std::wstring cell(int row, int column) const;
    const SoundRow* selectedRow();
    void cmdSend_Click();
    void cmdPreview_Click();
    void lstWav_DblClick();
    void enterPressed();
    void toFavourites(bool add);
    void showProgress(const SoundProgress& progress);
    void showStatus(const std::wstring& text);

    Label lblList, lblFind, lblStatus, lblCount;
    ComboBox imgcboList, cboKind;
    Edit txtFind;
    ListView lstWav;
    ProgressBar pbarProgress;
    Button cmdSend, cmdPreview, cmdStop;
    ToolTip tips_;
    UniqueHandle<ImageListTraits> images_, buttonImages_[3];

    std::vector<WavSource> sources_;
    clsWavListModel model_;
    NumberStyle numbers_ = regionalNumberStyle();
};

} // namespace velora
