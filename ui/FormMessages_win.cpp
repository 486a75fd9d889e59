// What a form does with its messages: the one window procedure, the controls' notices, and the keys
// and focus that the system gives only to its own dialogs.
#include "ui/Form.h"

#include "base/trap.h"
#include "ui/Controls.h"
#include "ui/Menu.h"
#include "ui/WinGeometry.h"

#include <algorithm>

namespace velora {
namespace {
const char* procedureName(UINT message)
{
    switch (message) {
    case WM_COMMAND: return "onCommand";
    case WM_NOTIFY: return "onNotify";
    case WM_CLOSE: return "onClose";
    case WM_DESTROY: return "onDestroy";
    case WM_SIZE: return "onSize";
    case WM_PAINT: return "onPaint";
    case WM_CONTEXTMENU: return "onContextMenu";
    default: return "windowProc";
    }
}

bool isPushButton(HWND window)
{
    const auto code = SendMessageW(window, WM_GETDLGCODE, 0, 0);
    return code & (DLGC_DEFPUSHBUTTON | DLGC_UNDEFPUSHBUTTON);
}

bool listIsDropped(HWND focus)
{
    // The focus is the combo box or the edit inside it; other windows answer 0.
    return SendMessageW(focus, CB_GETDROPPEDSTATE, 0, 0) == TRUE
           || SendMessageW(GetParent(focus), CB_GETDROPPEDSTATE, 0, 0) == TRUE;
}
// A Tab that the focused control leaves to its form. Wine's IsDialogMessage would take the frame of
// the default button away with it.
bool isTab(const MSG& message)
{
    if (message.message != WM_KEYDOWN || message.wParam != VK_TAB || GetKeyState(VK_CONTROL) < 0)
        return false;
    const auto code = SendMessageW(message.hwnd, WM_GETDLGCODE, message.wParam,
                                   reinterpret_cast<LPARAM>(&message));
    return !(code & (DLGC_WANTTAB | DLGC_WANTALLKEYS));
}

// One line is selected, to be replaced by typing; a text of many lines is not put at such a risk.
void focusAndSelect(HWND control)
{
    SetFocus(control);
    if ((SendMessageW(control, WM_GETDLGCODE, 0, 0) & DLGC_HASSETSEL)
        && !(GetWindowLongPtrW(control, GWL_STYLE) & ES_MULTILINE))
        SendMessageW(control, EM_SETSEL, 0, -1);
}
} // namespace

LRESULT CALLBACK Form::windowProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam) noexcept
{
    auto* form = reinterpret_cast<Form*>(GetWindowLongPtrW(window, GWLP_USERDATA));
    try {
        if (message == WM_NCCREATE) {
            form = static_cast<Form*>(reinterpret_cast<CREATESTRUCTW*>(lParam)->lpCreateParams);
            form->bind(window);
        }
        if (form && message == WM_NCDESTROY)
            form->unbind();
        else if (form)
            return form->handle(message, wParam, lParam);
    } catch (...) {
        reportCurrentException(form ? form->name_ : "Form", procedureName(message));
        if (message == WM_NCCREATE)
            return FALSE;
        // The system's own handling keeps the window usable: it closes, is painted, is moved.
    }
    return DefWindowProcW(window, message, wParam, lParam);
}

LRESULT Form::handle(UINT message, WPARAM wParam, LPARAM lParam)
{
    const HWND window = hwnd_; // a handler may end the form
    if (const auto answer = onMessage(message, wParam, lParam))
        return *answer;
    if (const auto answer = handleControl(message, wParam, lParam))
        return *answer;
    if (const auto answer = handleDialog(message, wParam, lParam))
        return *answer;
    if (const auto answer = handleFrame(message, wParam, lParam))
        return *answer;
    return DefWindowProcW(window, message, wParam, lParam);
}

std::optional<LRESULT> Form::handleControl(UINT message, WPARAM wParam, LPARAM lParam)
{
    switch (message) {
    case WM_COMMAND: return handleCommand(wParam, lParam);
    case WM_NOTIFY: return handleNotify(*reinterpret_cast<NMHDR*>(lParam));
    case WM_DRAWITEM: {
        const auto& item = *reinterpret_cast<const DRAWITEMSTRUCT*>(lParam);
        if (Control* control = Control::fromWindow(item.hwndItem))
            control->onDraw(item);
        return TRUE;
    }
    case WM_HSCROLL:
    case WM_VSCROLL:
        if (Control* control = Control::fromWindow(reinterpret_cast<HWND>(lParam)))
            control->onScroll();
        return std::nullopt;
    case WM_CTLCOLORSTATIC:
    case WM_CTLCOLOREDIT:
    case WM_CTLCOLORLISTBOX:
    case WM_CTLCOLORBTN: {
        Control* const control = Control::fromWindow(reinterpret_cast<HWND>(lParam));
        if (const HBRUSH brush = control ? control->colour(reinterpret_cast<HDC>(wParam)) : nullptr)
            return reinterpret_cast<LRESULT>(brush);
        return std::nullopt;
    }
    case WM_CONTEXTMENU: contextMenu(reinterpret_cast<HWND>(wParam), lParam); return 0;
    default: return std::nullopt;
    }
}

LRESULT Form::handleCommand(WPARAM wParam, LPARAM lParam)
{
    const int code = HIWORD(wParam), id = LOWORD(wParam);
    Control* const control = Control::fromWindow(reinterpret_cast<HWND>(lParam));
    if (!control) {
        if (!menuBar_ || !menuBar_->run(id)) {
            if (id == IDCANCEL)
                cancel();
        }
        return 0;
    }
    if (code == BN_SETFOCUS && isPushButton(control->hwnd()))
        markDefault(control->hwnd());
    else if (code == BN_KILLFOCUS && drawnDefault_ == control->hwnd())
        markDefault(default_);
    control->onCommand(code);
    return 0;
}

LRESULT Form::handleNotify(NMHDR& header)
{
    Control* const control = Control::fromWindow(header.hwndFrom);
    return control ? control->onNotify(header) : 0;
}

void Form::contextMenu(HWND over, LPARAM where)
{
    Point at{static_cast<short>(LOWORD(where)), static_cast<short>(HIWORD(where))};
    if (where == -1) { // the keyboard asked
        const Rect r = windowRect(over);
        at = {r.left + std::min(20, r.width() / 2), r.top + std::min(20, r.height() / 2)};
    }
    onContextMenu(Control::fromWindow(over), at);
}

std::optional<LRESULT> Form::handleDialog(UINT message, WPARAM wParam, LPARAM lParam)
{
    switch (message) {
    case DM_GETDEFID:
        if (!drawnDefault_)
            return 0;
        return MAKELRESULT(GetDlgCtrlID(drawnDefault_), DC_HASDEFID);
    case DM_SETDEFID: markDefault(GetDlgItem(hwnd_, static_cast<int>(wParam))); return TRUE;
    case WM_NEXTDLGCTL: nextControl(wParam, LOWORD(lParam) != 0); return 0;
    case WM_ACTIVATE:
        if (LOWORD(wParam) == WA_INACTIVE)
            saveFocus();
        onActivate(LOWORD(wParam) != WA_INACTIVE);
        return std::nullopt; // the system then sets the focus to the form
    case WM_SETFOCUS: restoreFocus(); return 0;
    default: return std::nullopt;
    }
}

std::optional<LRESULT> Form::handleFrame(UINT message, WPARAM wParam, LPARAM lParam)
{
    switch (message) {
    case WM_SIZE:
        if (wParam == SIZE_MINIMIZED)
            return std::nullopt;
        relayout();
        onSize({LOWORD(lParam), HIWORD(lParam)});
        return 0;
    case WM_MOVE: onMove(); return 0;
    case WM_SHOWWINDOW: onShow(wParam != 0); return std::nullopt;
    case WM_GETMINMAXINFO: limitSize(*reinterpret_cast<MINMAXINFO*>(lParam)); return 0;
    case WM_MOUSEACTIVATE:
        if (!takesFocus())
            return MA_NOACTIVATE;
        return std::nullopt;
    case WM_CLOSE:
        if (cancel_)
            cancel();
        else
            close(CloseReason::user);
        return 0;
    case WM_DESTROY: onDestroy(); return 0;
    case WM_PAINT: paint(); return 0;
    case WM_DROPFILES: dropFiles(reinterpret_cast<HDROP>(wParam)); return 0;
    default: return std::nullopt;
    }
}

void Form::paint()
{
    PAINTSTRUCT paint = {};
    struct Painting {
        HWND window;
        PAINTSTRUCT& paint;
        Painting(HWND w, PAINTSTRUCT& p) : window(w), paint(p) { BeginPaint(w, &p); }
        ~Painting() { EndPaint(window, &paint); }
    } const painting(hwnd_, paint);
    onPaint(paint.hdc, rectOf({0, 0}, clientSize(hwnd_)));
}

void Form::limitSize(MINMAXINFO& info) const
{
    if (!hasLayout_ || made_.kind != FormKind::sizable)
        return;
    const Size least = outerSize(layout_.preferredSize());
    info.ptMinTrackSize = {least.width, least.height};
}

void Form::dropFiles(HDROP drop)
{
    std::vector<std::wstring> files;
    const UINT count = DragQueryFileW(drop, 0xFFFFFFFF, nullptr, 0);
    for (UINT i = 0; i < count; ++i) {
        std::wstring path(DragQueryFileW(drop, i, nullptr, 0), L'\0');
        DragQueryFileW(drop, i, path.data(), static_cast<UINT>(path.size()) + 1);
        files.push_back(std::move(path));
    }
    DragFinish(drop);
    onDropFiles(files);
}

void Form::nextControl(WPARAM wParam, bool isWindow)
{
    const HWND next = isWindow ? reinterpret_cast<HWND>(wParam)
                               : GetNextDlgTabItem(hwnd_, GetFocus(), wParam != 0);
    if (next)
        focusAndSelect(next);
}

void Form::saveFocus()
{
    const HWND focus = GetFocus();
    if (focus && IsChild(hwnd_, focus))
        lastFocus_ = focus;
}

void Form::restoreFocus()
{
    const auto usable = [this](HWND window) {
        return window && IsChild(hwnd_, window) && IsWindowVisible(window)
               && IsWindowEnabled(window);
    };
    HWND target = usable(lastFocus_) ? lastFocus_ : usable(first_) ? first_ : nullptr;
    if (!target) {
        target = GetNextDlgTabItem(hwnd_, nullptr, FALSE);
        if (!usable(target))
            return;
    }
    if (lastFocus_)
        SetFocus(target); // what was selected there stays so
    else
        focusAndSelect(target);
}

void Form::markDefault(HWND button)
{
    if (button == drawnDefault_)
        return;
    const auto draw = [](HWND window, DWORD type) {
        const auto style = static_cast<DWORD>(GetWindowLongPtrW(window, GWL_STYLE));
        // A button that draws itself keeps its style. The others keep what is not their type: the
        // message sets all sixteen bits, and without BS_NOTIFY no notice of the focus would come.
        if (window && (style & BS_TYPEMASK) <= BS_DEFPUSHBUTTON)
            SendMessageW(window, BM_SETSTYLE, (style & 0xFFFF & ~DWORD{BS_TYPEMASK}) | type, TRUE);
    };
    draw(drawnDefault_, BS_PUSHBUTTON);
    draw(button, BS_DEFPUSHBUTTON);
    drawnDefault_ = button;
}

void Form::cancel()
{
    if (Control* const button = Control::fromWindow(cancel_)) {
        if (button->enabled())
            button->onCommand(BN_CLICKED);
    } else if (made_.kind == FormKind::dialog) {
        close(CloseReason::user);
    }
}

bool Form::pressKey(const MSG& message)
{
    if (message.message != WM_KEYDOWN && message.message != WM_SYSKEYDOWN)
        return false;
    const auto held = [](int key, UINT modifier) { return GetKeyState(key) < 0 ? modifier : 0u; };
    const UINT modifiers =
        held(VK_CONTROL, MOD_CONTROL) | held(VK_SHIFT, MOD_SHIFT) | held(VK_MENU, MOD_ALT);
    for (const Key& key : keys_) {
        if (key.virtualKey != message.wParam || key.modifiers != modifiers)
            continue;
        const auto pressed = key.pressed; // the table may go with the form
        trap(name_, pressed, "key");
        return true;
    }
    return false;
}

bool translateFormKeys(MSG& message)
{
    if (message.message < WM_KEYFIRST || message.message > WM_KEYLAST)
        return false;
    // The keys of a page are those of the form around it too.
    const HWND root = GetAncestor(message.hwnd, GA_ROOT);
    for (Form* form = Form::fromWindow(message.hwnd); form;
         form = Form::fromWindow(GetAncestor(form->hwnd_, GA_PARENT))) {
        if (form->pressKey(message))
            return true;
    }
    Form* const form = Form::fromWindow(root);
    if (!form || !IsWindowEnabled(root))
        return false;
    if (message.message == WM_KEYDOWN && message.wParam == VK_ESCAPE
        && !listIsDropped(message.hwnd)) {
        trap(
            form->name_, [&] { form->cancel(); }, "Esc");
        return true;
    }
    if (isTab(message)) {
        SendMessageW(root, WM_NEXTDLGCTL, GetKeyState(VK_SHIFT) < 0, FALSE);
        return true;
    }
    return IsDialogMessageW(root, &message);
}

} // namespace velora
