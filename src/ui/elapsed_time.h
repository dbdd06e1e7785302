#pragma once

#include <wx/string.h>

#include <chrono>

namespace gorbex::ui {

/// "0.4 s", "12 s" or "3:05".
[[nodiscard]] wxString ElapsedText(std::chrono::milliseconds elapsed);

}  // namespace gorbex::ui
