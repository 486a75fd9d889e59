#pragma once

namespace velora {

/// Switches AOL's own reception of instant messages off or on, by sending an IM to "$im_off" or
/// "$im_on", and closes the windows that AOL opens for that. False when AOL isn't signed on (the
/// user is told), or did not confirm in time. Pumps messages, at most 20 seconds.
bool TempIgnore(bool off);

} // namespace velora
