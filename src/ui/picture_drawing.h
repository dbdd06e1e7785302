#pragma once

#include <wx/colour.h>
#include <wx/graphics.h>
#include <wx/window.h>

#include <cstdint>

#include "analysis/group_layout.h"
#include "analysis/project_state.h"

namespace gorbex::ui {

/// Draws the parts of the picture of a group, in its units; the context's transformation makes
/// pixels of them.
class PictureDrawing {
 public:
  /// `pixels` is how many pixels a unit has.
  PictureDrawing(wxGraphicsContext& context, const wxWindow& window, double pixels);

  [[nodiscard]] const PictureColours& Colours() const { return colours_; }
  [[nodiscard]] static wxColour ColourOf(std::uint32_t colour);

  /// A pen of at least one pixel.
  [[nodiscard]] wxGraphicsPen Pen(const wxColour& colour, double width) const;

  /// The first font that the context can draw: some systems' fonts of dialogs are only names for
  /// others, which it does not know.
  [[nodiscard]] wxString DrawableFace();

  /// The font of all texts, and how large they are: 1 is as designed, less leaves none of them
  /// wider than its room in a box.
  void SetText(const wxString& face, double share);

  /// The font of names, in a colour.
  [[nodiscard]] wxGraphicsFont Font(const wxColour& colour) const;

  /// Sets the font of headings, so many times as large as names.
  void SetHeadingFont(double share);

  void DrawBox(const wxRect2DDouble& place, ProjectState state, bool isInCircle, bool isSelected);

  /// A text whose middle is at a height, in the font that was set last.
  void DrawMiddle(const wxString& text, double x, double middle);

 private:
  void DrawMark(const wxRect2DDouble& place, StateMark mark, const wxColour& colour);

  wxGraphicsContext& context_;
  const wxWindow& window_;
  double pixels_;
  Scheme scheme_;
  PictureColours colours_;
  wxString face_;
  double textSize_ = kPictureTextSize;
};

}  // namespace gorbex::ui
