#pragma once
// The fields of one description.
#include "sounds/modDescription.h"
#include "ui/Controls.h"
#include "ui/Form.h"
#include "ui/ToolTip.h"

#include <optional>

namespace velora {

class frmDescriptionsEdit final : public Form {
public:
    struct Subject {
        std::wstring category;
        Description record;
        std::wstring path = {}; ///< of the sound file; empty when it is not known
        bool newName = false;   ///< the file name is still to be given
    };
    explicit frmDescriptionsEdit(Subject subject)
        : Form("frmDescriptionsEdit"), subject_(std::move(subject))
    {
    }
    /// The record as the user wants it; absent when cancelled. Pumps messages.
    std::optional<Description> edit();

protected:
    FormOptions options() const override;
    void onCreate() override;
    void onDestroy() override;

private:
    void cmdOK_Click();
    void cmdTag_Click();
    void show(const Description& record);
    Description entered() const;
    std::array<Control*, 8> fields();
    std::array<const Control*, 8> fields() const;

    Subject subject_;
    std::optional<Description> result_;
    Label lblCategory, lblField_[8];
    Edit txtFileName, txtTitle, txtArtist, txtAlbum, txtYear, txtComments, txtCompression;
    ComboBox cboGenre;
    Button cmdTag, cmdOK, cmdCancel;
    ToolTip tips_;
};

} // namespace velora
