// A form's life: its window, the registry of open forms, showing, closing, running modal. What it
// does with messages is in FormMessages_win.cpp.
#include "ui/Form.h"

#include "base/trap.h"
#include "base/win_error.h"
#include "ui/Controls.h"
#include "ui/Menu.h"
#include "ui/MessageLoop.h"
#include "ui/Placement.h"
#include "ui/WinGeometry.h"

#include <commctrl.h>

#include <algorithm>

namespace velora {
namespace {

struct Registry {
    std::vector<Form*> open;                  // those that have a window
    std::vector<std::unique_ptr<Form>> owned; // of open(), until deleted
    std::vector<Form*> modal;                 // that run now, the innermost last
};

Registry& registry()
{
    static auto& forms = *new Registry;
    return forms;
}

constexpr wchar_t kClassName[] = L"VeloraForm";

struct WindowStyle {
    DWORD style, exStyle;
};

WindowStyle styleOf(const FormOptions& options)
{
    WindowStyle s = {WS_CLIPCHILDREN | options.extraStyle,
                     WS_EX_CONTROLPARENT | options.extraExStyle};
    switch (options.kind) {
    case FormKind::dialog:
        s.style |= WS_POPUP | WS_CAPTION | WS_SYSMENU;
        s.exStyle |= WS_EX_DLGMODALFRAME;
        break;
    case FormKind::sizable: s.style |= WS_OVERLAPPEDWINDOW; break;
    case FormKind::panel:
        s.style |= WS_POPUP;
        s.exStyle |= WS_EX_TOOLWINDOW;
        break;
    case FormKind::tool:
        s.style |= WS_POPUP | WS_CAPTION | WS_SYSMENU;
        s.exStyle |= WS_EX_TOOLWINDOW;
        break;
    case FormKind::child: s.style |= WS_CHILD; break;
    }
    if (options.minimizeBox)
        s.style |= WS_MINIMIZEBOX;
    if (options.topmost)
        s.exStyle |= WS_EX_TOPMOST;
    if (options.kind == FormKind::panel || !options.activates)
        s.exStyle |= WS_EX_NOACTIVATE;
    return s;
}

// The form of ours that the user is in, when nothing above it belongs to another program: an owner
// there would tie our input to a program that may hang.
HWND modalOwner()
{
    const Form* const active = Form::fromWindow(GetActiveWindow());
    if (!active || !IsWindowVisible(active->hwnd()))
        return nullptr;
    const HWND top = GetAncestor(active->hwnd(), GA_ROOT);
    for (HWND owner = top; owner; owner = GetWindow(owner, GW_OWNER)) {
        DWORD process = 0;
        GetWindowThreadProcessId(owner, &process);
        if (process != GetCurrentProcessId())
            return nullptr;
    }
    return top;
}

} // namespace

Form::Form(const char* name) : name_(name) {}

Form::~Form()
{
    // The derived part is gone already: no message may reach the form any more.
    const HWND window = hwnd_;
    if (window) {
        unbind();
        DestroyWindow(window);
    }
    for (Control* control : controls_)
        control->release();
}

void Form::bind(HWND window)
{
    hwnd_ = window;
    SetWindowLongPtrW(window, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(this));
    registry().open.push_back(this);
}

void Form::unbind()
{
    SetWindowLongPtrW(hwnd_, GWLP_USERDATA, 0);
    std::erase(registry().open, this);
    hwnd_ = nullptr;
    default_ = cancel_ = first_ = drawnDefault_ = lastFocus_ = nullptr;
    const auto controls = std::move(controls_);
    controls_.clear();
    for (Control* control : controls)
        control->release();
    // The loop deletes the object on its next turn; a modal one ends its own.
    PostThreadMessageW(GetCurrentThreadId(), WM_NULL, 0, 0);
}

void Form::adopt(std::unique_ptr<Form> form)
{
    form->create();
    registry().owned.push_back(std::move(form));
}

void deleteClosedForms()
{
    auto& owned = registry().owned;
    for (;;) {
        const auto closed = std::find_if(owned.begin(), owned.end(),
                                         [](const auto& form) { return !form->isOpen(); });
        if (closed == owned.end())
            return;
        const std::unique_ptr<Form> form = std::move(*closed);
        owned.erase(closed);
        // Its destructor may open and close other forms: look again from the start.
    }
}

void Form::makeWindow()
{
    static const ATOM registered = [] {
        INITCOMMONCONTROLSEX common = {sizeof common, ICC_WIN95_CLASSES};
        InitCommonControlsEx(&common);
        WNDCLASSEXW c = {};
        c.cbSize = sizeof c;
        c.style = CS_DBLCLKS;
        c.lpfnWndProc = &Form::windowProc;
        c.hInstance = GetModuleHandleW(nullptr);
        c.hCursor = LoadCursorW(nullptr, IDC_ARROW);
        c.hIcon = LoadIconW(c.hInstance, MAKEINTRESOURCEW(1));
        c.hbrBackground = reinterpret_cast<HBRUSH>(COLOR_BTNFACE + 1);
        c.lpszClassName = kClassName;
        return RegisterClassExW(&c);
    }();
    if (!registered)
        throwLastError("the form's window class cannot be registered");
    const WindowStyle s = styleOf(made_);
    if (!CreateWindowExW(s.exStyle, kClassName, made_.title.c_str(), s.style, 0, 0, 0, 0,
                         made_.owner, nullptr, GetModuleHandleW(nullptr), this))
        throwLastError("a form's window cannot be made");
    if (made_.icon) {
        SendMessageW(hwnd_, WM_SETICON, ICON_SMALL, reinterpret_cast<LPARAM>(made_.icon));
        SendMessageW(hwnd_, WM_SETICON, ICON_BIG, reinterpret_cast<LPARAM>(made_.icon));
    }
}

void Form::create()
{
    if (hwnd_)
        return;
    made_ = options();
    if (modal_ && !made_.owner)
        made_.owner = modalOwner();
    makeWindow();
    try {
        onCreate();
        moveToStart();
    } catch (...) {
        DestroyWindow(hwnd_);
        throw;
    }
}

Size Form::outerSize(Size client) const
{
    RECT r = {0, 0, client.width, client.height};
    AdjustWindowRectEx(&r, static_cast<DWORD>(GetWindowLongPtrW(hwnd_, GWL_STYLE)),
                       GetMenu(hwnd_) != nullptr,
                       static_cast<DWORD>(GetWindowLongPtrW(hwnd_, GWL_EXSTYLE)));
    return fromRECT(r).size();
}

void Form::moveToStart()
{
    if (made_.kind == FormKind::child) {
        relayout();
        return;
    }
    Size client = made_.client;
    const Size wanted = hasLayout_ ? layout_.preferredSize() : Size{};
    client.width = client.width ? client.width : wanted.width;
    client.height = client.height ? client.height : wanted.height;
    const HWND reference = made_.owner ? made_.owner : GetForegroundWindow();
    const Rect area = monitorAreaNear(reference ? windowRect(reference) : Rect{});
    std::optional<Rect> place;
    if (made_.place)
        place =
            made_.kind == FormKind::panel ? made_.place : usablePlace(*made_.place, monitorAreas());
    setPlace(place ? *place : movedInto(centredIn(area, outerSize(client)), area));
    relayout();
}

void Form::setLayout(const Box& layout)
{
    layout_ = layout;
    hasLayout_ = true;
}

void Form::relayout()
{
    if (hasLayout_ && hwnd_)
        layout_.arrange(rectOf({0, 0}, clientSize(hwnd_)));
}

void Form::fitToLayout()
{
    if (!hwnd_ || !hasLayout_)
        return;
    const Rect now = windowRect(hwnd_);
    const Rect area = monitorAreaNear(now);
    setPlace(movedInto(centredIn(now, outerSize(layout_.preferredSize())), area));
    relayout();
}

Rect Form::place() const
{
    // The place that a minimised or maximised window goes back to is the one worth remembering.
    WINDOWPLACEMENT placement = {};
    placement.length = sizeof placement;
    if (!hwnd_ || (!IsIconic(hwnd_) && !IsZoomed(hwnd_)) || !GetWindowPlacement(hwnd_, &placement))
        return hwnd_ ? windowRect(hwnd_) : Rect{};
    return fromRECT(placement.rcNormalPosition);
}

void Form::setPlace(const Rect& place)
{
    if (hwnd_)
        SetWindowPos(hwnd_, nullptr, place.left, place.top, place.width(), place.height(),
                     SWP_NOZORDER | SWP_NOACTIVATE);
}

std::wstring Form::title() const
{
    return hwnd_ ? windowText(hwnd_) : std::wstring();
}

void Form::setTitle(std::wstring_view title)
{
    if (hwnd_)
        SetWindowTextW(hwnd_, std::wstring(title).c_str());
}

void Form::show(bool visible)
{
    if (!hwnd_)
        return;
    if (!visible) {
        // Not ShowWindow: it would wait for AOL where one of its windows is tied to ours.
        SetWindowPos(hwnd_, nullptr, 0, 0, 0, 0,
                     SWP_HIDEWINDOW | SWP_NOMOVE | SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE);
        return;
    }
    constexpr UINT kOnlyShow = SWP_SHOWWINDOW | SWP_NOMOVE | SWP_NOSIZE | SWP_NOACTIVATE;
    if (made_.kind == FormKind::child)
        SetWindowPos(hwnd_, nullptr, 0, 0, 0, 0, kOnlyShow | SWP_NOZORDER);
    else if (!takesFocus())
        SetWindowPos(hwnd_, HWND_TOP, 0, 0, 0, 0, kOnlyShow);
    else
        ShowWindow(hwnd_, SW_SHOW);
}

void Form::bringToFront()
{
    if (!hwnd_)
        return;
    if (IsIconic(hwnd_))
        ShowWindow(hwnd_, SW_RESTORE);
    show();
    BringWindowToTop(hwnd_);
    if (SetForegroundWindow(hwnd_) && GetForegroundWindow() == hwnd_)
        return;
    // The system refuses it while the user works in another program: then the window lies on top
    // without the focus, and its button in the task bar blinks a few times.
    if (!made_.topmost) {
        constexpr UINT kStay = SWP_NOMOVE | SWP_NOSIZE | SWP_NOACTIVATE;
        SetWindowPos(hwnd_, HWND_TOPMOST, 0, 0, 0, 0, kStay);
        SetWindowPos(hwnd_, HWND_NOTOPMOST, 0, 0, 0, 0, kStay);
    }
    FLASHWINFO flash = {sizeof flash, hwnd_, FLASHW_ALL, 3, 0};
    FlashWindowEx(&flash);
}

bool Form::close(CloseReason reason)
{
    if (!hwnd_)
        return true;
    if (!onClose(reason) && reason != CloseReason::unload)
        return false;
    if (modal_)
        endModal(IDCANCEL);
    if (hwnd_)
        DestroyWindow(hwnd_);
    return true;
}

// What is modal shuts out the program's other forms; AOL's windows are none of ours and stay
// usable.
void Form::beginModal()
{
    registry().modal.push_back(this);
    for (Form* other : all()) {
        const HWND window = other->hwnd();
        if (other == this || other->made_.kind == FormKind::child || !IsWindowEnabled(window))
            continue;
        EnableWindow(window, FALSE);
        disabledByModal_.push_back(window);
    }
}

// Before the window goes: with its owner still disabled, the system would activate another program.
void Form::endModalState()
{
    auto& modal = registry().modal;
    const auto self = std::find(modal.begin(), modal.end(), this);
    if (self == modal.end())
        return;
    // Ended while another runs above it: what it shut out stays so until that one ends.
    const auto above = modal.erase(self);
    if (above != modal.end()) {
        auto& kept = (*above)->disabledByModal_;
        kept.insert(kept.end(), disabledByModal_.begin(), disabledByModal_.end());
        disabledByModal_.clear();
        return;
    }
    for (HWND window : disabledByModal_)
        if (Form::fromWindow(window))
            EnableWindow(window, TRUE);
    disabledByModal_.clear();
    if (hwnd_ && GetForegroundWindow() == hwnd_ && IsWindow(activeBefore_)
        && IsWindowVisible(activeBefore_))
        SetForegroundWindow(activeBefore_);
    activeBefore_ = nullptr;
}

int Form::runModal()
{
    struct Running {
        Form& form;
        ~Running()
        {
            form.endModalState();
            form.modal_ = false;
            if (form.hwnd_)
                DestroyWindow(form.hwnd_);
        }
    } const running{*this};
    modal_ = true;
    ended_ = false;
    result_ = IDCANCEL;
    activeBefore_ = GetForegroundWindow();
    create();
    beginModal();
    bringToFront();
    pumpWhile([this] { return hwnd_ && !ended_; });
    return result_;
}

void Form::endModal(int result)
{
    if (!modal_ || ended_)
        return;
    result_ = result;
    ended_ = true;
    endModalState();
}

std::vector<Form*> Form::all()
{
    return registry().open;
}

Form* Form::fromWindow(HWND window)
{
    for (; window; window = GetAncestor(window, GA_PARENT))
        for (Form* form : registry().open)
            if (form->hwnd_ == window)
                return form;
    return nullptr;
}

bool Form::mayUnloadAll()
{
    for (Form* form : all()) {
        const auto open = all(); // an answer may have closed others
        if (std::find(open.begin(), open.end(), form) != open.end() && !form->onQueryUnload())
            return false;
    }
    return true;
}

void Form::unloadAll()
{
    // A form that opens another while it closes cannot keep this going for ever.
    for (int rounds = 0; rounds < 1000 && !registry().open.empty(); ++rounds) {
        Form* const newest = registry().open.back();
        trap(
            newest->name_, [&] { newest->close(CloseReason::unload); }, "unload");
        // An onClose that threw leaves the window; it goes all the same.
        const auto& open = registry().open;
        if (std::find(open.begin(), open.end(), newest) != open.end() && newest->hwnd_)
            DestroyWindow(newest->hwnd_);
    }
}

void Form::setDefaultButton(Button& button)
{
    default_ = button.hwnd();
    markDefault(default_);
}

void Form::setCancelButton(Button& button)
{
    cancel_ = button.hwnd();
}

void Form::setFirstFocus(Control& control)
{
    first_ = control.hwnd();
}

void Form::addKey(UINT modifiers, UINT virtualKey, std::function<void()> pressed)
{
    keys_.push_back({modifiers, virtualKey, std::move(pressed)});
}

void Form::setMenuBar(Menu& menu)
{
    menuBar_ = &menu;
    SetMenu(hwnd_, menu.handle());
}

void Form::acceptDroppedFiles(bool accept)
{
    DragAcceptFiles(hwnd_, accept);
}

} // namespace velora
