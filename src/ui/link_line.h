#pragma once

#include <wx/panel.h>

#include <cstddef>
#include <vector>

#include "build/terms_in_force.h"
#include "ui/hover_tip.h"

namespace gorbex::ui {

/// The terms of the next build on one line, each a link that runs the command that sets it. The
/// longest is shortened in its middle where the line is too narrow. Tab reaches the line, the arrow
/// keys go from link to link, Return and Space follow one.
class LinkLine : public wxPanel {
 public:
  explicit LinkLine(wxWindow* parent);

  /// Draws the line again, but only when a term has changed.
  void Show(std::vector<BuildTerm> terms);
  using wxPanel::Show;

  /// Where a link, numbered from 0, is drawn; empty when there is none of that number.
  [[nodiscard]] wxRect PlaceOf(std::size_t number) const {
    return number < links_.size() ? links_[number].place : wxRect();
  }

 private:
  struct Link {
    wxString text;  ///< as far as it fits
    wxRect place;
  };
  static constexpr std::size_t kNone = static_cast<std::size_t>(-1);

  void LayOut();
  [[nodiscard]] std::size_t At(const wxPoint& point) const;
  void Point(std::size_t number);
  void Follow(std::size_t number);
  void OnPaint(wxPaintEvent& event);
  void OnKey(wxKeyEvent& event);
  [[nodiscard]] wxSize DoGetBestClientSize() const override;

  std::vector<BuildTerm> terms_;
  std::vector<Link> links_;
  HoverTip tip_;
  std::size_t pointed_ = kNone;  ///< below the mouse
  std::size_t current_ = 0;      ///< that the keyboard follows
};

}  // namespace gorbex::ui
