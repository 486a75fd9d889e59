#pragma once

namespace velora {

inline constexpr wchar_t kProductName[] = L"Velora";
/// The folder that the installer makes; an installation elsewhere is an older one.
inline constexpr wchar_t kProgramFolderName[] = L"Velora 10";

} // namespace velora
