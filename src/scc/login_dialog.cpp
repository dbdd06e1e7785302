#include "scc/login_dialog.h"

#include <memory>

#include "core/text.h"

namespace gorbex {

LoginDialog::LoginDialog(frmLogin& form, SourceControl& database, Dialogs& dialogs,
                         ErrorReport& report)
    : form_(form),
      database_(database),
      dialogs_(dialogs),
      report_(report),
      activated_(form.activated.Connect([this] { Form_Activate(); })) {
  form_.cmdOK.SetHandler([this] { cmdOK_Click(); });
  form_.cmdCancel.SetHandler([this] { cmdCancel_Click(); });
}

void LoginDialog::ShowLogin(const std::string& iniPath) {
  Procedure(report_, ": frmLogin.ShowLogin").Run([&](Procedure& on) {
    iniPath_ = iniPath;
    form_.Cancelled = false;
    on([&] { form_.hidden.Set(false); });
    on([&] { dialogs_.ShowLogin(form_); });
  });
}

void LoginDialog::Form_Activate() {
  Procedure(report_, ": frmLogin.Form_Activate").Run([&](Procedure& on) {
    if (!form_.txtUserName.text.Get().empty()) on([&] { form_.passwordWanted.Emit(); });
  });
}

void LoginDialog::cmdOK_Click() {
  // While the client works the user may act: neither button means anything then.
  const auto offer = [this](bool offered) {
    form_.cmdOK.enabled.Set(offered);
    form_.cmdCancel.enabled.Set(offered);
  };
  offer(false);
  const std::shared_ptr<void> done(nullptr, [&](void*) { offer(true); });
  try {
    database_.Open(iniPath_, form_.txtUserName.text.Get(), form_.txtPassword.text.Get());
    form_.LoginSucceeded = true;
    form_.hidden.Set(true);
    return;
  } catch (const RuntimeError& error) {
    form_.failure = error.Description();
  }
  dialogs_.Show({"Could not log in to source-safe" + std::string(kLineBreak) + form_.failure});
  form_.passwordWanted.Emit();
}

void LoginDialog::cmdCancel_Click() {
  Procedure(report_, ": frmLogin.cmdCancel_Click").Run([&](Procedure& on) {
    form_.LoginSucceeded = false;
    form_.Cancelled = true;
    on([&] { form_.hidden.Set(true); });
  });
}

}  // namespace gorbex
