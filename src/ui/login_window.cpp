#include "ui/login_window.h"

#include "ui/form_layout.h"
#include "ui/icons.h"

namespace gorbex::ui {

LoginWindow::LoginWindow(wxWindow* parent, frmLogin& form)
    : wxDialog(parent, wxID_ANY, "Source Control Login", wxDefaultPosition, wxDefaultSize,
               wxDEFAULT_DIALOG_STYLE | wxRESIZE_BORDER, "frmLogin") {
  SetIcons(ProgramIcons());
  FormLayout layout(*this, fields_);
  layout.AddField("&User name:", "txtUserName", form.txtUserName);
  wxTextCtrl* password =
      layout.AddField("&Password:", "txtPassword", form.txtPassword, wxTE_PASSWORD);
  if (form.mayStayEmpty) layout.AddHint("Leave both empty to use what your git already knows.");
  layout.Finish(form.cmdOK, form.cmdCancel);
  subscriptions_.Add(form.passwordWanted, [password] {
    password->SetFocus();
    password->SelectAll();
  });
  subscriptions_.Add(form.hidden.changed, [this](const bool& hidden) {
    if (hidden && IsModal()) EndModal(wxID_OK);
  });
  // Escape presses Cancel. The frame's close button gives up only this login, and the next command
  // that needs one asks again. While the client works neither means anything.
  Bind(wxEVT_CLOSE_WINDOW, [&form](wxCloseEvent& event) {
    if (form.cmdCancel.enabled.Get()) {
      form.hidden.Set(true);
    } else if (event.CanVeto()) {
      event.Veto();
    }
  });
  CallAfter([&form] { form.activated.Emit(); });
}

}  // namespace gorbex::ui
