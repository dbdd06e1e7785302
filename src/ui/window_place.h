#pragma once

#include <wx/gdicmn.h>
#include <wx/toplevel.h>

#include <vector>

#include "core/main_window.h"

namespace gorbex::ui {

/// Twips and the toolkit's pixels. A twip is a 1440th of an inch, of which a DIP is a 96th.
[[nodiscard]] WindowPosition InTwips(const wxRect& dips);
[[nodiscard]] wxRect InDips(const WindowPosition& twips);

/// The rectangle, moved and cut so that the window can be seen and moved on one of the screens; on
/// the main screen if its own is gone.
[[nodiscard]] wxRect OnSomeScreen(const wxRect& wanted, const std::vector<wxRect>& screens,
                                  const wxSize& smallest);

/// A window of that size in the middle of a screen, cut where the screen is smaller.
[[nodiscard]] wxRect InTheMiddle(const wxSize& wanted, const wxRect& screen);

/// Where a window is.
[[nodiscard]] WindowPosition PlaceOf(const wxTopLevelWindow& window);

/// Puts a window there, or where it fits on the present screens, but not smaller than it may be.
void PutOnScreen(wxTopLevelWindow& window, const WindowPosition& place);

}  // namespace gorbex::ui
