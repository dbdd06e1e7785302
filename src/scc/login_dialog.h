#pragma once

#include <string>

#include "core/dialogs.h"
#include "core/login_form.h"
#include "core/procedure.h"
#include "platform/source_control.h"

namespace gorbex {

/// The procedures of the login dialog: tries to open the database until it opens or the user gives
/// up.
class LoginDialog {
 public:
  /// Connects the form's controls; the form must outlive the dialog.
  LoginDialog(frmLogin& form, SourceControl& database, Dialogs& dialogs, ErrorReport& report);
  LoginDialog(const LoginDialog&) = delete;
  LoginDialog& operator=(const LoginDialog&) = delete;

  /// Shows the form until it hides; the result is in the form.
  void ShowLogin(const std::string& iniPath);

 private:
  void Form_Activate();
  void cmdOK_Click();
  void cmdCancel_Click();

  frmLogin& form_;
  SourceControl& database_;
  Dialogs& dialogs_;
  ErrorReport& report_;
  std::string iniPath_;
  Subscription activated_;
};

}  // namespace gorbex
