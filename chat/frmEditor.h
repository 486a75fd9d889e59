#pragma once
// The editor of the user's lists: chat keywords, aliases, hug and Glintune styles. One window, in
// one of these modes at a time.
#include "chat/clsEditorModel.h"
#include "ui/Controls.h"
#include "ui/Form.h"
#include "ui/ToolTip.h"

namespace velora {

class frmEditor final : public Form {
public:
    frmEditor(EditorList list, std::wstring programFolder);

    /// Opens the editor of a list. While one is open it refuses, tells the user so and answers
    /// false (pumps then).
    static bool openEditor(EditorList list, const std::wstring& programFolder);

    EditorList list() const { return model_.list(); }

protected:
    FormOptions options() const override;
    void onCreate() override;
    bool onClose(CloseReason reason) override;
    bool onQueryUnload() override { return mayGo(); }

private:
    Box fields();
    Box listButtons();
    void refresh(int select);
    void showEntry();
    void fieldsChanged();
    EditorEntry typed() const;
    bool dirty() const;
    /// Takes over what is typed; false, and the user told, when it has a fault.
    bool take(bool asNew);
    void removeEntry();
    void moveEntry(int by);
    void makeCurrent();
    void ok();
    /// Asks before changes are lost.
    bool mayGo();

    clsEditorModel model_;
    std::wstring folder_;
    bool saved_ = false;
    bool filling_ = false;

    Label lblList, lblName, lblText, lblPreview, lblSample;
    ListView lstEntries;
    Edit txtName, txtText;
    Button cmdAdd, cmdChange, cmdRemove, cmdUp, cmdDown, cmdUse, cmdOK, cmdCancel;
    ToolTip tips_;
};

} // namespace velora
