#pragma once

#include <wx/dialog.h>

#include "core/login_form.h"
#include "ui/field_binding.h"

namespace gorbex::ui {

/// The source-control login over its state.
class LoginWindow : public wxDialog {
 public:
  /// The state must outlive the dialog.
  LoginWindow(wxWindow* parent, frmLogin& form);

 private:
  FieldBinding fields_;
  Subscriptions subscriptions_;
};

}  // namespace gorbex::ui
