#pragma once

namespace gorbex::ui {

// Distances in forms, in pixels of a screen of ordinary density.
inline constexpr int kMargin = 12;  ///< between a form's border and what it holds
inline constexpr int kGap = 8;      ///< between two things in it

}  // namespace gorbex::ui
