#pragma once
// What the toolbar's mail button and its encrypt button do in AOL's mail windows.

namespace velora {

struct ToolbarRoutes;
class Menu;

/// Fills the routes that lead here. Call it before the toolbar is made.
void routeMail(ToolbarRoutes& routes);

/// Encrypts the selection, or the whole, of the mail that is being written (cmdEncrypt). All of
/// these tell the user why they can't, and pump messages.
bool EncryptMail();
/// Takes the last encryption back while that mail is open and unchanged since.
bool UndoEncryption();
bool canUndoEncryption();
/// Shows the encrypted text of the mail in front (mnuDecrypt).
bool DecryptMail();

/// Fades what is selected in the mail that is being written.
bool FadeMailSelection();
/// Attaches the sound that is chosen in the wav list, or else one that the user picks, to the mail
/// that is being written.
bool AttachSound();
/// Opens a new mail to somebody whom the user names.
bool WriteMailTo();

} // namespace velora
