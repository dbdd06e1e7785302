#pragma once

#include <wx/choice.h>
#include <wx/stattext.h>

#include <functional>

#include "core/select_control_form.h"
#include "ui/form_window.h"

namespace gorbex::ui {

/// The form to choose a class or user control of a component for a test, over its state.
class SelectControlWindow : public FormWindow {
 public:
  SelectControlWindow(wxWindow* parent, frmSelectControl& form,
                      const std::function<void()>& unload);

 private:
  void AddRow(wxSizer& grid, const wxString& label, wxWindow* control);
  void ShowComponents();

  frmSelectControl& form_;
  wxChoice* components_;
  wxStaticText* hint_;
};

}  // namespace gorbex::ui
