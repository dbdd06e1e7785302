#include "ui/remembered_place.h"

#include "app/stored_position.h"
#include "ui/window_place.h"

namespace gorbex::ui {

bool RememberedPlace::Restore(wxTopLevelWindow& window, const wxSize& smallest) const {
  try {
    const std::string stored = registry_.fnsGetRegistryValue(kPositionKey, part_);
    if (stored.empty()) return false;
    const wxRect place = InDips(PositionFrom(stored));
    const wxRect wanted(window.FromDIP(place.GetPosition()), window.FromDIP(place.GetSize()));
    window.SetSize(OnSomeScreen(wanted, Screens(), smallest));
    return true;
  } catch (const RuntimeError&) {
    return false;
  }
}

void RememberedPlace::Store(const wxTopLevelWindow& window) {
  if (window.IsMaximized() || window.IsIconized()) return;
  const wxRect place(window.ToDIP(window.GetPosition()), window.ToDIP(window.GetSize()));
  registry_.subSetRegistryValue(kPositionKey, part_, PositionText(InTwips(place)));
}

}  // namespace gorbex::ui
