#include "ui/picture_drawing.h"

#include <wx/brush.h>

#include <algorithm>

#include "ui/palette.h"

namespace gorbex::ui {

PictureDrawing::PictureDrawing(wxGraphicsContext& context, double pixels)
    : context_(context), pixels_(pixels), scheme_(SchemeInUse()), colours_(ColoursOf(scheme_)) {}

wxGraphicsPen PictureDrawing::Pen(const wxColour& colour, double width) const {
  return context_.CreatePen(wxGraphicsPenInfo(colour).Width(std::max(width, 1 / pixels_)));
}

void PictureDrawing::DrawBox(const wxRect2DDouble& place, ProjectState state, bool isInCircle,
                             bool isSelected) {
  constexpr double kCorner = 4;
  const BoxColours colours = ColoursOf(state, scheme_);
  const wxColour border = Rgb(isInCircle ? colours_.circle : colours.border);
  if (isSelected) {
    constexpr double kRing = 4;
    context_.SetBrush(*wxTRANSPARENT_BRUSH);
    context_.SetPen(Pen(LinkColour(), 3));
    context_.DrawRoundedRectangle(place.m_x - kRing, place.m_y - kRing, place.m_width + 2 * kRing,
                                  place.m_height + 2 * kRing, kCorner + kRing);
  }
  wxGraphicsPenInfo pen(border);
  pen.Width(std::max(isInCircle || IsLoud(state) ? 2.5 : 1.0, 1 / pixels_));
  if (state == ProjectState::Skipped) pen.Style(wxPENSTYLE_SHORT_DASH);
  context_.SetPen(context_.CreatePen(pen));
  context_.SetBrush(context_.CreateBrush(wxBrush(Rgb(colours.fill))));
  context_.DrawRoundedRectangle(place.m_x, place.m_y, place.m_width, place.m_height, kCorner);
  DrawMark(place, MarkOf(state), Rgb(colours.text));
}

void PictureDrawing::DrawMark(const wxRect2DDouble& place, StateMark mark, const wxColour& colour) {
  const auto strokes = StrokesOf(mark);
  if (strokes.empty()) return;
  const double x = place.m_x + kPicturePadding - 2;
  const double y = place.m_y + place.m_height / 2;
  wxGraphicsPath path = context_.CreatePath();
  for (const auto& stroke : strokes) {
    path.MoveToPoint(x + stroke.front().x, y + stroke.front().y);
    for (const MarkPoint& point : stroke) path.AddLineToPoint(x + point.x, y + point.y);
  }
  context_.SetPen(Pen(colour, 1.8));
  context_.StrokePath(path);
}

}  // namespace gorbex::ui
