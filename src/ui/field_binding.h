#pragma once

#include <wx/button.h>
#include <wx/checkbox.h>
#include <wx/textctrl.h>

#include <vector>

#include "core/command.h"
#include "core/controls.h"

namespace gorbex::ui {

/// Joins controls to the states they show and edit. A control must not outlive the subscriptions
/// that are added for it, nor its state it.
class FieldBinding {
 public:
  void Join(wxCheckBox& control, CheckBox& state);
  void Join(wxTextCtrl& control, TextBox& state);
  void Join(wxButton& control, Command& command);

 private:
  std::vector<Subscription> subscriptions_;
};

}  // namespace gorbex::ui
