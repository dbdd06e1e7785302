#pragma once

#include <wx/colour.h>
#include <wx/graphics.h>

#include "analysis/group_layout.h"
#include "analysis/project_state.h"

namespace gorbex::ui {

/// Draws the parts of the picture of a group, in its units; the context's transformation makes
/// pixels of them.
class PictureDrawing {
 public:
  /// `pixels` is how many pixels a unit has.
  PictureDrawing(wxGraphicsContext& context, double pixels);

  [[nodiscard]] const PictureColours& Colours() const { return colours_; }

  /// A pen of at least one pixel.
  [[nodiscard]] wxGraphicsPen Pen(const wxColour& colour, double width) const;

  void DrawBox(const wxRect2DDouble& place, ProjectState state, bool isInCircle, bool isSelected);

 private:
  void DrawMark(const wxRect2DDouble& place, StateMark mark, const wxColour& colour);

  wxGraphicsContext& context_;
  double pixels_;
  Scheme scheme_;
  PictureColours colours_;
};

}  // namespace gorbex::ui
