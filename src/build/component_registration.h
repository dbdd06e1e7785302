#pragma once

#include <functional>
#include <string>
#include <string_view>
#include <utility>

#include "core/dialogs.h"
#include "core/main_window.h"
#include "core/procedure.h"
#include "core/shell.h"

namespace gorbex {

/// Registers and unregisters single components through the system's registration tool.
class ComponentRegistration {
 public:
  /// `advice` is the usual reason of a failure, or empty. `changed` is called after
  /// a registration changed, so that shown references can be checked again.
  ComponentRegistration(frmBuilder& window, Shell& shell, Dialogs& dialogs, ErrorReport& report,
                        std::string advice, std::function<void()> changed)
      : window_(window),
        shell_(shell),
        dialogs_(dialogs),
        report_(report),
        advice_(std::move(advice)),
        changed_(std::move(changed)) {}

  /// Both act on the component of the selected row of the detail list.
  void mnuDataPopupReg_Click();
  void mnuDataPopupUnReg_Click();

  /// True when the tool registered (unregistered) the component file. The launcher's error when the
  /// tool cannot be started.
  bool Register(const std::string& componentFile);
  bool Unregister(const std::string& componentFile);

  /// Advice for the user when a registration failed; empty for none.
  [[nodiscard]] const std::string& Advice() const { return advice_; }

 private:
  using Action = bool (ComponentRegistration::*)(const std::string& componentFile);

  void Run(std::string_view procedure, Action action);

  frmBuilder& window_;
  Shell& shell_;
  Dialogs& dialogs_;
  ErrorReport& report_;
  std::string advice_;
  std::function<void()> changed_;
};

}  // namespace gorbex
