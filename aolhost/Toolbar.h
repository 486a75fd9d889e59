#pragma once
// "AOL Toolbar" with its inner bar "_AOL_Toolbar": buttons and, while signed on, the keyword box.
#include "aolhost/Controls.h"

namespace aolhost {

class ToolbarBar;

class Toolbar final : public Window {
public:
    static constexpr int kHeight = 76;
    static void registerClasses();
    explicit Toolbar(HWND frame);

    void showKeywordBox(bool visible);
    void focusKeyword();

protected:
    LRESULT handle(UINT message, WPARAM wParam, LPARAM lParam) override;

private:
    ToolbarBar* bar_ = nullptr;
};

} // namespace aolhost
