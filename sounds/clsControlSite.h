#pragma once
// The place of an ActiveX control in a window of ours: what a control wants of its container.
#include "base/win.h"

struct IDispatch;
struct IOleObject;

namespace velora {

/// Holds one control. Controls that want no site work without one; nothing here fails.
class clsControlSite {
public:
    clsControlSite() = default;
    ~clsControlSite() { detach(); }
    clsControlSite(const clsControlSite&) = delete;
    clsControlSite& operator=(const clsControlSite&) = delete;

    /// Gives the control its site and activates it in the window.
    void attach(IDispatch* control, HWND window) noexcept;
    /// Closes the control. Do it before the window goes.
    void detach() noexcept;

private:
    IOleObject* control_ = nullptr;
};

} // namespace velora
