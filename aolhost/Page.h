#pragma once
// A window with AOL's page as its ground, on which it draws and its controls stand.
#include "aolhost/Controls.h"
#include "aolhost/Window.h"

namespace aolhost {

class Page : public Window {
protected:
    /// Draws what is not a control; the page's ground is drawn already.
    virtual void paint(HDC dc, const RECT& area);
    LRESULT handle(UINT message, WPARAM wParam, LPARAM lParam) override;
};

} // namespace aolhost
