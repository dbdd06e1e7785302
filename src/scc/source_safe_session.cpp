#include "scc/source_safe_session.h"

#include "scc/login_dialog.h"

namespace gorbex {

RuntimeError NoSuchItem(const std::string& spec) {
  return RuntimeError::WithDescription(ErrorNumber::ObjectNotSet,
                                       "There is no item '" + spec + "' in the database");
}

bool SourceSafeSession::Refuses() {
  if (work_.MayUseSourceControl()) return false;
  window_.SetStatus("Source-Control is busy");
  return true;
}

void SourceSafeSession::LoginToSourceSafe() {
  // A timer or the user may call for a login while one goes on.
  if (loggedIn_ || disabled_ || work_.Goes(Task::Login)) return;
  Procedure(report_, ": frmBuilder.LoginToSourceSafe").Run([&](Procedure& on) {
    if (window_.IniPath.empty()) {
      on([&] { mnuToolsLogin_Click(); });
    } else {
      Login(on);
    }
  });
}

void SourceSafeSession::mnuToolsLogin_Click() {
  if (work_.Goes(Task::Login)) return;
  Procedure(report_, ": frmBuilder.mnuToolsLogin_Click").Run([&](Procedure& on) {
    auto asking = work_.Begin(Task::Login);
    const auto path = on([&] {
      return dialogs_.OpenFile({"Open SourceSafe database", "INI FIles (*.ini)|*.ini", "*.ini"});
    });
    asking.reset();
    if (!path || path->empty()) return;
    window_.IniPath = *path;
    on([&] { LoginToSourceSafe(); });
  });
}

void SourceSafeSession::Login(Procedure& on) {
  frmLogin form;
  form.txtUserName.text.Set(window_.UserName);
  form.mayStayEmpty = database_.KnowsUsers(window_.IniPath);
  LoginDialog dialog(form, database_, dialogs_, report_);
  const auto asking = work_.Begin(Task::Login);
  on([&] { dialog.ShowLogin(window_.IniPath); });
  failure_ = form.failure;
  if (form.LoginSucceeded) {
    Open(on, form.txtUserName.text.Get());
  } else {
    StayClosed(on, form.Cancelled);
  }
}

LocalPlace SourceSafeSession::GetLocalPath(const std::string& spec) {
  LoginToSourceSafe();
  if (!loggedIn_) return {{}, WhyClosed()};
  const auto use = Use();
  try {
    const auto item = VSSItem(spec);
    if (item != nullptr) return {item->LocalSpec()};
    return {{}, NoSuchItem(spec).Description()};
  } catch (const RuntimeError& error) {
    return {{}, error.Description()};
  }
}

std::string SourceSafeSession::WhyClosed() const {
  if (!DatabaseUser().empty()) return {};
  if (window_.IniPath.empty()) {
    return "No initialisation file of source control is known; name one at the login, or with the "
           "setting INIPath";
  }
  if (!failure_.empty()) return failure_;
  return disabled_ ? "The login to source control was cancelled"
                   : "Nobody is logged in to source control";
}

void SourceSafeSession::Open(Procedure& on, const std::string& user) {
  MainMenu& menu = window_.menu;
  window_.UserName = user;
  on([&] { window_.SetStatus("Logged into VSS Successfully"); });
  loggedIn_ = true;
  on([&] { menu.mnuToolsLogin.enabled.Set(false); });
  for (Command* entry : {&menu.mnuToolsLabel, &menu.mnuToolsHighlight, &menu.mnuToolsGetLatest}) {
    on([&] { entry->enabled.Set(true); });
  }
}

void SourceSafeSession::StayClosed(Procedure& on, bool cancelled) {
  MainMenu& menu = window_.menu;
  on([&] { dialogs_.Show({"Source-Control will be disabled for this session"}); });
  disabled_ = cancelled;
  on([&] { window_.SetStatus("ERROR Logging into source-safe"); });
  for (Command* entry : {&menu.mnuToolsLabel, &menu.mnuToolsGetLatest, &menu.mnuToolsHighlight}) {
    on([&] { entry->enabled.Set(false); });
  }
  loggedIn_ = false;
}

}  // namespace gorbex
