#pragma once
// Our buttons on AOL's mail and board windows: which kind of window has which of them, where they
// stand, and the line that one of them writes. Pure.
#include "ui/Geometry.h"

#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace velora {

enum class MailKind {
    none,
    mail,       ///< a mail is read
    writeMail,  ///< a mail, a reply or a forward is written
    board,      ///< a board's message is read
    boardReply, ///< an answer to one is written
};

/// What tells the kind of one of AOL's documents.
struct MailTraits {
    bool read = false;       ///< a message is read in it, and can be answered
    bool standalone = false; ///< that message is a board's
    bool writes = false;     ///< it has fields and a text to fill
    int fields = 0;          ///< To, Copy To, Subject
    bool reply = false;      ///< its caption is that of a reply or forward
};
MailKind mailKind(const MailTraits& traits);

enum class MailButton { reply, decrypt, fade, encrypt, advertise, tools };
/// The buttons of a kind of window, from left to right.
std::span<const MailButton> mailButtons(MailKind kind);

/// A window of AOL with a title bar, in screen co-ordinates.
struct TitledWindow {
    Rect window, client;
    int boxes = 0;    ///< how many of minimise, maximise and close it has
    int boxWidth = 0; ///< of each
};
/// The part of its title bar in which the bar may stand: between the beginning of the title and the
/// window's own boxes.
Rect titleLine(const TitledWindow& titled);

/// The bar's place: at the right end of the line, farther left where something is in the way, in
/// the middle of its height. Absent when there is no room.
std::optional<Rect> mailBarPlace(const Rect& line, std::vector<Rect> inTheWay, Size bar);

/// The line about Velora, as AOL's HTML, and whether a mail has it already.
std::wstring mailAdvertisement();
bool holdsAdvertisement(std::wstring_view mailText);

} // namespace velora
