#pragma once

namespace aolhost {

/// Does what the frame's menu item does; false for an identifier that is none of ours.
bool runMenuCommand(int id);

} // namespace aolhost
