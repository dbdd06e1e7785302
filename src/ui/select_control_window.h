#pragma once

#include <wx/choice.h>
#include <wx/stattext.h>

#include <functional>
#include <vector>

#include "core/select_control_form.h"
#include "ui/field_binding.h"
#include "ui/form_window.h"

namespace gorbex::ui {

/// The form to choose a class or user control of a component for a test, over its state.
class SelectControlWindow : public FormWindow {
 public:
  SelectControlWindow(wxWindow* parent, frmSelectControl& form,
                      const std::function<void()>& unload);

 private:
  void AddRow(wxSizer& grid, const wxString& label, wxWindow* control);
  [[nodiscard]] wxTextCtrl* Field(const wxString& name, TextBox& state);
  [[nodiscard]] wxButton* Button(Command& command);
  void ShowComponents();

  frmSelectControl& form_;
  wxChoice* components_;
  wxStaticText* hint_;
  FieldBinding fields_;
  std::vector<Subscription> subscriptions_;
};

}  // namespace gorbex::ui
