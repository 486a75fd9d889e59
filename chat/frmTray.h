#pragma once
// The program's icon in the notification area of the task bar: for those who like the menu there,
// and the way back while the panel is hidden. Its window is never seen. It hears the icon's clicks
// and that a new task bar has come up, which knows no icon any more.
#include "ui/Form.h"
#include "ui/Timer.h"

#include <string>
#include <string_view>

namespace velora {

class frmTray final : public Form {
public:
    frmTray() : Form("frmTray") {}

    /// Shows the icon with this tip, or gives it another tip.
    static void showIcon(std::wstring_view tip);
    /// Takes the icon away.
    static void hideIcon();
    /// The icon of this program, if there is one.
    static frmTray* instance() { return find<frmTray>(); }

    /// Whether the task bar has taken the icon.
    bool shown() const { return added_; }

protected:
    FormOptions options() const override;
    void onDestroy() override;
    std::optional<LRESULT> onMessage(UINT message, WPARAM wParam, LPARAM lParam) override;

private:
    void put();
    NOTIFYICONDATAW data(UINT flags) const;
    void clicked(UINT mouse);
    void showMenu();

    std::wstring tip_;
    bool added_ = false;
    int tries_ = 0;
    Timer tmrAgain; // while the task bar is not there yet
};

} // namespace velora
