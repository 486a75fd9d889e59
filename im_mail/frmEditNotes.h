#pragma once
// Edits the buddy note of a screen name.
#include "ui/Controls.h"
#include "ui/Form.h"

#include <string>

namespace velora {

class frmEditNotes final : public Form {
public:
    explicit frmEditNotes(std::wstring screenName);
    /// Opens the editor of a name, or brings the open one to the front. OK writes, Cancel discards.
    static void edit(const std::wstring& screenName);

protected:
    FormOptions options() const override;
    void onCreate() override;
    void onDestroy() override;

private:
    void count();
    void save();

    std::wstring screenName_;
    Label lblNote, lblCount;
    Edit txtNote;
    Button cmdOK, cmdCancel;
};

} // namespace velora
