#pragma once

#include <wx/dc.h>
#include <wx/graphics.h>
#include <wx/window.h>

#include <functional>
#include <optional>
#include <vector>

#include "analysis/dependency_picture.h"
#include "analysis/picture_view.h"
#include "ui/hover_tip.h"
#include "ui/picture_drawing.h"
#include "ui/picture_tiles.h"

namespace gorbex::ui {

/// Draws the picture of the dependencies. The mouse drags it, the wheel makes it larger and
/// smaller, arrows go along its lines.
class DependencyCanvas : public wxWindow {
 public:
  /// The picture must outlive the canvas. `activated` is called when the user wants to go to the
  /// selected project.
  DependencyCanvas(wxWindow* parent, DependencyPicture& picture, std::function<void()> activated);

  void ShowWhole();
  void ShowFull();

  /// Makes the selected project visible.
  void ShowSelected();

  /// Where a project is drawn, in the canvas's own pixels.
  [[nodiscard]] wxRect PlaceOf(std::size_t project) const;

 private:
  void BindMouse();
  void OnPaint(wxPaintEvent& event);
  void DrawNames(wxDC& dc, const wxRect& part);
  void DrawPart(wxDC& dc, const wxRect& part);
  void DrawBands(PictureDrawing& drawing, wxGraphicsContext& context);
  void DrawHeadings(wxDC& dc);
  void DrawLines(PictureDrawing& drawing, wxGraphicsContext& context);
  void DrawSelectedLines(PictureDrawing& drawing, wxGraphicsContext& context);
  void DrawBoxes(PictureDrawing& drawing);
  void MeasureNames(wxDC& dc);
  [[nodiscard]] wxFont FontOf(double pixels) const;
  [[nodiscard]] bool IsSeen(const GroupCurve& curve) const;
  void Redraw();
  void TakeLayout();
  void OnPress(wxMouseEvent& event);
  void OnMotion(wxMouseEvent& event);
  void OnRelease(wxMouseEvent& event);
  void OnWheel(wxMouseEvent& event);
  void OnKey(wxKeyEvent& event);
  void Zoom(double factor, const wxPoint& at);
  void ZoomInMiddle(double factor);
  void Step(DependencyPicture::Way way);
  void Move(double x, double y);
  [[nodiscard]] std::optional<std::size_t> ProjectAt(const wxPoint& point) const;

  DependencyPicture& picture_;
  std::function<void()> activated_;
  PictureView view_;
  std::vector<wxString> names_;  ///< by the project's number
  PictureTiles tiles_;
  wxRect2DDouble seen_;   ///< of the picture: what is being drawn
  double textShare_ = 0;  ///< of the designed text size; 0 until it is measured
  wxPoint last_;          ///< where the pointer was, while it is pressed
  bool isPressed_ = false;
  bool isDragging_ = false;
  std::optional<std::size_t> tipProject_;
  HoverTip tip_;
  Subscriptions subscriptions_;
};

}  // namespace gorbex::ui
