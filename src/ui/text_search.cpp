#include "ui/text_search.h"

#include <algorithm>
#include <cstddef>
#include <vector>

namespace gorbex::ui {
namespace {

/// Where lines begin in a control's text. Its own positions count line ends as its system does.
class Lines {
 public:
  Lines(const wxTextCtrl& control, const wxString& text) : control_(control), starts_{0} {
    for (auto end = text.find('\n'); end != wxString::npos; end = text.find('\n', end + 1)) {
      starts_.push_back(end + 1);
    }
  }

  [[nodiscard]] long PositionOf(std::size_t offset) const {
    const auto after = std::upper_bound(starts_.begin(), starts_.end(), offset);
    const auto line = after - starts_.begin() - 1;
    const auto column = offset - starts_[static_cast<std::size_t>(line)];
    return control_.XYToPosition(static_cast<long>(column), static_cast<long>(line));
  }

 private:
  const wxTextCtrl& control_;
  std::vector<std::size_t> starts_;
};

std::vector<std::size_t> PlacesOf(const wxString& wanted, const wxString& text) {
  std::vector<std::size_t> places;
  for (auto at = text.find(wanted); at != wxString::npos; at = text.find(wanted, at + 1)) {
    places.push_back(at);
  }
  return places;
}

}  // namespace

ProjectSearch::Hit FindText(wxTextCtrl& control, const wxString& wanted,
                            ProjectSearch::Direction direction) {
  if (wanted.empty()) return {};
  const wxString text = control.GetValue().Lower();
  const auto places = PlacesOf(wanted.Lower(), text);
  if (places.empty()) return {};
  const Lines lines(control, text);
  std::vector<long> positions;
  positions.reserve(places.size());
  for (const std::size_t place : places) positions.push_back(lines.PositionOf(place));
  long from = 0;
  long to = 0;
  control.GetSelection(&from, &to);
  const bool isBack = direction == ProjectSearch::Direction::Previous;
  // Without a selection nothing was found yet.
  const bool leaves = direction == ProjectSearch::Direction::Next && from != to;
  const auto at = leaves ? std::upper_bound(positions.begin(), positions.end(), from)
                         : std::lower_bound(positions.begin(), positions.end(), from);
  const std::size_t count = positions.size();
  const auto index = static_cast<std::size_t>(at - positions.begin());
  const std::size_t found = isBack ? (index + count - 1) % count : index % count;
  control.SetSelection(positions[found], lines.PositionOf(places[found] + wanted.length()));
  control.ShowPosition(positions[found]);
  return {found + 1, count};
}

}  // namespace gorbex::ui
