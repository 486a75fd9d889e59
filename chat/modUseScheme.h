#pragma once
#include "chat/modSchemeFiles.h"

namespace velora {

/// Makes a saved scheme the fade in use. False when it cannot be read, which the user is told
/// (pumps).
bool useScheme(const clsSchemes& schemes, const std::wstring& name);

} // namespace velora
