#pragma once
// "AOL Frame25": the main window with its menus, tool bar and workspace.
#include "aolhost/Window.h"

#include <string>

namespace aolhost {

class Document;
class Toolbar;

/// A command line of the pipe or the script, run on the window thread: LPARAM is the Request.
constexpr UINT kRunRequest = WM_APP + 1;
/// AOL is to end: WPARAM 1 by a crash, 0 in order.
constexpr UINT kEnd = WM_APP + 2;

class Frame final : public Window {
public:
    Frame();

    HWND mdiClient() const { return client_; }
    Document* activeDocument() const;
    /// Signed on or off: the keyword box comes or goes, menu items are enabled or greyed.
    void onlineChanged();
    void focusKeyword();
    /// Where the next document of that size opens: a cascade that stays in the workspace.
    POINT nextPlace(SIZE size);
    UINT nextChildId() { return nextChildId_++; }
    /// True when the message was a key that the frame uses (menus, Tab in a document).
    bool translate(MSG& message);

protected:
    LRESULT handle(UINT message, WPARAM wParam, LPARAM lParam) override;
    LRESULT classDefault(UINT message, WPARAM wParam, LPARAM lParam) override;

private:
    void build();
    void layout();
    bool command(int id);
    bool receive(const COPYDATASTRUCT& data);
    HWND client_ = nullptr;
    Toolbar* toolbar_ = nullptr;
    HACCEL keys_ = nullptr;
    int cascade_ = 0;
    UINT nextChildId_ = 50100;
};

} // namespace aolhost
