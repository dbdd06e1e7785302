#pragma once

#include <wx/bmpbndl.h>
#include <wx/iconbndl.h>
#include <wx/vector.h>
#include <wx/window.h>

#include <string_view>

#include "core/appearance.h"

namespace gorbex::ui {

/// An icon by its file's name, in DIP; empty when there is none of that name.
[[nodiscard]] wxBitmapBundle Icon(std::string_view name, int size = 16);

/// How large an icon beside a text of this window is, in DIP: it grows with the font.
[[nodiscard]] int IconSize(const wxWindow& window);

/// The program's own icon in the sizes that window frames ask for.
[[nodiscard]] wxIconBundle ProgramIcons();

/// The icons of tree nodes and list rows, at the index of their `Image`; the size is in DIP.
[[nodiscard]] wxVector<wxBitmapBundle> RowIcons(int size);

}  // namespace gorbex::ui
