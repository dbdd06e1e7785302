#pragma once

#include <wx/dialog.h>

#include "core/label_form.h"
#include "ui/field_binding.h"

namespace gorbex::ui {

/// The label dialog over its state.
class LabelWindow : public wxDialog {
 public:
  /// The state must outlive the dialog.
  LabelWindow(wxWindow* parent, frmLabel& form);

 private:
  FieldBinding fields_;
  Subscription hidden_;
};

}  // namespace gorbex::ui
