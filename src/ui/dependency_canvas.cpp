#include "ui/dependency_canvas.h"

#include <wx/dcbuffer.h>

#include <algorithm>
#include <chrono>
#include <cmath>
#include <memory>
#include <utility>

#include "ui/observe.h"
#include "ui/palette.h"

namespace gorbex::ui {
namespace {

constexpr double kZoomStep = 1.25;
constexpr double kMoveStep = 80;

PicturePoint InWindow(const wxPoint& point) {
  return {static_cast<double>(point.x), static_cast<double>(point.y)};
}

void AddTo(wxGraphicsPath& path, const GroupCurve& curve) {
  path.MoveToPoint(curve.start.x, curve.start.y);
  path.AddCurveToPoint(curve.control1.x, curve.control1.y, curve.control2.x, curve.control2.y,
                       curve.end.x, curve.end.y);
}

/// Strokes many curves, a few at a time: one long path takes longer than all its parts.
class Strokes {
 public:
  explicit Strokes(wxGraphicsContext& context) : context_(context), path_(context.CreatePath()) {}

  void Add(const GroupCurve& curve) {
    constexpr int kAtOnce = 16;
    AddTo(path_, curve);
    if (++count_ >= kAtOnce) Draw();
  }

  void Draw() {
    if (count_ == 0) return;
    context_.StrokePath(path_);
    path_ = context_.CreatePath();
    count_ = 0;
  }

 private:
  wxGraphicsContext& context_;
  wxGraphicsPath path_;
  int count_ = 0;
};

void DrawTip(wxGraphicsContext& context, const PicturePoint& at, const wxColour& colour) {
  constexpr double kLength = 7;
  constexpr double kHalf = 3.5;
  wxGraphicsPath path = context.CreatePath();
  path.MoveToPoint(at.x, at.y);
  path.AddLineToPoint(at.x + kLength, at.y - kHalf);
  path.AddLineToPoint(at.x + kLength, at.y + kHalf);
  path.CloseSubpath();
  context.SetBrush(context.CreateBrush(wxBrush(colour)));
  context.FillPath(path);
}

}  // namespace

DependencyCanvas::DependencyCanvas(wxWindow* parent, DependencyPicture& picture,
                                   std::function<void()> activated)
    : picture_(picture),
      activated_(std::move(activated)),
      view_(parent->FromDIP(100) / 100.0),
      tiles_(*this),
      tip_(*parent) {
  SetBackgroundStyle(wxBG_STYLE_PAINT);
  Create(parent, wxID_ANY, wxDefaultPosition, wxDefaultSize, wxWANTS_CHARS | wxBORDER_THEME,
         "dependencyCanvas");
  SetLabel("Picture of the dependencies; the list beside it says the same");
  Bind(wxEVT_PAINT, &DependencyCanvas::OnPaint, this);
  Observe(*this, wxEVT_SIZE, [this] {
    const wxSize size = GetClientSize();
    const double scale = view_.Scale();
    view_.SetWindow(size.x, size.y);
    scale == view_.Scale() ? Refresh() : Redraw();
  });
  Observe(*this, wxEVT_SYS_COLOUR_CHANGED, [this] { Redraw(); });
  Bind(wxEVT_KEY_DOWN, &DependencyCanvas::OnKey, this);
  BindMouse();
  subscriptions_.Add(picture_.laidOut, [this] { TakeLayout(); });
  subscriptions_.Add(picture_.restated, [this] { Redraw(); });
  TakeLayout();
}

void DependencyCanvas::BindMouse() {
  Bind(wxEVT_LEFT_DOWN, &DependencyCanvas::OnPress, this);
  Bind(wxEVT_MOTION, &DependencyCanvas::OnMotion, this);
  Bind(wxEVT_LEFT_UP, &DependencyCanvas::OnRelease, this);
  Bind(wxEVT_MOUSE_CAPTURE_LOST,
       [this](wxMouseCaptureLostEvent&) { isPressed_ = isDragging_ = false; });
  Bind(wxEVT_LEFT_DCLICK, [this](wxMouseEvent& event) {
    if (ProjectAt(event.GetPosition())) activated_();
  });
  Bind(wxEVT_MOUSEWHEEL, &DependencyCanvas::OnWheel, this);
}

void DependencyCanvas::TakeLayout() {
  names_.clear();
  for (const PictureProject& project : picture_.Projects()) {
    names_.push_back(wxString::FromUTF8(project.name));
  }
  textShare_ = 0;
  tipProject_.reset();
  view_.SetPicture(picture_.Layout().width, picture_.Layout().height);
  Redraw();
}

void DependencyCanvas::ShowWhole() {
  view_.Fit();
  Redraw();
}

void DependencyCanvas::ShowFull() {
  view_.ShowFull();
  ShowSelected();
  Redraw();
}

void DependencyCanvas::ShowSelected() {
  if (const auto selected = picture_.Selected()) view_.Reveal(picture_.Layout().boxes[*selected]);
  Refresh();
}

wxRect DependencyCanvas::PlaceOf(std::size_t project) const {
  const GroupBox& box = picture_.Layout().boxes[project];
  const PicturePoint corner = view_.ToWindow({box.x, box.y});
  const auto pixels = [this](double length) {
    return static_cast<int>(std::lround(length * view_.Scale()));
  };
  return {static_cast<int>(std::lround(corner.x)), static_cast<int>(std::lround(corner.y)),
          pixels(box.width), pixels(box.height)};
}

// While the picture is dragged, a part that takes too long is drawn a moment later.
void DependencyCanvas::OnPaint(wxPaintEvent& /*event*/) {
  constexpr std::chrono::milliseconds kFrame(20);
  wxAutoBufferedPaintDC dc(this);
  dc.SetBackground(wxBrush(Rgb(ColoursOf(SchemeInUse()).paper)));
  dc.Clear();
  const PicturePoint corner = view_.ToPicture({0, 0});
  const wxRect seen(wxPoint(static_cast<int>(std::lround(corner.x * view_.Scale())),
                            static_cast<int>(std::lround(corner.y * view_.Scale()))),
                    GetClientSize());
  const auto draw = [this](wxDC& tile, const wxRect& part) { DrawPart(tile, part); };
  const bool isWhole =
      tiles_.Paint(dc, seen, draw, isDragging_ ? std::optional(kFrame) : std::nullopt);
  if (!isWhole) CallAfter([this] { Refresh(); });
  DrawHeadings(dc);
}

wxFont DependencyCanvas::FontOf(double pixels) const {
  return {wxFontInfo(wxSize(0, static_cast<int>(pixels))).FaceName(GetFont().GetFaceName())};
}

// All texts are drawn as lists draw theirs: a graphics context may not know the desktop's font.
void DependencyCanvas::DrawNames(wxDC& dc, const wxRect& part) {
  constexpr int kLeastLetters = 4;
  const double scale = view_.Scale();
  const double size = kPictureTextSize * textShare_ * scale;
  if (size < kLeastLetters) return;
  dc.SetFont(FontOf(size));
  const int height = dc.GetCharHeight();
  const Scheme scheme = SchemeInUse();
  const auto& boxes = picture_.Layout().boxes;
  for (std::size_t project = 0; project < boxes.size(); ++project) {
    const GroupBox& box = boxes[project];
    const auto x = std::lround((box.x + kPicturePadding + kPictureMark) * scale);
    const auto middle = std::lround((box.y + box.height / 2) * scale);
    const wxPoint at(static_cast<int>(x) - part.x, static_cast<int>(middle) - part.y - height / 2);
    const wxRect room(at, wxSize(static_cast<int>(box.width * scale), height));
    if (!room.Intersects(wxRect(part.GetSize()))) continue;
    dc.SetTextForeground(Rgb(ColoursOf(picture_.StateOf(project), scheme).text));
    dc.DrawText(names_[project], at);
  }
}

void DependencyCanvas::DrawPart(wxDC& dc, const wxRect& part) {
  dc.SetBackground(wxBrush(Rgb(ColoursOf(SchemeInUse()).paper)));
  dc.Clear();
  MeasureNames(dc);
  std::unique_ptr<wxGraphicsContext> context(wxGraphicsContext::CreateFromUnknownDC(dc));
  if (context == nullptr) return;
  const double scale = view_.Scale();
  context->Translate(-part.x, -part.y);
  context->Scale(scale, scale);
  seen_ = {part.x / scale, part.y / scale, part.width / scale, part.height / scale};
  PictureDrawing drawing(*context, scale);
  DrawBands(drawing, *context);
  DrawLines(drawing, *context);
  DrawSelectedLines(drawing, *context);
  DrawBoxes(drawing);
  context.reset();  // what it transforms would be transformed again
  DrawNames(dc, part);
}

void DependencyCanvas::Redraw() {
  tiles_.Clear();
  Refresh();
}

// The layout assumes a wide font; the desktop's may be wider still.
void DependencyCanvas::MeasureNames(wxDC& dc) {
  if (textShare_ > 0) return;
  constexpr int kTimes = 8;  // widths in pixels would be too coarse
  textShare_ = 1;
  dc.SetFont(FontOf(kTimes * kPictureTextSize));
  for (std::size_t project = 0; project < names_.size(); ++project) {
    const double width = static_cast<double>(dc.GetTextExtent(names_[project]).x) / kTimes;
    const double room =
        picture_.Layout().boxes[project].width - kPictureMark - 1.5 * kPicturePadding;
    if (width > room) textShare_ = std::min(textShare_, room / width);
  }
}

bool DependencyCanvas::IsSeen(const GroupCurve& curve) const {
  const auto [left, right] =
      std::minmax({curve.start.x, curve.control1.x, curve.control2.x, curve.end.x});
  const auto [top, bottom] = std::minmax(curve.start.y, curve.end.y);
  return left - 8 <= seen_.GetRight() && right + 8 >= seen_.m_x && top - 4 <= seen_.GetBottom() &&
         bottom + 4 >= seen_.m_y;
}

void DependencyCanvas::DrawBands(PictureDrawing& drawing, wxGraphicsContext& context) {
  context.SetPen(*wxTRANSPARENT_PEN);
  context.SetBrush(context.CreateBrush(wxBrush(Rgb(drawing.Colours().band))));
  const auto& levels = picture_.Layout().levels;
  for (std::size_t level = 0; level < levels.size(); level += 2) {
    context.DrawRectangle(levels[level].x, seen_.m_y, levels[level].width, seen_.m_height);
  }
}

// They stay at the upper edge of the window, whatever part of the picture is shown.
void DependencyCanvas::DrawHeadings(wxDC& dc) {
  const PictureColours colours = ColoursOf(SchemeInUse());
  const double scale = view_.Scale();
  dc.SetFont(FontOf(kPictureTextSize * std::max(scale, 0.75 * FromDIP(100) / 100)).Bold());
  dc.SetTextForeground(Rgb(colours.text));
  dc.SetPen(*wxTRANSPARENT_PEN);
  const auto& levels = picture_.Layout().levels;
  for (std::size_t level = 0; level < levels.size(); ++level) {
    const GroupBand& band = levels[level];
    const std::uint32_t colour = level % 2 == 0 ? colours.band : colours.paper;
    const auto left = static_cast<int>(std::lround(view_.ToWindow({band.x, 0}).x));
    const wxRect place(left, 0, static_cast<int>(std::lround(band.width * scale)),
                       dc.GetCharHeight() * 3 / 2);
    dc.SetBrush(wxBrush(Rgb(colour)));
    dc.DrawRectangle(place);
    const wxString wide = wxString::Format("Level %zu", level);
    const int edge = FromDIP(4);
    const bool fits = dc.GetTextExtent(wide).x + 2 * edge <= place.width;
    dc.DrawLabel(fits ? wide : wxString::Format("%zu", level), place.Deflate(edge, 0),
                 wxALIGN_CENTRE_VERTICAL);
  }
}

void DependencyCanvas::DrawLines(PictureDrawing& drawing, wxGraphicsContext& context) {
  // In a small picture the lines are paler, since they cannot be thinner than a pixel.
  constexpr double kPale = 0.3;
  const double strength = std::clamp(1.4 * view_.Scale(), kPale, 1.0);
  wxColour line = Rgb(drawing.Colours().line);
  line.Set(line.Red(), line.Green(), line.Blue(), static_cast<unsigned char>(255 * strength));
  const wxColour circle = Rgb(drawing.Colours().circle);
  for (const bool isInCircle : {false, true}) {
    Strokes strokes(context);
    context.SetPen(drawing.Pen(isInCircle ? circle : line, isInCircle ? 1.8 : 1.1));
    for (const GroupCurve& curve : picture_.Layout().curves) {
      if (curve.isInCircle == isInCircle && IsSeen(curve)) strokes.Add(curve);
    }
    strokes.Draw();
  }
  std::vector<bool> hasTip(names_.size(), false);
  for (const GroupLine& each : picture_.Layout().lines) {
    const GroupCurve& last = picture_.Layout().curves[each.curves.back()];
    if (!IsSeen(last) || (!last.isInCircle && hasTip[each.used])) continue;
    if (!last.isInCircle) hasTip[each.used] = true;
    DrawTip(context, last.end, last.isInCircle ? circle : line);
  }
}

void DependencyCanvas::DrawSelectedLines(PictureDrawing& drawing, wxGraphicsContext& context) {
  const auto selected = picture_.Selected();
  if (!selected) return;
  Strokes strokes(context);
  context.SetPen(drawing.Pen(LinkColour(), 2.4));
  for (const GroupLine& line : picture_.Layout().lines) {
    if (line.user != *selected && line.used != *selected) continue;
    for (const std::size_t curve : line.curves) strokes.Add(picture_.Layout().curves[curve]);
  }
  strokes.Draw();
}

void DependencyCanvas::DrawBoxes(PictureDrawing& drawing) {
  // With what is drawn around a box.
  wxRect2DDouble seen = seen_;
  seen.Inset(-8, -8);
  const auto& boxes = picture_.Layout().boxes;
  for (std::size_t project = 0; project < boxes.size(); ++project) {
    const GroupBox& box = boxes[project];
    const wxRect2DDouble place(box.x, box.y, box.width, box.height);
    if (!seen.Intersects(place)) continue;
    const ProjectState state = picture_.StateOf(project);
    drawing.DrawBox(place, state, box.isInCircle, picture_.Selected() == project);
  }
}

std::optional<std::size_t> DependencyCanvas::ProjectAt(const wxPoint& point) const {
  return picture_.At(view_.ToPicture(InWindow(point)));
}

void DependencyCanvas::OnPress(wxMouseEvent& event) {
  SetFocus();
  last_ = event.GetPosition();
  isPressed_ = true;
  isDragging_ = false;
  if (!HasCapture()) CaptureMouse();
}

void DependencyCanvas::OnMotion(wxMouseEvent& event) {
  const wxPoint at = event.GetPosition();
  if (isPressed_ && event.LeftIsDown()) {
    const wxPoint way = at - last_;
    const int least = FromDIP(4);
    isDragging_ = isDragging_ || std::abs(way.x) > least || std::abs(way.y) > least;
    if (!isDragging_) return;
    last_ = at;
    Move(way.x, way.y);
    return;
  }
  const auto project = ProjectAt(at);
  if (project == tipProject_) return;
  tipProject_ = project;
  tip_.Show(*this, project ? wxString::FromUTF8(picture_.NoteOf(*project)) : wxString());
}

void DependencyCanvas::OnRelease(wxMouseEvent& event) {
  if (HasCapture()) ReleaseMouse();
  const bool isClick = isPressed_ && !isDragging_;
  isPressed_ = isDragging_ = false;
  if (!isClick) return;
  if (const auto project = ProjectAt(event.GetPosition())) picture_.Select(*project);
}

// With a key held down it moves the picture, as in other windows.
void DependencyCanvas::OnWheel(wxMouseEvent& event) {
  const double turns = static_cast<double>(event.GetWheelRotation()) / event.GetWheelDelta();
  const bool isSideways = event.GetWheelAxis() == wxMOUSE_WHEEL_HORIZONTAL;
  if (isSideways || event.ShiftDown()) {
    Move((isSideways ? -turns : turns) * FromDIP(static_cast<int>(kMoveStep)), 0);
  } else if (event.AltDown()) {
    Move(0, turns * FromDIP(static_cast<int>(kMoveStep)));
  } else {
    Zoom(std::pow(kZoomStep, turns), event.GetPosition());
  }
}

void DependencyCanvas::Zoom(double factor, const wxPoint& at) {
  view_.Zoom(factor, InWindow(at));
  Redraw();
}

void DependencyCanvas::ZoomInMiddle(double factor) {
  const wxSize size = GetClientSize();
  Zoom(factor, {size.x / 2, size.y / 2});
}

void DependencyCanvas::Move(double x, double y) {
  view_.Move(x, y);
  Refresh();
}

void DependencyCanvas::Step(DependencyPicture::Way way) {
  picture_.Step(way);
  ShowSelected();
}

void DependencyCanvas::OnKey(wxKeyEvent& event) {
  using Way = DependencyPicture::Way;
  const double step = event.ControlDown() ? FromDIP(static_cast<int>(kMoveStep)) : 0;
  const bool isOther = event.AltDown() || (event.ControlDown() && event.GetKeyCode() < 128);
  switch (isOther ? 0 : event.GetKeyCode()) {
    case WXK_LEFT:
      step > 0 ? Move(step, 0) : Step(Way::ToUsed);
      break;
    case WXK_RIGHT:
      step > 0 ? Move(-step, 0) : Step(Way::ToUser);
      break;
    case WXK_UP:
      step > 0 ? Move(0, step) : Step(Way::Up);
      break;
    case WXK_DOWN:
      step > 0 ? Move(0, -step) : Step(Way::Down);
      break;
    case '+':
    case '=':
    case WXK_NUMPAD_ADD:
      ZoomInMiddle(kZoomStep);
      break;
    case '-':
    case WXK_NUMPAD_SUBTRACT:
      ZoomInMiddle(1 / kZoomStep);
      break;
    case 'F':
    case '0':
    case WXK_NUMPAD0:
      ShowWhole();
      break;
    case '1':
    case WXK_NUMPAD1:
      ShowFull();
      break;
    case WXK_RETURN:
    case WXK_NUMPAD_ENTER:
      activated_();
      break;
    case WXK_TAB:
      Navigate(event.ShiftDown() ? wxNavigationKeyEvent::IsBackward
                                 : wxNavigationKeyEvent::IsForward);
      break;
    default:
      event.Skip();
  }
}

}  // namespace gorbex::ui
