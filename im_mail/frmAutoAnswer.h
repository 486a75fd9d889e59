#pragma once
// The auto-answer's window: whom it answers, the messages, and the exceptions list.
#include "im_mail/modAnswerMessages.h"
#include "settings/Options.h"
#include "ui/Controls.h"
#include "ui/Form.h"
#include "ui/ToolTip.h"

#include <functional>
#include <string>

namespace velora {

class frmAutoAnswer final : public Form {
public:
    frmAutoAnswer();
    /// Opens the window, or brings the open one to the front.
    static void openWindow();
    /// Called when auto-answer was switched here, so that the IM window's button shows it.
    static void setAdjustRoute(std::function<void()> route);

protected:
    FormOptions options() const override;
    void onCreate() override;
    void onDestroy() override;

private:
    /// A list of messages with its buttons.
    struct Messages {
        AnswerKind kind;
        GroupBox grpBox;
        ListBox lstTitles;
        Button cmdAdd, cmdRename, cmdEdit, cmdDelete;
    };

    void createMode();
    Box createMessages(Messages& messages, const wchar_t* heading);
    Box createExceptions();
    void createOptions();
    void showOptions();
    void LoadGeneralList();
    void LoadPersonalList();
    void LoadExceptions();
    void AdjustIMWindow();

    std::wstring chosen(const Messages& messages) const;
    std::wstring askTitle(const Messages& messages, bool rename, const std::wstring& initial);
    void reload(const Messages& messages, const std::wstring& select);
    void addMessage(Messages& messages);
    void renameMessage(Messages& messages);
    void editMessage(Messages& messages);
    void deleteMessage(Messages& messages);
    bool SaveMessage(AnswerKind kind, const std::wstring& title, const std::wstring& text);
    void editDefault();
    void useMessage();
    void addException();
    void removeException();

    clsAnswerMessages store_;
    Label lblMode;
    ComboBox cboMode;
    Messages general_{AnswerKind::general, {}, {}, {}, {}, {}, {}};
    Messages personal_{AnswerKind::personalised, {}, {}, {}, {}, {}, {}};
    GroupBox grpExceptions;
    ListBox lstExceptions;
    Button cmdAddName, cmdRemoveName;
    CheckBox chkOnce, chkPersonal, chkAlias, chkShow;
    Button cmdDefault, cmdClose;
    ToolTip tips;
    OptionSubscription changes_;
};

} // namespace velora
