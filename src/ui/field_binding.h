#pragma once

#include <wx/button.h>
#include <wx/checkbox.h>
#include <wx/spinctrl.h>
#include <wx/textctrl.h>

#include <cstdint>
#include <vector>

#include "core/command.h"
#include "core/controls.h"

namespace gorbex::ui {

/// Joins controls to the states they show and edit. The state must outlive the
/// control, and the control this object.
class FieldBinding {
 public:
  void Join(wxCheckBox& control, CheckBox& state);
  void Join(wxTextCtrl& control, TextBox& state);
  void Join(wxSpinCtrl& control, Property<std::int32_t>& state);
  void Join(wxButton& control, Command& command);

 private:
  std::vector<Subscription> subscriptions_;
};

}  // namespace gorbex::ui
