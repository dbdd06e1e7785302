#pragma once

#include <wx/frame.h>
#include <wx/windowid.h>

#include <functional>
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

  /// Greys a command out, in addition to its own state, while `possible` is false.
  void OfferOnlyWhen(Command& command, std::function<bool()> possible);

 private:
  [[nodiscard]] bool IsPossible(const Command& command) const;
  void OnUpdate(const Command& command, wxUpdateUIEvent& event);

  wxFrame& frame_;
  std::unordered_map<const Command*, wxWindowIDRef> ids_;  ///< reserved for the commands
  std::unordered_map<const Command*, std::function<bool()>> possible_;
};

}  // namespace gorbex::ui
