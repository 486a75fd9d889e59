#pragma once
// Asks for the name under which a fade is kept, and what its file tells of it.
#include "chat/modScheme.h"
#include "ui/Controls.h"
#include "ui/Form.h"

#include <optional>
#include <string>

namespace velora {

struct SchemeLabel {
    std::wstring name, author, comments;
};

class frmSaveScheme final : public Form {
public:
    explicit frmSaveScheme(SchemeLabel label) : Form("frmSaveScheme"), label_(std::move(label)) {}
    /// What the user said; absent when cancelled. The name is never blank. Pumps messages.
    std::optional<SchemeLabel> ask();

private:
    FormOptions options() const override;
    void onCreate() override;

    SchemeLabel label_;
    Label lblName, lblAuthor, lblComments;
    Edit txtName, txtAuthor, txtComments;
    Button cmdOK, cmdCancel;
};

} // namespace velora
