#include "core/frmMain.h"

#include "base/product.h"
#include "base/trap.h"
#include "ui/Fonts.h"
#include "ui/MessageLoop.h"

namespace velora {

FormOptions frmMain::options() const
{
    FormOptions options;
    options.title = kProductName;
    options.minimizeBox = true;
    options.icon = LoadIconW(GetModuleHandleW(nullptr), MAKEINTRESOURCEW(1));
    return options;
}

void frmMain::onCreate()
{
    lblTitle.create(*this, kProgramFolderName);
    lblTitle.setFont(uiFont({.bold = true, .scale = 130}));
    lblStatus.create(*this, L"");
    pgbLoading.create(*this, 100);
    lblStatus.setPreferredSize({360, 0});
    setLayout(rows({lblTitle, lblStatus, pgbLoading}).margins());
}

bool frmMain::onClose(CloseReason reason)
{
    // Closing it during a long wait for AOL means: don't start after all. The waits see the quit.
    if (reason == CloseReason::user) {
        cancelled_ = true;
        quitMessageLoop();
    }
    return true;
}

void frmMain::MoveStatusBar(std::wstring_view text, int percent)
{
    trap("frmMain", [&] {
        lblStatus.setText(text);
        pgbLoading.setValue(percent);
        doEvents();
    });
}

} // namespace velora
