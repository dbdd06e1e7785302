#pragma once

#include <wx/bitmap.h>
#include <wx/dc.h>
#include <wx/gdicmn.h>
#include <wx/window.h>

#include <chrono>
#include <functional>
#include <map>
#include <optional>
#include <utility>

namespace gorbex::ui {

/// A large picture in squares that are drawn once: moving it costs only what comes into sight.
class PictureTiles {
 public:
  /// Draws a part of the picture, given in its pixels.
  using Draw = std::function<void(wxDC& dc, const wxRect& part)>;

  explicit PictureTiles(const wxWindow& window) : window_(window) {}

  /// Has everything drawn again.
  void Clear() { tiles_.clear(); }

  /// Paints a part of the picture at the context's origin. With a time limit, squares that are not
  /// drawn in it are left out; false then.
  bool Paint(wxDC& dc, const wxRect& part, const Draw& draw,
             std::optional<std::chrono::milliseconds> limit);

 private:
  /// Draws many squares at once: a shape that crosses several of them is drawn only once.
  void DrawMissing(const wxRect& part, const Draw& draw);
  [[nodiscard]] wxBitmap Drawn(const wxRect& part, const Draw& draw) const;

  const wxWindow& window_;
  std::map<std::pair<int, int>, wxBitmap> tiles_;
};

}  // namespace gorbex::ui
