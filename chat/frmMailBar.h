#pragma once
// Our buttons on the mail or board window that is in front in AOL: a small panel at the right of
// its title bar, before the window's own boxes, so that it covers nothing that AOL shows in it.
//
// The panel is a window of ours that belongs to AOL's frame and never takes the focus. Where it
// stands is read from the places of AOL's windows: nothing is sent to AOL when one is moved.
#include "chat/modMailBar.h"
#include "hook/WindowHook.h"
#include "settings/Options.h"
#include "ui/Controls.h"
#include "ui/Form.h"
#include "ui/Timer.h"
#include "ui/ToolTip.h"

namespace velora {

class clsReplyHooks;

class frmMailBar final : public Form {
public:
    /// `replies` tells which windows are read. Its window is made when it is first needed.
    explicit frmMailBar(const clsReplyHooks& replies);
    ~frmMailBar() override;

    /// Each puts the buttons of one kind of window on the bar, for this window of AOL's: a mail
    /// that is read, one that is written, a board's message that is read, an answer to one.
    void ButtonsToMail(HWND window);
    void ButtonsToWriteMail(HWND window);
    void ButtonsToMB(HWND window);
    void ButtonsToMbReply(HWND window);

    /// One of AOL's documents was made or has changed (clsReplyHooks has looked at it), or is gone.
    void documentChanged(HWND document);
    void documentGone(HWND document);
    /// Puts the bar where it belongs now, or hides it: for every notice of a change in AOL, and for
    /// a slow timer in case nobody told.
    void follow();
    /// Lets go of AOL and closes the bar for good.
    void detach();

protected:
    FormOptions options() const override;
    void onCreate() override;
    void onDestroy() override;
    void onPaint(HDC dc, const Rect& client) override;

private:
    struct ButtonRow;
    static const ButtonRow kButtons[];

    MailKind kindOf(HWND document);
    void setButtons(MailKind kind, HWND window);
    void showButtons();
    void watch(HWND document);
    std::optional<Rect> placeNow() const;
    void PaintMailControls(HDC dc, const Rect& client);
    void openTools();

    const clsReplyHooks& replies_;
    ImageButton cmdReply, cmdDecrypt, cmdFade, cmdEncrypt, cmdAdvertise, cmdTools;
    ToolTip tips_;
    WindowHook sbcMail; // the document in front
    Timer tmrSettle;
    OptionSubscription changes_;

    MailKind kind_ = MailKind::none;
    HWND window_ = nullptr;   ///< the mail or board window that the buttons are for
    HWND lookedAt_ = nullptr; ///< the document whose kind of writing is known
    MailKind written_ = MailKind::none;
    bool moves_ = false; ///< sbcMail tells of moves
    bool ended_ = false;
};

} // namespace velora
