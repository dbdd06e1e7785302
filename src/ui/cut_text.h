#pragma once

#include <wx/dc.h>

#include <cstddef>

namespace gorbex::ui {

/// A text that is wider than the room, in pixels, gets "..." in place of its middle. What tells it
/// apart begins at `end`: of all texts that is cut last.
[[nodiscard]] wxString CutText(const wxString& text, std::size_t end, const wxDC& dc, int room);

/// As CutText: what tells a path apart is the name at its end.
[[nodiscard]] inline wxString CutPath(const wxString& path, const wxDC& dc, int room) {
  return CutText(path, path.rfind('\\'), dc, room);
}

}  // namespace gorbex::ui
