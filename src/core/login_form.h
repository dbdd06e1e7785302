#pragma once

#include <string>

#include "core/command.h"
#include "core/controls.h"
#include "core/signal.h"

namespace gorbex {

/// The state of the source-control login. The password is kept only here, and only while the
/// dialog is open.
struct frmLogin {
  TextBox txtUserName;
  TextBox txtPassword;
  Command cmdOK{"cmdOK", "OK"};
  Command cmdCancel{"cmdCancel", "Cancel"};

  bool mayStayEmpty = false;  ///< user and password may be known from elsewhere
  bool LoginSucceeded = false;
  bool Cancelled = false;
  std::string failure;  ///< why the last attempt failed; empty before the first

  Signal<> activated;            ///< emitted by front ends once the dialog is shown
  Signal<> passwordWanted;       ///< the password box takes the focus, all its text selected
  Property<bool> hidden{false};  ///< set when the dialog is to close
};

}  // namespace gorbex
