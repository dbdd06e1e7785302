#include "ui/remembered_place.h"

#include "app/stored_position.h"
#include "ui/window_place.h"

namespace gorbex::ui {

bool RememberedPlace::Restore(wxTopLevelWindow& window) const {
  try {
    const std::string stored = registry_.fnsGetRegistryValue(kPositionKey, part_);
    if (stored.empty()) return false;
    PutOnScreen(window, PositionFrom(stored));
    return true;
  } catch (const RuntimeError&) {
    return false;
  }
}

void RememberedPlace::Store(const wxTopLevelWindow& window) {
  if (window.IsMaximized() || window.IsIconized()) return;
  registry_.subSetRegistryValue(kPositionKey, part_, PositionText(PlaceOf(window)));
}

}  // namespace gorbex::ui
