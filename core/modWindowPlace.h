#pragma once
// Where windows were when the user closed them, kept in the settings as "left,top,right,bottom".
#include "ui/Geometry.h"

#include <optional>
#include <string_view>

namespace velora {

/// The remembered place; absent when there is none, or its value is none. Whether it still lies on
/// a screen is for the form to see.
std::optional<Rect> rememberedPlace(std::wstring_view section, std::wstring_view key = L"Position");
/// A place that cannot be written is not remembered; that is no reason to trouble the user.
void rememberPlace(std::wstring_view section, const Rect& place,
                   std::wstring_view key = L"Position");

} // namespace velora
