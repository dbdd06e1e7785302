#pragma once

#include <wx/colour.h>
#include <wx/window.h>

#include <cstdint>

#include "analysis/project_state.h"
#include "core/appearance.h"

namespace gorbex::ui {

/// A colour of a picture, "0xRRGGBB".
[[nodiscard]] wxColour Rgb(std::uint32_t colour);

/// Whether the desktop's theme has light texts on a dark background.
[[nodiscard]] bool IsDark();

/// The colour of the program's rows on the toolkit's list background, in light and dark themes.
[[nodiscard]] wxColour TextColour(Colour colour);

/// The colour of texts that only explain.
[[nodiscard]] wxColour HintColour();

/// The background of a list's selected row while the list does not have the keyboard; the row's
/// text has its usual colour.
[[nodiscard]] wxColour PaleSelectionColour();

/// The colour of links, and of the part that has the keyboard.
[[nodiscard]] wxColour LinkColour();

/// The colour of a text that the user should notice before going on.
[[nodiscard]] wxColour WarningColour();

/// Draws a window again when the keyboard comes or goes.
void RefreshWithFocus(wxWindow& window);

/// The colours for pictures, which fit the background of lists.
[[nodiscard]] Scheme SchemeInUse();

/// The colour of the critical path.
[[nodiscard]] wxColour CriticalColour();

}  // namespace gorbex::ui
