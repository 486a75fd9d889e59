#pragma once
// The editor of the reply templates: what stands above a quote, with a preview.
#include "chat/modFadeRuns.h"
#include "chat/modTemplates.h"
#include "ui/Controls.h"
#include "ui/Form.h"
#include "ui/ToolTip.h"

namespace velora {

class frmTemplates final : public Form {
public:
    frmTemplates();
    /// Shows the editor, made at need.
    static void showWindow();

protected:
    FormOptions options() const override;
    void onCreate() override;
    bool onClose(CloseReason reason) override;

private:
    Box editors();
    void fillList();
    void choose();
    void changed();
    void insertVariable(const wchar_t* variable);
    void useAsDefault();
    void restore();
    /// False, and the user is told, when the settings refuse.
    bool keep();
    void refresh();
    QuoteTemplate& current();

    TemplateSet before_, now_;
    std::size_t current_ = 0;
    bool filling_ = false; // the program writes into the boxes
    std::vector<FadeRun> preview_;

    Label lblTemplates;
    ListBox lstTemplates;
    Button cmdDefault, cmdRestore;
    Label lblName;
    Edit txtName;
    Label lblHtml;
    Edit txtHtml;
    Button cmdSender, cmdDate, cmdTime;
    Label lblPreview, lblReply;
    Button cmdOK, cmdCancel;
    ToolTip tips_;
};

} // namespace velora
