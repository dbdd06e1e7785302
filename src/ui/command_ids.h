#pragma once

#include <wx/frame.h>
#include <wx/windowid.h>

#include <unordered_map>

#include "core/command.h"

namespace gorbex::ui {

/// Joins the program's commands to a frame: menus, tool bars and pop-ups made of the ids given here
/// run them and follow their state.
class CommandIds {
 public:
  explicit CommandIds(wxFrame& frame) : frame_(frame) {}

  /// The command's id; it is joined to the frame when asked for first. The command must outlive the
  /// frame.
  [[nodiscard]] int IdOf(Command& command);

 private:
  wxFrame& frame_;
  std::unordered_map<const Command*, wxWindowIDRef> ids_;  ///< reserved for the commands
};

}  // namespace gorbex::ui
