#pragma once

#include <wx/toplevel.h>

#include <string>

#include "core/registry_tools.h"

namespace gorbex::ui {

/// Remembers where a window beside the main window was and how large, beside the main window's
/// position.
class RememberedPlace {
 public:
  /// `part` names the window. The registry must outlive the place.
  RememberedPlace(RegistryTools& registry, std::string part)
      : registry_(registry), part_(std::move(part)) {}

  /// Puts the window there, or where it fits on the present screens; false when no place is stored.
  bool Restore(wxTopLevelWindow& window) const;

  /// A maximized window's place stays what it was before.
  void Store(const wxTopLevelWindow& window);

 private:
  RegistryTools& registry_;
  std::string part_;
};

}  // namespace gorbex::ui
