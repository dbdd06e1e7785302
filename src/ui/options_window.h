#pragma once

#include <wx/bookctrl.h>
#include <wx/dialog.h>

#include "core/options_form.h"
#include "ui/field_binding.h"

class wxPanel;
class wxSizer;

namespace gorbex::ui {

/// The options dialog over its state.
class OptionsWindow : public wxDialog {
 public:
  /// The state must outlive the dialog.
  OptionsWindow(wxWindow* parent, frmOptions& form);

 private:
  wxPanel* AddPage(const wxString& title);
  void MakeBuildPage();
  void MakeTestProjectPage();
  void MakeMailPage();
  void AddJobs(wxPanel* page);
  void AddEditor(wxPanel* page);
  void AddCheck(wxPanel* page, const wxString& label, const wxString& name, CheckBox& state);
  void AddPath(wxPanel* page, const wxString& caption, const wxString& name, TextBox& state,
               Command& browse);
  void AddReplyChoice(wxPanel* page, const wxString& label, const wxString& name,
                      std::size_t index);
  wxSizer* Buttons();
  void OnKey(wxKeyEvent& event);

  frmOptions& form_;
  wxBookCtrlBase* pages_;
  FieldBinding fields_;
  Subscriptions subscriptions_;
};

}  // namespace gorbex::ui
