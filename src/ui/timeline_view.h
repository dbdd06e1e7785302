#pragma once

#include <wx/scrolwin.h>

#include <optional>
#include <vector>

#include "report/last_run_list.h"
#include "report/timeline_layout.h"
#include "ui/hover_tip.h"

namespace gorbex::ui {

/// Draws the bars of the last run. A click or an arrow key selects a bar's project in the list; the
/// tool tip tells what is known of the bar under the pointer.
class TimelineView : public wxScrolledCanvas {
 public:
  /// The list and its form must outlive the view.
  TimelineView(wxWindow* parent, LastRunList& list, frmLastRun& form);

  /// The height for lanes, axis and legend, in pixels.
  [[nodiscard]] int BestHeight() const;

  /// The place of a bar in the window; for tests.
  [[nodiscard]] wxRect PlaceOf(std::size_t bar) const;

 private:
  struct LegendEntry {
    wxString text;
    std::optional<ProjectState> state{};  ///< nothing for the critical path
    wxPoint place{};                      ///< from the legend's corner
  };

  [[nodiscard]] std::vector<LegendEntry> Legend() const;
  [[nodiscard]] TimelineLayout Bars() const;
  [[nodiscard]] wxPoint Origin() const;
  [[nodiscard]] int LaneHeight() const { return TextHeight() + FromDIP(14); }
  [[nodiscard]] int TextHeight() const { return GetTextExtent("Ag").y; }
  [[nodiscard]] std::optional<std::size_t> BarAt(const wxPoint& point) const;
  void OnPaint(wxPaintEvent& event);
  void OnKey(wxKeyEvent& event);
  void Point(const wxPoint& point);
  void DrawAxis(wxDC& dc, const TimelineLayout& layout) const;
  void DrawLanes(wxDC& dc, const TimelineLayout& layout) const;
  void DrawBar(wxDC& dc, std::size_t bar, const wxRect& lane, bool isSelected) const;
  void DrawLegend(wxDC& dc, int top) const;

  LastRunList& list_;
  HoverTip tip_;
  Subscription subscription_;
};

}  // namespace gorbex::ui
