#pragma once

#include <wx/dialog.h>
#include <wx/sizer.h>

#include "ui/field_binding.h"

namespace gorbex::ui {

/// Lays a small dialog out: captions beside fields, hints below, buttons at the end.
class FormLayout {
 public:
  /// Both must outlive the layout; the fields also the dialog's controls.
  FormLayout(wxDialog& dialog, FieldBinding& fields);

  wxTextCtrl* AddField(const wxString& caption, const wxString& name, TextBox& state,
                       long style = 0);
  void AddHint(const wxString& text);

  /// Adds the buttons and gives the dialog its size. Every way out of the dialog but OK is Cancel,
  /// unless the dialog says what closing it means.
  void Finish(Command& ok, Command& cancel);

 private:
  wxDialog& dialog_;
  FieldBinding& fields_;
  wxFlexGridSizer* grid_;
  wxBoxSizer* column_;
};

}  // namespace gorbex::ui
