#pragma once

#include <wx/button.h>
#include <wx/checkbox.h>
#include <wx/spinctrl.h>
#include <wx/textctrl.h>

#include <cstdint>

#include "core/command.h"
#include "core/controls.h"

namespace gorbex::ui {

/// Joins controls to the states they show and edit. The state must outlive the control, and the
/// control must outlive this object.
class FieldBinding {
 public:
  void Join(wxCheckBox& control, CheckBox& state);
  void Join(wxTextCtrl& control, TextBox& state);
  void Join(wxSpinCtrl& control, Property<std::int32_t>& state);
  void Join(wxButton& control, Command& command);

  /// Makes a text control and joins it.
  wxTextCtrl* NewField(wxWindow* parent, const wxString& name, TextBox& state, long style = 0,
                       const wxSize& size = wxDefaultSize);

  /// Makes a button for a command and joins it. A button with an id of the toolkit has its label.
  wxButton* NewButton(wxWindow* parent, Command& command, wxWindowID id = wxID_ANY);

 private:
  Subscriptions subscriptions_;
};

}  // namespace gorbex::ui
