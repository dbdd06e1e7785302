#include "ui/pane_cycle.h"

namespace gorbex::ui {

void PaneCycle::Go(Direction direction) {
  const std::size_t count = parts_.size();
  const std::size_t step = direction == Direction::Forward ? 1 : count - 1;
  const std::size_t from = PartWithFocus();
  std::size_t next = from == count && direction == Direction::Forward ? count - 1 : from % count;
  for (std::size_t tries = 0; tries < count; ++tries) {
    next = (next + step) % count;
    wxWindow& part = *parts_[next];
    if (!part.IsShownOnScreen() || !part.AcceptsFocusRecursively()) continue;
    part.SetFocus();
    return;
  }
}

// The number of parts when the keyboard is elsewhere.
std::size_t PaneCycle::PartWithFocus() const {
  std::size_t number = 0;
  for (const wxWindow* focus = wxWindow::FindFocus(); number < parts_.size(); ++number) {
    const wxWindow* above = focus;
    while (above != nullptr && above != parts_[number]) above = above->GetParent();
    if (above != nullptr) return number;
  }
  return number;
}

}  // namespace gorbex::ui
