#pragma once
// AOL's mail and board windows as the buttons on them need to know them. Only MailAdvertise sends
// AOL a message.
#include "base/win.h"
#include "chat/modMailBar.h"

namespace velora {

/// AOL's document in front, of whatever kind; 0 when there is none, or it is minimised.
HWND frontDocument();

/// What can be told of a window by its controls and its caption: the kinds in which one writes.
MailKind writtenKind(HWND document);

/// Where the bar may stand on a document: in its title bar, or while it is maximised in AOL's menu
/// bar, with what lies there already.
struct MailBarRoom {
    Rect line;
    std::vector<Rect> inTheWay;
};
MailBarRoom mailBarRoom(HWND document);

/// Whether a window of AOL's lies over a part of its frame.
bool coveredByAol(const Rect& part);

/// Puts the line about Velora at the end of a mail that is being written, unless it has it already,
/// and leaves the cursor where it is. The user is told when it cannot be done. Pumps then.
bool MailAdvertise(HWND mail);

} // namespace velora
