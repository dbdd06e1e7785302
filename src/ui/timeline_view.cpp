#include "ui/timeline_view.h"

#include <wx/control.h>
#include <wx/dcbuffer.h>
#include <wx/settings.h>

#include <algorithm>
#include <array>

#include "ui/observe.h"
#include "ui/palette.h"
#include "ui/spacing.h"
#include "ui/text_conversion.h"

namespace gorbex::ui {
namespace {

constexpr int kAxisGap = 6;
constexpr int kLaneGap = 6;
constexpr int kCriticalLine = 3;
constexpr int kLeastBar = 3;
constexpr int kLeastText = 24;
constexpr int kLegendBox = 14;
constexpr int kLegendText = 4;  // after the box
constexpr std::array kLegendStates = {ProjectState::Built, ProjectState::Failed,
                                      ProjectState::Building, ProjectState::UpToDate};

wxRect Box(const TimelineLayout::Box& box, const wxPoint& origin) {
  return {origin.x + box.x, origin.y + box.y, box.width, box.height};
}

}  // namespace

TimelineView::TimelineView(wxWindow* parent, LastRunList& list, frmLastRun& form)
    : wxScrolledCanvas(parent, wxID_ANY, wxDefaultPosition, wxDefaultSize,
                       wxVSCROLL | wxFULL_REPAINT_ON_RESIZE | wxWANTS_CHARS, "timeline"),
      list_(list),
      tip_(*parent),
      subscription_(form.timelineChanged.Connect([this] {
        SetVirtualSize(-1, BestHeight());
        Refresh();
      })) {
  SetBackgroundStyle(wxBG_STYLE_PAINT);
  SetScrollRate(0, LaneHeight());
  SetMinSize(FromDIP(wxSize(80, 60)));
  Bind(wxEVT_PAINT, &TimelineView::OnPaint, this);
  // A narrow view has its legend in several lines.
  Observe(*this, wxEVT_SIZE, [this] { SetVirtualSize(-1, BestHeight()); });
  Bind(wxEVT_KEY_DOWN, &TimelineView::OnKey, this);
  Bind(wxEVT_MOTION, [this](wxMouseEvent& event) { Point(event.GetPosition()); });
  Bind(wxEVT_LEAVE_WINDOW, [this](wxMouseEvent&) { tip_.Show(*this, {}); });
  Bind(wxEVT_LEFT_DOWN, [this](wxMouseEvent& event) {
    event.Skip();
    if (const auto bar = BarAt(event.GetPosition())) list_.SelectBar(*bar);
  });
  RefreshWithFocus(*this);
}

wxPoint TimelineView::Origin() const {
  const int label = GetTextExtent("Place 10").x;
  return {FromDIP(kMargin) + label + FromDIP(kGap),
          FromDIP(kGap) + TextHeight() + FromDIP(kAxisGap)};
}

TimelineLayout TimelineView::Bars() const {
  const int width = GetClientSize().x - Origin().x - FromDIP(kMargin);
  return {list_.Timeline(),
          {std::max(width, FromDIP(40)), LaneHeight(), FromDIP(kLaneGap), FromDIP(kLeastBar)}};
}

int TimelineView::BestHeight() const {
  const int lanes = std::max(1, static_cast<int>(list_.Timeline().places));
  return Origin().y + lanes * (LaneHeight() + FromDIP(kLaneGap)) + Legend().back().place.y +
         TextHeight() + 2 * FromDIP(kGap);
}

wxRect TimelineView::PlaceOf(std::size_t bar) const {
  const wxRect box = Box(Bars().BoxOf(list_.Timeline().bars.at(bar)), Origin());
  return {CalcScrolledPosition(box.GetPosition()), box.GetSize()};
}

std::optional<std::size_t> TimelineView::BarAt(const wxPoint& point) const {
  const wxPoint at = CalcUnscrolledPosition(point) - Origin();
  return Bars().BarAt(at.x, at.y);
}

void TimelineView::Point(const wxPoint& point) {
  const auto bar = BarAt(point);
  tip_.Show(*this, bar ? ToWx(list_.TipOfBar(*bar)) : wxString());
}

void TimelineView::OnKey(wxKeyEvent& event) {
  switch (event.GetKeyCode()) {
    case WXK_TAB:
      Navigate(event.ShiftDown() ? wxNavigationKeyEvent::IsBackward
                                 : wxNavigationKeyEvent::IsForward);
      break;
    case WXK_LEFT:
    case WXK_UP:
      list_.SelectNextBar(false);
      break;
    case WXK_RIGHT:
    case WXK_DOWN:
      list_.SelectNextBar(true);
      break;
    default:
      event.Skip();
  }
}

void TimelineView::OnPaint(wxPaintEvent& /*event*/) {
  wxAutoBufferedPaintDC dc(this);
  DoPrepareDC(dc);
  dc.SetBackground(wxSystemSettings::GetColour(wxSYS_COLOUR_LISTBOX));
  dc.Clear();
  dc.SetFont(GetFont());
  const RunTimeline& timeline = list_.Timeline();
  if (timeline.places == 0) return;
  const TimelineLayout layout = Bars();
  DrawAxis(dc, layout);
  DrawLanes(dc, layout);
  const auto selected = list_.SelectedBar();
  for (std::size_t i = 0; i < timeline.bars.size(); ++i) {
    if (i != selected) DrawBar(dc, i, Box(layout.BoxOf(timeline.bars[i]), Origin()), false);
  }
  if (selected) DrawBar(dc, *selected, Box(layout.BoxOf(timeline.bars[*selected]), Origin()), true);
  DrawLegend(dc, Origin().y + layout.Height() + FromDIP(2));
}

void TimelineView::DrawAxis(wxDC& dc, const TimelineLayout& layout) const {
  const wxPoint origin = Origin();
  const int widest = GetTextExtent("00:00").x + FromDIP(4 * kGap);
  const int width = layout.X(list_.Timeline().length);
  const auto most = static_cast<std::size_t>(std::clamp(width / widest, 2, 16));
  dc.SetTextForeground(HintColour());
  dc.SetPen(wxPen(HintColour(), 1, wxPENSTYLE_DOT));
  for (const TimelineTick& tick : TicksOf(list_.Timeline().length, most)) {
    const int x = origin.x + layout.X(tick.time);
    const wxString text = ToWx(tick.text);
    const int half = dc.GetTextExtent(text).x / 2;
    const int right = origin.x + width + FromDIP(kMargin) - 2 * half;
    dc.DrawText(text, std::min(x - half, right), FromDIP(kGap));
    dc.DrawLine(x, origin.y - FromDIP(kAxisGap) / 2, x, origin.y + layout.Height());
  }
}

void TimelineView::DrawLanes(wxDC& dc, const TimelineLayout& layout) const {
  dc.SetTextForeground(HintColour());
  const int pitch = layout.Height() / static_cast<int>(list_.Timeline().places);
  for (std::size_t place = 1; place <= list_.Timeline().places; ++place) {
    const int y = Origin().y + static_cast<int>(place - 1) * pitch;
    dc.DrawText(wxString::Format("Place %zu", place), FromDIP(kMargin),
                y + (LaneHeight() - TextHeight()) / 2);
  }
}

void TimelineView::DrawBar(wxDC& dc, std::size_t bar, const wxRect& lane, bool isSelected) const {
  wxRect place = lane;
  place.height -= FromDIP(kCriticalLine + 2);
  const BoxColours colours = ColoursOf(list_.StateOfBar(bar), SchemeInUse());
  dc.SetPen(wxPen(Rgb(colours.border)));
  dc.SetBrush(Rgb(colours.fill));
  dc.DrawRectangle(place);
  const int room = place.width - 2 * FromDIP(4);
  if (room >= FromDIP(kLeastText)) {
    dc.SetTextForeground(Rgb(colours.text));
    const wxString name = ToWx(list_.NameOfBar(bar));
    dc.DrawText(wxControl::Ellipsize(name, dc, wxELLIPSIZE_END, room), place.x + FromDIP(4),
                place.y + (place.height - TextHeight()) / 2);
  }
  if (list_.Timeline().bars[bar].isCritical) {
    const int line = FromDIP(kCriticalLine);
    dc.SetPen(*wxTRANSPARENT_PEN);
    dc.SetBrush(CriticalColour());
    dc.DrawRectangle(lane.x, lane.GetBottom() + 1 - line, lane.width, line);
  }
  if (!isSelected) return;
  dc.SetPen(wxPen(
      wxSystemSettings::GetColour(HasFocus() ? wxSYS_COLOUR_HIGHLIGHT : wxSYS_COLOUR_LISTBOXTEXT),
      FromDIP(2)));
  dc.SetBrush(*wxTRANSPARENT_BRUSH);
  dc.DrawRectangle(wxRect(lane).Inflate(FromDIP(2)));
}

std::vector<TimelineView::LegendEntry> TimelineView::Legend() const {
  std::vector<LegendEntry> entries;
  entries.reserve(kLegendStates.size() + 1);
  for (const ProjectState state : kLegendStates) {
    entries.push_back({ToWx(std::string(NameOf(state))), state});
  }
  entries.push_back({"critical path"});
  const int room = GetClientSize().x - Origin().x - FromDIP(kMargin);
  wxPoint at;
  for (LegendEntry& entry : entries) {
    const int width = FromDIP(kLegendBox + kLegendText) + GetTextExtent(entry.text).x;
    if (at.x > 0 && at.x + width > room) at = {0, at.y + TextHeight() + FromDIP(kGap) / 2};
    entry.place = at;
    at.x += width + FromDIP(2 * kGap);
  }
  return entries;
}

void TimelineView::DrawLegend(wxDC& dc, int top) const {
  dc.SetTextForeground(HintColour());
  for (const LegendEntry& entry : Legend()) {
    const wxPoint at = entry.place + wxPoint(Origin().x, top);
    const int middle = at.y + TextHeight() / 2;
    if (entry.state) {
      const BoxColours colours = ColoursOf(*entry.state, SchemeInUse());
      const wxSize box(FromDIP(kLegendBox), FromDIP(10));
      dc.SetPen(wxPen(Rgb(colours.border)));
      dc.SetBrush(Rgb(colours.fill));
      dc.DrawRectangle({at.x, middle - box.y / 2}, box);
    } else {
      dc.SetPen(*wxTRANSPARENT_PEN);
      dc.SetBrush(CriticalColour());
      dc.DrawRectangle(at.x, middle, FromDIP(kLegendBox), FromDIP(kCriticalLine));
    }
    dc.DrawText(entry.text, at.x + FromDIP(kLegendBox + kLegendText), at.y);
  }
}

}  // namespace gorbex::ui
