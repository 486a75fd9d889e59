#pragma once
// A window of Velora. A form derives from Form, holds its controls as value members, says in
// options() what kind of window it is and in onCreate() makes and places its controls;
// docs/forms.md shows one.
//
// Lifetime. A form that is opened (Form::open) belongs to the registry of open forms: when its
// window is gone, the object is deleted by the outermost message loop, never under a handler that
// still runs. A modal form is a local variable: `frmFind find; if (find.runModal() == IDOK) ...`.
#include "base/win.h"
#include "ui/Control.h"
#include "ui/Layout.h"

#include <shellapi.h>

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace velora {

class Button;
class Menu;

enum class FormKind {
    dialog,  // a caption and a close button, sized to its layout
    sizable, // a window that the user sizes; never smaller than its layout asks
    panel,   // no caption, never activated, no entry in the task bar (the panel over AOL's frame)
    tool,    // a small caption, no entry in the task bar
    child,   // inside another form (the page of a tab)
};

struct FormOptions {
    std::wstring title;
    FormKind kind = FormKind::dialog;
    /// May be a window of another program (AOL's frame): then that program is never disabled. For a
    /// child: the parent. A modal form without one takes the active form of ours.
    HWND owner = nullptr;
    /// Inner size; 0 = what the layout asks for.
    Size client;
    /// Place on the screen (not for children); absent = in the middle of the owner's monitor.
    std::optional<Rect> place;
    bool topmost = false;
    /// Shown and raised without taking the focus (alerts, panels); a click does not activate it
    /// either.
    bool activates = true;
    bool minimizeBox = false; // sizable forms have both boxes in any case
    HICON icon = nullptr;     // stays the caller's
    DWORD extraStyle = 0;
    DWORD extraExStyle = 0;
};

enum class CloseReason {
    user,    // the close button, Alt+F4, Esc, WM_CLOSE from outside
    program, // close()
    unload,  // the program ends: cannot be refused
};

class Form {
public:
    /// `name` is what the error log calls it ("frmMsg"); it must outlive the form.
    explicit Form(const char* name);
    virtual ~Form();
    Form(const Form&) = delete;
    Form& operator=(const Form&) = delete;

    /// Makes a form that the registry owns; show() it. Throws Error when the window cannot be made.
    template <class F, class... Args>
    static F& open(Args&&... args)
    {
        auto form = std::make_unique<F>(std::forward<Args>(args)...);
        F& result = *form;
        adopt(std::move(form));
        return result;
    }
    /// Makes the window of a form that its owner holds as a member (tab pages, panels). Hidden.
    void create();

    /// Shows the form, the user's other forms of ours disabled, and pumps until endModal or close.
    /// Answers the code of endModal, IDCANCEL when the form was closed otherwise.
    int runModal();
    void endModal(int result);

    void show(bool visible = true);
    /// Shown, restored, and before all others.
    void bringToFront();
    /// Destroys the window unless onClose refuses; false then.
    bool close(CloseReason reason = CloseReason::program);

    HWND hwnd() const { return hwnd_; }
    bool isOpen() const { return hwnd_ != nullptr; }
    /// False for panels and alerts: they work without ever becoming the active window.
    bool takesFocus() const { return made_.activates && made_.kind != FormKind::panel; }
    const char* name() const { return name_; }
    std::wstring title() const;
    void setTitle(std::wstring_view title);
    Rect place() const;
    /// On the screen; of a child: in its parent.
    void setPlace(const Rect& place);
    /// Lays the controls out anew (after a text changed or a control was hidden).
    void relayout();
    /// Sizes the window to what its layout asks for; keeps the middle where it is.
    void fitToLayout();

    /// Enter presses it wherever the focus is (but on another button).
    void setDefaultButton(Button& button);
    /// Esc and the close button press it.
    void setCancelButton(Button& button);
    void setFirstFocus(Control& control);
    /// Presses the cancel button; a dialog without one closes. Esc does this.
    void cancel();
    /// A key of the whole form, before its controls see it. `modifiers`: MOD_CONTROL, MOD_SHIFT,
    /// MOD_ALT added up.
    void addKey(UINT modifiers, UINT virtualKey, std::function<void()> pressed);
    /// Takes over the menu bar's handlers; the menu must live as long as the form.
    void setMenuBar(Menu& menu);

    /// The open form of this window, also for a child or control in it; null for a foreign window.
    static Form* fromWindow(HWND window);
    /// The open forms, oldest first.
    static std::vector<Form*> all();
    template <class F>
    static F* find()
    {
        for (Form* form : all())
            if (auto* found = dynamic_cast<F*>(form))
                return found;
        return nullptr;
    }
    /// Closes all forms, the newest first, the modal ones too (they answer IDCANCEL).
    static void unloadAll();
    /// Would every form close? Asks onQueryUnload of each until one says no.
    static bool mayUnloadAll();

protected:
    virtual FormOptions options() const = 0;
    /// Makes the controls and calls setLayout; the window exists and is hidden.
    virtual void onCreate() {}
    /// The controls have been laid out already.
    virtual void onSize(Size) {}
    virtual void onMove() {}
    /// False keeps the window (not when the program unloads).
    virtual bool onClose(CloseReason) { return true; }
    virtual bool onQueryUnload() { return true; }
    /// The window goes; its controls still exist.
    virtual void onDestroy() {}
    virtual void onShow(bool /*visible*/) {}
    virtual void onActivate(bool /*active*/) {}
    virtual void onPaint(HDC, const Rect& /*client*/) {}
    /// The user asked for a context menu; screen coordinates; `over` may be null.
    virtual void onContextMenu(Control* /*over*/, Point) {}
    virtual void onDropFiles(const std::vector<std::wstring>&) {}
    /// Any message, before the form itself sees it; an answer ends its handling.
    virtual std::optional<LRESULT> onMessage(UINT, WPARAM, LPARAM) { return std::nullopt; }

    void setLayout(const Box& layout);
    void acceptDroppedFiles(bool accept = true);

private:
    friend class Control;
    friend bool translateFormKeys(MSG& message);
    friend void deleteClosedForms();

    struct Key {
        UINT modifiers, virtualKey;
        std::function<void()> pressed;
    };

    static void adopt(std::unique_ptr<Form> form);
    static LRESULT CALLBACK windowProc(HWND, UINT, WPARAM, LPARAM) noexcept;
    LRESULT handle(UINT message, WPARAM wParam, LPARAM lParam);
    LRESULT handleCommand(WPARAM wParam, LPARAM lParam);
    std::optional<LRESULT> handleDialog(UINT message, WPARAM wParam, LPARAM lParam);
    std::optional<LRESULT> handleControl(UINT message, WPARAM wParam, LPARAM lParam);
    std::optional<LRESULT> handleFrame(UINT message, WPARAM wParam, LPARAM lParam);
    LRESULT handleNotify(NMHDR& header);
    void contextMenu(HWND over, LPARAM where);
    void bind(HWND window);
    void unbind();
    void makeWindow();
    void moveToStart();
    void beginModal();
    void endModalState();
    void paint();
    void limitSize(MINMAXINFO& info) const;
    void dropFiles(HDROP drop);
    void nextControl(WPARAM wParam, bool isWindow);
    void saveFocus();
    void restoreFocus();
    void markDefault(HWND button);
    bool pressKey(const MSG& message);
    Size outerSize(Size client) const;
    int nextControlId() { return nextId_++; }

    const char* name_;
    HWND hwnd_ = nullptr;
    FormOptions made_;
    Box layout_;
    bool hasLayout_ = false;
    bool modal_ = false, ended_ = false;
    int result_ = 0;
    int nextId_ = 100; // above IDOK, IDCANCEL and their like
    HWND default_ = nullptr, cancel_ = nullptr, first_ = nullptr;
    HWND drawnDefault_ = nullptr, lastFocus_ = nullptr;
    std::vector<Key> keys_;
    std::vector<Control*> controls_;
    std::vector<HWND> disabledByModal_;
    HWND activeBefore_ = nullptr;
    Menu* menuBar_ = nullptr;
};

/// Keys of the form that a message belongs to: its own keys, then Tab, Enter, Esc, mnemonics. True
/// when the message has been used. The loop calls it.
bool translateFormKeys(MSG& message);
/// Deletes the forms whose windows are gone. Only the outermost loop calls it.
void deleteClosedForms();

} // namespace velora
