#pragma once
// The toolbar: a panel of buttons over AOL's frame, and the hub through which AOL's windows reach
// the program. It owns every hook on AOL's windows and the chat room reader.
//
// The panel is a window of ours that belongs to AOL's frame: it follows it, hides with it, and
// never takes the focus.
#include "chat/clsChatSend.h"
#include "chat/clsReplyHooks.h"
#include "chat/frmMailBar.h"
#include "chat/modPanel.h"
#include "core/clsChat.h"
#include "hook/WindowHook.h"
#include "settings/Options.h"
#include "ui/Controls.h"
#include "ui/Form.h"
#include "ui/Timer.h"
#include "ui/ToolTip.h"

#include <memory>
#include <optional>

namespace velora {

class Menu;

class frmToolbar final : public Form {
public:
    frmToolbar();
    ~frmToolbar() override;

    /// The program's toolbar; null before it is made and after it is gone.
    static frmToolbar* instance() { return find<frmToolbar>(); }
    /// Makes the toolbar, hooks AOL's windows and shows the panel. ToolbarRoutes are filled before.
    static frmToolbar& load();

    /// Connects to AOL and hooks the windows that are there. What fails is tried again by Timer1.
    void EnableSubclass();
    /// Stops watching AOL; the hooks that are there stay.
    void DisableSubclass();
    /// Takes the hooks off the windows of the room and of the mails.
    void RemoveSubclasses();
    /// Gives all of AOL back; nothing of ours is left on it.
    void UnhookSubclasses();

    /// Starts the chat reader on a room; a room that is read already is left alone.
    void ChatScanOn(HWND chatRoom);
    void ChatScanOff();
    /// One new line of the room.
    void Chat_ChatMsg(std::wstring& screenName, std::wstring& message);
    /// What the user sends in the room is looked at before AOL gets it.
    bool hooksSend() const { return Send.attached(); }
    /// The room that is read; 0 when none is.
    HWND scannedRoom() const { return room_; }
    const clsReplyHooks& replies() const { return Replies; }
    /// Answers the mail (or board message) that is read in front with its text quoted. False when
    /// none is.
    bool quoteReply() { return Replies.quoteFront(); }

    /// Shows or hides the panel from now on, and remembers that. While it is hidden the program is
    /// reached by its icon in the notification area.
    void ShowToolbar(bool visible);
    /// Puts the panel over AOL's frame where it belongs, or hides it while there is nothing to lie
    /// over. Sends AOL no message.
    void SetPanelPos();
    /// Puts the panel back to where it stands before the user moves it.
    void PositionMe();
    /// Lays the buttons out anew after the direction or the set of buttons changed.
    void ResizeButtons();
    /// Draws the panel anew.
    void RefreshPanel();
    /// Learns from AOL's welcome window who is signed on. Sends AOL no message.
    void RefreshWelcome();
    /// The panel's own settings, as items of a menu.
    void fillPanelItems(Menu& menu);

protected:
    FormOptions options() const override;
    void onCreate() override;
    bool onClose(CloseReason reason) override;
    void onDestroy() override;
    void onPaint(HDC dc, const Rect& client) override;
    void onContextMenu(Control* over, Point at) override;
    std::optional<LRESULT> onMessage(UINT message, WPARAM wParam, LPARAM lParam) override;

private:
    struct ButtonRow;
    static const ButtonRow kButtons[];

    void openWavs();
    void openIMs();
    void openMail();
    void openPeople();
    void openQuotes();
    void openHugs();
    void openFade();
    void openEncrypt();
    void openMenu();
    void openPlus();
    /// Shows a button's menu below it (pumps).
    void showUnder(ImageButton& button, Menu& menu);
    void fillMenu(Menu& mnuMenuItem);
    void fillButtonItems(Menu& menu);
    void RefreshTray();
    void optionChanged(OptionId id);
    void startDrag();
    void drag();
    void endDrag();
    Rect gripRect() const;
    PanelOffset offset() const;

    void connect();
    void Timer1_Timer();
    void watchRoom(bool changed);
    void keepReading();
    bool hookDisplay();
    void hookSend();
    void addAolMenus();
    void sbcMenu_Command(UINT id);
    void sbcMenu_Moved();
    void sbcRealMDI_ChildChanged(HWND child);
    void sbcMDI_ChildGone(HWND child);
    void checkChat();
    void aolEnded();

    ImageButton cmdWavs, cmdIMs, cmdMail, cmdPeople, cmdQuotes, cmdHugs, cmdFade, cmdEncrypt,
        cmdMenu, cmdPlus;
    ToolTip tips_;
    Timer Timer1, tmrDrag, tmrIMWatch;
    WindowHook sbcChat;
    clsChatSend Send;            // sbcCmdLine and sbcSendIcon
    clsReplyHooks Replies;       // sbcMB
    frmMailBar MailBar{Replies}; // sbcMail
    std::unique_ptr<clsChat> Chat;
    OptionSubscription changes_;

    HWND frame_ = nullptr;
    HWND room_ = nullptr;
    std::wstring signedOn_; // the user's own screen name; empty while nobody is signed on
    DWORD nextConnect_ = 0; // tick counts
    DWORD nextLook_ = 0;
    DWORD connectDelay_ = 0;
    bool roomsChanged_ = true;
    bool aolMenus_ = false; // our items are in AOL's menus
    bool ended_ = false;
    std::optional<PanelOffset> dragged_; // while the user drags the panel
    POINT dragFrom_{};
    Rect dragStart_;
};

} // namespace velora
