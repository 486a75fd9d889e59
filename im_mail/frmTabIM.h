#pragma once
// The tabbed window: one tab (or row of a list) for each IM that the manager has taken. The IMs
// themselves are windows of AOL that lie over the page; the window only says where.
#include "hook/WindowHook.h"
#include "im_mail/IMEvents.h"
#include "settings/Options.h"
#include "ui/Controls.h"
#include "ui/Form.h"
#include "ui/Menu.h"
#include "ui/Timer.h"
#include "ui/ToolTip.h"

namespace velora {

class clsIMSession;

class frmTabIM final : public Form {
public:
    frmTabIM();
    static frmTabIM* instance() { return find<frmTabIM>(); }

    /// The page's place on the screen.
    RECT pageOnScreen() const;
    /// False while the window is hidden or minimised.
    bool showsPage() const;
    /// The user is in this window, or in the IM that lies over it.
    bool isInFront() const;

    /// Shown, and on top, without taking the focus from wherever the user is.
    void showQuietly();
    void hideQuietly();
    /// Whether it may be raised, lowered or hidden now: not while AOL hangs.
    bool mayStack() const;
    /// A few blinks in the task bar.
    void flashQuietly();
    /// With the option DisplayOnTopOfAOL: above AOL while AOL is in front.
    void keepAbove();

    /// Makes tabs and rows say what the list of open IMs holds.
    void ResizeTabs();
    void ResizeList();
    /// Lays the window out anew after an option changed.
    void DoResize();
    /// The current IM, or its parts, are others now. `focus`: its reply box gets the focus.
    void currentChanged(bool focus);
    void savePlace() const;
    /// Asks for the alias of the current IM's sender. It pumps.
    void AddAlias();
    /// The tip that shows a member's note when his tab is chosen; its look is the user's.
    void InitBuddyTooltip();
    void ResetTipColors();
    /// Whether the reply box of the current IM is hooked.
    bool IsHooked() const { return sbcReply.window() != nullptr; }
    void focusReply();

protected:
    FormOptions options() const override;
    void onCreate() override;
    void onSize(Size) override;
    void onMove() override;
    void onShow(bool visible) override;
    void onActivate(bool active) override;
    bool onClose(CloseReason reason) override;
    void onDestroy() override;
    void onContextMenu(Control* over, Point at) override;
    std::optional<LRESULT> onMessage(UINT message, WPARAM wParam, LPARAM lParam) override;

private:
    struct ButtonRow;
    static const ButtonRow kButtons[];
    enum Mode { tabs, buttons, list };
    static Mode mode();

    void applyStyle();
    void follow(OptionId option);
    bool isInIM() const;
    void setActivates(bool activates);
    void addKeys();
    void step(int by);
    void stepTo(int index);
    void selected(int index);
    void onKey(HookMessage& message);
    void onDelayed(int code);
    void updateHotKeys();
    void showBuddyNotes();
    clsIMSession* current() const;
    std::wstring currentName() const;

    void send();
    void cancel();
    void locate();
    void mail();
    void cmdNotify_Click();
    void AOL_GetInfo();
    void autoAnswer();
    void AddToIgnore();
    void editNotes();
    void copyText();
    void openLog();
    void optionsMenu();
    void imMenu(Point at);
    void addView(Menu& menu);

    ImageButton cmdSend, cmdCancel, cmdLocate, cmdMail, cmdNotify, cmdProfile, cmdOptions, cmdAA;
    ImageButton cmdIgnore, cmdNotes, cmdCopy, cmdLog; // mnuExtraBtns
    TabStrip tabIMs;
    ListView lstIMs;
    Label lblPage;
    ToolTip tips_, tipNotes_;
    WindowHook sbcReply, sbcConversation;
    Timer tmrFocus, tmrShown;
    OptionSubscription changes_;
    bool keepFocus_ = false; ///< the next activation leaves the focus in this window
    bool syncing_ = false, hotKeys_ = false, onTop_ = false;
};

} // namespace velora
