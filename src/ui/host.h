#pragma once

#include <wx/window.h>

#include <memory>
#include <optional>
#include <string>

#include "platform/services.h"
#include "ui/host_paths.h"

namespace gorbex::ui {

/// The services of the system that the window's program needs.
class Host : public HostPaths {
 public:
  /// The services with the window's own event pump; valid as long as the host and the pump.
  [[nodiscard]] virtual PlatformServices Services(EventPump& events) = 0;

  /// The program's path form of a path typed in UTF-8; nothing when it has none.
  [[nodiscard]] virtual std::optional<std::string> TypedPath(const std::string& typed) const = 0;

  /// Keeps other programs from building on the same system until the result is let go of; nothing
  /// while another one builds.
  [[nodiscard]] virtual std::shared_ptr<void> BuildAlone() = 0;

  /// Shows the user why this window delays the end of the session, until the window is destroyed.
  /// Does nothing where the system cannot show it.
  virtual void TellWhySessionWaits(wxWindow& /*window*/, const wxString& /*why*/) {}
};

}  // namespace gorbex::ui
