#pragma once
// The fade control panel: the fade in use, its colours and styles, what changes after a use, and
// the saved schemes, with a preview on white and on black. It shows the options as they are:
// whatever changes them, here or elsewhere, is seen at once.
#include "chat/modFadeRuns.h"
#include "chat/modSchemeFiles.h"
#include "settings/Options.h"
#include "ui/Controls.h"
#include "ui/Form.h"
#include "ui/ToolTip.h"

#include <array>
#include <optional>
#include <utility>

namespace velora {

class frmFade final : public Form {
public:
    explicit frmFade(std::wstring programFolder);

    /// Shows the panel, made at need, or closes it. Neither takes AOL's focus for good.
    static void showPanel(const std::wstring& programFolder);
    static void hidePanel();
    /// The panel comes with a chat room and goes with it, where the options ask for that. It leaves
    /// the focus where it is.
    static void roomEntered(const std::wstring& programFolder);
    static void roomLeft();

protected:
    FormOptions options() const override;
    void onCreate() override;
    bool onClose(CloseReason reason) override;

private:
    using Switch = std::pair<CheckBox frmFade::*, Option<bool>>;
    static const std::array<Switch, 15>& switches();

    Box colourGroup();
    Box styleGroup();
    Box afterUseGroup();
    Box schemeGroup();
    Box previewGroup();
    void createSwitch(CheckBox& box, std::wstring_view text, std::wstring_view tip);

    void refresh();
    void refreshPreview();
    void chooseColour(std::size_t index);
    void chooseCount();
    void drawWell(HDC dc, const Rect& where, std::size_t index) const;
    void drawPreview(HDC dc, const Rect& where, COLORREF background) const;

    void fillSchemes(const std::wstring& selected);
    std::wstring selectedScheme() const;
    void showSchemeTag();
    void showTagTip(const std::wstring& tag);
    void loadScheme();
    void saveScheme();
    void deleteScheme();

    clsSchemes schemes_;
    std::vector<SchemeEntry> entries_;
    std::vector<FadeRun> runs_;
    OptionSubscription changes_;
    bool refreshing_ = false;
    bool withRoom_ = false; ///< it came with the room

    CheckBox chkOn, chkWavOnly, chkSolid, chkWavy, chkBold, chkItalic, chkULine;
    CheckBox chkNewFade, chkRandom, chkRandomColours, chkRandomNumber, chkRandomBold,
        chkRandomItalic, chkRandomULine, chkRandomWavy;
    GroupBox grpColours, grpStyle, grpAfterUse, grpSchemes, grpPreview;
    Label lblCount, lblSchemes, lblTag, lblSample, lblOnWhite, lblOnBlack, lblHint;
    ComboBox cboCount;
    std::array<ImageButton, kMostColours> cmdColour;
    Button cmdDraw, cmdLoad, cmdSave, cmdDelete, cmdRefresh, cmdClose;
    ListBox lstSchemes;
    Edit txtSample;
    ToolTip tips_;
    std::optional<ToolTip> tagTip_; // over the list of schemes
};

} // namespace velora
